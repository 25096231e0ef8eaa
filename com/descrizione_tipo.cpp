#include "descrizione_tipo.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "errori.h"
#include "win32/conversions.h"
#include "win32/dispatch.h"

namespace orve::com {

using adapters::win32::ComPtr;
using adapters::win32::VariantCom;

namespace {

constexpr WORD kLettura = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

bool Omesso(const VARIANT& argomento) {
  return V_VT(&argomento) == VT_ERROR && V_ERROR(&argomento) == DISP_E_PARAMNOTFOUND;
}

bool EOggetto(VARTYPE tipo) {
  return tipo == VT_DISPATCH || tipo == VT_UNKNOWN;
}

// The same for an argument, which may be a reference to an object.
bool EOggetto(const VARIANT& argomento) {
  return EOggetto(static_cast<VARTYPE>(V_VT(&argomento) & ~VT_BYREF));
}

// What the reference, if it is one, refers to.
const VARIANT& Dietro(const VARIANT& valore) {
  return V_VT(&valore) == (VT_BYREF | VT_VARIANT) ? *V_VARIANTREF(&valore) : valore;
}

VARIANT RiferimentoA(VariantCom& valore) {
  VARIANT riferimento;
  VariantInit(&riferimento);
  V_VT(&riferimento) = static_cast<VARTYPE>(V_VT(&valore.Get()) | VT_BYREF);
  V_BYREF(&riferimento) = &V_NONE(&valore.Get());
  return riferimento;
}

VARIANT Mancante() {
  VARIANT mancante;
  VariantInit(&mancante);
  V_VT(&mancante) = VT_ERROR;
  V_ERROR(&mancante) = DISP_E_PARAMNOTFOUND;
  return mancante;
}

// An error of the library, as reported by a call by number.
HRESULT Racconta(const host::Errore& errore, EXCEPINFO* eccezione) {
  const HRESULT codice = HresultDi(errore);
  if (eccezione == nullptr) return codice;
  *eccezione = {};
  eccezione->scode = codice;
  eccezione->bstrSource = adapters::win32::ToBstr(errore.Sorgente()).Cedi();
  eccezione->bstrDescription = adapters::win32::ToBstr(errore.Descrizione()).Cedi();
  return DISP_E_EXCEPTION;
}

// The position of each of the member's arguments among the client's; nothing for one that was omitted.
std::optional<UINT> PostoDi(UINT parametro, bool scrittura, const DISPPARAMS& argomenti) {
  const UINT nominati = argomenti.cNamedArgs;
  for (UINT indice = 0; indice < nominati; ++indice) {
    if (!scrittura && argomenti.rgdispidNamedArgs[indice] == static_cast<DISPID>(parametro)) return indice;
  }
  if (parametro < argomenti.cArgs - nominati) return argomenti.cArgs - 1 - parametro;
  // The value of a write is the one named argument, and the last parameter.
  if (scrittura && parametro == argomenti.cArgs - nominati) return 0;
  return std::nullopt;
}

}  // namespace

DescrizioneTipo::DescrizioneTipo(ComPtr<ITypeInfo> tipo) : tipo_(std::move(tipo)) {
  // Not by the number of functions in the type's attributes: with a dual interface not every system counts
  // those of its bases.
  FUNCDESC* letta = nullptr;
  for (UINT indice = 0; SUCCEEDED(tipo_->GetFuncDesc(indice, &letta)); ++indice) {
    const auto rilascia = [this](FUNCDESC* funzione) { tipo_->ReleaseFuncDesc(funzione); };
    const std::unique_ptr<FUNCDESC, decltype(rilascia)> funzione(letta, rilascia);
    membri_.emplace(Membro{funzione->memid, funzione->invkind}, Leggi(*funzione));
  }
}

DescrizioneTipo::Parameters DescrizioneTipo::Leggi(const FUNCDESC& funzione) const {
  Parameters parametri;
  for (SHORT indice = 0; indice < funzione.cParams; ++indice) {
    const ELEMDESC& elemento = funzione.lprgelemdescParam[indice];
    const USHORT modi = elemento.paramdesc.wParamFlags;
    if ((modi & PARAMFLAG_FRETVAL) != 0) continue;
    Parameter parametro;
    LeggiTipo(elemento.tdesc, parametro);
    parametro.facoltativo = (modi & PARAMFLAG_FOPT) != 0;
    if ((modi & PARAMFLAG_FHASDEFAULT) != 0) {
      parametro.facoltativo = true;
      Verifica(
          VariantCopy(parametro.predefinito.Uscita(), &elemento.paramdesc.pparamdescex->varDefaultValue));
    }
    parametri.push_back(std::move(parametro));
  }
  return parametri;
}

void DescrizioneTipo::LeggiTipo(const TYPEDESC& tipo, Parameter& parametro) const {
  if (tipo.vt == VT_PTR) {
    LeggiTipo(*tipo.lptdesc, parametro);
    // A pointer to an interface is the object itself.
    parametro.perRiferimento = !EOggetto(parametro.tipo);
    return;
  }
  parametro.tipo = tipo.vt;
  if (tipo.vt != VT_USERDEFINED) return;
  ComPtr<ITypeInfo> nominato;
  Verifica(tipo_->GetRefTypeInfo(tipo.hreftype, nominato.Uscita()));
  TYPEATTR* attributi = nullptr;
  Verifica(nominato->GetTypeAttr(&attributi));
  const bool enumerazione = attributi->typekind == TKIND_ENUM || attributi->typekind == TKIND_ALIAS;
  parametro.tipo = enumerazione ? VT_I4 : VT_DISPATCH;
  if (!enumerazione) parametro.interfaccia = attributi->guid;
  nominato->ReleaseTypeAttr(attributi);
}

// The value in the declared form. Where an object is declared an object stays what it is; one of another
// class is a mismatch, for which not every system has the same code. Where a value is declared its default
// member is read; a value of any type may also be a Set, so the member itself has to know.
HRESULT DescrizioneTipo::Converti(const VARIANT& dato, const Parameter& parametro, LCID lingua,
                                  VariantCom& valore) {
  const HRESULT copiato = VariantCopyInd(valore.Uscita(), const_cast<VARIANT*>(&dato));
  if (FAILED(copiato) || parametro.tipo == VT_VARIANT) return copiato;
  if (EOggetto(parametro.tipo)) {
    if (!EOggetto(valore.Get())) return DISP_E_TYPEMISMATCH;
    const ComPtr<IUnknown> oggetto(V_UNKNOWN(&valore.Get()));
    const bool adatto =
        !oggetto || parametro.interfaccia == IID_NULL || oggetto.Come<IUnknown>(parametro.interfaccia);
    return adatto ? S_OK : DISP_E_TYPEMISMATCH;
  }
  if (EOggetto(valore.Get())) valore = adapters::win32::ValorePredefinito(valore.Get());
  if (V_VT(&valore.Get()) == parametro.tipo) return S_OK;
  return VariantChangeTypeEx(&valore.Get(), &valore.Get(), lingua, 0, parametro.tipo);
}

// A call that may be a read finds the method first, then the property. A write of an object may be either a
// Let or a Set from languages without a Set: it is the Let where there is one, and therefore the object's
// value.
DescrizioneTipo::Membri::const_iterator DescrizioneTipo::Scegli(DISPID membro, WORD modi,
                                                                const DISPPARAMS& argomenti) const {
  const auto trova = [&](INVOKEKIND genere) { return membri_.find({membro, genere}); };
  auto scelto = membri_.end();
  if ((modi & DISPATCH_PROPERTYPUT) != 0) scelto = trova(INVOKE_PROPERTYPUT);
  if (scelto == membri_.end() && (modi & DISPATCH_PROPERTYPUTREF) != 0) {
    const bool oggetto = argomenti.cArgs > 0 && EOggetto(Dietro(argomenti.rgvarg[0]));
    if (oggetto) scelto = trova(INVOKE_PROPERTYPUTREF);
  }
  if (scelto == membri_.end() && (modi & DISPATCH_METHOD) != 0) scelto = trova(INVOKE_FUNC);
  if (scelto == membri_.end() && (modi & kLettura) != 0) scelto = trova(INVOKE_PROPERTYGET);
  return scelto;
}

HRESULT DescrizioneTipo::Invoca(void* istanza, DISPID membro, LCID lingua, WORD modi, DISPPARAMS* argomenti,
                                VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomentoErrato) const {
  if (argomenti == nullptr) return E_INVALIDARG;
  const auto scelto = Scegli(membro, modi, *argomenti);
  if (scelto == membri_.end()) return DISP_E_MEMBERNOTFOUND;
  const INVOKEKIND genere = scelto->first.second;
  const Parameters& parametri = scelto->second;
  const bool scrittura = genere == INVOKE_PROPERTYPUT || genere == INVOKE_PROPERTYPUTREF;
  if (genere == INVOKE_PROPERTYGET && parametri.empty() && argomenti->cArgs > 0) {
    return InvocaPredefinito(istanza, membro, lingua, modi, argomenti, risultato, eccezione, argomentoErrato);
  }
  if (argomenti->cArgs > parametri.size() || argomenti->cNamedArgs > argomenti->cArgs ||
      (scrittura && argomenti->cNamedArgs != 1)) {
    return DISP_E_BADPARAMCOUNT;
  }
  if (!scrittura && std::any_of(argomenti->rgdispidNamedArgs,
                                argomenti->rgdispidNamedArgs + argomenti->cNamedArgs, [&](DISPID nome) {
                                  return nome < 0 || static_cast<std::size_t>(nome) >= parametri.size();
                                })) {
    return DISP_E_PARAMNOTFOUND;
  }

  std::vector<VariantCom> valori(parametri.size());
  std::vector<VARIANT> disposti(parametri.size());
  for (UINT indice = 0; indice < parametri.size(); ++indice) {
    const Parameter& parametro = parametri[indice];
    VARIANT& disposto = disposti[parametri.size() - 1 - indice];
    const auto posto = PostoDi(indice, scrittura, *argomenti);
    const bool omesso = !posto || Omesso(Dietro(argomenti->rgvarg[*posto]));
    if (omesso && !parametro.facoltativo) return posto ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;
    if (omesso && parametro.tipo == VT_VARIANT) {
      disposto = Mancante();
      continue;
    }
    const VARIANT& dato = omesso ? parametro.predefinito.Get() : Dietro(argomenti->rgvarg[*posto]);
    try {
      if (const HRESULT esito = Converti(dato, parametro, lingua, valori[indice]); FAILED(esito)) {
        if (posto && argomentoErrato != nullptr) *argomentoErrato = *posto;
        return esito;
      }
    } catch (const host::Errore& errore) {
      return Racconta(errore, eccezione);
    }
    disposto = parametro.perRiferimento ? RiferimentoA(valori[indice]) : valori[indice].Get();
  }

  DISPID valoreScritto = DISPID_PROPERTYPUT;
  DISPPARAMS esatti{disposti.data(), scrittura ? &valoreScritto : nullptr, static_cast<UINT>(disposti.size()),
                    scrittura ? 1U : 0U};
  return tipo_->Invoke(istanza, membro, static_cast<WORD>(genere), &esatti, risultato, eccezione,
                       argomentoErrato);
}

// Arguments after a property that takes none are meant for the default member of the object in it, as in
// vCollDestinatari(1).
HRESULT DescrizioneTipo::InvocaPredefinito(void* istanza, DISPID membro, LCID lingua, WORD modi,
                                           DISPPARAMS* argomenti, VARIANT* risultato, EXCEPINFO* eccezione,
                                           UINT* argomentoErrato) const {
  DISPPARAMS nessuno{};
  VariantCom oggetto;
  const HRESULT letto = tipo_->Invoke(istanza, membro, DISPATCH_PROPERTYGET, &nessuno, oggetto.Uscita(),
                                      eccezione, argomentoErrato);
  if (FAILED(letto)) return letto;
  if (V_VT(&oggetto.Get()) != VT_DISPATCH) return DISP_E_BADPARAMCOUNT;
  if (V_DISPATCH(&oggetto.Get()) == nullptr) {
    return Racconta(host::Errore(host::kOggettoNonImpostato), eccezione);
  }
  return V_DISPATCH(&oggetto.Get())
      ->Invoke(DISPID_VALUE, IID_NULL, lingua, modi, argomenti, risultato, eccezione, argomentoErrato);
}

}  // namespace orve::com
