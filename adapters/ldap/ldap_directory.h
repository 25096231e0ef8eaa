// The company's directory, asked over LDAP.
#pragma once

#include <memory>
#include <string>

#include "orve-mailserver/host/directory.h"
#include "orve-mailserver/ldap/ldap_options.h"

namespace orve::adapters::ldap {

// NOLINTNEXTLINE(bugprone-forward-declaration-namespace): the SMTP adapter has a session of its own
class Session;

class LdapDirectory : public host::Directory {
 public:
  /// Nothing is connected yet. Raises 5 when the options make no sense (session.h, CheckOptions).
  explicit LdapDirectory(LdapOptions options);

  /// Closed; `Open` connects, whatever source it is given, since the server comes from the options.
  [[nodiscard]] std::shared_ptr<host::DirectoryConnection> CreaConnessione() override;
  [[nodiscard]] std::shared_ptr<host::RecordSet> CreaRecordSet() override;
  /// Connects unless something that was handed out still holds a connection. All objects and queries of one
  /// look-up share one connection, which ends with the last of them unless the options keep it; one that has
  /// been lost meanwhile is replaced. Raises LdapFailure, LeftAlone during the pause after one, and 5 for a
  /// path that does not begin with "LDAP://".
  [[nodiscard]] std::shared_ptr<host::DirectoryObject> ApriOggetto(const std::string& percorso) override;

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace orve::adapters::ldap
