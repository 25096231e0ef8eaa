// Loaded into a program under test (LD_PRELOAD), reports at its end what others could find in its memory.
//
// $LEFT_SECRET is the text to look for, each byte XOR 90 and in two hexadecimal digits, so that it is nowhere
// in clear. One line goes into the file $LEFT_REPORT: how often the text occurs in what the program may
// write, whether the process may be dumped, and the size of a core file that it may leave.
#include <sys/prctl.h>
#include <sys/resource.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr unsigned char kMask = 90;

unsigned char hidden[256];
std::size_t length = 0;

void ReadSecret(const char* digits) {
  for (; digits[0] != '\0' && digits[1] != '\0' && length < sizeof hidden; digits += 2) {
    const char pair[3] = {digits[0], digits[1], '\0'};
    hidden[length++] = static_cast<unsigned char>(std::strtoul(pair, nullptr, 16));
  }
}

// Volatile, since the compiler must not make a copy of the text in clear.
bool StandsAt(const volatile unsigned char* place) {
  for (std::size_t i = 0; i < length; ++i) {
    if ((place[i] ^ kMask) != hidden[i]) return false;
  }
  return true;
}

int Copies() {
  std::FILE* const maps = std::fopen("/proc/self/maps", "r");
  if (maps == nullptr || length == 0) return -1;
  int copies = 0;
  char line[512];
  while (std::fgets(line, sizeof line, maps) != nullptr) {
    char* rest = nullptr;
    const std::uintptr_t from = std::strtoull(line, &rest, 16);
    const std::uintptr_t to = std::strtoull(rest + 1, &rest, 16);
    if (std::strncmp(rest, " rw", 3) != 0) continue;
    for (std::uintptr_t at = from; at + length <= to; ++at) {
      // NOLINTNEXTLINE(performance-no-int-to-ptr): the addresses come as text
      if (StandsAt(reinterpret_cast<const unsigned char*>(at))) {
        ++copies;
        if (std::getenv("LEFT_WHERE") != nullptr) std::fprintf(stderr, "%lx in %s", at, line);
      }
    }
  }
  std::fclose(maps);
  return copies;
}

__attribute__((destructor)) void Tell() {
  const char* const secret = std::getenv("LEFT_SECRET");
  const char* const report = std::getenv("LEFT_REPORT");
  if (secret == nullptr || report == nullptr) return;
  ReadSecret(secret);
  rlimit core{};
  ::getrlimit(RLIMIT_CORE, &core);
  const int copies = Copies();
  std::FILE* const file = std::fopen(report, "w");
  if (file == nullptr) return;
  std::fprintf(file, "copies %d, dumpable %d, core %ld\n", copies, ::prctl(PR_GET_DUMPABLE),
               static_cast<long>(core.rlim_cur));
  std::fclose(file);
}

}  // namespace
