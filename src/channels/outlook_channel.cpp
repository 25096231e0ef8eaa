// Delivering the current message by driving Outlook. Account and sender are Outlook's own; the service only
// reads their address for its records, and how it does so depends on the version.
//
// The only sign of success is that Send raises no error. A failed send leaves Stato, the register lines and
// the events as they are, unlike the two MAPI channels; only the log line or the message tells of it.
#include "channels/outlook_channel.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "channels/elenchi_destinatari.h"
#include "channels/righe_invio.h"
#include "content/body_templates.h"
#include "content/corpo_html.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/report.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr std::int32_t kElementoDiPosta = 0;
constexpr std::int16_t kCorpoOutlookHTML = 1;

// The number before the first point; a text without a point is not a version.
std::int16_t VersioneMaggiore(const std::string& versione) {
  const std::size_t punto = text::Find(versione, ".");
  if (punto == 0) throw host::Errore(host::kArgomentoNonValido);
  return host::Variant(text::Left(versione, punto - 1)).ToInt16();
}

// Empty for a version whose address this channel cannot read.
std::string MittenteDiOutlook(host::OutlookApplication& outlook) {
  const std::string prefisso(FirmaDi(kvOutlook));
  const std::int16_t versione = VersioneMaggiore(outlook.Version());
  if (versione != 11 && versione != 12 && versione != 14) return {};
  const auto explorers = outlook.Explorers();
  const auto sessione = host::Richiesto(explorers).Session();
  if (versione == 11) {
    const auto utente = host::Richiesto(sessione).CurrentUser();
    return prefisso + host::Richiesto(utente).Address();
  }
  const auto accounts = host::Richiesto(sessione).Accounts();
  const auto primo = host::Richiesto(accounts).Item(1);
  return prefisso + host::Richiesto(primo).SmtpAddress();
}

TestiVoce TestiOutlook(const Destinatario& destinatario) {
  return {destinatario.Nome(), std::string(text::Trim(destinatario.Indirizzo()))};
}

void ComponiMessaggioOutlook(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto,
                             const Oggetti& oggetti, const std::string& mittente) {
  ElenchiDestinatari elenchi;
  RipartisciDestinatari(*messaggio.vCollDestinatari, TestiOutlook, elenchi, messaggio.vNome);
  // The text used in the records, prefix and all, with a ";" before it whatever the list holds: that is what
  // mailboxes have been receiving for years.
  if (impostazioni.FlagBcc) elenchi.cc.append(";").append(mittente);
  messaggio.vIndDestinatario = elenchi.a;
  messaggio.vCorpoMail = GetCorpoMail(messaggio, impostazioni, contesto, oggetti);

  auto& elemento = *oggetti.objOutlookItem;
  elemento.To(elenchi.a);
  elemento.cc(elenchi.cc);
  elemento.Bcc(elenchi.ccn);
  elemento.Subject(messaggio.vOggetto);
  elemento.body(messaggio.vCorpoMail);
  const bool html = EsisteParamHTMLFW95(contesto, oggetti);
  if (!html || !oggetti.ActiveInterface) {
    elemento.body(messaggio.vCorpoMail);
    return;
  }
  messaggio.vCorpoMail = CorpoHTMLConFirma(contesto, oggetti, messaggio.vCorpoMail);
  elemento.BodyFormat(kCorpoOutlookHTML);
  elemento.HTMLBody(messaggio.vCorpoMail);
}

void RegistraInvioOutlook(const Messaggio& messaggio, const Impostazioni& impostazioni,
                          const Contesto& contesto, const Oggetti& oggetti, const std::string& mittente,
                          const std::string& allegati) {
  const auto registro = oggetti.ObjRegistroInvio;
  if (!registro) return;
  registro->EsitoInvio(host::kInviato);
  registro->CanaleInvio(static_cast<float>(impostazioni.SrvMailInstallato));
  registro->MittenteInvio(mittente);
  RegistraDestinatari(messaggio, contesto, oggetti, *registro,
                      {kAperturaConBianco, allegati, messaggio.vOggetto}, host::kInviato, std::nullopt);
}

// The paths attached, joined by "|". The message goes out without the file that was refused and without those
// after it; nobody is told.
std::string AddAllegatiOutlook(const Messaggio& messaggio, const Oggetti& oggetti) {
  std::string elenco;
  IgnoraErrori([&] {
    for (const auto& allegato : messaggio.vElencoAllegati.ToArray()) {
      const std::string percorso = allegato.ToText();
      auto& allegati = host::Richiesto(oggetti.objOutlookAllegati);
      Allega(*oggetti.ambiente, percorso, [&] { allegati.Add(percorso); });
      AccodaPercorso(elenco, percorso);
    }
  });
  return elenco;
}

void ConsegnaConOutlook(Messaggio& messaggio, const Impostazioni& impostazioni, const Account& account,
                        Contesto& contesto, Esito& esito, Oggetti& oggetti) {
  // Here already, before anything can fail.
  if (oggetti.ObjRegistroInvio) oggetti.ObjRegistroInvio->TipoCanale(TipoCanaleDi(messaggio));
  const std::string mittente = MittenteDiOutlook(host::Richiesto(oggetti.objOutlookApp));
  oggetti.objOutlookItem = oggetti.objOutlookApp->createItem(kElementoDiPosta);
  Riferisci(*oggetti.ambiente, &Osservatore::ConsegnaIniziata, kvOutlook);
  host::Richiesto(oggetti.objOutlookItem).ReadReceiptRequested(account.ReadReceipt);
  oggetti.objOutlookAllegati = oggetti.objOutlookItem->attachments();
  std::string allegati;
  if (!messaggio.vElencoAllegati.IsEmpty()) {
    allegati = AddAllegatiOutlook(messaggio, oggetti);
  }
  if (!messaggio.vCollDestinatari || messaggio.vCollDestinatari->Count() <= 0) return;
  ComponiMessaggioOutlook(messaggio, impostazioni, contesto, oggetti, mittente);
  RiferisciErrori(*oggetti.ambiente, ConsegnaRifiutata, [&] { oggetti.objOutlookItem->Send(); });
  Riferisci(*oggetti.ambiente, &Osservatore::ConsegnaFinita, host::EsitoConsegna{.riuscita = true});
  RegistraInvioOutlook(messaggio, impostazioni, contesto, oggetti, mittente, allegati);
  oggetti.objOutlookAllegati.reset();
  oggetti.objOutlookItem.reset();
  esito.StatoInvio = kvOK;
}

}  // namespace

void AvviaOutlook(Oggetti& oggetti) {
  const auto segnala = [&oggetti](const host::Errore&) {
    oggetti.objOutlookApp.reset();
    MostraMessaggio(oggetti, "Errore in creazione istanza di Outlook", host::kCritico,
                    "ORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni");
  };
  SegnalaErrori(segnala, [&] {
    oggetti.objOutlookApp =
        CreaPerIlCanale(*oggetti.ambiente, &host::Ambiente::CreaOutlook, "Outlook.Application");
  });
}

void SendWithOutlook(Messaggio& messaggio, const Impostazioni& impostazioni, const Account& account,
                     Contesto& contesto, Esito& esito, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "SendWithOutlook", "-",
                            " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithOutlook"),
                [&] { ConsegnaConOutlook(messaggio, impostazioni, account, contesto, esito, oggetti); });
}

}  // namespace orve
