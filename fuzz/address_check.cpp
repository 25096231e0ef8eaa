// The address check against a regular-expression engine that is not ours.
#include "service/address_check.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include "support.h"

namespace orve::fuzz {
namespace {

/// Whether the pattern is found: 1 or 0, less than 0 when the engine gives up.
int Expected(std::string_view text) {
  static pcre2_code* const kCode = [] {
    constexpr const char* kPattern = R"(\b[A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,15}\b)";
    int error = 0;
    PCRE2_SIZE where = 0;
    return pcre2_compile(reinterpret_cast<PCRE2_SPTR>(kPattern), PCRE2_ZERO_TERMINATED, PCRE2_CASELESS,
                         &error, &where, nullptr);
  }();
  static pcre2_match_data* const kMatch = pcre2_match_data_create_from_pattern(kCode, nullptr);
  const int result =
      pcre2_match(kCode, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0, 0, kMatch, nullptr);
  if (result == PCRE2_ERROR_NOMATCH) return 0;
  return result >= 0 ? 1 : result;
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  const Exact text({reinterpret_cast<const char*>(data), size});
  const int expected = Expected(text.View());
  if (expected < 0) return 0;
  Require(orve::ContieneIndirizzo(text.View()) == (expected == 1), "the check agrees with the pattern");
  return 0;
}
