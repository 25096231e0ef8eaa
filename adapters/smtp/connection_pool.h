// Idle connections, kept for the next message to the same server.
//
// The pool belongs to the code that makes the components, and ends with it: there is one for each
// environment, not one for the process. It has no thread of its own. A connection that has been idle too long
// is closed when somebody next asks for one, gives one back, or ends the pool; until then the server's own
// limit applies.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "orve-mailserver/smtp/smtp_options.h"
#include "smtp/session.h"

namespace orve::adapters::smtp {

struct PoolOptions {
  /// How long a connection waits for its next message. Servers allow a client minutes, some under load only
  /// seconds.
  std::chrono::milliseconds idleLimit{30'000};
  /// After this many messages a connection is closed, and the next message gets a new one.
  std::size_t messagesPerConnection = 100;
  /// The most connections kept idle; the one idle for longest makes room.
  std::size_t waiting = 8;
  /// Receives what is said to a server after its connection was given back, as SmtpOptions::trace does. From
  /// then on the trace of a message hears no more of its connection.
  std::function<void(std::string_view)> trace;
  /// Empty: the system's clock.
  std::function<Channel::Clock::time_point()> now;
};

/// May be used by several threads at a time; a connection serves one of them.
class ConnectionPool {
 public:
  explicit ConnectionPool(PoolOptions options = {});
  ConnectionPool(const ConnectionPool&) = delete;
  ConnectionPool& operator=(const ConnectionPool&) = delete;
  ConnectionPool(ConnectionPool&&) = delete;
  ConnectionPool& operator=(ConnectionPool&&) = delete;
  /// Sends QUIT on the idle connections and closes them, without waiting for a server.
  ~ConnectionPool();

  /// An equivalent of a new connection that is still open, set to `options`; none when there is none.
  [[nodiscard]] std::unique_ptr<Session> Take(const std::shared_ptr<const SmtpOptions>& options,
                                              const Target& target);

  /// Keeps the connection if it can take another message, else closes it.
  void Give(std::unique_ptr<Session> session) noexcept;

 private:
  struct Waiting {
    std::unique_ptr<Session> session;
    Channel::Clock::time_point since;
  };

  [[nodiscard]] Channel::Clock::time_point Now() const;
  [[nodiscard]] std::unique_ptr<Session> Find(const SmtpOptions& options, const Target& target);
  [[nodiscard]] std::vector<Waiting> RemoveSurplus();
  static void Close(std::vector<Waiting>& waiting) noexcept;

  const PoolOptions options_;
  std::mutex mutex_;
  std::vector<Waiting> waiting_;  // the longest idle first
};

}  // namespace orve::adapters::smtp
