// What toolkits read from a layout table, and the arithmetic of a window that changes its size.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "dialogs/layouts.h"
#include "forms/lettura_tavola.h"
#include "forms/misure.h"
#include "forms/proporzioni.h"

namespace orve::adapters::forms {
namespace {

using ::testing::ElementsAre;

const host::LayoutControllo& Riga(const host::LayoutForm& form, std::string_view nome) {
  for (const auto& riga : form.controlli) {
    if (riga.nome == nome) return riga;
  }
  throw std::out_of_range(std::string(nome));
}

TEST(Misure, EdgesThatCoincideInTwipsCoincideInPixelsAtEveryDensity) {
  for (const int dpi : {96, 120, 144, 192}) {
    const auto sopra = InPixel({0, 7, 100, 68}, dpi);
    const auto sotto = InPixel({0, 75, 100, 68}, dpi);
    EXPECT_EQ(sopra.top + sopra.height, sotto.top) << dpi;
  }
  EXPECT_EQ(Pixel(300, 144), 30);
  EXPECT_FLOAT_EQ(Twip(30, 144), 300);
}

TEST(Misure, AControlOfOneLineKeepsItsHeightInTheMiddleOfItsPlace) {
  using enum host::TipoControllo;
  EXPECT_EQ(Posto(kTxtEdit, {0, 0, 1500, 600}, 300), (RettangoloInPixel{0, 10, 100, 20}));
  EXPECT_EQ(Posto(kGriglia, {0, 0, 1500, 600}, 300), (RettangoloInPixel{0, 0, 100, 40}));
}

TEST(LetturaTavola, TheKeyboardLeavesOutWhatLiesBelowItsFrame) {
  std::vector<std::string> ordine;
  for (const auto* riga : OrdineDiTastiera(LayoutOpzMail())) ordine.emplace_back(riga->nome);
  EXPECT_THAT(ordine, ElementsAre("CMB_ACCOUNT", "BTN_DEST_A", "TXT_EMAIL", "BTN_DEST_CC", "TXT_EMAIL_CC",
                                  "BTN_DEST_CCN", "TXT_EMAIL_CCN", "TXT_OGGETTO", "GRID_ALLEGATI",
                                  "KVL_ALLEGA", "BTN_ELIMINA", "TXT_CORPO", "CMD_LEGENDA", "CHK_CORPO",
                                  "CHK_RICEVUTA", "CHK_CONSEGNA", "cmd_Invia", "cmd_Annulla"));
}

TEST(LetturaTavola, ABoxIsCalledByTheCaptionToItsLeft) {
  const auto nome = [](const host::LayoutForm& form, std::string_view controllo) {
    return NomeAccessibile(form, Riga(form, controllo));
  };
  EXPECT_EQ(nome(LayoutOpzMail(), "CMB_ACCOUNT"), "Da");
  EXPECT_EQ(nome(LayoutOpzMail(), "TXT_EMAIL_CCN"), "Ccn");
  EXPECT_EQ(nome(LayoutOpzMail(), "cmd_Invia"), "Invia");
  EXPECT_EQ(nome(LayoutMailParams(), "CMB_TIPO"), "Tipo");
  EXPECT_EQ(nome(LayoutMailParams(), "TXT_ALLEGATO"), "Allega");
}

TEST(LetturaTavola, TheNameOfTheProgramStandsAfterATitleOnce) {
  EXPECT_EQ(TitoloConProgramma("Invio", "Gestionale"), "Invio - Gestionale");
  EXPECT_EQ(TitoloConProgramma("Invio - Gestionale", "Gestionale"), "Invio - Gestionale");
  EXPECT_EQ(TitoloConProgramma("Invio", ""), "Invio");
}

TEST(Proporzioni, EverythingFollowsWhileNothingIsRegistered) {
  Proporzioni misure;
  misure.Fissa(1000, 500, {{"UNO", "", {100, 50, 200, 20}}});
  const auto doppio = misure.Segue(0, {}, 2000, 1000);
  EXPECT_FLOAT_EQ(doppio.left, 200);
  EXPECT_FLOAT_EQ(doppio.top, 100);
  EXPECT_FLOAT_EQ(doppio.width, 400);
  EXPECT_FLOAT_EQ(doppio.height, 40);
}

TEST(Proporzioni, WhatStandsInAFrameGoesWithItAndTheOthersStay) {
  constexpr std::int16_t kSiMuove = 12;
  Proporzioni misure;
  misure.Fissa(1000, 500,
               {{"CORNICE", "", {0, 0, 900, 400}},
                {"DENTRO", "Cornice", {10, 10, 80, 20}},
                {"FUORI", "", {5, 5, 5, 5}}});
  misure.Registra("cornice", kSiMuove);
  const auto dentro = misure.Segue(1, {}, 2000, 1000);
  EXPECT_FLOAT_EQ(dentro.left, 20);
  EXPECT_FLOAT_EQ(dentro.width, 80);
  EXPECT_FLOAT_EQ(misure.Segue(2, {}, 2000, 1000).left, 5);
}

TEST(Proporzioni, AWindowWithoutASizeKeepsNone) {
  Proporzioni misure;
  misure.Fissa(0, 500, {{"UNO", "", {1, 2, 3, 4}}});
  EXPECT_FALSE(misure.Fissate());
  EXPECT_FLOAT_EQ(misure.Segue(0, {7, 0, 0, 0}, 2000, 1000).left, 7);
}

}  // namespace
}  // namespace orve::adapters::forms
