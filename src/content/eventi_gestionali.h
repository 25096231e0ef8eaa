// Telling the application's management-event system about each message sent and each refusal to send.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/variant.h"
#include "service/contesto.h"
#include "service/oggetti.h"

namespace orve {

/// The codes under which that system learns of mail.
enum CodiceEvento : std::int32_t {
  kEventoNonInviato = 88,  // disabled, no address, or cancelled by the person
  kEventoInvio = 89,       // a message went to a channel for one recipient, whatever happened to it there
};

inline const std::string kTestoVuoto;

/// The contents of one event; an empty text is left out. The texts are the caller's, and each is read when it
/// is written into the event.
struct EventoGestionale {
  std::int32_t codice = kEventoInvio;
  const std::string& destinatario = kTestoVuoto;
  const std::string& azienda = kTestoVuoto;
  const std::string& indirizzo = kTestoVuoto;
  const std::string& allegato = kTestoVuoto;
  const std::string& esito = kTestoVuoto;
  const std::string& oggetto = kTestoVuoto;
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
