// A message as another program sees it.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace orve::support {

/// A mailbox of a header, decoded.
struct Mailbox {
  std::string name;
  std::string address;
  friend bool operator==(const Mailbox&, const Mailbox&) = default;
};
std::ostream& operator<<(std::ostream& out, const Mailbox& mailbox);

struct ReceivedAttachment {
  std::string name;
  std::string type;
  std::filesystem::path content;  // file with the decoded bytes
};

/// All texts are decoded as a mail reader decodes them.
struct ReceivedMessage {
  std::vector<std::pair<std::string, std::string>> headers;
  std::vector<Mailbox> from, to, cc;
  std::string subject;
  long long date = 0;    // seconds since 1970
  std::string zone;      // "+0200"
  std::string bodyType;  // "text/plain"
  std::string bodyCharset;
  std::string body;  // with the line ends it arrived with
  std::vector<ReceivedAttachment> attachments;
  std::vector<std::string> defects;  // what the reader finds wrong with the message

  // From the envelope, if a server received the message.
  std::string sender;
  std::vector<std::string> recipients;
  std::string mailOptions;
  std::vector<std::string> recipientOptions;
  std::string hello;
  std::string user;
  bool encrypted = false;
  int clientPort = 0;          // the same for all messages over one connection
  std::filesystem::path file;  // the message's bytes

  /// The value of the first header of that name, empty when there is none.
  [[nodiscard]] std::string Header(const std::string& name) const;
};

/// Lets Python's email package read the message in `file`; attachments go to `directory`.
[[nodiscard]] ReceivedMessage ReadMessage(const std::filesystem::path& file,
                                          const std::filesystem::path& directory);

}  // namespace orve::support
