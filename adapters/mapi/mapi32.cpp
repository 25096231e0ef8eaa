#include "mapi/mapi32.h"

#include <array>
#include <limits>

#include "mapi/failure.h"
#include "mapi/letter.h"
#include "mapi/sendmail.h"
#include "text/text.h"

namespace orve::adapters::mapi {

namespace {

constexpr std::int32_t kDialog = 8;

using MessageText = std::string host::MapiMessage::*;
constexpr std::array<MessageText, 5> kMessageTexts = {
    &host::MapiMessage::Subject, &host::MapiMessage::NoteText, &host::MapiMessage::MessageType,
    &host::MapiMessage::DateReceived, &host::MapiMessage::ConversationID};

// The record as it is on the library's side of the call.
host::MapiMessage InSingleBytes(const host::MapiMessage& message) {
  host::MapiMessage inside = message;
  for (const MessageText text : kMessageTexts) inside.*text = text::ToWindows1252(message.*text);
  return inside;
}

host::MapiMessage FromSingleBytes(const host::MapiMessage& inside) {
  host::MapiMessage message = inside;
  for (const MessageText text : kMessageTexts) message.*text = text::FromWindows1252(inside.*text);
  return message;
}

std::size_t Counted(std::int32_t count, std::size_t records, const char* what) {
  if (count >= 0 && static_cast<std::size_t>(count) <= records) return static_cast<std::size_t>(count);
  throw MapiFailure(kFailure, std::string("Numero di ") + what + " non valido: " + std::to_string(count));
}

Recipient FromRecord(const host::MapiRecip& record) {
  if (record.RecipClass < kTo || record.RecipClass > kBcc) {
    throw MapiFailure(kBadRecipientType,
                      "Tipo di destinatario non valido: " + std::to_string(record.RecipClass));
  }
  return {record.RecipClass, record.Name, record.Address};
}

Letter FromRecords(const host::MapiMessage& message, const std::vector<host::MapiRecip>& recipients,
                   const std::vector<host::MapiFile>& files, const mime::AttachmentResolver& attachments) {
  constexpr std::int32_t kReceiptRequested = 2;
  const std::size_t recipientCount = Counted(message.RecipCount, recipients.size(), "destinatari");
  const std::size_t fileCount = Counted(message.FileCount, files.size(), "allegati");
  if (recipientCount == 0) throw MapiFailure(kInvalidRecipients, "Nessun destinatario");
  Letter letter;
  letter.subject = text::FromWindows1252(message.Subject);
  letter.body = text::FromWindows1252(message.NoteText);
  letter.receipt = (message.Flags & kReceiptRequested) != 0;
  for (std::size_t i = 0; i < recipientCount; ++i) letter.recipients.push_back(FromRecord(recipients[i]));
  for (std::size_t i = 0; i < fileCount; ++i) {
    letter.attachments.push_back(attachments ? mime::Attach(attachments, files[i].PathName)
                                             : mime::Attachment(files[i].PathName, files[i].FileName));
  }
  return letter;
}

// Handles from elsewhere can be larger than our numbers; none of those is open.
std::int32_t Number(host::MapiHandle session) {
  constexpr auto kLargest = static_cast<host::MapiHandle>(std::numeric_limits<std::int32_t>::max());
  return session <= kLargest ? static_cast<std::int32_t>(session) : 0;
}

[[noreturn]] void RaiseInvalidSession() {
  throw MapiFailure(kInvalidSession, "Sessione di posta non aperta");
}

}  // namespace

// Runs one function of the library: its number is all that the caller learns.
template <class Action>
std::int32_t Mapi32::Result(Action action) {
  end_ = {};
  try {
    action();
    return kSuccess;
  } catch (...) {
    const MapiFailure failure = CurrentFailure();
    end_ = {failure.what(), failure.MayHaveArrived()};
    return failure.Number();
  }
}

std::int32_t Mapi32::MAPILogon(host::MapiHandle /*finestra*/, const std::string& profilo,
                               const std::string& /*password*/, std::int32_t /*flags*/,
                               std::int32_t /*riservato*/, host::MapiHandle& sessione) {
  return Result([&] {
    if (!profilo.empty()) throw MapiFailure(kLoginFailure, "Profilo di posta sconosciuto");
    sessione = static_cast<host::MapiHandle>(system_->Open());
  });
}

std::int32_t Mapi32::BMAPISendMail(host::MapiHandle sessione, host::MapiHandle /*finestra*/,
                                   host::MapiMessage& messaggio,
                                   const std::vector<host::MapiRecip>& destinatari,
                                   const std::vector<host::MapiFile>& file, std::int32_t flags,
                                   std::int32_t /*riservato*/) {
  return Result([&] {
    const host::MapiMessage inside = InSingleBytes(messaggio);
    messaggio = FromSingleBytes(inside);
    if ((flags & kDialog) != 0) throw MapiFailure(kNotSupported, "Nessuna finestra di composizione");
    if (sessione == 0) {
      RequireSendmail(system_->Options());
    } else if (!system_->IsOpen(Number(sessione))) {
      RaiseInvalidSession();
    }
    Deliver(system_->Options(), FromRecords(inside, destinatari, file, attachments_));
  });
}

std::int32_t Mapi32::MAPILogoff(host::MapiHandle sessione, host::MapiHandle /*finestra*/,
                                std::int32_t /*flags*/, std::int32_t /*riservato*/) {
  return Result([&] {
    if (!system_->Close(Number(sessione))) RaiseInvalidSession();
  });
}

}  // namespace orve::adapters::mapi
