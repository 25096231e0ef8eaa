// An automation object that a test plays: members by name, and the journal of the calls as they arrived.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "orve-mailserver/host/variant.h"
#include "win32/com_ptr.h"

namespace orve::prova {

/// What arrived with one call, in the order in which the caller wrote it.
struct ArrivoCom {
  WORD tipo = 0;
  std::vector<VARIANT> argomenti;  // borrowed for the call

  [[nodiscard]] host::Variant Valore(std::size_t posto) const;
  /// Writes into an argument given by reference; fails the call when it was not.
  void Scrivi(std::size_t posto, const host::Variant& valore) const;
};

/// What a member does; the value is its result.
using AzioneCom = std::function<adapters::win32::VariantCom(const ArrivoCom&)>;

/// The journal shared by the objects of a test: "oggetto.Membro lettura|scrittura|assegnazione|chiamata
/// (valori)".
using GiornaleCom = std::shared_ptr<std::vector<std::string>>;

/// How an object takes references to its arguments, as the languages of objects differ.
enum class Riferimenti {
  kQualunque,   // of values and of declared types
  kSoloValori,  // of values alone, as scripts
  kSoloTipi,    // of declared types alone, as compiled classes
};

class DoppioCom : public IDispatch {
 public:
  DoppioCom(std::string nome, GiornaleCom giornale);
  DoppioCom(const DoppioCom&) = delete;
  DoppioCom& operator=(const DoppioCom&) = delete;

  /// A member under its exact name and case, and the kinds of call that it takes (a sum of DISPATCH_ flags; a
  /// call with several kinds needs one of them).
  void Membro(const std::string& nome, WORD tipi, AzioneCom azione);
  /// The same for a property that can be read and written and holds what was written.
  void Proprieta(const std::string& nome, const host::Variant& valore = {});
  /// The default member.
  void Predefinito(WORD tipi, AzioneCom azione) {
    membri_.push_back({"(predefinito)", tipi, std::move(azione)});
    predefinito_ = static_cast<DISPID>(membri_.size());
  }
  void PrendeRiferimenti(Riferimenti modo) { riferimenti_ = modo; }
  /// From now on GetIDsOfNames knows nothing; the members are found through IDispatchEx alone.
  void SoloPerIDispatchEx() { soloEx_ = true; }
  /// The journal also says how arguments arrived: "&" before one by reference, followed by the kind.
  void ScriviTipi() { scriviTipi_ = true; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++riferiti_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* numero) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* nomi, UINT numero, LCID,
                                          DISPID* trovati) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID, LCID, WORD tipo, DISPPARAMS* parametri,
                                   VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomento) override;

  [[nodiscard]] HRESULT NumeroDi(BSTR nome, DISPID* trovato) const;
  [[nodiscard]] ULONG Riferiti() const { return riferiti_; }

 protected:
  virtual ~DoppioCom();

 private:
  struct Voce {
    std::string nome;
    WORD tipi;
    AzioneCom azione;
  };
  class Esteso;

  void Annota(const Voce& voce, WORD tipo, const ArrivoCom& arrivo) const;
  [[nodiscard]] bool RifiutaRiferimenti(const DISPPARAMS& parametri, UINT* argomento) const;

  std::string nome_;
  GiornaleCom giornale_;
  std::vector<Voce> membri_;
  std::unique_ptr<Esteso> esteso_;
  DISPID predefinito_ = 0;
  Riferimenti riferimenti_ = Riferimenti::kQualunque;
  bool soloEx_ = false;
  bool scriviTipi_ = false;
  ULONG riferiti_ = 1;
};

[[nodiscard]] inline adapters::win32::ComPtr<DoppioCom> CreaDoppio(const std::string& nome,
                                                                   const GiornaleCom& giornale) {
  return adapters::win32::ComPtr<DoppioCom>::Adotta(new DoppioCom(nome, giornale));
}

/// Results of members.
[[nodiscard]] AzioneCom Nulla();
[[nodiscard]] AzioneCom Valore(const host::Variant& valore);
[[nodiscard]] AzioneCom Oggetto(const adapters::win32::ComPtr<DoppioCom>& oggetto);
/// The object itself refuses: number, source, description.
struct RifiutoCom {
  HRESULT codice;
  WORD numero;
  std::wstring sorgente;
  std::wstring descrizione;
};

/// A class under a name, for as long as this lives: creating an object of it returns what `crea` returns.
class ClasseCom {
 public:
  ClasseCom(const std::wstring& nome, std::function<adapters::win32::ComPtr<IDispatch>()> crea);
  /// A class that is known by its identifier alone.
  ClasseCom(const CLSID& identificatore, std::function<adapters::win32::ComPtr<IDispatch>()> crea);
  ClasseCom(const ClasseCom&) = delete;
  ClasseCom& operator=(const ClasseCom&) = delete;
  ~ClasseCom();

 private:
  void Registra(const CLSID& identificatore, std::function<adapters::win32::ComPtr<IDispatch>()> crea);

  std::wstring nome_;
  DWORD registrazione_ = 0;
};

/// The machine no longer knows a class of this name, whoever has played it before.
void DimenticaClasse(const std::wstring& nome);

/// The apartment of a test's thread.
class AppartamentoCom {
 public:
  AppartamentoCom() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  AppartamentoCom(const AppartamentoCom&) = delete;
  AppartamentoCom& operator=(const AppartamentoCom&) = delete;
  ~AppartamentoCom() { CoUninitialize(); }
};

}  // namespace orve::prova
