// The file that records the dialogue with a server.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orve::app {

/// Returns a function that appends a line to the file, which is created for the person alone if it is
/// missing. It may also be a terminal, or the program's own output under another name (/dev/stdout). Raises
/// ErroreProgramma (kFileMancante) for what cannot be written and for anything else that is not a file:
/// opening a pipe would wait for somebody to read it, and a full one would hold up the send.
[[nodiscard]] std::function<void(std::string_view)> ScriviDialogo(const std::string& file);

}  // namespace orve::app
