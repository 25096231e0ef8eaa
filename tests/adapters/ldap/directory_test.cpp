// The look-up of the person at the machine, and the operations beneath it, against a real directory server
// and against servers that misbehave.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "addressing/active_directory.h"
#include "fakes/errori.h"
#include "ldap/account_name.h"
#include "ldap/allowance.h"
#include "ldap/entry_reader.h"
#include "ldap/failure.h"
#include "ldap/ldap_directory.h"
#include "orve-mailserver/host/system.h"
#include "posix/system.h"
#include "support/certificates.h"
#include "support/ldap_server.h"
#include "support/loopback.h"
#include "support/patience.h"
#include "support/scripted_server.h"
#include "support/temp_dir.h"

// Only there under the address sanitizer.
extern "C" __attribute__((weak)) void __lsan_disable();  // NOLINT: the name is the sanitizer's
extern "C" __attribute__((weak)) void __lsan_enable();   // NOLINT: the name is the sanitizer's

namespace orve::adapters::ldap {

namespace {

// libldap leaks the notices that nobody asked for; the leak is its own, and the bound on it is ours.
class WithoutLeaksOfLibldap {
 public:
  WithoutLeaksOfLibldap() {
    if (__lsan_disable != nullptr) __lsan_disable();
  }
  WithoutLeaksOfLibldap(const WithoutLeaksOfLibldap&) = delete;
  WithoutLeaksOfLibldap& operator=(const WithoutLeaksOfLibldap&) = delete;
  WithoutLeaksOfLibldap(WithoutLeaksOfLibldap&&) = delete;
  WithoutLeaksOfLibldap& operator=(WithoutLeaksOfLibldap&&) = delete;
  ~WithoutLeaksOfLibldap() {
    if (__lsan_enable != nullptr) __lsan_enable();
  }
};

using fakes::EventualeErroreDi;
using MDL_ACTIVEDIRECTORY::DatiUtenteDirectory;
using MDL_ACTIVEDIRECTORY::GetDatiUtenteDirectory;
using std::chrono::milliseconds;
using support::LdapServer;
using support::LdapServerOptions;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

using namespace std::string_literals;

constexpr auto kLong = milliseconds(30'000);
constexpr auto kShort = milliseconds(300);

const std::vector<std::string> kNothing(8);

class Directory : public ::testing::Test {
 protected:
  /// With encryption on offer, under a certificate for 127.0.0.1.
  LdapServerOptions Encrypted(const std::string& names = "IP:127.0.0.1", bool expired = false) {
    LdapServerOptions server;
    const support::Certificate issued = authority.Issue("server", names, expired);
    server.certificate = issued.certificate;
    server.key = issued.key;
    return server;
  }

  /// As the reader, with the password.
  LdapOptions AsReader(const std::string& url) const {
    LdapOptions options;
    options.server = url;
    options.caFile = authority.CaFile().string();
    options.access = Access::kSimple;
    options.user = LdapServer::kReader;
    options.password = LdapServer::kPassword;
    options.connectTimeout = kLong;
    options.operationTimeout = kLong;
    return options;
  }

  static LdapOptions Anonymous(const std::string& url) {
    LdapOptions options;
    options.server = url;
    options.startTls = false;
    options.access = Access::kAnonymous;
    options.connectTimeout = kLong;
    options.operationTimeout = kLong;
    return options;
  }

  bool LookUp(const LdapOptions& options, const std::string& user = "arossi") {
    LdapDirectory directory(options);
    return GetDatiUtenteDirectory(directory, user, person);
  }

  /// What the first step of a look-up raises.
  static std::optional<LdapFailure> FailureOf(const LdapOptions& options,
                                              const std::string& path = "LDAP://rootDSE") {
    LdapDirectory directory(options);
    try {
      static_cast<void>(directory.ApriOggetto(path));
    } catch (const LdapFailure& failure) {
      return failure;
    }
    return std::nullopt;
  }

  std::vector<std::string> Fields() const {
    return {person.FirstName, person.LastName,        person.EmployeeID, person.Title,
            person.Division,  person.TelephoneNumber, person.FaxNumber,  person.EmailAddress};
  }

  support::TempDir folder;
  support::TestAuthority authority{folder.Path()};
  DatiUtenteDirectory person;
};

// A network that knows its user by this name.
class ReteDi : public host::Rete {
 public:
  explicit ReteDi(std::string nome) : nome_(std::move(nome)) {}
  std::int32_t WNetGetUserA(std::string& buffer) override { return posix::NomeNelBuffer(nome_, buffer); }

 private:
  std::string nome_;
};

// What this process has open.
std::set<std::string> Descriptors() {
  std::set<std::string> open;
  for (const auto& one : std::filesystem::directory_iterator("/proc/self/fd")) {
    open.insert(one.path().filename().string());
  }
  // The descriptor used to list them is free again for the next connection.
  std::erase_if(open, [](const std::string& one) { return ::fcntl(std::stoi(one), F_GETFD) < 0; });
  return open;
}

// This end of the connections that the process has open.
std::set<int> OwnPorts() {
  std::set<int> ports;
  for (const std::string& descriptor : Descriptors()) {
    sockaddr_in own{};
    socklen_t size = sizeof own;
    void* const place = &own;
    const bool socket = ::getsockname(std::stoi(descriptor), static_cast<sockaddr*>(place), &size) == 0;
    if (socket && own.sin_family == AF_INET) ports.insert(ntohs(own.sin_port));
  }
  return ports;
}

// Replaces the connections that the process has made since with a line that nobody answers.
class CutLine {
 public:
  CutLine() {
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_.data()), 0);
    before_ = Descriptors();
  }
  CutLine(const CutLine&) = delete;
  CutLine& operator=(const CutLine&) = delete;
  CutLine(CutLine&&) = delete;
  CutLine& operator=(CutLine&&) = delete;
  ~CutLine() {
    for (const int end : ends_) ::close(end);
  }

  void Cut() {
    int replaced = 0;
    for (const std::string& one : Descriptors()) {
      const int descriptor = std::stoi(one);
      if (before_.contains(one)) continue;
      ASSERT_EQ(::dup3(ends_[0], descriptor, O_CLOEXEC), descriptor);
      ++replaced;
    }
    ASSERT_GT(replaced, 0);
  }

 private:
  std::set<std::string> before_;
  std::array<int, 2> ends_{-1, -1};
};

// The protocol's own notation: kind, length and content, and what is built from them.
std::string Element(char kind, const std::string& content) {
  std::string element(1, kind);
  element += '\x84';  // four bytes of length
  for (const unsigned shift : {24U, 16U, 8U, 0U})
    element += static_cast<char>((content.size() >> shift) & 0xffU);
  return element + content;
}
std::string Result(char kind, char code) {
  return Element(kind, "\x0a\x01"s + code + "\x04\0\x04\0"s);
}
std::string Found(const std::string& attributes) {
  return Element('\x64', "\x04\0"s + Element('\x30', attributes));
}
std::string Answer(char message, const std::string& operation) {
  return Element('\x30', "\x02\x01"s + message + operation);
}
// Not the answer to anything. libldap itself knows only one notice, that the server is disconnecting, and
// keeps the others.
std::string Notice(const std::string& words) {
  return Element('\x30', "\x02\x01\0"s + Element('\x78', "\x0a\x01\x34\x04\0"s + Element('\x04', words) +
                                                             Element('\x8a', "1.2.3.4.5")));
}
const std::string kBound = Result('\x61', 0);

support::ScriptedServer Silent() {
  return support::ScriptedServer({ThenStall(support::Say(""))});
}

std::string Url(const support::ScriptedServer& server, const std::string& scheme = "ldap") {
  return scheme + "://127.0.0.1:" + std::to_string(server.Port());
}

}  // namespace

TEST_F(Directory, APersonIsFoundWithAllThatTheDirectoryKnows) {
  const LdapServer server(Encrypted());
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl())));
  EXPECT_THAT(Fields(), ElementsAre("Anna", "Rossi", "0042", "Responsabile", "Vendite", "+39 02 1234567",
                                    "+39 02 7654321", "anna.rossi@azienda.example"));
}

TEST_F(Directory, AnLdapConnectionIsEncryptedWithStartTlsBeforeThePasswordTravels) {
  LdapServerOptions options = Encrypted();
  options.configuration = {"security simple_bind=128"};  // the server refuses a password in the clear
  const LdapServer server(options);
  EXPECT_TRUE(LookUp(AsReader(server.Url())));
  EXPECT_EQ(person.EmailAddress, "anna.rossi@azienda.example");
}

TEST_F(Directory, TheAccountNameIsComparedWithoutCase) {
  const LdapServer server(Encrypted());
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), "ARossi"));
  EXPECT_EQ(person.LastName, "Rossi");
}

TEST_F(Directory, AnAccentedAccountIsFoundUnderTheNameThatTheNetworkGives) {
  LdapServerOptions server = Encrypted();
  server.entries =
      "dn: cn=Accento,dc=azienda,dc=example\nobjectClass: user\ncn: Accento\n"
      "sAMAccountName:: bmljY29sw7I=\n"  // niccolò
      "objectCategory: person\nmail: niccolo@azienda.example\n";
  const LdapServer started(server);
  ReteDi rete("AZIENDA\\niccolò");
  EXPECT_TRUE(LookUp(AsReader(started.SecureUrl()), MDL_ACTIVEDIRECTORY::GetNomeUtenteRete(rete)));
  EXPECT_EQ(person.EmailAddress, "niccolo@azienda.example");
}

TEST_F(Directory, AnEmptyAccountNameFindsNobody) {
  const LdapServer server(Encrypted());
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), ""));
  EXPECT_EQ(Fields(), kNothing);
}

TEST_F(Directory, NobodyFoundLeavesTheRecordEmptyAndTheLookUpTrue) {
  const LdapServer server(Encrypted());
  for (const char* user : {"nessuno", "", "stampante$"}) {
    EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), user)) << user;
    EXPECT_EQ(Fields(), kNothing) << user;
  }
}

TEST_F(Directory, OfTwoFoundTheFirstCounts) {
  const LdapServer server(Encrypted());
  LdapDirectory directory(AsReader(server.SecureUrl()));
  const auto connection = directory.CreaConnessione();
  connection->Open("Data Source=Active Directory Provider;Provider=ADsDSOObject");
  const auto found =
      connection->Execute("<LDAP://dc=azienda,dc=example>;(samaccountName=cneri);adsPath,mail;subTree");
  ASSERT_FALSE(found->Eof());
  const std::string first = host::Leggi(*found, "mail").ToText();
  found->MoveNext();
  ASSERT_FALSE(found->Eof());
  EXPECT_NE(host::Leggi(*found, "mail").ToText(), first);
  found->MoveNext();
  EXPECT_TRUE(found->Eof());

  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), "cneri"));
  EXPECT_EQ(person.EmailAddress, first);
}

TEST_F(Directory, AnAttributeThatThePersonDoesNotHaveLeavesItsFieldAndTheOthersAreFilled) {
  const LdapServer server(Encrypted());
  person.EmailAddress = "prima@azienda.example";
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), "bverdi"));
  EXPECT_THAT(Fields(), ElementsAre("Bruno", "Verdi", "", "", "", "", "", "prima@azienda.example"));
}

TEST_F(Directory, ANameOfEveryKindOfCharacterIsFollowedToItsEntry) {
  const LdapServer server(Encrypted());
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), "ndangio"));
  EXPECT_EQ(person.FirstName, "Nicolò");
  EXPECT_EQ(person.LastName, "D'Angiò");
}

TEST_F(Directory, OfSeveralAddressesTheFirstIsTaken) {
  const LdapServer server(Encrypted());
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), "ndangio"));
  EXPECT_EQ(person.EmailAddress, "primo@azienda.example");
}

TEST_F(Directory, AnObjectGivesItsOtherAttributesOnRequest) {
  const LdapServer server(Encrypted());
  LdapDirectory directory(AsReader(server.SecureUrl()));
  const auto anna = directory.ApriOggetto("LDAP://cn=Anna Rossi,ou=Vendite,dc=azienda,dc=example");
  EXPECT_EQ(anna->Get("samAccountName").ToText(), "arossi");
  EXPECT_TRUE(anna->Get("memberOf") ==
              host::Variant(host::Variant::Array{"cn=Venditori,dc=azienda,dc=example",
                                                 "cn=Tutti,dc=azienda,dc=example"}));
  EXPECT_EQ(anna->Membro("emailaddress").ToText(), "anna.rossi@azienda.example");
  EXPECT_EQ(anna->ADsPath(), "LDAP://cn=Anna Rossi,ou=Vendite,dc=azienda,dc=example");
  EXPECT_EQ(fakes::NumeroDi([&] { static_cast<void>(anna->Get("uid")); }), kNoProperty);
  EXPECT_EQ(fakes::NumeroDi([&] { static_cast<void>(anna->Membro("Division2")); }), kNoProperty);
}

TEST_F(Directory, AnObjectThatIsNotThereIsAnError) {
  const LdapServer server(Encrypted());
  const auto failure = FailureOf(AsReader(server.SecureUrl()), "LDAP://cn=Nessuno,dc=azienda,dc=example");
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Code(), 32);
  EXPECT_EQ(failure->Numero(), host::kErroreAutomazione);
}

TEST_F(Directory, ADirectoryThatNamesNoTreeIsAskedForItsOnlyOne) {
  LdapServerOptions options = Encrypted();
  options.namesItsTree = false;
  const LdapServer server(options);
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl())));
  EXPECT_EQ(person.FirstName, "Anna");
}

TEST_F(Directory, OfSeveralTreesTheOptionsNameOne) {
  LdapServerOptions options = Encrypted();
  options.namesItsTree = false;
  options.twoTrees = true;
  const LdapServer server(options);
  EXPECT_FALSE(LookUp(AsReader(server.SecureUrl())));
  EXPECT_EQ(Fields(), kNothing);

  LdapOptions chosen = AsReader(server.SecureUrl());
  chosen.searchBase = "ou=Vendite,dc=azienda,dc=example";
  EXPECT_TRUE(LookUp(chosen));
  EXPECT_EQ(person.FirstName, "Anna");
}

TEST_F(Directory, TheSearchStaysBelowItsBase) {
  const LdapServer server(Encrypted());
  LdapOptions chosen = AsReader(server.SecureUrl());
  chosen.searchBase = "ou=Vendite,dc=azienda,dc=example";
  EXPECT_TRUE(LookUp(chosen, "lettore"));
  EXPECT_EQ(Fields(), kNothing);
}

TEST_F(Directory, AWrongPasswordIsRefusedAndStandsInNoText) {
  const LdapServer server(Encrypted());
  LdapOptions wrong = AsReader(server.SecureUrl());
  wrong.password = "password-sbagliata";
  EXPECT_FALSE(LookUp(wrong));
  EXPECT_EQ(Fields(), kNothing);
  const auto failure = FailureOf(wrong);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Code(), 49);
  EXPECT_THAT(failure->Descrizione(),
              AllOf(HasSubstr("rifiuta nome utente o password"), Not(HasSubstr("password-sbagliata"))));
}

// TLS is not what this is about.
std::string RefusedBind(const std::string& words) {
  return Answer(1, Element('\x61', "\x0a\x01\x31\x04\0"s + Element('\x04', words)));
}

TEST_F(Directory, AServerThatGivesThePasswordBackDoesNotSpreadIt) {
  for (const std::string words :
       {"no: segreta-del-lettore", "no: c2VncmV0YS1kZWwtbGV0dG9yZQ==", "no: erottel-led-aterges"}) {
    SCOPED_TRACE(words);
    support::ScriptedServer server({ThenStall(support::Say(RefusedBind(words)))});
    LdapOptions options = Anonymous(Url(server));
    options.password = LdapServer::kPassword;
    const auto failure = FailureOf(options);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Code(), 49);
    EXPECT_EQ(failure->Words(), "***");
  }
}

TEST_F(Directory, OfEndlessWordsTheFirstAreToldAndNoBeginningOfThePassword) {
  std::string before;
  while (before.size() < 590) before += "\xc3\xa0";  // 295 characters
  std::string cut = before;
  while (cut.size() < 600) cut += "\xc3\xa0";
  const std::string behind = cut + std::string(100'000, 'x') + LdapServer::kPassword;
  for (const auto& [words, told] :
       {std::pair(behind, cut), std::pair(before + LdapServer::kPassword, std::string("***"))}) {
    support::ScriptedServer server({ThenStall(support::Say(RefusedBind(words)))});
    LdapOptions options = Anonymous(Url(server));
    options.password = LdapServer::kPassword;
    const auto failure = FailureOf(options);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Code(), 49);
    EXPECT_EQ(failure->Words(), told);
  }
}

TEST_F(Directory, AnAnonymousAskerMayReadTheRootAndNothingElse) {
  const LdapServer server;
  EXPECT_FALSE(FailureOf(Anonymous(server.Url())));
  EXPECT_FALSE(LookUp(Anonymous(server.Url())));
  EXPECT_EQ(Fields(), kNothing);
}

TEST_F(Directory, AServerThatIsNotThereIsAnErrorAtOnce) {
  const support::LoopbackSocket nobody;
  const std::string url = "ldaps://127.0.0.1:" + std::to_string(nobody.Port());
  EXPECT_FALSE(LookUp(AsReader(url)));
  const auto failure = FailureOf(AsReader(url));
  ASSERT_TRUE(failure);
  EXPECT_THAT(failure->Descrizione(), HasSubstr("non è raggiungibile"));
}

TEST_F(Directory, ASilentServerIsGivenUpAfterItsTime) {
  for (const bool startTls : {false, true}) {
    support::ScriptedServer server = Silent();
    LdapOptions options = Anonymous(Url(server));
    options.startTls = startTls;
    options.caFile = authority.CaFile().string();
    options.operationTimeout = kShort;
    const auto failure = FailureOf(options);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Code(), -5);
    EXPECT_THAT(failure->Descrizione(), HasSubstr("non ha risposto in tempo"));
    EXPECT_EQ(server.Complaint(), "");
  }
}

TEST_F(Directory, ASilentServerBehindTlsIsGivenUpAfterItsTime) {
  support::ScriptedServer server = Silent();
  LdapOptions options = AsReader(Url(server, "ldaps"));
  options.connectTimeout = kShort;
  const auto failure = FailureOf(options);
  ASSERT_TRUE(failure);
  EXPECT_THAT(failure->Descrizione(), HasSubstr("non ha risposto in tempo"));
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(Directory, AServerThatPromisesStartTlsAndFallsSilentIsGivenUpAfterItsTime) {
  const std::string promise("\x30\x0c\x02\x01\x01\x78\x07\x0a\x01\x00\x04\x00\x04\x00", 14);
  support::ScriptedServer server({ThenStall(support::Say(promise))});
  LdapOptions options = AsReader(Url(server));
  options.connectTimeout = kShort;
  const auto failure = FailureOf(options);
  ASSERT_TRUE(failure);
  EXPECT_THAT(failure->Descrizione(), HasSubstr("non ha risposto in tempo"));
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(Directory, AServerThatStopsInTheMiddleOfAnAnswerIsGivenUpAfterItsTime) {
  // A sequence begins, and nothing more; or its length and the message's number as well.
  for (const std::string& begun : {"0"s, std::string("0\x84\0\0\0p\x02\x01", 8)}) {
    support::ScriptedServer server({ThenStall(support::Say(begun))});
    LdapOptions options = Anonymous(Url(server));
    options.operationTimeout = kShort;
    const auto failure = FailureOf(options);
    ASSERT_TRUE(failure);
    EXPECT_THAT(failure->Descrizione(), HasSubstr("non ha risposto in tempo"));
    EXPECT_EQ(server.Complaint(), "");
  }
}

TEST_F(Directory, AServerThatClaimsAHugeAnswerGetsNoMemoryForIt) {
  support::ScriptedServer server({ThenStall(support::Say("\x30\x84\x7f\xff\xff\xf0\x02\x01\x01"s))});
  EXPECT_TRUE(FailureOf(Anonymous(Url(server))));
  rusage use{};
  ::getrusage(RUSAGE_SELF, &use);
  EXPECT_LT(use.ru_maxrss, 1024 * 1024);
}

TEST_F(Directory, AServerThatDoesNotStopSendingIsGivenUpAndLeftAlone) {
  const std::string large = Element(
      '\x30', Element('\x04', "givenName") + Element('\x31', Element('\x04', std::string(100'000, 'x'))));
  const std::string nameless = Element('\x30', Element('\x04', "x") + Element('\x31', Element('\x04', "")));
  std::string small;
  for (int i = 0; i < 40'000; ++i) small += nameless;
  struct Flood {
    const char* what;
    std::string message;
    std::size_t times;
  };
  const std::vector<Flood> floods = {
      {"entries", Found(""), EntryReader::kMostMessages + 1},
      {"referrals", Element('\x73', Element('\x04', "ldap://x")), EntryReader::kMostMessages + 1},
      {"large values", Found(large), EntryReader::kMostBytes / 100'000 + 1},
      {"many attributes", Found(small), 1},
      {"one message", Found(std::string(EntryReader::kLargestMessage, 'x')), 1},
  };
  for (const auto& [what, message, times] : floods) {
    SCOPED_TRACE(what);
    std::string words = Answer(1, kBound);
    for (std::size_t i = 0; i < times; ++i) words += Answer(2, message);
    support::ScriptedServer server({ThenStall(support::Say(words))});
    LdapOptions options = Anonymous(Url(server));
    options.pauseAfterFailure = std::chrono::hours(1);
    LdapDirectory directory(options);
    const auto failure =
        EventualeErroreDi([&] { static_cast<void>(directory.ApriOggetto("LDAP://rootDSE")); });
    ASSERT_TRUE(failure);
    EXPECT_THAT(failure->Descrizione(), Not(HasSubstr("non ha risposto in tempo")));
    if (message.size() > EntryReader::kLargestMessage) continue;  // nothing of it was read
    EXPECT_THAT(failure->Descrizione(), HasSubstr("più di quanto le è stato chiesto"));
    EXPECT_THROW(static_cast<void>(directory.ApriOggetto("LDAP://rootDSE")), LeftAlone);
  }
}

TEST_F(Directory, AServerThatAnswersALoginWithEntriesIsGivenUp) {
  std::string words;
  for (int i = 0; i < 1000; ++i) words += Answer(1, Found(""));
  support::ScriptedServer server({ThenStall(support::Say(words))});
  const auto failure = FailureOf(Anonymous(Url(server)));
  ASSERT_TRUE(failure);
  EXPECT_THAT(failure->Descrizione(), Not(HasSubstr("non ha risposto in tempo")));
}

TEST_F(Directory, AServerThatDoesNotStopSendingWhatNobodyAskedForIsGivenUp) {
  const WithoutLeaksOfLibldap without;
  const std::string notice = Notice(std::string(100'000, 'x'));
  std::string flood;
  while (flood.size() <= Allowance::kMostBytes) flood += notice;
  for (const bool startTls : {false, true}) {
    for (const std::string& before : {""s, Answer(1, kBound)}) {
      if (startTls && !before.empty()) continue;  // nothing follows without the handshake
      SCOPED_TRACE(startTls         ? "instead of encryption"
                   : before.empty() ? "during the login"
                                    : "during a search");
      support::ScriptedServer server({ThenStall(support::Say(before + flood))});
      LdapOptions options = Anonymous(Url(server));
      options.startTls = startTls;
      options.caFile = authority.CaFile().string();
      const auto failure = FailureOf(options);
      ASSERT_TRUE(failure);
      EXPECT_THAT(failure->Descrizione(), HasSubstr("più di quanto le è stato chiesto"));
    }
  }
}

TEST_F(Directory, AConnectionOverWhichTooMuchHasComeIsNotKept) {
  const WithoutLeaksOfLibldap without;
  const auto answer = [](char request, const std::string& tree) {
    const std::string named =
        Element('\x30', Element('\x04', "namingContexts") + Element('\x31', Element('\x04', tree)));
    return Answer(request, Found(named)) + Answer(request, Result('\x65', 0));
  };
  const std::string notice = Notice(std::string(500'000, 'x'));
  std::string half;
  while (half.size() <= Allowance::kMostBytes / 2) half += notice;
  const std::string words =
      Answer(1, kBound) + half + answer(2, "dc=x") + half + answer(3, "dc=y") + answer(4, "dc=z");
  support::ScriptedServer server(
      std::vector{std::vector{ThenStall(support::Say(words))},
                  std::vector{ThenStall(support::Say(Answer(1, kBound) + answer(2, "dc=new")))}});
  LdapOptions options = Anonymous(Url(server));
  options.keepConnection = true;
  LdapDirectory directory(options);
  for (const char* tree : {"dc=x", "dc=y", "dc=new"}) {
    EXPECT_EQ(directory.ApriOggetto("LDAP://rootDSE")->Get("defaultNamingContext").ToText(), tree);
  }
}

TEST_F(Directory, WhatAServerMayAnswerIsTakenWhole) {
  std::string words = Answer(1, kBound);
  const std::string trees =
      Element('\x30', Element('\x04', "namingContexts") + Element('\x31', Element('\x04', "dc=x")));
  words += Answer(2, Found(trees));
  for (std::size_t i = 1; i < EntryReader::kMostEntries; ++i) words += Answer(2, Found(""));
  words += Answer(2, Element('\x73', Element('\x04', "ldap://x"))) + Answer(2, Result('\x65', 4));
  support::ScriptedServer server({ThenStall(support::Say(words))});
  LdapDirectory directory(Anonymous(Url(server)));
  EXPECT_EQ(directory.ApriOggetto("LDAP://rootDSE")->Get("defaultNamingContext").ToText(), "dc=x");
}

TEST_F(Directory, AServerThatSpeaksAnotherProtocolIsAnError) {
  support::ScriptedServer server({ThenStall(support::Say("220 mail.example.test ESMTP"))});
  LdapOptions options = Anonymous(Url(server));
  options.operationTimeout = kShort;
  EXPECT_TRUE(FailureOf(options));
}

TEST_F(Directory, AServerThatHangsUpIsAnErrorAndNoSignal) {
  {
    support::ScriptedServer server({ThenDrop(support::Say(""))});
    EXPECT_TRUE(FailureOf(Anonymous(Url(server))));
  }
  LdapServer server;
  LdapDirectory directory(Anonymous(server.Url()));
  const auto root = directory.ApriOggetto("LDAP://rootDSE");
  server.Stop();
  for (const char* attribute : {"vendorName", "vendorVersion", "supportedExtension"}) {
    EXPECT_TRUE(EventualeErroreDi([&] { static_cast<void>(root->Get(attribute)); })) << attribute;
  }
}

TEST_F(Directory, ADirectoryThatStopsBetweenTwoQuestionsIsGivenUpAndAskedAnewTheNextTime) {
  const LdapServer server(Encrypted());
  struct Outcome {
    std::optional<host::Errore> before;
    std::optional<host::Errore> frozen;
    bool answered = false;
  };
  const auto attempt = [&](milliseconds timeout) {
    LdapOptions options = AsReader(server.SecureUrl());
    options.connectTimeout = timeout;
    options.operationTimeout = timeout;
    options.pauseAfterFailure = milliseconds(0);
    LdapDirectory directory(options);
    std::shared_ptr<host::DirectoryObject> root;
    Outcome outcome;
    outcome.before = EventualeErroreDi([&] { root = directory.ApriOggetto("LDAP://rootDSE"); });
    server.Freeze(true);
    outcome.frozen =
        EventualeErroreDi([&] { static_cast<void>(directory.ApriOggetto("LDAP://dc=azienda,dc=example")); });
    server.Freeze(false);
    outcome.answered = GetDatiUtenteDirectory(directory, "arossi", person);
    return outcome;
  };
  const Outcome outcome = support::WithPatience(
      attempt, [](const Outcome& one) { return !one.before && one.frozen && one.answered; },
      {milliseconds(1'000), milliseconds(10'000), milliseconds(30'000)});
  EXPECT_FALSE(outcome.before);
  ASSERT_TRUE(outcome.frozen);
  EXPECT_THAT(outcome.frozen->Descrizione(), HasSubstr("non ha risposto in tempo"));
  EXPECT_TRUE(outcome.answered);
  EXPECT_EQ(person.FirstName, "Anna");
}

struct BadCertificate {
  const char* label;
  const char* names;
  bool expired;
  bool otherAuthority;
};

class DirectoryWithBadCertificate : public Directory, public ::testing::WithParamInterface<BadCertificate> {};

TEST_P(DirectoryWithBadCertificate, IsNotSpokenToInEitherWay) {
  support::TempDir elsewhere;
  const support::TestAuthority other(elsewhere.Path());
  LdapServerOptions options = Encrypted(GetParam().names, GetParam().expired);
  const LdapServer server(options);
  for (const std::string& url : {server.SecureUrl(), server.Url()}) {
    LdapOptions asked = AsReader(url);
    if (GetParam().otherAuthority) asked.caFile = other.CaFile().string();
    const auto failure = FailureOf(asked);
    ASSERT_TRUE(failure) << url;
    EXPECT_LT(failure->Code(), 0) << failure->Descrizione();
    EXPECT_FALSE(LookUp(asked)) << url;
  }
  EXPECT_EQ(Fields(), kNothing);
}

INSTANTIATE_TEST_SUITE_P(Kinds, DirectoryWithBadCertificate,
                         ::testing::Values(BadCertificate{"OtherName", "DNS:directory.example", false, false},
                                           BadCertificate{"Expired", "IP:127.0.0.1", true, false},
                                           BadCertificate{"UnknownAuthority", "IP:127.0.0.1", false, true}),
                         [](const auto& one) { return std::string(one.param.label); });

TEST_F(Directory, TheSystemsAuthoritiesCountWhenNoOthersAreNamed) {
  const LdapServer server(Encrypted());
  LdapOptions options = AsReader(server.SecureUrl());
  options.caFile.clear();
  EXPECT_TRUE(FailureOf(options));
}

TEST_F(Directory, TheMachinesLaxerSettingsForLdapDoNotCount) {
  const std::string settings = folder.Write("ldaprc", "TLS_REQCERT never\n");
  ASSERT_EQ(::setenv("LDAPTLS_REQCERT", "never", 1), 0);
  ASSERT_EQ(::setenv("LDAPRC", settings.c_str(), 1), 0);
  const LdapServer server(Encrypted("DNS:directory.example"));
  const auto failure = FailureOf(AsReader(server.SecureUrl()));
  ::unsetenv("LDAPTLS_REQCERT");
  ::unsetenv("LDAPRC");
  EXPECT_TRUE(failure);
}

TEST_F(Directory, AMissingFileOfAuthoritiesIsAnErrorThatNamesIt) {
  const LdapServer server(Encrypted());
  LdapOptions options = AsReader(server.SecureUrl());
  options.caFile = "/nessun/file.pem";
  const auto failure = FailureOf(options);
  ASSERT_TRUE(failure);
  EXPECT_THAT(failure->Descrizione(), HasSubstr("/nessun/file.pem"));
}

TEST_F(Directory, WithoutEncryptionOnOfferNoPasswordLeaves) {
  const LdapServer server;  // offers none
  const auto failure = FailureOf(AsReader(server.Url()));
  ASSERT_TRUE(failure);
  EXPECT_NE(failure->Code(), 49);
}

TEST_F(Directory, OptionsThatWouldSendAPasswordInTheClearAreRefusedAtOnce) {
  LdapOptions clear = AsReader("ldap://127.0.0.1");
  clear.startTls = false;
  EXPECT_EQ(fakes::NumeroDi([&] { LdapDirectory{clear}; }), host::kArgomentoNonValido);
  LdapOptions noPassword = AsReader("ldaps://127.0.0.1");
  noPassword.password = {};
  EXPECT_EQ(fakes::NumeroDi([&] { LdapDirectory{noPassword}; }), host::kArgomentoNonValido);
}

TEST_F(Directory, AServerIsAnLdapAddressAndNothingElse) {
  for (const char* url :
       {"", "127.0.0.1", "http://x", "ldap://", "ldaps:///dc=x", "ldapi://%2ftmp%2fx", "ldap://a b",
        "ldap://x ldap://y", "ldap://x/dc=y", "ldap://x:porta", "ldap://u@x"}) {
    EXPECT_EQ(fakes::NumeroDi([&] { LdapDirectory{Anonymous(url)}; }), host::kArgomentoNonValido) << url;
  }
  for (const char* url : {"ldap://x", "LDAPS://dc1.azienda.example:3269", "ldap://[::1]:389/"}) {
    EXPECT_EQ(fakes::NumeroDi([&] { LdapDirectory{Anonymous(url)}; }), 0) << url;
  }
}

TEST_F(Directory, NothingIsConnectedBeforeTheFirstQuestionAndNothingStaysConnectedAfterTheLast) {
  LdapServer server;
  LdapDirectory directory(Anonymous(server.Url()));
  const auto before = Descriptors().size();
  {
    const auto root = directory.ApriOggetto("LDAP://rootDSE");
    const auto again = directory.ApriOggetto("LDAP://rootDSE");
    EXPECT_EQ(Descriptors().size(), before + 1);
  }
  EXPECT_EQ(Descriptors().size(), before);
}

TEST_F(Directory, AConnectionToBeKeptServesTheNextLookUpsAndEndsWithTheDirectory) {
  const LdapServer server(Encrypted());
  LdapOptions options = AsReader(server.SecureUrl());
  options.keepConnection = true;
  const auto before = Descriptors().size();
  {
    LdapDirectory directory(options);
    ASSERT_TRUE(GetDatiUtenteDirectory(directory, "arossi", person));
    EXPECT_EQ(Descriptors().size(), before + 1);
    ASSERT_TRUE(GetDatiUtenteDirectory(directory, "bverdi", person));
    EXPECT_EQ(Descriptors().size(), before + 1);
    EXPECT_EQ(person.FirstName, "Bruno");
  }
  EXPECT_EQ(Descriptors().size(), before);
}

TEST_F(Directory, AKeptConnectionThatTheServerClosedIsReplacedUnnoticed) {
  LdapServerOptions idle = Encrypted();
  idle.configuration = {"idletimeout 1"};
  const LdapServer server(idle);
  LdapOptions options = AsReader(server.SecureUrl());
  options.keepConnection = true;
  LdapDirectory directory(options);
  const auto before = Descriptors();
  ASSERT_TRUE(GetDatiUtenteDirectory(directory, "arossi", person));
  for (const std::string& descriptor : Descriptors()) {
    if (before.contains(descriptor)) continue;
    pollfd connection{std::stoi(descriptor), POLLRDHUP, 0};
    ASSERT_EQ(::poll(&connection, 1, static_cast<int>(kLong.count())), 1) << "the server did not close it";
  }
  ASSERT_TRUE(GetDatiUtenteDirectory(directory, "bverdi", person));
  EXPECT_EQ(person.FirstName, "Bruno");
}

TEST_F(Directory, AKeptConnectionThatDiedWithoutAWordIsReplacedAndTheServerNotLeftAlone) {
  const LdapServer server(Encrypted());
  const auto attempt = [&](milliseconds timeout) {
    LdapOptions options = AsReader(server.SecureUrl());
    options.keepConnection = true;
    options.operationTimeout = timeout;
    options.pauseAfterFailure = std::chrono::hours(1);
    LdapDirectory directory(options);
    CutLine line;
    if (!GetDatiUtenteDirectory(directory, "arossi", person)) return false;
    line.Cut();
    return GetDatiUtenteDirectory(directory, "bverdi", person);
  };
  EXPECT_TRUE(support::WithPatience(attempt, [](bool found) { return found; },
                                    {milliseconds(1'000), milliseconds(10'000)}));
  EXPECT_EQ(person.FirstName, "Bruno");
}

TEST_F(Directory, AServerThatFailedIsLeftAloneForAWhile) {
  LdapServer server(Encrypted());
  LdapOptions options = AsReader(server.SecureUrl());
  options.password = "sbagliata";
  options.pauseAfterFailure = std::chrono::hours(1);
  LdapDirectory directory(options);
  std::optional<LdapFailure> first;
  try {
    static_cast<void>(directory.ApriOggetto("LDAP://rootDSE"));
  } catch (const LdapFailure& failure) {
    first = failure;
  }
  ASSERT_TRUE(first);
  server.Stop();  // a new attempt would find nobody there
  try {
    static_cast<void>(directory.ApriOggetto("LDAP://rootDSE"));
    ADD_FAILURE() << "no error";
  } catch (const LeftAlone& failure) {
    EXPECT_EQ(failure.Code(), first->Code());
    EXPECT_EQ(failure.Descrizione(), first->Descrizione());
  }
}

TEST_F(Directory, AfterItsPauseAServerIsAskedAgain) {
  const support::LoopbackSocket closed;
  LdapOptions options = AsReader("ldaps://127.0.0.1:" + std::to_string(closed.Port()));
  options.pauseAfterFailure = milliseconds(0);
  LdapDirectory directory(options);
  for (int i = 0; i < 2; ++i) {
    try {
      static_cast<void>(directory.ApriOggetto("LDAP://rootDSE"));
      ADD_FAILURE() << "no error";
    } catch (const LeftAlone&) {
      ADD_FAILURE() << "left alone";
    } catch (const LdapFailure&) {
      continue;
    }
  }
}

TEST_F(Directory, AConnectionThatBrokeIsNotUsedAgain) {
  const LdapServer server(Encrypted());
  struct Outcome {
    bool failed = false;
    std::set<int> before;
    std::set<int> after;
  };
  // The object holds the connection, which could still carry an answer once the server goes on.
  const auto attempt = [&](milliseconds timeout) {
    LdapOptions options = AsReader(server.SecureUrl());
    options.connectTimeout = timeout;
    options.operationTimeout = timeout;
    options.pauseAfterFailure = milliseconds(0);
    LdapDirectory directory(options);
    std::shared_ptr<host::DirectoryObject> root;
    std::shared_ptr<host::DirectoryObject> again;
    Outcome outcome;
    static_cast<void>(EventualeErroreDi([&] { root = directory.ApriOggetto("LDAP://rootDSE"); }));
    outcome.before = OwnPorts();
    server.Freeze(true);
    outcome.failed = EventualeErroreDi([&] {
                       static_cast<void>(directory.ApriOggetto("LDAP://dc=azienda,dc=example"));
                     }).has_value();
    server.Freeze(false);
    static_cast<void>(EventualeErroreDi([&] { again = directory.ApriOggetto("LDAP://rootDSE"); }));
    outcome.failed = outcome.failed && root && again;
    outcome.after = OwnPorts();
    return outcome;
  };
  const Outcome outcome = support::WithPatience(attempt, [](const Outcome& one) { return one.failed; },
                                                {milliseconds(1'000), milliseconds(10'000)});
  ASSERT_TRUE(outcome.failed);
  EXPECT_FALSE(
      std::includes(outcome.before.begin(), outcome.before.end(), outcome.after.begin(), outcome.after.end()))
      << "no new connection";
}

TEST_F(Directory, AConnectionThatIsNotOpenCannotBeAsked) {
  const LdapServer server(Encrypted());
  LdapDirectory directory(AsReader(server.SecureUrl()));
  const auto connection = directory.CreaConnessione();
  const std::string query = "<LDAP://dc=azienda,dc=example>;(samaccountName=arossi);adsPath;subTree";
  EXPECT_EQ(connection->State(), 0);
  EXPECT_TRUE(EventualeErroreDi([&] { static_cast<void>(connection->Execute(query)); }));
  connection->Open("");
  EXPECT_EQ(connection->State(), 1);
  EXPECT_FALSE(connection->Execute(query)->Eof());
  connection->Close();
  EXPECT_EQ(connection->State(), 0);
  EXPECT_TRUE(EventualeErroreDi([&] { static_cast<void>(connection->Execute(query)); }));
  EXPECT_EQ(directory.CreaRecordSet()->State(), 0);
}

TEST_F(Directory, ANameWithMoreThanANameFindsNobody) {
  const LdapServer server(Encrypted());
  for (const char* name : {"aross*", "*)(|(mail=anna.rossi@azienda.example)(uid=*", "x))(objectClass=*"}) {
    EXPECT_FALSE(LookUp(AsReader(server.SecureUrl()), name)) << name;
    EXPECT_EQ(Fields(), kNothing) << name;
  }
  EXPECT_TRUE(LookUp(AsReader(server.SecureUrl()), "\\61rossi"));
  EXPECT_EQ(person.LastName, "Rossi");
}

TEST_F(Directory, ARefusedNameIsToldWithHowToWriteIt) {
  const auto refused = [](const std::string& name) {
    const auto failure = EventualeErroreDi([&] {
      RequirePlainAccountName("<LDAP://x>;(&(objectCategory=person)(objectClass=user)(samaccountName=" +
                              name + "));adsPath;subTree");
    });
    return failure ? failure->Descrizione() : "";
  };
  EXPECT_EQ(
      refused("a*\x1b[2J\u200fz"),
      "Il nome dell'utente di rete «a*\\u001B[2J\\u200Fz» contiene caratteri che cambierebbero la ricerca "
      "nella directory; se ne fanno parte, * si scrive \\2a, ( \\28, ) \\29 e \\ \\5c");
  EXPECT_EQ(refused("\\2a\\28\\29\\5c"), "");
}

TEST_F(Directory, WithoutATicketKerberosIsAnErrorAndNotASilentAnonymousAccess) {
  const LdapServer server(Encrypted());
  ASSERT_EQ(::setenv("KRB5CCNAME", ("FILE:" + (folder.Path() / "none").string()).c_str(), 1), 0);
  ASSERT_EQ(::setenv("KRB5_CLIENT_KTNAME", "FILE:/nessuna/chiave", 1), 0);
  LdapOptions options = AsReader(server.SecureUrl());
  options.access = Access::kKerberos;
  const auto failure = FailureOf(options);
  ::unsetenv("KRB5CCNAME");
  ::unsetenv("KRB5_CLIENT_KTNAME");
  ASSERT_TRUE(failure);
  EXPECT_THAT(failure->Descrizione(), HasSubstr("Kerberos"));
}

}  // namespace orve::adapters::ldap
