// Which room of the program includes which: the arrows run one way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <istream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "places.h"

namespace orve::app {
namespace {

namespace fs = std::filesystem;

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::map<std::string, std::set<std::string>> kArrows = {
    {"commands", {"lists", "checks", "host", "address-book", "secrets", "terminal"}},
    {"lists", {"host", "address-book", "secrets", "terminal"}},
    {"checks", {"host", "address-book", "secrets", "terminal"}},
    {"host", {"address-book", "secrets", "terminal"}},
    {"address-book", {}},
    {"secrets", {"terminal"}},
    {"terminal", {}},
};

/// The rooms that the text of a file in `room` includes and may not, one for each include.
std::vector<std::string> ForbiddenRooms(const std::string& room, std::istream& text) {
  constexpr std::string_view kBefore = "#include \"orve-mail/";
  std::vector<std::string> forbidden;
  for (std::string line; std::getline(text, line);) {
    if (!line.starts_with(kBefore)) continue;
    const std::string included = line.substr(kBefore.size(), line.find('/', kBefore.size()) - kBefore.size());
    if (included != room && !kArrows.at(room).contains(included)) forbidden.push_back(included);
  }
  return forbidden;
}

bool IsSource(const fs::path& file) {
  return file.extension() == ".h" || file.extension() == ".cpp";
}

TEST(RoomsOfTheProgram, IncludeOnlyWhatTheArrowsAllow) {
  std::set<std::string> met;
  const fs::path program = places::Source("apps/orve-mail");
  for (const auto& entry : fs::recursive_directory_iterator(program)) {
    const fs::path inside = entry.path().lexically_relative(program);
    const std::string room = inside.begin()->string();
    if (!IsSource(inside) || inside.string() == room) continue;  // main.cpp and its like are in no room
    met.insert(room);
    ASSERT_EQ(kArrows.count(room), 1U) << room << " is a room without arrows";
    std::ifstream text(entry.path());
    EXPECT_THAT(ForbiddenRooms(room, text), IsEmpty()) << inside;
  }
  EXPECT_EQ(met.size(), kArrows.size()) << "a room of the table is not there";
}

TEST(RoomsOfTheProgram, AnIncludeAgainstTheArrowsIsFound) {
  std::istringstream text(
      "#include \"orve-mail/terminal/uscita.h\"\n#include \"orve-mail/host/archivio.h\"\n#include <string>\n"
      "#include \"orve-mail/secrets/memoria.h\"\n");
  EXPECT_THAT(ForbiddenRooms("secrets", text), ElementsAre("host"));
}

}  // namespace
}  // namespace orve::app
