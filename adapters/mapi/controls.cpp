#include "mapi/controls.h"

#include <algorithm>

#include "mapi/failure.h"
#include "orve-mailserver/host/errore.h"

namespace orve::adapters::mapi {

namespace {

constexpr const char* kSession = "MSMAPI.MAPISession";
constexpr const char* kMessages = "MSMAPI.MAPIMessages";

host::Errore ControlError(const char* control, std::int32_t number, const std::string& text) {
  return {kControlBase + number, control, text};
}

/// Runs `action`; what it throws comes out as the control's own error.
template <class Action>
void AsControl(const char* control, Action action) {
  try {
    action();
  } catch (...) {
    const MapiFailure failure = CurrentFailure();
    throw ControlError(control, failure.Number(), failure.what());
  }
}

/// Selects a slot; creates it if it is the one after the last.
template <class Slots>
std::ptrdiff_t Select(Slots& slots, std::int16_t index, typename Slots::value_type fresh) {
  if (index < 0 || static_cast<std::size_t>(index) > slots.size()) {
    throw host::Errore(host::kIndiceFuoriIntervallo, kMessages,
                       "Indice " + std::to_string(index) + " non compreso nell'intervallo");
  }
  if (static_cast<std::size_t>(index) == slots.size()) slots.push_back(std::move(fresh));
  return index;
}

template <class Slots>
typename Slots::value_type& Selected(Slots& slots, std::ptrdiff_t index) {
  if (index < 0) throw host::Errore(host::kIndiceFuoriIntervallo, kMessages, "Nessun elemento selezionato");
  return slots[static_cast<std::size_t>(index)];
}

}  // namespace

SessionControl::~SessionControl() {
  if (session_ != 0) system_->Close(session_);
}

void SessionControl::SignOn() {
  if (session_ != 0) throw ControlError(kSession, kSessionExists, "La sessione di posta è già aperta");
  AsControl(kSession, [this] { session_ = system_->Open(); });
}

void SessionControl::SignOff() {
  if (session_ == 0) throw ControlError(kSession, kNoSession, "Nessuna sessione di posta aperta");
  system_->Close(session_);
  session_ = 0;
}

void MessagesControl::Compose() {
  letter_ = Letter();
  recipient_ = -1;
  attachment_ = -1;
}

void MessagesControl::RecipIndex(std::int16_t indice) {
  recipient_ = Select(letter_.recipients, indice, Recipient());
}

void MessagesControl::RecipAddress(const std::string& indirizzo) {
  SelectedRecipient().address = indirizzo;
}

void MessagesControl::RecipDisplayName(const std::string& nome) {
  SelectedRecipient().name = nome;
}

void MessagesControl::RecipType(std::int32_t tipo) {
  if (tipo < kTo || tipo > kBcc) {
    throw ControlError(kMessages, kBadRecipientType,
                       "Tipo di destinatario non valido: " + std::to_string(tipo));
  }
  SelectedRecipient().kind = tipo;
}

void MessagesControl::AttachmentIndex(std::int16_t indice) {
  attachment_ = Select(letter_.attachments, indice, mime::Attachment(std::string()));
}

void MessagesControl::AttachmentPosition(std::int16_t /*posizione*/) {
  static_cast<void>(SelectedAttachment());
}

void MessagesControl::AttachmentPathName(const std::string& percorso) {
  mime::Attachment& slot = SelectedAttachment();
  slot.path.clear();
  AsControl(kMessages, [&] {
    mime::Attachment file = mime::Attach(attachments_, percorso);
    if (!attachments_) file.name = slot.name;
    slot = std::move(file);
  });
}

void MessagesControl::AttachmentName(const std::string& nome) {
  mime::Attachment& slot = SelectedAttachment();
  if (!attachments_ || slot.path.empty()) slot.name = nome;
}

void MessagesControl::Send() {
  end_ = {};
  try {
    RequireSession();
    if (letter_.recipients.empty()) throw MapiFailure(kNoRecipients, "Nessun destinatario");
    Letter leaving = letter_;
    leaving.attachments.erase(std::remove_if(leaving.attachments.begin(), leaving.attachments.end(),
                                             [](const mime::Attachment& slot) { return slot.path.empty(); }),
                              leaving.attachments.end());
    Deliver(system_->Options(), leaving);
  } catch (...) {
    const MapiFailure failure = CurrentFailure();
    end_ = {failure.what(), failure.MayHaveArrived()};
    throw ControlError(kMessages, failure.Number(), failure.what());
  }
}

Recipient& MessagesControl::SelectedRecipient() {
  return Selected(letter_.recipients, recipient_);
}

mime::Attachment& MessagesControl::SelectedAttachment() {
  return Selected(letter_.attachments, attachment_);
}

void MessagesControl::RequireSession() const {
  if (session_ == 0) throw MapiFailure(kNoSession, "Nessuna sessione di posta indicata");
  if (!system_->IsOpen(session_)) throw MapiFailure(kInvalidSession, "Sessione di posta non aperta");
}

}  // namespace orve::adapters::mapi
