// Calls that must not hold up their caller for ever, whatever a driver does with the limits that it was
// given.
#pragma once

#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace orve::adapters::odbc {

/// Runs the work on a thread of its own, which nobody waits for, no signal reaches and the process's locale
/// does not affect. Raises 7 when the system has no thread to give.
void SuUnThread(std::function<void()> lavoro);

/// The same for work that returns something, or raises. What it holds is released before its result is
/// available, so that the receiver is the result's only owner.
template <class Work>
[[nodiscard]] auto Avviato(Work lavoro) -> std::future<decltype(lavoro())> {
  auto promessa = std::make_shared<std::promise<decltype(lavoro())>>();
  auto esito = promessa->get_future();
  SuUnThread([promessa, lavoro = std::move(lavoro)]() mutable {
    try {
      promessa->set_value([&] {
        Work suo = std::move(lavoro);
        return suo();
      }());
    } catch (...) {
      promessa->set_exception(std::current_exception());
    }
  });
  return esito;
}

}  // namespace orve::adapters::odbc
