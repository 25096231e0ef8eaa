// What every public class is on the COM side: a thin object that holds one object of the library and exposes
// it through a dual interface. It translates types and has no behaviour of its own.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <memory>
#include <utility>

#include "contato.h"
#include "descrizione_tipo.h"
#include "errori.h"
#include "modulo.h"

namespace orve::com {

/// The side of a public object that only the DLL itself knows: what is behind it.
class Interno {
 public:
  Interno() = default;
  Interno(const Interno&) = delete;
  Interno& operator=(const Interno&) = delete;
  Interno(Interno&&) = delete;
  Interno& operator=(Interno&&) = delete;

 protected:
  virtual ~Interno() = default;
};

template <class Nucleo>
class ConNucleo : public Interno {
 public:
  [[nodiscard]] virtual const std::shared_ptr<Nucleo>& NucleoCondiviso() const noexcept = 0;
};

/// The object of the library behind a public object; absent for an absent one. Raises 13 for an object that
/// is not the library's, or is of another of its classes.
template <class Nucleo>
std::shared_ptr<Nucleo> NucleoDi(IUnknown* oggetto) {
  if (oggetto == nullptr) return nullptr;
  adapters::win32::ComPtr<IUnknown> identita;
  if (FAILED(oggetto->QueryInterface(IID_IUnknown, identita.UscitaVoid()))) {
    throw host::Errore(host::kTipoNonCorrispondente);
  }
  auto* conNucleo = dynamic_cast<ConNucleo<Nucleo>*>(InternoDi(identita.Get()));
  if (conNucleo == nullptr) throw host::Errore(host::kTipoNonCorrispondente);
  return conNucleo->NucleoCondiviso();
}

/// Base of the public object of a class: `Interfaccia` is its dual interface, `Nucleo` the library's class,
/// `Altre` what else it has.
template <class Interfaccia, class Nucleo, class... Altre>
class Pubblico : public Contato<Interfaccia, ISupportErrorInfo, IProvideClassInfo2, Altre...>,
                 public ConNucleo<Nucleo> {
 public:
  // --- IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quanti) override {
    if (quanti == nullptr) return E_POINTER;
    *quanti = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT quale, LCID /*lingua*/, ITypeInfo** tipo) override {
    if (tipo == nullptr) return E_POINTER;
    *tipo = nullptr;
    if (quale != 0) return DISP_E_BADINDEX;
    return Entra([&] { *tipo = adapters::win32::ComPtr(Descrizione().Tipo()).Cedi(); });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*riservato*/, LPOLESTR* nomi, UINT quanti, LCID /*lingua*/,
                                          DISPID* numeri) override {
    HRESULT trovati = S_OK;
    const HRESULT esito = Entra([&] { trovati = Descrizione().Tipo()->GetIDsOfNames(nomi, quanti, numeri); });
    return FAILED(esito) ? esito : trovati;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID /*riservato*/, LCID lingua, WORD modi,
                                   DISPPARAMS* argomenti, VARIANT* risultato, EXCEPINFO* eccezione,
                                   UINT* argomentoErrato) override {
    HRESULT chiamato = S_OK;
    const HRESULT esito = Entra([&] {
      chiamato = Descrizione().Invoca(static_cast<Interfaccia*>(this), membro, lingua, modi, argomenti,
                                      risultato, eccezione, argomentoErrato);
    });
    return FAILED(esito) ? esito : chiamato;
  }

  // --- ISupportErrorInfo
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == __uuidof(Interfaccia) || iid == IID_IDispatch ? S_OK : S_FALSE;
  }

  // --- IProvideClassInfo2
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** tipo) override {
    if (tipo == nullptr) return E_POINTER;
    *tipo = nullptr;
    return Entra([&] { Verifica(LibreriaDeiTipi()->GetTypeInfoOfGuid(classe_, tipo)); });
  }
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD genere, GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    *guid = Eventi();
    return genere == GUIDKIND_DEFAULT_SOURCE_DISP_IID && *guid != GUID_NULL ? S_OK : E_INVALIDARG;
  }

  [[nodiscard]] const std::shared_ptr<Nucleo>& NucleoCondiviso() const noexcept override { return nucleo_; }

 protected:
  /// `classe` is the identifier of the class in the type library.
  Pubblico(std::shared_ptr<Nucleo> nucleo, REFCLSID classe) : nucleo_(std::move(nucleo)), classe_(classe) {
    RicordaNucleo(nucleo_.get(), static_cast<Interfaccia*>(this), this);
  }
  ~Pubblico() override { DimenticaNucleo(nucleo_.get()); }

  [[nodiscard]] Nucleo& N() const noexcept { return *nucleo_; }

  /// Runs a member. The object stays alive meanwhile, whatever the members that it calls release.
  template <class Azione>
  HRESULT Entra(Azione&& azione) noexcept {
    const adapters::win32::ComPtr<Interfaccia> presente(this);
    return Esegui(__uuidof(Interfaccia), std::forward<Azione>(azione));
  }

  /// The same for a member that hands out an object, null if it fails: `azione` returns its owner.
  template <class Oggetto, class Azione>
  HRESULT Porgi(Oggetto** valore, Azione&& azione) noexcept {
    if (valore == nullptr) return E_POINTER;
    *valore = nullptr;
    return Entra([&] { *valore = azione().Cedi(); });
  }

  [[nodiscard]] void* Trova(REFIID iid) noexcept override {
    if (iid == IID_IDispatch) return static_cast<Interfaccia*>(this);
    if (iid == IID_IProvideClassInfo) return static_cast<IProvideClassInfo2*>(this);
    return Base::Trova(iid);
  }

  /// The outgoing interface of the class; GUID_NULL for none.
  [[nodiscard]] virtual GUID Eventi() const noexcept { return GUID_NULL; }

 private:
  using Base = Contato<Interfaccia, ISupportErrorInfo, IProvideClassInfo2, Altre...>;

  [[nodiscard]] const DescrizioneTipo& Descrizione() {
    if (!descrizione_) descrizione_ = DescrizioneDi(__uuidof(Interfaccia));
    return *descrizione_;
  }

  std::shared_ptr<Nucleo> nucleo_;
  GUID classe_;
  std::shared_ptr<const DescrizioneTipo> descrizione_;
};

/// The public object of an object of the library: the one that already represents it, or a new one. An absent
/// object has none.
template <class Classe, class Interfaccia, class Nucleo>
adapters::win32::ComPtr<Interfaccia> PubblicoDi(const std::shared_ptr<Nucleo>& nucleo) {
  if (!nucleo) return {};
  if (IUnknown* presente = OggettoPerNucleo(nucleo.get()); presente != nullptr) {
    return adapters::win32::ComPtr<IUnknown>::Adotta(presente).Come<Interfaccia>(__uuidof(Interfaccia));
  }
  return adapters::win32::ComPtr<Interfaccia>(new Classe(nucleo));
}

}  // namespace orve::com
