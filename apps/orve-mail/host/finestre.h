// The program's windows: for a command that may show a person a window.
#pragma once

#include <memory>
#include <string>

#include "orve-mail/host/allegati.h"
#include "orve-mail/host/osservazioni.h"
#include "orve-mailserver/host/finestre.h"

namespace orve::app {

/// Raises ErroreProgramma (kNonUtilizzabile) where no window can be opened; `perche` begins its text and says
/// what needs the window.
void RichiediSchermo(const std::string& perche);

/// The toolkit; the first window shows whether any can be opened. Windows that are shown are counted in
/// `note`. `allegati`: attaches the files that a person chooses; absent: wherever they are.
[[nodiscard]] std::shared_ptr<host::Finestre> CreaFinestre(const OsservazioniPtr& note,
                                                           std::shared_ptr<Allegati> allegati = nullptr);

}  // namespace orve::app
