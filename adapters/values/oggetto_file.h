// The host's file object as far as no file system is asked: what it is bound to.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::values {

/// The members raise 91 while the object is bound to no file.
class OggettoFile : public host::OggettoFile {
 public:
  [[nodiscard]] std::string Nome() override;
  void Chiudi() override {}
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
            std::int32_t opzioni) override;
  [[nodiscard]] std::string Percorso() override;
  [[nodiscard]] std::int32_t Posizione() override;
  void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) override;
  void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) override;

 protected:
  /// Where a copy of this name goes, in the library's form.
  [[nodiscard]] virtual std::string PostoPerCopia(const std::string& nome) = 0;
  [[nodiscard]] virtual bool DaCopiarePrima() = 0;

 private:
  std::string percorso_;  // in the library's form; empty: bound to nothing
};

}  // namespace orve::adapters::values
