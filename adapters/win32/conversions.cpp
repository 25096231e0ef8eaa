#include "win32/conversions.h"

#include <climits>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "win32/oggetto_com.h"

namespace orve::adapters::win32 {

namespace {

using host::Errore;
using host::Variant;

// The system's functions count in int; longer texts are more than automation can carry.
int Lunghezza(std::size_t misura) {
  if (misura > static_cast<std::size_t>(INT_MAX)) throw Errore(host::kMemoriaInsufficiente);
  return static_cast<int>(misura);
}

std::wstring Allarga(UINT pagina, std::string_view testo) {
  if (testo.empty()) return {};
  const int lunghezza = Lunghezza(testo.size());
  const int misura = MultiByteToWideChar(pagina, 0, testo.data(), lunghezza, nullptr, 0);
  std::wstring largo(static_cast<std::size_t>(misura), L'\0');
  MultiByteToWideChar(pagina, 0, testo.data(), lunghezza, largo.data(), misura);
  return largo;
}

std::string Stringi(UINT pagina, DWORD flags, const char* sostituto, std::wstring_view testo) {
  if (testo.empty()) return {};
  const int lunghezza = Lunghezza(testo.size());
  const int misura =
      WideCharToMultiByte(pagina, flags, testo.data(), lunghezza, nullptr, 0, sostituto, nullptr);
  std::string stretto(static_cast<std::size_t>(misura), '\0');
  WideCharToMultiByte(pagina, flags, testo.data(), lunghezza, stretto.data(), misura, sostituto, nullptr);
  return stretto;
}

// Locks the elements of an array while they are iterated.
class Elementi {
 public:
  explicit Elementi(SAFEARRAY* elenco) : elenco_(elenco) {
    if (FAILED(SafeArrayLock(elenco))) throw Errore(host::kTipoNonCorrispondente);
  }
  Elementi(const Elementi&) = delete;
  Elementi& operator=(const Elementi&) = delete;
  Elementi(Elementi&&) = delete;
  Elementi& operator=(Elementi&&) = delete;
  ~Elementi() { SafeArrayUnlock(elenco_); }

 private:
  SAFEARRAY* elenco_;
};

Variant Elemento(SAFEARRAY* elenco, VARTYPE tipo, std::vector<LONG>& indici) {
  VariantCom elemento;
  void* posto = nullptr;
  if (FAILED(SafeArrayPtrOfIndex(elenco, indici.data(), &posto)) || posto == nullptr) {
    throw Errore(host::kIndiceFuoriIntervallo);
  }
  // The element is examined in place; an array of values may hold values of any kind.
  VARIANT vista;
  VariantInit(&vista);
  V_VT(&vista) = static_cast<VARTYPE>(tipo | VT_BYREF);
  V_BYREF(&vista) = posto;
  return FromCom(vista);
}

Variant::Array Dimensione(SAFEARRAY* elenco, VARTYPE tipo, UINT dimensione, std::vector<LONG>& indici) {
  LONG primo = 0;
  LONG ultimo = -1;
  if (FAILED(SafeArrayGetLBound(elenco, dimensione, &primo)) ||
      FAILED(SafeArrayGetUBound(elenco, dimensione, &ultimo))) {
    throw Errore(host::kTipoNonCorrispondente);
  }
  Variant::Array valori;
  for (std::int64_t indice = primo; indice <= ultimo; ++indice) {
    indici[dimensione - 1] = static_cast<LONG>(indice);
    if (dimensione == indici.size()) {
      valori.push_back(Elemento(elenco, tipo, indici));
    } else {
      valori.emplace_back(Dimensione(elenco, tipo, dimensione + 1, indici));
    }
  }
  return valori;
}

// Size in bytes of an element that follows no pointer; 0 for every other type.
std::size_t MisuraDiUnValore(VARTYPE tipo) {
  switch (tipo) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    default:
      return 0;
  }
}

// The same for every type that an array can hold; 0 for records, which say nothing without their description.
std::size_t MisuraDiUnElemento(VARTYPE tipo) {
  switch (tipo) {
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return MisuraDiUnValore(tipo);
  }
}

// The type that the array itself reports; VT_EMPTY when it does not know.
VARTYPE TipoSaputo(SAFEARRAY* elenco) {
  VARTYPE tipo = VT_EMPTY;
  if (SUCCEEDED(SafeArrayGetVartype(elenco, &tipo)) && tipo != VT_EMPTY) return tipo;
  if ((elenco->fFeatures & FADF_BSTR) != 0) return VT_BSTR;
  if ((elenco->fFeatures & FADF_VARIANT) != 0) return VT_VARIANT;
  if ((elenco->fFeatures & FADF_DISPATCH) != 0) return VT_DISPATCH;
  if ((elenco->fFeatures & FADF_UNKNOWN) != 0) return VT_UNKNOWN;
  return VT_EMPTY;
}

// What the elements are. The caller's claim counts only where the array does not know, as with descriptors
// made by hand, and only for values that follow no pointer.
VARTYPE TipoDegliElementi(SAFEARRAY* elenco, VARTYPE dichiarato) {
  const VARTYPE saputo = TipoSaputo(elenco);
  const VARTYPE tipo = saputo != VT_EMPTY ? saputo : dichiarato;
  const std::size_t misura = saputo != VT_EMPTY ? MisuraDiUnElemento(tipo) : MisuraDiUnValore(tipo);
  if (misura == 0 || misura != SafeArrayGetElemsize(elenco)) throw Errore(host::kTipoNonCorrispondente);
  return tipo;
}

Variant DaArray(SAFEARRAY* elenco, VARTYPE dichiarato) {
  if (elenco == nullptr) return Variant::Array{};  // never dimensioned
  const UINT dimensioni = SafeArrayGetDim(elenco);
  if (dimensioni == 0) return Variant::Array{};
  const Elementi fermi(elenco);
  std::vector<LONG> indici(dimensioni);
  return Dimensione(elenco, TipoDegliElementi(elenco, dichiarato), 1, indici);
}

template <class Intero>
Variant DaIntero(Intero numero) {
  if (std::in_range<std::int16_t>(numero) && sizeof(Intero) <= 2) return static_cast<std::int16_t>(numero);
  if (std::in_range<std::int32_t>(numero)) return static_cast<std::int32_t>(numero);
  return host::Decimale(std::to_string(numero));
}

Variant DaOggetto(ComPtr<IDispatch> oggetto) {
  if (!oggetto) return std::shared_ptr<host::Oggetto>{};
  return std::make_shared<OggettoIgnoto>(std::move(oggetto));
}

Variant DaIgnoto(IUnknown* ignoto) {
  if (ignoto == nullptr) return DaOggetto({});
  auto oggetto = ComPtr<IUnknown>(ignoto).Come<IDispatch>(IID_IDispatch);
  if (!oggetto) throw Errore(host::kTipoNonCorrispondente);
  return DaOggetto(std::move(oggetto));
}

Variant DaDecimale(DECIMAL numero) {
  Bstr testo;
  if (FAILED(VarBstrFromDec(&numero, LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, testo.Uscita()))) {
    throw Errore(host::kTipoNonCorrispondente);
  }
  return host::Decimale(FromBstr(testo.Get()));
}

Variant DaValuta(CY numero) {
  DECIMAL decimale;
  if (FAILED(VarDecFromCy(numero, &decimale))) throw Errore(host::kTipoNonCorrispondente);
  return DaDecimale(decimale);
}

DECIMAL InDecimale(const host::Decimale& numero) {
  DECIMAL decimale;
  if (FAILED(VarDecFromStr(ToBstr(numero.Testo('.')).Get(), LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE,
                           &decimale))) {
    throw Errore(host::kOverflow);
  }
  return decimale;
}

void Scrivi(VARIANT& valore, const Variant::Array& elenco) {
  auto* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elenco.size()));
  if (array == nullptr) throw std::bad_alloc();
  V_VT(&valore) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&valore) = array;
  LONG indice = 0;
  for (const auto& elemento : elenco) {
    VariantCom fatto = ToCom(elemento);
    if (FAILED(SafeArrayPutElement(array, &indice, &fatto.Get()))) throw std::bad_alloc();
    ++indice;
  }
}

VariantCom OggettoVersoCom(const Variant::OggettoPtr& oggetto) {
  return VariantCom::DiOggetto(ComDaConsegnare(oggetto));
}

}  // namespace

std::wstring ToWide(std::string_view testo) {
  return Allarga(CP_UTF8, testo);
}

std::string ToUtf8(std::wstring_view testo) {
  return Stringi(CP_UTF8, 0, nullptr, testo);
}

Bstr ToBstr(std::string_view testo) {
  const std::wstring largo = ToWide(testo);
  Bstr fatto = Bstr::Adotta(SysAllocStringLen(largo.data(), static_cast<UINT>(largo.size())));
  if (fatto.Get() == nullptr) throw std::bad_alloc();
  return fatto;
}

std::string FromBstr(BSTR testo) {
  if (testo == nullptr) return {};
  return ToUtf8({testo, SysStringLen(testo)});
}

std::string ToSingleByte(std::string_view testo) {
  // A system whose code page is UTF-8 lacks no character, and refuses a replacement character.
  if (GetACP() == CP_UTF8) return ToUtf8(ToWide(testo));
  std::wstring largo = ToWide(testo);
  // No other page has a character beyond the first plane; its second half would become a second "?".
  std::erase_if(largo, [](wchar_t unita) { return IS_LOW_SURROGATE(unita); });
  return Stringi(CP_ACP, WC_NO_BEST_FIT_CHARS, "?", largo);
}

std::string FromSingleByte(std::string_view byte) {
  return ToUtf8(Allarga(CP_ACP, byte));
}

VariantCom ToCom(const Variant& valore) {
  return valore.Visita([](const auto& contenuto) -> VariantCom {
    using Tipo = std::decay_t<decltype(contenuto)>;
    VariantCom fatto;
    VARIANT& com = fatto.Get();
    if constexpr (std::is_same_v<Tipo, host::Null>) {
      V_VT(&com) = VT_NULL;
    } else if constexpr (std::is_same_v<Tipo, bool>) {
      V_VT(&com) = VT_BOOL;
      V_BOOL(&com) = contenuto ? VARIANT_TRUE : VARIANT_FALSE;
    } else if constexpr (std::is_same_v<Tipo, std::int16_t>) {
      V_VT(&com) = VT_I2;
      V_I2(&com) = contenuto;
    } else if constexpr (std::is_same_v<Tipo, std::int32_t>) {
      V_VT(&com) = VT_I4;
      V_I4(&com) = contenuto;
    } else if constexpr (std::is_same_v<Tipo, float>) {
      V_VT(&com) = VT_R4;
      V_R4(&com) = contenuto;
    } else if constexpr (std::is_same_v<Tipo, double>) {
      V_VT(&com) = VT_R8;
      V_R8(&com) = contenuto;
    } else if constexpr (std::is_same_v<Tipo, host::Decimale>) {
      V_DECIMAL(&com) = InDecimale(contenuto);
      V_VT(&com) = VT_DECIMAL;  // the number overlaps its own type field
    } else if constexpr (std::is_same_v<Tipo, host::DataOra>) {
      V_VT(&com) = VT_DATE;
      V_DATE(&com) = contenuto.giorni;
    } else if constexpr (std::is_same_v<Tipo, std::string>) {
      return VariantCom::DiTesto(ToBstr(contenuto));
    } else if constexpr (std::is_same_v<Tipo, Variant::OggettoPtr>) {
      return OggettoVersoCom(contenuto);
    } else if constexpr (std::is_same_v<Tipo, Variant::Array>) {
      Scrivi(com, contenuto);
    }
    return fatto;
  });
}

Variant FromCom(const VARIANT& valore) {
  if ((V_VT(&valore) & VT_ARRAY) != 0) {
    const bool riferimento = (V_VT(&valore) & VT_BYREF) != 0;
    return DaArray(riferimento ? *V_ARRAYREF(&valore) : V_ARRAY(&valore),
                   static_cast<VARTYPE>(V_VT(&valore) & VT_TYPEMASK));
  }
  if ((V_VT(&valore) & VT_BYREF) != 0) {
    if (V_VT(&valore) == (VT_BYREF | VT_VARIANT)) return FromCom(*V_VARIANTREF(&valore));
    VariantCom copia;
    if (FAILED(VariantCopyInd(copia.Uscita(), const_cast<VARIANT*>(&valore))))
      throw Errore(host::kTipoNonCorrispondente);
    return FromCom(copia.Get());
  }
  switch (V_VT(&valore)) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return host::Null{};
    case VT_BOOL:
      return V_BOOL(&valore) != VARIANT_FALSE;
    case VT_I1:
      return DaIntero(static_cast<std::int16_t>(V_I1(&valore)));
    case VT_UI1:
      return DaIntero(static_cast<std::int16_t>(V_UI1(&valore)));
    case VT_I2:
      return V_I2(&valore);
    case VT_UI2:
      return DaIntero(static_cast<std::int32_t>(V_UI2(&valore)));
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(V_I4(&valore));
    case VT_UI4:
    case VT_UINT:
      return DaIntero(V_UI4(&valore));
    case VT_I8:
      return DaIntero(V_I8(&valore));
    case VT_UI8:
      return DaIntero(V_UI8(&valore));
    case VT_R4:
      return V_R4(&valore);
    case VT_R8:
      return V_R8(&valore);
    case VT_CY:
      return DaValuta(V_CY(&valore));
    case VT_DECIMAL:
      return DaDecimale(V_DECIMAL(&valore));
    case VT_DATE:
      return host::DataOra{V_DATE(&valore)};
    case VT_BSTR:
      return FromBstr(V_BSTR(&valore));
    case VT_DISPATCH:
      return DaOggetto(ComPtr<IDispatch>(V_DISPATCH(&valore)));
    case VT_UNKNOWN:
      return DaIgnoto(V_UNKNOWN(&valore));
    case VT_ERROR:
      if (V_ERROR(&valore) == DISP_E_PARAMNOTFOUND) return {};
      break;
    default:
      break;
  }
  throw Errore(host::kTipoNonCorrispondente);
}

}  // namespace orve::adapters::win32
