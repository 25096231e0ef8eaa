#include "fakes/fake_automation.h"

#include <string>
#include <utility>

#include "fakes/fake_ambiente.h"

namespace orve::fakes {

namespace {

// What these fakes have in common: a name in the journal, and a line there when the object is released.
class Giornale {
 public:
  Giornale(const JournalPtr& journal, const std::string& oggetto)
      : journal_(journal), oggetto_(oggetto), rilascio_(journal, oggetto) {}
  void operator()(const std::string& membro) const { journal_->Add(oggetto_ + "." + membro); }
  void operator()(const std::string& membro, const std::string& valore) const {
    journal_->Add(oggetto_ + "." + membro + " " + valore);
  }
  void operator()(const std::string& membro, std::int32_t valore) const {
    (*this)(membro, std::to_string(valore));
  }

 private:
  JournalPtr journal_;
  std::string oggetto_;
  Rilascio rilascio_;
};

class FakeAttachments : public host::OutlookAttachments {
 public:
  explicit FakeAttachments(const JournalPtr& journal) : giornale_(journal, "Attachments") {}
  void Add(const std::string& percorso) override { giornale_("Add", percorso); }

 private:
  Giornale giornale_;
};

class FakeMailItem : public host::OutlookMailItem {
 public:
  explicit FakeMailItem(const JournalPtr& journal)
      : giornale_(journal, "MailItem"), attachments_(std::make_shared<FakeAttachments>(journal)) {}
  void ReadReceiptRequested(bool ricevuta) override { giornale_("ReadReceiptRequested", SiNo(ricevuta)); }
  std::shared_ptr<host::OutlookAttachments> attachments() override {
    giornale_("attachments");
    return std::exchange(attachments_, nullptr);
  }
  void To(const std::string& elenco) override { giornale_("To", elenco); }
  void cc(const std::string& elenco) override { giornale_("cc", elenco); }
  void Bcc(const std::string& elenco) override { giornale_("Bcc", elenco); }
  void Subject(const std::string& oggetto) override { giornale_("Subject", oggetto); }
  void body(const std::string& corpo) override { giornale_("body", corpo); }
  void BodyFormat(std::int16_t formato) override { giornale_("BodyFormat", formato); }
  void HTMLBody(const std::string& corpo) override { giornale_("HTMLBody", corpo); }
  void Send() override { giornale_("Send"); }

 private:
  Giornale giornale_;
  std::shared_ptr<host::OutlookAttachments> attachments_;
};

// The way from the application to an address: "Outlook.Session", "Outlook.CurrentUser" and so on.
class FakeUser : public host::OutlookUser {
 public:
  explicit FakeUser(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::string Address() override {
    ambiente_.journal->Add("Outlook.CurrentUser.Address");
    return ambiente_.indirizzoUtenteOutlook;
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeAccount : public host::OutlookAccount {
 public:
  explicit FakeAccount(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::string SmtpAddress() override {
    ambiente_.journal->Add("Outlook.Accounts.Item.SmtpAddress");
    return ambiente_.indirizzoAccountOutlook;
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeAccounts : public host::OutlookAccounts {
 public:
  explicit FakeAccounts(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::shared_ptr<host::OutlookAccount> Item(std::int32_t posizione) override {
    ambiente_.journal->Add("Outlook.Accounts.Item " + std::to_string(posizione));
    return std::make_shared<FakeAccount>(ambiente_);
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeOutlookSession : public host::OutlookSession {
 public:
  explicit FakeOutlookSession(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::shared_ptr<host::OutlookUser> CurrentUser() override {
    ambiente_.journal->Add("Outlook.Session.CurrentUser");
    return std::make_shared<FakeUser>(ambiente_);
  }
  std::shared_ptr<host::OutlookAccounts> Accounts() override {
    ambiente_.journal->Add("Outlook.Session.Accounts");
    return std::make_shared<FakeAccounts>(ambiente_);
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeExplorers : public host::OutlookExplorers {
 public:
  explicit FakeExplorers(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::shared_ptr<host::OutlookSession> Session() override {
    ambiente_.journal->Add("Outlook.Explorers.Session");
    return std::make_shared<FakeOutlookSession>(ambiente_);
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeOutlook : public host::OutlookApplication {
 public:
  explicit FakeOutlook(FakeAmbiente& ambiente)
      : ambiente_(ambiente), giornale_(ambiente.journal, "Outlook") {}
  std::string Version() override {
    giornale_("Version");
    return ambiente_.versioneOutlook;
  }
  std::shared_ptr<host::OutlookExplorers> Explorers() override {
    giornale_("Explorers");
    return std::make_shared<FakeExplorers>(ambiente_);
  }
  std::shared_ptr<host::OutlookMailItem> createItem(std::int32_t tipo) override {
    giornale_("createItem", tipo);
    return std::make_shared<FakeMailItem>(ambiente_.journal);
  }

 private:
  FakeAmbiente& ambiente_;
  Giornale giornale_;
};

class FakeMAPISession : public host::MAPISession {
 public:
  explicit FakeMAPISession(FakeAmbiente& ambiente)
      : sessione_(ambiente.sessioneMapi), giornale_(ambiente.journal, "MAPISession") {}
  void DownLoadMail(bool scarica) override { giornale_("DownLoadMail", SiNo(scarica)); }
  void NewSession(bool nuova) override { giornale_("NewSession", SiNo(nuova)); }
  void SignOn() override { giornale_("SignOn"); }
  host::Variant SessionID() override { return sessione_; }
  void SignOff() override { giornale_("SignOff"); }

 private:
  host::Variant sessione_;
  Giornale giornale_;
};

class FakeMAPIMessages : public host::MAPIMessages {
 public:
  FakeMAPIMessages(const JournalPtr& journal, host::FineConsegna fine)
      : giornale_(journal, "MAPIMessages"), fine_(std::move(fine)) {}
  void SessionID(const host::Variant& sessione) override { giornale_("SessionID", fakes::Mostra(sessione)); }
  void SessioneID(const host::Variant& sessione) override {
    giornale_("SessioneID", fakes::Mostra(sessione));
  }
  void Compose() override { giornale_("Compose"); }
  void RecipIndex(std::int16_t indice) override { giornale_("RecipIndex", indice); }
  void RecipAddress(const std::string& indirizzo) override { giornale_("RecipAddress", indirizzo); }
  void RecipDisplayName(const std::string& nome) override { giornale_("RecipDisplayName", nome); }
  void RecipType(std::int32_t tipo) override { giornale_("RecipType", tipo); }
  void MsgReceiptRequested(bool ricevuta) override { giornale_("MsgReceiptRequested", SiNo(ricevuta)); }
  void MsgSubject(const std::string& oggetto) override { giornale_("MsgSubject", oggetto); }
  void MsgNoteText(const std::string& corpo) override { giornale_("MsgNoteText", corpo); }
  void AttachmentIndex(std::int16_t indice) override { giornale_("AttachmentIndex", indice); }
  void AttachmentPosition(std::int16_t posizione) override { giornale_("AttachmentPosition", posizione); }
  void AttachmentPathName(const std::string& percorso) override { giornale_("AttachmentPathName", percorso); }
  void AttachmentName(const std::string& nome) override { giornale_("AttachmentName", nome); }
  void Send() override { giornale_("Send"); }
  host::FineConsegna Fine() const override { return fine_; }

 private:
  Giornale giornale_;
  host::FineConsegna fine_;
};

class FakeMapi32 : public host::Mapi32 {
 public:
  explicit FakeMapi32(FakeAmbiente& ambiente) : ambiente_(ambiente), giornale_(ambiente.journal, "MAPI32") {}
  std::int32_t MAPILogon(host::MapiHandle finestra, const std::string& profilo, const std::string& password,
                         std::int32_t flags, std::int32_t riservato, host::MapiHandle& sessione) override {
    giornale_("MAPILogon", std::to_string(finestra) + "|" + profilo + "|" + password + "|" +
                               std::to_string(flags) + "|" + std::to_string(riservato));
    if (ambiente_.esitoLogonMapi == 0) sessione = ambiente_.sessioneMapi32;
    return ambiente_.esitoLogonMapi;
  }
  std::int32_t BMAPISendMail(host::MapiHandle sessione, host::MapiHandle finestra,
                             host::MapiMessage& messaggio, const std::vector<host::MapiRecip>& destinatari,
                             const std::vector<host::MapiFile>& file, std::int32_t flags,
                             std::int32_t riservato) override {
    ambiente_.inviiMapi.push_back({messaggio, destinatari, file});
    giornale_("BMAPISendMail", std::to_string(sessione) + "|" + std::to_string(finestra) + "|" +
                                   std::to_string(flags) + "|" + std::to_string(riservato));
    return ambiente_.esitoInvioMapi;
  }
  std::int32_t MAPILogoff(host::MapiHandle sessione, host::MapiHandle finestra, std::int32_t flags,
                          std::int32_t riservato) override {
    giornale_("MAPILogoff", std::to_string(sessione) + "|" + std::to_string(finestra) + "|" +
                                std::to_string(flags) + "|" + std::to_string(riservato));
    return ambiente_.esitoLogoffMapi;
  }
  host::FineConsegna Fine() const override { return ambiente_.fineConsegna; }

 private:
  FakeAmbiente& ambiente_;
  Giornale giornale_;
};

}  // namespace

std::shared_ptr<host::OutlookApplication> CreaFakeOutlook(FakeAmbiente& ambiente) {
  return std::make_shared<FakeOutlook>(ambiente);
}

std::shared_ptr<host::MAPISession> CreaFakeMAPISession(FakeAmbiente& ambiente) {
  return std::make_shared<FakeMAPISession>(ambiente);
}

std::shared_ptr<host::MAPIMessages> CreaFakeMAPIMessages(FakeAmbiente& ambiente) {
  return std::make_shared<FakeMAPIMessages>(ambiente.journal, ambiente.fineConsegna);
}

std::shared_ptr<host::Mapi32> CreaFakeMapi32(FakeAmbiente& ambiente) {
  return std::make_shared<FakeMapi32>(ambiente);
}

}  // namespace orve::fakes
