// Telling the application's management-event system about each message sent and each refusal to send.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/variant.h"
#include "service/contesto.h"
#include "service/oggetti.h"

namespace orve {

/// The codes under which that system learns of mail.
enum CodiceEvento : std::int32_t {
  kEventoNonInviato = 88,  // disabled, no address, or cancelled by the person
  kEventoInvio = 89,       // a message went to a channel for one recipient, whatever happened to it there
};

/// The contents of one event; an empty text is left out.
struct EventoGestionale {
  std::int32_t codice = kEventoInvio;
  std::string_view destinatario = {};
  std::string_view azienda = {};
  std::string_view indirizzo = {};
  std::string_view allegato = {};
  std::string_view esito = {};
  std::string_view oggetto = {};
};

/// Registers the event. Never fails: one that cannot be registered is lost silently.
void AttivaEventoGestionale(const Contesto& contesto, const Oggetti& oggetti, const EventoGestionale& evento);

// Its steps.

/// The user of the connection; 0 when unknown.
[[nodiscard]] host::Variant GetUserIDFromConnection(const Contesto& contesto);
/// The payload; empty for a code other than these two.
[[nodiscard]] std::string ComponiParametriEvento(const Contesto& contesto, const Oggetti& oggetti,
                                                 std::int32_t idUtente, const EventoGestionale& evento);

}  // namespace orve
