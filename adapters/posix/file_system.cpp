#include "posix/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>

#include "orve-mailserver/posix/percorsi.h"
#include "posix/descriptor.h"
#include "posix/errori.h"
#include "text/text.h"

namespace orve::adapters::posix {

namespace {

class TextStream : public host::TextStream {
 public:
  TextStream(int descrittore, std::string file) : descrittore_(descrittore), file_(std::move(file)) {}

  void WriteLine(const std::string& testo) override {
    if (!descrittore_) throw host::Errore(host::kOggettoNonImpostato);
    Scrivi(text::ToWindows1252(testo) + "\r\n");
  }

  void Close() override {
    if (const int errore = descrittore_.Close(); errore != 0) throw ErroreDiSistema(errore, file_);
  }

 private:
  void Scrivi(std::string_view resto) {
    while (!resto.empty()) {
      const ssize_t scritti = ::write(descrittore_.Number(), resto.data(), resto.size());
      if (scritti < 0 && errno == EINTR) continue;
      if (scritti < 0) throw ErroreDiSistema(errno, file_);
      resto.remove_prefix(static_cast<std::size_t>(scritti));
    }
  }

  Descriptor descrittore_;
  std::string file_;
};

// What stat says about the path; nothing for a path that does not exist or cannot be examined.
bool Esamina(const std::string& percorso, struct stat& stato) {
  try {
    return ::stat(PercorsoUnix(percorso).c_str(), &stato) == 0;
  } catch (const host::Errore&) {
    return false;
  }
}

bool CartellaPresente(const std::string& nativo) {
  const std::size_t fine = nativo.rfind('/');
  if (fine == std::string::npos) return true;
  struct stat stato {};
  return ::stat(nativo.substr(0, fine + 1).c_str(), &stato) == 0 && S_ISDIR(stato.st_mode);
}

host::Errore ErroreApertura(int codice, const std::string& nativo, const std::string& file) {
  if (codice == ENOENT && CartellaPresente(nativo)) return ErroreFile(kFileNonTrovato, file);
  // A pipe without a reader.
  if (codice == ENXIO) return ErroreFile(kPermessoNegato, file);
  return ErroreDiSistema(codice, file);
}

}  // namespace

bool FileSystem::FolderExists(const std::string& cartella) {
  struct stat stato {};
  return Esamina(cartella, stato) && S_ISDIR(stato.st_mode);
}

bool FileSystem::FileExists(const std::string& file) {
  struct stat stato {};
  return Esamina(file, stato) && !S_ISDIR(stato.st_mode);
}

std::shared_ptr<host::TextStream> FileSystem::OpenTextFile(const std::string& file, std::int32_t modo,
                                                           bool crea, std::int32_t formato) {
  if (modo != kAccoda || formato != kSingoloByte) throw host::Errore(host::kArgomentoNonValido);
  const std::string nativo = PercorsoUnix(file);
  constexpr mode_t kPermessi = 0666;  // minus the process's umask
  // Without O_NONBLOCK, opening a pipe would wait for its reader.
  const int modalita = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | (crea ? O_CREAT : 0);
  const int descrittore = ::open(nativo.c_str(), modalita, kPermessi);
  if (descrittore < 0) throw ErroreApertura(errno, nativo, file);
  auto flusso = std::make_shared<TextStream>(descrittore, file);
  struct stat stato {};
  if (::fstat(descrittore, &stato) != 0) throw ErroreDiSistema(errno, file);
  if (!S_ISREG(stato.st_mode) && !S_ISCHR(stato.st_mode)) throw ErroreFile(kPermessoNegato, file);
  return flusso;
}

}  // namespace orve::adapters::posix
