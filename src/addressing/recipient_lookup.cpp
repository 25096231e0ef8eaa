// From a code and its type to one address and one display name, read from the application's master data.
//
// Certified and ordinary mail never fall back on each other, whatever a record holds. A missing record mostly
// leaves address and name as they were, so a service object that is reused still holds the recipient of its
// last send. Values go into the statements unescaped.
#include "addressing/recipient_lookup.h"

#include <string>
#include <string_view>

#include "addressing/codice_destinazione.h"
#include "addressing/columns.h"
#include "content/sql_values.h"
#include "service/guards.h"

namespace orve {

namespace {

using host::Richiesto;

enum EsitoRicerca : std::int16_t { kTrovato = 0, kNonTrovato = 1, kSenzaIndirizzo = 2 };

enum TipoCliFor : std::int32_t { kCliente = 0, kFornitore = 1 };

host::Variant Valore(EsitoRicerca esito) {
  return static_cast<std::int16_t>(esito);
}

std::string StatementAnagrafica(const std::string& codice) {
  return "SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, CG16_NOME , CG16_COGNOME, "
         "CG16_RAGSOANAG FROM CG16_ANAGGEN "
         "WHERE CG16_CODICE= " +
         codice;
}

std::string StatementAgente(const std::string& ditta, const std::string& codice) {
  return " SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r"
         " CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r"
         " FROM CG16_ANAGGEN \r"
         " INNER JOIN MG17_AGENTI  ON MG17_ANAGEN_CG16  = CG16_CODICE \r"
         " WHERE MG17_DITTA_CG18 = " +
         ditta + "\r AND MG17_AGENTE =  '" + codice + "'";
}

std::string StatementCliFor(const std::string& ditta, TipoCliFor tipo, const std::string& codice,
                            const std::string& data) {
  return " SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r"
         " CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r"
         " FROM CG16_ANAGGEN \r"
         " WHERE CG16_CODICE = \r"
         " (SELECT dbo.FNCG_GETCODANAG(CG44_CLIFOR.CG44_DITTA_CG18, CG44_CLIFOR.CG44_TIPOCF, "
         "CG44_CLIFOR.CG44_CLIFOR, " +
         data +
         ") AS CODANAG \r"
         " FROM CG44_CLIFOR \r"
         " WHERE \r"
         " CG44_DITTA_CG18 = " +
         ditta + "\r AND CG44_TIPOCF = " + std::to_string(tipo) + "\r AND CG44_CLIFOR = " + codice + ")";
}

std::string StatementContatto(const std::string& codice) {
  return " SELECT CG16_RAGSOANAG, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC "
         " FROM CO02_ANAGCONTATTO "
         " INNER JOIN CO03_LEGCONTATTO ON CO03_ID_CO02 = CO02_ID "
         " INNER JOIN CG16_ANAGGEN ON CG16_CODICE = CO03_CODICE_CG16 "
         " WHERE CO02_ID = " +
         codice;
}

std::string StatementDestinazione(const CodiceDestinazione& codice) {
  return " SELECT  "
         "     MG22_DESTEMAIL, MG22_DESTFAX, MG22_DESTPEC, MG22_DESTRAGSOC "
         " From MG22_CLIFORDEST  "
         " Where MG22_CODDESTIN = '" +
         codice.destinazione + "'   AND MG22_DITTA_CG18 = " + codice.ditta +
         " AND MG22_TIPOCF_CG44 = " + codice.tipoCf + " AND MG22_CLIFOR_CG44 = " + codice.cliFor;
}

// The function takes company, flag and partner, which is not the order in the code.
std::string StatementDelPartner(const CodiceDestinazione& codice, const std::string& data) {
  return " select  "
         "     CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC, CG16_RAGSOANAG, CG16_COGNOME, CG16_NOME  "
         " from CG16_ANAGGEN  "
         " where CG16_CODICE= ( "
         "     select dbo.FNCG_GETCODANAG(" +
         codice.ditta + "," + codice.tipoCf + "," + codice.cliFor + "," + data + ")  ) ";
}

// The date for which a code is resolved, in the form of a statement. A service that was given none takes
// today's date and keeps it.
std::string DataValiditaDB(Messaggio& messaggio, const Oggetti& oggetti) {
  if (!messaggio.DataValiditaCodiceDestinatario.HaData()) {
    messaggio.DataValiditaCodiceDestinatario = oggetti.ambiente->OrologioDiSistema().Adesso().SoloData();
  }
  return FormatoDB(oggetti, messaggio.DataValiditaCodiceDestinatario, kValoreData, false).Joined();
}

// The columns in which one kind of record holds what a message needs.
struct ColonneRecapito {
  std::string_view pec;
  std::string_view mail;
  std::string_view nome;

  [[nodiscard]] std::string_view Indirizzo(const Messaggio& messaggio) const {
    return messaggio.IsPec ? pec : mail;
  }
};
constexpr ColonneRecapito kAnagrafica = {"CG16_EMAIL_PEC", "CG16_INDEMAIL", "CG16_RAGSOANAG"};
constexpr ColonneRecapito kContatto = {"CO02_PEC", "CO02_EMAIL1", "CO02_COGNOMENOME"};
constexpr ColonneRecapito kDestinazione = {"MG22_DESTPEC", "MG22_DESTEMAIL", "MG22_DESTRAGSOC"};

host::Variant CercaRecapito(Messaggio& messaggio, const Contesto& contesto, const std::string& statement,
                            const ColonneRecapito& colonne) {
  const auto risultato = Richiesto(contesto.ConnectionADO).Execute(statement, host::kComandoTesto);
  if (Richiesto(risultato).Eof()) return Valore(kNonTrovato);
  messaggio.vIndDestinatario = LeggiTesto(*risultato, colonne.Indirizzo(messaggio));
  messaggio.vNome = LeggiTesto(*risultato, colonne.nome);
  return Valore(messaggio.vIndDestinatario.empty() ? kSenzaIndirizzo : kTrovato);
}

// An empty column of the destination falls back to the partner; a missing destination does not.
host::Variant CercaDestinazione(Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                                const std::string& testo) {
  const CodiceDestinazione codice = ScomponiCodiceDestinazione(testo);
  auto& connessione = Richiesto(contesto.ConnectionADO);
  const auto destinazione = connessione.Execute(StatementDestinazione(codice), host::kComandoTesto);
  const std::string data = DataValiditaDB(messaggio, oggetti);
  const auto partner = connessione.Execute(StatementDelPartner(codice, data), host::kComandoTesto);
  if (Richiesto(destinazione).Eof()) return Valore(kSenzaIndirizzo);

  const std::string proprio = LeggiTesto(*destinazione, kDestinazione.Indirizzo(messaggio));
  if (!proprio.empty()) {
    messaggio.vIndDestinatario = proprio;
    messaggio.vNome = LeggiTesto(*destinazione, kDestinazione.nome);
    return {};
  }
  const std::string delPartner = LeggiTesto(Richiesto(partner), kAnagrafica.Indirizzo(messaggio));
  if (delPartner.empty()) return Valore(kSenzaIndirizzo);
  messaggio.vIndDestinatario = delPartner;
  messaggio.vNome = LeggiTesto(*partner, kAnagrafica.nome);
  return Valore(kTrovato);
}

host::Variant CercaNelTesto(Messaggio& messaggio, const std::string& testo) {
  messaggio.vIndDestinatario = messaggio.IsPec ? EstraiIndirizzoPec(testo) : EstraiIndirizzoMail(testo);
  return Valore(messaggio.vIndDestinatario.empty() ? kNonTrovato : kTrovato);
}

host::Variant CercaDestinatario(Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                                const host::Variant& codice, std::int32_t tipo) {
  const auto cerca = [&](const std::string& statement, const ColonneRecapito& colonne) {
    return CercaRecapito(messaggio, contesto, statement, colonne);
  };
  switch (tipo) {
    case kvDestinatarioFaxAnagrafica:
      return cerca(StatementAnagrafica(codice.Joined()), kAnagrafica);
    case kvDestinatarioFaxCliente:
    case kvDestinatarioFaxFornitore: {
      const TipoCliFor cliFor = tipo == kvDestinatarioFaxCliente ? kCliente : kFornitore;
      const std::string data = DataValiditaDB(messaggio, oggetti);
      return cerca(StatementCliFor(contesto.DittaCorrente.Joined(), cliFor, codice.Joined(), data),
                   kAnagrafica);
    }
    case kvDestinatarioFaxAgente:
      return cerca(StatementAgente(contesto.DittaCorrente.Joined(), codice.Joined()), kAnagrafica);
    case kvDestinatarioFaxNumero:
      return CercaNelTesto(messaggio, codice.Joined());
    case kvDestinatarioFaxContatto:
      return cerca(StatementContatto(codice.Joined()), kContatto);
    case kvDestinatarioFaxDestinatario:
      return CercaDestinazione(messaggio, contesto, oggetti, codice.ToText());
    default:
      return {};
  }
}

}  // namespace

host::Variant GetDatiDestinatario(Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                                  const host::Variant& codice, std::optional<std::int32_t> Tipo) {
  host::Variant esito = Valore(kNonTrovato);
  IgnoraErrori([&] {
    messaggio.vDitta = NVL(messaggio.INFO_RagSocCliFor, "").ToText();
    esito =
        CercaDestinatario(messaggio, contesto, oggetti, codice, Tipo.value_or(kvDestinatarioFaxAnagrafica));
  });
  return esito;
}

}  // namespace orve
