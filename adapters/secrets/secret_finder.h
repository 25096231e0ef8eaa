// Finds credentials in what a server says, in whatever form it repeats them.
//
// A text is read as it is and as these codes: base64 and hexadecimal at each of their alignments; percent,
// quoted-printable, backslash and HTML escapes; full-width letters; decimal, octal and binary numbers. So is
// the result, three codes deep. Base32, and binary digits with nothing between them, are read only as the
// outermost code. Each reading is searched for runs of a secret: short ones as they are, so half a secret
// counts as one, and longer ones with everything but letters and digits left out, in either case, backwards
// or in ROT13.
//
// Other codes get through, uuencode, base85 and ROT47 among them, and so does a code that was itself altered,
// such as base64 backwards. A peer that sends such things has the secret and can tell it to anybody: all that
// this does is keep a trace or a log from showing it by accident or through a simple trick.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace orve::adapters::secrets {

class SecretFinder {
 public:
  /// From now on `secret` is searched for. One of fewer than four characters only counts as a word of its
  /// own, in clear: otherwise it would be found everywhere.
  void Add(std::string_view secret);

  /// The same for what was sent in an AUTH exchange, in base64: the text itself, and the answer to a
  /// challenge in it.
  void AddCredentials(std::string_view encoded);

  /// `text` is public: a short run of a secret that also occurs in it, as a company's name does in many
  /// passwords, gives nothing away.
  void Allow(std::string_view text);

  [[nodiscard]] bool Empty() const { return words_.empty() && short_.Empty() && long_.Empty(); }
  /// True when `text` shows a secret or a run of one. Linear in the text.
  [[nodiscard]] bool In(std::string_view text) const;
  /// True when `text` shows most of a secret, for which a word that also occurs in an address is not enough.
  [[nodiscard]] bool MostlyIn(std::string_view text) const;

 private:
  /// Pieces of text, of up to eight bytes.
  class Runs {
   public:
    void Add(std::string_view text, std::size_t length);
    void Remove(std::string_view text);
    [[nodiscard]] bool In(std::string_view text) const;
    [[nodiscard]] bool Empty() const { return keys_.empty(); }

   private:
    template <class Action>
    static void ForEach(std::string_view text, std::size_t length, Action action);

    static constexpr std::uint64_t kEnds = 0xffff;

    std::set<std::size_t> lengths_;
    std::bitset<kEnds + 1> ends_;             // the last two bytes of the keys: most texts have none of them
    std::unordered_set<std::uint64_t> keys_;  // no piece has a NUL, so its bytes give its length
  };

  [[nodiscard]] bool InReadings(std::string_view text, bool pieces, int depth) const;

  std::vector<std::string> words_;
  Runs short_;  // of texts without blanks
  Runs long_;   // of letters and digits alone
};

}  // namespace orve::adapters::secrets
