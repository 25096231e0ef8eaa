// A connection to the directory's server: opened, secured, authenticated, and queried.
//
// Every wait is bounded, for a server that says nothing, stops in the middle of an answer or answers a byte
// at a time; so is the total amount read (allowance.h). The server's name must be in its certificate.
// Referrals to other servers are not followed, since nothing says that those may be trusted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ldap/entry_reader.h"
#include "ldap/query.h"
#include "orve-mailserver/ldap/ldap_options.h"

namespace orve::adapters::ldap {

/// Raises 5 when the options make no sense together: a server that is not an "ldap" or "ldaps" address, or a
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

  /// The entries that the query finds, with the attributes that it names and that they have. The server is
  /// asked for at most a thousand, and may leave out the rest. Raises LdapFailure, also when the base does
  /// not exist or the server sends more than an EntryReader or an Allowance accepts.
  [[nodiscard]] std::vector<Entry> Search(const Query& query);

  /// Whether the server or the path to it failed, so this connection is of no more use.
  [[nodiscard]] bool Broken() const;

 private:
  class Handle;
  std::unique_ptr<Handle> handle_;
};

}  // namespace orve::adapters::ldap
