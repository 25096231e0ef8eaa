// How long a call that takes milliseconds may wait.
#pragma once

#include <algorithm>
#include <chrono>

namespace orve::adapters::posix {

/// The time left, rounded up; 0 once it is over. At most an hour, longer than any time-out here.
[[nodiscard]] inline int MillisecondsUntil(std::chrono::steady_clock::time_point deadline) {
  constexpr std::chrono::milliseconds kLongest = std::chrono::hours(1);
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
  return static_cast<int>(std::clamp(left, std::chrono::milliseconds(0), kLongest).count());
}

}  // namespace orve::adapters::posix
