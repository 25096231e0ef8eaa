// Everything that the library creates on Windows: objects of automation by their classes, MAPI32.DLL and the
// system's own parts.
//
// Where the machine lacks a class of the host's libraries, a part of the platform replaces it if there is
// one: the message boxes of the system, the formatters of SQL Server's dialect, the directories of the
// system, and the file chooser with its file object and collection (the three together). The register object,
// the password class and the special fields can only be the host's, and without them creation raises 429, as
// it does for a mail object that is not installed, and for a class that is known but cannot be created.
#pragma once

#include <memory>

#include "orve-mailserver/host/ambiente.h"

namespace orve::adapters::win32 {

/// For a thread that has entered an apartment of COM; its objects stay on that thread.
[[nodiscard]] std::shared_ptr<host::Ambiente> CreaAmbienteWin32();

}  // namespace orve::adapters::win32
