#include "smtp/channel.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <malloc.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "mime/address_list.h"
#include "posix/deadline.h"
#include "posix/descriptor.h"
#include "smtp/failure.h"
#include "smtp/hello.h"
#include "text/text.h"

namespace orve::adapters::smtp {

namespace {

using Clock = Channel::Clock;

struct EasyCleanup {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using EasyHandle = std::unique_ptr<CURL, EasyCleanup>;

struct UrlCleanup {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using Url = std::unique_ptr<CURLU, UrlCleanup>;

struct ListCleanup {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, ListCleanup>;

// libcurl keeps the password in several places and frees them as they are; with these it wipes what it frees.
// Memory allocated earlier belongs to the same allocator, should somebody else in the process have started
// libcurl already.
void WipeAndFree(void* memory) {
  if (memory != nullptr) ::explicit_bzero(memory, ::malloc_usable_size(memory));
  std::free(memory);
}

void* WipingRealloc(void* memory, std::size_t size) {
  if (memory == nullptr) return std::malloc(size);
  void* const moved = std::malloc(size);
  if (moved == nullptr) return nullptr;
  std::memcpy(moved, memory, std::min(size, ::malloc_usable_size(memory)));
  WipeAndFree(memory);
  return moved;
}

void RequireCurl() {
  static const CURLcode kReady = curl_global_init_mem(CURL_GLOBAL_DEFAULT, std::malloc, WipeAndFree,
                                                      WipingRealloc, ::strdup, std::calloc);
  if (kReady != CURLE_OK) throw DeliveryFailure(ErrorNumber::kConnection, curl_easy_strerror(kReady));
}

std::string LoginOptions(const std::vector<AuthMechanism>& mechanisms) {
  std::string options;
  for (const AuthMechanism mechanism : mechanisms) {
    if (!options.empty()) options += ';';
    switch (mechanism) {
      case AuthMechanism::kPlain:
        options += "AUTH=PLAIN";
        break;
      case AuthMechanism::kLogin:
        options += "AUTH=LOGIN";
        break;
      case AuthMechanism::kCramMd5:
        options += "AUTH=CRAM-MD5";
        break;
      case AuthMechanism::kXoauth2:
        return "AUTH=XOAUTH2";
    }
  }
  return options;
}

/// The host as written in a URL; none when no such name can be looked up.
std::optional<std::string> UrlHost(std::string_view host) {
  const std::optional<std::string> ascii = mime::AsciiDomain(text::Trim(host));
  if (!ascii || !IsAddressLiteralOrName(*ascii)) return {};
  const bool bareIpv6 = ascii->find(':') != std::string::npos && ascii->front() != '[';
  return bareIpv6 ? '[' + *ascii + ']' : *ascii;
}

constexpr const char* kLoopback = "[127.0.0.1]";
constexpr const char* kPeerClosed = "il server ha chiuso la connessione";

}  // namespace

struct Channel::Impl {
  enum class Stage { kLookUp, kConnecting, kHello, kAuthentication };

  Impl(Target smtpTarget, Tracer& smtpTracer) : target(std::move(smtpTarget)), tracer(smtpTracer) {}

  Target target;
  Tracer& tracer;
  List addresses;  // which the handle reads
  EasyHandle handle;
  std::array<char, CURL_ERROR_SIZE> errorText{};
  curl_socket_t socket = CURL_SOCKET_BAD;
  posix::Descriptor standing;  // an existing connection, for libcurl to use instead of making one
  Stage stage = Stage::kLookUp;
  std::vector<std::string> extensions;  // keywords of the last EHLO reply, in capitals
  std::string early;                    // what the server said out of turn

  template <class Value>
  void Set(CURLoption option, Value value) {
    const CURLcode result = curl_easy_setopt(handle.get(), option, value);
    if (result != CURLE_OK) throw DeliveryFailure(ErrorNumber::kConnection, curl_easy_strerror(result));
  }
  void Set(CURLoption option, std::chrono::milliseconds time) {
    Set(option, static_cast<long>(time.count()));
  }

  void Prepare(const SmtpOptions& options) {
    handle.reset(curl_easy_init());
    if (!handle) throw std::bad_alloc();
    Set(CURLOPT_CONNECT_ONLY, 1L);
    // The host process keeps its signal handlers. libcurl raises no SIGPIPE by itself either: it writes with
    // MSG_NOSIGNAL, below TLS too.
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_QUICK_EXIT, 1L);  // or a dead name server holds up the time-out
    Set(CURLOPT_MAXCONNECTS, 1L);
    Set(CURLOPT_PROXY, "");  // the proxies in the environment are meant for browsing
    Set(CURLOPT_CONNECTTIMEOUT_MS, options.connectTimeout);
    const auto replySeconds = std::chrono::ceil<std::chrono::seconds>(options.replyTimeout).count();
    Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, std::max(1L, static_cast<long>(replySeconds)));
    Set(CURLOPT_ERRORBUFFER, errorText.data());
    // Only the commands show which stage a failure belongs to, so they are always examined.
    Set(CURLOPT_VERBOSE, 1L);
    Set(CURLOPT_DEBUGFUNCTION, &Impl::OnDebug);
    Set(CURLOPT_DEBUGDATA, this);
    Set(CURLOPT_SOCKOPTFUNCTION, &Impl::OnSocket);
    Set(CURLOPT_SOCKOPTDATA, this);
    SetUrl(Scheme(options), HelloName(options.ehloName).value_or(kLoopback));
    SetEncryption(options);
    SetCredentials(options);
  }

  /// Connects where the client has no name of its own and goes by its address: that is only known once the
  /// connection is made, and libcurl wants it before.
  void ConnectAhead(const SmtpOptions& options) {
    if (HelloName(options.ehloName)) return;
    const Clock::time_point start = Clock::now();
    SetUrl("http", "");  // with this libcurl does nothing but connect
    const curl_socket_t own = Perform();
    standing = posix::Descriptor(::fcntl(own, F_DUPFD_CLOEXEC, 0));  // whose owner may close it
    UseServerAddress();
    Set(CURLOPT_OPENSOCKETFUNCTION, &Impl::OnOpen);
    Set(CURLOPT_OPENSOCKETDATA, this);
    Set(CURLOPT_SOCKOPTFUNCTION, &Impl::OnStandingSocket);
    const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
    Set(CURLOPT_CONNECTTIMEOUT_MS, std::max(options.connectTimeout - spent, std::chrono::milliseconds(1)));
    SetUrl(Scheme(options), OwnAddress(own).value_or(kLoopback));
  }

  /// Makes libcurl report the address that it is connected to, not the name's first one.
  void UseServerAddress() {
    const std::string host = UrlHost(target.host).value_or("");
    const char* address = nullptr;
    if (host.find(':') != std::string::npos ||  // an address already
        curl_easy_getinfo(handle.get(), CURLINFO_PRIMARY_IP, &address) != CURLE_OK || address == nullptr) {
      return;
    }
    const std::string entry = host + ':' + std::to_string(target.port) + ':' + address;
    addresses.reset(curl_slist_append(nullptr, entry.c_str()));
    Set(CURLOPT_RESOLVE, addresses.get());
  }

  /// The socket of the connection. Raises DeliveryFailure.
  curl_socket_t Perform() {
    curl_socket_t connected = CURL_SOCKET_BAD;
    CURLcode result = curl_easy_perform(handle.get());
    if (result == CURLE_OK) result = curl_easy_getinfo(handle.get(), CURLINFO_ACTIVESOCKET, &connected);
    if (result != CURLE_OK) Fail(result);
    return connected;
  }

  [[nodiscard]] const char* Scheme(const SmtpOptions& options) const {
    const auto& implicit = options.implicitTlsPorts;
    const bool tlsFirst =
        target.encrypted && std::find(implicit.begin(), implicit.end(), target.port) != implicit.end();
    return tlsFirst ? "smtps" : "smtp";
  }

  void SetUrl(const char* scheme, const std::string& hello) {
    if (target.port == 0) throw DeliveryFailure(ErrorNumber::kConnection, "nessuna porta indicata");
    const std::optional<std::string> host = UrlHost(target.host);
    if (!host) throw DeliveryFailure(ErrorNumber::kDns, "nome del server non valido");
    const Url url(curl_url());
    const std::string path = '/' + hello;
    const bool set =
        url != nullptr && curl_url_set(url.get(), CURLUPART_SCHEME, scheme, 0) == CURLUE_OK &&
        curl_url_set(url.get(), CURLUPART_HOST, host->c_str(), 0) == CURLUE_OK &&
        curl_url_set(url.get(), CURLUPART_PORT, std::to_string(target.port).c_str(), 0) == CURLUE_OK &&
        curl_url_set(url.get(), CURLUPART_PATH, path.c_str(), CURLU_URLENCODE) == CURLUE_OK;
    char* text = nullptr;
    if (!set || curl_url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK) {
      throw DeliveryFailure(ErrorNumber::kDns, "nome del server non valido");
    }
    const std::unique_ptr<char, void (*)(void*)> owned(text, curl_free);
    Set(CURLOPT_URL, owned.get());
  }

  void SetEncryption(const SmtpOptions& options) {
    if (!target.encrypted) return Set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_NONE));
    Set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    Set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    Set(CURLOPT_SSL_VERIFYPEER, options.verifyCertificates ? 1L : 0L);
    Set(CURLOPT_SSL_VERIFYHOST, options.verifyCertificates ? 2L : 0L);
    const char* bundle = nullptr;
    if (!options.caFile.empty()) {
      Set(CURLOPT_CAINFO, options.caFile.c_str());
    } else if (curl_easy_getinfo(handle.get(), CURLINFO_CAINFO, &bundle) != CURLE_OK || bundle == nullptr ||
               ::access(bundle, R_OK) != 0) {
      return;  // no bundle on this machine: keep the directory of certificates
    }
    // Only a single bundle can be kept parsed between connections of one handle.
    Set(CURLOPT_CAPATH, static_cast<const char*>(nullptr));
  }

  void SetCredentials(const SmtpOptions& options) {
    if (target.user.empty()) return;
    const auto& mechanisms = options.authMechanisms;
    const bool token =
        std::find(mechanisms.begin(), mechanisms.end(), AuthMechanism::kXoauth2) != mechanisms.end();
    if (mechanisms.empty() || target.user.find('\0') != std::string::npos ||
        target.password.View().find('\0') != std::string_view::npos) {
      throw DeliveryFailure(ErrorNumber::kAuthentication, "credenziali non utilizzabili");
    }
    Set(CURLOPT_LOGIN_OPTIONS, LoginOptions(mechanisms).c_str());
    Set(CURLOPT_USERNAME, target.user.c_str());
    secrets::Secret terminated(target.password.View().size() + 1);
    target.password.View().copy(terminated.Data(), terminated.View().size());
    Set(token ? CURLOPT_XOAUTH2_BEARER : CURLOPT_PASSWORD, terminated.Data());
  }

  static curl_socket_t OnOpen(void* self, curlsocktype /*purpose*/, curl_sockaddr* /*server*/) {
    return static_cast<Impl*>(self)->standing.Release();
  }

  static int OnStandingSocket(void* /*self*/, curl_socket_t /*socket*/, curlsocktype /*purpose*/) {
    return CURL_SOCKOPT_ALREADY_CONNECTED;
  }

  static int OnSocket(void* self, curl_socket_t socket, curlsocktype /*purpose*/) {
    // A program that the host starts must not hold the connection, which may outlive the message.
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    auto& stage = static_cast<Impl*>(self)->stage;
    if (stage == Stage::kLookUp) stage = Stage::kConnecting;
    return CURL_SOCKOPT_OK;
  }

  static int OnDebug(CURL* /*handle*/, curl_infotype type, char* data, std::size_t size,
                     void* self) noexcept {
    try {
      static_cast<Impl*>(self)->Observe(type, {data, size});
    } catch (
        ...) {  // NOLINT(bugprone-empty-catch): out of memory for a trace line; nothing may pass through C
    }
    return 0;
  }

  void Observe(curl_infotype type, std::string_view data) {
    if (type == CURLINFO_TEXT) tracer.Note(data);
    if (type == CURLINFO_HEADER_OUT) {
      tracer.Sent(data);
      ObserveCommand(data);
    }
    if (type == CURLINFO_HEADER_IN) {
      tracer.Received(data);
      if (stage == Stage::kHello && data.substr(0, 3) == "250" && data.size() > 4) {
        const std::string_view line = text::Trim(data.substr(4, data.find_first_of("\r\n", 4) - 4));
        std::string keyword(line.substr(0, line.find_first_of(" =")));
        for (char& c : keyword) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        extensions.push_back(std::move(keyword));
      }
    }
  }

  /// libcurl sends a QUIT of its own after a failure; it leaves the stage as it is.
  void ObserveCommand(std::string_view command) {
    const std::string_view verb = command.substr(0, command.find_first_of(" \r\n"));
    if (verb == "EHLO" || verb == "HELO") {
      stage = Stage::kHello;
      extensions.clear();
    } else if (verb == "STARTTLS") {
      stage = Stage::kConnecting;
    } else if (verb == "AUTH") {
      stage = Stage::kAuthentication;
    }
  }

  [[nodiscard]] ErrorNumber NumberOf(CURLcode result) const {
    switch (result) {
      case CURLE_COULDNT_RESOLVE_HOST:
      case CURLE_COULDNT_RESOLVE_PROXY:
      case CURLE_URL_MALFORMAT:
        return ErrorNumber::kDns;
      case CURLE_LOGIN_DENIED:
        return ErrorNumber::kAuthentication;
      case CURLE_USE_SSL_FAILED:
      case CURLE_SSL_CONNECT_ERROR:
      case CURLE_PEER_FAILED_VERIFICATION:
        return ErrorNumber::kConnection;
      default:
        break;
    }
    switch (stage) {
      case Stage::kLookUp:
        return result == CURLE_OPERATION_TIMEDOUT ? ErrorNumber::kDns : ErrorNumber::kConnection;
      case Stage::kConnecting:
        return ErrorNumber::kConnection;
      case Stage::kHello:
        return ErrorNumber::kHello;
      case Stage::kAuthentication:
        return ErrorNumber::kAuthentication;
    }
    return ErrorNumber::kConnection;
  }

  /// Ends the attempt to connect.
  [[noreturn]] void Fail(CURLcode result) {
    const ErrorNumber number = NumberOf(result);
    const std::string text = errorText[0] != '\0' ? errorText.data() : curl_easy_strerror(result);
    Drop();
    throw DeliveryFailure(number, text);
  }

  void Drop() noexcept {
    handle.reset();
    standing.Close();
    socket = CURL_SOCKET_BAD;
  }

  /// Waits for one of `events`; false when the deadline passes.
  [[nodiscard]] bool Wait(short events, Clock::time_point deadline) const {
    pollfd entry{socket, events, 0};
    for (;;) {
      const int ready = ::poll(&entry, 1, posix::MillisecondsUntil(deadline));
      if (ready > 0) return true;
      if (ready == 0) return false;
      if (errno != EINTR) throw BrokenConnection(std::generic_category().message(errno));
    }
  }

  /// Receives what is available into `into`; false when nothing is.
  bool ReceiveSome(std::string& into) const {
    std::array<char, 4096> buffer{};
    std::size_t count = 0;
    const CURLcode result = curl_easy_recv(handle.get(), buffer.data(), buffer.size(), &count);
    if (result == CURLE_AGAIN) return false;
    if (result != CURLE_OK) throw BrokenConnection(curl_easy_strerror(result));
    if (count == 0) throw BrokenConnection(kPeerClosed);
    into.append(buffer.data(), count);
    return true;
  }
};

Channel::Channel(Target target, Tracer& tracer) : impl_(std::make_unique<Impl>(std::move(target), tracer)) {}

Channel::~Channel() = default;

const Target& Channel::Server() const {
  return impl_->target;
}

void Channel::Connect(const SmtpOptions& options) {
  RequireCurl();
  impl_->Prepare(options);
  impl_->ConnectAhead(options);
  impl_->socket = impl_->Perform();
  impl_->tracer.LoginOver();
  // What follows is traced by the session; libcurl would only talk about its internals.
  impl_->Set(CURLOPT_VERBOSE, 0L);
}

bool Channel::Offers(std::string_view keyword) const {
  const auto& extensions = impl_->extensions;
  return std::find(extensions.begin(), extensions.end(), keyword) != extensions.end();
}

bool Channel::Send(std::string_view bytes, std::chrono::milliseconds stall) {
  auto deadline = Clock::now() + stall;
  while (!bytes.empty()) {
    std::size_t count = 0;
    const CURLcode result = curl_easy_send(impl_->handle.get(), bytes.data(), bytes.size(), &count);
    if (result == CURLE_OK && count > 0) {
      bytes.remove_prefix(count);
      deadline = Clock::now() + stall;
      continue;
    }
    if (result != CURLE_OK && result != CURLE_AGAIN) throw BrokenConnection(curl_easy_strerror(result));
    // A server that has had enough says so and stops reading, so listen while waiting.
    if (!impl_->Wait(POLLOUT | POLLIN, deadline)) throw BrokenConnection("tempo di invio scaduto");
    if (PeerSpoke()) return false;
  }
  return true;
}

std::string Channel::Receive(Clock::time_point deadline) {
  std::string bytes;
  bytes.swap(impl_->early);
  // Under encryption some of what has come in may already be decrypted, which the socket does not know. A
  // plain one is asked first: the server has seldom answered yet, and receiving nothing costs as much as
  // receiving something.
  for (bool wait = !impl_->target.encrypted; bytes.empty(); wait = true) {
    if (wait && !impl_->Wait(POLLIN, deadline)) {
      throw BrokenConnection(kNoReply);
    }
    impl_->ReceiveSome(bytes);
  }
  return bytes;
}

bool Channel::PeerSpoke() {
  if (impl_->early.empty() && impl_->Wait(POLLIN, Clock::now())) impl_->ReceiveSome(impl_->early);
  return !impl_->early.empty();
}

void Channel::Drop() noexcept {
  impl_->Drop();
}

}  // namespace orve::adapters::smtp
