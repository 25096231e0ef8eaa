// The module MDLFW_MAPI: the records of MAPI32.DLL and those of its numbers that the library uses. The three
// functions themselves come from outside (host::Mapi32).
#pragma once

#include <cstdint>

#include "orve-mailserver/host/mapi32.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Delivers the current message by direct calls of MAPI32.DLL. Never raises.
void SendMailMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto, Esito& esito,
                  const Oggetti& oggetti);

}  // namespace orve

namespace orve::MDLFW_MAPI {

using host::MapiFile;
using host::MapiMessage;
using host::MapiRecip;

/// The result of a function that did its work; any other value is the library's error number.
inline constexpr std::int32_t kSuccesso = 0;

/// What the channel shows the person, in every mode, once the message has gone.
inline constexpr const char* kMessaggioInviato = "Message sent!";

/// Flags of MAPILogon: the library may ask the person to log on, and the session is a new one.
inline constexpr std::int32_t kDialogoDiAccesso = 1;
inline constexpr std::int32_t kNuovaSessione = 2;

/// RecipClass of a recipient record; 0 for a recipient with an unknown box.
inline constexpr std::int32_t kClasseSconosciuta = 0;
inline constexpr std::int32_t kClasseA = 1;
inline constexpr std::int32_t kClasseCC = 2;
inline constexpr std::int32_t kClasseCCn = 3;

/// Position of a file record that lets the library choose where the attachment goes.
inline constexpr std::int32_t kPosizioneLibera = -1;

}  // namespace orve::MDLFW_MAPI
