// A file attached to a message, and who decides which file that is.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "orve-mailserver/api.h"

namespace orve::adapters::mime {

/// A file attached to the message.
struct ORVE_API Attachment {
  /// Not explicit: most attachments are just a path.
  Attachment(std::string file, std::string shownAs = {}) : path(std::move(file)), name(std::move(shownAs)) {}

  std::string path;                       ///< either separator
  std::string name;                       ///< shown to the recipient; empty: the file's own
  std::shared_ptr<const void> held = {};  ///< must live for as long as the path is read
};

/// What a host makes of a path that its application names: the file to read, the name that the recipients
/// see, and whatever keeps the two together until the message has been sent. Raises host::Errore 53 (no such
/// file), 70 (must not be read) or 75 (cannot be read) with an Italian description.
using AttachmentResolver = std::function<Attachment(std::string_view path)>;

}  // namespace orve::adapters::mime
