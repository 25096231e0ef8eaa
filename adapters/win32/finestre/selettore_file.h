// The choice of a file in the system's own window.
#pragma once

#include <memory>

#include "forms/selettore_file.h"

namespace orve::adapters::win32::finestre {

[[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettore(
    std::shared_ptr<forms::FileLasciati> lasciati, forms::CreatoreFile creaFile);

}  // namespace orve::adapters::win32::finestre
