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

#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/griglia.h"
#include "orve-mailserver/host/layout.h"
#include "orve-mailserver/host/messaggi.h"
#include "orve-mailserver/host/oggetti_file.h"
#include "orve-mailserver/host/record_set_scollegato.h"

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
};

/// The factories. Each raises 429 when Windows cannot make what is asked for; the copies of attachments last
/// as long as this object or any file object that came from it.
class Finestre {
 public:
  explicit Finestre(WindowOptions opzioni = {});
  Finestre(const Finestre&) = delete;
  Finestre& operator=(const Finestre&) = delete;
  Finestre(Finestre&&) = delete;
  Finestre& operator=(Finestre&&) = delete;
  ~Finestre();

  /// `accettaFile`: files dropped on the window go to its file chooser, which must be this object's.
  [[nodiscard]] std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout, bool accettaFile = true);
  [[nodiscard]] std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia();
  [[nodiscard]] std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato();
  [[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettoreFile();
  [[nodiscard]] std::shared_ptr<host::OggettoFile> CreaOggettoFile();
  [[nodiscard]] std::shared_ptr<host::CollezioneFile> CreaCollezioneFile();
  [[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi();

 private:
  struct Comune;
  std::shared_ptr<Comune> comune_;
};

}  // namespace orve::adapters::win32::finestre
