// Shared by the tests that call the DLL as a program built against its header does: the exports, a message
// object played, and a handler of the event.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "orve_mailserver.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve::prova {

using adapters::win32::ComPtr;

inline constexpr GUID kMessaggiPlayed = {
    0x3b1f0d52, 0x54c8, 0x4c55, {0x8e, 0x0a, 0x77, 0x1d, 0x52, 0xc9, 0x31, 0x08}};

template <class Funzione>
Funzione Esportata(HMODULE modulo, const char* nome) {
  return reinterpret_cast<Funzione>(reinterpret_cast<void*>(GetProcAddress(modulo, nome)));
}

// Stands for the host's message object, which the service creates on construction, and for a database without
// rows.
class MessaggiMuti final : public IClassFactory, public IDispatch {
 public:
  std::vector<std::string> detti;  // the texts of the messages, in their order

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    if (iid == IID_IDispatch) {
      *oggetto = static_cast<IDispatch*>(this);
    } else if (iid == IID_IUnknown || iid == IID_IClassFactory) {
      *oggetto = static_cast<IClassFactory*>(this);
    } else {
      *oggetto = nullptr;
      return E_NOINTERFACE;
    }
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*esterno*/, REFIID iid, void** oggetto) override {
    return QueryInterface(iid, oggetto);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*blocca*/) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quanti) override {
    *quanti = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* nomi, UINT, LCID, DISPID* numeri) override {
    const std::wstring nome = nomi[0];
    numeri[0] = nome == L"EOF"         ? kFine
                : nome == L"Execute"   ? kRighe
                : nome == L"MostraMsg" ? kMessaggio
                                       : kAltro;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID, LCID, WORD, DISPPARAMS* argomenti,
                                   VARIANT* risultato, EXCEPINFO*, UINT*) override {
    if (membro == kMessaggio && argomenti->cArgs == 4) {
      detti.push_back(adapters::win32::FromCom(argomenti->rgvarg[3]).ToText());
    }
    if (risultato == nullptr) return S_OK;
    VariantInit(risultato);
    if (membro == kFine) {
      V_VT(risultato) = VT_BOOL;
      V_BOOL(risultato) = VARIANT_TRUE;
    } else if (membro == kRighe) {
      V_VT(risultato) = VT_DISPATCH;
      V_DISPATCH(risultato) = this;
    } else {
      V_VT(risultato) = VT_I4;
      V_I4(risultato) = 0;
    }
    return S_OK;
  }

 private:
  enum Membro : DISPID { kFine = 1, kRighe, kMessaggio, kAltro };
};

// A call by number, as made by languages that have no header. The arguments go last to first, named ones
// before the others.
struct ChiamataTardiva {
  HRESULT esito = S_OK;
  adapters::win32::VariantCom risultato;
  EXCEPINFO eccezione{};

  ChiamataTardiva(IDispatch* oggetto, const wchar_t* membro, WORD modo, std::vector<VARIANT> argomenti,
                  std::vector<DISPID> nominati = {}) {
    auto* nome = const_cast<LPOLESTR>(membro);
    DISPID numero = DISPID_UNKNOWN;
    EXPECT_EQ(oggetto->GetIDsOfNames(IID_NULL, &nome, 1, LOCALE_USER_DEFAULT, &numero), S_OK);
    DISPPARAMS parametri{argomenti.data(), nominati.data(), static_cast<UINT>(argomenti.size()),
                         static_cast<UINT>(nominati.size())};
    esito = oggetto->Invoke(numero, IID_NULL, LOCALE_USER_DEFAULT, modo, &parametri, risultato.Uscita(),
                            &eccezione, nullptr);
  }
};

// A handler of the event in C++: notes the texts that it gets and appends its word to the subject.
class Ascoltatore final : public IDispatch {
 public:
  explicit Ascoltatore(std::string parola = "cambiato") : parola_(std::move(parola)) {}

  std::vector<std::string> visti;
  std::function<void()> azione;
  HRESULT esito = S_OK;
  int riferimenti = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    *oggetto =
        iid == IID_IUnknown || iid == IID_IDispatch || iid == DIID_DCLSFW_MAILSERVEREventi ? this : nullptr;
    if (*oggetto == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++riferimenti); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--riferimenti); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quanti) override {
    *quanti = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID, LCID, WORD, DISPPARAMS* argomenti, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (membro != 1 || argomenti->cArgs != 6) return DISP_E_MEMBERNOTFOUND;
    visti.clear();
    for (UINT indice = 6; indice > 0; --indice) {
      const VARIANT& argomento = argomenti->rgvarg[indice - 1];
      if (V_VT(&argomento) != (VT_BSTR | VT_BYREF)) return DISP_E_TYPEMISMATCH;
      visti.push_back(adapters::win32::FromBstr(*V_BSTRREF(&argomento)));
    }
    BSTR* oggetto = V_BSTRREF(&argomenti->rgvarg[5]);
    SysReAllocString(oggetto, adapters::win32::ToWide(visti[0] + " " + parola_).c_str());
    if (azione) azione();
    return esito;
  }

 private:
  std::string parola_;
};

class ClienteAnticipato : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    modulo_ = LoadLibraryW(ORVE_DLL);
    ASSERT_NE(modulo_, nullptr);
    daClasse_ = Esportata<DaClasse>(modulo_, "DllGetClassObject");
    scaricabile_ = Esportata<SenzaArgomenti>(modulo_, "DllCanUnloadNow");
    ASSERT_NE(daClasse_, nullptr);
    ASSERT_NE(scaricabile_, nullptr);
  }
  void TearDown() override {
    if (scaricabile_ != nullptr) {
      EXPECT_EQ(scaricabile_(), S_OK) << "a test left an object behind";
    }
    if (modulo_ != nullptr) FreeLibrary(modulo_);
    CoUninitialize();
  }

  // The message object's name is registered for the time of this process's test.
  void RecitaMessaggi() {
    HKEY chiave = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\ORVE_LibSrv.Messaggi\\CLSID", 0,
                              nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &chiave, nullptr),
              ERROR_SUCCESS);
    CLSID presente = CLSID_NULL;
    if (FAILED(CLSIDFromProgID(L"ORVE_LibSrv.Messaggi", &presente))) {
      presente = kMessaggiPlayed;
      wchar_t testo[40];
      StringFromGUID2(kMessaggiPlayed, testo, 40);
      RegSetValueExW(chiave, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(testo), sizeof(wchar_t) * 39);
    }
    RegCloseKey(chiave);
    ASSERT_EQ(CoRegisterClassObject(presente, static_cast<IClassFactory*>(&messaggi_), CLSCTX_INPROC_SERVER,
                                    REGCLS_MULTIPLEUSE, &registrazione_),
              S_OK);
  }
  void RitiraMessaggi() { CoRevokeClassObject(registrazione_); }

  template <class Interfaccia>
  ComPtr<Interfaccia> Crea(REFCLSID classe) {
    ComPtr<IClassFactory> fabbrica;
    EXPECT_EQ(daClasse_(classe, IID_IClassFactory, fabbrica.UscitaVoid()), S_OK);
    ComPtr<Interfaccia> oggetto;
    if (fabbrica) {
      EXPECT_EQ(fabbrica->CreateInstance(nullptr, __uuidof(Interfaccia), oggetto.UscitaVoid()), S_OK);
    }
    return oggetto;
  }

  using DaClasse = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  using SenzaArgomenti = HRESULT(STDAPICALLTYPE*)();
  HMODULE modulo_ = nullptr;
  DaClasse daClasse_ = nullptr;
  SenzaArgomenti scaricabile_ = nullptr;
  MessaggiMuti messaggi_;
  DWORD registrazione_ = 0;
};

}  // namespace orve::prova
