#include "eventi.h"

#include <ocidl.h>

#include <map>
#include <utility>
#include <vector>

#include "chiamata.h"
#include "oggetto_nominato.h"
#include "orve-mailserver/host/errore.h"
#include "win32/errori_com.h"

namespace orve::prova {

using adapters::win32::ComPtr;
using adapters::win32::VariantCom;
using adapters::win32::Verifica;

namespace {

[[noreturn]] void SenzaEventi() {
  throw host::Errore(459, "script_host", "L'oggetto non ha eventi");
}

// The default outgoing interface of the object's class.
ComPtr<ITypeInfo> InterfacciaDegliEventi(IDispatch& oggetto) {
  const auto informazioni = ComPtr(&oggetto).Come<IProvideClassInfo>(IID_IProvideClassInfo);
  if (!informazioni) SenzaEventi();
  ComPtr<ITypeInfo> classe;
  Verifica(informazioni->GetClassInfo(classe.Uscita()));
  TYPEATTR* attributi = nullptr;
  Verifica(classe->GetTypeAttr(&attributi));
  const UINT interfacce = attributi->cImplTypes;
  classe->ReleaseTypeAttr(attributi);
  for (UINT indice = 0; indice < interfacce; ++indice) {
    INT modi = 0;
    HREFTYPE riferimento = 0;
    Verifica(classe->GetImplTypeFlags(indice, &modi));
    if ((modi & (IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE)) !=
        (IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE)) {
      continue;
    }
    ComPtr<ITypeInfo> eventi;
    Verifica(classe->GetRefTypeOfImplType(indice, &riferimento));
    Verifica(classe->GetRefTypeInfo(riferimento, eventi.Uscita()));
    return eventi;
  }
  SenzaEventi();
}

IID Identificatore(ITypeInfo& tipo) {
  TYPEATTR* attributi = nullptr;
  Verifica(tipo.GetTypeAttr(&attributi));
  const IID iid = attributi->guid;
  tipo.ReleaseTypeAttr(attributi);
  return iid;
}

// A typed argument by reference as a script can change it: the script gets a value of its own, and what it
// leaves there goes back in the declared type.
class Ponte {
 public:
  explicit Ponte(VARIANT& originale) : originale_(&originale) {
    Verifica(VariantCopyInd(copia_.Uscita(), originale_));
  }
  [[nodiscard]] VARIANT PerLoScript() {
    VARIANT riferimento;
    VariantInit(&riferimento);
    V_VT(&riferimento) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&riferimento) = &copia_.Get();
    return riferimento;
  }
  void Riporta() {
    if (V_VT(originale_) != (VT_BYREF | VT_BSTR)) return;
    Verifica(VariantChangeType(&copia_.Get(), &copia_.Get(), 0, VT_BSTR));
    SysFreeString(*V_BSTRREF(originale_));
    *V_BSTRREF(originale_) = V_BSTR(&copia_.Get());
    V_VT(&copia_.Get()) = VT_EMPTY;
  }

 private:
  VARIANT* originale_;
  VariantCom copia_;
};

class Ascoltatore final : public OggettoSenzaTipo {
 public:
  Ascoltatore(const ComPtr<ITypeInfo>& eventi, std::wstring prefisso,
              std::function<ComPtr<IDispatch>()> script)
      : iid_(Identificatore(*eventi.Get())),
        prefisso_(std::move(prefisso)),
        script_(std::move(script)),
        eventi_(eventi) {}

  [[nodiscard]] const IID& Interfaccia() const { return iid_; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*riservato*/, LPOLESTR* nomi, UINT quanti, LCID /*lingua*/,
                                          DISPID* numeri) override {
    return eventi_->GetIDsOfNames(nomi, quanti, numeri);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID /*riservato*/, LCID /*lingua*/, WORD /*modi*/,
                                   DISPPARAMS* argomenti, VARIANT* risultato, EXCEPINFO* eccezione,
                                   UINT* /*argomentoErrato*/) override {
    return Rispondi([&] { return Chiama(membro, *argomenti); }, risultato, eccezione);
  }

 private:
  [[nodiscard]] void* Trova(REFIID iid) noexcept override {
    return iid == iid_ ? static_cast<IDispatch*>(this) : OggettoSenzaTipo::Trova(iid);
  }
  VariantCom Chiama(DISPID membro, const DISPPARAMS& argomenti) {
    adapters::win32::Bstr nome;
    UINT letti = 0;
    Verifica(eventi_->GetNames(membro, nome.Uscita(), 1, &letti));
    const ComPtr<IDispatch> script = script_();
    const DISPID procedura = NumeroDi(*script.Get(), prefisso_ + nome.Get());
    if (procedura == DISPID_UNKNOWN) return {};
    std::vector<Ponte> ponti;
    std::vector<VARIANT> valori;
    ponti.reserve(argomenti.cArgs);
    for (UINT indice = argomenti.cArgs; indice > 0; --indice) {
      ponti.emplace_back(argomenti.rgvarg[indice - 1]);
      valori.push_back(ponti.back().PerLoScript());
    }
    VariantCom risultato = prova::Chiama(*script.Get(), procedura, DISPATCH_METHOD, std::move(valori));
    for (Ponte& ponte : ponti) ponte.Riporta();
    return risultato;
  }

  IID iid_;
  std::wstring prefisso_;
  std::function<ComPtr<IDispatch>()> script_;
  ComPtr<ITypeInfo> eventi_;
};

}  // namespace

std::function<void()> Ascolta(IDispatch& oggetto, const std::wstring& prefisso,
                              std::function<ComPtr<IDispatch>()> script) {
  const auto eventi = InterfacciaDegliEventi(oggetto);
  const ComPtr<Ascoltatore> ascoltatore(new Ascoltatore(eventi, prefisso, std::move(script)));
  const auto contenitore = ComPtr(&oggetto).Come<IConnectionPointContainer>(IID_IConnectionPointContainer);
  if (!contenitore) SenzaEventi();
  ComPtr<IConnectionPoint> punto;
  Verifica(contenitore->FindConnectionPoint(ascoltatore->Interfaccia(), punto.Uscita()));
  DWORD numero = 0;
  Verifica(punto->Advise(ascoltatore.Get(), &numero));
  return [punto, numero] { punto->Unadvise(numero); };
}

}  // namespace orve::prova
