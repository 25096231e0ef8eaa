#include "ldap/ldap_directory.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "ldap/attribute_names.h"
#include "ldap/failure.h"
#include "ldap/query.h"
#include "ldap/session.h"
#include "text/text.h"
#include "values/record_set_in_memoria.h"

namespace orve::adapters::ldap {

namespace {

constexpr const char* kNamingContext = "defaultNamingContext";
constexpr const char* kNamingContexts = "namingContexts";  // what every directory has
constexpr const char* kAnyObject = "(objectClass=*)";
constexpr std::int32_t kClosedObject = values::RecordSetInMemoria::kOggettoChiuso;

constexpr int kServerDown = -1;  // libldap's own code

using SessionPtr = std::shared_ptr<Session>;
/// Queries over a connection that it holds.
using Ask = std::function<std::vector<Entry>(const Query&)>;

class DirectoryObject : public host::DirectoryObject {
 public:
  /// Reads the entry, with the attributes that are likely to be asked for. Raises LdapFailure when there is
  /// no such entry.
  DirectoryObject(Ask ask, std::string name, std::string searchBase)
      : ask_(std::move(ask)), name_(std::move(name)), searchBase_(std::move(searchBase)) {
    Read(name_.empty() ? std::vector<std::string>{kNamingContext, kNamingContexts} : PersonAttributes());
  }

  [[nodiscard]] host::Variant Get(const std::string& attributo) override {
    if (name_.empty() && text::EqualsIgnoreCase(attributo, kNamingContext)) return NamingContext();
    const auto& values = Values(attributo);
    if (values.empty()) Missing(attributo);
    if (values.size() == 1) return values.front();
    return host::Variant::Array(values.begin(), values.end());
  }

  [[nodiscard]] std::string ADsPath() override { return PathOfName(name_.empty() ? "rootDSE" : name_); }

  /// The first value of an attribute that has several, in the directory's order: a person's members are
  /// single-valued.
  [[nodiscard]] host::Variant Membro(const std::string& nome) override {
    const auto& values = Values(AttributeOf(nome));
    if (values.empty()) Missing(nome);
    return values.front();
  }

 private:
  [[noreturn]] static void Missing(const std::string& name) {
    throw host::Errore(kNoProperty, "Directory", "L'oggetto non ha la proprietà " + name);
  }

  // A directory with a single tree needs no hint which one is meant.
  host::Variant NamingContext() {
    if (!searchBase_.empty()) return searchBase_;
    if (const auto& values = Values(kNamingContext); !values.empty()) return values.front();
    const auto& all = Values(kNamingContexts);
    if (all.size() != 1) Missing(kNamingContext);
    return all.front();
  }

  const std::vector<std::string>& Values(const std::string& attribute) {
    const std::string key = text::FoldCase(attribute);
    if (!known_.contains(key)) Read({attribute});
    return known_[key];
  }

  void Read(const std::vector<std::string>& attributes) {
    const auto found = ask_({name_, kAnyObject, attributes, Depth::kBase});
    if (found.empty()) throw LdapFailure(kNoSuchObject, "");
    for (const std::string& attribute : attributes) {
      known_[text::FoldCase(attribute)] = found.front().Values(attribute);
    }
  }

  static constexpr int kNoSuchObject = 32;

  Ask ask_;
  std::string name_;
  std::string searchBase_;
  std::map<std::string, std::vector<std::string>> known_;  // by folded name
};

host::Variant Column(const Entry& entry, const std::string& attribute) {
  if (text::EqualsIgnoreCase(attribute, kPathAttribute)) return PathOfName(entry.name);
  const auto values = entry.Values(AttributeOf(attribute));
  return values.empty() ? host::Variant(host::Null{}) : host::Variant(values.front());
}

std::shared_ptr<host::RecordSet> Result(const Query& query, const std::vector<Entry>& entries) {
  constexpr std::int32_t kNotGiven = host::RecordSetScollegato::kNonIndicato;
  auto result = std::make_shared<values::RecordSetInMemoria>();
  for (const std::string& attribute : query.attributes) {
    result->FieldsAppend(attribute, host::RecordSetScollegato::kTesto, 0, kNotGiven);
  }
  result->Open(kNotGiven, kNotGiven, kNotGiven);
  for (const Entry& entry : entries) {
    host::Variant::Array row;
    for (const std::string& attribute : query.attributes) row.push_back(Column(entry, attribute));
    result->AddNew(query.attributes, row);
  }
  if (!entries.empty()) result->MoveFirst();
  return result;
}

}  // namespace

struct LdapDirectory::Shared : std::enable_shared_from_this<Shared> {
  explicit Shared(LdapOptions chosen) : options(std::move(chosen)) {}

  Ask Asker() {
    auto [session, waited] = Connect();
    return [self = shared_from_this(), session = std::move(session),
            waited = waited](const Query& query) mutable {
      if (!waited) return self->Search(*session, query);
      try {
        auto found = session->Search(query);
        waited = false;
        return found;
      } catch (const LdapFailure&) {
        if (!session->Broken()) throw;
      }
      // While it was idle, the server closed it or the path to it broke. That says nothing about the server
      // now.
      std::tie(session, waited) = self->Connect();
      return self->Search(*session, query);
    };
  }

  /// A connection, and whether it already existed.
  std::pair<SessionPtr, bool> Connect() {
    if (SessionPtr session = last.lock(); session && !session->Broken()) return {session, true};
    kept.reset();
    if (failure && Clock::now() - failedAt < options.pauseAfterFailure) throw LeftAlone(*failure);
    failure.reset();
    SessionPtr session;
    try {
      session = std::make_shared<Session>(options);
    } catch (const LdapFailure& why) {
      Remember(why);
      throw;
    }
    last = session;
    if (options.keepConnection) kept = session;
    return {session, false};
  }

  std::vector<Entry> Search(Session& session, const Query& query) {
    try {
      return session.Search(query);
    } catch (const LdapFailure& why) {
      if (session.Broken() && why.Code() != kServerDown) Remember(why);
      throw;
    }
  }

  LdapOptions options;

 private:
  using Clock = std::chrono::steady_clock;

  void Remember(const LdapFailure& why) {
    failure = why;
    failedAt = Clock::now();
  }

  std::weak_ptr<Session> last;
  SessionPtr kept;
  std::optional<LdapFailure> failure;  // of the last attempt
  Clock::time_point failedAt;
};

namespace {

class DirectoryConnection : public host::DirectoryConnection {
 public:
  explicit DirectoryConnection(std::function<Ask()> connect) : connect_(std::move(connect)) {}

  void Open(const std::string& /*origine*/) override { ask_ = connect_(); }

  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& interrogazione) override {
    if (!ask_) throw host::Errore(kClosedObject, "Directory", "La connessione alla directory è chiusa");
    const Query query = ReadQuery(interrogazione);
    Query asked = query;
    asked.attributes.clear();
    for (const std::string& attribute : query.attributes) {
      if (!text::EqualsIgnoreCase(attribute, kPathAttribute))
        asked.attributes.push_back(AttributeOf(attribute));
    }
    return Result(query, ask_(asked));
  }

  [[nodiscard]] std::int32_t State() override { return ask_ ? 1 : 0; }
  void Close() override { ask_ = nullptr; }

 private:
  std::function<Ask()> connect_;
  Ask ask_;
};

}  // namespace

LdapDirectory::LdapDirectory(LdapOptions options) : shared_(std::make_shared<Shared>(std::move(options))) {
  CheckOptions(shared_->options);
}

std::shared_ptr<host::DirectoryConnection> LdapDirectory::CreaConnessione() {
  return std::make_shared<DirectoryConnection>([shared = shared_] { return shared->Asker(); });
}

std::shared_ptr<host::RecordSet> LdapDirectory::CreaRecordSet() {
  return std::make_shared<values::RecordSetInMemoria>();
}

std::shared_ptr<host::DirectoryObject> LdapDirectory::ApriOggetto(const std::string& percorso) {
  std::string name = NameOfPath(percorso);
  return std::make_shared<DirectoryObject>(shared_->Asker(), std::move(name), shared_->options.searchBase);
}

}  // namespace orve::adapters::ldap
