// What the directory, or the connection to it, gave instead of a result.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::ldap {

/// The number of the error for a property that an object does not have.
inline constexpr std::int32_t kNoProperty = -2147463155;

/// Number 440 with an Italian description that names what went wrong, the protocol's own result code and the
/// server's words.
class LdapFailure : public host::Errore {
 public:
  /// `code`: a result code of the protocol, or a negative one of libldap's own. `words`: what the server or
  /// the library adds; may contain anything and is reduced to one line of plain text.
  LdapFailure(int code, const std::string& words);

  [[nodiscard]] int Code() const noexcept { return code_; }
  [[nodiscard]] const std::string& Words() const noexcept { return words_; }

 private:
  int code_;
  std::string words_;
};

/// The same failure again, without another attempt: the server failed a short while ago and is left alone.
class LeftAlone : public LdapFailure {
 public:
  explicit LeftAlone(const LdapFailure& failure) : LdapFailure(failure) {}
};

}  // namespace orve::adapters::ldap
