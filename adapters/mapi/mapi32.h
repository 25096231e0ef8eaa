// The three functions of the MAPI library over the machine's mail system.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "mapi/mail_system.h"
#include "mime/attachment.h"
#include "orve-mailserver/host/mapi32.h"

namespace orve::adapters::mapi {

/// Results are 0 or the published numbers. There are no dialogs and no profiles: flags that ask for a log-on
/// dialog have no effect, and a named profile is unknown (3).
class Mapi32 final : public host::Mapi32 {
 public:
  /// `attachments`: which files the records' paths stand for, and their names; empty: as the records say.
  explicit Mapi32(std::shared_ptr<MailSystem> system, mime::AttachmentResolver attachments = {})
      : system_(std::move(system)), attachments_(std::move(attachments)) {}

  std::int32_t MAPILogon(host::MapiHandle finestra, const std::string& profilo, const std::string& password,
                         std::int32_t flags, std::int32_t riservato, host::MapiHandle& sessione) override;
  /// Session 0 does not need an open one: one is then opened for the call. The texts of the message record
  /// pass through the single-byte code page in both directions. A recipient without a class is 15, a message
  /// without recipients 25, a dialog 26, counts beyond the arrays 2. A record without an address of its own
  /// is resolved from its name.
  std::int32_t BMAPISendMail(host::MapiHandle sessione, host::MapiHandle finestra,
                             host::MapiMessage& messaggio, const std::vector<host::MapiRecip>& destinatari,
                             const std::vector<host::MapiFile>& file, std::int32_t flags,
                             std::int32_t riservato) override;
  std::int32_t MAPILogoff(host::MapiHandle sessione, host::MapiHandle finestra, std::int32_t flags,
                          std::int32_t riservato) override;

  [[nodiscard]] host::FineConsegna Fine() const override { return end_; }

 private:
  template <class Action>
  std::int32_t Result(Action action);

  std::shared_ptr<MailSystem> system_;
  mime::AttachmentResolver attachments_;
  host::FineConsegna end_;
};

}  // namespace orve::adapters::mapi
