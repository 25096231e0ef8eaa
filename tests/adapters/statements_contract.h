// Every statement that the library sends, spelled out to the character, against the sample data: whatever
// engine runs them gives the same rows. A test program of an adapter brings its sample databases and
// instantiates the suite as it does with connection_contract.h.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fakes/errori.h"
#include "orve-mailserver/host/connection.h"

namespace orve::contract {

/// A database with the application's tables, functions and procedures and the sample data, its passwords
/// enciphered by reversing them.
class BancoDati {
 public:
  virtual ~BancoDati() = default;
  virtual host::Connection& Connessione() = 0;
};

using CreaBancoDati = std::unique_ptr<BancoDati> (*)();

class ContrattoIstruzioni : public ::testing::TestWithParam<CreaBancoDati> {
 protected:
  [[nodiscard]] std::shared_ptr<host::RecordSet> Esegui(const std::string& statement) const {
    return banco_->Connessione().Execute(statement, host::kComandoTesto);
  }

  /// One line per row: the named columns joined by "|", null as "<null>".
  [[nodiscard]] static std::vector<std::string> Testi(host::RecordSet& righe,
                                                      const std::vector<std::string>& colonne) {
    std::vector<std::string> testi;
    for (; !righe.Eof(); righe.MoveNext()) {
      std::string riga;
      for (const auto& colonna : colonne) {
        const auto valore = host::Leggi(righe, colonna);
        if (&colonna != &colonne.front()) riga += '|';
        riga += valore.IsNull() ? "<null>" : valore.ToText();
      }
      testi.push_back(riga);
    }
    return testi;
  }

  [[nodiscard]] std::vector<std::string> Righe(const std::string& statement,
                                               const std::vector<std::string>& colonne) const {
    return Testi(*Esegui(statement), colonne);
  }

  [[nodiscard]] std::vector<std::string> Eventi() const {
    return Righe("SELECT DITTA, CODICE, IDUTENTE, DATI, FLAG FROM EVENTI_GESTIONALI ORDER BY ID",
                 {"DITTA", "CODICE", "IDUTENTE", "DATI", "FLAG"});
  }

  [[nodiscard]] static std::string PasswordCifrata(int account) {
    const std::string chiara = "Prova-" + std::to_string(account) + "-arvenia";
    return {chiara.rbegin(), chiara.rend()};
  }

 private:
  std::unique_ptr<BancoDati> banco_ = GetParam()();
};

TEST_P(ContrattoIstruzioni, MailSettings) {
  const auto righe = Esegui(
      "SELECT FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_PATHTMP,  FW24_READRECEIPT, FW24_FLGMSGPERS, "
      "FW24_MSGPERS,FW24_BCC,  FW24_MAILMODSTDIFF  FROM FW24_FAXCONFIG  WHERE FW24_INDCANALE = 1");
  EXPECT_EQ(host::Leggi(*righe, "FW24_INDFAXATTIVO"), host::Variant(76));
  EXPECT_EQ(host::Leggi(*righe, "FW24_PATHTMP"), host::Variant(""));
  EXPECT_TRUE(host::Leggi(*righe, "FW24_MSGPERS").IsNull());
  EXPECT_THAT(Testi(*righe, {"FW24_INDMODALITA", "FW24_READRECEIPT", "FW24_FLGMSGPERS", "FW24_BCC",
                             "FW24_MAILMODSTDIFF"}),
              ::testing::ElementsAre("1|0|0|0|1"));
}

TEST_P(ContrattoIstruzioni, FaxSettings) {
  EXPECT_THAT(Righe(" SELECT FW24_INDFAXATTIVO  FROM FW24_FAXCONFIG  WHERE FW24_CODICE = 'FAX' ",
                    {"FW24_INDFAXATTIVO"}),
              ::testing::ElementsAre("3"));
}

inline const std::vector<std::string> kIndirizzi = {"CG16_INDEMAIL", "CG16_EMAIL_PEC", "CG16_RAGSOANAG",
                                                    "CG16_NOME", "CG16_COGNOME"};

TEST_P(ContrattoIstruzioni, MasterDataByCode) {
  const std::string prefisso =
      "SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG FROM CG16_ANAGGEN "
      "WHERE CG16_CODICE= ";
  EXPECT_THAT(
      Righe(prefisso + "101", kIndirizzi),
      ::testing::ElementsAre("acquisti@bellariva.example|bellariva@pec.bellariva.example|Officine Bellariva "
                             "S.r.l.|<null>|<null>"));
  EXPECT_THAT(
      Righe(prefisso + "102", kIndirizzi),
      ::testing::ElementsAre("ordini@cittadoro.example|<null>|Pasticceria Città d'Oro S.n.c.|<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "105", kIndirizzi),
              ::testing::ElementsAre("   | |Cartotecnica Tre Spazi S.r.l.|<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "108", {"CG16_RAGSOANAG"}),
              ::testing::ElementsAre("Caffè «Perù» – Torrefazione Αθήνα"));
  EXPECT_THAT(Righe(prefisso + "99999", kIndirizzi), ::testing::IsEmpty());
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(prefisso + ""); }).Numero(), 0);
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(prefisso + "O'Neil"); }).Numero(), 0);
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(prefisso + "ABC"); }).Numero(), 0);
}

TEST_P(ContrattoIstruzioni, AgentByCode) {
  const auto statement = [](const std::string& ditta, const std::string& codice) {
    return " SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r FROM "
           "CG16_ANAGGEN \r"
           " INNER JOIN MG17_AGENTI  ON MG17_ANAGEN_CG16  = CG16_CODICE \r WHERE MG17_DITTA_CG18 = " +
           ditta + "\r AND MG17_AGENTE =  '" + codice + "'";
  };
  EXPECT_THAT(Righe(statement("1", "A01"), kIndirizzi),
              ::testing::ElementsAre(
                  "nordest@agenzie.example|nordest@pec.agenzie.example|Agenzia Nord Est|Nord|Est"));
  EXPECT_THAT(Righe(statement("2", "a01"), kIndirizzi),
              ::testing::ElementsAre("marche@agenzie.example|<null>|Agenzia Marche|<null>|Marche"))
      << "codes compare without case";
  EXPECT_THAT(Righe(statement("1", "A02"), kIndirizzi),
              ::testing::ElementsAre("<null>|<null>|Agenzia Isole|Isole|<null>"));
  EXPECT_THAT(Righe(statement("1", "A03"), kIndirizzi), ::testing::IsEmpty());
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("", "A01")); }).Numero(), 0);
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("1", "A'01")); }).Numero(), 0);
}

inline std::string Partner(const std::string& ditta, const std::string& tipo, const std::string& codice,
                           const std::string& data) {
  return " SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r FROM "
         "CG16_ANAGGEN \r"
         " WHERE CG16_CODICE = \r (SELECT dbo.FNCG_GETCODANAG(CG44_CLIFOR.CG44_DITTA_CG18, "
         "CG44_CLIFOR.CG44_TIPOCF, "
         "CG44_CLIFOR.CG44_CLIFOR, " +
         data + ") AS CODANAG \r FROM CG44_CLIFOR \r WHERE \r CG44_DITTA_CG18 = " + ditta +
         "\r AND CG44_TIPOCF = " + tipo + "\r AND CG44_CLIFOR = " + codice + ")";
}

TEST_P(ContrattoIstruzioni, CustomerOrSupplierAtADate) {
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
  EXPECT_THAT(Righe(Partner("1", "0", "1003", "'20260115'"), kIndirizzi),
              ::testing::ElementsAre(
                  "<null>|legnami@pec.legnami.example|Legnami, Travi e Coperture S.r.l.|<null>|<null>"));
}

TEST_P(ContrattoIstruzioni, APartnerThatCannotBeAskedForIsAnError) {
  for (const auto& statement : {
           Partner("", "0", "1001", "'20260115'"),
           Partner("1", "0", "", "'20260115'"),
           Partner("1", "0", "10'01", "'20260115'"),
           Partner("1", "0", "1001", ""),
           Partner("1", "0", "1001", "'20250230'"),
           Partner("1", "0", "1001", "'31/12/2025'"),
           Partner("1", "0", "1001", "''"),
       }) {
    EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement); }).Numero(), 0) << statement;
  }
}

TEST_P(ContrattoIstruzioni, ContactById) {
  const std::string prefisso =
      " SELECT CG16_RAGSOANAG, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC  FROM CO02_ANAGCONTATTO  INNER JOIN "
      "CO03_LEGCONTATTO ON CO03_ID_CO02 = CO02_ID  INNER JOIN CG16_ANAGGEN ON CG16_CODICE = CO03_CODICE_CG16 "
      " WHERE "
      "CO02_ID = ";
  const std::vector<std::string> colonne = {"CO02_COGNOMENOME", "CO02_EMAIL1", "CO02_PEC"};
  EXPECT_THAT(
      Righe(prefisso + "501", colonne),
      ::testing::ElementsAre(
          "Ufficio Acquisti|ufficio.acquisti@bellariva.example|ufficio.acquisti@pec.bellariva.example",
          "Ufficio Acquisti|ufficio.acquisti@bellariva.example|ufficio.acquisti@pec.bellariva.example"))
      << "one row for each of the two partners";
  EXPECT_THAT(Righe(prefisso + "502", colonne),
              ::testing::ElementsAre("Responsabile Qualità|<null>|qualita@pec.cittadoro.example"));
  EXPECT_THAT(Righe(prefisso + "503", colonne), ::testing::IsEmpty()) << "linked to nobody";
  EXPECT_THAT(Righe(prefisso + "504", {"CO02_EMAIL1"}), ::testing::ElementsAre(" "));
}

TEST_P(ContrattoIstruzioni, GoodsDestination) {
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
  EXPECT_THAT(Righe(statement("SEDE", "1", "0", "1001"), colonne),
              ::testing::ElementsAre(
                  "stabilimento@bellariva.example|045 000102|stabilimento@pec.bellariva.example|Bellariva, "
                  "Stabilimento Sud"));
  EXPECT_THAT(Righe(statement("sede", "1", "0", "1004"), colonne),
              ::testing::ElementsAre("<null>|<null>|<null>|Ferramenta del Borgo, Sede"));
  EXPECT_THAT(Righe(statement("MAG2", "1", "0", "1001"), colonne),
              ::testing::ElementsAre("  |<null>| |Bellariva, Magazzino 2"));
  EXPECT_THAT(Righe(statement("PEC", "1", "0", "1001"), {"MG22_DESTEMAIL", "MG22_DESTPEC"}),
              ::testing::ElementsAre("<null>|protocollo@pec.bellariva.example"));
  EXPECT_THAT(Righe(statement("A/B/3", "1", "0", "1001"), {"MG22_DESTEMAIL"}),
              ::testing::ElementsAre("corsia@bellariva.example"));
  EXPECT_THAT(Righe(statement("HUB", "1", "1", "2001"), {"MG22_DESTRAGSOC"}),
              ::testing::ElementsAre("Rapidi Adriatici, Piattaforma"));
  EXPECT_THAT(Righe(statement("HUB", "1", "0", "2001"), colonne), ::testing::IsEmpty());
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("L'AQUILA", "1", "0", "1001")); }).Numero(), 0);
}

TEST_P(ContrattoIstruzioni, PartnerOfAGoodsDestinationAtADate) {
  const auto statement = [](const std::string& ditta, const std::string& tipo, const std::string& partner,
                            const std::string& data) {
    return " select       CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC, CG16_RAGSOANAG, CG16_COGNOME, "
           "CG16_NOME   from "
           "CG16_ANAGGEN   where CG16_CODICE= (      select dbo.FNCG_GETCODANAG(" +
           ditta + "," + tipo + "," + partner + "," + data + ")  ) ";
  };
  const std::vector<std::string> colonne = {"CG16_FAXNUM", "CG16_INDEMAIL", "CG16_EMAIL_PEC",
                                            "CG16_RAGSOANAG"};
  EXPECT_THAT(Righe(statement("1", "0", "1001", "'20260115'"), colonne),
              ::testing::ElementsAre(
                  "045 000101|acquisti@bellariva.example|bellariva@pec.bellariva.example|Officine Bellariva "
                  "S.r.l."));
  EXPECT_THAT(Righe(statement("1", "0", "1006", "'20241231'"), {"CG16_RAGSOANAG"}),
              ::testing::ElementsAre("Molino Vecchio S.r.l."));
  EXPECT_THAT(Righe(statement("1", "0", "1006", "'20250101'"), {"CG16_RAGSOANAG"}),
              ::testing::ElementsAre("Molino Nuovo S.p.A."));
  EXPECT_THAT(Righe(statement("1", "0", "1999", "'20260115'"), colonne), ::testing::IsEmpty())
      << "the partner is gone";
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("1", "0", "", "'20260115'")); }).Numero(), 0);
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("1", "0", "'A'", "'20260115'")); }).Numero(), 0);
}

inline const std::vector<std::string> kAccount = {
    "FW23_SERVERNAME",  "FW23_PORT",     "FW23_TIMEOUT", "FW23_INDAUTH", "FW23_SSL",
    "FW98_MAILADDRESS", "FW98_USERNAME", "ALIAS",        "LETTURA",      "CONSEGNA"};

TEST_P(ContrattoIstruzioni, DefaultAccountOfAUser) {
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
  EXPECT_THAT(Righe(statement("1", 1), kAccount),
              ::testing::ElementsAre(
                  "smtp.arvenia.example|587|30|1|1|fatture@arvenia.example|fatture@arvenia.example|Ufficio "
                  "Fatture Arvenia|1|1"));
  EXPECT_THAT(Righe(statement("2", 1), {"FW98_MAILADDRESS", "FW98_PASSWORD", "LETTURA", "CONSEGNA"}),
              ::testing::ElementsAre("fatture@pec.arvenia.example|" + PasswordCifrata(4) + "|-1|-1"));
  EXPECT_THAT(Righe(statement("1", 2), kAccount), ::testing::IsEmpty())
      << "accounts, but none of them default";
  EXPECT_THAT(Righe(statement("1", 3), {"FW98_MAILADDRESS", "ALIAS", "LETTURA", "CONSEGNA"}),
              ::testing::ElementsAre("vendite@arvenia.example|<null>|<null>|<null>"));
  EXPECT_THAT(Righe(statement("2", 3), kAccount), ::testing::IsEmpty()) << "an ordinary default only";
  EXPECT_THAT(Righe(statement("1", 4), kAccount), ::testing::IsEmpty());
  EXPECT_THAT(Righe(statement("1", 6), {"FW23_SERVERNAME", "FW23_PORT", "FW98_MAILADDRESS", "FW98_PASSWORD"}),
              ::testing::ElementsAre("<null>|<null>|<null>|<null>"));
  EXPECT_THAT(Righe(statement("1", 0), kAccount), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, AccountOfACompany) {
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
              ::testing::ElementsAre(
                  "smtp.arvenia.example|587|30|1|1|info@arvenia.example|info@arvenia.example|Arvenia "
                  "Distribuzione S.p.A.|0|0"));
  EXPECT_THAT(Righe(statement(" FW9A_DITTA_CG18 = 1 AND ", "2"), {"FW23_SERVERNAME", "FW98_MAILADDRESS"}),
              ::testing::ElementsAre("pec.arvenia.example|arvenia@pec.arvenia.example"));
  EXPECT_THAT(
      Righe(statement(" FW9A_DITTA_CG18 = 2 AND ", "1"), kAccount),
      ::testing::ElementsAre(
          "smtp.collefiorito.example   |25|60|0|0|ordini@collefiorito.example|<null>|Società Agricola "
          "Colle Fiorito S.r.l.|1|<null>"));
  EXPECT_THAT(Righe(statement(" FW9A_DITTA_CG18 = 3 AND ", "1"), kAccount), ::testing::IsEmpty());
  EXPECT_THAT(
      Righe(statement("", "2"), {"FW98_MAILADDRESS"}),
      ::testing::UnorderedElementsAre("arvenia@pec.arvenia.example", "collefiorito@pec.collefiorito.example"))
      << "without a company, the accounts of all";
}

TEST_P(ContrattoIstruzioni, AccountById) {
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
  EXPECT_THAT(Righe(statement(5), kAccount),
              ::testing::ElementsAre(
                  "smtp.arvenia.example|587|30|1|1|magazzino@arvenia.example|magazzino@arvenia.example|"
                  "Magazzino Arvenia|-2|2"));
  EXPECT_THAT(Righe(statement(9), {"FW23_SERVERNAME", "FW23_PORT", "FW23_INDTIPO", "FW98_MAILADDRESS"}),
              ::testing::ElementsAre("<null>|<null>|<null>|senza.server@arvenia.example"))
      << "the outer join brings an account without a server";
  EXPECT_THAT(Righe(statement(0), kAccount), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, AccountsThatAUserMayChooseFrom) {
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
      ::testing::ElementsAre("1|fatture@arvenia.example|Ufficio Fatture Arvenia|" + PasswordCifrata(1),
                             "2|info@arvenia.example|<null>|" + PasswordCifrata(2)))
      << "the default account comes first";
  EXPECT_THAT(Righe(statement(1, "2"), {"FW98_IDACCOUNT"}), ::testing::ElementsAre("4"));
  EXPECT_THAT(Righe(statement(2, "1"), {"FW98_IDACCOUNT"}), ::testing::ElementsAre("5"));
  EXPECT_THAT(Righe(statement(4, "1"), {"FW98_IDACCOUNT"}), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, AccountsThatACompanyOffers) {
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
              ::testing::ElementsAre("2|Arvenia Distribuzione S.p.A."));
  EXPECT_THAT(Righe(statement("2", "2"), {"FW98_IDACCOUNT", "FW23_SSL", "FW23_TIMEOUT"}),
              ::testing::ElementsAre("8|2|<null>"));
  EXPECT_THAT(Righe(statement("9", "1"), {"FW98_IDACCOUNT"}), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, UserIdByCodes) {
  const auto statement = [](const std::string& gruppo, const std::string& utente) {
    return " SELECT FW07_ID  FROM FW07_APPUSER  WHERE FW07_CODICE_FW06 = '" + gruppo +
           "'      AND FW07_CODICE = '" + utente + "' ";
  };
  EXPECT_THAT(Righe(statement("AMM", "U01"), {"FW07_ID"}), ::testing::ElementsAre("1"));
  EXPECT_THAT(Righe(statement("VEN", "U01"), {"FW07_ID"}), ::testing::ElementsAre("6"))
      << "the same code in another group";
  EXPECT_THAT(Righe(statement("amm", "u02"), {"FW07_ID"}), ::testing::ElementsAre("2"));
  EXPECT_THAT(Righe(statement("AMM", "U99"), {"FW07_ID"}), ::testing::IsEmpty());
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("AMM", "D'ORO")); }).Numero(), 0);
}

TEST_P(ContrattoIstruzioni, UserNameAndDescription) {
  const std::string prefisso =
      "          SELECT  FW07_USERNAME,FW07_DESCR  FROM    FW07_APPUSER  WHERE   FW07_ID = ";
  EXPECT_THAT(Righe(prefisso + "1", {"FW07_USERNAME", "FW07_DESCR"}),
              ::testing::ElementsAre("fatturazione|Ufficio Fatturazione"));
  EXPECT_THAT(Righe(prefisso + "5", {"FW07_USERNAME", "FW07_DESCR"}),
              ::testing::ElementsAre("<null>|<null>"));
  EXPECT_THAT(Righe(prefisso + "0", {"FW07_USERNAME", "FW07_DESCR"}), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, PreferredGroup) {
  const std::string prefisso =
      "          SELECT  FW06_CODICE,FW06_DESCR \r\n FROM    FW07_APPUSER \r\n         INNER JOIN "
      "FW00_GRPUSRASSOC ON "
      "FW00_ID_FW07= FW07_APPUSER.FW07_ID AND FW00_FLGPREF = 1  \r\n         INNER JOIN FW06_GROUPUSR ON "
      "FW06_ID = "
      "FW00_GRPUSRASSOC.FW00_ID_FW06  \r\n WHERE   FW07_ID = ";
  EXPECT_THAT(Righe(prefisso + "1", {"FW06_CODICE", "FW06_DESCR"}),
              ::testing::ElementsAre("AMM|Amministrazione"));
  EXPECT_THAT(Righe(prefisso + "2", {"FW06_CODICE", "FW06_DESCR"}), ::testing::ElementsAre("MAG|<null>"));
  EXPECT_THAT(Righe(prefisso + "3", {"FW06_CODICE"}), ::testing::ElementsAre("AMM"))
      << "not the group of his own row";
  EXPECT_THAT(Righe(prefisso + "4", {"FW06_CODICE"}), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, CodesOfUserAndGroup) {
  EXPECT_THAT(Righe(" SELECT FW07_CODICE  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=3", {"FW07_CODICE"}),
              ::testing::ElementsAre("U03"));
  EXPECT_THAT(Righe(" SELECT FW07_CODICE_FW06  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=3",
                    {"FW07_CODICE_FW06"}),
              ::testing::ElementsAre("VEN"));
  EXPECT_THAT(
      Righe(" SELECT FW07_CODICE  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=99", {"FW07_CODICE"}),
      ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, CurrentCompany) {
  const std::string prefisso =
      " SELECT CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, CG16_INDEMAIL   FROM "
      "CG16_ANAGGEN  INNER "
      "JOIN CG18_ANADITTABASE ON CG16_CODICE = CG18_CODICE_CG16  WHERE CG18_DITTA = ";
  const std::vector<std::string> colonne = {"CG16_RAGSOANAG", "CG16_INDIRIZZO", "CG16_CAP",
                                            "CG16_CITTA",     "CG16_PROV",      "CG16_INDEMAIL"};
  EXPECT_THAT(
      Righe(prefisso + "1", colonne),
      ::testing::ElementsAre(
          "Arvenia Distribuzione S.p.A.|Via dell'Industria, 12|36100|Vicenza|VI|info@arvenia.example"));
  EXPECT_THAT(Righe(prefisso + "2", colonne),
              ::testing::ElementsAre(
                  "Società Agricola Colle Fiorito S.r.l.|Località Colle Fiorito|62010|Appignano|MC|<null>"));
  EXPECT_THAT(Righe(prefisso + "7", colonne), ::testing::IsEmpty());
}

TEST_P(ContrattoIstruzioni, HtmlSetting) {
  const std::string statement =
      " SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_MAIL_HTML' AND FW95_VALORE = 1 ";
  EXPECT_FALSE(Esegui(statement)->Eof());
  for (const char* spento : {"0", "2"}) {
    (void)Esegui("UPDATE FW95_SETTINGS SET FW95_VALORE = '" + std::string(spento) +
                 "' WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
    EXPECT_TRUE(Esegui(statement)->Eof()) << spento;
  }
  (void)Esegui("DELETE FROM FW95_SETTINGS WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
  EXPECT_TRUE(Esegui(statement)->Eof());
}

TEST_P(ContrattoIstruzioni, NameOfTheSignatureTable) {
  EXPECT_THAT(Righe(" SELECT FW95_VALORE FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_FIRME' ",
                    {"FW95_VALORE"}),
              ::testing::ElementsAre("AZ_FIRMEUTENTI"));
}

TEST_P(ContrattoIstruzioni, WhetherTheSignatureTableExists) {
  const auto statement = [](const std::string& tabella) {
    return "SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = '" + tabella + "'";
  };
  EXPECT_FALSE(Esegui(statement("AZ_FIRMEUTENTI"))->Eof());
  EXPECT_FALSE(Esegui(statement("az_firmeutenti"))->Eof());
  EXPECT_TRUE(Esegui(statement("AZ_FIRME"))->Eof());
  EXPECT_TRUE(Esegui(statement(""))->Eof());
  (void)Esegui("CREATE VIEW FIRME_VISTA AS SELECT 1 A");
  EXPECT_FALSE(Esegui(statement("FIRME_VISTA"))->Eof()) << "a view counts as a table";
}

TEST_P(ContrattoIstruzioni, Signature) {
  const auto statement = [](const std::string& tabella, int utente) {
    return " SELECT FIRMA_HTML, ISNULL(FONT,'') FONT, ISNULL(DIMENSIONE,0) DIMENSIONE \r\n FROM " + tabella +
           "\r\n WHERE IDUTENTE_FW07 = " + std::to_string(utente) + "\r\n";
  };
  const std::vector<std::string> colonne = {"FIRMA_HTML", "FONT", "DIMENSIONE"};
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 1), {"FONT", "DIMENSIONE"}),
              ::testing::ElementsAre("Verdana|2"));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 1), {"FIRMA_HTML"}),
              ::testing::ElementsAre(::testing::MatchesRegex("<p>.*Città.*</p>")));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 2), colonne),
              ::testing::ElementsAre("<p>Il magazzino di Arvenia</p>  ||0"));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 3), colonne),
              ::testing::ElementsAre("<p>Ufficio Vendite</p>|   |0"));
  EXPECT_THAT(Righe(statement("AZ_FIRMEUTENTI", 4), colonne), ::testing::IsEmpty());
  EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement("FW07_APPUSER", 1)); }).Numero(), 0)
      << "a table without the columns";
}

TEST_P(ContrattoIstruzioni, TheProcedureKeepsTheEventAsItCame) {
  (void)Esegui(
      "exec SPFW_AttivaEventoGestionale 1, 89, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/>"
      "<GRP_COD=AMM/><MAIL_DEST=Cliente Uno/><AZ_COD=1/><MAIL_OBJ=Fattura 12/>' , 1");
  EXPECT_THAT(Eventi(), ::testing::ElementsAre(
                            "1|89|7|<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>"
                            "<MAIL_DEST=Cliente Uno/><AZ_COD=1/><MAIL_OBJ=Fattura 12/>|1"));
}

TEST_P(ContrattoIstruzioni, ADoubledApostropheArrivesOnce) {
  (void)Esegui("exec SPFW_AttivaEventoGestionale 1, 89, 7, '<MAIL_OBJ=L''ordine dbo.x ISNULL(1)/>' , 1");
  EXPECT_THAT(Eventi(), ::testing::ElementsAre("1|89|7|<MAIL_OBJ=L'ordine dbo.x ISNULL(1)/>|1"));
}

TEST_P(ContrattoIstruzioni, AnEmptyPayloadIsKept) {
  (void)Esegui("exec SPFW_AttivaEventoGestionale 2, 5, 7, '' , 1");
  EXPECT_THAT(Eventi(), ::testing::ElementsAre("2|5|7||1"));
}

TEST_P(ContrattoIstruzioni, EachCallKeepsOneEventInOrder) {
  for (int i = 0; i < 20; ++i) {
    (void)Esegui("exec SPFW_AttivaEventoGestionale 1, 89, 7, 'n. " + std::to_string(i) + "' , 1");
  }
  const auto eventi = Eventi();
  ASSERT_EQ(eventi.size(), 20U);
  EXPECT_EQ(eventi.front(), "1|89|7|n. 0|1");
  EXPECT_EQ(eventi.back(), "1|89|7|n. 19|1");
}

TEST_P(ContrattoIstruzioni, ACallThatDoesNotFitIsAnErrorAndKeepsNothing) {
  for (const char* statement : {
           "exec SPFW_AttivaEventoGestionale , 89, 7, 'x' , 1",
           "exec SPFW_AttivaEventoGestionale 'A', 89, 7, 'x' , 1",
           "exec SPFW_AttivaEventoGestionale A, 89, 7, 'x' , 1",
           "exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x'",
           "exec SPFW_AttivaEventoGestionale 1, 89, 7, 'x' , 1, 2",
           "exec SPFW_AttivaEventoGestionale 1, 89, 7, '<MAIL_PATH=C:\\L'ordine.pdf/>' , 1",
           "exec SPFW_AttivaEvento 1, 89, 7, 'x' , 1",
       }) {
    EXPECT_NE(fakes::ErroreDi([&] { (void)Esegui(statement); }).Numero(), 0) << statement;
    EXPECT_THAT(Eventi(), ::testing::IsEmpty()) << statement;
  }
}

}  // namespace orve::contract
