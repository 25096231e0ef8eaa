#include "orve-mail/lists/esiti_lista.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "orve-mail/secrets/file_proprio.h"
#include "orve-mail/terminal/cella.h"
#include "orve-mail/terminal/numeri.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"
#include "text/text.h"

namespace orve::app {

using adapters::posix::Descriptor;

namespace {

constexpr std::string_view kTitoli = "riga;impronta;destinatario;inizio;esito;motivo;lista ";
constexpr std::size_t kCampiInizio = 4;
constexpr std::size_t kCampi = 6;
constexpr std::size_t kTestoMassimo = 1000;   // characters of a recipient or a reason
constexpr std::size_t kLineaMassima = 65536;  // bytes; ours are much shorter
constexpr off_t kSpazioLinea = 16384;         // more than one of our lines takes
constexpr off_t kSpazio = 262144;             // to ask for at a time
constexpr const char* kCosa = "File dei risultati";
constexpr const char* kInterrotto = "il programma si è fermato prima di conoscere l'esito";

struct Nome {
  EsitoRiga esito;
  std::string_view parola;
};

constexpr std::array<Nome, 6> kNomi = {{{EsitoRiga::kInviato, "inviato"},
                                        {EsitoRiga::kConRiserva, "inviato con riserva"},
                                        {EsitoRiga::kRifiutato, "rifiutato"},
                                        {EsitoRiga::kFallito, "fallito"},
                                        {EsitoRiga::kMalformata, "malformata"},
                                        {EsitoRiga::kIncerto, "incerto"}}};

std::string Sistema(int errore) {
  return std::generic_category().message(errore);
}

// Text that stays one field of one line without quotes, in this file and in a spreadsheet.
std::string Campo(std::string_view testo) {
  std::string campo = TerminalSafeLine(text::Left(testo, kTestoMassimo));
  std::replace(campo.begin(), campo.end(), ';', ',');
  std::replace(campo.begin(), campo.end(), '"', '\'');
  return CellaInerte(campo);
}

std::string Adesso() {
  const std::time_t adesso = std::time(nullptr);
  std::tm utc{};
  ::gmtime_r(&adesso, &utc);
  std::array<char, 32> testo{};
  const std::size_t lungo = std::strftime(testo.data(), testo.size(), "%Y-%m-%dT%H:%M:%SZ", &utc);
  return {testo.data(), lungo};
}

std::string PrimaMeta(std::size_t riga, const std::string& impronta, const std::string& destinatario,
                      const std::string& inizio) {
  return std::to_string(riga) + ";" + impronta + ";" + Campo(destinatario) + ";" + inizio + ";";
}

std::string SecondaMeta(EsitoRiga esito, const std::string& motivo) {
  return std::string(Parola(esito)) + ";" + Campo(motivo) + "\n";
}

std::optional<EsitoRiga> Esito(std::string_view parola) {
  const auto* const nome =
      std::find_if(kNomi.begin(), kNomi.end(), [parola](const Nome& n) { return n.parola == parola; });
  if (nome == kNomi.end()) return std::nullopt;
  return nome->esito;
}

bool Impronta(std::string_view testo) {
  return testo.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// The length of the first half of a line; 0 when it is incomplete, or belongs to a row for which no message
// was handed over.
std::size_t LunghezzaInizio(std::string_view linea) {
  std::size_t inizio = 0;
  std::size_t fine = 0;
  for (std::size_t campo = 0; campo < kCampiInizio; ++campo) {
    inizio = campo == 0 ? 0 : fine + 1;
    fine = linea.find(';', inizio);
    if (fine == std::string_view::npos) return 0;
  }
  return fine == inizio ? 0 : fine + 1;
}

bool ScriviTutto(int descrittore, std::string_view testo, off_t posizione) {
  while (!testo.empty()) {
    const ssize_t scritti = ::pwrite(descrittore, testo.data(), testo.size(), posizione);
    if (scritti < 0 && errno == EINTR) continue;
    if (scritti <= 0) return false;
    testo.remove_prefix(static_cast<std::size_t>(scritti));
    posizione += scritti;
  }
  return true;
}

bool LeggiTutto(int descrittore, std::string& testo, off_t posizione) {
  std::size_t letti = 0;
  while (letti < testo.size()) {
    const ssize_t presi = ::pread(descrittore, testo.data() + letti, testo.size() - letti,
                                  posizione + static_cast<off_t>(letti));
    if (presi < 0 && errno == EINTR) continue;
    if (presi <= 0) return false;
    letti += static_cast<std::size_t>(presi);
  }
  return true;
}

std::string Cartella(const std::string& file) {
  const std::filesystem::path cartella = std::filesystem::path(file).parent_path();
  return cartella.empty() ? "." : cartella.native();
}

// A new name is safe only once the folder is synced.
bool SincronizzaCartella(const std::string& file) {
  const Descriptor cartella(::open(Cartella(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!cartella) return false;
  // Some file systems do not support that for folders.
  return ::fsync(cartella.Number()) == 0 || errno == EINVAL;
}

}  // namespace

std::string_view Parola(EsitoRiga esito) {
  return std::find_if(kNomi.begin(), kNomi.end(), [esito](const Nome& n) { return n.esito == esito; })
      ->parola;
}

bool Definitivo(EsitoRiga esito) {
  return esito == EsitoRiga::kInviato || esito == EsitoRiga::kConRiserva || esito == EsitoRiga::kIncerto;
}

void EsitiLista::Inutilizzabile(const std::string& motivo) const {
  throw ErroreProgramma(Uscita::kFileMancante, std::string(kCosa) + " " + file_ + ": " + motivo);
}

EsitiLista::EsitiLista(std::string file, const std::string& nuovaLista) : file_(std::move(file)) {
  Apri();
  Carica();
  if (lista_.empty()) Crea(nuovaLista);
}

EsitiLista::~EsitiLista() {
  // Space that was reserved and not used.
  if (riservato_ > fine_ && ::ftruncate(descrittore_.Number(), fine_) != 0) riservato_ = fine_;
}

// The name may come to belong to another file between opening and locking: a run that ends replaces the old
// file with a new one.
void EsitiLista::Apri() {
  for (;;) {
    descrittore_ = ApriFileProprio(kCosa, file_, O_RDWR);
    struct stat aperto {};
    struct stat conQuestoNome {};
    if (::fstat(descrittore_.Number(), &aperto) != 0) Inutilizzabile(Sistema(errno));
    if (!S_ISREG(aperto.st_mode)) Inutilizzabile("non è un file");
    if (::flock(descrittore_.Number(), LOCK_EX | LOCK_NB) != 0) {
      Inutilizzabile(errno == EWOULDBLOCK ? "è in uso da un altro invio" : Sistema(errno));
    }
    const bool suo = ::lstat(file_.c_str(), &conQuestoNome) == 0 && StessoFile(aperto, conQuestoNome);
    if (suo) return;
  }
}

void EsitiLista::Carica() {
  std::string resto;
  std::string blocco(kLineaMassima, '\0');
  off_t letto = 0;
  for (;;) {
    const ssize_t presi = ::pread(descrittore_.Number(), blocco.data(), blocco.size(), letto);
    if (presi < 0 && errno == EINTR) continue;
    if (presi < 0) Inutilizzabile(Sistema(errno));
    if (presi == 0) break;
    letto += presi;
    resto.append(blocco, 0, static_cast<std::size_t>(presi));
    std::size_t da = 0;
    for (std::size_t a = 0; (a = resto.find('\n', da)) != std::string::npos; da = a + 1) {
      CaricaLinea(std::string_view(resto).substr(da, a - da), fine_);
      fine_ += static_cast<off_t>(a - da + 1);
    }
    resto.erase(0, da);
    if (resto.size() > kLineaMassima) Inutilizzabile("non è un file dei risultati");
  }
  if (!resto.empty()) Ripara(resto);
}

void EsitiLista::CaricaTitoli(std::string_view linea) {
  lista_ = linea.substr(0, kTitoli.size()) == kTitoli ? linea.substr(kTitoli.size()) : "";
  if (lista_.empty()) Inutilizzabile("non è un file dei risultati");
}

void EsitiLista::CaricaLinea(std::string_view linea, off_t posizione) {
  if (lista_.empty()) return CaricaTitoli(linea);
  ++linee_;
  const auto campi = text::Split(linea, ';');
  const auto riga = campi.size() == kCampi ? Numero<std::size_t>(campi[0]) : std::nullopt;
  const auto esito = riga ? Esito(campi[kCampiInizio]) : std::nullopt;
  const bool conImpronta = esito && campi[1].size() == kCifreImpronta && Impronta(campi[1]);
  const bool senzaImpronta = esito == EsitoRiga::kMalformata && campi[1].empty();
  if (!conImpronta && !senzaImpronta) {
    Inutilizzabile("è danneggiato alla riga " + std::to_string(linee_ + 1));
  }
  Voce voce{posizione, linea.size() + 1, *esito, {}};
  std::copy(campi[1].begin(), campi[1].end(), voce.impronta.begin());
  voci_[*riga] = voce;
}

// What follows the last line end: titles or a line that were being written when the program was stopped. If
// the first half of the line is complete, the message may have been sent; otherwise it has not.
void EsitiLista::Ripara(std::string_view coda) {
  if (lista_.empty()) {
    const bool titoli = coda.substr(0, kTitoli.size()) == kTitoli.substr(0, coda.size());
    if (!titoli) Inutilizzabile("non è un file dei risultati");
  }
  const std::string inizio(coda.substr(0, lista_.empty() ? 0 : LunghezzaInizio(coda)));
  const std::string fine = SecondaMeta(EsitoRiga::kIncerto, kInterrotto);
  // A damaged file is refused before anything in it is touched.
  if (!inizio.empty()) CaricaLinea(inizio + fine.substr(0, fine.size() - 1), fine_);
  if (::ftruncate(descrittore_.Number(), fine_ + static_cast<off_t>(inizio.size())) != 0)
    Inutilizzabile(Sistema(errno));
  if (inizio.empty()) return;
  fine_ += static_cast<off_t>(inizio.size());
  Scrivi(fine);
  Sincronizza();
}

void EsitiLista::Crea(const std::string& nuovaLista) {
  Scrivi(std::string(kTitoli) + nuovaLista + "\n");
  Sincronizza();
  if (!SincronizzaCartella(file_)) Inutilizzabile(Sistema(errno));
  lista_ = nuovaLista;
}

void EsitiLista::Scrivi(std::string_view testo) {
  if (!ScriviTutto(descrittore_.Number(), testo, fine_)) Inutilizzabile(Sistema(errno));
  fine_ += static_cast<off_t>(testo.size());
}

void EsitiLista::Sincronizza() const {
  if (::fdatasync(descrittore_.Number()) != 0) Inutilizzabile(Sistema(errno));
}

// A full disk should show before the message is sent, not afterwards.
void EsitiLista::Riserva() {
  if (fine_ + kSpazioLinea <= riservato_) return;
  if (::fallocate(descrittore_.Number(), FALLOC_FL_KEEP_SIZE, fine_, kSpazio) == 0) {
    riservato_ = fine_ + kSpazio;
    return;
  }
  if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG) Inutilizzabile(Sistema(errno));
}

void EsitiLista::Inizia(std::size_t riga, const std::string& impronta, const std::string& destinatario) {
  Riserva();
  const off_t posizione = fine_;
  try {
    Scrivi(PrimaMeta(riga, impronta, destinatario, Adesso()));
    Sincronizza();
  } catch (const ErroreProgramma&) {
    // Nothing was sent for this line, so no line should say that something may have been.
    if (::ftruncate(descrittore_.Number(), posizione) == 0) fine_ = posizione;
    throw;
  }
  inizio_ = Inizio{riga, impronta, posizione};
}

void EsitiLista::Concludi(EsitoRiga esito, const std::string& motivo) {
  Scrivi(SecondaMeta(esito, motivo));
  Sincronizza();
  Voce voce{inizio_->posizione, static_cast<std::size_t>(fine_ - inizio_->posizione), esito, {}};
  std::copy(inizio_->impronta.begin(), inizio_->impronta.end(), voce.impronta.begin());
  voci_[inizio_->riga] = voce;
  ++linee_;
  inizio_.reset();
}

void EsitiLista::Annota(std::size_t riga, const std::string& impronta, const std::string& destinatario,
                        EsitoRiga esito, const std::string& motivo) {
  const off_t posizione = fine_;
  try {
    Scrivi(PrimaMeta(riga, impronta, destinatario, "") + SecondaMeta(esito, motivo));
  } catch (const ErroreProgramma&) {
    if (::ftruncate(descrittore_.Number(), posizione) == 0) fine_ = posizione;
    throw;
  }
  Voce voce{posizione, static_cast<std::size_t>(fine_ - posizione), esito, {}};
  std::copy(impronta.begin(), impronta.end(), voce.impronta.begin());
  voci_[riga] = voce;
  ++linee_;
}

std::optional<EsitoRegistrato> EsitiLista::Cerca(std::size_t riga) const {
  const auto trovata = voci_.find(riga);
  if (trovata == voci_.end()) return std::nullopt;
  const Voce& voce = trovata->second;
  const bool assente = voce.impronta.front() == '\0';
  return EsitoRegistrato{voce.esito,
                         assente ? std::string() : std::string(voce.impronta.data(), voce.impronta.size())};
}

std::vector<std::size_t> EsitiLista::Definitive() const {
  std::vector<std::size_t> righe;
  for (const auto& [riga, voce] : voci_) {
    if (Definitivo(voce.esito)) righe.push_back(riga);
  }
  return righe;
}

// Writes the lines in order into a new file of that name; what an interrupted run left there is removed, and
// what cannot be removed is not used. Locked; none on failure.
Descriptor EsitiLista::ScriviRiordinato(const std::string& nuovo) const {
  struct stat stato {};
  if (::fstat(descrittore_.Number(), &stato) != 0) return {};
  ::unlink(nuovo.c_str());
  Descriptor nuova(::open(nuovo.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY,
                          S_IRUSR | S_IWUSR));
  if (!nuova) return {};
  // The file keeps its owner when root continues another user's list.
  bool riuscito =
      ::flock(nuova.Number(), LOCK_EX | LOCK_NB) == 0 &&
      (stato.st_uid == ::geteuid() || ::fchown(nuova.Number(), stato.st_uid, stato.st_gid) == 0) &&
      ::fchmod(nuova.Number(), stato.st_mode & 07777) == 0;
  std::string blocco = std::string(kTitoli) + lista_ + "\n";
  off_t fine = 0;
  const auto svuota = [&] {
    riuscito = riuscito && ScriviTutto(nuova.Number(), blocco, fine);
    fine += static_cast<off_t>(blocco.size());
    blocco.clear();
  };
  for (const auto& [riga, voce] : voci_) {
    if (!riuscito) break;
    std::string linea(voce.lunghezza, '\0');
    riuscito = LeggiTutto(descrittore_.Number(), linea, voce.posizione);
    blocco += linea;
    if (blocco.size() >= kLineaMassima) svuota();
  }
  svuota();
  if (riuscito && ::fsync(nuova.Number()) == 0 && ::rename(nuovo.c_str(), file_.c_str()) == 0) return nuova;
  ::unlink(nuovo.c_str());
  return {};
}

void EsitiLista::Riordina() noexcept try {
  if (inizio_ || linee_ == voci_.size()) return;
  Descriptor nuovo = ScriviRiordinato(file_ + ".nuovo");
  if (!nuovo) return;
  descrittore_ = std::move(nuovo);
  linee_ = voci_.size();
  riservato_ = 0;
  fine_ = ::lseek(descrittore_.Number(), 0, SEEK_END);
  auto posizione = static_cast<off_t>(kTitoli.size() + lista_.size() + 1);
  for (auto& [riga, voce] : voci_) {
    voce.posizione = posizione;
    posizione += static_cast<off_t>(voce.lunghezza);
  }
  static_cast<void>(SincronizzaCartella(file_));
} catch (...) {  // NOLINT(bugprone-empty-catch): out of memory; the file as it is says the same
}

}  // namespace orve::app
