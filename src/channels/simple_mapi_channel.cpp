// Delivering the current message through the Simple MAPI controls. The body is always plain text, and the
// sender is whoever the session belongs to.
//
// A failure is recorded like a success, recipient by recipient; only the outcome of the register lines tells
// them apart. After a failure the control stays, and the next delivery works on the message as it was left.
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "channels/recipient_lists.h"
#include "channels/register_lines.h"
#include "content/send_log.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"
#include "service/sedici_bit.h"

namespace orve {

namespace {

enum TipoMapi : std::int32_t { kMapiA = 1, kMapiCC = 2, kMapiCCn = 3 };

// The control's slots are counted in 16 bits; raises 6 behind the last of them.
std::int16_t Successivo(std::int16_t indice) {
  return InSediciBit(static_cast<std::size_t>(indice) + 1);
}

// A box that nobody knows keeps the type that the control gives a new slot.
void ImpostaTipo(host::MAPIMessages& messaggio, std::int16_t casella) {
  if (casella == kvCasellaA) messaggio.RecipType(kMapiA);
  if (casella == kvCasellaCC) messaggio.RecipType(kMapiCC);
  if (casella == kvCasellaCCn) messaggio.RecipType(kMapiCCn);
}

}  // namespace

void CLSFW_MAILSERVER::SendWithSimpleMAPI() {
  std::string allegati;
  try {
    ConsegnaConSimpleMAPI(allegati);
  } catch (...) {
    const host::Errore errore = host::ErroreCorrente();
    StatoInvio = kvErroreInvioMail;
    RegistraEsitoSimpleMAPI(host::kNonInviato, allegati);
    SegnalaPerModalita(errore, "SendWithSimpleMAPI", "-",
                       " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSimpleMAPI");
  }
}

void CLSFW_MAILSERVER::ConsegnaConSimpleMAPI(std::string& allegati) {
  if (host::Richiesto(vCollDestinatari).Count() < 1) return;
  if (!objMapiMessages) {
    // Delivering again, or without the send procedure, which would have prepared the message.
    objMapiMessages = ambiente_->CreaMAPIMessages();
    host::Richiesto(objMapiMessages).SessioneID(MapiSessionID);
    objMapiMessages->Compose();
  }
  ComponiDestinatariSimpleMAPI();
  const std::string corpo = GetCorpoMail();
  if (corpo.empty()) throw host::Errore(host::kArgomentoNonValido);
  // The text that counts is made anew; a blank keeps it from beginning with a carriage return.
  vCorpoMail = corpo.front() == '\r' ? " " + GetCorpoMail() : GetCorpoMail();
  objMapiMessages->MsgReceiptRequested(ReadReceipt);
  objMapiMessages->MsgNoteText(vCorpoMail);
  if (!vElencoAllegati.IsEmpty()) allegati = AddAllegatiSimpleMAPI(objMapiMessages);
  objMapiMessages->MsgSubject(vOggetto);
  objMapiMessages->Send();
  StatoInvio = kvOK;
  RegistraEsitoSimpleMAPI(host::kInviato, allegati);
  objMapiMessages.reset();
}

void CLSFW_MAILSERVER::ComponiDestinatariSimpleMAPI() {
  auto& messaggio = *objMapiMessages;
  std::string elencoA;
  std::int16_t indice = 0;
  for (const auto& destinatario : *vCollDestinatari) {
    messaggio.RecipIndex(indice);
    messaggio.RecipAddress("SMTP:" + destinatario->Indirizzo());
    messaggio.RecipDisplayName(destinatario->Nome());
    ImpostaTipo(messaggio, destinatario->Casella());
    if (destinatario->Casella() == kvCasellaA) {
      AccodaVoceSeparata(elencoA, destinatario->Nome(), destinatario->Indirizzo());
      AccodaConVirgola(vNome, destinatario->Nome());
    }
    indice = Successivo(indice);
  }
  TogliUltimaVirgola(vNome);
  vIndDestinatario = elencoA;
}

void CLSFW_MAILSERVER::RegistraEsitoSimpleMAPI(host::EsitoInvio esito, const std::string& allegati) {
  const auto registro = ObjRegistroInvio;
  if (!registro) return;
  registro->EsitoInvio(esito);
  registro->TipoCanale(IsPec() ? host::kCanalePec : host::kCanaleMail);
  registro->MittenteInvio("Simple Mapi:");
  registro->CanaleInvio(static_cast<float>(SrvMailInstallato));
  // A delivery that failed for want of a collection has nobody to record.
  if (vCollDestinatari) RegistraDestinatari(*registro, {"<", allegati, vOggetto}, std::nullopt);
}

// Attachment n stands at character n of the body. The message goes out without the file that was refused and
// without those behind it; nobody is told.
std::string CLSFW_MAILSERVER::AddAllegatiSimpleMAPI(const std::shared_ptr<host::MAPIMessages>& messaggio) {
  std::string elenco;
  IgnoraErrori([&] {
    std::int16_t indice = 0;
    for (const auto& allegato : std::as_const(vElencoAllegati).ToArray()) {
      auto& controllo = host::Richiesto(messaggio);
      const std::string percorso = allegato.ToText();
      controllo.AttachmentIndex(indice);
      controllo.AttachmentPosition(indice);
      controllo.AttachmentPathName(percorso);
      controllo.AttachmentName(EstraiNomeFile(percorso));
      indice = Successivo(indice);
      AccodaPercorso(elenco, percorso);
    }
  });
  return elenco;
}

}  // namespace orve
