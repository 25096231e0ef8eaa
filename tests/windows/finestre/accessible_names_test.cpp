// What a screen reader is told about the controls. The system's service for that, which Wine lacks, is
// played.
#include <windows.h>

#include <initguid.h>

// The ids come before the interface: the header only declares them.
#include <oleacc.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "forms/lettura_tavola.h"
#include "prova.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {
namespace {

/// Takes the names, by window.
class ServiziRecitati final : public IClassFactory, public IAccPropServices {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    if (iid == IID_IUnknown || iid == IID_IClassFactory) {
      *oggetto = static_cast<IClassFactory*>(this);
    } else if (iid == IID_IAccPropServices) {
      *oggetto = static_cast<IAccPropServices*>(this);
    } else {
      *oggetto = nullptr;
      return E_NOINTERFACE;
    }
    ++tenuti;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++tenuti); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--tenuti); }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*esterno*/, REFIID iid, void** oggetto) override {
    return QueryInterface(iid, oggetto);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*blocca*/) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE SetHwndPropStr(HWND finestra, DWORD oggetto, DWORD figlio, MSAAPROPID proprieta,
                                           LPCWSTR testo) override {
    EXPECT_EQ(static_cast<LONG>(oggetto), OBJID_CLIENT);
    EXPECT_EQ(static_cast<LONG>(figlio), CHILDID_SELF);
    EXPECT_TRUE(IsEqualGUID(proprieta, PROPID_ACC_NAME));
    nomi[finestra] = Stretto(testo);
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                          AnnoScope) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetHwndProp(HWND, DWORD, DWORD, MSAAPROPID, VARIANT) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                              AnnoScope) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ClearHwndProps(HWND, DWORD, DWORD, const MSAAPROPID*, int) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                               AnnoScope) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override {
    return E_NOTIMPL;
  }

  std::map<HWND, std::string> nomi;
  int tenuti = 0;
};

class NomiDetti : public FinestraVera {
 protected:
  void SetUp() override {
    ASSERT_EQ(CoInitialize(nullptr), S_OK);
    ASSERT_EQ(CoRegisterClassObject(CLSID_AccPropServices, static_cast<IClassFactory*>(&servizi_),
                                    CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registrazione_),
              S_OK);
    tenuti_ = servizi_.tenuti;
  }
  void TearDown() override {
    EXPECT_EQ(servizi_.tenuti, tenuti_) << "the service is held on to";
    CoRevokeClassObject(registrazione_);
    CoUninitialize();
  }
  [[nodiscard]] std::string Detto(const Vista& finestra, const std::string& nome) {
    std::string detto;
    auto* controllo = finestra.Trova(nome);
    programma.Esegui([&] {
      const auto trovato = servizi_.nomi.find(controllo);
      if (trovato != servizi_.nomi.end()) detto = trovato->second;
    });
    return detto;
  }

 private:
  ServiziRecitati servizi_;
  DWORD registrazione_ = 0;
  int tenuti_ = 0;
};

TEST_F(NomiDetti, EveryControlOfTheComposeWindowThatTheKeyboardReachesHasItsName) {
  Apri([this](const Vista& finestra) {
    for (const auto* controllo : forms::OrdineDiTastiera(LayoutOpzMail())) {
      const std::string detto = Detto(finestra, std::string(controllo->nome));
      EXPECT_NE(detto, "") << controllo->nome;
      EXPECT_EQ(detto.find('&'), std::string::npos) << controllo->nome;
    }
    // A box is called by the caption beside it, a button by its own.
    EXPECT_EQ(Detto(finestra, "TXT_OGGETTO"), "Oggetto");
    EXPECT_EQ(Detto(finestra, "cmd_Invia"), "Invia");
  });
}

TEST_F(NomiDetti, EveryControlOfTheParametersWindowThatTheKeyboardReachesHasItsName) {
  Parametri([this](const Vista& finestra) {
    for (const auto* controllo : forms::OrdineDiTastiera(LayoutMailParams())) {
      EXPECT_NE(Detto(finestra, std::string(controllo->nome)), "") << controllo->nome;
    }
  });
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
