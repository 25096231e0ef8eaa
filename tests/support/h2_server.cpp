#include "support/h2_server.h"

#include "places.h"

namespace orve::support {

H2Server::H2Server()
    : process_(std::make_unique<Process>(
          std::vector<std::string>{"/usr/bin/python3", places::Source("tests/support/h2_server.py"),
                                   "--directory=" + directory_.Path().string()})) {
  port_ = std::stoi(process_->WaitForLine("READY ").substr(6));
}

std::string H2Server::ConnectionString(const std::string& database, const std::string& user,
                                       const std::string& password) const {
  return ConnectionStringBy(port_, database, user, password);
}

std::string H2Server::ConnectionStringBy(int port, const std::string& database, const std::string& user,
                                         const std::string& password) {
  return "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + std::to_string(port) +
         ";Database=mem:" + database + ";UID=" + user + ";PWD=" + password;
}

}  // namespace orve::support
