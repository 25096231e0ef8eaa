#include "orve-mail/address-book/rubrica.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <tuple>
#include <utility>

#include "addressing/columns.h"
#include "text/text.h"

namespace orve::app {

namespace {

using host::Richiesto;

constexpr std::string_view kBianchi = " \t\r\n";

std::string_view SenzaBianchi(std::string_view testo) {
  const auto inizio = testo.find_first_not_of(kBianchi);
  if (inizio == std::string_view::npos) return {};
  return testo.substr(inizio, testo.find_last_not_of(kBianchi) - inizio + 1);
}

std::string InStatement(host::DataOra data) {
  const host::CampiDataOra campi = host::Campi(data);
  std::array<char, 40> testo{};
  std::snprintf(testo.data(), testo.size(), "'%04d%02d%02d'", campi.anno, campi.mese, campi.giorno);
  return testo.data();
}

std::string DellaDitta(const char* unione, const char* colonna, const std::optional<std::int32_t>& ditta) {
  return ditta ? std::string(unione) + colonna + " = " + std::to_string(*ditta) : std::string();
}

// Uses the same master data for a party's address on a given day as the look-up by code.
std::string StatementCliFor(const RichiestaParti& richiesta) {
  return "SELECT CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG16_RAGSOANAG, CG16_NOME, CG16_COGNOME,"
         " CG16_CITTA, CG16_PROV, CG16_INDEMAIL, CG16_EMAIL_PEC"
         " FROM CG44_CLIFOR"
         " INNER JOIN CG16_ANAGGEN ON CG16_CODICE ="
         " dbo.FNCG_GETCODANAG(CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, " +
         InStatement(richiesta.data) + ") WHERE CG44_TIPOCF IN (0, 1)" +
         DellaDitta(" AND ", "CG44_DITTA_CG18", richiesta.ditta);
}

std::string StatementAgenti(const RichiestaParti& richiesta) {
  return "SELECT MG17_AGENTE, CG16_RAGSOANAG, CG16_NOME, CG16_COGNOME, CG16_CITTA, CG16_PROV, CG16_INDEMAIL,"
         " CG16_EMAIL_PEC"
         " FROM MG17_AGENTI"
         " INNER JOIN CG16_ANAGGEN ON CG16_CODICE = MG17_ANAGEN_CG16" +
         DellaDitta(" WHERE ", "MG17_DITTA_CG18", richiesta.ditta);
}

std::string StatementDestinazioni(const RichiestaParti& richiesta) {
  return "SELECT MG22_DITTA_CG18, MG22_TIPOCF_CG44, MG22_CLIFOR_CG44, MG22_DESTRAGSOC, MG22_DESTEMAIL,"
         " MG22_DESTPEC"
         " FROM MG22_CLIFORDEST" +
         DellaDitta(" WHERE ", "MG22_DITTA_CG18", richiesta.ditta) +
         " ORDER BY MG22_DITTA_CG18, MG22_TIPOCF_CG44, MG22_CLIFOR_CG44, MG22_CODDESTIN";
}

// Contacts belong to no company. One that belongs to several parties occurs several times.
constexpr const char* kStatementContatti =
    "SELECT CO02_ID, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC, CG16_RAGSOANAG"
    " FROM CO02_ANAGCONTATTO"
    " LEFT JOIN CO03_LEGCONTATTO ON CO03_ID_CO02 = CO02_ID"
    " LEFT JOIN CG16_ANAGGEN ON CG16_CODICE = CO03_CODICE_CG16"
    " ORDER BY CO02_ID, CG16_RAGSOANAG";

std::string Codice(const host::RecordSet& riga, std::string_view colonna) {
  return host::Leggi(riga, colonna).Joined();
}

void AggiungiIndirizzi(Parte& parte, std::string_view colonna, const std::string& destinazione) {
  for (auto& indirizzo : SeparaIndirizzi(colonna)) {
    const bool presente = std::any_of(
        parte.indirizzi.begin(), parte.indirizzi.end(),
        [&](const IndirizzoDiParte& altro) { return text::EqualsIgnoreCase(altro.indirizzo, indirizzo); });
    if (!presente) parte.indirizzi.push_back({std::move(indirizzo), destinazione});
  }
}

std::string Unite(std::string prima, const std::string& seconda, std::string_view fra) {
  if (!prima.empty() && !seconda.empty()) prima.append(fra);
  return prima.append(seconda);
}

Parte DallAnagrafica(const host::RecordSet& riga, Genere genere, std::string codice, bool pec) {
  Parte parte;
  parte.genere = genere;
  parte.codice = std::move(codice);
  parte.nome = LeggiTesto(riga, "CG16_RAGSOANAG");
  if (parte.nome.empty()) {
    parte.nome = Unite(LeggiTesto(riga, "CG16_COGNOME"), LeggiTesto(riga, "CG16_NOME"), " ");
  }
  const std::string provincia = LeggiTesto(riga, "CG16_PROV");
  parte.dettaglio =
      Unite(LeggiTesto(riga, "CG16_CITTA"), provincia.empty() ? provincia : "(" + provincia + ")", " ");
  AggiungiIndirizzi(parte, LeggiTesto(riga, pec ? "CG16_EMAIL_PEC" : "CG16_INDEMAIL"), {});
  return parte;
}

// Company, kind and number of a partner.
using ChiavePartner = std::tuple<std::string, std::string, std::string>;

class Lettura {
 public:
  Lettura(host::Connection& connessione, const RichiestaParti& richiesta)
      : connessione_(connessione), richiesta_(richiesta) {}

  std::vector<Parte> Tutte() {
    LeggiCliFor();
    LeggiDestinazioni();
    LeggiAgenti();
    LeggiContatti();
    return Ordinate();
  }

 private:
  template <class Riga>
  void PerOgniRiga(const std::string& statement, Riga perRiga) {
    const auto righe = connessione_.Execute(statement, host::kComandoTesto);
    for (auto& r = Richiesto(righe); !r.Eof(); r.MoveNext()) perRiga(std::as_const(r));
  }

  void LeggiCliFor() {
    PerOgniRiga(StatementCliFor(richiesta_), [this](const host::RecordSet& riga) {
      const std::string tipo = Codice(riga, "CG44_TIPOCF");
      const std::string numero = Codice(riga, "CG44_CLIFOR");
      partner_[{Codice(riga, "CG44_DITTA_CG18"), tipo, numero}] = parti_.size();
      parti_.push_back(
          DallAnagrafica(riga, tipo == "0" ? Genere::kCliente : Genere::kFornitore, numero, richiesta_.pec));
    });
  }

  // The address of a destination is one more of its partner's. One whose partner is gone has nobody to be
  // listed under.
  void LeggiDestinazioni() {
    PerOgniRiga(StatementDestinazioni(richiesta_), [this](const host::RecordSet& riga) {
      const auto trovato = partner_.find({Codice(riga, "MG22_DITTA_CG18"), Codice(riga, "MG22_TIPOCF_CG44"),
                                          Codice(riga, "MG22_CLIFOR_CG44")});
      if (trovato == partner_.end()) return;
      AggiungiIndirizzi(parti_[trovato->second],
                        LeggiTesto(riga, richiesta_.pec ? "MG22_DESTPEC" : "MG22_DESTEMAIL"),
                        LeggiTesto(riga, "MG22_DESTRAGSOC", "destinazione"));
    });
  }

  void LeggiAgenti() {
    PerOgniRiga(StatementAgenti(richiesta_), [this](const host::RecordSet& riga) {
      parti_.push_back(DallAnagrafica(riga, Genere::kAgente, Codice(riga, "MG17_AGENTE"), richiesta_.pec));
    });
  }

  void LeggiContatti() {
    PerOgniRiga(kStatementContatti, [this](const host::RecordSet& riga) {
      std::string codice = Codice(riga, "CO02_ID");
      const std::string azienda = LeggiTesto(riga, "CG16_RAGSOANAG");
      const bool ancoraLui =
          !parti_.empty() && parti_.back().genere == Genere::kContatto && parti_.back().codice == codice;
      if (ancoraLui) {
        parti_.back().dettaglio = Unite(std::move(parti_.back().dettaglio), azienda, ", ");
        return;
      }
      Parte parte;
      parte.genere = Genere::kContatto;
      parte.codice = std::move(codice);
      parte.nome = LeggiTesto(riga, "CO02_COGNOMENOME");
      parte.dettaglio = azienda;
      AggiungiIndirizzi(parte, LeggiTesto(riga, richiesta_.pec ? "CO02_PEC" : "CO02_EMAIL1"), {});
      parti_.push_back(std::move(parte));
    });
  }

  // The sort key of a name begins its search text, so both are computed once.
  std::vector<Parte> Ordinate() {
    for (auto& parte : parti_) {
      std::string testo = parte.nome;
      for (const auto& altro : {parte.codice, parte.dettaglio}) testo.append("\n").append(altro);
      for (const auto& [indirizzo, destinazione] : parte.indirizzi) {
        testo.append("\n").append(indirizzo).append("\n").append(destinazione);
      }
      parte.ricerca = PerRicerca(testo);
    }
    std::stable_sort(parti_.begin(), parti_.end(),
                     [](const Parte& a, const Parte& b) { return a.ricerca < b.ricerca; });
    return std::move(parti_);
  }

  host::Connection& connessione_;
  const RichiestaParti& richiesta_;
  std::vector<Parte> parti_;
  std::map<ChiavePartner, std::size_t> partner_;
};

// A letter in UTF-8 and what the search turns it into, in lower case.
struct Sostituzione {
  std::string_view lettera;
  std::string_view senza;
};

constexpr std::array<Sostituzione, 45> kSostituzioni = {{
    {"à", "a"}, {"á", "a"}, {"â", "a"}, {"ã", "a"}, {"ä", "a"},  {"å", "a"},  {"ç", "c"},  {"è", "e"},
    {"é", "e"}, {"ê", "e"}, {"ë", "e"}, {"ì", "i"}, {"í", "i"},  {"î", "i"},  {"ï", "i"},  {"ñ", "n"},
    {"ò", "o"}, {"ó", "o"}, {"ô", "o"}, {"õ", "o"}, {"ö", "o"},  {"ø", "o"},  {"ù", "u"},  {"ú", "u"},
    {"û", "u"}, {"ü", "u"}, {"ý", "y"}, {"ÿ", "y"}, {"ß", "ss"}, {"æ", "ae"}, {"œ", "oe"}, {"č", "c"},
    {"ć", "c"}, {"š", "s"}, {"ž", "z"}, {"đ", "d"}, {"ł", "l"},  {"ń", "n"},  {"ś", "s"},  {"ż", "z"},
    {"’", "'"}, {"‘", "'"}, {"`", "'"}, {"´", "'"}, {"ğ", "g"},
}};

// The bytes of the character that begins here.
std::size_t Lunghezza(std::string_view testo) {
  const auto primo = static_cast<unsigned char>(testo.front());
  std::size_t lunga = 1;
  if (primo >= 0xC2 && primo <= 0xDF) lunga = 2;
  if (primo >= 0xE0 && primo <= 0xEF) lunga = 3;
  if (primo >= 0xF0 && primo <= 0xF4) lunga = 4;
  return std::min(lunga, testo.size());
}

// A combining accent, which follows its letter as a separate character, U+0300 to U+036F.
bool AccentoASe(std::string_view lettera) {
  return lettera.size() == 2 && (lettera[0] == '\xCC' || (lettera[0] == '\xCD' && lettera[1] < '\xB0'));
}

}  // namespace

std::string_view NomeGenere(Genere genere) {
  switch (genere) {
    case Genere::kCliente:
      return "Cliente";
    case Genere::kFornitore:
      return "Fornitore";
    case Genere::kAgente:
      return "Agente";
    case Genere::kContatto:
      break;
  }
  return "Contatto";
}

std::vector<Parte> LeggiParti(host::Connection& connessione, const RichiestaParti& richiesta) {
  return Lettura(connessione, richiesta).Tutte();
}

std::vector<std::string> SeparaIndirizzi(std::string_view colonna) {
  std::vector<std::string> indirizzi;
  while (!colonna.empty()) {
    const auto fine = std::min(colonna.find_first_of(";,\r\n"), colonna.size());
    std::string_view voce = colonna.substr(0, fine);
    colonna.remove_prefix(std::min(fine + 1, colonna.size()));
    const auto apre = voce.find('<');
    const auto chiude = voce.find('>', apre == std::string_view::npos ? 0 : apre);
    if (apre != std::string_view::npos && chiude != std::string_view::npos) {
      voce = voce.substr(apre + 1, chiude - apre - 1);
    }
    voce = SenzaBianchi(voce);
    if (!voce.empty()) indirizzi.emplace_back(voce);
  }
  return indirizzi;
}

std::vector<bool> IndirizziConsueti(const Parte& parte) {
  std::vector<bool> presi;
  presi.reserve(parte.indirizzi.size());
  for (const auto& uno : parte.indirizzi) presi.push_back(uno.destinazione.empty());
  const bool nessuno = std::find(presi.begin(), presi.end(), true) == presi.end();
  if (nessuno && !presi.empty()) presi.front() = true;
  return presi;
}

std::string PerRicerca(std::string_view testo) {
  const std::string minuscolo = text::FoldCase(testo);
  std::string risultato;
  risultato.reserve(minuscolo.size());
  for (std::string_view resto = minuscolo; !resto.empty();) {
    const std::string_view lettera = resto.substr(0, Lunghezza(resto));
    resto.remove_prefix(lettera.size());
    const bool semplice = lettera.size() == 1 && lettera.front() != '`';
    const auto* const trovata =
        semplice ? kSostituzioni.end()
                 : std::find_if(kSostituzioni.begin(), kSostituzioni.end(),
                                [lettera](const Sostituzione& una) { return una.lettera == lettera; });
    if (trovata != kSostituzioni.end()) {
      risultato.append(trovata->senza);
    } else if (!AccentoASe(lettera)) {
      risultato.append(lettera);
    }
  }
  return risultato;
}

std::vector<std::size_t> Filtra(const std::vector<Parte>& parti, const Filtro& filtro) {
  const std::string cercato = PerRicerca(filtro.testo);
  std::vector<std::string_view> parole;
  for (std::string_view resto = cercato; !resto.empty();) {
    const auto fine = std::min(resto.find_first_of(kBianchi), resto.size());
    if (fine > 0) parole.push_back(resto.substr(0, fine));
    resto.remove_prefix(std::min(fine + 1, resto.size()));
  }
  std::vector<std::size_t> trovate;
  for (std::size_t i = 0; i < parti.size(); ++i) {
    const Parte& parte = parti[i];
    if (filtro.genere && parte.genere != *filtro.genere) continue;
    if (filtro.soloConIndirizzo && parte.indirizzi.empty()) continue;
    const bool tutte = std::all_of(parole.begin(), parole.end(), [&](std::string_view parola) {
      return parte.ricerca.find(parola) != std::string::npos;
    });
    if (tutte) trovate.push_back(i);
  }
  return trovate;
}

}  // namespace orve::app
