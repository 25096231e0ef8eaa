#include "secrets/secret_finder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

namespace orve::adapters::secrets {

namespace {

constexpr std::size_t kShortest = 4;
constexpr std::size_t kLongest = 8;  // bytes of a run's key
constexpr std::size_t kShortestDigest = 32;
constexpr int kCodes = 3;  // one inside the other

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (static_cast<unsigned char>(c) & 0x80U) != 0;
}
bool IsLetterOrDigit(char c) {
  return IsLetter(c) || IsDigit(c);
}

std::string WithoutBlanks(std::string_view text) {
  std::string rest;
  rest.reserve(text.size());
  std::copy_if(text.begin(), text.end(), std::back_inserter(rest),
               [](char c) { return static_cast<unsigned char>(c) > ' ' && c != '\x7f'; });
  return rest;
}

std::string LettersAndDigits(std::string_view text) {
  std::string rest;
  rest.reserve(text.size());
  for (const char c : text) {
    if (IsLetterOrDigit(c)) rest += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return rest;
}

// A form of a secret, wiped when it goes.
struct Form {
  explicit Form(std::string form) : text(std::move(form)) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  Form(Form&&) = delete;
  Form& operator=(Form&&) = delete;
  ~Form() { ::explicit_bzero(text.data(), text.size()); }

  std::string text;
};

std::string Rot13(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>('a' + (c - 'a' + 13) % 26);
  }
  return text;
}

std::optional<unsigned> Digit(char c, unsigned base) {
  unsigned value = base;
  if (IsDigit(c)) value = static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f') value = static_cast<unsigned>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') value = static_cast<unsigned>(c - 'A') + 10;
  if (value >= base) return {};
  return value;
}

std::optional<unsigned> Base64Digit(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (IsDigit(c)) return c - '0' + 52;
  if (c == '+' || c == '-') return 62;  // the second ones are those of addresses in the web
  if (c == '/' || c == '_') return 63;
  return {};
}

std::optional<unsigned> Base32Digit(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a';
  if (c >= '2' && c <= '7') return c - '2' + 26;
  return {};
}

/// The bytes of `digits`, `bits` bits each, from the digit `first` on.
std::string Bytes(const std::vector<unsigned>& digits, unsigned bits, std::size_t first) {
  std::string bytes;
  unsigned value = 0;
  unsigned count = 0;
  for (std::size_t i = first; i < digits.size(); ++i) {
    value = (value << bits) | digits[i];
    count += bits;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>((value >> count) & 0xffU);
  }
  return bytes;
}

/// A number of up to `longest` digits at the front of `text`, which is shortened; none without a digit or
/// beyond a byte.
std::optional<char> Number(std::string_view& text, unsigned base, std::size_t longest) {
  unsigned value = 0;
  std::size_t count = 0;
  for (; count < std::min(longest, text.size()); ++count) {
    const auto digit = Digit(text[count], base);
    if (!digit) break;
    value = value * base + *digit;
  }
  text.remove_prefix(count);
  if (count == 0 || value > 0xff) return {};
  return static_cast<char>(value);
}

/// One escape at the front of `text`, which is shortened by what belonged to it.
std::optional<char> Escape(std::string_view& text) {
  struct Kind {
    std::string_view beginning;
    unsigned base;
    std::size_t digits;
    bool closed;  // by a semicolon
  };
  static constexpr std::array kKinds = {
      Kind{"%", 16, 2, false},         Kind{"=", 16, 2, false},         Kind{"\\x", 16, 2, false},
      Kind{"\\u", 16, 4, false},       Kind{"\\U", 16, 8, false},       Kind{"\\", 8, 3, false},
      Kind{"&#x", 16, kLongest, true}, Kind{"&#X", 16, kLongest, true}, Kind{"&#", 10, kLongest, true}};
  for (const Kind& kind : kKinds) {
    if (text.substr(0, kind.beginning.size()) != kind.beginning) continue;
    std::string_view rest = text.substr(kind.beginning.size());
    const std::optional<char> value = Number(rest, kind.base, kind.digits);
    if (!value) continue;
    if (kind.closed && !rest.empty() && rest.front() == ';') rest.remove_prefix(1);
    text = rest;
    return value;
  }
  return {};
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    if (const auto escaped = Escape(text)) {
      plain += *escaped;
    } else {
      plain += text.front();
      text.remove_prefix(1);
    }
  }
  return plain;
}

std::string DecimalNumbers(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    if (const auto value = Number(text, 10, text.size())) bytes += *value;
    if (!text.empty()) text.remove_prefix(1);
  }
  return bytes;
}

std::vector<unsigned> Digits(std::string_view text, std::optional<unsigned> (*digit_of)(char)) {
  std::vector<unsigned> digits;
  for (const char c : text) {
    if (const auto digit = digit_of(c)) digits.push_back(*digit);
  }
  return digits;
}

/// Two digits of each byte; the 0 of 0x is none.
std::vector<unsigned> HexadecimalDigits(std::string_view text) {
  std::vector<unsigned> digits;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool prefix = text[i] == '0' && i + 1 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X');
    const auto digit = Digit(text[i], 16);
    if (digit && !prefix) digits.push_back(*digit);
  }
  return digits;
}

/// What `text` becomes when it is taken for each of the codes. What stands between the digits of a code is
/// left out, so that it may be spread over words and lines; a code that does not begin with the text has the
/// alignment of one of its readings.
std::vector<std::string> Readings(std::string_view text) {
  std::string joined(text);  // a line may end within a number
  std::erase_if(joined, [](char c) { return c == '\r' || c == '\n'; });
  std::vector<std::string> readings = {Unescaped(joined), DecimalNumbers(text), DecimalNumbers(joined)};
  if (readings.front() == text) readings.front().clear();
  const std::vector<unsigned> base64 = Digits(text, Base64Digit);
  const std::vector<unsigned> base32 = Digits(text, Base32Digit);
  const std::vector<unsigned> hexadecimal = HexadecimalDigits(text);
  for (std::size_t first = 0; first < 4; ++first) readings.push_back(Bytes(base64, 6, first));
  for (std::size_t first = 0; first < 8; ++first) readings.push_back(Bytes(base32, 5, first));
  for (std::size_t first = 0; first < 2; ++first) readings.push_back(Bytes(hexadecimal, 4, first));
  return readings;
}

bool HoldsWord(std::string_view text, std::string_view word) {
  for (std::size_t at = 0; (at = text.find(word, at)) != std::string_view::npos; ++at) {
    const std::size_t end = at + word.size();
    if ((at == 0 || !IsLetterOrDigit(text[at - 1])) && (end == text.size() || !IsLetterOrDigit(text[end])))
      return true;
  }
  return false;
}

}  // namespace

template <class Action>
void SecretFinder::Runs::ForEach(std::string_view text, std::size_t length, Action action) {
  const std::uint64_t mask = length == kLongest ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * length)) - 1;
  std::uint64_t key = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    key = ((key << 8U) | static_cast<unsigned char>(text[i])) & mask;
    if (i + 1 >= length && action(key, text.substr(i + 1 - length, length))) return;
  }
}

void SecretFinder::Runs::Add(std::string_view text, std::size_t length) {
  lengths_.insert(length);
  ForEach(text, length, [&](std::uint64_t key, std::string_view piece) {
    // A year is part of many passwords and of many replies.
    const bool year =
        length == kShortest && piece.size() < text.size() && std::all_of(piece.begin(), piece.end(), IsDigit);
    if (!year) keys_.insert(key);
    return false;
  });
}

void SecretFinder::Runs::Remove(std::string_view text) {
  for (const std::size_t length : lengths_) {
    ForEach(text, length, [this](std::uint64_t key, std::string_view) {
      keys_.erase(key);
      return false;
    });
  }
}

bool SecretFinder::Runs::In(std::string_view text) const {
  bool found = false;
  for (const std::size_t length : lengths_) {
    ForEach(text, length,
            [&](std::uint64_t key, std::string_view) { return found = found || keys_.contains(key); });
  }
  return found;
}

void SecretFinder::Add(std::string_view secret) {
  const Form whole(WithoutBlanks(secret));
  if (whole.text.size() < kShortest) {
    if (!whole.text.empty()) words_.push_back(whole.text);
    return;
  }
  short_.Add(whole.text, std::clamp((whole.text.size() + 1) / 2, kShortest, kLongest));
  const Form plain(LettersAndDigits(secret));
  const std::size_t size = plain.text.size();
  if (size < kShortest) return;
  const std::size_t length = std::min(size, std::clamp((3 * size + 3) / 4, kShortest + 1, kLongest));
  long_.Add(plain.text, length);
  long_.Add(Form({plain.text.rbegin(), plain.text.rend()}).text, length);
  long_.Add(Form(Rot13(plain.text)).text, length);
}

void SecretFinder::AddCredentials(std::string_view encoded) {
  while (!encoded.empty() && encoded.back() == '=') encoded.remove_suffix(1);
  if (encoded.size() < 2) return;  // nothing, or the star that gives up
  Add(encoded);
  const Form answer(Bytes(Digits(encoded, Base64Digit), 6, 0));
  const std::string_view text = answer.text;
  const std::size_t user = text.rfind(' ');  // CRAM-MD5: the user and the digest
  if (user != std::string_view::npos && text.size() - user > kShortestDigest) Add(text.substr(user + 1));
}

void SecretFinder::Allow(std::string_view text) {
  short_.Remove(WithoutBlanks(text));
}

bool SecretFinder::In(std::string_view text) const {
  return std::any_of(words_.begin(), words_.end(), [&](const auto& word) { return HoldsWord(text, word); }) ||
         InReadings(text, true, kCodes);
}

bool SecretFinder::MostlyIn(std::string_view text) const {
  return InReadings(text, false, kCodes);
}

bool SecretFinder::InReadings(std::string_view text, bool pieces, int depth) const {
  if (text.size() < kShortest) return false;
  if ((pieces && short_.In(WithoutBlanks(text))) || long_.In(LettersAndDigits(text))) return true;
  if (depth == 0) return false;
  const std::vector<std::string> readings = Readings(text);
  return std::any_of(readings.begin(), readings.end(),
                     [&](const std::string& reading) { return InReadings(reading, pieces, depth - 1); });
}

}  // namespace orve::adapters::secrets
