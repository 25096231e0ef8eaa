// What others on the machine could find in the program's memory. For the program itself: a library has no say
// in the process that loads it.
#pragma once

namespace orve::app {

/// No core file, no debugger and no look into /proc by the same user, as far as the system knows how.
void ChiudiMemoria() noexcept;

/// Takes a variable that may hold a password out of the environment and wipes where it stood, once it has
/// been read.
void DimenticaVariabile(const char* nome) noexcept;

}  // namespace orve::app
