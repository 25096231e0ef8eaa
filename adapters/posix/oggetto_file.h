// The host's file objects on the files of Unix.
//
// A file that may not outlive the choice is copied before it is attached: one on a medium that the person can
// remove, or one on another machine, which may be gone when the message is sent. The path of the copy is
// passed on as text to whatever sends in the end: another service object, another program. So the copies
// stay, in a private folder, and are removed when they are old.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "values/oggetto_file.h"

namespace orve::adapters::posix {

/// Whether the file system that holds the file is a removable medium or another machine's. False for a path
/// that cannot be examined.
[[nodiscard]] bool SuSupportoEsterno(const std::string& nativo);

/// How long copies are kept, since the last one of their folder was made.
inline constexpr std::chrono::hours kVitaDelleCopie{7 * 24};

/// A private folder for copies, created for the first one and again if it has disappeared. It outlives the
/// object; whenever a folder is created, those of the same user that are older than kVitaDelleCopie are
/// removed.
class CartellaCopie {
 public:
  /// `genitore`: where the folder is created; empty for the system's temporary folder.
  explicit CartellaCopie(std::string genitore = {}) : genitore_(std::move(genitore)) {}

  /// A path for a file of this name, alone in a folder, in the system's form. Raises 52 for text that is not
  /// a plain file name, and the error of the file system when the folder cannot be created.
  [[nodiscard]] std::string PostoPer(const std::string& nome);

  /// Removes the folder with its copies, for an owner who knows that nobody needs them any more.
  void Rimuovi() noexcept;

 private:
  std::string genitore_;
  std::string radice_;
  int copie_ = 0;
};

class OggettoFile : public values::OggettoFile {
 public:
  /// Says, for a Unix path, whether its file is to be copied first.
  using VaCopiato = std::function<bool(const std::string& nativo)>;

  explicit OggettoFile(std::shared_ptr<CartellaCopie> copie, VaCopiato vaCopiato = SuSupportoEsterno)
      : copie_(std::move(copie)), vaCopiato_(std::move(vaCopiato)) {}

  /// True for a file, not a folder, that this program may read.
  [[nodiscard]] bool Esiste() override;
  /// Copies a regular file at the length it has when it is opened. Raises 57 for one that shrinks meanwhile,
  /// 70 for what is not a file. A copy that fails halfway leaves no file behind.
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override;

 protected:
  std::string PostoPerCopia(const std::string& nome) override {
    return host::Richiesto(copie_).PostoPer(nome);
  }
  bool DaCopiarePrima() override { return vaCopiato_ && vaCopiato_(Nativo()); }

 private:
  [[nodiscard]] std::string Nativo();

  std::shared_ptr<CartellaCopie> copie_;
  VaCopiato vaCopiato_;
};

}  // namespace orve::adapters::posix
