// A host that brings no windows.
#include "orve-mailserver/host/ambiente.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/layout.h"

namespace orve::host {
namespace {

TEST(Ambiente, WhatAHostDoesNotBringIsNamedInTheError) {
  fakes::FakeAmbiente fake;
  LayoutForm layout;
  layout.nome = "FRMRW_OPZMAIL";
  const std::vector<std::pair<std::string, std::function<void()>>> casi = {
      {"FRMRW_OPZMAIL", [&] { (void)fake.Ambiente::CreaForm(layout); }},
      {"ConfigurazioneGriglia", [&] { (void)fake.Ambiente::CreaConfigurazioneGriglia(); }},
      {"RecordSetScollegato", [&] { (void)fake.Ambiente::CreaRecordSetScollegato(); }},
      {"SelettoreFile", [&] { (void)fake.Ambiente::CreaSelettoreFile(); }},
      {"OggettoFile", [&] { (void)fake.Ambiente::CreaOggettoFile(); }},
      {"CollezioneFile", [&] { (void)fake.Ambiente::CreaCollezioneFile(); }},
      {"CLSFW_Parametri", [&] { (void)fake.Ambiente::CreaParametri(); }},
  };
  for (const auto& [oggetto, crea] : casi) {
    try {
      crea();
      ADD_FAILURE() << oggetto;
    } catch (const Errore& errore) {
      EXPECT_EQ(errore.Numero(), kOggettoNonCreabile) << oggetto;
      EXPECT_EQ(errore.Descrizione(), "Impossibile creare l'oggetto " + oggetto);
    }
  }
}

}  // namespace
}  // namespace orve::host
