// Close to the SMTP channel but not the same: entries are not quoted and end in ";", a recipient with an
// unknown box receives nothing, and the records show the fields of the service, not the message that was
// sent.
//
// Errors are reported by message; one that cannot be shown does not reach the caller either.
#include "channels/standalone_smtp.h"

#include <cstdint>
#include <memory>

#include "addressing/accounts.h"
#include "addressing/address_list.h"
#include "channels/account_channel.h"
#include "channels/elenchi_destinatari.h"
#include "channels/righe_invio.h"
#include "channels/smtp_channel.h"
#include "channels/smtp_submission.h"
#include "content/body_templates.h"
#include "service/before_send.h"
#include "service/failures.h"
#include "service/guards.h"

namespace orve {

namespace {

// The title names this operation even for recipients and attachments.
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

void ComponiElenchiDaSola(Messaggio& messaggio, ElenchiDestinatari& elenchi) {
  messaggio.vNome.clear();
  messaggio.vIndDestinatario.clear();
  for (const auto& destinatario : host::Richiesto(messaggio.vCollDestinatari)) {
    std::string* const elenco = ElencoDi(elenchi, destinatario->Casella());
    if (elenco == nullptr) continue;
    AccodaConVirgola(messaggio.vNome, destinatario->Nome());
    AccodaVoce(*elenco, destinatario->Nome(), destinatario->Indirizzo(), kAperturaConBianco);
    elenco->append(";");
    AccodaConVirgola(messaggio.vIndDestinatario, destinatario->Indirizzo());
  }
  TogliUltimaVirgola(messaggio.vNome);
  TogliUltimaVirgola(messaggio.vIndDestinatario);
}

void ConsegnaDaSola(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                    Contesto& contesto, Oggetti& oggetti, const std::string& oggetto,
                    const std::string& corpo) {
  messaggio.DestinatariA.clear();
  messaggio.DestinatariCC.clear();
  messaggio.DestinatariCCn.clear();
  // What the handler changes is in the fields; subject and body of this call stay as they came.
  GestioneEventoBeforeSendMail(messaggio, impostazioni, contesto, oggetti);
  messaggio.vDitta = messaggio.INFO_RagSocCliFor;
  account.SmtpServer.clear();  // so that the account is loaded again
  CaricaAccountPredefinito(messaggio, account, contesto, oggetti);
  ElenchiDestinatari elenchi;
  ComponiElenchiDaSola(messaggio, elenchi);
  if (impostazioni.FlagBcc) elenchi.cc.append(account.vSenderAddress);
  const std::string mittente = ComponiMittente(account.vSenderName, account.vSenderAddress);
  const auto componente = CreaComponente(oggetti, kvSMTPSSLMail);
  static_cast<void>(AddAdditionalAttachmentSMTP(messaggio, oggetti, componente));
  const std::string testo = corpo.empty() ? GetCorpoMail(messaggio, impostazioni, contesto, oggetti)
                                          : CompilaTestoMail(messaggio, contesto, oggetti, corpo);
  if (!account.Caricato()) return;
  const host::Variant risultato =
      InviaMailConSSL(account, contesto, oggetti, componente,
                      {mittente, elenchi.a, elenchi.cc, elenchi.ccn, oggetto, testo, account.SmtpPorta,
                       account.SmtpAuth != 0, account.SmtpCrypt, account.ReadReceipt});
  RegistraEsitoDaAccount(
      messaggio, impostazioni, contesto, oggetti, [&] { return Riuscito(risultato); },
      [&] { return MotivoSmtp(oggetti, risultato); }, account.vSenderAddress,
      {kAperturaConBianco, messaggio.vMailAttachment, oggetto});
}

}  // namespace

void AddDestinatario(Messaggio& messaggio, const Oggetti& oggetti, const std::string& indMail,
                     const std::string& descrDest) {
  IgnoraErrori([&] {
    SegnalaErrori(PerAvviso(oggetti, kTitolo), [&] {
      if (!messaggio.vCollDestinatari) {
        messaggio.vCollDestinatari = std::make_shared<CollDestinatari>(oggetti.ambiente);
      }
      messaggio.vCollDestinatari->Add(indMail, descrDest);
    });
  });
}

bool InviaMailSMTP(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                   Contesto& contesto, Esito& esito, Oggetti& oggetti, const std::string& oggetto,
                   const std::string& corpo) {
  bool finito = false;
  const auto segnala = [&](const host::Errore& errore) {
    if (impostazioni.silentMode) {
      esito.errDescription = errore.Descrizione() + " in ORVE_MAIL: InviaMailSMTP";
      esito.errNumber = std::to_string(errore.Numero());
    } else {
      PerAvviso(oggetti, kTitolo)(errore);
    }
  };
  IgnoraErrori([&] {
    SegnalaErrori(segnala, [&] {
      ConsegnaDaSola(messaggio, impostazioni, account, contesto, oggetti, oggetto, corpo);
      finito = true;
    });
  });
  return finito;
}

}  // namespace orve
