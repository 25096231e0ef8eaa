// The entries that a search finds, taken from the server's messages as they come.
//
// Servers that send more than they were asked for must not fill the application's memory, so what has been
// read is counted here, whatever the server does with the limit in the request.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

struct ldap;
struct ldapmsg;

namespace orve::adapters::ldap {

struct Entry {
  std::string name;  // distinguished name
  /// Attribute and values, in the server's order; names in the server's spelling.
  std::vector<std::pair<std::string, std::vector<std::string>>> attributes;

  /// The values of the attribute, compared without case; none when the entry does not have it.
  [[nodiscard]] std::vector<std::string> Values(const std::string& attribute) const;
};

class EntryReader {
 public:
  /// Entries; no more are requested from the server.
  static constexpr std::size_t kMostEntries = 1000;
  /// Entries, and whatever else comes before the result.
  static constexpr std::size_t kMostMessages = 2 * kMostEntries;
  /// Memory for entries: the bytes of names and values, plus a fixed amount for each.
  static constexpr std::size_t kMostBytes = std::size_t{4} * 1024 * 1024;
  static constexpr std::size_t kBytesEach = 64;
  /// One message: far more than eight attributes of a person. Decoded, it takes several times as much.
  static constexpr std::size_t kLargestMessage = std::size_t{1024} * 1024;

  /// `handle` must outlive the reader.
  explicit EntryReader(::ldap* handle) : handle_(handle) {}

  enum class Taken { kMore, kResult, kTooMuch };
  /// Takes one message of the answer. Nothing more may be handed in after kResult, when the message was the
  /// result, or kTooMuch, when the server exceeds all limits.
  [[nodiscard]] Taken Take(::ldapmsg* message);

  [[nodiscard]] std::vector<Entry>& Entries() { return entries_; }

 private:
  [[nodiscard]] bool Read(::ldapmsg* message, Entry& entry);
  [[nodiscard]] bool Count(std::size_t bytes);

  ::ldap* handle_;
  std::vector<Entry> entries_;
  std::size_t messages_ = 0;
  std::size_t bytes_ = 0;
};

}  // namespace orve::adapters::ldap
