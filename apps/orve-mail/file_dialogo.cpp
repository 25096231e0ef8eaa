#include "orve-mail/file_dialogo.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

#include "orve-mail/file_riservato.h"
#include "orve-mail/terminale.h"
#include "orve-mail/uscita.h"

namespace orve::app {

namespace {

constexpr const char* kNonScrivibile = "--dialogo: impossibile scrivere";

/// What lines may go to without waiting for anybody but the person.
bool Scrivibile(int numero) {
  struct stat stato {};
  if (::fstat(numero, &stato) != 0) return false;
  if (S_ISREG(stato.st_mode) || ::isatty(numero) != 0) return true;
  struct stat nulla {};
  const bool nessuno =
      ::stat("/dev/null", &nulla) == 0 && S_ISCHR(stato.st_mode) && stato.st_rdev == nulla.st_rdev;
  // The program's own output may be a pipe, whose reader the program waits for in any case.
  return nessuno || UscitaDelProgramma(stato).has_value();
}

}  // namespace

std::function<void(std::string_view)> ScriviDialogo(const std::string& file) {
  const int numero = ApriFileProprio(kNonScrivibile, file, O_WRONLY | O_APPEND);
  const std::shared_ptr<std::FILE> flusso(::fdopen(numero, "a"), [numero](std::FILE* aperto) {
    if (aperto == nullptr) {
      ::close(numero);
    } else {
      std::fclose(aperto);
    }
  });
  if (!flusso || !Scrivibile(numero)) {
    throw ErroreProgramma(Uscita::kFileMancante,
                          std::string(kNonScrivibile) + " " + file +
                              ": non è un file; indicarne uno, oppure - per lo standard error");
  }
  return [flusso](std::string_view riga) {
    std::fputs((RigaSicura(riga) + "\n").c_str(), flusso.get());
    std::fflush(flusso.get());
  };
}

}  // namespace orve::app
