// Sender accounts and their list: members, defaults, keys and positions, and the two ways of adding.
#include "orve-mailserver/addressing/mittenti.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fakes/errori.h"
#include "fakes/fake_ambiente.h"
#include "fakes/journal.h"
#include "orve-mailserver/addressing/destinatari.h"

namespace orve {
namespace {

using fakes::NumeroDi;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Not;

class CollMittentiTest : public ::testing::Test {
 protected:
  std::shared_ptr<Mittente> Aggiungi(const std::string& indirizzo, const std::string& chiave = {}) {
    return collezione.AddMittente(indirizzo, "smtp.example", 25, 30, "utente", "parola", 0, 0, 0, "", 0,
                                  chiave);
  }

  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::JournalPtr journal = ambiente->journal;
  CollMittenti collezione{ambiente};
};

template <class T>
concept SiPercorre = requires(const T& collezione) {
  collezione.begin();
};
template <class T>
concept PrendeIndice = requires(const T& collezione) {
  collezione[host::Variant()];
};

// The recipients have a default member and a standard enumerator, the accounts have neither.
static_assert(SiPercorre<CollDestinatari>);
static_assert(PrendeIndice<CollDestinatari>);
static_assert(!SiPercorre<CollMittenti>);
static_assert(!PrendeIndice<CollMittenti>);

TEST_F(CollMittentiTest, ANewAccountHoldsEmptyTextsZerosAndFalse) {
  const Mittente nuovo(ambiente);
  EXPECT_EQ(nuovo.Indirizzo() + nuovo.Server() + nuovo.Descrizione() + nuovo.user() + nuovo.Password(), "");
  for (const auto numero : {nuovo.Port(), nuovo.Timeout(), nuovo.Auth(), nuovo.ReadRcpt(),
                            nuovo.DeliveryStatus(), nuovo.CryptType()}) {
    EXPECT_EQ(numero, 0);
  }
  EXPECT_FALSE(nuovo.IsSsl());
}

TEST_F(CollMittentiTest, EveryPropertyComesBackAsItWasWritten) {
  Mittente mittente(ambiente);
  mittente.Indirizzo("posta@azienda.example");
  mittente.Server("smtp.azienda.example");
  mittente.Descrizione("Ufficio Qualità");
  mittente.Port(-1);
  mittente.Timeout(32767);
  mittente.user("utente");
  mittente.Password(" p<è>\"; ");
  mittente.Auth(3);
  mittente.ReadRcpt(-1);
  mittente.DeliveryStatus(2);
  mittente.IsSsl(true);
  mittente.CryptType(1);
  EXPECT_EQ(mittente.Indirizzo(), "posta@azienda.example");
  EXPECT_EQ(mittente.Server(), "smtp.azienda.example");
  EXPECT_EQ(mittente.Descrizione(), "Ufficio Qualità");
  EXPECT_EQ(mittente.Port(), -1);
  EXPECT_EQ(mittente.Timeout(), 32767);
  EXPECT_EQ(mittente.user(), "utente");
  EXPECT_EQ(mittente.Password(), " p<è>\"; ");
  EXPECT_EQ(mittente.Auth(), 3);
  EXPECT_EQ(mittente.ReadRcpt(), -1);
  EXPECT_EQ(mittente.DeliveryStatus(), 2);
  EXPECT_TRUE(mittente.IsSsl());
  EXPECT_EQ(mittente.CryptType(), 1);
}

TEST_F(CollMittentiTest, AddMittentePutsEachArgumentIntoItsMember) {
  const auto nuovo = collezione.AddMittente("posta@azienda.example", "smtp.azienda.example", 465, 60,
                                            "utente", "parola", 2, -1, 1, "Azienda", 1, "12");
  EXPECT_EQ(nuovo->Indirizzo(), "posta@azienda.example");
  EXPECT_EQ(nuovo->Server(), "smtp.azienda.example");
  EXPECT_EQ(nuovo->Port(), 465);
  EXPECT_EQ(nuovo->Timeout(), 60);
  EXPECT_EQ(nuovo->user(), "utente");
  EXPECT_EQ(nuovo->Password(), "parola");
  EXPECT_EQ(nuovo->Auth(), 2);
  EXPECT_EQ(nuovo->ReadRcpt(), -1);
  EXPECT_EQ(nuovo->DeliveryStatus(), 1);
  EXPECT_EQ(nuovo->Descrizione(), "Azienda");
  EXPECT_EQ(nuovo->CryptType(), 1);
  EXPECT_EQ(collezione.Item("12"), nuovo);
}

TEST_F(CollMittentiTest, AddPutsEachArgumentIntoItsMember) {
  const auto nuovo = collezione.Add("posta@azienda.example", "smtp.azienda.example", 465, 60, "utente",
                                    "parola", 2, -1, 1, "Azienda", true, "12");
  EXPECT_EQ(nuovo->Indirizzo(), "posta@azienda.example");
  EXPECT_EQ(nuovo->Server(), "smtp.azienda.example");
  EXPECT_EQ(nuovo->Port(), 465);
  EXPECT_EQ(nuovo->Timeout(), 60);
  EXPECT_EQ(nuovo->user(), "utente");
  EXPECT_EQ(nuovo->Password(), "parola");
  EXPECT_EQ(nuovo->Auth(), 2);
  EXPECT_EQ(nuovo->ReadRcpt(), -1);
  EXPECT_EQ(nuovo->DeliveryStatus(), 1);
  EXPECT_EQ(nuovo->Descrizione(), "Azienda");
  EXPECT_TRUE(nuovo->IsSsl());
  EXPECT_EQ(collezione.Item("12"), nuovo);
}

TEST_F(CollMittentiTest, AddMittenteWithCryptTypeLeavesIsSslFalseAndAddWithIsSslLeavesCryptTypeZero) {
  const auto conCrypt = collezione.AddMittente("a@b.example", "s", 25, 0, "", "", 0, 0, 0, "", 1);
  EXPECT_EQ(conCrypt->CryptType(), 1);
  EXPECT_FALSE(conCrypt->IsSsl());
  const auto conSsl = collezione.Add("a@b.example", "s", 25, 0, "", "", 0, 0, 0, "", true);
  EXPECT_TRUE(conSsl->IsSsl());
  EXPECT_EQ(conSsl->CryptType(), 0);
}

TEST_F(CollMittentiTest, OmittedArgumentsLeaveTheDisplayNameEmptyAndTheSecurityOff) {
  for (const auto& nuovo : {collezione.Add("a@b.example", "s", 25, 0, "", "", 0, 0, 0),
                            collezione.AddMittente("a@b.example", "s", 25, 0, "", "", 0, 0, 0)}) {
    EXPECT_EQ(nuovo->Descrizione(), "");
    EXPECT_FALSE(nuovo->IsSsl());
    EXPECT_EQ(nuovo->CryptType(), 0);
  }
  EXPECT_EQ(collezione.Count(), 2);
}

TEST_F(CollMittentiTest, ARepeatedKeyFailsAndLeavesTheCountUnchanged) {
  Aggiungi("a@b.example", "Kappa");
  journal->Svuota();
  EXPECT_EQ(NumeroDi([&] { Aggiungi("c@d.example", "KAPPA"); }), 457);
  EXPECT_EQ(NumeroDi([&] { collezione.Add("c@d.example", "s", 25, 0, "", "", 0, 0, 0, "", false, "kappa"); }),
            457);
  EXPECT_EQ(collezione.Count(), 1);
  EXPECT_THAT(
      journal->Righe({"debug "}),
      ElementsAre(EndsWith("|INI|ORVE_MAILSERVER|Mittente"), EndsWith("|TER|ORVE_MAILSERVER|Mittente"),
                  EndsWith("|INI|ORVE_MAILSERVER|Mittente"), EndsWith("|TER|ORVE_MAILSERVER|Mittente")));
}

TEST_F(CollMittentiTest, ATextFindsTheIdentifierAndANumberThePosition) {
  const auto primo = Aggiungi("primo@azienda.example", "2");
  const auto secondo = Aggiungi("secondo@azienda.example", "1");
  EXPECT_EQ(collezione.Item("1"), secondo);
  EXPECT_EQ(collezione.Item("2"), primo);
  EXPECT_EQ(collezione.Item(1), primo);
  EXPECT_EQ(collezione.Item(2), secondo);
}

TEST_F(CollMittentiTest, AnAccountWithoutAKeyIsReachedByPositionOnly) {
  const auto nuovo = Aggiungi("a@b.example", "");
  const auto altro = collezione.Add("c@d.example", "s", 25, 0, "", "", 0, 0, 0, "", false, "");
  EXPECT_EQ(collezione.Item(1), nuovo);
  EXPECT_EQ(collezione.Item(2), altro);
  for (const char* chiave : {"", "1", "2"}) {
    EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item(chiave)); }), 5) << chiave;
  }
}

TEST_F(CollMittentiTest, AFailureOfTheListGoesToTheCaller) {
  Aggiungi("a@b.example", "1");
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item(2)); }), 9);
  EXPECT_EQ(NumeroDi([&] { collezione.Remove(0); }), 9);
  EXPECT_EQ(NumeroDi([&] { collezione.Remove("2"); }), 5);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item(host::Null{})); }), 13);
  EXPECT_EQ(collezione.Count(), 1);
}

TEST_F(CollMittentiTest, RemoveByPositionOrKeyTakesTheAccountOut) {
  Aggiungi("primo@azienda.example", "10");
  Aggiungi("secondo@azienda.example", "20");
  Aggiungi("terzo@azienda.example", "30");
  collezione.Remove(1);
  collezione.Remove("30");
  EXPECT_EQ(collezione.Count(), 1);
  EXPECT_EQ(collezione.Item(1)->Indirizzo(), "secondo@azienda.example");
  EXPECT_EQ(collezione.Item("20")->Indirizzo(), "secondo@azienda.example");
}

TEST_F(CollMittentiTest, TheEnumeratorWalksInTheOrderOfInsertion) {
  Aggiungi("2@azienda.example", "9");
  Aggiungi("1@azienda.example");
  Aggiungi("3@azienda.example", "1");
  std::vector<std::string> indirizzi;
  for (const auto& mittente : collezione.NewEnum()) indirizzi.push_back(mittente->Indirizzo());
  EXPECT_THAT(indirizzi, ElementsAre("2@azienda.example", "1@azienda.example", "3@azienda.example"));
}

TEST_F(CollMittentiTest, BirthAndDeathAreTracedAndThePasswordIsNot) {
  journal->Svuota();
  {
    CollMittenti breve(ambiente);
    breve.Add("a@b.example", "s", 25, 0, "utente", "segretissima", 0, 0, 0);
  }
  EXPECT_THAT(
      journal->Righe(),
      ElementsAre(EndsWith("|INI|ORVE_MAILSERVER|CollMittenti"), EndsWith("|INI|ORVE_MAILSERVER|Mittente"),
                  EndsWith("|TER|ORVE_MAILSERVER|CollMittenti"), EndsWith("|TER|ORVE_MAILSERVER|Mittente")));
  EXPECT_THAT(journal->Righe(), Not(::testing::Contains(::testing::HasSubstr("segretissima"))));
}

}  // namespace
}  // namespace orve
