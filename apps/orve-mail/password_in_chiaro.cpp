#include "orve-mail/password_in_chiaro.h"

#include "orve-mail/sigillo_password.h"

namespace orve::app {

PermessiInChiaro::PermessiInChiaro(const Archivio& archivio, bool ovunque) : ovunque_(ovunque) {
  if (!archivio.incorporato) return;
  const auto tabella = archivio.incorporato->EseguiConValori(
      "SELECT 1 AS C FROM sqlite_master WHERE type = 'table' AND name = 'SERVER_IN_CHIARO'", {});
  if (tabella->Eof()) return;
  const auto righe = archivio.incorporato->EseguiConValori("SELECT SERVER, PORTA FROM SERVER_IN_CHIARO", {});
  for (; !righe->Eof(); righe->MoveNext()) {
    server_.emplace(host::Leggi(*righe, "SERVER").ToText(),
                    static_cast<std::uint16_t>(host::Leggi(*righe, "PORTA").ToInt32()));
  }
}

bool PermessiInChiaro::Per(const std::string& server, std::uint16_t porta) const {
  return ovunque_ || server_.contains({NomeServer(server), porta});
}

// A table that comes with the first permission: databases from before have none.
void PermettiInChiaro(adapters::sqlite::SqliteConnection& archivio, const std::string& server,
                      std::uint16_t porta, bool permesso) {
  static_cast<void>(archivio.EseguiConValori(
      "CREATE TABLE IF NOT EXISTS SERVER_IN_CHIARO (SERVER TEXT NOT NULL, PORTA INTEGER NOT NULL,"
      " PRIMARY KEY (SERVER, PORTA))",
      {}));
  static_cast<void>(archivio.EseguiConValori(
      permesso ? "INSERT OR IGNORE INTO SERVER_IN_CHIARO (SERVER, PORTA) VALUES (?1, ?2)"
               : "DELETE FROM SERVER_IN_CHIARO WHERE SERVER = ?1 AND PORTA = ?2",
      {NomeServer(server), std::int64_t{porta}}));
}

}  // namespace orve::app
