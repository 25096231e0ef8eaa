#include "classi_recitate.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <cwctype>
#include <utility>

#include "chiamata.h"
#include "oggetto_nominato.h"
#include "win32/conversions.h"
#include "win32/errori_com.h"
#include "windows/fabbrica.h"

namespace orve::prova {

using adapters::win32::ComPtr;
using adapters::win32::VariantCom;
using adapters::win32::Verifica;

namespace {

// Absent for what is no object.
ComPtr<IDispatch> OggettoDi(const VariantCom& valore) {
  return ComPtr(V_VT(&valore.Get()) == VT_DISPATCH ? V_DISPATCH(&valore.Get()) : nullptr);
}

// The same identifier for the same name in every process, so that tests that run at once agree.
GUID IdentificatorePer(const std::wstring& nome) {
  const auto impasta = [&](std::uint64_t seme) {
    for (const wchar_t lettera : nome)
      seme = (seme ^ static_cast<std::uint64_t>(towlower(lettera))) * 0x100000001B3ULL;
    return seme;
  };
  const std::array<std::uint64_t, 2> meta{impasta(0xCBF29CE484222325ULL), impasta(0x9AE16A3B2F90404FULL)};
  GUID guid;
  static_assert(sizeof(guid) == sizeof(meta));
  std::memcpy(&guid, meta.data(), sizeof(guid));
  guid.Data3 = static_cast<unsigned short>((guid.Data3 & 0x0FFF) | 0x8000);  // of a private form
  guid.Data4[0] = static_cast<unsigned char>((guid.Data4[0] & 0x3F) | 0x80);
  return guid;
}

void Annota(HKEY radice, const std::wstring& nome, const GUID& guid) {
  std::array<wchar_t, 40> testo{};
  StringFromGUID2(guid, testo.data(), static_cast<int>(testo.size()));
  HKEY chiave = nullptr;
  const std::wstring percorso = L"Software\\Classes\\" + nome + L"\\CLSID";
  const LSTATUS creata = RegCreateKeyExW(radice, percorso.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                                         KEY_SET_VALUE, nullptr, &chiave, nullptr);
  if (creata != ERROR_SUCCESS) Verifica(HRESULT_FROM_WIN32(static_cast<DWORD>(creata)));
  RegSetValueExW(chiave, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(testo.data()),
                 static_cast<DWORD>((wcslen(testo.data()) + 1) * sizeof(wchar_t)));
  RegCloseKey(chiave);
}

class OggettoSpiato final : public OggettoSenzaTipo {
 public:
  OggettoSpiato(std::wstring nome, ComPtr<IDispatch> oggetto, std::function<void(const std::string&)> scrivi)
      : nome_(std::move(nome)), oggetto_(std::move(oggetto)), scrivi_(std::move(scrivi)) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*riservato*/, LPOLESTR* nomi, UINT quanti, LCID /*lingua*/,
                                          DISPID* numeri) override {
    if (quanti != 1) return DISP_E_UNKNOWNNAME;
    membri_.emplace_back(nomi[0]);
    numeri[0] = static_cast<DISPID>(membri_.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID /*riservato*/, LCID /*lingua*/, WORD modi,
                                   DISPPARAMS* argomenti, VARIANT* risultato, EXCEPINFO* eccezione,
                                   UINT* /*argomentoErrato*/) override {
    return Rispondi([&] { return Passa(membro, modi, *argomenti); }, risultato, eccezione);
  }

 private:
  VariantCom Passa(DISPID membro, WORD modi, const DISPPARAMS& argomenti) {
    if (membro < 0 || static_cast<std::size_t>(membro) > membri_.size()) {
      throw host::Errore(host::kMembroNonSupportato);
    }
    const std::wstring nomeMembro =
        membro == DISPID_VALUE ? L"(predefinito)" : membri_[static_cast<std::size_t>(membro) - 1];
    const Argomenti valori(argomenti);
    std::string riga = adapters::win32::ToUtf8(nome_ + L"." + nomeMembro);
    const bool segreto = nomeMembro == L"Password";
    for (std::size_t indice = 0; indice < valori.Quanti(); ++indice) {
      riga += " " + (segreto ? std::string("***") : valori.Testo(indice));
    }
    scrivi_(riga);
    const DISPID numero = membro == DISPID_VALUE ? DISPID_VALUE : NumeroDi(*oggetto_.Get(), nomeMembro);
    if (numero == DISPID_UNKNOWN) return {};
    // By value: Wine's JScript takes no references.
    std::vector<VARIANT> passati;
    for (std::size_t indice = 0; indice < valori.Quanti(); ++indice) passati.push_back(valori[indice]);
    try {
      return Chiama(*oggetto_.Get(), numero, modi, passati);
    } catch (const host::Errore& errore) {
      // Wine's JScript refuses to read a value that may be a method.
      const bool lettura = passati.empty() && (modi & DISPATCH_PROPERTYGET) != 0;
      if (!lettura || errore.Numero() != E_FAIL) throw;
      return Chiama(*oggetto_.Get(), numero, DISPATCH_PROPERTYGET);
    }
  }

  std::wstring nome_;
  ComPtr<IDispatch> oggetto_;
  std::function<void(const std::string&)> scrivi_;
  std::vector<std::wstring> membri_;
};

}  // namespace

void ClassiRecitate::Recita(const std::wstring& classe, std::function<VariantCom()> fabbrica) {
  CLSID identificatore = CLSID_NULL;
  if (classe.starts_with(L"{")) {
    Verifica(CLSIDFromString(classe.c_str(), &identificatore));
  } else if (FAILED(CLSIDFromProgID(classe.c_str(), &identificatore))) {
    identificatore = IdentificatorePer(classe);
    Annota(HKEY_CURRENT_USER, classe, identificatore);
    // Wine 8 finds no classes of the current user.
    CLSID trovato = CLSID_NULL;
    if (FAILED(CLSIDFromProgID(classe.c_str(), &trovato))) Annota(HKEY_LOCAL_MACHINE, classe, identificatore);
  }
  const ComPtr<Fabbrica> nuova(
      new Fabbrica([fabbrica = std::move(fabbrica)] { return OggettoDi(fabbrica()); }));
  DWORD registrazione = 0;
  Verifica(CoRegisterClassObject(identificatore, nuova.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                 &registrazione));
  registrazioni_.push_back(registrazione);
}

void ClassiRecitate::Ritira() noexcept {
  for (const DWORD registrazione : registrazioni_) CoRevokeClassObject(registrazione);
  registrazioni_.clear();
}

ComPtr<IDispatch> Spia(std::wstring nome, ComPtr<IDispatch> oggetto,
                       std::function<void(const std::string&)> scrivi) {
  return ComPtr<IDispatch>(new OggettoSpiato(std::move(nome), std::move(oggetto), std::move(scrivi)));
}

}  // namespace orve::prova
