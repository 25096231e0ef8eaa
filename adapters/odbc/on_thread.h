// Calls that must not hold their caller up for ever, whatever a driver makes of the limits that it was given.
#pragma once

#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace orve::adapters::odbc {

/// Runs the work on a thread of its own, for which nobody waits, which no signal reaches and on which the
/// process's locale does not count. Raises 7 when the system has no thread to give.
void SuUnThread(std::function<void()> lavoro);

/// The same for work that gives something, or raises. What it holds is let go before its result is there, so
/// that whoever takes the result has it to himself.
template <class Lavoro>
[[nodiscard]] auto Avviato(Lavoro lavoro) -> std::future<decltype(lavoro())> {
  auto promessa = std::make_shared<std::promise<decltype(lavoro())>>();
  auto esito = promessa->get_future();
  SuUnThread([promessa, lavoro = std::move(lavoro)]() mutable {
    try {
      promessa->set_value([&] {
        Lavoro suo = std::move(lavoro);
        return suo();
      }());
    } catch (...) {
      promessa->set_exception(std::current_exception());
    }
  });
  return esito;
}

}  // namespace orve::adapters::odbc
