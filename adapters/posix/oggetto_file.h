// The host's file objects on the files of Unix.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "values/oggetto_file.h"

namespace orve::adapters::posix {

/// Whether the file system that holds the file is a removable medium or another machine's. False for a path
/// that cannot be examined.
[[nodiscard]] bool SuSupportoEsterno(const std::string& nativo);

/// The folder is created for the first copy and again if it has disappeared. Whenever one is created, those
/// of the same user that are older than values::kVitaDelleCopie are removed.
class CartellaCopie : public values::CartellaCopie {
 public:
  /// `genitore`: where the folder is created; empty for the system's temporary folder.
  explicit CartellaCopie(std::string genitore = {}) : genitore_(std::move(genitore)) {}

  [[nodiscard]] std::string PostoPer(const std::string& nome) override;

  /// Removes the folder with its copies, for an owner who knows that nobody needs them any more.
  void Rimuovi() noexcept;

 private:
  std::string genitore_;
  std::string radice_;
  int copie_ = 0;
};

class OggettoFile : public values::OggettoFile {
 public:
  explicit OggettoFile(std::shared_ptr<values::CartellaCopie> copie, VaCopiato vaCopiato = SuSupportoEsterno)
      : values::OggettoFile(std::move(copie), std::move(vaCopiato)) {}

  /// True for a file, not a folder, that this program may read.
  [[nodiscard]] bool Esiste() override;
  /// Copies a regular file at the length it has when it is opened. Raises 57 for one that shrinks meanwhile,
  /// 70 for what is not a file. A copy that fails halfway leaves no file behind.
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override;

 protected:
  /// Its Unix path.
  [[nodiscard]] std::string Nativo() override;
};

}  // namespace orve::adapters::posix
