#include "service_com.h"

#include <utility>

#include "destinatari_com.h"
#include "enumerator.h"
#include "mittenti_com.h"
#include "win32/oggetti_chiamante.h"
#include "win32/oggetto_com.h"

namespace orve::com {

namespace {

using Punto = adapters::win32::ComPtr<IConnectionPoint>;
struct ElencoPunti : ElencoFisso<Punto> {
  using ElencoFisso::ElencoFisso;
  static void Consegna(Punto& punto, IConnectionPoint*& uscita) { uscita = punto.Cedi(); }
};

// The object that a caller passed in, as the caller knows it.
template <class T>
IDispatch* OggettoDelChiamante(const std::shared_ptr<T>& oggetto) {
  return adapters::win32::ComPtr(adapters::win32::ComDi(oggetto)).Cedi();
}

}  // namespace

CLSFW_MAILSERVERCom::CLSFW_MAILSERVERCom(std::shared_ptr<CLSFW_MAILSERVER> servizio)
    : Pubblico(std::move(servizio), CLSID_CLSFW_MAILSERVER) {
  N().BeforeSendMail = [this](std::string& oggetto, std::string& corpo, std::string& destinatariA,
                              std::string& destinatariCC, std::string& destinatariCCn,
                              std::string& allegati) {
    evento_.Solleva({&oggetto, &corpo, &destinatariA, &destinatariCC, &destinatariCCn, &allegati});
  };
}

CLSFW_MAILSERVERCom::~CLSFW_MAILSERVERCom() {
  N().BeforeSendMail = nullptr;
}

GUID CLSFW_MAILSERVERCom::Eventi() const noexcept {
  return DIID_DCLSFW_MAILSERVEREventi;
}

HRESULT CLSFW_MAILSERVERCom::EnumConnectionPoints(IEnumConnectionPoints** elenco) {
  return Porgi(elenco, [&] {
    return NuovoEnumeratore<IEnumConnectionPoints, IConnectionPoint*>(ElencoPunti({Punto(&evento_)}));
  });
}

HRESULT CLSFW_MAILSERVERCom::FindConnectionPoint(REFIID iid, IConnectionPoint** punto) {
  if (punto == nullptr) return E_POINTER;
  *punto = nullptr;
  if (iid != DIID_DCLSFW_MAILSERVEREventi) return CONNECT_E_NOCONNECTION;
  *punto = &evento_;
  (*punto)->AddRef();
  return S_OK;
}

// --- objects that the caller hands in

HRESULT CLSFW_MAILSERVERCom::get_ConnectionADO(IDispatch** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = OggettoDelChiamante(N().ConnectionADO);
  return S_OK;
}

HRESULT CLSFW_MAILSERVERCom::putref_ConnectionADO(IDispatch* valore) {
  return Entra([&] { N().ConnectionADO = adapters::win32::ConnessioneDa(valore); });
}

HRESULT CLSFW_MAILSERVERCom::get_ManagerRubrica(IDispatch** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = OggettoDelChiamante(N().ManagerRubrica);
  return S_OK;
}

HRESULT CLSFW_MAILSERVERCom::putref_ManagerRubrica(IDispatch* valore) {
  return Entra([&] { N().ManagerRubrica = adapters::win32::ManagerRubricaDa(valore); });
}

HRESULT CLSFW_MAILSERVERCom::get_ActiveInterface(IDispatch** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = OggettoDelChiamante(N().ActiveInterface);
  return S_OK;
}

HRESULT CLSFW_MAILSERVERCom::putref_ActiveInterface(IDispatch* valore) {
  return Entra([&] { N().ActiveInterface = adapters::win32::InterfacciaHostDa(valore); });
}

HRESULT CLSFW_MAILSERVERCom::putref_DittaCorrente(VARIANT valore) {
  return Entra([&] { N().DittaCorrente = adapters::win32::FromCom(valore); });
}

HRESULT CLSFW_MAILSERVERCom::putref_vElencoAllegati(VARIANT valore) {
  return Entra([&] { N().vElencoAllegati = adapters::win32::FromCom(valore); });
}

// --- objects of the library

HRESULT CLSFW_MAILSERVERCom::get_vCollDestinatari(ICollDestinatari** valore) {
  return Porgi(valore,
               [&] { return PubblicoDi<CollDestinatariCom, ICollDestinatari>(N().vCollDestinatari); });
}

HRESULT CLSFW_MAILSERVERCom::putref_vCollDestinatari(ICollDestinatari* valore) {
  return Entra([&] { N().vCollDestinatari = NucleoDi<CollDestinatari>(valore); });
}

HRESULT CLSFW_MAILSERVERCom::get_vCollMittenti(ICollMittenti** valore) {
  return Porgi(valore, [&] { return PubblicoDi<CollMittentiCom, ICollMittenti>(N().vCollMittenti); });
}

HRESULT CLSFW_MAILSERVERCom::putref_vCollMittenti(ICollMittenti* valore) {
  return Entra([&] { N().vCollMittenti = NucleoDi<CollMittenti>(valore); });
}

HRESULT CLSFW_MAILSERVERCom::get_vMittente(IMittente** valore) {
  return Porgi(valore, [&] { return PubblicoDi<MittenteCom, IMittente>(N().vMittente); });
}

HRESULT CLSFW_MAILSERVERCom::putref_vMittente(IMittente* valore) {
  return Entra([&] { N().vMittente = NucleoDi<Mittente>(valore); });
}

HRESULT CLSFW_MAILSERVERCom::get_MailParamAccount(IMittente** valore) {
  return Porgi(valore, [&] { return PubblicoDi<MittenteCom, IMittente>(N().MailParamAccount()); });
}

HRESULT CLSFW_MAILSERVERCom::putref_MailParamAccount(IMittente* valore) {
  return Entra([&] { N().MailParamAccount(NucleoDi<Mittente>(valore)); });
}

// --- operations

HRESULT CLSFW_MAILSERVERCom::AvviaProceduraInvio(VARIANT codice, ::kvTipologiaDestinatarioFAX Tipo) {
  return Entra([&] {
    std::optional<host::Variant> dato;
    if (!Mancante(codice)) dato = Importa<host::Variant>(codice);
    N().AvviaProceduraInvio(dato, static_cast<kvTipologiaDestinatarioFAX>(Tipo));
  });
}

HRESULT CLSFW_MAILSERVERCom::InviaMail() {
  return Entra([&] { N().InviaMail(); });
}

HRESULT CLSFW_MAILSERVERCom::GetImpostazioni(VARIANT* valore) {
  if (valore == nullptr) return E_POINTER;
  VariantInit(valore);
  return Entra([&] { Esporta(N().GetImpostazioni(), valore); });
}

HRESULT CLSFW_MAILSERVERCom::InizializzaRegistroInvioMail(BSTR IDvoce, BSTR UObject, BSTR Utente, BSTR Gruppo,
                                                          BSTR TitoloStampa) {
  return Entra([&] {
    N().InizializzaRegistroInvioMail(adapters::win32::FromBstr(IDvoce), adapters::win32::FromBstr(UObject),
                                     adapters::win32::FromBstr(Utente), adapters::win32::FromBstr(Gruppo),
                                     adapters::win32::FromBstr(TitoloStampa));
  });
}

HRESULT CLSFW_MAILSERVERCom::InizializzaRegistroInvioMailMultiprofilo(BSTR IDvoce, BSTR UObject,
                                                                      LONG IdUtente, BSTR TitoloStampa) {
  return Entra([&] {
    N().InizializzaRegistroInvioMailMultiprofilo(adapters::win32::FromBstr(IDvoce),
                                                 adapters::win32::FromBstr(UObject), IdUtente,
                                                 adapters::win32::FromBstr(TitoloStampa));
  });
}

HRESULT CLSFW_MAILSERVERCom::InviaMailSMTP(BSTR vOggetto, BSTR vCorpo, VARIANT_BOOL* prioritaAlta,
                                           VARIANT_BOOL* mailNotifica, VARIANT_BOOL* valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = VARIANT_FALSE;
  return Entra([&] {
    const bool alta = ImportaRiferimento<bool>(prioritaAlta);
    const bool notifica = ImportaRiferimento<bool>(mailNotifica);
    Esporta(N().InviaMailSMTP(adapters::win32::FromBstr(vOggetto), adapters::win32::FromBstr(vCorpo), &alta,
                              &notifica),
            valore);
  });
}

HRESULT CLSFW_MAILSERVERCom::AddDestinatario(BSTR indMail, BSTR descrDest, VARIANT_BOOL* valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = VARIANT_FALSE;
  return Entra([&] {
    Esporta(N().AddDestinatario(adapters::win32::FromBstr(indMail), adapters::win32::FromBstr(descrDest)),
            valore);
  });
}

HRESULT CLSFW_MAILSERVERCom::AddAllegato(BSTR FileName) {
  return Entra([&] { N().AddAllegato(adapters::win32::FromBstr(FileName)); });
}

HRESULT CLSFW_MAILSERVERCom::ReturnMailParameters() {
  return Entra([&] { N().ReturnMailParameters(); });
}

HRESULT CLSFW_MAILSERVERCom::CheckRegularMailAddress(BSTR MailAdd, VARIANT_BOOL* valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = VARIANT_FALSE;
  return Entra([&] { Esporta(N().CheckRegularMailAddress(adapters::win32::FromBstr(MailAdd)), valore); });
}

HRESULT CLSFW_MAILSERVERCom::InviaMailDiretta(short pIdMittente, BSTR pDestA, BSTR pDestCC, BSTR pDestCCn,
                                              BSTR pOggetto, BSTR pCorpo, BSTR pAllegati) {
  return Entra([&] {
    N().InviaMailDiretta(pIdMittente, adapters::win32::FromBstr(pDestA), adapters::win32::FromBstr(pDestCC),
                         adapters::win32::FromBstr(pDestCCn), adapters::win32::FromBstr(pOggetto),
                         adapters::win32::FromBstr(pCorpo), adapters::win32::FromBstr(pAllegati));
  });
}

}  // namespace orve::com
