#include "orve-mailserver/secrets/secret.h"

#include <cstring>

namespace orve::adapters::secrets {

void Secret::Wipe() noexcept {
  if (!bytes_.empty()) ::explicit_bzero(bytes_.data(), bytes_.size());
  bytes_.clear();
}

}  // namespace orve::adapters::secrets
