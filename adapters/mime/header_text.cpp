#include "mime/header_text.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>

#include "host/errore.h"
#include "text/text.h"

namespace orve::adapters::mime {

namespace {

struct GFree {
  void operator()(char* text) const { g_free(text); }
};

/// Bytes of the control character that begins at `position`, 0 when there is none. Besides the ASCII ones
/// these are U+0080 to U+009F and the line and paragraph separators.
std::size_t ControlLength(std::string_view text, std::size_t position) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned first = byte(position);
  if (first < 0x20 || first == 0x7f) return 1;
  if (first == 0xc2 && byte(position + 1) >= 0x80 && byte(position + 1) <= 0x9f) return 2;
  if (first == 0xe2 && byte(position + 1) == 0x80 && (byte(position + 2) & 0xfeU) == 0xa8) return 3;
  return 0;
}

}  // namespace

std::string ValidUtf8(std::string_view text) {
  const auto length = static_cast<gssize>(text.size());
  if (IsAscii(text) && text.find('\0') == std::string_view::npos) return std::string(text);
  if (g_utf8_validate(text.data(), length, nullptr) != FALSE) return std::string(text);
  const std::unique_ptr<char, GFree> repaired(g_utf8_make_valid(text.data(), length));
  return repaired.get();
}

std::string HeaderSafe(std::string_view text) {
  std::string safe;
  safe.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t control = ControlLength(text, i);
    safe += control != 0 ? ' ' : text[i];
    i += control != 0 ? control : 1;
  }
  return ValidUtf8(safe);
}

bool IsAscii(std::string_view text) {
  unsigned char bits = 0;  // without an end before the last byte, so that many are looked at at a time
  for (const char c : text) bits |= static_cast<unsigned char>(c);
  return bits < 0x80;
}

void RequireOwnHeaderName(std::string_view name) {
  constexpr std::size_t kLongestName = 76;
  const bool printable =
      std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c <= '~' && c != ':'; });
  if (name.empty() || name.size() > kLongestName || !printable) {
    throw host::Errore(host::kArgomentoNonValido, "orve-mime",
                       "Nome di intestazione non valido: \"" + ForDisplay(name) + "\"");
  }
  static constexpr std::array<std::string_view, 8> kReserved = {
      "From", "To", "Cc", "Bcc", "Subject", "Date", "Message-ID", "MIME-Version"};
  const bool reserved =
      std::any_of(kReserved.begin(), kReserved.end(),
                  [&](std::string_view own) { return text::EqualsIgnoreCase(name, own); }) ||
      text::EqualsIgnoreCase(name.substr(0, 8), "Content-");
  if (reserved) {
    throw host::Errore(host::kArgomentoNonValido, "orve-mime",
                       "L'intestazione \"" + std::string(name) + "\" è gestita dal messaggio stesso");
  }
}

std::string ForDisplay(std::string_view text) {
  constexpr std::size_t kLongest = 80;
  if (text.size() <= kLongest) return HeaderSafe(text);
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0U) == 0x80) --end;
  return HeaderSafe(text.substr(0, end)) + "...";
}

}  // namespace orve::adapters::mime
