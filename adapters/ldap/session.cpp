#include "ldap/session.h"

#include <ldap.h>
#include <sasl/sasl.h>
#include <sys/time.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "ldap/allowance.h"
#include "ldap/failure.h"
#include "posix/pipe_signal.h"
#include "secrets/secret_finder.h"
#include "text/text.h"

namespace orve::adapters::ldap {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr const char* kSystemAuthorities = "/etc/ssl/certs/ca-certificates.crt";
constexpr milliseconds kFarewell{500};
// Characters kept of what a server says: far more than a failure shows, so where they end no beginning of a
// password is shown.
constexpr std::size_t kHeardWords = 1000;

struct Freed {
  void operator()(LDAPMessage* message) const noexcept { ::ldap_msgfree(message); }
  void operator()(char* text) const noexcept { ::ldap_memfree(text); }
};
using Message = std::unique_ptr<LDAPMessage, Freed>;
using Text = std::unique_ptr<char, Freed>;

struct Server {
  std::string url;  // scheme, host and port
  bool implicitTls = false;
};

std::optional<Server> ReadServer(const std::string& text) {
  Server server;
  const std::size_t scheme = text.find("://");
  if (scheme == std::string::npos) return std::nullopt;
  server.implicitTls = text::EqualsIgnoreCase(text.substr(0, scheme), "ldaps");
  if (!server.implicitTls && !text::EqualsIgnoreCase(text.substr(0, scheme), "ldap")) return std::nullopt;
  std::string address = text.substr(scheme + 3);
  if (!address.empty() && address.back() == '/') address.pop_back();
  constexpr std::string_view kInAddress =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_:[]%";
  if (address.empty() || address.find_first_not_of(kInAddress) != std::string::npos) return std::nullopt;
  server.url = (server.implicitTls ? "ldaps://" : "ldap://") + address;
  LDAPURLDesc* read = nullptr;
  const bool valid = ::ldap_url_parse(server.url.c_str(), &read) == LDAP_URL_SUCCESS;
  const bool complete = valid && read->lud_host != nullptr && *read->lud_host != '\0';
  if (valid) ::ldap_free_urldesc(read);
  return complete ? std::optional(server) : std::nullopt;
}

bool Encrypted(const LdapOptions& options) {
  const auto server = ReadServer(options.server);
  return options.startTls || (server && server->implicitTls);
}

timeval Duration(milliseconds time) {
  const auto all = std::chrono::duration_cast<microseconds>(std::max(time, milliseconds(1))).count();
  constexpr std::int64_t kSecond = 1'000'000;
  return {static_cast<time_t>(all / kSecond), static_cast<suseconds_t>(all % kSecond)};
}

// Kerberos asks nothing; if a mechanism asks anyway, it gets its own default.
int AnswerWithDefaults(LDAP* /*handle*/, unsigned /*flags*/, void* /*defaults*/, void* asked) {
  for (auto* question = static_cast<sasl_interact_t*>(asked); question->id != SASL_CB_LIST_END; ++question) {
    question->result = question->defresult != nullptr ? question->defresult : "";
    question->len = static_cast<unsigned>(std::strlen(static_cast<const char*>(question->result)));
  }
  return LDAP_SUCCESS;
}

// What libldap calls when the connection is made and TLS has not begun.
struct Connected : ldap_conncb {
  explicit Connected(Allowance* allowance) : ldap_conncb{OnConnect, OnEnd, allowance} {}

  static int OnConnect(LDAP* /*handle*/, Sockbuf* connection, LDAPURLDesc* /*server*/, sockaddr* /*address*/,
                       ldap_conncb* self) {
    // A length that a server merely claims must not cost memory.
    ber_len_t largest = EntryReader::kLargestMessage;
    ::ber_sockbuf_ctrl(connection, LBER_SB_OPT_SET_MAX_INCOMING, &largest);
    Allowance::Join(connection, static_cast<Allowance*>(self->lc_arg));
    return 0;
  }
  static void OnEnd(LDAP* /*handle*/, Sockbuf* /*connection*/, ldap_conncb* /*self*/) {}
};

int ScopeOf(Depth depth) {
  switch (depth) {
    case Depth::kBase:
      return LDAP_SCOPE_BASE;
    case Depth::kOneLevel:
      return LDAP_SCOPE_ONELEVEL;
    default:
      return LDAP_SCOPE_SUBTREE;
  }
}

}  // namespace

void CheckOptions(const LdapOptions& options) {
  const auto refuse = [](const std::string& description) {
    throw host::Errore(host::kArgomentoNonValido, "Directory", description);
  };
  if (!ReadServer(options.server)) {
    refuse("«" + options.server + "» non è l'indirizzo di una directory, come ldaps://server");
  }
  if (options.access != Access::kSimple) return;
  if (!Encrypted(options)) refuse("La password della directory viaggerebbe in chiaro");
  // A server treats a name without a password as anonymous access, and reports success.
  if (options.user.empty() || options.password.Empty()) {
    refuse("Per accedere alla directory servono nome utente e password");
  }
}

class Session::Handle {
 public:
  explicit Handle(const LdapOptions& options) : options_(options) {
    const auto server = ReadServer(options.server);
    if (!server) throw LdapFailure(LDAP_PARAM_ERROR, "");
    const posix::PipeSignalHeld held;
    Require(::ldap_initialize(&handle_, server->url.c_str()));
    try {
      SetLimits();
      SetTls();
      allowance_.Begin(options_.connectTimeout);
      Require(::ldap_connect(handle_));
      if (!server->implicitTls && options.startTls) StartTls();
      Bind();
    } catch (...) {
      ::ldap_unbind_ext(handle_, nullptr, nullptr);
      throw;
    }
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  Handle(Handle&&) = delete;
  Handle& operator=(Handle&&) = delete;
  ~Handle() {
    const posix::PipeSignalHeld held;
    allowance_.Begin(kFarewell);
    ::ldap_unbind_ext(handle_, nullptr, nullptr);
  }

  [[nodiscard]] bool Broken() const { return broken_; }

  std::vector<Entry> Search(const Query& query) {
    const posix::PipeSignalHeld held;
    allowance_.Begin(options_.operationTimeout);
    std::vector<std::string> names = query.attributes;
    if (names.empty()) names.emplace_back(LDAP_NO_ATTRS);
    std::vector<char*> wanted;
    wanted.reserve(names.size() + 1);
    for (std::string& name : names) wanted.push_back(name.data());
    wanted.push_back(nullptr);
    timeval limit{std::max<time_t>(Duration(options_.operationTimeout).tv_sec, 1), 0};
    int id = 0;
    Require(::ldap_search_ext(handle_, query.base.c_str(), ScopeOf(query.depth), query.filter.c_str(),
                              wanted.data(), 0, nullptr, nullptr, &limit, EntryReader::kMostEntries, &id));
    EntryReader reader(handle_);
    for (;;) {
      const Message answer = Answer(id);
      switch (reader.Take(answer.get())) {
        case EntryReader::Taken::kMore:
          break;
        case EntryReader::Taken::kResult:
          RequireSuccess(answer.get(), LDAP_SIZELIMIT_EXCEEDED);
          broken_ = broken_ || allowance_.WornOut();
          return std::move(reader.Entries());
        case EntryReader::Taken::kTooMuch:
          Fail(LDAP_MORE_RESULTS_TO_RETURN, "");
      }
    }
  }

 private:
  void Set(int option, const void* value) {
    if (::ldap_set_option(handle_, option, value) != LDAP_OPT_SUCCESS) {
      throw LdapFailure(LDAP_PARAM_ERROR, "option " + std::to_string(option));
    }
  }

  void SetLimits() {
    constexpr int kVersion = LDAP_VERSION3;
    const timeval connect = Duration(options_.connectTimeout);
    const timeval operation = Duration(options_.operationTimeout);
    Set(LDAP_OPT_PROTOCOL_VERSION, &kVersion);
    Set(LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
    Set(LDAP_OPT_RESTART, LDAP_OPT_ON);  // a signal meant for the application ends no wait
    Set(LDAP_OPT_NETWORK_TIMEOUT, &connect);
    Set(LDAP_OPT_TIMEOUT, &operation);
    Set(LDAP_OPT_CONNECT_CB, &connected_);
    Set(LDAP_OPT_X_SASL_NOCANON, LDAP_OPT_ON);  // the name that was given, not what a name server makes of it
  }

  // The machine's own settings for LDAP may be laxer, so nothing is left to them.
  void SetTls() {
    constexpr int kDemand = LDAP_OPT_X_TLS_DEMAND;
    constexpr int kOldest = LDAP_OPT_X_TLS_PROTOCOL_TLS1_2;
    constexpr int kClient = 0;
    Set(LDAP_OPT_X_TLS_CACERTFILE, options_.caFile.empty() ? kSystemAuthorities : options_.caFile.c_str());
    Set(LDAP_OPT_X_TLS_REQUIRE_CERT, &kDemand);
    Set(LDAP_OPT_X_TLS_PROTOCOL_MIN, &kOldest);
    if (::ldap_set_option(handle_, LDAP_OPT_X_TLS_NEWCTX, &kClient) != LDAP_OPT_SUCCESS) {
      throw LdapFailure(LDAP_CONNECT_ERROR,
                        "autorità " + (options_.caFile.empty() ? kSystemAuthorities : options_.caFile));
    }
  }

  void StartTls() {
    allowance_.Begin(options_.operationTimeout);
    int id = 0;
    Require(::ldap_extended_operation(handle_, LDAP_EXOP_START_TLS, nullptr, nullptr, nullptr, &id));
    const Message answer = Answer(id);
    RequireSuccess(answer.get());
    allowance_.Begin(options_.connectTimeout);
    Require(::ldap_install_tls(handle_));
  }

  void Bind() {
    if (options_.access == Access::kKerberos) {
      BindWithKerberos();
      return;
    }
    allowance_.Begin(options_.operationTimeout);
    const bool simple = options_.access == Access::kSimple;
    berval password{simple ? options_.password.View().size() : 0,
                    simple ? options_.password.Data() : nullptr};
    int id = 0;
    Require(::ldap_sasl_bind(handle_, simple ? options_.user.c_str() : "", LDAP_SASL_SIMPLE, &password,
                             nullptr, nullptr, &id));
    RequireSuccess(Answer(id).get());
  }

  // What runs over TLS is not encrypted a second time; without TLS nothing is sent unencrypted.
  void BindWithKerberos() {
    const bool encrypted = ::ldap_tls_inplace(handle_) != 0;
    constexpr int kEndpoint = LDAP_OPT_X_SASL_CBINDING_TLS_ENDPOINT;
    Set(LDAP_OPT_X_SASL_SECPROPS,
        encrypted ? "noanonymous,noplain,minssf=0,maxssf=0" : "noanonymous,noplain,minssf=56");
    if (encrypted) Set(LDAP_OPT_X_SASL_CBINDING, &kEndpoint);
    allowance_.Begin(options_.operationTimeout);
    const char* mechanism = nullptr;
    Message answer;
    int id = 0;
    for (;;) {
      const int code =
          ::ldap_sasl_interactive_bind(handle_, nullptr, "GSSAPI", nullptr, nullptr, LDAP_SASL_QUIET,
                                       AnswerWithDefaults, nullptr, answer.get(), &mechanism, &id);
      if (code == LDAP_SUCCESS) return;
      if (code != LDAP_SASL_BIND_IN_PROGRESS) Fail(code);
      answer = Answer(id);
    }
  }

  // One message at a time, so none waits in memory for those that follow.
  Message Answer(int id) {
    timeval limit = Duration(options_.operationTimeout);
    LDAPMessage* answer = nullptr;
    const int kind = ::ldap_result(handle_, id, LDAP_MSG_ONE, &limit, &answer);
    if (kind > 0) return Message(answer);
    if (kind == 0) {
      ::ldap_abandon_ext(handle_, id, nullptr, nullptr);
      Fail(LDAP_TIMEOUT);
    }
    int code = LDAP_SERVER_DOWN;
    ::ldap_get_option(handle_, LDAP_OPT_RESULT_CODE, &code);
    Fail(code == LDAP_SUCCESS ? LDAP_SERVER_DOWN : code);
  }

  void RequireSuccess(LDAPMessage* answer, int allowed = LDAP_SUCCESS) {
    int code = LDAP_OTHER;
    char* words = nullptr;
    const int parsed = ::ldap_parse_result(handle_, answer, &code, nullptr, &words, nullptr, nullptr, 0);
    const Text owned(words);
    if (parsed != LDAP_SUCCESS) Fail(parsed);
    if (code != LDAP_SUCCESS && code != allowed) Fail(code, words != nullptr ? words : "");
  }

  void Require(int code) {
    if (code != LDAP_SUCCESS) Fail(code);
  }

  [[noreturn]] void Fail(int code) {
    char* words = nullptr;
    if (handle_ != nullptr)
      ::ldap_get_option(handle_, LDAP_OPT_DIAGNOSTIC_MESSAGE, static_cast<void*>(&words));
    const Text owned(words);
    Fail(code, words != nullptr ? words : "");
  }

  // A server may repeat what it was told, in whatever form; the password goes no further.
  [[noreturn]] void Fail(int code, const std::string& words) {
    if (code < 0 && allowance_.TimePassed()) code = LDAP_TIMEOUT;
    if (code < 0 && allowance_.BytesSpent()) code = LDAP_MORE_RESULTS_TO_RETURN;
    broken_ = broken_ || (code < 0 && code != LDAP_FILTER_ERROR);
    secrets::SecretFinder password;
    password.Add(options_.password.View());
    const std::string_view heard = text::Left(words, kHeardWords);
    throw LdapFailure(code, password.In(heard) ? "***" : std::string(heard));
  }

  LdapOptions options_;
  Allowance allowance_;
  Connected connected_{&allowance_};
  LDAP* handle_ = nullptr;
  bool broken_ = false;
};

Session::Session(const LdapOptions& options) : handle_(std::make_unique<Handle>(options)) {}

Session::~Session() = default;

std::vector<Entry> Session::Search(const Query& query) {
  return handle_->Search(query);
}

bool Session::Broken() const {
  return handle_->Broken();
}

}  // namespace orve::adapters::ldap
