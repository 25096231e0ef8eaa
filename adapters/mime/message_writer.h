// Puts a message into its wire form (RFC 5322, MIME) piece by piece, in constant memory however large the
// attachments are.
#pragma once

#include <exception>
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
  /// Doubles a dot at the beginning of a line, as required by transports that end a message with a lone dot.
  bool dotStuffing = false;
  /// Bytes that follow the whole message in its last piece.
  std::string_view trailer;
};

/// Writes the whole message to `sink`, each line ended by CR LF, the last one included, none longer than 998
/// bytes.
///
/// Files are opened when their turn comes. Raises 5 when an address (other than an absent sender) cannot go
/// into a header, or the caller may not use the name of a header it added, and the errors of
/// mime/attachment.h when a file cannot be read to its end; what the sink has received by then is not a whole
/// message.
void WriteMessage(const Message& message, const ByteSink& sink, const WriteOptions& options = {});

/// An outgoing message whose building may begin before there is anyone to take it: a transport prepares it
/// while it waits for something else. `message` must outlive it and stay as it is.
class OutgoingMessage {
 public:
  explicit OutgoingMessage(const Message& message, const WriteOptions& options = {})
      : message_(message), options_(options) {}

  /// Builds what comes before the first file, unless that has been done. A failure is raised by WriteTo.
  void Prepare() noexcept;
  /// As WriteMessage.
  void WriteTo(const ByteSink& sink);

 private:
  void Build();

  const Message& message_;
  WriteOptions options_;
  bool prepared_ = false;
  std::exception_ptr failure_;
  std::string beginning_;  // up to the first file, or the whole message where there is none
  std::string boundary_;   // between the parts, where there are files
};

/// A new identifier, without angle brackets, that no other message has. `domain` is the part after the "@".
[[nodiscard]] std::string NewMessageId(std::string_view domain);

}  // namespace orve::adapters::mime
