#include "orve-mail/commands/opzioni_destinatari.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

#include "orve-mail/host/codici.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/terminal/uscita.h"

namespace orve::app {

namespace {

struct TipoDiCodice {
  const char* opzione;
  kvTipologiaDestinatarioFAX tipo;
  const char* aiuto;
};

constexpr std::array<TipoDiCodice, 7> kTipi = {{
    {"--cliente", kvDestinatarioFaxCliente, "Codice di un cliente della ditta"},
    {"--fornitore", kvDestinatarioFaxFornitore, "Codice di un fornitore della ditta"},
    {"--agente", kvDestinatarioFaxAgente, "Codice di un agente della ditta"},
    {"--contatto", kvDestinatarioFaxContatto, "Numero di un contatto"},
    {"--destinatario", kvDestinatarioFaxDestinatario,
     "Destinazione merce: ditta/cliente o fornitore/0 o 1/destinazione"},
    {"--numero", kvDestinatarioFaxNumero, "Testo con l'indirizzo dietro <***> o, con --pec, dietro <*pec*>"},
    {"--anagrafica", kvDestinatarioFaxAnagrafica, "Codice di anagrafica generale"},
}};

}  // namespace

void AggiungiCodici(CLI::App& comando, OpzioniDestinatari& opzioni) {
  for (const TipoDiCodice& tipo : kTipi) {
    comando.add_option(tipo.opzione, opzioni.codici[tipo.opzione], tipo.aiuto)
        ->type_name("CODICE")
        ->group("Destinatario (uno solo di questi, oppure --a, --cc, --ccn)");
  }
}

void AggiungiIndirizzi(CLI::App& comando, OpzioniDestinatari& opzioni) {
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

std::optional<CodiceDestinatario> LeggiCodice(const CLI::App& comando, const OpzioniDestinatari& opzioni) {
  std::optional<CodiceDestinatario> codice;
  for (const TipoDiCodice& tipo : kTipi) {
    if (comando.count(tipo.opzione) == 0) continue;
    if (codice) throw ErroreProgramma(Uscita::kComandoErrato, "indicare un solo destinatario per codice");
    codice = CodiceDestinatario{opzioni.codici.at(tipo.opzione), tipo.tipo};
    RichiediUtf8(codice->codice, tipo.opzione);
    const std::string difetto = DifettoDelCodice(tipo.tipo, codice->codice);
    if (!difetto.empty()) {
      throw ErroreProgramma(Uscita::kComandoErrato,
                            std::string(tipo.opzione) + ": «" + codice->codice + "» " + difetto);
    }
  }
  return codice;
}

std::vector<DestinatarioInCasella> LeggiIndirizzi(const OpzioniDestinatari& opzioni) {
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

std::optional<kvTipologiaDestinatarioFAX> TipoDaNome(std::string_view nome) {
  constexpr std::size_t kTrattini = 2;
  const auto* const tipo = std::find_if(kTipi.begin(), kTipi.end(), [nome](const TipoDiCodice& voce) {
    return std::string_view(voce.opzione).substr(kTrattini) == nome;
  });
  if (tipo == kTipi.end()) return std::nullopt;
  return tipo->tipo;
}

}  // namespace orve::app
