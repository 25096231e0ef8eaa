// Where the DLL registers its classes. The process sees the test's keys in place of the machine's and of the
// user's part of the registry; a volatile one takes no lasting entries, like the machine's for most users.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "orve_mailserver.h"

namespace orve {
namespace {

const std::wstring kProva = L"Software\\ORVE prova di registrazione";
const std::wstring kProgId = L"Software\\Classes\\ORVE_MAILSERVER.CLSFW_MAILSERVER";

std::wstring ChiaveClasse(REFCLSID classe) {
  std::array<wchar_t, 40> testo{};
  StringFromGUID2(classe, testo.data(), static_cast<int>(testo.size()));
  return std::wstring(L"Software\\Classes\\CLSID\\") + testo.data();
}

/// A key of the test, removed at its end.
class Chiave {
 public:
  Chiave(const std::wstring& nome, DWORD durata) : percorso_(kProva + L" " + nome) {
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, percorso_.c_str(), 0, nullptr, durata, KEY_ALL_ACCESS,
                              nullptr, &chiave_, nullptr),
              ERROR_SUCCESS);
  }
  Chiave(const Chiave&) = delete;
  Chiave& operator=(const Chiave&) = delete;
  Chiave(Chiave&&) = delete;
  Chiave& operator=(Chiave&&) = delete;
  ~Chiave() {
    RegCloseKey(chiave_);
    RegDeleteTreeW(HKEY_CURRENT_USER, percorso_.c_str());
  }

  [[nodiscard]] HKEY Maniglia() const { return chiave_; }
  void Crea(const std::wstring& sotto, DWORD durata) const {
    HKEY creata = nullptr;
    EXPECT_EQ(RegCreateKeyExW(chiave_, sotto.c_str(), 0, nullptr, durata, KEY_ALL_ACCESS, nullptr, &creata,
                              nullptr),
              ERROR_SUCCESS);
    RegCloseKey(creata);
  }
  [[nodiscard]] bool Ha(const std::wstring& sotto) const {
    HKEY aperta = nullptr;
    if (RegOpenKeyExW(chiave_, sotto.c_str(), 0, KEY_READ, &aperta) != ERROR_SUCCESS) return false;
    RegCloseKey(aperta);
    return true;
  }
  [[nodiscard]] std::wstring Valore(const std::wstring& sotto, const wchar_t* nome = nullptr) const {
    std::wstring valore(MAX_PATH, L'\0');
    auto byte = static_cast<DWORD>(valore.size() * sizeof(wchar_t));
    if (RegGetValueW(chiave_, sotto.c_str(), nome, RRF_RT_REG_SZ, nullptr, valore.data(), &byte) !=
        ERROR_SUCCESS) {
      return L"(manca)";
    }
    return valore.c_str();
  }

 private:
  std::wstring percorso_;
  HKEY chiave_ = nullptr;
};

class Registrazione : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(CoInitialize(nullptr), S_OK);
    dll_ = LoadLibraryW(ORVE_DLL);
    ASSERT_NE(dll_, nullptr);
  }
  void TearDown() override {
    // Only this process takes the type library's entries not to be the machine's.
    EXPECT_EQ(Chiama("DllUnregisterServer"), S_OK);
    if (dll_ != nullptr) FreeLibrary(dll_);
    CoUninitialize();
  }

  HRESULT Chiama(const char* esportata) const {
    using SenzaArgomenti = HRESULT(STDAPICALLTYPE*)();
    const auto funzione =
        reinterpret_cast<SenzaArgomenti>(reinterpret_cast<void*>(GetProcAddress(dll_, esportata)));
    return funzione != nullptr ? funzione() : E_NOINTERFACE;
  }
  /// With these two keys in place of the registry's own.
  HRESULT Chiama(const char* esportata, const Chiave& macchina, const Chiave& utente) const {
    EXPECT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, macchina.Maniglia()), ERROR_SUCCESS);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, utente.Maniglia()), ERROR_SUCCESS);
    const HRESULT esito = Chiama(esportata);
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    return esito;
  }
  [[nodiscard]] std::wstring PercorsoDll() const {
    std::array<wchar_t, MAX_PATH> percorso{};
    GetModuleFileNameW(dll_, percorso.data(), static_cast<DWORD>(percorso.size()));
    return percorso.data();
  }

  HMODULE dll_ = nullptr;
};

void EsigeClasse(const Chiave& radice, REFCLSID classe, const std::wstring& nome, const std::wstring& dll) {
  const std::wstring chiave = ChiaveClasse(classe);
  EXPECT_EQ(radice.Valore(chiave), nome);
  EXPECT_EQ(radice.Valore(chiave + L"\\InprocServer32"), dll);
  EXPECT_EQ(radice.Valore(chiave + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  EXPECT_EQ(radice.Valore(chiave + L"\\ProgID"), nome);
  EXPECT_EQ(L"Software\\Classes\\CLSID\\" + radice.Valore(L"Software\\Classes\\" + nome + L"\\CLSID"),
            chiave);
}

void EsigeTutte(const Chiave& radice, const std::wstring& dll) {
  EsigeClasse(radice, CLSID_CLSFW_MAILSERVER, L"ORVE_MAILSERVER.CLSFW_MAILSERVER", dll);
  EsigeClasse(radice, CLSID_CollDestinatari, L"ORVE_MAILSERVER.CollDestinatari", dll);
  EsigeClasse(radice, CLSID_CollMittenti, L"ORVE_MAILSERVER.CollMittenti", dll);
  EsigeClasse(radice, CLSID_Mittente, L"ORVE_MAILSERVER.Mittente", dll);
  EXPECT_FALSE(radice.Ha(ChiaveClasse(CLSID_Destinatario)));
}

TEST_F(Registrazione, EntersTheClassesForAllUsers) {
  const Chiave macchina(L"macchina", REG_OPTION_NON_VOLATILE);
  const Chiave utente(L"utente", REG_OPTION_NON_VOLATILE);
  EXPECT_EQ(Chiama("DllRegisterServer", macchina, utente), S_OK);
  EsigeTutte(macchina, PercorsoDll());
  EXPECT_FALSE(utente.Ha(L"Software"));
  EXPECT_EQ(Chiama("DllUnregisterServer", macchina, utente), S_OK);
  EXPECT_FALSE(macchina.Ha(ChiaveClasse(CLSID_CLSFW_MAILSERVER)));
  EXPECT_FALSE(macchina.Ha(kProgId));
}

TEST_F(Registrazione, EntersThemForThePresentUserWhereTheMachineTakesNone) {
  const Chiave macchina(L"macchina", REG_OPTION_VOLATILE);
  const Chiave utente(L"utente", REG_OPTION_NON_VOLATILE);
  EXPECT_EQ(Chiama("DllRegisterServer", macchina, utente), S_OK);
  EsigeTutte(utente, PercorsoDll());
  EXPECT_FALSE(macchina.Ha(L"Software"));
  EXPECT_EQ(Chiama("DllUnregisterServer", macchina, utente), S_OK);
  EXPECT_FALSE(utente.Ha(ChiaveClasse(CLSID_CLSFW_MAILSERVER)));
  EXPECT_FALSE(utente.Ha(kProgId));
}

// Left there, they would hide nothing, and be hidden by the user's own.
TEST_F(Registrazione, TakesBackWhatWasEnteredForAllBeforeTheRightsEnded) {
  const Chiave macchina(L"macchina", REG_OPTION_NON_VOLATILE);
  const Chiave utente(L"utente", REG_OPTION_NON_VOLATILE);
  macchina.Crea(kProgId,
                REG_OPTION_VOLATILE);  // the class can be written, its name's key takes no key below it
  EXPECT_EQ(Chiama("DllRegisterServer", macchina, utente), S_OK);
  EXPECT_FALSE(macchina.Ha(ChiaveClasse(CLSID_CLSFW_MAILSERVER)));
  EXPECT_FALSE(macchina.Ha(kProgId));
  EsigeTutte(utente, PercorsoDll());
}

TEST_F(Registrazione, AnEarlierPlaceIsReplaced) {
  const Chiave macchina(L"macchina", REG_OPTION_NON_VOLATILE);
  const Chiave utente(L"utente", REG_OPTION_NON_VOLATILE);
  const std::wstring dove = ChiaveClasse(CLSID_Mittente) + L"\\InprocServer32";
  macchina.Crea(dove, REG_OPTION_NON_VOLATILE);
  const std::wstring vecchio = L"C:\\vecchio\\orve_mailserver.dll";
  RegSetKeyValueW(macchina.Maniglia(), dove.c_str(), nullptr, REG_SZ, vecchio.c_str(),
                  static_cast<DWORD>((vecchio.size() + 1) * sizeof(wchar_t)));
  EXPECT_EQ(Chiama("DllRegisterServer", macchina, utente), S_OK);
  EsigeTutte(macchina, PercorsoDll());
}

TEST_F(Registrazione, NowhereToEnterThemIsAnError) {
  const Chiave macchina(L"macchina", REG_OPTION_VOLATILE);
  const Chiave utente(L"utente", REG_OPTION_VOLATILE);
  EXPECT_TRUE(FAILED(Chiama("DllRegisterServer", macchina, utente)));
  EXPECT_EQ(Chiama("DllUnregisterServer", macchina, utente), S_OK);
}

}  // namespace
}  // namespace orve
