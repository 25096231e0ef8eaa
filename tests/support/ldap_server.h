// A real directory on loopback (OpenLDAP's slapd), started by a test with a small company in it, and ended
// with the object.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/certificates.h"
#include "support/process.h"
#include "support/temp_dir.h"

namespace orve::support {

struct LdapServerOptions {
  /// For encryption; without it the server offers none.
  std::filesystem::path certificate;
  std::filesystem::path key;
  /// Whether the server names its tree under "defaultNamingContext", as an Active Directory does.
  bool namesItsTree = true;
  /// A second tree, without anything in it.
  bool twoTrees = false;
  /// Further entries, in LDIF.
  std::string entries;
  /// Further lines of configuration, before the trees.
  std::vector<std::string> configuration;
  /// Whether the server counts those who log in to it. Only for a few requests: it does not wait for anybody
  /// to read its report.
  bool countsBinds = false;
  /// Variables of the server's environment, as NAME=VALUE.
  std::vector<std::string> environment;
};

class LdapServer {
 public:
  static constexpr const char* kTree = "dc=azienda,dc=example";
  /// The user who may read everything; anonymous clients may read nothing.
  static constexpr const char* kReader = "cn=Lettore,dc=azienda,dc=example";
  static constexpr const char* kPassword = "segreta-del-lettore";

  explicit LdapServer(const LdapServerOptions& options = {});

  /// "ldap://127.0.0.1:PORT".
  [[nodiscard]] std::string Url() const { return "ldap://127.0.0.1:" + std::to_string(port_); }
  /// The same under the name "localhost".
  [[nodiscard]] std::string UrlByName() const { return "ldap://localhost:" + std::to_string(port_); }
  /// "ldaps://127.0.0.1:PORT"; only with a certificate.
  [[nodiscard]] std::string SecureUrl() const { return "ldaps://127.0.0.1:" + std::to_string(securePort_); }

  /// Ends the server now.
  void Stop() { process_->Stop(); }
  /// Ends the server and returns how often somebody logged in with a password; needs `countsBinds`.
  [[nodiscard]] int EndAndCountBinds();
  /// Freezes the server, with its connections open, or lets it continue.
  void Freeze(bool frozen) const;

 private:
  void Fill(const std::string& program, const std::string& file) const;
  bool Start(const std::string& program, const LdapServerOptions& options);

  TempDir directory_;
  std::unique_ptr<Process> process_;
  int port_ = 0;
  int securePort_ = 0;
};

}  // namespace orve::support
