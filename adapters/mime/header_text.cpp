#include "mime/header_text.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "orve-mailserver/host/errore.h"
#include "text/text.h"
#include "text/unseen.h"

namespace orve::adapters::mime {

namespace {

struct GFree {
  void operator()(char* text) const { g_free(text); }
};

/// `formats`: what replaces a character that reverses the text or shows nothing; none: it stays.
std::string OnOneLine(std::string_view text,
                      const std::function<std::optional<std::string>(char32_t)>& formats) {
  return ValidUtf8(text::ReplaceUnseen(text, [&](char32_t code, text::Unseen kind) {
    return kind == text::Unseen::kControl ? std::optional<std::string>(" ") : formats(code);
  }));
}

}  // namespace

std::string ValidUtf8(std::string_view text) {
  const auto length = static_cast<gssize>(text.size());
  if (IsAscii(text) && text.find('\0') == std::string_view::npos) return std::string(text);
  if (g_utf8_validate(text.data(), length, nullptr) != FALSE) return std::string(text);
  const std::unique_ptr<char, GFree> repaired(g_utf8_make_valid(text.data(), length));
  return repaired.get();
}

std::string TerminalSafe(std::string_view text) {
  return text::ReplaceUnseen(ValidUtf8(text), [](char32_t code, text::Unseen) -> std::optional<std::string> {
    if (code == '\n') return std::nullopt;
    if (code == '\r') return "";
    return code == '\t' ? " " : text::Escaped(code);
  });
}

std::string TerminalSafeLine(std::string_view text) {
  std::string line = TerminalSafe(text);
  std::replace(line.begin(), line.end(), '\n', ' ');
  return line;
}

std::string HeaderSafe(std::string_view text) {
  return OnOneLine(text, [](char32_t /*code*/) { return std::nullopt; });
}

std::string NameSafe(std::string_view text) {
  return OnOneLine(text, [](char32_t /*code*/) { return "_"; });
}

bool IsAscii(std::string_view text) {
  unsigned char bits = 0;  // no early exit, so that many bytes are examined at a time
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
  if (text.size() <= kLongest) return OnOneLine(text, text::Escaped);
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0U) == 0x80) --end;
  return OnOneLine(text.substr(0, end), text::Escaped) + "...";
}

}  // namespace orve::adapters::mime
