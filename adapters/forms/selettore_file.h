// The choice of a file: every window for it passes through here.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::forms {

/// Files that the person has dropped on a window, each waiting to be the answer to the next choice. Paths as
/// the system has them.
using FileLasciati = std::deque<std::string>;

using CreatoreFile = std::function<std::shared_ptr<host::OggettoFile>()>;

class SelettoreFile : public host::SelettoreFile {
 public:
  /// `lasciati` is asked before a window is shown.
  SelettoreFile(std::shared_ptr<FileLasciati> lasciati, CreatoreFile creaFile);

  void Titolo(const std::string& titolo) override { titolo_ = titolo; }
  std::int32_t Mostra(std::int32_t opzioni) override;
  std::shared_ptr<host::OggettoFile> FileScelto() override { return scelto_; }
  void Chiudi() override { scelto_.reset(); }

 protected:
  /// Shows the window. The path of the file chosen as the system has it, empty for none.
  [[nodiscard]] virtual std::string Chiede(const std::string& titolo) = 0;
  /// The system's path in the library's form, with its directory.
  [[nodiscard]] virtual std::string PerLibreria(const std::string& percorso) = 0;

 private:
  std::shared_ptr<FileLasciati> lasciati_;
  CreatoreFile creaFile_;
  std::string titolo_;
  std::shared_ptr<host::OggettoFile> scelto_;
};

}  // namespace orve::adapters::forms
