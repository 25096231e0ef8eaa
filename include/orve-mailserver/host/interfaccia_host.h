// The part of the host application's interface object that the library uses: its message object and the
// logged-in user.
#pragma once

#include <cstdint>
#include <memory>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/messaggi.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// The logged-in user.
class ORVE_API UtenteApplicazione : public Oggetto {
 public:
  /// The user's id in the application's database.
  [[nodiscard]] virtual std::int32_t IdUtente() = 0;
};

/// The host application.
class ORVE_API Applicazione : public Oggetto {
 public:
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<UtenteApplicazione> UtenteCorrente() = 0;
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<host::Messaggi> Messaggi() = 0;
};

/// `ActiveInterface` of the service.
class ORVE_API InterfacciaHost : public Oggetto {
 public:
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<host::Applicazione> Applicazione() = 0;
};

/// The host application, which may be absent; raises 91 when the interface is. The interface stays alive
/// through the call, even if the host releases it meanwhile.
[[nodiscard]] inline std::shared_ptr<Applicazione> ApplicazioneDi(
    const std::shared_ptr<InterfacciaHost>& interfaccia) {
  return Richiesto(std::shared_ptr(interfaccia)).Applicazione();
}

}  // namespace orve::host
