#include "secrets/secret_finder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

namespace orve::adapters::secrets {

namespace {

constexpr std::size_t kShortest = 4;
constexpr std::size_t kLongest = 8;  // bytes in a run's key
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
  std::string rest(text.size(), '\0');
  std::size_t count = 0;
  for (const char c : text) {
    rest[count] = c;
    count += static_cast<unsigned char>(c) > ' ' && c != '\x7f' ? 1 : 0;
  }
  rest.resize(count);
  return rest;
}

std::string LettersAndDigits(std::string_view text) {
  std::string rest(text.size(), '\0');
  std::size_t count = 0;
  for (const char c : text) {
    rest[count] = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    count += IsLetterOrDigit(c) ? 1 : 0;
  }
  rest.resize(count);
  return rest;
}

// A form of a secret, wiped when it is destroyed.
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

constexpr unsigned char kNone = 0xff;
using Values = std::array<unsigned char, 256>;  // of the digits of a code, by character

constexpr Values NoDigits() {
  Values values{};
  for (unsigned char& value : values) value = kNone;
  return values;
}

constexpr void Set(Values& values, std::string_view digits, unsigned char first) {
  for (const char digit : digits) values[static_cast<unsigned char>(digit)] = first++;
}

constexpr std::string_view kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kSmall = "abcdefghijklmnopqrstuvwxyz";

constexpr Values kBase16 = [] {
  Values values = NoDigits();
  Set(values, "0123456789", 0);
  Set(values, kCapitals.substr(0, 6), 10);
  Set(values, kSmall.substr(0, 6), 10);
  return values;
}();

constexpr Values kBase64 = [] {
  Values values = NoDigits();
  Set(values, kCapitals, 0);
  Set(values, kSmall, 26);
  Set(values, "0123456789+/", 52);
  Set(values, "-_", 62);  // those of web addresses
  return values;
}();

constexpr Values kBase32 = [] {
  Values values = NoDigits();
  Set(values, kCapitals, 0);
  Set(values, kSmall, 0);
  Set(values, "234567", 26);
  return values;
}();

constexpr Values kBase2 = [] {
  Values values = NoDigits();
  Set(values, "01", 0);
  return values;
}();

std::optional<unsigned> Digit(char c, unsigned base) {
  const unsigned value = kBase16[static_cast<unsigned char>(c)];
  if (value >= base) return {};
  return value;
}

/// The values of the digits in `text`, without what is between them.
std::string Digits(std::string_view text, const Values& values) {
  std::string digits(text.size(), '\0');
  std::size_t count = 0;
  for (const char c : text) {
    const unsigned char value = values[static_cast<unsigned char>(c)];
    digits[count] = static_cast<char>(value);
    count += value == kNone ? 0 : 1;
  }
  digits.resize(count);
  return digits;
}

/// The bytes of `digits`, `bits` bits each, from the digit `first` on.
std::string Bytes(std::string_view digits, unsigned bits, std::size_t first) {
  std::string bytes;
  bytes.reserve(digits.size() * bits / 8);
  unsigned value = 0;
  unsigned count = 0;
  for (std::size_t i = first; i < digits.size(); ++i) {
    value = (value << bits) | static_cast<unsigned char>(digits[i]);
    count += bits;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>((value >> count) & 0xffU);
  }
  return bytes;
}

/// A number of up to `longest` digits at the front of `text`, which is shortened; none when there is no
/// digit, or the number does not fit a byte.
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

constexpr std::string_view kEscapes = "%=\\&\xef";  // with which they begin

/// The letter, digit or mark at the front of `text` in its wide form, U+FF01 to U+FF5E, as it is in ASCII.
std::optional<char> FullWidth(std::string_view& text) {
  if (text.size() < 3 || text[0] != '\xef' || (text[1] != '\xbc' && text[1] != '\xbd')) return {};
  const unsigned low = static_cast<unsigned char>(text[2]);
  const unsigned value = ((text[1] == '\xbc' ? 0xff00U : 0xff40U) | (low & 0x3fU)) - 0xfee0U;
  if ((low & 0xc0U) != 0x80U || value < 0x21 || value > 0x7e) return {};
  text.remove_prefix(3);
  return static_cast<char>(value);
}

/// One escape at the front of `text`, from which it is removed.
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
  return FullWidth(text);
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  while (!text.empty()) {
    const std::size_t clear = std::min(text.size(), text.find_first_of(kEscapes));
    plain.append(text.substr(0, clear));
    text.remove_prefix(clear);
    if (text.empty()) break;
    if (const auto escaped = Escape(text)) {
      plain += *escaped;
    } else {
      plain += text.front();
      text.remove_prefix(1);
    }
  }
  return plain;
}

std::string Numbers(std::string_view text, unsigned base) {
  std::string bytes;
  while (!text.empty()) {
    if (const auto value = Number(text, base, text.size())) bytes += *value;
    if (!text.empty()) text.remove_prefix(1);
  }
  return bytes;
}

/// Two digits for each byte; the 0 of 0x is not one.
std::string HexadecimalDigits(std::string_view text) {
  std::string rest(text);
  for (std::size_t x = 1; (x = rest.find_first_of("xX", x)) != std::string::npos; ++x) {
    if (rest[x - 1] == '0') rest[x - 1] = ' ';
  }
  return Digits(rest, kBase16);
}

/// What `text` becomes when it is read as each of the codes. Whatever is between the digits of a code is left
/// out, so the code may be spread over words and lines; a code that does not begin with the text has the
/// alignment of one of the readings.
std::vector<std::string> Readings(std::string_view text, bool outermost) {
  std::vector<std::string> readings;
  const auto add = [&](std::string reading) {
    if (reading.size() >= kShortest) readings.push_back(std::move(reading));
  };
  const auto aligned = [&](const std::string& digits, unsigned bits, std::size_t alignments) {
    for (std::size_t first = 0; first < alignments; ++first) add(Bytes(digits, bits, first));
  };
  std::string joined(text);  // a line may break within a number
  std::erase_if(joined, [](char c) { return c == '\r' || c == '\n'; });
  std::string unescaped = Unescaped(joined);
  if (unescaped != joined) add(std::move(unescaped));
  for (const unsigned base : {2U, 8U, 10U}) {
    add(Numbers(text, base));
    if (joined.size() != text.size()) add(Numbers(joined, base));
  }
  aligned(Digits(text, kBase64), 6, 4);
  aligned(HexadecimalDigits(text), 4, 2);
  // Many alignments, and rarely inside another code.
  if (!outermost) return readings;
  aligned(Digits(text, kBase32), 5, 8);
  aligned(Digits(text, kBase2), 1, 8);
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
  const bool digits = std::all_of(text.begin(), text.end(), IsDigit);
  ForEach(text, length, [&](std::uint64_t key, std::string_view piece) {
    // A year is part of many passwords and of many replies.
    const bool year = length == kShortest && !digits && std::all_of(piece.begin(), piece.end(), IsDigit);
    if (year) return false;
    keys_.insert(key);
    ends_.set(key & kEnds);
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
    if (found) break;
    ForEach(text, length, [&](std::uint64_t key, std::string_view) {
      return found = ends_.test(key & kEnds) && keys_.contains(key);
    });
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
  if (encoded.size() < 2) return;  // nothing, or the star that cancels
  Add(encoded);
  const Form answer(Bytes(Digits(encoded, kBase64), 6, 0));
  const std::string_view text = answer.text;
  const std::size_t user = text.rfind(' ');  // CRAM-MD5: the user and the digest
  if (user != std::string_view::npos && text.size() - user > kShortestDigest) Add(text.substr(user + 1));
}

void SecretFinder::Allow(std::string_view text) {
  short_.Remove(WithoutBlanks(text));
}

bool SecretFinder::In(std::string_view text) const {
  if (Empty()) return false;
  return std::any_of(words_.begin(), words_.end(), [&](const auto& word) { return HoldsWord(text, word); }) ||
         InReadings(text, true, kCodes);
}

bool SecretFinder::MostlyIn(std::string_view text) const {
  return !Empty() && InReadings(text, false, kCodes);
}

bool SecretFinder::InReadings(std::string_view text, bool pieces, int depth) const {
  if (text.size() < kShortest) return false;
  if ((pieces && short_.In(WithoutBlanks(text))) || long_.In(LettersAndDigits(text))) return true;
  if (depth == 0) return false;
  const std::vector<std::string> readings = Readings(text, depth == kCodes);
  return std::any_of(readings.begin(), readings.end(),
                     [&](const std::string& reading) { return InReadings(reading, pieces, depth - 1); });
}

}  // namespace orve::adapters::secrets
