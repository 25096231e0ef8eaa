// What the library asks of Windows itself: clock, debug output, identifiers, environment, network user, and
// the system's directories where no library of the host resolves them.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/orologio.h"
#include "orve-mailserver/host/risolutore_percorsi.h"
#include "orve-mailserver/host/system.h"
#include "values/formatori_sql.h"

namespace orve::adapters::win32 {

class ClockWin32 final : public host::Orologio {
 public:
  [[nodiscard]] host::DataOra Adesso() override;
  /// The forms of the person's regional settings. A date that the system cannot write (before 1601) reads
  /// dd/mm/yyyy.
  [[nodiscard]] std::string TestoData(host::DataOra istante) override;
  [[nodiscard]] std::string TestoOra(host::DataOra istante) override;
};

/// Used when the host has no library: dates in the forms that the regional settings let a person write.
class FormatoDataWin32 final : public values::FormatoDataSql {
 public:
  void Data(const std::string& testo) override;
};

/// In the system's single-byte code page.
class DebugOutputWin32 final : public host::DebugOutput {
 public:
  void Scrivi(const std::string& riga) noexcept override;
};

class GuidGeneratorWin32 final : public host::GeneratoreGuid {
 public:
  [[nodiscard]] std::optional<host::Guid> CreaGuid() override;
};

class EnvironmentWin32 final : public host::Environment {
 public:
  [[nodiscard]] std::string Leggi(const std::string& nome) override;
};

class NetworkWin32 final : public host::Rete {
 public:
  std::int32_t WNetGetUserA(std::string& buffer) override;
};

/// Used when the host has no library: the person's temporary directory, the directory of the running program,
/// and configured paths with environment variables between percent signs, a relative one starting from the
/// program's directory and an empty one meaning the temporary directory. Creates nothing.
class RisolutorePercorsiWin32 final : public host::RisolutorePercorsi {
 public:
  void ChiudiPercorsi() override { percorso_.clear(); }
  /// Raises 5 for a kind other than 6 and 8.
  void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) override;
  [[nodiscard]] std::string Percorso() const override { return percorso_; }
  void ImpostaPercorso(const std::string& percorso, bool indicatore) override;

 private:
  std::string percorso_;
};

}  // namespace orve::adapters::win32
