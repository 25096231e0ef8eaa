#include "orve-mail/file_dialogo.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <optional>

#include "orve-mail/file_riservato.h"
#include "orve-mail/terminale.h"
#include "orve-mail/uscita.h"

namespace orve::app {

namespace {

constexpr const char* kCosa = "--dialogo: impossibile scrivere";

[[noreturn]] void NonScrivibile(const std::string& file) {
  throw ErroreProgramma(Uscita::kFileMancante, std::string(kCosa) + " " + file + ": non è un file");
}

/// A descriptor of the program's own output that goes by this name, as by /dev/stdout; none for any other file.
std::optional<int> UscitaDelProgramma(const std::string& file) {
  struct stat stato {};
  if (::stat(file.c_str(), &stato) != 0) return {};
  for (const int numero : {STDOUT_FILENO, STDERR_FILENO}) {
    struct stat uscita {};
    if (::fstat(numero, &uscita) == 0 && uscita.st_dev == stato.st_dev && uscita.st_ino == stato.st_ino)
      return ::fcntl(numero, F_DUPFD_CLOEXEC, 0);
  }
  return {};
}

}  // namespace

std::function<void(std::string_view)> ScriviDialogo(const std::string& file) {
  const std::optional<int> uscita = UscitaDelProgramma(file);
  const int numero = uscita ? *uscita : ApriFileProprio(kCosa, file, O_WRONLY | O_APPEND);
  const std::shared_ptr<std::FILE> flusso(::fdopen(numero, "a"), [numero](std::FILE* aperto) {
    if (aperto == nullptr) {
      ::close(numero);
    } else {
      std::fclose(aperto);
    }
  });
  struct stat stato {};
  const bool ammesso = flusso && ::fstat(numero, &stato) == 0 &&
                       (uscita || S_ISREG(stato.st_mode) || ::isatty(numero) != 0);
  if (!ammesso) NonScrivibile(file);
  if (!uscita) ::fcntl(numero, F_SETFL, O_APPEND);  // from here on writing may wait, as for a slow terminal
  return [flusso](std::string_view riga) {
    std::fputs((RigaSicura(riga) + "\n").c_str(), flusso.get());
    std::fflush(flusso.get());
  };
}

}  // namespace orve::app
