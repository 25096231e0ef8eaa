#include "golden.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "places.h"

namespace orve::golden {

namespace {

bool Rewriting() {
  const char* const wish = std::getenv("ORVE_GOLDEN");
  return wish != nullptr && std::string_view(wish) == "rewrite";
}

std::string Content(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

}  // namespace

std::string Difference(const std::string& file, const std::string& seen) {
  const std::string source = places::Source(file);
  const std::string wanted = Content(source);
  if (seen == wanted) return {};
  if (Rewriting()) {
    std::ofstream(source, std::ios::binary) << seen;
    return {};
  }
  const std::string left = places::Build(std::filesystem::path(file).filename().string());
  std::ofstream(left, std::ios::binary) << seen;
  std::istringstream seen_lines(seen);
  std::istringstream wanted_lines(wanted);
  for (int number = 1;; ++number) {
    std::string one = "(end)";
    std::string other = "(end)";
    const bool more_seen = static_cast<bool>(std::getline(seen_lines, one));
    const bool more_wanted = static_cast<bool>(std::getline(wanted_lines, other));
    if (more_seen && more_wanted && one == other) continue;
    return file + ", line " + std::to_string(number) + "\n  seen   " + (more_seen ? one : "(end)") +
           "\n  wanted " + (more_wanted ? other : "(end)") + "\n  whole  " + left;
  }
}

}  // namespace orve::golden
