// The before-send event and the stages around it.
#pragma once

#include <string>

#include "service/contesto.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Flattens recipients and attachments into texts, lets the caller's handler change these along with subject
/// and body, and rebuilds the objects from them. A failure is reported by mode.
void GestioneEventoBeforeSendMail(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto,
                                  Oggetti& oggetti);

// Its stages, each of which reports its own failure by mode.
void BeforeDestinatari(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti);
void BeforeAllegati(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti);
void AfterDestinatari(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti);
void AfterAllegati(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti);

/// Makes vElencoAllegati from a list of paths; vMailAttachment is emptied when it is not among them.
void RiprendiAllegati(Messaggio& messaggio, const Oggetti& oggetti, const std::string& elenco);

/// Appends one path to vElencoAllegati. The file is not checked. A failure is reported by message.
void AddAllegato(Messaggio& messaggio, const Oggetti& oggetti, const std::string& FileName);

}  // namespace orve
