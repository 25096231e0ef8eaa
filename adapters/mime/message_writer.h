// Puts a message into its wire form (RFC 5322, MIME) piece by piece, with flat memory whatever the
// attachments weigh.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "mime/message.h"

namespace orve::adapters::mime {

/// Receives the message in order, in pieces of at most kPieceBytes. Throwing ends the writing; the exception
/// comes out of WriteMessage as it was thrown.
using ByteSink = std::function<void(std::string_view)>;

inline constexpr std::size_t kPieceBytes = std::size_t{64} * 1024;

struct WriteOptions {
  /// Doubles a dot at the beginning of a line, as transports that end a message with a lone dot want it.
  bool dotStuffing = false;
  /// Bytes that follow the whole message in its last piece.
  std::string_view trailer;
};

/// Writes the whole message to `sink`, each line ended by CR LF, the last one included, none longer than 998
/// bytes.
///
/// Files are opened when their turn comes. Raises 5 when an address, the sender's own absent one
/// excepted, cannot stand in a header or the name of a
/// header of the caller's is not its own, and the errors of mime/attachment.h when a file cannot be read to
/// its end; what the sink has received until then is not a whole message.
void WriteMessage(const Message& message, const ByteSink& sink, const WriteOptions& options = {});

/// A new identifier, without angle brackets, that no other message has. `domain` is what stands behind the
/// "@".
[[nodiscard]] std::string NewMessageId(std::string_view domain);

}  // namespace orve::adapters::mime
