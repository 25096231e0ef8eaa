// The mail settings of the application: channel, modes, temporary directory and standing message from the
// mail row of FW24_FAXCONFIG, and the system directories from the path resolver.
#include <string>

#include "service/CLSFW_MAILSERVER.h"
#include "service/nvl.h"

namespace orve {

namespace {

using host::Leggi;

constexpr const char* kStatementImpostazioni =
    "SELECT FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_PATHTMP, "
    " FW24_READRECEIPT, FW24_FLGMSGPERS, FW24_MSGPERS,FW24_BCC, "
    " FW24_MAILMODSTDIFF "
    " FROM FW24_FAXCONFIG "
    " WHERE FW24_INDCANALE = 1";

constexpr std::string_view kChiusura = "ORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni";

// A null equals nothing.
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

// The path is the caller's as soon as it is read, whatever the resolver does at its end.
void RisolviConfigurato(host::Ambiente& ambiente, const std::string& configurato, std::string& percorso) {
  const auto risolutore = ambiente.CreaRisolutorePercorsi();
  host::Richiesto(risolutore).ImpostaPercorso(configurato, true);
  percorso = risolutore->Percorso();
  risolutore->ChiudiPercorsi();
}

}  // namespace

host::Variant CLSFW_MAILSERVER::GetImpostazioni() try {
  LeggiImpostazioni();
  if (!InvioSMTP()) CreaOggettoDelCanale();
  return {};
} catch (...) {
  throw host::ErroreCorrente().ConSuffisso(kChiusura);
}

void CLSFW_MAILSERVER::LeggiImpostazioni() {
  if (!ConnectionADO) {
    ImpostazioniPredefinite();
    return;
  }
  const auto risultato = ConnectionADO->Execute(kStatementImpostazioni, host::kComandoTesto);
  if (host::Richiesto(risultato).Eof()) {
    ImpostazioniPredefinite();
    ReadReceipt = false;
    FlgMsgPers = false;
    MsgPers.clear();
    return;
  }
  LeggiRigaImpostazioni(*risultato);
}

// What applies where no mail row can be read.
void CLSFW_MAILSERVER::ImpostazioniPredefinite() {
  SrvMailInstallato = kvSimpleMAPI;
  IndModalitaInvio = kvSemiAuto;
  PathTemp = GetPathTemp();
}

void CLSFW_MAILSERVER::LeggiRigaImpostazioni(const host::RecordSet& riga) {
  SrvMailInstallato = static_cast<kvEnum_ServizioMail>(Leggi(riga, "FW24_INDFAXATTIVO").ToInt32());
  ModalitaStampaDifferita = NVL(Leggi(riga, "FW24_MAILMODSTDIFF"), 0).ToInt32();
  ModalitaStandard = Leggi(riga, "FW24_INDMODALITA").ToInt32();
  RisolviConfigurato(*ambiente_, Leggi(riga, "FW24_PATHTMP").ToText(), PathTemp);
  // A configured plain SMTP channel always runs as the secure one.
  if (SrvMailInstallato == kvSMTPMail) SrvMailInstallato = kvSMTPSSLMail;
  FlagBcc = NVL(Leggi(riga, "FW24_BCC"), 0).ToBoolean();
  ReadReceipt = UgualeAUno(Leggi(riga, "FW24_READRECEIPT"));
  FlgMsgPers = UgualeAUno(Leggi(riga, "FW24_FLGMSGPERS"));
  MsgPers = NVL(Leggi(riga, "FW24_MSGPERS"), "").ToText();
}

void CLSFW_MAILSERVER::CreaOggettoDelCanale() {
  if (SrvMailInstallato == kvSimpleMAPI) {
    objMapiSession = ambiente_->CreaMAPISession();
    host::Richiesto(objMapiSession).DownLoadMail(false);
    objMapiSession->NewSession(true);
    objMapiSession->SignOn();
    MapiSessionID = objMapiSession->SessionID();
  } else if (SrvMailInstallato == kvOutlook) {
    try {
      objOutlookApp = ambiente_->CreaOutlook();
    } catch (...) {
      objOutlookApp.reset();
      MostraMessaggio("Errore in creazione istanza di Outlook", host::kCritico, std::string(kChiusura),
                      nullptr);
    }
  }
}

std::string CLSFW_MAILSERVER::GetPathTemp() try {
  return DirectoryDiSistema(*ambiente_, host::kPercorsoTemporaneo);
} catch (...) {
  throw host::ErroreCorrente().ConSuffisso("ORVE_MAILSERVER: CLSFW_MAILSERVER: GetPathTemp");
}

std::string CLSFW_MAILSERVER::GetPercorsoInstallazione() try {
  return DirectoryDiSistema(*ambiente_, host::kPercorsoInstallazione);
} catch (...) {
  throw host::ErroreCorrente().ConSuffisso("ORVE_MAILSERVER: CLSFW_MAILSERVER: GetPercorsoInstallazione");
}

std::string CLSFW_MAILSERVER::PercorsoInstallazione() {
  return GetPercorsoInstallazione();
}

}  // namespace orve
