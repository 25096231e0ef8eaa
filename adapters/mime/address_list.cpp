#include "mime/address_list.h"

#include <idn2.h>

#include <algorithm>
#include <memory>

#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::mime {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSpaceAndLineEnds = " \t\r\n";
constexpr std::string_view kMarksOfAnAddress("@\r\n\0",
                                             4);  // the line ends, so that they are found and refused
constexpr std::size_t kNone = std::string_view::npos;

std::string_view Trim(std::string_view text, std::string_view what) {
  const std::size_t first = text.find_first_not_of(what);
  if (first == kNone) return {};
  return text.substr(first, text.find_last_not_of(what) - first + 1);
}

std::string CheckedAddress(std::string_view text) {
  const std::string_view address = Trim(text, kBlanks);
  if (address.find_first_of(std::string_view("\r\n\0", 3)) != kNone) {
    throw host::Errore(host::kArgomentoNonValido, "orve-mime",
                       "L'indirizzo \"" + ForDisplay(address) + "\" contiene caratteri non ammessi");
  }
  return std::string(address);
}

/// A display name without the quotes around it and the escapes inside them.
std::string CleanName(std::string_view text) {
  const std::string_view name = Trim(text, kSpaceAndLineEnds);
  if (name.size() < 2 || name.front() != '"' || name.back() != '"') return std::string(name);
  std::string clean;
  bool bareQuote = false;
  for (std::size_t i = 1; i + 1 < name.size(); ++i) {
    const bool escape = name[i] == '\\' && i + 2 < name.size() && (name[i + 1] == '"' || name[i + 1] == '\\');
    bareQuote = bareQuote || name[i] == '"';
    clean += name[escape ? ++i : i];
  }
  // The application only quotes names that have a comma, and escapes nothing: without a comma, quotes at both
  // ends with more between them belong to the name.
  return bareQuote && clean.find(',') == kNone ? std::string(name) : clean;
}

/// Walks over a list once, entry by entry.
class ListReader {
 public:
  explicit ListReader(std::string_view list) : list_(list) {}

  std::vector<Address> Read() {
    while (position_ < list_.size()) ReadEntry();
    AddCarried();
    return std::move(addresses_);
  }

 private:
  struct Bracket {
    std::size_t open;
    std::size_t end;  // the ">", or what ends the address in its place
  };

  void ReadEntry() {
    const std::size_t start = std::min(list_.find_first_not_of(kSpaceAndLineEnds, position_), list_.size());
    position_ = start;
    std::optional<Bracket> last;
    while (position_ < list_.size() && list_[position_] != ';') {
      const std::size_t end = list_[position_] == '<' ? BracketEnd(position_) : kNone;
      if (end == kNone) {
        position_ = list_[position_] == '"' ? PastQuote(start, last && HoldsAddress(*last)) : position_ + 1;
        continue;
      }
      if (last && EndsEntry(*last, position_)) break;
      last = Bracket{position_, end};
      if (end == list_.size() || list_[end] != '>') break;
      position_ = end + 1;
    }
    if (last) return EndBracketed(start, *last);
    EndBare(start);
  }

  /// True when the ";" is missing between the two brackets. The application leaves it out after an address
  /// and goes straight on to the next name; if that is empty, to a blank and the next bracket.
  [[nodiscard]] bool EndsEntry(const Bracket& bracket, std::size_t nextOpen) const {
    const std::size_t next = list_.find_first_not_of(kBlanks, bracket.end + 1);
    return HoldsAddress(bracket) && (next == bracket.end + 1 || next == nextOpen);
  }

  [[nodiscard]] bool HoldsAddress(const Bracket& bracket) const {
    return HoldsAddress(list_.substr(bracket.open + 1, bracket.end - bracket.open - 1));
  }

  static bool HoldsAddress(std::string_view inside) {
    return inside.find_first_of(kMarksOfAnAddress) != kNone;
  }

  /// Where the address that opens at `open` ends: at its ">" or, if that is missing, at the ";" or the end.
  /// None when another "<" comes first: this one is then part of the name.
  [[nodiscard]] std::size_t BracketEnd(std::size_t open) const {
    std::size_t from = open + 1;
    if (from < list_.size() && list_[from] == '"') {
      constexpr std::size_t kLongestLocalPart = 256;
      const std::size_t quote = list_.substr(from + 1, kLongestLocalPart).find("\"@");
      if (quote != kNone) from += 1 + quote;
    }
    const std::size_t end = list_.find_first_of("<>;", from);
    if (end == kNone) return list_.size();
    return list_[end] == '<' && !HoldsAddress(list_.substr(from, end - from)) ? kNone : end;
  }

  /// The position after the quoted section that opens here, or after the quote alone if it opens none.
  [[nodiscard]] std::size_t PastQuote(std::size_t start, bool addressRead) const {
    const std::size_t close = list_.find('"', position_ + 1);
    if (close == kNone) return position_ + 1;
    const std::string_view inside = list_.substr(position_ + 1, close - position_ - 1);
    // After the entry's address ";" ends the entry, and the quote is a stray one.
    if (addressRead && inside.find(';') != kNone) return position_ + 1;
    if (inside.find('<') == kNone) return close + 1;
    // An address between the quotes: a name that was copied with its address, or a stray quote that would
    // swallow recipients. Only in the first case does the entry's own address follow.
    const bool opensEntry = position_ == start;
    const std::size_t next = list_.find_first_not_of(kBlanks, close + 1);
    const bool addressFollows = next != kNone && list_[next] == '<';
    return opensEntry && addressFollows && !HoldsEntryEnd(inside) ? close + 1 : position_ + 1;
  }

  /// True when an entry ends between the quotes, so that they are not a pair: a ">" is followed by ";", or an
  /// address directly by the next name. With a comma the quotes are the application's, and a pair.
  static bool HoldsEntryEnd(std::string_view text) {
    const bool comma = text.find(',') != kNone;
    std::size_t open = kNone;
    for (std::size_t i = text.find_first_of("<>"); i != kNone; i = text.find_first_of("<>", i + 1)) {
      if (text[i] == '<') {
        open = i;
        continue;
      }
      const std::size_t next = text.find_first_not_of(kBlanks, i + 1);
      if (next == kNone) return false;
      if (text[next] == ';') return true;
      const bool address = open != kNone && HoldsAddress(text.substr(open + 1, i - open - 1));
      if (address && !comma && next == i + 1) return true;
      open = kNone;
    }
    return false;
  }

  void EndBracketed(std::size_t start, const Bracket& bracket) {
    const std::size_t nameStart = carriedEnd_ > carriedStart_ ? carriedStart_ : start;
    const auto [open, end] = bracket;
    std::string address = CheckedAddress(list_.substr(open + 1, end - open - 1));
    if (!address.empty()) {
      addresses_.push_back({CleanName(list_.substr(nameStart, open - nameStart)), std::move(address)});
    }
    carriedEnd_ = carriedStart_;
    // After ">" the next entry begins, with or without a ";".
    position_ = end;
    if (position_ < list_.size() && list_[position_] == '>') ++position_;
    const std::size_t next = list_.find_first_not_of(kSpaceAndLineEnds, position_);
    if (next != kNone && list_[next] == ';') position_ = next + 1;
  }

  void EndBare(std::size_t start) {
    const std::size_t end = position_;
    const std::string_view piece = list_.substr(start, end - start);
    if (position_ < list_.size()) ++position_;
    if (Trim(piece, kSpaceAndLineEnds).empty()) return;
    if (piece.find('@') == kNone) {
      if (carriedEnd_ == carriedStart_) carriedStart_ = start;
      carriedEnd_ = end;
      return;
    }
    AddCarried();
    AddBare(piece);
  }

  void AddCarried() {
    if (carriedEnd_ > carriedStart_) AddBare(list_.substr(carriedStart_, carriedEnd_ - carriedStart_));
    carriedEnd_ = carriedStart_;
  }

  void AddBare(std::string_view piece) { addresses_.push_back({"", CheckedAddress(piece)}); }

  std::string_view list_;
  std::size_t position_ = 0;
  // Pieces without "@" that wait for the entry whose name they begin.
  std::size_t carriedStart_ = 0;
  std::size_t carriedEnd_ = 0;
  std::vector<Address> addresses_;
};

bool IsPlainLocalPart(std::string_view local) {
  return std::all_of(local.begin(), local.end(), [](char c) {
    return c != ' ' && std::string_view("()<>[]:;@\\,\"").find(c) == kNone;  // control characters: see ToWire
  });
}

/// Text between double quotes with every inner quote escaped and no control character.
bool IsQuotedLocalPart(std::string_view local) {
  if (local.size() < 2 || local.front() != '"' || local.back() != '"') return false;
  for (std::size_t i = 1; i + 1 < local.size(); ++i) {
    const auto c = static_cast<unsigned char>(local[i]);
    if (c < ' ' || c == 0x7f || c == '"') return false;
    if (c == '\\' && ++i + 1 >= local.size()) return false;
  }
  return true;
}

/// What may be between the brackets of an address literal: printable ASCII without brackets and blanks.
bool IsLiteral(std::string_view inside) {
  return std::all_of(inside.begin(), inside.end(), [](char c) {
    return c > ' ' && c < 0x7f && std::string_view("[]<>\\").find(c) == kNone;
  });
}

bool IsWireDomain(std::string_view domain) {
  if (domain.empty()) return false;
  if (domain.front() == '[') {
    return domain.size() > 2 && domain.back() == ']' && IsLiteral(domain.substr(1, domain.size() - 2));
  }
  return std::all_of(domain.begin(), domain.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_';
  });
}

}  // namespace

std::vector<Address> ParseAddressList(std::string_view list) {
  return ListReader(list).Read();
}

std::string BareAddress(std::string_view text) {
  std::string_view address = Trim(text, kBlanks);
  if (address.size() >= 2 && address.front() == '<' && address.back() == '>') {
    address = address.substr(1, address.size() - 2);
  }
  return CheckedAddress(address);
}

std::optional<WireAddress> ToWire(std::string_view address) {
  constexpr std::size_t kLongestAddress = 254;  // a path of 256 minus its brackets
  if (address.empty() || address.size() > 4 * kLongestAddress || ValidUtf8(address) != address) return {};
  const std::size_t at = address.rfind('@');
  const std::string_view local = address.substr(0, at);
  if (local.empty() || !(IsPlainLocalPart(local) || IsQuotedLocalPart(local))) return {};
  if (HeaderSafe(local) != local) return {};
  WireAddress wire{std::string(local), !IsAscii(local)};
  if (at != kNone) {
    const std::optional<std::string> domain = AsciiDomain(address.substr(at + 1));
    if (!domain || !IsWireDomain(*domain)) return {};
    wire.text += '@' + *domain;
  }
  if (wire.text.size() > kLongestAddress) return {};
  return wire;
}

std::string MailboxKey(std::string_view address) {
  const std::size_t at = std::min(address.rfind('@'), address.size());
  return std::string(address.substr(0, at)) + text::FoldCase(address.substr(at));
}

std::optional<std::string> AsciiDomain(std::string_view domain) {
  if (IsAscii(domain)) return std::string(domain);
  if (domain.find('\0') != kNone) return {};
  char* ascii = nullptr;
  const int result =
      idn2_to_ascii_8z(std::string(domain).c_str(), &ascii, IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL);
  if (result != IDN2_OK) return {};
  const std::unique_ptr<char, void (*)(void*)> owned(ascii, idn2_free);
  return std::string(owned.get());
}

}  // namespace orve::adapters::mime
