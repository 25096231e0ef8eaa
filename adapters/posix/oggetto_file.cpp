#include "posix/oggetto_file.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "orve-mailserver/posix/percorsi.h"
#include "posix/descriptor.h"
#include "posix/errori.h"

namespace orve::adapters::posix {

namespace {

namespace fs = std::filesystem;

// Remote file systems that not every linux/magic.h names. FUSE carries those of the desktop (phones, remote
// folders); a file on a local disk behind it is copied needlessly, which does no harm.
constexpr unsigned long kCifs = 0xFF534D42UL;
constexpr unsigned long kSmb2 = 0xFE534D42UL;
constexpr unsigned long kCeph = 0x00C36400UL;
constexpr unsigned long kFuse = 0x65735546UL;
constexpr unsigned long kNoveP = 0x01021997UL;

constexpr std::string_view kPrefissoCopie = "orve-allegati-";

bool FileSystemRemoto(const std::string& nativo) {
  constexpr std::array<unsigned long, 8> kRemoti = {
      NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, AFS_SUPER_MAGIC, kCifs, kSmb2, kCeph, kFuse, kNoveP};
  struct statfs stato {};
  if (::statfs(nativo.c_str(), &stato) != 0) return false;
  const auto tipo = static_cast<unsigned long>(stato.f_type) & 0xFFFFFFFFUL;
  return std::find(kRemoti.begin(), kRemoti.end(), tipo) != kRemoti.end();
}

// The kernel's flag on the disk, or on the disk that a partition belongs to.
bool DiscoEstraibile(const std::string& nativo) {
  struct stat stato {};
  if (::stat(nativo.c_str(), &stato) != 0) return false;
  const std::string disco =
      "/sys/dev/block/" + std::to_string(major(stato.st_dev)) + ":" + std::to_string(minor(stato.st_dev));
  for (const char* segno : {"/removable", "/../removable"}) {
    std::ifstream flusso(disco + segno);
    int estraibile = 0;
    if (flusso >> estraibile) return estraibile != 0;
  }
  return false;
}

bool NomeSemplice(const std::string& nome) {
  return !nome.empty() && nome != "." && nome != ".." && nome.find_first_of("/\\") == std::string::npos &&
         nome.find('\0') == std::string::npos;
}

class FileCopiato {
 public:
  FileCopiato(const std::string& nativo, int modalita)
      : descrittore_(::open(nativo.c_str(), modalita | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR)) {
    if (!descrittore_) throw ErroreDiSistema(errno, nativo);
  }

  /// The size of a regular file.
  [[nodiscard]] std::size_t Dimensione(const std::string& nativo) const {
    struct stat stato {};
    if (::fstat(descrittore_.Number(), &stato) != 0) throw ErroreDiSistema(errno, nativo);
    if (!S_ISREG(stato.st_mode)) throw ErroreFile(kPermessoNegato, nativo);
    return static_cast<std::size_t>(stato.st_size);
  }
  // A disk that fills up may say so only here.
  void Chiudi(const std::string& nativo) {
    if (const int errore = descrittore_.Close(); errore != 0) throw ErroreDiSistema(errore, nativo);
  }
  [[nodiscard]] std::size_t Leggi(char* dati, std::size_t quanti, const std::string& nativo) const {
    for (;;) {
      const ssize_t letti = ::read(descrittore_.Number(), dati, quanti);
      if (letti >= 0) return static_cast<std::size_t>(letti);
      if (errno != EINTR) throw ErroreDiSistema(errno, nativo);
    }
  }
  void Scrivi(const char* dati, std::size_t quanti, const std::string& nativo) const {
    while (quanti > 0) {
      const ssize_t scritti = ::write(descrittore_.Number(), dati, quanti);
      if (scritti < 0 && errno == EINTR) continue;
      if (scritti < 0) throw ErroreDiSistema(errno, nativo);
      dati += scritti;
      quanti -= static_cast<std::size_t>(scritti);
    }
  }

 private:
  Descriptor descrittore_;
};

// As many bytes as the file held when it was opened: one that shrinks meanwhile would arrive truncated, and
// one that grows would have no end.
void CopiaContenuto(const std::string& da, const std::string& in) {
  constexpr std::size_t kPezzo = 65536;
  const FileCopiato origine(da, O_RDONLY | O_NONBLOCK);
  std::size_t resto = origine.Dimensione(da);
  FileCopiato copia(in, O_WRONLY | O_CREAT | O_EXCL);
  try {
    std::vector<char> pezzo(kPezzo);
    while (resto > 0) {
      const std::size_t letti = origine.Leggi(pezzo.data(), std::min(resto, pezzo.size()), da);
      if (letti == 0) throw ErroreDiSistema(EIO, da);
      copia.Scrivi(pezzo.data(), letti, in);
      resto -= letti;
    }
    copia.Chiudi(in);
  } catch (...) {
    ::unlink(in.c_str());
    throw;
  }
}

bool CopieVecchie(const fs::path& cartella) {
  struct stat stato {};
  if (::lstat(cartella.c_str(), &stato) != 0 || !S_ISDIR(stato.st_mode) || stato.st_uid != ::geteuid()) {
    return false;
  }
  std::error_code codice;
  const auto ultima = fs::last_write_time(cartella, codice);
  return !codice && fs::file_time_type::clock::now() - ultima > values::kVitaDelleCopie;
}

// What cannot be removed is left for next time.
void RimuoviCopieVecchie(const fs::path& genitore) {
  std::error_code ignorato;
  for (auto voce = fs::directory_iterator(genitore, ignorato); voce != fs::directory_iterator();
       voce.increment(ignorato)) {
    const bool nostra = voce->path().filename().string().starts_with(kPrefissoCopie);
    if (nostra && CopieVecchie(voce->path())) fs::remove_all(voce->path(), ignorato);
  }
}

}  // namespace

bool SuSupportoEsterno(const std::string& nativo) {
  return FileSystemRemoto(nativo) || DiscoEstraibile(nativo);
}

std::string CartellaCopie::PostoPer(const std::string& nome) {
  if (!NomeSemplice(nome)) throw ErroreFile(kNomeFileNonValido, nome);
  // Something that cleans up temporary folders may have removed it.
  if (std::error_code ignorato; !fs::is_directory(radice_, ignorato)) {
    std::error_code codice;
    const fs::path genitore = genitore_.empty() ? fs::temp_directory_path(codice) : fs::path(genitore_);
    RimuoviCopieVecchie(genitore);
    std::string modello = (genitore / (std::string(kPrefissoCopie) + "XXXXXX")).string();
    if (codice || ::mkdtemp(modello.data()) == nullptr) throw ErroreDiSistema(errno, modello);
    radice_ = modello;
  }
  const std::string cartella = radice_ + "/" + std::to_string(++copie_);
  if (::mkdir(cartella.c_str(), S_IRWXU) != 0) throw ErroreDiSistema(errno, cartella);
  return PercorsoLibreria(cartella + "/" + nome);
}

// What cannot be removed is left until the next folder is created.
void CartellaCopie::Rimuovi() noexcept {
  if (radice_.empty()) return;
  std::error_code ignorato;
  fs::remove_all(radice_, ignorato);
  radice_.clear();
}

std::string OggettoFile::Nativo() {
  return PercorsoUnix(Percorso());
}

bool OggettoFile::Esiste() {
  const std::string nativo = Nativo();
  struct stat stato {};
  return ::stat(nativo.c_str(), &stato) == 0 && !S_ISDIR(stato.st_mode) &&
         ::access(nativo.c_str(), R_OK) == 0;
}

void OggettoFile::CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t /*opzioni*/) {
  CopiaContenuto(Nativo(), PercorsoUnix(host::Richiesto(altro).Percorso()));
}

}  // namespace orve::adapters::posix
