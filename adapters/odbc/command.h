// A stored procedure run with parameters of its own.
#pragma once

#include <memory>
#include <string>

#include "odbc/link.h"
#include "rows/parameters.h"

namespace orve::adapters::odbc {

class Comando final : public host::Command {
 public:
  explicit Comando(std::shared_ptr<const Collegamento> collegamento);

  void CommandType(std::int32_t tipo) override;
  void CommandText(const std::string& testo) override;
  /// Raises 3001 for anything but an output integer.
  [[nodiscard]] std::shared_ptr<host::Parameter> CreateParameter(const std::string& nome, std::int32_t tipo,
                                                                 std::int32_t direzione,
                                                                 std::int32_t lunghezza) override;
  void ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) override;
  void Execute() override;
  [[nodiscard]] std::shared_ptr<host::Parameter> ParametersItem(std::string_view nome) const override;

 private:
  std::shared_ptr<const Collegamento> collegamento_;
  std::int32_t tipo_;
  std::string testo_;
  rows::Parametri parametri_;
};

}  // namespace orve::adapters::odbc
