#include "windows/win32/doppio.h"

#include <dispex.h>

#include <stdexcept>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "win32/conversions.h"
#include "win32/dispatch.h"
#include "win32/oggetto_com.h"
#include "windows/fabbrica.h"

namespace orve::prova {

namespace {

using adapters::win32::FromCom;
using adapters::win32::ToCom;
using adapters::win32::VariantCom;

std::string TestoTipo(WORD tipo) {
  if ((tipo & DISPATCH_PROPERTYPUTREF) != 0) return "assegnazione";
  if ((tipo & DISPATCH_PROPERTYPUT) != 0) return "scrittura";
  if (tipo == DISPATCH_METHOD) return "chiamata";
  return "lettura";
}

std::string TestoValore(const VARIANT& valore) {
  if (V_VT(&valore) == VT_DISPATCH) return V_DISPATCH(&valore) == nullptr ? "(nessun oggetto)" : "(oggetto)";
  if (V_VT(&valore) == VT_BSTR && V_BSTR(&valore) == nullptr) return "(testo nullo)";
  if (V_VT(&valore) == (VT_BYREF | VT_VARIANT)) return TestoValore(*V_VARIANTREF(&valore));
  if (V_VT(&valore) == (VT_BYREF | VT_DISPATCH))
    return *V_DISPATCHREF(&valore) == nullptr ? "(nessun oggetto)" : "(oggetto)";
  const host::Variant letto = FromCom(valore);
  if (letto.IsNull()) return "(null)";
  if (letto.IsEmpty()) return "(vuoto)";
  if (letto.IsArray()) {
    std::string testo = "[";
    for (const auto& elemento : letto.ToArray()) testo += (testo.size() > 1 ? "," : "") + elemento.ToText();
    return testo + "]";
  }
  return letto.ToText();
}

HRESULT Riporta(const RifiutoCom& rifiuto, EXCEPINFO* eccezione) {
  if (rifiuto.numero == 0 && rifiuto.descrizione.empty()) return rifiuto.codice;
  if (eccezione != nullptr) {
    *eccezione = {};
    eccezione->wCode = rifiuto.numero;
    eccezione->scode = rifiuto.numero == 0 ? rifiuto.codice : S_OK;
    eccezione->bstrSource = SysAllocString(rifiuto.sorgente.c_str());
    eccezione->bstrDescription = SysAllocString(rifiuto.descrizione.c_str());
  }
  return DISP_E_EXCEPTION;
}

}  // namespace

host::Variant ArrivoCom::Valore(std::size_t posto) const {
  return FromCom(argomenti.at(posto));
}

void ArrivoCom::Scrivi(std::size_t posto, const host::Variant& valore) const {
  const VARIANT& argomento = argomenti.at(posto);
  if (V_VT(&argomento) == (VT_BYREF | VT_VARIANT)) {
    VARIANT& dentro = *V_VARIANTREF(&argomento);
    VariantClear(&dentro);
    dentro = ToCom(valore).Cedi();
  } else if (V_VT(&argomento) == (VT_BYREF | VT_BSTR)) {
    BSTR& dentro = *V_BSTRREF(&argomento);
    SysFreeString(dentro);
    dentro = adapters::win32::ToBstr(valore.ToText()).Cedi();
  } else {
    throw RifiutoCom{DISP_E_TYPEMISMATCH, 0, {}, {}};
  }
}

// The way in which scripts offer their members.
class DoppioCom::Esteso : public IDispatchEx {
 public:
  explicit Esteso(DoppioCom& doppio) : doppio_(doppio) {}
  virtual ~Esteso() = default;
  Esteso(const Esteso&) = delete;
  Esteso& operator=(const Esteso&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    return doppio_.QueryInterface(iid, oggetto);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return doppio_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return doppio_.Release(); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* numero) override {
    return doppio_.GetTypeInfoCount(numero);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID iid, LCID lcid, WORD tipo, DISPPARAMS* parametri,
                                   VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomento) override {
    return doppio_.Invoke(membro, iid, lcid, tipo, parametri, risultato, eccezione, argomento);
  }
  HRESULT STDMETHODCALLTYPE GetDispID(BSTR nome, DWORD /*modo*/, DISPID* trovato) override {
    return doppio_.NumeroDi(nome, trovato);
  }
  HRESULT STDMETHODCALLTYPE InvokeEx(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     IServiceProvider*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

 private:
  DoppioCom& doppio_;
};

DoppioCom::DoppioCom(std::string nome, GiornaleCom giornale)
    : nome_(std::move(nome)), giornale_(std::move(giornale)) {}

DoppioCom::~DoppioCom() = default;

void DoppioCom::Membro(const std::string& nome, WORD tipi, AzioneCom azione) {
  membri_.push_back({nome, tipi, std::move(azione)});
}

void DoppioCom::Proprieta(const std::string& nome, const host::Variant& valore) {
  auto tenuto = std::make_shared<VariantCom>(ToCom(valore));
  Membro(nome, DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF,
         [tenuto](const ArrivoCom& arrivo) {
           if (arrivo.argomenti.empty()) return *tenuto;
           if (FAILED(VariantCopyInd(tenuto->Uscita(), const_cast<VARIANT*>(arrivo.argomenti.data())))) {
             throw RifiutoCom{DISP_E_TYPEMISMATCH, 0, {}, {}};
           }
           return VariantCom();
         });
}

HRESULT DoppioCom::QueryInterface(REFIID iid, void** oggetto) {
  *oggetto = nullptr;
  if (iid == IID_IUnknown || iid == IID_IDispatch) {
    *oggetto = static_cast<IDispatch*>(this);
  } else if (iid == adapters::win32::kDispatchEx && soloEx_) {
    if (!esteso_) esteso_ = std::make_unique<Esteso>(*this);
    *oggetto = static_cast<IDispatchEx*>(esteso_.get());
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG DoppioCom::Release() {
  const ULONG rimasti = --riferiti_;
  if (rimasti == 0) delete this;
  return rimasti;
}

HRESULT DoppioCom::GetTypeInfoCount(UINT* numero) {
  *numero = 0;
  return S_OK;
}

HRESULT DoppioCom::GetIDsOfNames(REFIID, LPOLESTR* nomi, UINT numero, LCID, DISPID* trovati) {
  if (soloEx_ || numero != 1) return DISP_E_UNKNOWNNAME;
  const adapters::win32::Bstr nome = adapters::win32::Bstr::Adotta(SysAllocString(nomi[0]));
  return NumeroDi(nome.Get(), trovati);
}

HRESULT DoppioCom::NumeroDi(BSTR nome, DISPID* trovato) const {
  const std::string cercato = adapters::win32::FromBstr(nome);
  for (std::size_t posto = 0; posto < membri_.size(); ++posto) {
    if (membri_[posto].nome != cercato) continue;
    *trovato = static_cast<DISPID>(posto + 1);
    return S_OK;
  }
  giornale_->push_back(nome_ + "." + cercato + " sconosciuto");
  *trovato = DISPID_UNKNOWN;
  return DISP_E_UNKNOWNNAME;
}

bool DoppioCom::RifiutaRiferimenti(const DISPPARAMS& parametri, UINT* argomento) const {
  if (riferimenti_ == Riferimenti::kQualunque) return false;
  for (UINT posto = 0; posto < parametri.cArgs; ++posto) {
    const VARTYPE tipo = V_VT(&parametri.rgvarg[posto]);
    if ((tipo & VT_BYREF) == 0) continue;
    const bool diValore = tipo == (VT_BYREF | VT_VARIANT);
    if (diValore == (riferimenti_ == Riferimenti::kSoloValori)) continue;
    if (argomento != nullptr) *argomento = posto;
    return true;
  }
  return false;
}

void DoppioCom::Annota(const Voce& voce, WORD tipo, const ArrivoCom& arrivo) const {
  std::string riga = nome_ + "." + voce.nome + " " + TestoTipo(tipo);
  if (!arrivo.argomenti.empty()) {
    riga += " (";
    for (std::size_t posto = 0; posto < arrivo.argomenti.size(); ++posto) {
      const VARIANT& argomento = arrivo.argomenti[posto];
      if (posto > 0) riga += "|";
      if (scriviTipi_ && (V_VT(&argomento) & VT_BYREF) != 0) riga += "&";
      riga += TestoValore(argomento);
      if (scriviTipi_) riga += ":" + std::to_string(V_VT(&argomento) & VT_TYPEMASK);
    }
    riga += ")";
  }
  giornale_->push_back(riga);
}

HRESULT DoppioCom::Invoke(DISPID membro, REFIID, LCID, WORD tipo, DISPPARAMS* parametri, VARIANT* risultato,
                          EXCEPINFO* eccezione, UINT* argomento) {
  if (membro == DISPID_VALUE && predefinito_ != 0) membro = predefinito_;
  if (membro < 1 || static_cast<std::size_t>(membro) > membri_.size()) return DISP_E_MEMBERNOTFOUND;
  const Voce voce = membri_[static_cast<std::size_t>(membro) - 1];
  if ((voce.tipi & tipo) == 0) return DISP_E_MEMBERNOTFOUND;
  if (RifiutaRiferimenti(*parametri, argomento)) return DISP_E_TYPEMISMATCH;
  ArrivoCom arrivo{tipo, {}};
  for (UINT posto = parametri->cArgs; posto > 0; --posto) {
    arrivo.argomenti.push_back(parametri->rgvarg[posto - 1]);
  }
  try {
    Annota(voce, tipo, arrivo);
    VariantCom esito = voce.azione(arrivo);
    if (risultato != nullptr) *risultato = esito.Cedi();
    return S_OK;
  } catch (const RifiutoCom& rifiuto) {
    return Riporta(rifiuto, eccezione);
  } catch (const host::Errore& errore) {
    // One of the language's own numbers, or a system code.
    const bool piccolo = errore.Numero() > 0 && errore.Numero() <= 0xFFFF;
    return Riporta(
        {piccolo ? E_FAIL : static_cast<HRESULT>(errore.Numero()),
         static_cast<WORD>(piccolo ? errore.Numero() : 0), adapters::win32::ToWide(errore.Sorgente()),
         adapters::win32::ToWide(errore.Descrizione())},
        eccezione);
  } catch (...) {
    return E_UNEXPECTED;
  }
}

AzioneCom Nulla() {
  return [](const ArrivoCom&) { return VariantCom(); };
}

AzioneCom Valore(const host::Variant& valore) {
  return [valore](const ArrivoCom&) { return ToCom(valore); };
}

AzioneCom Oggetto(const adapters::win32::ComPtr<DoppioCom>& oggetto) {
  return [oggetto](const ArrivoCom&) { return VariantCom::DiOggetto(oggetto.Get()); };
}

namespace {

// Not the person's own classes: Wine does not look there.
constexpr const wchar_t* kClassi = L"Software\\Classes\\";

}  // namespace

ClasseCom::ClasseCom(const std::wstring& nome, std::function<adapters::win32::ComPtr<IDispatch>()> crea)
    : nome_(nome) {
  CLSID identificatore;
  if (FAILED(CLSIDFromProgID(nome.c_str(), &identificatore))) {
    CoCreateGuid(&identificatore);
    LPOLESTR testo = nullptr;
    StringFromCLSID(identificatore, &testo);
    const std::wstring chiave = kClassi + nome + L"\\CLSID";
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, chiave.c_str(), nullptr, REG_SZ, testo,
                    static_cast<DWORD>((wcslen(testo) + 1) * sizeof(wchar_t)));
    CoTaskMemFree(testo);
  } else {
    nome_.clear();  // the machine's own class, which this one overrides
  }
  Registra(identificatore, std::move(crea));
}

ClasseCom::ClasseCom(const CLSID& identificatore, std::function<adapters::win32::ComPtr<IDispatch>()> crea) {
  Registra(identificatore, std::move(crea));
}

void ClasseCom::Registra(const CLSID& identificatore,
                         std::function<adapters::win32::ComPtr<IDispatch>()> crea) {
  const auto fabbrica = adapters::win32::ComPtr<IClassFactory>(new Fabbrica(std::move(crea)));
  if (FAILED(CoRegisterClassObject(identificatore, fabbrica.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                   &registrazione_))) {
    throw std::runtime_error("CoRegisterClassObject");
  }
}

void DimenticaClasse(const std::wstring& nome) {
  for (HKEY radice : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
    RegDeleteTreeW(radice, (kClassi + nome).c_str());
}

ClasseCom::~ClasseCom() {
  CoRevokeClassObject(registrazione_);
  if (!nome_.empty()) RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClassi + nome_).c_str());
}

}  // namespace orve::prova
