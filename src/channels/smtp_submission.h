// The one place where a message is handed to the SMTP component.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/host/componente_smtp.h"
#include "orve-mailserver/host/variant.h"
#include "orve-mailserver/service/enumerazioni.h"
#include "service/account.h"
#include "service/contesto.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// What is handed over. The texts must outlive it.
struct SmtpSubmission {
  const std::string& mittente;  // the name between double quotes, then the address in angle brackets
  const std::string& elencoA;
  const std::string& elencoCC;
  const std::string& elencoCCn;
  const std::string& oggetto;
  const std::string& corpo;
  std::int16_t porta;
  bool autenticazione;
  std::int16_t crypt;  // 1 or more: encrypted
  bool ricevuta;       // a read receipt is asked for
};

/// Hands it to the component, with the account's server, credentials and receipt requests. Returns the
/// component's GetLastError, or empty after an error, which is reported by message.
[[nodiscard]] host::Variant InviaMailConSSL(const Account& account, const Contesto& contesto,
                                            const Oggetti& oggetti,
                                            const std::shared_ptr<host::ComponenteSmtp>& componente,
                                            const SmtpSubmission& messaggio);

/// Creates the component of one message, which the observer is told goes over this channel.
[[nodiscard]] std::shared_ptr<host::ComponenteSmtp> CreaComponente(const Oggetti& oggetti,
                                                                   kvEnum_ServizioMail canale);

/// Whether this GetLastError says that the message was delivered.
[[nodiscard]] bool Riuscito(const host::Variant& risultato);

/// Attaches the files of the message and returns the paths attached, joined by "|". A refused file is
/// reported by message, and the message goes out without it and those after it.
[[nodiscard]] std::string AddAdditionalAttachmentSMTP(
    const Messaggio& messaggio, const Oggetti& oggetti,
    const std::shared_ptr<host::ComponenteSmtp>& componente);

}  // namespace orve
