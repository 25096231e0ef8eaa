// The two MAPI controls over the machine's mail system. A control refuses a call by raising host::Errore:
// 32000 plus the published number, or 9 for an index without a slot, with an Italian description.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "mapi/letter.h"
#include "mapi/mail_system.h"
#include "mime/attachment.h"
#include "orve-mailserver/host/automation.h"

namespace orve::adapters::mapi {

/// There is nothing to download and no session to share: DownLoadMail and NewSession have no effect.
class SessionControl final : public host::MAPISession {
 public:
  explicit SessionControl(std::shared_ptr<MailSystem> system) : system_(std::move(system)) {}
  SessionControl(const SessionControl&) = delete;
  SessionControl& operator=(const SessionControl&) = delete;
  SessionControl(SessionControl&&) = delete;
  SessionControl& operator=(SessionControl&&) = delete;
  /// Signs off if that has not happened.
  ~SessionControl() override;

  void DownLoadMail(bool /*scarica*/) override {}
  void NewSession(bool /*nuova*/) override {}
  /// Raises 32003 when the machine has no mail system, 32050 when the session is already open.
  void SignOn() override;
  /// A 32-bit integer; 0 while no session is open.
  [[nodiscard]] host::Variant SessionID() override { return session_; }
  /// Raises 32053 when no session is open.
  void SignOff() override;

 private:
  std::shared_ptr<MailSystem> system_;
  std::int32_t session_ = 0;
};

/// A message in the making. Send leaves it as it is, whatever comes of it; Compose begins a new one.
class MessagesControl final : public host::MAPIMessages {
 public:
  /// `attachments`: which files the paths stand for, under names that no AttachmentName changes; empty: the
  /// paths' own.
  explicit MessagesControl(std::shared_ptr<MailSystem> system, mime::AttachmentResolver attachments = {})
      : system_(std::move(system)), attachments_(std::move(attachments)) {}

  /// Checked by Send. Empty means no session.
  void SessionID(const host::Variant& sessione) override { session_ = sessione.ToInt32(); }
  void SessioneID(const host::Variant& sessione) override { SessionID(sessione); }
  void Compose() override;

  /// Raises 9 below the first slot and beyond the one after the last. The other members of a recipient raise
  /// 9 when no slot is selected. A new slot is of type To.
  void RecipIndex(std::int16_t indice) override;
  void RecipAddress(const std::string& indirizzo) override;
  void RecipDisplayName(const std::string& nome) override;
  /// Raises 32015 for anything but 1, 2 and 3.
  void RecipType(std::int32_t tipo) override;

  void MsgReceiptRequested(bool ricevuta) override { letter_.receipt = ricevuta; }
  void MsgSubject(const std::string& oggetto) override { letter_.subject = oggetto; }
  void MsgNoteText(const std::string& corpo) override { letter_.body = corpo; }

  /// As RecipIndex, for the slots of attachments.
  void AttachmentIndex(std::int16_t indice) override;
  /// A place in the text means nothing for the message that is sent: files follow the text in the order of
  /// their slots. Raises 9 when no slot is selected.
  void AttachmentPosition(std::int16_t posizione) override;
  /// Raises 32011 when there is no such file and 32012 when it cannot be read; the slot is then left without
  /// a file, and Send skips it.
  void AttachmentPathName(const std::string& percorso) override;
  void AttachmentName(const std::string& nome) override;

  /// Raises 32053 without a session, 32019 when it is not open (any more), 32057 without recipients, and what
  /// the delivery raises.
  void Send() override;
  [[nodiscard]] host::FineConsegna Fine() const override { return end_; }

 private:
  [[nodiscard]] Recipient& SelectedRecipient();
  [[nodiscard]] mime::Attachment& SelectedAttachment();
  void RequireSession() const;

  std::shared_ptr<MailSystem> system_;
  mime::AttachmentResolver attachments_;
  std::int32_t session_ = 0;
  Letter letter_;                  // its attachments are the slots, including those without a path
  std::ptrdiff_t recipient_ = -1;  // the slot selected; -1: none
  std::ptrdiff_t attachment_ = -1;
  host::FineConsegna end_;
};

}  // namespace orve::adapters::mapi
