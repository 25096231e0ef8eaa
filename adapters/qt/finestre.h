// The windows of the library on Qt 6 Widgets: what an Ambiente hands out for its windows, ready to be passed
// on.
//
// Every window belongs to one thread, the one that made the first of them. A program that has a QApplication
// keeps it; in any other program the first object asked for here makes one, which lives to the end of the
// program. Qt's own headers stay behind this one.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/controlli.h"
#include "host/griglia.h"
#include "host/layout.h"
#include "host/messaggi.h"
#include "host/oggetti_file.h"
#include "host/record_set_scollegato.h"

namespace orve::adapters::qt {

/// Makes sure that windows can be opened. Raises 429, with the reason, where there is no display, in a
/// program whose event loop is not Qt Widgets', and outside the thread of the first window.
void AssicuraApplicazione();

struct OpzioniFinestre {
  /// Stands behind the caption in the title of a window, and by itself over a message without a title.
  std::string programma = {};
  /// Where copies of attachments are made; empty for the system's temporary folder.
  std::string cartellaCopie = {};
  /// Whether a file, by its path of Unix, is copied before it is attached; by default one on a removable
  /// medium or on another machine.
  std::function<bool(const std::string&)> vaCopiato = {};
  /// Makes the file objects, for a program that decides itself what is copied and where.
  std::function<std::shared_ptr<host::OggettoFile>()> creaFile = {};
  /// Called each time a window is about to be shown.
  std::function<void()> mostra = {};
};

/// The factories. Each raises what AssicuraApplicazione raises; the copies of attachments last as long as
/// this object or any file object that came from it.
class Finestre {
 public:
  explicit Finestre(OpzioniFinestre opzioni = {});
  Finestre(const Finestre&) = delete;
  Finestre& operator=(const Finestre&) = delete;
  Finestre(Finestre&&) = delete;
  Finestre& operator=(Finestre&&) = delete;
  ~Finestre();

  [[nodiscard]] std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout);
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

}  // namespace orve::adapters::qt
