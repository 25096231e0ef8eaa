#include "channels/smtp_channel.h"

#include <array>
#include <string_view>

#include "addressing/address_list.h"
#include "channels/account_channel.h"
#include "channels/channel_traits.h"
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
  const AccountSubmission composta =
      ComponiDaAccount(messaggio, impostazioni, account, contesto, oggetti,
                       [&] { return AddAdditionalAttachmentSMTP(messaggio, oggetti, componente); });
  if (!account.Caricato()) return;
  const auto& [mittente, elenchi, allegati] = composta;
  const host::Variant risultato =
      InviaMailConSSL(account, contesto, oggetti, componente,
                      {mittente, elenchi.a, elenchi.cc, elenchi.ccn, messaggio.vOggetto, messaggio.vCorpoMail,
                       account.SmtpPorta, account.SmtpAuth != 0, account.SmtpCrypt, account.ReadReceipt});
  esito.StatoInvio = Riuscito(risultato) ? kvOK : kvErroreInvioMail;
  RegistraEsitoSmtp(messaggio, impostazioni, contesto, oggetti, risultato,
                    std::string(FirmaDi(kvSMTPMail)) + account.vSenderAddress,
                    {kApertura, allegati, messaggio.vOggetto});
}

}  // namespace

void SendWithSmtp(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                  Contesto& contesto, Esito& esito, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "SendWithSmtp", "-",
                            " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp"),
                [&] { ConsegnaConSmtp(messaggio, impostazioni, account, contesto, esito, oggetti); });
}

void RegistraEsitoSmtp(const Messaggio& messaggio, const Impostazioni& impostazioni, const Contesto& contesto,
                       const Oggetti& oggetti, const host::Variant& risultato, const std::string& mittente,
                       const RigheInvio& righe) {
  RegistraEsitoDaAccount(
      messaggio, impostazioni, contesto, oggetti, [&] { return Riuscito(risultato); },
      [&] { return GetSMTPErrorDescription(oggetti, risultato.ToInt16()); }, mittente, righe);
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
