// Each operation of an outside object fails once, in a whole send: what the calling program, the person, the
// register, the events and the log see of it is in tables/*.txt, one file for each kind of send. Such a file
// names every operation of the send, in its order, with the outcome that its failure has; an operation that
// is not in the table, or no longer in the send, fails the test as well.
//
// Where a person is told of failures, the message fails too: whatever two faults leave of the send, nothing
// of it reaches the calling program as an error.
//
// The tables are what the system promises, and were written from that and not from what it does. For a new
// send `./dev faults NAME` (ORVE_FAULTS=skeleton) writes the operations alone, each with an outcome that
// fails until a person says what is promised; `./dev faults NAME LIKE` (ORVE_FAULTS_LIKE) takes the promises
// of another table for the operations that both have.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <istream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "faults/prova.h"
#include "faults/scene.h"
#include "places.h"

namespace orve::faults {

namespace {

constexpr const char* kNessuna = "(no failure)";

std::string PercorsoDi(const std::string& nome) {
  return places::Source("tests/faults/tables/" + nome + ".txt");
}

struct Tabella {
  std::map<std::string, std::string> esiti;                     // by name
  std::vector<std::pair<std::string, std::string>> operazioni;  // with the name of the outcome
};

// "[outcome]" and lines up to an empty one; then, after "operations:", "operation => outcome".
Tabella Leggi(std::istream& file, const std::string& nome) {
  Tabella tabella;
  std::string esito;
  bool operazioni = false;
  for (std::string riga; std::getline(file, riga);) {
    if (riga.empty() || riga.front() == '#') {
      esito.clear();
    } else if (riga == "operations:") {
      operazioni = true;
    } else if (operazioni) {
      const std::size_t freccia = riga.rfind(" => ");
      if (freccia == std::string::npos) ADD_FAILURE() << nome << ": " << riga;
      tabella.operazioni.emplace_back(riga.substr(0, freccia), riga.substr(freccia + 4));
    } else if (riga.front() == '[') {
      esito = riga.substr(1, riga.size() - 2);
      tabella.esiti[esito];
    } else {
      tabella.esiti[esito] += riga + "\n";
    }
  }
  return tabella;
}

Tabella Leggi(const std::string& nome) {
  std::ifstream file(PercorsoDi(nome));
  if (!file) ADD_FAILURE() << "no table " << nome;
  return Leggi(file, nome);
}

constexpr const char* kNonPromesso = "not promised yet";

/// The rows of a new table: what the similar one promises for an operation that is in it, by the same words,
/// and no promise for the others.
std::vector<std::pair<std::string, std::string>> RigheCome(const Tabella& simile,
                                                           const std::vector<std::string>& operazioni) {
  const std::map<std::string, std::string> promesse(simile.operazioni.begin(), simile.operazioni.end());
  std::vector<std::pair<std::string, std::string>> righe;
  const auto aggiungi = [&](const std::string& operazione) {
    const auto promessa = promesse.find(operazione);
    righe.emplace_back(operazione, promessa == promesse.end() ? kNonPromesso : promessa->second);
  };
  aggiungi(kNessuna);
  for (const std::string& operazione : operazioni) aggiungi(operazione);
  return righe;
}

std::string Scheletro(const Tabella& simile, const std::vector<std::string>& operazioni) {
  const auto righe = RigheCome(simile, operazioni);
  std::string testo = "# A send that nobody has described yet.\n\n";
  std::set<std::string> scritti = {kNonPromesso};
  for (const auto& [operazione, esito] : righe) {
    if (scritti.insert(esito).second) testo += "[" + esito + "]\n" + simile.esiti.at(esito) + "\n";
  }
  testo +=
      "# Here belong the other outcomes, each with its name in brackets and what is seen of it below, up to "
      "an empty "
      "line.\n\noperations:\n";
  for (const auto& [operazione, esito] : righe) testo.append(operazione).append(" => ").append(esito) += "\n";
  return testo;
}

/// The operations without a promise, a line for each object.
std::string DaPromettere(const Tabella& tabella) {
  std::map<std::string, std::string> membri;
  for (const auto& [operazione, esito] : tabella.operazioni) {
    if (esito != kNonPromesso) continue;
    const std::size_t punto = std::min(operazione.find('.'), operazione.size());
    membri[operazione.substr(0, punto)] +=
        "\n    " + operazione.substr(std::min(punto + 1, operazione.size()));
  }
  std::string testo;
  for (const auto& [oggetto, elenco] : membri) testo.append("  ").append(oggetto).append(elenco) += "\n";
  return testo;
}

void ScriviScheletro(const std::string& nome, const std::vector<std::string>& operazioni) {
  const char* const come = std::getenv("ORVE_FAULTS_LIKE");
  const Tabella simile = come == nullptr || *come == '\0' ? Tabella{} : Leggi(come);
  std::istringstream scheletro(Scheletro(simile, operazioni));
  std::ofstream file(PercorsoDi(nome));
  if (!(file << scheletro.str()).flush()) ADD_FAILURE() << "cannot write " << PercorsoDi(nome);
  std::cout << "without a promise:\n" << DaPromettere(Leggi(scheletro, nome));
}

std::string Unite(const std::vector<std::string>& righe) {
  std::string testo;
  for (const std::string& riga : righe) testo += riga + "\n";
  return testo;
}

/// The same send with a person there, to whom failures are told.
Scena Presidiata(const Scena& scena) {
  const auto invia = [dalProgramma = scena.invia](const auto& ambiente, CLSFW_MAILSERVER& servizio) {
    servizio.ModalitaInvio(kvManuale);
    dalProgramma(ambiente, servizio);
  };
  return {scena.nome, scena.prepara, invia};
}

class EveryOperation : public ::testing::TestWithParam<Scena> {};

TEST_P(EveryOperation, StandsInTheTable) {
  const Corsa corsa = Corri(GetParam(), 0);
  const char* const faults = std::getenv("ORVE_FAULTS");
  if (faults != nullptr && std::string_view(faults) == "skeleton") {
    if (!std::filesystem::exists(PercorsoDi(GetParam().nome))) {
      ScriviScheletro(GetParam().nome, corsa.operazioni);
    }
    return;
  }
  std::vector<std::string> attese;
  for (const auto& [operazione, esito] : Leggi(GetParam().nome).operazioni) {
    if (operazione != kNessuna) attese.push_back(operazione);
  }
  EXPECT_EQ(Unite(corsa.operazioni), Unite(attese));
}

TEST_P(EveryOperation, ThatFailsHasTheOutcomeOfTheTable) {
  const Tabella tabella = Leggi(GetParam().nome);
  std::set<std::string> usati;
  for (std::size_t i = 0; i < tabella.operazioni.size(); ++i) {
    const auto& [operazione, esito] = tabella.operazioni[i];
    ASSERT_EQ(operazione == kNessuna, i == 0) << "the first row, and no other, is " << kNessuna;
    ASSERT_TRUE(tabella.esiti.contains(esito)) << esito;
    usati.insert(esito);
    const Corsa corsa = Corri(GetParam(), i);
    EXPECT_EQ(corsa.visto, tabella.esiti.at(esito)) << "failing: " << operazione;
    EXPECT_EQ(corsa.rimasti, 0) << "failing: " << operazione;
  }
  for (const auto& [esito, testo] : tabella.esiti) EXPECT_TRUE(usati.contains(esito)) << esito;
}

TEST_P(EveryOperation, ThatFailsAndCannotBeToldRaisesNothingFromTheSend) {
  const Scena scena = Presidiata(GetParam());
  const auto operazioni = Corri(scena, 0).operazioni;
  bool taciuto = false;
  for (std::size_t i = 1; i <= operazioni.size(); ++i) {
    const Corsa corsa = Corri(scena, i, true);
    EXPECT_FALSE(corsa.visto.starts_with("errore da invio")) << operazioni[i - 1] << "\n" << corsa.visto;
    EXPECT_EQ(corsa.rimasti, 0) << operazioni[i - 1];
    taciuto = taciuto || corsa.visto != Corri(scena, i).visto;
  }
  EXPECT_TRUE(taciuto) << "no failure was to be told";
}

TEST(FaultTables, ANewOneTakesFromASimilarOneWhatBothHaveAndListsTheRest) {
  std::istringstream altra(
      "# A send.\n\n[delivered]\npartito\nstato 0\n\n[no service]\nnon partito\n\n[late]\nstato "
      "2\n\noperations:\n"
      "(no failure) => delivered\nAmbiente.CreaMessaggi => no service\nsmtp.SendMail => late\n");
  const std::string scheletro = Scheletro(
      Leggi(altra, "altra"), {"Ambiente.CreaMessaggi", "fax.Open 1", "fax.Close", "Ambiente.CreaFax"});
  EXPECT_EQ(scheletro,
            "# A send that nobody has described yet.\n\n[delivered]\npartito\nstato 0\n\n[no service]\nnon "
            "partito\n\n"
            "# Here belong the other outcomes, each with its name in brackets and what is seen of it below, "
            "up to an empty "
            "line.\n\noperations:\n(no failure) => delivered\nAmbiente.CreaMessaggi => no service\n"
            "fax.Open 1 => not promised yet\nfax.Close => not promised yet\nAmbiente.CreaFax => not promised "
            "yet\n");
  std::istringstream nuova(scheletro);
  EXPECT_EQ(DaPromettere(Leggi(nuova, "nuova")), "  Ambiente\n    CreaFax\n  fax\n    Open 1\n    Close\n");
}

TEST(FaultTables, BelongToASendEach) {
  std::set<std::string> tabelle;
  for (const auto& file : std::filesystem::directory_iterator(places::Source("tests/faults/tables"))) {
    tabelle.insert(file.path().stem().string());
  }
  std::set<std::string> invii;
  for (const Scena& scena : Scene()) invii.insert(scena.nome);
  EXPECT_EQ(tabelle, invii);
}

INSTANTIATE_TEST_SUITE_P(Sends, EveryOperation, ::testing::ValuesIn(Scene()),
                         [](const auto& scena) { return scena.param.nome; });

}  // namespace

}  // namespace orve::faults
