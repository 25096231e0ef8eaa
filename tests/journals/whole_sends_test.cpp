// What whole sends ask of the outside, against the one journal that every platform is held to.
#include <gtest/gtest.h>

#include "journals/scena.h"

namespace orve::journals {
namespace {

TEST(GiornaliInteri, WholeSendsAskOfTheOutsideWhatTheJournalSays) {
  const auto finto = CreaFinto();
  const auto database = CreaDatabase(finto->journal);
  const std::string visto = Recita({finto, database, finto, database, fakes::CreaFakeInterfaccia(*finto)});
  EXPECT_EQ(Differenza(visto), "");
}

}  // namespace
}  // namespace orve::journals
