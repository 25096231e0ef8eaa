#include "orve-mailserver/content/traccia_istanza.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

const host::Guid kGuid{0x3F2504E0, 0x4F89, 0x41D3, {0x9A, 0x0C, 0x03, 0x05, 0xE8, 0x2C, 0x33, 0x01}};

class GeneratoreFisso : public host::GeneratoreGuid {
 public:
  explicit GeneratoreFisso(std::optional<host::Guid> guid) : guid_(guid) {}
  std::optional<host::Guid> CreaGuid() override { return guid_; }

 private:
  std::optional<host::Guid> guid_;
};

std::string Identificatore(std::optional<host::Guid> guid) {
  GeneratoreFisso generatore(guid);
  return GeneraIdIstanza(generatore);
}

TEST(GeneraIdIstanza, JoinsThePartsOfTheGuidInUpperCase) {
  EXPECT_EQ(Identificatore(kGuid), "3F2504E04F8941D39A0C0305E82C3301");
}

TEST(GeneraIdIstanza, EveryFieldKeepsItsLeadingZeros) {
  struct Caso {
    const char* etichetta;
    host::Guid guid;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"first field",
       {0x1A, 0xFFFF, 0xFFFF, {255, 255, 255, 255, 255, 255, 255, 255}},
       "0000001AFFFFFFFFFFFFFFFFFFFFFFFF"},
      {"second field",
       {0xFFFFFFFF, 0x2B, 0xFFFF, {255, 255, 255, 255, 255, 255, 255, 255}},
       "FFFFFFFF002BFFFFFFFFFFFFFFFFFFFF"},
      {"third field",
       {0xFFFFFFFF, 0xFFFF, 0x3, {255, 255, 255, 255, 255, 255, 255, 255}},
       "FFFFFFFFFFFF0003FFFFFFFFFFFFFFFF"},
      {"bytes below 16 have two digits",
       {0xFFFFFFFF, 0xFFFF, 0xFFFF, {0, 1, 9, 10, 15, 16, 0, 255}},
       "FFFFFFFFFFFFFFFF0001090A0F1000FF"},
      {"all zero", {}, "00000000000000000000000000000000"},
  };
  for (const auto& caso : casi) EXPECT_EQ(Identificatore(caso.guid), caso.want) << caso.etichetta;
}

TEST(GeneraIdIstanza, WithoutAGuidTheTextIsEmpty) {
  EXPECT_EQ(Identificatore(std::nullopt), "");
}

class TracciaDiProva : public ::testing::Test {
 protected:
  std::vector<std::string> Righe() const { return journal->Righe({"debug "}); }
  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::JournalPtr journal = ambiente->journal;
};

TEST_F(TracciaDiProva, AnObjectCreatedAndDestroyedAtOnceGivesTwoLinesWithOneIdentifier) {
  ambiente->guid = {kGuid};
  { const Mittente mittente(ambiente); }
  EXPECT_THAT(Righe(),
              ElementsAre("debug QLNA:|3F2504E04F8941D39A0C0305E82C3301|INI|ORVE_MAILSERVER|Mittente",
                          "debug QLNA:|3F2504E04F8941D39A0C0305E82C3301|TER|ORVE_MAILSERVER|Mittente"));
}

TEST_F(TracciaDiProva, EachClassWritesItsOwnName) {
  {
    CLSFW_MAILSERVER servizio(ambiente);
    CollMittenti mittenti(ambiente);
    mittenti.AddMittente("a@example.it", "server", 25, 0, "", "", 0, 0, 0);
    CollDestinatari destinatari(ambiente);
    destinatari.Add("b@example.it");
  }
  std::multiset<std::string> classi;
  for (const auto& riga : Righe()) classi.insert(riga.substr(riga.find("|", 40) + 1));
  EXPECT_THAT(classi,
              ElementsAre("INI|ORVE_MAILSERVER|CLSFW_MAILSERVER", "INI|ORVE_MAILSERVER|CollDestinatari",
                          "INI|ORVE_MAILSERVER|CollMittenti", "INI|ORVE_MAILSERVER|Destinatario",
                          "INI|ORVE_MAILSERVER|Mittente", "TER|ORVE_MAILSERVER|CLSFW_MAILSERVER",
                          "TER|ORVE_MAILSERVER|CollDestinatari", "TER|ORVE_MAILSERVER|CollMittenti",
                          "TER|ORVE_MAILSERVER|Destinatario", "TER|ORVE_MAILSERVER|Mittente"));
}

TEST_F(TracciaDiProva, AListIsAnnouncedDeadBeforeItsItemsAreReleased) {
  {
    CollDestinatari destinatari(ambiente);
    destinatari.Add("a@example.it");
  }
  EXPECT_THAT(Righe(),
              ElementsAre("debug QLNA:|00000001000000000000000000000000|INI|ORVE_MAILSERVER|CollDestinatari",
                          "debug QLNA:|00000002000000000000000000000000|INI|ORVE_MAILSERVER|Destinatario",
                          "debug QLNA:|00000001000000000000000000000000|TER|ORVE_MAILSERVER|CollDestinatari",
                          "debug QLNA:|00000002000000000000000000000000|TER|ORVE_MAILSERVER|Destinatario"));
}

TEST_F(TracciaDiProva, TwoObjectsOfOneClassHaveDifferentIdentifiers) {
  const Mittente uno(ambiente);
  const Mittente due(ambiente);
  ASSERT_THAT(Righe(), SizeIs(2));
  EXPECT_NE(Righe()[0], Righe()[1]);
}

TEST_F(TracciaDiProva, WithoutAGuidTheFirstLineIsBareAndTheLastTriesAgain) {
  ambiente->guidDisponibile = false;
  {
    const Mittente mittente(ambiente);
    ambiente->guidDisponibile = true;
    ambiente->guid = {kGuid};
  }
  EXPECT_THAT(Righe(),
              ElementsAre("debug QLNA:||INI|ORVE_MAILSERVER|Mittente",
                          "debug QLNA:|3F2504E04F8941D39A0C0305E82C3301|TER|ORVE_MAILSERVER|Mittente"));
}

class GeneratoreGuasto : public host::GeneratoreGuid {
 public:
  std::optional<host::Guid> CreaGuid() override { throw host::Errore(host::kErroreAutomazione); }
};

class AmbienteSenzaIdentificatori : public fakes::FakeAmbiente {
 public:
  host::GeneratoreGuid& Identificatori() override { return generatore_; }

 private:
  GeneratoreGuasto generatore_;
};

TEST_F(TracciaDiProva, APlatformThatFailsOverAGuidStillGivesBothLines) {
  const auto guasto = std::make_shared<AmbienteSenzaIdentificatori>();
  { const Mittente mittente(guasto); }
  EXPECT_THAT(guasto->journal->Righe({"debug "}), ElementsAre("debug QLNA:||INI|ORVE_MAILSERVER|Mittente",
                                                              "debug QLNA:||TER|ORVE_MAILSERVER|Mittente"));
}

TEST_F(TracciaDiProva, WithoutAnyGuidBothLinesAreBare) {
  ambiente->guidDisponibile = false;
  { const Mittente mittente(ambiente); }
  EXPECT_THAT(Righe(), ElementsAre("debug QLNA:||INI|ORVE_MAILSERVER|Mittente",
                                   "debug QLNA:||TER|ORVE_MAILSERVER|Mittente"));
}

}  // namespace
}  // namespace orve
