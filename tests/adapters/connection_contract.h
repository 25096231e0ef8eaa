// What every connection must do, whatever database is behind it: ContrattoConnessione for any engine,
// ContrattoDialetto for one that takes SQL Server's dialect, ContrattoProcedura for one that
// runs the application's procedure as a command. A test program brings its databases and instantiates the
// suites:
//
//   INSTANTIATE_TEST_SUITE_P(Sqlite, ContrattoConnessione, ::testing::Values(&CreaBanco), NomeBanco);
//
// A database of the suites ("banco") holds one table, made by the adapter's own means:
//
//   CONTRATTO (CODICE INT, NOME VARCHAR(50) NULL, PESO FLOAT NULL, NOTE VARCHAR(4000) NULL)
//     1  Uno           1.5   null
//     2  Città, d'Oro  null  (empty)
//     3  null          -2    riga1, carriage return, line feed, riga2
//
// and, for the last suite, the procedure SPFW_GetUserIDFromConnection, which reports the user that the
// connection is bound to.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fakes/errori.h"
#include "orve-mailserver/host/connection.h"

namespace orve::contract {

class Banco {
 public:
  virtual ~Banco() = default;
  virtual std::shared_ptr<host::Connection> Connessione() = 0;
  /// Binds the connection to a user, or to none.
  virtual void Utente(std::optional<std::int32_t> id) { (void)id; }
  /// The connection drops: the adapter's handle is gone, even if somebody still holds the object.
  virtual void Cade() = 0;
};

using CreaBanco = std::unique_ptr<Banco> (*)();

class ContrattoConnessione : public ::testing::TestWithParam<CreaBanco> {
 protected:
  void SetUp() override {
    banco = GetParam()();
    connessione = banco->Connessione();
  }

  [[nodiscard]] std::shared_ptr<host::RecordSet> Esegui(const std::string& statement) const {
    return connessione->Execute(statement, host::kComandoTesto);
  }

  /// The values of a column over all rows, null as "<null>".
  [[nodiscard]] static std::vector<std::string> Colonna(host::RecordSet& righe, const std::string& nome) {
    std::vector<std::string> valori;
    for (; !righe.Eof(); righe.MoveNext()) {
      const auto valore = host::Leggi(righe, nome);
      valori.push_back(valore.IsNull() ? "<null>" : valore.ToText());
    }
    return valori;
  }

  /// The call raises an error with all three parts.
  template <class Chiamata>
  static void Rifiuta(Chiamata chiamata, const std::string& che) {
    const auto errore = fakes::ErroreDi(chiamata);
    EXPECT_NE(errore.Numero(), 0) << che << ": no error";
    if (errore.Numero() == 0) return;
    EXPECT_FALSE(errore.Sorgente().empty()) << che;
    EXPECT_FALSE(errore.Descrizione().empty()) << che;
  }

  static constexpr const char* kTutte = "SELECT CODICE, NOME, PESO, NOTE FROM CONTRATTO ORDER BY CODICE";
  static constexpr const char* kNessuna = "SELECT CODICE, NOME FROM CONTRATTO WHERE CODICE = 99";

  std::unique_ptr<Banco> banco;
  std::shared_ptr<host::Connection> connessione;
};

TEST_P(ContrattoConnessione, RowsComeInOrderFromTheFirst) {
  const auto righe = Esegui(kTutte);
  ASSERT_FALSE(righe->Eof());
  EXPECT_EQ(Colonna(*righe, "CODICE"), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_TRUE(righe->Eof());
}

TEST_P(ContrattoConnessione, BothTextOptionsRunTheStatement) {
  for (const std::int32_t opzione : {host::kComandoNonIndicato, host::kComandoTesto}) {
    EXPECT_FALSE(connessione->Execute(kTutte, opzione)->Eof()) << opzione;
  }
}

TEST_P(ContrattoConnessione, AnUnknownOptionIsRefused) {
  Rifiuta([&] { (void)connessione->Execute(kTutte, 7777); }, "option 7777");
}

TEST_P(ContrattoConnessione, ValuesKeepTheirKind) {
  const auto righe = Esegui(kTutte);
  EXPECT_EQ(host::Leggi(*righe, "CODICE"), host::Variant(1));
  EXPECT_EQ(host::Leggi(*righe, "NOME"), host::Variant("Uno"));
  EXPECT_EQ(host::Leggi(*righe, "PESO"), host::Variant(1.5));
  EXPECT_TRUE(host::Leggi(*righe, "NOTE").IsNull());
  righe->MoveNext();
  EXPECT_EQ(host::Leggi(*righe, "NOME"), host::Variant("Città, d'Oro"));
  EXPECT_TRUE(host::Leggi(*righe, "PESO").IsNull());
  EXPECT_EQ(host::Leggi(*righe, "NOTE"), host::Variant("")) << "an empty text is no null";
  righe->MoveNext();
  EXPECT_EQ(host::Leggi(*righe, "PESO"), host::Variant(-2.0));
  EXPECT_EQ(host::Leggi(*righe, "NOTE"), host::Variant("riga1\r\nriga2"));
}

TEST_P(ContrattoConnessione, ColumnsAreFoundWithoutCase) {
  const auto righe = Esegui(kTutte);
  for (const char* nome : {"NOME", "nome", "NoMe"}) {
    EXPECT_EQ(host::Leggi(*righe, nome), host::Variant("Uno")) << nome;
  }
}

TEST_P(ContrattoConnessione, AnAliasNamesItsColumn) {
  const auto righe =
      Esegui("SELECT NOME AS ALIAS, COALESCE(NOTE,'niente') NOTA FROM CONTRATTO WHERE CODICE = 1");
  EXPECT_EQ(host::Leggi(*righe, "ALIAS"), host::Variant("Uno"));
  EXPECT_EQ(host::Leggi(*righe, "NOTA"), host::Variant("niente"));
  Rifiuta([&] { (void)host::Leggi(*righe, "NOME"); }, "the column under its own name");
}

TEST_P(ContrattoConnessione, AnUnknownColumnIsAnErrorAndTheRowStays) {
  const auto righe = Esegui(kTutte);
  EXPECT_EQ(fakes::ErroreDi([&] { (void)host::Leggi(*righe, "COGNOME"); }).Numero(), 3265);
  EXPECT_EQ(fakes::ErroreDi([&] { (void)host::Leggi(*righe, ""); }).Numero(), 3265);
  EXPECT_EQ(host::Leggi(*righe, "NOME"), host::Variant("Uno"));
}

TEST_P(ContrattoConnessione, AFieldFollowsTheRecordSet) {
  const auto righe = Esegui(kTutte);
  const auto campo = righe->Fields()->Item("CODICE");
  EXPECT_EQ(campo->Value(), host::Variant(1));
  righe->MoveNext();
  EXPECT_EQ(campo->Value(), host::Variant(2));
}

TEST_P(ContrattoConnessione, AResultWithoutRowsIsAtItsEndAndRefusesToMove) {
  const auto righe = Esegui(kNessuna);
  EXPECT_TRUE(righe->Eof());
  EXPECT_EQ(righe->State(), 1);
  EXPECT_EQ(fakes::ErroreDi([&] { righe->MoveFirst(); }).Numero(), 3021);
  EXPECT_EQ(fakes::ErroreDi([&] { righe->MoveNext(); }).Numero(), 3021);
  EXPECT_EQ(fakes::ErroreDi([&] { (void)host::Leggi(*righe, "NOME"); }).Numero(), 3021);
}

TEST_P(ContrattoConnessione, AfterTheLastRowThereIsNothingToRead) {
  const auto righe = Esegui(kTutte);
  (void)Colonna(*righe, "CODICE");
  EXPECT_EQ(fakes::ErroreDi([&] { (void)host::Leggi(*righe, "NOME"); }).Numero(), 3021);
  EXPECT_EQ(fakes::ErroreDi([&] { righe->MoveNext(); }).Numero(), 3021);
}

TEST_P(ContrattoConnessione, MoveFirstGoesBackFromAnywhere) {
  const auto righe = Esegui(kTutte);
  righe->MoveFirst();
  EXPECT_EQ(host::Leggi(*righe, "CODICE"), host::Variant(1));
  righe->MoveNext();
  righe->MoveFirst();
  EXPECT_EQ(host::Leggi(*righe, "CODICE"), host::Variant(1));
  (void)Colonna(*righe, "CODICE");
  righe->MoveFirst();
  EXPECT_EQ(Colonna(*righe, "CODICE").size(), 3U);
}

TEST_P(ContrattoConnessione, AClosedRecordSetTellsItsStateAndNothingElse) {
  const auto righe = Esegui(kTutte);
  const auto campo = righe->Fields()->Item("CODICE");
  EXPECT_EQ(righe->State(), 1);
  righe->Close();
  EXPECT_EQ(righe->State(), 0);
  EXPECT_EQ(fakes::ErroreDi([&] { (void)righe->Eof(); }).Numero(), 3704);
  EXPECT_EQ(fakes::ErroreDi([&] { righe->MoveFirst(); }).Numero(), 3704);
  EXPECT_EQ(fakes::ErroreDi([&] { righe->MoveNext(); }).Numero(), 3704);
  EXPECT_EQ(fakes::ErroreDi([&] { righe->Close(); }).Numero(), 3704);
  Rifiuta([&] { (void)host::Leggi(*righe, "CODICE"); }, "a column");
  Rifiuta([&] { (void)campo->Value(); }, "a field from before");
}

TEST_P(ContrattoConnessione, TwoResultsStandSideBySide) {
  const auto prima = Esegui(kTutte);
  prima->MoveNext();
  const auto seconda = Esegui(kTutte);
  EXPECT_EQ(host::Leggi(*prima, "CODICE"), host::Variant(2));
  EXPECT_EQ(host::Leggi(*seconda, "CODICE"), host::Variant(1));
}

TEST_P(ContrattoConnessione, AStatementWithoutRowsGivesAResultAtItsEnd) {
  EXPECT_TRUE(Esegui("UPDATE CONTRATTO SET PESO = 7 WHERE CODICE = 1")->Eof());
  EXPECT_EQ(host::Leggi(*Esegui(kTutte), "PESO"), host::Variant(7.0));
}

TEST_P(ContrattoConnessione, AResultOutlivesItsConnection) {
  const auto righe = Esegui(kTutte);
  connessione.reset();
  banco.reset();
  EXPECT_EQ(Colonna(*righe, "NOME"), (std::vector<std::string>{"Uno", "Città, d'Oro", "<null>"}));
}

TEST_P(ContrattoConnessione, ABrokenStatementIsAnErrorAndTheConnectionStaysUsable) {
  struct Caso {
    const char* label;
    const char* statement;
  };
  const std::vector<Caso> casi = {
      {"no such table", "SELECT 1 FROM NON_ESISTE"},
      {"no such column", "SELECT NON_ESISTE FROM CONTRATTO"},
      {"no such function", "SELECT dbo.NON_ESISTE(1)"},
      {"no such procedure", "exec NON_ESISTE 1"},
      {"a quote in a value", "SELECT CODICE FROM CONTRATTO WHERE NOME = 'L'Aquila'"},
      {"a quote left open", "SELECT CODICE FROM CONTRATTO WHERE NOME = 'Uno"},
      {"a missing value", "SELECT CODICE FROM CONTRATTO WHERE CODICE = "},
      {"a missing value in the middle", "SELECT CODICE FROM CONTRATTO WHERE CODICE = \r AND PESO = 1"},
      {"a word for a number", "SELECT CODICE FROM CONTRATTO WHERE CODICE = ABC"},
      {"no statement", "Buongiorno"},
      {"an empty text", ""},
      {"white space only", " \r\n\t "},
      {"a parameter that nobody fills", "SELECT CODICE FROM CONTRATTO WHERE CODICE = ?"},
  };
  for (const auto& caso : casi) {
    Rifiuta([&] { (void)Esegui(caso.statement); }, caso.label);
    EXPECT_FALSE(Esegui(kTutte)->Eof()) << caso.label;
  }
}

TEST_P(ContrattoConnessione, ANulInAStatementIsAnErrorAndNoShorterStatement) {
  const std::string testo("UPDATE CONTRATTO SET PESO = 9\0 WHERE CODICE = 1", 47);
  Rifiuta([&] { (void)Esegui(testo); }, "NUL");
  EXPECT_EQ(Colonna(*Esegui("SELECT CODICE FROM CONTRATTO WHERE PESO = 9"), "CODICE").size(), 0U);
}

TEST_P(ContrattoConnessione, ADroppedConnectionIsAnErrorForEverythingThatNeedsIt) {
  const auto righe = Esegui(kTutte);
  const auto comando = connessione->CreateCommand();
  comando->CommandType(host::kProceduraMemorizzata);
  comando->CommandText("SPFW_GetUserIDFromConnection");
  comando->ParametersAppend(comando->CreateParameter("IDUtenteApp", 3, 2, 0));
  banco->Cade();
  Rifiuta([&] { (void)Esegui(kTutte); }, "a statement");
  Rifiuta([&] { comando->Execute(); }, "a command from before");
  EXPECT_EQ(Colonna(*righe, "CODICE").size(), 3U) << "a result from before";
}

class ContrattoDialetto : public ContrattoConnessione {};

TEST_P(ContrattoDialetto, AQuotedNameIsNoText) {
  Rifiuta([&] { (void)Esegui("SELECT CODICE FROM CONTRATTO WHERE NOME = \"Uno\""); }, "a quoted name");
}

TEST_P(ContrattoDialetto, TheTurnsOfTheDialectAreUnderstood) {
  struct Caso {
    const char* label;
    const char* statement;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"hint", "SELECT NOME AS V FROM CONTRATTO WITH (NOLOCK) WHERE CODICE=1", "Uno"},
      {"top", "SELECT TOP 1 CODICE AS V FROM CONTRATTO ORDER BY CODICE DESC", "3"},
      {"top of a constant", "SELECT TOP 1 1 V FROM CONTRATTO", "1"},
      {"replacement of null", "SELECT ISNULL(PESO,0) V FROM CONTRATTO WHERE CODICE = 2", "0"},
      {"carriage returns", "SELECT NOME AS V \r FROM CONTRATTO \r WHERE CODICE = 1\r", "Uno"},
      {"text in a text", "SELECT ' TOP 1 WITH (NOLOCK) dbo.x ISNULL(' V FROM CONTRATTO WHERE CODICE = 1",
       " TOP 1 WITH (NOLOCK) dbo.x ISNULL("},
  };
  for (const auto& caso : casi) {
    const auto righe = Esegui(caso.statement);
    ASSERT_FALSE(righe->Eof()) << caso.label;
    EXPECT_EQ(host::Leggi(*righe, "V").ToText(), caso.want) << caso.label;
    righe->MoveNext();
    EXPECT_TRUE(righe->Eof()) << caso.label;
  }
}

TEST_P(ContrattoDialetto, TablesAreListedWithoutCase) {
  for (const char* nome : {"CONTRATTO", "contratto", "Contratto "}) {
    const auto testo =
        std::string("SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = '") + nome + "'";
    EXPECT_FALSE(Esegui(testo)->Eof()) << nome;
  }
  EXPECT_TRUE(Esegui("SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = ''")->Eof());
  EXPECT_TRUE(Esegui("SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'CONTRATT'")->Eof());
}

class ContrattoProcedura : public ContrattoConnessione {};

TEST_P(ContrattoProcedura, TheCommandReportsTheUserOfTheConnection) {
  for (const std::optional<std::int32_t> utente :
       {std::optional<std::int32_t>(7), std::optional<std::int32_t>()}) {
    banco->Utente(utente);
    const auto comando = connessione->CreateCommand();
    comando->CommandType(host::kProceduraMemorizzata);
    comando->CommandText("SPFW_GetUserIDFromConnection");
    const auto parametro = comando->CreateParameter("IDUtenteApp", 3, 2, 0);
    comando->ParametersAppend(parametro);
    comando->Execute();
    const auto valore = comando->ParametersItem("IDUtenteApp")->Value();
    EXPECT_EQ(valore, utente ? host::Variant(*utente) : host::Variant(host::Null{}));
    EXPECT_EQ(parametro->Value(), valore) << "the appended parameter is the command's own";
  }
}

TEST_P(ContrattoProcedura, AParameterIsNullUntilTheCommandRuns) {
  banco->Utente(7);
  const auto comando = connessione->CreateCommand();
  comando->CommandType(host::kProceduraMemorizzata);
  comando->CommandText("SPFW_GetUserIDFromConnection");
  comando->ParametersAppend(comando->CreateParameter("IDUtenteApp", 3, 2, 0));
  EXPECT_TRUE(comando->ParametersItem("IDUtenteApp")->Value().IsNull());
}

TEST_P(ContrattoProcedura, WhatACommandCannotDoIsAnError) {
  const auto comando = connessione->CreateCommand();
  comando->CommandType(host::kProceduraMemorizzata);
  comando->CommandText("NON_ESISTE");
  Rifiuta([&] { comando->Execute(); }, "unknown procedure");
  comando->CommandText("SPFW_GetUserIDFromConnection");
  Rifiuta([&] { comando->Execute(); }, "the parameter is missing");
  const auto parametro = comando->CreateParameter("IDUtenteApp", 3, 2, 0);
  EXPECT_EQ(fakes::ErroreDi([&] { (void)comando->ParametersItem("IDUtenteApp"); }).Numero(), 3265)
      << "not appended yet";
  comando->ParametersAppend(parametro);
  EXPECT_EQ(fakes::ErroreDi([&] { (void)comando->ParametersItem("ALTRO"); }).Numero(), 3265);
  Rifiuta([&] { comando->ParametersAppend(nullptr); }, "an absent parameter");
}

}  // namespace orve::contract
