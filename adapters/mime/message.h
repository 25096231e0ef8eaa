// One mail message as plain values, before it is put into its wire form.
//
// There is no blind-copy member on purpose: who gets a message without being named in it is a matter of the
// envelope.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "orve-mailserver/mime/attachment.h"

namespace orve::adapters::mime {

/// A mailbox: display name (may be empty) and bare address, both UTF-8.
struct Address {
  std::string name;
  std::string address;

  friend bool operator==(const Address&, const Address&) = default;
};

/// One header line of the caller's own.
struct Header {
  std::string name;
  std::string value;
};

/// Texts are UTF-8. Anything else, and control characters in what becomes a header line, is repaired by the
/// writer.
struct Message {
  Address from;  // address and name empty: whoever submits the message names its sender
  std::vector<Address> to;
  std::vector<Address> cc;
  std::string subject;
  std::string body;
  bool html = false;
  std::vector<Header> headers;
  std::vector<Attachment> attachments;
  std::string messageId;  // without angle brackets; empty: one is generated
  std::optional<std::chrono::system_clock::time_point> date;  // none: now
};

}  // namespace orve::adapters::mime
