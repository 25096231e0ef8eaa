// The mail settings of the application: channel, modes, temporary directory and standing message from the
// mail row of FW24_FAXCONFIG, and the system directories from the path resolver.
#include "service/settings.h"

#include "channels/channel_traits.h"
#include "service/guards.h"
#include "service/nvl.h"

namespace orve {

namespace {

using host::Leggi;

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

void CreaOggettoDelCanale(const Impostazioni& impostazioni, Oggetti& oggetti) {
  const ChannelTraits* const canale = TrattiDi(impostazioni.SrvMailInstallato);
  if (canale != nullptr && canale->crea != nullptr) canale->crea(oggetti);
}

}  // namespace

void GetImpostazioni(Impostazioni& impostazioni, Account& account, const Contesto& contesto,
                     Oggetti& oggetti) {
  PassaErrori("ORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni", [&] {
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
