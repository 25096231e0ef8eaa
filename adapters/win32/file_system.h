// The system's file-system object and its text stream.
#pragma once

#include <memory>

#include "orve-mailserver/host/file_system.h"
#include "win32/dispatch.h"

namespace orve::adapters::win32 {

[[nodiscard]] std::shared_ptr<host::FileSystem> AvvolgiFileSystem(Dispatch fileSystem);

}  // namespace orve::adapters::win32
