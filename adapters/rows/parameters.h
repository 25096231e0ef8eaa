// The parameters of a stored procedure as every database adapter keeps them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orve-mailserver/host/connection.h"
#include "rows/record_set.h"

namespace orve::adapters::rows {

/// A 32-bit integer that a procedure returns; Null until it has run.
class Parameter final : public host::Parameter {
 public:
  explicit Parameter(std::string nome) : nome_(std::move(nome)) {}

  [[nodiscard]] host::Variant Value() const override { return valore_; }
  void Value(host::Variant valore) { valore_ = std::move(valore); }
  [[nodiscard]] const std::string& Nome() const { return nome_; }

 private:
  std::string nome_;
  host::Variant valore_ = host::Null{};
};

/// The parameters of one command, in the order in which they were appended. Errors name `sorgente`.
class Parameters {
 public:
  explicit Parameters(std::string sorgente) : sorgente_(std::move(sorgente)) {}

  /// A parameter that does not yet belong to a command. Raises 3001 for anything but an output integer.
  [[nodiscard]] std::shared_ptr<Parameter> Crea(const std::string& nome, std::int32_t tipo,
                                                std::int32_t direzione) const;
  /// Raises 91 for an absent parameter, 3001 for another adapter's.
  void Aggiungi(const std::shared_ptr<host::Parameter>& parametro);
  /// By name, ignoring case; raises 3265.
  [[nodiscard]] std::shared_ptr<Parameter> Trova(std::string_view nome) const;
  [[nodiscard]] const std::vector<std::shared_ptr<Parameter>>& Tutti() const { return parametri_; }

 private:
  std::string sorgente_;
  std::vector<std::shared_ptr<Parameter>> parametri_;
};

}  // namespace orve::adapters::rows
