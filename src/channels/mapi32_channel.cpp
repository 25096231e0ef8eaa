// Delivering the current message by direct calls of MAPI32.DLL. The body is plain text, no receipt is asked
// for, and the sender is the MAPI profile's.
//
// The library's number is the whole report: this channel shows it to the person in every mode, success
// included, and writes no log line. Any other error ends the delivery in silence, without a log-off.
#include "channels/mapi32_channel.h"

#include <string>
#include <utility>
#include <vector>

#include "channels/recipient_lists.h"
#include "channels/register_lines.h"
#include "content/send_log.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"

namespace orve {

namespace {

using namespace MDLFW_MAPI;

constexpr float kCanaleMapi = 2;  // whatever SrvMailInstallato says

std::int32_t ClasseDi(std::int16_t casella) {
  switch (casella) {
    case kvCasellaA:
      return kClasseA;
    case kvCasellaCC:
      return kClasseCC;
    case kvCasellaCCn:
      return kClasseCCn;
    default:
      return kClasseSconosciuta;
  }
}

std::string UnisciPercorsi(const host::Variant::Array& allegati) {
  std::string elenco;
  for (const auto& allegato : allegati) {
    if (&allegato != allegati.data()) elenco.append("|");
    elenco.append(allegato.ToText());
  }
  return elenco;
}

}  // namespace

// Nobody is told of an error, on purpose.
void CLSFW_MAILSERVER::SendMailMAPI() {
  IgnoraErrori([&] { ConsegnaConMAPI(); });
}

void CLSFW_MAILSERVER::ConsegnaConMAPI() {
  if (!vCollDestinatari || vCollDestinatari->Count() <= 0) return;
  const auto mapi = ambiente_->CreaMapi32();
  host::ManigliaMapi sessione = 0;
  const std::int32_t accesso =
      host::Richiesto(mapi).MAPILogon(0, "", "", kDialogoDiAccesso | kNuovaSessione, 0, sessione);
  if (accesso != kSuccesso) {
    MostraMessaggio("Logon failed. Result = " + std::to_string(accesso), host::kSemplice, "", nullptr);
    return;
  }
  InviaConMAPI(*mapi);
  const std::int32_t uscita = mapi->MAPILogoff(sessione, 0, 0, 0);
  if (uscita != kSuccesso) {
    MostraMessaggio("Logoff failed. Result = " + std::to_string(uscita), host::kSemplice, "", nullptr);
  }
}

void CLSFW_MAILSERVER::InviaConMAPI(host::Mapi32& mapi) {
  const std::vector<MapiRecip> destinatari = ComponiDestinatariMAPI();
  vCorpoMail = GetCorpoMail();
  MapiMessage messaggio;
  messaggio.Subject = vOggetto;
  messaggio.NoteText = vCorpoMail;
  messaggio.RecipCount = vCollDestinatari->Count();
  std::vector<MapiFile> file;
  std::string allegati;
  if (!vElencoAllegati.IsEmpty()) {
    file = PreparaAllegatiMAPI();
    allegati = UnisciPercorsi(std::as_const(vElencoAllegati).ToArray());
    messaggio.FileCount = static_cast<std::int32_t>(file.size());
  }
  // Session 0, not the one just opened: the library finds it by itself.
  const std::int32_t esito = mapi.BMAPISendMail(0, 0, messaggio, destinatari, file, 0, 0);
  const bool inviato = esito == kSuccesso;
  MostraMessaggio(inviato ? kMessaggioInviato : "Message not sent! Result = " + std::to_string(esito),
                  host::kSemplice, "", nullptr);
  StatoInvio = inviato ? kvOK : kvErroreInvioMail;
  RegistraEsitoMAPI(inviato, allegati);
}

std::vector<MapiRecip> CLSFW_MAILSERVER::ComponiDestinatariMAPI() {
  std::vector<MapiRecip> record;
  record.reserve(static_cast<std::size_t>(vCollDestinatari->Count()));
  std::string elencoA;
  for (const auto& destinatario : *vCollDestinatari) {
    MapiRecip& nuovo = record.emplace_back();
    nuovo.RecipClass = ClasseDi(destinatario->Casella());
    nuovo.Name.append(destinatario->Nome()).append("<").append(destinatario->Indirizzo()).append(">");
    if (destinatario->Casella() == kvCasellaA) {
      AccodaVoceSeparata(elencoA, destinatario->Nome(), destinatario->Indirizzo());
      AccodaConVirgola(vNome, destinatario->Nome());
    }
  }
  TogliUltimaVirgola(vNome);
  vIndDestinatario = elencoA;
  return record;
}

std::vector<MapiFile> CLSFW_MAILSERVER::PreparaAllegatiMAPI() {
  std::vector<MapiFile> record;
  for (const auto& allegato : std::as_const(vElencoAllegati).ToArray()) {
    MapiFile& nuovo = record.emplace_back();
    nuovo.PathName = allegato.ToText();
    nuovo.FileName = EstraiNomeFile(allegato);
    nuovo.Position = kPosizioneLibera;
  }
  return record;
}

// The kind of channel is not told to the register, so that certified mail is not told apart here.
void CLSFW_MAILSERVER::RegistraEsitoMAPI(bool inviato, const std::string& allegati) {
  const auto registro = ObjRegistroInvio;
  if (!registro) return;
  if (inviato) registro->MittenteInvio("MAPI: ");
  registro->EsitoInvio(inviato ? host::kInviato : host::kNonInviato);
  registro->CanaleInvio(kCanaleMapi);
  host::TestoOAssente esito;
  if (!inviato) esito = "FALLITO";
  RegistraDestinatari(*registro, {"<", allegati, vOggetto}, esito);
}

}  // namespace orve
