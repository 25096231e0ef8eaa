// The choice of a file: every window for it passes through here.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::win32::finestre {

/// Files that the person has dropped on a window, each waiting to be the answer to the next choice.
using FileLasciati = std::deque<std::wstring>;

using CreatoreFile = std::function<std::shared_ptr<host::OggettoFile>()>;

/// `lasciati` is asked before a window is shown.
[[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettore(std::shared_ptr<FileLasciati> lasciati,
                                                                 CreatoreFile creaFile);

}  // namespace orve::adapters::win32::finestre
