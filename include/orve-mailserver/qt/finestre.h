// The windows of the library on Qt 6 Widgets: the window objects that an Ambiente hands out, ready to be
// passed on.
//
// Every window belongs to one thread, the one that made the first of them. A program that has a QApplication
// keeps it; in any other program the first object asked for here makes one, which lives to the end of the
// program. Qt's own headers are not exposed here.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/finestre.h"

namespace orve::adapters::qt {

/// Makes sure that windows can be opened. Raises 429, with the reason, where there is no display, in a
/// program whose event loop is not that of Qt Widgets, and outside the thread of the first window.
ORVE_API void AssicuraApplicazione();

/// What a program may choose; nothing has to be.
struct ORVE_API WindowOptions {
  /// Follows the caption in the title of a window, and is by itself the title of a message without one.
  std::string programma = {};
  /// Where attachments are copied to; empty for the system's temporary folder.
  std::string cartellaCopie = {};
  /// Whether the file at a Unix path is copied before it is attached; by default one on a removable medium or
  /// on another machine.
  std::function<bool(const std::string&)> vaCopiato = {};
  /// Creates the file objects, for a program that decides for itself what is copied and where.
  std::function<std::shared_ptr<host::OggettoFile>()> creaFile = {};
  /// Called each time a window is about to be shown.
  std::function<void()> mostra = {};
};

/// The factories. Each raises what AssicuraApplicazione raises; the copies of attachments last as long as
/// this object or any file object that came from it.
class ORVE_API Finestre : public host::Finestre {
 public:
  /// Starts nothing yet.
  explicit Finestre(WindowOptions opzioni = {});
  Finestre(const Finestre&) = delete;
  Finestre& operator=(const Finestre&) = delete;
  Finestre(Finestre&&) = delete;
  Finestre& operator=(Finestre&&) = delete;
  ~Finestre() override;

  ///@{
  /// A new object at each call, never absent, on the thread of the windows.
  [[nodiscard]] std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override;
  [[nodiscard]] std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override;
  [[nodiscard]] std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override;
  [[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override;
  [[nodiscard]] std::shared_ptr<host::OggettoFile> CreaOggettoFile() override;
  [[nodiscard]] std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override;
  [[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi() override;
  ///@}

 private:
  struct Comune;
  std::shared_ptr<Comune> comune_;
};

}  // namespace orve::adapters::qt
