// Things on the command line, from people and programs, that no mail was ever meant to carry.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "apps/orve-mail/prova_intera.h"

namespace orve::app {

namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Riga = std::vector<std::string>;

class Ingressi : public ProvaIntera {};

}  // namespace

TEST_F(Ingressi, LineEndsInTheSubjectMakeNoHeaders) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--oggetto",
             "Fattura\r\nBcc: spia@example.org\r\n\r\n<b>altro</b>\nX-Spia: 1", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("x@example.org"));
  EXPECT_EQ(messaggio.Header("Bcc"), "");
  EXPECT_EQ(messaggio.Header("X-Spia"), "");
  EXPECT_EQ(messaggio.subject, "Fattura  Bcc: spia@example.org    <b>altro</b> X-Spia: 1");
}

TEST_F(Ingressi, LineEndsInANameMakeNoHeaders) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "Rossi\r\nBcc: spia@example.org <x@example.org>", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("x@example.org"));
  EXPECT_EQ(messaggio.Header("Bcc"), "");
}

TEST_F(Ingressi, LineEndsInAnAddressAreRefusedAndNothingLeaves) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org>\r\nRCPT TO:<spia@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
  const Esecuzione senzaParentesi =
      Invia({"--a", "Rossi <x@example.org\r\nRCPT TO:spia@example.org>", "--corpo", "x"});
  EXPECT_EQ(senzaParentesi.stato, 1) << senzaParentesi;
  EXPECT_THAT(senzaParentesi.errori, StartsWith("Avviso: "));
  EXPECT_THAT(senzaParentesi.errori, HasSubstr("[ORVE_MAIL: InviaMailConSSL]\n"));
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Sql("SELECT ESITOINVIO AS C1 FROM REGISTRO_INVII"), ElementsAre(Riga{"1"}));
}

TEST_F(Ingressi, QuotesOfEveryKindArriveAsTheyAre) {
  auto& server = AvviaServerOrdinario();
  const std::string nome = R"(D'Oro \ & 'C')";
  const std::string oggetto = R"('; DROP TABLE REGISTRO_INVII; -- "virgolette" \ `)";
  const Esecuzione esecuzione =
      Invia({"--a", nome + " <x@example.org>", "--oggetto", oggetto, "--corpo", "' \" \\ `"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_EQ(messaggio.subject, oggetto);
  EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{nome, "x@example.org"}));
  EXPECT_THAT(Sql("SELECT OGGETTO AS C1, NOME AS C2 FROM REGISTRO_INVII"), ElementsAre(Riga{oggetto, nome}));
  EXPECT_THAT(Sql("SELECT DATI AS C1 FROM EVENTI_GESTIONALI")[0][0],
              HasSubstr("<MAIL_OBJ=" + oggetto + "/>"));
}

TEST_F(Ingressi, WhatIsNoCodeReachesNoStatement) {
  auto& server = AvviaServerOrdinario();
  const std::string unione =
      "0 UNION SELECT FW98_PASSWORD, FW98_PASSWORD, '', '', FW98_USERNAME FROM FW98_MAILACCOUNT";
  for (const Riga& opzioni :
       {Riga{"--anagrafica", unione}, Riga{"--cliente", "1001 OR 1=1"}, Riga{"--fornitore", "2001)"},
        Riga{"--contatto", "501 --"}, Riga{"--agente", "A01' OR '1'='1"}, Riga{"--cliente", ""},
        Riga{"--destinatario", "1/1001/0/SEDE' OR '1'='1"}, Riga{"--destinatario", "1 OR 1=1/1001/0/SEDE"},
        Riga{"--destinatario", "1/1001 OR 1=1/0/SEDE"}, Riga{"--destinatario", "1/1001/0 OR 1=1/SEDE"},
        Riga{"--cliente", "1001", "--ditta", "1 OR 1=1"},
        Riga{"--cliente", "1001", "--utente", "x' OR '1'='1", "--gruppo", "AMM"},
        Riga{"--cliente", "1001", "--utente", "AMM01", "--gruppo", "x' OR '1'='1"}}) {
    const Esecuzione esecuzione = Invia(opzioni);
    EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
  }
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Ingressi, TextThatIsNotUtf8IsRefused) {
  for (const Riga& opzione :
       {Riga{"--oggetto", "perch\xE9"}, Riga{"--corpo", "\xFF"}, Riga{"--a", "\xC3 <x@example.org>"},
        Riga{"--titolo", "\xC0\x80"}, Riga{"--azienda", "\xED\xA0\x80"}, Riga{"--allegato", "\xE8.pdf"},
        Riga{"--numero-documento", "\xFE"}}) {
    const Esecuzione esecuzione = Invia({"--a", "x@example.org", opzione[0], opzione[1]});
    EXPECT_EQ(esecuzione.stato, 2) << opzione[0] << esecuzione;
    EXPECT_EQ(esecuzione.errori, "orve-mail invia: " + opzione[0] +
                                     ": il testo non è UTF-8 valido\nVedere «orve-mail invia --help».\n");
  }
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Ingressi, ABodyOfAMegabyteArrivesWhole) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW95_SETTINGS SET FW95_VALORE = '0' WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
  std::string corpo;
  for (int i = 0; corpo.size() < (1U << 20U); ++i) corpo += "riga " + std::to_string(i) + " perché «no»\r\n";
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "@" + cartella.Write("corpo.txt", corpo)});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.OnlyMessage().body, corpo);
  EXPECT_THAT(Sql("SELECT CORPO AS C1 FROM REGISTRO_INVII"), ElementsAre(Riga{corpo}));
}

TEST_F(Ingressi, ABodyOfOneEndlessLineArrivesWhole) {
  auto& server = AvviaServerOrdinario();
  const std::string corpo(1U << 20U, 'x');
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "@" + cartella.Write("corpo.txt", corpo)});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().body, HasSubstr(">" + corpo + "</font>"));
}

TEST_F(Ingressi, ABodyFromTheStandardInput) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Esegui({"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "@-"}, "riga 1\nriga 2\n");
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().body, HasSubstr(">riga&nbsp;1</font>"));
}

TEST_F(Ingressi, AnAttachmentThatCannotBeReadStopsEverythingBefore) {
  auto& server = AvviaServerOrdinario();
  const std::string pipe = File("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& file :
       {File("manca.pdf"), cartella.Path().string(), pipe, std::string("/dev/zero")}) {
    const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", file});
    EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
    EXPECT_THAT(esecuzione.errori, StartsWith("orve-mail: " + file + ": "));
  }
  const std::string chiuso = cartella.Write("chiuso.pdf", "x");
  ASSERT_EQ(::chmod(chiuso.c_str(), 0000), 0);
  const Esecuzione esecuzione =
      EseguiDaUtenteOrdinario({"invia", "--a", "x@example.org", "--corpo", "x", "--allegato", chiuso});
  EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Ingressi, AnAttachmentThatVanishesIsLeftOutWithTheOnesBehindItAndToldToThePerson) {
  auto& server = AvviaServerOrdinario();
  const std::string primo = cartella.Write("uno.pdf", "uno");
  for (const std::string& secondo : {File("manca.pdf"), cartella.Path().string()}) {
    Sql("DELETE FROM REGISTRO_INVII");
    const Esecuzione esecuzione =
        Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", primo, "--allegato", secondo,
               "--allegato", cartella.Write("tre.pdf", "tre"), "--allegati-senza-controllo"});
    EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
    EXPECT_THAT(esecuzione.errori, StartsWith("Avviso: "));
    EXPECT_THAT(esecuzione.errori, HasSubstr("[ORVE_MAIL:CLSFW_MAILSERVER: AddAdditionalAttachmentSMTP]\n"
                                             "Messaggio inviato, ma non tutto è andato a buon fine.\n"));
    const auto messaggio = server.Messages().back();
    ASSERT_THAT(messaggio.attachments, SizeIs(1));
    EXPECT_EQ(messaggio.attachments[0].name, "uno.pdf");
    EXPECT_THAT(Sql("SELECT ALLEGATO AS C1 FROM REGISTRO_INVII"), ElementsAre(Riga{Rovesciato(primo)}));
  }
}

TEST_F(Ingressi, AnEmptyAttachmentArrivesEmpty) {
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(
      Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", cartella.Write("vuoto.pdf", "")}).stato,
      0);
  const auto messaggio = server.OnlyMessage();
  ASSERT_THAT(messaggio.attachments, SizeIs(1));
  EXPECT_EQ(messaggio.attachments[0].name, "vuoto.pdf");
  EXPECT_EQ(support::ReadFile(messaggio.attachments[0].content), "");
}

TEST_F(Ingressi, AHugeSparseAttachmentArrivesWhole) {
  constexpr std::uintmax_t kByte = 24UL * 1024 * 1024;
  auto& server = AvviaServerOrdinario();
  const std::string file = cartella.Write("grande.bin", "inizio");
  std::filesystem::resize_file(file, kByte);
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", file});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const auto messaggio = server.OnlyMessage();
  ASSERT_THAT(messaggio.attachments, SizeIs(1));
  EXPECT_EQ(std::filesystem::file_size(messaggio.attachments[0].content), kByte);
}

TEST_F(Ingressi, AttachmentNamesWithAccentsQuotesAndBlanksArriveAsTheyAre) {
  auto& server = AvviaServerOrdinario();
  const std::string nome = "fattura n° 12 – «perché» “sì” (copia), ultima.pdf";
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", cartella.Write(nome, "x")}).stato,
            0);
  EXPECT_EQ(server.OnlyMessage().attachments.at(0).name, nome);
}

TEST_F(Ingressi, FilesOfTheProgramsOwnLeaveNeitherAsAttachmentsNorAsABody) {
  auto& server = AvviaServerOrdinario();
  std::filesystem::create_symlink(Db() + ".chiave", File("fattura.pdf"));
  const std::string nascente = cartella.Write("prova.db.chiave.nuova", "orve-mail-chi");
  for (const std::string& file :
       {Db(), Db() + ".chiave", nascente, File("fattura.pdf"), std::string("/proc/self/environ")}) {
    for (const Riga& opzioni :
         {Riga{"--allegato", file}, Riga{"--allegato", file, "--allegati-senza-controllo"},
          Riga{"--corpo", "@" + file}}) {
      Riga argomenti = {"--a", "x@example.org"};
      argomenti.insert(argomenti.end(), opzioni.begin(), opzioni.end());
      const Esecuzione esecuzione = Invia(argomenti);
      EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
      EXPECT_THAT(esecuzione.errori, HasSubstr("e non si può allegare"));
    }
  }
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Ingressi, AFileWhoseNameIsSqlLeavesAsAFileOfThatName) {
  auto& server = AvviaServerOrdinario();
  const std::string nome = "x'||(SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT WHERE FW98_IDACCOUNT=1)||'.pdf";
  const std::string file = cartella.Write(nome, "fattura");
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", file, "--allegato", file});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const auto messaggio = server.OnlyMessage();
  ASSERT_THAT(messaggio.attachments, SizeIs(2));
  EXPECT_EQ(messaggio.attachments[0].name, nome);
  EXPECT_EQ(support::ReadFile(messaggio.attachments[1].content), "fattura");
  EXPECT_THAT(Sql("SELECT ALLEGATO AS C1 FROM REGISTRO_INVII"),
              ElementsAre(Riga{Rovesciato(file) + "|" + Rovesciato(file)}));
  const std::string evento = Sql("SELECT DATI AS C1 FROM EVENTI_GESTIONALI").at(0).at(0);
  EXPECT_THAT(evento, HasSubstr("x_||(SELECT FW98_PASSWORD"));
  EXPECT_THAT(evento, Not(ContainsRegex("orve[0-9]+:")));
  for (const auto& voce : std::filesystem::directory_iterator(cartella.Path())) {
    EXPECT_THAT(voce.path().filename().string(), Not(StartsWith("orve-allegati-")));
  }
}

TEST_F(Ingressi, AnApostropheInTheAttachmentsPathCostsNothing) {
  auto& server = AvviaServerOrdinario();
  std::filesystem::create_directory(File("l'anno"));
  const std::string file = cartella.Write("l'anno/l'ultima.pdf", "x");
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", file});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.OnlyMessage().attachments.at(0).name, "l'ultima.pdf");
  EXPECT_THAT(Registro(), SizeIs(1));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89"));
}

TEST_F(Ingressi, TheSameAttachmentTwiceArrivesTwice) {
  auto& server = AvviaServerOrdinario();
  const std::string file = cartella.Write("uno.pdf", "uno");
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", file, "--allegato", file}).stato, 0);
  EXPECT_THAT(server.OnlyMessage().attachments, SizeIs(2));
}

TEST_F(Ingressi, AHundredAndTwentyBlindCopiesAllArriveAndAreAllRecorded) {
  constexpr std::size_t kQuanti = 120;
  auto& server = AvviaServerOrdinario();
  std::vector<std::string> argomenti = {"--corpo", "x"};
  for (std::size_t i = 0; i < kQuanti; ++i) {
    argomenti.insert(argomenti.end(), {"--ccn", "n" + std::to_string(i) + "@example.org"});
  }
  const Esecuzione esecuzione = Invia(argomenti);
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().recipients, SizeIs(kQuanti));
  EXPECT_THAT(Registro(), SizeIs(kQuanti));
  EXPECT_THAT(CodiciEventi(), SizeIs(kQuanti));
}

TEST_F(Ingressi, BracketsAndDashesInValuesAreValues) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "[a, b] <x@example.org>", "--oggetto", "--pec", "--corpo", "[x]", "--cc=-y@example.org"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{"[a, b]", "x@example.org"}));
  EXPECT_EQ(messaggio.subject, "--pec");
}

}  // namespace orve::app
