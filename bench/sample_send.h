// The sends that are measured: one invoice to a customer known by code, and one message to a list.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "null_objects.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

namespace orve::bench {

/// One send as an application makes it, from the creation of the service to its end: settings, register and
/// account, look-up of the customer, the standard body with its placeholders, one attachment, the event,
/// the SMTP channel. Throws std::runtime_error when the message was not sent, registered and announced.
void SendInvoice(const std::shared_ptr<NullAmbiente>& ambiente, const std::string& attachment);

/// A service that is ready to send to `recipients` recipients of its collection. In each ten the second has
/// the address and name of the first but another company; in each hundred the last twenty are in CC and CCn.
[[nodiscard]] std::unique_ptr<CLSFW_MAILSERVER> ServiceForList(const std::shared_ptr<NullAmbiente>& ambiente,
                                                               std::size_t recipients);

/// Throws std::runtime_error when the send to the list lost a recipient or its company. Where two share
/// address and name, both must hold the later one's company.
void CheckListSent(const CLSFW_MAILSERVER& service, NullAmbiente& ambiente, std::size_t recipients);

}  // namespace orve::bench
