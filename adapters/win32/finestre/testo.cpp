#include "win32/finestre/testo.h"

#include <windows.h>

#include <algorithm>
#include <limits>

namespace orve::adapters::win32::finestre {

namespace {

constexpr std::size_t kPezzo = std::numeric_limits<int>::max() / 4;

}  // namespace

std::wstring Largo(std::string_view testo) {
  const auto byte = static_cast<int>(std::min(testo.size(), kPezzo));
  std::wstring largo(
      static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, testo.data(), byte, nullptr, 0)), L'\0');
  if (!largo.empty()) {
    MultiByteToWideChar(CP_UTF8, 0, testo.data(), byte, largo.data(), static_cast<int>(largo.size()));
  }
  return largo;
}

std::string Stretto(std::wstring_view testo) {
  const auto unita = static_cast<int>(std::min(testo.size(), kPezzo));
  std::string stretto(static_cast<std::size_t>(
                          WideCharToMultiByte(CP_UTF8, 0, testo.data(), unita, nullptr, 0, nullptr, nullptr)),
                      '\0');
  if (!stretto.empty()) {
    WideCharToMultiByte(CP_UTF8, 0, testo.data(), unita, stretto.data(), static_cast<int>(stretto.size()),
                        nullptr, nullptr);
  }
  return stretto;
}

}  // namespace orve::adapters::win32::finestre
