// The fakes keep the promises that tests build on.
#include "fakes/fake_connection.h"
#include "fakes/fake_smtp.h"
#include "fakes/servizio_di_prova.h"

namespace orve::fakes {
namespace {

using ::testing::ElementsAre;

class Fakes : public ::testing::Test {
 protected:
  JournalPtr journal = std::make_shared<Journal>();
};

TEST_F(Fakes, TheJournalKeepsTheOrderAcrossObjects) {
  FakeConnection connessione(journal);
  FakeSmtp smtp(journal, -1);
  smtp.Subject("uno");
  connessione.Execute("SELECT 1", host::kComandoTesto);
  smtp.SendMail();
  EXPECT_THAT(journal->Righe(),
              ElementsAre("smtp.Subject uno", "ConnectionADO.Execute 1 SELECT 1", "smtp.SendMail"));
  EXPECT_THAT(journal->Righe({"smtp"}), ElementsAre("smtp.Subject uno", "smtp.SendMail"));
}

TEST_F(Fakes, AnOperationFailsWhereATestPlannedIt) {
  FakeSmtp smtp(journal, -1);
  journal->Fallisce("smtp.SendMail", {42, "Prova", "guasto"});
  EXPECT_NO_THROW(smtp.Subject("uno"));
  EXPECT_THROW(smtp.SendMail(), host::Errore);
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);  // the call itself is on record
  journal->DimenticaPiani();
  EXPECT_NO_THROW(smtp.SendMail());
}

TEST_F(Fakes, TheConnectionAnswersByTheRuleAddedLast) {
  FakeConnection connessione(journal);
  connessione.Risponde("FW07", {{{"NOME", "primo"}}});
  connessione.Risponde("FW07_ID", {{{"NOME", "secondo"}}, {{"NOME", "terzo"}}});
  const auto risultato = connessione.Execute("SELECT FW07_ID", host::kComandoTesto);
  ASSERT_FALSE(risultato->Eof());
  EXPECT_EQ(host::Leggi(*risultato, "nome").ToText(), "secondo");
  risultato->MoveNext();
  EXPECT_EQ(host::Leggi(*risultato, "NOME").ToText(), "terzo");
  risultato->MoveNext();
  EXPECT_TRUE(risultato->Eof());
  EXPECT_THROW(static_cast<void>(host::Leggi(*risultato, "NOME")), host::Errore);
  EXPECT_TRUE(connessione.Execute("altro", host::kComandoTesto)->Eof());
}

TEST_F(Fakes, AnUnknownColumnIsAnError) {
  const auto risultato = CreaRecordSet(journal, {{{"A", 1}}});
  EXPECT_THROW(static_cast<void>(host::Leggi(*risultato, "B")), host::Errore);
}

TEST_F(Fakes, TheSmtpFakeKeepsThePasswordOutOfTheJournal) {
  FakeSmtp smtp(journal, -1);
  smtp.Password("segreta");
  EXPECT_EQ(smtp.password, "segreta");
  EXPECT_THAT(journal->Righe(), ElementsAre("smtp.Password ***"));
}

TEST_F(Fakes, FilesKeepWhatIsWrittenInTheSingleByteCodePage) {
  FakeAmbiente ambiente(journal);
  const auto flusso = ambiente.CreaFileSystem()->OpenTextFile("C:\\Temp\\a.log", 8, true, 0);
  flusso->WriteLine("perché");
  flusso->Close();
  EXPECT_EQ(ambiente.file.at("C:\\Temp\\a.log"), "perch\xE9\r\n");
}

TEST_F(Fakes, AnAutomationObjectStandsInTheJournalUntilItIsLetGo) {
  FakeAmbiente ambiente(journal);
  auto elemento = ambiente.CreaOutlook()->createItem(0);
  auto allegati = elemento->attachments();
  allegati->Add("C:\\a.pdf");
  allegati.reset();
  elemento.reset();
  EXPECT_THAT(
      journal->Righe(),
      ElementsAre("Ambiente.CreaOutlook", "Outlook.createItem 0", "rilascio Outlook", "MailItem.attachments",
                  "Attachments.Add C:\\a.pdf", "rilascio Attachments", "rilascio MailItem"));
}

TEST_F(Fakes, MapiLogsOnWhereItShouldAndKeepsTheRecordsOfASend) {
  FakeAmbiente ambiente(journal);
  const auto mapi = ambiente.CreaMapi32();
  host::MapiHandle sessione = 1;
  ambiente.esitoLogonMapi = 3;
  EXPECT_EQ(mapi->MAPILogon(0, "", "", 3, 0, sessione), 3);
  EXPECT_EQ(sessione, 1U);
  ambiente.esitoLogonMapi = 0;
  EXPECT_EQ(mapi->MAPILogon(0, "", "", 3, 0, sessione), 0);
  EXPECT_EQ(sessione, ambiente.sessioneMapi32);
  host::MapiMessage messaggio;
  messaggio.Subject = "oggetto";
  ambiente.esitoInvioMapi = 2;
  EXPECT_EQ(mapi->BMAPISendMail(0, 0, messaggio, {{}, {}}, {{}}, 0, 0), 2);
  ASSERT_EQ(ambiente.inviiMapi.size(), 1U);
  EXPECT_EQ(ambiente.inviiMapi.front().messaggio.Subject, "oggetto");
  EXPECT_EQ(ambiente.inviiMapi.front().destinatari.size(), 2U);
  EXPECT_EQ(ambiente.inviiMapi.front().file.size(), 1U);
}

}  // namespace
}  // namespace orve::fakes
