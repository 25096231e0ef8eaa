// The one place where a message is handed to the SMTP component. The order in which its members are set is
// part of the contract with the component.
#include "channels/smtp_submission.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "channels/recipient_lists.h"
#include "content/html_body.h"
#include "service/failures.h"
#include "service/guards.h"
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

void AggiungiDestinatari(host::ComponenteSmtp& componente, const Sottomissione& messaggio) {
  componente.AddRecipientEx(messaggio.elencoA, kSmtpA);
  if (!messaggio.elencoCC.empty()) componente.AddRecipientEx(messaggio.elencoCC, kSmtpCC);
  if (!messaggio.elencoCCn.empty()) componente.AddRecipientEx(messaggio.elencoCCn, kSmtpCCn);
}

void ImpostaServerSmtp(host::ComponenteSmtp& componente, const Account& account,
                       const Sottomissione& messaggio) {
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

}  // namespace

host::Variant InviaMailConSSL(const Account& account, const Contesto& contesto, const Oggetti& oggetti,
                              const std::shared_ptr<host::ComponenteSmtp>& componente,
                              const Sottomissione& messaggio) {
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
    smtp.SendMail();
    risultato = smtp.GetLastError();
  });
  return risultato;
}

std::string AddAdditionalAttachmentSMTP(const Messaggio& messaggio, const Oggetti& oggetti,
                                        const std::shared_ptr<host::ComponenteSmtp>& componente) {
  std::string elenco;
  SegnalaErrori(PerAvviso(oggetti, "ORVE_MAIL:CLSFW_MAILSERVER: AddAdditionalAttachmentSMTP"), [&] {
    if (messaggio.vElencoAllegati.IsEmpty()) return;
    for (const auto& allegato : messaggio.vElencoAllegati.ToArray()) {
      const std::string percorso = allegato.ToText();
      host::Richiesto(componente).AddAttachment(percorso);
      AccodaPercorso(elenco, percorso);
    }
  });
  return elenco;
}

}  // namespace orve
