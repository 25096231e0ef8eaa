// Automation objects reached by name.
#include "win32/dispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orve-mailserver/host/errore.h"
#include "win32/errori_com.h"
#include "windows/win32/doppio.h"

namespace orve::adapters::win32 {
namespace {

using prova::ArrivoCom;
using testing::ElementsAre;

constexpr WORD kLettura = DISPATCH_PROPERTYGET;
constexpr WORD kChiamata = DISPATCH_METHOD;

class DispatchTest : public testing::Test {
 protected:
  [[nodiscard]] Dispatch Oggetto() const { return Dispatch(doppio.Get()); }
  static host::Errore ErroreDa(const std::function<void()>& azione) {
    try {
      azione();
    } catch (const host::Errore& errore) {
      return errore;
    }
    ADD_FAILURE() << "no error";
    return host::Errore(host::kErroreAutomazione);
  }

  prova::AppartamentoCom appartamento;
  prova::GiornaleCom giornale = std::make_shared<std::vector<std::string>>();
  win32::ComPtr<prova::DoppioCom> doppio = prova::CreaDoppio("oggetto", giornale);
};

TEST_F(DispatchTest, MembersAreReachedWithTheirKindOfCall) {
  doppio->Proprieta("Testo");
  doppio->Proprieta("Altro");
  doppio->Membro("Fai", kChiamata, prova::Nulla());
  doppio->Membro("Chiedi", kChiamata, prova::Valore(5));
  const Dispatch oggetto = Oggetto();
  oggetto.Put("Testo", "ciao");
  EXPECT_EQ(oggetto.Get("Testo").ToText(), "ciao");
  oggetto.PutRef("Altro", doppio.Get());
  EXPECT_EQ(oggetto.LeggiOggetto("Altro").Com(), static_cast<IDispatch*>(doppio.Get()));
  oggetto.PutRef("Altro", nullptr);
  oggetto.Run("Fai", 1, "due", true);
  EXPECT_EQ(oggetto.Call("Chiedi").ToInt32(), 5);
  EXPECT_THAT(*giornale, ElementsAre("oggetto.Testo scrittura (ciao)", "oggetto.Testo lettura",
                                     "oggetto.Altro assegnazione ((oggetto))", "oggetto.Altro lettura",
                                     "oggetto.Altro assegnazione ((nessun oggetto))",
                                     "oggetto.Fai chiamata (1|due|Vero)", "oggetto.Chiedi lettura"));
}

TEST_F(DispatchTest, TheNameIsHandedOverWithItsCase) {
  doppio->Membro("createItem", kChiamata, prova::Valore(1));
  EXPECT_EQ(Oggetto().Call("createItem", 0).ToInt32(), 1);
  EXPECT_EQ(ErroreDa([&] { Oggetto().Run("CreateItem", 0); }).Numero(), 438);
}

TEST_F(DispatchTest, AMemberOfNoObjectIsError91) {
  EXPECT_EQ(ErroreDa([] { Dispatch().Run("Fai"); }).Numero(), 91);
}

TEST_F(DispatchTest, AnUnknownMemberIsError438InTheLibrarysWords) {
  const auto errore = ErroreDa([&] { (void)Oggetto().Get("Manca"); });
  EXPECT_EQ(errore.Numero(), 438);
  EXPECT_EQ(errore.Descrizione(), host::Errore(host::kMembroNonSupportato).Descrizione());
}

TEST_F(DispatchTest, AnObjectThatOffersItsMembersByTheExtendedWayAloneIsReached) {
  doppio->Proprieta("Testo", "di uno script");
  doppio->SoloPerIDispatchEx();
  EXPECT_EQ(Oggetto().Get("Testo").ToText(), "di uno script");
  EXPECT_EQ(ErroreDa([&] { (void)Oggetto().Get("Manca"); }).Numero(), 438);
}

TEST_F(DispatchTest, AReferenceTravelsAsAReferenceToAValue) {
  doppio->ScriviTipi();
  doppio->Membro("Fai", kChiamata, prova::Nulla());
  Oggetto().Run("Fai", Argomento::PerRiferimento("testo"), 3);
  EXPECT_THAT(*giornale, ElementsAre("oggetto.Fai chiamata (&testo:12|3:3)"));
}

TEST_F(DispatchTest, AMemberWithADeclaredTypeGetsAReferenceToThatType) {
  doppio->ScriviTipi();
  doppio->PrendeRiferimenti(prova::Riferimenti::kSoloTipi);
  doppio->Membro("Fai", kChiamata, prova::Nulla());
  Oggetto().Run("Fai", Argomento::PerRiferimento("testo"), Argomento::PerRiferimento(7),
                Argomento::PerRiferimento(VariantCom::DiOggetto(nullptr)));
  EXPECT_THAT(*giornale, ElementsAre("oggetto.Fai chiamata (&testo:8|&7:3|&(nessun oggetto):9)"));
}

TEST_F(DispatchTest, WhatTheObjectMakesOfAReferenceStaysWithTheCall) {
  for (const auto modo : {prova::Riferimenti::kSoloValori, prova::Riferimenti::kSoloTipi}) {
    doppio->PrendeRiferimenti(modo);
    doppio->Membro("Fai", kChiamata, [](const ArrivoCom& arrivo) {
      arrivo.Scrivi(0, arrivo.Valore(0).ToText() + " cambiato");
      return VariantCom();
    });
    const host::Variant testo("perché");
    Oggetto().Run("Fai", Argomento::PerRiferimento(testo));
    EXPECT_EQ(testo.ToText(), "perché");
  }
}

TEST_F(DispatchTest, AnErrorOfTheObjectArrivesWithNumberSourceAndDescription) {
  doppio->Membro("Fai", kChiamata, [](const ArrivoCom&) -> VariantCom {
    throw prova::RifiutoCom{E_FAIL, 0x1234, L"Oggetto.Esterno", L"Non è possibile"};
  });
  const auto errore = ErroreDa([&] { Oggetto().Run("Fai"); });
  EXPECT_EQ(errore.Numero(), 0x1234);
  EXPECT_EQ(errore.Sorgente(), "Oggetto.Esterno");
  EXPECT_EQ(errore.Descrizione(), "Non è possibile");
}

TEST_F(DispatchTest, AnErrorThatIsACodeOfAutomationGivesItsNumber) {
  doppio->Membro("Fai", kChiamata, [](const ArrivoCom&) -> VariantCom {
    throw prova::RifiutoCom{static_cast<HRESULT>(0x800A0035), 0, L"Oggetto", L"File non trovato"};
  });
  EXPECT_EQ(ErroreDa([&] { Oggetto().Run("Fai"); }).Numero(), 53);
}

TEST_F(DispatchTest, AnErrorThatIsACodeOfTheSystemStaysAsItIs) {
  doppio->Membro("Fai", kChiamata, [](const ArrivoCom&) -> VariantCom {
    throw prova::RifiutoCom{static_cast<HRESULT>(0x80040E14), 0, L"Provider", L"Sintassi errata"};
  });
  const auto errore = ErroreDa([&] { Oggetto().Run("Fai"); });
  EXPECT_EQ(errore.Numero(), static_cast<std::int32_t>(0x80040E14));
  EXPECT_EQ(errore.Descrizione(), "Sintassi errata");
}

TEST_F(DispatchTest, WhatTheObjectLeavesAsTheThreadsErrorIsRead) {
  doppio->Membro("Fai", kChiamata, [](const ArrivoCom&) -> VariantCom {
    ComPtr<ICreateErrorInfo> creato;
    CreateErrorInfo(creato.Uscita());
    creato->SetDescription(const_cast<LPOLESTR>(L"lasciato dallo script"));
    creato->SetSource(const_cast<LPOLESTR>(L"Script"));
    SetErrorInfo(0, creato.Come<IErrorInfo>(IID_IErrorInfo).Get());
    throw prova::RifiutoCom{static_cast<HRESULT>(0x800A03E9), 0, {}, {}};
  });
  const auto errore = ErroreDa([&] { Oggetto().Run("Fai"); });
  EXPECT_EQ(errore.Numero(), 1001);
  EXPECT_EQ(errore.Sorgente(), "Script");
  EXPECT_EQ(errore.Descrizione(), "lasciato dallo script");
}

TEST_F(DispatchTest, AnOlderErrorOfTheThreadIsNotTakenForThisOne) {
  ComPtr<ICreateErrorInfo> creato;
  CreateErrorInfo(creato.Uscita());
  creato->SetDescription(const_cast<LPOLESTR>(L"vecchio"));
  SetErrorInfo(0, creato.Come<IErrorInfo>(IID_IErrorInfo).Get());
  doppio->Membro("Fai", kChiamata, [](const ArrivoCom&) -> VariantCom {
    throw prova::RifiutoCom{E_FAIL, 0, {}, {}};
  });
  EXPECT_NE(ErroreDa([&] { Oggetto().Run("Fai"); }).Descrizione(), "vecchio");
}

TEST_F(DispatchTest, AnObjectThatOnlyKnowsThePlainWritingGetsItsObjectThatWay) {
  doppio->Membro("Connessione", DISPATCH_PROPERTYPUT, prova::Nulla());
  Oggetto().PutRef("Connessione", doppio.Get());
  EXPECT_THAT(*giornale, ElementsAre("oggetto.Connessione scrittura ((oggetto))"));
}

TEST_F(DispatchTest, ASetterThatItselfRaises438RunsOnce) {
  doppio->Membro("Connessione", DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF,
                 [](const ArrivoCom&) -> VariantCom {
                   throw prova::RifiutoCom{E_FAIL, 438, L"Oggetto", L"Proprietà o metodo non supportati"};
                 });
  const auto errore = ErroreDa([&] { Oggetto().PutRef("Connessione", doppio.Get()); });
  EXPECT_EQ(errore.Numero(), 438);
  EXPECT_EQ(errore.Sorgente(), "Oggetto");
  EXPECT_THAT(*giornale, ElementsAre("oggetto.Connessione assegnazione ((oggetto))"));
}

TEST_F(DispatchTest, AMemberThatGivesNothingGivesAnAbsentObject) {
  doppio->Membro("Niente", kLettura, prova::Nulla());
  doppio->Membro("Nullo", kLettura, prova::Valore(host::Null{}));
  doppio->Membro("Nessuno", kLettura, [](const ArrivoCom&) { return VariantCom::DiOggetto(nullptr); });
  doppio->Membro("Testo", kLettura, prova::Valore("testo"));
  EXPECT_FALSE(Oggetto().LeggiOggetto("Niente"));
  EXPECT_FALSE(Oggetto().LeggiOggetto("Nullo"));
  EXPECT_FALSE(Oggetto().LeggiOggetto("Nessuno"));
  EXPECT_EQ(ErroreDa([&] { (void)Oggetto().LeggiOggetto("Testo"); }).Numero(), 13);
}

TEST_F(DispatchTest, AnObjectWhoseLastReferenceGoesDuringItsOwnCallLivesToTheEnd) {
  auto* crudo = new prova::DoppioCom("altro", giornale);
  auto tenuto = std::make_unique<Dispatch>(ComPtr<IDispatch>::Adotta(crudo));
  crudo->Membro("Lascia", kChiamata, [&](const ArrivoCom&) {
    tenuto.reset();
    return VariantCom();
  });
  tenuto->Run("Lascia");
  EXPECT_EQ(tenuto, nullptr);
}

TEST_F(DispatchTest, AClassThatTheMachineLacksIsError429) {
  EXPECT_EQ(ErroreDa([] { (void)CreaOggetto(L"ORVE_Prova.NonEsiste"); }).Numero(), 429);
  EXPECT_EQ(ErroreDa([] { (void)CreaOggetto(L"{DF8A4FE2-221A-4504-987A-3FD4720DB929}"); }).Numero(), 429);
  EXPECT_FALSE(ClasseRegistrata(L"ORVE_Prova.NonEsiste"));
}

TEST_F(DispatchTest, WhatCannotBeCreatedIsNamedWithTheReasonOfTheSystem) {
  EXPECT_EQ(ErroreDa([] { (void)CreaOggetto(L"ORVE_Prova.NonEsiste"); }).Descrizione(),
            "Impossibile creare l'oggetto ORVE_Prova.NonEsiste (0x800401F3)");
  EXPECT_EQ(ErroreDa([] { (void)CreaOggetto(L"{DF8A4FE2-221A-4504-987A-3FD4720DB929}"); }).Descrizione(),
            "Impossibile creare l'oggetto {DF8A4FE2-221A-4504-987A-3FD4720DB929} (0x80040154)");
  const prova::ClasseCom classe(L"ORVE_Prova.Rifiuta", [] { return ComPtr<IDispatch>(); });
  EXPECT_THAT(ErroreDa([] { (void)CreaOggetto(L"ORVE_Prova.Rifiuta"); }).Descrizione(),
              testing::StartsWith("Impossibile creare l'oggetto ORVE_Prova.Rifiuta (0x8"));
}

TEST_F(DispatchTest, AnObjectStandsForTheValueOfItsDefaultMember) {
  const auto dentro = prova::CreaDoppio("dentro", giornale);
  dentro->Predefinito(kLettura, prova::Valore("C001"));
  doppio->Predefinito(kLettura, prova::Oggetto(dentro));
  const host::Variant oggetto = FromCom(VariantCom::DiOggetto(doppio.Get()).Get());
  EXPECT_EQ(SenzaOggetti(oggetto), host::Variant("C001"));
  EXPECT_EQ(SenzaOggetti(host::Variant::Array{1, host::Variant::Array{oggetto}}),
            (host::Variant::Array{1, host::Variant::Array{"C001"}}));
  EXPECT_EQ(SenzaOggetti(host::Null{}), host::Variant(host::Null{}));
  EXPECT_EQ(ErroreDa([] { (void)ValorePredefinito(VariantCom::DiOggetto(nullptr).Get()); }).Numero(), 91);
}

TEST_F(DispatchTest, AnObjectThatIsItsOwnValueIsAMismatch) {
  doppio->Predefinito(kLettura, [this](const ArrivoCom&) { return VariantCom::DiOggetto(doppio.Get()); });
  EXPECT_EQ(ErroreDa([this] { (void)ValorePredefinito(VariantCom::DiOggetto(doppio.Get()).Get()); }).Numero(),
            13);
}

TEST_F(DispatchTest, AClassIsCreatedByItsName) {
  const prova::ClasseCom classe(L"ORVE_Prova.Doppio", [&] { return ComPtr<IDispatch>(doppio.Get()); });
  EXPECT_TRUE(ClasseRegistrata(L"ORVE_Prova.Doppio"));
  EXPECT_EQ(CreaOggetto(L"ORVE_Prova.Doppio").Com(), static_cast<IDispatch*>(doppio.Get()));
}

TEST_F(DispatchTest, ARealObjectOfTheSystemIsReached) {
  const Dispatch espressione = CreaOggetto(L"VBScript.RegExp");
  espressione.Put("Pattern", "^[A-Z]+$");
  espressione.Put("IgnoreCase", true);
  EXPECT_TRUE(espressione.Call("Test", "abc").ToBoolean());
  EXPECT_FALSE(espressione.Call("Test", "abc1").ToBoolean());
  EXPECT_EQ(ErroreDa([&] { espressione.Run("Manca"); }).Numero(), 438);
}

}  // namespace
}  // namespace orve::adapters::win32
