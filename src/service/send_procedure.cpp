// The entry of every normal send, and its last step. The message is refused, sent at once, or handed to the
// person in the compose dialog; which of them depends on the route by which the recipients come and on the
// mode.
//
// Nothing of a send reaches the caller as an error: what fails while a failure is told ends at the two public
// entries. Inside, it goes on to the procedure around.
#include <algorithm>
#include <string>

#include "content/management_events.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr const char* kIndirizzoNonValido = "L'elenco dei destinatari contiene un indirizzo non valido.";

}  // namespace

void CLSFW_MAILSERVER::AvviaProceduraInvio(const std::optional<host::Variant>& codice,
                                           std::optional<kvTipologiaDestinatarioFAX> Tipo) try {
  if (SrvMailInstallato == kvNoMail) {
    StatoInvio = kvInvioNonImpostato;
    DescrizioneInvio = "Invio mail disabilitato!";
    RegistraRifiuto(std::nullopt, std::nullopt, std::nullopt, std::nullopt, "Invio mail disabilitato");
    return;
  }
  if (SrvMailInstallato == kvSimpleMAPI) PreparaMessaggioSimpleMAPI();
  if (vCollDestinatari && (vCollDestinatari->Count() > 0 || FlagInvioDiretto)) {
    InviaACollezione();
  } else {
    InviaARicerca(codice, Tipo);
  }
} catch (...) {
  IgnoraErrori([this] {
    SegnalaPerModalita(host::ErroreCorrente(), "AvviaProceduraInvio", " ",
                       " ORVE_MAILSERVER: CLSFW_MAILSERVER: AvviaProceduraInvio");
  });
}

void CLSFW_MAILSERVER::PreparaMessaggioSimpleMAPI() {
  objMapiMessages = ambiente_->CreaMAPIMessages();
  host::Richiesto(objMapiMessages).SessionID(MapiSessionID);
  objMapiMessages->Compose();
}

// The caller has named the recipients: the message leaves at once, in every mode and without any check.
void CLSFW_MAILSERVER::InviaACollezione() {
  vDitta = infoRagSocCliFor_;
  UsaMittenteScelto = true;
  if (CanaleSmtp(SrvMailInstallato)) {
    if (FlagInvioDiretto) {
      CaricaAccountDaId();
    } else {
      CaricaAccountPredefinito();
    }
  }
  const bool uniti = !FlagInvioDiretto && UnisciNomiEIndirizzi();
  GestioneEventoBeforeSendMail();
  if (uniti) {
    vNome.clear();
    vIndDestinatario.clear();
  }
  ConsegnaAlCanale();
}

// The addresses come from the master data, and the mode decides between refusal, sending and the dialog.
void CLSFW_MAILSERVER::InviaARicerca(const std::optional<host::Variant>& codice,
                                     std::optional<kvTipologiaDestinatarioFAX> tipo) {
  if (codice) {
    const bool senzaTipo = !tipo || *tipo == kvDestinatarioFaxAnagrafica;
    static_cast<void>(
        GetDatiDestinatario(*codice, senzaTipo ? std::nullopt : std::optional<std::int32_t>(*tipo)));
  }
  GestioneEventoBeforeSendMail();

  if (ModalitaInvio() != kvManuale) {
    if (host::Richiesto(vCollDestinatari).Count() > 0) {
      if (IndirizziRegolari()) {
        ConsegnaAlCanale();
        return;
      }
      if (ModalitaInvio() == kvAutomatico) {
        RegistraRifiuto(vNome, vDitta, "", vMailAttachment, kIndirizzoNonValido);
        return;
      }
      MostraMessaggio(kIndirizzoNonValido, host::kInformazione, "Attenzione", nullptr);
    } else if (ModalitaInvio() == kvAutomatico) {
      RegistraRifiuto(vNome, vDitta, "", vMailAttachment, "Non inviato. Indirizzo mancante.");
      return;
    }
  }
  UsaMittenteScelto = true;
  ApriForm_OpzInvio();
}

// Names and addresses joined for the placeholders of the body, of all recipients but those of the copies: a
// box that nobody knows counts here. What the caller left in the two fields stands in front. As soon as
// anything is joined to either of them both lose their last two characters; else both stay as they are. The
// result says whether anything was joined.
bool CLSFW_MAILSERVER::UnisciNomiEIndirizzi() {
  bool uniti = false;
  const auto unisci = [&uniti](std::string& campo, const std::string& valore) {
    if (valore.empty()) return;
    campo.append(valore).append(", ");
    uniti = true;
  };
  for (const auto& destinatario : *vCollDestinatari) {
    if (destinatario->Casella() == kvCasellaCC || destinatario->Casella() == kvCasellaCCn) continue;
    unisci(vNome, destinatario->Nome());
    unisci(vIndDestinatario, destinatario->Indirizzo());
  }
  if (uniti) {
    vNome = text::WithoutLast(vNome, 2);
    vIndDestinatario = text::WithoutLast(vIndDestinatario, 2);
  }
  return uniti;
}

bool CLSFW_MAILSERVER::IndirizziRegolari() {
  return std::all_of(vCollDestinatari->begin(), vCollDestinatari->end(), [this](const auto& destinatario) {
    return CheckRegularMailAddress(destinatario->Indirizzo());
  });
}

// A refusal leaves a register line and an event, and nothing at all without a register object. An absent text
// counts as an empty one in the event.
void CLSFW_MAILSERVER::RegistraRifiuto(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                                       const host::TestoOAssente& indirizzo,
                                       const host::TestoOAssente& allegato, const std::string& testo) {
  if (!ObjRegistroInvio) return;
  ObjRegistroInvio->EsitoInvio(host::kNonInviato);
  ObjRegistroInvio->CanaleInvio(static_cast<float>(SrvMailInstallato));
  ObjRegistroInvio->RegistraInvio(nome, ditta, indirizzo, allegato, testo, "", "");
  AttivaEventoGestionale(kEventoNonInviato, nome.value_or(""), ditta.value_or(""), indirizzo.value_or(""),
                         allegato.value_or(""), testo, "");
}

void CLSFW_MAILSERVER::InviaMail() {
  IgnoraErrori([this] { ConsegnaAlCanale(); });
}

void CLSFW_MAILSERVER::ConsegnaAlCanale() try {
  switch (SrvMailInstallato) {
    case kvSimpleMAPI:
      SendWithSimpleMAPI();
      break;
    case kvOutlook:
      SendWithOutlook();
      break;
    case kvMAPI:
      SendMailMAPI();
      break;
    case kvSMTPMail:
    case kvSMTPSSLMail:
      SendWithSmtp();
      break;
    default:
      break;
  }
} catch (...) {
  SegnalaPerModalita(host::ErroreCorrente(), "InviaMail", "-",
                     " in ORVE_MAILSERVER:CLSFW_MAILSERVER - InviaMail");
}

}  // namespace orve
