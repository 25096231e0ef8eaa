// Birth and death of the service object.
#include "service/lifecycle.h"

#include <utility>

#include "channels/channel_traits.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/guards.h"
#include "service/interno.h"

namespace orve {

CLSFW_MAILSERVER::CLSFW_MAILSERVER(const std::shared_ptr<host::Ambiente>& ambiente)
    : CLSFW_MAILSERVER(std::make_unique<Interno>(ambiente)) {}

CLSFW_MAILSERVER::CLSFW_MAILSERVER(std::unique_ptr<Interno> interno)
    : interno_(std::move(interno)),
      vIndDestinatario(interno_->messaggio.vIndDestinatario),
      vNome(interno_->messaggio.vNome),
      vDitta(interno_->messaggio.vDitta),
      vOggetto(interno_->messaggio.vOggetto),
      vTestoMail(interno_->messaggio.vTestoMail),
      vMailAttachment(interno_->messaggio.vMailAttachment),
      ConnectionADO(interno_->contesto.ConnectionADO),
      vFlagCorpo(interno_->messaggio.vFlagCorpo),
      vCorpoMail(interno_->messaggio.vCorpoMail),
      vCollDestinatari(interno_->messaggio.vCollDestinatari),
      SrvMailInstallato(interno_->impostazioni.SrvMailInstallato),
      ManagerRubrica(interno_->oggetti.ManagerRubrica),
      DittaCorrente(interno_->contesto.DittaCorrente),
      vIndTipologiaAllegati(interno_->messaggio.vIndTipologiaAllegati),
      vElencoAllegati(interno_->messaggio.vElencoAllegati),
      ReadReceipt(interno_->account.ReadReceipt),
      FlgMsgPers(interno_->impostazioni.FlgMsgPers),
      MsgPers(interno_->impostazioni.MsgPers),
      INFO_TipoDoc(interno_->messaggio.INFO_TipoDoc),
      INFO_NumReg(interno_->messaggio.INFO_NumReg),
      INFO_NumDoc(interno_->messaggio.INFO_NumDoc),
      INFO_SezDoc(interno_->messaggio.INFO_SezDoc),
      vSenderName(interno_->account.vSenderName),
      vSenderAddress(interno_->account.vSenderAddress),
      vNotifyDelivery(interno_->account.vNotifyDelivery),
      vNotifyRead(interno_->account.vNotifyRead),
      vDisableNotifyDelivery(interno_->account.vDisableNotifyDelivery),
      vDisableNotifyRead(interno_->account.vDisableNotifyRead),
      silentMode(interno_->impostazioni.silentMode),
      errDescription(interno_->esito.errDescription),
      errNumber(interno_->esito.errNumber),
      vCollMittenti(interno_->account.vCollMittenti),
      vMittente(interno_->account.vMittente),
      ActiveInterface(interno_->oggetti.ActiveInterface),
      BeforeSendMail(interno_->messaggio.BeforeSendMail) {
  Oggetti& oggetti = interno_->oggetti;
  oggetti.ObjMessaggi = oggetti.ambiente->CreaMessaggi();
  interno_->traccia.Inizio([&oggetti] {
    oggetti.ObjFormatoData = oggetti.ambiente->CreaFormatoData();
    oggetti.ObjFormatoNumero = oggetti.ambiente->CreaFormatoNumero();
  });
}

// The order in which outside objects are released is visible to them. The ambiente goes last.
void RilasciaIlResto(Interno& i) {
  i.parametri.Account.reset();
  i.oggetti.objTextStream.reset();
  i.oggetti.objFileSystem.reset();
  i.messaggio.CollDestinatariCopia.reset();
  i.oggetti.MapiSessionID = {};
  i.oggetti.objMapiMessages.reset();
  i.oggetti.objMapiSession.reset();
  i.oggetti.objOutlookAllegati.reset();
  i.oggetti.objOutlookItem.reset();
  i.oggetti.objOutlookApp.reset();
  i.oggetti.ObjFormatoNumero.reset();
  i.oggetti.ObjFormatoData.reset();
  i.messaggio.BeforeSendMail = nullptr;
  i.oggetti.ActiveInterface.reset();
  i.account.vMittente.reset();
  i.account.vCollMittenti.reset();
  i.messaggio.vElencoAllegati = {};
  i.contesto.DittaCorrente = {};
  i.oggetti.ManagerRubrica.reset();
  i.messaggio.vCollDestinatari.reset();
}

CLSFW_MAILSERVER::~CLSFW_MAILSERVER() {
  Oggetti& oggetti = interno_->oggetti;
  interno_->traccia.Termine();
  oggetti.ObjMessaggi.reset();
  IgnoraErrori([&] { host::Richiesto(oggetti.ObjRegistroInvio).Connessione(nullptr); });
  oggetti.ObjRegistroInvio.reset();
  const ChannelTraits* const canale = TrattiDi(SrvMailInstallato);
  if (canale != nullptr && canale->rilascia != nullptr) canale->rilascia(*interno_);
  vCollDestinatari.reset();
  vCollMittenti.reset();
  ManagerRubrica.reset();
  ConnectionADO.reset();
  ActiveInterface.reset();
  oggetti.ObjFormatoData.reset();
  oggetti.ObjFormatoNumero.reset();
  RilasciaIlResto(*interno_);
}

}  // namespace orve
