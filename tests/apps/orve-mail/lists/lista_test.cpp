// Lists sent whole: the program, a database and a real server; stopped, killed, started again.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>

#include "apps/orve-mail/prova_intera.h"
#include "places.h"
#include "support/process.h"
#include "support/scripted_server.h"

namespace orve::app {

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Riga = std::vector<std::string>;

constexpr int kUcciso = 128 + SIGKILL;

void AspettaChe(const std::function<bool()>& vero) {
  const auto fine = std::chrono::steady_clock::now() + support::kLongestRun;
  while (!vero()) {
    if (std::chrono::steady_clock::now() > fine) throw std::runtime_error("waited in vain");
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

support::SmtpServerOptions Rifiuta(const std::string& indirizzo) {
  support::SmtpServerOptions opzioni;
  opzioni.refused = {indirizzo};
  return opzioni;
}

support::SmtpServerOptions AspettaPrimaDi(int messaggio) {
  support::SmtpServerOptions opzioni;
  opzioni.holdBefore = messaggio;
  return opzioni;
}

support::SmtpServerOptions AspettaDopo(int messaggio) {
  support::SmtpServerOptions opzioni;
  opzioni.holdAfter = messaggio;
  return opzioni;
}

class Lista : public ProvaIntera {
 protected:
  Esecuzione Manda(const std::vector<std::string>& opzioni = {}) const {
    std::vector<std::string> argomenti = {"lista", Elenco(), "--ca", Ca(), "--corpo", "x"};
    argomenti.insert(argomenti.end(), opzioni.begin(), opzioni.end());
    return Esegui(argomenti);
  }

  /// The same, running alongside the test.
  [[nodiscard]] std::unique_ptr<support::Process> Avvia(const std::vector<std::string>& ambiente = {},
                                                        const std::vector<std::string>& opzioni = {}) const {
    std::vector<std::string> comando = {"/usr/bin/env", "TMPDIR=" + cartella.Path().string(),
                                        "ORVE_MAIL_DB=" + Db()};
    comando.insert(comando.end(), ambiente.begin(), ambiente.end());
    comando.insert(comando.end(), {places::Program(), "lista", Elenco(), "--ca", Ca(), "--corpo", "x"});
    comando.insert(comando.end(), opzioni.begin(), opzioni.end());
    return std::make_unique<support::Process>(comando);
  }

  /// A plain server without login, as fast as possible.
  support::SmtpServer& AvviaServerSemplice(const support::SmtpServerOptions& opzioni = {}) {
    semplice_ = std::make_unique<support::SmtpServer>(opzioni);
    ImpostaServerSemplice(semplice_->Port());
    return *semplice_;
  }

  void Scrivi(const std::string& testo) const { cartella.Write("elenco.csv", testo); }
  [[nodiscard]] std::string Elenco() const { return File("elenco.csv"); }
  [[nodiscard]] std::string FileEsiti() const { return Elenco() + ".esito"; }

  /// Line in the list and outcome, for each line of the result file.
  [[nodiscard]] std::vector<Riga> Esiti() const {
    std::vector<Riga> esiti;
    std::istringstream linee(support::ReadFile(FileEsiti()));
    std::string linea;
    std::getline(linee, linea);
    EXPECT_THAT(linea, StartsWith("riga;impronta;destinatario;inizio;esito;motivo;lista "));
    while (std::getline(linee, linea)) {
      Riga campi;
      std::istringstream flusso(linea);
      for (std::string campo; std::getline(flusso, campo, ';');) campi.push_back(campo);
      if (campi.size() < 5) campi.resize(5);
      esiti.push_back({campi[0], campi[4]});
    }
    return esiti;
  }

  std::unique_ptr<support::SmtpServer> semplice_;
};

}  // namespace

TEST_F(Lista, ManyRowsLeaveOverOneConnection) {
  auto& server = AvviaServerSemplice();
  std::string elenco = "nome;indirizzo\r\n";
  for (int i = 0; i < 20; ++i) elenco += "Cliente;c" + std::to_string(i) + "@example.org\r\n";
  Scrivi(elenco);
  const Esecuzione esecuzione = Manda({"--dialogo", File("dialogo.txt")});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  std::set<int> porte;
  for (const auto& messaggio : server.Messages()) porte.insert(messaggio.clientPort);
  EXPECT_THAT(server.Recipients(), SizeIs(20));
  EXPECT_THAT(porte, SizeIs(1));
  EXPECT_THAT(support::ReadFile(File("dialogo.txt")), EndsWith("S: 250 2.0.0 Ok\nC: QUIT\n"));
}

TEST_F(Lista, CustomersByCodeAndPeopleByAddressGetAMessageEach) {
  auto& server = AvviaServerOrdinario();
  cartella.Write("uno.txt", "uno");
  cartella.Write("comune.txt", "comune");
  Scrivi(
      "tipo;codice;nome;indirizzo;oggetto;corpo;allegato\r\n"
      "cliente;1001;;;;;\r\n"
      ";;\"Rossi, Mario\";mario.rossi@example.org;Caffè «Perù»;\"Caro Mario,\r\nsaluti\";uno.txt\r\n"
      "fornitore;1001;;;;;\r\n");
  const Esecuzione esecuzione =
      Manda({"--oggetto", "Listino", "--allegato", File("comune.txt"), "--titolo", "Listini"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "Riga 2: cliente 1001: inviato\n"
            "Riga 3: Rossi, Mario <mario.rossi@example.org>: inviato\n"
            "Riga 5: fornitore 1001: inviato\n"
            "Righe: 3\n"
            "  inviate: 3\n"
            "Risultati in " +
                FileEsiti() + "\n");
  EXPECT_EQ(esecuzione.errori, "");

  const auto messaggi = server.Messages();
  ASSERT_THAT(messaggi, SizeIs(3));
  EXPECT_THAT(messaggi[0].recipients, ElementsAre("acquisti@bellariva.example"));
  EXPECT_EQ(messaggi[0].subject, "Listino");
  ASSERT_THAT(messaggi[0].attachments, SizeIs(1));
  EXPECT_EQ(messaggi[0].attachments[0].name, "comune.txt");
  EXPECT_THAT(messaggi[1].to, ElementsAre(support::Mailbox{"Rossi, Mario", "mario.rossi@example.org"}));
  EXPECT_EQ(messaggi[1].subject, "Caffè «Perù»");
  EXPECT_THAT(messaggi[1].body, HasSubstr("Caro&nbsp;Mario"));
  ASSERT_THAT(messaggi[1].attachments, SizeIs(2));
  EXPECT_EQ(messaggi[1].attachments[0].name, "uno.txt");
  EXPECT_EQ(messaggi[1].attachments[1].name, "comune.txt");
  EXPECT_THAT(messaggi[2].recipients, ElementsAre("vendite@vetrerialaguna.example"));

  const Righe registro =
      Sql("SELECT ESITOINVIO AS C1, TIPOLISTA AS C2, TITOLOSTAMPA AS C3, INDIRIZZO AS C4, GUIDLISTA AS C5"
          " FROM REGISTRO_INVII ORDER BY ID");
  ASSERT_THAT(registro, SizeIs(3));
  const std::string guid = registro[0][4];
  EXPECT_THAT(guid, ::testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[0-9A-F]{4}-[0-9A-F]{12}"));
  EXPECT_EQ(registro[0],
            (Riga{"0", "1", "Listini", "Officine Bellariva S.r.l.<acquisti@bellariva.example>", guid}));
  EXPECT_EQ(registro[1], (Riga{"0", "1", "Listini", "Rossi, Mario<mario.rossi@example.org>", guid}));
  EXPECT_EQ(registro[2][4], guid);
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89", "89"));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "inviato"}, Riga{"3", "inviato"}, Riga{"5", "inviato"}));
  EXPECT_THAT(support::ReadFile(FileEsiti()), HasSubstr(";lista " + guid + "\n"));
}

TEST_F(Lista, EveryRowEndsInItsOwnWayAndStopsNoOther) {
  auto& server = AvviaServerOrdinario({"no@example.org"});
  Scrivi(
      "tipo,codice,nome,indirizzo,allegato\n"
      "cliente,1004,,,\n"
      "cliente,1001\n"
      ",,\"Rossi\" M.,r@example.org,\n"
      ",,No,no@example.org,\n"
      ",,,x@example.org,manca.pdf\n"
      "cliente,1008,,,\n"
      ",,Sì,si@example.org,\n");
  const Esecuzione esecuzione = Manda({"--modo", "automatico"});
  EXPECT_EQ(esecuzione.stato, 9) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "Riga 8: Sì <si@example.org>: inviato\n"
            "Righe: 7\n"
            "  inviate: 1\n"
            "  rifiutate: 2\n"
            "  fallite: 2\n"
            "  malformate: 2\n"
            "Risultati in " +
                FileEsiti() + "\n");
  EXPECT_EQ(
      esecuzione.errori,
      "Riga 2: cliente 1004: rifiutato: Invio rifiutato: Non inviato. Indirizzo mancante.\n"
      "Riga 3: malformata: ha 2 campi invece di 5\n"
      "Riga 4: malformata: ha del testo dietro le virgolette chiuse\n"
      "Riga 5: No <no@example.org>: fallito: Messaggio non inviato: Server si rifiuta di inoltrare mail ad "
      "uno o più indirizzi – stato: 2 – server: RCPT TO:<no@example.org>: 550 5.1.1 Casella inesistente\n"
      "Riga 6: x@example.org: fallito: " +
          File("manca.pdf") +
          ": No such file or directory\n"
          "Riga 7: cliente 1008: rifiutato: Invio rifiutato: L'elenco dei destinatari contiene un indirizzo "
          "non valido.\n");
  EXPECT_THAT(server.Recipients(), ElementsAre("si@example.org"));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "rifiutato"}, Riga{"3", "malformata"}, Riga{"4", "malformata"},
                                   Riga{"5", "fallito"}, Riga{"6", "fallito"}, Riga{"7", "rifiutato"},
                                   Riga{"8", "inviato"}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("88", "89", "88", "89"));
}

TEST_F(Lista, ARowReachesNoFileOutsideTheListsFolderAndNoneOfTheProgramsOwn) {
  auto& server = AvviaServerSemplice();
  const support::TempDir altrove;
  const std::string fuori = altrove.Write("segreto.txt", "segreto");
  std::filesystem::create_symlink(fuori, File("porta.pdf"));
  std::filesystem::create_hard_link(Db() + ".chiave", File("fattura.pdf"));
  const std::string nome = altrove.Path().filename().string();
  Scrivi("indirizzo;allegato\na@x;/etc/passwd\nb@x;../" + nome +
         "/segreto.txt\nc@x;/proc/self/environ\nd@x;porta.pdf\ne@x;prova.db\nf@x;prova.db.chiave\n"
         "g@x;fattura.pdf\nh@x;elenco.csv.esito\ni@x;elenco.csv\nz@x;\n");
  const Esecuzione esecuzione = Manda();
  EXPECT_EQ(esecuzione.stato, 9) << esecuzione;
  EXPECT_THAT(server.Recipients(), ElementsAre("z@x"));
  EXPECT_THAT(esecuzione.errori, HasSubstr("Riga 2: a@x: fallito: /etc/passwd: sta fuori dalle cartelle"));
  EXPECT_THAT(esecuzione.errori, HasSubstr("Riga 7: f@x: fallito: " + File("prova.db.chiave") +
                                           ": è un file che il programma stesso usa"));
  EXPECT_EQ(Manda({"--allegati-senza-controllo"}).stato, 9);
  EXPECT_THAT(server.Recipients(), ElementsAre("z@x"));
}

TEST_F(Lista, ARowReachesTheFoldersThatThePersonOpensToIt) {
  auto& server = AvviaServerSemplice();
  const support::TempDir altrove;
  std::filesystem::create_directory(altrove.Path() / "fatture");
  altrove.Write("fatture/uno.txt", "uno");
  Scrivi("indirizzo;allegato\na@x;" + (altrove.Path() / "fatture/uno.txt").string() + "\n");
  EXPECT_EQ(Manda().stato, 9);
  const Esecuzione manca = Manda({"--cartella-allegati", altrove.Path() / "manca"});
  EXPECT_EQ(manca.stato, 2) << manca;
  EXPECT_THAT(manca.errori, HasSubstr("manca» non è una cartella\n"));
  EXPECT_EQ(Manda({"--cartella-allegati", altrove.Path()}).stato, 0);
  EXPECT_EQ(support::ReadFile(server.OnlyMessage().attachments.at(0).content), "uno");
}

TEST_F(Lista, RowsThatWerePutRightAreSentAtTheNextStartAndTheOthersNotAgain) {
  auto& server = AvviaServerSemplice(Rifiuta("no@example.org"));
  Scrivi("nome;indirizzo\nUno;uno@example.org\nDue;no@example.org\nTre\nQuattro;quattro@example.org\n");
  EXPECT_EQ(Manda().stato, 9);
  Scrivi(
      "nome;indirizzo\nUno;uno@example.org\nDue;due@example.org\nTre;tre@example.org\nQuattro;quattro@"
      "example.org\n");
  const Esecuzione seconda = Manda();
  EXPECT_EQ(seconda.stato, 0) << seconda;
  EXPECT_EQ(seconda.uscita,
            "Riga 3: Due <due@example.org>: inviato\n"
            "Riga 4: Tre <tre@example.org>: inviato\n"
            "Righe: 4\n"
            "  inviate: 2\n"
            "  già inviate: 2\n"
            "Risultati in " +
                FileEsiti() + "\n");
  EXPECT_THAT(server.Recipients(),
              ElementsAre("uno@example.org", "quattro@example.org", "due@example.org", "tre@example.org"));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "inviato"}, Riga{"3", "inviato"}, Riga{"4", "inviato"},
                                   Riga{"5", "inviato"}));
  EXPECT_THAT(Sql("SELECT DISTINCT GUIDLISTA AS C1 FROM REGISTRO_INVII"), SizeIs(1));
  const Esecuzione terza = Manda();
  EXPECT_EQ(terza.stato, 0) << terza;
  EXPECT_THAT(terza.uscita, StartsWith("Righe: 4\n  già inviate: 4\n"));
  EXPECT_EQ(server.Count(), 4U);
}

TEST_F(Lista, AListThatWasChangedAfterTheSentRowsIsNotSentOn) {
  auto& server = AvviaServerSemplice();
  Scrivi("indirizzo\nuno@example.org\ndue@example.org\n");
  EXPECT_EQ(Manda().stato, 0);
  struct Caso {
    const char* elenco;
    const char* testo;
  };
  for (const Caso& caso :
       {Caso{"indirizzo\nuno@example.org\naltro@example.org\ntre@example.org\n",
             "la riga 3 risulta inviato nel file "},
        Caso{"indirizzo\nzero@example.org\nuno@example.org\ndue@example.org\n",
             "la riga 2 risulta inviato nel file "},
        Caso{"indirizzo\nuno@example.org\n", "la riga 3 risulta inviato nel file "},
        Caso{"indirizzo\nuno@example.org\n\ndue@example.org\n", "la riga 3 risulta inviato nel file "},
        Caso{"indirizzo\nuno@example.org\n\"due\n", "la riga 3 risulta inviato nel file "}}) {
    Scrivi(caso.elenco);
    const Esecuzione esecuzione = Manda();
    EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
    EXPECT_EQ(esecuzione.uscita, "");
    EXPECT_THAT(esecuzione.errori,
                AllOf(StartsWith(std::string("orve-mail: L'elenco è cambiato: ") + caso.testo),
                      HasSubstr(". Nulla è stato inviato. Ripristinare l'elenco")));
  }
  EXPECT_EQ(server.Count(), 2U);
  EXPECT_EQ(Manda({"--esito", File("da capo")}).stato, 9);
}

TEST_F(Lista, RowsAddedAtTheEndAreSent) {
  auto& server = AvviaServerSemplice();
  Scrivi("indirizzo\nuno@example.org");
  EXPECT_EQ(Manda().stato, 0);
  Scrivi("indirizzo\nuno@example.org\ndue@example.org\n");
  EXPECT_EQ(Manda().stato, 0);
  EXPECT_THAT(server.Recipients(), ElementsAre("uno@example.org", "due@example.org"));
}

TEST_F(Lista, TheSampleListIsSent) {
  auto& server = AvviaServerSemplice();
  Scrivi(support::ReadFile(places::Source("examples/elenco.csv")));
  const Esecuzione esecuzione = Manda({"--oggetto", "Listino 2026"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.Count(), 5U);
}

// The mode would open a window for it, where one can be opened.
TEST_F(Lista, ACustomerWithoutAnAddressStopsNoOther) {
  auto& server = AvviaServerSemplice();
  Scrivi("tipo;codice\ncliente;1004\ncliente;1001\n");
  const Esecuzione esecuzione = Manda({"--modo", "lista"});
  EXPECT_EQ(esecuzione.stato, 9) << esecuzione;
  EXPECT_THAT(server.Recipients(), ElementsAre("acquisti@bellariva.example"));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "fallito"}, Riga{"3", "inviato"}));
}

TEST_F(Lista, AHundredThousandMalformedRowsStopNoGoodOne) {
  auto& server = AvviaServerSemplice();
  std::string elenco = "tipo;codice\n";
  for (int i = 0; i < 100'000; ++i) elenco += "cliente;\"1001\n";
  Scrivi(elenco + "cliente;1001\n");
  const Esecuzione esecuzione = Manda();
  EXPECT_EQ(esecuzione.stato, 9);
  EXPECT_THAT(esecuzione.uscita, AllOf(StartsWith("Riga 100002: cliente 1001: inviato\nRighe: 100001\n"),
                                       HasSubstr("  malformate: 100000\n")));
  EXPECT_THAT(Esiti(), SizeIs(100'001));
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(Lista, NothingIsTriedWithoutWhatItTakes) {
  Scrivi("nome;posta\nUno;uno@example.org\n");
  Esecuzione esecuzione = Manda();
  EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("intestazione errata: la colonna «posta» non esiste"));
  EXPECT_FALSE(std::filesystem::exists(FileEsiti()));

  EXPECT_EQ(Esegui({"lista", File("manca.csv")}).stato, 6);
  EXPECT_EQ(Esegui({"lista", cartella.Path().string()}).stato, 6);
  EXPECT_EQ(Esegui({"lista"}).stato, 2);

  Scrivi("indirizzo\nuno@example.org\n");
  esecuzione = Manda({"--modo", "semi"});
  EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("--modo: «semi» non è lista o automatico"));
  EXPECT_EQ(Manda({"--db", File("manca.db")}).stato, 5);
  EXPECT_EQ(Manda({"--utente", "999"}).stato, 5);
  esecuzione = Manda({"--esito", Elenco()});
  EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("non è un file dei risultati"));
  EXPECT_EQ(support::ReadFile(Elenco()), "indirizzo\nuno@example.org\n");
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Lista, AListOfNoRowsIsSent) {
  Scrivi("indirizzo\n");
  const Esecuzione esecuzione = Manda();
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita, "Righe: 0\nRisultati in " + FileEsiti() + "\n");
}

TEST_F(Lista, ADatabaseThatBreaksBetweenTheRowsEndsTheRun) {
  AvviaServerSemplice();
  Sql("DROP TABLE FW24_FAXCONFIG");
  Scrivi("indirizzo\nuno@example.org\n");
  const Esecuzione esecuzione = Manda();
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(Esiti(), IsEmpty());
}

TEST_F(Lista, AMessageWithAReservationIsSentAndToldAgainAndAgain) {
  AvviaServerSemplice();
  Sql("ALTER TABLE REGISTRO_INVII RENAME TO ALTROVE");
  Scrivi("indirizzo\nuno@example.org\n");
  const Esecuzione prima = Manda();
  EXPECT_EQ(prima.stato, 7) << prima;
  EXPECT_THAT(prima.uscita, HasSubstr("  inviate: 1\n    di cui con riserva: 1\n"));
  EXPECT_THAT(prima.errori, AllOf(StartsWith("Riga 2: uno@example.org: inviato con riserva: "),
                                  HasSubstr("registro degli invii non scritto")));
  EXPECT_EQ(Manda().stato, 7);
  EXPECT_EQ(semplice_->Count(), 1U);
}

TEST_F(Lista, AServerThatTakesAMessageAndBreaksOffLeavesTheRowUncertain) {
  support::ScriptedServer muto({support::Say("220 prova"), support::On("EHLO *", "250 prova"),
                                support::On("MAIL *", "250 ok"), support::On("RCPT *", "250 ok"),
                                support::On("DATA", "354 avanti"), support::ThenDrop(support::Body(""))});
  ImpostaServerSemplice(muto.Port());
  Scrivi("indirizzo\nuno@example.org\n");
  const Esecuzione prima = Manda();
  EXPECT_EQ(prima.stato, 9) << prima;
  EXPECT_THAT(prima.errori, AllOf(StartsWith("Riga 2: uno@example.org: incerto: Messaggio non inviato: "),
                                  HasSubstr("il server può aver accettato il messaggio")));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "incerto"}));

  auto& server = AvviaServerSemplice();
  const Esecuzione seconda = Manda();
  EXPECT_EQ(seconda.stato, 9) << seconda;
  EXPECT_EQ(seconda.errori,
            "Riga 2: uno@example.org: esito incerto da un invio precedente; non viene inviata di nuovo\n");
  EXPECT_THAT(seconda.uscita, HasSubstr("  incerte: 1\n"));
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_EQ(Manda({"--ritenta-incerti"}).stato, 0);
  EXPECT_EQ(server.Count(), 1U);
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "inviato"}));
}

TEST_F(Lista, InterruptedItEndsAfterTheRunningMessageAndGoesOnLater) {
  for (const int segnale : {SIGINT, SIGTERM}) {
    std::filesystem::remove(FileEsiti());
    Sql("DELETE FROM REGISTRO_INVII");
    auto& server = AvviaServerSemplice(AspettaDopo(2));
    Scrivi("indirizzo\nuno@example.org\ndue@example.org\ntre@example.org\nquattro@example.org\n");
    const auto programma = Avvia();
    AspettaChe([&] { return server.Holds(); });
    ::kill(programma->Pid(), segnale);
    ::kill(programma->Pid(), SIGINT);  // and impatient ones do no harm
    ::kill(programma->Pid(), segnale);
    server.Release();
    EXPECT_EQ(programma->Wait(), 130);
    EXPECT_THAT(programma->Output(),
                EndsWith("Riga 3: due@example.org: inviato\n"
                         "Interrotto. Righe: 4\n  inviate: 2\n  rimaste: 2\nRisultati in " +
                         FileEsiti() + "\n"));
    EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "inviato"}, Riga{"3", "inviato"}));
    const Esecuzione seconda = Manda();
    EXPECT_EQ(seconda.stato, 0) << seconda;
    EXPECT_THAT(server.Recipients(),
                ElementsAre("uno@example.org", "due@example.org", "tre@example.org", "quattro@example.org"));
    EXPECT_THAT(Sql("SELECT DISTINCT GUIDLISTA AS C1 FROM REGISTRO_INVII"), SizeIs(1));
  }
}

TEST_F(Lista, InterruptedDuringTheLastMessageItHasSentAll) {
  auto& server = AvviaServerSemplice(AspettaDopo(1));
  Scrivi("indirizzo\nuno@example.org\n");
  const auto programma = Avvia();
  AspettaChe([&] { return server.Holds(); });
  ::kill(programma->Pid(), SIGINT);
  server.Release();
  EXPECT_EQ(programma->Wait(), 0);
}

TEST_F(Lista, TwoRunsAtOnceAreRefused) {
  auto& server = AvviaServerSemplice(AspettaDopo(1));
  Scrivi("indirizzo\nuno@example.org\ndue@example.org\n");
  const auto programma = Avvia();
  AspettaChe([&] { return server.Holds(); });
  const Esecuzione seconda = Manda();
  EXPECT_EQ(seconda.stato, 6) << seconda;
  EXPECT_EQ(seconda.errori,
            "orve-mail: File dei risultati " + FileEsiti() + ": è in uso da un altro invio\n");
  server.Release();
  EXPECT_EQ(programma->Wait(), 0);
  EXPECT_EQ(server.Count(), 2U);
}

TEST_F(Lista, KilledWhenTheServerHasTheMessageTheRowIsUncertainAndTheOthersAreSent) {
  auto& server = AvviaServerSemplice(AspettaDopo(2));
  Scrivi("indirizzo\nuno@example.org\ndue@example.org\ntre@example.org\n");
  const auto programma = Avvia();
  AspettaChe([&] { return server.Holds(); });
  ::kill(programma->Pid(), SIGKILL);
  EXPECT_EQ(programma->Wait(), kUcciso);
  server.Release();
  const Esecuzione seconda = Manda();
  EXPECT_EQ(seconda.stato, 9) << seconda;
  EXPECT_EQ(seconda.errori,
            "Riga 3: due@example.org: esito incerto da un invio precedente; non viene inviata di nuovo\n");
  EXPECT_THAT(server.Recipients(), ElementsAre("uno@example.org", "due@example.org", "tre@example.org"));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "inviato"}, Riga{"3", "incerto"}, Riga{"4", "inviato"}));
}

TEST_F(Lista, KilledBeforeTheServerHasTheMessageTheRowIsUncertainToo) {
  auto& server = AvviaServerSemplice(AspettaPrimaDi(2));
  Scrivi("indirizzo\nuno@example.org\ndue@example.org\ntre@example.org\n");
  const auto programma = Avvia();
  AspettaChe([&] { return server.Holds(); });
  ::kill(programma->Pid(), SIGKILL);
  EXPECT_EQ(programma->Wait(), kUcciso);
  server.Release();
  EXPECT_EQ(Manda().stato, 9);
  EXPECT_THAT(server.Recipients(), ElementsAre("uno@example.org", "tre@example.org"));
  EXPECT_EQ(Manda({"--ritenta-incerti"}).stato, 0);
  EXPECT_THAT(server.Recipients(), ElementsAre("uno@example.org", "tre@example.org", "due@example.org"));
  EXPECT_THAT(Esiti(), ElementsAre(Riga{"2", "inviato"}, Riga{"3", "inviato"}, Riga{"4", "inviato"}));
}

// Kills the program at each call by which something becomes visible outside, one after the other, and each
// time lets a second run finish. `meta`: the call at which it dies has done half its work.
class ListaUccisa : public Lista, public ::testing::WithParamInterface<bool> {};

TEST_P(ListaUccisa, AtAnyMomentSendsNothingTwiceAndLosesNoResult) {
  auto& server = AvviaServerSemplice(Rifiuta("no@example.org"));
  std::size_t presi = 0;
  int uccisioni = 0;
  for (int chiamata = 1;; ++chiamata) {
    ASSERT_LT(chiamata, 200);
    const std::string dominio = "@" + std::to_string(chiamata) + ".example.org";
    std::filesystem::remove(FileEsiti());
    std::ostringstream elenco;
    elenco << "nome;indirizzo\nUno;uno" << dominio << "\nNo;no@example.org\nDue;due" << dominio << "\n";
    Scrivi(elenco.str());
    std::vector<std::string> ambiente = Precarica("kill-at-call");
    ambiente.insert(ambiente.end(), {"KILL_FILES=.esito", "KILL_AT=" + std::to_string(chiamata)});
    if (GetParam()) ambiente.emplace_back("KILL_HALF=1");
    const auto prima = Avvia(ambiente);
    const int stato = prima->Wait();
    if (stato == 9) break;  // it ran to its end: there are no more such calls
    ASSERT_EQ(stato, kUcciso) << prima->Output();
    ++uccisioni;
    const auto seconda = Avvia();
    EXPECT_EQ(seconda->Wait(), 9) << seconda->Output();

    std::map<std::string, int> arrivati;
    const auto destinatari = server.Recipients();
    for (std::size_t i = presi; i < destinatari.size(); ++i) ++arrivati[destinatari[i]];
    presi = destinatari.size();
    const auto esiti = Esiti();
    ASSERT_THAT(esiti, SizeIs(3)) << "call " << chiamata;
    int incerte = 0;
    for (const auto& [riga, nome] : {std::pair<int, const char*>{0, "uno"}, {2, "due"}}) {
      const int volte = arrivati[nome + dominio];
      const std::string& esito = esiti[static_cast<std::size_t>(riga)][1];
      EXPECT_LE(volte, 1) << "sent twice: call " << chiamata << ", " << nome;
      EXPECT_THAT(esito, ::testing::AnyOf("inviato", "incerto")) << "call " << chiamata;
      if (esito == "inviato") {
        EXPECT_EQ(volte, 1) << "call " << chiamata << ", " << nome;
      }
      if (esito == "incerto") ++incerte;
    }
    EXPECT_THAT(esiti[1][1], ::testing::AnyOf("fallito", "incerto")) << "call " << chiamata;
    EXPECT_LE(incerte + (esiti[1][1] == "incerto" ? 1 : 0), 1) << "call " << chiamata;
  }
  EXPECT_GT(uccisioni, 20);
}

INSTANTIATE_TEST_SUITE_P(Calls, ListaUccisa, ::testing::Bool(),
                         [](const auto& meta) { return meta.param ? "HalfDone" : "NotDone"; });

TEST_F(Lista, AFullDiskStopsTheRunBeforeAMessageLeaves) {
  auto& server = AvviaServerSemplice();
  Scrivi("indirizzo\nuno@example.org\ndue@example.org\n");
  // No file may grow beyond the size of the result file, which is larger than all others.
  std::string esiti = "riga;impronta;destinatario;inizio;esito;motivo;lista X\n";
  for (int riga = 1000; esiti.size() < 4'000'000; ++riga) {
    esiti +=
        std::to_string(riga) + ";" + std::string(32, 'a') + ";x;;fallito;" + std::string(500, 'y') + "\n";
  }
  constexpr std::size_t kBlocco = 512;
  esiti.insert(esiti.size() - 1, kBlocco - esiti.size() % kBlocco, 'y');
  cartella.Write("elenco.csv.esito", esiti);
  const support::ProcessResult pieno = support::RunProgram(
      {"/bin/sh", "-c", R"(ulimit -f "$1"; shift; exec "$@")", "prova",
       std::to_string(esiti.size() / kBlocco), "/usr/bin/env", "TMPDIR=" + cartella.Path().string(),
       "ORVE_MAIL_DB=" + Db(), places::Program(), "lista", Elenco(), "--corpo", "x"});
  EXPECT_EQ(pieno.status, 6) << pieno.output;
  EXPECT_THAT(pieno.output, HasSubstr("orve-mail: File dei risultati " + FileEsiti() + ": "));
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_TRUE(support::ReadFile(FileEsiti()) == esiti);
  EXPECT_EQ(Manda().stato, 0);  // and once there is room again
  EXPECT_EQ(server.Count(), 2U);
}

TEST_F(Lista, AResultFileThatCannotBeWrittenStopsEverything) {
  auto& server = AvviaServerSemplice();
  Scrivi("indirizzo\nuno@example.org\n");
  EXPECT_EQ(Manda({"--esito", "/dev/full"}).stato, 6);
  EXPECT_EQ(Manda({"--esito", File("manca/esiti")}).stato, 6);
  std::filesystem::permissions(cartella.Write("elenco.csv.esito", ""), std::filesystem::perms::owner_read);
  const Esecuzione esecuzione = EseguiDaUtenteOrdinario({"lista", Elenco(), "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("Permission denied"));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Lista, OnAScreenThereIsABarAndOnlyTroubleHasLines) {
  AvviaServerSemplice();
  Scrivi("indirizzo\nuno@example.org\nrotta\ndue@example.org\ntre@example.org\n");
  const support::ProcessResult schermo = support::RunProgram(
      {"/usr/bin/env", "TERM=xterm", "TMPDIR=" + cartella.Path().string(), "ORVE_MAIL_DB=" + Db(),
       "/usr/bin/python3", "-c",
       "import os, pty, sys; sys.exit(os.waitstatus_to_exitcode(pty.spawn(sys.argv[1:])))", places::Program(),
       "lista", Elenco(), "--corpo", "x"});
  EXPECT_EQ(schermo.status, 9) << schermo.output;
  EXPECT_THAT(schermo.output, StartsWith("\r[........................................]   0%  0/4\x1B[K"));
  EXPECT_THAT(schermo.output, HasSubstr("\r[####################....................]  50%  2/4\x1B[K"));
  EXPECT_THAT(schermo.output,
              HasSubstr("\r[########################################] 100%  4/4\x1B[K\r\x1B[KRighe: 4\r\n"));
  EXPECT_THAT(schermo.output, HasSubstr("\r\x1B[KRiga 3: malformata: «rotta» non è un indirizzo\r\n"));
  EXPECT_THAT(schermo.output, Not(HasSubstr("inviato")));
}

TEST_F(Lista, TerminalCodesInAListReachNoTerminal) {
  AvviaServerSemplice();
  Scrivi("nome;indirizzo\n\x1B[31mRosso\x1B]0;titolo\x07;\x1B[2Jx\n");
  const Esecuzione esecuzione = Manda();
  EXPECT_EQ(esecuzione.stato, 9) << esecuzione;
  EXPECT_THAT(esecuzione.errori, Not(HasSubstr("\x1B")));
}

}  // namespace orve::app
