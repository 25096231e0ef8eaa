#include "channels/account_channel.h"

#include <utility>

#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "content/body_templates.h"
#include "text/text.h"

namespace orve {

namespace {

TestiVoce TestiQuotati(const Destinatario& destinatario) {
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

AccountSubmission ComponiDaAccount(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                                   Contesto& contesto, const Oggetti& oggetti,
                                   const std::function<std::string()>& allega) {
  ApplicaMittenteScelto(account);
  AccountSubmission composta;
  // The setting speaks of a blind copy; here the sender's copy is a visible one, on purpose.
  if (impostazioni.FlagBcc) composta.elenchi.cc = account.vSenderAddress;
  composta.mittente = ComponiMittente(account.vSenderName, account.vSenderAddress);
  std::string corpo = messaggio.vCorpoMail;
  composta.allegati = allega();
  RipartisciDestinatari(host::Richiesto(messaggio.vCollDestinatari), TestiQuotati, composta.elenchi,
                        messaggio.vNome);
  messaggio.vIndDestinatario = composta.elenchi.a;
  // Filled once for the whole message, from the body as it was before the attachments were taken.
  messaggio.vCorpoMail = std::move(corpo);
  messaggio.vCorpoMail = GetCorpoMail(messaggio, impostazioni, contesto, oggetti);
  return composta;
}

void RegistraEsitoDaAccount(const Messaggio& messaggio, const Impostazioni& impostazioni,
                            const Contesto& contesto, const Oggetti& oggetti,
                            const std::function<bool()>& inviato, const std::function<std::string()>& motivo,
                            const std::string& mittente, const RigheInvio& righe) {
  const auto registro = oggetti.ObjRegistroInvio;
  if (!registro) return;
  registro->TipoCanale(TipoCanaleDi(messaggio));
  const host::EsitoInvio esito = inviato() ? host::kInviato : host::kNonInviato;
  registro->EsitoInvio(esito);
  std::string errore;
  if (esito != host::kInviato) errore = motivo();
  registro->MittenteInvio(mittente);
  registro->CanaleInvio(static_cast<float>(impostazioni.SrvMailInstallato));
  RegistraDestinatari(messaggio, contesto, oggetti, *registro, righe, esito, errore);
}

void ConsegnaDaAccount(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                       Contesto& contesto, Esito& esito, const Oggetti& oggetti, kvEnum_ServizioMail canale,
                       const std::function<std::string()>& allega,
                       const std::function<RispostaDelCanale(const AccountSubmission&)>& consegna) {
  const AccountSubmission composta =
      ComponiDaAccount(messaggio, impostazioni, account, contesto, oggetti, allega);
  if (HaTratto(canale, &ChannelTraits::serverDellAccount) && !account.Caricato()) return;
  const RispostaDelCanale risposta = consegna(composta);
  esito.StatoInvio = risposta.accettato ? kvOK : kvErroreInvioMail;
  RegistraEsitoDaAccount(messaggio, impostazioni, contesto, oggetti, [&] { return risposta.accettato; },
                         risposta.motivo, std::string(FirmaDi(canale)) + account.vSenderAddress,
                         {kApertura, composta.allegati, messaggio.vOggetto});
}

}  // namespace orve
