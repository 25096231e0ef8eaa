// What reaches the sendmail command, and what becomes of a message when the command refuses, crashes, hangs
// or is missing.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "adapters/mapi/posta.h"
#include "mapi/failure.h"
#include "support/patience.h"
#include "support/process.h"

namespace orve::adapters::mapi {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class Sendmail : public Posta {
 protected:
  /// Sends the message of the records and returns the number.
  std::int32_t Sent(const std::string& sendmail, Records records = {}) {
    Mapi32 mapi(System(sendmail));
    const std::int32_t number = records.Send(mapi);
    failure = mapi.Fine().motivo;
    mayHaveArrived = mapi.Fine().incerta;
    return number;
  }

  /// The same with a short time-out, for a program that would never end, but long enough for it to write its
  /// number down in the file "pid".
  std::int32_t SentToAHangingProgram(const std::string& sendmail, Records records = {}) {
    const auto attempt = [&](std::chrono::milliseconds timeout) {
      MapiOptions options;
      options.sendmail = sendmail;
      options.timeout = timeout;
      Mapi32 mapi(std::make_shared<MailSystem>(options));
      const std::int32_t number = records.Send(mapi);
      failure = mapi.Fine().motivo;
      mayHaveArrived = mapi.Fine().incerta;
      const auto seconds = std::chrono::ceil<std::chrono::seconds>(timeout).count();
      within = seconds == 1 ? "1 secondo" : std::to_string(seconds) + " secondi";
      return number;
    };
    const auto hung = [&](std::int32_t /*number*/) {
      return Exists("pid") && support::ReadFile(File("pid")).ends_with('\n');
    };
    using std::chrono::milliseconds;
    return support::WithPatience(attempt, hung,
                                 {milliseconds(500), milliseconds(5'000), milliseconds(30'000)});
  }

  /// True once the process whose number is in the file is gone.
  [[nodiscard]] bool Gone(const std::string& file) const {
    const pid_t pid = std::stoi(support::ReadFile(File(file)));
    const auto deadline = std::chrono::steady_clock::now() + support::kLongestRun;
    while (std::chrono::steady_clock::now() < deadline) {
      std::ifstream status("/proc/" + std::to_string(pid) + "/stat");
      std::string line;
      // A killed process that nobody has waited for yet is a zombie.
      if (!std::getline(status, line) || line.find(") Z ") != std::string::npos) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
  }

  std::string failure;
  std::string within;  // the last time-out of a program that hung, in words
  bool mayHaveArrived = false;
};

TEST_F(Sendmail, RecipientsTravelAsArgumentsAfterTheEndOfTheOptions) {
  Records records;
  records.Add(kCc, "Anna<anna@x.example>");
  records.Add(kBcc, "Segreta<segreta@x.example>");
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_THAT(Arguments(),
              ElementsAre("-i", "--", "mario@bianchi.example", "anna@x.example", "segreta@x.example"));
}

TEST_F(Sendmail, ABlindCopyStandsNowhereInTheMessage) {
  Records records;
  records.Add(kBcc, "Segreta<segreta@x.example>");
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_THAT(Input(), AllOf(Not(HasSubstr("egreta")), Not(HasSubstr("Bcc"))));
}

TEST_F(Sendmail, AMessageOfBlindCopiesAloneNamesNobody) {
  Records records;
  records.recipients.clear();
  records.Add(kBcc, "Segreta<segreta@x.example>");
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_EQ(Message().Header("To"), "undisclosed-recipients:;");
}

TEST_F(Sendmail, AnAddressThatBeginsLikeAnOptionIsAnAddress) {
  Records records;
  records.recipients.clear();
  records.Add(kTo, "<-oQ/tmp@x.example>");
  records.Add(kTo, "<--help@x.example>");
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_THAT(Recipients(), ElementsAre("--", "-oQ/tmp@x.example", "--help@x.example"));
}

TEST_F(Sendmail, NoShellLooksAtAnAddress) {
  Records records;
  records.recipients.clear();
  records.Add(kTo, "<$(touch$IFS'" + File("colpito") + "')`id`|x&@x.example>");
  records.Add(kTo, "<*?~{a}!#%'@x.example>");
  // The first one contains brackets, which no plain address may.
  EXPECT_EQ(Sent(Recorder(), records), kInvalidRecipients);
  records.recipients.erase(records.recipients.begin());
  records.message.RecipCount = 1;
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_THAT(Recipients(), ElementsAre("--", "*?~{a}!#%'@x.example"));
  EXPECT_FALSE(Exists("colpito"));
}

TEST_F(Sendmail, ALineEndInAnAddressReachesNeitherArgumentNorHeader) {
  for (const char* address : {"<a@x.example\r\nBcc: b@x.example>", "<a\n@x.example>", "<a@x.example\n>"}) {
    Records records;
    records.Add(kTo, address);
    EXPECT_EQ(Sent(Recorder(), records), kInvalidRecipients) << address;
    EXPECT_FALSE(Exists("argv"));
  }
}

TEST_F(Sendmail, EveryRecipientOfALongListIsServedOnce) {
  Records records;
  std::vector<std::string> want = {"--", "mario@bianchi.example"};
  for (int i = 0; i < 5000; ++i) {
    const std::string address = "destinatario." + std::to_string(i) + "@azienda.example";
    records.Add(i % 3 + 1, "Destinatario numero " + std::to_string(i) + "<" + address + ">");
    want.push_back(address);
  }
  records.Add(kCc, "Ancora Mario<mario@BIANCHI.example>");
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_EQ(Recipients(), want);
}

TEST_F(Sendmail, MoreRecipientsThanACommandLineHoldsAreTooMany) {
  Records records;
  const std::string domain = "@" + std::string(200, 'a') + ".example";
  for (int i = 0; i < 20'000; ++i) records.Add(kBcc, "<d" + std::to_string(i) + domain + ">");
  EXPECT_EQ(Sent(Recorder(), records), kTooManyRecipients);
  EXPECT_EQ(failure, "20001 destinatari sono troppi per un solo messaggio");
  EXPECT_FALSE(Exists("argv"));
}

TEST_F(Sendmail, TheSenderOfTheOptionsStandsInTheEnvelopeAndInTheMessage) {
  MapiOptions options;
  options.sendmail = Recorder();
  options.senderAddress = "-ditta@rossi.example";
  options.senderName = "Società Rossi";
  Mapi32 mapi(std::make_shared<MailSystem>(options));
  Records records;
  EXPECT_EQ(records.Send(mapi), 0) << mapi.Fine().motivo;
  EXPECT_THAT(Arguments(), ElementsAre("-i", "-f", "-ditta@rossi.example", "--", "mario@bianchi.example"));
  EXPECT_THAT(Message().from, ElementsAre(support::Mailbox{"Società Rossi", "-ditta@rossi.example"}));
  EXPECT_THAT(Message().Header("Message-ID"), testing::EndsWith("@rossi.example>"));
}

TEST_F(Sendmail, ASenderOfTheOptionsThatIsNoAddressIsNoLogOn) {
  MapiOptions options;
  options.sendmail = Recorder();
  options.senderAddress = "ditta rossi";
  Mapi32 mapi(std::make_shared<MailSystem>(options));
  EXPECT_EQ(Records().Send(mapi), kLoginFailure);
}

TEST_F(Sendmail, WithoutASenderTheMailSystemNamesIt) {
  EXPECT_EQ(Sent(Recorder()), 0) << failure;
  EXPECT_THAT(Arguments(), ElementsAre("-i", "--", "mario@bianchi.example"));
  EXPECT_EQ(Message().Header("From"), "");
  EXPECT_NE(Message().Header("Message-ID"), "");
}

TEST_F(Sendmail, TheMessageComesWithTheLineEndsOfUnixAndWithItsLoneDots) {
  Records records;
  records.message.NoteText = "prima\r\n.\r\n..\r\nultima";
  records.Attach(folder.Write("a.txt", "x\r\ny"));
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  EXPECT_THAT(Input(), Not(HasSubstr("\r")));
  EXPECT_THAT(Input(), HasSubstr("\n\nprima\n.\n..\nultima\n"));
  EXPECT_EQ(support::ReadFile(Message().attachments.at(0).content), "x\r\ny");
}

TEST_F(Sendmail, AnExitStatusBecomesTheNumberThatSaysTheSame) {
  struct Case {
    int status;
    std::int32_t want;
  };
  const Case cases[] = {{1, 2},  {64, 2}, {65, 17}, {66, 2},  {67, 14}, {68, 14}, {69, 2}, {70, 2}, {71, 2},
                        {72, 2}, {73, 4}, {74, 2},  {75, 23}, {76, 23}, {77, 6},  {78, 3}, {255, 2}};
  for (const auto& [status, want] : cases) {
    EXPECT_EQ(Sent(Recorder("exit " + std::to_string(status))), want) << status;
    EXPECT_EQ(failure, "«" + File("sendmail") + "» terminato con stato " + std::to_string(status));
  }
}

TEST_F(Sendmail, WhatTheProgramSaysStandsInTheFailureOnOneLine) {
  EXPECT_EQ(Sent(Recorder("echo prima; printf 'seconda\\r\\n\\033[31m' >&2; exit 75")), kNetworkFailure);
  EXPECT_EQ(failure, "«" + File("sendmail") + "» terminato con stato 75: prima seconda   [31m");
}

TEST_F(Sendmail, AProgramThatSaysALotIsHeardToTheEndAndQuotedInPart) {
  Records records;
  records.message.NoteText = std::string(1'000'000, 'x');
  // It speaks before it reads: a caller that only wrote would wait for ever.
  const std::string program = Program("head -c 3000000 /dev/zero | tr '\\0' e >&2; cat > /dev/null; exit 69");
  EXPECT_EQ(Sent(program, records), kFailure);
  EXPECT_THAT(failure, HasSubstr(": eeee"));
  EXPECT_LT(failure.size(), 5000U);
}

TEST_F(Sendmail, AProgramThatASignalEndsHasFailed) {
  EXPECT_EQ(Sent(Recorder("kill -SEGV $$")), kFailure);
  EXPECT_EQ(failure, "«" + File("sendmail") + "» terminato dal segnale 11");
  EXPECT_TRUE(mayHaveArrived);
}

TEST_F(Sendmail, AProgramThatStopsReadingHasNotTakenTheMessageWhateverItSays) {
  Records records;
  records.Attach(folder.MakeLarge("grande.bin", 4U << 20U));
  EXPECT_EQ(Sent(Program("head -c 100 > /dev/null; exit 0"), records), kFailure);
  EXPECT_EQ(failure, "«" + File("sendmail") + "» non ha letto tutto il messaggio");
  EXPECT_TRUE(mayHaveArrived);
  EXPECT_EQ(Sent(Program("exec 0<&-; echo sconosciuto >&2; exit 67"), records), kUnknownRecipient);
  EXPECT_THAT(failure, HasSubstr("stato 67: sconosciuto"));
  EXPECT_FALSE(mayHaveArrived);
}

TEST_F(Sendmail, AProgramThatDoesNotReadIsEndedWithAllThatItStarted) {
  Records records;
  records.Attach(folder.MakeLarge("grande.bin", 4U << 20U));
  EXPECT_EQ(SentToAHangingProgram(Program("sleep 600 & echo $! > \"$D/figlio\"; echo $$ > \"$D/pid\"; wait"),
                                  records),
            kFailure);
  EXPECT_EQ(failure, "«" + File("sendmail") + "» non ha letto il messaggio entro " + within);
  EXPECT_FALSE(mayHaveArrived);
  EXPECT_TRUE(Gone("pid"));
  EXPECT_TRUE(Gone("figlio"));
}

TEST_F(Sendmail, AProgramThatDoesNotEndIsEnded) {
  EXPECT_EQ(SentToAHangingProgram(Recorder("echo $$ > \"$D/pid\"; trap '' TERM; while :; do sleep 1; done")),
            kFailure);
  EXPECT_EQ(failure, "«" + File("sendmail") + "» non ha finito entro " + within);
  EXPECT_TRUE(mayHaveArrived);
  EXPECT_TRUE(Gone("pid"));
}

TEST_F(Sendmail, WhatTheProgramLeavesRunningIsNotWaitedFor) {
  // This is how a mail system delivers in the background.
  const std::string program = Recorder("sleep 600 & echo $! > \"$D/figlio\"; exit 0");
  const std::int32_t number = Sent(program);
  EXPECT_EQ(::kill(std::stoi(support::ReadFile(File("figlio"))), SIGKILL), 0);
  EXPECT_EQ(number, 0) << failure;
}

TEST_F(Sendmail, AFileThatShrinksMeanwhileLeavesTheProgramWithoutAnEndOfTheMessage) {
  const std::string path = folder.MakeLarge("grande.bin", 8U << 20U);
  const std::string program = Program(
      "echo $$ > \"$D/pid\"; head -c 65536 > /dev/null; : > \"$D/grande.bin\"; cat > /dev/null; "
      "echo fine > \"$D/fine\"");
  Records records;
  records.Attach(path);
  EXPECT_EQ(Sent(program, records), kAttachmentOpenFailure);
  EXPECT_THAT(failure, HasSubstr("si è accorciato"));
  EXPECT_TRUE(Gone("pid"));
  EXPECT_FALSE(Exists("fine"));
}

TEST_F(Sendmail, AFileThatIsNotThereKeepsTheWholeMessageBack) {
  Records records;
  records.Attach(folder.Write("a.pdf", "a"));
  records.Attach(File("manca.pdf"));
  EXPECT_EQ(Sent(Recorder(), records), kAttachmentNotFound);
  EXPECT_THAT(failure, HasSubstr("manca.pdf"));
  records.files.back().PathName = folder.Path().string();
  EXPECT_EQ(Sent(Recorder(), records), kAttachmentOpenFailure);
  records.files.back().PathName = "";
  EXPECT_EQ(Sent(Recorder(), records), kAttachmentNotFound);
  EXPECT_FALSE(Exists("argv"));
}

TEST_F(Sendmail, APathOfTheLibraryNamesItsFileAndTheFileNameIsWhatTheReaderSees) {
  std::filesystem::create_directory(folder.Path() / "città");
  std::string path = folder.Write("città/fattura.bin", std::string("\0\r\n.\xFF", 5));
  for (char& c : path) c = c == '/' ? '\\' : c;
  Records records;
  records.Attach(path, "Fattura perché.pdf");
  records.Attach(path);
  records.Attach(path, "../../etc/passwd");
  EXPECT_EQ(Sent(Recorder(), records), 0) << failure;
  const support::ReceivedMessage message = Message();
  ASSERT_THAT(message.attachments, SizeIs(3));
  EXPECT_EQ(message.attachments[0].name, "Fattura perché.pdf");
  EXPECT_EQ(message.attachments[0].type, "application/pdf");
  EXPECT_EQ(message.attachments[1].name, "fattura.bin");
  EXPECT_EQ(message.attachments[2].name, "passwd");
  for (const auto& attachment : message.attachments) {
    EXPECT_EQ(support::ReadFile(attachment.content), std::string("\0\r\n.\xFF", 5));
  }
}

TEST_F(Sendmail, AProgramThatCannotBeStartedIsToldApart) {
  const std::string plain = folder.Write("semplice", "x");
  std::filesystem::permissions(plain, std::filesystem::perms::owner_read);
  EXPECT_EQ(Sent(File("manca")), kLoginFailure);
  EXPECT_EQ(failure, "Il comando per l'invio della posta «" + File("manca") + "» non esiste");
  EXPECT_EQ(Sent(""), kLoginFailure);
  EXPECT_EQ(Sent(folder.Path().string()), kLoginFailure);
  EXPECT_EQ(failure,
            "Il comando per l'invio della posta «" + folder.Path().string() + "» non si può eseguire");
  EXPECT_EQ(Sent(plain), kLoginFailure);
  // It looks like a program but is not one.
  std::filesystem::permissions(plain, std::filesystem::perms::owner_all);
  EXPECT_EQ(Sent(plain), kFailure);
  EXPECT_THAT(failure, StartsWith("Impossibile avviare «" + plain + "»: "));
}

TEST_F(Sendmail, TheProgramGetsNoDescriptorOfTheApplication) {
  // One without O_CLOEXEC, as left by a careless library.
  const int open = ::open("/dev/null", O_RDONLY);
  const int high = ::fcntl(open, F_DUPFD, 200);
  EXPECT_EQ(Sent(Recorder("ls /proc/self/fd > \"$D/fd\"")), 0) << failure;
  ::close(high);
  ::close(open);
  const std::string descriptors = support::ReadFile(File("fd"));
  EXPECT_EQ(descriptors.substr(0, 6), "0\n1\n2\n");
  EXPECT_THAT(descriptors, Not(HasSubstr("200")));
}

TEST_F(Sendmail, TheProgramGetsOfTheEnvironmentWhatAMailCommandNeedsAlone) {
  ASSERT_EQ(::setenv("ORVE_MAIL_DB", "odbc:UID=posta;PWD=segreta-7391", 1), 0);
  ASSERT_EQ(::setenv("LD_ORVE_PROVA", "x", 1), 0);
  ASSERT_EQ(::setenv("TZ", "Europe/Rome", 1), 0);
  ASSERT_EQ(::setenv("LC_ALL", "C.UTF-8", 1), 0);
  ASSERT_EQ(::setenv("KRB5CCNAME", "FILE:/biglietti", 1), 0);
  ASSERT_EQ(::setenv("XDG_DATA_HOME", "/dati", 1), 0);
  EXPECT_EQ(Sent(Recorder("env > \"$D/env\"")), 0) << failure;
  for (const char* name : {"ORVE_MAIL_DB", "LD_ORVE_PROVA", "TZ", "LC_ALL", "KRB5CCNAME", "XDG_DATA_HOME"})
    ::unsetenv(name);
  const std::string environment = support::ReadFile(File("env"));
  EXPECT_THAT(environment,
              AllOf(HasSubstr("PATH="), HasSubstr("TZ=Europe/Rome\n"), HasSubstr("LC_ALL=C.UTF-8\n"),
                    HasSubstr("KRB5CCNAME=FILE:/biglietti\n"), HasSubstr("XDG_DATA_HOME=/dati\n")));
  EXPECT_THAT(environment, AllOf(Not(HasSubstr("7391")), Not(HasSubstr("LD_ORVE_PROVA"))));
}

TEST_F(Sendmail, ASignalThatTheApplicationIgnoresIsNotIgnoredByTheProgram) {
  ::signal(SIGPIPE, SIG_IGN);
  const std::int32_t number = Sent(Recorder("grep SigIgn /proc/self/status > \"$D/ignorati\""));
  ::signal(SIGPIPE, SIG_DFL);
  EXPECT_EQ(number, 0) << failure;
  const std::string ignored =
      support::ReadFile(File("ignorati"));  // a name, a tabulator, a mask in hexadecimal
  constexpr unsigned long long kPipeBit = 1ULL << (SIGPIPE - 1);
  EXPECT_EQ(std::stoull(ignored.substr(ignored.find('\t')), nullptr, 16) & kPipeBit, 0U);
}

TEST_F(Sendmail, AnApplicationThatWaitsForNoChildLearnsThatTheOutcomeIsUnknown) {
  ::signal(SIGCHLD, SIG_IGN);
  const std::int32_t number = Sent(Recorder());
  ::signal(SIGCHLD, SIG_DFL);
  EXPECT_EQ(number, kFailure);
  EXPECT_THAT(failure, HasSubstr("esito sconosciuto"));
  EXPECT_TRUE(mayHaveArrived);
}

TEST_F(Sendmail, AMessageLeavesAlsoFromAnApplicationWithoutStandardStreams) {
  const std::string program = Recorder();
  EXPECT_EXIT(
      {
        ::close(STDIN_FILENO);
        ::close(STDOUT_FILENO);
        ::close(STDERR_FILENO);
        ::_exit(Sent(program) == 0 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_THAT(Input(), HasSubstr("Subject: Fattura 12\n"));
}

TEST_F(Sendmail, MemoryStaysFlatWhateverAnAttachmentWeighs) {
  const auto peak = [] {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
      if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
    }
    return -1L;
  };
  const std::string program = Program("wc -c > \"$D/byte\"");
  EXPECT_EQ(Sent(program), 0) << failure;
  Records records;
  records.Attach(folder.MakeLarge("grande.bin", 200U << 20U));
  std::ofstream("/proc/self/clear_refs") << "5";
  const long before = peak();
  EXPECT_EQ(Sent(program, records), 0) << failure;
  EXPECT_LT(peak() - before, 8 * 1024);
  EXPECT_GT(std::stoll(support::ReadFile(File("byte"))), 270LL << 20);
}

}  // namespace
}  // namespace orve::adapters::mapi
