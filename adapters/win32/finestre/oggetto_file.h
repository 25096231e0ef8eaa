// The host's file objects on the files of Windows.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "values/oggetto_file.h"

namespace orve::adapters::win32::finestre {

/// Whether the volume that holds the file is a removable medium, a disc or another machine's. False for a
/// path that cannot be examined.
[[nodiscard]] bool SuSupportoEsterno(const std::string& percorso);

/// The folder is created for the first copy and again if it has disappeared. Whenever one is created, those
/// next to it that are older than values::kVitaDelleCopie are removed.
class CartellaCopie : public values::CartellaCopie {
 public:
  /// `genitore`: where the folder is created; empty for the person's temporary folder.
  explicit CartellaCopie(std::string genitore = {}) : genitore_(std::move(genitore)) {}

  [[nodiscard]] std::string PostoPer(const std::string& nome) override;

 private:
  std::string genitore_;
  std::wstring radice_;
  int copie_ = 0;
};

class OggettoFile : public values::OggettoFile {
 public:
  explicit OggettoFile(std::shared_ptr<values::CartellaCopie> copie, VaCopiato vaCopiato = SuSupportoEsterno)
      : values::OggettoFile(std::move(copie), std::move(vaCopiato)) {}

  /// True for a file, not a folder, that this program may read.
  [[nodiscard]] bool Esiste() override;
  /// A copy that fails halfway leaves no file behind.
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override;
};

}  // namespace orve::adapters::win32::finestre
