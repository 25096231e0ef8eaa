// The automation objects of the mail channels that do not speak SMTP: Outlook, and the two controls of Simple
// MAPI. Member names are the objects' own, in their own case. A member raises an error when its object
// refuses the call.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/fine_consegna.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// The attachments of a mail item.
class ORVE_API OutlookAttachments : public Oggetto {
 public:
  /// Attaches the file; raises an error when it cannot be read.
  virtual void Add(const std::string& percorso) = 0;
};

/// A message that is being written. Its members are set in any order before Send.
class ORVE_API OutlookMailItem : public Oggetto {
 public:
  /// True asks for a read receipt.
  virtual void ReadReceiptRequested(bool ricevuta) = 0;
  /// Never absent; the collection belongs to the item.
  [[nodiscard]] virtual std::shared_ptr<OutlookAttachments> attachments() = 0;
  ///@{
  /// Recipient lists: entries of a name, " <", the address and ">", joined by ";".
  virtual void To(const std::string& elenco) = 0;
  virtual void cc(const std::string& elenco) = 0;
  virtual void Bcc(const std::string& elenco) = 0;
  ///@}
  /// The subject, on one line.
  virtual void Subject(const std::string& oggetto) = 0;
  /// The body as plain text.
  virtual void body(const std::string& corpo) = 0;
  /// 1 marks the body as HTML.
  virtual void BodyFormat(std::int16_t formato) = 0;
  /// The body as HTML.
  virtual void HTMLBody(const std::string& corpo) = 0;
  /// Hands the message over; not raising an error is the only sign of success.
  virtual void Send() = 0;
};

/// The person the session belongs to.
class ORVE_API OutlookUser : public Oggetto {
 public:
  /// The mail address, in a form of Outlook's choice.
  [[nodiscard]] virtual std::string Address() = 0;
};

/// An account that Outlook sends with.
class ORVE_API OutlookAccount : public Oggetto {
 public:
  /// The mail address.
  [[nodiscard]] virtual std::string SmtpAddress() = 0;
};

/// The accounts of a session.
class ORVE_API OutlookAccounts : public Oggetto {
 public:
  /// The account at a position, from 1; raises an error when there is none.
  [[nodiscard]] virtual std::shared_ptr<OutlookAccount> Item(std::int32_t posizione) = 0;
};

/// Who is signed on to Outlook.
class ORVE_API OutlookSession : public Oggetto {
 public:
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<OutlookUser> CurrentUser() = 0;
  /// Available from version 12 on.
  [[nodiscard]] virtual std::shared_ptr<OutlookAccounts> Accounts() = 0;
};

/// The windows of Outlook, through which its session is reached.
class ORVE_API OutlookExplorers : public Oggetto {
 public:
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<OutlookSession> Session() = 0;
};

/// "Outlook.Application".
class ORVE_API OutlookApplication : public Oggetto {
 public:
  /// A major number, a point and more, such as "16.0.0.4266".
  [[nodiscard]] virtual std::string Version() = 0;
  /// May be absent.
  [[nodiscard]] virtual std::shared_ptr<OutlookExplorers> Explorers() = 0;
  /// A new item of this kind, never absent; 0 is a mail item.
  [[nodiscard]] virtual std::shared_ptr<OutlookMailItem> createItem(std::int32_t tipo) = 0;
};

/// "MSMAPI.MAPISession".
class ORVE_API MAPISession : public Oggetto {
 public:
  /// Whether signing on fetches new mail.
  virtual void DownLoadMail(bool scarica) = 0;
  /// Whether signing on opens a session of its own or shares one that is open.
  virtual void NewSession(bool nuova) = 0;
  /// Opens the session; raises an error when it cannot.
  virtual void SignOn() = 0;
  /// The session's handle, for MAPIMessages.
  [[nodiscard]] virtual Variant SessionID() = 0;
  /// Closes the session.
  virtual void SignOff() = 0;
};

/// "MSMAPI.MAPIMessages": one message, whose recipients and attachments are held in slots. A slot is selected
/// by its index, from 0, and the members of recipient or attachment that follow fill it; selecting the index
/// past the last slot opens a new one.
class ORVE_API MAPIMessages : public Oggetto {
 public:
  /// The session to send in, as MAPISession gives it.
  virtual void SessionID(const Variant& sessione) = 0;
  /// The session, under the member name that a channel uses with a control that it created itself.
  virtual void SessioneID(const Variant& sessione) = 0;
  /// Starts a new message.
  virtual void Compose() = 0;

  /// Selects the recipient slot.
  virtual void RecipIndex(std::int16_t indice) = 0;
  /// "SMTP:" and the address.
  virtual void RecipAddress(const std::string& indirizzo) = 0;
  /// The name that is shown for the address.
  virtual void RecipDisplayName(const std::string& nome) = 0;
  /// 1 To, 2 Cc, 3 Bcc; a new slot has a type of the control's own choice.
  virtual void RecipType(std::int32_t tipo) = 0;

  /// True asks for a read receipt.
  virtual void MsgReceiptRequested(bool ricevuta) = 0;
  /// The subject, on one line.
  virtual void MsgSubject(const std::string& oggetto) = 0;
  /// The body, always plain text.
  virtual void MsgNoteText(const std::string& corpo) = 0;

  /// Selects the attachment slot.
  virtual void AttachmentIndex(std::int16_t indice) = 0;
  /// Place of the attachment in the body, in characters from 0.
  virtual void AttachmentPosition(std::int16_t posizione) = 0;
  /// Path of the file; the control may refuse one that it cannot read, here or at Send.
  virtual void AttachmentPathName(const std::string& percorso) = 0;
  /// The name that the recipient sees.
  virtual void AttachmentName(const std::string& nome) = 0;

  /// Hands the message over; raises an error when it cannot.
  virtual void Send() = 0;
  /// What the control itself can tell of its last Send.
  [[nodiscard]] virtual FineConsegna Fine() const { return {}; }
};

}  // namespace orve::host
