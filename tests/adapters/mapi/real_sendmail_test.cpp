// A real sendmail, msmtp, in a configuration of the test's own, which delivers to a real server.
#include <filesystem>
#include <string>

#include "adapters/mapi/posta.h"
#include "mapi/failure.h"
#include "support/loopback.h"
#include "support/smtp_server.h"

namespace orve::adapters::mapi {
namespace {

using support::Mailbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class SendmailVero : public Posta {
 protected:
  /// msmtp that delivers to this port of loopback.
  [[nodiscard]] std::string Msmtp(int port) const {
    const std::string configuration =
        folder.Write("msmtprc", "account default\nhost 127.0.0.1\nport " + std::to_string(port) +
                                    "\nfrom utente@macchina.example\nauth off\ntls off\ntimeout 60\n");
    std::filesystem::permissions(configuration,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    return Program(R"(exec /usr/bin/msmtp -C "$D/msmtprc" "$@")", "msmtp");
  }

  /// Bytes of every value.
  static std::string EveryByte(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>((i * 7 + i / 256) % 256));
    return bytes;
  }
};

TEST_F(SendmailVero, TheLibraryDeliversNamesCopiesTextsAndFiles) {
  const support::SmtpServer server;
  Mapi32 mapi(System(Msmtp(server.Port())));
  Records records;
  records.message.Subject = "Fattura n° 12 — perché, €";
  records.message.NoteText = "Così è.\r\n.\r\n..fine\r\n";
  records.Add(kTo, "Società \"Però & C.\", snc<snc@x.example>");
  records.Add(kCc, "Nicolò<nicolo@x.example>");
  records.Add(kBcc, "Segreta<segreta@x.example>");
  records.Add(kBcc, "Strana<-X/dev/null@x.example>");
  records.Attach(folder.Write("città.bin", EveryByte(300'000)), "Città.pdf");
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;

  const support::ReceivedMessage message = server.OnlyMessage();
  EXPECT_EQ(message.sender, "utente@macchina.example");
  EXPECT_THAT(message.recipients, ElementsAre("mario@bianchi.example", "snc@x.example", "nicolo@x.example",
                                              "segreta@x.example", "-X/dev/null@x.example"));
  EXPECT_THAT(message.from, ElementsAre(Mailbox{"", "utente@macchina.example"}));
  EXPECT_THAT(message.to, ElementsAre(Mailbox{"Mario Bianchi", "mario@bianchi.example"},
                                      Mailbox{"Società \"Però & C.\", snc", "snc@x.example"}));
  EXPECT_THAT(message.cc, ElementsAre(Mailbox{"Nicolò", "nicolo@x.example"}));
  EXPECT_THAT(support::ReadFile(message.file), Not(HasSubstr("segreta")));
  EXPECT_EQ(message.subject, "Fattura n° 12 — perché, €");
  EXPECT_EQ(message.body, "Così è.\r\n.\r\n..fine\r\n");
  ASSERT_THAT(message.attachments, SizeIs(1));
  EXPECT_EQ(message.attachments[0].name, "Città.pdf");
  EXPECT_EQ(support::ReadFile(message.attachments[0].content), EveryByte(300'000));
  EXPECT_THAT(message.defects, IsEmpty());
}

TEST_F(SendmailVero, TheControlsDeliverInTheNameOfTheOptions) {
  const support::SmtpServer server;
  MapiOptions options;
  options.sendmail = Msmtp(server.Port());
  options.senderAddress = "ditta@rossi.example";
  options.senderName = "Società Rossi";
  Composed composed(std::make_shared<MailSystem>(options));
  composed.Add("SMTP:segreta@x.example", "Segreta", kBcc);
  composed.control.MsgSubject("Łódź 日本");
  composed.control.MsgReceiptRequested(true);
  composed.control.AttachmentIndex(0);
  composed.control.AttachmentPathName(folder.Write("a.bin", EveryByte(70'000)));
  composed.control.Send();

  const support::ReceivedMessage message = server.OnlyMessage();
  EXPECT_EQ(message.sender, "ditta@rossi.example");
  EXPECT_THAT(message.recipients, ElementsAre("mario@bianchi.example", "segreta@x.example"));
  EXPECT_THAT(message.from, ElementsAre(Mailbox{"Società Rossi", "ditta@rossi.example"}));
  EXPECT_EQ(message.subject, "Łódź 日本");
  EXPECT_EQ(message.Header("Disposition-Notification-To"), "<ditta@rossi.example>");
  EXPECT_EQ(support::ReadFile(message.attachments.at(0).content), EveryByte(70'000));
}

TEST_F(SendmailVero, ARecipientThatTheServerRefusesIsAFailureWithTheServersWords) {
  support::SmtpServerOptions refusing;
  refusing.refused = {"anna@x.example"};
  const support::SmtpServer server(refusing);
  Mapi32 mapi(System(Msmtp(server.Port())));
  Records records;
  records.Add(kCc, "Anna<anna@x.example>");
  EXPECT_NE(records.Send(mapi), 0);
  EXPECT_THAT(mapi.Fine().motivo, HasSubstr("550 5.1.1 Casella inesistente"));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(SendmailVero, AServerThatIsNotThereIsATemporaryFailure) {
  const support::LoopbackSocket nobody;
  Mapi32 mapi(System(Msmtp(nobody.Port())));
  EXPECT_EQ(Records().Send(mapi), kNetworkFailure);
  EXPECT_THAT(mapi.Fine().motivo, HasSubstr("stato 75: "));
}

TEST_F(SendmailVero, AFileThatShrinksMeanwhileLeavesNothingWithTheServer) {
  const support::SmtpServer server;
  const std::string path = folder.MakeLarge("grande.bin", 64U << 20U);
  // The file shrinks when the server has seen its beginning.
  const std::string feed = "(head -c 65536; : > \"$D/grande.bin\"; cat)";
  Mapi32 mapi(System(Program(feed + " | '" + Msmtp(server.Port()) + "' \"$@\"")));
  Records records;
  records.Attach(path);
  EXPECT_EQ(records.Send(mapi), kAttachmentOpenFailure);
  EXPECT_EQ(server.Count(), 0U);
}

}  // namespace
}  // namespace orve::adapters::mapi
