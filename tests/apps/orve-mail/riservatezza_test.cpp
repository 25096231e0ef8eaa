// What others on the machine get to see of the program's files.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "apps/orve-mail/prova_intera.h"

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

TEST_F(Riservatezza, NoFileIsWrittenThroughALink) {
  const std::string vittima = cartella.Write("vittima", "intatta");
  const std::string legame = File("legame");
  std::filesystem::create_symlink(vittima, legame);
  const Esecuzione traccia = EseguiConAmbiente({}, {"--traccia", legame, "registro"});
  EXPECT_EQ(traccia.stato, 6) << traccia;
  EXPECT_THAT(traccia.errori, HasSubstr("--traccia: impossibile scrivere " + legame + ": è un collegamento"));
  const Esecuzione dialogo = Esegui({"invia", "--dialogo", legame, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(dialogo.stato, 6) << dialogo;
  EXPECT_THAT(dialogo.errori, HasSubstr("--dialogo: impossibile scrivere " + legame + ": è un collegamento"));
  const Esecuzione registro = Esegui({"invia", "--registro", legame, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(registro.stato, 5) << registro;
  EXPECT_THAT(registro.errori, HasSubstr(legame + " è un collegamento simbolico"));
  EXPECT_EQ(support::ReadFile(vittima), "intatta");
}

TEST_F(Riservatezza, ARegisterOfAnotherUserIsRefused) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  AvviaServerOrdinario();
  const std::vector<std::string> invio = {"--registro",    File("registro"), "--a",
                                          "x@example.org", "--corpo",        "x"};
  ASSERT_EQ(Invia(invio).stato, 0);
  ASSERT_EQ(::chown(File("registro").c_str(), 65534, 65534), 0);
  const Esecuzione rifiutato = Invia(invio);
  EXPECT_EQ(rifiutato.stato, 5) << rifiutato;
  EXPECT_THAT(rifiutato.errori, HasSubstr(File("registro") + " appartiene a un altro utente"));
}

}  // namespace

}  // namespace orve::app
