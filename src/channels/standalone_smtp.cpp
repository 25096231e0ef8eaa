// Mailing something without the send procedure, the dialogs or the choice of a channel: always through the
// SMTP component, always with the default account of the user.
//
// It is close to the SMTP channel but not the same: entries are not quoted and end in ";", a box that nobody
// knows receives nothing, and the records show the fields of the service, not the message that left.
//
// Callers are told of errors by message; one that cannot be shown is no error of theirs either.
#include <string>

#include "channels/recipient_lists.h"
#include "channels/register_lines.h"
#include "channels/smtp_channel.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"

namespace orve {

namespace {

// The title names this operation for recipients and attachments too.
constexpr const char* kTitolo = "ORVE_MAIL: InviaMailSMTP";

std::string* ElencoDi(ElenchiDestinatari& elenchi, std::int16_t casella) {
  switch (casella) {
    case kvCasellaA:
      return &elenchi.a;
    case kvCasellaCC:
      return &elenchi.cc;
    case kvCasellaCCn:
      return &elenchi.ccn;
    default:
      return nullptr;
  }
}

}  // namespace

bool CLSFW_MAILSERVER::AddDestinatario(const std::string& indMail, const std::string& descrDest) {
  try {
    if (!vCollDestinatari) vCollDestinatari = std::make_shared<CollDestinatari>(ambiente_);
    vCollDestinatari->Add(indMail, descrDest);
  } catch (...) {
    IgnoraErrori(
        [this] { MostraMessaggio(host::ErroreCorrente().Descrizione(), host::kAvviso, kTitolo, nullptr); });
  }
  return false;  // also on success: callers have never been told anything else
}

// The texts by value: a caller may hand over the service's own fields, which the event changes on the way.
// They have other names than in the interface, where a field has them.
// NOLINTNEXTLINE(performance-unnecessary-value-param,readability-inconsistent-declaration-parameter-name)
bool CLSFW_MAILSERVER::InviaMailSMTP(std::string oggetto, std::string corpo, const bool* /*prioritaAlta*/,
                                     const bool* /*mailNotifica*/) {
  try {
    ConsegnaDaSola(oggetto, corpo);
    return true;
  } catch (...) {
    IgnoraErrori([this] {
      const host::Errore errore = host::ErroreCorrente();
      if (silentMode) {
        errDescription = errore.Descrizione() + " in ORVE_MAIL: InviaMailSMTP";
        errNumber = std::to_string(errore.Numero());
      } else {
        MostraMessaggio(errore.Descrizione(), host::kAvviso, kTitolo, nullptr);
      }
    });
    return false;
  }
}

void CLSFW_MAILSERVER::ConsegnaDaSola(const std::string& oggetto, const std::string& corpo) {
  destinatariA_.clear();
  destinatariCC_.clear();
  destinatariCCn_.clear();
  // What the handler changes stands in the fields; subject and body of this call stay as they came.
  GestioneEventoBeforeSendMail();
  vDitta = infoRagSocCliFor_;
  SmtpServer.clear();  // so that the account is loaded anew
  CaricaAccountPredefinito();
  ElenchiDestinatari elenchi;
  ComponiElenchiDaSola(elenchi);
  if (FlagBcc) elenchi.cc.append(vSenderAddress);
  const std::string mittente = ComponiMittente(vSenderName, vSenderAddress);
  const auto componente = ambiente_->CreaComponenteSmtp();
  static_cast<void>(AddAdditionalAttachmentSMTP(componente));
  const std::string testo = corpo.empty() ? GetCorpoMail() : CompilaTestoMail(corpo);
  if (SmtpServer.empty()) return;
  const host::Variant risultato =
      InviaMailConSSL(componente, SmtpServer, SmtpPorta, SmtpAuth != 0, SmtpCrypt, SmtpUtente, SmtpPassword,
                      mittente, elenchi.a, elenchi.cc, oggetto, testo, ReadReceipt, elenchi.ccn);
  RegistraEsitoSmtp(risultato, vSenderAddress, {" <", vMailAttachment, oggetto});
}

void CLSFW_MAILSERVER::ComponiElenchiDaSola(ElenchiDestinatari& elenchi) {
  vNome.clear();
  vIndDestinatario.clear();
  for (const auto& destinatario : host::Richiesto(vCollDestinatari)) {
    std::string* const elenco = ElencoDi(elenchi, destinatario->Casella());
    if (elenco == nullptr) continue;
    AccodaConVirgola(vNome, destinatario->Nome());
    AccodaVoce(*elenco, destinatario->Nome(), destinatario->Indirizzo());
    elenco->append(";");
    AccodaConVirgola(vIndDestinatario, destinatario->Indirizzo());
  }
  TogliUltimaVirgola(vNome);
  TogliUltimaVirgola(vIndDestinatario);
}

}  // namespace orve
