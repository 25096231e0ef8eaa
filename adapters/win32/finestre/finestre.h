// The windows of the library on the controls of Windows: the window objects that an Ambiente hands out, ready
// to be passed on. Windows' own headers are not exposed here.
//
// A window belongs to the thread that made it. It takes the DPI awareness of the program that it opens in,
// and version 6 of the controls whatever the program itself uses.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/host/finestre.h"

namespace orve::adapters::win32::finestre {

/// The identifier (GetDlgCtrlID) of the control in the first row of a layout table; each row has the next
/// one. Other programs, such as screen readers and tests, find a control by it.
inline constexpr int kPrimoControllo = 1000;
/// The identifier of the control of that name, compared without case; 0 when the table has none.
[[nodiscard]] int IdentificatoreDi(const host::LayoutForm& layout, std::string_view nome);

struct WindowOptions {
  /// Follows the caption in the title of a window, and is by itself the title of a message without one.
  std::string programma = {};
  /// Where attachments are copied to; empty for the person's temporary folder.
  std::string cartellaCopie = {};
  /// Whether a file is copied before it is attached; by default one on a removable medium or on another
  /// machine.
  std::function<bool(const std::string&)> vaCopiato = {};
  /// Whether files dropped on a window that is being made go to its file chooser, which must then be this
  /// object's; by default they do.
  std::function<bool()> accettaFile = {};
};

/// The factories. Each raises 429 when Windows cannot make what is asked for; the copies of attachments last
/// as long as this object or any file object that came from it.
class Finestre : public host::Finestre {
 public:
  explicit Finestre(WindowOptions opzioni = {});
  Finestre(const Finestre&) = delete;
  Finestre& operator=(const Finestre&) = delete;
  Finestre(Finestre&&) = delete;
  Finestre& operator=(Finestre&&) = delete;
  ~Finestre() override;

  [[nodiscard]] std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override;
  [[nodiscard]] std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override;
  [[nodiscard]] std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override;
  [[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override;
  [[nodiscard]] std::shared_ptr<host::OggettoFile> CreaOggettoFile() override;
  [[nodiscard]] std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override;
  [[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi() override;

 private:
  struct Comune;
  std::shared_ptr<Comune> comune_;
};

}  // namespace orve::adapters::win32::finestre
