// The address-book manager of the host application, in the order of its interface.
#pragma once

#include <cstdint>
#include <memory>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/interfaccia_host.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// Shows the books that the person chooses recipients from.
class ORVE_API ManagerRubrica : public Oggetto {
 public:
  /// The current company.
  virtual void DittaRubrica(const Variant& ditta) = 0;
  /// 1 mail addresses, 3 PEC addresses.
  virtual void TipoRubrica(std::int32_t tipo) = 0;
  /// Cleared before a look-up.
  virtual void CodiceScelto(const Variant& codice) = 0;
  [[nodiscard]] virtual Variant CodiceScelto() = 0;
  /// Name of the party: given before a look-up, read after it.
  virtual void NomeScelto(const Variant& nome) = 0;
  [[nodiscard]] virtual Variant NomeScelto() = 0;
  /// Address: cleared before a look-up, read after it.
  virtual void IndirizzoScelto(const Variant& indirizzo) = 0;
  [[nodiscard]] virtual Variant IndirizzoScelto() = 0;
  ///@{
  /// Each shows its book and returns when the person has left it.
  virtual void ApriRubrica() = 0;
  virtual void ApriRubricaOutlook() = 0;
  virtual void ApriRubricaTobit() = 0;
  ///@}
  /// True when the person left the application's book without choosing.
  [[nodiscard]] virtual bool Annullata() = 0;
  /// The host application, which may be absent.
  virtual void Interfaccia(const std::shared_ptr<InterfacciaHost>& interfaccia) = 0;
};

}  // namespace orve::host
