#include <string>
#include <vector>

#include "content/body_templates.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

class Corpo : public fakes::ServizioDiProva {
 protected:
  Corpo() {
    interno.contesto.IdUtenteCorrente = 7;
    connessione->Risponde("FW06_CODICE", {{{"FW06_CODICE", "AMM"}, {"FW06_DESCR", "Amministrazione"}}});
    connessione->Risponde("FW07_USERNAME", {{{"FW07_USERNAME", "mrossi"}, {"FW07_DESCR", "Maria Rossi"}}});
    servizio->vNome = "Ditta Bianchi";
    servizio->vDitta = "Bianchi S.r.l.";
    servizio->vIndDestinatario = "info@bianchi.example";
  }
  void ConAzienda() {
    interno.contesto.AziendaCorr = "Orve S.p.A.";
    interno.contesto.AzCorrInd = "Via Roma 1";
    interno.contesto.AzCorrCAP = "06121";
    interno.contesto.AzCorrCitta = "Perugia";
    interno.contesto.AzCorrProv = "PG";
    interno.contesto.AzCorrMail = "privacy@orve.example";
  }
};

constexpr const char* kFilled =
    "Gli allegati inclusi in questa mail sono destinati  a \r\n"
    " Ditta Bianchi\r\n"
    "\r\n"
    "dell'azienda:\r\n"
    " Bianchi S.r.l.\r\n"
    "\r\n"
    "Posta elettronica:\r\n"
    "  info@bianchi.example \r\n"
    "\r\n"
    "Informativa ai sensi del codice della Privacy (D. Lgs. 196 \xE2\x80\x93 30/06/2003).\r\n"
    "Le informazioni contenute nella presente e-mail e negli eventuali allegati, devono essere nella "
    "disponibilit\xC3\xA0 del solo destinatario.\r\n"
    "Se avete ricevuto per errore questa e-mail siete pregati di informarci (rispedendola al mittente) e di "
    "provvedere alla sua rimozione. Possono essere presenti informazioni riservate e non corrette ( "
    "parzialmente o totalmente). Le e-mail in partenza e in arrivo possono essere oggetto di monitoraggio da "
    "parte di Orve S.p.A.. Del contenuto \xC3\xA8 responsabile il mittente della presente. Chiunque venga in "
    "possesso non autorizzato di questa e-mail \xC3\xA8 vincolato dalla Legge a non leggerne il contenuto, a "
    "non copiarla, a non diffonderla e a non usarla. La informiamo che per l\xE2\x80\x99"
    "esercizio dei diritti di cui all\xE2\x80\x99"
    "art. 7 del d. lgs. 196/2003 pu\xC3\xB2 rivolgersi al Titolare del trattamento  Orve S.p.A.,Via Roma 1 "
    "\xE2\x80\x93  06121  Perugia per posta o per fax, indicando sulla busta o sul foglio la dicitura "
    "\xE2\x80\x9CInerente alla Privacy\xE2\x80\x9D, o inviando una e-mail all\xE2\x80\x99 indirizzo "
    "privacy@orve.example.";

constexpr const char* kUnfilled =
    "Gli allegati inclusi in questa mail sono destinati  a \r\n"
    " ***(Nome)***\r\n"
    "\r\n"
    "dell'azienda:\r\n"
    " ***(Azienda)***\r\n"
    "\r\n"
    "Posta elettronica:\r\n"
    "  ***(IndEmail)*** \r\n"
    "\r\n"
    "Informativa ai sensi del codice della Privacy (D. Lgs. 196 \xE2\x80\x93 30/06/2003).\r\n"
    "Le informazioni contenute nella presente e-mail e negli eventuali allegati, devono essere nella "
    "disponibilit\xC3\xA0 del solo destinatario.\r\n"
    "Se avete ricevuto per errore questa e-mail siete pregati di informarci (rispedendola al mittente) e di "
    "provvedere alla sua rimozione. Possono essere presenti informazioni riservate e non corrette ( "
    "parzialmente o totalmente). Le e-mail in partenza e in arrivo possono essere oggetto di monitoraggio da "
    "parte di ***(AziendaCorr)***. Del contenuto \xC3\xA8 responsabile il mittente della presente. Chiunque "
    "venga in possesso non autorizzato di questa e-mail \xC3\xA8 vincolato dalla Legge a non leggerne il "
    "contenuto, a non copiarla, a non diffonderla e a non usarla. La informiamo che per l\xE2\x80\x99"
    "esercizio dei diritti di cui all\xE2\x80\x99"
    "art. 7 del d. lgs. 196/2003 pu\xC3\xB2 rivolgersi al Titolare del trattamento  "
    "***(AziendaCorr)***,***(AzCorrInd)*** \xE2\x80\x93  ***(AzCorrCAP)***  ***(AzCorrCitta)*** per posta o "
    "per fax, indicando sulla busta o sul foglio la dicitura \xE2\x80\x9CInerente alla Privacy\xE2\x80\x9D, "
    "o inviando una e-mail all\xE2\x80\x99 indirizzo ***(AzCorrMail)***.";

TEST_F(Corpo, TheStandardBodyToTheCharacter) {
  ConAzienda();
  EXPECT_EQ(GetCorpoStandard(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            kFilled);
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            kFilled);
}

TEST_F(Corpo, TheFlagAloneDecidesForTheCallersBody) {
  servizio->vFlagCorpo = 1;
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti), "");
  servizio->vFlagCorpo = -1;
  servizio->vCorpoMail = "Buongiorno ***(Nome)***";
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Messaggio";
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            "Buongiorno Ditta Bianchi");
}

TEST_F(Corpo, ABodyWithoutTheFlagIsNeverSent) {
  ConAzienda();
  servizio->vCorpoMail = "Buongiorno";
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            kFilled);
}

TEST_F(Corpo, TheStandingMessageReplacesTheStandardBody) {
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***,\r\nin allegato il documento.";
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            "Gentile Ditta Bianchi,\r\nin allegato il documento.");
}

TEST_F(Corpo, AnEmptyStandingMessageGivesAnEmptyBody) {
  servizio->FlgMsgPers = true;
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti), "");
}

TEST_F(Corpo, WithoutTheCompanyDataTheNoticeReadsWithGaps) {
  const std::string corpo =
      GetCorpoStandard(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
  EXPECT_THAT(corpo, HasSubstr("oggetto di monitoraggio da parte di . Del contenuto"));
  EXPECT_THAT(corpo, HasSubstr("Titolare del trattamento  , –     per posta o per fax"));
  EXPECT_THAT(corpo, EndsWith("all’ indirizzo ."));
}

TEST_F(Corpo, WithoutAnAddressItsLineHoldsThreeBlanks) {
  servizio->vIndDestinatario.clear();
  EXPECT_THAT(GetCorpoStandard(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
              HasSubstr("Posta elettronica:\r\n   \r\n\r\nInformativa"));
}

TEST_F(Corpo, EveryPlaceholderHasItsValue) {
  ConAzienda();
  interno.contesto.DescGruppoCorrente = "vecchio gruppo";
  interno.contesto.DescUtenteCorrente = "vecchio utente";
  struct Caso {
    const char* testo;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"***(Nome)***", "Ditta Bianchi"},
      {"***(Azienda)***", "Bianchi S.r.l."},
      {"***(IndEmail)***", "info@bianchi.example"},
      {"***(Gruppo)***", "AMM"},
      {"***(Utente)***", "mrossi"},
      {"***(DescGruppo)***", "Amministrazione"},
      {"***(DescUtente)***", "Maria Rossi"},
      {"***(AziendaCorr)***", "Orve S.p.A."},
      {"***(AzCorrInd)***", "Via Roma 1"},
      {"***(AzCorrCAP)***", "06121"},
      {"***(AzCorrCitta)***", "Perugia"},
      {"***(AzCorrProv)***", "PG"},
      {"***(AzCorrMail)***", "privacy@orve.example"},
      {"***(NOME)***", "Ditta Bianchi"},
      {"***(azcorrprov)***", "PG"},
      {"a***(Nome)***b***(nome)***", "aDitta BianchibDitta Bianchi"},
      {"***(Sconosciuto)***", "***(Sconosciuto)***"},
      {"**(Nome)**", "**(Nome)**"},
      {"***( Nome )***", "***( Nome )***"},
      {"****(Nome)****", "*Ditta Bianchi*"},
      {"", ""},
  };
  for (const auto& caso : casi)
    EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, caso.testo), caso.want)
        << caso.testo;
}

TEST_F(Corpo, APlaceholderWithoutAValueIsRemoved) {
  EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "a***(AzCorrProv)***b"),
            "ab");
}

// Each value contains the next placeholder: only in this order does the last value come out.
TEST_F(Corpo, TheThirteenPlaceholdersAreFilledInTheirOrder) {
  servizio->vNome = "1***(Azienda)***";
  servizio->vDitta = "2***(IndEmail)***";
  servizio->vIndDestinatario = "3***(Gruppo)***";
  connessione->Risponde("FW06_CODICE",
                        {{{"FW06_CODICE", "4***(Utente)***"}, {"FW06_DESCR", "6***(DescUtente)***"}}});
  connessione->Risponde("FW07_USERNAME",
                        {{{"FW07_USERNAME", "5***(DescGruppo)***"}, {"FW07_DESCR", "7***(AziendaCorr)***"}}});
  interno.contesto.AziendaCorr = "8***(AzCorrInd)***";
  interno.contesto.AzCorrInd = "9***(AzCorrCAP)***";
  interno.contesto.AzCorrCAP = "10***(AzCorrCitta)***";
  interno.contesto.AzCorrCitta = "11***(AzCorrProv)***";
  interno.contesto.AzCorrProv = "12***(AzCorrMail)***";
  interno.contesto.AzCorrMail = "13";
  EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "***(Nome)***"),
            "12345678910111213");
}

TEST_F(Corpo, AValueThatHoldsItsOwnOrAnEarlierPlaceholderIsNotFilledAgain) {
  servizio->vNome = "***(Nome)***";
  servizio->vDitta = "***(Nome)***";
  EXPECT_EQ(
      CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "***(Nome)***|***(Azienda)***"),
      "***(Nome)***|***(Nome)***");
}

TEST_F(Corpo, GroupAndUserAreAskedInThisOrderAtEveryCall) {
  (void)CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "niente");
  ASSERT_EQ(connessione->Statements().size(), 2U);
  EXPECT_THAT(connessione->Statements()[0], HasSubstr("SELECT  FW06_CODICE,FW06_DESCR"));
  EXPECT_THAT(connessione->Statements()[1], HasSubstr("SELECT  FW07_USERNAME,FW07_DESCR"));
  (void)CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "niente");
  EXPECT_EQ(connessione->Statements().size(), 4U);
}

TEST_F(Corpo, WithoutARowGroupAndUserAreEmptyAndTheDescriptionsStay) {
  connessione->Risponde("FW06_CODICE", {});
  connessione->Risponde("FW07_USERNAME", {});
  interno.contesto.DescGruppoCorrente = "Vendite";
  interno.contesto.DescUtenteCorrente = "Anna Verdi";
  EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti,
                             "***(Gruppo)***|***(Utente)***|***(DescGruppo)***|***(DescUtente)***"),
            "||Vendite|Anna Verdi");
}

TEST_F(Corpo, BlanksOfUserAndGroupStandInTheTextAsTheyAre) {
  connessione->Risponde("FW06_CODICE", {{{"FW06_CODICE", " "}, {"FW06_DESCR", "  "}}});
  connessione->Risponde("FW07_USERNAME", {{{"FW07_USERNAME", "   "}, {"FW07_DESCR", "    "}}});
  EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti,
                             "***(Gruppo)***|***(Utente)***|***(DescGruppo)***|***(DescUtente)***"),
            " |   |  |    ");
}

TEST_F(Corpo, AFailingLookUpReachesWhoAskedForTheCallersBody) {
  journal->Fallisce("ConnectionADO.Execute", {-2147467259, "Database", "connessione interrotta"});
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "testo";
  try {
    (void)GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
    FAIL() << "no error";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), -2147467259);
    EXPECT_EQ(errore.Descrizione(), "connessione interrotta");
  }
  EXPECT_THROW((void)CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "x"),
               host::Errore);
  EXPECT_EQ(servizio->vCorpoMail, "testo");
}

TEST_F(Corpo, WhenFillingFailsTheStandardBodyKeepsItsPlaceholders) {
  journal->Fallisce("ConnectionADO.Execute");
  EXPECT_EQ(GetCorpoStandard(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            kUnfilled);
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            kUnfilled);
}

TEST_F(Corpo, WhenFillingFailsTheStandingMessageIsEmpty) {
  journal->Fallisce("ConnectionADO.Execute");
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***";
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti), "");
}

TEST_F(Corpo, WithoutAConnectionTheStandardBodyKeepsItsPlaceholders) {
  servizio->ConnectionADO.reset();
  EXPECT_EQ(GetCorpoMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti),
            kUnfilled);
}

TEST_F(Corpo, HostileTextIsCarriedAsItStands) {
  for (const std::string& testo : {std::string("a\0b", 3), std::string("\xFF\xC3"), std::string("'\"<&\r\n"),
                                   std::string(1U << 20U, '*'), std::string(1U << 20U, 'x')}) {
    servizio->vNome = testo;
    EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, "***(Nome)***"), testo);
    EXPECT_EQ(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti, testo), testo);
  }
}

}  // namespace
}  // namespace orve
