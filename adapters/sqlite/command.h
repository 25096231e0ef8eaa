// A stored procedure run with parameters of its own, here the ones built into the adapter.
#pragma once

#include <memory>
#include <string>

#include "rows/command.h"
#include "sqlite/database.h"

namespace orve::adapters::sqlite {

class Command final : public rows::Command {
 public:
  explicit Command(std::shared_ptr<Database> database);

 protected:
  [[nodiscard]] bool Aperto() const override { return database_->Aperto(); }
  void EseguiTesto(const std::string& testo) override;
  /// Raises 1 with the engine's wording for a procedure that does not exist or takes other parameters.
  void EseguiProcedura(std::string_view procedura, const rows::Parameters& parametri) override;

 private:
  std::shared_ptr<Database> database_;
};

}  // namespace orve::adapters::sqlite
