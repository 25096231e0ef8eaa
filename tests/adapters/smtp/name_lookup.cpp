#include "adapters/smtp/name_lookup.h"

#include <dlfcn.h>
#include <netdb.h>

#include <chrono>
#include <mutex>
#include <string_view>
#include <thread>

namespace orve::adapters::smtp {

namespace {

std::mutex guard;
std::vector<std::string>& Names() {
  static std::vector<std::string> names;
  return names;
}

}  // namespace

std::vector<std::string> NamesLookedUp() {
  const std::lock_guard lock(guard);
  return Names();
}

}  // namespace orve::adapters::smtp

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* req, addrinfo** pai) {
  using orve::adapters::smtp::guard;
  using orve::adapters::smtp::Names;
  static const auto kSystem = reinterpret_cast<decltype(&getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
  const std::string_view asked = name != nullptr ? name : "";
  {
    const std::lock_guard lock(guard);
    Names().emplace_back(asked);
  }
  if (asked == "ignoto.test") return EAI_NONAME;
  if (asked == "guasto.test") return EAI_FAIL;
  if (asked == "silenzio.test") {
    std::this_thread::sleep_for(std::chrono::minutes(10));  // nothing lives that long here
    return EAI_AGAIN;
  }
  const bool ours = asked.ends_with(".example.test");
  return kSystem(ours ? "127.0.0.1" : name, service, req, pai);
}
