// ODBC's handles, which free themselves, and what a driver says about a failure.
#pragma once

#include <sql.h>
#include <sqlext.h>
#include <sqltypes.h>

#include "orve-mailserver/host/errore.h"
#include "rows/record_set.h"

namespace orve::adapters::odbc {

inline constexpr const char* kSorgente = "ODBC";
/// The number of an error for which the driver gives none.
inline constexpr std::int32_t kErroreSenzaNumero = -2147467259;

class Handle {
 public:
  Handle() = default;
  /// Raises what the parent says when it cannot be made.
  Handle(SQLSMALLINT tipo, SQLHANDLE padre);
  ~Handle() { Libera(); }
  Handle(Handle&& altro) noexcept;
  Handle& operator=(Handle&& altro) noexcept;
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  void Libera() noexcept;
  [[nodiscard]] SQLHANDLE Grezzo() const { return grezzo_; }
  [[nodiscard]] SQLSMALLINT Tipo() const { return tipo_; }

  /// Raises the driver's error, as Diagnosi gives it, unless the call succeeded.
  void Verifica(SQLRETURN esito) const;

 private:
  SQLSMALLINT tipo_ = 0;
  SQLHANDLE grezzo_ = nullptr;
};

/// What the driver says about the last call that failed: its native number, or kErroreSenzaNumero, and its
/// texts, the first followed by the SQLSTATE.
[[nodiscard]] host::Errore Diagnosi(SQLSMALLINT tipo, SQLHANDLE grezzo);

}  // namespace orve::adapters::odbc
