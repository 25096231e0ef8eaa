// Outside objects that pass everything on to a real one and note the result. They change nothing: an error is
// passed on as it is.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "orve-mail/host/osservazioni.h"
#include "orve-mailserver/host/automazione.h"
#include "orve-mailserver/host/componente_smtp.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/file_system.h"
#include "orve-mailserver/host/mapi32.h"
#include "orve-mailserver/host/messaggi.h"
#include "orve-mailserver/host/registro_invio.h"

namespace orve::app {

using OsservazioniPtr = std::shared_ptr<Osservazioni>;

[[nodiscard]] std::shared_ptr<host::Messaggi> Osserva(std::shared_ptr<host::Messaggi> vero,
                                                      OsservazioniPtr note);
/// What the component itself can tell about its last delivery.
struct FineConsegna {
  std::string motivo;    // what ended it, for a person; empty after a success
  bool incerta = false;  // the server may have the message anyway
};

/// `fine` tells how the last delivery ended; empty: unknown.
[[nodiscard]] std::shared_ptr<host::ComponenteSmtp> Osserva(std::shared_ptr<host::ComponenteSmtp> vero,
                                                            OsservazioniPtr note,
                                                            std::function<FineConsegna()> fine = {});
/// `fine` as above, for the last Send or the last call.
[[nodiscard]] std::shared_ptr<host::MAPIMessages> Osserva(std::shared_ptr<host::MAPIMessages> vero,
                                                          OsservazioniPtr note,
                                                          std::function<FineConsegna()> fine = {});
[[nodiscard]] std::shared_ptr<host::Mapi32> Osserva(std::shared_ptr<host::Mapi32> vera, OsservazioniPtr note,
                                                    std::function<FineConsegna()> fine = {});
[[nodiscard]] std::shared_ptr<host::FileSystem> Osserva(std::shared_ptr<host::FileSystem> vero,
                                                        OsservazioniPtr note);
[[nodiscard]] std::shared_ptr<host::RegistroInvio> Osserva(std::shared_ptr<host::RegistroInvio> vero,
                                                           OsservazioniPtr note);
[[nodiscard]] std::shared_ptr<host::Connection> Osserva(std::shared_ptr<host::Connection> vera,
                                                        OsservazioniPtr note);

/// The real connection behind an observed one; any other connection is its own.
[[nodiscard]] std::shared_ptr<host::Connection> ConnessioneInterna(
    const std::shared_ptr<host::Connection>& connessione);

}  // namespace orve::app
