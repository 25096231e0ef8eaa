// A real SMTP server on loopback (python3-aiosmtpd), started by a test and ended with the object.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/received_message.h"
#include "support/temp_dir.h"

namespace orve::support {

struct SmtpServerOptions {
  std::string tls = "none";  // "starttls", "implicit"
  std::filesystem::path certificate;
  std::filesystem::path key;
  bool requireTls = false;
  std::vector<std::string> auth;  // mechanisms
  std::string user;
  std::string password;
  bool requireAuth = false;
  std::vector<std::string> refused;     // recipients
  std::vector<std::string> extensions;  // further words of the EHLO reply: "DSN", "PIPELINING"
  bool smtpUtf8 = false;
  bool lowPort = false;  // a port below 32768, as accounts with a signed 16-bit port need it
  int sizeLimit = 0;     // bytes; 0: none
  int abortAfter = 0;    // break connections after this many bytes; 0: never
  int holdBefore = 0;    // wait before the message of this number is read; 0: never
  int holdAfter = 0;     // wait when the message of this number is received and not yet answered; 0: never
  bool closeAtData = false;  // close connections, in an orderly way, where the message should come
};

class SmtpServer {
 public:
  explicit SmtpServer(const SmtpServerOptions& options = {});

  [[nodiscard]] int Port() const { return port_; }
  /// The port in the 16 bits of the component's property.
  [[nodiscard]] std::int16_t Port16() const { return static_cast<std::int16_t>(port_); }
  /// Where messages are kept, as NNNN.eml and NNNN.env.
  [[nodiscard]] const std::filesystem::path& Directory() const { return directory_.Path(); }

  /// How many messages the server has accepted.
  [[nodiscard]] std::size_t Count() const;
  /// The recipients of all messages so far, as the envelopes name them.
  [[nodiscard]] std::vector<std::string> Recipients() const;

  /// Whether a connection waits as holdBefore and holdAfter say.
  [[nodiscard]] bool Holds() const;
  /// Lets it continue, and makes nobody wait any longer.
  void Release() const;

  /// Closes all open connections, and waits until their clients can see it. Raises std::runtime_error when
  /// that never happens.
  void DropConnections() const;

  /// All messages so far, in order, read by Python's email package.
  [[nodiscard]] std::vector<ReceivedMessage> Messages() const;
  /// The only message; raises std::runtime_error when there are none or several.
  [[nodiscard]] ReceivedMessage OnlyMessage() const;

 private:
  TempDir directory_;
  std::unique_ptr<Process> process_;
  int port_ = 0;
};

}  // namespace orve::support
