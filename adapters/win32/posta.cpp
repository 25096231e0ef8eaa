#include "win32/posta.h"

#include <string>

namespace orve::adapters::win32 {

namespace {

class ComponenteSmtpCom final : public Involucro<host::ComponenteSmtp> {
 public:
  using Involucro::Involucro;
  void ClearRecipient() override { Oggetto().Run("ClearRecipient"); }
  void ServerAddr(const std::string& server) override { Oggetto().Put("ServerAddr", server); }
  void UserName(const std::string& utente) override { Oggetto().Put("UserName", utente); }
  void Password(const std::string& password) override { Oggetto().Put("Password", password); }
  void ServerPort(std::int16_t porta) override { Oggetto().Put("ServerPort", porta); }
  void ConnectType(std::int16_t tipo) override { Oggetto().Put("ConnectType", tipo); }
  void From(const std::string& nome) override { Oggetto().Put("From", nome); }
  void FromAddr(const std::string& indirizzo) override { Oggetto().Put("FromAddr", indirizzo); }
  [[nodiscard]] std::string FromAddr() const override { return Oggetto().Get("FromAddr").ToText(); }
  void DeliveryNotification(std::int16_t valore) override { Oggetto().Put("DeliveryNotification", valore); }
  void AddRecipientEx(const std::string& elenco, std::int32_t tipo) override {
    Oggetto().Run("AddRecipientEx", Argomento::PerRiferimento(host::Variant(elenco)), tipo);
  }
  void Subject(const std::string& oggetto) override { Oggetto().Put("Subject", oggetto); }
  void BodyFormat(std::int16_t formato) override { Oggetto().Put("BodyFormat", formato); }
  void BodyText(const std::string& corpo) override { Oggetto().Put("BodyText", corpo); }
  void AddHeader(const std::string& nome, const std::string& valore) override {
    Oggetto().Run("AddHeader", nome, valore);
  }
  void AddAttachment(const std::string& percorso) override { Oggetto().Run("AddAttachment", percorso); }
  host::Variant SendMail() override { return Oggetto().Call("SendMail"); }
  [[nodiscard]] host::Variant GetLastError() const override { return Oggetto().Call("GetLastError"); }
};

class AttachmentsCom final : public Involucro<host::OutlookAttachments> {
 public:
  using Involucro::Involucro;
  void Add(const std::string& percorso) override { Oggetto().Run("Add", percorso); }
};

class MailItemCom final : public Involucro<host::OutlookMailItem> {
 public:
  using Involucro::Involucro;
  void ReadReceiptRequested(bool ricevuta) override { Oggetto().Put("ReadReceiptRequested", ricevuta); }
  [[nodiscard]] std::shared_ptr<host::OutlookAttachments> attachments() override {
    return Avvolgi<AttachmentsCom>(Oggetto().LeggiOggetto("attachments"));
  }
  void To(const std::string& elenco) override { Oggetto().Put("To", elenco); }
  void cc(const std::string& elenco) override { Oggetto().Put("cc", elenco); }
  void Bcc(const std::string& elenco) override { Oggetto().Put("Bcc", elenco); }
  void Subject(const std::string& oggetto) override { Oggetto().Put("Subject", oggetto); }
  void body(const std::string& corpo) override { Oggetto().Put("body", corpo); }
  void BodyFormat(std::int16_t formato) override { Oggetto().Put("BodyFormat", formato); }
  void HTMLBody(const std::string& corpo) override { Oggetto().Put("HTMLBody", corpo); }
  void Send() override { Oggetto().Run("Send"); }
};

class UserCom final : public Involucro<host::OutlookUser> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::string Address() override { return Oggetto().Get("Address").ToText(); }
};

class AccountCom final : public Involucro<host::OutlookAccount> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::string SmtpAddress() override { return Oggetto().Get("SmtpAddress").ToText(); }
};

class AccountsCom final : public Involucro<host::OutlookAccounts> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::OutlookAccount> Item(std::int32_t posizione) override {
    return Avvolgi<AccountCom>(Oggetto().ChiamaOggetto("Item", posizione));
  }
};

class SessionCom final : public Involucro<host::OutlookSession> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::OutlookUser> CurrentUser() override {
    return Avvolgi<UserCom>(Oggetto().LeggiOggetto("CurrentUser"));
  }
  [[nodiscard]] std::shared_ptr<host::OutlookAccounts> Accounts() override {
    return Avvolgi<AccountsCom>(Oggetto().LeggiOggetto("Accounts"));
  }
};

class ExplorersCom final : public Involucro<host::OutlookExplorers> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::OutlookSession> Session() override {
    return Avvolgi<SessionCom>(Oggetto().LeggiOggetto("Session"));
  }
};

class OutlookCom final : public Involucro<host::OutlookApplication> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::string Version() override { return Oggetto().Get("Version").ToText(); }
  [[nodiscard]] std::shared_ptr<host::OutlookExplorers> Explorers() override {
    return Avvolgi<ExplorersCom>(Oggetto().LeggiOggetto("Explorers"));
  }
  [[nodiscard]] std::shared_ptr<host::OutlookMailItem> createItem(std::int32_t tipo) override {
    return Avvolgi<MailItemCom>(Oggetto().ChiamaOggetto("createItem", tipo));
  }
};

class MAPISessionCom final : public Involucro<host::MAPISession> {
 public:
  using Involucro::Involucro;
  void DownLoadMail(bool scarica) override { Oggetto().Put("DownLoadMail", scarica); }
  void NewSession(bool nuova) override { Oggetto().Put("NewSession", nuova); }
  void SignOn() override { Oggetto().Run("SignOn"); }
  [[nodiscard]] host::Variant SessionID() override { return Oggetto().Get("SessionID"); }
  void SignOff() override { Oggetto().Run("SignOff"); }
};

class MAPIMessagesCom final : public Involucro<host::MAPIMessages> {
 public:
  using Involucro::Involucro;
  void SessionID(const host::Variant& sessione) override { Oggetto().Put("SessionID", sessione); }
  void SessioneID(const host::Variant& sessione) override { Oggetto().Put("SessioneID", sessione); }
  void Compose() override { Oggetto().Run("Compose"); }
  void RecipIndex(std::int16_t indice) override { Oggetto().Put("RecipIndex", indice); }
  void RecipAddress(const std::string& indirizzo) override { Oggetto().Put("RecipAddress", indirizzo); }
  void RecipDisplayName(const std::string& nome) override { Oggetto().Put("RecipDisplayName", nome); }
  void RecipType(std::int32_t tipo) override { Oggetto().Put("RecipType", tipo); }
  void MsgReceiptRequested(bool ricevuta) override { Oggetto().Put("MsgReceiptRequested", ricevuta); }
  void MsgSubject(const std::string& oggetto) override { Oggetto().Put("MsgSubject", oggetto); }
  void MsgNoteText(const std::string& corpo) override { Oggetto().Put("MsgNoteText", corpo); }
  void AttachmentIndex(std::int16_t indice) override { Oggetto().Put("AttachmentIndex", indice); }
  void AttachmentPosition(std::int16_t posizione) override { Oggetto().Put("AttachmentPosition", posizione); }
  void AttachmentPathName(const std::string& percorso) override {
    Oggetto().Put("AttachmentPathName", percorso);
  }
  void AttachmentName(const std::string& nome) override { Oggetto().Put("AttachmentName", nome); }
  void Send() override { Oggetto().Run("Send"); }
};

}  // namespace

std::shared_ptr<host::ComponenteSmtp> AvvolgiComponenteSmtp(Dispatch componente) {
  return Avvolgi<ComponenteSmtpCom>(std::move(componente));
}

std::shared_ptr<host::OutlookApplication> AvvolgiOutlook(Dispatch outlook) {
  return Avvolgi<OutlookCom>(std::move(outlook));
}

std::shared_ptr<host::MAPISession> AvvolgiMAPISession(Dispatch controllo) {
  return Avvolgi<MAPISessionCom>(std::move(controllo));
}

std::shared_ptr<host::MAPIMessages> AvvolgiMAPIMessages(Dispatch controllo) {
  return Avvolgi<MAPIMessagesCom>(std::move(controllo));
}

}  // namespace orve::adapters::win32
