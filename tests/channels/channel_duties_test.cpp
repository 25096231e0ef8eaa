// What a channel owes beside its row in the table: its number in both enumerations and on every page that
// tells of the channels, and its row in the table by which every test sends through it. The pages are read
// as texts; each failure names the channel and where it is missing.
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "channels/channel_traits.h"
#include "fakes/oggetti_del_canale.h"
#include "places.h"

namespace orve {
namespace {

std::string TestoDi(const std::string& file) {
  std::ifstream flusso(places::Source(file));
  if (!flusso) ADD_FAILURE() << "no file " << file;
  return {std::istreambuf_iterator<char>(flusso), std::istreambuf_iterator<char>()};
}

/// The names of the channels in an enumeration, by number.
std::map<std::int32_t, std::string> NomiNellEnumerazione(const std::string& file, const std::string& inizio) {
  const std::string testo = TestoDi(file);
  const std::size_t da = testo.find(inizio);
  EXPECT_NE(da, std::string::npos) << file;
  const std::string corpo = testo.substr(da, testo.find('}', da) - da);
  const std::regex membro(R"((kv\w+) = (\d+))");
  std::map<std::int32_t, std::string> nomi;
  for (std::sregex_iterator trovato(corpo.begin(), corpo.end(), membro); trovato != std::sregex_iterator();
       ++trovato) {
    nomi[std::stoi((*trovato)[2])] = (*trovato)[1];
  }
  return nomi;
}

std::map<std::int32_t, std::string> NomiDeiCanali() {
  return NomiNellEnumerazione("include/orve-mailserver/service/enumerazioni.h", "enum kvEnum_ServizioMail");
}

struct Pagina {
  std::string file;
  std::string inizio, fine;   // of the part of the page that tells of the channels
  std::string riga;           // what its lines look like; the first group holds the numbers
  bool ancheNessuno = false;  // it tells of the number that disables sending too
};

std::set<std::int32_t> NumeriSulla(const Pagina& pagina) {
  static const std::regex kNumero(R"(\d+)");
  const std::string testo = TestoDi(pagina.file);
  const std::size_t da = testo.find(pagina.inizio);
  EXPECT_NE(da, std::string::npos) << pagina.file;
  std::istringstream parte(testo.substr(da, testo.find(pagina.fine, da + 1) - da));
  const std::regex forma(pagina.riga);
  std::set<std::int32_t> numeri;
  for (std::string riga; std::getline(parte, riga);) {
    std::smatch trovata;
    if (!std::regex_search(riga, trovata, forma)) continue;
    const std::string elenco = trovata[1];
    for (std::sregex_iterator numero(elenco.begin(), elenco.end(), kNumero); numero != std::sregex_iterator();
         ++numero) {
      numeri.insert(std::stoi(numero->str()));
    }
  }
  return numeri;
}

TEST(TrattiDeiCanali, HaveTheNamesAndNumbersOfBothEnumerations) {
  const auto nomi = NomiDeiCanali();
  EXPECT_EQ(NomiNellEnumerazione("com/idl/orve_mailserver.idl", "enum kvEnum_ServizioMail"), nomi);
  EXPECT_EQ(nomi.size(), std::size(Canali())) << "a number without a row, or a row without a number";
  for (const ChannelTraits& canale : Canali()) EXPECT_TRUE(nomi.contains(canale.numero)) << canale.nome;
}

TEST(TrattiDeiCanali, StandOnEveryPageThatTellsOfTheChannels) {
  const std::vector<Pagina> pagine = {
      {"adapters/sqlite/schema.sql", "  FW24_INDFAXATTIVO", "\n", R"(-- mail: (.*)$)", true},
      {"docs/glossary.md", "\n## Channels", "\n## ", R"(^\| (\d+) \|)", true},
      {"docs/channels.md", "\n## Where they differ", "\n## ", R"(^\| Number in the settings \|(.*)$)"},
      {"docs/windows.md", "\n## What else a machine needs", "\n## ",
       R"(^\|[^|]*\| (?:the )?channels? ([\d, and]+))"},
      {"com/LEGGIMI.txt", "\nChe cosa serve per inviare", "\nQualunque sia il canale",
       R"(^  (\d+(, \d+)*)  +\S)"},
      {"apps/orve-mail/orve-mail.1.in", "\n.SH CANALI", "\n.SH ", R"(^\.B (\d[\d, ]*)$)", true},
  };
  for (const Pagina& pagina : pagine) {
    const auto numeri = NumeriSulla(pagina);
    for (const ChannelTraits& canale : Canali()) {
      if (canale.consegna == nullptr && !pagina.ancheNessuno) continue;
      EXPECT_TRUE(numeri.contains(canale.numero))
          << pagina.file << " does not tell of channel " << canale.numero << ", " << canale.nome;
    }
    for (const std::int32_t numero : numeri) {
      EXPECT_TRUE(NomiDeiCanali().contains(numero)) << pagina.file << " tells of " << numero;
    }
  }
}

// With a row the tests send through a channel. One channel may have several numbers: any of them will do.
TEST(TrattiDeiCanali, HaveARowOfObjectsByWhichTheTestsSendThroughThem) {
  std::multiset<std::string_view> conRiga;
  for (const fakes::OggettiDelCanale& oggetti : fakes::OggettiDeiCanali()) {
    ASSERT_NE(TrattiDi(oggetti.canale), nullptr) << oggetti.titolo;
    conRiga.insert(TrattiDi(oggetti.canale)->nome);
  }
  for (const ChannelTraits& canale : Canali()) {
    EXPECT_EQ(conRiga.count(canale.nome), canale.consegna != nullptr ? 1U : 0U) << canale.nome;
  }
}

// Of the tables for those who link: what its object owes, and what becomes of a message that it refuses.
TEST(TrattiDeiCanali, HaveTheirObjectAndTheirFailureOnTheIntegratorsPage) {
  const std::string testo = TestoDi("docs/for-integrators.md");
  for (const fakes::OggettiDelCanale& oggetti : fakes::OggettiDeiCanali()) {
    const std::string creazione = fakes::RigaDiCreazione(oggetti);
    const std::string oggetto = creazione.substr(std::string_view("Ambiente.Crea").size());
    for (const std::string& riga : {"| `" + oggetto, "| failed: " + std::string(oggetti.titolo) + " |"}) {
      EXPECT_NE(testo.find("\n" + riga), std::string::npos) << "no row " << riga;
    }
  }
}

TEST(TrattiDeiCanali, HaveTheirNumbersInTheTestOfThePublishedValues) {
  const std::string testo = TestoDi("tests/service/lifecycle_test.cpp");
  const std::size_t da = testo.find("TheEnumerationsHaveTheirPublishedValues");
  ASSERT_NE(da, std::string::npos);
  const std::string prova = testo.substr(da, testo.find("\nTEST", da) - da);
  for (const auto& [numero, nome] : NomiDeiCanali()) {
    EXPECT_TRUE(std::regex_search(prova, std::regex("\\b" + nome + "\\b"))) << nome;
  }
}

TEST(TrattiDeiCanali, HaveTheirNumbersInTheTestOfTheTypeLibrary) {
  const std::string testo = TestoDi("tests/windows/type_library_test.cpp");
  for (const auto& [numero, nome] : NomiDeiCanali()) {
    EXPECT_TRUE(testo.find(nome + " " + std::to_string(numero) + ";") != std::string::npos) << nome;
  }
}

}  // namespace
}  // namespace orve
