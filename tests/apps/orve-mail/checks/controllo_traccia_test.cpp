// The pairing of trace lines, on traces of every kind, and the traces of whole sends.
#include "orve-mail/checks/controllo_traccia.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "apps/orve-mail/prova_intera.h"
#include "places.h"
#include "support/process.h"

namespace orve::app {

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

// An identifier for a number.
std::string Id(unsigned numero) {
  std::string cifre = std::to_string(numero);
  return std::string(32 - cifre.size(), 'A') + cifre;
}

std::string Evento(const std::string& id, const std::string& evento, const std::string& classe = "Mittente") {
  return "QLNA:|" + id + "|" + evento + "|ORVE_MAILSERVER|" + classe + "\n";
}

ControlloTraccia Controllato(const std::string& testo) {
  std::istringstream flusso(testo);
  ControlloTraccia controllo;
  controllo.Leggi(flusso);
  return controllo;
}

std::vector<std::uint64_t> RigheMaiRilasciate(const ControlloTraccia& controllo, std::string_view classe) {
  std::vector<std::uint64_t> righe;
  const auto mai = controllo.MaiRilasciati();
  for (std::size_t i = 0; i < mai.size(); ++i) {
    if (kClassiTracciate.at(i) != classe) continue;
    for (const MaiRilasciato& oggetto : mai.at(i)) righe.push_back(oggetto.riga);
  }
  return righe;
}

std::size_t QuantiMaiRilasciati(const ControlloTraccia& controllo) {
  std::size_t quanti = 0;
  for (const auto& oggetti : controllo.MaiRilasciati()) quanti += oggetti.size();
  return quanti;
}

class Traccia : public ProvaIntera {
 protected:
  // A run with a trace of its own, checked by the program.
  Esecuzione Controlla(const std::string& file) const { return Esegui({"controlla-traccia", file}); }
  support::ProcessResult EseguiCon(const std::string& traccia,
                                   const std::vector<std::string>& argomenti) const {
    std::vector<std::string> comando = {"/usr/bin/env",
                                        "TMPDIR=" + cartella.Path().string(),
                                        "ORVE_MAIL_DB=" + Db(),
                                        places::Program(),
                                        "--traccia",
                                        traccia};
    comando.insert(comando.end(), argomenti.begin(), argomenti.end());
    return support::RunProgram(comando);
  }
};

}  // namespace

TEST(ControlloTraccia, AnEmptyTraceHoldsNothing) {
  for (const std::string testo : {"", "\n", "\r\n\r\n"}) {
    const ControlloTraccia controllo = Controllato(testo);
    EXPECT_EQ(controllo.Creati(), 0U);
    EXPECT_EQ(QuantiMaiRilasciati(controllo), 0U);
    EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
    EXPECT_EQ(controllo.Estranee(), 0U);
  }
}

TEST(ControlloTraccia, BirthAndDeathPairByTheirIdentifier) {
  const ControlloTraccia controllo = Controllato(Evento(Id(1), "INI") + Evento(Id(2), "INI", "Destinatario") +
                                                 Evento(Id(1), "TER") + Evento(Id(2), "TER", "Destinatario"));
  EXPECT_EQ(controllo.Creati(), 2U);
  EXPECT_EQ(controllo.Rilasciati(), 2U);
  EXPECT_EQ(QuantiMaiRilasciati(controllo), 0U);
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
}

TEST(ControlloTraccia, WhatIsNeverReleasedIsListedByClassWithItsLine) {
  const ControlloTraccia controllo =
      Controllato(Evento(Id(1), "INI") + Evento(Id(2), "INI", "Destinatario") + Evento(Id(3), "INI") +
                  Evento(Id(4), "INI") + Evento(Id(3), "TER"));
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Mittente"), ElementsAre(1U, 4U));
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Destinatario"), ElementsAre(2U));
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
}

TEST(ControlloTraccia, EveryClassThatTracesIsKnown) {
  for (const std::string classe : {"CollMittenti", "Mittente", "FRMRW_OPZMAIL", "CLSFW_MAILSERVER",
                                   "CollDestinatari", "Destinatario", "FRMFW_MAILPARAMS"}) {
    EXPECT_THAT(RigheMaiRilasciate(Controllato(Evento(Id(1), "INI", classe)), classe), ElementsAre(1U))
        << classe;
  }
}

TEST(ControlloTraccia, SeveralProgramsMayMixTheirLines) {
  std::string testo;
  for (unsigned i = 0; i < 100; ++i)
    testo += Evento(Id(i), "INI") + Evento(Id(1000 + i), "INI", "Destinatario");
  for (unsigned i = 100; i > 0; --i) testo += Evento(Id(i - 1), "TER");
  for (unsigned i = 0; i < 99; ++i) testo += Evento(Id(1000 + i), "TER", "Destinatario");
  const ControlloTraccia controllo = Controllato(testo);
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Destinatario"), ElementsAre(200U));
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Mittente"), IsEmpty());
}

TEST(ControlloTraccia, LinesMayEndAsOnAnyPlatformAndTheLastOneNotAtAll) {
  std::string testo = "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|Mittente\r\n";
  testo += "QLNA:|" + Id(1) + "|TER|ORVE_MAILSERVER|Mittente\r\n";
  testo += "QLNA:|" + Id(2) + "|INI|ORVE_MAILSERVER|Mittente";
  const ControlloTraccia controllo = Controllato(testo);
  EXPECT_EQ(controllo.Rilasciati(), 1U);
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Mittente"), ElementsAre(3U));
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
}

TEST(ControlloTraccia, TheSystemLogsOwnTextInFrontIsNoHindrance) {
  const std::string testa = "Nov 21 20:12:41 pc orve-mail[12]: ";
  const ControlloTraccia controllo = Controllato(testa + Evento(Id(1), "INI") + testa + Evento(Id(1), "TER"));
  EXPECT_EQ(controllo.Rilasciati(), 1U);
  EXPECT_EQ(controllo.Estranee(), 0U);
}

TEST(ControlloTraccia, LinesOfOthersAreCountedAndNotLookedAt) {
  const ControlloTraccia controllo = Controllato("un altro programma\nQLNA:\nQLNA:|" + Id(1) +
                                                 "|INI|ALTRO_PROGETTO|Classe\n" + Evento(Id(1), "INI"));
  EXPECT_EQ(controllo.Estranee(), 3U);
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Mittente"), ElementsAre(4U));
}

TEST(ControlloTraccia, AMalformedLineIsToldWithItsNumberAndPairsWithNothing) {
  const std::vector<std::string> malformate = {
      "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER",                 // no class
      "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|Mittente|altro",  // one field too many
      "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|Mitten",          // cut
      "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|",
      "QLNA:|" + Id(1) + "|ini|ORVE_MAILSERVER|Mittente",
      "QLNA:|" + Id(1) + "||ORVE_MAILSERVER|Mittente",
      "QLNA:|ABC|INI|ORVE_MAILSERVER|Mittente",
      "QLNA:|3f2504e04f8941d39a0c0305e82c3301|INI|ORVE_MAILSERVER|Mittente",
      "QLNA:|" + Id(1) + "0|INI|ORVE_MAILSERVER|Mittente",
      "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|Mittente ",
      "QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|Mittente" + std::string(1, '\0'),
      "QLNA:|",
  };
  for (const std::string& malformata : malformate) {
    const ControlloTraccia controllo =
        Controllato(Evento(Id(9), "INI") + malformata + "\n" + Evento(Id(9), "TER"));
    ASSERT_THAT(controllo.Anomalie(), SizeIs(1)) << malformata;
    EXPECT_EQ(controllo.Anomalie()[0].riga, 2U);
    EXPECT_EQ(controllo.Anomalie()[0].testo, "riga di traccia malformata");
    EXPECT_EQ(controllo.Rilasciati(), 1U);
  }
}

TEST(ControlloTraccia, ADeathTwiceIsToldAndCountsOnce) {
  const ControlloTraccia controllo =
      Controllato(Evento(Id(1), "INI") + Evento(Id(1), "TER") + Evento(Id(1), "TER"));
  EXPECT_EQ(controllo.Rilasciati(), 1U);
  ASSERT_THAT(controllo.Anomalie(), SizeIs(1));
  EXPECT_EQ(controllo.Anomalie()[0].riga, 3U);
  EXPECT_EQ(controllo.Anomalie()[0].testo, "TER senza INI, o ripetuto, di " + Id(1));
}

TEST(ControlloTraccia, ABirthTwiceIsToldAndCountsOnce) {
  const ControlloTraccia controllo =
      Controllato(Evento(Id(1), "INI") + Evento(Id(1), "INI") + Evento(Id(1), "TER"));
  EXPECT_EQ(controllo.Creati(), 1U);
  EXPECT_EQ(QuantiMaiRilasciati(controllo), 0U);
  ASSERT_THAT(controllo.Anomalie(), SizeIs(1));
  EXPECT_EQ(controllo.Anomalie()[0].riga, 2U);
}

TEST(ControlloTraccia, ADeathUnderAnotherClassReleasesNothing) {
  const ControlloTraccia controllo = Controllato(Evento(Id(1), "INI") + Evento(Id(1), "TER", "Destinatario"));
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Mittente"), ElementsAre(1U));
  EXPECT_EQ(controllo.NumeroAnomalie(), 1U);
}

TEST(ControlloTraccia, ABirthWithoutAnIdentifierPairsWithADeathOfItsClass) {
  const ControlloTraccia controllo =
      Controllato(Evento("", "INI") + Evento("", "INI") + Evento("", "INI", "Destinatario") +
                  Evento(Id(1), "TER") + Evento("", "TER") + Evento("", "TER"));
  EXPECT_EQ(controllo.Rilasciati(), 2U);
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Destinatario"), ElementsAre(3U));
  ASSERT_THAT(controllo.Anomalie(), SizeIs(1));
  EXPECT_EQ(controllo.Anomalie()[0].riga, 6U);
}

TEST(ControlloTraccia, OnlyTheFirstLinesThatPairWithNothingAreKept) {
  std::string testo;
  for (unsigned i = 0; i < 1000; ++i) testo += Evento(Id(i), "TER");
  const ControlloTraccia controllo = Controllato(testo);
  EXPECT_EQ(controllo.NumeroAnomalie(), 1000U);
  EXPECT_THAT(controllo.Anomalie(), SizeIs(ControlloTraccia::kAnomalieTenute));
}

TEST(ControlloTraccia, ALineWithoutAnEndIsCutAndTheNextOneIsRead) {
  const std::string lunga(1UL << 20U, 'x');
  const ControlloTraccia altra = Controllato(lunga + "\n" + Evento(Id(1), "INI"));
  EXPECT_EQ(altra.Estranee(), 1U);
  EXPECT_THAT(RigheMaiRilasciate(altra, "Mittente"), ElementsAre(2U));
  const ControlloTraccia nostra =
      Controllato("QLNA:|" + Id(1) + "|INI|ORVE_MAILSERVER|Mittente" + lunga + "\n" + Evento(Id(2), "INI"));
  EXPECT_EQ(nostra.NumeroAnomalie(), 1U);
  EXPECT_THAT(RigheMaiRilasciate(nostra, "Mittente"), ElementsAre(2U));
}

TEST(ControlloTraccia, AHugeTraceIsReadAsAStream) {
  // Longer than the blocks in which it is read, so that lines straddle their edges.
  std::string testo;
  constexpr unsigned kOggetti = 20'000;
  for (unsigned i = 0; i < kOggetti; ++i) testo += Evento(Id(i), "INI") + Evento(Id(i), "TER");
  testo += Evento(Id(kOggetti), "INI");
  const ControlloTraccia controllo = Controllato(testo);
  EXPECT_EQ(controllo.Rilasciati(), kOggetti);
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
  EXPECT_THAT(RigheMaiRilasciate(controllo, "Mittente"), ElementsAre(2U * kOggetti + 1));
}

TEST_F(Traccia, ASendReleasesEveryObjectThatItMade) {
  AvviaServerOrdinario();
  const std::string file = File("una.txt");
  const auto esecuzione = EseguiCon(
      file, {"invia", "--ca", Ca(), "--a", "x@example.org", "--cc", "y@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.status, 0) << esecuzione.output;
  const std::string traccia = support::ReadFile(file);
  EXPECT_THAT(traccia, AllOf(HasSubstr("|INI|ORVE_MAILSERVER|CLSFW_MAILSERVER\n"),
                             HasSubstr("|INI|ORVE_MAILSERVER|CollDestinatari\n"),
                             HasSubstr("|TER|ORVE_MAILSERVER|Destinatario\n")));
  const Esecuzione controllo = Controlla(file);
  EXPECT_EQ(controllo.stato, 0) << controllo;
  EXPECT_THAT(controllo.uscita, Not(HasSubstr("Mai rilasciati")));
  EXPECT_EQ(controllo.errori, "");
}

TEST_F(Traccia, ARefusedAndAFailedSendReleaseEveryObjectToo) {
  AvviaServerOrdinario({"no@example.org"});
  const std::string file = File("una.txt");
  EXPECT_EQ(EseguiCon(file, {"invia", "--cliente", "1004", "--modo", "automatico"}).status, 3);
  EXPECT_EQ(EseguiCon(file, {"invia", "--ca", Ca(), "--a", "no@example.org"}).status, 1);
  EXPECT_EQ(EseguiCon(file, {"invia", "--ca", Ca(), "--a", "x@example.org", "--utente", "5", "--ditta", "99"})
                .status,
            4);
  EXPECT_EQ(EseguiCon(file, {"invia-smtp", "--ca", Ca(), "--a", "no@example.org"}).status, 1);
  const Esecuzione controllo = Controlla(file);
  EXPECT_EQ(controllo.stato, 0) << controllo;
  EXPECT_THAT(controllo.uscita, StartsWith("Oggetti creati: "));
}

TEST_F(Traccia, ProgramsAtTheSameTimeShareAFileLineByLine) {
  AvviaServerOrdinario();
  const std::string file = File("comune.txt");
  std::vector<std::thread> insieme;
  std::array<int, 3> stati{};
  insieme.reserve(stati.size());
  for (int& stato : stati) {
    insieme.emplace_back([this, &file, &stato] {
      stato = EseguiCon(file, {"invia", "--cliente", "1004", "--modo", "automatico"}).status;
    });
  }
  for (std::thread& uno : insieme) uno.join();
  EXPECT_THAT(stati, ElementsAre(3, 3, 3));
  std::ifstream flusso(file, std::ios::binary);
  ControlloTraccia controllo;
  controllo.Leggi(flusso);
  EXPECT_EQ(QuantiMaiRilasciati(controllo), 0U);
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
  EXPECT_EQ(controllo.Estranee(), 0U);
  EXPECT_GE(controllo.Creati(), 3U);
}

TEST_F(Traccia, WhatWasNeverReleasedGivesStatusOneAndTheLines) {
  const std::string file =
      cartella.Write("mancante.txt", Evento(Id(1), "INI") + Evento(Id(2), "INI", "Destinatario") +
                                         Evento(Id(3), "INI") + Evento(Id(3), "TER"));
  const Esecuzione controllo = Controlla(file);
  EXPECT_EQ(controllo.stato, 1);
  EXPECT_EQ(controllo.uscita,
            "Oggetti creati: 3, rilasciati: 1\n"
            "Mai rilasciati: 2\n"
            "  Destinatario: 1\n"
            "    riga 2: " +
                Id(2) +
                "\n"
                "  Mittente: 1\n"
                "    riga 1: " +
                Id(1) + "\n");
}

TEST_F(Traccia, LinesThatPairWithNothingGiveAStatusOfTheirOwn) {
  const std::string file = cartella.Write(
      "doppia.txt", Evento(Id(1), "INI") + Evento(Id(1), "TER") + Evento(Id(1), "TER") + "altro\n");
  const Esecuzione controllo = Controlla(file);
  EXPECT_EQ(controllo.stato, 7);
  EXPECT_EQ(controllo.uscita,
            "Oggetti creati: 1, rilasciati: 1\nRighe di altra provenienza, non guardate: 1\n");
  EXPECT_EQ(controllo.errori, "riga 3: TER senza INI, o ripetuto, di " + Id(1) + "\n");
}

TEST_F(Traccia, AnEmptyFileIsInOrderAndAMissingOneIsNot) {
  EXPECT_EQ(Controlla(cartella.Write("vuota.txt", "")).stato, 0);
  for (const std::string& file : {File("manca.txt"), cartella.Path().string()}) {
    EXPECT_EQ(Controlla(file).stato, 6) << file;
  }
  EXPECT_EQ(Esegui({"controlla-traccia"}).stato, 2);
}

TEST_F(Traccia, TheStandardInputMayBeChecked) {
  const Esecuzione controllo = Esegui({"controlla-traccia", "-"}, Evento(Id(1), "INI"));
  EXPECT_EQ(controllo.stato, 1) << controllo;
}

TEST_F(Traccia, ADashSendsTheLinesToTheErrorStream) {
  const auto esecuzione = EseguiCon("-", {"invia", "--cliente", "1004", "--modo", "automatico"});
  EXPECT_EQ(esecuzione.status, 3);
  EXPECT_THAT(esecuzione.output, HasSubstr("|TER|ORVE_MAILSERVER|CLSFW_MAILSERVER\n"));
}

TEST_F(Traccia, AFileThatCannotBeWrittenStopsEverythingBefore) {
  const std::string pipe = File("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& file : {std::string("/nessuna/cartella/x"), cartella.Path().string(), pipe}) {
    const auto esecuzione = EseguiCon(file, {"invia", "--cliente", "1004", "--modo", "automatico"});
    EXPECT_EQ(esecuzione.status, 6) << file;
    EXPECT_THAT(esecuzione.output, StartsWith("orve-mail: --traccia: impossibile scrivere " + file + ": "));
  }
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Traccia, AFullDiskCostsTheTraceAndThePersonLearnsIt) {
  // No file may grow beyond the size of the trace, which is larger than all others.
  constexpr std::size_t kBlocco = 512;
  constexpr std::size_t kBlocchi = 8192;
  const std::string file = cartella.Write("piena.txt", std::string(kBlocchi * kBlocco - 1, 'x') + "\n");
  const auto esecuzione = support::RunProgram(
      {"/bin/sh", "-c", R"(ulimit -f "$1"; shift; exec "$@")", "prova", std::to_string(kBlocchi),
       "/usr/bin/env", "TMPDIR=" + cartella.Path().string(), "ORVE_MAIL_DB=" + Db(), places::Program(),
       "--traccia", file, "invia", "--cliente", "1004", "--modo", "automatico"});
  EXPECT_EQ(esecuzione.status, 3);
  EXPECT_THAT(esecuzione.output, HasSubstr("orve-mail: --traccia: non tutte le righe sono state scritte\n"));
  EXPECT_EQ(std::filesystem::file_size(file), kBlocchi * kBlocco);
}

TEST_F(Traccia, TheOptionStandsInFrontOfTheCommandOnly) {
  const Esecuzione esecuzione = Esegui({"invia", "--a", "x@example.org", "--traccia", File("t.txt")});
  EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
  EXPECT_FALSE(std::filesystem::exists(File("t.txt")));
}

}  // namespace orve::app
