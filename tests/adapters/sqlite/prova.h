// What the tests of the embedded database share: a folder of their own with the sample database in it, and
// rows as text.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "adapters/posix/prova.h"
#include "fakes/errori.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_connection.h"

namespace orve::adapters::sqlite {

using posix::CartellaDiProva;

/// A cipher that a test can undo in its head.
inline std::string CifraDiProva(const PasswordToEncipher& password) {
  return {password.chiara.rbegin(), password.chiara.rend()};
}

using fakes::ErroreDi;

/// One line per row: the named columns joined by "|", null as "<null>".
inline std::vector<std::string> Testi(host::RecordSet& righe, const std::vector<std::string>& colonne) {
  std::vector<std::string> testi;
  for (; !righe.Eof(); righe.MoveNext()) {
    std::string riga;
    for (const auto& colonna : colonne) {
      const auto valore = host::Leggi(righe, colonna);
      if (!riga.empty() || &colonna != &colonne.front()) riga += '|';
      riga += valore.IsNull() ? "<null>" : valore.ToText();
    }
    testi.push_back(riga);
  }
  return testi;
}

/// The sample database in a folder that goes with the test.
class ConDatiDiProva : public ::testing::Test {
 protected:
  void SetUp() override {
    CreaDatabase(percorso, CifraDiProva);
    connessione = SqliteConnection::Apri(percorso);
  }

  [[nodiscard]] std::shared_ptr<host::RecordSet> Esegui(const std::string& statement,
                                                        std::int32_t opzione = host::kComandoTesto) const {
    return connessione->Execute(statement, opzione);
  }

  [[nodiscard]] std::vector<std::string> Righe(const std::string& statement,
                                               const std::vector<std::string>& colonne) const {
    return Testi(*Esegui(statement), colonne);
  }

  CartellaDiProva cartella;
  std::string percorso = cartella / "prova.db";
  std::shared_ptr<SqliteConnection> connessione;
};

}  // namespace orve::adapters::sqlite
