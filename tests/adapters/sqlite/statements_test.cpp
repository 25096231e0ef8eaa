// Every statement that the library sends, spelled out to the character, against the sample data: what proves
// the translator, the native functions and the schema together.
#include <gmock/gmock.h>

#include "adapters/sqlite/prova.h"

namespace orve::adapters::sqlite {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

using Statements = ConDatiDiProva;

TEST_F(Statements, MailSettings) {
  const auto righe = Esegui(
      "SELECT FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_PATHTMP,  FW24_READRECEIPT, FW24_FLGMSGPERS, "
      "FW24_MSGPERS,FW24_BCC,  FW24_MAILMODSTDIFF  FROM FW24_FAXCONFIG  WHERE FW24_INDCANALE = 1");
  EXPECT_EQ(host::Leggi(*righe, "FW24_INDFAXATTIVO"), host::Variant(76));
  EXPECT_EQ(host::Leggi(*righe, "FW24_PATHTMP"), host::Variant(""));
  EXPECT_TRUE(host::Leggi(*righe, "FW24_MSGPERS").IsNull());
  EXPECT_THAT(Testi(*righe, {"FW24_INDMODALITA", "FW24_READRECEIPT", "FW24_FLGMSGPERS", "FW24_BCC",
                             "FW24_MAILMODSTDIFF"}),
              ElementsAre("1|0|0|0|1"));
}

TEST_F(Statements, FaxSettings) {
  EXPECT_THAT(Righe(" SELECT FW24_INDFAXATTIVO  FROM FW24_FAXCONFIG  WHERE FW24_CODICE = 'FAX' ",
                    {"FW24_INDFAXATTIVO"}),
              ElementsAre("3"));
}

const std::vector<std::string> kIndirizzi = {"CG16_INDEMAIL", "CG16_EMAIL_PEC", "CG16_RAGSOANAG", "CG16_NOME",
                                             "CG16_COGNOME"};

TEST_F(Statements, MasterDataByCode) {
  const std::string prefisso =
      "SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG FROM CG16_ANAGGEN "
      "WHERE CG16_CODICE= ";
  EXPECT_THAT(Righe(prefisso + "101", kIndirizzi),
              ElementsAre("acquisti@bellariva.example|bellariva@pec.bellariva.example|Officine Bellariva "
                          "S.r.l.|<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "102", kIndirizzi),
              ElementsAre("ordini@cittadoro.example|<null>|Pasticceria Città d'Oro S.n.c.|<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "105", kIndirizzi),
              ElementsAre("   | |Cartotecnica Tre Spazi S.r.l.|<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "108", {"CG16_RAGSOANAG"}), ElementsAre("Caffè «Perù» – Torrefazione Αθήνα"));
  EXPECT_THAT(Righe(prefisso + "99999", kIndirizzi), IsEmpty());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(prefisso + ""); }).Numero(), 1);
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(prefisso + "O'Neil"); }).Numero(), 1);
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(prefisso + "ABC"); }).Numero(), 1);
}

TEST_F(Statements, AgentByCode) {
  const auto statement = [](const std::string& ditta, const std::string& codice) {
    return " SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r FROM "
           "CG16_ANAGGEN \r"
           " INNER JOIN MG17_AGENTI  ON MG17_ANAGEN_CG16  = CG16_CODICE \r WHERE MG17_DITTA_CG18 = " +
           ditta + "\r AND MG17_AGENTE =  '" + codice + "'";
  };
  EXPECT_THAT(Righe(statement("1", "A01"), kIndirizzi),
              ElementsAre("nordest@agenzie.example|nordest@pec.agenzie.example|Agenzia Nord Est|Nord|Est"));
  EXPECT_THAT(Righe(statement("2", "a01 "), kIndirizzi),
              ElementsAre("marche@agenzie.example|<null>|Agenzia Marche|<null>|Marche"))
      << "codes compare without case and blanks at the end";
  EXPECT_THAT(Righe(statement("1", "A02"), kIndirizzi),
              ElementsAre("<null>|<null>|Agenzia Isole|Isole|<null>"));
  EXPECT_THAT(Righe(statement("1", "A03"), kIndirizzi), IsEmpty());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("", "A01")); }).Numero(), 1);
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("1", "A'01")); }).Numero(), 1);
}

std::string Partner(const std::string& ditta, const std::string& tipo, const std::string& codice,
                    const std::string& data) {
  return " SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r FROM "
         "CG16_ANAGGEN \r"
         " WHERE CG16_CODICE = \r (SELECT dbo.FNCG_GETCODANAG(CG44_CLIFOR.CG44_DITTA_CG18, "
         "CG44_CLIFOR.CG44_TIPOCF, "
         "CG44_CLIFOR.CG44_CLIFOR, " +
         data + ") AS CODANAG \r FROM CG44_CLIFOR \r WHERE \r CG44_DITTA_CG18 = " + ditta +
         "\r AND CG44_TIPOCF = " + tipo + "\r AND CG44_CLIFOR = " + codice + ")";
}

TEST_F(Statements, CustomerOrSupplierAtADate) {
  const std::vector<std::string> nome = {"CG16_RAGSOANAG"};
  struct Caso {
    const char* label;
    const char* ditta;
    const char* tipo;
    const char* codice;
    const char* data;
    std::vector<std::string> want;
  };
  const std::vector<Caso> casi = {
      {"customer", "1", "0", "1001", "'20260115'", {"Officine Bellariva S.r.l."}},
      {"supplier of the same number", "1", "1", "1001", "'20260115'", {"Vetreria Laguna S.r.l."}},
      {"customer of the other company", "2", "0", "1001", "'20260115'", {"Enoteca del Ponte S.n.c."}},
      {"shared by both companies", "2", "0", "1002", "'20260115'", {"Officine Bellariva S.r.l."}},
      {"supplier", "1", "1", "2001", "'20260115'", {"Trasporti Rapidi Adriatici S.p.A."}},
      {"the day before the change", "1", "0", "1006", "'20241231'", {"Molino Vecchio S.r.l."}},
      {"the day of the change", "1", "0", "1006", "'20250101'", {"Molino Nuovo S.p.A."}},
      {"after the change", "1", "0", "1006", "'20260115'", {"Molino Nuovo S.p.A."}},
      {"a date with dashes", "1", "0", "1006", "'2024-12-31'", {"Molino Vecchio S.r.l."}},
      {"a date with a time", "1", "0", "1006", "'20241231 23:59:59'", {"Molino Vecchio S.r.l."}},
      {"null for a date", "1", "0", "1006", "null", {}},
      {"nobody", "1", "0", "1999", "'20260115'", {}},
      {"no such company", "3", "0", "1001", "'20260115'", {}},
      {"no such flag", "1", "2", "1001", "'20260115'", {}},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(Righe(Partner(caso.ditta, caso.tipo, caso.codice, caso.data), nome), caso.want) << caso.label;
  }
  EXPECT_THAT(
      Righe(Partner("1", "0", "1003", "'20260115'"), kIndirizzi),
      ElementsAre("<null>|legnami@pec.legnami.example|Legnami, Travi e Coperture S.r.l.|<null>|<null>"));
}

TEST_F(Statements, APartnerThatCannotBeAskedForIsAnError) {
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

TEST_F(Statements, ContactById) {
  const std::string prefisso =
      " SELECT CG16_RAGSOANAG, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC  FROM CO02_ANAGCONTATTO  INNER JOIN "
      "CO03_LEGCONTATTO ON CO03_ID_CO02 = CO02_ID  INNER JOIN CG16_ANAGGEN ON CG16_CODICE = CO03_CODICE_CG16 "
      " WHERE "
      "CO02_ID = ";
  const std::vector<std::string> colonne = {"CO02_COGNOMENOME", "CO02_EMAIL1", "CO02_PEC"};
  EXPECT_THAT(
      Righe(prefisso + "501", colonne),
      ElementsAre(
          "Ufficio Acquisti|ufficio.acquisti@bellariva.example|ufficio.acquisti@pec.bellariva.example",
          "Ufficio Acquisti|ufficio.acquisti@bellariva.example|ufficio.acquisti@pec.bellariva.example"))
      << "one row for each of the two partners";
  EXPECT_THAT(Righe(prefisso + "502", colonne),
              ElementsAre("Responsabile Qualità|<null>|qualita@pec.cittadoro.example"));
  EXPECT_THAT(Righe(prefisso + "503", colonne), IsEmpty()) << "linked to nobody";
  EXPECT_THAT(Righe(prefisso + "504", {"CO02_EMAIL1"}), ElementsAre(" "));
}

TEST_F(Statements, GoodsDestination) {
  const auto statement = [](const std::string& destinazione, const std::string& ditta,
                            const std::string& tipo, const std::string& partner) {
    return " SELECT       MG22_DESTEMAIL, MG22_DESTFAX, MG22_DESTPEC, MG22_DESTRAGSOC  From MG22_CLIFORDEST  "
           " Where "
           "MG22_CODDESTIN = '" +
           destinazione + "'   AND MG22_DITTA_CG18 = " + ditta + " AND MG22_TIPOCF_CG44 = " + tipo +
           " AND MG22_CLIFOR_CG44 = " + partner;
  };
  const std::vector<std::string> colonne = {"MG22_DESTEMAIL", "MG22_DESTFAX", "MG22_DESTPEC",
                                            "MG22_DESTRAGSOC"};
  EXPECT_THAT(
      Righe(statement("SEDE", "1", "0", "1001"), colonne),
      ElementsAre("stabilimento@bellariva.example|045 000102|stabilimento@pec.bellariva.example|Bellariva, "
                  "Stabilimento Sud"));
  EXPECT_THAT(Righe(statement("sede", "1", "0", "1004"), colonne),
              ElementsAre("<null>|<null>|<null>|Ferramenta del Borgo, Sede"));
  EXPECT_THAT(Righe(statement("MAG2", "1", "0", "1001"), colonne),
              ElementsAre("  |<null>| |Bellariva, Magazzino 2"));
  EXPECT_THAT(Righe(statement("PEC", "1", "0", "1001"), {"MG22_DESTEMAIL", "MG22_DESTPEC"}),
              ElementsAre("<null>|protocollo@pec.bellariva.example"));
  EXPECT_THAT(Righe(statement("A/B/3", "1", "0", "1001"), {"MG22_DESTEMAIL"}),
              ElementsAre("corsia@bellariva.example"));
  EXPECT_THAT(Righe(statement("HUB", "1", "1", "2001"), {"MG22_DESTRAGSOC"}),
              ElementsAre("Rapidi Adriatici, Piattaforma"));
  EXPECT_THAT(Righe(statement("HUB", "1", "0", "2001"), colonne), IsEmpty());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("L'AQUILA", "1", "0", "1001")); }).Numero(), 1);
}

TEST_F(Statements, PartnerOfAGoodsDestinationAtADate) {
  const auto statement = [](const std::string& ditta, const std::string& tipo, const std::string& partner,
                            const std::string& data) {
    return " select       CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC, CG16_RAGSOANAG, CG16_COGNOME, "
           "CG16_NOME   from "
           "CG16_ANAGGEN   where CG16_CODICE= (      select dbo.FNCG_GETCODANAG(" +
           ditta + "," + tipo + "," + partner + "," + data + ")  ) ";
  };
  const std::vector<std::string> colonne = {"CG16_FAXNUM", "CG16_INDEMAIL", "CG16_EMAIL_PEC",
                                            "CG16_RAGSOANAG"};
  EXPECT_THAT(
      Righe(statement("1", "0", "1001", "'20260115'"), colonne),
      ElementsAre("045 000101|acquisti@bellariva.example|bellariva@pec.bellariva.example|Officine Bellariva "
                  "S.r.l."));
  EXPECT_THAT(Righe(statement("1", "0", "1006", "'20241231'"), {"CG16_RAGSOANAG"}),
              ElementsAre("Molino Vecchio S.r.l."));
  EXPECT_THAT(Righe(statement("1", "0", "1006", "'20250101'"), {"CG16_RAGSOANAG"}),
              ElementsAre("Molino Nuovo S.p.A."));
  EXPECT_THAT(Righe(statement("1", "0", "1999", "'20260115'"), colonne), IsEmpty()) << "the partner is gone";
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("1", "0", "", "'20260115'")); }).Numero(), 1);
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("1", "0", "'A'", "'20260115'")); }).Numero(), 20);
}

const std::vector<std::string> kAccount = {
    "FW23_SERVERNAME",  "FW23_PORT",     "FW23_TIMEOUT", "FW23_INDAUTH", "FW23_SSL",
    "FW98_MAILADDRESS", "FW98_USERNAME", "ALIAS",        "LETTURA",      "CONSEGNA"};

TEST_F(Statements, DefaultAccountOfAUser) {
  const auto statement = [](const std::string& tipo, int utente) {
    return "SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL, \r "
           "FW98_MAILADDRESS "
           ", FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS AS ALIAS, FW98_INDREADRCPT AS LETTURA, "
           "FW98_INDDELIVERYSTATUS "
           "AS CONSEGNA \r FROM FW99_MAILUSERACCOUNT \r LEFT OUTER JOIN FW98_MAILACCOUNT ON "
           "FW99_IDACCOUNT_FW98 = "
           "FW98_IDACCOUNT \r LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r WHERE "
           "FW23_INDTIPO = " +
           tipo + " \r AND FW99_ID_FW07 = " + std::to_string(utente) + "\r AND FW99_ISDEFAULT = 1";
  };
  EXPECT_THAT(
      Righe(statement("1", 1), kAccount),
      ElementsAre("smtp.arvenia.example|587|30|1|1|fatture@arvenia.example|fatture@arvenia.example|Ufficio "
                  "Fatture Arvenia|1|1"));
  EXPECT_THAT(Righe(statement("2", 1), {"FW98_MAILADDRESS", "FW98_PASSWORD", "LETTURA", "CONSEGNA"}),
              ElementsAre("fatture@pec.arvenia.example|" + CifraDiProva(PasswordDiProva(4)) + "|-1|-1"));
  EXPECT_THAT(Righe(statement("1", 2), kAccount), IsEmpty()) << "accounts, but none of them default";
  EXPECT_THAT(Righe(statement("1", 3), {"FW98_MAILADDRESS", "ALIAS", "LETTURA", "CONSEGNA"}),
              ElementsAre("vendite@arvenia.example|<null>|<null>|<null>"));
  EXPECT_THAT(Righe(statement("2", 3), kAccount), IsEmpty()) << "an ordinary default only";
  EXPECT_THAT(Righe(statement("1", 4), kAccount), IsEmpty());
  EXPECT_THAT(Righe(statement("1", 6), {"FW23_SERVERNAME", "FW23_PORT", "FW98_MAILADDRESS", "FW98_PASSWORD"}),
              ElementsAre("<null>|<null>|<null>|<null>"));
  EXPECT_THAT(Righe(statement("1", 0), kAccount), IsEmpty());
}

TEST_F(Statements, AccountOfACompany) {
  const auto statement = [](const std::string& filtroDitta, const std::string& tipo) {
    return " SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL, \r "
           "FW98_MAILADDRESS, FW98_USERNAME, FW98_PASSWORD, CG16_RAGSOANAG AS ALIAS, FW98_INDREADRCPT AS "
           "LETTURA, "
           "FW98_INDDELIVERYSTATUS AS CONSEGNA \r FROM FW98_MAILACCOUNT \r LEFT OUTER JOIN FW23_FAXER ON "
           "FW98_IDSERVER_FW23 = FW23_IDSERVER \r LEFT OUTER JOIN FW9A_MAILAZIENDAACCOUNT ON FW98_IDACCOUNT "
           "= "
           "FW9A_IDACCOUNT_FW98 \r LEFT OUTER JOIN CG18_ANADITTABASE ON FW9A_DITTA_CG18 = CG18_DITTA \r "
           "INNER JOIN "
           "CG16_ANAGGEN ON CG18_CODICE_CG16 = CG16_CODICE \r WHERE " +
           filtroDitta + " FW23_INDTIPO = " + tipo + " \r";
  };
  EXPECT_THAT(Righe(statement(" FW9A_DITTA_CG18 = 1 AND ", "1"), kAccount),
              ElementsAre("smtp.arvenia.example|587|30|1|1|info@arvenia.example|info@arvenia.example|Arvenia "
                          "Distribuzione S.p.A.|0|0"));
  EXPECT_THAT(Righe(statement(" FW9A_DITTA_CG18 = 1 AND ", "2"), {"FW23_SERVERNAME", "FW98_MAILADDRESS"}),
              ElementsAre("pec.arvenia.example|arvenia@pec.arvenia.example"));
  EXPECT_THAT(
      Righe(statement(" FW9A_DITTA_CG18 = 2 AND ", "1"), kAccount),
      ElementsAre(
          "smtp.collefiorito.example   |25|60|0|0|ordini@collefiorito.example|<null>|Società Agricola "
          "Colle Fiorito S.r.l.|1|<null>"));
  EXPECT_THAT(Righe(statement(" FW9A_DITTA_CG18 = 3 AND ", "1"), kAccount), IsEmpty());
  EXPECT_THAT(
      Righe(statement("", "2"), {"FW98_MAILADDRESS"}),
      ::testing::UnorderedElementsAre("arvenia@pec.arvenia.example", "collefiorito@pec.collefiorito.example"))
      << "without a company, the accounts of all";
}

TEST_F(Statements, AccountById) {
  const auto statement = [](int id) {
    return "SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL, \r "
           "FW98_MAILADDRESS "
           ", FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS AS ALIAS, FW98_INDREADRCPT AS LETTURA, "
           "FW98_INDDELIVERYSTATUS "
           "AS CONSEGNA \r FROM FW98_MAILACCOUNT \r LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = "
           "FW23_IDSERVER "
           "\r WHERE FW98_IDACCOUNT = " +
           std::to_string(id);
  };
  EXPECT_THAT(
      Righe(statement(5), kAccount),
      ElementsAre("smtp.arvenia.example|587|30|1|1|magazzino@arvenia.example|magazzino@arvenia.example|"
                  "Magazzino Arvenia|-2|2"));
  EXPECT_THAT(Righe(statement(9), {"FW23_SERVERNAME", "FW23_PORT", "FW23_INDTIPO", "FW98_MAILADDRESS"}),
              ElementsAre("<null>|<null>|<null>|senza.server@arvenia.example"))
      << "the outer join brings an account without a server";
  EXPECT_THAT(Righe(statement(0), kAccount), IsEmpty());
}

TEST_F(Statements, AccountsThatAUserMayChooseFrom) {
  const auto statement = [](int utente, const std::string& tipo) {
    return " SELECT FW23_SERVERNAME, \r FW23_PORT, \r FW23_TIMEOUT, \r FW23_INDAUTH, \r FW23_SSL, \r "
           "FW98_IDACCOUNT, \r "
           "FW98_MAILADDRESS, \r FW98_USERNAME, \r FW98_PASSWORD, \r FW98_ALIAS AS ALIAS, \r "
           "FW98_INDREADRCPT AS "
           "LETTURA, \r FW98_INDDELIVERYSTATUS AS CONSEGNA \r FROM FW98_MAILACCOUNT\r INNER JOIN "
           "FW99_MAILUSERACCOUNT "
           "ON FW98_IDACCOUNT = FW99_IDACCOUNT_FW98 \r LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = "
           "FW23_IDSERVER \r WHERE FW99_ID_FW07 = " +
           std::to_string(utente) + "\r AND FW23_INDTIPO = " + tipo + "  ORDER BY FW99_ISDEFAULT Desc";
  };
  EXPECT_THAT(
      Righe(statement(1, "1"), {"FW98_IDACCOUNT", "FW98_MAILADDRESS", "ALIAS", "FW98_PASSWORD"}),
      ElementsAre("1|fatture@arvenia.example|Ufficio Fatture Arvenia|" + CifraDiProva(PasswordDiProva(1)),
                  "2|info@arvenia.example|<null>|" + CifraDiProva(PasswordDiProva(2))))
      << "the default account comes first";
  EXPECT_THAT(Righe(statement(1, "2"), {"FW98_IDACCOUNT"}), ElementsAre("4"));
  EXPECT_THAT(Righe(statement(2, "1"), {"FW98_IDACCOUNT"}), ElementsAre("5"));
  EXPECT_THAT(Righe(statement(4, "1"), {"FW98_IDACCOUNT"}), IsEmpty());
}

TEST_F(Statements, AccountsThatACompanyOffers) {
  const auto statement = [](const std::string& ditta, const std::string& tipo) {
    return " SELECT FW23_SERVERNAME, \r FW23_PORT, \r FW23_TIMEOUT, \r FW23_INDAUTH, \r FW23_SSL, \r "
           "FW98_IDACCOUNT, \r "
           "FW98_MAILADDRESS, \r FW98_USERNAME, \r FW98_PASSWORD, \r CG16_RAGSOANAG AS ALIAS, \r "
           "FW98_INDREADRCPT AS "
           "LETTURA, \r FW98_INDDELIVERYSTATUS AS CONSEGNA \r FROM FW98_MAILACCOUNT \r LEFT OUTER JOIN "
           "FW23_FAXER ON "
           "FW98_IDSERVER_FW23 = FW23_IDSERVER \r LEFT OUTER JOIN FW9A_MAILAZIENDAACCOUNT ON FW98_IDACCOUNT "
           "= "
           "FW9A_IDACCOUNT_FW98 \r LEFT OUTER JOIN CG18_ANADITTABASE ON FW9A_DITTA_CG18 = CG18_DITTA \r LEFT "
           "OUTER JOIN "
           "CG16_ANAGGEN ON CG18_CODICE_CG16 = CG16_CODICE \r WHERE FW9A_DITTA_CG18 = " +
           ditta + "\r AND FW23_INDTIPO = " + tipo + " ";
  };
  EXPECT_THAT(Righe(statement("1", "1"), {"FW98_IDACCOUNT", "ALIAS"}),
              ElementsAre("2|Arvenia Distribuzione S.p.A."));
  EXPECT_THAT(Righe(statement("2", "2"), {"FW98_IDACCOUNT", "FW23_SSL", "FW23_TIMEOUT"}),
              ElementsAre("8|2|<null>"));
  EXPECT_THAT(Righe(statement("9", "1"), {"FW98_IDACCOUNT"}), IsEmpty());
}

TEST_F(Statements, UserIdByCodes) {
  const auto statement = [](const std::string& gruppo, const std::string& utente) {
    return " SELECT FW07_ID  FROM FW07_APPUSER  WHERE FW07_CODICE_FW06 = '" + gruppo +
           "'      AND FW07_CODICE = '" + utente + "' ";
  };
  EXPECT_THAT(Righe(statement("AMM", "U01"), {"FW07_ID"}), ElementsAre("1"));
  EXPECT_THAT(Righe(statement("VEN", "U01"), {"FW07_ID"}), ElementsAre("6"))
      << "the same code in another group";
  EXPECT_THAT(Righe(statement("amm", "u02  "), {"FW07_ID"}), ElementsAre("2"));
  EXPECT_THAT(Righe(statement("AMM", "U99"), {"FW07_ID"}), IsEmpty());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("AMM", "D'ORO")); }).Numero(), 1);
}

TEST_F(Statements, UserNameAndDescription) {
  const std::string prefisso =
      "          SELECT  FW07_USERNAME,FW07_DESCR  FROM    FW07_APPUSER  WHERE   FW07_ID = ";
  EXPECT_THAT(Righe(prefisso + "1", {"FW07_USERNAME", "FW07_DESCR"}),
              ElementsAre("fatturazione|Ufficio Fatturazione"));
  EXPECT_THAT(Righe(prefisso + "5", {"FW07_USERNAME", "FW07_DESCR"}), ElementsAre("<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "0", {"FW07_USERNAME", "FW07_DESCR"}), IsEmpty());
}

TEST_F(Statements, PreferredGroup) {
  const std::string prefisso =
      "          SELECT  FW06_CODICE,FW06_DESCR \r\n FROM    FW07_APPUSER \r\n         INNER JOIN "
      "FW00_GRPUSRASSOC ON "
      "FW00_ID_FW07= FW07_APPUSER.FW07_ID AND FW00_FLGPREF = 1  \r\n         INNER JOIN FW06_GROUPUSR ON "
      "FW06_ID = "
      "FW00_GRPUSRASSOC.FW00_ID_FW06  \r\n WHERE   FW07_ID = ";
  EXPECT_THAT(Righe(prefisso + "1", {"FW06_CODICE", "FW06_DESCR"}), ElementsAre("AMM|Amministrazione"));
  EXPECT_THAT(Righe(prefisso + "2", {"FW06_CODICE", "FW06_DESCR"}), ElementsAre("MAG|<null>"));
  EXPECT_THAT(Righe(prefisso + "3", {"FW06_CODICE"}), ElementsAre("AMM")) << "not the group of his own row";
  EXPECT_THAT(Righe(prefisso + "4", {"FW06_CODICE"}), IsEmpty());
}

TEST_F(Statements, CodesOfUserAndGroup) {
  EXPECT_THAT(Righe(" SELECT FW07_CODICE  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=3", {"FW07_CODICE"}),
              ElementsAre("U03"));
  EXPECT_THAT(Righe(" SELECT FW07_CODICE_FW06  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=3",
                    {"FW07_CODICE_FW06"}),
              ElementsAre("VEN"));
  EXPECT_THAT(
      Righe(" SELECT FW07_CODICE  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=99", {"FW07_CODICE"}),
      IsEmpty());
}

TEST_F(Statements, CurrentCompany) {
  const std::string prefisso =
      " SELECT CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, CG16_INDEMAIL   FROM "
      "CG16_ANAGGEN  INNER "
      "JOIN CG18_ANADITTABASE ON CG16_CODICE = CG18_CODICE_CG16  WHERE CG18_DITTA = ";
  const std::vector<std::string> colonne = {"CG16_RAGSOANAG", "CG16_INDIRIZZO", "CG16_CAP",
                                            "CG16_CITTA",     "CG16_PROV",      "CG16_INDEMAIL"};
  EXPECT_THAT(
      Righe(prefisso + "1", colonne),
      ElementsAre(
          "Arvenia Distribuzione S.p.A.|Via dell'Industria, 12|36100|Vicenza|VI|info@arvenia.example"));
  EXPECT_THAT(
      Righe(prefisso + "2", colonne),
      ElementsAre("Società Agricola Colle Fiorito S.r.l.|Località Colle Fiorito|62010|Appignano|MC|<null>"));
  EXPECT_THAT(Righe(prefisso + "7", colonne), IsEmpty());
}

TEST_F(Statements, HtmlSetting) {
  const std::string statement =
      " SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_MAIL_HTML' AND FW95_VALORE = 1 ";
  EXPECT_FALSE(Esegui(statement)->Eof());
  for (const char* spento : {"0", "2", "", "NO"}) {
    (void)connessione->EseguiConValori(
        "UPDATE FW95_SETTINGS SET FW95_VALORE = ?1 WHERE FW95_CODICE = 'AIT_MAIL_HTML'",
        {std::string(spento)});
    EXPECT_TRUE(Esegui(statement)->Eof()) << spento;
  }
  (void)Esegui("DELETE FROM FW95_SETTINGS WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
  EXPECT_TRUE(Esegui(statement)->Eof());
}

TEST_F(Statements, NameOfTheSignatureTable) {
  EXPECT_THAT(Righe(" SELECT FW95_VALORE FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_FIRME' ",
                    {"FW95_VALORE"}),
              ElementsAre("AZ_FIRMEUTENTI"));
}

TEST_F(Statements, WhetherTheSignatureTableExists) {
  const auto statement = [](const std::string& tabella) {
    return "SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = '" + tabella + "'";
  };
  EXPECT_FALSE(Esegui(statement("AZ_FIRMEUTENTI"))->Eof());
  EXPECT_FALSE(Esegui(statement("az_firmeutenti"))->Eof());
  EXPECT_TRUE(Esegui(statement("AZ_FIRME"))->Eof());
  EXPECT_TRUE(Esegui(statement(""))->Eof());
  EXPECT_TRUE(Esegui(statement("sqlite_sequence"))->Eof())
      << "the engine's own tables are none of the application's";
  EXPECT_TRUE(Esegui(statement("INFORMATION_SCHEMA_TABLES"))->Eof());
  (void)Esegui("CREATE VIEW FIRME_VISTA AS SELECT 1 A");
  EXPECT_FALSE(Esegui(statement("FIRME_VISTA"))->Eof()) << "a view counts as a table";
}

TEST_F(Statements, Signature) {
  const auto statement = [](const std::string& tabella, int utente) {
    return " SELECT FIRMA_HTML, ISNULL(FONT,'') FONT, ISNULL(DIMENSIONE,0) DIMENSIONE \r\n FROM " + tabella +
           "\r\n WHERE IDUTENTE_FW07 = " + std::to_string(utente) + "\r\n";
  };
  const std::vector<std::string> colonne = {"FIRMA_HTML", "FONT", "DIMENSIONE"};
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 1), {"FONT", "DIMENSIONE"}), ElementsAre("Verdana|2"));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 1), {"FIRMA_HTML"}),
              ElementsAre(MatchesRegex("<p>.*Città.*</p>")));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 2), colonne),
              ElementsAre("<p>Il magazzino di Arvenia</p>  ||0"));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 3), colonne), ElementsAre("<p>Ufficio Vendite</p>|   |0"));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 4), colonne), IsEmpty());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui(statement("FW07_APPUSER", 1)); }).Numero(), 1)
      << "a table without the columns";
}

class Events : public ConDatiDiProva {
 protected:
  [[nodiscard]] std::vector<std::string> Eventi() const {
    return Righe("SELECT DITTA, CODICE, IDUTENTE, DATI, FLAG FROM EVENTI_GESTIONALI ORDER BY ID",
                 {"DITTA", "CODICE", "IDUTENTE", "DATI", "FLAG"});
  }
};

TEST_F(Events, TheProcedureKeepsTheEventAsItCame) {
  const auto esito = Esegui(
      "exec SPFW_AttivaEventoGestionale 1, 89, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/>"
      "<GRP_COD=AMM/><MAIL_DEST=Cliente Uno/><AZ_COD=1/><MAIL_OBJ=Fattura 12/>' , 1");
  EXPECT_TRUE(esito->Eof());
  EXPECT_THAT(Eventi(),
              ElementsAre("1|89|7|<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>"
                          "<MAIL_DEST=Cliente Uno/><AZ_COD=1/><MAIL_OBJ=Fattura 12/>|1"));
  EXPECT_THAT(Righe("SELECT ISTANTE FROM EVENTI_GESTIONALI", {"ISTANTE"}),
              ElementsAre(MatchesRegex(
                  "20[0-9][0-9]-[0-9][0-9]-[0-9][0-9] [0-9][0-9]:[0-9][0-9]:[0-9][0-9].[0-9]+")));
}

TEST_F(Events, ADoubledApostropheArrivesOnce) {
  (void)Esegui("exec SPFW_AttivaEventoGestionale 1, 89, 7, '<MAIL_OBJ=L''ordine dbo.x ISNULL(1)/>' , 1");
  EXPECT_THAT(Eventi(), ElementsAre("1|89|7|<MAIL_OBJ=L'ordine dbo.x ISNULL(1)/>|1"));
}

TEST_F(Events, AnEmptyPayloadIsKept) {
  (void)Esegui("exec SPFW_AttivaEventoGestionale 2, 5, 7, '' , 1");
  EXPECT_THAT(Eventi(), ElementsAre("2|5|7||1"));
}

TEST_F(Events, EachCallKeepsOneEventInOrder) {
  for (int i = 0; i < 20; ++i) {
    (void)Esegui("exec SPFW_AttivaEventoGestionale 1, 89, 7, 'n. " + std::to_string(i) + "' , 1");
  }
  const auto eventi = Eventi();
  ASSERT_EQ(eventi.size(), 20U);
  EXPECT_EQ(eventi.front(), "1|89|7|n. 0|1");
  EXPECT_EQ(eventi.back(), "1|89|7|n. 19|1");
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
