// The mail objects of automation: the SMTP component, Outlook and the two controls of Simple MAPI.
#pragma once

#include <memory>

#include "orve-mailserver/host/automation.h"
#include "orve-mailserver/host/componente_smtp.h"
#include "win32/dispatch.h"

namespace orve::adapters::win32 {

/// The wrapper for an object of each kind; absent for an absent one.
[[nodiscard]] std::shared_ptr<host::ComponenteSmtp> AvvolgiComponenteSmtp(Dispatch componente);
[[nodiscard]] std::shared_ptr<host::OutlookApplication> AvvolgiOutlook(Dispatch outlook);
[[nodiscard]] std::shared_ptr<host::MAPISession> AvvolgiMAPISession(Dispatch controllo);
[[nodiscard]] std::shared_ptr<host::MAPIMessages> AvvolgiMAPIMessages(Dispatch controllo);

}  // namespace orve::adapters::win32
