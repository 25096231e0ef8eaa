// The choice of a file in Qt's own window.
#pragma once

#include <QString>
#include <memory>
#include <string>

#include "forms/selettore_file.h"

namespace orve::adapters::qt {

[[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettore(
    std::shared_ptr<forms::FileLasciati> lasciati, forms::CreatoreFile creaFile);

/// The path as the disk has it, which need not be UTF-8.
[[nodiscard]] std::string PercorsoNativo(const QString& file);

}  // namespace orve::adapters::qt
