#include "content/eventi_gestionali.h"

#include <string>
#include <vector>

#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class EventoGestionale : public fakes::ServizioDiProva {
 protected:
  EventoGestionale() {
    connessione->Risponde("SELECT FW07_CODICE ", {{{"FW07_CODICE", "U01"}}});
    connessione->Risponde("SELECT FW07_CODICE_FW06 ", {{{"FW07_CODICE_FW06", "AMM"}}});
    servizio->DittaCorrente = "1";
  }
  /// The statements that register an event.
  std::vector<std::string> Eventi() const {
    std::vector<std::string> eventi;
    for (const auto& statement : connessione->Statements()) {
      if (statement.starts_with("exec ")) eventi.push_back(statement);
    }
    return eventi;
  }
  std::string Parametri(std::int32_t codice, const std::string& destinatario = "",
                        const std::string& azienda = "", const std::string& indirizzo = "",
                        const std::string& allegato = "", const std::string& esito = "",
                        const std::string& oggetto = "") {
    return ComponiParametriEvento(interno.contesto, interno.oggetti, 7,
                                  {codice, destinatario, azienda, indirizzo, allegato, esito, oggetto});
  }
};

constexpr const char* kInizio = "<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>";

TEST_F(EventoGestionale, TheCodes) {
  EXPECT_EQ(kEventoNonInviato, 88);
  EXPECT_EQ(kEventoInvio, 89);
}

TEST_F(EventoGestionale, TheStatementToTheCharacter) {
  AttivaEventoGestionale(interno.contesto, interno.oggetti,
                         {89, "Cliente Uno", "", "", "", "", "Fattura 12"});
  EXPECT_THAT(Eventi(), ElementsAre("exec SPFW_AttivaEventoGestionale 1, 89, 7, "
                                    "'<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>"
                                    "<MAIL_DEST=Cliente Uno/><AZ_COD=1/><MAIL_OBJ=Fattura 12/>' , 1"));
}

TEST_F(EventoGestionale, AsksUserAndCodesAndRunsTheStatementInThisOrder) {
  AttivaEventoGestionale(interno.contesto, interno.oggetti, {88, "", "", "", "", "", ""});
  EXPECT_THAT(
      journal->Righe({"ConnectionADO", "Command", "Parameter"}),
      ElementsAre("ConnectionADO.CreateCommand", "Command.CommandType 4",
                  "Command.CommandText SPFW_GetUserIDFromConnection",
                  "Command.CreateParameter IDUtenteApp 3 2 0", "Command.Parameters.Append IDUtenteApp",
                  "Command.Execute", "Command.Parameters.Item IDUtenteApp", "Parameter.Value IDUtenteApp",
                  "ConnectionADO.Execute 1  SELECT FW07_CODICE  FROM FW07_APPUSER WITH (NOLOCK)  WHERE "
                  "FW07_ID=7",
                  "ConnectionADO.Execute 1  SELECT FW07_CODICE_FW06  FROM FW07_APPUSER WITH (NOLOCK)  WHERE "
                  "FW07_ID=7",
                  "ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale 1, 88, 7, "
                  "'<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/><AZ_COD=1/>' , 1"));
}

TEST_F(EventoGestionale, TheUserOfTheConnectionByWhatTheProcedureReports) {
  struct Caso {
    const char* etichetta;
    host::Variant utente;
    host::Variant want;
    std::size_t wantEventi;
  };
  const std::vector<Caso> casi = {
      {"a user", 7, 7, 1},        {"0", 0, 0, 0},          {"null", host::Null{}, 0, 0},
      {"empty", {}, 0, 0},        {"negative", -3, -3, 0}, {"a number as text", "12", "12", 1},
      {"no number", "x", "x", 0}, {"blank", "  ", 0, 0},   {"too large", 1e12, 1e12, 0},
  };
  for (const auto& caso : casi) {
    journal->Svuota();
    connessione->utenteConnessione = caso.utente;
    EXPECT_EQ(GetUserIDFromConnection(interno.contesto), caso.want) << caso.etichetta;
    AttivaEventoGestionale(interno.contesto, interno.oggetti, {89, "", "", "", "", "", ""});
    EXPECT_THAT(Eventi(), SizeIs(caso.wantEventi)) << caso.etichetta;
  }
}

TEST_F(EventoGestionale, ThePayloadHasAllElementsInThisOrder) {
  EXPECT_EQ(Parametri(89, "Nome", "Azienda", "Nome<a@b.it>", "C:\\x.pdf", "Errore", "Oggetto"),
            "<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/><MAIL_DEST=Nome/>"
            "<AZ_COD=1/><AZ_DES=Azienda/><MAIL_IND=Nome<a@b.it>/><MAIL_PATH=C:\\x.pdf/><DESRES=Errore/>"
            "<MAIL_OBJ=Oggetto/>");
}

TEST_F(EventoGestionale, AnElementStandsThereOnlyWithAValueAndWithItsQuotesTreatedByItsKind) {
  servizio->DittaCorrente = host::Variant();
  struct Caso {
    const char* etichetta;
    std::size_t posizione;
    const char* valore;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"recipient", 0, "D'Amico", "<MAIL_DEST=D''Amico/>"},
      {"company", 1, "L'Aquila", "<AZ_DES=L''Aquila/>"},
      {"address", 2, "d'amico@x.it", "<MAIL_IND=d''amico@x.it/>"},
      {"attachment, as it stands", 3, "C:\\l'anno.pdf", "<MAIL_PATH=C:\\l'anno.pdf/>"},
      {"result", 4, "nell'invio", "<DESRES=nell''invio/>"},
      {"subject", 5, "''", "<MAIL_OBJ=''''/>"},
      {"blanks around a value stay", 5, " x ", "<MAIL_OBJ= x />"},
      {"a closing mark is not escaped", 5, "a/>b", "<MAIL_OBJ=a/>b/>"},
      {"recipient of blanks", 0, "  ", ""},
      {"company of blanks", 1, "  ", ""},
      {"address of blanks", 2, "  ", ""},
      {"attachment of blanks", 3, "  ", ""},
      {"result of blanks", 4, "  ", ""},
      {"subject of blanks", 5, "  ", ""},
  };
  for (const auto& caso : casi) {
    std::vector<std::string> testi(6);
    testi[caso.posizione] = caso.valore;
    for (const std::int32_t codice : {88, 89}) {
      EXPECT_EQ(Parametri(codice, testi[0], testi[1], testi[2], testi[3], testi[4], testi[5]),
                std::string(kInizio) + caso.want)
          << caso.etichetta << ", code " << codice;
    }
  }
}

TEST_F(EventoGestionale, TheCompanyCodeByItsValue) {
  struct Caso {
    const char* etichetta;
    host::Variant ditta;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"number", 12, "<AZ_COD=12/>"},
      {"number 0", 0, "<AZ_COD=0/>"},
      {"text", "A'B", "<AZ_COD=A'B/>"},
      {"empty", {}, ""},
      {"null", host::Null{}, ""},
      {"blank", "  ", ""},
      {"no text form", host::Variant::Array{}, ""},
  };
  for (const auto& caso : casi) {
    servizio->DittaCorrente = caso.ditta;
    EXPECT_EQ(Parametri(89), std::string(kInizio) + caso.want) << caso.etichetta;
  }
}

TEST_F(EventoGestionale, CodesWithoutARowAreJoinedEmpty) {
  connessione->Risponde("SELECT FW07_CODICE ", {});
  connessione->Risponde("SELECT FW07_CODICE_FW06 ", {});
  servizio->DittaCorrente = host::Variant();
  EXPECT_EQ(Parametri(88), "<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=/><GRP_COD=/>");
}

TEST_F(EventoGestionale, TheTimeIsTheSystemsAndTheDateIsNot) {
  ambiente->testoData = "2026-11-14";
  ambiente->testoOra = "10.22";
  servizio->DittaCorrente = host::Variant();
  EXPECT_EQ(Parametri(88), "<DATE_INS=14/11/2026/><TIME_INS=10.22/><USR_COD=U01/><GRP_COD=AMM/>");
}

TEST_F(EventoGestionale, ACodeOtherThan88And89RunsTheStatementWithAnEmptyPayload) {
  for (const std::int32_t codice : {0, 87, 90, -1}) {
    journal->Svuota();
    EXPECT_EQ(Parametri(codice, "a", "b", "c", "d", "e", "f"), "");
    AttivaEventoGestionale(interno.contesto, interno.oggetti, {codice, "a", "b", "c", "d", "e", "f"});
    EXPECT_THAT(Eventi(),
                ElementsAre("exec SPFW_AttivaEventoGestionale 1, " + std::to_string(codice) + ", 7, '' , 1"));
  }
}

TEST_F(EventoGestionale, AnEmptyCompanyLeavesTheFirstArgumentEmpty) {
  for (const auto& ditta : {host::Variant(), host::Variant(host::Null{}), host::Variant("")}) {
    journal->Svuota();
    servizio->DittaCorrente = ditta;
    AttivaEventoGestionale(interno.contesto, interno.oggetti, {88, "", "", "", "", "", ""});
    EXPECT_THAT(Eventi(),
                ElementsAre("exec SPFW_AttivaEventoGestionale , 88, 7, "
                            "'<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>' , 1"));
  }
}

TEST_F(EventoGestionale, ASubjectWithAnApostropheArrivesDoubledInTheStatement) {
  AttivaEventoGestionale(interno.contesto, interno.oggetti, {89, "", "", "", "", "", "Offerta dell'anno"});
  EXPECT_THAT(Eventi(), ElementsAre(HasSubstr("<MAIL_OBJ=Offerta dell''anno/>' , 1")));
}

// Whatever fails along the way, nothing reaches the send and nobody is told.
TEST_F(EventoGestionale, EachFailureLosesTheEventAndNothingElse) {
  const std::vector<const char*> guasti = {
      "ConnectionADO.CreateCommand", "Command.CommandType",       "Command.CommandText",
      "Command.CreateParameter",     "Command.Parameters.Append", "Command.Execute",
      "Command.Parameters.Item",     "Parameter.Value",           "ConnectionADO.Execute"};
  for (const char* guasto : guasti) {
    journal->Fallisce(guasto);
    EXPECT_NO_THROW(
        AttivaEventoGestionale(interno.contesto, interno.oggetti, {89, "Nome", "", "", "", "", ""}))
        << guasto;
    journal->DimenticaPiani();
    EXPECT_THAT(Messaggi(), IsEmpty()) << guasto;
  }
  servizio->ConnectionADO.reset();
  EXPECT_NO_THROW(
      AttivaEventoGestionale(interno.contesto, interno.oggetti, {89, "Nome", "", "", "", "", ""}));
  EXPECT_EQ(GetUserIDFromConnection(interno.contesto), host::Variant(0));
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(EventoGestionale, AFailingStatementOfTheUserQueryIsSkippedAndTheNextOneRuns) {
  journal->Fallisce("Command.CommandType");
  EXPECT_EQ(GetUserIDFromConnection(interno.contesto), host::Variant(7));
  EXPECT_EQ(journal->Conta("Command."), 6U);
}

TEST_F(EventoGestionale, HostileTextIsCarriedAsItStands) {
  servizio->DittaCorrente = host::Variant();
  for (const std::string& testo : {std::string("a\0b", 3), std::string("\xFF\xC3"), std::string("a\r\nb\"<"),
                                   std::string(1U << 20U, 'x')}) {
    EXPECT_EQ(Parametri(89, testo), kInizio + ("<MAIL_DEST=" + testo + "/>"));
  }
  const std::string apici(1U << 20U, '\'');
  EXPECT_EQ(Parametri(89, apici).size(),
            std::string(kInizio).size() + std::string("<MAIL_DEST=/>").size() + 2 * apici.size());
}

}  // namespace
}  // namespace orve
