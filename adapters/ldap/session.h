// A connection to the directory's server: opened, protected, made known to the server, and asked.
//
// Every wait is bounded: on a server that says nothing, that stops in the middle of an answer, and that
// answers a byte at a time. The server's name must stand in its certificate. Referrals to other servers are
// not followed, since nobody has said that those may be trusted.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ldap/ldap_options.h"
#include "ldap/query.h"

namespace orve::adapters::ldap {

struct Entry {
  std::string name;  // distinguished name
  /// Attribute and values, in the server's order; names in the server's spelling.
  std::vector<std::pair<std::string, std::vector<std::string>>> attributes;

  /// The values of the attribute, compared without case; none when the entry does not have it.
  [[nodiscard]] std::vector<std::string> Values(const std::string& attribute) const;
};

/// Raises 5 when the options make no sense together: a server that is no "ldap" or "ldaps" address, or a
/// password that would travel unprotected.
void CheckOptions(const LdapOptions& options);

class Session {
 public:
  /// Opens the connection. Raises LdapFailure.
  explicit Session(const LdapOptions& options);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  Session(Session&&) = delete;
  Session& operator=(Session&&) = delete;
  ~Session();

  /// The entries that the query finds, with the attributes that it names and that they have; at most a
  /// thousand, the rest is left out. Raises LdapFailure, also when the base is not there.
  [[nodiscard]] std::vector<Entry> Search(const Query& query);

  /// Whether the server or the way to it failed, so that nothing more is to be had from this connection.
  [[nodiscard]] bool Broken() const;

 private:
  class Handle;
  std::unique_ptr<Handle> handle_;
};

}  // namespace orve::adapters::ldap
