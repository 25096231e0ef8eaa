#include "orve-mail/host/password_in_chiaro.h"

#include "password/sigillo_password.h"

namespace orve::app {

namespace {

// A table that is created with the first permission: older databases have none.
bool NessunPermesso(adapters::sqlite::SqliteConnection& archivio) {
  return archivio
      .EseguiConValori("SELECT 1 AS C FROM sqlite_master WHERE type = 'table' AND name = 'SERVER_IN_CHIARO'",
                       {})
      ->Eof();
}

}  // namespace

// A row that is not a name and a port permits nothing, and stops nothing either.
PermessiInChiaro::PermessiInChiaro(const Archivio& archivio, bool ovunque) : ovunque_(ovunque) {
  if (!archivio.incorporato || NessunPermesso(*archivio.incorporato)) return;
  const auto righe = archivio.incorporato->EseguiConValori(
      "SELECT SERVER, PORTA FROM SERVER_IN_CHIARO WHERE typeof(SERVER) = 'text' AND typeof(PORTA) = 'integer'"
      " AND PORTA BETWEEN 1 AND 65535",
      {});
  for (; !righe->Eof(); righe->MoveNext()) {
    server_.emplace(host::Leggi(*righe, "SERVER").ToText(),
                    static_cast<std::uint16_t>(host::Leggi(*righe, "PORTA").ToInt32()));
  }
}

bool PermessiInChiaro::Per(const std::string& server, std::uint16_t porta) const {
  return ovunque_ || server_.contains({adapters::password::NomeServer(server), porta});
}

void PermettiInChiaro(adapters::sqlite::SqliteConnection& archivio, const std::string& server,
                      std::uint16_t porta) {
  static_cast<void>(archivio.EseguiConValori(
      "CREATE TABLE IF NOT EXISTS SERVER_IN_CHIARO (SERVER TEXT NOT NULL, PORTA INTEGER NOT NULL,"
      " PRIMARY KEY (SERVER, PORTA))",
      {}));
  static_cast<void>(
      archivio.EseguiConValori("INSERT OR IGNORE INTO SERVER_IN_CHIARO (SERVER, PORTA) VALUES (?1, ?2)",
                               {adapters::password::NomeServer(server), std::int64_t{porta}}));
}

// Empty columns stand for the values that the library uses, and a port's 16 bits are stored with a sign.
void RitiraPermessiSuperflui(adapters::sqlite::SqliteConnection& archivio) {
  if (NessunPermesso(archivio)) return;
  static_cast<void>(
      archivio.EseguiConValori("DELETE FROM SERVER_IN_CHIARO WHERE NOT EXISTS (SELECT 1 FROM FW23_FAXER"
                               " WHERE IFNULL(NULLIF(LOWER(TRIM(FW23_SERVERNAME)), ''), 'localhost') = SERVER"
                               " AND IFNULL(FW23_PORT, 25) & 65535 = PORTA"
                               " AND IFNULL(FW23_SSL, 0) < 1 AND IFNULL(FW23_INDAUTH, 0) <> 0)",
                               {}));
}

}  // namespace orve::app
