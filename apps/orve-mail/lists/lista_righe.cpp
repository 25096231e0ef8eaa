#include "orve-mail/lists/lista_righe.h"

#include <sodium.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <ios>
#include <string_view>
#include <utility>

#include "orve-mail/host/codici.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"
#include "text/text.h"

namespace orve::app {

namespace {

enum ColonnaElenco : std::size_t {
  kTipo,
  kCodice,
  kNomeParte,
  kIndirizzo,
  kOggetto,
  kCorpo,
  kAllegato,
  kQuante
};

constexpr std::array<std::string_view, kQuante> kColonne = {"tipo",    "codice", "nome",    "indirizzo",
                                                            "oggetto", "corpo",  "allegato"};

using Valori = std::array<std::string, kQuante>;

/// The row is well-formed, but no message can be made of it.
struct RigaInutile {
  std::string motivo;
};

// Long fields are cut for the person.
std::string Citato(std::string_view testo) {
  constexpr std::size_t kMassimo = 60;
  std::string riga = TerminalSafeLine(text::Left(testo, kMassimo));
  if (riga.size() < testo.size() && text::Length(testo) > kMassimo) riga += "…";
  return "«" + riga + "»";
}

// Each text is preceded by its length, so that text cannot move from one field to the next unnoticed.
std::string Impronta(const Valori& valori) {
  constexpr std::size_t kByte = 16;
  std::array<unsigned char, kByte> impronta{};
  crypto_generichash_state stato;
  crypto_generichash_init(&stato, nullptr, 0, impronta.size());
  for (const std::string& valore : valori) {
    const std::uint64_t lunghezza = valore.size();
    crypto_generichash_update(&stato, reinterpret_cast<const unsigned char*>(&lunghezza), sizeof lunghezza);
    crypto_generichash_update(&stato, reinterpret_cast<const unsigned char*>(valore.data()), valore.size());
  }
  crypto_generichash_final(&stato, impronta.data(), impronta.size());
  std::array<char, 2 * kByte + 1> cifre{};
  sodium_bin2hex(cifre.data(), cifre.size(), impronta.data(), impronta.size());
  return cifre.data();
}

void InterpretaCodice(const Valori& valori, RigaLista& riga) {
  std::string nome(text::Trim(valori[kTipo]));
  std::transform(nome.begin(), nome.end(), nome.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (nome.empty()) throw RigaInutile{"manca il tipo del codice"};
  const auto tipo = TipoDaNome(nome);
  if (!tipo) throw RigaInutile{"il tipo " + Citato(nome) + " non esiste"};
  const std::string codice(text::Trim(valori[kCodice]));
  if (codice.empty()) throw RigaInutile{"manca il codice"};
  const std::string difetto = DifettoDelCodice(*tipo, codice);
  if (!difetto.empty()) throw RigaInutile{"il codice " + Citato(codice) + " " + difetto};
  riga.codice = CodiceDestinatario{codice, *tipo};
  riga.destinatario = nome + " " + codice;
}

// Such an address is not looked up and no longer checked, and a line that has lost its place in the file may
// look like one.
void InterpretaIndirizzo(const Valori& valori, RigaLista& riga) {
  riga.voce.nome = text::Trim(valori[kNomeParte]);
  riga.voce.indirizzo = text::Trim(valori[kIndirizzo]);
  if (riga.voce.indirizzo.empty()) throw RigaInutile{"manca l'indirizzo"};
  constexpr const char* kRiservati = ";<>";
  for (const std::string* testo : {&riga.voce.nome, &riga.voce.indirizzo}) {
    if (testo->find_first_of(kRiservati) == std::string::npos) continue;
    throw RigaInutile{Citato(*testo) + ": nome e indirizzo non possono contenere «;», «<» o «>»"};
  }
  if (riga.voce.indirizzo.find('@') == std::string::npos) {
    throw RigaInutile{Citato(riga.voce.indirizzo) + " non è un indirizzo"};
  }
  riga.destinatario =
      riga.voce.nome.empty() ? riga.voce.indirizzo : riga.voce.nome + " <" + riga.voce.indirizzo + ">";
}

}  // namespace

RigheLista::RigheLista(std::string file) : file_(std::move(file)) {
  RichiediFileLeggibile(file_);
  flusso_.open(file_, std::ios::binary);
  LeggiIntestazione();
}

void RigheLista::Ricomincia() {
  flusso_.clear();
  flusso_.seekg(0);
  LeggiIntestazione();
}

bool RigheLista::Leggi(CsvRecord& record) try {
  return lettore_->Prossimo(record);
} catch (const std::ios_base::failure&) {
  throw ErroreProgramma(Uscita::kFileMancante, file_ + ": errore di lettura");
}

void RigheLista::LeggiIntestazione() {
  const auto errata = [this](const std::string& motivo) {
    throw ErroreProgramma(Uscita::kFileMancante, file_ + ": intestazione errata: " + motivo);
  };
  lettore_.emplace(flusso_);
  colonne_.clear();
  CsvRecord record;
  if (!Leggi(record)) errata("il file è vuoto");
  if (!record.errore.empty()) errata("la riga " + std::to_string(record.riga) + " " + record.errore);
  std::array<bool, kQuante> presenti{};
  for (const std::string& campo : record.campi) {
    const std::string nome(text::Trim(campo));
    const auto* const nota =
        std::find_if(kColonne.begin(), kColonne.end(),
                     [&nome](std::string_view colonna) { return text::EqualsIgnoreCase(colonna, nome); });
    if (nota == kColonne.end()) {
      errata("la colonna " + Citato(nome) +
             " non esiste; le colonne sono tipo, codice, nome, indirizzo, oggetto, corpo, allegato");
    }
    const auto colonna = static_cast<std::size_t>(nota - kColonne.begin());
    if (presenti[colonna]) errata("la colonna " + Citato(nome) + " si ripete");
    presenti[colonna] = true;
    colonne_.push_back(colonna);
  }
  if (presenti[kTipo] != presenti[kCodice]) errata("tipo e codice vanno insieme");
  if (presenti[kNomeParte] && !presenti[kIndirizzo]) errata("manca la colonna «indirizzo»");
  if (!presenti[kCodice] && !presenti[kIndirizzo]) {
    errata("mancano le colonne del destinatario, «tipo» e «codice» oppure «indirizzo»");
  }
}

bool RigheLista::Prossima(RigaLista& riga) {
  CsvRecord record;
  if (!Leggi(record)) return false;
  riga = {};
  riga.riga = record.riga;
  riga.errore = record.errore;
  if (!riga.errore.empty()) return true;
  try {
    Interpreta(record.campi, riga);
  } catch (const RigaInutile& inutile) {
    riga = {};
    riga.riga = record.riga;
    riga.errore = inutile.motivo;
  }
  return true;
}

void RigheLista::Interpreta(const std::vector<std::string>& campi, RigaLista& riga) const {
  if (campi.size() != colonne_.size()) {
    throw RigaInutile{"ha " + std::to_string(campi.size()) + (campi.size() == 1 ? " campo" : " campi") +
                      " invece di " + std::to_string(colonne_.size())};
  }
  Valori valori;
  for (std::size_t i = 0; i < campi.size(); ++i) valori[colonne_[i]] = campi[i];
  const bool perCodice = !text::Trim(valori[kTipo]).empty() || !text::Trim(valori[kCodice]).empty();
  const bool perIndirizzo =
      !text::Trim(valori[kNomeParte]).empty() || !text::Trim(valori[kIndirizzo]).empty();
  if (perCodice && perIndirizzo) throw RigaInutile{"ha un codice e anche un nome o un indirizzo"};
  if (!perCodice && !perIndirizzo) throw RigaInutile{"manca il destinatario"};
  if (perCodice) {
    InterpretaCodice(valori, riga);
  } else {
    InterpretaIndirizzo(valori, riga);
  }
  riga.oggetto = valori[kOggetto];
  if (!valori[kCorpo].empty()) riga.corpo = ConFineRigaDoppia(valori[kCorpo]);
  if (!valori[kAllegato].empty()) {
    riga.allegato = std::filesystem::path(file_).parent_path() / valori[kAllegato];
  }
  riga.impronta = Impronta(valori);
}

}  // namespace orve::app
