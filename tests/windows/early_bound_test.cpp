// A client built against the header of the type library: it calls through the dual interfaces and knows the
// DLL by its exports only, without any entry in the registry.
#include <windows.h>

#include <ocidl.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "orve_mailserver.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve {
namespace {

using win32::Bstr;
using win32::ComPtr;
using win32::VariantCom;

constexpr GUID kMessaggiPlayed = {
    0x3b1f0d52, 0x54c8, 0x4c55, {0x8e, 0x0a, 0x77, 0x1d, 0x52, 0xc9, 0x31, 0x08}};

template <class Funzione>
Funzione Esportata(HMODULE modulo, const char* nome) {
  return reinterpret_cast<Funzione>(reinterpret_cast<void*>(GetProcAddress(modulo, nome)));
}

// Stands for the host's message object, which the service creates at its birth, and for a database without
// rows.
class MessaggiMuti final : public IClassFactory, public IDispatch {
 public:
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
    numeri[0] = nome == L"EOF" ? kFine : nome == L"Execute" ? kRighe : kMessaggio;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* risultato,
                                   EXCEPINFO*, UINT*) override {
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
  enum Membro : DISPID { kFine = 1, kRighe, kMessaggio };
};

// A handler of the event in C++: notes the texts that it gets and changes the subject.
class Ascoltatore final : public IDispatch {
 public:
  std::vector<std::string> visti;
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
      visti.push_back(win32::FromBstr(*V_BSTRREF(&argomento)));
    }
    BSTR* oggetto = V_BSTRREF(&argomenti->rgvarg[5]);
    SysReAllocString(oggetto, (win32::ToWide(visti[0]) + L" cambiato").c_str());
    return esito;
  }
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

  // The message object's name is entered for the time of this process' test.
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

TEST_F(ClienteAnticipato, TheRecipientCannotBeCreated) {
  ComPtr<IClassFactory> fabbrica;
  EXPECT_EQ(daClasse_(CLSID_Destinatario, IID_IClassFactory, fabbrica.UscitaVoid()),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_FALSE(fabbrica);
}

TEST_F(ClienteAnticipato, AnUnknownClassIsRefused) {
  ComPtr<IClassFactory> fabbrica;
  EXPECT_EQ(daClasse_(IID_IDispatch, IID_IClassFactory, fabbrica.UscitaVoid()), CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(ClienteAnticipato, TheFactoryWorksUnregisteredAndRefusesAggregation) {
  ComPtr<IClassFactory> fabbrica;
  ASSERT_EQ(daClasse_(CLSID_Mittente, IID_IClassFactory, fabbrica.UscitaVoid()), S_OK);
  void* oggetto = nullptr;
  EXPECT_EQ(fabbrica->CreateInstance(fabbrica.Get(), IID_IUnknown, &oggetto), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(oggetto, nullptr);
}

TEST_F(ClienteAnticipato, TheDllStaysWhileAnObjectOrALockIsHeld) {
  EXPECT_EQ(scaricabile_(), S_OK);
  auto mittente = Crea<IMittente>(CLSID_Mittente);
  EXPECT_EQ(scaricabile_(), S_FALSE);
  mittente.Reset();
  EXPECT_EQ(scaricabile_(), S_OK);
  ComPtr<IClassFactory> fabbrica;
  ASSERT_EQ(daClasse_(CLSID_Mittente, IID_IClassFactory, fabbrica.UscitaVoid()), S_OK);
  fabbrica->LockServer(TRUE);
  IClassFactory* const bloccata = fabbrica.Get();
  fabbrica.Reset();
  EXPECT_EQ(scaricabile_(), S_FALSE);
  bloccata->LockServer(FALSE);
  EXPECT_EQ(scaricabile_(), S_OK);
}

TEST_F(ClienteAnticipato, MembersOfARecipientAreCalledThroughTheVtable) {
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  Bstr indirizzo = win32::ToBstr("anna@x.example");
  Bstr nome = win32::ToBstr("Anna Più €");
  short casella = 2;
  ComPtr<IDestinatario> destinatario;
  // Optional arguments by reference are left out as null pointers.
  ASSERT_EQ(
      coll->AddFromLista(indirizzo.Uscita(), nullptr, nullptr, &casella, nullptr, destinatario.Uscita()),
      S_OK);
  indirizzo = win32::ToBstr("anna@x.example");
  BSTR testo = indirizzo.Get();
  BSTR testoNome = nome.Get();
  ASSERT_EQ(coll->Add(&testo, &testoNome, nullptr, nullptr, destinatario.Uscita()), S_OK);
  EXPECT_EQ(testo, indirizzo.Get()) << "an argument by reference was changed";
  Bstr letto;
  ASSERT_EQ(destinatario->get_Nome(letto.Uscita()), S_OK);
  EXPECT_EQ(win32::FromBstr(letto.Get()), "Anna Più €");
  ASSERT_EQ(destinatario->put_Casella(7), S_OK);
  ASSERT_EQ(destinatario->get_Casella(&casella), S_OK);
  EXPECT_EQ(casella, 7);
  LONG quanti = 0;
  ASSERT_EQ(coll->get_Count(&quanti), S_OK);
  EXPECT_EQ(quanti, 2);
  // The same recipient is the same object.
  VariantCom indice;
  V_VT(&indice.Get()) = VT_I4;
  V_I4(&indice.Get()) = 2;
  ComPtr<IDestinatario> stesso;
  ASSERT_EQ(coll->get_Item(indice.Get(), stesso.Uscita()), S_OK);
  EXPECT_EQ(stesso.Get(), destinatario.Get());
}

TEST_F(ClienteAnticipato, ANullResultPointerIsRefused) {
  const auto mittente = Crea<IMittente>(CLSID_Mittente);
  EXPECT_EQ(mittente->get_Port(nullptr), E_POINTER);
  EXPECT_EQ(mittente->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ClienteAnticipato, AnErrorTravelsAsNumberSourceAndDescription) {
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  const auto sostegno = coll.Come<ISupportErrorInfo>(IID_ISupportErrorInfo);
  ASSERT_TRUE(sostegno);
  EXPECT_EQ(sostegno->InterfaceSupportsErrorInfo(IID_ICollDestinatari), S_OK);
  EXPECT_EQ(sostegno->InterfaceSupportsErrorInfo(IID_IMittente), S_FALSE);
  VariantCom indice;
  V_VT(&indice.Get()) = VT_I4;
  V_I4(&indice.Get()) = 1;
  ComPtr<IDestinatario> nessuno;
  EXPECT_EQ(coll->get_Item(indice.Get(), nessuno.Uscita()), static_cast<HRESULT>(0x800A0009));
  ComPtr<IErrorInfo> errore;
  ASSERT_EQ(GetErrorInfo(0, errore.Uscita()), S_OK);
  Bstr testo;
  ASSERT_EQ(errore->GetSource(testo.Uscita()), S_OK);
  EXPECT_EQ(win32::FromBstr(testo.Get()), "ORVE_MAILSERVER");
  ASSERT_EQ(errore->GetDescription(testo.Uscita()), S_OK);
  EXPECT_EQ(win32::FromBstr(testo.Get()), "Indice non compreso nell'intervallo");
  GUID interfaccia = GUID_NULL;
  ASSERT_EQ(errore->GetGUID(&interfaccia), S_OK);
  EXPECT_EQ(interfaccia, IID_ICollDestinatari);
}

TEST_F(ClienteAnticipato, TheEnumeratorWalksSkipsResetsAndClones) {
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  for (const char* nome : {"a", "b", "c"}) {
    const Bstr indirizzo = win32::ToBstr(nome);
    BSTR testo = indirizzo.Get();
    ComPtr<IDestinatario> nuovo;
    ASSERT_EQ(coll->Add(&testo, nullptr, nullptr, nullptr, nuovo.Uscita()), S_OK);
  }
  ComPtr<IUnknown> ignoto;
  ASSERT_EQ(coll->get_NewEnum(ignoto.Uscita()), S_OK);
  const auto enumeratore = ignoto.Come<IEnumVARIANT>(IID_IEnumVARIANT);
  ASSERT_TRUE(enumeratore);
  EXPECT_EQ(enumeratore->Skip(1), S_OK);
  ComPtr<IEnumVARIANT> copia;
  ASSERT_EQ(enumeratore->Clone(copia.Uscita()), S_OK);
  VARIANT voci[3];
  ULONG presi = 0;
  EXPECT_EQ(enumeratore->Next(3, voci, &presi), S_FALSE);
  EXPECT_EQ(presi, 2U);
  for (ULONG indice = 0; indice < presi; ++indice) VariantClear(&voci[indice]);
  EXPECT_EQ(enumeratore->Next(1, voci, &presi), S_FALSE);
  EXPECT_EQ(enumeratore->Skip(1), S_FALSE);
  EXPECT_EQ(enumeratore->Reset(), S_OK);
  EXPECT_EQ(enumeratore->Skip(3), S_OK);
  EXPECT_EQ(copia->Next(2, voci, &presi), S_OK);
  for (ULONG indice = 0; indice < presi; ++indice) VariantClear(&voci[indice]);
}

TEST_F(ClienteAnticipato, TheEventReachesASinkThatChangesTheSubject) {
  RecitaMessaggi();
  Ascoltatore ascoltatore;
  {
    const auto servizio = Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER);
    ASSERT_TRUE(servizio);
    const auto informazioni = servizio.Come<IProvideClassInfo2>(IID_IProvideClassInfo2);
    ASSERT_TRUE(informazioni);
    GUID eventi = GUID_NULL;
    EXPECT_EQ(informazioni->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &eventi), S_OK);
    EXPECT_EQ(eventi, DIID_DCLSFW_MAILSERVEREventi);
    const auto contenitore = servizio.Come<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ASSERT_TRUE(contenitore);
    ComPtr<IConnectionPoint> punto;
    EXPECT_EQ(contenitore->FindConnectionPoint(IID_IDispatch, punto.Uscita()), CONNECT_E_NOCONNECTION);
    ASSERT_EQ(contenitore->FindConnectionPoint(eventi, punto.Uscita()), S_OK);
    DWORD numero = 0;
    ASSERT_EQ(punto->Advise(&ascoltatore, &numero), S_OK);

    ASSERT_EQ(servizio->putref_ConnectionADO(&messaggi_), S_OK);
    ComPtr<IDispatch> connessione;
    ASSERT_EQ(servizio->get_ConnectionADO(connessione.Uscita()), S_OK);
    EXPECT_EQ(connessione.Get(), static_cast<IDispatch*>(&messaggi_));
    const Bstr oggetto = win32::ToBstr("Fattura");
    ASSERT_EQ(servizio->put_vOggetto(oggetto.Get()), S_OK);
    ASSERT_EQ(servizio->put_vFlagCorpo(1), S_OK);
    ASSERT_EQ(servizio->put_SrvMailInstallato(::kvSMTPMail), S_OK);
    ASSERT_EQ(servizio->put_ModalitaInvio(::kvAutomatico), S_OK);
    VARIANT mancante;
    VariantInit(&mancante);
    V_VT(&mancante) = VT_ERROR;
    V_ERROR(&mancante) = DISP_E_PARAMNOTFOUND;
    const Bstr destinatari = win32::ToBstr("Anna<anna@x.example>");
    ASSERT_EQ(servizio->put_DestinatariA(destinatari.Get()), S_OK);
    ASSERT_EQ(servizio->AvviaProceduraInvio(mancante, ::kvDestinatarioFaxAnagrafica), S_OK);
    ASSERT_EQ(ascoltatore.visti.size(), 6U);
    EXPECT_EQ(ascoltatore.visti[0], "Fattura");
    EXPECT_EQ(ascoltatore.visti[2], "Anna<anna@x.example>;<>");
    Bstr letto;
    ASSERT_EQ(servizio->get_vOggetto(letto.Uscita()), S_OK);
    EXPECT_EQ(win32::FromBstr(letto.Get()), "Fattura cambiato");

    ASSERT_EQ(punto->Unadvise(numero), S_OK);
    EXPECT_EQ(punto->Unadvise(numero), CONNECT_E_NOCONNECTION);
    ascoltatore.visti.clear();
    ASSERT_EQ(servizio->AvviaProceduraInvio(mancante, ::kvDestinatarioFaxAnagrafica), S_OK);
    EXPECT_TRUE(ascoltatore.visti.empty());
  }
  RitiraMessaggi();
  EXPECT_EQ(ascoltatore.riferimenti, 0);
}

// A key that stands for a root of the registry, so that a test writes where nobody looks.
class RadiceDiProva {
 public:
  RadiceDiProva(HKEY radice, const wchar_t* nome, REGSAM diritti) : radice_(radice), nome_(nome) {
    HKEY scrivibile = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, nome, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                    &scrivibile, nullptr);
    RegCloseKey(scrivibile);
    RegOpenKeyExW(HKEY_CURRENT_USER, nome, 0, diritti, &chiave_);
  }
  RadiceDiProva(const RadiceDiProva&) = delete;
  RadiceDiProva& operator=(const RadiceDiProva&) = delete;
  RadiceDiProva(RadiceDiProva&&) = delete;
  RadiceDiProva& operator=(RadiceDiProva&&) = delete;
  ~RadiceDiProva() {
    RegOverridePredefKey(radice_, nullptr);
    RegCloseKey(chiave_);
    RegDeleteTreeW(HKEY_CURRENT_USER, nome_);
  }
  void Sostituisci() const { RegOverridePredefKey(radice_, chiave_); }
  [[nodiscard]] std::string Valore(const std::wstring& percorso, const wchar_t* nome) const {
    wchar_t testo[512] = {};
    DWORD misura = sizeof(testo) - sizeof(wchar_t);
    const LSTATUS letto =
        RegGetValueW(chiave_, percorso.c_str(), nome, RRF_RT_REG_SZ, nullptr, testo, &misura);
    return letto == ERROR_SUCCESS ? win32::ToUtf8(testo) : "(assente)";
  }

 private:
  HKEY radice_;
  const wchar_t* nome_;
  HKEY chiave_ = nullptr;
};

TEST_F(ClienteAnticipato, RegisteringEntersTheCreatableClassesAndUnregisteringTakesThemAway) {
  const RadiceDiProva macchina(HKEY_LOCAL_MACHINE, L"Software\\orve-prova", KEY_ALL_ACCESS);
  macchina.Sostituisci();
  ASSERT_EQ(Esportata<SenzaArgomenti>(modulo_, "DllRegisterServer")(), S_OK);
  const std::wstring classe =
      L"Software\\Classes\\CLSID\\" +
      win32::ToWide(macchina.Valore(L"Software\\Classes\\ORVE_MAILSERVER.Mittente\\CLSID", L""));
  EXPECT_TRUE(macchina.Valore(classe + L"\\InprocServer32", L"").ends_with("orve_mailserver.dll"));
  EXPECT_EQ(macchina.Valore(classe + L"\\InprocServer32", L"ThreadingModel"), "Apartment");
  EXPECT_EQ(macchina.Valore(classe + L"\\ProgID", L""), "ORVE_MAILSERVER.Mittente");
  EXPECT_EQ(macchina.Valore(L"Software\\Classes\\ORVE_MAILSERVER.Destinatario\\CLSID", L""), "(assente)");
  EXPECT_EQ(Esportata<SenzaArgomenti>(modulo_, "DllUnregisterServer")(), S_OK);
  EXPECT_EQ(macchina.Valore(classe + L"\\InprocServer32", L""), "(assente)");
  EXPECT_EQ(macchina.Valore(L"Software\\Classes\\ORVE_MAILSERVER.Mittente\\CLSID", L""), "(assente)");
  EXPECT_EQ(Esportata<SenzaArgomenti>(modulo_, "DllUnregisterServer")(), S_OK)
      << "what is not there is no failure";
}

// The classes are entered for each width of programs, their names once for both.
TEST_F(ClienteAnticipato, UnregisteringLeavesTheNamesThatProgramsOfTheOtherWidthCreateBy) {
  constexpr REGSAM kAltraVista = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  wchar_t testo[40];
  StringFromGUID2(CLSID_Mittente, testo, 40);
  const std::wstring classe = std::wstring(L"Software\\Classes\\CLSID\\") + testo;
  const auto classeDelNome = [](const wchar_t* nome) {
    wchar_t letto[40] = {};
    DWORD misura = sizeof(letto);
    const std::wstring chiave = std::wstring(L"Software\\Classes\\") + nome + L"\\CLSID";
    return RegGetValueW(HKEY_LOCAL_MACHINE, chiave.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, letto,
                        &misura) == ERROR_SUCCESS
               ? std::wstring(letto)
               : std::wstring();
  };
  const auto registra = Esportata<SenzaArgomenti>(modulo_, "DllRegisterServer");
  const auto togli = Esportata<SenzaArgomenti>(modulo_, "DllUnregisterServer");
  ASSERT_EQ(registra(), S_OK);
  HKEY altra = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, classe.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                            KEY_SET_VALUE | kAltraVista, nullptr, &altra, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(altra);

  EXPECT_EQ(togli(), S_OK);
  HKEY propria = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, classe.c_str(), 0, KEY_QUERY_VALUE, &propria),
            ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(classeDelNome(L"ORVE_MAILSERVER.Mittente"), testo);
  EXPECT_EQ(classeDelNome(L"ORVE_MAILSERVER.CollMittenti"), L"") << "the other width has no such class";

  ASSERT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, classe.c_str(), kAltraVista, 0), ERROR_SUCCESS);
  EXPECT_EQ(togli(), S_OK);
  EXPECT_EQ(classeDelNome(L"ORVE_MAILSERVER.Mittente"), L"");
}

}  // namespace
}  // namespace orve
