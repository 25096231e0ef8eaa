// The ways in which a procedure can end on an error, with one guard for each.
#pragma once

#include <string_view>
#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve {

/// In silence: runs the steps; if they fail, the failure is dropped and execution continues after them. Used
/// around a whole procedure, or around each of its statements.
template <class Passi>
void IgnoraErrori(Passi&& passi) noexcept {
  try {
    std::forward<Passi>(passi)();
  } catch (...) {  // NOLINT(bugprone-empty-catch): that is the point
  }
}

/// By a report: `segnala` is told of the error. What it raises goes on to the caller.
template <class Segnala, class Passi>
void SegnalaErrori(Segnala&& segnala, Passi&& passi) {
  try {
    std::forward<Passi>(passi)();
  } catch (...) {
    std::forward<Segnala>(segnala)(host::ErroreCorrente());
  }
}

/// By passing it on, with `suffisso` after its description.
template <class Passi>
auto PassaErrori(std::string_view suffisso, Passi&& passi) {
  try {
    return std::forward<Passi>(passi)();
  } catch (...) {
    throw host::ErroreCorrente().ConSuffisso(suffisso);
  }
}

}  // namespace orve
