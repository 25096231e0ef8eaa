// Loaded into a program under test (LD_PRELOAD), kills it with SIGKILL at one of the calls by which something
// becomes visible outside: what it writes to files whose names end in $KILL_FILES, and what it sends.
//
// $KILL_AT is the number of the call, from 1. $KILL_HALF makes it do half its work first; a call that cannot
// be halved is then done completely.
#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

template <class Function>
Function Real(const char* name) {
  return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

bool EndsWatched(std::string_view name) {
  const char* const suffix = std::getenv("KILL_FILES");
  if (suffix == nullptr) return false;
  const std::string_view end(suffix);
  return name.size() >= end.size() && name.substr(name.size() - end.size()) == end;
}

bool Watched(int descriptor) {
  std::array<char, 4096> path{};
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
  return length > 0 && EndsWatched({path.data(), static_cast<std::size_t>(length)});
}

bool ItIsTime() {
  static long calls = 0;
  const char* const at = std::getenv("KILL_AT");
  return at != nullptr && ++calls == std::atol(at);
}

bool Half() {
  return std::getenv("KILL_HALF") != nullptr;
}

[[noreturn]] void Die() {
  ::kill(::getpid(), SIGKILL);
  for (;;) ::pause();
}

}  // namespace

// The names under which the program finds the functions; in this file the system's own keep theirs.
extern "C" {
ssize_t WriteOrDie(int descriptor, const void* bytes, std::size_t size, off_t offset) __asm__("pwrite");
int SyncOrDie(int descriptor) __asm__("fdatasync");
int RenameOrDie(const char* from, const char* to) __asm__("rename");
ssize_t SendOrDie(int descriptor, const void* bytes, std::size_t size, int flags) __asm__("send");
}

ssize_t WriteOrDie(int descriptor, const void* bytes, std::size_t size, off_t offset) {
  static const auto real = Real<decltype(&WriteOrDie)>("pwrite");
  if (!Watched(descriptor) || !ItIsTime()) return real(descriptor, bytes, size, offset);
  if (Half()) real(descriptor, bytes, size / 2, offset);
  Die();
}

int SyncOrDie(int descriptor) {
  static const auto real = Real<decltype(&SyncOrDie)>("fdatasync");
  if (!Watched(descriptor) || !ItIsTime()) return real(descriptor);
  if (Half()) real(descriptor);
  Die();
}

int RenameOrDie(const char* from, const char* to) {
  static const auto real = Real<decltype(&RenameOrDie)>("rename");
  if (!EndsWatched(to) || !ItIsTime()) return real(from, to);
  if (Half()) real(from, to);
  Die();
}

ssize_t SendOrDie(int descriptor, const void* bytes, std::size_t size, int flags) {
  static const auto real = Real<decltype(&SendOrDie)>("send");
  if (!ItIsTime()) return real(descriptor, bytes, size, flags);
  if (Half()) real(descriptor, bytes, size / 2, flags);
  Die();
}
