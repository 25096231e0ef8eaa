// A stored procedure run with parameters of its own.
#pragma once

#include <memory>
#include <string>

#include "odbc/link.h"
#include "rows/command.h"

namespace orve::adapters::odbc {

class Command final : public rows::Command {
 public:
  explicit Command(std::shared_ptr<const Link> collegamento);

 protected:
  [[nodiscard]] bool Aperto() const override { return collegamento_->Aperto(); }
  void EseguiTesto(const std::string& testo) override;
  void EseguiProcedura(std::string_view nome, const rows::Parameters& parametri) override;

 private:
  std::shared_ptr<const Link> collegamento_;
};

}  // namespace orve::adapters::odbc
