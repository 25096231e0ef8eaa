#include "channels/smtp_channel.h"

#include <array>
#include <string_view>
#include <utility>

#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "channels/elenchi_destinatari.h"
#include "channels/smtp_submission.h"
#include "content/body_templates.h"
#include "service/failures.h"
#include "service/guards.h"
#include "text/text.h"

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

TestiVoce TestiSmtp(const Destinatario& destinatario) {
  return {QuotaNome(destinatario.Nome()), destinatario.Indirizzo()};
}

void ApplicaMittenteScelto(Account& account) {
  const auto mittente = account.vMittente;
  if (!mittente || !account.UsaMittenteScelto) return;
  account.SmtpServer = mittente->Server();
  account.SmtpPorta = mittente->Port();
  account.SmtpAuth = mittente->Auth();
  account.SmtpUtente = mittente->user();
  account.SmtpPassword = mittente->Password();
  account.vSenderAddress = mittente->Indirizzo();
  account.vSenderName = mittente->Descrizione();
  account.SmtpCrypt = mittente->CryptType();
  account.ReadReceipt = mittente->ReadRcpt() == 1;
}

void ConsegnaConSmtp(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                     Contesto& contesto, Esito& esito, const Oggetti& oggetti) {
  const auto componente = CreaComponente(oggetti);
  ApplicaMittenteScelto(account);
  ElenchiDestinatari elenchi;
  // The setting speaks of a blind copy; in this channel the sender's copy is a visible one, on purpose.
  if (impostazioni.FlagBcc) elenchi.cc = account.vSenderAddress;
  const std::string mittente = ComponiMittente(account.vSenderName, account.vSenderAddress);
  std::string corpo = messaggio.vCorpoMail;
  const std::string allegati = AddAdditionalAttachmentSMTP(messaggio, oggetti, componente);
  RipartisciDestinatari(host::Richiesto(messaggio.vCollDestinatari), TestiSmtp, elenchi, messaggio.vNome);
  messaggio.vIndDestinatario = elenchi.a;
  // Filled once for the whole message, from the body as it was before the attachments were taken.
  messaggio.vCorpoMail = std::move(corpo);
  messaggio.vCorpoMail = GetCorpoMail(messaggio, impostazioni, contesto, oggetti);
  if (!account.Caricato()) return;
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

std::string QuotaNome(const std::string& nome) {
  return text::Find(nome, ",", 2) > 0 ? "\"" + nome + "\"" : nome;
}

std::string ComponiMittente(const std::string& nome, const std::string& indirizzo) {
  std::string mittente = "\"";
  if (!text::TrimRight(nome).empty()) mittente.append(nome);
  return mittente.append("\"<").append(indirizzo).append(">");
}

void SendWithSmtp(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                  Contesto& contesto, Esito& esito, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "SendWithSmtp", "-",
                            " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp"),
                [&] { ConsegnaConSmtp(messaggio, impostazioni, account, contesto, esito, oggetti); });
}

void RegistraEsitoSmtp(const Messaggio& messaggio, const Impostazioni& impostazioni, const Contesto& contesto,
                       const Oggetti& oggetti, const host::Variant& risultato, const std::string& mittente,
                       const RigheInvio& righe) {
  const auto registro = oggetti.ObjRegistroInvio;
  if (!registro) return;
  registro->TipoCanale(TipoCanaleDi(messaggio));
  const host::EsitoInvio inviato = Riuscito(risultato) ? host::kInviato : host::kNonInviato;
  registro->EsitoInvio(inviato);
  std::string errore;
  if (inviato != host::kInviato) errore = GetSMTPErrorDescription(oggetti, risultato.ToInt16());
  registro->MittenteInvio(mittente);
  registro->CanaleInvio(static_cast<float>(impostazioni.SrvMailInstallato));
  RegistraDestinatari(messaggio, contesto, oggetti, *registro, righe, inviato, errore);
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
