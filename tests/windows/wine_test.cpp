// What the tests under Wine rely on.
#include <windows.h>

#include <gtest/gtest.h>

#include "orve-mailserver/host/errore.h"

namespace orve {
namespace {

TEST(Piattaforma, ExceptionsOfTheLibraryAreCaughtInAStaticallyLinkedProgram) {
  EXPECT_THROW(throw host::Errore(5, "ORVE_MAIL", "prova"), host::Errore);
}

TEST(Piattaforma, TheSystemKnowsItsMainLibraries) {
  EXPECT_NE(GetModuleHandleW(L"kernel32.dll"), nullptr);
}

}  // namespace
}  // namespace orve
