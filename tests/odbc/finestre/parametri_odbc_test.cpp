// The parameters window on the application's database over ODBC: the accounts that it offers are the
// server's.
#include <QComboBox>
#include <QTest>
#include <string>

#include "adapters/odbc/dati_h2.h"
#include "finestre/prova_con_finestre.h"

namespace orve::app {

namespace {

using adapters::qt::Clicca;
using adapters::qt::Digita;
using adapters::qt::Trova;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kDatabase = "parametri";

class ParametriOdbc : public ProvaConFinestre {
 protected:
  void SulServer(const std::string& istruzione) const { adapters::odbc::Esegui(*proprietario, istruzione); }

  [[nodiscard]] Esecuzione Chiedi() const {
    Esecuzione esecuzione = EseguiQui({"parametri", "--db", "odbc:" + adapters::odbc::StringaPosta(kDatabase),
                                       "--chiave", Db() + ".chiave"});
    EXPECT_THAT(esecuzione.uscita + esecuzione.errori,
                Not(::testing::HasSubstr(adapters::odbc::kPasswordPosta)));
    return esecuzione;
  }

  static std::string Account(QWidget& finestra) {
    return Trova<QComboBox>(finestra, "CMB_ACCOUNT").currentText().toStdString();
  }

  std::shared_ptr<adapters::odbc::OdbcConnection> proprietario = adapters::odbc::ApriDatiH2(kDatabase);
};

}  // namespace

TEST_F(ParametriOdbc, TheAccountsAreTheServersAndTheAnswersArePrinted) {
  SulServer(
      "UPDATE FW98_MAILACCOUNT SET FW98_MAILADDRESS = 'dal.server@arvenia.example' WHERE FW98_IDACCOUNT = 1");
  NeiParametri([&](QWidget& finestra) {
    EXPECT_EQ(Account(finestra), "dal.server@arvenia.example - Mail") << "the user's default first";
    auto& tipo = Trova<QComboBox>(finestra, "CMB_TIPO");
    tipo.setFocus();
    QTest::keyClick(&tipo, Qt::Key_Down);
    EXPECT_EQ(Account(finestra), "fatture@pec.arvenia.example - Pec") << "the server is asked again";
    QTest::keyClick(&tipo, Qt::Key_Up);
    EXPECT_EQ(Account(finestra), "dal.server@arvenia.example - Mail");
    Digita(finestra, "TXT_CORPO", "Città d'Oro");
    Clicca(finestra, "CMD_OK");
  });
  const Esecuzione esecuzione = Chiedi();
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "confermato: sì\ntipo: mail\naccount: dal.server@arvenia.example\nlettura: no\nconsegna: no\n"
            "allegato: \ncorpo: Città d'Oro\n");
  EXPECT_EQ(esecuzione.errori, "");
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(ParametriOdbc, AServerThatCannotBeAskedOpensNoWindow) {
  const Esecuzione esecuzione =
      EseguiQui({"parametri", "--db", "odbc:" + adapters::odbc::StringaPosta(kDatabase, "pa-ro-la"),
                 "--chiave", Db() + ".chiave"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(esecuzione.errori, ::testing::StartsWith("orve-mail: Database non utilizzabile: "));
  EXPECT_THAT(esecuzione.uscita + esecuzione.errori, Not(::testing::HasSubstr("pa-ro-la")));
}

}  // namespace orve::app
