// The account that ends up in the fields of the service: the default of user or company, and the one with a
// given identifier. Statements, order, columns, the coded receipt requests, and that failures end silently.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "addressing/accounts.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using fakes::Con;
using fakes::Riga;
using fakes::Righe;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// What tells the statements apart.
constexpr const char* kDellUtente = "AND FW99_ISDEFAULT = 1";
constexpr const char* kDellAzienda = "INNER JOIN CG16_ANAGGEN";
constexpr const char* kDaId = "WHERE FW98_IDACCOUNT = ";
constexpr const char* kPersona = "LDAP://CN=Anna Rossi";

Riga RigaAccount() {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 587},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDTIPO", 1},
          {"FW23_INDAUTH", 2},
          {"FW23_SSL", 1},
          {"FW98_MAILADDRESS", "posta@azienda.example"},
          {"FW98_USERNAME", "utente"},
          {"FW98_PASSWORD", "{segretissima}"},
          {"ALIAS", "Ufficio Vendite"},
          {"LETTURA", 1},
          {"CONSEGNA", 1}};
}

class AccountDelServizio : public fakes::ServizioDiProva {
 protected:
  AccountDelServizio() {
    interno.contesto.IdUtenteCorrente = 42;
    interno.contesto.AziendaCorr = "Azienda S.p.A.";
    servizio->DittaCorrente = 3;
  }

  void ConPersonaInDirectory() {
    ambiente->utenteRete = "arossi";
    ambiente->directoryPresente = true;
    ambiente->trovatiInDirectory = {{{"adsPath", kPersona}}};
    ambiente->persone[kPersona] = {
        {"FirstName", "Anna"}, {"LastName", "Rossi"}, {"EmailAddress", "anna.rossi@azienda.example"}};
  }
  void Predefinito() {
    CaricaAccountPredefinito(interno.messaggio, interno.account, interno.contesto, interno.oggetti);
  }
  void DaId(std::int16_t id) {
    interno.account.IdMittenteDiretto = id;
    CaricaAccountDaId(interno.account, interno.contesto, interno.esito, interno.oggetti);
  }
  std::vector<std::string> Esecuzioni() const { return journal->Righe({"ConnectionADO.Execute"}); }
  /// Everything that an account may write, as one list of texts.
  std::vector<std::string> Campi() {
    return {interno.account.SmtpServer,
            std::to_string(interno.account.SmtpPorta),
            std::to_string(interno.account.SmtpTimeout),
            std::to_string(interno.account.SmtpAuth),
            servizio->vSenderAddress,
            interno.account.SmtpUtente,
            interno.account.SmtpPassword,
            std::to_string(interno.account.SmtpCrypt),
            servizio->vSenderName};
  }
  std::vector<bool> Desideri() const {
    return {servizio->vNotifyRead, servizio->ReadReceipt, servizio->vDisableNotifyRead,
            servizio->vNotifyDelivery, servizio->vDisableNotifyDelivery};
  }
  void EsprimiDesideri(bool valore) {
    servizio->vNotifyRead = servizio->ReadReceipt = servizio->vDisableNotifyRead = valore;
    servizio->vNotifyDelivery = servizio->vDisableNotifyDelivery = valore;
  }
};

const std::vector<std::string> kCampiPieni = {"smtp.azienda.example",  "587",    "60",           "2",
                                              "posta@azienda.example", "utente", "segretissima", "1",
                                              "Ufficio Vendite"};
const std::vector<std::string> kCampiVuoti = {"", "0", "0", "0", "", "", "", "0", ""};

// --- statements

struct CasoFiltro {
  const char* etichetta;
  bool pec;
  host::Variant ditta;
  std::string want_where;
};

class FiltroAccount : public AccountDelServizio, public ::testing::WithParamInterface<CasoFiltro> {};

TEST_P(FiltroAccount, StatementByUserThenByCompany) {
  servizio->IsPec(GetParam().pec);
  servizio->DittaCorrente = GetParam().ditta;
  Predefinito();
  const std::string tipo = GetParam().pec ? "2" : "1";
  EXPECT_THAT(
      Esecuzioni(),
      ElementsAre(
          "ConnectionADO.Execute -1 SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, "
          "FW23_INDAUTH, FW23_SSL, \r"
          " FW98_MAILADDRESS , FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS AS ALIAS, FW98_INDREADRCPT AS "
          "LETTURA, FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
          " FROM FW99_MAILUSERACCOUNT \r"
          " LEFT OUTER JOIN FW98_MAILACCOUNT ON FW99_IDACCOUNT_FW98 = FW98_IDACCOUNT \r"
          " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
          " WHERE FW23_INDTIPO = " +
              tipo +
              " \r"
              " AND FW99_ID_FW07 = 42\r"
              " AND FW99_ISDEFAULT = 1",
          "ConnectionADO.Execute -1  SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, "
          "FW23_INDAUTH, FW23_SSL, \r"
          " FW98_MAILADDRESS, FW98_USERNAME, FW98_PASSWORD, CG16_RAGSOANAG AS ALIAS, FW98_INDREADRCPT AS "
          "LETTURA, FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
          " FROM FW98_MAILACCOUNT \r"
          " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
          " LEFT OUTER JOIN FW9A_MAILAZIENDAACCOUNT ON FW98_IDACCOUNT = FW9A_IDACCOUNT_FW98 \r"
          " LEFT OUTER JOIN CG18_ANADITTABASE ON FW9A_DITTA_CG18 = CG18_DITTA \r"
          " INNER JOIN CG16_ANAGGEN ON CG18_CODICE_CG16 = CG16_CODICE \r"
          " WHERE " +
              GetParam().want_where));
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, FiltroAccount,
    ::testing::Values(CasoFiltro{"MailOfACompany", false, 3, " FW9A_DITTA_CG18 = 3 AND  FW23_INDTIPO = 1 \r"},
                      CasoFiltro{"PecOfACompany", true, 3, " FW9A_DITTA_CG18 = 3 AND  FW23_INDTIPO = 2 \r"},
                      CasoFiltro{"CompanyAsText", false, "12",
                                 " FW9A_DITTA_CG18 = 12 AND  FW23_INDTIPO = 1 \r"},
                      CasoFiltro{"NoCompany", false, host::Variant(), " FW23_INDTIPO = 1 \r"},
                      CasoFiltro{"NoCompanyPec", true, host::Variant(), " FW23_INDTIPO = 2 \r"},
                      CasoFiltro{"NullCompany", false, host::Null{}, " FW23_INDTIPO = 1 \r"},
                      CasoFiltro{"BlankCompany", false, "  ", " FW23_INDTIPO = 1 \r"},
                      CasoFiltro{"CompanyZeroAsText", false, "0", " FW23_INDTIPO = 1 \r"},
                      CasoFiltro{"CompanyZeroAsNumber", true, 0, " FW23_INDTIPO = 2 \r"}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(AccountDelServizio, TheStatementByIdentifierKnowsNoKindOfMail) {
  DaId(12);
  servizio->IsPec(true);
  DaId(-3);
  const std::string testa =
      "ConnectionADO.Execute -1 SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, "
      "FW23_SSL, \r"
      " FW98_MAILADDRESS , FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS AS ALIAS, FW98_INDREADRCPT AS LETTURA, "
      "FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
      " FROM FW98_MAILACCOUNT \r"
      " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
      " WHERE FW98_IDACCOUNT = ";
  EXPECT_THAT(Esecuzioni(), ElementsAre(testa + "12", testa + "-3"));
}

// --- order

TEST_F(AccountDelServizio, TheDirectoryIsAskedBeforeTheUserAndTheDatabase) {
  ConPersonaInDirectory();
  interno.contesto.IdUtenteCorrente = 0;
  interno.contesto.CodiceUtente = "ANNA";
  interno.contesto.CodiceGruppo = "VEN";
  connessione->Risponde("FW07_APPUSER", {{{"FW07_ID", 42}}});
  connessione->Risponde(kDellUtente, {RigaAccount()});
  Predefinito();
  std::vector<std::string> righe;
  for (const auto& riga : journal->Righe()) righe.push_back(riga.substr(0, 48));
  EXPECT_THAT(
      righe,
      ElementsAre("Rete.WNetGetUserA 100", "Directory.CreaConnessione", "Directory.CreaRecordSet",
                  "Directory.ApriOggetto LDAP://rootDSE", "Directory.Get defaultNamingContext",
                  "Directory.ApriOggetto LDAP://DC=azienda,DC=examp", "Directory.ADsPath",
                  "DirectoryConnection.Open Data Source=Active Dire",
                  "DirectoryConnection.Execute <LDAP://DC=azienda,D", "DirectoryRecordSet.Fields adsPath",
                  "Directory.ApriOggetto LDAP://CN=Anna Rossi", "Directory.Membro FirstName",
                  "Directory.Membro LastName", "Directory.Membro EmployeeID", "Directory.Membro Title",
                  "Directory.Membro Division", "Directory.Membro TelephoneNumber",
                  "Directory.Membro FaxNumber", "Directory.Membro EmailAddress", "DirectoryRecordSet.Close",
                  "DirectoryConnection.Close", "ConnectionADO.Execute 1  SELECT FW07_ID  FROM FW",
                  "RecordSet.Fields FW07_ID", "ConnectionADO.Execute -1 SELECT FW23_SERVERNAME,",
                  "RecordSet.MoveFirst", "RecordSet.Fields FW23_SERVERNAME", "RecordSet.Fields FW23_PORT",
                  "RecordSet.Fields FW23_TIMEOUT", "RecordSet.Fields FW23_INDAUTH",
                  "RecordSet.Fields FW98_MAILADDRESS", "RecordSet.Fields FW98_USERNAME",
                  "RecordSet.Fields FW98_PASSWORD", "Ambiente.CreaCifratorePassword",
                  "CifratorePassword.Decripta", "RecordSet.Fields FW23_SSL", "RecordSet.Fields ALIAS",
                  "RecordSet.Fields LETTURA", "RecordSet.Fields CONSEGNA", "RecordSet.Close"));
}

TEST_F(AccountDelServizio, AnEmptyResultByUserIsClosedBeforeTheCompanyIsAsked) {
  connessione->Risponde(kDellAzienda, {RigaAccount()});
  Predefinito();
  std::vector<std::string> righe;
  for (const auto& riga : journal->Righe({"ConnectionADO", "RecordSet.Close", "RecordSet.MoveFirst"})) {
    righe.push_back(riga.substr(0, 32));
  }
  EXPECT_THAT(righe,
              ElementsAre("ConnectionADO.Execute -1 SELECT ", "RecordSet.Close",
                          "ConnectionADO.Execute -1  SELECT", "RecordSet.MoveFirst", "RecordSet.Close"));
}

TEST_F(AccountDelServizio, ByIdentifierTheRowIsReadAndClosedAndNobodyElseIsAsked) {
  connessione->Risponde(kDaId, {RigaAccount()});
  DaId(12);
  EXPECT_EQ(journal->Righe().front().substr(0, 24), "ConnectionADO.Execute -1");
  EXPECT_EQ(journal->Righe().back(), "RecordSet.Close");
  EXPECT_EQ(journal->Conta("RecordSet.MoveFirst"), 1U);
  EXPECT_THAT(journal->Righe({"Rete.", "Directory"}), IsEmpty());
}

// --- what is read

TEST_F(AccountDelServizio, TheDefaultAccountOfTheUserFillsTheFields) {
  connessione->Risponde(kDellAzienda, {Con(RigaAccount(), "FW98_MAILADDRESS", "azienda@azienda.example")});
  connessione->Risponde(kDellUtente,
                        {RigaAccount(), Con(RigaAccount(), "FW98_MAILADDRESS", "seconda@b.example")});
  Predefinito();
  EXPECT_EQ(Campi(), kCampiPieni);
  EXPECT_EQ(Esecuzioni().size(), 1U);
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(AccountDelServizio, WithoutAUserAccountTheFirstOfTheCompanyFillsTheFields) {
  connessione->Risponde(kDellAzienda,
                        {RigaAccount(), Con(RigaAccount(), "FW98_MAILADDRESS", "seconda@b.example")});
  Predefinito();
  EXPECT_EQ(Campi(), kCampiPieni);
}

TEST_F(AccountDelServizio, ForPecAUserWhoseDefaultIsOrdinaryGetsThePecAccountOfTheCompany) {
  connessione->Risponde("FW23_INDTIPO = 1", {Con(RigaAccount(), "FW98_MAILADDRESS", "mail@azienda.example")});
  connessione->Risponde("FW9A_DITTA_CG18 = 3 AND  FW23_INDTIPO = 2",
                        {Con(RigaAccount(), "FW98_MAILADDRESS", "pec@azienda.example")});
  servizio->IsPec(true);
  Predefinito();
  EXPECT_EQ(servizio->vSenderAddress, "pec@azienda.example");
}

TEST_F(AccountDelServizio, NoAccountAtAllLeavesEverythingAsItWasAndSaysNothing) {
  ConPersonaInDirectory();
  servizio->vSenderAddress = "prima@azienda.example";
  servizio->vSenderName = "Prima";
  servizio->IsPec(true);
  Predefinito();
  EXPECT_EQ(interno.account.SmtpServer, "");
  EXPECT_EQ(servizio->vSenderAddress, "prima@azienda.example");
  EXPECT_EQ(servizio->vSenderName, "Prima");
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 2U);
  EXPECT_EQ(journal->Righe().back(), "RecordSet.Close");
}

TEST_F(AccountDelServizio, AnUnknownIdentifierSetsTheStateAndKeepsTheFields) {
  interno.account.SmtpServer = "prima.example";
  servizio->vSenderAddress = "prima@azienda.example";
  DaId(99);
  EXPECT_EQ(servizio->Stato(), kvParametriNonValidi);
  EXPECT_EQ(interno.account.SmtpServer, "prima.example");
  EXPECT_EQ(servizio->vSenderAddress, "prima@azienda.example");
  EXPECT_EQ(journal->Righe().back(), "RecordSet.Close");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(AccountDelServizio, AnIdentifierOverwritesALoadedAccountAndLeavesTheStateAlone) {
  interno.account.SmtpServer = "prima.example";
  interno.esito.StatoInvio = kvErroreInvioMail;
  connessione->Risponde(kDaId, {RigaAccount()});
  DaId(12);
  EXPECT_EQ(Campi(), kCampiPieni);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
}

TEST_F(AccountDelServizio, ASecondLoadOfTheDefaultAccountAsksNobodyAnything) {
  connessione->Risponde(kDellUtente, {RigaAccount()});
  Predefinito();
  journal->Svuota();
  servizio->IsPec(true);
  interno.contesto.IdUtenteCorrente = 7;
  Predefinito();
  EXPECT_THAT(journal->Righe(), IsEmpty());
  EXPECT_EQ(Campi(), kCampiPieni);
}

TEST_F(AccountDelServizio, AnEmptiedServerForcesANewLoad) {
  connessione->Risponde(kDellUtente, {RigaAccount()});
  Predefinito();
  interno.account.SmtpServer.clear();
  journal->Svuota();
  Predefinito();
  EXPECT_EQ(Esecuzioni().size(), 1U);
}

Riga ConTutto(const host::Variant& valore) {
  Riga riga;
  for (const auto& [colonna, pieno] : RigaAccount()) riga[colonna] = valore;
  return riga;
}

TEST_F(AccountDelServizio, NullsAndBlanksTakeTheDefaultsOfTheUsersRoute) {
  ConPersonaInDirectory();
  for (const auto& valore : {host::Variant(host::Null{}), host::Variant("   "), host::Variant()}) {
    interno.account.SmtpServer.clear();
    connessione->Risponde(kDellUtente, {ConTutto(valore)});
    Predefinito();
    EXPECT_THAT(Campi(), ElementsAre("localhost", "25", "0", "0", "anna.rossi@azienda.example", "", "", "0",
                                     "Anna Rossi"));
  }
}

TEST_F(AccountDelServizio, OnTheCompanysRouteTheDisplayNameComesFromTheCompany) {
  ConPersonaInDirectory();
  connessione->Risponde(kDellAzienda, {ConTutto(host::Null{})});
  Predefinito();
  EXPECT_THAT(Campi(), ElementsAre("localhost", "25", "0", "0", "anna.rossi@azienda.example", "", "", "0",
                                   "Azienda S.p.A."));
}

TEST_F(AccountDelServizio, ByIdentifierTheDirectoryGivesNothing) {
  ConPersonaInDirectory();
  connessione->Risponde(kDaId, {ConTutto(host::Null{})});
  servizio->vSenderAddress = servizio->vSenderName = "prima";
  interno.account.SmtpUtente = interno.account.SmtpPassword = "prima";
  DaId(1);
  EXPECT_THAT(Campi(), ElementsAre("localhost", "25", "0", "0", "", "", "", "0", "Azienda S.p.A."));
}

TEST_F(AccountDelServizio, AUserUnknownToTheDirectoryGetsAnEmptyDisplayName) {
  connessione->Risponde(kDellUtente, {Con(RigaAccount(), "ALIAS", host::Null{})});
  servizio->vSenderName = "Prima";
  Predefinito();
  EXPECT_EQ(servizio->vSenderName, "");
}

TEST_F(AccountDelServizio, ADirectoryThatKnowsOneNameOnlyKeepsTheBlankInFront) {
  ConPersonaInDirectory();
  connessione->Risponde(kDellUtente, {Con(RigaAccount(), "ALIAS", host::Null{})});
  ambiente->persone[kPersona].erase("FirstName");
  Predefinito();
  EXPECT_EQ(servizio->vSenderName, " Rossi");
  interno.account.SmtpServer.clear();
  ambiente->persone[kPersona] = {{"FirstName", "Anna"}};
  Predefinito();
  EXPECT_EQ(servizio->vSenderName, "Anna");
}

TEST_F(AccountDelServizio, TextsAreTrimmedAtTheEndOnlyAndThePasswordBeforeItIsDeciphered) {
  Riga riga = RigaAccount();
  riga["FW23_SERVERNAME"] = "  smtp.azienda.example  ";
  riga["FW98_MAILADDRESS"] = " posta@azienda.example ";
  riga["FW98_USERNAME"] = " utente ";
  riga["FW98_PASSWORD"] = "{ segretissima }   ";
  riga["ALIAS"] = " Ufficio Vendite   ";
  connessione->Risponde(kDaId, {riga});
  DaId(1);
  EXPECT_EQ(interno.account.SmtpServer, "  smtp.azienda.example");
  EXPECT_EQ(servizio->vSenderAddress, " posta@azienda.example");
  EXPECT_EQ(interno.account.SmtpUtente, " utente");
  EXPECT_EQ(interno.account.SmtpPassword, " segretissima ");
  EXPECT_EQ(servizio->vSenderName, " Ufficio Vendite");
}

// --- receipt requests

struct CasoDesiderio {
  const char* etichetta;
  host::Variant valore;
  bool want_letto;  // false: the fields stay
  bool want_voluto;
  bool want_fisso;
};

class DesiderioDellAccount : public AccountDelServizio, public ::testing::WithParamInterface<CasoDesiderio> {
 protected:
  std::vector<bool> Attesi(bool prima) const {
    const CasoDesiderio& caso = GetParam();
    const bool voluto = caso.want_letto ? caso.want_voluto : prima;
    const bool fisso = caso.want_letto ? caso.want_fisso : prima;
    return {voluto, voluto, fisso, voluto, fisso};
  }
};

TEST_P(DesiderioDellAccount, IsReadByAbsoluteValueAndSignOnEveryRoute) {
  const Riga riga = Con(Con(RigaAccount(), "LETTURA", GetParam().valore), "CONSEGNA", GetParam().valore);
  connessione->Risponde(kDellUtente, {riga});
  connessione->Risponde(kDaId, {riga});
  for (const bool prima : {false, true}) {
    EsprimiDesideri(prima);
    interno.account.SmtpServer.clear();
    Predefinito();
    EXPECT_EQ(Desideri(), Attesi(prima)) << "user, before " << prima;
    EsprimiDesideri(prima);
    DaId(1);
    EXPECT_EQ(Desideri(), Attesi(prima)) << "identifier, before " << prima;
  }
}

INSTANTIATE_TEST_SUITE_P(Tabella, DesiderioDellAccount,
                         ::testing::Values(CasoDesiderio{"One", 1, true, true, false},
                                           CasoDesiderio{"Zero", 0, true, false, false},
                                           CasoDesiderio{"Two", 2, true, false, false},
                                           CasoDesiderio{"Three", 3, true, false, false},
                                           CasoDesiderio{"Large", 2147483647, true, false, false},
                                           CasoDesiderio{"MinusOne", -1, true, true, true},
                                           CasoDesiderio{"MinusTwo", -2, true, false, true},
                                           CasoDesiderio{"MinusLarge", -2147483647, true, false, true},
                                           CasoDesiderio{"SixteenBits", std::int16_t{-1}, true, true, true},
                                           CasoDesiderio{"Decimal", 1.0, true, true, false},
                                           CasoDesiderio{"NumberAsText", "-1", true, true, true},
                                           CasoDesiderio{"Null", host::Null{}, false, false, false},
                                           CasoDesiderio{"Empty", host::Variant(), false, false, false},
                                           CasoDesiderio{"Blanks", "  ", false, false, false}),
                         [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(AccountDelServizio, TheTwoWishesAreIndependentAndOnlyTheReadingOneIsCopied) {
  connessione->Risponde(kDaId, {Con(Con(RigaAccount(), "LETTURA", 0), "CONSEGNA", -1)});
  servizio->ReadReceipt = true;
  DaId(1);
  EXPECT_THAT(Desideri(), ElementsAre(false, false, false, true, true));
  connessione->Risponde(kDaId, {Con(Con(RigaAccount(), "LETTURA", -1), "CONSEGNA", host::Null{})});
  DaId(1);
  EXPECT_THAT(Desideri(), ElementsAre(true, true, true, true, true));
}

// --- failures

struct CasoGuasto {
  const char* colonna;
  host::Variant valore;
  std::size_t want_pieni;  // how many fields of the row, in the order of reading, were filled
};

class AccountGuasto : public AccountDelServizio, public ::testing::WithParamInterface<CasoGuasto> {
 protected:
  std::vector<std::string> Attesi() const {
    std::vector<std::string> attesi = kCampiVuoti;
    for (std::size_t i = 0; i < GetParam().want_pieni; ++i) attesi[i] = kCampiPieni[i];
    return attesi;
  }
};

TEST_P(AccountGuasto, EndsInSilenceWithWhatWasReadBeforeAndLeavesTheResultOpen) {
  const Riga riga = Con(RigaAccount(), GetParam().colonna, GetParam().valore);
  connessione->Risponde(kDellUtente, {riga});
  Predefinito();
  EXPECT_EQ(Campi(), Attesi());
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_P(AccountGuasto, EndsTheSameWayByIdentifier) {
  connessione->Risponde(kDaId, {Con(RigaAccount(), GetParam().colonna, GetParam().valore)});
  DaId(1);
  EXPECT_EQ(Campi(), Attesi());
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(servizio->Stato(), kvOK);
}

const host::Variant kElenco = host::Variant::Array{1};

INSTANTIATE_TEST_SUITE_P(
    Colonne, AccountGuasto,
    ::testing::Values(CasoGuasto{"FW23_SERVERNAME", kElenco, 0}, CasoGuasto{"FW23_PORT", 70000, 1},
                      CasoGuasto{"FW23_PORT", "smtp", 1}, CasoGuasto{"FW23_TIMEOUT", 32768, 2},
                      CasoGuasto{"FW23_INDAUTH", -32769, 3}, CasoGuasto{"FW98_MAILADDRESS", kElenco, 4},
                      CasoGuasto{"FW98_USERNAME", kElenco, 5}, CasoGuasto{"FW98_PASSWORD", kElenco, 6},
                      CasoGuasto{"FW23_SSL", 1e9, 7}, CasoGuasto{"ALIAS", kElenco, 8},
                      CasoGuasto{"LETTURA", "forse", 9}, CasoGuasto{"CONSEGNA", "forse", 9}),
    [](const auto& caso) {
      return std::string(caso.param.colonna) +
             (caso.param.valore == host::Variant("smtp") ? "_no_number" : "");
    });

TEST_F(AccountDelServizio, APortBeyondItsFieldLeavesTheServerFilledAndSoTheAccountLoaded) {
  connessione->Risponde(kDellUtente, {Con(RigaAccount(), "FW23_PORT", 70000)});
  interno.account.SmtpPorta = 25;
  Predefinito();
  EXPECT_EQ(interno.account.SmtpServer, "smtp.azienda.example");
  EXPECT_EQ(interno.account.SmtpPorta, 25);
  journal->Svuota();
  Predefinito();
  EXPECT_THAT(journal->Righe(), IsEmpty());
}

TEST_F(AccountDelServizio, AWishThatIsNoNumberKeepsTheWishesButAGoodReadingWishBeforeABadDeliveryStays) {
  connessione->Risponde(kDaId, {Con(Con(RigaAccount(), "LETTURA", -1), "CONSEGNA", "forse")});
  DaId(1);
  EXPECT_THAT(Desideri(), ElementsAre(true, true, true, false, false));
}

TEST_F(AccountDelServizio, FailuresOfTheOutsideEndInSilence) {
  for (const auto* guasto :
       {"Rete.WNetGetUserA", "ConnectionADO.Execute", "RecordSet.Close", "RecordSet.MoveFirst"}) {
    journal->Fallisce(guasto);
    Predefinito();
    journal->DimenticaPiani();
    EXPECT_EQ(Campi(), kCampiVuoti) << guasto;
  }
  servizio->ConnectionADO.reset();
  Predefinito();
  DaId(1);
  EXPECT_EQ(Campi(), kCampiVuoti);
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(AccountDelServizio, AFailedDirectoryCostsTheAccountItsDefaultsOnly) {
  ConPersonaInDirectory();
  journal->Fallisce("DirectoryConnection.Open");
  connessione->Risponde(kDellUtente, {Con(RigaAccount(), "FW98_MAILADDRESS", host::Null{})});
  Predefinito();
  EXPECT_EQ(interno.account.SmtpServer, "smtp.azienda.example");
  EXPECT_EQ(servizio->vSenderAddress, "");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

// --- passwords

TEST_F(AccountDelServizio, APasswordIsDecipheredThroughAnObjectOfItsOwnForEachCall) {
  EXPECT_EQ(DecriptaPassword(interno.oggetti, "{parola}"), "parola");
  EXPECT_EQ(CriptaPassword(interno.oggetti, "parola"), "{parola}");
  EXPECT_THAT(journal->Righe(), ElementsAre("Ambiente.CreaCifratorePassword", "CifratorePassword.Decripta",
                                            "Ambiente.CreaCifratorePassword", "CifratorePassword.Cripta"));
}

TEST_F(AccountDelServizio, WithoutThePasswordClassTheInputComesBack) {
  journal->Fallisce("Ambiente.CreaCifratorePassword", host::Errore(host::kOggettoNonCreabile));
  EXPECT_EQ(DecriptaPassword(interno.oggetti, "{parola}"), "{parola}");
  EXPECT_EQ(CriptaPassword(interno.oggetti, "parola"), "parola");
}

TEST_F(AccountDelServizio, ATextThatCannotBeDecipheredComesBack) {
  EXPECT_EQ(DecriptaPassword(interno.oggetti, "in chiaro"), "in chiaro");
  EXPECT_EQ(DecriptaPassword(interno.oggetti, ""), "");
  journal->Fallisce("CifratorePassword.Cripta");
  EXPECT_EQ(CriptaPassword(interno.oggetti, "parola"), "parola");
  connessione->Risponde(kDaId, {Con(RigaAccount(), "FW98_PASSWORD", "in chiaro")});
  DaId(1);
  EXPECT_EQ(interno.account.SmtpPassword, "in chiaro");
}

TEST_F(AccountDelServizio, ThePasswordStandsInNoLineOfTheJournal) {
  connessione->Risponde(kDellUtente, {RigaAccount()});
  connessione->Risponde(kDaId, {Con(RigaAccount(), "FW23_SSL", 1e9)});
  Predefinito();
  DaId(1);
  EXPECT_EQ(interno.account.SmtpPassword, "segretissima");
  EXPECT_THAT(journal->Righe(), Not(Contains(HasSubstr("segretissima"))));
}

}  // namespace
}  // namespace orve
