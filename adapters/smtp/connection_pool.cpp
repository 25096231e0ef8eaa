#include "smtp/connection_pool.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orve::adapters::smtp {

ConnectionPool::ConnectionPool(PoolOptions options) : options_(std::move(options)) {
  // So that nothing has to be allocated where a connection is given back.
  waiting_.reserve(options_.waiting + 1);
}

ConnectionPool::~ConnectionPool() {
  Close(waiting_);
}

std::unique_ptr<Session> ConnectionPool::Take(const std::shared_ptr<const SmtpOptions>& options,
                                              const Target& target) {
  while (std::unique_ptr<Session> session = Find(*options, target)) {
    if (session->StillThere()) {
      session->Use(options);
      return session;
    }
    session->Close();
  }
  return nullptr;
}

void ConnectionPool::Give(std::unique_ptr<Session> session) noexcept {
  if (!session->Clean() || session->Messages() >= options_.messagesPerConnection) return session->Close();
  std::vector<Waiting> surplus;
  try {
    session->TraceInto(options_.trace);
    const std::lock_guard lock(mutex_);
    waiting_.push_back({std::move(session), Now()});
    surplus = RemoveSurplus();
  } catch (...) {  // NOLINT(bugprone-empty-catch): out of memory; the message is delivered, and a connection
                   // that is not kept costs time only
  }
  Close(surplus);
}

Channel::Clock::time_point ConnectionPool::Now() const {
  return options_.now ? options_.now() : Channel::Clock::now();
}

/// The one that has been idle for the shortest time; the others then reach their limit and are closed.
std::unique_ptr<Session> ConnectionPool::Find(const SmtpOptions& options, const Target& target) {
  std::vector<Waiting> surplus;
  std::unique_ptr<Session> session;
  {
    const std::lock_guard lock(mutex_);
    surplus = RemoveSurplus();
    const auto found = std::find_if(waiting_.rbegin(), waiting_.rend(), [&](const Waiting& waiting) {
      return waiting.session->Serves(options, target);
    });
    if (found != waiting_.rend()) {
      session = std::move(found->session);
      waiting_.erase(std::next(found).base());
    }
  }
  Close(surplus);
  return session;
}

/// Takes out connections that have been idle too long, and the oldest if there are too many. Under the lock,
/// unlike the closing.
std::vector<ConnectionPool::Waiting> ConnectionPool::RemoveSurplus() {
  const auto oldest = Now() - options_.idleLimit;
  auto end = std::find_if(waiting_.begin(), waiting_.end(),
                          [&](const Waiting& waiting) { return waiting.since > oldest; });
  const std::size_t room = std::min(options_.waiting, waiting_.size());
  end = std::max(end, waiting_.end() - static_cast<std::ptrdiff_t>(room));
  std::vector<Waiting> surplus(std::make_move_iterator(waiting_.begin()), std::make_move_iterator(end));
  waiting_.erase(waiting_.begin(), end);
  return surplus;
}

void ConnectionPool::Close(std::vector<Waiting>& waiting) noexcept {
  for (Waiting& one : waiting) one.session->Close();
  waiting.clear();
}

}  // namespace orve::adapters::smtp
