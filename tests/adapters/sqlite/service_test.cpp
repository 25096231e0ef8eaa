// The service on the embedded database, everything else being fakes: its own statements, not copies of them,
// find what the sample data hold.
#include <gmock/gmock.h>

#include <sstream>

#include "adapters/sqlite/prova.h"
#include "addressing/accounts.h"
#include "addressing/contesto_utente.h"
#include "addressing/recipient_lookup.h"
#include "content/corpo_html.h"
#include "content/eventi_gestionali.h"
#include "fakes/fake_ambiente.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "places.h"

namespace orve::adapters::sqlite {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ServiceOnSqlite : public ConDatiDiProva {
 protected:
  void SetUp() override {
    ConDatiDiProva::SetUp();
    servizio->ConnectionADO = connessione;
    servizio->DittaCorrente = 1;
  }

  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::ServizioAperto aperto{ambiente};
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto.servizio;
  Interno& interno = aperto.interno;
};

TEST_F(ServiceOnSqlite, ReadsTheMailSettings) {
  (void)servizio->GetImpostazioni();
  EXPECT_EQ(servizio->SrvMailInstallato, kvSMTPSSLMail) << "76 runs as 77";
  EXPECT_EQ(servizio->ModalitaInvio(), kvAutomatico);
  EXPECT_FALSE(servizio->ReadReceipt);
  EXPECT_FALSE(servizio->FlgMsgPers);
}

TEST_F(ServiceOnSqlite, FindsEveryKindOfRecipient) {
  constexpr const char* kPrima = "di prima";
  struct Caso {
    const char* label;
    std::int32_t tipo;
    host::Variant codice;
    bool pec;
    host::Variant want;
    const char* wantIndirizzo;
    const char* wantNome;
  };
  const std::vector<Caso> casi = {
      {"master data", 0, 101, false, std::int16_t{0}, "acquisti@bellariva.example",
       "Officine Bellariva S.r.l."},
      {"master data, certified", 0, 101, true, std::int16_t{0}, "bellariva@pec.bellariva.example",
       "Officine Bellariva S.r.l."},
      {"master data, nobody", 0, 999, false, std::int16_t{1}, kPrima, kPrima},
      {"customer", 1, 1001, false, std::int16_t{0}, "acquisti@bellariva.example",
       "Officine Bellariva S.r.l."},
      {"customer with an ordinary address only, certified", 1, 1002, true, std::int16_t{2}, "",
       "Pasticceria Città d'Oro S.n.c."},
      {"customer without an address", 1, 1004, false, std::int16_t{2}, "", "Ferramenta del Borgo S.a.s."},
      {"customer with blanks for an address", 1, 1005, false, std::int16_t{2}, "",
       "Cartotecnica Tre Spazi S.r.l."},
      {"customer, a quote in the code", 1, "10'01", false, std::int16_t{1}, kPrima, kPrima},
      {"supplier", 2, 1001, false, std::int16_t{0}, "vendite@vetrerialaguna.example",
       "Vetreria Laguna S.r.l."},
      {"agent", 4, "a01", false, std::int16_t{0}, "nordest@agenzie.example", "Agenzia Nord Est"},
      {"agent without an address", 4, "A02", false, std::int16_t{2}, "", "Agenzia Isole"},
      {"number", 9, "tel. <***>uno@due.example", false, std::int16_t{0}, "uno@due.example", kPrima},
      {"contact of two partners", 10, 501, false, std::int16_t{0}, "ufficio.acquisti@bellariva.example",
       "Ufficio Acquisti"},
      {"contact of nobody", 10, 503, false, std::int16_t{1}, kPrima, kPrima},
      {"destination with its own address",
       11,
       "1/1001/0/SEDE",
       false,
       {},
       "stabilimento@bellariva.example",
       "Bellariva, Stabilimento Sud"},
      {"destination with the customer's address", 11, "1/1001/0/MAG1", false, std::int16_t{0},
       "acquisti@bellariva.example", "Officine Bellariva S.r.l."},
      {"destination with blanks, certified", 11, "1/1001/0/MAG2", true, std::int16_t{0},
       "bellariva@pec.bellariva.example", "Officine Bellariva S.r.l."},
      {"destination with strokes in its code",
       11,
       "1/1001/0/A/B/3",
       false,
       {},
       "corsia@bellariva.example",
       "Bellariva, Corsia A/B/3"},
      {"destination without any address", 11, "1/1004/0/SEDE", false, std::int16_t{2}, kPrima, kPrima},
      {"destination that is not there", 11, "1/1001/0/MANCA", false, std::int16_t{2}, kPrima, kPrima},
      {"destination of a customer that is gone", 11, "1/1999/0/SEDE", false, std::int16_t{1}, kPrima, kPrima},
      {"no treatment", 5, 101, false, {}, kPrima, kPrima},
  };
  for (const auto& caso : casi) {
    servizio->vIndDestinatario = kPrima;
    servizio->vNome = kPrima;
    servizio->IsPec(caso.pec);
    EXPECT_EQ(
        GetDatiDestinatario(interno.messaggio, interno.contesto, interno.oggetti, caso.codice, caso.tipo),
        caso.want)
        << caso.label;
    EXPECT_EQ(servizio->vIndDestinatario, caso.wantIndirizzo) << caso.label;
    EXPECT_EQ(servizio->vNome, caso.wantNome) << caso.label;
  }
}

TEST_F(ServiceOnSqlite, FindsTheCustomerAsItWasAtADate) {
  servizio->DataValiditaCodiceDestinatario(host::DataOra::Da(2024, 12, 31));
  EXPECT_EQ(GetDatiDestinatario(interno.messaggio, interno.contesto, interno.oggetti, 1006, 1),
            host::Variant(std::int16_t{0}));
  EXPECT_EQ(servizio->vNome, "Molino Vecchio S.r.l.");
  servizio->DataValiditaCodiceDestinatario(host::DataOra::Da(2025, 1, 1));
  EXPECT_EQ(GetDatiDestinatario(interno.messaggio, interno.contesto, interno.oggetti, 1006, 1),
            host::Variant(std::int16_t{0}));
  EXPECT_EQ(servizio->vNome, "Molino Nuovo S.p.A.");
}

TEST_F(ServiceOnSqlite, KnowsUserGroupAndCompany) {
  servizio->InizializzaRegistroInvioMail("voce", "oggetto", "u03", "ven", "Fattura");
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 3);
  EXPECT_EQ(GetUtenteApplicazione(interno.contesto, interno.oggetti), "vendite");
  EXPECT_EQ(GetGruppoPreferito(interno.contesto, interno.oggetti), "AMM");
  EXPECT_EQ(interno.contesto.DescGruppoCorrente, "Amministrazione");
  EXPECT_EQ(GetCodiceUtente(interno.contesto, 3), "U03");
  EXPECT_EQ(GetCodiceGruppo(interno.contesto, 3), "VEN");
  EXPECT_EQ(interno.contesto.AziendaCorr, "Arvenia Distribuzione S.p.A.");
  EXPECT_EQ(interno.contesto.AzCorrProv, "VI");
}

TEST_F(ServiceOnSqlite, LoadsTheDefaultAccountOfUserOrCompany) {
  struct Caso {
    const char* label;
    std::int32_t utente;
    std::int32_t ditta;
    bool pec;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"user's own", 1, 1, false, "smtp.arvenia.example|587|fatture@arvenia.example|Ufficio Fatture Arvenia"},
      {"user's own, certified", 1, 1, true,
       "pec.arvenia.example|465|fatture@pec.arvenia.example|Ufficio Fatture Arvenia (PEC)"},
      {"no default: the company's", 2, 1, false,
       "smtp.arvenia.example|587|info@arvenia.example|Arvenia Distribuzione S.p.A."},
      {"an ordinary default only, certified: the company's", 3, 1, true,
       "pec.arvenia.example|465|arvenia@pec.arvenia.example|Arvenia Distribuzione S.p.A."},
      {"the other company, blanks after its server", 4, 2, false,
       "smtp.collefiorito.example|25|ordini@collefiorito.example|Società Agricola Colle Fiorito S.r.l."},
      {"nothing on the server: the defaults", 6, 1, false, "localhost|25||Senza indirizzo"},
      {"no company", 4, 9, false, "|0||"},
  };
  for (const auto& caso : casi) {
    fakes::ServizioAperto nuovo(ambiente);
    Interno& dentro = nuovo.interno;
    servizio = std::move(nuovo.servizio);
    servizio->ConnectionADO = connessione;
    servizio->DittaCorrente = caso.ditta;
    servizio->IsPec(caso.pec);
    dentro.contesto.IdUtenteCorrente = caso.utente;
    CaricaAccountPredefinito(dentro.messaggio, dentro.account, dentro.contesto, dentro.oggetti);
    EXPECT_EQ(dentro.account.SmtpServer + "|" + std::to_string(dentro.account.SmtpPorta) + "|" +
                  servizio->vSenderAddress + "|" + servizio->vSenderName,
              caso.want)
        << caso.label;
  }
}

TEST_F(ServiceOnSqlite, OffersTheAccountsOfUserOrCompany) {
  const auto form = fakes::CreaFakeForm(ambiente->journal);
  interno.contesto.IdUtenteCorrente = 1;
  EXPECT_TRUE(
      LoadAccountsPerUser(interno.messaggio, interno.account, interno.contesto, interno.oggetti, *form));
  EXPECT_THAT(ambiente->journal->Righe({"CMB_ACCOUNT.AddItemData"}),
              ElementsAre("CMB_ACCOUNT.AddItemData fatture@arvenia.example - Mail|1",
                          "CMB_ACCOUNT.AddItemData info@arvenia.example - Mail|2"));
  ambiente->journal->Svuota();
  servizio->vCollMittenti = nullptr;
  servizio->IsPec(true);
  interno.contesto.IdUtenteCorrente = 4;
  EXPECT_TRUE(
      LoadAccountsPerUser(interno.messaggio, interno.account, interno.contesto, interno.oggetti, *form));
  EXPECT_THAT(ambiente->journal->Righe({"CMB_ACCOUNT.AddItemData"}),
              ElementsAre("CMB_ACCOUNT.AddItemData arvenia@pec.arvenia.example - Pec|3"));
}

TEST_F(ServiceOnSqlite, SignsHtmlMailWithTheUsersOwnFont) {
  EXPECT_TRUE(EsisteParamHTMLFW95(interno.contesto, interno.oggetti));
  EXPECT_EQ(TabellaFirmeFW95(interno.contesto, interno.oggetti), "AZ_FIRMEUTENTI");
  struct Caso {
    std::int32_t utente;
    const char* want;
    const char* wantFont;
    int wantDimensione;
  };
  const std::vector<Caso> casi = {{1, "Città di Vicenza", "Verdana", 2},
                                  {2, "<p>Il magazzino di Arvenia</p>", "", 0},
                                  {3, "<p>Ufficio Vendite</p>", "", 0},
                                  {4, "", "", 0}};
  for (const auto& caso : casi) {
    servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, caso.utente);
    const FirmaUtente firma = GetFirmaUtente(interno.contesto, interno.oggetti, "AZ_FIRMEUTENTI");
    EXPECT_THAT(firma.testo, HasSubstr(caso.want)) << caso.utente;
    EXPECT_EQ(firma.font, caso.wantFont) << caso.utente;
    EXPECT_EQ(firma.dimensione, caso.wantDimensione) << caso.utente;
  }
}

// The statements of the guide for calling applications, on settings that have neither.
TEST_F(ServiceOnSqlite, TheGuidesStatementsSwitchHtmlAndSignatureOn) {
  (void)Esegui("DELETE FROM FW95_SETTINGS");
  std::istringstream guida(posix::Contenuto(places::Source("docs/for-integrators.md")));
  bool dentro = false;
  int eseguiti = 0;
  for (std::string riga; std::getline(guida, riga);) {
    if (riga == "```") dentro = false;
    if (dentro) {
      (void)Esegui(riga);
      ++eseguiti;
    }
    if (riga == "```sql") dentro = true;
  }
  EXPECT_EQ(eseguiti, 4);

  // The signature is that of the person logged in, whatever user the register was told.
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7);
  (void)servizio->GetImpostazioni();
  servizio->InizializzaRegistroInvioMailMultiprofilo("voce", "oggetto", 1, "Fattura");
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Buongiorno";
  servizio->AvviaProceduraInvio(1001, kvDestinatarioFaxCliente);
  EXPECT_THAT(ambiente->journal->Righe({"smtp.BodyFormat", "smtp.BodyText"}),
              ElementsAre("smtp.BodyFormat 1",
                          "smtp.BodyText <!DOCTYPE html>\r\n<html>\r\n<body>\r\n<font face = \"Verdana\" "
                          "size = \"2\">Buongiorno</font><br/>\r\n</body>\r\n</html>\r\n"
                          "<p>Anna Rossi<br/>Amministrazione</p>"));
}

TEST_F(ServiceOnSqlite, RegistersAnEventForTheUserOfTheConnection) {
  const auto invia = [&] {
    AttivaEventoGestionale(interno.contesto, interno.oggetti,
                           {89, "L'Officina", "Bellariva", "<a@b.example>", "", "", "Ordine d'acquisto"});
  };
  const auto eventi = [&] {
    return Righe("SELECT * FROM EVENTI_GESTIONALI", {"DITTA", "CODICE", "IDUTENTE", "DATI"});
  };
  invia();
  EXPECT_THAT(eventi(), IsEmpty()) << "no user, no event";
  connessione->UtenteConnessione(3);
  invia();
  EXPECT_THAT(eventi(),
              ElementsAre("1|89|3|<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U03/><GRP_COD=VEN/>"
                          "<MAIL_DEST=L'Officina/><AZ_COD=1/><AZ_DES=Bellariva/><MAIL_IND=<a@b.example>/>"
                          "<MAIL_OBJ=Ordine d'acquisto/>"));
  servizio->DittaCorrente = {};
  invia();
  EXPECT_EQ(eventi().size(), 1U) << "without a company the event is lost, and nothing else";
}

// Values are in the statements as they are: one that breaks its statement must not bring another along.
TEST_F(ServiceOnSqlite, TextsThatBreakTheirStatementsChangeNoTableAndEndWithAClearText) {
  const std::vector<std::string> ostili = {"1; DROP TABLE FW07_APPUSER",
                                           "1'; DROP TABLE FW07_APPUSER; --",
                                           "1) ; DELETE FROM FW07_APPUSER; --",
                                           "1 UNION DELETE FROM FW07_APPUSER",
                                           std::string("1\0DROP", 6),
                                           "1\xFF\xFE",
                                           "1\r\nriga",
                                           std::string((1U << 20U) + 1, '\'')};
  const auto tabelle = [&] {
    return Righe(
        "SELECT (SELECT COUNT(*) FROM FW07_APPUSER) U, (SELECT COUNT(*) FROM EVENTI_GESTIONALI) E,"
        " (SELECT COUNT(*) FROM CG16_ANAGGEN) A, (SELECT COUNT(*) FROM FW98_MAILACCOUNT) M",
        {"U", "E", "A", "M"});
  };
  const auto prima = tabelle();
  connessione->UtenteConnessione(3);
  for (const auto& testo : ostili) {
    SCOPED_TRACE(testo.substr(0, 40));
    servizio->DittaCorrente = testo;
    const auto errore =
        ErroreDi([&] { servizio->InizializzaRegistroInvioMailMultiprofilo("v", "o", 3, "t"); });
    EXPECT_NE(errore.Numero(), 0);
    EXPECT_EQ(errore.Sorgente(), "SQLite");
    EXPECT_FALSE(errore.Descrizione().empty());
    AttivaEventoGestionale(interno.contesto, interno.oggetti, {89, testo, testo, testo, testo, testo, testo});
    for (const std::int32_t tipo : {0, 1, 2, 4, 10, 11}) {
      EXPECT_EQ(GetDatiDestinatario(interno.messaggio, interno.contesto, interno.oggetti, testo, tipo),
                host::Variant(std::int16_t{1}))
          << tipo;
    }
    interno.contesto.IdUtenteCorrente = 0;
    interno.contesto.CodiceUtente = interno.contesto.CodiceGruppo = testo;
    EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
    EXPECT_EQ(tabelle(), prima);
  }
}

TEST_F(ServiceOnSqlite, AConnectionThatDropsEndsWhereEachProcedureSays) {
  connessione->Chiudi();
  EXPECT_EQ(GetDatiDestinatario(interno.messaggio, interno.contesto, interno.oggetti, 1001, 1),
            host::Variant(std::int16_t{1}));
  CaricaAccountPredefinito(interno.messaggio, interno.account, interno.contesto, interno.oggetti);
  EXPECT_EQ(interno.account.SmtpServer, "");
  AttivaEventoGestionale(interno.contesto, interno.oggetti, {89, "", "", "", "", "", ""});
  const auto errore = ErroreDi([&] { (void)servizio->GetImpostazioni(); });
  EXPECT_EQ(errore.Numero(), 3704);
  EXPECT_EQ(
      errore.Descrizione(),
      "Operazione non consentita: la connessione è chiusaORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni");
}

}  // namespace

}  // namespace orve::adapters::sqlite
