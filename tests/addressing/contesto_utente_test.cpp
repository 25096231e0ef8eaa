// User, group and company: the initialisers and the order of what they write on the register object, the
// statements, and which failures reach the caller.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "addressing/contesto_utente.h"
#include "channels/channel_traits.h"
#include "fakes/errori.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using fakes::NumeroDi;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kIdUtente = " SELECT FW07_ID ";
constexpr const char* kAzienda = "CG18_CODICE_CG16";

class ContestoUtente : public fakes::ServizioDiProva {
 protected:
  void ConCodici(const std::string& utente = "ANNA", const std::string& gruppo = "VEN") {
    interno.contesto.CodiceUtente = utente;
    interno.contesto.CodiceGruppo = gruppo;
  }
  void ConDocumento() {
    servizio->DittaCorrente = 3;
    servizio->INFO_TipoDoc = "FT";
    servizio->INFO_NumReg = "100";
    servizio->INFO_NumDoc = "200";
    servizio->INFO_SezDoc = "A";
  }
  void Inizializza(std::int32_t id) {
    servizio->InizializzaRegistroInvioMailMultiprofilo("Voce", "Oggetto", id, "Fattura");
  }
  void ConAzienda(const host::Variant& nome = "Azienda S.p.A.") {
    connessione->Risponde(kAzienda, {{{"CG16_RAGSOANAG", nome},
                                      {"CG16_INDIRIZZO", "Via Roma 1"},
                                      {"CG16_CAP", "20100"},
                                      {"CG16_CITTA", "Milano"},
                                      {"CG16_PROV", "MI"},
                                      {"CG16_INDEMAIL", "info@azienda.example"}}});
  }
  void RiempiAzienda() {
    interno.contesto.AziendaCorr = interno.contesto.AzCorrInd = interno.contesto.AzCorrCAP = "prima";
    interno.contesto.AzCorrCitta = interno.contesto.AzCorrProv = interno.contesto.AzCorrMail = "prima";
  }
  std::vector<std::string> Azienda() {
    return {interno.contesto.AziendaCorr, interno.contesto.AzCorrInd,  interno.contesto.AzCorrCAP,
            interno.contesto.AzCorrCitta, interno.contesto.AzCorrProv, interno.contesto.AzCorrMail};
  }
  std::vector<std::string> Registro() const {
    return journal->Righe({"Ambiente.CreaRegistroInvio", "ObjRegistroInvio"});
  }
};

// --- initialisers

TEST_F(ContestoUtente, TheFirstCallMakesTheRegisterObjectAndWritesInOrder) {
  ConDocumento();
  ConAzienda();
  Inizializza(5);
  EXPECT_THAT(
      journal->Righe(),
      ElementsAre("Ambiente.CreaRegistroInvio", "ObjRegistroInvio.TipoCanale 3",
                  "ObjRegistroInvio.Connessione (oggetto)", "ObjRegistroInvio.TipoLista 0",
                  "ObjRegistroInvio.IDvoce Voce", "ObjRegistroInvio.UObject Oggetto",
                  "ObjRegistroInvio.UtenteApplicazione 5", "ObjRegistroInvio.TitoloStampa Fattura",
                  "ObjRegistroInvio.Ditta 3", "ObjRegistroInvio.TipoDoc FT", "ObjRegistroInvio.NumReg 100",
                  "ObjRegistroInvio.NumDoc 200", "ObjRegistroInvio.SezDoc A",
                  "ConnectionADO.Execute -1  SELECT CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, "
                  "CG16_CITTA, CG16_PROV, CG16_INDEMAIL   FROM CG16_ANAGGEN  INNER JOIN "
                  "CG18_ANADITTABASE ON CG16_CODICE = CG18_CODICE_CG16  WHERE CG18_DITTA = 3",
                  "RecordSet.Fields CG16_RAGSOANAG", "RecordSet.Fields CG16_INDIRIZZO",
                  "RecordSet.Fields CG16_CAP", "RecordSet.Fields CG16_CITTA", "RecordSet.Fields CG16_PROV",
                  "RecordSet.Fields CG16_INDEMAIL"));
}

TEST_F(ContestoUtente, PecAndAListShowOnTheRegisterObject) {
  servizio->IsPec(true);
  servizio->IsLista(2);
  servizio->ListaGuid("GUID-1");
  servizio->ConnectionADO.reset();
  Inizializza(5);
  const auto registro = Registro();
  EXPECT_THAT(std::vector<std::string>(registro.begin(), registro.begin() + 6),
              ElementsAre("Ambiente.CreaRegistroInvio", "ObjRegistroInvio.TipoCanale 5",
                          "ObjRegistroInvio.Connessione (assente)", "ObjRegistroInvio.TipoLista 2",
                          "ObjRegistroInvio.GuidLista GUID-1", "ObjRegistroInvio.IDvoce Voce"));
}

TEST_F(ContestoUtente, ASecondCallRenewsTheDocumentAndKeepsObjectChannelAndList) {
  ConDocumento();
  Inizializza(3);
  const auto registro = interno.oggetti.ObjRegistroInvio;
  journal->Svuota();
  servizio->IsPec(true);
  servizio->IsLista(1);
  servizio->INFO_NumDoc = "201";
  servizio->InizializzaRegistroInvioMailMultiprofilo("Voce2", "Oggetto2", 5, "Nota");
  EXPECT_EQ(interno.oggetti.ObjRegistroInvio, registro);
  EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.IDvoce Voce2", "ObjRegistroInvio.UObject Oggetto2",
                                      "ObjRegistroInvio.UtenteApplicazione 5",
                                      "ObjRegistroInvio.TitoloStampa Nota", "ObjRegistroInvio.Ditta 3",
                                      "ObjRegistroInvio.TipoDoc FT", "ObjRegistroInvio.NumReg 100",
                                      "ObjRegistroInvio.NumDoc 201", "ObjRegistroInvio.SezDoc A"));
}

TEST_F(ContestoUtente, TheIdGivenLastCounts) {
  Inizializza(3);
  Inizializza(5);
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 5);
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.UtenteApplicazione"}),
              ElementsAre("ObjRegistroInvio.UtenteApplicazione 3", "ObjRegistroInvio.UtenteApplicazione 5"));
}

TEST_F(ContestoUtente, IdZeroWithoutCodesIsAnUnknownUser) {
  Inizializza(0);
  EXPECT_THAT(Registro(), ::testing::Contains("ObjRegistroInvio.UtenteApplicazione 0"));
  EXPECT_THAT(connessione->Statements(), IsEmpty());
}

TEST_F(ContestoUtente, IdZeroFallsBackToTheCodes) {
  ConCodici();
  connessione->Risponde(kIdUtente, {{{"FW07_ID", 42}}});
  interno.contesto.IdUtenteCorrente = 9;
  Inizializza(0);
  EXPECT_THAT(Registro(), ::testing::Contains("ObjRegistroInvio.UtenteApplicazione 42"));
}

TEST_F(ContestoUtente, CodesAreStoredTurnedIntoAnIdAndHandedOver) {
  connessione->Risponde(kIdUtente, {{{"FW07_ID", 42}}});
  servizio->InizializzaRegistroInvioMail("Voce", "Oggetto", "ANNA", "VEN", "Fattura");
  EXPECT_EQ(interno.contesto.CodiceUtente, "ANNA");
  EXPECT_EQ(interno.contesto.CodiceGruppo, "VEN");
  const auto righe = journal->Righe(
      {"ConnectionADO", "Ambiente", "ObjRegistroInvio.UtenteApplicazione", "ObjRegistroInvio.TitoloStampa"});
  EXPECT_THAT(righe, ElementsAre("ConnectionADO.Execute 1  SELECT FW07_ID  FROM FW07_APPUSER  WHERE "
                                 "FW07_CODICE_FW06 = 'VEN'      AND FW07_CODICE = 'ANNA' ",
                                 "Ambiente.CreaRegistroInvio", "ObjRegistroInvio.UtenteApplicazione 42",
                                 "ObjRegistroInvio.TitoloStampa Fattura"));
}

TEST_F(ContestoUtente, CodesThatMatchNoRowGiveIdZeroAndTheDatabaseIsAskedAgain) {
  servizio->InizializzaRegistroInvioMail("Voce", "Oggetto", "NESSUNO", "VEN", "Fattura");
  EXPECT_THAT(Registro(), ::testing::Contains("ObjRegistroInvio.UtenteApplicazione 0"));
  EXPECT_EQ(connessione->Statements().size(), 2U);  // once for the codes, once for the id 0
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
  EXPECT_EQ(connessione->Statements().size(), 3U);
}

TEST_F(ContestoUtente, OtherCodesDoNotChangeAKnownId) {
  connessione->Risponde(kIdUtente, {{{"FW07_ID", 43}}});
  connessione->Risponde("'ANNA'", {{{"FW07_ID", 42}}});
  servizio->InizializzaRegistroInvioMail("V", "O", "ANNA", "VEN", "T");
  servizio->InizializzaRegistroInvioMail("V", "O", "CARLO", "ACQ", "T");
  EXPECT_EQ(interno.contesto.CodiceUtente, "CARLO");
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 42);
  interno.contesto.IdUtenteCorrente = 0;
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 43);
}

class AccountAllInizio : public ContestoUtente, public ::testing::WithParamInterface<ChannelTraits> {};

TEST_P(AccountAllInizio, IsLoadedAfterTheCompanyOnTheChannelsThatHaveOne) {
  servizio->SrvMailInstallato = GetParam().numero;
  servizio->DittaCorrente = 3;
  ConAzienda();
  connessione->Risponde("FW99_ISDEFAULT = 1", {{{"FW23_SERVERNAME", "smtp.azienda.example"},
                                                {"FW23_PORT", 25},
                                                {"FW23_TIMEOUT", 0},
                                                {"FW23_INDAUTH", 0},
                                                {"FW23_SSL", 0},
                                                {"FW98_MAILADDRESS", "a@b.example"},
                                                {"FW98_USERNAME", ""},
                                                {"FW98_PASSWORD", ""},
                                                {"ALIAS", ""},
                                                {"LETTURA", host::Null{}},
                                                {"CONSEGNA", host::Null{}}}});
  std::string aziendaAllora;
  journal->Quando("Rete.WNetGetUserA", [&] { aziendaAllora = interno.contesto.AziendaCorr; });
  Inizializza(5);
  EXPECT_EQ(interno.account.SmtpServer, GetParam().haAccount ? "smtp.azienda.example" : "");
  EXPECT_EQ(aziendaAllora, GetParam().haAccount ? "Azienda S.p.A." : "");
  EXPECT_EQ(interno.contesto.AziendaCorr, "Azienda S.p.A.");
}

INSTANTIATE_TEST_SUITE_P(Canali, AccountAllInizio, ::testing::ValuesIn(Canali().begin(), Canali().end()),
                         [](const auto& caso) { return "Channel" + std::to_string(caso.param.numero); });

TEST_F(ContestoUtente, FailuresOfTheInitialisersReachTheProgramThatCalled) {
  for (const auto* guasto : {"Ambiente.CreaRegistroInvio", "ObjRegistroInvio.TipoCanale",
                             "ObjRegistroInvio.SezDoc", "ConnectionADO.Execute -1"}) {
    servizio->DittaCorrente = 3;
    journal->Fallisce(guasto, {1001, "Registro", "guasto"});
    interno.oggetti.ObjRegistroInvio.reset();
    EXPECT_EQ(NumeroDi([&] { Inizializza(5); }), 1001) << guasto;
    interno.oggetti.ObjRegistroInvio.reset();
    EXPECT_EQ(NumeroDi([&] { servizio->InizializzaRegistroInvioMail("V", "O", "U", "G", "T"); }), 1001)
        << guasto;
    journal->DimenticaPiani();
  }
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(ContestoUtente, ARegisterObjectThatFailedHalfwayIsKept) {
  journal->Fallisce("ObjRegistroInvio.Connessione");
  EXPECT_EQ(NumeroDi([&] { Inizializza(5); }), 1001);
  journal->DimenticaPiani();
  journal->Svuota();
  Inizializza(5);
  EXPECT_EQ(Registro().front(), "ObjRegistroInvio.IDvoce Voce");
}

TEST_F(ContestoUtente, ACompanyThatIsNullCannotBecomeText) {
  servizio->DittaCorrente = host::Null{};
  EXPECT_EQ(NumeroDi([&] { Inizializza(5); }), 94);
}

// --- id of the user

TEST_F(ContestoUtente, AKnownIdIsNeverLookedUpAgain) {
  ConCodici();
  connessione->Risponde(kIdUtente, {{{"FW07_ID", 42}}});
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 42);
  journal->Svuota();
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 42);
  EXPECT_THAT(journal->Righe(), IsEmpty());
}

TEST_F(ContestoUtente, WithoutBothCodesThereIsNoIdAndNoStatement) {
  servizio->ConnectionADO.reset();
  for (const auto& [utente, gruppo] : std::vector<std::pair<std::string, std::string>>{
           {"", ""}, {"ANNA", ""}, {"", "VEN"}, {"ANNA", "  "}, {"  ", "VEN"}}) {
    ConCodici(utente, gruppo);
    EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
  }
  EXPECT_THAT(journal->Righe(), IsEmpty());
}

TEST_F(ContestoUtente, WithoutAConnectionTheMessageIsShownOnceForEachCall) {
  ConCodici();
  servizio->ConnectionADO.reset();
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
  EXPECT_THAT(
      Messaggi(),
      ElementsAre("ObjMessaggi.MostraMsg CONNESSIONE NON ESISTENTE!!!!!!!! - ORVE_MONITOR|0||(assente)",
                  "ObjMessaggi.MostraMsg CONNESSIONE NON ESISTENTE!!!!!!!! - ORVE_MONITOR|0||(assente)"));
}

TEST_F(ContestoUtente, AFailureOfTheIdLookUpEndsInSilenceWithZero) {
  ConCodici();
  for (const auto& valore : {host::Variant(host::Null{}), host::Variant("x"), host::Variant(3e9)}) {
    connessione->Risponde(kIdUtente, {{{"FW07_ID", valore}}});
    EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
  }
  journal->Fallisce("ConnectionADO.Execute");
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
  EXPECT_THAT(Messaggi(), IsEmpty());
  servizio->ConnectionADO.reset();
  journal->Fallisce("ObjMessaggi.MostraMsg");
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
}

TEST_F(ContestoUtente, CodesGoIntoTheStatementUnescaped) {
  ConCodici("O'Neill", "A'B");
  static_cast<void>(GetIdUtente(interno.contesto, interno.oggetti));
  EXPECT_THAT(connessione->Statements(),
              ElementsAre(" SELECT FW07_ID  FROM FW07_APPUSER  WHERE FW07_CODICE_FW06 = 'A'B'      AND "
                          "FW07_CODICE = 'O'Neill' "));
}

TEST_F(ContestoUtente, ImpostaIdUtenteStoresZeroToo) {
  interno.contesto.IdUtenteCorrente = 8;
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 8);
  interno.contesto.IdUtenteCorrente = 0;
  EXPECT_EQ(interno.contesto.IdUtenteCorrente, 0);
  EXPECT_EQ(GetIdUtente(interno.contesto, interno.oggetti), 0);
}

// --- user and group

TEST_F(ContestoUtente, TheUserIsReadByIdWithItsDescription) {
  interno.contesto.IdUtenteCorrente = 42;
  connessione->Risponde("FW07_USERNAME", {{{"FW07_USERNAME", " anna "}, {"FW07_DESCR", "Anna Rossi"}}});
  EXPECT_EQ(GetUtenteApplicazione(interno.contesto, interno.oggetti), " anna ");
  EXPECT_EQ(interno.contesto.DescUtenteCorrente, "Anna Rossi");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("ConnectionADO.Execute -1           SELECT  FW07_USERNAME,FW07_DESCR  FROM    "
                          "FW07_APPUSER  WHERE   FW07_ID = 42",
                          "RecordSet.Fields FW07_USERNAME", "RecordSet.Fields FW07_DESCR"));
}

TEST_F(ContestoUtente, ThePreferredGroupIsReadByIdWithItsDescription) {
  interno.contesto.IdUtenteCorrente = 42;
  connessione->Risponde("FW06_GROUPUSR", {{{"FW06_CODICE", "VEN"}, {"FW06_DESCR", "Vendite"}}});
  EXPECT_EQ(GetGruppoPreferito(interno.contesto, interno.oggetti), "VEN");
  EXPECT_EQ(interno.contesto.DescGruppoCorrente, "Vendite");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("ConnectionADO.Execute -1           SELECT  FW06_CODICE,FW06_DESCR \r\n"
                          " FROM    FW07_APPUSER \r\n"
                          "         INNER JOIN FW00_GRPUSRASSOC ON FW00_ID_FW07= FW07_APPUSER.FW07_ID AND "
                          "FW00_FLGPREF = 1  \r\n"
                          "         INNER JOIN FW06_GROUPUSR ON FW06_ID = FW00_GRPUSRASSOC.FW00_ID_FW06  \r\n"
                          " WHERE   FW07_ID = 42",
                          "RecordSet.Fields FW06_CODICE", "RecordSet.Fields FW06_DESCR"));
}

TEST_F(ContestoUtente, NullsOfUserAndGroupCountAsEmpty) {
  interno.contesto.DescUtenteCorrente = interno.contesto.DescGruppoCorrente = "prima";
  connessione->Risponde("FW07_USERNAME", {{{"FW07_USERNAME", host::Null{}}, {"FW07_DESCR", host::Null{}}}});
  connessione->Risponde("FW06_GROUPUSR", {{{"FW06_CODICE", host::Null{}}, {"FW06_DESCR", host::Null{}}}});
  EXPECT_EQ(GetUtenteApplicazione(interno.contesto, interno.oggetti), "");
  EXPECT_EQ(GetGruppoPreferito(interno.contesto, interno.oggetti), "");
  EXPECT_EQ(interno.contesto.DescUtenteCorrente + interno.contesto.DescGruppoCorrente, "");
}

TEST_F(ContestoUtente, WithoutARowUserAndGroupAreEmptyAndTheDescriptionsStay) {
  interno.contesto.DescUtenteCorrente = interno.contesto.DescGruppoCorrente = "prima";
  EXPECT_EQ(GetUtenteApplicazione(interno.contesto, interno.oggetti), "");
  EXPECT_EQ(GetGruppoPreferito(interno.contesto, interno.oggetti), "");
  EXPECT_EQ(interno.contesto.DescUtenteCorrente, "prima");
  EXPECT_EQ(interno.contesto.DescGruppoCorrente, "prima");
}

TEST_F(ContestoUtente, FailuresOfUserAndGroupGoToTheCaller) {
  journal->Fallisce("ConnectionADO.Execute -1");
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(GetUtenteApplicazione(interno.contesto, interno.oggetti)); }),
            1001);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(GetGruppoPreferito(interno.contesto, interno.oggetti)); }),
            1001);
  servizio->ConnectionADO.reset();
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(GetUtenteApplicazione(interno.contesto, interno.oggetti)); }),
            91);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(GetGruppoPreferito(interno.contesto, interno.oggetti)); }), 91);
}

TEST_F(ContestoUtente, CodesOfAnIdAreReadFromTheUsersOwnRow) {
  connessione->Risponde("FW07_APPUSER", {{{"FW07_CODICE", "ANNA"}, {"FW07_CODICE_FW06", "VEN"}}});
  EXPECT_EQ(GetCodiceUtente(interno.contesto, 42), "ANNA");
  EXPECT_EQ(GetCodiceGruppo(interno.contesto, -1), "VEN");
  EXPECT_THAT(
      journal->Righe(),
      ElementsAre(
          "ConnectionADO.Execute 1  SELECT FW07_CODICE  FROM FW07_APPUSER WITH (NOLOCK)  WHERE FW07_ID=42",
          "RecordSet.Fields FW07_CODICE",
          "ConnectionADO.Execute 1  SELECT FW07_CODICE_FW06  FROM FW07_APPUSER WITH (NOLOCK)  WHERE "
          "FW07_ID=-1",
          "RecordSet.Fields FW07_CODICE_FW06"));
}

TEST_F(ContestoUtente, CodesOfAnIdAreEmptyWhateverFails) {
  EXPECT_EQ(GetCodiceUtente(interno.contesto, 42) + GetCodiceGruppo(interno.contesto, 42), "");  // no row
  connessione->Risponde("FW07_APPUSER",
                        {{{"FW07_CODICE", host::Null{}}, {"FW07_CODICE_FW06", host::Variant::Array{}}}});
  EXPECT_EQ(GetCodiceUtente(interno.contesto, 42) + GetCodiceGruppo(interno.contesto, 42), "");
  journal->Fallisce("ConnectionADO.Execute");
  EXPECT_EQ(GetCodiceUtente(interno.contesto, 42) + GetCodiceGruppo(interno.contesto, 42), "");
  servizio->ConnectionADO.reset();
  EXPECT_EQ(GetCodiceUtente(interno.contesto, 42) + GetCodiceGruppo(interno.contesto, 42), "");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

// --- company

TEST_F(ContestoUtente, TheCompanyIsReadIntoItsSixFields) {
  servizio->DittaCorrente = "3";
  ConAzienda("  Azienda S.p.A. ");
  CaricaDatiAziendaCorrente(interno.contesto);
  EXPECT_THAT(Azienda(), ElementsAre("  Azienda S.p.A. ", "Via Roma 1", "20100", "Milano", "MI",
                                     "info@azienda.example"));
}

TEST_F(ContestoUtente, WithoutACompanyFiveFieldsAreEmptiedAndTheMailAddressStays) {
  for (const auto& ditta : {host::Variant(), host::Variant(host::Null{}), host::Variant("   ")}) {
    RiempiAzienda();
    servizio->DittaCorrente = ditta;
    CaricaDatiAziendaCorrente(interno.contesto);
    EXPECT_THAT(Azienda(), ElementsAre("", "", "", "", "", "prima"));
  }
  EXPECT_THAT(connessione->Statements(), IsEmpty());
}

TEST_F(ContestoUtente, CompanyZeroIsACompany) {
  servizio->DittaCorrente = 0;
  CaricaDatiAziendaCorrente(interno.contesto);
  EXPECT_THAT(connessione->Statements(), ElementsAre(HasSubstr(" WHERE CG18_DITTA = 0")));
}

TEST_F(ContestoUtente, ACompanyWithoutARowEmptiesAllSixFields) {
  RiempiAzienda();
  servizio->DittaCorrente = 3;
  CaricaDatiAziendaCorrente(interno.contesto);
  EXPECT_THAT(Azienda(), ElementsAre("", "", "", "", "", ""));
}

TEST_F(ContestoUtente, NullsOfTheCompanyAreEmptyExceptItsName) {
  RiempiAzienda();
  servizio->DittaCorrente = 3;
  connessione->Risponde(kAzienda, {{{"CG16_RAGSOANAG", "Azienda"},
                                    {"CG16_INDIRIZZO", host::Null{}},
                                    {"CG16_CAP", " "},
                                    {"CG16_CITTA", host::Null{}},
                                    {"CG16_PROV", host::Null{}},
                                    {"CG16_INDEMAIL", host::Null{}}}});
  CaricaDatiAziendaCorrente(interno.contesto);
  EXPECT_THAT(Azienda(), ElementsAre("Azienda", "", "", "", "", ""));
  RiempiAzienda();
  ConAzienda(host::Null{});
  EXPECT_EQ(NumeroDi([&] { CaricaDatiAziendaCorrente(interno.contesto); }), 94);
  EXPECT_THAT(Azienda(), ElementsAre("prima", "prima", "prima", "prima", "prima", "prima"));
}

TEST_F(ContestoUtente, NoResultOfThisSubjectIsClosed) {
  ConDocumento();
  ConAzienda();
  connessione->Risponde(kIdUtente, {{{"FW07_ID", 42}}});
  servizio->InizializzaRegistroInvioMail("V", "O", "ANNA", "VEN", "T");
  static_cast<void>(GetUtenteApplicazione(interno.contesto, interno.oggetti) +
                    GetGruppoPreferito(interno.contesto, interno.oggetti) +
                    GetCodiceUtente(interno.contesto, 1));
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
}

}  // namespace
}  // namespace orve
