#include "password/chiave.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "posix/file_riservato.h"

namespace orve::adapters::password {

namespace {

static_assert(Chiave::kByte == crypto_secretbox_KEYBYTES);

constexpr std::string_view kIntestazione = "orve-mail-chiave-2:";
constexpr std::string_view kConSlegate = "orve-mail-chiave-1:";  // passwords may have been bound to no server
static_assert(kIntestazione.size() == kConSlegate.size());
constexpr std::size_t kCifre = sodium_base64_ENCODED_LEN(Chiave::kByte, sodium_base64_VARIANT_ORIGINAL) - 1;

constexpr const char* kCosa = "File della chiave";

[[noreturn]] void Inutilizzabile(const std::string& file, const std::string& motivo) {
  posix::FileInutilizzabile(kCosa, file, motivo);
}

// Wipes a buffer that held key text, on every exit path.
struct Cancellazione {
  explicit Cancellazione(std::string& testo) : testo_(testo) {}
  Cancellazione(const Cancellazione&) = delete;
  Cancellazione& operator=(const Cancellazione&) = delete;
  Cancellazione(Cancellazione&&) = delete;
  Cancellazione& operator=(Cancellazione&&) = delete;
  ~Cancellazione() { sodium_memzero(testo_.data(), testo_.size()); }

 private:
  std::string& testo_;
};

void ScriviTutto(int descrittore, std::string_view resto, const std::string& file) {
  while (!resto.empty()) {
    const ssize_t scritti = ::write(descrittore, resto.data(), resto.size());
    if (scritti < 0 && errno == EINTR) continue;
    if (scritti < 0) Inutilizzabile(file, std::generic_category().message(errno));
    resto.remove_prefix(static_cast<std::size_t>(scritti));
  }
}

// What an interrupted run left there: owned by this user, or already by the owner of the key.
void RimuoviResto(const std::string& nuova, uid_t proprietario) {
  struct stat stato {};
  if (::lstat(nuova.c_str(), &stato) != 0 || !S_ISREG(stato.st_mode)) return;
  if (stato.st_uid == ::geteuid() || stato.st_uid == proprietario) ::unlink(nuova.c_str());
}

}  // namespace

Chiave Chiave::Nuova() {
  if (sodium_init() < 0) throw host::Errore(host::kOggettoNonCreabile, "Chiave", "Cifratura non disponibile");
  Chiave chiave;
  crypto_secretbox_keygen(chiave.byte_.data());
  return chiave;
}

Chiave Chiave::Leggi(const std::string& file) {
  std::string testo = posix::LeggiFileRiservato(kCosa, file, kIntestazione.size() + kCifre + 2);
  const Cancellazione cancella(testo);
  std::string_view contenuto(testo);
  if (!contenuto.empty() && contenuto.back() == '\n') contenuto.remove_suffix(1);
  const std::string_view intestazione = contenuto.substr(0, kIntestazione.size());
  const bool intestata = intestazione == kIntestazione || intestazione == kConSlegate;
  const std::string_view cifre = intestata ? contenuto.substr(kIntestazione.size()) : std::string_view();
  Chiave chiave;
  chiave.soloLegate_ = intestazione == kIntestazione;
  std::size_t lunghezza = 0;
  const bool leggibile = cifre.size() == kCifre &&
                         sodium_base642bin(chiave.byte_.data(), kByte, cifre.data(), cifre.size(), nullptr,
                                           &lunghezza, nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
  if (!leggibile || lunghezza != kByte) Inutilizzabile(file, "non contiene una chiave di orve-mail");
  return chiave;
}

Chiave::Chiave(Chiave&& altra) noexcept : byte_(altra.byte_), soloLegate_(altra.soloLegate_) {
  sodium_memzero(altra.byte_.data(), altra.byte_.size());
}

Chiave::~Chiave() {
  sodium_memzero(byte_.data(), byte_.size());
}

void Chiave::ScriviNuovo(const std::string& file, bool soloLegate) const {
  std::string testo(soloLegate ? kIntestazione : kConSlegate);
  testo.resize(kIntestazione.size() + kCifre + 1);
  const Cancellazione cancella(testo);
  sodium_bin2base64(testo.data() + kIntestazione.size(), kCifre + 1, byte_.data(), kByte,
                    sodium_base64_VARIANT_ORIGINAL);
  testo.back() = '\n';
  const posix::FileAperto aperto(kCosa, file, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  try {
    ScriviTutto(aperto.Numero(), testo, file);
    if (::fsync(aperto.Numero()) != 0) Inutilizzabile(file, std::generic_category().message(errno));
  } catch (...) {
    ::unlink(file.c_str());
    throw;
  }
}

void Chiave::Scrivi(const std::string& file) const {
  ScriviNuovo(file, soloLegate_);
}

std::string Chiave::Nascente(const std::string& file) {
  return file + ".nuova";
}

void Chiave::RiservaALegate(const std::string& file) const {
  struct stat stato {};
  if (::lstat(file.c_str(), &stato) != 0) Inutilizzabile(file, std::generic_category().message(errno));
  if (S_ISLNK(stato.st_mode)) Inutilizzabile(file, "è un collegamento simbolico");
  if (Leggi(file).byte_ != byte_) Inutilizzabile(file, "contiene un'altra chiave");
  const std::string nuova = Nascente(file);
  RimuoviResto(nuova, stato.st_uid);
  ScriviNuovo(nuova, true);
  const bool alSuoPosto = ::chown(nuova.c_str(), stato.st_uid, stato.st_gid) == 0 &&
                          ::chmod(nuova.c_str(), stato.st_mode & ALLPERMS) == 0 &&
                          ::rename(nuova.c_str(), file.c_str()) == 0;
  if (!alSuoPosto) {
    const int motivo = errno;
    ::unlink(nuova.c_str());
    Inutilizzabile(file, std::generic_category().message(motivo));
  }
}

}  // namespace orve::adapters::password
