// The files that go into a message.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/mime/attachment.h"

namespace orve::adapters::mime {

// Numbers of the errors about files, as automation counts them.
inline constexpr int kFileNonTrovato = 53;
inline constexpr int kAutorizzazioneNegata = 70;
inline constexpr int kErroreAccessoFile = 75;

/// The path under which the file exists on this machine: `path` as given, if something exists there, else
/// with `/` for each `\`.
[[nodiscard]] std::string LocalPath(std::string_view path);

/// The absolute local path of a file that can be attached. Raises 53, 70 or 75 with an Italian description
/// when the path is empty, or what is there is unreadable or not a regular file. Never blocks (on a pipe,
/// say). Errors name the file as `shown`; empty: as `path`.
[[nodiscard]] std::string RequireAttachable(std::string_view path, std::string_view shown = {});

/// The file for the path, by the host's resolver; without one, the file at the path. Raises what
/// RequireAttachable raises.
[[nodiscard]] Attachment Attach(const AttachmentResolver& resolver, std::string_view path);

/// The name under which a file is sent: the last component of its local path, header-safe and without
/// backslashes or anything that a mail reader would decode.
[[nodiscard]] std::string AttachmentName(std::string_view localPath);

/// The media type that goes with the name's extension, "application/octet-stream" when it is none of the
/// usual ones.
[[nodiscard]] std::string_view MediaType(std::string_view name);

/// Opens a file for reading, with the checks of RequireAttachable except for the first byte. Returns the
/// descriptor, which the caller closes; `size` receives the size in bytes. Errors name the file as `shown`.
[[nodiscard]] int OpenAttachment(const std::string& localPath, std::string_view shown, long long& size);

/// Raises the error of a failed operation on an attachment; `error` is an errno value.
[[noreturn]] void RaiseAttachmentError(std::string_view path, int error);

}  // namespace orve::adapters::mime
