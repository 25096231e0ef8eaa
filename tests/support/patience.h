// Time-outs that a test needs to see expire, on a machine of unknown speed.
#pragma once

#include <chrono>
#include <initializer_list>

namespace orve::support {

/// The result of `attempt` with the first of these time-outs for which it is `good`, else with the last. On a
/// quiet machine the first one is enough for everything that must precede the silence; what fails for reasons
/// other than slowness fails with each.
template <class Attempt, class Good, class Duration = std::chrono::milliseconds>
auto WithPatience(Attempt attempt, Good good,
                  std::initializer_list<Duration> timeouts = {
                      std::chrono::milliseconds(300), std::chrono::seconds(3), std::chrono::seconds(30)}) {
  auto timeout = timeouts.begin();
  for (;;) {
    auto outcome = attempt(*timeout);
    if (++timeout == timeouts.end() || good(outcome)) return outcome;
  }
}

}  // namespace orve::support
