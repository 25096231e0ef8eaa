// Classes that a script plays: programs in this process that create the class by name or identifier get the
// objects that the script's function creates.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>
#include <vector>

#include "win32/com_ptr.h"

namespace orve::prova {

class ClassiRecitate {
 public:
  ClassiRecitate() = default;
  ClassiRecitate(const ClassiRecitate&) = delete;
  ClassiRecitate& operator=(const ClassiRecitate&) = delete;
  ClassiRecitate(ClassiRecitate&&) = delete;
  ClassiRecitate& operator=(ClassiRecitate&&) = delete;
  ~ClassiRecitate() { Ritira(); }

  /// `classe` is a name ("Outlook.Application") or an identifier in braces; `fabbrica` makes an object by the
  /// script. A name that the system does not know is registered for the current user until the session ends.
  void Recita(const std::wstring& classe, std::function<adapters::win32::VariantCom()> fabbrica);

  /// From now on nobody plays the classes.
  void Ritira() noexcept;

 private:
  std::vector<DWORD> registrazioni_;
};

/// An object that writes a line for each call of a member (its name, a point, the member as the caller spells
/// it, the values) and passes the call on to another object, which may have only some of the members.
[[nodiscard]] adapters::win32::ComPtr<IDispatch> Spia(std::wstring nome,
                                                      adapters::win32::ComPtr<IDispatch> oggetto,
                                                      std::function<void(const std::string&)> scrivi);

}  // namespace orve::prova
