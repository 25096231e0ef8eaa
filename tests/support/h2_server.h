// An engine that is not ours and takes SQL Server's dialect: H2 behind PostgreSQL's protocol, started by a
// test and ended with the object.
#pragma once

#include <memory>
#include <string>

#include "support/process.h"
#include "support/temp_dir.h"

namespace orve::support {

class H2Server {
 public:
  H2Server();

  /// An ODBC connection string for a database of that name in memory and in SQL Server's mode, created on
  /// first use and gone with its last connection.
  [[nodiscard]] std::string ConnectionString(const std::string& database, const std::string& user = "sa",
                                             const std::string& password = "sa") const;
  /// The same through a relay on that port.
  [[nodiscard]] static std::string ConnectionStringBy(int port, const std::string& database,
                                                      const std::string& user = "sa",
                                                      const std::string& password = "sa");
  [[nodiscard]] int Port() const { return port_; }

 private:
  TempDir directory_;
  std::unique_ptr<Process> process_;
  int port_ = 0;
};

}  // namespace orve::support
