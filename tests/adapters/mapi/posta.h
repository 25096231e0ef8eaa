// What the tests of the MAPI parts share: a sendmail that records what it is given and then does what the
// test wants, and a message ready to send.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "mapi/controls.h"
#include "mapi/mail_system.h"
#include "mapi/mapi32.h"
#include "orve-mailserver/host/errore.h"
#include "support/received_message.h"
#include "support/temp_dir.h"

namespace orve::adapters::mapi {

class Posta : public testing::Test {
 protected:
  /// A program named `name` in the test's folder, as a shell script; returns its path. $D is the folder.
  std::string Program(const std::string& script, const std::string& name = "sendmail") const;

  /// A sendmail that keeps arguments and message, then runs `after`.
  std::string Recorder(const std::string& after = "exit 0") const {
    return Program(R"(for a in "$@"; do printf '%s\n' "$a"; done > "$D/argv"
cat > "$D/stdin"
)" + after);
  }

  /// Mail goes through this program; time-outs are long enough for a loaded machine.
  [[nodiscard]] std::shared_ptr<MailSystem> System(const std::string& sendmail) const;

  [[nodiscard]] std::string File(const std::string& name) const { return (folder.Path() / name).string(); }
  [[nodiscard]] bool Exists(const std::string& name) const;
  /// The arguments that the recorder was given.
  [[nodiscard]] std::vector<std::string> Arguments() const;
  /// The same from the mark that ends the options.
  [[nodiscard]] std::vector<std::string> Recipients() const;
  /// What the recorder read, as it came and as a mail reader shows it.
  [[nodiscard]] std::string Input() const { return support::ReadFile(File("stdin")); }
  [[nodiscard]] support::ReceivedMessage Message() const;

  support::TempDir folder;
};

/// One To recipient, subject and body in the records of the library.
struct Records {
  host::MapiMessage message;
  std::vector<host::MapiRecip> recipients;
  std::vector<host::MapiFile> files;

  Records();
  void Add(std::int32_t kind, const std::string& name, const std::string& address = "");
  void Attach(const std::string& path, const std::string& name = "");
  /// Through session 0.
  std::int32_t Send(Mapi32& mapi, host::MapiHandle session = 0);
};

/// A control with an open session and a message for one recipient.
struct Composed {
  explicit Composed(const std::shared_ptr<MailSystem>& system);
  void Add(const std::string& address, const std::string& name, std::int32_t kind);

  SessionControl session;
  MessagesControl control;
  std::int16_t next = 0;  // slot
};

}  // namespace orve::adapters::mapi
