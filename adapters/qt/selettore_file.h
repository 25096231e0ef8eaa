// The choice of a file: every window for it passes through here.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::qt {

/// Files that the person has dropped on a window, each waiting to be the answer to the next choice.
using FileLasciati = QStringList;

using CreatoreFile = std::function<std::shared_ptr<host::OggettoFile>()>;

/// `lasciati` is asked before a window is shown.
[[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettore(std::shared_ptr<FileLasciati> lasciati,
                                                                 CreatoreFile creaFile);

}  // namespace orve::adapters::qt
