#include "channels/smtp_channel.h"

#include <array>
#include <string_view>
#include <utility>

#include "channels/recipient_lists.h"
#include "channels/register_lines.h"
#include "service/CLSFW_MAILSERVER.h"
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

// -1 is the component's word for "no error". No value, after an error of the submission itself, is none.
bool Riuscito(const host::Variant& risultato) {
  return !risultato.IsNull() && risultato.ToDouble() == -1;
}

TestiVoce TestiSmtp(const Destinatario& destinatario) {
  return {QuotaNome(destinatario.Nome()), destinatario.Indirizzo()};
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

void CLSFW_MAILSERVER::SendWithSmtp() {
  try {
    ConsegnaConSmtp();
  } catch (...) {
    SegnalaPerModalita(host::ErroreCorrente(), "SendWithSmtp", "-",
                       " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp");
  }
}

void CLSFW_MAILSERVER::ConsegnaConSmtp() {
  const auto componente = ambiente_->CreaComponenteSmtp();
  ApplicaMittenteScelto();
  ElenchiDestinatari elenchi;
  // The setting speaks of a blind copy; in this channel the sender's copy is a visible one, on purpose.
  if (FlagBcc) elenchi.cc = vSenderAddress;
  const std::string mittente = ComponiMittente(vSenderName, vSenderAddress);
  std::string corpo = vCorpoMail;
  const std::string allegati = AddAdditionalAttachmentSMTP(componente);
  RipartisciDestinatari(host::Richiesto(vCollDestinatari), TestiSmtp, elenchi, vNome);
  vIndDestinatario = elenchi.a;
  // Filled once for the whole message, from the body as it was before the attachments were taken.
  vCorpoMail = std::move(corpo);
  vCorpoMail = GetCorpoMail();
  if (SmtpServer.empty()) return;
  const host::Variant risultato =
      InviaMailConSSL(componente, SmtpServer, SmtpPorta, SmtpAuth != 0, SmtpCrypt, SmtpUtente, SmtpPassword,
                      mittente, elenchi.a, elenchi.cc, vOggetto, vCorpoMail, ReadReceipt, elenchi.ccn);
  StatoInvio = Riuscito(risultato) ? kvOK : kvErroreInvioMail;
  RegistraEsitoSmtp(risultato, "SMTP: " + vSenderAddress, {"<", allegati, vOggetto});
}

void CLSFW_MAILSERVER::ApplicaMittenteScelto() {
  if (!vMittente || !UsaMittenteScelto) return;
  SmtpServer = vMittente->Server();
  SmtpPorta = vMittente->Port();
  SmtpAuth = vMittente->Auth();
  SmtpUtente = vMittente->user();
  SmtpPassword = vMittente->Password();
  vSenderAddress = vMittente->Indirizzo();
  vSenderName = vMittente->Descrizione();
  SmtpCrypt = vMittente->CryptType();
  ReadReceipt = vMittente->ReadRcpt() == 1;
}

void CLSFW_MAILSERVER::RegistraEsitoSmtp(const host::Variant& risultato, const std::string& mittente,
                                         const RigheInvio& righe) {
  const auto registro = ObjRegistroInvio;
  if (!registro) return;
  registro->TipoCanale(IsPec() ? host::kCanalePec : host::kCanaleMail);
  std::string errore;
  if (Riuscito(risultato)) {
    registro->EsitoInvio(host::kInviato);
  } else {
    registro->EsitoInvio(host::kNonInviato);
    errore = GetSMTPErrorDescription(risultato.ToInt16());
  }
  registro->MittenteInvio(mittente);
  registro->CanaleInvio(static_cast<float>(SrvMailInstallato));
  RegistraDestinatari(*registro, righe, errore);
}

std::string CLSFW_MAILSERVER::GetSMTPErrorDescription(std::int16_t codice) {
  try {
    if (codice < 0 || static_cast<std::size_t>(codice) >= kErroriSmtp.size()) return {};
    return std::string(kErroriSmtp[static_cast<std::size_t>(codice)]);
  } catch (...) {
    MostraErrore(host::ErroreCorrente(), "-",
                 " in ORVE_MAILSERVER:CLSFW_MAILSERVER - GetSMTPErrorDescription");
    return {};
  }
}

}  // namespace orve
