#include "mime/header_writer.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::mime {

namespace {

constexpr std::size_t kLineWidth = 76;
constexpr std::string_view kWordStart = "=?utf-8?B?";
constexpr std::string_view kWordEnd = "?=";
constexpr std::size_t kWordFrame = kWordStart.size() + kWordEnd.size();

struct FreeEncoded {
  void operator()(char* text) const { g_free(text); }
};

/// Appends to a header and keeps track of the column.
class HeaderLine {
 public:
  explicit HeaderLine(std::string_view name) : text_(std::string(name) + ':') {}

  [[nodiscard]] std::size_t Column() const { return text_.size() - lineStart_; }

  /// Appends a blank and `word`, on a new line when this one is full.
  void AddWord(std::string_view word) {
    if (Column() > 0 && Column() + 1 + word.size() > kLineWidth) StartLine();
    text_ += ' ';
    text_ += word;
  }

  /// Appends to the last word.
  void Append(std::string_view text) { text_ += text; }

  /// Begins a continuation line; the blank that marks it is added with the next word.
  void StartLine() {
    text_ += "\r\n";
    lineStart_ = text_.size();
  }

  /// Appends `text` as base64 words that end at character boundaries.
  void AddEncoded(std::string_view text) {
    constexpr std::size_t kWorthwhile = 24;  // characters of base64 that are worth a word of their own
    bool first = true;
    while (!text.empty()) {
      if (!first || Column() + 1 + kWordFrame + kWorthwhile > kLineWidth) StartLine();
      text_ += ' ';
      const std::size_t room = (kLineWidth - Column() - kWordFrame) / 4 * 3;
      std::size_t length = std::min(room, text.size());
      while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xc0U) == 0x80) --length;
      const std::unique_ptr<char, FreeEncoded> encoded(
          g_base64_encode(reinterpret_cast<const unsigned char*>(text.data()), length));
      text_ += kWordStart;
      text_ += encoded.get();
      text_ += kWordEnd;
      text.remove_prefix(length);
      first = false;
    }
  }

  [[nodiscard]] std::string Finished() && { return std::move(text_ += "\r\n"); }

 private:
  std::string text_;
  std::size_t lineStart_ = 0;
};

/// Runs of blanks and the word after each, as they are in the text.
template <class Action>
void ForEachWord(std::string_view text, Action action) {
  while (!text.empty()) {
    const std::size_t word = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t end = std::min(text.find(' ', word), text.size());
    action(text.substr(0, end));
    text.remove_prefix(end);
  }
}

/// True when the text can go into a header as it is: ASCII, nothing that a mail reader would take for an
/// encoded word, no word (with the blanks before it) too long for a line.
bool NeedsNoEncoding(std::string_view text) {
  constexpr std::size_t kLongestWord = 500;
  if (!IsAscii(text) || text.find("=?") != std::string_view::npos) return false;
  bool fits = true;
  ForEachWord(text, [&](std::string_view word) { fits = fits && word.size() <= kLongestWord; });
  return fits;
}

bool IsAtomText(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("!#$%&'*+-/=?^_`{|}~").find(c) != std::string_view::npos;
}

/// Words of plain characters with single blanks between them.
bool IsPlainPhrase(std::string_view name) {
  return name.find("  ") == std::string_view::npos &&
         std::all_of(name.begin(), name.end(), [](char c) { return c == ' ' || IsAtomText(c); });
}

std::string Quoted(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

void AddMailbox(HeaderLine& line, const std::string& name, const std::string& address, bool brackets) {
  constexpr std::size_t kLongestPlainName = 60;
  if (name.empty()) return line.AddWord(brackets ? '<' + address + '>' : address);
  if (!IsAscii(name) || name.size() > kLongestPlainName || name.find("=?") != std::string::npos) {
    line.AddEncoded(name);
  } else {
    line.AddWord(IsPlainPhrase(name) ? name : Quoted(name));
  }
  line.AddWord('<' + address + '>');
}

std::string AddressLines(std::string_view name, const std::vector<Address>& addresses, bool brackets) {
  HeaderLine line(name);
  bool first = true;
  for (const Address& address : addresses) {
    const std::optional<WireAddress> wire = ToWire(address.address);
    if (!wire) {
      throw host::Errore(host::kArgomentoNonValido, "orve-mime",
                         "Indirizzo non valido: \"" + ForDisplay(address.address) + "\"");
    }
    if (!first) {
      line.Append(",");
      line.StartLine();
    }
    AddMailbox(line, std::string(text::Trim(NameSafe(address.name))), wire->text, brackets);
    first = false;
  }
  return std::move(line).Finished();
}

bool HoldsMailboxes(std::string_view name) {
  static constexpr std::array<std::string_view, 5> kNames = {
      "Disposition-Notification-To", "Return-Receipt-To", "Reply-To", "Sender", "Errors-To"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [&](std::string_view own) { return text::EqualsIgnoreCase(name, own); });
}

/// The mailboxes of a value, or none when they are not all fit for a header.
std::vector<Address> FitMailboxes(std::string_view value, bool utf8Addresses) {
  const std::vector<Address> addresses = ParseAddressList(value);
  const bool fit = std::all_of(addresses.begin(), addresses.end(), [&](const Address& address) {
    const std::optional<WireAddress> wire = ToWire(address.address);
    return wire && (utf8Addresses || !wire->needsUtf8);
  });
  return fit ? addresses : std::vector<Address>{};
}

}  // namespace

std::string TextHeader(std::string_view name, std::string_view text) {
  const std::string safe = HeaderSafe(text);
  const std::string_view value = text::Trim(safe);
  HeaderLine line(name);
  if (value.empty()) {
    line.Append(" ");
  } else if (NeedsNoEncoding(value)) {
    // The blanks before a word are kept: the fold goes before the last of them.
    line.Append(" ");
    ForEachWord(value, [&](std::string_view word) {
      const std::size_t start = word.find_first_not_of(' ');
      if (start == 0) return line.Append(word);
      line.Append(word.substr(0, start - 1));
      line.AddWord(word.substr(start));
    });
  } else {
    line.AddEncoded(value);
  }
  return std::move(line).Finished();
}

std::string AddressHeader(std::string_view name, const std::vector<Address>& addresses) {
  return AddressLines(name, addresses, false);
}

std::string OwnHeader(const Header& header, bool utf8Addresses) {
  RequireOwnHeaderName(header.name);
  if (HoldsMailboxes(header.name)) {
    const std::vector<Address> addresses = FitMailboxes(HeaderSafe(header.value), utf8Addresses);
    if (!addresses.empty()) return AddressLines(header.name, addresses, true);
  }
  return TextHeader(header.name, header.value);
}

}  // namespace orve::adapters::mime
