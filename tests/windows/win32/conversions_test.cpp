// Values and texts on their way to automation and back.
#include "win32/conversions.h"

#include <gtest/gtest.h>

#include <cstring>

#include "fakes/errori.h"
#include "orve-mailserver/host/errore.h"
#include "windows/win32/doppio.h"

namespace orve::adapters::win32 {
namespace {

using fakes::NumeroDi;
using host::Variant;

Variant AndataERitorno(const Variant& valore) {
  return FromCom(ToCom(valore).Get());
}

TEST(Conversioni, EveryKindOfValueComesBackAsItWas) {
  const Variant valori[] = {{},
                            host::Null{},
                            true,
                            false,
                            std::int16_t{-7},
                            std::int32_t{-70000},
                            1.5F,
                            -2.25,
                            host::DataOra::Da(2026, 11, 14, 10, 22, 5),
                            "",
                            "Società «Perché» – € 😀",
                            std::string("prima\0dopo", 10),
                            Variant::Array{},
                            Variant::Array{"uno", 2, host::Null{}, Variant::Array{"dentro"}}};
  for (const auto& valore : valori) EXPECT_TRUE(AndataERitorno(valore) == valore);
}

TEST(Conversioni, ATextThatIsNoUtf8IsMarkedWhereItIsNot) {
  EXPECT_EQ(ToUtf8(ToWide("a\xFFz")), "a\xEF\xBF\xBDz");
}

TEST(Conversioni, ALoneHalfOfAPairIsMarked) {
  const wchar_t meta[] = {L'a', static_cast<wchar_t>(0xD83D), L'z'};
  EXPECT_EQ(ToUtf8({meta, 3}), "a\xEF\xBF\xBDz");
}

TEST(Conversioni, ANullTextReadsAsTheEmptyOne) {
  EXPECT_TRUE(FromCom(VariantCom::TestoNullo().Get()) == Variant(""));
  EXPECT_EQ(FromBstr(nullptr), "");
}

TEST(Conversioni, TheEmptyTextIsNotTheNullText) {
  EXPECT_NE(V_BSTR(&ToCom("").Get()), nullptr);
}

TEST(Conversioni, ACopyOfTheNullTextIsTheNullText) {
  const VariantCom nullo = VariantCom::TestoNullo();
  const VariantCom copia = nullo;
  EXPECT_EQ(V_VT(&copia.Get()), VT_BSTR);
  EXPECT_EQ(V_BSTR(&copia.Get()), nullptr);
}

TEST(Conversioni, KindsOfNumberThatTheLibraryLacksBecomeTheSmallestThatHoldsThem) {
  VARIANT valore;
  VariantInit(&valore);
  const auto letto = [&] { return FromCom(valore); };
  V_VT(&valore) = VT_UI1;
  V_UI1(&valore) = 200;
  EXPECT_TRUE(letto() == Variant(std::int16_t{200}));
  V_VT(&valore) = VT_I1;
  V_I1(&valore) = -3;
  EXPECT_TRUE(letto() == Variant(std::int16_t{-3}));
  V_VT(&valore) = VT_UI2;
  V_UI2(&valore) = 65535;
  EXPECT_TRUE(letto() == Variant(std::int32_t{65535}));
  V_VT(&valore) = VT_INT;
  V_INT(&valore) = -9;
  EXPECT_TRUE(letto() == Variant(std::int32_t{-9}));
  V_VT(&valore) = VT_UI4;
  V_UI4(&valore) = 7;
  EXPECT_TRUE(letto() == Variant(std::int32_t{7}));
  V_UI4(&valore) = 4000000000U;
  EXPECT_TRUE(letto() == Variant(host::Decimale("4000000000")));
  V_VT(&valore) = VT_I8;
  V_I8(&valore) = -5;
  EXPECT_TRUE(letto() == Variant(std::int32_t{-5}));
  V_I8(&valore) = -9007199254740993;
  EXPECT_TRUE(letto() == Variant(host::Decimale("-9007199254740993")));
  V_VT(&valore) = VT_UI8;
  V_UI8(&valore) = 18446744073709551615ULL;
  EXPECT_TRUE(letto() == Variant(host::Decimale("18446744073709551615")));
}

TEST(Conversioni, CurrencyAndDecimalsKeepAllTheirDigits) {
  VariantCom valore;
  V_VT(&valore.Get()) = VT_CY;
  V_CY(&valore.Get()).int64 = 123456;  // ten-thousandths
  EXPECT_TRUE(FromCom(valore.Get()) == Variant(host::Decimale("12.3456")));
  for (const char* testo : {"-0,5", "0", "12345678901234567,89", "79228162514264337593543950335",
                            "-0,0000000000000000000000000001"}) {
    const VariantCom decimale = ToCom(host::Decimale(testo));
    EXPECT_EQ(V_VT(&decimale.Get()), VT_DECIMAL);
    EXPECT_EQ(FromCom(decimale.Get()).ToText(), testo);
  }
}

TEST(Conversioni, AValueByReferenceIsReadWhereItLies) {
  VariantCom dentro = ToCom("testo");
  VARIANT fuori;
  VariantInit(&fuori);
  V_VT(&fuori) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&fuori) = &dentro.Get();
  EXPECT_TRUE(FromCom(fuori) == Variant("testo"));
  LONG numero = 12;
  V_VT(&fuori) = VT_BYREF | VT_I4;
  V_I4REF(&fuori) = &numero;
  EXPECT_TRUE(FromCom(fuori) == Variant(std::int32_t{12}));
}

TEST(Conversioni, AnArrayOfADeclaredKindAndLowerBoundCountsFromZero) {
  auto* elenco = SafeArrayCreateVector(VT_BSTR, 1, 2);
  for (LONG posto = 1; posto <= 2; ++posto) {
    const Bstr testo = ToBstr("voce " + std::to_string(posto));
    ASSERT_EQ(SafeArrayPutElement(elenco, &posto, testo.Get()), S_OK);
  }
  VariantCom valore;
  V_VT(&valore.Get()) = VT_ARRAY | VT_BSTR;
  V_ARRAY(&valore.Get()) = elenco;
  EXPECT_TRUE(FromCom(valore.Get()) == Variant(Variant::Array{"voce 1", "voce 2"}));
  VARIANT riferito;
  VariantInit(&riferito);
  V_VT(&riferito) = VT_BYREF | VT_ARRAY | VT_BSTR;
  V_ARRAYREF(&riferito) = &elenco;
  EXPECT_TRUE(FromCom(riferito) == Variant(Variant::Array{"voce 1", "voce 2"}));
}

TEST(Conversioni, AnArrayOfTwoDimensionsBecomesRows) {
  SAFEARRAYBOUND misure[2] = {{2, 0}, {3, 1}};
  auto* tabella = SafeArrayCreate(VT_VARIANT, 2, misure);
  for (LONG riga = 0; riga < 2; ++riga) {
    for (LONG colonna = 1; colonna <= 3; ++colonna) {
      LONG posto[2] = {riga, colonna};
      VariantCom cella = ToCom(std::int32_t{riga * 10 + colonna});
      ASSERT_EQ(SafeArrayPutElement(tabella, posto, &cella.Get()), S_OK);
    }
  }
  VariantCom valore;
  V_VT(&valore.Get()) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&valore.Get()) = tabella;
  EXPECT_TRUE(FromCom(valore.Get()) ==
              Variant(Variant::Array{Variant::Array{1, 2, 3}, Variant::Array{11, 12, 13}}));
}

TEST(Conversioni, AnArrayIsReadAsWhatItHoldsAndNotAsWhatItIsCalled) {
  auto* numeri = SafeArrayCreateVector(VT_I4, 0, 2);
  for (LONG posto = 0; posto < 2; ++posto) {
    LONG numero = 40 + posto;
    ASSERT_EQ(SafeArrayPutElement(numeri, &posto, &numero), S_OK);
  }
  VariantCom valore;
  V_ARRAY(&valore.Get()) = numeri;
  for (const VARTYPE detto : {VT_I4, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_I8, VT_EMPTY}) {
    V_VT(&valore.Get()) = static_cast<VARTYPE>(VT_ARRAY | detto);
    EXPECT_TRUE(FromCom(valore.Get()) == Variant(Variant::Array{40, 41})) << detto;
  }
  V_VT(&valore.Get()) = VT_ARRAY | VT_I4;
}

TEST(Conversioni, AnArrayThatDoesNotKnowItsKindIsTakenAtItsWordForValuesOfItsSizeAlone) {
  SAFEARRAY* elenco = nullptr;
  ASSERT_EQ(SafeArrayAllocDescriptor(1, &elenco), S_OK);
  elenco->cbElements = sizeof(std::int32_t);
  elenco->rgsabound[0] = {2, 0};
  ASSERT_EQ(SafeArrayAllocData(elenco), S_OK);
  const std::int32_t numeri[] = {7, 8};
  std::memcpy(elenco->pvData, numeri, sizeof numeri);
  VARIANT valore;
  VariantInit(&valore);
  V_ARRAY(&valore) = elenco;
  V_VT(&valore) = VT_ARRAY | VT_I4;
  EXPECT_TRUE(FromCom(valore) == Variant(Variant::Array{7, 8}));
  for (const VARTYPE detto : {VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_UNKNOWN, VT_RECORD, VT_I8, VT_R8, VT_I2}) {
    V_VT(&valore) = static_cast<VARTYPE>(VT_ARRAY | detto);
    EXPECT_THROW(FromCom(valore), host::Errore) << detto;
  }
  SafeArrayDestroyData(elenco);
  SafeArrayDestroyDescriptor(elenco);
}

TEST(Conversioni, AnArrayOfElementsTooSmallForTheirKindIsNotRead) {
  auto* elenco = SafeArrayCreateVector(VT_VARIANT, 0, 2);
  const ULONG misura = elenco->cbElements;
  elenco->cbElements = 1;
  VARIANT valore;
  VariantInit(&valore);
  V_ARRAY(&valore) = elenco;
  V_VT(&valore) = VT_ARRAY | VT_VARIANT;
  EXPECT_THROW(FromCom(valore), host::Errore);
  elenco->cbElements = misura;
  EXPECT_TRUE(FromCom(valore) == Variant(Variant::Array{Variant(), Variant()}));
  SafeArrayDestroy(elenco);
}

TEST(Conversioni, AnArrayThatWasNeverDimensionedIsEmpty) {
  VARIANT valore;
  VariantInit(&valore);
  V_VT(&valore) = VT_ARRAY | VT_BSTR;
  V_ARRAY(&valore) = nullptr;
  EXPECT_TRUE(FromCom(valore) == Variant(Variant::Array{}));
}

TEST(Conversioni, AnArgumentLeftOutIsEmptyAndAnyOtherErrorValueAMismatch) {
  VARIANT valore;
  VariantInit(&valore);
  V_VT(&valore) = VT_ERROR;
  V_ERROR(&valore) = DISP_E_PARAMNOTFOUND;
  EXPECT_TRUE(FromCom(valore).IsEmpty());
  V_ERROR(&valore) = E_FAIL;
  EXPECT_EQ(NumeroDi([&] { (void)FromCom(valore); }), 13);
}

TEST(Conversioni, AnObjectComesBackAsTheSameObject) {
  const auto giornale = std::make_shared<std::vector<std::string>>();
  const auto doppio = prova::CreaDoppio("oggetto", giornale);
  const Variant dentro = FromCom(VariantCom::DiOggetto(doppio.Get()).Get());
  ASSERT_TRUE(dentro.IsObject());
  EXPECT_EQ(V_DISPATCH(&ToCom(dentro).Get()), static_cast<IDispatch*>(doppio.Get()));
}

TEST(Conversioni, AnObjectIsHeldNoLongerThanItsValue) {
  const auto giornale = std::make_shared<std::vector<std::string>>();
  const auto doppio = prova::CreaDoppio("oggetto", giornale);
  {
    const Variant dentro = FromCom(VariantCom::DiOggetto(doppio.Get()).Get());
    const VariantCom fuori = ToCom(Variant::Array{dentro, dentro});
    EXPECT_GT(doppio->Riferiti(), 1U);
  }
  EXPECT_EQ(doppio->Riferiti(), 1U);
}

TEST(Conversioni, NoObjectIsAnAbsentObjectBothWays) {
  const Variant assente = FromCom(VariantCom::DiOggetto(nullptr).Get());
  ASSERT_TRUE(assente.IsObject());
  EXPECT_EQ(assente.ToObject(), nullptr);
  const VariantCom fuori = ToCom(assente);
  EXPECT_EQ(V_VT(&fuori.Get()), VT_DISPATCH);
  EXPECT_EQ(V_DISPATCH(&fuori.Get()), nullptr);
}

TEST(Conversioni, AnObjectOfTheLibraryAloneCannotGoOut) {
  class Chiuso : public host::Oggetto {};
  EXPECT_EQ(NumeroDi([] { (void)ToCom(std::make_shared<Chiuso>()); }), 13);
}

TEST(Conversioni, TheSystemsCodePageHasAQuestionMarkForWhatItLacks) {
  ASSERT_EQ(GetACP(), 1252U);
  EXPECT_EQ(ToSingleByte("Perché € Łódź"),
            "Perch\xE9 \x80 ?\xF3"
            "d?");
  EXPECT_EQ(ToSingleByte("a😀b漢字"), "a?b??");
  EXPECT_EQ(FromSingleByte("Perch\xE9 \x80"), "Perché €");
}

}  // namespace
}  // namespace orve::adapters::win32
