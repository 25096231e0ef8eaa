// A service whose inside is accessible to its creator, for tests of single procedures.
#pragma once

#include <memory>
#include <utility>

#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/interno.h"

namespace orve::fakes {

struct ServizioAperto {
  explicit ServizioAperto(const std::shared_ptr<host::Ambiente>& ambiente)
      : ServizioAperto(std::make_unique<Interno>(ambiente)) {}

  Interno& interno;  // belongs to the service
  std::unique_ptr<CLSFW_MAILSERVER> servizio;

 private:
  explicit ServizioAperto(std::unique_ptr<Interno> dentro)
      : interno(*dentro), servizio(std::make_unique<CLSFW_MAILSERVER>(std::move(dentro))) {}
};

}  // namespace orve::fakes
