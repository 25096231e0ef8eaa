#include "fakes/oggetti_del_canale.h"

namespace orve::fakes {

const std::vector<OggettiDelCanale>& OggettiDeiCanali() {
  static const std::vector<OggettiDelCanale> kOggetti = {
      {kvSMTPSSLMail,
       "SMTP",
       "smtp.SendMail",
       {"smtp.ServerAddr ", "smtp.ServerPort ", "smtp.ConnectType ", "smtp.UserName ", "smtp.From ",
        "smtp.FromAddr ", "smtp.AddRecipientEx ", "smtp.AddAttachment ", "smtp.Subject ", "smtp.BodyFormat ",
        "smtp.BodyText ", "smtp.AddHeader ", "smtp.DeliveryNotification "},
       {"smtp.AddRecipientEx", "smtp.AddAttachment", "smtp.AddHeader", "smtp.BodyFormat", "smtp.BodyText",
        "smtp.DeliveryNotification", "smtp.Subject"}},
      {kvOutlook,
       "Outlook",
       "MailItem.Send",
       {"MailItem.To ", "MailItem.cc ", "MailItem.Subject ", "MailItem.body ", "MailItem.HTMLBody ",
        "MailItem.ReadReceiptRequested ", "Attachments.Add "},
       {"MailItem.ReadReceipt", "MailItem.To", "MailItem.cc", "MailItem.Bcc", "MailItem.Subject",
        "MailItem.body", "MailItem.BodyFormat", "MailItem.HTMLBody", "Attachments.Add"}},
      {kvSimpleMAPI,
       "Simple MAPI",
       "MAPIMessages.Send",
       {"MAPIMessages.Recip", "MAPIMessages.Msg", "MAPIMessages.AttachmentPathName "},
       {"MAPIMessages.RecipAddress", "MAPIMessages.RecipDisplayName", "MAPIMessages.RecipType",
        "MAPIMessages.MsgReceipt", "MAPIMessages.MsgNoteText", "MAPIMessages.MsgSubject",
        "MAPIMessages.AttachmentPathName", "MAPIMessages.AttachmentName"}},
      // Recipients, files and body are in the records that the call of BMAPISendMail is given.
      {kvMAPI, "MAPI32", "MAPI32.BMAPISendMail", {}, {"MAPI32."}},
  };
  return kOggetti;
}

}  // namespace orve::fakes
