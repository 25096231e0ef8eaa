// Delivering the current message through the Simple MAPI controls. The body is always plain text, and the
// sender is whoever the session belongs to.
//
// A failure is recorded like a success, recipient by recipient; only the outcome of the register lines tells
// them apart. After a failure the control stays, and the next delivery works on the message as it was left.
#include "channels/simple_mapi_channel.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "channels/elenchi_destinatari.h"
#include "channels/righe_invio.h"
#include "content/body_templates.h"
#include "content/send_log.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/report.h"
#include "service/sedici_bit.h"

namespace orve {

namespace {

enum TipoMapi : std::int32_t { kMapiA = 1, kMapiCC = 2, kMapiCCn = 3 };

// The control's slots are counted in 16 bits; raises 6 after the last of them.
std::int16_t Successivo(std::int16_t indice) {
  return InSediciBit(static_cast<std::size_t>(indice) + 1);
}

std::shared_ptr<host::MAPIMessages> CreaControllo(host::Ambiente& ambiente) {
  return CreaPerIlCanale(ambiente, &host::Ambiente::CreaMAPIMessages, "MSMAPI.MAPIMessages");
}

// A recipient with an unknown box keeps the type that the control gives a new slot.
void ImpostaTipo(host::MAPIMessages& messaggio, std::int16_t casella) {
  if (casella == kvCasellaA) messaggio.RecipType(kMapiA);
  if (casella == kvCasellaCC) messaggio.RecipType(kMapiCC);
  if (casella == kvCasellaCCn) messaggio.RecipType(kMapiCCn);
}

void ComponiDestinatariSimpleMAPI(Messaggio& messaggio, host::MAPIMessages& controllo) {
  std::string elencoA;
  std::int16_t indice = 0;
  for (const auto& destinatario : *messaggio.vCollDestinatari) {
    controllo.RecipIndex(indice);
    controllo.RecipAddress("SMTP:" + destinatario->Indirizzo());
    controllo.RecipDisplayName(destinatario->Nome());
    ImpostaTipo(controllo, destinatario->Casella());
    if (destinatario->Casella() == kvCasellaA) AccodaDestinatarioA(*destinatario, elencoA, messaggio.vNome);
    indice = Successivo(indice);
  }
  TogliUltimaVirgola(messaggio.vNome);
  messaggio.vIndDestinatario = elencoA;
}

void RegistraEsitoSimpleMAPI(const Messaggio& messaggio, const Impostazioni& impostazioni,
                             const Contesto& contesto, const Oggetti& oggetti, host::EsitoInvio esito,
                             const std::string& allegati) {
  const auto registro = oggetti.ObjRegistroInvio;
  if (!registro) return;
  registro->EsitoInvio(esito);
  registro->TipoCanale(TipoCanaleDi(messaggio));
  registro->MittenteInvio(std::string(FirmaDi(kvSimpleMAPI)));
  registro->CanaleInvio(static_cast<float>(impostazioni.SrvMailInstallato));
  // A delivery that failed because there is no collection has nobody to record.
  if (!messaggio.vCollDestinatari) return;
  RegistraDestinatari(messaggio, contesto, oggetti, *registro, {kApertura, allegati, messaggio.vOggetto},
                      esito, std::nullopt);
}

// Attachment n is placed at character n of the body. The paths attached, joined by "|": the message goes out
// without the file that was refused and without those after it; nobody is told.
std::string AddAllegatiSimpleMAPI(const Messaggio& messaggio, const Oggetti& oggetti) {
  std::string elenco;
  IgnoraErrori([&] {
    std::int16_t indice = 0;
    for (const auto& allegato : messaggio.vElencoAllegati.ToArray()) {
      auto& controllo = host::Richiesto(oggetti.objMapiMessages);
      const std::string percorso = allegato.ToText();
      Allega(*oggetti.ambiente, percorso, [&] {
        controllo.AttachmentIndex(indice);
        controllo.AttachmentPosition(indice);
        controllo.AttachmentPathName(percorso);
        controllo.AttachmentName(EstraiNomeFile(percorso));
      });
      indice = Successivo(indice);
      AccodaPercorso(elenco, percorso);
    }
  });
  return elenco;
}

void ConsegnaIlControllo(host::Ambiente& ambiente, host::MAPIMessages& controllo) {
  const auto fallita = [&](Osservatore& osservatore, const host::Errore& errore) {
    controllo.Fine().incerta ? ConsegnaSenzaRisposta(osservatore, errore)
                             : ConsegnaRifiutata(osservatore, errore);
  };
  RiferisciErrori(ambiente, fallita, [&] { controllo.Send(); });
  Riferisci(ambiente, &Osservatore::ConsegnaFinita, host::EsitoConsegna{.riuscita = true});
}

// `allegati` holds what could be attached, even when an error ends the delivery.
void ConsegnaConSimpleMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, const Account& account,
                           Contesto& contesto, Esito& esito, Oggetti& oggetti, std::string& allegati) {
  if (host::Richiesto(messaggio.vCollDestinatari).Count() < 1) return;
  if (!oggetti.objMapiMessages) {
    // Delivering again, or without the send procedure, which would have prepared the message. The member's
    // name is not the one used there.
    oggetti.objMapiMessages = CreaControllo(*oggetti.ambiente);
    host::Richiesto(oggetti.objMapiMessages).SessioneID(oggetti.MapiSessionID);
    oggetti.objMapiMessages->Compose();
  }
  // Prepared for the window already; the delivery begins here.
  Riferisci(*oggetti.ambiente, &Osservatore::ConsegnaIniziata, kvSimpleMAPI);
  ComponiDestinatariSimpleMAPI(messaggio, *oggetti.objMapiMessages);
  const auto corpoMail = [&] { return GetCorpoMail(messaggio, impostazioni, contesto, oggetti); };
  const std::string corpo = corpoMail();
  if (corpo.empty()) throw host::Errore(host::kArgomentoNonValido);
  // The body is built afresh; a blank keeps it from beginning with a carriage return.
  messaggio.vCorpoMail = corpo.front() == '\r' ? " " + corpoMail() : corpoMail();
  oggetti.objMapiMessages->MsgReceiptRequested(account.ReadReceipt);
  oggetti.objMapiMessages->MsgNoteText(messaggio.vCorpoMail);
  if (!messaggio.vElencoAllegati.IsEmpty()) {
    allegati = AddAllegatiSimpleMAPI(messaggio, oggetti);
  }
  oggetti.objMapiMessages->MsgSubject(messaggio.vOggetto);
  ConsegnaIlControllo(*oggetti.ambiente, *oggetti.objMapiMessages);
  esito.StatoInvio = kvOK;
  RegistraEsitoSimpleMAPI(messaggio, impostazioni, contesto, oggetti, host::kInviato, allegati);
  oggetti.objMapiMessages.reset();
}

}  // namespace

void ApriSessioneMapi(Oggetti& oggetti) {
  oggetti.objMapiSession =
      CreaPerIlCanale(*oggetti.ambiente, &host::Ambiente::CreaMAPISession, "MSMAPI.MAPISession");
  host::Richiesto(oggetti.objMapiSession).DownLoadMail(false);
  oggetti.objMapiSession->NewSession(true);
  oggetti.objMapiSession->SignOn();
  oggetti.MapiSessionID = oggetti.objMapiSession->SessionID();
}

void ChiudiSessioneMapi(Oggetti& oggetti) {
  IgnoraErrori([&] { host::Richiesto(oggetti.objMapiSession).SignOff(); });
  oggetti.objMapiSession.reset();
}

void PreparaMessaggioSimpleMAPI(Oggetti& oggetti) {
  oggetti.objMapiMessages = CreaControllo(*oggetti.ambiente);
  host::Richiesto(oggetti.objMapiMessages).SessionID(oggetti.MapiSessionID);
  oggetti.objMapiMessages->Compose();
}

void SendWithSimpleMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, const Account& account,
                        Contesto& contesto, Esito& esito, Oggetti& oggetti) {
  std::string allegati;
  const auto segnala = [&](const host::Errore& errore) {
    esito.StatoInvio = kvErroreInvioMail;
    RegistraEsitoSimpleMAPI(messaggio, impostazioni, contesto, oggetti, host::kNonInviato, allegati);
    SegnalaPerModalita(messaggio, impostazioni, oggetti, errore, "SendWithSimpleMAPI", "-",
                       " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSimpleMAPI");
  };
  SegnalaErrori(segnala, [&] {
    ConsegnaConSimpleMAPI(messaggio, impostazioni, account, contesto, esito, oggetti, allegati);
  });
}

}  // namespace orve
