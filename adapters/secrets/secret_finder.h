// Finds credentials in what a server says, in whatever form it repeats them.
//
// A text is read as it stands and as these codes: base64 and hexadecimal at each of their alignments;
// percent, quoted-printable, backslash and HTML escapes; full-width letters; decimal, octal and binary
// numbers. So is what comes out, three codes deep. Base32, and binary digits without anything between them,
// are read as the outermost code alone. In each reading, runs of a secret are looked for: short ones as they
// are, so that half a secret counts as one, and longer ones with everything but letters and digits left out,
// in either case, backwards or by ROT13.
//
// Other codes pass, uuencode, base85 and ROT47 among them, and so does a code that was itself changed, such
// as base64 backwards. Whoever says these things has the secret and can tell it to anybody: what this keeps
// is a trace or a log from showing it by accident or by a simple trick.
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
  /// From now on `secret` is looked for. One of less than four characters only counts as a word of its own,
  /// in clear: anything else would find it everywhere.
  void Add(std::string_view secret);

  /// The same for what was said in an AUTH exchange, in base64: itself, and the answer to a challenge in it.
  void AddCredentials(std::string_view encoded);

  /// `text` is what everybody may see: a short run of a secret that stands in it as well, as a company's name
  /// does in many passwords, gives nothing away.
  void Allow(std::string_view text);

  [[nodiscard]] bool Empty() const { return words_.empty() && short_.Empty() && long_.Empty(); }
  /// True when `text` shows a secret or a run of one. Linear in the text.
  [[nodiscard]] bool In(std::string_view text) const;
  /// True when `text` shows most of a secret, of which a word that stands in an address besides is not
  /// enough.
  [[nodiscard]] bool MostlyIn(std::string_view text) const;

 private:
  /// Pieces of texts, of up to eight bytes.
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
    std::unordered_set<std::uint64_t> keys_;  // no piece holds a NUL, so that its bytes tell its length
  };

  [[nodiscard]] bool InReadings(std::string_view text, bool pieces, int depth) const;

  std::vector<std::string> words_;
  Runs short_;  // of texts without blanks
  Runs long_;   // of letters and digits alone
};

}  // namespace orve::adapters::secrets
