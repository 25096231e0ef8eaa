#include <string>
#include <vector>

#include "content/corpo_html.h"
#include "fakes/allocazioni.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kStatementHTML =
    " SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_MAIL_HTML' AND FW95_VALORE = 1 ";
constexpr const char* kStatementTabella =
    " SELECT FW95_VALORE FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_FIRME' ";
constexpr const char* kStatementEsiste =
    "SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'FIRME'";
constexpr const char* kStatementFirma =
    " SELECT FIRMA_HTML, ISNULL(FONT,'') FONT, ISNULL(DIMENSIONE,0) DIMENSIONE \r\n"
    " FROM FIRME\r\n"
    " WHERE IDUTENTE_FW07 = 7\r\n";

class CorpoHTML : public fakes::ServizioDiProva {
 protected:
  void ConInterfaccia(std::int32_t idUtente = 7) {
    servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, idUtente);
  }
  void ConFirma(host::Variant firma, host::Variant font, host::Variant dimensione) {
    ConInterfaccia();
    connessione->Risponde("INFORMATION_SCHEMA", {{{"", 1}}});
    connessione->Risponde("FIRMA_HTML", {{{"FIRMA_HTML", std::move(firma)},
                                          {"FONT", std::move(font)},
                                          {"DIMENSIONE", std::move(dimensione)}}});
  }
  /// Signature, font and size as one text.
  std::string Firma(const std::string& tabella = "FIRME") {
    const FirmaUtente firma = GetFirmaUtente(interno.contesto, interno.oggetti, tabella);
    return firma.testo + "|" + firma.font + "|" + std::to_string(firma.dimensione);
  }
};

TEST_F(CorpoHTML, TheSettingIsAskedWithThisStatement) {
  (void)EsisteParamHTMLFW95(interno.contesto, interno.oggetti);
  EXPECT_THAT(journal->Righe(), ElementsAre(std::string("ConnectionADO.Execute 1 ") + kStatementHTML));
}

TEST_F(CorpoHTML, HTMLIsWantedWhenTheSettingHasARow) {
  EXPECT_FALSE(EsisteParamHTMLFW95(interno.contesto, interno.oggetti));
  connessione->Risponde("AIT_MAIL_HTML", {{{"", 1}}});
  EXPECT_TRUE(EsisteParamHTMLFW95(interno.contesto, interno.oggetti));
}

TEST_F(CorpoHTML, AFailingSettingIsReportedAndCountsAsNo) {
  journal->Fallisce("ConnectionADO.Execute", {1001, "Prova", "guasto di prova"});
  EXPECT_FALSE(EsisteParamHTMLFW95(interno.contesto, interno.oggetti));
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001-guasto di prova in CLSFW_MAILSERVER: "
                                      "EsisteParamHTMLFW95|0||(assente)"));
}

TEST_F(CorpoHTML, WithoutAConnectionTheSettingIsReportedAndCountsAsNo) {
  servizio->ConnectionADO.reset();
  EXPECT_FALSE(EsisteParamHTMLFW95(interno.contesto, interno.oggetti));
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg 91-Variabile oggetto non impostata in CLSFW_MAILSERVER: "
                          "EsisteParamHTMLFW95|0||(assente)"));
}

TEST_F(CorpoHTML, TheTableOfSignaturesByRow) {
  EXPECT_EQ(TabellaFirmeFW95(interno.contesto, interno.oggetti), "");
  EXPECT_THAT(journal->Righe(), ElementsAre(std::string("ConnectionADO.Execute 1 ") + kStatementTabella));
  connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", " FIRME  "}}, {{"FW95_VALORE", "ALTRA"}}});
  EXPECT_EQ(TabellaFirmeFW95(interno.contesto, interno.oggetti), " FIRME");
}

TEST_F(CorpoHTML, AFailingTableOfSignaturesIsReportedAndEmpty) {
  journal->Fallisce("ConnectionADO.Execute", {1001, "Prova", "guasto di prova"});
  EXPECT_EQ(TabellaFirmeFW95(interno.contesto, interno.oggetti), "");
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001-guasto di prova in CLSFW_MAILSERVER: "
                                      "TabellaFirmeFW95|0||(assente)"));
}

TEST_F(CorpoHTML, ANullTableOfSignaturesIsReportedAndEmpty) {
  connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", host::Null{}}}});
  EXPECT_EQ(TabellaFirmeFW95(interno.contesto, interno.oggetti), "");
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 94-Utilizzo non valido di Null in "
                                      "CLSFW_MAILSERVER: TabellaFirmeFW95|0||(assente)"));
}

TEST_F(CorpoHTML, TheSignatureIsReadWithTheseStatementsInThisOrder) {
  ConFirma("<b>Maria</b>", "Arial", 4);
  EXPECT_EQ(Firma(), "<b>Maria</b>|Arial|4");
  EXPECT_THAT(
      journal->Righe(),
      ElementsAre(std::string("ConnectionADO.Execute -1 ") + kStatementEsiste, "ActiveInterface.Applicazione",
                  "Host.UtenteCorrente.IdUtente", std::string("ConnectionADO.Execute 1 ") + kStatementFirma,
                  "RecordSet.Fields FIRMA_HTML", "RecordSet.Fields FONT", "RecordSet.Fields DIMENSIONE"));
}

TEST_F(CorpoHTML, BlanksAfterTheSignatureFontAndSizeAreCut) {
  ConFirma("  <b>Maria</b>  ", " Arial ", "4 ");
  EXPECT_EQ(Firma(), "  <b>Maria</b>| Arial|4");
}

TEST_F(CorpoHTML, OnlyTheFirstRowOfTheSignatureCounts) {
  ConFirma("prima firma", "", 0);
  connessione->Risponde("FIRMA_HTML", {{{"FIRMA_HTML", "prima firma"}, {"FONT", ""}, {"DIMENSIONE", 0}},
                                       {{"FIRMA_HTML", "seconda"}, {"FONT", "Arial"}, {"DIMENSIONE", 5}}});
  EXPECT_EQ(Firma(), "prima firma||0");
}

TEST_F(CorpoHTML, ATableThatDoesNotExistGivesNoSignatureAndNoMessage) {
  ConInterfaccia();
  EXPECT_EQ(Firma(), "||0");
  EXPECT_THAT(journal->Righe(), ElementsAre(std::string("ConnectionADO.Execute -1 ") + kStatementEsiste));
}

TEST_F(CorpoHTML, AnEmptyTableNameIsAskedAllTheSame) {
  ConInterfaccia();
  EXPECT_EQ(Firma(""), "||0");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("ConnectionADO.Execute -1 SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where "
                          "TABLE_NAME = ''"));
}

TEST_F(CorpoHTML, AUserWithoutARowHasNoSignature) {
  ConInterfaccia();
  connessione->Risponde("INFORMATION_SCHEMA", {{{"", 1}}});
  EXPECT_EQ(Firma(), "||0");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CorpoHTML, WhatWasReadOfASignatureBeforeAFailureCounts) {
  struct Caso {
    const char* guasto;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"ConnectionADO.Execute -1", "||0"},
      {"ActiveInterface.Applicazione", "||0"},
      {"Host.UtenteCorrente.IdUtente", "||0"},
      {"ConnectionADO.Execute 1", "||0"},
      {"RecordSet.Fields FIRMA_HTML", "||0"},
      {"RecordSet.Fields FONT", "firma||0"},
      {"RecordSet.Fields DIMENSIONE", "firma|Arial|0"},
  };
  ConFirma("firma", "Arial", 4);
  for (const auto& caso : casi) {
    journal->Fallisce(caso.guasto);
    EXPECT_EQ(Firma(), caso.want) << caso.guasto;
    journal->DimenticaPiani();
    EXPECT_THAT(Messaggi(), IsEmpty()) << caso.guasto;
  }
}

TEST_F(CorpoHTML, ATableWithoutTheExpectedColumnsGivesNoSignature) {
  ConInterfaccia();
  connessione->Risponde("INFORMATION_SCHEMA", {{{"", 1}}});
  connessione->Risponde("FIRMA_HTML", {{{"ALTRO", "x"}}});
  EXPECT_EQ(Firma(), "||0");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CorpoHTML, ASizeThatIsNoSmallNumberLeavesSignatureAndFont) {
  for (const auto& dimensione :
       {host::Variant("grande"), host::Variant(40000), host::Variant(host::Null{})}) {
    ConFirma("firma", "Arial", dimensione);
    EXPECT_EQ(Firma(), "firma|Arial|0") << fakes::Mostra(dimensione);
  }
}

TEST_F(CorpoHTML, WithoutInterfaceApplicationOrUserThereIsNoSignature) {
  ConFirma("firma", "Arial", 4);
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7, false);
  EXPECT_EQ(Firma(), "||0");
  servizio->ActiveInterface.reset();
  EXPECT_EQ(Firma(), "||0");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CorpoHTML, ATableNameIsJoinedInAsItStands) {
  ConInterfaccia();
  (void)Firma("L'ALTRA");
  EXPECT_THAT(connessione->Statements(),
              ElementsAre("SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'L'ALTRA'"));
}

TEST_F(CorpoHTML, OneLineBecomesOneFontElement) {
  EXPECT_EQ(TestoInHTML(interno.oggetti, "Buongiorno", "Calibri", 3),
            "<!DOCTYPE html>\r\n"
            "<html>\r\n"
            "<body>\r\n"
            "<font face = \"Calibri\" size = \"3\">Buongiorno</font><br/>\r\n"
            "</body>\r\n"
            "</html>\r\n");
}

TEST_F(CorpoHTML, LinesAreCutAtTheCarriageReturnAndKeepTheLineFeed) {
  EXPECT_EQ(TestoInHTML(interno.oggetti, "a b\r\n\r\nc\rd\n", "Arial", 2),
            "<!DOCTYPE html>\r\n"
            "<html>\r\n"
            "<body>\r\n"
            "<font face = \"Arial\" size = \"2\">a&nbsp;b</font><br/>\r\n"
            "<font face = \"Arial\" size = \"2\">\n</font><br/>\r\n"
            "<font face = \"Arial\" size = \"2\">\nc</font><br/>\r\n"
            "<font face = \"Arial\" size = \"2\">d\n</font><br/>\r\n"
            "</body>\r\n"
            "</html>\r\n");
}

TEST_F(CorpoHTML, ALastCarriageReturnMakesAnEmptyLine) {
  EXPECT_EQ(TestoInHTML(interno.oggetti, "a\r", "Arial", 2),
            "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
            "<font face = \"Arial\" size = \"2\">a</font><br/>\r\n"
            "<font face = \"Arial\" size = \"2\"></font><br/>\r\n"
            "</body>\r\n</html>\r\n");
}

TEST_F(CorpoHTML, FontAndSizeByWhatIsGiven) {
  struct Caso {
    const char* etichetta;
    const char* font;
    std::int32_t dimensione;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"both", "Arial", 5, R"(<font face = "Arial" size = "5">)"},
      {"no font", "", 5, R"(<font face = "Calibri" size = "5">)"},
      {"blank font", "  ", 5, R"(<font face = "Calibri" size = "5">)"},
      {"font with blanks around it", " Arial ", 5, R"(<font face = " Arial " size = "5">)"},
      {"no size", "Arial", 0, R"(<font face = "Arial" size = "3">)"},
      {"low 16 bits 0", "Arial", 0x30000, R"(<font face = "Arial" size = "3">)"},
      {"low 16 bits not 0", "Arial", 0x10001, R"(<font face = "Arial" size = "65537">)"},
      {"negative", "Arial", -1, R"(<font face = "Arial" size = "-1">)"},
      {"neither", "", 0, R"(<font face = "Calibri" size = "3">)"},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(TestoInHTML(interno.oggetti, "x", caso.font, caso.dimensione),
              std::string("<!DOCTYPE html>\r\n<html>\r\n<body>\r\n") + caso.want +
                  "x</font><br/>\r\n</body>\r\n</html>\r\n")
        << caso.etichetta;
  }
}

TEST_F(CorpoHTML, ABodyOfBlanksOnlyGivesAnEmptyText) {
  EXPECT_EQ(TestoInHTML(interno.oggetti, "", "Arial", 3), "");
  EXPECT_EQ(TestoInHTML(interno.oggetti, "    ", "Arial", 3), "");
}

TEST_F(CorpoHTML, NothingButBlanksIsEscaped) {
  EXPECT_EQ(TestoInHTML(interno.oggetti, "<b>1 & 2</b>", "Arial", 3),
            "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
            "<font face = \"Arial\" size = \"3\"><b>1&nbsp;&&nbsp;2</b></font><br/>\r\n"
            "</body>\r\n</html>\r\n");
}

TEST_F(CorpoHTML, TheSignatureStandsAfterTheDocument) {
  connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", "FIRME "}}});
  ConFirma("<b>Maria</b>", "Arial", 4);
  EXPECT_EQ(CorpoHTMLConFirma(interno.contesto, interno.oggetti, "Buongiorno"),
            "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
            "<font face = \"Arial\" size = \"4\">Buongiorno</font><br/>\r\n"
            "</body>\r\n</html>\r\n"
            "<b>Maria</b>");
  EXPECT_THAT(connessione->Statements(), ElementsAre(kStatementTabella, kStatementEsiste, kStatementFirma));
}

TEST_F(CorpoHTML, ABodyOfBlanksStillCarriesTheSignature) {
  connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", "FIRME"}}});
  ConFirma("<b>Maria</b>", "Arial", 4);
  EXPECT_EQ(CorpoHTMLConFirma(interno.contesto, interno.oggetti, "   "), "<b>Maria</b>");
}

TEST_F(CorpoHTML, WithoutATableNameTheBodyGoesOutInTheStandardFontWithoutASignature) {
  ConInterfaccia();
  EXPECT_EQ(CorpoHTMLConFirma(interno.contesto, interno.oggetti, "x"),
            "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
            "<font face = \"Calibri\" size = \"3\">x</font><br/>\r\n"
            "</body>\r\n</html>\r\n");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CorpoHTML, WithoutTheNamedTableOrTheUsersRowTheBodyGoesOutInTheStandardFontWithoutASignature) {
  ConInterfaccia();
  connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", "FIRME"}}});
  for (const bool esiste : {false, true}) {
    if (esiste) connessione->Risponde("INFORMATION_SCHEMA", {{{"", 1}}});
    journal->Svuota();
    EXPECT_EQ(CorpoHTMLConFirma(interno.contesto, interno.oggetti, "x"),
              "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
              "<font face = \"Calibri\" size = \"3\">x</font><br/>\r\n"
              "</body>\r\n</html>\r\n")
        << esiste;
    EXPECT_EQ(connessione->Statements().size(), esiste ? 3U : 2U);
    EXPECT_THAT(Messaggi(), IsEmpty()) << esiste;
  }
}

TEST_F(CorpoHTML, FontNullOrBlankAndSizeNullOrZeroGiveTheStandardOnes) {
  connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", "FIRME"}}});
  struct Caso {
    const char* etichetta;
    host::Variant font;
    host::Variant dimensione;
    const char* want;
  };
  // The statement already turns a null into an empty font and a size 0; a null nevertheless ends the reading.
  const std::vector<Caso> casi = {
      {"empty and 0", "", 0, R"(<font face = "Calibri" size = "3">)"},
      {"blank", "   ", 2, R"(<font face = "Calibri" size = "2">)"},
      {"null font", host::Null{}, 2, R"(<font face = "Calibri" size = "3">)"},
      {"null size", "Arial", host::Null{}, R"(<font face = "Arial" size = "3">)"},
  };
  for (const auto& caso : casi) {
    ConFirma("firma", caso.font, caso.dimensione);
    EXPECT_EQ(CorpoHTMLConFirma(interno.contesto, interno.oggetti, "x"),
              std::string("<!DOCTYPE html>\r\n<html>\r\n<body>\r\n") + caso.want +
                  "x</font><br/>\r\n</body>\r\n</html>\r\nfirma")
        << caso.etichetta;
  }
}

TEST_F(CorpoHTML, ADocumentThatDoesNotFitIntoMemoryIsReportedAndEmpty) {
  std::string html = "prima";
  fakes::ConAllocazioneCheFallisce(1, [&] { html = TestoInHTML(interno.oggetti, "x", "", 3); });
  EXPECT_EQ(html, "");
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 7-Memoria esaurita in CLSFW_MAILSERVER: "
                                      "TestoInHTML|0||(assente)"));
}

TEST_F(CorpoHTML, HostileTextIsCarriedAsItStands) {
  for (const std::string& testo :
       {std::string("a\0b", 3), std::string("\xFF\xC3"), std::string("\"'"), std::string(1U << 20U, 'x')}) {
    std::string want = "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n<font face = \"Arial\" size = \"3\">";
    want.append(testo).append("</font><br/>\r\n</body>\r\n</html>\r\n");
    EXPECT_EQ(TestoInHTML(interno.oggetti, testo, "Arial", 3), want);
  }
  EXPECT_EQ(
      TestoInHTML(interno.oggetti, std::string(1U << 16U, '\r'), "Arial", 3).size(),
      std::string("<!DOCTYPE html>\r\n<html>\r\n<body>\r\n</body>\r\n</html>\r\n").size() +
          ((1U << 16U) + 1) * std::string("<font face = \"Arial\" size = \"3\"></font><br/>\r\n").size());
}

}  // namespace
}  // namespace orve
