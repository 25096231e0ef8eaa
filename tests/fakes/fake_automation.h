// Outlook, the Simple MAPI controls and MAPI32.DLL as fakes. Each member appears in the journal as
// "Object.Member values" (Outlook, MailItem, Attachments, MAPISession, MAPIMessages, MAPI32), and the end of
// an object as "rilascio Object"; what they answer is set in FakeAmbiente.
#pragma once

#include <memory>

#include "orve-mailserver/host/automation.h"
#include "orve-mailserver/host/mapi32.h"

namespace orve::fakes {

class FakeAmbiente;

std::shared_ptr<host::OutlookApplication> CreaFakeOutlook(FakeAmbiente& ambiente);
std::shared_ptr<host::MAPISession> CreaFakeMAPISession(FakeAmbiente& ambiente);
std::shared_ptr<host::MAPIMessages> CreaFakeMAPIMessages(FakeAmbiente& ambiente);
/// The records of each call of BMAPISendMail go into `inviiMapi` of the ambiente, which must outlive the
/// fake.
std::shared_ptr<host::Mapi32> CreaFakeMapi32(FakeAmbiente& ambiente);

}  // namespace orve::fakes
