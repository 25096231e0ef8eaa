#include "orve-mail/commands/recipient_options.h"

#include <CLI/CLI.hpp>

#include "orve-mail/host/codici.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/terminal/uscita.h"

namespace orve::app {

namespace {

std::string Opzione(const TipoDiCodice& tipo) {
  return std::string("--") + tipo.nome;
}

}  // namespace

void AggiungiCodici(CLI::App& comando, RecipientOptions& opzioni) {
  for (const TipoDiCodice& tipo : kTipiDiCodice) {
    comando.add_option(Opzione(tipo), opzioni.codici[tipo.nome], tipo.descrizione)
        ->type_name("CODICE")
        ->group("Destinatario (uno solo di questi, oppure --a, --cc, --ccn)");
  }
}

void AggiungiIndirizzi(CLI::App& comando, RecipientOptions& opzioni) {
  const auto aggiungi = [&comando](const char* opzione, std::vector<std::string>& voci, const char* aiuto) {
    comando.add_option(opzione, voci, aiuto)
        ->type_name("\"NOME <INDIRIZZO>\"")
        ->allow_extra_args(false)
        ->group("Destinatari per indirizzo (ripetibili)");
  };
  aggiungi("--a", opzioni.a, "Destinatario");
  aggiungi("--cc", opzioni.cc, "Destinatario per conoscenza");
  aggiungi("--ccn", opzioni.ccn, "Destinatario per conoscenza nascosta");
}

std::optional<CodiceDestinatario> LeggiCodice(const CLI::App& comando, const RecipientOptions& opzioni) {
  std::optional<CodiceDestinatario> codice;
  for (const TipoDiCodice& tipo : kTipiDiCodice) {
    const std::string opzione = Opzione(tipo);
    if (comando.count(opzione) == 0) continue;
    if (codice) throw ErroreProgramma(Uscita::kComandoErrato, "indicare un solo destinatario per codice");
    codice = CodiceDestinatario{opzioni.codici.at(tipo.nome), tipo.tipo};
    RichiediUtf8(codice->codice, opzione);
    const std::string difetto = DifettoDelCodice(tipo.tipo, codice->codice);
    if (!difetto.empty()) {
      throw ErroreProgramma(Uscita::kComandoErrato, Opzione(tipo) + ": «" + codice->codice + "» " + difetto);
    }
  }
  return codice;
}

std::vector<DestinatarioInCasella> LeggiIndirizzi(const RecipientOptions& opzioni) {
  std::vector<DestinatarioInCasella> destinatari;
  const auto aggiungi = [&](const std::vector<std::string>& voci, std::int16_t casella, const char* opzione) {
    for (const std::string& voce : voci) {
      RichiediUtf8(voce, opzione);
      destinatari.push_back({LeggiDestinatario(voce), casella});
    }
  };
  aggiungi(opzioni.a, 0, "--a");
  aggiungi(opzioni.cc, 1, "--cc");
  aggiungi(opzioni.ccn, 2, "--ccn");
  return destinatari;
}

}  // namespace orve::app
