#include "content/send_log.h"

#include <chrono>
#include <string>
#include <vector>

#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kFile = "C:\\Temp\\ML141126.log";
constexpr const char* kTestata =
    "Destinatario --- StatoInvio --- MetodoFallito --- NomeFile --- Data --- Ora\r\n\r\n";

class LogDegliInvii : public fakes::ServizioDiProva {
 protected:
  LogDegliInvii() {
    interno.impostazioni.PathTemp = "C:\\Temp";
    servizio->vDitta = "Azienda Uno";
    servizio->vMailAttachment = "C:\\Doc\\fattura.pdf";
  }
  /// The content of the day's file without its header.
  std::string Righe() {
    const std::string contenuto = ambiente->file[kFile];
    EXPECT_THAT(contenuto, StartsWith(kTestata));
    return contenuto.substr(std::string(kTestata).size());
  }
  std::string PrimaColonna() {
    ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "M");
    return Righe().substr(0, Righe().find("   ErroreInvio"));
  }
};

TEST_F(LogDegliInvii, TheFirstFailureOfADayWritesHeaderEmptyLineAndRecordTheSecondOnlyItsRecord) {
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "SendWithSmtp");
  const std::string record =
      "Azienda Uno                                ErroreInvio   SendWithSmtp   fattura.pdf   14/11/2026   "
      "10:22:05\r\n";
  EXPECT_EQ(ambiente->file[kFile], kTestata + record);

  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "SendWithSmtp");
  EXPECT_EQ(ambiente->file[kFile], kTestata + record + record);
}

TEST_F(LogDegliInvii, AsksAndWritesInThisOrder) {
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("Ambiente.CreaFileSystem", "FileSystem.FolderExists C:\\Temp",
                          "FileSystem.FileExists C:\\Temp\\ML141126.log",
                          "FileSystem.OpenTextFile C:\\Temp\\ML141126.log|8|true|0",
                          "TextStream.WriteLine Destinatario --- StatoInvio --- MetodoFallito --- NomeFile "
                          "--- Data --- Ora\r\n",
                          "TextStream.WriteLine Azienda Uno                                ErroreInvio   "
                          "InviaMail   fattura.pdf   14/11/2026   10:22:05",
                          "TextStream.Close"));
}

TEST_F(LogDegliInvii, KeepsPathAndDirectoryAndReleasesTheFileObjects) {
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_EQ(interno.oggetti.PercorsoLog, kFile);
  EXPECT_EQ(interno.oggetti.CartellaLog, "C:\\Temp");
  EXPECT_EQ(interno.oggetti.objFileSystem, nullptr);
  EXPECT_EQ(interno.oggetti.objTextStream, nullptr);
}

TEST_F(LogDegliInvii, ADirectoryThatDoesNotExistGivesNoFileAndNoError) {
  interno.impostazioni.PathTemp = "C:\\Manca";
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_THAT(ambiente->file, IsEmpty());
  EXPECT_THAT(journal->Righe(), ElementsAre("Ambiente.CreaFileSystem", "FileSystem.FolderExists C:\\Manca"));
  EXPECT_EQ(interno.oggetti.objFileSystem, nullptr);
}

TEST_F(LogDegliInvii, TheRecordByStatus) {
  struct Caso {
    std::int32_t stato;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {0, "   No Error      ------------------------   fattura.pdf   14/11/2026   10:22:05\r\n"},
      {1, "   IndMancante   ------------------------   fattura.pdf   14/11/2026   10:22:05\r\n"},
      {2, "   ErroreInvio   Metodo   fattura.pdf   14/11/2026   10:22:05\r\n"},
      {3, "      fattura.pdf   14/11/2026   10:22:05\r\n"},
      {-1, "      fattura.pdf   14/11/2026   10:22:05\r\n"},
      {99, "      fattura.pdf   14/11/2026   10:22:05\r\n"},
  };
  const std::string azienda = "Azienda Uno                             ";
  ASSERT_EQ(azienda.size(), 40U);
  for (const auto& caso : casi) {
    ambiente->file.clear();
    ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, caso.stato, "Metodo");
    EXPECT_EQ(Righe(), azienda + caso.want) << "status " << caso.stato;
  }
}

TEST_F(LogDegliInvii, TheMethodIsNotPaddedToItsColumn) {
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "GestioneEventoBeforeSendMail");
  EXPECT_THAT(Righe(), HasSubstr("ErroreInvio   GestioneEventoBeforeSendMail   fattura.pdf"));
}

TEST_F(LogDegliInvii, ACompanyStandsBeforeAName) {
  servizio->vNome = "Mario Rossi";
  EXPECT_EQ(PrimaColonna(), "Azienda Uno                             ");
}

TEST_F(LogDegliInvii, WithoutACompanyTheNameStandsThere) {
  servizio->vDitta.clear();
  servizio->vNome = "Mario Rossi";
  EXPECT_EQ(PrimaColonna(), "Mario Rossi                             ");
}

TEST_F(LogDegliInvii, WithoutCompanyAndNameTheColumnReadsMancante) {
  servizio->vDitta.clear();
  EXPECT_EQ(PrimaColonna(), "MANCANTE                                ");
}

TEST_F(LogDegliInvii, ACompanyOfBlanksIsNotMissing) {
  servizio->vDitta = "   ";
  servizio->vNome = "Mario Rossi";
  EXPECT_EQ(PrimaColonna(), std::string(40, ' '));
}

TEST_F(LogDegliInvii, ANameOf55CharactersIsCutTo40) {
  servizio->vDitta.clear();
  servizio->vNome = "Società Cooperativa Agricola dei Produttori di Perugino";
  EXPECT_EQ(PrimaColonna(), "Societ\xE0 Cooperativa Agricola dei Produtt");
}

TEST_F(LogDegliInvii, LeadingBlanksAreTrimmedFirst) {
  servizio->vDitta = "     Azienda Due";
  EXPECT_EQ(PrimaColonna(), "Azienda Due                             ");
}

TEST_F(LogDegliInvii, AnEmptyAttachmentLeavesTwoSeparatorsSideBySide) {
  servizio->vMailAttachment.clear();
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_THAT(Righe(), EndsWith("ErroreInvio   InviaMail      14/11/2026   10:22:05\r\n"));
}

TEST_F(LogDegliInvii, AnAttachmentWithoutABackslashLosesItsFirstCharacter) {
  servizio->vMailAttachment = "report.pdf";
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_THAT(Righe(), HasSubstr("InviaMail   eport.pdf   14/11/2026"));
}

TEST_F(LogDegliInvii, OfSeveralPathsOnlyTheLastNameIsShown) {
  servizio->vMailAttachment = R"(C:\Doc\uno.pdf;C:\Doc\due.pdf)";
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_THAT(Righe(), HasSubstr("InviaMail   due.pdf   14/11/2026"));
}

TEST_F(LogDegliInvii, AnotherDateFormGivesANameFromTheSameCharacterPositions) {
  struct Caso {
    const char* data;
    const char* want;
  };
  const std::vector<Caso> casi = {{"2026-11-14", "ML206-14"},
                                  {"11/14/26", "ML111426"},
                                  {"4/1/2026", "ML4//226"},
                                  {"26", "ML2626"},
                                  {"7", "ML77"},
                                  {"", "ML"}};
  for (const auto& caso : casi) {
    ambiente->file.clear();
    ambiente->testoData = caso.data;
    ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
    EXPECT_EQ(interno.oggetti.PercorsoLog, "C:\\Temp\\" + std::string(caso.want) + ".log") << caso.data;
    EXPECT_TRUE(ambiente->file.contains(interno.oggetti.PercorsoLog)) << caso.data;
  }
}

TEST_F(LogDegliInvii, DateAndTimeOfTheRecordAreReadWhenItIsBuilt) {
  journal->Quando("FileSystem.OpenTextFile",
                  [this] { ambiente->adesso = host::DataOra::Da(2026, 11, 15, 0, 0, 1); });
  ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail");
  EXPECT_THAT(Righe(), EndsWith("15/11/2026   00:00:01\r\n"));
}

TEST_F(LogDegliInvii, WritesTheSingleByteCodePage) {
  servizio->vDitta = "Perù – caffè 漢";
  EXPECT_EQ(PrimaColonna(), "Per\xF9 \x96 caff\xE8 ?                          ");
}

// Whatever fails, the statements after it still run, and nothing comes out.
TEST_F(LogDegliInvii, EachFailureIsIgnoredAndTheNextStatementRuns) {
  struct Caso {
    const char* guasto;
    std::vector<std::string> want;
  };
  const std::vector<Caso> casi = {
      {"Ambiente.CreaFileSystem", {}},
      {"FileSystem.FolderExists",
       {"FileSystem.FolderExists", "FileSystem.FileExists", "FileSystem.OpenTextFile", "TextStream.WriteLine",
        "TextStream.WriteLine", "TextStream.Close"}},
      {"FileSystem.FileExists",
       {"FileSystem.FolderExists", "FileSystem.FileExists", "FileSystem.OpenTextFile", "TextStream.WriteLine",
        "TextStream.WriteLine", "TextStream.Close"}},
      {"FileSystem.OpenTextFile",
       {"FileSystem.FolderExists", "FileSystem.FileExists", "FileSystem.OpenTextFile"}},
      {"TextStream.WriteLine",
       {"FileSystem.FolderExists", "FileSystem.FileExists", "FileSystem.OpenTextFile", "TextStream.WriteLine",
        "TextStream.WriteLine", "TextStream.Close"}},
      {"TextStream.Close",
       {"FileSystem.FolderExists", "FileSystem.FileExists", "FileSystem.OpenTextFile", "TextStream.WriteLine",
        "TextStream.WriteLine", "TextStream.Close"}},
  };
  for (const auto& caso : casi) {
    ambiente->file.clear();
    journal->Svuota();
    journal->Fallisce(caso.guasto);
    EXPECT_NO_THROW(ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail"))
        << caso.guasto;
    journal->DimenticaPiani();
    std::vector<std::string> got;
    for (const auto& riga : journal->Righe({"FileSystem.", "TextStream."})) {
      got.push_back(riga.substr(0, riga.find(' ')));
    }
    EXPECT_EQ(got, caso.want) << caso.guasto;
    EXPECT_THAT(Messaggi(), IsEmpty()) << caso.guasto;
    EXPECT_EQ(interno.oggetti.objFileSystem, nullptr) << caso.guasto;
    EXPECT_EQ(interno.oggetti.objTextStream, nullptr) << caso.guasto;
  }
}

TEST_F(LogDegliInvii, AMissingFileSystemCostsNothing) {
  journal->Fallisce("Ambiente.CreaFileSystem", host::Errore(host::kOggettoNonCreabile));
  EXPECT_NO_THROW(ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail"));
  EXPECT_THAT(ambiente->file, IsEmpty());
}

TEST_F(LogDegliInvii, HostileTextNeitherFailsNorWidensTheFirstColumn) {
  for (const std::string& nome :
       {std::string("a\0b", 3), std::string("\xFF\xFE\xC3"), std::string(1U << 20U, 'x'),
        std::string(1U << 20U, ' '), std::string("riga\r\nriga")}) {
    ambiente->file.clear();
    servizio->vDitta = nome;
    servizio->vMailAttachment = nome;
    EXPECT_NO_THROW(ScriviLogInvio(interno.messaggio, interno.impostazioni, interno.oggetti, 2, "InviaMail"));
    EXPECT_EQ(Righe().find("   ErroreInvio"), 40U);
  }
}

TEST(FormattaCampoLog, FitsATextToItsColumn) {
  struct Caso {
    const char* etichetta;
    host::Variant valore;
    std::int16_t larghezza;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"padded", "ab", 5, "ab   "},
      {"exact", "abcde", 5, "abcde"},
      {"cut", "abcdefg", 5, "abcde"},
      {"trimmed on both sides", "  ab  ", 5, "ab   "},
      {"cut after the trim", "  abcdefg", 5, "abcde"},
      {"accents are one character each", "èèè", 5, "èèè  "},
      {"accents are not cut in half", "èèèèèè", 5, "èèèèè"},
      {"blanks only", "   ", 5, "     "},
      {"empty text", "", 3, "   "},
      {"number", 12, 5, "12   "},
      {"width 0", "ab", 0, ""},
      {"empty value", {}, 5, ""},
      {"null", host::Null{}, 5, ""},
      {"width below 0", "ab", -1, ""},
      {"no text form", host::Variant::Array{}, 5, ""},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(FormattaCampoLog(caso.valore, caso.larghezza), caso.want) << caso.etichetta;
  }
}

TEST(EstraiNomeFile, TakesWhatFollowsTheLastBackslash) {
  struct Caso {
    const char* etichetta;
    host::Variant percorso;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"path", "C:\\Doc\\fattura.pdf", "fattura.pdf"},
      {"only a leading backslash", "\\fattura.pdf", "fattura.pdf"},
      {"without a backslash the first character goes", "report.pdf", "eport.pdf"},
      {"which may be an accented one", "è.pdf", ".pdf"},
      {"trailing backslash", "C:\\Doc\\", ""},
      {"several paths", R"(C:\a.pdf;C:\Doc\b.pdf)", "b.pdf"},
      {"slashes do not count", "/home/doc.pdf", "home/doc.pdf"},
      {"one character", "a", ""},
      {"empty", "", ""},
      {"empty value", {}, ""},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(EstraiNomeFile(caso.percorso), caso.want) << caso.etichetta;
  }
}

TEST(EstraiNomeFile, RaisesForAValueWithoutATextForm) {
  EXPECT_THROW((void)EstraiNomeFile(host::Null{}), host::Errore);
  EXPECT_THROW((void)EstraiNomeFile(host::Variant::Array{}), host::Errore);
}

}  // namespace
}  // namespace orve
