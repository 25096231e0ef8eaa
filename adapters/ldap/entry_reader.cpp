#include "ldap/entry_reader.h"

#include <ldap.h>

#include <algorithm>
#include <iterator>
#include <memory>

#include "text/text.h"

namespace orve::adapters::ldap {

namespace {

struct ReleasedByLibrary {
  void operator()(BerElement* element) const noexcept { ::ber_free(element, 0); }
  void operator()(char* text) const noexcept { ::ldap_memfree(text); }
  void operator()(berval** values) const noexcept { ::ldap_value_free_len(values); }
};
using OwnedText = std::unique_ptr<char, ReleasedByLibrary>;

}  // namespace

std::vector<std::string> Entry::Values(const std::string& attribute) const {
  const auto found = std::find_if(attributes.begin(), attributes.end(), [&](const auto& one) {
    return text::EqualsIgnoreCase(one.first, attribute);
  });
  return found != attributes.end() ? found->second : std::vector<std::string>();
}

EntryReader::Taken EntryReader::Take(::ldapmsg* message) {
  const int kind = ::ldap_msgtype(message);
  if (kind == LDAP_RES_SEARCH_RESULT) return Taken::kResult;
  if (++messages_ > kMostMessages) return Taken::kTooMuch;
  if (kind != LDAP_RES_SEARCH_ENTRY) return Taken::kMore;  // a referral, which is not followed
  return Read(message, entries_.emplace_back()) ? Taken::kMore : Taken::kTooMuch;
}

bool EntryReader::Read(::ldapmsg* message, Entry& entry) {
  const OwnedText name(::ldap_get_dn(handle_, message));
  if (name) entry.name = name.get();
  if (!Count(entry.name.size())) return false;
  BerElement* place = nullptr;
  OwnedText attribute(::ldap_first_attribute(handle_, message, &place));
  const std::unique_ptr<BerElement, ReleasedByLibrary> owned(place);
  for (; attribute; attribute.reset(::ldap_next_attribute(handle_, message, place))) {
    auto& [spelling, values] = entry.attributes.emplace_back(attribute.get(), std::vector<std::string>());
    if (!Count(spelling.size())) return false;
    const std::unique_ptr<berval*, ReleasedByLibrary> found(
        ::ldap_get_values_len(handle_, message, attribute.get()));
    for (berval** one = found.get(); one != nullptr && *one != nullptr; one = std::next(one)) {
      if (!Count((*one)->bv_len)) return false;
      values.emplace_back((*one)->bv_val, (*one)->bv_len);
    }
  }
  return true;
}

bool EntryReader::Count(std::size_t bytes) {
  bytes_ += bytes + kBytesEach;
  return bytes_ <= kMostBytes;
}

}  // namespace orve::adapters::ldap
