// The one place where a message is handed to the SMTP component. The order in which its members are set is
// part of what the component is promised.
#include <string>
#include <string_view>
#include <vector>

#include "channels/recipient_lists.h"
#include "service/CLSFW_MAILSERVER.h"
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

// The sender text is a name between double quotes with the address, in its angle brackets, behind it. A
// double quote inside the name shifts the parts; nothing guards against it.
void ImpostaMittente(host::ComponenteSmtp& componente, const std::string& mittente) {
  const auto parti = text::Split(mittente, '"');
  componente.From(Elemento(parti, 1));
  componente.FromAddr(Elemento(parti, 2));
}

void AggiungiDestinatari(host::ComponenteSmtp& componente, const std::string& elencoA,
                         const std::string& elencoCC, const std::string& elencoCCn) {
  componente.AddRecipientEx(elencoA, kSmtpA);
  if (!elencoCC.empty()) componente.AddRecipientEx(elencoCC, kSmtpCC);
  if (!elencoCCn.empty()) componente.AddRecipientEx(elencoCCn, kSmtpCCn);
}

}  // namespace

host::Variant CLSFW_MAILSERVER::InviaMailConSSL(
    const std::shared_ptr<host::ComponenteSmtp>& componente, const std::string& server, std::int16_t porta,
    bool autenticazione, std::int16_t crypt, const std::string& /*utente*/, const std::string& /*password*/,
    const std::string& mittente, const std::string& elencoA, const std::string& elencoCC,
    const std::string& oggetto, const std::string& corpo, bool ricevuta, const std::string& elencoCCn) {
  try {
    auto& smtp = host::Richiesto(componente);
    smtp.ClearRecipient();
    if (!server.empty()) ImpostaServerSmtp(smtp, server, porta, autenticazione, crypt);
    ImpostaMittente(smtp, mittente);
    if (vNotifyDelivery) smtp.DeliveryNotification(kNotificaDiConsegna);
    AggiungiDestinatari(smtp, elencoA, elencoCC, elencoCCn);
    smtp.Subject(oggetto);
    ImpostaCorpoSmtp(smtp, corpo);
    if (ricevuta) smtp.AddHeader("Disposition-Notification-To", smtp.FromAddr());
    smtp.SendMail();
    return smtp.GetLastError();
  } catch (...) {
    MostraMessaggio(host::ErroreCorrente().Descrizione(), host::kAvviso, "ORVE_MAIL: InviaMailConSSL",
                    nullptr);
    return {};
  }
}

// The credentials are those of the account that the service holds.
void CLSFW_MAILSERVER::ImpostaServerSmtp(host::ComponenteSmtp& componente, const std::string& server,
                                         std::int16_t porta, bool autenticazione, std::int16_t crypt) {
  componente.ServerAddr(server);
  if (autenticazione) {
    componente.UserName(SmtpUtente);
    componente.Password(SmtpPassword);
  }
  componente.ServerPort(porta);
  componente.ConnectType(crypt >= 1 ? 1 : 0);
}

void CLSFW_MAILSERVER::ImpostaCorpoSmtp(host::ComponenteSmtp& componente, const std::string& corpo) {
  const bool html = EsisteParamHTMLFW95();
  if (!html || !ActiveInterface) {
    componente.BodyText(corpo);
    return;
  }
  const std::string documento = CorpoHTMLConFirma(corpo);
  componente.BodyFormat(kCorpoSmtpHTML);
  componente.BodyText(documento);
}

// The message goes out without the file that could not be attached and without those behind it.
std::string CLSFW_MAILSERVER::AddAdditionalAttachmentSMTP(
    const std::shared_ptr<host::ComponenteSmtp>& componente) {
  std::string elenco;
  try {
    if (vElencoAllegati.IsEmpty()) return elenco;
    for (const auto& allegato : vElencoAllegati.ToArray()) {
      const std::string percorso = allegato.ToText();
      host::Richiesto(componente).AddAttachment(percorso);
      AccodaPercorso(elenco, percorso);
    }
  } catch (...) {
    MostraMessaggio(host::ErroreCorrente().Descrizione(), host::kAvviso,
                    "ORVE_MAIL:CLSFW_MAILSERVER: AddAdditionalAttachmentSMTP", nullptr);
  }
  return elenco;
}

}  // namespace orve
