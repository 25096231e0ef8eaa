#include "orve-mail/commands/tabella.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "mime/header_text.h"
#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/host/archivio.h"
#include "orve-mail/terminal/cella.h"
#include "text/text.h"
#include "text/unseen.h"

namespace orve::app {

namespace {

enum class Forma { kTesto, kJson, kCsv };

using Riga = std::vector<std::string>;

// A select of the listed rows, the newest `ultimi` of them when that is not 0, oldest first.
std::string Selezione(const Elenco& elenco, const std::string& campi) {
  return "SELECT " + campi + " FROM (SELECT * FROM " + elenco.tabella +
         " ORDER BY ID DESC LIMIT CASE ?1 WHEN 0 THEN -1 ELSE ?1 END) ORDER BY ID";
}

std::vector<Riga> LeggiRighe(adapters::sqlite::SqliteConnection& archivio, const Elenco& elenco,
                             std::int64_t ultimi) {
  std::string campi;
  for (const Colonna& colonna : elenco.colonne) {
    campi += (campi.empty() ? "" : ", ") + std::string(colonna.espressione) + " AS " + colonna.titolo;
  }
  std::vector<Riga> righe;
  for (const auto trovate = archivio.EseguiConValori(Selezione(elenco, campi), {ultimi}); !trovate->Eof();
       trovate->MoveNext()) {
    Riga riga;
    for (const Colonna& colonna : elenco.colonne) {
      riga.push_back(host::Leggi(*trovate, colonna.titolo).Joined());
    }
    righe.push_back(std::move(riga));
  }
  return righe;
}

std::string Ritagliato(const std::string& testo, std::size_t larghezza) {
  std::string riga = TerminalSafeLine(testo);
  if (larghezza == 0 || text::Length(riga) <= larghezza) return riga;
  return std::string(text::Left(riga, larghezza - 1)) + "…";
}

void ScriviColonne(const Elenco& elenco, const std::vector<Riga>& righe, std::ostream& uscita) {
  Riga titoli;
  for (const Colonna& colonna : elenco.colonne) titoli.emplace_back(colonna.titolo);
  std::vector<Riga> testi{titoli};
  for (const Riga& riga : righe) {
    Riga ritagliata;
    for (std::size_t i = 0; i < riga.size(); ++i) {
      ritagliata.push_back(Ritagliato(riga[i], elenco.colonne[i].larghezza));
    }
    testi.push_back(std::move(ritagliata));
  }
  std::vector<std::size_t> larghezze(elenco.colonne.size());
  for (const Riga& riga : testi) {
    for (std::size_t i = 0; i < riga.size(); ++i)
      larghezze[i] = std::max(larghezze[i], text::Length(riga[i]));
  }
  for (const Riga& riga : testi) {
    std::string intera;
    for (std::size_t i = 0; i < riga.size(); ++i) {
      intera += riga[i] + std::string(larghezze[i] - text::Length(riga[i]) + 2, ' ');
    }
    uscita << text::TrimRight(intera) << "\n";
  }
}

std::string CampoCsv(const std::string& valore) {
  std::string testo = CellaInerte(valore);
  if (testo.find_first_of(",;\t\"\r\n") == std::string::npos) return testo;
  return '"' + text::Replace(testo, "\"", "\"\"") + '"';
}

void ScriviCsv(const Elenco& elenco, const std::vector<Riga>& righe, std::ostream& uscita) {
  for (std::size_t i = 0; i < elenco.colonne.size(); ++i) {
    uscita << (i == 0 ? "" : ",") << elenco.colonne[i].titolo;
  }
  uscita << "\r\n";
  for (const Riga& riga : righe) {
    for (std::size_t i = 0; i < riga.size(); ++i) uscita << (i == 0 ? "" : ",") << CampoCsv(riga[i]);
    uscita << "\r\n";
  }
}

// Escapes those characters left by the engine that a terminal obeys or a reader does not see. They can only
// occur in strings, like bytes that are not text at all.
std::string SenzaNascosti(const std::string& json) {
  return text::ReplaceUnseen(adapters::mime::ValidUtf8(json),
                             [](char32_t codice, text::Unseen) { return text::Escaped(codice); });
}

// The engine itself writes JSON, with its own numbers and nulls.
void ScriviJson(adapters::sqlite::SqliteConnection& archivio, const Elenco& elenco, std::int64_t ultimi,
                std::ostream& uscita) {
  std::string coppie;
  for (const Colonna& colonna : elenco.colonne) {
    coppie += (coppie.empty() ? "'" : ", '") + std::string(colonna.titolo) + "', " + colonna.espressione;
  }
  const char* separatore = "";
  uscita << "[";
  for (const auto righe =
           archivio.EseguiConValori(Selezione(elenco, "json_object(" + coppie + ") AS RIGA"), {ultimi});
       !righe->Eof(); righe->MoveNext()) {
    uscita << separatore << "\n  " << SenzaNascosti(host::Leggi(*righe, "RIGA").ToText());
    separatore = ",";
  }
  uscita << (*separatore == '\0' ? "]\n" : "\n]\n");
}

Uscita Mostra(const Elenco& elenco, const PosizioneArchivio& posizione, std::int64_t ultimi, Forma forma,
              std::ostream& uscita) try {
  const auto archivio =
      elenco.fonte == Fonte::kRegistro ? ApriRegistroPerLettura(posizione) : ApriIncorporato(posizione);
  if (forma == Forma::kJson) {
    ScriviJson(*archivio, elenco, ultimi, uscita);
    return Uscita::kInviato;
  }
  const std::vector<Riga> righe = LeggiRighe(*archivio, elenco, ultimi);
  if (forma == Forma::kCsv) {
    ScriviCsv(elenco, righe, uscita);
  } else {
    ScriviColonne(elenco, righe, uscita);
  }
  return Uscita::kInviato;
} catch (const host::Errore& errore) {
  throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
}

}  // namespace

void AggiungiElenco(CLI::App& programma, Contesto& contesto, const Elenco& elenco) {
  struct Argomenti {
    PosizioneArchivio posizione;
    std::uint32_t ultimi = 0;
    bool json = false;
    bool csv = false;
  };
  auto* const comando = programma.add_subcommand(elenco.comando, elenco.aiuto);
  auto argomenti = std::make_shared<Argomenti>();
  AggiungiArchivio(*comando, argomenti->posizione, false);
  if (elenco.fonte == Fonte::kRegistro) AggiungiFileRegistro(*comando, argomenti->posizione);
  comando->add_option("--ultimi", argomenti->ultimi, "Mostra solo le ultime righe")
      ->type_name("NUMERO")
      ->check(NumeroFino(999999999));
  comando->add_flag("--json", argomenti->json, "Scrive in JSON, senza tagliare i testi");
  comando->add_flag("--csv", argomenti->csv, "Scrive in CSV, senza tagliare i testi");
  comando->callback([argomenti, elenco, &contesto] {
    if (argomenti->json && argomenti->csv) {
      throw ErroreProgramma(Uscita::kComandoErrato, "indicare --json oppure --csv, non entrambi");
    }
    const Forma forma = argomenti->json ? Forma::kJson : argomenti->csv ? Forma::kCsv : Forma::kTesto;
    contesto.uscita =
        Mostra(elenco, argomenti->posizione, argomenti->ultimi, forma, contesto.terminale.uscita);
  });
}

}  // namespace orve::app
