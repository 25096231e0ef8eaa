#include "mapi/sendmail.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <system_error>

#include "mapi/child.h"
#include "mapi/failure.h"
#include "mime/header_text.h"
#include "text/text.h"

namespace orve::adapters::mapi {

namespace {

// The program has stopped reading; its exit status will say why.
struct InputClosed {};

std::string Quoted(const std::string& program) {
  return "«" + mime::ForDisplay(program) + "»";
}

std::vector<std::string> Arguments(const Envelope& envelope) {
  std::vector<std::string> arguments = {"-i"};  // a line with a lone dot does not end the message
  if (!envelope.sender.empty()) arguments.insert(arguments.end(), {"-f", envelope.sender});
  arguments.emplace_back("--");
  arguments.insert(arguments.end(), envelope.recipients.begin(), envelope.recipients.end());
  return arguments;
}

[[noreturn]] void RaiseNotStarted(const MapiOptions& options, int error, std::size_t recipients) {
  if (error == E2BIG) {
    throw MapiFailure(kTooManyRecipients,
                      std::to_string(recipients) + " destinatari sono troppi per un solo messaggio");
  }
  throw MapiFailure(kFailure, "Impossibile avviare " + Quoted(options.sendmail) + ": " +
                                  std::generic_category().message(error));
}

std::string Seconds(std::chrono::milliseconds timeout) {
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(timeout).count();
  return std::to_string(seconds) + (seconds == 1 ? " secondo" : " secondi");
}

[[noreturn]] void RaiseTimedOut(const MapiOptions& options, const char* what, bool hadItAll) {
  throw MapiFailure(kFailure, Quoted(options.sendmail) + what + Seconds(options.timeout), hadItAll);
}

// The program's output on one line, after its name and how it ended.
std::string Account(const MapiOptions& options, const std::string& end, const std::string& output) {
  const std::string line = mime::HeaderSafe(output);
  const std::string words(text::Trim(line));
  return Quoted(options.sendmail) + " " + end + (words.empty() ? "" : ": " + words);
}

std::optional<Child::End> AwaitEnd(const MapiOptions& options, Child& child) {
  try {
    return child.Wait(options.timeout);
  } catch (const std::system_error& error) {  // an application that ignores SIGCHLD, say
    throw MapiFailure(
        kFailure, Quoted(options.sendmail) + ": esito sconosciuto (" + error.code().message() + ")", true);
  }
}

void RequireSuccess(const MapiOptions& options, const Child& child, const Child::End& end) {
  if (end.signal != 0) {
    throw MapiFailure(kFailure,
                      Account(options, "terminato dal segnale " + std::to_string(end.signal), child.Output()),
                      true);
  }
  if (end.status != 0) {
    throw MapiFailure(NumberOfExitStatus(end.status),
                      Account(options, "terminato con stato " + std::to_string(end.status), child.Output()));
  }
}

/// Hands over the message; false when the program stopped reading before the end. Mail on Unix ends lines
/// with LF, and the message has no CR except in its line ends.
bool Feed(const MapiOptions& options, Child& child, const Writer& write) {
  std::string unixLines;
  try {
    write([&](std::string_view piece) {
      unixLines.assign(piece);
      unixLines.erase(std::remove(unixLines.begin(), unixLines.end(), '\r'), unixLines.end());
      const Child::Written written = child.Write(unixLines, options.timeout);
      if (written == Child::Written::kTimedOut)
        RaiseTimedOut(options, " non ha letto il messaggio entro ", false);
      if (written == Child::Written::kClosed) throw InputClosed();
    });
    return true;
  } catch (const InputClosed&) {
    return false;
  }
}

}  // namespace

void RequireSendmail(const MapiOptions& options) {
  struct stat status {};
  int error = 0;
  if (options.sendmail.find('\0') != std::string::npos) {
    error = ENOENT;
  } else if (::stat(options.sendmail.c_str(), &status) != 0 ||
             ::access(options.sendmail.c_str(), X_OK) != 0) {
    error = errno;
  } else if (!S_ISREG(status.st_mode)) {
    error = EACCES;
  }
  if (error == 0) return;
  throw MapiFailure(kLoginFailure,
                    "Il comando per l'invio della posta " + Quoted(options.sendmail) +
                        (error == ENOENT || error == ENOTDIR ? " non esiste" : " non si può eseguire"));
}

void Submit(const MapiOptions& options, const Envelope& envelope, const Writer& write) {
  std::optional<Child> child;
  try {
    child.emplace(options.sendmail, Arguments(envelope));
  } catch (const std::system_error& error) {
    RaiseNotStarted(options, error.code().value(), envelope.recipients.size());
  }
  // If anything is thrown from here on, the program is ended before it sees the end of its input, so it never
  // mistakes a truncated message for a whole one.
  const bool complete = Feed(options, *child, write);
  child->CloseInput();
  const std::optional<Child::End> end = AwaitEnd(options, *child);
  if (!end) RaiseTimedOut(options, " non ha finito entro ", true);
  RequireSuccess(options, *child, *end);
  if (!complete) {
    throw MapiFailure(kFailure, Account(options, "non ha letto tutto il messaggio", child->Output()), true);
  }
}

}  // namespace orve::adapters::mapi
