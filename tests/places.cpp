#include "places.h"

namespace orve::places {

std::string Source(const std::string& path) {
  return ORVE_SOURCE_DIR + ("/" + path);
}

std::string Build(const std::string& path) {
  return ORVE_BINARY_DIR + ("/" + path);
}

std::string Program() {
  return Build("apps/orve-mail/orve-mail");
}

}  // namespace orve::places
