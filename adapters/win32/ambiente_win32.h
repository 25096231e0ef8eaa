// Everything that the library creates by itself on Windows: objects of automation by their classes,
// MAPI32.DLL and the system's own parts.
//
// A class of the host's libraries that the machine does not know is made up for where the platform has a part
// for it: the message boxes of the system, the formatters of SQL Server's dialect, the directories of the
// system, and the file chooser with its file object and collection (the three together). The register object,
// the password class and the special fields are the host's alone, and without them the creation raises 429,
// as it does for a mail object that is not installed, and for a class that is known and cannot be created.
#pragma once

#include <memory>

#include "host/ambiente.h"

namespace orve::adapters::win32 {

/// For a thread that has entered an apartment of COM; its objects stay on that thread.
[[nodiscard]] std::shared_ptr<host::Ambiente> CreaAmbienteWin32();

}  // namespace orve::adapters::win32
