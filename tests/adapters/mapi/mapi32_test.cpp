// The three functions of the library: sessions, records, and the single-byte texts.
#include "mapi/mapi32.h"

#include <string>

#include "adapters/mapi/posta.h"
#include "mapi/failure.h"

namespace orve::adapters::mapi {
namespace {

using support::Mailbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class LibreriaMapi : public Posta {
 protected:
  std::shared_ptr<MailSystem> system = System(Recorder());
  Mapi32 mapi{system};

  host::MapiHandle Logon() {
    host::MapiHandle session = 0;
    EXPECT_EQ(mapi.MAPILogon(0, "", "", 3, 0, session), 0) << mapi.Fine().motivo;
    return session;
  }
};

TEST_F(LibreriaMapi, ASessionIsOpenedUsedAndClosedOnce) {
  const host::MapiHandle session = Logon();
  EXPECT_NE(session, 0U);
  EXPECT_EQ(Records().Send(mapi, session), 0) << mapi.Fine().motivo;
  EXPECT_EQ(mapi.MAPILogoff(session, 0, 0, 0), 0);
  EXPECT_EQ(mapi.Fine().motivo, "");
  EXPECT_EQ(mapi.MAPILogoff(session, 0, 0, 0), kInvalidSession);
  EXPECT_EQ(mapi.Fine().motivo, "Sessione di posta non aperta");
  EXPECT_EQ(Records().Send(mapi, session), kInvalidSession);
}

TEST_F(LibreriaMapi, LogoffWithoutLogonIsAnInvalidSession) {
  EXPECT_EQ(mapi.MAPILogoff(0, 0, 0, 0), kInvalidSession);
  EXPECT_EQ(mapi.MAPILogoff(815, 0, 0, 0), kInvalidSession);
  const host::MapiHandle session = Logon();
  EXPECT_EQ(mapi.MAPILogoff(session + (host::MapiHandle{1} << 32U), 0, 0, 0), kInvalidSession);
  EXPECT_EQ(mapi.MAPILogoff(session, 0, 0, 0), 0);
}

TEST_F(LibreriaMapi, TwoSessionsAreTwo) {
  const host::MapiHandle first = Logon();
  const host::MapiHandle second = Logon();
  EXPECT_NE(first, second);
  EXPECT_EQ(mapi.MAPILogoff(first, 0, 0, 0), 0);
  EXPECT_EQ(Records().Send(mapi, first), kInvalidSession);
  EXPECT_EQ(Records().Send(mapi, second), 0) << mapi.Fine().motivo;
  EXPECT_EQ(mapi.MAPILogoff(second, 0, 0, 0), 0);
}

TEST_F(LibreriaMapi, SessionZeroNeedsNoneToBeOpen) {
  EXPECT_EQ(Records().Send(mapi), 0) << mapi.Fine().motivo;
  Logon();
  EXPECT_EQ(Records().Send(mapi), 0) << mapi.Fine().motivo;
}

TEST_F(LibreriaMapi, LogonFailsWithoutAMailSystemAndLeavesTheHandleAlone) {
  Mapi32 elsewhere(System(File("manca")));
  host::MapiHandle session = 7;
  EXPECT_EQ(elsewhere.MAPILogon(0, "", "", 3, 0, session), kLoginFailure);
  EXPECT_EQ(session, 7U);
  EXPECT_THAT(elsewhere.Fine().motivo, HasSubstr("non esiste"));
}

TEST_F(LibreriaMapi, AProfileByNameIsUnknown) {
  host::MapiHandle session = 0;
  EXPECT_EQ(mapi.MAPILogon(0, "Outlook", "segreta", 3, 0, session), kLoginFailure);
  EXPECT_EQ(mapi.Fine().motivo, "Profilo di posta sconosciuto");
}

TEST_F(LibreriaMapi, TheMessageArrivesAsTheRecordsSay) {
  Records records;
  records.message.Subject = "Fattura n° 12 — perché, €";
  records.message.NoteText = "Così è: “già” pagata.\r\n";
  records.Add(kCc, "Rossi, Anna<anna@x.example>");
  records.Add(kTo, "Nicolò <capo> Però< nicolo@x.example >");
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;
  const support::ReceivedMessage message = Message();
  EXPECT_EQ(message.subject, "Fattura n° 12 — perché, €");
  EXPECT_EQ(message.body, "Così è: “già” pagata.\r\n");
  EXPECT_EQ(message.bodyType, "text/plain");
  EXPECT_THAT(message.to, ElementsAre(Mailbox{"Mario Bianchi", "mario@bianchi.example"},
                                      Mailbox{"Nicolò <capo> Però", "nicolo@x.example"}));
  EXPECT_THAT(message.cc, ElementsAre(Mailbox{"Rossi, Anna", "anna@x.example"}));
  EXPECT_THAT(message.attachments, IsEmpty());
  EXPECT_EQ(message.Header("Disposition-Notification-To"), "");
  EXPECT_THAT(message.defects, IsEmpty());
}

TEST_F(LibreriaMapi, WhatTheSingleBytePageLacksArrivesAndComesBackAsAQuestionMark) {
  Records records;
  records.message.Subject = "Łódź 日本 €";
  records.message.NoteText = "Ελλάδα ÿ";
  records.message.ConversationID = "č";
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;
  EXPECT_EQ(Message().subject, "?ód? ?? €");
  EXPECT_EQ(Message().body, "?????? ÿ\r\n");
  EXPECT_EQ(records.message.Subject, "?ód? ?? €");
  EXPECT_EQ(records.message.NoteText, "?????? ÿ");
  EXPECT_EQ(records.message.ConversationID, "?");
}

TEST_F(LibreriaMapi, TheTextsComeBackConvertedFromARefusedMessageToo) {
  Records records;
  records.message.Subject = "日";
  records.message.RecipCount = 0;
  EXPECT_NE(records.Send(mapi), 0);
  EXPECT_EQ(records.message.Subject, "?");
}

TEST_F(LibreriaMapi, NamesAndPathsOfTheArraysAreNotConverted) {
  Records records;
  records.recipients.clear();
  records.Add(kTo, "日本 Łódź<a@x.example>");
  records.Attach(folder.Write("日本.pdf", "x"), "Łódź.pdf");
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;
  EXPECT_THAT(Message().to, ElementsAre(Mailbox{"日本 Łódź", "a@x.example"}));
  EXPECT_EQ(Message().attachments.at(0).name, "Łódź.pdf");
  EXPECT_EQ(records.recipients[0].Name, "日本 Łódź<a@x.example>");
}

TEST_F(LibreriaMapi, ARecipientWithoutAClassKeepsTheMessageBack) {
  for (const std::int32_t kind : {0, 4, -1}) {
    Records records;
    records.Add(kind, "Anna<anna@x.example>");
    EXPECT_EQ(records.Send(mapi), kBadRecipientType) << kind;
  }
  EXPECT_FALSE(Exists("argv"));
}

TEST_F(LibreriaMapi, ARecipientIsResolvedFromAddressOrName) {
  struct Case {
    const char* name;
    const char* address;
    std::int32_t want;
    const char* recipient;
  };
  const Case cases[] = {
      {"Anna", "SMTP:anna@x.example", 0, "anna@x.example"},
      {"Anna", " smtp:anna@x.example ", 0, "anna@x.example"},
      {"Anna", "anna@x.example", 0, "anna@x.example"},
      {"Anna<sbagliata>", "anna@x.example", 0, "anna@x.example"},
      {"anna@x.example", "", 0, "anna@x.example"},
      {"Anna<SMTP:anna@x.example>", "", 0, "anna@x.example"},
      {"Anna<anna>", "", 0, "anna"},  // a user of this machine
      {"Anna<anna@città.example>", "", 0, "anna@xn--citt-3na.example"},
      {"Anna", "", kUnknownRecipient, ""},
      {"Anna<>", "", kUnknownRecipient, ""},
      {"", "", kUnknownRecipient, ""},
      {"Anna", "SMTP:", kUnknownRecipient, ""},
      {"Anna", "FAX:051 123", kInvalidRecipients, ""},
      {"Anna<anna@x.example", "", kInvalidRecipients, ""},
      {"Anna<anna b@x.example>", "", kInvalidRecipients, ""},
      {"Anna<@>", "", kInvalidRecipients, ""},
  };
  for (const Case& c : cases) {
    Records records;
    records.recipients.clear();
    records.Add(kTo, c.name, c.address);
    EXPECT_EQ(records.Send(mapi), c.want) << c.name << "|" << c.address << ": " << mapi.Fine().motivo;
    if (c.want != 0) continue;
    EXPECT_THAT(Recipients(), ElementsAre("--", c.recipient)) << c.name << "|" << c.address;
  }
}

TEST_F(LibreriaMapi, CountsBeyondTheArraysAreRefused) {
  for (const std::int32_t count : {-1, 2, 2'000'000'000}) {
    Records records;
    records.message.RecipCount = count;
    EXPECT_EQ(records.Send(mapi), kFailure) << count;
    records.message.RecipCount = 1;
    records.Attach(folder.Write("a", "a"));
    records.message.FileCount = count;
    EXPECT_EQ(records.Send(mapi), kFailure) << count;
  }
  EXPECT_FALSE(Exists("argv"));
}

TEST_F(LibreriaMapi, OnlyTheRecordsThatAreCountedTakePart) {
  Records records;
  records.Add(kTo, "Di troppo");
  records.Attach(File("manca"));
  records.message.RecipCount = 1;
  records.message.FileCount = 0;
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;
  EXPECT_THAT(Recipients(), SizeIs(2));
}

TEST_F(LibreriaMapi, AMessageWithoutRecipientsIsRefused) {
  Records records;
  records.message.RecipCount = 0;
  EXPECT_EQ(records.Send(mapi), kInvalidRecipients);
  EXPECT_EQ(mapi.Fine().motivo, "Nessun destinatario");
}

TEST_F(LibreriaMapi, ThereIsNoDialogToShow) {
  Records records;
  EXPECT_EQ(mapi.BMAPISendMail(0, 0, records.message, records.recipients, records.files, 8, 0),
            kNotSupported);
}

TEST_F(LibreriaMapi, AReceiptThatTheFlagsAskForGoesToTheUserOfThisMachine) {
  Records records;
  records.message.Flags = 2;
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;
  EXPECT_THAT(Message().Header("Disposition-Notification-To"), HasSubstr("@"));
}

}  // namespace
}  // namespace orve::adapters::mapi
