// Delivering the current message by driving Outlook. Account and sender are Outlook's own; the service only
// reads an address of them for its records, and how it reads it depends on the version.
//
// Success is known only from Send not raising an error. A failed send leaves Stato, the register lines and
// the events as they are, unlike the two MAPI channels; only the log line or the message tells of it.
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "channels/recipient_lists.h"
#include "channels/register_lines.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr std::int32_t kElementoDiPosta = 0;
constexpr std::int16_t kCorpoOutlookHTML = 1;

// The number in front of the first point; a text without a point is none.
std::int16_t VersioneMaggiore(const std::string& versione) {
  const std::size_t punto = text::Find(versione, ".");
  if (punto == 0) throw host::Errore(host::kArgomentoNonValido);
  return host::Variant(text::Left(versione, punto - 1)).ToInt16();
}

// Empty for a version whose address nobody has learnt to read.
std::string MittenteDiOutlook(host::OutlookApplication& outlook) {
  constexpr const char* kPrefisso = "Outlook: ";
  const std::int16_t versione = VersioneMaggiore(outlook.Version());
  if (versione != 11 && versione != 12 && versione != 14) return {};
  const auto explorers = outlook.Explorers();
  const auto sessione = host::Richiesto(explorers).Session();
  if (versione == 11) {
    const auto utente = host::Richiesto(sessione).CurrentUser();
    return kPrefisso + host::Richiesto(utente).Address();
  }
  const auto accounts = host::Richiesto(sessione).Accounts();
  const auto primo = host::Richiesto(accounts).Item(1);
  return kPrefisso + host::Richiesto(primo).SmtpAddress();
}

TestiVoce TestiOutlook(const Destinatario& destinatario) {
  return {destinatario.Nome(), std::string(text::Trim(destinatario.Indirizzo()))};
}

}  // namespace

void CLSFW_MAILSERVER::SendWithOutlook() {
  try {
    ConsegnaConOutlook();
  } catch (...) {
    SegnalaPerModalita(host::ErroreCorrente(), "SendWithOutlook", "-",
                       " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithOutlook");
  }
}

void CLSFW_MAILSERVER::ConsegnaConOutlook() {
  // Here already, before anything can fail.
  if (ObjRegistroInvio) ObjRegistroInvio->TipoCanale(IsPec() ? host::kCanalePec : host::kCanaleMail);
  const std::string mittente = MittenteDiOutlook(host::Richiesto(objOutlookApp));
  objOutlookItem = objOutlookApp->createItem(kElementoDiPosta);
  host::Richiesto(objOutlookItem).ReadReceiptRequested(ReadReceipt);
  objOutlookAllegati = objOutlookItem->attachments();
  std::string allegati;
  if (!vElencoAllegati.IsEmpty()) allegati = AddAllegatiOutlook(objOutlookAllegati);
  if (!vCollDestinatari || vCollDestinatari->Count() <= 0) return;
  ComponiMessaggioOutlook(mittente);
  objOutlookItem->Send();
  RegistraInvioOutlook(mittente, allegati);
  objOutlookAllegati.reset();
  objOutlookItem.reset();
  StatoInvio = kvOK;
}

void CLSFW_MAILSERVER::ComponiMessaggioOutlook(const std::string& mittente) {
  ElenchiDestinatari elenchi;
  RipartisciDestinatari(*vCollDestinatari, TestiOutlook, elenchi, vNome);
  // The text of the records, prefix and all, and a ";" in front whatever the list holds: what mailboxes have
  // seen for years.
  if (FlagBcc) elenchi.cc.append(";").append(mittente);
  vIndDestinatario = elenchi.a;
  vCorpoMail = GetCorpoMail();

  auto& elemento = *objOutlookItem;
  elemento.To(elenchi.a);
  elemento.cc(elenchi.cc);
  elemento.Bcc(elenchi.ccn);
  elemento.Subject(vOggetto);
  elemento.body(vCorpoMail);
  const bool html = EsisteParamHTMLFW95();
  if (!html || !ActiveInterface) {
    elemento.body(vCorpoMail);
    return;
  }
  vCorpoMail = CorpoHTMLConFirma(vCorpoMail);
  elemento.BodyFormat(kCorpoOutlookHTML);
  elemento.HTMLBody(vCorpoMail);
}

void CLSFW_MAILSERVER::RegistraInvioOutlook(const std::string& mittente, const std::string& allegati) {
  const auto registro = ObjRegistroInvio;
  if (!registro) return;
  registro->EsitoInvio(host::kInviato);
  registro->CanaleInvio(static_cast<float>(SrvMailInstallato));
  registro->MittenteInvio(mittente);
  RegistraDestinatari(*registro, {" <", allegati, vOggetto}, std::nullopt);
}

// The message goes out without the file that was refused and without those behind it; nobody is told.
std::string CLSFW_MAILSERVER::AddAllegatiOutlook(const std::shared_ptr<host::OutlookAttachments>& allegati) {
  std::string elenco;
  IgnoraErrori([&] {
    for (const auto& allegato : std::as_const(vElencoAllegati).ToArray()) {
      const std::string percorso = allegato.ToText();
      host::Richiesto(allegati).Add(percorso);
      AccodaPercorso(elenco, percorso);
    }
  });
  return elenco;
}

}  // namespace orve
