// UTF-8 and the UTF-16 of Windows.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::win32::finestre {

/// Bytes that are not UTF-8, and halves of characters, become U+FFFD.
[[nodiscard]] std::wstring Largo(std::string_view testo);
[[nodiscard]] std::string Stretto(std::wstring_view testo);

}  // namespace orve::adapters::win32::finestre
