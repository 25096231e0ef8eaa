#include "journals/scena.h"

#include <functional>

#include "fakes/oggetti_del_canale.h"
#include "golden.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "text/text.h"

namespace orve::journals {

namespace {

fakes::Riga Impostazioni(kvEnum_ServizioMail canale) {
  return {{"FW24_INDFAXATTIVO", std::int32_t{canale}},
          {"FW24_INDMODALITA", 1},
          {"FW24_PATHTMP", "C:\\Temp"},
          {"FW24_READRECEIPT", 1},
          {"FW24_FLGMSGPERS", 0},
          {"FW24_MSGPERS", host::Null{}},
          {"FW24_BCC", 1},
          {"FW24_MAILMODSTDIFF", host::Null{}}};
}

fakes::Riga Account() {
  return {{"FW23_SERVERNAME", "smtp.azienda.example "},
          {"FW23_PORT", std::int16_t{587}},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDTIPO", 1},
          {"FW23_INDAUTH", 1},
          {"FW23_SSL", 1},
          {"FW98_IDACCOUNT", 12},
          {"FW98_MAILADDRESS", "posta@azienda.example"},
          {"FW98_USERNAME", "posta"},
          {"FW98_PASSWORD", "{segreta}"},
          {"ALIAS", "Società Azienda"},
          {"LETTURA", 1},
          {"CONSEGNA", -1}};
}

fakes::Riga Azienda() {
  return {{"CG16_RAGSOANAG", "Società Azienda S.p.A."},
          {"CG16_INDIRIZZO", "Via Perché 1"},
          {"CG16_CAP", "20100"},
          {"CG16_CITTA", host::Null{}},
          {"CG16_PROV", "MI"},
          {"CG16_INDEMAIL", "info@azienda.example"}};
}

using Invio = std::function<void(CLSFW_MAILSERVER&)>;

void AllaCollezione(const Scena& scena, CLSFW_MAILSERVER& servizio) {
  servizio.vCollDestinatari = std::make_shared<CollDestinatari>(scena.ambiente);
  servizio.vCollDestinatari->AddFromLista("anna@x.example", "Rossi, Anna", "Acme", 0);
  servizio.vCollDestinatari->AddFromLista("łucja@x.example", "Łucja", "", 1);
  servizio.vCollDestinatari->AddFromLista("dario@x.example", "D'Ario", "", 2);
  servizio.AddAllegato("C:\\Doc\\fattura 12.pdf");
  servizio.AddAllegato("C:\\Doc\\Łódź.pdf");
  servizio.AvviaProceduraInvio();
}

// One send of one service from its creation to its release, as an application makes it.
void Manda(const Scena& scena, std::string& giornale, const std::string& titolo, kvEnum_ServizioMail canale,
           const Invio& invio) {
  scena.finto->journal->Svuota();
  scena.database->Risponde("FROM FW24_FAXCONFIG", {Impostazioni(canale)});
  {
    CLSFW_MAILSERVER servizio(scena.ambiente);
    servizio.ConnectionADO = scena.connessione;
    servizio.ActiveInterface = scena.interfaccia;
    servizio.DittaCorrente = "1";
    servizio.GetImpostazioni();
    servizio.INFO_TipoDoc = "FT";
    servizio.INFO_NumReg = "R1";
    servizio.INFO_NumDoc = "12";
    servizio.INFO_SezDoc = "A";
    servizio.InizializzaRegistroInvioMailMultiprofilo("VOCE", "OGGETTO", 7, "Fattura");
    servizio.vOggetto = "Fattura 12 à € Ł";
    servizio.vFlagCorpo = 1;
    servizio.vCorpoMail = "Spett. ***(Nome)***,\r\nl'allegato è la fattura.";
    servizio.vMailAttachment = "C:\\Doc\\fattura 12.pdf";
    servizio.BeforeSendMail = [](std::string& oggetto, std::string& /*corpo*/, std::string& /*a*/,
                                 std::string& /*cc*/, std::string& /*ccn*/,
                                 std::string& /*allegati*/) { oggetto += " - copia"; };
    invio(servizio);
    giornale += "== " + titolo + "\n";
    for (const auto& inviato : scena.finto->inviiMapi) {
      for (const auto& persona : inviato.destinatari) {
        scena.finto->journal->Add("MAPI32 recip " + std::to_string(persona.RecipClass) + " " + persona.Name);
      }
      for (const auto& file : inviato.file) {
        scena.finto->journal->Add("MAPI32 file " + std::to_string(file.Position) + " " + file.PathName + " " +
                                  file.FileName);
      }
    }
    scena.finto->inviiMapi.clear();
    scena.finto->journal->Add("Stato " + std::to_string(servizio.Stato()));
  }
  for (const auto& riga : scena.finto->journal->Righe()) giornale += riga + "\n";
  scena.finto->journal->DimenticaPiani();
}

void SenzaOggetto(const Scena& scena, std::string& giornale, const std::string& titolo,
                  const fakes::OggettiDelCanale& oggetti) {
  scena.finto->journal->Fallisce(fakes::RigaDiCreazione(oggetti), host::Errore(host::kOggettoNonCreabile));
  Manda(scena, giornale, titolo, oggetti.canale, [&](auto& servizio) { AllaCollezione(scena, servizio); });
}

// What is sent through a channel beside the first message. Those below have more, or other things, to show.

void ConIlCanale(const Scena& scena, std::string& giornale, const fakes::OggettiDelCanale& oggetti) {
  const std::string titolo(oggetti.titolo);
  SenzaOggetto(scena, giornale, titolo + " without its object", oggetti);
  oggetti.rifiuta(*scena.finto);
  Manda(scena, giornale, titolo + ", refused", oggetti.canale,
        [&](auto& servizio) { AllaCollezione(scena, servizio); });
}

void ConSmtp(const Scena& scena, std::string& giornale, const fakes::OggettiDelCanale& oggetti) {
  const Invio allaCollezione = [&](auto& servizio) { AllaCollezione(scena, servizio); };
  scena.finto->risultatoSmtp = std::int16_t{4};
  Manda(scena, giornale, "SMTP, refused by the server", kvSMTPMail, allaCollezione);
  scena.finto->risultatoSmtp = -1;
  scena.finto->journal->Fallisce("smtp.AddAttachment C:\\Doc\\Ł",
                                 {53, "Componente", "File non trovato: Łódź"});
  Manda(scena, giornale, "SMTP, an attachment is refused", kvSMTPMail, allaCollezione);
  scena.finto->journal->Fallisce("smtp.AddRecipientEx", {-2147220975, "Componente", "Elenco non valido"});
  Manda(scena, giornale, "SMTP, a member raises a code of the system", kvSMTPMail, allaCollezione);
  scena.finto->journal->Fallisce("CifratorePassword.Decripta");
  Manda(scena, giornale, "SMTP, the password cannot be read", kvSMTPMail, allaCollezione);
  SenzaOggetto(scena, giornale, "SMTP without its component", oggetti);
  Manda(scena, giornale, "SMTP, a direct send", kvSMTPMail, [](auto& servizio) {
    servizio.InviaMailDiretta(12, "Anna<anna@x.example>", "", "carla@x.example", "Diretto", "Corpo",
                              "C:\\a.pdf");
  });
  Manda(scena, giornale, "SMTP by itself", kvSMTPMail, [](auto& servizio) {
    servizio.AddDestinatario("anna@x.example", "Anna");
    servizio.InviaMailSMTP("Avviso", "Corpo");
  });
  Manda(scena, giornale, "SMTP, an address that is none", kvSMTPMail, [](auto& servizio) {
    servizio.vIndDestinatario = "senza chiocciola";
    servizio.AvviaProceduraInvio();
  });
}

void ConOutlook(const Scena& scena, std::string& giornale, const fakes::OggettiDelCanale& oggetti) {
  const Invio allaCollezione = [&](auto& servizio) { AllaCollezione(scena, servizio); };
  for (const char* versione : {"14.0.0.7268", "16.0.0.4266"}) {
    scena.finto->versioneOutlook = versione;
    Manda(scena, giornale, "Outlook", kvOutlook, allaCollezione);
  }
  scena.finto->journal->Fallisce("MailItem.Send", {287, "Outlook", "Operazione non consentita"});
  Manda(scena, giornale, "Outlook, the sending fails", kvOutlook, allaCollezione);
  SenzaOggetto(scena, giornale, "Outlook that is not there", oggetti);
}

void ConSimpleMapi(const Scena& scena, std::string& giornale) {
  const Invio dueVolte = [&](auto& servizio) {
    AllaCollezione(scena, servizio);
    servizio.InviaMail();
  };
  scena.finto->journal->Fallisce("MAPIMessages.Send", {32002, "MAPIMessages", "Errore imprevisto"});
  Manda(scena, giornale, "Simple MAPI, the sending fails", kvSimpleMAPI, dueVolte);
  Manda(scena, giornale, "Simple MAPI, sent again by itself", kvSimpleMAPI, dueVolte);
}

void ConMapi32(const Scena& scena, std::string& giornale) {
  const Invio allaCollezione = [&](auto& servizio) { AllaCollezione(scena, servizio); };
  scena.finto->esitoInvioMapi = 11;
  scena.finto->esitoLogoffMapi = 2;
  Manda(scena, giornale, "MAPI32, refused", kvMAPI, allaCollezione);
  scena.finto->esitoLogonMapi = 3;
  Manda(scena, giornale, "MAPI32 without a logon", kvMAPI, allaCollezione);
}

void OgniCanale(const Scena& scena, std::string& giornale) {
  scena.finto->versioneOutlook = "11.0.0.8173";
  for (const fakes::OggettiDelCanale& oggetti : fakes::OggettiDeiCanali()) {
    Manda(scena, giornale, std::string(oggetti.titolo), oggetti.canale,
          [&](auto& servizio) { AllaCollezione(scena, servizio); });
    switch (oggetti.canale) {
      case kvSMTPSSLMail:
        ConSmtp(scena, giornale, oggetti);
        break;
      case kvOutlook:
        ConOutlook(scena, giornale, oggetti);
        break;
      case kvSimpleMAPI:
        ConSimpleMapi(scena, giornale);
        break;
      case kvMAPI:
        ConMapi32(scena, giornale);
        break;
      default:
        ConIlCanale(scena, giornale, oggetti);
    }
  }
  Manda(scena, giornale, "No mail", kvNoMail, [&](auto& servizio) { AllaCollezione(scena, servizio); });
}

}  // namespace

std::shared_ptr<fakes::FakeAmbiente> CreaFinto() {
  auto finto = std::make_shared<fakes::FakeAmbiente>();
  finto->utenteRete = "rossi";
  finto->directoryPresente = true;
  finto->trovatiInDirectory = {{{"adsPath", "LDAP://CN=Rossi,DC=azienda,DC=example"}}};
  finto->persone["LDAP://CN=Rossi,DC=azienda,DC=example"] = {
      {"FirstName", "Mario"}, {"LastName", "Rossi"}, {"EmailAddress", "rossi@azienda.example"}};
  return finto;
}

std::shared_ptr<fakes::FakeConnection> CreaDatabase(const fakes::JournalPtr& journal) {
  auto database = std::make_shared<fakes::FakeConnection>(journal);
  database->Risponde("FW98_MAILACCOUNT", {Account()});
  database->Risponde("CG16_INDIRIZZO", {Azienda()});
  database->Risponde("SELECT FW07_CODICE ", {{{"FW07_CODICE", "U01"}}});
  database->Risponde("SELECT FW07_CODICE_FW06 ", {{{"FW07_CODICE_FW06", "AMM"}}});
  return database;
}

std::string Recita(const Scena& scena) {
  std::string giornale;
  OgniCanale(scena, giornale);
  // Line ends inside a text are shown, so that the file has one line for each call.
  return text::Replace(text::Replace(giornale, "\r\n", "¶"), "\r", "¬");
}

std::string Differenza(const std::string& visto) {
  return golden::Difference("tests/journals/whole_sends.txt", visto);
}

}  // namespace orve::journals
