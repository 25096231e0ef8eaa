// The host's file objects on the files of Windows.
//
// A file that may not outlive the choice is copied before it is attached: one on a medium that the person can
// remove, or one on another machine, which may be gone when the message is sent. The path of the copy is
// passed on as text to whatever sends in the end, which may be another service object. So the copies stay, in
// a folder of their own, and are removed when they are old.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::win32::finestre {

/// Whether the volume that holds the file is a removable medium, a disc or another machine's. False for a
/// path that cannot be examined.
[[nodiscard]] bool SuSupportoEsterno(const std::string& percorso);

/// How long copies are kept, since the last one of their folder was made.
inline constexpr std::chrono::hours kVitaDelleCopie{7 * 24};

/// A private folder for copies, created for the first one. It outlives the object; whenever a folder is
/// created, those next to it that are older than kVitaDelleCopie are removed.
class CartellaCopie {
 public:
  /// `genitore`: where the folder is created; empty for the person's temporary folder.
  explicit CartellaCopie(std::string genitore = {}) : genitore_(std::move(genitore)) {}

  /// A path for a file of this name, alone in a folder. Raises 52 for text that is not a plain file name, and
  /// the error of Windows when the folder cannot be created.
  [[nodiscard]] std::string PostoPer(const std::string& nome);

 private:
  std::string genitore_;
  std::wstring radice_;
  int copie_ = 0;
};

class OggettoFile : public host::OggettoFile {
 public:
  using VaCopiato = std::function<bool(const std::string& percorso)>;

  explicit OggettoFile(std::shared_ptr<CartellaCopie> copie, VaCopiato vaCopiato = SuSupportoEsterno)
      : copie_(std::move(copie)), vaCopiato_(std::move(vaCopiato)) {}

  /// The members raise 91 while the object is bound to no file.
  [[nodiscard]] std::string Nome() override;
  /// True for a file, not a folder, that this program may read.
  [[nodiscard]] bool Esiste() override;
  void Chiudi() override {}
  /// A copy that fails halfway leaves no file behind.
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override;
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
            std::int32_t opzioni) override;
  [[nodiscard]] std::string Percorso() override;
  [[nodiscard]] std::int32_t Posizione() override;
  void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) override;
  void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) override;

 private:
  std::shared_ptr<CartellaCopie> copie_;
  VaCopiato vaCopiato_;
  std::string percorso_;  // empty: bound to nothing
};

}  // namespace orve::adapters::win32::finestre
