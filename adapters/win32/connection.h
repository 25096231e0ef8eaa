// The application's database through ADO's members: connection, record set, fields and command.
#pragma once

#include <memory>

#include "orve-mailserver/host/connection.h"
#include "win32/dispatch.h"

namespace orve::adapters::win32 {

/// The connection that the application handed in; absent for an absent one.
[[nodiscard]] std::shared_ptr<host::Connection> AvvolgiConnessione(Dispatch connessione);
/// A result that some other object returned.
[[nodiscard]] std::shared_ptr<host::RecordSet> AvvolgiRecordSet(Dispatch recordSet);

}  // namespace orve::adapters::win32
