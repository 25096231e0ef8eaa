// A statement or a stored procedure run with parameters of its own, as every database adapter runs it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "rows/parameters.h"

namespace orve::adapters::rows {

class Command : public host::Command {
 public:
  void CommandType(std::int32_t tipo) override { tipo_ = tipo; }
  void CommandText(const std::string& testo) override { testo_ = testo; }
  /// Raises 3001 for anything but an output integer.
  [[nodiscard]] std::shared_ptr<host::Parameter> CreateParameter(const std::string& nome, std::int32_t tipo,
                                                                 std::int32_t direzione,
                                                                 std::int32_t lunghezza) override;
  void ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) override;
  void Execute() override;
  [[nodiscard]] std::shared_ptr<host::Parameter> ParametersItem(std::string_view nome) const override;

 protected:
  /// Errors name `sorgente`.
  explicit Command(std::string sorgente);

  /// Whether the command's connection is open.
  [[nodiscard]] virtual bool Aperto() const = 0;
  virtual void EseguiTesto(const std::string& testo) = 0;
  virtual void EseguiProcedura(std::string_view nome, const Parameters& parametri) = 0;

 private:
  std::string sorgente_;
  std::int32_t tipo_;
  std::string testo_;
  Parameters parametri_;
};

}  // namespace orve::adapters::rows
