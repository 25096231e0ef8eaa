#include "orve-mail/secrets/file_proprio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "orve-mail/terminal/uscita.h"
#include "posix/file_riservato.h"

namespace orve::app {

using adapters::posix::CartellaDiTutti;
using adapters::posix::Descriptor;
using adapters::posix::ProprietarioFidato;

namespace {

/// What lines may be written to without waiting for anybody but the person.
bool Scrivibile(int numero) {
  struct stat stato {};
  if (::fstat(numero, &stato) != 0) return false;
  if (S_ISREG(stato.st_mode) || ::isatty(numero) != 0) return true;
  struct stat nulla {};
  const bool nessuno =
      ::stat("/dev/null", &nulla) == 0 && S_ISCHR(stato.st_mode) && stato.st_rdev == nulla.st_rdev;
  // The program's own output may be a pipe, whose reader the program waits for anyway.
  return nessuno || UscitaDelProgramma(stato).has_value();
}

}  // namespace

Descriptor ApriFileProprio(const std::string& cosa, const std::string& file, int modalita) {
  const auto inutilizzabile = [&](const std::string& motivo) {
    throw ErroreProgramma(Uscita::kFileMancante, cosa + " " + file + ": " + motivo);
  };
  struct stat stato {};
  if (file.starts_with("/dev/") && ::stat(file.c_str(), &stato) == 0) {
    if (const auto uscita = UscitaDelProgramma(stato)) {
      Descriptor copia(::fcntl(*uscita, F_DUPFD_CLOEXEC, 0));
      if (!copia) inutilizzabile(std::generic_category().message(errno));
      return copia;
    }
  }
  Descriptor aperto(::open(file.c_str(), modalita | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY | O_NONBLOCK,
                           S_IRUSR | S_IWUSR));
  if (!aperto) {
    const int motivo = errno;
    if (motivo == ELOOP) inutilizzabile("è un collegamento simbolico; indicare il file stesso");
    if (motivo == ENXIO) inutilizzabile("non è un file, ma una pipe che nessuno legge");
    inutilizzabile(std::generic_category().message(motivo));
  }
  const bool noto = ::fstat(aperto.Number(), &stato) == 0;
  const bool fidato =
      ProprietarioFidato(stato.st_uid) || (::geteuid() == 0 && noto && !CartellaDiTutti(file));
  if (!noto || (S_ISREG(stato.st_mode) && !fidato)) {
    inutilizzabile("appartiene a un altro utente; indicare un file proprio, o uno che non c'è ancora");
  }
  ::fcntl(aperto.Number(), F_SETFL, modalita & O_APPEND);  // only opening must not wait
  return aperto;
}

Descriptor ApriFilePerRighe(const std::string& cosa, const std::string& file) {
  Descriptor aperto = ApriFileProprio(cosa, file, O_WRONLY | O_APPEND);
  if (Scrivibile(aperto.Number())) return aperto;
  throw ErroreProgramma(Uscita::kFileMancante,
                        cosa + " " + file + ": non è un file; indicarne uno, oppure - per lo standard error");
}

bool StessoFile(const struct stat& uno, const struct stat& altro) {
  return uno.st_dev == altro.st_dev && uno.st_ino == altro.st_ino;
}

std::optional<int> UscitaDelProgramma(const struct stat& stato) {
  for (const int numero : {STDOUT_FILENO, STDERR_FILENO}) {
    struct stat uscita {};
    if (::fstat(numero, &uscita) == 0 && StessoFile(uscita, stato)) return numero;
  }
  return {};
}

const char* NonFile(mode_t modo) {
  return S_ISDIR(modo) ? "è una cartella" : "non è un file";
}

}  // namespace orve::app
