// A record set without a connection, held in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/record_set_scollegato.h"

namespace orve::adapters::values {

class RecordSetInMemoria : public host::RecordSetScollegato {
 public:
  /// Numbers of the errors raised.
  enum Errori : std::int32_t {
    kArgomentiErrati = 3001,
    kNessunRecord = 3021,
    kElementoNonTrovato = 3265,
    kOggettoChiuso = 3704,
    kOggettoAperto = 3705,
    kValoreNonValido = -2147217887,
  };

  RecordSetInMemoria();

  [[nodiscard]] bool Eof() const override;
  [[nodiscard]] std::shared_ptr<host::Fields> Fields() const override;
  void MoveFirst() override;
  void MoveNext() override;
  [[nodiscard]] std::int32_t State() const override;
  void Close() override;
  void FieldsAppend(const std::string& nome, std::int32_t tipo, std::int32_t dimensione,
                    std::int32_t attributo) override;
  void Open(std::int32_t cursore, std::int32_t blocco, std::int32_t opzioni) override;
  void AddNew(const std::vector<std::string>& campi, const host::Variant::Array& valori) override;
  [[nodiscard]] std::int32_t RecordCount() override;
  void Find(const std::string& criterio, std::int32_t salta, std::int32_t direzione,
            std::int32_t inizio) override;
  [[nodiscard]] std::int32_t AbsolutePosition() override;
  void AbsolutePosition(std::int32_t posizione) override;

 private:
  struct Tabella;

  void Vai(std::size_t riga);

  std::shared_ptr<Tabella> tabella_;  // shared with the fields that were handed out
};

}  // namespace orve::adapters::values
