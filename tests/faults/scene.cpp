#include "faults/scene.h"

#include "fakes/headless.h"
#include "fakes/oggetti_del_canale.h"
#include "orve-mailserver/addressing/destinatari.h"

namespace orve::faults {

namespace {

using fakes::FakeAmbiente;
using fakes::FakeConnection;
using AmbientePtr = std::shared_ptr<FakeAmbiente>;

constexpr const char* kPersona = "LDAP://CN=Anna Rossi,DC=azienda,DC=example";

fakes::Riga Impostazioni(kvEnum_ServizioMail canale, kvEnumModalitaInvio modo) {
  return {{"FW24_INDFAXATTIVO", std::int32_t{canale}},
          {"FW24_MAILMODSTDIFF", 2},
          {"FW24_INDMODALITA", std::int32_t{modo}},
          {"FW24_PATHTMP", "C:\\Temp"},
          {"FW24_BCC", 0},
          {"FW24_READRECEIPT", 1},
          {"FW24_FLGMSGPERS", 0},
          {"FW24_MSGPERS", host::Null{}}};
}

/// An account that leaves the sender's address and name to the directory.
fakes::Riga Account() {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 587},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDTIPO", 1},
          {"FW23_INDAUTH", 1},
          {"FW23_SSL", 1},
          {"FW98_IDACCOUNT", 12},
          {"FW98_MAILADDRESS", host::Null{}},
          {"FW98_USERNAME", "posta"},
          {"FW98_PASSWORD", "{segreta}"},
          {"ALIAS", host::Null{}},
          {"LETTURA", 1},
          {"CONSEGNA", 1}};
}

/// Everything that a send may ask for is present.
void TuttoPresente(FakeAmbiente& ambiente, FakeConnection& database, kvEnum_ServizioMail canale,
                   kvEnumModalitaInvio modo) {
  ambiente.utenteRete = "arossi";
  ambiente.directoryPresente = true;
  ambiente.trovatiInDirectory = {{{"adsPath", kPersona}}};
  ambiente.persone[kPersona] = {{"FirstName", "Anna"},   {"LastName", "Rossi"},
                                {"EmployeeID", "42"},    {"Title", "Responsabile"},
                                {"Division", "Vendite"}, {"TelephoneNumber", "02 1"},
                                {"FaxNumber", "02 2"},   {"EmailAddress", "anna.rossi@azienda.example"}};
  ambiente.versioneOutlook = "14.0.0.7268";
  ambiente.file = {{"C:\\Doc\\f.pdf", ""}, {"C:\\Doc\\l.pdf", ""}};
  database.Risponde("FROM FW24_FAXCONFIG", {Impostazioni(canale, modo)});
  // At today's date, so that a statement without it finds nobody.
  database.Risponde("'20261114'", {{{"CG16_INDEMAIL", "cliente@x.example"},
                                    {"CG16_EMAIL_PEC", host::Null{}},
                                    {"CG16_RAGSOANAG", "Cliente Uno"}}});
  database.Risponde("WHERE CG18_DITTA = 1", {{{"CG16_RAGSOANAG", "Azienda S.p.A."},
                                              {"CG16_INDIRIZZO", "Via Po 1"},
                                              {"CG16_CAP", "10100"},
                                              {"CG16_CITTA", "Torino"},
                                              {"CG16_PROV", "TO"},
                                              {"CG16_INDEMAIL", "info@azienda.example"}}});
  database.Risponde("FW99_MAILUSERACCOUNT", {Account()});
  // The list that a window offers excludes accounts without an address.
  auto inElenco = Account();
  inElenco["FW98_MAILADDRESS"] = "posta@azienda.example";
  inElenco["ALIAS"] = "Posta";
  database.Risponde("ORDER BY FW99_ISDEFAULT", {inElenco});
  database.Risponde("SELECT  FW06_CODICE,FW06_DESCR",
                    {{{"FW06_CODICE", "AMM"}, {"FW06_DESCR", "Amministrazione"}}});
  database.Risponde("SELECT  FW07_USERNAME,FW07_DESCR",
                    {{{"FW07_USERNAME", "anna"}, {"FW07_DESCR", "Anna dell'ufficio"}}});
  database.Risponde("SELECT FW07_CODICE  FROM", {{{"FW07_CODICE", "U07"}}});
  database.Risponde("SELECT FW07_CODICE_FW06  FROM", {{{"FW07_CODICE_FW06", "AMM"}}});
  database.Risponde("'AIT_MAIL_HTML'", {{{"", 1}}});
  database.Risponde("'AIT_FIRME'", {{{"FW95_VALORE", "FIRME"}}});
  database.Risponde("TABLE_NAME = 'FIRME'", {{{"", 1}}});
  database.Risponde("SELECT FIRMA_HTML",
                    {{{"FIRMA_HTML", "<p>Anna</p>"}, {"FONT", "Arial"}, {"DIMENSIONE", 2}}});
}

auto TuttoPresente(kvEnum_ServizioMail canale, kvEnumModalitaInvio modo) {
  return [canale, modo](FakeAmbiente& ambiente, FakeConnection& database) {
    TuttoPresente(ambiente, database, canale, modo);
  };
}

void Messaggio(const AmbientePtr& ambiente, CLSFW_MAILSERVER& servizio) {
  servizio.vOggetto = "Fattura 12";
  servizio.vFlagCorpo = 1;
  servizio.vCorpoMail = "Per ***(Nome)*** da ***(AziendaCorr)***, ***(DescUtente)*** (***(DescGruppo)***)";
  servizio.vMailAttachment = "C:\\Doc\\f.pdf";
  servizio.AddAllegato("C:\\Doc\\l.pdf");
  servizio.INFO_RagSocCliFor("Acme S.r.l.");
  servizio.BeforeSendMail = [journal = ambiente->journal](auto&, auto&, auto&, auto&, auto&, auto&) {
    journal->Add("BeforeSendMail");
  };
}

/// To a customer by code.
void AUnCliente(const AmbientePtr& ambiente, CLSFW_MAILSERVER& servizio) {
  Messaggio(ambiente, servizio);
  servizio.AvviaProceduraInvio("1001", kvDestinatarioFaxCliente);
}

/// The same, with a person at the compose window who presses the send button, where that can be pressed.
void AUnClienteConFinestra(const AmbientePtr& ambiente, CLSFW_MAILSERVER& servizio) {
  ambiente->persona = [](fakes::HeadlessForm& form) {
    if (form.Vede("cmd_Invia") && form.Attivo("cmd_Invia")) form.Preme("cmd_Invia");
  };
  AUnCliente(ambiente, servizio);
}

/// To two recipients whom the caller names.
void AUnaCollezione(const AmbientePtr& ambiente, CLSFW_MAILSERVER& servizio) {
  Messaggio(ambiente, servizio);
  servizio.vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
  servizio.vCollDestinatari->AddFromLista("bruno@x.example", "Bruno", "", 0);
  servizio.vCollDestinatari->AddFromLista("carla@x.example", "Carla", "", 1);
  servizio.AvviaProceduraInvio();
}

/// A handler of the caller that raises, so that the log is written.
void ConUnAscoltatoreCheFallisce(const AmbientePtr& ambiente, CLSFW_MAILSERVER& servizio) {
  Messaggio(ambiente, servizio);
  servizio.vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
  servizio.vCollDestinatari->AddFromLista("bruno@x.example", "Bruno", "", 0);
  servizio.BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
    throw host::Errore(2002, "Chiamante", "no");
  };
  servizio.AvviaProceduraInvio();
}

}  // namespace

const std::vector<Scena>& Scene() {
  static const std::vector<Scena> kScene = [] {
    std::vector<Scena> scene = {
        {"SmtpAutomatico", TuttoPresente(kvSMTPSSLMail, kvAutomatico), AUnCliente},
        {"SmtpManuale", TuttoPresente(kvSMTPSSLMail, kvManuale), AUnClienteConFinestra},
        {"ServizioDisabilitato", TuttoPresente(kvNoMail, kvAutomatico), AUnCliente},
        {"LogDiUnErrore", TuttoPresente(kvMAPI, kvAutomatico), ConUnAscoltatoreCheFallisce},
    };
    for (const fakes::OggettiDelCanale& oggetti : fakes::OggettiDeiCanali()) {
      if (oggetti.canale == kvSMTPSSLMail) continue;  // with look-up and window, above
      scene.push_back(
          {std::string(oggetti.nome), TuttoPresente(oggetti.canale, kvAutomatico), AUnaCollezione});
    }
    return scene;
  }();
  return kScene;
}

}  // namespace orve::faults
