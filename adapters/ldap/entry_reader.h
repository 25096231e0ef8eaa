// The entries that a search finds, taken from the server's messages as they come.
//
// Servers that send more than they were asked for must not fill the application's memory, so that what has
// been read is counted here, whatever the server makes of the limit in the request.
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
  /// Entries; of the server no more are asked for.
  static constexpr std::size_t kMostEntries = 1000;
  /// Entries, and whatever else comes before the result.
  static constexpr std::size_t kMostMessages = 2 * kMostEntries;
  /// Memory for entries, counted in bytes of names and values and a fixed sum for each.
  static constexpr std::size_t kMostBytes = std::size_t{4} * 1024 * 1024;
  static constexpr std::size_t kBytesEach = 64;
  /// One message: far more than eight attributes of a person. What it is decoded into is a multiple.
  static constexpr std::size_t kLargestMessage = std::size_t{1024} * 1024;

  /// `handle` must outlive the reader.
  explicit EntryReader(::ldap* handle) : handle_(handle) {}

  enum class Taken { kMore, kResult, kTooMuch };
  /// Takes one message of the answer. Nothing more is to be handed in behind kResult, which the message then
  /// is, and kTooMuch: the server goes beyond any measure.
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
