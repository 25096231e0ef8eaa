// Scripts of a dialogue: steps put together, and what many begin with.
#pragma once

#include <vector>

#include "support/scripted_server.h"

namespace orve::adapters::smtp {

using Script = std::vector<support::Step>;

inline Script operator+(Script left, const Script& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

inline const Script kHello = {support::Say("220 pronto"),
                              support::On("EHLO prova.example.test", "250 salve")};

}  // namespace orve::adapters::smtp
