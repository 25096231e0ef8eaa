#include "smtp/secret.h"

#include <cstring>

namespace orve::adapters::smtp {

void Secret::Wipe() noexcept {
  if (!bytes_.empty()) ::explicit_bzero(bytes_.data(), bytes_.size());
  bytes_.clear();
}

}  // namespace orve::adapters::smtp
