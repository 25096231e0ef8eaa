// Which servers may get user and password over a connection that is not encrypted. None may unless a person
// has said so for that server.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>

#include "orve-mail/host/archivio.h"

namespace orve::app {

class PermessiInChiaro {
 public:
  /// None.
  PermessiInChiaro() = default;
  /// The permissions kept in the embedded database, none for a database over ODBC; `ovunque`: every server.
  /// Raises host::Errore.
  PermessiInChiaro(const Archivio& archivio, bool ovunque);

  [[nodiscard]] bool Per(const std::string& server, std::uint16_t porta) const;

 private:
  bool ovunque_ = false;
  std::set<std::pair<std::string, std::uint16_t>> server_;
};

/// Keeps the permission for a server, by its name and port: it does not move along when the server is pointed
/// elsewhere. Raises host::Errore.
void PermettiInChiaro(adapters::sqlite::SqliteConnection& archivio, const std::string& server,
                      std::uint16_t porta);

/// Withdraws the permissions for places where no server of the database uses a login without TLS. Raises
/// host::Errore.
void RitiraPermessiSuperflui(adapters::sqlite::SqliteConnection& archivio);

}  // namespace orve::app
