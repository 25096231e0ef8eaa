// The mail settings: what each column becomes, the fallbacks, the channel's object, and NVL.
#include <vector>

#include "fakes/errori.h"
#include "fakes/servizio_di_prova.h"
#include "service/nvl.h"

namespace orve {
namespace {

using fakes::Riga;
using host::Null;
using host::Variant;
using ::testing::ElementsAre;

class ImpostazioniDellaPosta : public fakes::ServizioDiProva {
 protected:
  static Riga RigaMail() {
    return {{"FW24_INDFAXATTIVO", 77}, {"FW24_INDMODALITA", 1},  {"FW24_PATHTMP", "C:\\Invii"},
            {"FW24_READRECEIPT", 1},   {"FW24_FLGMSGPERS", 1},   {"FW24_MSGPERS", "Saluti"},
            {"FW24_BCC", 1},           {"FW24_MAILMODSTDIFF", 3}};
  }
  void Con(const Riga& riga) { connessione->Risponde("FW24_FAXCONFIG", {riga}); }
  void Con(const std::string& colonna, Variant valore) {
    Riga riga = RigaMail();
    riga[colonna] = std::move(valore);
    Con(riga);
  }
  [[nodiscard]] host::Errore ErroreDiLettura() {
    return fakes::ErroreDi([&] { servizio->GetImpostazioni(); });
  }
};

TEST_F(ImpostazioniDellaPosta, TheStatementGoesOutAsItStands) {
  Con(RigaMail());
  EXPECT_TRUE(servizio->GetImpostazioni().IsEmpty());
  EXPECT_THAT(
      journal->Righe({"ConnectionADO.Execute"}),
      ElementsAre("ConnectionADO.Execute 1 SELECT FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_PATHTMP,  "
                  "FW24_READRECEIPT, FW24_FLGMSGPERS, FW24_MSGPERS,FW24_BCC,  FW24_MAILMODSTDIFF  FROM "
                  "FW24_FAXCONFIG  WHERE FW24_INDCANALE = 1"));
}

TEST_F(ImpostazioniDellaPosta, EachColumnGoesToItsField) {
  Con(RigaMail());
  servizio->GetImpostazioni();
  EXPECT_EQ(servizio->SrvMailInstallato, kvSMTPSSLMail);
  EXPECT_EQ(interno.impostazioni.ModalitaStandard, 1);
  EXPECT_EQ(interno.impostazioni.ModalitaStampaDifferita, 3);
  EXPECT_EQ(servizio->tempPath(), "C:\\Invii");
  EXPECT_TRUE(interno.impostazioni.FlagBcc);
  EXPECT_TRUE(servizio->ReadReceipt);
  EXPECT_TRUE(servizio->FlgMsgPers);
  EXPECT_EQ(servizio->MsgPers, "Saluti");
}

TEST_F(ImpostazioniDellaPosta, ColumnsAreReadInTheirOrderAndTheResultIsNotClosed) {
  Con(RigaMail());
  servizio->GetImpostazioni();
  EXPECT_THAT(journal->Righe({"RecordSet", "RisolutorePercorsi"}),
              ElementsAre("RecordSet.Fields FW24_INDFAXATTIVO", "RecordSet.Fields FW24_MAILMODSTDIFF",
                          "RecordSet.Fields FW24_INDMODALITA", "RecordSet.Fields FW24_PATHTMP",
                          "RisolutorePercorsi.ImpostaPercorso C:\\Invii|true", "RisolutorePercorsi.Percorso",
                          "RisolutorePercorsi.ChiudiPercorsi", "RecordSet.Fields FW24_BCC",
                          "RecordSet.Fields FW24_READRECEIPT", "RecordSet.Fields FW24_FLGMSGPERS",
                          "RecordSet.Fields FW24_MSGPERS"));
}

TEST_F(ImpostazioniDellaPosta, OnlyTheFirstRowIsRead) {
  Riga seconda = RigaMail();
  seconda["FW24_INDFAXATTIVO"] = 3;
  connessione->Risponde("FW24_FAXCONFIG", {RigaMail(), seconda});
  servizio->GetImpostazioni();
  EXPECT_EQ(servizio->SrvMailInstallato, kvSMTPSSLMail);
}

TEST_F(ImpostazioniDellaPosta, WithoutAConnectionTheDefaultsApplyAndAMapiSessionIsOpened) {
  servizio->ConnectionADO.reset();
  servizio->SrvMailInstallato = kvSMTPMail;
  servizio->ReadReceipt = true;
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "resta";
  servizio->GetImpostazioni();
  EXPECT_EQ(servizio->SrvMailInstallato, kvSimpleMAPI);
  EXPECT_EQ(servizio->ModalitaInvio(), kvSemiAuto);
  EXPECT_EQ(servizio->tempPath(), "C:\\Temp");
  EXPECT_TRUE(servizio->ReadReceipt);
  EXPECT_TRUE(servizio->FlgMsgPers);
  EXPECT_EQ(servizio->MsgPers, "resta");
  EXPECT_THAT(journal->Righe({"RisolutorePercorsi", "Ambiente", "MAPISession"}),
              ElementsAre("Ambiente.CreaRisolutorePercorsi", "RisolutorePercorsi.ImpostaTipoPercorso 8|",
                          "RisolutorePercorsi.Percorso", "RisolutorePercorsi.ChiudiPercorsi",
                          "Ambiente.CreaMAPISession", "MAPISession.DownLoadMail false",
                          "MAPISession.NewSession true", "MAPISession.SignOn"));
  EXPECT_EQ(interno.oggetti.MapiSessionID, Variant(4711));
}

TEST_F(ImpostazioniDellaPosta, TheDirectoryIsKeptThoughTheResolverFailsAtItsEnd) {
  Con(RigaMail());
  journal->Fallisce("RisolutorePercorsi.ChiudiPercorsi");
  EXPECT_EQ(ErroreDiLettura().Numero(), 1001);
  EXPECT_EQ(servizio->tempPath(), "C:\\Invii");
}

TEST_F(ImpostazioniDellaPosta, WithoutAMailRowTheDefaultsApplyAndTheStandingMessageIsCleared) {
  servizio->ReadReceipt = true;
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "sparisce";
  servizio->GetImpostazioni();
  EXPECT_EQ(servizio->SrvMailInstallato, kvSimpleMAPI);
  EXPECT_EQ(servizio->ModalitaInvio(), kvSemiAuto);
  EXPECT_EQ(servizio->tempPath(), "C:\\Temp");
  EXPECT_FALSE(servizio->ReadReceipt);
  EXPECT_FALSE(servizio->FlgMsgPers);
  EXPECT_EQ(servizio->MsgPers, "");
  EXPECT_EQ(journal->Conta("MAPISession.SignOn"), 1U);
}

TEST_F(ImpostazioniDellaPosta, ARowLeavesAForcedModeInForce) {
  Con(RigaMail());
  servizio->ModalitaInvio(kvManuale);
  servizio->GetImpostazioni();
  EXPECT_EQ(servizio->ModalitaInvio(), kvManuale);
}

TEST_F(ImpostazioniDellaPosta, APlainSmtpChannelIsRaisedToTheSecureOne) {
  Con("FW24_INDFAXATTIVO", 76);
  servizio->GetImpostazioni();
  EXPECT_EQ(servizio->SrvMailInstallato, 77);
}

struct CasoCanaleConfigurato {
  const char* label;
  std::int32_t canale;
  bool soloSmtp;
  std::vector<std::string> wantCreati;
};

TEST_F(ImpostazioniDellaPosta, TheChannelDecidesWhichObjectIsCreated) {
  const CasoCanaleConfigurato casi[] = {
      {"Simple MAPI", 0, false, {"Ambiente.CreaMAPISession"}},
      {"Simple MAPI, SMTP only", 0, true, {}},
      {"Outlook", 1, false, {"Ambiente.CreaOutlook"}},
      {"Outlook, SMTP only", 1, true, {}},
      {"MAPI32", 2, false, {}},
      {"disabled", 3, false, {}},
      {"SMTP", 76, false, {}},
      {"SMTP, SMTP only", 76, true, {}},
      {"secure SMTP", 77, false, {}},
      {"secure SMTP, SMTP only", 77, true, {}},
      {"unknown", fakes::kNessunCanale, false, {}},
  };
  for (const auto& caso : casi) {
    Con("FW24_INDFAXATTIVO", caso.canale);
    servizio->InvioSMTP(caso.soloSmtp);
    journal->Svuota();
    servizio->GetImpostazioni();
    EXPECT_EQ(journal->Righe({"Ambiente.CreaMAPI", "Ambiente.CreaOutlook"}), caso.wantCreati) << caso.label;
  }
}

TEST_F(ImpostazioniDellaPosta, OutlookThatCannotBeCreatedIsToldAndNoError) {
  Con("FW24_INDFAXATTIVO", 1);
  journal->Fallisce("Ambiente.CreaOutlook", host::Errore(host::kOggettoNonCreabile));
  EXPECT_NO_THROW(servizio->GetImpostazioni());
  EXPECT_EQ(interno.oggetti.objOutlookApp, nullptr);
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg Errore in creazione istanza di Outlook|16|ORVE_MAILSERVER: "
                          "CLSFW_MAILSERVER: GetImpostazioni|(assente)"));
}

TEST_F(ImpostazioniDellaPosta, OutlookThatCannotBeCreatedAgainIsNoLongerThere) {
  Con("FW24_INDFAXATTIVO", 1);
  servizio->GetImpostazioni();
  const std::weak_ptr<host::OutlookApplication> primo = interno.oggetti.objOutlookApp;
  ASSERT_FALSE(primo.expired());
  journal->Fallisce("Ambiente.CreaOutlook", host::Errore(host::kOggettoNonCreabile));
  servizio->GetImpostazioni();
  EXPECT_EQ(interno.oggetti.objOutlookApp, nullptr);
  EXPECT_TRUE(primo.expired());
}

struct CasoColonna {
  const char* label;
  const char* colonna;
  Variant valore;
  std::function<bool(CLSFW_MAILSERVER&)> vale;
};

TEST_F(ImpostazioniDellaPosta, NullableColumnsHaveTheirReplacements) {
  const CasoColonna casi[] = {
      {"deferred mode null is manual", "FW24_MAILMODSTDIFF", Null{},
       [&](auto&) { return interno.impostazioni.ModalitaStampaDifferita == kvManuale; }},
      {"deferred mode blank is manual", "FW24_MAILMODSTDIFF", "  ",
       [&](auto&) { return interno.impostazioni.ModalitaStampaDifferita == kvManuale; }},
      {"copy null", "FW24_BCC", Null{}, [&](auto&) { return !interno.impostazioni.FlagBcc; }},
      {"copy 0", "FW24_BCC", 0, [&](auto&) { return !interno.impostazioni.FlagBcc; }},
      {"copy 2", "FW24_BCC", 2, [&](auto&) { return interno.impostazioni.FlagBcc; }},
      {"receipt 2 is no", "FW24_READRECEIPT", 2, [](auto& s) { return !s.ReadReceipt; }},
      {"receipt null is no", "FW24_READRECEIPT", Null{}, [](auto& s) { return !s.ReadReceipt; }},
      {"receipt 1 is yes", "FW24_READRECEIPT", 1, [](auto& s) { return s.ReadReceipt; }},
      {"personal message 2 is no", "FW24_FLGMSGPERS", 2, [](auto& s) { return !s.FlgMsgPers; }},
      {"personal message null is no", "FW24_FLGMSGPERS", Null{}, [](auto& s) { return !s.FlgMsgPers; }},
      {"message null is empty", "FW24_MSGPERS", Null{}, [](auto& s) { return s.MsgPers.empty(); }},
      {"message of blanks is empty", "FW24_MSGPERS", "   ", [](auto& s) { return s.MsgPers.empty(); }},
  };
  for (const auto& caso : casi) {
    Con(caso.colonna, caso.valore);
    servizio->GetImpostazioni();
    EXPECT_TRUE(caso.vale(*servizio)) << caso.label;
  }
}

TEST_F(ImpostazioniDellaPosta, ANullReplacesWhatTheFieldHeldBefore) {
  Con(RigaMail());
  servizio->GetImpostazioni();
  Riga vuota = RigaMail();
  for (const char* colonna :
       {"FW24_MAILMODSTDIFF", "FW24_BCC", "FW24_READRECEIPT", "FW24_FLGMSGPERS", "FW24_MSGPERS"}) {
    vuota[colonna] = Null{};
  }
  Con(vuota);
  servizio->GetImpostazioni();
  servizio->IsStampaDifferita(true);
  EXPECT_EQ(servizio->ModalitaInvio(), kvManuale);
  EXPECT_FALSE(interno.impostazioni.FlagBcc);
  EXPECT_FALSE(servizio->ReadReceipt);
  EXPECT_FALSE(servizio->FlgMsgPers);
  EXPECT_EQ(servizio->MsgPers, "");
}

TEST_F(ImpostazioniDellaPosta, ANullInAColumnWithoutReplacementFails) {
  for (const char* colonna : {"FW24_INDFAXATTIVO", "FW24_INDMODALITA", "FW24_PATHTMP"}) {
    Con(colonna, Null{});
    EXPECT_EQ(ErroreDiLettura().Numero(), 94) << colonna;
  }
}

TEST_F(ImpostazioniDellaPosta, ErrorsArePassedOnWithTheNameDirectlyAfterTheDescription) {
  journal->Fallisce("ConnectionADO.Execute", {4060, "Motore", "database chiuso"});
  const auto errore = ErroreDiLettura();
  EXPECT_EQ(errore.Numero(), 4060);
  EXPECT_EQ(errore.Sorgente(), "Motore");
  EXPECT_EQ(errore.Descrizione(), "database chiusoORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni");
}

TEST_F(ImpostazioniDellaPosta, AFailedSignOnIsPassedOn) {
  Con("FW24_INDFAXATTIVO", 0);
  journal->Fallisce("MAPISession.SignOn", {32003, "MAPI", "accesso negato"});
  EXPECT_EQ(ErroreDiLettura().Descrizione(),
            "accesso negatoORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni");
}

TEST_F(ImpostazioniDellaPosta, FieldsReadBeforeAFailureKeepTheirNewValues) {
  Con("FW24_INDMODALITA", Null{});
  interno.impostazioni.ModalitaStandard = 2;
  EXPECT_EQ(ErroreDiLettura().Numero(), 94);
  EXPECT_EQ(servizio->SrvMailInstallato, kvSMTPSSLMail);
  EXPECT_EQ(interno.impostazioni.ModalitaStampaDifferita, 3);
  EXPECT_EQ(interno.impostazioni.ModalitaStandard, 2);
}

TEST_F(ImpostazioniDellaPosta, TheTemporaryDirectorysFailureCarriesBothNames) {
  servizio->ConnectionADO.reset();
  journal->Fallisce("RisolutorePercorsi.Percorso", {76, "Percorsi", "manca"});
  EXPECT_EQ(ErroreDiLettura().Descrizione(),
            "mancaORVE_MAILSERVER: CLSFW_MAILSERVER: GetPathTempORVE_MAILSERVER: CLSFW_MAILSERVER: "
            "GetImpostazioni");
}

TEST_F(ImpostazioniDellaPosta, TheInstallationDirectoryIsResolvedAtEveryRead) {
  EXPECT_EQ(servizio->PercorsoInstallazione(), "C:\\Programmi\\Orve");
  EXPECT_EQ(servizio->PercorsoInstallazione(), "C:\\Programmi\\Orve");
  EXPECT_THAT(
      journal->Righe({"RisolutorePercorsi.Imposta"}),
      ElementsAre("RisolutorePercorsi.ImpostaTipoPercorso 6|", "RisolutorePercorsi.ImpostaTipoPercorso 6|"));
}

TEST_F(ImpostazioniDellaPosta, AFailureOfTheInstallationDirectoryIsPassedOn) {
  journal->Fallisce("Ambiente.CreaRisolutorePercorsi", {429, "Host", "assente"});
  try {
    (void)servizio->PercorsoInstallazione();
    FAIL();
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 429);
    EXPECT_EQ(errore.Descrizione(), "assenteORVE_MAILSERVER: CLSFW_MAILSERVER: GetPercorsoInstallazione");
  }
}

struct CasoNvl {
  const char* label;
  Variant valore;
  Variant sostituto;
  Variant want;
};

TEST(Nvl, GivesTheValueOrItsReplacement) {
  const CasoNvl casi[] = {
      {"null", Null{}, "x", "x"},
      {"empty", {}, "x", "x"},
      {"empty text", "", "x", "x"},
      {"blanks count as missing", "   ", "x", "x"},
      {"a number 0 is a value", 0, 5, 0},
      {"a value keeps its type", 3.5, 0, 3.5},
      {"a text keeps its blanks", " a ", "x", " a "},
      {"false is a value", false, true, false},
  };
  for (const auto& caso : casi) EXPECT_EQ(NVL(caso.valore, caso.sostituto), caso.want) << caso.label;
}

TEST(Nvl, PassesErrorsOnWithItsName) {
  try {
    (void)NVL(Variant::Array{}, "x");
    FAIL();
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 13);
    EXPECT_EQ(errore.Descrizione(), "Tipo non corrispondente: ORVE_MAILSERVER: CLSFW_MAILSERVER: NVL");
  }
}

}  // namespace
}  // namespace orve
