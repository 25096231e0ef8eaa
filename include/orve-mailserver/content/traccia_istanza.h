// The birth and death of every object of the library, announced on the debug output under an identifier of
// its own, so that an outside tool can pair the two lines and find objects that are never released.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "orve-mailserver/api.h"

namespace orve {

namespace host {
class Ambiente;
class GeneratoreGuid;
}  // namespace host

/// The two lines of one object, which holds its trace as a member.
class ORVE_API TracciaIstanza {
 public:
  /// `classe` is the name of the class as written in the line; it must outlive the trace. Raises 91 when the
  /// ambiente is absent.
  TracciaIstanza(std::shared_ptr<host::Ambiente> ambiente, std::string_view classe);

  /// The line at creation, "INI", and at destruction, "TER".
  void Inizio() noexcept;
  /// The first line, and then the steps of the construction; if these fail, the second line too, since the
  /// destructor of an object that was never completed does not run.
  template <class Passi>
  void Inizio(Passi&& passi) {
    Inizio();
    try {
      std::forward<Passi>(passi)();
    } catch (...) {
      Termine();
      throw;
    }
  }
  /// The line at destruction, "TER".
  void Termine() noexcept;

 private:
  [[nodiscard]] const std::string& GetIdIstanza();
  void Scrivi(std::string_view evento) noexcept;

  std::shared_ptr<host::Ambiente> ambiente_;
  std::string_view classe_;
  std::string IdIstanza;
};

/// The identifier of a new object, 32 upper-case hexadecimal digits; empty when the platform gives no GUID.
[[nodiscard]] ORVE_API std::string GeneraIdIstanza(host::GeneratoreGuid& generatore);

}  // namespace orve
