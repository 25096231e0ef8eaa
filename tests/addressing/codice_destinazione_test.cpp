// The free text with its two markers, and the four-part code of a goods destination.
#include "addressing/codice_destinazione.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/errori.h"

namespace orve {
namespace {

using fakes::NumeroDi;

struct CasoTesto {
  const char* etichetta;
  const char* testo;
  const char* want_mail;
  const char* want_pec;
};

class CodiceTesto : public ::testing::TestWithParam<CasoTesto> {};

TEST_P(CodiceTesto, YieldsTheAddressOfEachKindOfMail) {
  EXPECT_EQ(EstraiIndirizzoMail(GetParam().testo), GetParam().want_mail) << GetParam().testo;
  EXPECT_EQ(EstraiIndirizzoPec(GetParam().testo), GetParam().want_pec) << GetParam().testo;
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, CodiceTesto,
    ::testing::Values(CasoTesto{"MailOnly", "Rossi<***>a@b.example", "a@b.example", ""},
                      CasoTesto{"PecOnly", "Rossi<*pec*>p@pec.example", "", "p@pec.example"},
                      CasoTesto{"MailThenPecThrowsTheMailAway", "Rossi<***>a@b.example<*pec*>p@pec.example",
                                "", "p@pec.example"},
                      CasoTesto{"PecThenMailTakesTheWholeRestAsPec",
                                "Rossi<*pec*>p@pec.example<***>a@b.example", "a@b.example",
                                "p@pec.example<***>a@b.example"},
                      CasoTesto{"NoMarker", "a@b.example", "", ""}, CasoTesto{"EmptyText", "", "", ""},
                      CasoTesto{"NothingBeforeTheMarker", "<***>a@b.example", "a@b.example", ""},
                      CasoTesto{"NothingAfterTheMarkers", "Rossi<***><*pec*>", "", ""},
                      CasoTesto{"NothingAfterTheMailMarker", "Rossi<***>", "", ""},
                      CasoTesto{"BlanksAreKept", "Rossi <***> a@b.example ", " a@b.example ", ""},
                      CasoTesto{"TheFirstMailMarkerCounts", "x<***>a@b.example<***>c@d.example",
                                "a@b.example<***>c@d.example", ""},
                      CasoTesto{"TheFirstPecMarkerCounts", "x<*pec*>p@b.example<*pec*>q@d.example", "",
                                "p@b.example<*pec*>q@d.example"},
                      CasoTesto{"MarkersAreCaseSensitive", "x<*PEC*>p@pec.example", "", ""},
                      CasoTesto{"AnUpperCasePecAfterTheMailIsPartOfTheAddress",
                                "x<***>a@b.example<*Pec*>p@pec.example", "a@b.example<*Pec*>p@pec.example",
                                ""},
                      CasoTesto{"LettersOutsideAscii", "Società<***>è@b.example", "è@b.example", ""},
                      CasoTesto{"HalfAMarker", "x<**>a@b.example<*pec>p", "", ""}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST(CodiceDestinazione, SplitsIntoCompanyPartnerFlagAndDestination) {
  const auto parti = ScomponiCodiceDestinazione("1/1042/0/SEDE2");
  EXPECT_EQ(parti.ditta, "1");
  EXPECT_EQ(parti.cliFor, "1042");
  EXPECT_EQ(parti.tipoCf, "0");
  EXPECT_EQ(parti.destinazione, "SEDE2");
}

TEST(CodiceDestinazione, TheFourthPartRunsToTheEndAndMayHoldFurtherSlashes) {
  EXPECT_EQ(ScomponiCodiceDestinazione("1/2/0/A/B/").destinazione, "A/B/");
  EXPECT_EQ(ScomponiCodiceDestinazione("1/2/0/").destinazione, "");
}

TEST(CodiceDestinazione, EmptyPartsAreParts) {
  const auto parti = ScomponiCodiceDestinazione("///");
  EXPECT_EQ(parti.ditta + parti.cliFor + parti.tipoCf + parti.destinazione, "");
}

TEST(CodiceDestinazione, FewerThanThreeSlashesAreAnInvalidArgument) {
  for (const auto* codice : {"", "1", "1/2", "1/2/0", "//"}) {
    EXPECT_EQ(NumeroDi([&] { static_cast<void>(ScomponiCodiceDestinazione(codice)); }), 5) << codice;
  }
}

}  // namespace
}  // namespace orve
