// The result file of a list: what it keeps through crashes, full disks and other people's hands.
#include "orve-mail/lists/esiti_lista.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "orve-mail/terminal/uscita.h"
#include "patterns.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kTitoli = "riga;impronta;destinatario;inizio;esito;motivo;lista LISTA-1\n";
const std::string kUna(32, 'a');
const std::string kDue(32, 'b');

class Esiti : public ::testing::Test {
 protected:
  [[nodiscard]] std::string File() const { return (cartella.Path() / "lista.esito").string(); }
  [[nodiscard]] std::string Testo() const { return support::ReadFile(File()); }
  /// The file without its times.
  [[nodiscard]] std::string SenzaOre() const {
    return patterns::Replaced(Testo(), "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}Z", "ORA");
  }
  [[nodiscard]] static std::string Riga(const std::string& resto) { return kTitoli + resto; }
  /// What the program says when it cannot use the file; empty when it can.
  [[nodiscard]] std::string Rifiuto() const {
    try {
      const EsitiLista esiti(File(), "LISTA-2");
      return "";
    } catch (const ErroreProgramma& errore) {
      EXPECT_EQ(errore.Stato(), Uscita::kFileMancante);
      return errore.what();
    }
  }

  support::TempDir cartella;
};

}  // namespace

TEST_F(Esiti, ANewFileBelongsToTheListAndIsForItsOwnerAlone) {
  const EsitiLista esiti(File(), "LISTA-1");
  EXPECT_EQ(esiti.Lista(), "LISTA-1");
  EXPECT_EQ(Testo(), kTitoli);
  struct stat stato {};
  ASSERT_EQ(::stat(File().c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777, 0600U);
}

TEST_F(Esiti, EachRowIsALineWithItsOutcome) {
  {
    EsitiLista esiti(File(), "LISTA-1");
    esiti.Inizia(2, kUna, "Rossi <rossi@x.example>");
    esiti.Concludi(EsitoRiga::kInviato, "");
    esiti.Inizia(3, kDue, "cliente 1004");
    esiti.Concludi(EsitoRiga::kRifiutato, "Indirizzo mancante");
    esiti.Annota(4, "", "", EsitoRiga::kMalformata, "ha 1 campo invece di 2");
    esiti.Inizia(6, kUna, "x");
    esiti.Concludi(EsitoRiga::kConRiserva, "y");
    esiti.Inizia(7, kUna, "x");
    esiti.Concludi(EsitoRiga::kFallito, "z");
  }
  EXPECT_EQ(SenzaOre(), Riga("2;" + kUna + ";Rossi <rossi@x.example>;ORA;inviato;\n" +  //
                             "3;" + kDue + ";cliente 1004;ORA;rifiutato;Indirizzo mancante\n" +
                             "4;;;;malformata;ha 1 campo invece di 2\n" +      //
                             "6;" + kUna + ";x;ORA;inviato con riserva;y\n" +  //
                             "7;" + kUna + ";x;ORA;fallito;z\n"));
  const EsitiLista esiti(File(), "LISTA-2");
  EXPECT_EQ(esiti.Lista(), "LISTA-1");
  EXPECT_EQ(esiti.Cerca(2)->esito, EsitoRiga::kInviato);
  EXPECT_EQ(esiti.Cerca(2)->impronta, kUna);
  EXPECT_EQ(esiti.Cerca(3)->esito, EsitoRiga::kRifiutato);
  EXPECT_EQ(esiti.Cerca(4)->impronta, "");
  EXPECT_FALSE(esiti.Cerca(5));
  EXPECT_THAT(esiti.Definitive(), ElementsAre(2, 6));
}

TEST_F(Esiti, TheFirstHalfIsInTheFileBeforeTheMessageLeaves) {
  EsitiLista esiti(File(), "LISTA-1");
  esiti.Inizia(2, kUna, "x");
  EXPECT_EQ(SenzaOre(), Riga("2;" + kUna + ";x;ORA;"));
}

std::string Intera(const std::string& impronta) {
  return "2;" + impronta + ";x;2026-01-01T00:00:00Z;inviato;\n";
}

std::string Mezza(const std::string& impronta) {
  return "3;" + impronta + ";y;2026-01-01T00:00:01Z;";
}

TEST_F(Esiti, ALineWithoutItsSecondHalfIsUncertain) {
  for (const std::string& resto :
       {std::string(), std::string("i"), std::string("inviato"), std::string("inviato;"),
        std::string("fallito;550 no"), std::string("\0\0\0", 3)}) {
    std::string righe = Intera(kUna) + Mezza(kDue);
    righe += resto;
    cartella.Write("lista.esito", Riga(righe));
    {
      const EsitiLista esiti(File(), "LISTA-2");
      EXPECT_EQ(esiti.Cerca(3)->esito, EsitoRiga::kIncerto) << resto;
      EXPECT_EQ(esiti.Cerca(3)->impronta, kDue);
    }
    const EsitiLista dinuovo(File(), "LISTA-3");
    EXPECT_THAT(dinuovo.Definitive(), ElementsAre(2, 3));
    EXPECT_THAT(Testo(),
                HasSubstr("3;" + kDue + ";y;2026-01-01T00:00:01Z;incerto;il programma si è fermato"));
  }
}

// The message of such a row cannot have been sent: its first half was not yet on disk.
TEST_F(Esiti, AHalfWrittenFirstHalfIsAsIfItHadNeverBeen) {
  const std::string intera = "2;" + kUna + ";x;2026-01-01T00:00:00Z;inviato;\n";
  const std::string torsi = "3;" + kDue + ";y;2026-01-01T00:00:01Z";
  for (std::size_t i = 1; i <= torsi.size(); ++i) {
    cartella.Write("lista.esito", Riga(intera + torsi.substr(0, i)));
    const EsitiLista esiti(File(), "LISTA-2");
    EXPECT_FALSE(esiti.Cerca(3)) << i;
    EXPECT_EQ(Testo(), Riga(intera));
  }
}

TEST_F(Esiti, AHalfWrittenLineOfARowThatWasNeverHandedOverIsDropped) {
  for (const std::string& truncated : {std::string("3;;;;malf"), "3;" + kUna.substr(0, 32) + ";x;;fallito"}) {
    cartella.Write("lista.esito", Riga(truncated));
    const EsitiLista esiti(File(), "LISTA-2");
    EXPECT_FALSE(esiti.Cerca(3));
    EXPECT_EQ(Testo(), kTitoli);
  }
}

TEST_F(Esiti, HalfWrittenTitlesAreWrittenAgain) {
  const std::string titoli = kTitoli;
  for (std::size_t i = 0; i < titoli.size(); ++i) {
    cartella.Write("lista.esito", titoli.substr(0, i));
    const EsitiLista esiti(File(), "LISTA-9");
    EXPECT_EQ(esiti.Lista(), "LISTA-9");
    EXPECT_EQ(Testo(), titoli.substr(0, titoli.size() - 2) + "9\n");
  }
}

TEST_F(Esiti, AFileOfSomebodyElseIsLeftAlone) {
  for (const std::string& testo :
       {std::string("tipo;codice\ncliente;1001\n"), std::string("x"), std::string("riga;impronta\n"),
        std::string("\0\0\0\0", 4), std::string(200'000, 'x'), std::string("\n")}) {
    cartella.Write("lista.esito", testo);
    EXPECT_THAT(Rifiuto(), HasSubstr("non è un file dei risultati"));
    EXPECT_TRUE(Testo() == testo);
  }
}

TEST_F(Esiti, ADamagedLineIsToldAndNothingChanged) {
  const std::string buona = Intera(kUna);
  for (const std::string& guasta :
       {std::string("\n"), "3;" + kUna + ";x;;inviato\n", "3;" + kUna + ";x;;spedito;\n",
        "x;" + kUna + ";x;;inviato;\n", "-3;" + kUna + ";x;;inviato;\n", std::string("3;;x;;inviato;\n"),
        "3;" + kUna.substr(1) + ";x;;inviato;\n", "3;" + kUna.substr(1) + "G;x;;inviato;\n",
        "3;" + kUna + ";x;;inviato;;\n", "99999999999999999999999;" + kUna + ";x;;inviato;\n"}) {
    std::string righe = buona;
    righe += guasta;
    righe += buona;
    const std::string testo = Riga(righe);
    cartella.Write("lista.esito", testo);
    EXPECT_THAT(Rifiuto(), HasSubstr("è danneggiato alla riga 3")) << guasta;
    EXPECT_EQ(Testo(), testo);
  }
}

TEST_F(Esiti, ADamagedLineWithoutItsEndIsToldAndNothingChanged) {
  for (const std::string& linea :
       {"x;" + kUna + ";a;ORA;", std::string("2;;a;ORA;"), "2;" + kUna + "b;a;ORA;inviato"}) {
    std::string testo = "1;" + kUna + ";a;ORA;inviato;\n";
    testo += linea;
    testo = Riga(testo);
    cartella.Write("lista.esito", testo);
    EXPECT_THAT(Rifiuto(), HasSubstr("danneggiato alla riga 3")) << linea;
    EXPECT_EQ(Testo(), testo);
  }
}

TEST_F(Esiti, TwoRunsAtOnceAreRefused) {
  {
    const EsitiLista esiti(File(), "LISTA-1");
    EXPECT_THAT(Rifiuto(), HasSubstr("è in uso da un altro invio"));
    std::filesystem::create_hard_link(File(), cartella.Path() / "altro nome");
    EXPECT_THROW(EsitiLista((cartella.Path() / "altro nome").string(), "LISTA-2"), ErroreProgramma);
  }
  EXPECT_EQ(Rifiuto(), "");
}

TEST_F(Esiti, WhoeverOpensTheFileBehindTheReorderingIsStillRefused) {
  EsitiLista esiti(File(), "LISTA-1");
  esiti.Annota(2, kUna, "x", EsitoRiga::kFallito, "");
  esiti.Annota(2, kUna, "x", EsitoRiga::kFallito, "");
  esiti.Riordina();
  EXPECT_THAT(Rifiuto(), HasSubstr("è in uso da un altro invio"));
}

TEST_F(Esiti, RowsTriedAgainLeaveOneLineInTheOrderOfTheList) {
  {
    EsitiLista esiti(File(), "LISTA-1");
    esiti.Annota(9, "", "", EsitoRiga::kMalformata, "m");
    esiti.Inizia(3, kUna, "tre");
    esiti.Concludi(EsitoRiga::kFallito, "una volta");
    esiti.Inizia(2, kDue, "due");
    esiti.Concludi(EsitoRiga::kInviato, "");
    esiti.Inizia(3, kDue, "tre");
    esiti.Concludi(EsitoRiga::kInviato, "");
    esiti.Riordina();
    const std::string riordinato =
        Riga("2;" + kDue + ";due;ORA;inviato;\n3;" + kDue + ";tre;ORA;inviato;\n9;;;;malformata;m\n");
    EXPECT_EQ(SenzaOre(), riordinato);
    esiti.Inizia(10, kUna, "dieci");  // and it continues after that
    esiti.Concludi(EsitoRiga::kInviato, "");
    esiti.Riordina();
    EXPECT_EQ(SenzaOre(), riordinato + "10;" + kUna + ";dieci;ORA;inviato;\n");
  }
  EXPECT_EQ(EsitiLista(File(), "x").Quante(), 4U);

  EXPECT_FALSE(std::filesystem::exists(File() + ".nuovo"));
}

TEST_F(Esiti, NothingIsWrittenThroughALink) {
  const std::string vittima = (cartella.Path() / "vittima").string();
  const std::string legame = (cartella.Path() / "legame").string();
  std::filesystem::create_symlink(vittima, legame);
  try {
    const EsitiLista esiti(legame, "LISTA-1");
    ADD_FAILURE() << "written through the link";
  } catch (const ErroreProgramma& errore) {
    EXPECT_EQ(errore.Stato(), Uscita::kFileMancante);
    EXPECT_EQ(errore.what(),
              "File dei risultati " + legame + ": è un collegamento simbolico; indicare il file stesso");
  }
  EXPECT_FALSE(std::filesystem::exists(vittima));
}

TEST_F(Esiti, AFileOfAnotherUserIsRefusedButRootGoesOnWithHis) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  EsitiLista(File(), "LISTA-1").Annota(2, kUna, "x", EsitoRiga::kInviato, "");
  const std::string prima = Testo();
  ASSERT_EQ(::chown(File().c_str(), 65534, 65534), 0);
  ASSERT_EQ(::chmod(cartella.Path().c_str(), 01777), 0);  // where anybody could have planted it
  EXPECT_THAT(Rifiuto(), HasSubstr("appartiene a un altro utente; indicare un file proprio"));
  EXPECT_EQ(Testo(), prima);
  ASSERT_EQ(::chmod(cartella.Path().c_str(), 0755), 0);
  {
    EsitiLista esiti(File(), "LISTA-1");
    EXPECT_EQ(esiti.Quante(), 1U);
    esiti.Annota(2, kUna, "x", EsitoRiga::kInviato, "");
    esiti.Riordina();
  }
  struct stat stato {};
  ASSERT_EQ(::stat(File().c_str(), &stato), 0);
  EXPECT_EQ(stato.st_uid, 65534U) << "it stays his";
}

// Somebody who guesses the name of the next file would own the results.
TEST_F(Esiti, AFilePreparedUnderTheNameOfTheNewOneIsNotWritten) {
  const std::string preparato = cartella.Write("preparato", "altrui");
  std::filesystem::create_hard_link(preparato, File() + ".nuovo");
  {
    EsitiLista esiti(File(), "LISTA-1");
    esiti.Annota(2, kUna, "x", EsitoRiga::kFallito, "1");
    esiti.Annota(2, kUna, "x", EsitoRiga::kFallito, "2");
    esiti.Riordina();
  }
  EXPECT_EQ(support::ReadFile(preparato), "altrui");
  EXPECT_EQ(Testo(), Riga("2;" + kUna + ";x;;fallito;2\n"));
  EXPECT_FALSE(std::filesystem::equivalent(preparato, File()));
}

TEST_F(Esiti, TextsStayOneFieldOfOneLine) {
  const std::string lungo(5000, 'x');
  EsitiLista esiti(File(), "LISTA-1");
  esiti.Inizia(2, kUna, "A;\"B\"\r\nC\xE9\x1B[0m");
  esiti.Concludi(EsitoRiga::kFallito, "uno;due\ntre " + lungo);
  EXPECT_THAT(SenzaOre(), HasSubstr(";A,'B' C\xEF\xBF\xBD\\u001B[0m;ORA;fallito;uno,due tre xxx"));
  EXPECT_LT(Testo().size(), 1300U);
  EXPECT_EQ(esiti.Cerca(2)->esito, EsitoRiga::kFallito);
}

TEST_F(Esiti, NoSpreadsheetRunsWhatStandsThere) {
  EsitiLista esiti(File(), "LISTA-1");
  esiti.Inizia(2, kUna, "=cmd|' /C calc'!A0 <x@example.org>");
  esiti.Concludi(EsitoRiga::kFallito, "no\xE2\x80\x8F;@SUM(1)");
  EXPECT_THAT(SenzaOre(), HasSubstr(";'=cmd|' /C calc'!A0 <x@example.org>;ORA;fallito;no\\u200F,'@SUM(1)"));
}

TEST_F(Esiti, AFolderThatIsNotThere) {
  EXPECT_THROW(EsitiLista((cartella.Path() / "no" / "lista.esito").string(), "L"), ErroreProgramma);
  EXPECT_THROW(EsitiLista(cartella.Path().string(), "L"), ErroreProgramma);
}

TEST_F(Esiti, WhatIsNoFileIsRefused) {
  EXPECT_THROW(EsitiLista("/dev/full", "L"), ErroreProgramma);
  ASSERT_EQ(::mkfifo(File().c_str(), 0600), 0);
  EXPECT_THAT(Rifiuto(), HasSubstr("non è un file"));
}

// No file that this process writes may grow beyond a limit.
class SpazioLimitato {
 public:
  explicit SpazioLimitato(rlim_t byte) {
    ::getrlimit(RLIMIT_FSIZE, &prima_);
    rlimit limite = prima_;
    limite.rlim_cur = byte;
    ::setrlimit(RLIMIT_FSIZE, &limite);
    segnale_ = std::signal(SIGXFSZ, SIG_IGN);
  }
  SpazioLimitato(const SpazioLimitato&) = delete;
  SpazioLimitato& operator=(const SpazioLimitato&) = delete;
  ~SpazioLimitato() {
    ::setrlimit(RLIMIT_FSIZE, &prima_);
    std::signal(SIGXFSZ, segnale_);
  }

 private:
  rlimit prima_{};
  void (*segnale_)(int) = nullptr;
};

TEST_F(Esiti, ALineThatFindsNoRoomLeavesNoTrace) {
  EsitiLista esiti(File(), "LISTA-1");
  esiti.Inizia(2, kUna, "x");
  esiti.Concludi(EsitoRiga::kInviato, "");
  const std::string prima = Testo();
  {
    const SpazioLimitato limite(prima.size() + 20);
    EXPECT_THROW(esiti.Inizia(3, kDue, "y"), ErroreProgramma);
    EXPECT_THROW(esiti.Annota(3, kDue, "y", EsitoRiga::kFallito, ""), ErroreProgramma);
  }
  EXPECT_EQ(Testo(), prima);
  esiti.Inizia(3, kDue, "y");  // and there is room again
  esiti.Concludi(EsitoRiga::kInviato, "");
  EXPECT_THAT(esiti.Definitive(), ElementsAre(2, 3));
}

TEST_F(Esiti, ASecondHalfThatFindsNoRoomLeavesTheRowUncertain) {
  {
    EsitiLista esiti(File(), "LISTA-1");
    esiti.Inizia(2, kUna, "x");
    const SpazioLimitato limite(Testo().size() + 3);
    EXPECT_THROW(esiti.Concludi(EsitoRiga::kInviato, ""), ErroreProgramma);
  }
  const EsitiLista esiti(File(), "LISTA-2");
  EXPECT_EQ(esiti.Cerca(2)->esito, EsitoRiga::kIncerto);
}

TEST_F(Esiti, RoomThatWasAskedForAndNotUsedIsGivenBack) {
  {
    EsitiLista esiti(File(), "LISTA-1");
    esiti.Inizia(2, kUna, "x");
    esiti.Concludi(EsitoRiga::kInviato, "");
  }
  struct stat stato {};
  ASSERT_EQ(::stat(File().c_str(), &stato), 0);
  EXPECT_LE(stato.st_blocks * 512, 64 * 1024);
}

TEST_F(Esiti, AHundredThousandRowsAreFoundAgain) {
  {
    EsitiLista esiti(File(), "LISTA-1");
    for (std::size_t riga = 2; riga < 100'002; ++riga) {
      esiti.Annota(riga, riga % 2 == 0 ? kUna : kDue, "x", EsitoRiga::kInviato, "");
    }
  }
  const EsitiLista esiti(File(), "LISTA-2");
  EXPECT_EQ(esiti.Quante(), 100'000U);
  EXPECT_EQ(esiti.Cerca(100'001)->impronta, kDue);
}

}  // namespace orve::app
