#include "support/ldap_server.h"

#include <arpa/inet.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "places.h"
#include "support/loopback.h"

namespace orve::support {

namespace {

// A port that was free a moment ago; the server cannot say which one it has taken.
int FreePort() {
  return LoopbackSocket().Port();
}

bool Ended(pid_t pid) {
  siginfo_t state{};
  return ::waitid(P_PID, static_cast<id_t>(pid), &state, WEXITED | WNOHANG | WNOWAIT) != 0 ||
         state.si_pid == pid;
}

// A blank ends a word in the configuration.
std::string Quoted(const std::filesystem::path& path) {
  return '"' + path.string() + '"';
}

std::string Configuration(const LdapServerOptions& options, const TempDir& directory) {
  const std::filesystem::path& here = directory.Path();
  std::string text;
  for (const char* schema : {"core", "cosine", "inetorgperson"}) {
    text += "include /etc/ldap/schema/" + std::string(schema) + ".schema\n";
  }
  text += "include " + Quoted(places::Source("tests/support/person.schema")) + "\n";
  text += "modulepath /usr/lib/ldap\nmoduleload back_mdb\npidfile " + Quoted(here / "slapd.pid") + "\n";
  if (!options.certificate.empty()) {
    text += "TLSCertificateFile " + Quoted(options.certificate) + "\nTLSCertificateKeyFile " +
            Quoted(options.key) + "\n";
  }
  if (options.namesItsTree) {
    directory.Write("root.ldif",
                    "dn:\nobjectClass: top\nobjectClass: extensibleObject\ndefaultNamingContext: " +
                        std::string(LdapServer::kTree) + "\n");
    text += "rootDSE " + Quoted(here / "root.ldif") + "\n";
  }
  for (const std::string& line : options.configuration) text += line + "\n";
  const auto tree = [&](const std::string& suffix, const std::string& folder) {
    std::filesystem::create_directory(directory.Path() / folder);
    text +=
        "database mdb\nsuffix \"" + suffix + "\"\nmaxsize 16777216\ndbnosync\ndirectory " +
        Quoted(here / folder) +
        "\nindex objectClass,sAMAccountName eq\naccess to attrs=userPassword by anonymous auth by * none\n"
        "access to * by users read by * none\n";
  };
  tree(LdapServer::kTree, "tree");
  if (options.twoTrees) tree("dc=altra,dc=example", "other");
  return text;
}

}  // namespace

LdapServer::LdapServer(const LdapServerOptions& options) {
  directory_.Write("slapd.conf", Configuration(options, directory_));
  // A program at another path, so that rules which a machine imposes on the installed one do not apply to it.
  const std::string program = (directory_.Path() / "directory-server").string();
  std::filesystem::copy_file("/usr/sbin/slapd", program);
  Fill(program, places::Source("tests/support/people.ldif"));
  if (!options.entries.empty()) Fill(program, directory_.Write("entries.ldif", options.entries));
  constexpr int kAttempts = 5;
  for (int attempt = 1; !Start(program, options); ++attempt) {
    if (attempt == kAttempts) throw std::runtime_error("slapd did not start: " + process_->Output());
  }
}

void LdapServer::Fill(const std::string& program, const std::string& file) const {
  const ProcessResult filled = RunProgram(
      {program, "-T", "add", "-f", (directory_.Path() / "slapd.conf").string(), "-b", kTree, "-l", file});
  if (filled.status != 0) throw std::runtime_error("slapd could not be filled: " + filled.output);
}

bool LdapServer::Start(const std::string& program, const LdapServerOptions& options) {
  port_ = FreePort();
  securePort_ = options.certificate.empty() ? 0 : FreePort();
  std::string urls = Url();
  if (securePort_ != 0) urls += " " + SecureUrl();
  std::vector<std::string> command = {"/usr/bin/env"};
  command.insert(command.end(), options.environment.begin(), options.environment.end());
  command.insert(command.end(), {program, "-d", options.countsBinds ? "stats" : "0", "-f",
                                 (directory_.Path() / "slapd.conf").string(), "-h", urls});
  process_ = std::make_unique<Process>(command);
  const auto deadline = std::chrono::steady_clock::now() + kLongestRun;
  // It writes its process number once it has the ports: until then somebody else may be listening there.
  const std::filesystem::path number = directory_.Path() / "slapd.pid";
  while (!std::filesystem::exists(number) || !ConnectTo(port_) ||
         (securePort_ != 0 && !ConnectTo(securePort_))) {
    if (Ended(process_->Pid())) {
      process_->Wait();
      return false;
    }
    if (std::chrono::steady_clock::now() >= deadline) throw std::runtime_error("slapd does not listen");
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return !Ended(process_->Pid());
}

int LdapServer::EndAndCountBinds() {
  process_->Stop();
  process_->Wait();
  const std::string& told = process_->Output();
  constexpr std::string_view kRequest = " method=128";
  int binds = 0;
  for (std::size_t at = 0; (at = told.find(kRequest, at)) != std::string::npos; at += kRequest.size())
    ++binds;
  return binds;
}

void LdapServer::Freeze(bool frozen) const {
  ::kill(process_->Pid(), frozen ? SIGSTOP : SIGCONT);
  if (!frozen) return;
  // Until all its threads have stopped, one of them may still answer.
  siginfo_t state{};
  ::waitid(P_PID, static_cast<id_t>(process_->Pid()), &state, WSTOPPED);
}

}  // namespace orve::support
