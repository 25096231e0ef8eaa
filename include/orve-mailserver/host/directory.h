// The company's directory of persons: objects by path, and queries.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// An object in the directory.
class ORVE_API DirectoryObject : public Oggetto {
 public:
  /// The attribute of that name; raises an error when the object does not have it.
  [[nodiscard]] virtual Variant Get(const std::string& attributo) = 0;
  /// The object's own path.
  [[nodiscard]] virtual std::string ADsPath() = 0;
  /// The member of a user object of that name ("FirstName", "EmailAddress", ...); raises an error when the
  /// object does not have it.
  [[nodiscard]] virtual Variant Membro(const std::string& nome) = 0;
};

/// The connection of the directory's query provider.
class ORVE_API DirectoryConnection : public Oggetto {
 public:
  /// Opens the connection to the provider that the text names; raises an error when it cannot.
  virtual void Open(const std::string& origine) = 0;
  /// Runs "<base>;filter;attributes;depth" and returns its result; raises an error when the directory
  /// refuses.
  [[nodiscard]] virtual std::shared_ptr<RecordSet> Execute(const std::string& interrogazione) = 0;
  /// 0 closed, else open.
  [[nodiscard]] virtual std::int32_t State() = 0;
  /// Closes the connection.
  virtual void Close() = 0;
};

/// The directory itself.
class ORVE_API Directory : public Oggetto {
 public:
  /// Raises an error where there is no directory.
  [[nodiscard]] virtual std::shared_ptr<DirectoryConnection> CreaConnessione() = 0;
  /// A record set that is not yet open, `State` 0; the result of a query replaces it. Raises an error where
  /// there is no directory.
  [[nodiscard]] virtual std::shared_ptr<RecordSet> CreaRecordSet() = 0;
  /// The object at "LDAP://..."; raises an error when it cannot be bound.
  [[nodiscard]] virtual std::shared_ptr<DirectoryObject> ApriOggetto(const std::string& percorso) = 0;
};

}  // namespace orve::host
