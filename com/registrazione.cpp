#include "registrazione.h"

#include <oleauto.h>

#include <array>
#include <string>
#include <utility>

#include "class_factory.h"
#include "errori.h"
#include "modulo.h"
#include "orve_mailserver.h"

// Exported since Windows Vista; the headers of mingw-w64 do not declare them.
extern "C" {
HRESULT STDAPICALLTYPE RegisterTypeLibForUser(ITypeLib* libreria, OLECHAR* percorso, OLECHAR* guida);
HRESULT STDAPICALLTYPE UnRegisterTypeLibForUser(REFGUID libreria, WORD maggiore, WORD minore, LCID lingua,
                                                SYSKIND sistema);
}

namespace orve::com {

namespace {

constexpr const wchar_t* kNomeLibreria = L"ORVE_MAILSERVER";
constexpr const wchar_t* kRadiceClassi = L"Software\\Classes\\";

std::wstring TestoGuid(REFGUID guid) {
  std::array<wchar_t, 40> testo{};
  StringFromGUID2(guid, testo.data(), static_cast<int>(testo.size()));
  return testo.data();
}

std::wstring ProgId(const CreatableClass& classe) {
  return std::wstring(kNomeLibreria) + L"." + classe.nome;
}

std::wstring ChiaveClasse(const CreatableClass& classe) {
  return std::wstring(kRadiceClassi) + L"CLSID\\" + TestoGuid(*classe.identificatore);
}

void Esige(LSTATUS esito) {
  if (esito != ERROR_SUCCESS) Verifica(HRESULT_FROM_WIN32(static_cast<DWORD>(esito)));
}

void Scrivi(HKEY radice, const std::wstring& chiave, const wchar_t* nome, const std::wstring& valore) {
  HKEY aperta = nullptr;
  Esige(RegCreateKeyExW(radice, chiave.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr,
                        &aperta, nullptr));
  const LSTATUS scritto =
      RegSetValueExW(aperta, nome, 0, REG_SZ, reinterpret_cast<const BYTE*>(valore.c_str()),
                     static_cast<DWORD>((valore.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(aperta);
  Esige(scritto);
}

void ScriviClasse(HKEY radice, const CreatableClass& classe, const std::wstring& percorso) {
  const std::wstring progId = ProgId(classe);
  const std::wstring chiave = ChiaveClasse(classe);
  Scrivi(radice, chiave, nullptr, progId);
  Scrivi(radice, chiave + L"\\InprocServer32", nullptr, percorso);
  Scrivi(radice, chiave + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  Scrivi(radice, chiave + L"\\ProgID", nullptr, progId);
  Scrivi(radice, chiave + L"\\Programmable", nullptr, {});
  Scrivi(radice, chiave + L"\\TypeLib", nullptr, TestoGuid(LIBID_ORVE_MAILSERVER));
  Scrivi(radice, chiave + L"\\Version", nullptr, L"1.0");
  Scrivi(radice, kRadiceClassi + progId, nullptr, progId);
  Scrivi(radice, kRadiceClassi + progId + L"\\CLSID", nullptr, TestoGuid(*classe.identificatore));
}

using ScriviLibreria = HRESULT(STDAPICALLTYPE*)(ITypeLib*, OLECHAR*, OLECHAR*);
using TogliLibreria = HRESULT(STDAPICALLTYPE*)(REFGUID, WORD, WORD, LCID, SYSKIND);

#ifdef _WIN64
constexpr SYSKIND kSistema = SYS_WIN64;
constexpr REGSAM kAltraVista = KEY_WOW64_32KEY;
#else
constexpr SYSKIND kSistema = SYS_WIN32;
constexpr REGSAM kAltraVista = KEY_WOW64_64KEY;
#endif

void RegistraSotto(HKEY radice, ScriviLibreria scriviLibreria) {
  std::wstring percorso = PercorsoDelModulo().wstring();
  for (const auto& classe : ClassiCreabili()) ScriviClasse(radice, classe, percorso);
  Verifica(scriviLibreria(LibreriaDeiTipi().Get(), percorso.data(), nullptr));
}

// Removal continues past what fails or does not exist, and reports the first failure.
class Rimozione {
 public:
  void Nota(HRESULT esito) {
    // Systems differ in what they say about a type library that is not registered.
    const bool assente = esito == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) ||
                         esito == TYPE_E_REGISTRYACCESS || esito == TYPE_E_LIBNOTREGISTERED ||
                         esito == E_INVALIDARG;
    if (FAILED(esito) && !assente && SUCCEEDED(primo_)) primo_ = esito;
  }
  [[nodiscard]] HRESULT Esito() const { return primo_; }

 private:
  HRESULT primo_ = S_OK;
};

// Classes are registered for each bitness, their names once for both. A system with a single bitness has one
// view, from which the class is gone by then.
bool RegistrataPerAltraLarghezza(HKEY radice, const CreatableClass& classe) {
  HKEY aperta = nullptr;
  if (RegOpenKeyExW(radice, ChiaveClasse(classe).c_str(), 0, KEY_QUERY_VALUE | kAltraVista, &aperta) !=
      ERROR_SUCCESS) {
    return false;
  }
  RegCloseKey(aperta);
  return true;
}

HRESULT TogliSotto(HKEY radice, TogliLibreria togliLibreria) {
  Rimozione rimozione;
  const auto togli = [&](const std::wstring& chiave) {
    rimozione.Nota(HRESULT_FROM_WIN32(static_cast<DWORD>(RegDeleteTreeW(radice, chiave.c_str()))));
  };
  for (const auto& classe : ClassiCreabili()) {
    togli(ChiaveClasse(classe));
    if (!RegistrataPerAltraLarghezza(radice, classe)) togli(kRadiceClassi + ProgId(classe));
  }
  rimozione.Nota(togliLibreria(LIBID_ORVE_MAILSERVER, 1, 0, LOCALE_NEUTRAL, kSistema));
  return rimozione.Esito();
}

}  // namespace

HRESULT Registra() noexcept {
  const HRESULT perTutti = Esegui(IID_NULL, [] { RegistraSotto(HKEY_LOCAL_MACHINE, RegisterTypeLib); });
  if (SUCCEEDED(perTutti)) return perTutti;
  // What was written for all users before the rights ran out would be hidden by the user's own entries.
  TogliSotto(HKEY_LOCAL_MACHINE, UnRegisterTypeLib);
  return Esegui(IID_NULL, [] { RegistraSotto(HKEY_CURRENT_USER, RegisterTypeLibForUser); });
}

HRESULT TogliRegistrazione() noexcept {
  HRESULT perTutti = S_OK;
  HRESULT perUtente = S_OK;
  const HRESULT esito = Esegui(IID_NULL, [&] {
    perUtente = TogliSotto(HKEY_CURRENT_USER, UnRegisterTypeLibForUser);
    perTutti = TogliSotto(HKEY_LOCAL_MACHINE, UnRegisterTypeLib);
  });
  if (FAILED(esito)) return esito;
  return FAILED(perUtente) ? perUtente : perTutti;
}

}  // namespace orve::com
