// From a code and its type to one address and one display name, read from the application's master data.
//
// Certified and ordinary mail never fall back to each other, whatever a record holds. A record that is
// missing mostly leaves address and name as they were, so that a service that is used again still holds the
// recipient of its last send. Values go into the statements unescaped.
#include <string>

#include "addressing/columns.h"
#include "addressing/recipient_code.h"
#include "service/CLSFW_MAILSERVER.h"

namespace orve {

namespace {

using host::Richiesto;

enum EsitoRicerca : std::int16_t { kTrovato = 0, kNonTrovato = 1, kSenzaIndirizzo = 2 };

enum TipoCliFor : std::int32_t { kCliente = 0, kFornitore = 1 };

// The type code of a date in a statement.
constexpr std::int32_t kValoreData = 3;

host::Variant Esito(EsitoRicerca esito) {
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

// The function takes company, flag and partner: not the order of the code.
std::string StatementDelPartner(const CodiceDestinazione& codice, const std::string& data) {
  return " select  "
         "     CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC, CG16_RAGSOANAG, CG16_COGNOME, CG16_NOME  "
         " from CG16_ANAGGEN  "
         " where CG16_CODICE= ( "
         "     select dbo.FNCG_GETCODANAG(" +
         codice.ditta + "," + codice.tipoCf + "," + codice.cliFor + "," + data + ")  ) ";
}

}  // namespace

host::Variant CLSFW_MAILSERVER::GetDatiDestinatario(const host::Variant& codice,
                                                    std::optional<std::int32_t> Tipo) {
  try {
    vDitta = NVL(INFO_RagSocCliFor(), "").ToText();
    return CercaDestinatario(codice, Tipo.value_or(kvDestinatarioFaxAnagrafica));
  } catch (...) {
    return Esito(kNonTrovato);
  }
}

host::Variant CLSFW_MAILSERVER::CercaDestinatario(const host::Variant& codice, std::int32_t tipo) {
  switch (tipo) {
    case kvDestinatarioFaxAnagrafica:
      return CercaInAnagrafica(StatementAnagrafica(codice.Joined()));
    case kvDestinatarioFaxCliente:
    case kvDestinatarioFaxFornitore: {
      const TipoCliFor cliFor = tipo == kvDestinatarioFaxCliente ? kCliente : kFornitore;
      const std::string data = DataValiditaDB();
      return CercaInAnagrafica(StatementCliFor(DittaCorrente.Joined(), cliFor, codice.Joined(), data));
    }
    case kvDestinatarioFaxAgente:
      return CercaInAnagrafica(StatementAgente(DittaCorrente.Joined(), codice.Joined()));
    case kvDestinatarioFaxNumero:
      return CercaNelTesto(codice.Joined());
    case kvDestinatarioFaxContatto:
      return CercaContatto(codice.Joined());
    case kvDestinatarioFaxDestinatario:
      return CercaDestinazione(codice.ToText());
    default:
      return {};
  }
}

// The date at which a code counts, as it stands in a statement. A service that was given none takes today's
// and keeps it.
std::string CLSFW_MAILSERVER::DataValiditaDB() {
  if (!DataValiditaCodiceDestinatario().HaData()) {
    DataValiditaCodiceDestinatario(ambiente_->OrologioDiSistema().Adesso().SoloData());
  }
  return FormatoDB(DataValiditaCodiceDestinatario(), kValoreData, false).Joined();
}

host::Variant CLSFW_MAILSERVER::CercaInAnagrafica(const std::string& statement) {
  const auto risultato = Richiesto(ConnectionADO).Execute(statement, host::kComandoTesto);
  if (Richiesto(risultato).Eof()) return Esito(kNonTrovato);
  vIndDestinatario = LeggiTesto(*risultato, IsPec() ? "CG16_EMAIL_PEC" : "CG16_INDEMAIL");
  vNome = LeggiTesto(*risultato, "CG16_RAGSOANAG");
  return Esito(vIndDestinatario.empty() ? kSenzaIndirizzo : kTrovato);
}

host::Variant CLSFW_MAILSERVER::CercaContatto(const std::string& codice) {
  const auto risultato = Richiesto(ConnectionADO).Execute(StatementContatto(codice), host::kComandoTesto);
  if (Richiesto(risultato).Eof()) return Esito(kNonTrovato);
  vIndDestinatario = LeggiTesto(*risultato, IsPec() ? "CO02_PEC" : "CO02_EMAIL1");
  vNome = LeggiTesto(*risultato, "CO02_COGNOMENOME");
  return Esito(vIndDestinatario.empty() ? kSenzaIndirizzo : kTrovato);
}

// An empty column of the destination falls back to the partner; a missing destination does not.
host::Variant CLSFW_MAILSERVER::CercaDestinazione(const std::string& testo) {
  const CodiceDestinazione codice = ScomponiCodiceDestinazione(testo);
  auto& connessione = Richiesto(ConnectionADO);
  const auto destinazione = connessione.Execute(StatementDestinazione(codice), host::kComandoTesto);
  const std::string data = DataValiditaDB();
  const auto partner = connessione.Execute(StatementDelPartner(codice, data), host::kComandoTesto);
  if (Richiesto(destinazione).Eof()) return Esito(kSenzaIndirizzo);

  const std::string proprio = LeggiTesto(*destinazione, IsPec() ? "MG22_DESTPEC" : "MG22_DESTEMAIL");
  if (!proprio.empty()) {
    vIndDestinatario = proprio;
    vNome = LeggiTesto(*destinazione, "MG22_DESTRAGSOC");
    return {};
  }
  const std::string delPartner = LeggiTesto(Richiesto(partner), IsPec() ? "CG16_EMAIL_PEC" : "CG16_INDEMAIL");
  if (delPartner.empty()) return Esito(kSenzaIndirizzo);
  vIndDestinatario = delPartner;
  vNome = LeggiTesto(*partner, "CG16_RAGSOANAG");
  return Esito(kTrovato);
}

host::Variant CLSFW_MAILSERVER::CercaNelTesto(const std::string& testo) {
  vIndDestinatario = IsPec() ? EstraiIndirizzoPec(testo) : EstraiIndirizzoMail(testo);
  return Esito(vIndDestinatario.empty() ? kNonTrovato : kTrovato);
}

}  // namespace orve
