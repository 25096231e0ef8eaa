// What others on the machine get to see of the program's files.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>

#include "apps/orve-mail/prova_intera.h"
#include "orve-mail/commands/directory_options.h"
#include "orve-mail/secrets/memoria.h"

namespace orve::app {

namespace {

using ::testing::HasSubstr;

// A process without a mask, as a service may have one.
class SenzaMaschera {
 public:
  SenzaMaschera() : prima_(::umask(0)) {}
  SenzaMaschera(const SenzaMaschera&) = delete;
  SenzaMaschera& operator=(const SenzaMaschera&) = delete;
  SenzaMaschera(SenzaMaschera&&) = delete;
  SenzaMaschera& operator=(SenzaMaschera&&) = delete;
  ~SenzaMaschera() { ::umask(prima_); }

 private:
  mode_t prima_;
};

unsigned Permessi(const std::string& file) {
  struct stat stato {};
  return ::stat(file.c_str(), &stato) == 0 ? stato.st_mode & 07777U : 0;
}

class Riservatezza : public ProvaIntera {};

TEST_F(Riservatezza, EveryFileIsClosedToOthersFromItsFirstMoment) {
  AvviaServerOrdinario();
  const SenzaMaschera aperto;
  std::vector<std::string> ambiente = Precarica("without-chmod");
  const Esecuzione creato = EseguiConAmbiente(ambiente, {"crea-db", File("nuovo.db")});
  ASSERT_EQ(creato.stato, 0) << creato;
  const std::string lista = cartella.Write("elenco.csv", "indirizzo\nuno@example.org\n");
  const Esecuzione inviato = EseguiConAmbiente(
      ambiente, {"--traccia", File("traccia"), "lista", lista, "--ca", Ca(), "--corpo", "x", "--oggetto", "x",
                 "--registro", File("registro"), "--esito", File("esito"), "--dialogo", File("dialogo")});
  ASSERT_EQ(inviato.stato, 0) << inviato;
  for (const char* nome : {"nuovo.db", "nuovo.db.chiave", "traccia", "registro", "esito", "dialogo"}) {
    EXPECT_EQ(Permessi(File(nome)), 0600U) << nome;
  }
}

// The variables that make the program report at its end how much of a text is left in its memory.
std::vector<std::string> Cerca(const std::string& segreto, const std::string& referto) {
  constexpr unsigned kMaschera = 90;
  std::string cifre;
  for (const char c : segreto) {
    constexpr const char* kCifre = "0123456789abcdef";
    const unsigned byte = static_cast<unsigned char>(c) ^ kMaschera;
    cifre += kCifre[byte >> 4U];
    cifre += kCifre[byte & 15U];
  }
  return {"LEFT_SECRET=" + cifre, "LEFT_REPORT=" + referto};
}

// Short ones are kept in different places from long ones.
TEST_F(Riservatezza, NothingOfAPasswordIsLeftBehindASend) {
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
  GTEST_SKIP() << "the sanitizer keeps what was given back";
#endif
#endif
  for (const std::string& password : {std::string("Breve-7391"), "Lunga-" + std::string(60, 'x') + "-7391"}) {
    support::SmtpServerOptions opzioni;
    opzioni.user = "fatture@arvenia.example";
    opzioni.password = password;
    auto& server = AvviaServer(1, opzioni);
    std::vector<std::string> ambiente = Precarica("what-is-left");
    const auto cerca = Cerca(password, File("referto"));
    ambiente.insert(ambiente.end(), cerca.begin(), cerca.end());
    const Esecuzione impostata = EseguiConAmbiente(ambiente, {"imposta-password", "1"}, password + "\n");
    EXPECT_EQ(impostata.stato, 0) << impostata;
    EXPECT_EQ(support::ReadFile(File("referto")), "copies 0, dumpable 0, core 0\n") << password << impostata;
    const Esecuzione inviato =
        EseguiConAmbiente(ambiente, {"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "x"});
    EXPECT_EQ(inviato.stato, 0) << inviato;
    EXPECT_EQ(server.Count(), 1U);
    EXPECT_EQ(support::ReadFile(File("referto")), "copies 0, dumpable 0, core 0\n") << password << inviato;
  }
}

TEST(Memoria, AVariableThatWasReadIsGoneFromWhereItStood) {
  ASSERT_EQ(::setenv("ORVE_PROVA_SEGRETA", "odbc:PWD=segreta", 1), 0);
  const char* const dove = std::getenv("ORVE_PROVA_SEGRETA");
  DimenticaVariabile("ORVE_PROVA_SEGRETA");
  EXPECT_EQ(std::string(dove, 16), std::string(16, '\0'));
  EXPECT_EQ(std::getenv("ORVE_PROVA_SEGRETA"), nullptr);
  DimenticaVariabile("ORVE_PROVA_SEGRETA");
}

TEST(Memoria, ThePasswordOfTheDirectoryIsGoneFromTheEnvironmentThatItCameIn) {
  CLI::App comando;
  DirectoryOptions opzioni;
  AggiungiDirectory(comando, opzioni);
  opzioni.server = "ldaps://directory.example";
  opzioni.utente = "cn=lettore";
  ASSERT_EQ(::setenv("ORVE_MAIL_DIRECTORY_PASSWORD", "segreta-della-directory", 1), 0);
  const char* const dove = std::getenv("ORVE_MAIL_DIRECTORY_PASSWORD");
  const auto lette = LeggiDirectory(comando, opzioni);
  ASSERT_TRUE(lette);
  EXPECT_TRUE(lette->password == "segreta-della-directory");
  EXPECT_EQ(std::string(dove, 23), std::string(23, '\0'));
}

TEST_F(Riservatezza, ANameForTheProgramsOwnOutputIsNoLinkToAFile) {
  for (const char* nome : {"/dev/stdout", "/dev/stderr", "/dev/fd/1", "/dev/null"}) {
    const Esecuzione esecuzione = EseguiConAmbiente({}, {"--traccia", nome, "registro"});
    EXPECT_EQ(esecuzione.stato, 0) << nome << '\n' << esecuzione;
  }
}

TEST_F(Riservatezza, NoFileIsWrittenThroughALink) {
  const std::string vittima = cartella.Write("vittima", "intatta");
  const std::string legame = File("legame");
  std::filesystem::create_symlink(vittima, legame);
  const Esecuzione traccia = EseguiConAmbiente({}, {"--traccia", legame, "registro"});
  EXPECT_EQ(traccia.stato, 6) << traccia;
  EXPECT_THAT(traccia.errori, HasSubstr("--traccia: impossibile scrivere " + legame +
                                        ": è un collegamento simbolico; indicare il file stesso"));
  const Esecuzione dialogo = Esegui({"invia", "--dialogo", legame, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(dialogo.stato, 6) << dialogo;
  EXPECT_THAT(dialogo.errori, HasSubstr("--dialogo: impossibile scrivere " + legame +
                                        ": è un collegamento simbolico; indicare il file"));
  const Esecuzione registro = Esegui({"invia", "--registro", legame, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(registro.stato, 5) << registro;
  EXPECT_THAT(registro.errori, HasSubstr(legame + " è un collegamento simbolico"));
  EXPECT_EQ(support::ReadFile(vittima), "intatta");
}

TEST_F(Riservatezza, ARegisterOfAnotherUserServesWhereNotEverybodyCouldHaveLaidIt) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  AvviaServerOrdinario();
  const std::string comune = File("comune");
  std::filesystem::create_directory(comune);
  const std::string registro = comune + "/registro";
  const std::vector<std::string> invio = {"--registro", registro, "--a", "x@example.org", "--corpo", "x"};
  ASSERT_EQ(Invia(invio).stato, 0);
  ASSERT_EQ(::chown(registro.c_str(), 65534, 65534), 0);
  ASSERT_EQ(::chmod(comune.c_str(), 0770), 0);
  EXPECT_EQ(Invia(invio).stato, 0) << "shared by those who may write the folder";
  ASSERT_EQ(::chmod(comune.c_str(), 01777), 0);
  const Esecuzione rifiutato = Invia(invio);
  EXPECT_EQ(rifiutato.stato, 5) << rifiutato;
  EXPECT_THAT(
      rifiutato.errori,
      HasSubstr(registro + " appartiene a un altro utente e la sua cartella è aperta a tutti; indicare"));
  ASSERT_EQ(::chmod(comune.c_str(), 0755), 0);
  ASSERT_EQ(::chown(comune.c_str(), 65534, 65534), 0);
  const Esecuzione delVicino = Invia(invio);
  EXPECT_EQ(delVicino.stato, 5) << delVicino;
  EXPECT_THAT(
      delVicino.errori,
      HasSubstr(registro + " appartiene a un altro utente e la sua cartella non è di chi invia; indicare"));
}

TEST_F(Riservatezza, WhatLiesBesideARegisterCountsAsTheRegister) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  AvviaServerOrdinario();
  const std::string comune = File("comune");
  std::filesystem::create_directory(comune);
  ASSERT_EQ(::chmod(comune.c_str(), 01777), 0);
  const std::string registro = comune + "/registro";
  const std::vector<std::string> invio = {"--registro", registro, "--a", "x@example.org", "--corpo", "x"};
  for (const char* accanto : {"-wal", "-shm", "-journal"}) {
    const std::string laterale = cartella.Write("comune/registro" + std::string(accanto), "x");
    ASSERT_EQ(::chown(laterale.c_str(), 65534, 65534), 0);
    const Esecuzione rifiutato = Invia(invio);
    EXPECT_EQ(rifiutato.stato, 5) << rifiutato;
    EXPECT_THAT(rifiutato.errori, HasSubstr(laterale + " appartiene a un altro utente"));
    EXPECT_FALSE(std::filesystem::exists(registro)) << "it was not even opened";
    std::filesystem::remove(laterale);
  }
  EXPECT_EQ(Invia(invio).stato, 0);
}

TEST_F(Riservatezza, TheTraceGoesIntoNoPipeThatSomebodyMayLeaveFull) {
  const std::string pipe = File("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const int lettore = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(lettore, 0);
  const Esecuzione traccia = EseguiConAmbiente({}, {"--traccia", pipe, "registro"});
  EXPECT_EQ(traccia.stato, 6) << traccia;
  EXPECT_THAT(traccia.errori, HasSubstr("--traccia: impossibile scrivere " + pipe + ": non è un file"));
  ::close(lettore);
}

}  // namespace

}  // namespace orve::app
