#include <string>
#include <vector>

#include "content/sql_values.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

enum Tipo : std::int32_t { kTesto = 0, kDecimale = 1, kNumero = 2, kData = 3, kSconosciuto = 4 };

constexpr const char* kNumericoNull =
    "ObjMessaggi.MostraMsg Si sta tentando di assegnare il valore (numerico) null a un campo che non ammette "
    "null.|0||(assente)";
constexpr const char* kDataNull =
    "ObjMessaggi.MostraMsg Si sta tentando di assegnare il valore (data) null a un campo che non ammette "
    "null.|0||(assente)";

class ValoriSql : public fakes::ServizioDiProva {};

TEST_F(ValoriSql, AnEmptyValueGivesNullForEveryKindWhereTheColumnAdmitsIt) {
  const std::vector<host::Variant> assenti = {host::Variant(), host::Null{}, ""};
  for (const auto& assente : assenti) {
    for (const std::int32_t tipo : {kTesto, kDecimale, kNumero, kData, kSconosciuto, Tipo(-1)}) {
      EXPECT_EQ(FormatoDB(interno.oggetti, assente, tipo, true), host::Variant("null"))
          << fakes::Mostra(assente) << ", kind " << tipo;
    }
  }
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(ValoriSql, AnEmptyValueInAColumnWithoutNullByKind) {
  struct Caso {
    std::int32_t tipo;
    host::Variant want;
    std::vector<std::string> wantMessaggi;
  };
  const std::vector<Caso> casi = {
      {kTesto, "''", {}},       {kDecimale, {}, {kNumericoNull}}, {kNumero, {}, {kNumericoNull}},
      {kData, {}, {kDataNull}}, {kSconosciuto, {}, {}},           {-1, {}, {}}};
  for (const auto& caso : casi) {
    for (const auto& assente : {host::Variant(), host::Variant(host::Null{}), host::Variant("")}) {
      journal->Svuota();
      EXPECT_EQ(FormatoDB(interno.oggetti, assente, caso.tipo, false), caso.want) << "kind " << caso.tipo;
      EXPECT_EQ(journal->Righe(), caso.wantMessaggi) << "kind " << caso.tipo;
    }
  }
}

TEST_F(ValoriSql, AValueByKind) {
  struct Caso {
    const char* etichetta;
    host::Variant valore;
    std::int32_t tipo;
    host::Variant want;
  };
  const std::vector<Caso> casi = {
      {"text", "Rossi", kTesto, "'Rossi'"},
      {"blanks are a value", "  ", kTesto, "'  '"},
      {"number as text", 12, kTesto, "'12'"},
      {"number 0 is a value", 0, kTesto, "'0'"},
      {"decimal from text", "12,5", kDecimale, host::Decimale("12,5")},
      {"decimal from number", 7, kDecimale, host::Decimale("7")},
      {"decimal with all its digits", "12345678901234567,89", kDecimale,
       host::Decimale("12345678901234567,89")},
      {"number through the formatter", 12.5, kNumero, "N12,5"},
      {"date as text", "14/11/2026", kData, "'20261114'"},
      {"date", host::DataOra::Da(2026, 11, 14), kData, "'20261114'"},
      {"unknown kind", "Rossi", kSconosciuto, {}},
      {"negative kind", "Rossi", -1, {}},
  };
  for (const auto& caso : casi) {
    for (const bool ammetteNull : {false, true}) {
      EXPECT_EQ(FormatoDB(interno.oggetti, caso.valore, caso.tipo, ammetteNull), caso.want) << caso.etichetta;
    }
  }
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(ValoriSql, ADecimalNumberJoinsWithAllItsDigitsAndNoExponent) {
  EXPECT_EQ(FormatoDB(interno.oggetti, "1234567890123456789.25", kDecimale, false).Joined(),
            "1234567890123456789,25");
  EXPECT_EQ(FormatoDB(interno.oggetti, 1e20, kDecimale, false).Joined(), "100000000000000000000");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(ValoriSql, HandsTheFormattersTheValueOnce) {
  EXPECT_EQ(FormatoDB(interno.oggetti, host::DataOra::Da(2026, 11, 14), kData, false),
            host::Variant("'20261114'"));
  EXPECT_EQ(FormatoDB(interno.oggetti, 5, kNumero, false), host::Variant("N5"));
  EXPECT_THAT(journal->Righe(), ElementsAre("ObjFormatoData.Data 14/11/2026", "ObjFormatoNumero.NumeroDB 5"));
}

TEST_F(ValoriSql, HandsTheDateFormatterADateInTheFormOfTheRegionalSettings) {
  ambiente->testoData = "11/4/2026";
  ambiente->testoOra = "9:05:07 AM";
  static_cast<void>(FormatoDB(interno.oggetti, host::DataOra::Da(2026, 11, 4), kData, false));
  static_cast<void>(FormatoDB(interno.oggetti, host::DataOra::Da(2026, 11, 4, 9, 5, 7), kData, false));
  static_cast<void>(FormatoDB(interno.oggetti, host::DataOra{0.25}, kData, false));
  static_cast<void>(FormatoDB(interno.oggetti, "04-11-26", kData, false));
  EXPECT_THAT(journal->Righe(),
              ElementsAre("ObjFormatoData.Data 11/4/2026", "ObjFormatoData.Data 11/4/2026 9:05:07 AM",
                          "ObjFormatoData.Data 9:05:07 AM", "ObjFormatoData.Data 04-11-26"));
}

TEST_F(ValoriSql, ADateThatTheFormatterDoesNotAcceptGivesNothingWithoutAMessage) {
  ambiente->statoFormatoData = 1;
  EXPECT_EQ(FormatoDB(interno.oggetti, "31/02/2026", kData, false), host::Variant());
  ambiente->statoFormatoData = -1;
  EXPECT_EQ(FormatoDB(interno.oggetti, "31/02/2026", kData, true), host::Variant());
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(ValoriSql, ATextWithAQuoteIsJoinedAsItStands) {
  EXPECT_EQ(FormatoDB(interno.oggetti, "L'Aquila", kTesto, false), host::Variant("'L'Aquila'"));
}

TEST_F(ValoriSql, ReportsAValueThatIsNoNumber) {
  EXPECT_EQ(FormatoDB(interno.oggetti, "dodici", kDecimale, false), host::Variant());
  EXPECT_THAT(journal->Righe(), ElementsAre("ObjMessaggi.MostraMsg 13-Tipo non corrispondente in "
                                            "CLSFW_MAILSERVER: FormatoDB|0||(assente)"));
}

TEST_F(ValoriSql, ReportsAValueThatHasNoTextForm) {
  EXPECT_EQ(FormatoDB(interno.oggetti, host::Variant::Array{1}, kTesto, true), host::Variant());
  EXPECT_THAT(journal->Righe(), ElementsAre("ObjMessaggi.MostraMsg 13-Tipo non corrispondente in "
                                            "CLSFW_MAILSERVER: FormatoDB|0||(assente)"));
}

TEST_F(ValoriSql, ReportsAFailingFormatter) {
  journal->Fallisce("ObjFormatoData.Data", {1001, "Prova", "guasto di prova"});
  journal->Fallisce("ObjFormatoNumero.NumeroDB", {1002, "Prova", "altro guasto"});
  EXPECT_EQ(FormatoDB(interno.oggetti, "14/11/2026", kData, false), host::Variant());
  EXPECT_EQ(FormatoDB(interno.oggetti, 1, kNumero, false), host::Variant());
  EXPECT_THAT(
      Messaggi(),
      ElementsAre("ObjMessaggi.MostraMsg 1001-guasto di prova in CLSFW_MAILSERVER: FormatoDB|0||(assente)",
                  "ObjMessaggi.MostraMsg 1002-altro guasto in CLSFW_MAILSERVER: FormatoDB|0||(assente)"));
}

TEST_F(ValoriSql, ReportsAMissingFormatter) {
  interno.oggetti.ObjFormatoData.reset();
  EXPECT_EQ(FormatoDB(interno.oggetti, "14/11/2026", kData, false), host::Variant());
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 91-Variabile oggetto non impostata in "
                                      "CLSFW_MAILSERVER: FormatoDB|0||(assente)"));
}

TEST_F(ValoriSql, JoinsHostileTextAsItStands) {
  const std::string nul("a\0b", 3);
  EXPECT_EQ(FormatoDB(interno.oggetti, nul, kTesto, false), host::Variant("'" + nul + "'"));
  EXPECT_EQ(FormatoDB(interno.oggetti, "a\r\nb", kTesto, false), host::Variant("'a\r\nb'"));
  EXPECT_EQ(FormatoDB(interno.oggetti, "\xFF\xC3", kTesto, false), host::Variant("'\xFF\xC3'"));
  const std::string lungo(1U << 20U, '\'');
  EXPECT_EQ(FormatoDB(interno.oggetti, lungo, kTesto, false), host::Variant("'" + lungo + "'"));
}

}  // namespace
}  // namespace orve
