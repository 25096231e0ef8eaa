// Files that belong to whoever runs the program: what it writes about messages and their recipients.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <optional>
#include <string>

#include "posix/descriptor.h"

namespace orve::app {

/// Opens a file for writing, with `modalita` added to the flags: created with mode 600 when it is missing,
/// never through a link, and never another user's file except root's; root may write the file of any user
/// whose folder is not open to everybody. A system name for this program's own output (/dev/stdout) means
/// that output. Never waits for a pipe's reader. Raises ErroreProgramma (kFileMancante): `cosa`, the file and
/// the reason.
[[nodiscard]] adapters::posix::Descriptor ApriFileProprio(const std::string& cosa, const std::string& file,
                                                          int modalita);

/// The same for lines that are appended to it. It may also be a terminal, /dev/null or the program's own
/// output, but nothing else that is not a file: a full pipe would hold up the send.
[[nodiscard]] adapters::posix::Descriptor ApriFilePerRighe(const std::string& cosa, const std::string& file);

/// Whether both describe the same file, under whatever names.
[[nodiscard]] bool StessoFile(const struct stat& uno, const struct stat& altro);

/// The descriptor of the program's output, or of its errors, when it is this file.
[[nodiscard]] std::optional<int> UscitaDelProgramma(const struct stat& stato);

/// What something other than a regular file is, for the person.
[[nodiscard]] const char* NonFile(mode_t modo);

}  // namespace orve::app
