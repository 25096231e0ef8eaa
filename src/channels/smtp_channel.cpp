#include "channels/smtp_channel.h"

#include <array>
#include <string_view>

#include "channels/account_channel.h"
#include "channels/smtp_submission.h"
#include "service/failures.h"
#include "service/guards.h"

namespace orve {

namespace {

constexpr std::array<std::string_view, 8> kErroriSmtp = {
    "Errore di connessione con il server",
    "Errore di comunicazione HELO/EHLO",
    "Errore di autenticazione utente",
    "Errore indirizzo mittente non valido",
    "Server si rifiuta di inoltrare mail ad uno o più indirizzi",
    "Errore nell'invio dati del destinatario",
    "Errore di ripristino SMTP",
    "Errore di ricerca DNS"};

void ConsegnaConSmtp(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                     Contesto& contesto, Esito& esito, const Oggetti& oggetti) {
  const auto componente = CreaComponente(oggetti, impostazioni.SrvMailInstallato);
  const auto allega = [&] { return AddAdditionalAttachmentSMTP(messaggio, oggetti, componente); };
  const auto consegna = [&](const AccountSubmission& composta) -> RispostaDelCanale {
    const auto& [mittente, elenchi, allegati] = composta;
    const host::Variant risultato = InviaMailConSSL(
        account, contesto, oggetti, componente,
        {mittente, elenchi.a, elenchi.cc, elenchi.ccn, messaggio.vOggetto, messaggio.vCorpoMail,
         account.SmtpPorta, account.SmtpAuth != 0, account.SmtpCrypt, account.ReadReceipt});
    return {Riuscito(risultato), [&oggetti, risultato] { return MotivoSmtp(oggetti, risultato); }};
  };
  ConsegnaDaAccount(messaggio, impostazioni, account, contesto, esito, oggetti, kvSMTPMail, allega, consegna);
}

}  // namespace

void SendWithSmtp(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                  Contesto& contesto, Esito& esito, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "SendWithSmtp", "-",
                            " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp"),
                [&] { ConsegnaConSmtp(messaggio, impostazioni, account, contesto, esito, oggetti); });
}

std::string MotivoSmtp(const Oggetti& oggetti, const host::Variant& risultato) {
  return GetSMTPErrorDescription(oggetti, risultato.ToInt16());
}

std::string GetSMTPErrorDescription(const Oggetti& oggetti, std::int16_t codice) {
  std::string descrizione;
  SegnalaErrori(PerMessaggio(oggetti, "-", " in ORVE_MAILSERVER:CLSFW_MAILSERVER - GetSMTPErrorDescription"),
                [&] {
                  if (codice < 0 || static_cast<std::size_t>(codice) >= kErroriSmtp.size()) return;
                  descrizione = kErroriSmtp[static_cast<std::size_t>(codice)];
                });
  return descrizione;
}

}  // namespace orve
