// Running a statement with its error ignored: what procedures do that must never cost the send anything.
#pragma once

#include <utility>

namespace orve {

/// Runs the statement; if it fails, the failure is dropped and execution goes on behind it.
template <class Statement>
void IgnoraErrori(Statement&& statement) noexcept {
  try {
    std::forward<Statement>(statement)();
  } catch (...) {  // NOLINT(bugprone-empty-catch): that is the point
  }
}

}  // namespace orve
