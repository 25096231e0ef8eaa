// A database that is locked, read-only, of the wrong schema, damaged, gone, or none at all: each is an error
// with a clear text, in bounded time, and as soon as all is well again the connection is usable.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "adapters/sqlite/prova.h"

namespace orve::adapters::sqlite {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using ::testing::AnyOf;
using ::testing::Eq;
using ::testing::HasSubstr;

constexpr const char* kImpostazioni = "SELECT FW24_INDFAXATTIVO FROM FW24_FAXCONFIG WHERE FW24_INDCANALE = 1";
constexpr const char* kEvento = "exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x' , 1";

void Scrivi(const std::string& percorso, const std::string& contenuto) {
  std::ofstream(percorso, std::ios::binary) << contenuto;
}

class Faults : public ConDatiDiProva {
 protected:
  static std::shared_ptr<SqliteConnection> ApriImpaziente(const std::string& file, milliseconds attesa) {
    SqliteOptions opzioni;
    opzioni.attesaBlocco = attesa;
    return SqliteConnection::Apri(file, opzioni);
  }

  [[nodiscard]] static int Eventi(SqliteConnection& di) {
    return host::Leggi(*di.Execute("SELECT COUNT(*) N FROM EVENTI_GESTIONALI", 1), "N").ToInt32();
  }
};

TEST_F(Faults, ALockedFileIsWaitedForAndThenAnError) {
  const auto nostra = ApriImpaziente(percorso, milliseconds(300));
  (void)Esegui("BEGIN EXCLUSIVE");
  for (const char* statement : {kImpostazioni, kEvento}) {
    const auto inizio = steady_clock::now();
    const auto errore = ErroreDi([&] { (void)nostra->Execute(statement, 1); });
    const auto durata = steady_clock::now() - inizio;
    EXPECT_EQ(errore.Numero(), 5) << statement;
    EXPECT_EQ(errore.Sorgente(), "SQLite");
    EXPECT_EQ(errore.Descrizione(), "database is locked");
    EXPECT_GE(durata, milliseconds(200)) << statement << ": it was not waited for";
  }
  (void)Esegui("ROLLBACK");
  EXPECT_FALSE(nostra->Execute(kImpostazioni, 1)->Eof()) << "usable as soon as the lock is gone";
  EXPECT_EQ(Eventi(*nostra), 0);
}

TEST_F(Faults, AnotherWriterLeavesTheReadersAlone) {
  const auto nostra = ApriImpaziente(percorso, milliseconds(50));
  (void)Esegui("BEGIN IMMEDIATE");
  (void)Esegui("UPDATE FW24_FAXCONFIG SET FW24_BCC = 1");
  EXPECT_FALSE(nostra->Execute(kImpostazioni, 1)->Eof());
  EXPECT_EQ(ErroreDi([&] { (void)nostra->Execute(kEvento, 1); }).Numero(), 5);
  (void)Esegui("COMMIT");
  (void)nostra->Execute(kEvento, 1);
  EXPECT_EQ(Eventi(*nostra), 1);
}

TEST_F(Faults, ALockedFileCannotBeOpenedWithinTheTimeOut) {
  (void)Esegui("BEGIN EXCLUSIVE");
  const auto errore = ErroreDi([&] { (void)ApriImpaziente(percorso, milliseconds(100)); });
  EXPECT_EQ(errore.Numero(), 5);
  EXPECT_EQ(errore.Descrizione(), "Impossibile aprire il database " + percorso + ": database is locked");
}

TEST_F(Faults, AConnectionForReadingReadsAndRefusesToWrite) {
  SqliteOptions opzioni;
  opzioni.solaLettura = true;
  const auto lettura = SqliteConnection::Apri(percorso, opzioni);
  EXPECT_FALSE(lettura->Execute(kImpostazioni, 1)->Eof());
  EXPECT_FALSE(
      lettura->Execute("SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'FW23_FAXER'", 1)
          ->Eof());
  const auto errore = ErroreDi([&] { (void)lettura->Execute(kEvento, 1); });
  EXPECT_EQ(errore.Numero(), 8);
  EXPECT_EQ(errore.Descrizione(), "attempt to write a readonly database");
  EXPECT_EQ(Eventi(*connessione), 0);
}

TEST_F(Faults, AFileThatMayOnlyBeReadIsReadAndRefusesToWrite) {
  connessione.reset();
  std::filesystem::permissions(cartella.Radice(), std::filesystem::perms(0755));
  std::filesystem::permissions(percorso, std::filesystem::perms(0444));
  const int esito = posix::ComeUtenteOrdinario([&] {
    const auto lettura = SqliteConnection::Apri(percorso);
    if (lettura->Execute(kImpostazioni, 1)->Eof()) return 100;
    return ErroreDi([&] { (void)lettura->Execute(kEvento, 1); }).Numero();
  });
  EXPECT_EQ(esito, 8) << "attempt to write a readonly database";
}

TEST_F(Faults, AFolderThatMayNotBeWrittenRefusesTheEventNotTheReading) {
  connessione.reset();
  std::filesystem::permissions(cartella.Radice(), std::filesystem::perms(0555));
  std::filesystem::permissions(percorso, std::filesystem::perms(0666));
  const int esito = posix::ComeUtenteOrdinario([&] {
    const auto nostra = SqliteConnection::Apri(percorso);
    if (nostra->Execute(kImpostazioni, 1)->Eof()) return 100;
    return ErroreDi([&] { (void)nostra->Execute(kEvento, 1); }).Numero() & 0xFF;
  });
  std::filesystem::permissions(cartella.Radice(), std::filesystem::perms(0755));
  EXPECT_THAT(esito, AnyOf(Eq(8), Eq(14))) << "no journal can be written";
}

TEST_F(Faults, AFileThatMayNotBeReadCannotBeOpened) {
  connessione.reset();
  std::filesystem::permissions(cartella.Radice(), std::filesystem::perms(0755));
  std::filesystem::permissions(percorso, std::filesystem::perms(0000));
  const int esito = posix::ComeUtenteOrdinario([&] {
    const auto errore = ErroreDi([&] { (void)SqliteConnection::Apri(percorso); });
    return errore.Descrizione().find(percorso) == std::string::npos ? 100 : errore.Numero() & 0xFF;
  });
  EXPECT_EQ(esito, 14);
}

TEST_F(Faults, AWrongSchemaIsAnErrorThatNamesWhatIsMissing) {
  (void)Esegui("ALTER TABLE FW24_FAXCONFIG RENAME TO FW24_VECCHIA");
  (void)Esegui("ALTER TABLE CG16_ANAGGEN DROP COLUMN CG16_EMAIL_PEC");
  (void)Esegui("DROP TABLE EVENTI_GESTIONALI");
  (void)Esegui("DROP TABLE CG44_CLIFORVALIDITA");
  struct Caso {
    const char* statement;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {kImpostazioni, "no such table: FW24_FAXCONFIG"},
      {"SELECT CG16_EMAIL_PEC FROM CG16_ANAGGEN", "no such column: CG16_EMAIL_PEC"},
      {kEvento, "no such table: EVENTI_GESTIONALI"},
      {"SELECT dbo.FNCG_GETCODANAG(1,0,1001,'20250101')", "no such table: CG44_CLIFORVALIDITA"},
  };
  for (const auto& caso : casi) {
    const auto errore = ErroreDi([&] { (void)Esegui(caso.statement); });
    EXPECT_EQ(errore.Numero(), 1) << caso.statement;
    EXPECT_EQ(errore.Descrizione(), caso.want);
  }
  EXPECT_FALSE(Esegui("SELECT 1 FROM FW07_APPUSER")->Eof());
}

TEST_F(Faults, ATableOfTheWrongTypesIsAnErrorNotAWrongCode) {
  (void)Esegui("UPDATE CG44_CLIFOR SET CG44_CODICE_CG16 = 'nessuno' WHERE CG44_CLIFOR = 1002");
  EXPECT_EQ(ErroreDi([&] { (void)Esegui("SELECT dbo.FNCG_GETCODANAG(1,0,1002,'20250101')"); }).Numero(), 1);
}

TEST_F(Faults, AFileThatIsDeletedIsAnErrorAtTheNextStatement) {
  std::filesystem::remove(percorso);
  for (const char* statement : {kImpostazioni, kEvento}) {
    const auto errore = ErroreDi([&] { (void)Esegui(statement); });
    EXPECT_EQ(errore.Numero(), 1032) << statement;
    EXPECT_EQ(errore.Descrizione(), "Il file del database è stato spostato, sostituito o cancellato");
  }
}

TEST_F(Faults, AFileThatIsReplacedIsAnErrorAndTheNewOneStaysUntouched) {
  const auto nuovo = cartella / "nuovo.db";
  CreaDatabase(nuovo, CifraDiProva);
  std::filesystem::rename(nuovo, percorso);
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(kEvento); }).Numero(), 1032);
  EXPECT_EQ(Eventi(*SqliteConnection::Apri(percorso)), 0);
}

TEST_F(Faults, AFileCutOffHalfWayIsDamaged) {
  (void)Esegui(kImpostazioni);
  std::filesystem::resize_file(percorso, std::filesystem::file_size(percorso) / 2);
  for (const char* statement : {"SELECT * FROM EVENTI_GESTIONALI", kImpostazioni, kEvento}) {
    const auto errore = ErroreDi([&] { (void)Esegui(statement); });
    EXPECT_EQ(errore.Numero() & 0xFF, 11) << statement << ": " << errore.Descrizione();
  }
  EXPECT_EQ(ErroreDi([&] { (void)SqliteConnection::Apri(percorso); }).Numero() & 0xFF, 11);
}

TEST_F(Faults, AFileCutOffToNothingIsAnError) {
  std::filesystem::resize_file(percorso, 0);
  EXPECT_NE(ErroreDi([&] { (void)Esegui(kImpostazioni); }).Numero(), 0);
}

TEST_F(Faults, AFileOverwrittenWithRubbishIsAnError) {
  const auto grandezza = static_cast<std::size_t>(std::filesystem::file_size(percorso));
  Scrivi(percorso, std::string(grandezza, '\xA5'));
  for (const char* statement : {kImpostazioni, kEvento}) {
    EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement); }).Numero() & 0xFF, 26) << statement;
  }
}

TEST_F(Faults, DamageInsideTheFileNeverDoesWorseThanAnError) {
  connessione.reset();
  const auto intero = posix::Contenuto(percorso);
  const auto guasto = cartella / "guasto.db";
  std::size_t aperti = 0;
  for (std::size_t dove = 0; dove < intero.size(); dove += 997) {
    auto contenuto = intero;
    for (std::size_t i = dove; i < std::min(dove + 40, contenuto.size()); ++i)
      contenuto[i] = static_cast<char>(~contenuto[i]);
    Scrivi(guasto, contenuto);
    (void)ErroreDi([&] {
      const auto danneggiata = SqliteConnection::Apri(guasto);
      ++aperti;
      for (const char* tabella : {"CG16_ANAGGEN", "FW98_MAILACCOUNT", "MG22_CLIFORDEST"}) {
        (void)ErroreDi([&] { (void)danneggiata->Execute(std::string("SELECT * FROM ") + tabella, 1); });
      }
      (void)danneggiata->Execute(kEvento, 1);
    });
  }
  EXPECT_GT(aperti, 0U);
}

TEST_F(Faults, WhatIsNoDatabaseCannotBeOpened) {
  Scrivi(cartella / "breve.txt", "Questo non è un database.");
  Scrivi(cartella / "lungo.txt", std::string(100000, 'x'));
  Scrivi(cartella / "vuoto.db", "");
  std::filesystem::create_directory(cartella / "cartella");
  std::filesystem::create_symlink("da nessuna parte", cartella / "appeso.db");
  std::filesystem::create_symlink(percorso, cartella / "legame.db");
  ASSERT_EQ(::mkfifo((cartella / "tubo").c_str(), 0600), 0);
  struct Caso {
    const char* label;
    std::string percorso;
    int want;
    const char* testo;
  };
  const std::vector<Caso> casi = {
      {"a short text", cartella / "breve.txt", 26, "file is not a database"},
      {"a long text", cartella / "lungo.txt", 26, "file is not a database"},
      {"an empty file", cartella / "vuoto.db", 26, "il file è vuoto"},
      {"a folder", cartella / "cartella", 14, "non è un file"},
      {"a pipe", cartella / "tubo", 14, "non è un file"},
      {"a device", "/dev/null", 14, "non è un file"},
      {"nothing", cartella / "manca.db", 14, "non esiste"},
      {"a link to nothing", cartella / "appeso.db", 14, "non esiste"},
      {"a link to a database", cartella / "legame.db", 14, "è un collegamento simbolico"},
      {"below a file", cartella / "breve.txt/x.db", 14, ""},
      {"no path", "", 14, "non è valido"},
      {"a path with a NUL", percorso + std::string("\0.db", 4), 14, "non è valido"},
      {"the engine's name for memory", ":memory:", 14, "non esiste"},
      {"the engine's name for an address", "file:x?mode=memory", 14, "non esiste"},
      {"a path of a megabyte", std::string(1 << 20, 'x'), 14, ""},
  };
  for (const auto& caso : casi) {
    const auto errore = ErroreDi([&] { (void)SqliteConnection::Apri(caso.percorso); });
    EXPECT_EQ(errore.Numero() & 0xFF, caso.want) << caso.label << ": " << errore.Descrizione().substr(0, 200);
    EXPECT_THAT(errore.Descrizione(), HasSubstr(caso.testo)) << caso.label;
    EXPECT_EQ(errore.Sorgente(), "SQLite") << caso.label;
  }
}

TEST_F(Faults, FoldersMayBeReachedThroughLinks) {
  std::filesystem::create_directory_symlink(cartella.Radice(), cartella / "altrove");
  EXPECT_FALSE(SqliteConnection::Apri(cartella / "altrove/prova.db")->Execute(kImpostazioni, 1)->Eof());
}

TEST_F(Faults, EitherSeparatorLeadsToTheFile) {
  auto rovesciato = percorso;
  std::replace(rovesciato.begin(), rovesciato.end(), '/', '\\');
  EXPECT_FALSE(SqliteConnection::Apri(rovesciato)->Execute(kImpostazioni, 1)->Eof());
}

TEST_F(Faults, NothingIsLeftOpenBehindErrors) {
  const auto aperti = [] {
    std::size_t numero = 0;
    for ([[maybe_unused]] const auto& descrittore : std::filesystem::directory_iterator("/proc/self/fd"))
      ++numero;
    return numero;
  };
  Scrivi(cartella / "breve.txt", "Questo non è un database.");
  const auto prima = aperti();
  for (int i = 0; i < 50; ++i) {
    (void)ErroreDi([&] { (void)SqliteConnection::Apri(cartella / "breve.txt"); });
    (void)ErroreDi([&] { (void)SqliteConnection::Apri(cartella / "manca.db"); });
    (void)ErroreDi([&] { (void)Esegui("SELECT * FROM NON_ESISTE"); });
    (void)ErroreDi([&] { (void)SqliteConnection::Apri(percorso)->Execute("SELECT ' ", 1); });
    (void)ErroreDi([&] { CreaDatabase(percorso, CifraDiProva); });
  }
  EXPECT_EQ(aperti(), prima);
}

}  // namespace

}  // namespace orve::adapters::sqlite
