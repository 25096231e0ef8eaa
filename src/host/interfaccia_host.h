// The host application's interface object, as far as the library uses it: its message object and the
// logged-in user.
#pragma once

#include <cstdint>
#include <memory>

#include "host/errore.h"
#include "host/messaggi.h"
#include "host/oggetto.h"

namespace orve::host {

/// The logged-in user.
class UtenteApplicazione : public Oggetto {
 public:
  [[nodiscard]] virtual std::int32_t IdUtente() = 0;
};

/// The host application.
class Applicazione : public Oggetto {
 public:
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<UtenteApplicazione> UtenteCorrente() = 0;
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<host::Messaggi> Messaggi() = 0;
};

/// `ActiveInterface` of the service.
class InterfacciaHost : public Oggetto {
 public:
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<host::Applicazione> Applicazione() = 0;
};

/// The host application, which may be absent; raises 91 when the interface is. The interface lives through
/// the call, also when the host lets go of it there.
[[nodiscard]] inline std::shared_ptr<Applicazione> ApplicazioneDi(
    const std::shared_ptr<InterfacciaHost>& interfaccia) {
  return Richiesto(std::shared_ptr(interfaccia)).Applicazione();
}

}  // namespace orve::host
