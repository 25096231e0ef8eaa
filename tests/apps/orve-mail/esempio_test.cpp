// The example program sends what the README promises, and the README shows the example as it is.
#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "places.h"
#include "support/process.h"

namespace orve::app {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The example as it was built in the tree, or the one that somebody built over the installed package.
std::string Programma() {
  const char* installato = std::getenv("ORVE_ESEMPIO_INSTALLATO");
  return installato != nullptr ? installato : places::Build("examples/invia-fattura");
}

class Esempio : public ProvaIntera {
 protected:
  [[nodiscard]] support::ProcessResult Fattura(const std::string& cliente) const {
    return support::RunProgram(
        {Programma(), Db(), cliente, cartella.Write("fattura.pdf", "%PDF-1.4 prova"), Ca()});
  }
};

// The first block of C++ in the README, line by line.
std::vector<std::string> RigheDelReadme() {
  std::istringstream readme(support::ReadFile(places::Source("README.md")));
  std::vector<std::string> righe;
  bool dentro = false;
  for (std::string riga; std::getline(readme, riga);) {
    if (riga == "```") dentro = false;
    if (dentro) righe.push_back(riga);
    if (riga == "```cpp") dentro = true;
  }
  return righe;
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

TEST_F(Esempio, TheReadmeShowsTheExampleAsItStands) {
  const std::string sorgente = support::ReadFile(places::Source("examples/invia_fattura.cpp"));
  const auto righe = RigheDelReadme();
  ASSERT_GT(righe.size(), 8U);
  for (const auto& riga : righe) EXPECT_THAT(sorgente, HasSubstr("  " + riga + "\n"));
}

}  // namespace orve::app
