#include "orve-mail/file_dialogo.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "orve-mail/terminale.h"
#include "orve-mail/uscita.h"

namespace orve::app {

namespace {

[[noreturn]] void NonScrivibile(const std::string& file, const std::string& motivo) {
  throw ErroreProgramma(Uscita::kFileMancante, "--dialogo: impossibile scrivere " + file + ": " + motivo);
}

bool UscitaDelProgramma(const struct stat& stato) {
  constexpr std::array kUscite = {STDOUT_FILENO, STDERR_FILENO};
  return std::any_of(kUscite.begin(), kUscite.end(), [&](int numero) {
    struct stat uscita {};
    return ::fstat(numero, &uscita) == 0 && uscita.st_dev == stato.st_dev && uscita.st_ino == stato.st_ino;
  });
}

}  // namespace

std::function<void(std::string_view)> ScriviDialogo(const std::string& file) {
  constexpr int kModo = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  const int numero = ::open(file.c_str(), kModo, S_IRUSR | S_IWUSR);
  if (numero < 0 && errno == ENXIO) NonScrivibile(file, "non è un file");  // a pipe that nobody reads
  if (numero < 0) NonScrivibile(file, std::generic_category().message(errno));
  const std::shared_ptr<std::FILE> flusso(::fdopen(numero, "a"), [numero](std::FILE* aperto) {
    if (aperto == nullptr) {
      ::close(numero);
    } else {
      std::fclose(aperto);
    }
  });
  struct stat stato {};
  const bool ammesso = flusso && ::fstat(numero, &stato) == 0 &&
                       (S_ISREG(stato.st_mode) || ::isatty(numero) != 0 || UscitaDelProgramma(stato));
  if (!ammesso) NonScrivibile(file, "non è un file");
  ::fcntl(numero, F_SETFL, kModo & O_APPEND);  // from here on writing may wait, as for a slow terminal
  return [flusso](std::string_view riga) {
    std::fputs((RigaSicura(riga) + "\n").c_str(), flusso.get());
    std::fflush(flusso.get());
  };
}

}  // namespace orve::app
