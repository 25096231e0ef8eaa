// Time-outs that a test wants to see pass, on a machine of which nobody knows how slow it is.
#pragma once

#include <chrono>
#include <initializer_list>

namespace orve::support {

/// What `attempt` gives with the first of these time-outs with which it is `good`, else with the last. On a
/// quiet machine the first one is enough for all that must come before the silence; what goes wrong for
/// another reason than slowness goes wrong with each.
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
