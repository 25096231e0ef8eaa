// The guide for developers of calling applications: its C++ is in this file exactly as in the guide, and what
// its tables say about outcomes, placeholders and events is what the library does.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "content/body_templates.h"
#include "fakes/headless.h"
#include "fakes/servizio_di_prova.h"
#include "orve-mailserver/addressing/destinatari.h"
#include "places.h"
#include "text/text.h"

namespace {

enum class Esito { kInviato, kRifiutato, kFallito, kIgnoto };

// `esiti`: the EsitoInvio that was set before each line that the register object took.
Esito EsitoDi(const orve::CLSFW_MAILSERVER& servizio, const std::vector<std::int32_t>& esiti) {
  const bool inviato = std::find(esiti.begin(), esiti.end(), orve::host::kInviato) != esiti.end();
  if (inviato) return Esito::kInviato;
  if (servizio.Stato() == orve::kvErroreInvioMail) return Esito::kFallito;
  if (!esiti.empty() || servizio.Stato() == orve::kvInvioNonImpostato) return Esito::kRifiutato;
  return Esito::kIgnoto;
}

// Kept by the program's Ambiente, whose `Osservatore()` hands it out.
class EsitiDellInvio : public orve::host::OsservatoreInvio {
 public:
  std::vector<std::int32_t> esiti;  // for EsitoDi
  std::string motivo;               // what ended the delivery, in the server's words
  bool incerta = false;             // it failed, and the message may have arrived all the same
  std::string rifiutato;            // the file that was refused: it did not go, nor did those after it

  void RigaRegistrata(std::int32_t esito, const std::string& /*nome*/, const std::string& /*indirizzo*/,
                      const std::string& /*risultato*/) override {
    esiti.push_back(esito);
  }
  void ConsegnaFinita(const orve::host::EsitoConsegna& esito) override {
    motivo = esito.fine.motivo;
    incerta = esito.fine.incerta;
  }
  void AllegatoRifiutato(const std::string& percorso, const orve::host::Errore& /*errore*/) override {
    rifiutato = percorso;
  }
};

void InviaPerCodice(const std::shared_ptr<orve::host::Ambiente>& ambiente,
                    const std::shared_ptr<orve::host::Connection>& database,
                    const std::shared_ptr<orve::host::InterfacciaHost>& interfaccia) {
  orve::CLSFW_MAILSERVER servizio(ambiente);  // one object, one message
  servizio.ConnectionADO = database;
  servizio.ActiveInterface = interfaccia;
  servizio.DittaCorrente = 1;
  servizio.IsPec(false);
  servizio.INFO_TipoDoc = "FT";
  servizio.INFO_NumDoc = "12";
  servizio.INFO_RagSocCliFor("Cliente Uno S.r.l.");
  servizio.GetImpostazioni();                                                            // may raise
  servizio.InizializzaRegistroInvioMailMultiprofilo("FATTURE", "Stampa", 7, "Fattura");  // may raise
  servizio.ModalitaInvio(orve::kvAutomatico);
  servizio.vOggetto = "Fattura 12/2026";
  servizio.vFlagCorpo = 1;
  servizio.vCorpoMail = "Spett.le ***(Nome)***,\r\nin allegato la fattura.\r\n\r\n***(AziendaCorr)***";
  servizio.vMailAttachment = R"(C:\Documenti\fattura-12.pdf)";
  servizio.AddAllegato(R"(C:\Documenti\condizioni.pdf)");
  servizio.AvviaProceduraInvio(1001, orve::kvDestinatarioFaxCliente);
}

void InviaACollezione(orve::CLSFW_MAILSERVER& servizio,
                      const std::shared_ptr<orve::host::Ambiente>& ambiente) {
  servizio.vCollDestinatari = std::make_shared<orve::CollDestinatari>(ambiente);
  servizio.vCollDestinatari->Add("anna@cliente.example", "Anna Rossi", "Cliente Uno S.r.l.");
  servizio.vCollDestinatari->AddFromLista("copia@cliente.example", "Ufficio acquisti", "", orve::kvCasellaCC);
  servizio.AvviaProceduraInvio();
}

void AscoltaPrimaDellInvio(orve::CLSFW_MAILSERVER& servizio) {
  servizio.BeforeSendMail = [](auto& oggetto, auto& corpo, auto&, auto& destinatariCC, auto&, auto&) {
    oggetto += " (copia di cortesia)";
    corpo += "\r\n***(Utente)***";
    if (!destinatariCC.empty()) destinatariCC += ";";
    destinatariCC += "Archivio<archivio@azienda.example>";
  };
}

}  // namespace

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

std::string Documento(const std::string& percorso) {
  std::ifstream file(places::Source(percorso), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

const std::string& Guida() {
  static const std::string testo = Documento("docs/for-integrators.md");
  return testo;
}

// The blocks in that language, each with the margin before its non-empty lines.
std::vector<std::string> Blocchi(std::string_view linguaggio, std::string_view margine) {
  std::vector<std::string> blocchi;
  bool dentro = false;
  for (const auto riga : text::Split(Guida(), '\n')) {
    if (riga == "```") {
      dentro = false;
    } else if (riga.starts_with("```") && riga.substr(3) == linguaggio) {
      dentro = true;
      blocchi.emplace_back();
    } else if (dentro) {
      if (!riga.empty()) blocchi.back().append(margine);
      blocchi.back().append(riga).append("\n");
    }
  }
  return blocchi;
}

class GuidaIntegratori : public fakes::ServizioDiProva {
 protected:
  GuidaIntegratori() {
    connessione->Risponde("FROM FW24_FAXCONFIG", {{{"FW24_INDFAXATTIVO", 76},
                                                   {"FW24_MAILMODSTDIFF", 2},
                                                   {"FW24_INDMODALITA", 2},
                                                   {"FW24_PATHTMP", "C:\\Temp"},
                                                   {"FW24_BCC", 0},
                                                   {"FW24_READRECEIPT", 0},
                                                   {"FW24_FLGMSGPERS", 0},
                                                   {"FW24_MSGPERS", host::Null{}}}});
    connessione->Risponde("'20261114'", {{{"CG16_INDEMAIL", "cliente@x.example"},
                                          {"CG16_EMAIL_PEC", host::Null{}},
                                          {"CG16_RAGSOANAG", "Cliente Uno"}}});
    connessione->Risponde("WHERE CG18_DITTA = 1", {{{"CG16_RAGSOANAG", "Azienda S.p.A."},
                                                    {"CG16_INDIRIZZO", "Via Po 1"},
                                                    {"CG16_CAP", "10100"},
                                                    {"CG16_CITTA", "Torino"},
                                                    {"CG16_PROV", "TO"},
                                                    {"CG16_INDEMAIL", "info@azienda.example"}}});
    const fakes::Riga account = {{"FW23_SERVERNAME", "smtp.azienda.example"},
                                 {"FW23_PORT", 587},
                                 {"FW23_TIMEOUT", 60},
                                 {"FW23_INDAUTH", 0},
                                 {"FW23_SSL", 1},
                                 {"FW98_IDACCOUNT", 12},
                                 {"FW98_MAILADDRESS", "noi@azienda.example"},
                                 {"FW98_USERNAME", ""},
                                 {"FW98_PASSWORD", ""},
                                 {"ALIAS", "Noi"},
                                 {"LETTURA", 1},
                                 {"CONSEGNA", 2}};
    connessione->Risponde("FW99_ISDEFAULT = 1", {account});
    connessione->Risponde("ORDER BY FW99_ISDEFAULT", {account});
    connessione->Risponde("SELECT  FW07_USERNAME,FW07_DESCR",
                          {{{"FW07_USERNAME", "anna"}, {"FW07_DESCR", "Anna dell'ufficio"}}});
    connessione->Risponde("SELECT  FW06_CODICE,FW06_DESCR",
                          {{{"FW06_CODICE", "AMM"}, {"FW06_DESCR", "Amministrazione"}}});
    connessione->Risponde("SELECT FW07_CODICE  FROM", {{{"FW07_CODICE", "U07"}}});
    connessione->Risponde("SELECT FW07_CODICE_FW06  FROM", {{{"FW07_CODICE_FW06", "AMM"}}});
  }

  /// A service that has its settings and its register.
  void Prepara() {
    servizio->DittaCorrente = 1;
    servizio->INFO_RagSocCliFor("Cliente Uno S.r.l.");
    (void)servizio->GetImpostazioni();
    servizio->InizializzaRegistroInvioMailMultiprofilo("FATTURE", "Stampa", 7, "Fattura");
    servizio->ModalitaInvio(kvAutomatico);
    servizio->vOggetto = "Fattura 12/2026";
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "In allegato.";
  }
  [[nodiscard]] std::vector<std::string> Invio() const {
    return journal->Righe({"smtp.AddAttachment", "smtp.AddRecipientEx", "smtp.Subject", "smtp.BodyText"});
  }
  /// The outcome of each line that the register accepted.
  [[nodiscard]] std::vector<std::int32_t> Esiti() const {
    std::vector<std::int32_t> esiti;
    std::int32_t ultimo = -1;
    for (const auto& riga :
         journal->Righe({"ObjRegistroInvio.EsitoInvio ", "ObjRegistroInvio.RegistraInvio "})) {
      if (riga.starts_with("ObjRegistroInvio.EsitoInvio ")) {
        ultimo = host::Variant(riga.substr(28)).ToInt32();
      } else {
        esiti.push_back(ultimo);
      }
    }
    return esiti;
  }
};

TEST_F(GuidaIntegratori, ItsCodeIsTheCodeOfThisFile) {
  const std::string questo = Documento("tests/service/integrator_guide_test.cpp");
  const auto alMargine = Blocchi("cpp", "");
  const auto rientrati = Blocchi("cpp", "  ");
  ASSERT_THAT(alMargine, SizeIs(5));
  for (std::size_t i = 0; i < alMargine.size(); ++i) {
    EXPECT_TRUE(questo.find("\n" + alMargine[i]) != std::string::npos ||
                questo.find("\n" + rientrati[i]) != std::string::npos)
        << alMargine[i];
  }
}

TEST_F(GuidaIntegratori, ItsScriptIsTheSamples) {
  const std::string esempio = Documento("examples/vbscript/invia_fattura.vbs");
  const auto blocchi = Blocchi("vb", "");
  ASSERT_THAT(blocchi, SizeIs(1));
  EXPECT_THAT(esempio, HasSubstr(blocchi[0]));
}

TEST_F(GuidaIntegratori, ItsSendByCodeLeavesAndIsRecorded) {
  InviaPerCodice(ambiente, connessione, fakes::CreaFakeInterfaccia(*ambiente));
  EXPECT_THAT(
      Invio(),
      ElementsAre("smtp.AddAttachment C:\\Documenti\\fattura-12.pdf",
                  "smtp.AddAttachment C:\\Documenti\\condizioni.pdf",
                  "smtp.AddRecipientEx Cliente Uno <cliente@x.example> 0", "smtp.Subject Fattura 12/2026",
                  "smtp.BodyText Spett.le Cliente Uno,\r\nin allegato la fattura.\r\n\r\nAzienda S.p.A."));
  EXPECT_THAT(Esiti(), ElementsAre(host::kInviato));
}

TEST_F(GuidaIntegratori, ItsObserverKnowsWhatTheServerSaidAndWhichFileIsMissing) {
  EsitiDellInvio osservati;
  ambiente->osservatore = &osservati;
  ambiente->risultatoSmtp = 5;
  ambiente->fineConsegna = {"rete interrotta", true};
  journal->Fallisce("smtp.AddAttachment C:\\Documenti\\condizioni.pdf");
  InviaPerCodice(ambiente, connessione, fakes::CreaFakeInterfaccia(*ambiente));
  EXPECT_THAT(osservati.esiti, ElementsAre(host::kNonInviato));
  EXPECT_EQ(osservati.motivo, "rete interrotta");
  EXPECT_TRUE(osservati.incerta);
  EXPECT_EQ(osservati.rifiutato, "C:\\Documenti\\condizioni.pdf");
}

TEST_F(GuidaIntegratori, ItsPayloadIsTheOneOfThatSend) {
  InviaPerCodice(ambiente, connessione, fakes::CreaFakeInterfaccia(*ambiente));
  const auto blocchi = Blocchi("text", "");
  ASSERT_THAT(blocchi, SizeIs(1));
  const std::string payload = blocchi[0].substr(0, blocchi[0].size() - 1);
  EXPECT_EQ(connessione->Statements().back(),
            "exec SPFW_AttivaEventoGestionale 1, 89, 7, '" + payload + "' , 1");
}

TEST_F(GuidaIntegratori, ItsSendToACollectionLeavesWithoutALookUp) {
  Prepara();
  journal->Svuota();
  InviaACollezione(*servizio, ambiente);
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx Anna Rossi <anna@cliente.example> 0",
                          "smtp.AddRecipientEx Ufficio acquisti <copia@cliente.example> 1"));
  EXPECT_THAT(Esiti(), ElementsAre(host::kInviato, host::kInviato));
}

TEST_F(GuidaIntegratori, ItsHandlerChangesTheMessage) {
  Prepara();
  servizio->vMailAttachment = "C:\\Documenti\\fattura-12.pdf";
  AscoltaPrimaDellInvio(*servizio);
  InviaACollezione(*servizio, ambiente);
  EXPECT_THAT(Invio(), ElementsAre("smtp.AddAttachment C:\\Documenti\\fattura-12.pdf",
                                   "smtp.AddRecipientEx Anna Rossi <anna@cliente.example> 0",
                                   "smtp.AddRecipientEx Ufficio acquisti <copia@cliente.example>;Archivio "
                                   "<archivio@azienda.example> 1",
                                   "smtp.Subject Fattura 12/2026 (copia di cortesia)",
                                   "smtp.BodyText In allegato.\r\nanna"));
}

TEST_F(GuidaIntegratori, ItsPlaceholdersAreThoseOfTheLibraryInTheirOrder) {
  servizio->vNome = "1";
  servizio->vDitta = "2";
  servizio->vIndDestinatario = "3";
  interno.contesto.DescGruppoCorrente = interno.contesto.DescUtenteCorrente = "prima";
  interno.contesto.AziendaCorr = "8";
  interno.contesto.AzCorrInd = "9";
  interno.contesto.AzCorrCAP = "10";
  interno.contesto.AzCorrCitta = "11";
  interno.contesto.AzCorrProv = "12";
  interno.contesto.AzCorrMail = "13";
  std::vector<std::string> valori;
  for (const auto riga : text::Split(Guida(), '\n')) {
    constexpr std::string_view kInizio = "| `***(";
    if (!riga.starts_with(kInizio)) continue;
    valori.push_back(CompilaTestoMail(interno.messaggio, interno.contesto, interno.oggetti,
                                      std::string(riga.substr(3, riga.find('`', 3) - 3))));
  }
  EXPECT_THAT(valori, ElementsAre("1", "2", "3", "AMM", "anna", "Amministrazione", "Anna dell'ufficio", "8",
                                  "9", "10", "11", "12", "13"));
}

// What a program can know about a send, by what happened to it.

struct CasoEsito {
  const char* label;
  void (*prepara)(CLSFW_MAILSERVER& servizio, fakes::FakeAmbiente& ambiente);
  const char* codice;  // none: to a collection
  ::Esito want;
};

const CasoEsito kCasiEsito[] = {
    {"sent by code", [](auto&, auto&) {}, "1001", ::Esito::kInviato},
    {"sent to a collection", [](auto&, auto&) {}, nullptr, ::Esito::kInviato},
    {"disabled", [](auto& servizio, auto&) { servizio.SrvMailInstallato = kvNoMail; }, "1001",
     ::Esito::kRifiutato},
    {"nobody found", [](auto& servizio, auto&) { servizio.IsPec(true); }, "1001", ::Esito::kRifiutato},
    {"bad address", [](auto& servizio, auto&) { servizio.DestinatariA("rotto"); }, "1001",
     ::Esito::kRifiutato},
    {"refused by the server", [](auto&, auto& ambiente) { ambiente.risultatoSmtp = 4; }, "1001",
     ::Esito::kFallito},
    {"a member that raises", [](auto&, auto& ambiente) { ambiente.journal->Fallisce("smtp.Subject"); },
     "1001", ::Esito::kFallito},
    {"no component", [](auto&, auto& ambiente) { ambiente.journal->Fallisce("Ambiente.CreaComponenteSmtp"); },
     "1001", ::Esito::kIgnoto},
    {"no Outlook", [](auto& servizio, auto&) { servizio.SrvMailInstallato = kvOutlook; }, nullptr,
     ::Esito::kIgnoto},
    {"Simple MAPI refuses",
     [](auto& servizio, auto& ambiente) {
       servizio.SrvMailInstallato = kvSimpleMAPI;
       ambiente.journal->Fallisce("MAPIMessages.Send");
     },
     nullptr, ::Esito::kFallito},
    {"MAPI32 refuses",
     [](auto& servizio, auto& ambiente) {
       servizio.SrvMailInstallato = kvMAPI;
       ambiente.esitoInvioMapi = 2;
     },
     nullptr, ::Esito::kFallito},
    {"MAPI32 without a session",
     [](auto& servizio, auto& ambiente) {
       servizio.SrvMailInstallato = kvMAPI;
       ambiente.esitoLogonMapi = 3;
     },
     nullptr, ::Esito::kIgnoto},
    {"the window was closed",
     [](auto& servizio, auto& ambiente) {
       servizio.ModalitaInvio(kvManuale);
       ambiente.persona = [](auto& finestra) { finestra.Preme("CMD_ANNULLA"); };
     },
     "1001", ::Esito::kIgnoto},
    {"the window was confirmed",
     [](auto& servizio, auto& ambiente) {
       servizio.ModalitaInvio(kvManuale);
       ambiente.persona = [](auto& finestra) { finestra.Preme("cmd_Invia"); };
     },
     "1001", ::Esito::kInviato},
};

TEST_F(GuidaIntegratori, TheOutcomeIsReadFromStateAndRegister) {
  for (const auto& caso : kCasiEsito) {
    journal->DimenticaPiani();
    ambiente->risultatoSmtp = -1;
    ambiente->esitoInvioMapi = ambiente->esitoLogonMapi = 0;
    servizio = std::make_unique<CLSFW_MAILSERVER>(ambiente);
    servizio->ConnectionADO = connessione;
    Prepara();
    journal->Svuota();
    caso.prepara(*servizio, *ambiente);
    if (caso.codice != nullptr) {
      servizio->AvviaProceduraInvio(caso.codice, kvDestinatarioFaxCliente);
    } else {
      servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
      servizio->vCollDestinatari->Add("anna@cliente.example", "Anna Rossi");
      servizio->AvviaProceduraInvio();
    }
    EXPECT_EQ(EsitoDi(*servizio, Esiti()), caso.want) << caso.label;
  }
}

// Why one object sends one message.
TEST_F(GuidaIntegratori, ASecondSendByCodeGoesToTheFirstCustomerAgain) {
  connessione->Risponde("CG44_CLIFOR = 2002", {{{"CG16_INDEMAIL", "altro@y.example"},
                                                {"CG16_EMAIL_PEC", host::Null{}},
                                                {"CG16_RAGSOANAG", "Cliente Due"}}});
  Prepara();
  servizio->vCorpoMail = "Per ***(Nome)***";
  servizio->vMailAttachment = "C:\\Documenti\\fattura-12.pdf";
  servizio->AvviaProceduraInvio(1001, kvDestinatarioFaxCliente);
  journal->Svuota();
  servizio->AvviaProceduraInvio(2002, kvDestinatarioFaxCliente);
  EXPECT_THAT(Invio(), ElementsAre("smtp.AddAttachment C:\\Documenti\\fattura-12.pdf",
                                   "smtp.AddAttachment C:\\Documenti\\fattura-12.pdf",
                                   "smtp.AddRecipientEx Cliente Uno <cliente@x.example>;Cliente Uno "
                                   "<cliente@x.example> 0",
                                   "smtp.Subject Fattura 12/2026", "smtp.BodyText Per Cliente Uno"));
}

// The look-up leaves the name in the field to which the channel appends its own.
TEST_F(GuidaIntegratori, AStandingMessageByLookUpNamesTheRecipientTwice) {
  Prepara();
  servizio->vFlagCorpo = 0;
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Per ***(Nome)***, ***(IndEmail)***";
  servizio->AvviaProceduraInvio(1001, kvDestinatarioFaxCliente);
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}),
              ElementsAre("smtp.BodyText Per Cliente UnoCliente Uno, Cliente Uno <cliente@x.example>"));
}

TEST_F(GuidaIntegratori, ADirectSendFromAnUnknownAccountLeavesFromTheOneThatIsLoaded) {
  Prepara();
  servizio->InviaMailDiretta(99, "Anna<anna@cliente.example>");
  EXPECT_THAT(journal->Righe({"smtp.FromAddr ", "smtp.AddRecipientEx"}),
              ElementsAre("smtp.FromAddr <noi@azienda.example>",
                          "smtp.AddRecipientEx Anna <anna@cliente.example> 0"));
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(GuidaIntegratori, WhatAMessageObjectRaisesWhileAFailureIsReportedEndsThere) {
  Prepara();
  servizio->ModalitaInvio(kvManuale);
  journal->Fallisce("Ambiente.CreaForm");
  journal->Fallisce("ObjMessaggi.MostraMsg", {1002, "Messaggi", "senza finestra"});
  EXPECT_NO_THROW(servizio->AvviaProceduraInvio(1001, kvDestinatarioFaxCliente));
  EXPECT_FALSE(Messaggi().empty());
}

}  // namespace
}  // namespace orve
