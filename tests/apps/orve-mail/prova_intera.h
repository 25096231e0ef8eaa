// The fixture of whole sends: the program itself, a database of its own, and real servers with TLS and
// authentication on loopback.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "sqlite/sqlite_connection.h"
#include "support/certificates.h"
#include "support/received_message.h"
#include "support/smtp_server.h"
#include "support/temp_dir.h"

namespace orve::app {

/// The result of one run of the program.
struct Esecuzione {
  int stato = -1;
  std::string uscita;  // standard output
  std::string errori;  // standard error
};
std::ostream& operator<<(std::ostream& out, const Esecuzione& esecuzione);

class ProvaIntera : public ::testing::Test {
 protected:
  using Righe = std::vector<std::vector<std::string>>;

  /// Creates the database with its sample data.
  ProvaIntera();

  /// Every object that the library made in the runs of the test must have been released.
  void TearDown() override;

  /// Runs the program. $TMPDIR is the test's own folder, ORVE_MAIL_DB its database; the instance trace goes
  /// to TracciaIstanze().
  Esecuzione Esegui(const std::vector<std::string>& argomenti, const std::string& ingresso = "") const;
  /// The same with these variables in the environment, each NAME=VALUE.
  Esecuzione EseguiConAmbiente(const std::vector<std::string>& variabili,
                               const std::vector<std::string>& argomenti,
                               const std::string& ingresso = "") const;
  /// The variables that load a module of tests/preload into the program.
  static std::vector<std::string> Precarica(const std::string& modulo);
  /// The same as a user whom permissions stop. When the tests run as root, the test's folder is given to such
  /// a user first.
  Esecuzione EseguiDaUtenteOrdinario(const std::vector<std::string>& argomenti) const;
  /// `invia` with the test's authority and these options.
  Esecuzione Invia(std::vector<std::string> argomenti) const;

  /// Starts a server for the ordinary (1) or certified (2) accounts of company 1 and tells the database.
  support::SmtpServer& AvviaServer(int idServer, support::SmtpServerOptions opzioni);
  /// The server of user 1's default account, with encryption and login, and `rifiutati` refused.
  support::SmtpServer& AvviaServerOrdinario(const std::vector<std::string>& rifiutati = {});
  /// Points server 1 at a port on loopback, plain and without login.
  void ImpostaServerSemplice(int porta) const;

  /// Runs a statement, in SQLite's own dialect, in the test's database; returns the columns C1, C2, ... of
  /// its rows as texts.
  Righe Sql(const std::string& istruzione) const;
  /// ESITOINVIO, NOME, INDIRIZZO, RISULTATO of the register.
  Righe Registro() const;
  /// CODICE of the events.
  std::vector<std::string> CodiciEventi() const;

  [[nodiscard]] std::string File(const std::string& nome) const { return (cartella.Path() / nome).string(); }
  [[nodiscard]] std::string TracciaIstanze() const { return File("istanze.txt"); }
  [[nodiscard]] std::string Db() const { return File("prova.db"); }
  [[nodiscard]] static std::string Ca();
  /// A path as the library writes it.
  static std::string Rovesciato(std::string percorso);

  support::TempDir cartella;

 private:
  [[nodiscard]] std::vector<std::string> Ambiente() const;
  Esecuzione EseguiComando(const std::vector<std::string>& comando, const std::string& ingresso) const;
  std::vector<std::unique_ptr<support::SmtpServer>> server_;
};

}  // namespace orve::app
