// Files on their way into a message.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "mime/message.h"

namespace orve::adapters::mime {

// Numbers of the errors about files, as automation counts them.
inline constexpr int kFileNonTrovato = 53;
inline constexpr int kAutorizzazioneNegata = 70;
inline constexpr int kErroreAccessoFile = 75;

/// The path under which the file exists on this machine: `path` as it is given, when something stands there,
/// else with `/` for each `\`.
[[nodiscard]] std::string LocalPath(std::string_view path);

/// The absolute local path of a file that can be attached. Raises 53, 70 or 75 with an Italian description
/// when the path is empty, or nothing readable, or something other than a regular file stands there. Never
/// blocks (on a pipe, say). Errors name the file as `shown`; empty: as `path`.
[[nodiscard]] std::string RequireAttachable(std::string_view path, std::string_view shown = {});

/// What a host makes of a path that its application names: the file to read, the name that the recipients
/// see, and whatever holds the two together until the message has left. Raises as RequireAttachable does.
using AttachmentResolver = std::function<Attachment(std::string_view path)>;

/// The file behind the path, by the host's resolver; without one the path's own. Raises what
/// RequireAttachable raises.
[[nodiscard]] Attachment Attach(const AttachmentResolver& resolver, std::string_view path);

/// The name under which a file travels: the last component of its local path, header-safe and without
/// backslashes or what a reader would decode.
[[nodiscard]] std::string AttachmentName(std::string_view localPath);

/// The media type that goes with the name's extension, "application/octet-stream" when it is none of the
/// usual ones.
[[nodiscard]] std::string_view MediaType(std::string_view name);

/// Opens a file for reading and checks what RequireAttachable checks except for the first byte.
/// Returns the descriptor, which the caller closes; `size` receives the size in bytes. Errors name the file
/// as `shown`.
[[nodiscard]] int OpenAttachment(const std::string& localPath, std::string_view shown, long long& size);

/// Raises the error of a failed operation on an attachment; `error` is an errno value.
[[noreturn]] void RaiseAttachmentError(std::string_view path, int error);

}  // namespace orve::adapters::mime
