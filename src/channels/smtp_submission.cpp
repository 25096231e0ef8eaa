// The one place where a message is handed to the SMTP component. The order in which its members are set is
// part of the contract with the component.
#include "channels/smtp_submission.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "channels/account_channel.h"
#include "content/corpo_html.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/report.h"
#include "text/text.h"

namespace orve {

namespace {

enum TipoSmtp : std::int32_t { kSmtpA = 0, kSmtpCC = 1, kSmtpCCn = 2 };

constexpr std::int16_t kNotificaDiConsegna = 14;
constexpr std::int16_t kCorpoSmtpHTML = 1;

std::string Elemento(const std::vector<std::string_view>& parti, std::size_t posizione) {
  if (posizione >= parti.size()) throw host::Errore(host::kIndiceFuoriIntervallo);
  return std::string(parti[posizione]);
}

// The sender text is a name between double quotes followed by the address in angle brackets. A double quote
// inside the name shifts the parts; nothing guards against it.
void ImpostaMittente(host::ComponenteSmtp& componente, const std::string& mittente) {
  const auto parti = text::Split(mittente, '"');
  componente.From(Elemento(parti, 1));
  componente.FromAddr(Elemento(parti, 2));
}

void AggiungiDestinatari(host::ComponenteSmtp& componente, const SmtpSubmission& messaggio) {
  componente.AddRecipientEx(messaggio.elencoA, kSmtpA);
  if (!messaggio.elencoCC.empty()) componente.AddRecipientEx(messaggio.elencoCC, kSmtpCC);
  if (!messaggio.elencoCCn.empty()) componente.AddRecipientEx(messaggio.elencoCCn, kSmtpCCn);
}

void ImpostaServerSmtp(host::ComponenteSmtp& componente, const Account& account,
                       const SmtpSubmission& messaggio) {
  componente.ServerAddr(account.SmtpServer);
  if (messaggio.autenticazione) {
    componente.UserName(account.SmtpUtente);
    componente.Password(account.SmtpPassword);
  }
  componente.ServerPort(messaggio.porta);
  componente.ConnectType(messaggio.crypt >= 1 ? 1 : 0);
}

void ImpostaCorpoSmtp(host::ComponenteSmtp& componente, const Contesto& contesto, const Oggetti& oggetti,
                      const std::string& corpo) {
  const bool html = EsisteParamHTMLFW95(contesto, oggetti);
  if (!html || !oggetti.ActiveInterface) {
    componente.BodyText(corpo);
    return;
  }
  const std::string documento = CorpoHTMLConFirma(contesto, oggetti, corpo);
  componente.BodyFormat(kCorpoSmtpHTML);
  componente.BodyText(documento);
}

// What the component answers is its own affair, and may be no number at all.
host::EsitoConsegna EsitoSmtp(const host::ComponenteSmtp& componente, const host::Variant& risultato) {
  host::EsitoConsegna esito{.fine = {"", true}};
  IgnoraErrori([&] { esito = {Riuscito(risultato), risultato.ToInt32(), componente.Fine()}; });
  return esito;
}

}  // namespace

std::shared_ptr<host::ComponenteSmtp> CreaComponente(const Oggetti& oggetti, kvEnum_ServizioMail canale) {
  return IniziaConsegna(*oggetti.ambiente, canale, &host::Ambiente::CreaComponenteSmtp, "ComponenteSmtp");
}

// -1 is the component's word for "no error". No value, which follows an error of the submission itself, is
// not a success.
bool Riuscito(const host::Variant& risultato) {
  return !risultato.IsNull() && risultato.ToDouble() == -1;
}

host::Variant InviaMailConSSL(const Account& account, const Contesto& contesto, const Oggetti& oggetti,
                              const std::shared_ptr<host::ComponenteSmtp>& componente,
                              const SmtpSubmission& messaggio) {
  host::Variant risultato;
  SegnalaErrori(PerAvviso(oggetti, "ORVE_MAIL: InviaMailConSSL"), [&] {
    auto& smtp = host::Richiesto(componente);
    smtp.ClearRecipient();
    if (account.Caricato()) ImpostaServerSmtp(smtp, account, messaggio);
    ImpostaMittente(smtp, messaggio.mittente);
    if (account.vNotifyDelivery) smtp.DeliveryNotification(kNotificaDiConsegna);
    AggiungiDestinatari(smtp, messaggio);
    smtp.Subject(messaggio.oggetto);
    ImpostaCorpoSmtp(smtp, contesto, oggetti, messaggio.corpo);
    if (messaggio.ricevuta) smtp.AddHeader("Disposition-Notification-To", smtp.FromAddr());
    RiferisciErrori(*oggetti.ambiente, ConsegnaSenzaRisposta, [&] {
      smtp.SendMail();
      risultato = smtp.GetLastError();
    });
    Riferisci(*oggetti.ambiente, [&](Osservatore& o) { o.ConsegnaFinita(EsitoSmtp(smtp, risultato)); });
  });
  return risultato;
}

std::string AddAdditionalAttachmentSMTP(const Messaggio& messaggio, const Oggetti& oggetti,
                                        const std::shared_ptr<host::ComponenteSmtp>& componente) {
  return AllegaConAvviso(messaggio, oggetti, "ORVE_MAIL:CLSFW_MAILSERVER: AddAdditionalAttachmentSMTP",
                         componente, &host::ComponenteSmtp::AddAttachment);
}

}  // namespace orve
