// Connections that wait for the next message to the same server.
//
// The pool belongs to whoever makes the components, and ends with him: there is one for each environment, not
// one for the process. It has no thread of its own. What has waited too long is closed when somebody next
// asks for a connection, gives one back, or ends the pool; until then the server's own limit holds.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "smtp/session.h"
#include "smtp/smtp_options.h"

namespace orve::adapters::smtp {

struct PoolOptions {
  /// How long a connection waits for its next message. Servers give a client minutes, some under load
  /// seconds.
  std::chrono::milliseconds idleLimit{30'000};
  /// After so many messages a connection is closed, and the next message gets a new one.
  std::size_t messagesPerConnection = 100;
  /// Connections that wait at a time; the one that has waited longest makes room.
  std::size_t waiting = 8;
  /// Receives what is said to a server after its connection was given back, as SmtpOptions::trace does. The
  /// trace of a message hears of its connection no longer than until then.
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
  /// Says QUIT on what waits and closes it, without waiting for a server.
  ~ConnectionPool();

  /// A connection that would be a new one's like and that still stands, set to `options`; none when there is
  /// none.
  [[nodiscard]] std::unique_ptr<Session> Take(const std::shared_ptr<const SmtpOptions>& options,
                                              const Target& target);

  /// Keeps the connection if it is good for a further message, else closes it.
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
  std::vector<Waiting> waiting_;  // the one that has waited longest first
};

}  // namespace orve::adapters::smtp
