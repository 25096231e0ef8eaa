// Recipients and their collection: order, positions and keys, boxes, and the trace of creation and
// destruction.
#include "orve-mailserver/addressing/destinatari.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "fakes/errori.h"
#include "fakes/fake_ambiente.h"
#include "fakes/journal.h"

namespace orve {
namespace {

using fakes::NumeroDi;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;

class CollDestinatariTest : public ::testing::Test {
 protected:
  std::vector<std::string> Indirizzi() const {
    std::vector<std::string> indirizzi;
    for (const auto& destinatario : collezione) indirizzi.push_back(destinatario->Indirizzo());
    return indirizzi;
  }

  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::JournalPtr journal = ambiente->journal;
  CollDestinatari collezione{ambiente};
};

// Only the collection makes recipients.
static_assert(!std::is_constructible_v<Destinatario, std::shared_ptr<host::Ambiente>>);
static_assert(!std::is_default_constructible_v<Destinatario>);

TEST_F(CollDestinatariTest, ANewCollectionIsEmptyAndItsEnumeratorYieldsNothing) {
  EXPECT_EQ(collezione.Count(), 0);
  EXPECT_THAT(Indirizzi(), IsEmpty());
  const auto enumeratore = collezione.NewEnum();
  EXPECT_TRUE(enumeratore.begin() == enumeratore.end());
}

TEST_F(CollDestinatariTest, ANewRecipientHoldsWhatAddWasGivenAndStandsInBoxA) {
  const auto nuovo = collezione.Add("anna@rossi.example", "Anna Rossi", "Rossi S.p.A.", "cliente");
  EXPECT_EQ(nuovo->Indirizzo(), "anna@rossi.example");
  EXPECT_EQ(nuovo->Nome(), "Anna Rossi");
  EXPECT_EQ(nuovo->Azienda(), "Rossi S.p.A.");
  EXPECT_EQ(nuovo->Casella(), 0);
  EXPECT_EQ(collezione.Item("cliente"), nuovo);
}

TEST_F(CollDestinatariTest, AddWithAnEmptyAddressSucceedsAndOmittedTextsStayEmpty) {
  const auto nuovo = collezione.Add("");
  EXPECT_EQ(nuovo->Indirizzo(), "");
  EXPECT_EQ(nuovo->Nome(), "");
  EXPECT_EQ(nuovo->Azienda(), "");
  EXPECT_EQ(collezione.Count(), 1);
}

TEST_F(CollDestinatariTest, AddLeavesItsArgumentsAsTheyWere) {
  const std::string indirizzo = "a@b.example";
  const std::string nome = "Nome";
  const std::string azienda = "Azienda";
  const std::string chiave = "Chiave";
  collezione.Add(indirizzo, nome, azienda, chiave)->Nome("altro");
  EXPECT_EQ(indirizzo + nome + azienda + chiave, "a@b.exampleNomeAziendaChiave");
}

TEST_F(CollDestinatariTest, EveryPropertyComesBackAsItWasWritten) {
  const auto destinatario = collezione.Add("a@b.example");
  destinatario->Indirizzo("c@d.example");
  destinatario->Azienda("Verdi & C.");
  destinatario->Nome(" Nicolò; <Verdi> ");
  destinatario->Casella(-3);
  EXPECT_EQ(destinatario->Indirizzo(), "c@d.example");
  EXPECT_EQ(destinatario->Azienda(), "Verdi & C.");
  EXPECT_EQ(destinatario->Nome(), " Nicolò; <Verdi> ");
  EXPECT_EQ(destinatario->Casella(), -3);
}

TEST_F(CollDestinatariTest, TheSameAddressTwiceWithoutAKeyYieldsTwoItemsInTheOrderOfTheCalls) {
  const auto primo = collezione.Add("a@b.example", "Primo");
  const auto secondo = collezione.Add("a@b.example", "Secondo");
  EXPECT_EQ(collezione.Count(), 2);
  EXPECT_EQ(collezione.Item(1), primo);
  EXPECT_EQ(collezione.Item(2), secondo);
  EXPECT_NE(primo, secondo);
}

TEST_F(CollDestinatariTest, ARepeatedKeyFailsWithoutRegardToCaseAndLeavesTheCountAtOne) {
  collezione.Add("a@b.example", "", "", "Chiave");
  EXPECT_EQ(NumeroDi([&] { collezione.Add("c@d.example", "", "", "Chiave"); }), 457);
  EXPECT_EQ(NumeroDi([&] { collezione.Add("c@d.example", "", "", "CHIAVE"); }), 457);
  EXPECT_EQ(NumeroDi([&] { collezione.AddFromLista("c@d.example", "", "", 1, "chiave"); }), 457);
  EXPECT_THAT(Indirizzi(), ElementsAre("a@b.example"));
}

TEST_F(CollDestinatariTest, ARecipientThatARepeatedKeyKeepsOutIsReleasedAtOnce) {
  collezione.Add("a@b.example", "", "", "k");
  journal->Svuota();
  EXPECT_EQ(NumeroDi([&] { collezione.Add("c@d.example", "", "", "k"); }), 457);
  EXPECT_THAT(journal->Righe({"debug "}), ElementsAre(EndsWith("|INI|ORVE_MAILSERVER|Destinatario"),
                                                      EndsWith("|TER|ORVE_MAILSERVER|Destinatario")));
}

TEST_F(CollDestinatariTest, ItemsWithoutAKeyAreReachedByPositionOnly) {
  collezione.Add("a@b.example", "", "", "");
  collezione.AddFromLista("c@d.example");
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item("")); }), 5);
  EXPECT_EQ(NumeroDi([&] { collezione.Remove(""); }), 5);
  EXPECT_EQ(collezione.Item(1)->Indirizzo(), "a@b.example");
  EXPECT_EQ(collezione.Item(2)->Indirizzo(), "c@d.example");
}

TEST_F(CollDestinatariTest, KeysOfWesternLettersCompareWithoutCaseToo) {
  const auto nuovo = collezione.Add("a@b.example", "", "", "Società");
  EXPECT_EQ(collezione.Item("SOCIETÀ"), nuovo);
}

TEST_F(CollDestinatariTest, ABlankKeyIsAKey) {
  const auto nuovo = collezione.Add("a@b.example", "", "", " ");
  EXPECT_EQ(collezione.Item(" "), nuovo);
  EXPECT_EQ(NumeroDi([&] { collezione.Add("c@d.example", "", "", " "); }), 457);
}

TEST_F(CollDestinatariTest, AfterRemoveOfPositionOneTheFormerSecondAnswersToPositionOne) {
  collezione.Add("a@b.example");
  const auto secondo = collezione.Add("c@d.example");
  collezione.Remove(1);
  EXPECT_EQ(collezione.Item(1), secondo);
  EXPECT_EQ(collezione.Count(), 1);
}

TEST_F(CollDestinatariTest, RemoveByKeyFreesTheKeyAndKeepsTheOthersInOrder) {
  collezione.Add("1@b.example", "", "", "uno");
  collezione.Add("2@b.example", "", "", "due");
  collezione.Add("3@b.example", "", "", "tre");
  collezione.Remove("DUE");
  EXPECT_THAT(Indirizzi(), ElementsAre("1@b.example", "3@b.example"));
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item("due")); }), 5);
  EXPECT_EQ(collezione.Item("tre")->Indirizzo(), "3@b.example");
  collezione.Add("4@b.example", "", "", "due");
  EXPECT_EQ(collezione.Item("due")->Indirizzo(), "4@b.example");
}

TEST_F(CollDestinatariTest, RemoveByPositionFreesTheKeyToo) {
  collezione.Add("a@b.example", "", "", "k");
  collezione.Remove(1);
  collezione.Add("c@d.example", "", "", "k");
  EXPECT_EQ(collezione.Item("k")->Indirizzo(), "c@d.example");
}

TEST_F(CollDestinatariTest, ARemovedRecipientLivesAsLongAsSomebodyHoldsIt) {
  auto tenuto = collezione.Add("a@b.example");
  collezione.Remove(1);
  EXPECT_EQ(journal->Conta("debug "), 2U);  // the two creations
  EXPECT_EQ(tenuto->Indirizzo(), "a@b.example");
  tenuto.reset();
  EXPECT_THAT(journal->Righe().back(), EndsWith("|TER|ORVE_MAILSERVER|Destinatario"));
}

struct CasoIndice {
  const char* etichetta;
  host::Variant indice;
  std::int32_t want_numero;
};

class IndiceSbagliato : public CollDestinatariTest, public ::testing::WithParamInterface<CasoIndice> {};

TEST_P(IndiceSbagliato, ItemAndRemoveRaiseTheSameErrorAndChangeNothing) {
  collezione.Add("a@b.example", "", "", "7");
  collezione.Add("c@d.example");
  const host::Variant& indice = GetParam().indice;
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item(indice)); }), GetParam().want_numero);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione[indice]); }), GetParam().want_numero);
  EXPECT_EQ(NumeroDi([&] { collezione.Remove(indice); }), GetParam().want_numero);
  EXPECT_THAT(Indirizzi(), ElementsAre("a@b.example", "c@d.example"));
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, IndiceSbagliato,
    ::testing::Values(CasoIndice{"PositionZero", 0, 9}, CasoIndice{"NegativePosition", -1, 9},
                      CasoIndice{"PositionBeyondCount", 3, 9}, CasoIndice{"NumberBeyondAnyCount", 1e300, 9},
                      CasoIndice{"NotANumber", std::numeric_limits<double>::quiet_NaN(), 9},
                      CasoIndice{"Empty", host::Variant(), 9}, CasoIndice{"UnknownKey", "8", 5},
                      CasoIndice{"PositionAsText", "1", 5}, CasoIndice{"Null", host::Null{}, 13},
                      CasoIndice{"Array", host::Variant::Array{1}, 13},
                      CasoIndice{"Object", host::Variant(std::shared_ptr<host::Oggetto>()), 13}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(CollDestinatariTest, ThePositionMayBeANumberOfAnyType) {
  collezione.Add("a@b.example", "", "", "2");
  const auto secondo = collezione.Add("c@d.example", "", "", "1");
  EXPECT_EQ(collezione.Item(std::int16_t{2}), secondo);
  EXPECT_EQ(collezione.Item(std::int32_t{2}), secondo);
  EXPECT_EQ(collezione.Item(2.0F), secondo);
  EXPECT_EQ(collezione.Item(2.0), secondo);
  EXPECT_EQ(collezione.Item(2.4), secondo);
  EXPECT_EQ(collezione.Item("1"), secondo);  // a text is a key
}

TEST_F(CollDestinatariTest, ItemIsTheDefaultMember) {
  const auto nuovo = collezione.Add("a@b.example", "", "", "k");
  EXPECT_EQ(collezione[1], nuovo);
  EXPECT_EQ(collezione["K"], nuovo);
}

TEST_F(CollDestinatariTest, AddFromListaSetsTheBoxWhateverItIs) {
  for (const auto casella : std::initializer_list<std::int16_t>{0, 1, 2, 7, -1, 32767, -32768}) {
    EXPECT_EQ(collezione.AddFromLista("a@b.example", "Nome", "Azienda", casella)->Casella(), casella);
  }
  const auto senza = collezione.AddFromLista("a@b.example", "Nome", "Azienda");
  EXPECT_EQ(senza->Casella(), 0);
  EXPECT_EQ(senza->Nome(), "Nome");
  EXPECT_EQ(senza->Azienda(), "Azienda");
}

TEST_F(CollDestinatariTest, TheEnumeratorWalksInTheOrderOfInsertion) {
  collezione.Add("3@b.example", "", "", "c");
  collezione.AddFromLista("1@b.example", "", "", 2, "a");
  collezione.Add("2@b.example");
  EXPECT_THAT(Indirizzi(), ElementsAre("3@b.example", "1@b.example", "2@b.example"));
  std::vector<std::string> conNome;
  for (const auto& destinatario : collezione.NewEnum()) conNome.push_back(destinatario->Indirizzo());
  EXPECT_EQ(conNome, Indirizzi());
  EXPECT_TRUE(std::any_of(collezione.begin(), collezione.end(),
                          [](const auto& destinatario) { return destinatario->Casella() == 2; }));
}

TEST_F(CollDestinatariTest, AWalkSurvivesAListThatIsChangedUnderIt) {
  for (int i = 0; i < 4; ++i) collezione.Add(std::to_string(i) + "@b.example");
  std::vector<std::string> visti;
  for (const auto& destinatario : collezione) {
    collezione.Remove(1);
    visti.push_back(destinatario->Indirizzo());
  }
  EXPECT_THAT(visti, ElementsAre("0@b.example", "2@b.example"));
  int passi = 0;
  for (const auto& destinatario : collezione) {
    if (++passi < 50) collezione.Add(destinatario->Indirizzo());
  }
  EXPECT_EQ(passi, 51);
}

TEST_F(CollDestinatariTest, BirthIsTheFirstActionAndDeathComesBeforeTheItemsAreReleased) {
  journal->Svuota();
  {
    CollDestinatari breve(ambiente);
    breve.Add("a@b.example");
  }
  const auto righe = journal->Righe();
  ASSERT_THAT(righe, ElementsAre(EndsWith("|INI|ORVE_MAILSERVER|CollDestinatari"),
                                 EndsWith("|INI|ORVE_MAILSERVER|Destinatario"),
                                 EndsWith("|TER|ORVE_MAILSERVER|CollDestinatari"),
                                 EndsWith("|TER|ORVE_MAILSERVER|Destinatario")));
  const auto id = [&](std::size_t i) { return righe[i].substr(12, 32); };
  EXPECT_EQ(id(0), id(2));
  EXPECT_EQ(id(1), id(3));
  EXPECT_NE(id(0), id(1));
}

TEST_F(CollDestinatariTest, AThousandKeyedRecipientsAreFoundByEveryKey) {
  for (int i = 1; i <= 1000; ++i) collezione.Add(std::to_string(i), "", "", "K" + std::to_string(i));
  for (int i = 1; i <= 1000; ++i) {
    EXPECT_EQ(collezione.Item("k" + std::to_string(i))->Indirizzo(), std::to_string(i));
    EXPECT_EQ(collezione.Item(i)->Indirizzo(), std::to_string(i));
  }
}

}  // namespace
}  // namespace orve
