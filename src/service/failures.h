// Messages and error texts, as the service and its dialogs show them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/interfaccia_host.h"
#include "orve-mailserver/host/messaggi.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Shows a message through the host's message object, if the chain from its interface reaches one, and
/// otherwise through `riserva`, which must then be present. Both references may change while the message is
/// showing. Returns the person's answer; raises what the objects raise.
std::int32_t MostraMessaggioDi(host::Ambiente& ambiente,
                               const std::shared_ptr<host::InterfacciaHost>& interfaccia,
                               const std::shared_ptr<host::Messaggi>& riserva, const std::string& testo,
                               std::int32_t stile, const std::string& titolo,
                               const std::shared_ptr<host::Oggetto>& proprietario);

/// The same with the service's own objects, without an owner.
std::int32_t MostraMessaggio(const Oggetti& oggetti, const std::string& testo, std::int32_t stile,
                             const std::string& titolo);

/// Number, separator, description and closing text.
[[nodiscard]] std::string TestoErrore(const host::Errore& errore, std::string_view separatore,
                                      std::string_view chiusura);

/// Shows that text as a message, style 0, without a title.
void MostraErrore(const Oggetti& oggetti, const host::Errore& errore, std::string_view separatore,
                  std::string_view chiusura);

/// How most procedures of a send report an error: unattended, by a line in the send log with status 2 and the
/// procedure's name; with kvManuale, by the message above.
void SegnalaPerModalita(const Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti,
                        const host::Errore& errore, const std::string& procedura, std::string_view separatore,
                        std::string_view chiusura);

// The same for SegnalaErrori; the texts are literals.

[[nodiscard]] inline auto PerMessaggio(const Oggetti& oggetti, std::string_view separatore,
                                       std::string_view chiusura) {
  return [&oggetti, separatore, chiusura](const host::Errore& errore) {
    MostraErrore(oggetti, errore, separatore, chiusura);
  };
}

/// The description alone, as a warning under this title.
[[nodiscard]] inline auto PerAvviso(const Oggetti& oggetti, const char* titolo) {
  return [&oggetti, titolo](const host::Errore& errore) {
    MostraMessaggio(oggetti, errore.Descrizione(), host::kAvviso, titolo);
  };
}

[[nodiscard]] inline auto PerModalita(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                      Oggetti& oggetti, const char* procedura, std::string_view separatore,
                                      std::string_view chiusura) {
  return [&messaggio, &impostazioni, &oggetti, procedura, separatore, chiusura](const host::Errore& errore) {
    SegnalaPerModalita(messaggio, impostazioni, oggetti, errore, procedura, separatore, chiusura);
  };
}

}  // namespace orve
