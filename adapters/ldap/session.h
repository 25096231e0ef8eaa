// A connection to the directory's server: opened, protected, made known to the server, and asked.
//
// Every wait is bounded: on a server that says nothing, that stops in the middle of an answer, and that
// answers a byte at a time; and so is what is read, of all that it says (allowance.h). The server's name must
// stand in its certificate. Referrals to other servers are not followed, since nobody has said that those may
// be trusted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ldap/entry_reader.h"
#include "ldap/ldap_options.h"
#include "ldap/query.h"

namespace orve::adapters::ldap {

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

  /// The entries that the query finds, with the attributes that it names and that they have. The server is
  /// asked for a thousand at most, and may leave the rest out. Raises LdapFailure, also when the base is not
  /// there and when the server sends more than an EntryReader or an Allowance takes.
  [[nodiscard]] std::vector<Entry> Search(const Query& query);

  /// Whether the server or the way to it failed, so that nothing more is to be had from this connection.
  [[nodiscard]] bool Broken() const;

 private:
  class Handle;
  std::unique_ptr<Handle> handle_;
};

}  // namespace orve::adapters::ldap
