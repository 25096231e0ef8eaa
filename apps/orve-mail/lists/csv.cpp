#include "orve-mail/lists/csv.h"

#include <algorithm>
#include <array>
#include <ios>
#include <string_view>

#include "mime/header_text.h"

namespace orve::app {

namespace {

constexpr int kFine = -1;
constexpr std::size_t kBlocco = std::size_t{64} * 1024;
constexpr std::size_t kCampiMassimi = 1000;

/// The row is malformed in a way that leaves its end unknown.
struct RigaRotta {
  const char* motivo;
};

const char* Difetto(const std::vector<std::string>& campi) {
  for (const std::string& campo : campi) {
    if (campo.find('\0') != std::string::npos) return "contiene un byte nullo";
    if (adapters::mime::ValidUtf8(campo) != campo) return "non è un testo UTF-8";
  }
  return nullptr;
}

}  // namespace

// Appends a block, after dropping what precedes the current row. False at the end.
bool CsvReader::Riempi() {
  dati_.erase(0, inizio_);
  inizio_ = 0;
  const std::size_t prima = dati_.size();
  dati_.resize(prima + kBlocco);
  flusso_.read(dati_.data() + prima, static_cast<std::streamsize>(kBlocco));
  dati_.resize(prima + static_cast<std::size_t>(flusso_.gcount()));
  if (flusso_.bad()) throw std::ios_base::failure("errore di lettura");
  return dati_.size() > prima;
}

// The byte at this position of the current row.
int CsvReader::Byte(std::size_t posizione) {
  while (inizio_ + posizione >= dati_.size()) {
    if (!Riempi()) return kFine;
  }
  return static_cast<unsigned char>(dati_[inizio_ + posizione]);
}

void CsvReader::Consuma(std::size_t quanti) {
  const auto da = dati_.begin() + static_cast<std::ptrdiff_t>(inizio_);
  riga_ += static_cast<std::size_t>(std::count(da, da + static_cast<std::ptrdiff_t>(quanti), '\n'));
  inizio_ += quanti;
}

void CsvReader::SaltaRigaFisica() {
  for (;;) {
    const std::size_t fine = dati_.find('\n', inizio_);
    if (fine != std::string::npos) return Consuma(fine - inizio_ + 1);
    inizio_ = dati_.size();
    if (!Riempi()) return;
  }
}

// The length of a line end at this position, 0 when there is none; the end of the file counts as one of
// length 0 and is recognised through Byte.
std::size_t CsvReader::FineRiga(std::size_t posizione) {
  const int byte = Byte(posizione);
  if (byte == '\n') return 1;
  return byte == '\r' && Byte(posizione + 1) == '\n' ? 2 : 0;
}

// The UTF-8 byte-order mark, and the separator of the first row.
void CsvReader::Inizia() {
  constexpr std::string_view kSegno = "\xEF\xBB\xBF";
  if (Byte(kSegno.size() - 1) != kFine && dati_.compare(0, kSegno.size(), kSegno) == 0)
    Consuma(kSegno.size());
  while (const std::size_t vuota = FineRiga(0)) Consuma(vuota);
  separatore_ = ',';
  bool dentro = false;
  for (std::size_t i = 0; i < kBlocco; ++i) {
    const int byte = Byte(i);
    if (byte == kFine || (byte == '\n' && !dentro)) return;
    if (byte == '"') dentro = !dentro;
    if (byte == ';' && !dentro) {
      separatore_ = ';';
      return;
    }
  }
}

// Appends what comes before the next of these bytes; returns its position, which may be the end of the file.
std::size_t CsvReader::FinoA(std::string_view fermi, std::size_t posizione, std::string& campo) {
  while (Byte(posizione) != kFine) {
    if (posizione > kRigaMassima) throw RigaRotta{"è più lunga di 20 MiB"};
    const std::string_view resto = std::string_view(dati_).substr(inizio_ + posizione);
    const std::size_t quanti = std::min(resto.find_first_of(fermi), resto.size());
    campo.append(resto.substr(0, quanti));
    posizione += quanti;
    if (quanti < resto.size()) break;
  }
  return posizione;
}

// Both return the position after the field.
std::size_t CsvReader::CampoConVirgolette(std::size_t posizione, std::string& campo) {
  std::size_t i = posizione + 1;
  for (;;) {
    i = FinoA("\"", i, campo);
    if (Byte(i) == kFine) throw RigaRotta{"ha virgolette aperte e mai chiuse"};
    if (Byte(i + 1) != '"') return i + 1;
    campo.push_back('"');
    i += 2;
  }
}

std::size_t CsvReader::Campo(std::size_t posizione, std::string& campo) {
  if (Byte(posizione) == '"') return CampoConVirgolette(posizione, campo);
  const std::array<char, 4> fermi = {separatore_, '\n', '\r', '"'};
  const std::size_t fine = FinoA({fermi.data(), fermi.size()}, posizione, campo);
  if (Byte(fine) == '"') throw RigaRotta{"ha virgolette in mezzo a un campo"};
  if (Byte(fine) == '\r' && FineRiga(fine) == 0) throw RigaRotta{"ha un ritorno a capo isolato"};
  return fine;
}

// The length of the row including its line end.
std::size_t CsvReader::Campi(std::vector<std::string>& campi) {
  for (std::size_t i = 0;; ++i) {
    if (campi.size() == kCampiMassimi) throw RigaRotta{"ha troppi campi"};
    i = Campo(i, campi.emplace_back());
    if (Byte(i) == separatore_) continue;
    const std::size_t fine = FineRiga(i);
    if (fine == 0 && Byte(i) != kFine) throw RigaRotta{"ha del testo dietro le virgolette chiuse"};
    return i + fine;
  }
}

bool CsvReader::Prossimo(CsvRecord& record) {
  if (separatore_ == '\0') Inizia();
  while (const std::size_t vuota = FineRiga(0)) Consuma(vuota);
  record.riga = riga_;
  record.campi.clear();
  record.errore.clear();
  if (Byte(0) == kFine) return false;
  try {
    Consuma(Campi(record.campi));
    const char* const difetto = Difetto(record.campi);
    if (difetto != nullptr) record.errore = difetto;
  } catch (const RigaRotta& rotta) {
    record.errore = rotta.motivo;
    SaltaRigaFisica();
  }
  if (!record.errore.empty()) record.campi.clear();
  return true;
}

}  // namespace orve::app
