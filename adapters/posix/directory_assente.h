// The directory of a machine that has none. Every query ends in an error, which its callers take as "nobody
// found"; that is the honest answer as long as there is no directory.
#pragma once

#include <memory>
#include <string>

#include "orve-mailserver/host/directory.h"

namespace orve::adapters::posix {

class DirectoryAssente : public host::Directory {
 public:
  /// Each raises 429.
  [[nodiscard]] std::shared_ptr<host::DirectoryConnection> CreaConnessione() override;
  [[nodiscard]] std::shared_ptr<host::RecordSet> CreaRecordSet() override;
  [[nodiscard]] std::shared_ptr<host::DirectoryObject> ApriOggetto(const std::string& percorso) override;
};

}  // namespace orve::adapters::posix
