// What a code from outside may be.
//
// The library joins codes into its statements as they are. So whatever comes from a row of a list or from an
// option is first checked against what its column can hold: text that is not a code would become part of a
// statement.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "orve-mailserver/service/enumerazioni.h"

namespace orve::app {

/// A kind of code by which a recipient is named.
struct TipoDiCodice {
  const char* nome;  // in a column of a list and, after two dashes, as an option
  kvTipologiaDestinatarioFAX tipo;
  const char* descrizione;
};

inline constexpr std::array<TipoDiCodice, 7> kTipiDiCodice = {{
    {"cliente", kvDestinatarioFaxCliente, "Codice di un cliente della ditta"},
    {"fornitore", kvDestinatarioFaxFornitore, "Codice di un fornitore della ditta"},
    {"agente", kvDestinatarioFaxAgente, "Codice di un agente della ditta"},
    {"contatto", kvDestinatarioFaxContatto, "Numero di un contatto"},
    {"destinatario", kvDestinatarioFaxDestinatario,
     "Destinazione merce: ditta/cliente o fornitore/0 o 1/destinazione"},
    {"numero", kvDestinatarioFaxNumero, "Testo con l'indirizzo dietro <***> o, con --pec, dietro <*pec*>"},
    {"anagrafica", kvDestinatarioFaxAnagrafica, "Codice di anagrafica generale"},
}};

/// The kind of this name.
[[nodiscard]] std::optional<kvTipologiaDestinatarioFAX> TipoDaNome(std::string_view nome);

/// Why the text is not a recipient's code of this kind, for a person: "non è un numero". Empty: it is one, or
/// the kind accepts any text because none of it gets into a statement.
[[nodiscard]] std::string DifettoDelCodice(kvTipologiaDestinatarioFAX tipo, std::string_view codice);

/// The same for the code of an application user or of a group.
[[nodiscard]] std::string DifettoDelCodiceUtente(std::string_view codice);

/// The same for a company's number.
[[nodiscard]] std::string DifettoDellaDitta(std::string_view ditta);

}  // namespace orve::app
