#include "support.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace orve::fuzz {

namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

void Require(bool holds, std::string_view property) {
  if (holds) return;
  std::cerr << "property broken: " << property << std::endl;
  std::abort();
}

void RequireSame(std::string_view found, std::string_view wanted, std::string_view property) {
  if (found == wanted) return;
  std::cerr << "found:  [" << found << "]\nwanted: [" << wanted << "]\n";
  Require(false, property);
}

std::string_view Input::Text() {
  const std::size_t end = std::min(rest_.find('\x1f'), rest_.size());
  const std::string_view text = rest_.substr(0, end);
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  return text;
}

std::uint8_t Input::Byte() {
  if (rest_.empty()) return 0;
  const auto byte = static_cast<std::uint8_t>(rest_.front());
  rest_.remove_prefix(1);
  return byte;
}

std::vector<std::string> Parts(std::string_view text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back().push_back(c);
    }
  }
  return parts;
}

std::string PlainReplace(std::string_view text, std::string_view from, std::string_view to, bool ignoreCase) {
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    const std::string_view here = text.substr(i, from.size());
    const bool same = !from.empty() && std::equal(here.begin(), here.end(), from.begin(), from.end(),
                                                  [ignoreCase](char a, char b) {
                                                    return ignoreCase ? Lower(a) == Lower(b) : a == b;
                                                  });
    if (same) {
      result.append(to);
    } else {
      result.push_back(text[i]);
    }
    i += same ? from.size() : 1;
  }
  return result;
}

Exact::Exact(std::string_view text) : bytes_(new char[text.size()]), size_(text.size()) {
  std::copy(text.begin(), text.end(), bytes_.get());
}

}  // namespace orve::fuzz
