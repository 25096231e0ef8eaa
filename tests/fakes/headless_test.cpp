// The toolkit without a screen allows only what a person could do, so that a script cannot do more.
#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <memory>

#include "fakes/headless.h"
#include "orve-mailserver/host/errore.h"

namespace orve::fakes {
namespace {

using host::TipoControllo;
using ::testing::ElementsAre;

constexpr host::LayoutControllo kControlli[] = {
    {.nome = "CORNICE", .tipo = TipoControllo::kFrame},
    {.nome = "TXT", .tipo = TipoControllo::kTxtEdit, .cornice = "CORNICE", .disegno = {.maxchar = 3}},
    {.nome = "BTN",
     .tipo = TipoControllo::kTbarMenu,
     .cornice = "CORNICE",
     .disegno = {.ismenupopup = false}},
    {.nome = "MENU", .tipo = TipoControllo::kTbarMenu, .cornice = "CORNICE"},
    {.nome = "CHK", .tipo = TipoControllo::kCheckBox, .disegno = {.visible = false}},
};
constexpr host::LayoutForm kForm = {.nome = "FORM", .didascalia = "Prova", .controlli = kControlli};

// The macros that expect failures of the test itself take no local variables.
HeadlessForm& Aperta() {
  static HeadlessForm form(std::make_shared<Journal>(), kForm, nullptr);
  return form;
}

TEST(Headless, AHiddenControlCannotBeReached) {
  EXPECT_NONFATAL_FAILURE(Aperta().Spunta("CHK", true), "cannot be seen");
  EXPECT_EQ(Aperta().Testo("CHK"), "0");
}

TEST(Headless, AControlInAHiddenFrameCannotBeReached) {
  host::Richiesto(Aperta().Controlli("cornice")).Visible(false);
  EXPECT_NONFATAL_FAILURE(Aperta().Digita("TXT", "x"), "cannot be seen");
  host::Richiesto(Aperta().Controlli("CORNICE")).Visible(true);
  EXPECT_EQ(Aperta().Testo("TXT"), "");
}

TEST(Headless, ADisabledControlCannotBeReached) {
  host::Richiesto(Aperta().Controlli("BTN")).Enabled(false);
  EXPECT_NONFATAL_FAILURE(Aperta().Preme("BTN"), "is disabled");
  host::Richiesto(Aperta().Controlli("BTN")).Enabled(true);
}

TEST(Headless, AnEntryThatIsSwitchedOffOrMissingCannotBeChosen) {
  const auto menu = host::ControlloDi<host::KVL_TBARMENU>(Aperta(), "MENU");
  menu->AddMenuItem("Uno", "K1");
  menu->EnableMenuItem("K1", false);
  static bool scelta = false;
  menu->MenuItemClick = [](const auto&, const auto&) { scelta = true; };
  EXPECT_NONFATAL_FAILURE(Aperta().Sceglie("MENU", "K1"), "is switched off");
  EXPECT_NONFATAL_FAILURE(Aperta().Sceglie("MENU", "K2"), "has no entry");
  EXPECT_FALSE(scelta);
}

TEST(Headless, AControlOfAnotherKindIsNoTarget) {
  EXPECT_NONFATAL_FAILURE(Aperta().Preme("TXT"), "no such control");
  EXPECT_NONFATAL_FAILURE(Aperta().Digita("MANCA", "x"), "no such control");
}

TEST(Headless, TypingEndsAtMaxcharAndTheProgramsWritingDoesNot) {
  HeadlessForm form(std::make_shared<Journal>(), kForm, nullptr);
  form.Digita("TXT", "abcd");
  EXPECT_EQ(form.Testo("TXT"), "abc");
  host::ControlloDi<host::TxtEdit>(form, "TXT")->Text("abcdef");
  EXPECT_EQ(form.Testo("TXT"), "abcdef");
}

TEST(Headless, AShowingRaisesLoadAndActivateRunsTheScriptAndCloses) {
  const auto journal = std::make_shared<Journal>();
  HeadlessForm form(journal, kForm, [&](HeadlessForm& /*finestra*/) { journal->Add("persona"); });
  form.Load = [&] { journal->Add("Load"); };
  form.Activate = [&] { journal->Add("Activate"); };
  form.Unload = [&] { journal->Add("Unload"); };
  form.Show(1, nullptr);
  EXPECT_THAT(journal->Righe(), ElementsAre("FORM.Show 1|(assente)", "Load", "FORM attiva", "Activate",
                                            "persona", "FORM chiude", "Unload", "FORM chiusa"));
  EXPECT_FALSE(form.Aperta());
}

TEST(Headless, AnUnknownControlRaises438) {
  HeadlessForm form(std::make_shared<Journal>(), kForm, nullptr);
  EXPECT_THROW(static_cast<void>(form.Controlli("MANCA")), host::Errore);
  EXPECT_THROW(static_cast<void>(host::ControlloDi<host::KVL_COMBO>(form, "TXT")), host::Errore);
}

}  // namespace
}  // namespace orve::fakes
