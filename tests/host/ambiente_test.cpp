// A host that brings no windows.
#include "orve-mailserver/host/ambiente.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "fakes/fake_ambiente.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/layout.h"
#include "places.h"

namespace orve::host {
namespace {

std::string Intestazione(const std::string& file) {
  std::ifstream flusso(places::Source(file));
  if (!flusso) ADD_FAILURE() << "no file " << file;
  return {std::istreambuf_iterator<char>(flusso), std::istreambuf_iterator<char>()};
}

/// The names in the first group of all matches.
std::set<std::string> Nomi(const std::string& testo, const char* forma) {
  const std::regex espressione(forma);
  std::set<std::string> nomi;
  for (std::sregex_iterator trovato(testo.begin(), testo.end(), espressione);
       trovato != std::sregex_iterator(); ++trovato) {
    nomi.insert((*trovato)[1]);
  }
  return nomi;
}

const std::string kAmbiente = "include/orve-mailserver/host/ambiente.h";

TEST(Ambiente, WhatAHostDoesNotBringIsNamedInTheError) {
  fakes::FakeAmbiente fake;
  LayoutForm layout;
  layout.nome = "FRMRW_OPZMAIL";
  struct Caso {
    std::string oggetto;
    std::function<void()> crea;
  };
  const std::map<std::string, Caso> casi = {
      {"CreaForm", {"FRMRW_OPZMAIL", [&] { (void)fake.Ambiente::CreaForm(layout); }}},
      {"CreaConfigurazioneGriglia",
       {"ConfigurazioneGriglia", [&] { (void)fake.Ambiente::CreaConfigurazioneGriglia(); }}},
      {"CreaRecordSetScollegato",
       {"RecordSetScollegato", [&] { (void)fake.Ambiente::CreaRecordSetScollegato(); }}},
      {"CreaSelettoreFile", {"SelettoreFile", [&] { (void)fake.Ambiente::CreaSelettoreFile(); }}},
      {"CreaOggettoFile", {"OggettoFile", [&] { (void)fake.Ambiente::CreaOggettoFile(); }}},
      {"CreaCollezioneFile", {"CollezioneFile", [&] { (void)fake.Ambiente::CreaCollezioneFile(); }}},
      {"CreaParametri", {"CLSFW_Parametri", [&] { (void)fake.Ambiente::CreaParametri(); }}},
  };
  std::set<std::string> provati;
  for (const auto& [funzione, caso] : casi) {
    provati.insert(funzione);
    try {
      caso.crea();
      ADD_FAILURE() << caso.oggetto;
    } catch (const Errore& errore) {
      EXPECT_EQ(errore.Numero(), kOggettoNonCreabile) << caso.oggetto;
      EXPECT_EQ(errore.Descrizione(), "Impossibile creare l'oggetto " + caso.oggetto);
    }
  }
  EXPECT_EQ(provati,
            Nomi(Intestazione(kAmbiente), R"(virtual std::shared_ptr<\w+> (Crea\w+)\([^)]*\)(?:;| \{))"));
}

// What has a default is easily forgotten by those who make the object or hand it on: nothing but a 429 on
// that machine would tell.
TEST(Ambiente, EveryObjectIsMadeByEachAmbienteOrLeftOutOnPurpose) {
  const std::set<std::string> finestre = {
      "CreaForm",           "CreaConfigurazioneGriglia", "CreaSelettoreFile", "CreaRecordSetScollegato",
      "CreaCollezioneFile", "CreaOggettoFile",           "CreaParametri"};
  const std::map<std::string, std::set<std::string>> senza = {
      {"tests/fakes/fake_ambiente.h", {}},
      {"include/orve-mailserver/ambiente/ambiente.h", {}},
      {"adapters/win32/ambiente_win32.cpp", {}},
      {"tests/windows/win32/journals_test.cpp", finestre},  // its sends open none
  };
  const auto oggetti = Nomi(Intestazione(kAmbiente), R"(virtual std::shared_ptr<\w+> (Crea\w+)\()");
  ASSERT_FALSE(oggetti.empty());
  for (const auto& [file, lasciati] : senza) {
    auto fatti = Nomi(Intestazione(file), R"((Crea\w+)\([^)]*\) override)");
    for (const std::string& lasciato : lasciati) {
      EXPECT_TRUE(fatti.insert(lasciato).second) << file << " makes " << lasciato << " after all";
    }
    for (const std::string& oggetto : oggetti)
      EXPECT_TRUE(fatti.contains(oggetto)) << file << ": " << oggetto;
  }
}

}  // namespace
}  // namespace orve::host
