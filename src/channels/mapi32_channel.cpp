// Delivering the current message by direct calls of MAPI32.DLL. The body is plain text, no receipt is asked
// for, and the sender is the MAPI profile's.
//
// The library's number is the whole report: this channel shows it to the person in every mode, success
// included, and writes no log line. Any other error ends the delivery in silence, without a log-off.
#include "channels/mapi32_channel.h"

#include <string>
#include <utility>
#include <vector>

#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "channels/elenchi_destinatari.h"
#include "channels/righe_invio.h"
#include "content/body_templates.h"
#include "content/send_log.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/report.h"

namespace orve {

namespace {

using namespace MDLFW_MAPI;

constexpr auto kCanaleMapi = static_cast<float>(kvMAPI);  // whatever SrvMailInstallato says

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

std::vector<MapiRecip> ComponiDestinatariMAPI(Messaggio& messaggio) {
  std::vector<MapiRecip> record;
  record.reserve(static_cast<std::size_t>(messaggio.vCollDestinatari->Count()));
  std::string elencoA;
  for (const auto& destinatario : *messaggio.vCollDestinatari) {
    MapiRecip& nuovo = record.emplace_back();
    nuovo.RecipClass = ClasseDi(destinatario->Casella());
    AccodaVoce(nuovo.Name, destinatario->Nome(), destinatario->Indirizzo());
    if (destinatario->Casella() == kvCasellaA) AccodaDestinatarioA(*destinatario, elencoA, messaggio.vNome);
  }
  TogliUltimaVirgola(messaggio.vNome);
  messaggio.vIndDestinatario = elencoA;
  return record;
}

std::vector<MapiFile> PreparaAllegatiMAPI(const host::Variant::Array& allegati) {
  std::vector<MapiFile> record;
  for (const auto& allegato : allegati) {
    MapiFile& nuovo = record.emplace_back();
    nuovo.PathName = allegato.ToText();
    nuovo.FileName = EstraiNomeFile(allegato);
    nuovo.Position = kPosizioneLibera;
  }
  return record;
}

// The register is not told the kind of channel, so certified mail cannot be distinguished here.
void RegistraEsitoMAPI(const Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                       bool inviato, const std::string& allegati) {
  const auto registro = oggetti.ObjRegistroInvio;
  if (!registro) return;
  if (inviato) registro->MittenteInvio(std::string(FirmaDi(kvMAPI)));
  const host::EsitoInvio esitoInvio = inviato ? host::kInviato : host::kNonInviato;
  registro->EsitoInvio(esitoInvio);
  registro->CanaleInvio(kCanaleMapi);
  host::TestoOAssente esito;
  if (!inviato) esito = "FALLITO";
  RegistraDestinatari(messaggio, contesto, oggetti, *registro, {kApertura, allegati, messaggio.vOggetto},
                      esitoInvio, esito);
}

void InviaConMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto, Esito& esito,
                  const Oggetti& oggetti, host::Mapi32& mapi) {
  const std::vector<MapiRecip> destinatari = ComponiDestinatariMAPI(messaggio);
  messaggio.vCorpoMail = GetCorpoMail(messaggio, impostazioni, contesto, oggetti);
  MapiMessage record;
  record.Subject = messaggio.vOggetto;
  record.NoteText = messaggio.vCorpoMail;
  record.RecipCount = messaggio.vCollDestinatari->Count();
  std::vector<MapiFile> file;
  std::string allegati;
  if (!messaggio.vElencoAllegati.IsEmpty()) {
    const host::Variant::Array& elenco = std::as_const(messaggio.vElencoAllegati).ToArray();
    file = PreparaAllegatiMAPI(elenco);
    allegati = UnisciPercorsi(elenco);
    record.FileCount = static_cast<std::int32_t>(file.size());
  }
  // Session 0, not the one just opened: the library finds it by itself.
  const std::int32_t numero = RiferisciErrori(*oggetti.ambiente, ConsegnaSenzaRisposta, [&] {
    return mapi.BMAPISendMail(0, 0, record, destinatari, file, 0, 0);
  });
  const bool inviato = numero == kSuccesso;
  Riferisci(*oggetti.ambiente, [&](Osservatore& o) { o.ConsegnaFinita({inviato, numero, mapi.Fine()}); });
  MostraMessaggio(oggetti,
                  inviato ? kMessaggioInviato : "Message not sent! Result = " + std::to_string(numero),
                  host::kSemplice, "");
  esito.StatoInvio = inviato ? kvOK : kvErroreInvioMail;
  RegistraEsitoMAPI(messaggio, contesto, oggetti, inviato, allegati);
}

void ConsegnaConMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto, Esito& esito,
                     const Oggetti& oggetti) {
  if (!messaggio.vCollDestinatari || messaggio.vCollDestinatari->Count() <= 0) return;
  const auto mapi = CreaPerIlCanale(*oggetti.ambiente, &host::Ambiente::CreaMapi32, "MAPI32.DLL");
  host::MapiHandle sessione = 0;
  auto& libreria = host::Richiesto(mapi);
  Riferisci(*oggetti.ambiente, &Osservatore::ConsegnaIniziata, kvMAPI);
  const std::int32_t accesso = libreria.MAPILogon(0, "", "", kDialogoDiAccesso | kNuovaSessione, 0, sessione);
  if (accesso != kSuccesso) {
    Riferisci(*oggetti.ambiente, [&](Osservatore& o) { o.SessioneNegata(accesso, libreria.Fine()); });
    MostraMessaggio(oggetti, "Logon failed. Result = " + std::to_string(accesso), host::kSemplice, "");
    return;
  }
  InviaConMAPI(messaggio, impostazioni, contesto, esito, oggetti, libreria);
  const std::int32_t uscita = libreria.MAPILogoff(sessione, 0, 0, 0);
  if (uscita != kSuccesso) {
    MostraMessaggio(oggetti, "Logoff failed. Result = " + std::to_string(uscita), host::kSemplice, "");
  }
}

}  // namespace

// Nobody is told of an error, on purpose.
void SendMailMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto, Esito& esito,
                  const Oggetti& oggetti) {
  IgnoraErrori([&] { ConsegnaConMAPI(messaggio, impostazioni, contesto, esito, oggetti); });
}

}  // namespace orve
