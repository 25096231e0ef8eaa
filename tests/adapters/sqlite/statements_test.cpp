// Every statement of the library on the embedded database, and what is SQLite's own about them: the numbers
// of its errors, its own tables, and the plans of its look-ups.
#include <gmock/gmock.h>

#include "adapters/sqlite/prova.h"
#include "adapters/statements_contract.h"

namespace orve::contract {

namespace {

using adapters::sqlite::SqliteConnection;

class BancoDatiSqlite : public BancoDati {
 public:
  BancoDatiSqlite() {
    adapters::sqlite::CreaDatabase(cartella_ / "prova.db", adapters::sqlite::CifraDiProva);
    connessione_ = SqliteConnection::Apri(cartella_ / "prova.db");
  }

  host::Connection& Connessione() override { return *connessione_; }

 private:
  adapters::sqlite::CartellaDiProva cartella_;
  std::shared_ptr<SqliteConnection> connessione_;
};

std::unique_ptr<BancoDati> CreaBancoDatiSqlite() {
  return std::make_unique<BancoDatiSqlite>();
}

std::string NomeBancoDati(const ::testing::TestParamInfo<CreaBancoDati>& /*info*/) {
  return "file";
}

INSTANTIATE_TEST_SUITE_P(Sqlite, ContrattoIstruzioni, ::testing::Values(&CreaBancoDatiSqlite), NomeBancoDati);

}  // namespace

}  // namespace orve::contract

namespace orve::adapters::sqlite {

namespace {

using contract::Partner;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

using Statements = ConDatiDiProva;

TEST_F(Statements, APartnerThatCannotBeAskedForHasTheEnginesNumber) {
  struct Caso {
    const char* label;
    std::string statement;
    int want;
  };
  const std::vector<Caso> casi = {
      {"no company", Partner("", "0", "1001", "'20260115'"), 1},
      {"no code", Partner("1", "0", "", "'20260115'"), 1},
      {"a quote in the code", Partner("1", "0", "10'01", "'20260115'"), 1},
      {"no date", Partner("1", "0", "1001", ""), 1},
      {"a date that is none", Partner("1", "0", "1001", "'20250230'"), 20},
      {"an Italian date", Partner("1", "0", "1001", "'31/12/2025'"), 20},
      {"an empty date", Partner("1", "0", "1001", "''"), 20},
  };
  for (const auto& caso : casi) {
    const auto errore = ErroreDi([&] { (void)Esegui(caso.statement); });
    EXPECT_EQ(errore.Numero(), caso.want) << caso.label << ": " << errore.Descrizione();
    EXPECT_EQ(errore.Sorgente(), "SQLite") << caso.label;
  }
}

TEST_F(Statements, CodesCompareWithoutBlanksAtTheEnd) {
  EXPECT_THAT(
      Righe("SELECT MG17_ANAGEN_CG16 FROM MG17_AGENTI WHERE MG17_DITTA_CG18 = 2 AND MG17_AGENTE =  'a01 '",
            {"MG17_ANAGEN_CG16"}),
      ElementsAre("403"));
  EXPECT_THAT(
      Righe("SELECT FW07_ID FROM FW07_APPUSER WHERE FW07_CODICE_FW06 = 'AMM' AND FW07_CODICE = 'u02  '",
            {"FW07_ID"}),
      ElementsAre("2"));
}

TEST_F(Statements, ASettingThatIsNoNumberIsNotOne) {
  for (const char* valore : {"", "NO"}) {
    (void)connessione->EseguiConValori(
        "UPDATE FW95_SETTINGS SET FW95_VALORE = ?1 WHERE FW95_CODICE = 'AIT_MAIL_HTML'",
        {std::string(valore)});
    EXPECT_TRUE(Esegui(" SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_MAIL_HTML' AND "
                       "FW95_VALORE = 1 ")
                    ->Eof())
        << valore;
  }
}

TEST_F(Statements, TheEnginesOwnTablesAreNoneOfTheApplications) {
  for (const char* tabella : {"sqlite_sequence", "INFORMATION_SCHEMA_TABLES"}) {
    EXPECT_TRUE(Esegui("SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = '" +
                       std::string(tabella) + "'")
                    ->Eof())
        << tabella;
  }
}

class Events : public ConDatiDiProva {
 protected:
  [[nodiscard]] std::vector<std::string> Eventi() const {
    return Righe("SELECT DITTA, CODICE, IDUTENTE, DATI, FLAG FROM EVENTI_GESTIONALI ORDER BY ID",
                 {"DITTA", "CODICE", "IDUTENTE", "DATI", "FLAG"});
  }
};

TEST_F(Events, AnEventKnowsItsInstantAndGivesNoRows) {
  EXPECT_TRUE(Esegui("exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x' , 1")->Eof());
  EXPECT_THAT(Righe("SELECT ISTANTE FROM EVENTI_GESTIONALI", {"ISTANTE"}),
              ElementsAre(MatchesRegex(
                  "20[0-9][0-9]-[0-9][0-9]-[0-9][0-9] [0-9][0-9]:[0-9][0-9]:[0-9][0-9].[0-9]+")));
}

TEST_F(Events, ACallThatDoesNotFitIsAnErrorAndKeepsNothing) {
  struct Caso {
    const char* label;
    const char* statement;
    int want;
  };
  const std::vector<Caso> casi = {
      {"no company", "exec SPFW_AttivaEventoGestionale , 89, 7, 'x' , 1", 1},
      {"null for the company", "exec SPFW_AttivaEventoGestionale null, 89, 7, 'x' , 1", 20},
      {"a word for the company", "exec SPFW_AttivaEventoGestionale 'A', 89, 7, 'x' , 1", 20},
      {"a bare word for the company", "exec SPFW_AttivaEventoGestionale A, 89, 7, 'x' , 1", 1},
      {"one argument less", "exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x'", 1},
      {"one argument more", "exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x' , 1, 2", 1},
      {"an apostrophe by itself",
       "exec SPFW_AttivaEventoGestionale 1, 89, 7, '<MAIL_PATH=C:\\L'ordine.pdf/>' , 1", 1},
      {"another procedure", "exec SPFW_AttivaEvento 1, 89, 7, 'x' , 1", 1},
      {"two of them",
       "exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x' , 1; exec SPFW_AttivaEventoGestionale 1, 89, 7, "
       "'x' , 1",
       3001},
  };
  for (const auto& caso : casi) {
    const auto errore = ErroreDi([&] { (void)Esegui(caso.statement); });
    EXPECT_EQ(errore.Numero(), caso.want) << caso.label << ": " << errore.Descrizione();
    EXPECT_THAT(Eventi(), IsEmpty()) << caso.label;
  }
}

TEST_F(Events, AnEventStandsInsideTheCallersTransaction) {
  (void)Esegui("BEGIN TRANSACTION");
  (void)Esegui("exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x' , 1");
  EXPECT_EQ(Eventi().size(), 1U);
  (void)Esegui("ROLLBACK TRANSACTION");
  EXPECT_THAT(Eventi(), IsEmpty());
}

TEST_F(Statements, TheLookUpsOfASendReadNoTableFromEndToEnd) {
  for (const std::string& statement : {
           Partner("1", "0", "1001", "'20260115'"),
           std::string("SELECT CG16_RAGSOANAG FROM CG16_ANAGGEN WHERE CG16_CODICE= 101"),
           std::string(
               "SELECT 1 FROM CG16_ANAGGEN INNER JOIN MG17_AGENTI ON MG17_ANAGEN_CG16 = CG16_CODICE WHERE "
               "MG17_DITTA_CG18 = 1 AND MG17_AGENTE = 'A01'"),
           std::string(
               "SELECT 1 FROM CO02_ANAGCONTATTO INNER JOIN CO03_LEGCONTATTO ON CO03_ID_CO02 = CO02_ID INNER "
               "JOIN CG16_ANAGGEN ON CG16_CODICE = CO03_CODICE_CG16 WHERE CO02_ID = 501"),
           std::string(
               "SELECT 1 FROM MG22_CLIFORDEST WHERE MG22_CODDESTIN = 'SEDE' AND MG22_DITTA_CG18 = 1 AND "
               "MG22_TIPOCF_CG44 = 0 AND MG22_CLIFOR_CG44 = 1001"),
           std::string(
               "SELECT FW07_ID FROM FW07_APPUSER WHERE FW07_CODICE_FW06 = 'AMM' AND FW07_CODICE = 'U01'"),
       }) {
    for (const auto& passo : Righe("EXPLAIN QUERY PLAN " + statement, {"detail"})) {
      EXPECT_FALSE(passo.find("SCAN") == 0) << passo << " in " << statement;
    }
  }
}

}  // namespace

}  // namespace orve::adapters::sqlite
