#include "posix/file_riservato.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <system_error>

#include "orve-mailserver/host/errore.h"
#include "posix/errori.h"

namespace orve::adapters::posix {

namespace {

std::optional<struct stat> StatoCartella(const std::string& file) {
  const std::size_t ultima = file.rfind('/');
  const std::string cartella = ultima == std::string::npos ? "." : file.substr(0, ultima + 1);
  struct stat stato {};
  if (::stat(cartella.c_str(), &stato) != 0) return {};
  return stato;
}

}  // namespace

FileAperto::FileAperto(const std::string& cosa, const std::string& file, int modalita, mode_t permessi)
    : descrittore_(::open(file.c_str(), modalita | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permessi)) {
  if (!descrittore_) FileInutilizzabile(cosa, file, std::generic_category().message(errno));
}

void FileInutilizzabile(const std::string& cosa, const std::string& file, const std::string& motivo) {
  throw host::Errore(kPermessoNegato, cosa, cosa + " " + file + ": " + motivo);
}

std::string LeggiFileRiservato(const std::string& cosa, const std::string& file, std::size_t massimo) {
  const FileAperto aperto(cosa, file, O_RDONLY);
  const auto inutilizzabile = [&](const std::string& motivo) { FileInutilizzabile(cosa, file, motivo); };
  struct stat stato {};
  if (::fstat(aperto.Numero(), &stato) != 0) inutilizzabile(std::generic_category().message(errno));
  if (!S_ISREG(stato.st_mode)) inutilizzabile("non è un file");
  if (!ProprietarioFidato(stato.st_uid)) inutilizzabile("appartiene a un altro utente");
  if ((stato.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    inutilizzabile("è accessibile ad altri utenti; impostare i permessi con: chmod 600");
  }
  std::string testo(massimo, '\0');
  const ssize_t letti = ::read(aperto.Numero(), testo.data(), testo.size());
  if (letti < 0) inutilizzabile(std::generic_category().message(errno));
  testo.resize(static_cast<std::size_t>(letti));
  return testo;
}

bool ProprietarioFidato(uid_t proprietario) {
  return proprietario == ::geteuid() || proprietario == 0;
}

bool CartellaDiTutti(const std::string& file) {
  const auto stato = StatoCartella(file);
  return !stato || (stato->st_mode & S_IWOTH) != 0;
}

bool CartellaFidata(const std::string& file) {
  const auto stato = StatoCartella(file);
  return stato && ProprietarioFidato(stato->st_uid);
}

}  // namespace orve::adapters::posix
