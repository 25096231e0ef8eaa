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
  std::istringstream seenLines(seen);
  std::istringstream wantedLines(wanted);
  for (int number = 1;; ++number) {
    std::string one = "(end)";
    std::string other = "(end)";
    const bool moreSeen = static_cast<bool>(std::getline(seenLines, one));
    const bool moreWanted = static_cast<bool>(std::getline(wantedLines, other));
    if (moreSeen && moreWanted && one == other) continue;
    std::string difference = file;
    difference.append(", line ").append(std::to_string(number));
    difference.append("\n  seen   ").append(moreSeen ? one : "(end)");
    difference.append("\n  wanted ").append(moreWanted ? other : "(end)");
    return difference.append("\n  whole  ").append(left);
  }
}

}  // namespace orve::golden
