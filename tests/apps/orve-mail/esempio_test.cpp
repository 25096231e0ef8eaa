// The example programs send what the README promises, and the README shows one of them as it is.
#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "places.h"
#include "support/process.h"

namespace orve::app {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// An example as it was built in the tree, or as somebody built it over the installed package.
std::string Programma(const std::string& nome) {
  const char* const installati = std::getenv("ORVE_ESEMPI_INSTALLATI");
  return installati != nullptr ? installati + ("/" + nome) : places::Build("examples/" + nome);
}

class Esempio : public ProvaIntera {
 protected:
  [[nodiscard]] support::ProcessResult Fattura(const std::string& cliente) const {
    return support::RunProgram(
        {Programma("invia-fattura"), Db(), cliente, cartella.Write("fattura.pdf", "%PDF-1.4 prova"), Ca()});
  }
};

// The first block of C++ in the README.
std::string ProgrammaDelReadme() {
  const std::string readme = support::ReadFile(places::Source("README.md"));
  const std::string inizio = "```cpp\n";
  const std::size_t primo = readme.find(inizio) + inizio.size();
  return readme.substr(primo, readme.find("```", primo) - primo);
}

}  // namespace

TEST_F(Esempio, TheExampleSendsAnInvoiceToACustomer) {
  auto& server = AvviaServerOrdinario();
  const auto fine = Fattura("1001");
  EXPECT_EQ(fine.status, 0) << fine.output;
  EXPECT_EQ(fine.output, "Inviato: Officine Bellariva S.r.l.<acquisti@bellariva.example>\n");
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("acquisti@bellariva.example"));
  EXPECT_EQ(messaggio.subject, "Fattura 12/2026 (originale)");
  ASSERT_EQ(messaggio.attachments.size(), 1U);
  EXPECT_EQ(messaggio.attachments[0].name, "fattura.pdf");
  EXPECT_EQ(CodiciEventi().size(), 1U);
}

TEST_F(Esempio, TheExampleTellsThatTheServerRefused) {
  AvviaServerOrdinario({"acquisti@bellariva.example"});
  const auto fine = Fattura("1001");
  EXPECT_EQ(fine.status, 1);
  EXPECT_EQ(fine.output,
            "Officine Bellariva S.r.l.: Server si rifiuta di inoltrare mail ad uno o più indirizzi\n");
}

TEST_F(Esempio, TheExampleTellsThatTheAddressIsMissing) {
  auto& server = AvviaServerOrdinario();
  const auto fine = Fattura("1004");
  EXPECT_EQ(fine.status, 1);
  EXPECT_EQ(fine.output, "Ferramenta del Borgo S.a.s.: Non inviato. Indirizzo mancante.\n");
  EXPECT_THAT(server.Messages(), IsEmpty());
}

TEST_F(Esempio, TheExampleTellsThatTheCustomerIsUnknown) {
  auto& server = AvviaServerOrdinario();
  const auto fine = Fattura("9999");
  EXPECT_EQ(fine.status, 1);
  EXPECT_EQ(fine.output, "Cliente 9999 sconosciuto: Non inviato. Indirizzo mancante.\n");
  EXPECT_THAT(server.Messages(), IsEmpty());
}

TEST_F(Esempio, TheExampleTellsThatThereIsNoAccountToSendFrom) {
  static_cast<void>(Sql("DELETE FROM FW99_MAILUSERACCOUNT"));
  static_cast<void>(Sql("DELETE FROM FW9A_MAILAZIENDAACCOUNT"));
  const auto fine = Fattura("1001");
  EXPECT_EQ(fine.status, 1);
  EXPECT_EQ(fine.output, "Non inviato: manca un account, oppure un errore sta nel registro degli errori\n");
}

TEST_F(Esempio, TheReadmeShowsAWholeProgram) {
  EXPECT_EQ(ProgrammaDelReadme(), support::ReadFile(places::Source("examples/invia_messaggio.cpp")));
}

TEST_F(Esempio, TheProgramOfTheReadmeSends) {
  const support::SmtpServer server;
  ImpostaServerSemplice(server.Port());
  cartella.Write("fattura-12.pdf", "%PDF-1.4 prova");
  // It finds its files where it is started.
  const auto fine = support::RunProgram(
      {"/bin/sh", "-c", R"(cd "$0" && exec "$1")", cartella.Path().string(), Programma("invia-messaggio")});
  EXPECT_EQ(fine.status, 0) << fine.output;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("acquisti@bellariva.example"));
  EXPECT_EQ(messaggio.subject, "Fattura 12/2026");
}

}  // namespace orve::app
