#include "orve-mail/secrets/memoria.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <cstdlib>
#include <cstring>

namespace orve::app {

void ChiudiMemoria() noexcept {
  const rlimit nessuno{0, 0};
  ::setrlimit(RLIMIT_CORE, &nessuno);
  ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
}

void DimenticaVariabile(const char* nome) noexcept {
  char* const valore = std::getenv(nome);
  if (valore == nullptr) return;
  ::explicit_bzero(valore, std::strlen(valore));
  ::unsetenv(nome);
}

}  // namespace orve::app
