#include "win32/dispatch.h"

#include <dispex.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "win32/errori_com.h"

namespace orve::adapters::win32 {

namespace {

// The values of one call in the form and order that automation expects: the last argument first.
class Chiamata {
 public:
  Chiamata(std::span<const VariantCom*> valori, std::span<const bool> perRiferimento, bool tipizzati) {
    const std::size_t numero = valori.size();
    copie_.reserve(numero);
    passati_.resize(numero);
    for (std::size_t posto = 0; posto < numero; ++posto) {
      VariantCom& copia = copie_.emplace_back();
      VARIANT& passato = passati_[numero - 1 - posto];
      if (perRiferimento[posto]) {
        copia = *valori[posto];
        Riferisci(copia.Get(), passato, tipizzati);
      } else {
        passato = valori[posto]->Get();  // borrowed for the call
      }
    }
  }

  [[nodiscard]] std::vector<VARIANT>& Passati() { return passati_; }

 private:
  static void Riferisci(VARIANT& copia, VARIANT& passato, bool tipizzato) {
    VariantInit(&passato);
    if (tipizzato) {
      V_VT(&passato) = static_cast<VARTYPE>(V_VT(&copia) | VT_BYREF);
      V_BYREF(&passato) = &V_I4(&copia);  // every kind is at the same offset
    } else {
      V_VT(&passato) = VT_BYREF | VT_VARIANT;
      V_VARIANTREF(&passato) = &copia;
    }
  }

  std::vector<VariantCom> copie_;
  std::vector<VARIANT> passati_;
};

// A call by kind, so that refusal of the kind can be told from a failure inside the member.
struct Esito {
  HRESULT codice = S_OK;
  VariantCom risultato;
  EXCEPINFO eccezione{};
};

bool Scrittura(WORD tipo) {
  return (tipo & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

Esito Prova(IDispatch& oggetto, DISPID membro, WORD tipo, Chiamata& chiamata) {
  DISPID scritto = DISPID_PROPERTYPUT;
  const bool scrittura = Scrittura(tipo);
  DISPPARAMS parametri{};
  parametri.rgvarg = chiamata.Passati().data();
  parametri.cArgs = static_cast<UINT>(chiamata.Passati().size());
  parametri.rgdispidNamedArgs = scrittura ? &scritto : nullptr;
  parametri.cNamedArgs = scrittura ? 1 : 0;
  Esito esito;
  UINT argomento = 0;
  SetErrorInfo(0, nullptr);  // so that no old error is taken for this call's
  esito.codice = oggetto.Invoke(membro, IID_NULL, LOCALE_USER_DEFAULT, tipo, &parametri,
                                scrittura ? nullptr : esito.risultato.Uscita(), &esito.eccezione, &argomento);
  return esito;
}

host::Errore NonCreabile(const wchar_t* classe, HRESULT esito) {
  std::array<char, 16> codice{};
  std::snprintf(codice.data(), codice.size(), "0x%08lX", static_cast<unsigned long>(esito));
  return {host::kOggettoNonCreabile, "ORVE_MAILSERVER",
          "Impossibile creare l'oggetto " + ToUtf8(classe) + " (" + codice.data() + ")"};
}

}  // namespace

Argomento Argomento::PerRiferimento(VariantCom valore) {
  Argomento argomento(std::move(valore));
  argomento.perRiferimento_ = true;
  return argomento;
}

DISPID Dispatch::Numero(const char* membro) const {
  if (!oggetto_) throw host::Errore(host::kOggettoNonImpostato);
  const Bstr nome = ToBstr(membro);
  BSTR nomi = nome.Get();
  DISPID numero = DISPID_UNKNOWN;
  const HRESULT esito = oggetto_->GetIDsOfNames(IID_NULL, &nomi, 1, LOCALE_USER_DEFAULT, &numero);
  if (SUCCEEDED(esito) && numero != DISPID_UNKNOWN) return numero;
  // A script's objects may offer their members only the other way.
  if (const auto perNome = oggetto_.Come<IDispatchEx>(kDispatchEx)) {
    if (SUCCEEDED(perNome->GetDispID(nome.Get(), fdexNameCaseInsensitive, &numero))) return numero;
  }
  throw ErroreDi(FAILED(esito) ? esito : DISP_E_UNKNOWNNAME);
}

VariantCom Dispatch::Invoca(DISPID membro, WORD tipo, std::span<Argomento> argomenti) const {
  if (!oggetto_) throw host::Errore(host::kOggettoNonImpostato);
  const auto fermo = oggetto_;  // the call may release the last other reference
  std::vector<const VariantCom*> valori;
  // NOLINTNEXTLINE(modernize-avoid-c-arrays): a vector of bool has no elements to point at
  const auto perRiferimento = std::make_unique<bool[]>(argomenti.size() + 1);
  bool qualcuno = false;
  for (const auto& argomento : argomenti) {
    perRiferimento[valori.size()] = argomento.perRiferimento_;
    qualcuno = qualcuno || argomento.perRiferimento_;
    valori.push_back(&argomento.valore_);
  }
  const std::span<const bool> riferimenti(perRiferimento.get(), valori.size());
  auto chiamata = std::make_unique<Chiamata>(valori, riferimenti, false);
  Esito esito = Prova(*fermo.Get(), membro, tipo, *chiamata);
  if (esito.codice == DISP_E_TYPEMISMATCH && qualcuno) {
    // A member with a declared type takes a reference to that very type and no other; nothing has run yet.
    chiamata = std::make_unique<Chiamata>(valori, riferimenti, true);
    esito = Prova(*fermo.Get(), membro, tipo, *chiamata);
  }
  if (FAILED(esito.codice)) throw ErroreDi(esito.codice, &esito.eccezione);
  return std::move(esito.risultato);
}

void Dispatch::Put(const char* membro, Argomento valore) const {
  static_cast<void>(Invoca(Numero(membro), DISPATCH_PROPERTYPUT, {&valore, 1}));
}

void Dispatch::PutValore(const char* membro, const host::Variant& valore) const {
  if (valore.IsObject()) {
    PutRef(membro, ComDaConsegnare(valore.ToObject()));
  } else {
    Put(membro, valore);
  }
}

void Dispatch::PutRef(const char* membro, IDispatch* oggetto) const {
  const DISPID numero = Numero(membro);
  const auto fermo = oggetto_;
  const VariantCom valore = VariantCom::DiOggetto(oggetto);
  std::array<const VariantCom*, 1> valori = {&valore};
  const std::array<bool, 1> perRiferimento = {false};
  Chiamata chiamata(valori, perRiferimento, false);
  Esito esito = Prova(*fermo.Get(), numero, DISPATCH_PROPERTYPUTREF, chiamata);
  // This is the refusal of the kind of call, not a 438 raised by a setter that ran.
  if (esito.codice == DISP_E_MEMBERNOTFOUND) {
    esito = Prova(*fermo.Get(), numero, DISPATCH_PROPERTYPUT, chiamata);
  }
  if (FAILED(esito.codice)) throw ErroreDi(esito.codice, &esito.eccezione);
}

Dispatch Dispatch::Oggetto(const VariantCom& valore) {
  const VARIANT& com = valore.Get();
  switch (V_VT(&com)) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BYREF | VT_VARIANT: {
      VariantCom copia;
      Verifica(VariantCopyInd(copia.Uscita(), const_cast<VARIANT*>(&com)));
      return Oggetto(copia);
    }
    default:
      return Dispatch(ComDi(FromCom(com).ToObject()));
  }
}

VariantCom ValorePredefinito(const VARIANT& valore) {
  constexpr int kPassi = 16;  // an object may name itself as its value
  VariantCom letto;
  Verifica(VariantCopyInd(letto.Uscita(), const_cast<VARIANT*>(&valore)));
  for (int passo = 0; V_VT(&letto.Get()) == VT_DISPATCH || V_VT(&letto.Get()) == VT_UNKNOWN; ++passo) {
    if (passo == kPassi) throw host::Errore(host::kTipoNonCorrispondente);
    letto = Dispatch::Oggetto(letto).GetDefault();
  }
  return letto;
}

host::Variant SenzaOggetti(host::Variant valore) {
  if (valore.IsArray()) {
    for (auto& elemento : valore.ToArray()) elemento = SenzaOggetti(std::move(elemento));
  } else if (valore.IsObject()) {
    return SenzaOggetti(FromCom(ValorePredefinito(ToCom(valore).Get()).Get()));
  }
  return valore;
}

Dispatch CreaOggetto(const wchar_t* classe) {
  CLSID identificatore;
  ComPtr<IDispatch> oggetto;
  SetErrorInfo(0, nullptr);
  HRESULT esito = CLSIDFromString(classe, &identificatore);
  if (SUCCEEDED(esito)) {
    esito = CoCreateInstance(identificatore, nullptr, CLSCTX_SERVER, IID_IDispatch, oggetto.UscitaVoid());
  }
  if (FAILED(esito)) throw NonCreabile(classe, esito);
  return Dispatch(std::move(oggetto));
}

bool ClasseRegistrata(const wchar_t* classe) noexcept {
  CLSID identificatore;
  return SUCCEEDED(CLSIDFromString(classe, &identificatore));
}

}  // namespace orve::adapters::win32
