// The company's directory: queries through ADO's directory provider, objects bound by their LDAP paths.
#pragma once

#include "orve-mailserver/host/directory.h"

namespace orve::adapters::win32 {

class DirectoryWin32 final : public host::Directory {
 public:
  /// 429 where the machine has no ADO.
  [[nodiscard]] std::shared_ptr<host::DirectoryConnection> CreaConnessione() override;
  [[nodiscard]] std::shared_ptr<host::RecordSet> CreaRecordSet() override;
  /// Raises the system's code when there is no directory, or no such object in it.
  [[nodiscard]] std::shared_ptr<host::DirectoryObject> ApriOggetto(const std::string& percorso) override;
};

}  // namespace orve::adapters::win32
