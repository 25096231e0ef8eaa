// The two controls: session, slots, and the errors that they raise.
#include "mapi/controls.h"

#include <filesystem>
#include <string>

#include "adapters/mapi/posta.h"
#include "fakes/errori.h"
#include "mapi/failure.h"

namespace orve::adapters::mapi {
namespace {

using support::Mailbox;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ControlliMapi : public Posta {
 protected:
  void Attach(MessagesControl& control, std::int16_t slot, const std::string& path, const std::string& name) {
    control.AttachmentIndex(slot);
    control.AttachmentPosition(slot);
    control.AttachmentPathName(path);
    control.AttachmentName(name);
  }

  std::shared_ptr<MailSystem> system = System(Recorder());
};

TEST_F(ControlliMapi, AMessageArrivesAsItsSlotsSay) {
  Composed composed(system);
  composed.Add("SMTP:anna@x.example", "Rossi, Anna", kCc);
  composed.Add("SMTP:segreta@x.example", "Segreta", kBcc);
  composed.control.MsgSubject("Łódź — perché €");
  composed.control.MsgNoteText(" \rCosì 日本");
  Attach(composed.control, 0, folder.Write("a.bin", "uno"), "Città.pdf");
  Attach(composed.control, 1, folder.Write("b.bin", "due"), "b.bin");
  composed.control.Send();
  EXPECT_THAT(Recipients(),
              ElementsAre("--", "mario@bianchi.example", "anna@x.example", "segreta@x.example"));
  const support::ReceivedMessage message = Message();
  EXPECT_EQ(message.subject, "Łódź — perché €");
  EXPECT_EQ(message.body, " \r\nCosì 日本\r\n");
  EXPECT_THAT(message.to, ElementsAre(Mailbox{"Mario Bianchi", "mario@bianchi.example"}));
  EXPECT_THAT(message.cc, ElementsAre(Mailbox{"Rossi, Anna", "anna@x.example"}));
  ASSERT_THAT(message.attachments, SizeIs(2));
  EXPECT_EQ(message.attachments[0].name, "Città.pdf");
  EXPECT_EQ(support::ReadFile(message.attachments[0].content), "uno");
  EXPECT_EQ(message.attachments[1].name, "b.bin");
  EXPECT_THAT(message.defects, IsEmpty());
}

TEST_F(ControlliMapi, ASlotThatIsSelectedAgainIsFilledAnew) {
  Composed composed(system);
  composed.Add("SMTP:anna@x.example", "Anna", kCc);
  composed.control.RecipIndex(0);
  composed.control.RecipAddress("SMTP:nuovo@x.example");
  composed.control.Send();
  EXPECT_THAT(Message().to, ElementsAre(Mailbox{"Mario Bianchi", "nuovo@x.example"}));
  EXPECT_THAT(Message().cc, SizeIs(1));
}

TEST_F(ControlliMapi, ANewSlotIsATo) {
  Composed composed(system);
  composed.control.RecipIndex(1);
  composed.control.RecipAddress("SMTP:anna@x.example");
  composed.control.Send();
  EXPECT_THAT(Message().to,
              ElementsAre(Mailbox{"Mario Bianchi", "mario@bianchi.example"}, Mailbox{"", "anna@x.example"}));
}

TEST_F(ControlliMapi, AnIndexOfNoSlotIsRefused) {
  Composed composed(system);
  for (const int index : {-1, -32768, 2, 32767}) {
    EXPECT_EQ(fakes::NumeroDi([&] { composed.control.RecipIndex(static_cast<std::int16_t>(index)); }), 9)
        << index;
  }
  for (const int index : {-1, 1, 32767}) {
    EXPECT_EQ(fakes::NumeroDi([&] { composed.control.AttachmentIndex(static_cast<std::int16_t>(index)); }), 9)
        << index;
  }
  // The slot selected before stays selected.
  composed.control.RecipDisplayName("Ancora lui");
  composed.control.Send();
  EXPECT_THAT(Message().to, ElementsAre(Mailbox{"Ancora lui", "mario@bianchi.example"}));
}

TEST_F(ControlliMapi, AMemberOfASlotWantsOneSelected) {
  MessagesControl control(system);
  control.Compose();
  EXPECT_EQ(fakes::NumeroDi([&] { control.RecipAddress("SMTP:a@x.example"); }), 9);
  EXPECT_EQ(fakes::NumeroDi([&] { control.RecipDisplayName("A"); }), 9);
  EXPECT_EQ(fakes::NumeroDi([&] { control.RecipType(1); }), 9);
  EXPECT_EQ(fakes::NumeroDi([&] { control.AttachmentPosition(0); }), 9);
  EXPECT_EQ(fakes::NumeroDi([&] { control.AttachmentPathName(File("sendmail")); }), 9);
  EXPECT_EQ(fakes::NumeroDi([&] { control.AttachmentName("a"); }), 9);
}

TEST_F(ControlliMapi, ATypeOfRecipientThatIsNoneIsRefused) {
  Composed composed(system);
  for (const std::int32_t type : {0, 4, -1}) {
    EXPECT_EQ(fakes::NumeroDi([&] { composed.control.RecipType(type); }), 32015) << type;
  }
}

TEST_F(ControlliMapi, AFileThatCannotBeAttachedIsRefusedAndTheMailLeavesWithoutIt) {
  Composed composed(system);
  Attach(composed.control, 0, folder.Write("a.pdf", "uno"), "a.pdf");
  composed.control.AttachmentIndex(1);
  composed.control.AttachmentPosition(1);
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.AttachmentPathName(File("manca.pdf")); }), 32011);
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.AttachmentPathName(folder.Path().string()); }), 32012);
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.AttachmentPathName(""); }), 32011);
  composed.control.Send();
  ASSERT_THAT(Message().attachments, SizeIs(1));
  EXPECT_EQ(Message().attachments[0].name, "a.pdf");
}

TEST_F(ControlliMapi, AFileThatVanishesBeforeTheSendKeepsTheMessageBack) {
  Composed composed(system);
  Attach(composed.control, 0, folder.Write("a.pdf", "uno"), "a.pdf");
  std::filesystem::remove(File("a.pdf"));
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), 32011);
  EXPECT_FALSE(Exists("argv"));
}

TEST_F(ControlliMapi, APathOfTheLibraryNamesItsFile) {
  Composed composed(system);
  std::string path = folder.Write("a.pdf", "uno");
  for (char& c : path) c = c == '/' ? '\\' : c;
  Attach(composed.control, 0, path, "a.pdf");
  composed.control.Send();
  EXPECT_EQ(support::ReadFile(Message().attachments.at(0).content), "uno");
}

TEST_F(ControlliMapi, AReceiptGoesToTheSender) {
  MapiOptions options;
  options.sendmail = Recorder();
  options.senderAddress = "ditta@rossi.example";
  Composed composed(std::make_shared<MailSystem>(options));
  composed.control.MsgReceiptRequested(true);
  composed.control.Send();
  EXPECT_EQ(Message().Header("Disposition-Notification-To"), "<ditta@rossi.example>");
  composed.control.MsgReceiptRequested(false);
  composed.control.Send();
  EXPECT_EQ(Message().Header("Disposition-Notification-To"), "");
}

TEST_F(ControlliMapi, ComposeBeginsANewMessage) {
  Composed composed(system);
  Attach(composed.control, 0, folder.Write("a.pdf", "uno"), "a.pdf");
  composed.control.MsgReceiptRequested(true);
  composed.control.Compose();
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), 32057);
  composed.next = 0;
  composed.Add("SMTP:anna@x.example", "Anna", kTo);
  composed.control.Send();
  EXPECT_THAT(Recipients(), ElementsAre("--", "anna@x.example"));
  EXPECT_EQ(Message().subject, "");
  EXPECT_THAT(Message().attachments, IsEmpty());
  EXPECT_EQ(Message().Header("Disposition-Notification-To"), "");
}

TEST_F(ControlliMapi, AMessageThatWasRefusedIsStillThere) {
  Composed composed(System(Program(R"(cat > /dev/null; test -e "$D/aperto" || exit 75; touch "$D/preso")")));
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), 32023);
  static_cast<void>(folder.Write("aperto", ""));
  composed.control.Send();
  EXPECT_TRUE(Exists("preso"));
  EXPECT_EQ(composed.control.Fine().motivo, "");
}

TEST_F(ControlliMapi, TheErrorNamesTheControlAndSaysWhatWentWrong) {
  Composed composed(System(Recorder("echo 'casella piena' >&2; exit 73")));
  try {
    composed.control.Send();
    FAIL() << "nothing was raised";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 32004);
    EXPECT_EQ(errore.Sorgente(), "MSMAPI.MAPIMessages");
    EXPECT_EQ(errore.Descrizione(), "«" + File("sendmail") + "» terminato con stato 73: casella piena");
    EXPECT_EQ(composed.control.Fine().motivo, errore.Descrizione());
  }
}

TEST_F(ControlliMapi, ARecipientThatCannotBeResolvedKeepsTheMessageBack) {
  struct Case {
    const char* address;
    std::int32_t want;
  };
  for (const Case& c : {Case{"SMTP:", 32014}, Case{"", 32014}, Case{"SMTP:a b@x", 32025},
                        Case{"SMTP:a@x.example\r\nBcc: b@x.example", 32025}}) {
    Composed composed(system);
    composed.Add(c.address, "Anna", kTo);
    EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), c.want) << c.address;
  }
  EXPECT_FALSE(Exists("argv"));
}

TEST_F(ControlliMapi, SendWantsASession) {
  Composed composed(system);
  composed.control.SessionID(host::Variant());
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), 32053);
  composed.control.SessionID(std::int32_t{815});
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), 32019);
  composed.control.SessioneID(composed.session.SessionID());
  composed.control.Send();
  composed.session.SignOff();
  EXPECT_EQ(fakes::NumeroDi([&] { composed.control.Send(); }), 32019);
}

TEST_F(ControlliMapi, ASessionIsOpenBetweenSignOnAndSignOff) {
  SessionControl session(system);
  session.DownLoadMail(false);
  session.NewSession(true);
  EXPECT_EQ(fakes::NumeroDi([&] { session.SignOff(); }), 32053);
  EXPECT_EQ(session.SessionID().ToInt32(), 0);
  session.SignOn();
  EXPECT_NE(session.SessionID().ToInt32(), 0);
  EXPECT_EQ(fakes::NumeroDi([&] { session.SignOn(); }), 32050);
  session.SignOff();
  EXPECT_EQ(session.SessionID().ToInt32(), 0);
  EXPECT_EQ(fakes::NumeroDi([&] { session.SignOff(); }), 32053);
  session.SignOn();
}

TEST_F(ControlliMapi, TwoSessionsAreTwo) {
  Composed first(system);
  Composed second(system);
  EXPECT_NE(first.session.SessionID().ToInt32(), second.session.SessionID().ToInt32());
  first.session.SignOff();
  EXPECT_EQ(fakes::NumeroDi([&] { first.control.Send(); }), 32019);
  second.control.Send();
}

TEST_F(ControlliMapi, ASessionEndsWithItsControl) {
  MessagesControl control(system);
  {
    SessionControl session(system);
    session.SignOn();
    control.SessionID(session.SessionID());
  }
  EXPECT_EQ(fakes::NumeroDi([&] { control.Send(); }), 32019);
}

TEST_F(ControlliMapi, SignOnFailsWithoutAMailSystem) {
  SessionControl session(System(File("manca")));
  try {
    session.SignOn();
    FAIL() << "nothing was raised";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 32003);
    EXPECT_EQ(errore.Sorgente(), "MSMAPI.MAPISession");
    EXPECT_EQ(errore.Descrizione(), "Il comando per l'invio della posta «" + File("manca") + "» non esiste");
  }
  EXPECT_EQ(session.SessionID().ToInt32(), 0);
}

}  // namespace
}  // namespace orve::adapters::mapi
