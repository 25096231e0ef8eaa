#include "fakes/oggetti_del_canale.h"

namespace orve::fakes {

namespace {

template <auto kCrea>
void Crea(host::Ambiente& ambiente) {
  static_cast<void>((ambiente.*kCrea)());
}

}  // namespace

const std::vector<OggettiDelCanale>& OggettiDeiCanali() {
  static const std::vector<OggettiDelCanale> kOggetti = {
      {.canale = kvSMTPSSLMail,
       .nome = "Smtp",
       .titolo = "SMTP",
       .invio = "smtp.SendMail",
       .contenuto = {"smtp.ServerAddr ", "smtp.ServerPort ", "smtp.ConnectType ", "smtp.UserName ",
                     "smtp.From ", "smtp.FromAddr ", "smtp.AddRecipientEx ", "smtp.AddAttachment ",
                     "smtp.Subject ", "smtp.BodyFormat ", "smtp.BodyText ", "smtp.AddHeader ",
                     "smtp.DeliveryNotification "},
       .confronto = {"smtp.AddRecipientEx", "smtp.AddAttachment", "smtp.AddHeader", "smtp.BodyFormat",
                     "smtp.BodyText", "smtp.DeliveryNotification", "smtp.Subject"},
       .soggetto = "smtp.Subject",
       .crea = Crea<&host::Ambiente::CreaComponenteSmtp>,
       .rifiuta = [](FakeAmbiente& ambiente) { ambiente.risultatoSmtp = 4; },
       .rifiutaFile =
           [](FakeAmbiente& ambiente, const std::string& percorso, const host::Errore& errore) {
             ambiente.journal->Fallisce("smtp.AddAttachment " + percorso, errore);
           },
       .nonSiApre = nullptr},
      {.canale = kvOutlook,
       .nome = "Outlook",
       .titolo = "Outlook",
       .invio = "MailItem.Send",
       .contenuto = {"MailItem.To ", "MailItem.cc ", "MailItem.Subject ", "MailItem.body ",
                     "MailItem.HTMLBody ", "MailItem.ReadReceiptRequested ", "Attachments.Add "},
       .confronto = {"MailItem.ReadReceipt", "MailItem.To", "MailItem.cc", "MailItem.Bcc", "MailItem.Subject",
                     "MailItem.body", "MailItem.BodyFormat", "MailItem.HTMLBody", "Attachments.Add"},
       .soggetto = "MailItem.Subject",
       .crea = Crea<&host::Ambiente::CreaOutlook>,
       .rifiuta =
           [](FakeAmbiente& ambiente) {
             ambiente.journal->Fallisce("MailItem.Send", {1001, "Outlook", "invio annullato"});
           },
       .rifiutaFile =
           [](FakeAmbiente& ambiente, const std::string& percorso, const host::Errore& errore) {
             ambiente.journal->Fallisce("Attachments.Add " + percorso, errore);
           },
       // A version without a number before a point.
       .nonSiApre = [](FakeAmbiente& ambiente) { ambiente.versioneOutlook = "16"; }},
      {.canale = kvSimpleMAPI,
       .nome = "SimpleMapi",
       .titolo = "Simple MAPI",
       .invio = "MAPIMessages.Send",
       .contenuto = {"MAPIMessages.Recip", "MAPIMessages.Msg", "MAPIMessages.AttachmentPathName "},
       .confronto = {"MAPIMessages.RecipAddress", "MAPIMessages.RecipDisplayName", "MAPIMessages.RecipType",
                     "MAPIMessages.MsgReceipt", "MAPIMessages.MsgNoteText", "MAPIMessages.MsgSubject",
                     "MAPIMessages.AttachmentPathName", "MAPIMessages.AttachmentName"},
       .soggetto = "MAPIMessages.MsgSubject",
       .crea = Crea<&host::Ambiente::CreaMAPIMessages>,
       .rifiuta =
           [](FakeAmbiente& ambiente) {
             ambiente.journal->Fallisce("MAPIMessages.Send", {1001, "MAPI", "invio annullato"});
           },
       .rifiutaFile =
           [](FakeAmbiente& ambiente, const std::string& percorso, const host::Errore& errore) {
             ambiente.journal->Fallisce("MAPIMessages.AttachmentPathName " + percorso, errore);
           },
       .nonSiApre =
           [](FakeAmbiente& ambiente) {
             ambiente.journal->Fallisce("MAPIMessages.Compose", {1001, "MAPI", "nessuna sessione"});
           }},
      // Recipients, subject, files and body are in the records that the call of BMAPISendMail is given.
      {.canale = kvMAPI,
       .nome = "Mapi32",
       .titolo = "MAPI32",
       .invio = "MAPI32.BMAPISendMail",
       .contenuto = {},
       .confronto = {"MAPI32."},
       .soggetto = "MAPI32.BMAPISendMail",
       .crea = Crea<&host::Ambiente::CreaMapi32>,
       .rifiuta = [](FakeAmbiente& ambiente) { ambiente.esitoInvioMapi = 2; },
       .rifiutaFile = [](FakeAmbiente& ambiente, const std::string& /*percorso*/,
                         const host::Errore& /*errore*/) { ambiente.esitoInvioMapi = 11; },
       .nonSiApre = [](FakeAmbiente& ambiente) { ambiente.esitoLogonMapi = 3; }},
  };
  return kOggetti;
}

std::string RigaDiCreazione(const OggettiDelCanale& canale) {
  FakeAmbiente ambiente;
  canale.crea(ambiente);
  return ambiente.journal->Righe().front();
}

}  // namespace orve::fakes
