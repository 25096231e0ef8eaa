// The lists behind menus, combo boxes and text boxes, which every toolkit shares.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fakes/errori.h"
#include "forms/testo_digitato.h"
#include "forms/voci_combo.h"
#include "forms/voci_menu.h"
#include "text/text.h"

namespace orve::adapters::forms {
namespace {

using fakes::NumeroDi;

// One mark per entry: "+" on, "-" off.
std::string Stato(const VociMenu& menu) {
  std::string stato;
  for (const auto& voce : menu.Voci()) stato += voce.attiva ? "+" : "-";
  return stato;
}

TEST(VociMenu, EntriesAreSwitchedByKeyWithoutCaseAndByPositionFromOne) {
  VociMenu menu;
  menu.Aggiungi("Uno", "K1");
  menu.Aggiungi("Due", "K2");
  EXPECT_EQ(Stato(menu), "++");
  menu.Abilita("k2", false);
  EXPECT_EQ(Stato(menu), "+-");
  menu.Abilita(1, false);
  menu.Abilita(std::int16_t{2}, true);
  EXPECT_EQ(Stato(menu), "-+");
}

TEST(VociMenu, AnEntryThatComesLaterTakesTheSettingAskedForBefore) {
  VociMenu menu;
  menu.Abilita(1, false);
  menu.Abilita("K3", false);
  menu.Aggiungi("Uno", "K1");
  menu.Aggiungi("Due", "K2");
  menu.Aggiungi("Tre", "k3");
  EXPECT_EQ(Stato(menu), "-+-");
}

TEST(VociMenu, APositionBelowOneIsNoPosition) {
  VociMenu menu;
  EXPECT_EQ(NumeroDi([&] { menu.Abilita(0, true); }), 9);
  EXPECT_EQ(NumeroDi([&] { menu.Abilita(-1, true); }), 9);
  EXPECT_EQ(NumeroDi([&] { menu.Abilita(host::Null{}, true); }), 94);
}

TEST(VociMenu, AnUnknownKeyIsNoEntry) {
  VociMenu menu;
  menu.Aggiungi("Uno", "K1");
  EXPECT_EQ(menu.ConChiave("K2"), nullptr);
  ASSERT_NE(menu.ConChiave("k1"), nullptr);
  EXPECT_EQ(menu.ConChiave("k1")->didascalia, "Uno");
}

TEST(VociCombo, TheNumberOfAnEntrySelectsItAndReadsBackAsText) {
  VociCombo combo;
  combo.Aggiungi("primo", 12);
  combo.Aggiungi("secondo", 7);
  EXPECT_EQ(combo.Selezionata(), -1);
  EXPECT_EQ(combo.Valore(), "");
  combo.SelezionaValore(std::int16_t{7});
  EXPECT_EQ(combo.Selezionata(), 1);
  EXPECT_EQ(combo.Valore(), "7");
  combo.SelezionaValore("12");
  EXPECT_EQ(combo.Selezionata(), 0);
  EXPECT_EQ(combo.Chiave(1), "7");
}

TEST(VociCombo, AnUnknownNumberSelectsNothing) {
  VociCombo combo;
  combo.Aggiungi("primo", 12);
  combo.SelezionaPosizione(0);
  combo.SelezionaValore(99);
  EXPECT_EQ(combo.Selezionata(), -1);
  EXPECT_EQ(combo.Valore(), "");
}

TEST(VociCombo, APositionWithoutAnEntryRaisesNineAndKeepsTheSelection) {
  VociCombo combo;
  combo.Aggiungi("primo", 12);
  combo.SelezionaPosizione(0);
  EXPECT_EQ(NumeroDi([&] { combo.SelezionaPosizione(1); }), 9);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(combo.Chiave(-1)); }), 9);
  EXPECT_EQ(combo.Selezionata(), 0);
}

TEST(VociCombo, EmptyingTheListSelectsNothing) {
  VociCombo combo;
  combo.Aggiungi("primo", 12);
  combo.SelezionaPosizione(0);
  combo.Svuota();
  EXPECT_EQ(combo.Selezionata(), -1);
  EXPECT_TRUE(combo.Voci().empty());
}

TEST(VociCombo, TheListHolds32768EntriesAndNoMore) {
  VociCombo combo;
  for (int i = 0; i < 32768; ++i) combo.Aggiungi("voce", static_cast<std::int16_t>(i % 100));
  combo.SelezionaPosizione(32767);
  EXPECT_EQ(combo.Selezionata(), 32767);
  EXPECT_EQ(NumeroDi([&] { combo.Aggiungi("troppa", 0); }), 6);
}

struct CasoDigitato {
  const char* label;
  std::string presente;
  std::string digitato;
  std::int32_t maxchar;
  bool multiriga;
  std::string want;
};

TEST(TestoDigitato, ABoxTakesWhatFits) {
  const CasoDigitato casi[] = {
      {"fits", "ab", "cd", 4, false, "cd"},
      {"cut", "ab", "cde", 4, false, "cd"},
      {"full", "abcd", "e", 4, false, ""},
      {"made too long by program", "abcdefgh", "e", 4, false, ""},
      {"no limit", "ab", std::string(20000, 'x'), 0, false, std::string(20000, 'x')},
      {"line breaks in one line", "", "a\r\nb\nc\rd", 0, false, "a b c d"},
      {"line breaks in several lines", "", "a\r\nb\nc\rd", 0, true, "a\r\nb\r\nc\r\nd"},
      {"half a line break", "", "abc\r\nd", 4, true, "abc"},
      {"emoji count as one", "", "a😀b😀", 3, false, "a😀b"},
      {"right to left", "", "שלום", 2, false, "של"},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(TestoAccettato(caso.presente, caso.digitato, caso.maxchar, caso.multiriga), caso.want)
        << caso.label;
  }
}

}  // namespace
}  // namespace orve::adapters::forms
