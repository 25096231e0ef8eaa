// What others on the machine could find in the program's memory. For the program itself: a library has no
// such say in the process that loads it.
#pragma once

namespace orve::app {

/// No core file, no debugger and no access through /proc by the same user, as far as the system supports it.
void ChiudiMemoria() noexcept;

/// Removes a variable that may hold a password from the environment and wipes its memory, once it has been
/// read.
void DimenticaVariabile(const char* nome) noexcept;

}  // namespace orve::app
