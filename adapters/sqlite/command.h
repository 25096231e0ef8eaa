// A stored procedure run with parameters of its own, here the ones built into the adapter.
#pragma once

#include <memory>
#include <string>

#include "orve-mailserver/host/connection.h"
#include "rows/parameters.h"
#include "sqlite/database.h"

namespace orve::adapters::sqlite {

class Comando final : public host::Command {
 public:
  explicit Comando(std::shared_ptr<Database> database);

  void CommandType(std::int32_t tipo) override;
  void CommandText(const std::string& testo) override;
  /// Raises 3001 for a type or direction that no procedure here takes.
  [[nodiscard]] std::shared_ptr<host::Parameter> CreateParameter(const std::string& nome, std::int32_t tipo,
                                                                 std::int32_t direzione,
                                                                 std::int32_t lunghezza) override;
  void ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) override;
  /// Raises 1 with the engine's wording for a procedure that does not exist or takes other parameters.
  void Execute() override;
  [[nodiscard]] std::shared_ptr<host::Parameter> ParametersItem(std::string_view nome) const override;

 private:
  void EseguiProcedura();

  std::shared_ptr<Database> database_;
  std::int32_t tipo_;
  std::string testo_;
  rows::Parametri parametri_;
};

}  // namespace orve::adapters::sqlite
