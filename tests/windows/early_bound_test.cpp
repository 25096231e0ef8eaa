// A client built against the header of the type library: it calls through the dual interfaces and knows the
// DLL by its exports only, without any entry in the registry.
#include <windows.h>

#include <ocidl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "orve_mailserver.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"
#include "windows/cliente_anticipato.h"
#include "windows/uscita_debug.h"

namespace orve {
namespace {

using adapters::win32::Bstr;
using adapters::win32::ComPtr;
using adapters::win32::VariantCom;
using prova::ChiamataTardiva;
using prova::ClienteAnticipato;
using prova::Esportata;

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

TEST_F(ClienteAnticipato, AnUnlockTooManyIsNoHarm) {
  ComPtr<IClassFactory> fabbrica;
  ASSERT_EQ(daClasse_(CLSID_Mittente, IID_IClassFactory, fabbrica.UscitaVoid()), S_OK);
  EXPECT_EQ(fabbrica->LockServer(FALSE), S_OK);
  ComPtr<IMittente> mittente;
  EXPECT_EQ(fabbrica->CreateInstance(nullptr, IID_IMittente, mittente.UscitaVoid()), S_OK);
  mittente.Reset();
  // It has not used up the lock that follows.
  IClassFactory* const bloccata = fabbrica.Get();
  fabbrica->LockServer(TRUE);
  fabbrica.Reset();
  EXPECT_EQ(scaricabile_(), S_FALSE);
  bloccata->LockServer(FALSE);
}

TEST_F(ClienteAnticipato, ArgumentsAreTakenByTheirNames) {
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  wchar_t membro[] = L"AddFromLista";
  wchar_t indirizzo[] = L"Indirizzo";
  wchar_t casella[] = L"Casella";
  LPOLESTR nomi[] = {membro, casella, indirizzo};
  DISPID numeri[3] = {};
  ASSERT_EQ(coll->GetIDsOfNames(IID_NULL, nomi, 3, LOCALE_USER_DEFAULT, numeri), S_OK);
  const VariantCom testo = adapters::win32::ToCom("anna@x.example");
  const VariantCom numero = adapters::win32::ToCom(2);
  const ChiamataTardiva chiamata(coll.Get(), membro, DISPATCH_METHOD, {numero.Get(), testo.Get()},
                                 {numeri[1], numeri[2]});
  ASSERT_EQ(chiamata.esito, S_OK);
  const auto destinatario =
      ComPtr<IDispatch>(V_DISPATCH(&chiamata.risultato.Get())).Come<IDestinatario>(IID_IDestinatario);
  ASSERT_TRUE(destinatario);
  short letta = 0;
  EXPECT_EQ(destinatario->get_Casella(&letta), S_OK);
  EXPECT_EQ(letta, 2);
  Bstr letto;
  EXPECT_EQ(destinatario->get_Indirizzo(letto.Uscita()), S_OK);
  EXPECT_EQ(adapters::win32::FromBstr(letto.Get()), "anna@x.example");

  // One argument by its place, one by its name; and one by a name that the member does not have.
  const ChiamataTardiva mista(coll.Get(), membro, DISPATCH_METHOD, {numero.Get(), testo.Get()}, {numeri[1]});
  EXPECT_EQ(mista.esito, S_OK);
  const ChiamataTardiva ignota(coll.Get(), membro, DISPATCH_METHOD, {numero.Get(), testo.Get()}, {99});
  EXPECT_EQ(ignota.esito, DISP_E_PARAMNOTFOUND);
  const ChiamataTardiva senzaIndirizzo(coll.Get(), membro, DISPATCH_METHOD, {numero.Get()}, {numeri[1]});
  EXPECT_EQ(senzaIndirizzo.esito, DISP_E_BADPARAMCOUNT);
}

TEST_F(ClienteAnticipato, AnObjectAfterAReferenceIsSetLikeTheObjectItself) {
  RecitaMessaggi();
  {
    const auto servizio = Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER);
    ASSERT_TRUE(servizio);
    IDispatch* oggetto = &messaggi_;
    VARIANT riferimento;
    VariantInit(&riferimento);
    V_VT(&riferimento) = VT_DISPATCH | VT_BYREF;
    V_DISPATCHREF(&riferimento) = &oggetto;
    VARIANT variabile;
    VariantInit(&variabile);
    V_VT(&variabile) = VT_VARIANT | VT_BYREF;
    V_VARIANTREF(&variabile) = &riferimento;
    for (const VARIANT& valore : {riferimento, variabile}) {
      const ChiamataTardiva tolta(servizio.Get(), L"ConnectionADO", DISPATCH_PROPERTYPUTREF,
                                  {VariantCom::DiOggetto(nullptr).Get()}, {DISPID_PROPERTYPUT});
      ASSERT_EQ(tolta.esito, S_OK);
      const ChiamataTardiva posta(servizio.Get(), L"ConnectionADO", DISPATCH_PROPERTYPUTREF, {valore},
                                  {DISPID_PROPERTYPUT});
      EXPECT_EQ(posta.esito, S_OK);
      ComPtr<IDispatch> letto;
      ASSERT_EQ(servizio->get_ConnectionADO(letto.Uscita()), S_OK);
      EXPECT_EQ(letto.Get(), oggetto);
    }
  }
  RitiraMessaggi();
}

TEST_F(ClienteAnticipato, AnIndexAfterAPropertyWithoutItsCollectionIsError91) {
  RecitaMessaggi();
  {
    const auto servizio = Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER);
    ASSERT_TRUE(servizio);
    const ChiamataTardiva letta(servizio.Get(), L"vCollDestinatari", DISPATCH_PROPERTYGET,
                                {adapters::win32::ToCom(1).Get()});
    EXPECT_EQ(letta.esito, DISP_E_EXCEPTION);
    EXPECT_EQ(letta.eccezione.scode, static_cast<HRESULT>(0x800A005B));
    EXPECT_EQ(adapters::win32::FromBstr(Bstr::Adotta(letta.eccezione.bstrSource).Get()), "ORVE_MAILSERVER");
    EXPECT_NE(adapters::win32::FromBstr(Bstr::Adotta(letta.eccezione.bstrDescription).Get()), "");
    const ChiamataTardiva testo(servizio.Get(), L"vOggetto", DISPATCH_PROPERTYGET,
                                {adapters::win32::ToCom(1).Get()});
    EXPECT_EQ(testo.esito, DISP_E_BADPARAMCOUNT);
  }
  RitiraMessaggi();
}

TEST_F(ClienteAnticipato, MembersOfARecipientAreCalledThroughTheVtable) {
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  Bstr indirizzo = adapters::win32::ToBstr("anna@x.example");
  Bstr nome = adapters::win32::ToBstr("Anna Più €");
  short casella = 2;
  ComPtr<IDestinatario> destinatario;
  // Optional arguments by reference are left out as null pointers.
  ASSERT_EQ(
      coll->AddFromLista(indirizzo.Uscita(), nullptr, nullptr, &casella, nullptr, destinatario.Uscita()),
      S_OK);
  indirizzo = adapters::win32::ToBstr("anna@x.example");
  BSTR testo = indirizzo.Get();
  BSTR testoNome = nome.Get();
  ASSERT_EQ(coll->Add(&testo, &testoNome, nullptr, nullptr, destinatario.Uscita()), S_OK);
  EXPECT_EQ(testo, indirizzo.Get()) << "an argument by reference was changed";
  Bstr letto;
  ASSERT_EQ(destinatario->get_Nome(letto.Uscita()), S_OK);
  EXPECT_EQ(adapters::win32::FromBstr(letto.Get()), "Anna Più €");
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

// Answers every identifier, with something that is not an object at all.
class DiceSempreSi final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    *oggetto = iid == IID_IUnknown || iid == IID_IDispatch ? static_cast<void*>(this) : rumore_;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }

 private:
  std::uintptr_t rumore_[8] = {1, 1, 1, 1, 1, 1, 1, 1};
};

TEST_F(ClienteAnticipato, AnObjectThatClaimsToBeEverythingIsNoneOfTheLibrarys) {
  RecitaMessaggi();
  {
    const auto servizio = Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER);
    DiceSempreSi estraneo;
    auto* finti = reinterpret_cast<ICollDestinatari*>(static_cast<IDispatch*>(&estraneo));
    EXPECT_EQ(servizio->putref_vCollDestinatari(finti), static_cast<HRESULT>(0x800A000D));
    // Nor is one of its other classes a collection of recipients.
    const auto mittenti = Crea<ICollMittenti>(CLSID_CollMittenti);
    auto* altri = reinterpret_cast<ICollDestinatari*>(mittenti.Get());
    EXPECT_EQ(servizio->putref_vCollDestinatari(altri), static_cast<HRESULT>(0x800A000D));
    const auto buoni = Crea<ICollDestinatari>(CLSID_CollDestinatari);
    EXPECT_EQ(servizio->putref_vCollDestinatari(buoni.Get()), S_OK);
  }
  RitiraMessaggi();
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
  EXPECT_EQ(adapters::win32::FromBstr(testo.Get()), "ORVE_MAILSERVER");
  ASSERT_EQ(errore->GetDescription(testo.Uscita()), S_OK);
  EXPECT_EQ(adapters::win32::FromBstr(testo.Get()), "Indice non compreso nell'intervallo");
  GUID interfaccia = GUID_NULL;
  ASSERT_EQ(errore->GetGUID(&interfaccia), S_OK);
  EXPECT_EQ(interfaccia, IID_ICollDestinatari);
}

TEST_F(ClienteAnticipato, TheEnumeratorWalksSkipsResetsAndClones) {
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  for (const char* nome : {"a", "b", "c"}) {
    const Bstr indirizzo = adapters::win32::ToBstr(nome);
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

TEST_F(ClienteAnticipato, EachObjectTellsTheDebugOutputOfItsBirthAndItsEnd) {
  RecitaMessaggi();
  prova::UscitaDebug uscita;
  Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER).Reset();
  {
    const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
    const Bstr indirizzo = adapters::win32::ToBstr("anna@x.example");
    BSTR testo = indirizzo.Get();
    ComPtr<IDestinatario> destinatario;
    EXPECT_EQ(coll->Add(&testo, nullptr, nullptr, nullptr, destinatario.Uscita()), S_OK);
  }
  Crea<ICollMittenti>(CLSID_CollMittenti).Reset();
  Crea<IMittente>(CLSID_Mittente).Reset();
  const std::vector<std::string> righe = uscita.Righe();
  RitiraMessaggi();

  std::map<std::string, std::string> nati;  // class by identifier
  std::vector<std::string> finiti;
  for (const std::string& riga : righe) {
    if (!riga.starts_with("QLNA:|")) continue;  // the system's own
    ASSERT_GT(riga.size(), 38U) << riga;
    const std::string identificatore = riga.substr(6, 32);
    const std::string evento = riga.substr(0, 6) + riga.substr(38);
    constexpr const char* kNascita = "QLNA:||INI|ORVE_MAILSERVER|";
    if (evento.starts_with(kNascita)) {
      EXPECT_TRUE(nati.emplace(identificatore, evento.substr(strlen(kNascita))).second) << riga;
    } else {
      EXPECT_EQ(evento, "QLNA:||TER|ORVE_MAILSERVER|" + nati[identificatore]);
      finiti.push_back(nati[identificatore]);
    }
    EXPECT_EQ(identificatore.find_first_not_of("0123456789ABCDEF"), std::string::npos) << riga;
  }
  EXPECT_EQ(nati.size(), 5U);
  EXPECT_THAT(finiti, testing::UnorderedElementsAre("CLSFW_MAILSERVER", "CollDestinatari", "Destinatario",
                                                    "CollMittenti", "Mittente"));
}

// A key that stands in for a root of the registry, so that a test writes where nobody looks.
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
    return letto == ERROR_SUCCESS ? adapters::win32::ToUtf8(testo) : "(assente)";
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
      adapters::win32::ToWide(macchina.Valore(L"Software\\Classes\\ORVE_MAILSERVER.Mittente\\CLSID", L""));
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

// The classes are registered for each bitness, their names once for both.
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
