// The public object of the service, with its event.
#pragma once

#include "evento.h"
#include "membri.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "orve_mailserver.h"

namespace orve::com {

class CLSFW_MAILSERVERCom final
    : public Pubblico<ICLSFW_MAILSERVER, CLSFW_MAILSERVER, IConnectionPointContainer> {
 public:
  explicit CLSFW_MAILSERVERCom(std::shared_ptr<CLSFW_MAILSERVER> servizio);
  CLSFW_MAILSERVERCom(const CLSFW_MAILSERVERCom&) = delete;
  CLSFW_MAILSERVERCom& operator=(const CLSFW_MAILSERVERCom&) = delete;
  CLSFW_MAILSERVERCom(CLSFW_MAILSERVERCom&&) = delete;
  CLSFW_MAILSERVERCom& operator=(CLSFW_MAILSERVERCom&&) = delete;
  ~CLSFW_MAILSERVERCom() override;

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** elenco) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** punto) override;

  // In the order of the interface.
  ORVE_CAMPO(vIndDestinatario, BSTR)
  ORVE_CAMPO(vNome, BSTR)
  ORVE_CAMPO(vDitta, BSTR)
  ORVE_CAMPO(vOggetto, BSTR)
  ORVE_CAMPO(vTestoMail, BSTR)
  ORVE_CAMPO(vMailAttachment, BSTR)
  HRESULT STDMETHODCALLTYPE get_ConnectionADO(IDispatch** valore) override;
  HRESULT STDMETHODCALLTYPE putref_ConnectionADO(IDispatch* valore) override;
  ORVE_LETTURA(Stato, ::kvEnum_ErroreMail, N().Stato())
  ORVE_LETTURA(Descrizione, VARIANT, N().Descrizione())
  HRESULT STDMETHODCALLTYPE AvviaProceduraInvio(VARIANT codice, ::kvTipologiaDestinatarioFAX Tipo) override;
  ORVE_CAMPO(vFlagCorpo, short)
  ORVE_CAMPO(vCorpoMail, BSTR)
  HRESULT STDMETHODCALLTYPE InviaMail() override;
  HRESULT STDMETHODCALLTYPE get_vCollDestinatari(ICollDestinatari** valore) override;
  HRESULT STDMETHODCALLTYPE putref_vCollDestinatari(ICollDestinatari* valore) override;
  ORVE_CAMPO(SrvMailInstallato, ::kvEnum_ServizioMail)
  HRESULT STDMETHODCALLTYPE get_ManagerRubrica(IDispatch** valore) override;
  HRESULT STDMETHODCALLTYPE putref_ManagerRubrica(IDispatch* valore) override;
  ORVE_CAMPO(DittaCorrente, VARIANT)
  HRESULT STDMETHODCALLTYPE putref_DittaCorrente(VARIANT valore) override;
  HRESULT STDMETHODCALLTYPE GetImpostazioni(VARIANT* valore) override;
  ORVE_CAMPO(vIndTipologiaAllegati, ::kvTipologiaAllegati)
  ORVE_CAMPO(vElencoAllegati, VARIANT)
  HRESULT STDMETHODCALLTYPE putref_vElencoAllegati(VARIANT valore) override;
  ORVE_CAMPO(ReadReceipt, VARIANT_BOOL)
  ORVE_CAMPO(FlgMsgPers, VARIANT_BOOL)
  ORVE_CAMPO(MsgPers, BSTR)
  ORVE_CAMPO(INFO_TipoDoc, BSTR)
  ORVE_CAMPO(INFO_NumReg, BSTR)
  ORVE_CAMPO(INFO_NumDoc, BSTR)
  ORVE_CAMPO(INFO_SezDoc, BSTR)
  HRESULT STDMETHODCALLTYPE InizializzaRegistroInvioMail(BSTR IDvoce, BSTR UObject, BSTR Utente, BSTR Gruppo,
                                                         BSTR TitoloStampa) override;
  ORVE_CAMPO(vSenderName, BSTR)
  ORVE_CAMPO(vSenderAddress, BSTR)
  ORVE_CAMPO(vNotifyDelivery, VARIANT_BOOL)
  ORVE_CAMPO(vNotifyRead, VARIANT_BOOL)
  ORVE_CAMPO(vDisableNotifyDelivery, VARIANT_BOOL)
  ORVE_CAMPO(vDisableNotifyRead, VARIANT_BOOL)
  HRESULT STDMETHODCALLTYPE InviaMailSMTP(BSTR vOggetto, BSTR vCorpo, VARIANT_BOOL* prioritaAlta,
                                          VARIANT_BOOL* mailNotifica, VARIANT_BOOL* valore) override;
  HRESULT STDMETHODCALLTYPE AddDestinatario(BSTR indMail, BSTR descrDest, VARIANT_BOOL* valore) override;
  HRESULT STDMETHODCALLTYPE AddAllegato(BSTR FileName) override;
  ORVE_PROPRIETA(ModalitaInvio, ::kvEnumModalitaInvio)
  ORVE_LETTURA(tempPath, BSTR, N().tempPath())
  HRESULT STDMETHODCALLTYPE InizializzaRegistroInvioMailMultiprofilo(BSTR IDvoce, BSTR UObject, LONG IdUtente,
                                                                     BSTR TitoloStampa) override;
  ORVE_CAMPO(silentMode, VARIANT_BOOL)
  ORVE_CAMPO(errDescription, BSTR)
  ORVE_CAMPO(errNumber, BSTR)
  HRESULT STDMETHODCALLTYPE get_vCollMittenti(ICollMittenti** valore) override;
  HRESULT STDMETHODCALLTYPE putref_vCollMittenti(ICollMittenti* valore) override;
  HRESULT STDMETHODCALLTYPE get_vMittente(IMittente** valore) override;
  HRESULT STDMETHODCALLTYPE putref_vMittente(IMittente* valore) override;
  ORVE_PROPRIETA(MailParamTipo, float)
  HRESULT STDMETHODCALLTYPE get_MailParamAccount(IMittente** valore) override;
  HRESULT STDMETHODCALLTYPE putref_MailParamAccount(IMittente* valore) override;
  ORVE_PROPRIETA(MailParamReadRcpt, VARIANT_BOOL)
  ORVE_PROPRIETA(MailParamDeliveryStatus, VARIANT_BOOL)
  ORVE_PROPRIETA(MailParamAllegatoUnico, BSTR)
  ORVE_PROPRIETA(MailParamCorpoUnico, BSTR)
  ORVE_PROPRIETA(IsPec, VARIANT_BOOL)
  ORVE_PROPRIETA(IsInvioMailConParams, VARIANT_BOOL)
  HRESULT STDMETHODCALLTYPE ReturnMailParameters() override;
  ORVE_PROPRIETA(IsStampaDifferita, VARIANT_BOOL)
  ORVE_LETTURA(PercorsoInstallazione, BSTR, N().PercorsoInstallazione())
  ORVE_PROPRIETA(MailParamIsValoriValidi, VARIANT_BOOL)
  ORVE_PROPRIETA(ListaGuid, BSTR)
  ORVE_PROPRIETA(IsLista, LONG)
  ORVE_PROPRIETA(DataValiditaCodiceDestinatario, DATE)
  ORVE_PROPRIETA(DestinatariA, BSTR)
  ORVE_PROPRIETA(DestinatariCC, BSTR)
  ORVE_PROPRIETA(DestinatariCCn, BSTR)
  ORVE_PROPRIETA(Allegati, BSTR)
  ORVE_PROPRIETA(MailCorpo, BSTR)
  ORVE_PROPRIETA(MailOggetto, BSTR)
  ORVE_PROPRIETA(INFO_RagSocCliFor, BSTR)
  HRESULT STDMETHODCALLTYPE CheckRegularMailAddress(BSTR MailAdd, VARIANT_BOOL* valore) override;
  HRESULT STDMETHODCALLTYPE InviaMailDiretta(short pIdMittente, BSTR pDestA, BSTR pDestCC, BSTR pDestCCn,
                                             BSTR pOggetto, BSTR pCorpo, BSTR pAllegati) override;
  HRESULT STDMETHODCALLTYPE get_ActiveInterface(IDispatch** valore) override;
  HRESULT STDMETHODCALLTYPE putref_ActiveInterface(IDispatch* valore) override;
  ORVE_PROPRIETA(InvioSMTP, VARIANT_BOOL)

 protected:
  [[nodiscard]] GUID Eventi() const noexcept override;

 private:
  PuntoEvento evento_{*this};
};

}  // namespace orve::com
