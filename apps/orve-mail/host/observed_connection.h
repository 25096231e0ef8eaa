// A connection that passes everything on to a real one and notes the errors of its statements: the library
// treats many of them as "nothing found" and does not report them.
#pragma once

#include <memory>

#include "orve-mail/host/osservazioni.h"
#include "orve-mailserver/host/connection.h"

namespace orve::app {

[[nodiscard]] std::shared_ptr<host::Connection> Osserva(std::shared_ptr<host::Connection> vera,
                                                        OsservazioniPtr note);

}  // namespace orve::app
