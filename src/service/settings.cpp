// The mail settings of the application: channel, modes, temporary directory and standing message from the
// mail row of FW24_FAXCONFIG, and the system directories from the path resolver.
#include "service/settings.h"

#include <string_view>

#include "channels/channel_traits.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/nvl.h"
#include "service/report.h"

namespace orve {

namespace {

using host::Leggi;

constexpr std::string_view kChiusura = "ORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni";

// A null is equal to nothing.
bool UgualeAUno(const host::Variant& valore) {
  return !valore.IsNull() && valore.ToDouble() == 1;
}

std::string DirectoryDiSistema(host::Ambiente& ambiente, host::TipoPercorso tipo) {
  const auto risolutore = ambiente.CreaRisolutorePercorsi();
  host::Richiesto(risolutore).ImpostaTipoPercorso(tipo, "");
  std::string percorso = risolutore->Percorso();
  risolutore->ChiudiPercorsi();
  return percorso;
}

// The caller has the path as soon as it is read, whatever the resolver does when it is closed.
void RisolviConfigurato(host::Ambiente& ambiente, const std::string& configurato, std::string& percorso) {
  const auto risolutore = ambiente.CreaRisolutorePercorsi();
  host::Richiesto(risolutore).ImpostaPercorso(configurato, true);
  percorso = risolutore->Percorso();
  risolutore->ChiudiPercorsi();
}

// What applies where no mail row can be read.
void ImpostazioniPredefinite(Impostazioni& impostazioni, const Oggetti& oggetti) {
  impostazioni.SrvMailInstallato = kvSimpleMAPI;
  impostazioni.IndModalitaInvio = kvSemiAuto;
  impostazioni.PathTemp = GetPathTemp(oggetti);
}

void LeggiRigaImpostazioni(Impostazioni& impostazioni, Account& account, const Oggetti& oggetti,
                           const host::RecordSet& riga) {
  impostazioni.SrvMailInstallato =
      static_cast<kvEnum_ServizioMail>(Leggi(riga, "FW24_INDFAXATTIVO").ToInt32());
  impostazioni.ModalitaStampaDifferita = NVL(Leggi(riga, "FW24_MAILMODSTDIFF"), 0).ToInt32();
  impostazioni.ModalitaStandard = Leggi(riga, "FW24_INDMODALITA").ToInt32();
  RisolviConfigurato(*oggetti.ambiente, Leggi(riga, "FW24_PATHTMP").ToText(), impostazioni.PathTemp);
  // A configured plain SMTP channel always runs as the secure one.
  if (impostazioni.SrvMailInstallato == kvSMTPMail) impostazioni.SrvMailInstallato = kvSMTPSSLMail;
  impostazioni.FlagBcc = NVL(Leggi(riga, "FW24_BCC"), 0).ToBoolean();
  account.ReadReceipt = UgualeAUno(Leggi(riga, "FW24_READRECEIPT"));
  impostazioni.FlgMsgPers = UgualeAUno(Leggi(riga, "FW24_FLGMSGPERS"));
  impostazioni.MsgPers = NVL(Leggi(riga, "FW24_MSGPERS"), "").ToText();
}

void LeggiImpostazioni(Impostazioni& impostazioni, Account& account, const Contesto& contesto,
                       const Oggetti& oggetti) {
  if (!contesto.ConnectionADO) {
    ImpostazioniPredefinite(impostazioni, oggetti);
    return;
  }
  const auto risultato = contesto.ConnectionADO->Execute(kStatementImpostazioni, host::kComandoTesto);
  if (host::Richiesto(risultato).Eof()) {
    ImpostazioniPredefinite(impostazioni, oggetti);
    account.ReadReceipt = false;
    impostazioni.FlgMsgPers = false;
    impostazioni.MsgPers.clear();
    return;
  }
  LeggiRigaImpostazioni(impostazioni, account, oggetti, *risultato);
}

void ApriSessioneMapi(Oggetti& oggetti) {
  oggetti.objMapiSession =
      CreaPerIlCanale(*oggetti.ambiente, &host::Ambiente::CreaMAPISession, "MSMAPI.MAPISession");
  host::Richiesto(oggetti.objMapiSession).DownLoadMail(false);
  oggetti.objMapiSession->NewSession(true);
  oggetti.objMapiSession->SignOn();
  oggetti.MapiSessionID = oggetti.objMapiSession->SessionID();
}

void AvviaOutlook(Oggetti& oggetti) {
  const auto segnala = [&oggetti](const host::Errore&) {
    oggetti.objOutlookApp.reset();
    MostraMessaggio(oggetti, "Errore in creazione istanza di Outlook", host::kCritico,
                    std::string(kChiusura));
  };
  SegnalaErrori(segnala, [&] {
    oggetti.objOutlookApp =
        CreaPerIlCanale(*oggetti.ambiente, &host::Ambiente::CreaOutlook, "Outlook.Application");
  });
}

void CreaOggettoDelCanale(const Impostazioni& impostazioni, Oggetti& oggetti) {
  const ChannelTraits* const tratti = TrattiDi(impostazioni.SrvMailInstallato);
  if (tratti == nullptr) return;
  switch (tratti->consegna) {
    case MezzoConsegna::kControlliMapi:
      ApriSessioneMapi(oggetti);
      break;
    case MezzoConsegna::kOutlook:
      AvviaOutlook(oggetti);
      break;
    case MezzoConsegna::kNessuno:
    case MezzoConsegna::kMapi32:
    case MezzoConsegna::kComponenteSmtp:  // made for each message
      break;
  }
}

}  // namespace

void GetImpostazioni(Impostazioni& impostazioni, Account& account, const Contesto& contesto,
                     Oggetti& oggetti) {
  PassaErrori(kChiusura, [&] {
    LeggiImpostazioni(impostazioni, account, contesto, oggetti);
    if (!impostazioni.InvioSMTP) CreaOggettoDelCanale(impostazioni, oggetti);
  });
}

std::string GetPathTemp(const Oggetti& oggetti) {
  return PassaErrori("ORVE_MAILSERVER: CLSFW_MAILSERVER: GetPathTemp",
                     [&] { return DirectoryDiSistema(*oggetti.ambiente, host::kPercorsoTemporaneo); });
}

std::string GetPercorsoInstallazione(const Oggetti& oggetti) {
  return PassaErrori("ORVE_MAILSERVER: CLSFW_MAILSERVER: GetPercorsoInstallazione",
                     [&] { return DirectoryDiSistema(*oggetti.ambiente, host::kPercorsoInstallazione); });
}

}  // namespace orve
