// The accounts that a dialog offers: both statements, what goes into list and combo and in which order, and
// how a load ends that finds nothing or fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "addressing/accounts.h"
#include "fakes/headless.h"
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

constexpr const char* kElencoUtente = "INNER JOIN FW99_MAILUSERACCOUNT";
constexpr const char* kElencoAzienda = "LEFT OUTER JOIN CG16_ANAGGEN";

Riga RigaAccount(const host::Variant& id, const std::string& indirizzo) {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 587},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 2},
          {"FW23_SSL", 1},
          {"FW98_IDACCOUNT", id},
          {"FW98_MAILADDRESS", indirizzo},
          {"FW98_USERNAME", "utente"},
          {"FW98_PASSWORD", "{segretissima}"},
          {"ALIAS", "Ufficio Vendite"},
          {"LETTURA", -1},
          {"CONSEGNA", 2}};
}

class ElencoAccount : public fakes::ServizioDiProva {
 protected:
  ElencoAccount() {
    interno.contesto.IdUtenteCorrente = 42;
    servizio->DittaCorrente = 3;
    servizio->ModalitaInvio(kvAutomatico);  // messages do not depend on it
  }
  bool Carica() {
    return LoadAccountsPerUser(interno.messaggio, interno.account, interno.contesto, interno.oggetti, *form);
  }
  std::vector<std::string> Combo() const { return journal->Righe({"CMB_ACCOUNT"}); }
  /// The journal without columns and traces, each line cut short.
  std::vector<std::string> Passi() const {
    std::vector<std::string> passi;
    for (const auto& riga : journal->Righe({"ConnectionADO", "RecordSet.Close", "RecordSet.MoveNext",
                                            "CMB_ACCOUNT", "ObjMessaggi", "CifratorePassword"})) {
      passi.push_back(riga.substr(0, 33));
    }
    return passi;
  }

  std::shared_ptr<host::Form> form = fakes::CreaFakeForm(journal);
};

class StatementElenco : public ElencoAccount, public ::testing::WithParamInterface<bool> {};

TEST_P(StatementElenco, ByUserThenByCompany) {
  servizio->IsPec(GetParam());
  const std::string tipo = GetParam() ? "2" : "1";
  Carica();
  EXPECT_THAT(
      journal->Righe({"ConnectionADO"}),
      ElementsAre("ConnectionADO.Execute -1  SELECT FW23_SERVERNAME, \r"
                  " FW23_PORT, \r"
                  " FW23_TIMEOUT, \r"
                  " FW23_INDAUTH, \r"
                  " FW23_SSL, \r"
                  " FW98_IDACCOUNT, \r"
                  " FW98_MAILADDRESS, \r"
                  " FW98_USERNAME, \r"
                  " FW98_PASSWORD, \r"
                  " FW98_ALIAS AS ALIAS, \r"
                  " FW98_INDREADRCPT AS LETTURA, \r"
                  " FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
                  " FROM FW98_MAILACCOUNT\r"
                  " INNER JOIN FW99_MAILUSERACCOUNT ON FW98_IDACCOUNT = FW99_IDACCOUNT_FW98 \r"
                  " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
                  " WHERE FW99_ID_FW07 = 42\r"
                  " AND FW23_INDTIPO = " +
                      tipo + "  ORDER BY FW99_ISDEFAULT Desc",
                  "ConnectionADO.Execute -1  SELECT FW23_SERVERNAME, \r"
                  " FW23_PORT, \r"
                  " FW23_TIMEOUT, \r"
                  " FW23_INDAUTH, \r"
                  " FW23_SSL, \r"
                  " FW98_IDACCOUNT, \r"
                  " FW98_MAILADDRESS, \r"
                  " FW98_USERNAME, \r"
                  " FW98_PASSWORD, \r"
                  " CG16_RAGSOANAG AS ALIAS, \r"
                  " FW98_INDREADRCPT AS LETTURA, \r"
                  " FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
                  " FROM FW98_MAILACCOUNT \r"
                  " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
                  " LEFT OUTER JOIN FW9A_MAILAZIENDAACCOUNT ON FW98_IDACCOUNT = FW9A_IDACCOUNT_FW98 \r"
                  " LEFT OUTER JOIN CG18_ANADITTABASE ON FW9A_DITTA_CG18 = CG18_DITTA \r"
                  " LEFT OUTER JOIN CG16_ANAGGEN ON CG18_CODICE_CG16 = CG16_CODICE \r"
                  " WHERE FW9A_DITTA_CG18 = 3\r"
                  " AND FW23_INDTIPO = " +
                      tipo + " "));
}

INSTANTIATE_TEST_SUITE_P(MailAndPec, StatementElenco, ::testing::Bool(),
                         [](const auto& caso) { return caso.param ? "Pec" : "Mail"; });

TEST_F(ElencoAccount, TheCompanyIsPartOfTheFilterEvenWhenThereIsNone) {
  servizio->DittaCorrente = host::Variant();
  Carica();
  EXPECT_THAT(journal->Righe({"ConnectionADO"})[1],
              ::testing::EndsWith(" WHERE FW9A_DITTA_CG18 = \r AND FW23_INDTIPO = 1 "));
}

TEST_F(ElencoAccount, TheAccountsOfTheUserFillListAndComboAndTheFirstIsSelected) {
  connessione->Risponde(kElencoUtente,
                        {RigaAccount(12, "vendite@azienda.example"), RigaAccount(7, "b@azienda.example"),
                         RigaAccount(30, "c@azienda.example")});
  EXPECT_TRUE(Carica());
  EXPECT_THAT(
      Passi(),
      ElementsAre("ConnectionADO.Execute -1  SELECT ", "CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.AutoOpen false",
                  "CifratorePassword.Decripta", "CMB_ACCOUNT.AddItemData vendite@a", "RecordSet.MoveNext",
                  "CifratorePassword.Decripta", "CMB_ACCOUNT.AddItemData b@azienda", "RecordSet.MoveNext",
                  "CifratorePassword.Decripta", "CMB_ACCOUNT.AddItemData c@azienda", "RecordSet.MoveNext",
                  "CMB_ACCOUNT.Text 12", "RecordSet.Close"));
  EXPECT_THAT(Combo(),
              ElementsAre("CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.AutoOpen false",
                          "CMB_ACCOUNT.AddItemData vendite@azienda.example - Mail|12",
                          "CMB_ACCOUNT.AddItemData b@azienda.example - Mail|7",
                          "CMB_ACCOUNT.AddItemData c@azienda.example - Mail|30", "CMB_ACCOUNT.Text 12"));
  ASSERT_TRUE(servizio->vCollMittenti);
  EXPECT_EQ(servizio->vCollMittenti->Count(), 3);
  EXPECT_EQ(servizio->vCollMittenti->Item("7")->Indirizzo(), "b@azienda.example");
  EXPECT_EQ(servizio->vCollMittenti->Item(1), servizio->vCollMittenti->Item("12"));
}

TEST_F(ElencoAccount, EachColumnGoesIntoItsMember) {
  connessione->Risponde(kElencoUtente, {RigaAccount(12, "vendite@azienda.example")});
  Carica();
  const auto mittente = servizio->vCollMittenti->Item("12");
  EXPECT_EQ(mittente->Indirizzo(), "vendite@azienda.example");
  EXPECT_EQ(mittente->Server(), "smtp.azienda.example");
  EXPECT_EQ(mittente->Port(), 587);
  EXPECT_EQ(mittente->Timeout(), 60);
  EXPECT_EQ(mittente->user(), "utente");
  EXPECT_EQ(mittente->Password(), "segretissima");
  EXPECT_EQ(mittente->Auth(), 2);
  EXPECT_EQ(mittente->ReadRcpt(), -1);  // the number as it is
  EXPECT_EQ(mittente->DeliveryStatus(), 2);
  EXPECT_EQ(mittente->Descrizione(), "Ufficio Vendite");
  EXPECT_EQ(mittente->CryptType(), 1);
  EXPECT_FALSE(mittente->IsSsl());
}

TEST_F(ElencoAccount, TheColumnsAreReadInTheirOrderAndThePasswordDecipheredOnTheWay) {
  connessione->Risponde(kElencoUtente, {RigaAccount(12, "vendite@azienda.example")});
  Carica();
  EXPECT_THAT(journal->Righe({"RecordSet.Fields", "CifratorePassword", "CMB_ACCOUNT.Add"}),
              ElementsAre("RecordSet.Fields FW98_MAILADDRESS", "RecordSet.Fields FW98_IDACCOUNT",
                          "RecordSet.Fields FW23_SERVERNAME", "RecordSet.Fields FW23_PORT",
                          "RecordSet.Fields FW23_TIMEOUT", "RecordSet.Fields FW98_USERNAME",
                          "RecordSet.Fields FW98_PASSWORD", "CifratorePassword.Decripta",
                          "RecordSet.Fields FW23_INDAUTH", "RecordSet.Fields LETTURA",
                          "RecordSet.Fields CONSEGNA", "RecordSet.Fields ALIAS", "RecordSet.Fields FW23_SSL",
                          "CMB_ACCOUNT.AddItemData vendite@azienda.example - Mail|12"));
}

TEST_F(ElencoAccount, PecAccountsSayThatTheyArePec) {
  servizio->IsPec(true);
  connessione->Risponde(kElencoUtente, {RigaAccount(12, "pec@azienda.example")});
  EXPECT_TRUE(Carica());
  EXPECT_THAT(Combo(), Contains("CMB_ACCOUNT.AddItemData pec@azienda.example - Pec|12"));
}

TEST_F(ElencoAccount, WithoutAUserAccountTheEmptyResultIsClosedAndTheCompanyIsAsked) {
  connessione->Risponde(kElencoAzienda, {RigaAccount(5, "azienda@azienda.example")});
  EXPECT_TRUE(Carica());
  EXPECT_THAT(Passi(), ElementsAre("ConnectionADO.Execute -1  SELECT ", "CMB_ACCOUNT.EraseCombo",
                                   "CMB_ACCOUNT.AutoOpen false", "RecordSet.Close",
                                   "ConnectionADO.Execute -1  SELECT ", "CifratorePassword.Decripta",
                                   "CMB_ACCOUNT.AddItemData azienda@a", "RecordSet.MoveNext",
                                   "CMB_ACCOUNT.Text 5", "RecordSet.Close"));
}

TEST_F(ElencoAccount, ANonDefaultAccountOfTheUserIsListedThoughTheSingleSearchPassesItOver) {
  connessione->Risponde(kElencoUtente, {RigaAccount(7, "utente@azienda.example")});
  connessione->Risponde("INNER JOIN CG16_ANAGGEN", {RigaAccount(5, "azienda@azienda.example")});
  CaricaAccountPredefinito(interno.messaggio, interno.account, interno.contesto, interno.oggetti);
  EXPECT_EQ(servizio->vSenderAddress, "azienda@azienda.example");
  EXPECT_TRUE(Carica());
  EXPECT_EQ(servizio->vCollMittenti->Item(1)->Indirizzo(), "utente@azienda.example");
}

struct CasoVuoto {
  bool pec;
  const char* want_messaggio;
};

class ElencoVuoto : public ElencoAccount, public ::testing::WithParamInterface<CasoVuoto> {};

TEST_P(ElencoVuoto, SaysSoAndIsFalse) {
  servizio->IsPec(GetParam().pec);
  EXPECT_FALSE(Carica());
  EXPECT_THAT(Messaggi(), ElementsAre(GetParam().want_messaggio));
  EXPECT_THAT(Passi(), ElementsAre("ConnectionADO.Execute -1  SELECT ", "CMB_ACCOUNT.EraseCombo",
                                   "CMB_ACCOUNT.AutoOpen false", "RecordSet.Close",
                                   "ConnectionADO.Execute -1  SELECT ", "ObjMessaggi.MostraMsg Non è disp",
                                   "RecordSet.Close"));
  ASSERT_TRUE(servizio->vCollMittenti);
  EXPECT_EQ(servizio->vCollMittenti->Count(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    MailAndPec, ElencoVuoto,
    ::testing::Values(
        CasoVuoto{false, "ObjMessaggi.MostraMsg Non è disponibile alcun account mail|0||(assente)"},
        CasoVuoto{true, "ObjMessaggi.MostraMsg Non è disponibile alcun account pec|0||(assente)"}),
    [](const auto& caso) { return caso.param.pec ? "Pec" : "Mail"; });

TEST_F(ElencoAccount, AListFilledBeforehandIsKeptAndMakesTheResultTrue) {
  const auto gia = std::make_shared<CollMittenti>(ambiente);
  gia->AddMittente("gia@azienda.example", "s", 25, 0, "", "", 0, 0, 0, "", 0, "1");
  servizio->vCollMittenti = gia;
  EXPECT_TRUE(Carica());
  EXPECT_EQ(servizio->vCollMittenti, gia);
  EXPECT_EQ(Messaggi().size(), 1U);
  connessione->Risponde(kElencoUtente, {RigaAccount(2, "nuovo@azienda.example")});
  EXPECT_TRUE(Carica());
  EXPECT_EQ(gia->Count(), 2);
}

TEST_F(ElencoAccount, ASecondLoadIntoTheSameListEndsInTheFailureMessageAtTheFirstRow) {
  connessione->Risponde(kElencoUtente,
                        {RigaAccount(12, "a@azienda.example"), RigaAccount(7, "b@azienda.example")});
  EXPECT_TRUE(Carica());
  journal->Svuota();
  EXPECT_FALSE(Carica());
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 457-La chiave è già associata a un elemento "
                                      "dell'insieme in CLSFW_MAILSERVER: LoadAccountsPerUser|0||(assente)"));
  EXPECT_THAT(Combo(), ElementsAre("CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.AutoOpen false"));
  EXPECT_EQ(servizio->vCollMittenti->Count(), 2);
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
}

TEST_F(ElencoAccount, ColumnsThatMayBeEmptyAre) {
  for (const auto& valore : {host::Variant(host::Null{}), host::Variant("  ")}) {
    Riga riga = RigaAccount(12, "a@azienda.example");
    for (const auto* colonna : {"FW98_USERNAME", "FW98_PASSWORD", "ALIAS", "FW23_SSL"}) {
      riga[colonna] = valore;
    }
    connessione->Risponde(kElencoUtente, {riga});
    servizio->vCollMittenti.reset();
    EXPECT_TRUE(Carica());
    const auto mittente = servizio->vCollMittenti->Item(1);
    EXPECT_EQ(mittente->user() + mittente->Password() + mittente->Descrizione(), "") << fakes::Mostra(valore);
    EXPECT_EQ(mittente->CryptType(), 0) << fakes::Mostra(valore);
  }
}

TEST_F(ElencoAccount, NoTextIsTrimmed) {
  Riga riga = RigaAccount(12, " a@azienda.example ");
  riga["FW23_SERVERNAME"] = " smtp ";
  riga["FW98_USERNAME"] = " utente ";
  riga["ALIAS"] = " Nome ";
  connessione->Risponde(kElencoUtente, {riga});
  Carica();
  const auto mittente = servizio->vCollMittenti->Item(1);
  EXPECT_EQ(mittente->Indirizzo(), " a@azienda.example ");
  EXPECT_EQ(mittente->Server(), " smtp ");
  EXPECT_EQ(mittente->user(), " utente ");
  EXPECT_EQ(mittente->Descrizione(), " Nome ");
  EXPECT_THAT(Combo(), Contains("CMB_ACCOUNT.AddItemData  a@azienda.example  - Mail|12"));
}

struct CasoRigaGuasta {
  const char* colonna;
  host::Variant valore;
  const char* want_errore;
};

class RigaGuasta : public ElencoAccount, public ::testing::WithParamInterface<CasoRigaGuasta> {};

TEST_P(RigaGuasta, FailsTheLoadAndKeepsTheAccountsBefore) {
  connessione->Risponde(kElencoUtente,
                        {RigaAccount(1, "buono@azienda.example"),
                         Con(RigaAccount(2, "b@azienda.example"), GetParam().colonna, GetParam().valore)});
  EXPECT_FALSE(Carica());
  EXPECT_THAT(Messaggi(), ElementsAre(std::string("ObjMessaggi.MostraMsg ") + GetParam().want_errore +
                                      " in CLSFW_MAILSERVER: LoadAccountsPerUser|0||(assente)"));
  EXPECT_EQ(servizio->vCollMittenti->Count(), 1);
  EXPECT_THAT(Combo(), ElementsAre("CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.AutoOpen false",
                                   "CMB_ACCOUNT.AddItemData buono@azienda.example - Mail|1"));
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
  EXPECT_THAT(journal->Righe(), Not(Contains(HasSubstr("segretissima"))));
}

constexpr const char* kErroreNull = "94-Utilizzo non valido di Null";
constexpr const char* kErroreOverflow = "6-Overflow";

INSTANTIATE_TEST_SUITE_P(Colonne, RigaGuasta,
                         ::testing::Values(CasoRigaGuasta{"FW98_MAILADDRESS", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"FW98_IDACCOUNT", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"FW23_SERVERNAME", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"FW23_PORT", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"FW23_TIMEOUT", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"FW23_INDAUTH", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"LETTURA", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"CONSEGNA", host::Null{}, kErroreNull},
                                           CasoRigaGuasta{"FW23_PORT", 70000, kErroreOverflow},
                                           CasoRigaGuasta{"FW23_TIMEOUT", 32768, kErroreOverflow},
                                           CasoRigaGuasta{"FW23_SSL", 40000, kErroreOverflow},
                                           CasoRigaGuasta{"LETTURA", "forse", "13-Tipo non corrispondente"}),
                         [](const auto& caso) {
                           return std::string(caso.param.colonna) +
                                  (caso.param.want_errore == kErroreNull ? "_null" : "_no_fit");
                         });

TEST_F(ElencoAccount, AnIdentifierBeyondTheCombosNumbersFailsAfterTheList) {
  connessione->Risponde(kElencoUtente, {RigaAccount(40000, "a@azienda.example")});
  EXPECT_FALSE(Carica());
  EXPECT_THAT(Messaggi(), ElementsAre(HasSubstr("MostraMsg 6-Overflow in CLSFW_MAILSERVER")));
  EXPECT_EQ(servizio->vCollMittenti->Item("40000")->Indirizzo(), "a@azienda.example");
  EXPECT_THAT(Combo(), ElementsAre("CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.AutoOpen false"));
}

TEST_F(ElencoAccount, WithoutAConnectionTheFailureIsShownAndTheListStands) {
  servizio->ConnectionADO.reset();
  EXPECT_FALSE(Carica());
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 91-Variabile oggetto non impostata in "
                                      "CLSFW_MAILSERVER: LoadAccountsPerUser|0||(assente)"));
  EXPECT_TRUE(servizio->vCollMittenti);
  EXPECT_THAT(Combo(), IsEmpty());
}

TEST_F(ElencoAccount, AFailedStatementLeavesTheComboAlone) {
  journal->Fallisce("ConnectionADO.Execute", {-2147467259, "Motore", "timeout"});
  EXPECT_FALSE(Carica());
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg -2147467259-timeout in CLSFW_MAILSERVER: "
                                      "LoadAccountsPerUser|0||(assente)"));
  EXPECT_THAT(Combo(), IsEmpty());
}

// A form whose CMB_ACCOUNT is not a combo, or that has none.
std::shared_ptr<host::Form> FormSenzaCombo(const fakes::JournalPtr& journal, bool altroControllo) {
  static constexpr host::LayoutControllo kCornice[] = {
      {.nome = "CMB_ACCOUNT", .tipo = host::TipoControllo::kFrame}};
  host::LayoutForm layout{.nome = "Form"};
  if (altroControllo) layout.controlli = kCornice;
  return std::make_shared<fakes::HeadlessForm>(journal, layout, nullptr);
}

TEST_F(ElencoAccount, AFormWithoutTheComboFailsClearly) {
  connessione->Risponde(kElencoUtente, {RigaAccount(12, "a@azienda.example")});
  for (const bool altroControllo : {false, true}) {
    form = FormSenzaCombo(journal, altroControllo);
    journal->Svuota();
    EXPECT_FALSE(Carica());
    EXPECT_THAT(Messaggi(), ElementsAre(HasSubstr("438-Proprietà o metodo non supportati dall'oggetto in "
                                                  "CLSFW_MAILSERVER: LoadAccountsPerUser")));
  }
}

TEST_F(ElencoAccount, TheUsersIdIsLookedUpWhenItIsNotKnown) {
  interno.contesto.IdUtenteCorrente = 0;
  interno.contesto.CodiceUtente = "ANNA";
  interno.contesto.CodiceGruppo = "VEN";
  connessione->Risponde("FW07_APPUSER", {{{"FW07_ID", 77}}});
  Carica();
  EXPECT_THAT(journal->Righe({"ConnectionADO"})[1], HasSubstr(" WHERE FW99_ID_FW07 = 77\r"));
}

}  // namespace
}  // namespace orve
