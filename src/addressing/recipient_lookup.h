// From a code and its type to one address and one display name, read from the application's master data.
#pragma once

#include <cstdint>
#include <optional>

#include "orve-mailserver/host/variant.h"
#include "service/contesto.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Writes address, name and company of the recipient into the message. 0: found; 1: no record, or a failure;
/// 2: no address in the record; empty: no value. Never raises.
host::Variant GetDatiDestinatario(Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                                  const host::Variant& codice, std::optional<std::int32_t> Tipo);

}  // namespace orve
