// The file system of the send log, as the library writes it.
#pragma once

#include <memory>

#include "orve-mailserver/host/file_system.h"

namespace orve::adapters::ambiente {

/// Writes through the given one. What is written as one line stays one line of as many columns: names come
/// from the master data as they are there, and each control character in them becomes a blank. The line end
/// at the end of the titles stays.
[[nodiscard]] std::shared_ptr<host::FileSystem> LogSuUnaRiga(std::shared_ptr<host::FileSystem> vero);

}  // namespace orve::adapters::ambiente
