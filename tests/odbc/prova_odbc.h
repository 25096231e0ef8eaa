// The fixture of whole sends over ODBC: the program itself on the application's database on H2, with a login
// of few rights, and real mail servers.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/odbc/dati_h2.h"
#include "apps/orve-mail/prova_intera.h"

namespace orve::app {

class ProvaOdbc : public ProvaIntera {
 protected:
  static constexpr const char* kDatabase = "programma";

  /// Copies the enciphered passwords from the embedded database, whose key serves both.
  ProvaOdbc() {
    for (const auto& riga : Sql("SELECT FW98_IDACCOUNT AS C1, FW98_PASSWORD AS C2 FROM FW98_MAILACCOUNT"
                                " WHERE FW98_USERNAME IS NOT NULL")) {
      SulServer("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '" + riga.at(1) +
                "' WHERE FW98_IDACCOUNT = " + riga.at(0));
    }
    SulServer("DELETE FROM EVENTI_GESTIONALI");
  }

  void SulServer(const std::string& istruzione) const { adapters::odbc::Esegui(*proprietario, istruzione); }

  /// The texts of a column on the server.
  [[nodiscard]] std::vector<std::string> Colonna(const std::string& istruzione,
                                                 const std::string& nome) const {
    std::vector<std::string> testi;
    for (const auto righe = proprietario->Execute(istruzione, host::kComandoTesto); !righe->Eof();
         righe->MoveNext()) {
      testi.push_back(host::Leggi(*righe, nome).Joined());
    }
    return testi;
  }

  /// Starts the server of user 1's default account and tells the database on the server.
  support::SmtpServer& AvviaServerDiPosta() {
    auto& server = AvviaServerOrdinario();
    SulServer("UPDATE FW23_FAXER SET FW23_SERVERNAME = 'localhost', FW23_PORT = " +
              std::to_string(server.Port16()) + ", FW23_SSL = 1, FW23_INDAUTH = 1 WHERE FW23_IDSERVER = 1");
    // Sealed next to the key, for the server that they are for; somebody who may write the company's database
    // puts them there.
    for (const auto& riga : Sql("SELECT FW98_IDACCOUNT AS C1, FW98_PASSWORD AS C2 FROM FW98_MAILACCOUNT"
                                " WHERE FW98_PASSWORD IS NOT NULL")) {
      SulServer("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '" + riga[1] +
                "' WHERE FW98_IDACCOUNT = " + riga[0]);
    }
    return server;
  }

  [[nodiscard]] static std::string Odbc() { return "odbc:" + adapters::odbc::StringaPosta(kDatabase); }
  [[nodiscard]] std::string Chiave() const { return Db() + ".chiave"; }

  /// Runs a command on the database over ODBC.
  [[nodiscard]] Esecuzione EseguiSuOdbc(std::vector<std::string> argomenti,
                                        const std::string& db = Odbc()) const {
    argomenti.insert(argomenti.end(), {"--db", db, "--chiave", Chiave()});
    return Esegui(argomenti);
  }

  std::shared_ptr<adapters::odbc::OdbcConnection> proprietario = adapters::odbc::ApriDatiH2(kDatabase);
};

}  // namespace orve::app
