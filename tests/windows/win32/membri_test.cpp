// What reaches the outside objects: every member under its own name and case, with the kind of call, the
// values and their types, in the order of the calls.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/errori.h"
#include "orve-mailserver/host/errore.h"
#include "win32/ambiente_win32.h"
#include "win32/classi.h"
#include "win32/conversions.h"
#include "win32/oggetti_chiamante.h"
#include "windows/win32/doppio.h"

namespace orve::adapters::win32 {
namespace {

using fakes::NumeroDi;
using prova::ArrivoCom;
using testing::ElementsAre;

constexpr WORD kLettura = DISPATCH_PROPERTYGET;
constexpr WORD kScrittura = DISPATCH_PROPERTYPUT;
constexpr WORD kAssegnazione = DISPATCH_PROPERTYPUTREF;
constexpr WORD kChiamata = DISPATCH_METHOD;

class MembriTest : public testing::Test {
 protected:
  // An object whose members are given by kind, each name followed by a blank.
  ComPtr<prova::DoppioCom> Doppio(const std::string& nome, const std::string& scritti,
                                  const std::string& chiamati = {}) {
    auto doppio = prova::CreaDoppio(nome, giornale);
    doppio->ScriviTipi();
    for (const auto& membro : Nomi(scritti)) doppio->Membro(membro, kScrittura, prova::Nulla());
    for (const auto& membro : Nomi(chiamati)) doppio->Membro(membro, kChiamata, prova::Nulla());
    return doppio;
  }
  static std::function<ComPtr<IDispatch>()> Da(const ComPtr<prova::DoppioCom>& doppio) {
    return [doppio] { return ComPtr<IDispatch>(doppio.Get()); };
  }
  static CLSID Identificatore(const wchar_t* testo) {
    CLSID identificatore;
    CLSIDFromString(testo, &identificatore);
    return identificatore;
  }

  // Other tests of the same Wine may have left classes of the host behind.
  MembriTest() {
    for (const wchar_t* classe :
         {classi::kOutlook, classi::kMAPISession, classi::kMAPIMessages, classi::kParametri,
          classi::kRegistroInvio, classi::kMessaggi, classi::kFormatoData, classi::kFormatoNumero,
          classi::kRisolutorePercorsi, classi::kCifratorePassword, classi::kSelettoreFile,
          classi::kOggettoFile, classi::kCollezioneFile}) {
      prova::DimenticaClasse(classe);
    }
  }

  prova::AppartamentoCom appartamento;
  prova::GiornaleCom giornale = std::make_shared<std::vector<std::string>>();
  std::shared_ptr<host::Ambiente> ambiente = CreaAmbienteWin32();

 private:
  static std::vector<std::string> Nomi(const std::string& elenco) {
    std::vector<std::string> nomi;
    for (std::size_t inizio = 0; inizio < elenco.size();) {
      const auto fine = std::min(elenco.find(' ', inizio), elenco.size());
      nomi.push_back(elenco.substr(inizio, fine - inizio));
      inizio = fine + 1;
    }
    return nomi;
  }
};

TEST_F(MembriTest, TheConnectionRunsAStatementAndReadsItsFields) {
  const auto campo = Doppio("Field", "");
  campo->Membro("Value", kLettura, prova::Valore("Rossi"));
  const auto campi = Doppio("Fields", "");
  campi->Membro("Item", kLettura, prova::Oggetto(campo));
  const auto righe = Doppio("Recordset", "", "MoveFirst MoveNext Close");
  righe->Membro("EOF", kLettura, prova::Valore(false));
  righe->Membro("Fields", kLettura, prova::Oggetto(campi));
  righe->Membro("State", kLettura, prova::Valore(1));
  const auto connessione = Doppio("Connection", "");
  connessione->Membro("Execute", kChiamata, prova::Oggetto(righe));

  const auto risultato = ConnessioneDa(connessione.Get())->Execute("SELECT 'perché'", 1);
  EXPECT_FALSE(risultato->Eof());
  risultato->MoveFirst();
  EXPECT_EQ(host::Leggi(*risultato, "FW07_CODICE").ToText(), "Rossi");
  risultato->MoveNext();
  EXPECT_EQ(risultato->State(), 1);
  risultato->Close();
  EXPECT_THAT(*giornale, ElementsAre("Connection.Execute lettura (SELECT 'perché':8|&0:12|1:3)",
                                     "Recordset.EOF lettura", "Recordset.MoveFirst chiamata",
                                     "Recordset.Fields lettura", "Fields.Item lettura (FW07_CODICE:8)",
                                     "Field.Value lettura", "Recordset.MoveNext chiamata",
                                     "Recordset.State lettura", "Recordset.Close chiamata"));
}

TEST_F(MembriTest, ACommandBelongsToTheConnectionAndReturnsItsParameter) {
  const auto parametro = Doppio("Parameter", "");
  parametro->Membro("Value", kLettura, prova::Valore(7));
  const auto parametri = Doppio("Parameters", "", "Append");
  parametri->Membro("Item", kLettura, prova::Oggetto(parametro));
  const auto comando = Doppio("Command", "CommandType CommandText", "Execute");
  comando->Membro("ActiveConnection", kAssegnazione, prova::Nulla());
  comando->Membro("CreateParameter", kChiamata, prova::Oggetto(parametro));
  comando->Membro("Parameters", kLettura, prova::Oggetto(parametri));
  const prova::ClasseCom classe(classi::kComando, Da(comando));
  const auto connessione = Doppio("Connection", "");

  const auto fatto = ConnessioneDa(connessione.Get())->CreateCommand();
  fatto->CommandType(host::kProceduraMemorizzata);
  fatto->CommandText("SPFW_GetUserIDFromConnection");
  fatto->ParametersAppend(fatto->CreateParameter("IDUtenteApp", 3, 2, 0));
  fatto->Execute();
  EXPECT_EQ(fatto->ParametersItem("IDUtenteApp")->Value().ToInt32(), 7);
  EXPECT_THAT(*giornale, ElementsAre("Command.ActiveConnection assegnazione ((oggetto):9)",
                                     "Command.CommandType scrittura (4:3)",
                                     "Command.CommandText scrittura (SPFW_GetUserIDFromConnection:8)",
                                     "Command.CreateParameter lettura (IDUtenteApp:8|3:3|2:3|0:3)",
                                     "Command.Parameters lettura", "Parameters.Append chiamata ((oggetto):9)",
                                     "Command.Execute chiamata", "Command.Parameters lettura",
                                     "Parameters.Item lettura (IDUtenteApp:8)", "Parameter.Value lettura"));
}

TEST_F(MembriTest, AnErrorOfTheEngineArrivesWithItsNumberSourceAndText) {
  const auto connessione = Doppio("Connection", "");
  connessione->Membro("Execute", kChiamata, [](const ArrivoCom&) -> VariantCom {
    throw prova::RifiutoCom{static_cast<HRESULT>(0x80040E37), 0, L"Microsoft OLE DB Provider for SQL Server",
                            L"Nome di oggetto 'FW24_FAXCONFIG' non valido."};
  });
  try {
    (void)ConnessioneDa(connessione.Get())->Execute("SELECT", 1);
    FAIL();
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), static_cast<std::int32_t>(0x80040E37));
    EXPECT_EQ(errore.Sorgente(), "Microsoft OLE DB Provider for SQL Server");
    EXPECT_EQ(errore.Descrizione(), "Nome di oggetto 'FW24_FAXCONFIG' non valido.");
  }
}

TEST_F(MembriTest, NoObjectHandedInIsAnAbsentObject) {
  EXPECT_EQ(ConnessioneDa(nullptr), nullptr);
  EXPECT_EQ(InterfacciaHostDa(nullptr), nullptr);
  EXPECT_EQ(ManagerRubricaDa(nullptr), nullptr);
  EXPECT_EQ(ComDi(ConnessioneDa(nullptr)), nullptr);
}

TEST_F(MembriTest, AnObjectHandedInComesBackAsTheSameObject) {
  const auto oggetto = Doppio("oggetto", "");
  EXPECT_EQ(ComDi(ConnessioneDa(oggetto.Get())), static_cast<IDispatch*>(oggetto.Get()));
  EXPECT_EQ(ComDi(InterfacciaHostDa(oggetto.Get())), static_cast<IDispatch*>(oggetto.Get()));
  EXPECT_EQ(ComDi(ManagerRubricaDa(oggetto.Get())), static_cast<IDispatch*>(oggetto.Get()));
  EXPECT_EQ(oggetto->Riferiti(), 1U);
}

TEST_F(MembriTest, TheHostsInterfaceLeadsToUserAndMessages) {
  const auto utente = Doppio("Utente", "");
  utente->Membro("IdUtente", kLettura, prova::Valore(12));
  const auto messaggi = Doppio("Messaggi", "");
  messaggi->Membro("TitoloFinestra", kChiamata, prova::Valore("Invio email... - ORVE"));
  messaggi->Membro("MostraMsg", kChiamata, prova::Valore(6));
  const auto applicazione = Doppio("Applicazione", "");
  applicazione->Membro("UtenteCorrente", kLettura, prova::Oggetto(utente));
  applicazione->Membro("Messaggi", kLettura, prova::Oggetto(messaggi));
  const auto interfaccia = Doppio("Interfaccia", "");
  interfaccia->Membro("Applicazione", kLettura, prova::Oggetto(applicazione));

  const auto host = InterfacciaHostDa(interfaccia.Get());
  EXPECT_EQ(host->Applicazione()->UtenteCorrente()->IdUtente(), 12);
  const auto lettore = host->Applicazione()->Messaggi();
  EXPECT_EQ(lettore->TitoloFinestra("Invio email..."), "Invio email... - ORVE");
  EXPECT_EQ(lettore->MostraMsg("Rimuovere?", 52, "Attenzione", nullptr), 6);
  EXPECT_EQ(lettore->MostraMsg("Con finestra", 0, "", host), 6);
  EXPECT_THAT(
      *giornale,
      ElementsAre("Interfaccia.Applicazione lettura", "Applicazione.UtenteCorrente lettura",
                  "Utente.IdUtente lettura", "Interfaccia.Applicazione lettura",
                  "Applicazione.Messaggi lettura", "Messaggi.TitoloFinestra lettura (&Invio email...:12)",
                  "Messaggi.MostraMsg lettura (&Rimuovere?:12|&52:12|&Attenzione:12|&(nessun oggetto):12)",
                  "Messaggi.MostraMsg lettura (&Con finestra:12|&0:12|&:12|&(oggetto):12)"));
}

TEST_F(MembriTest, AChainThatBreaksOffGivesAbsentObjects) {
  const auto applicazione = Doppio("Applicazione", "");
  applicazione->Membro("Messaggi", kLettura, [](const ArrivoCom&) { return VariantCom::DiOggetto(nullptr); });
  applicazione->Membro("UtenteCorrente", kLettura, prova::Nulla());
  const auto interfaccia = Doppio("Interfaccia", "");
  interfaccia->Membro("Applicazione", kLettura, prova::Oggetto(applicazione));
  const auto host = InterfacciaHostDa(interfaccia.Get());
  EXPECT_EQ(host->Applicazione()->Messaggi(), nullptr);
  EXPECT_EQ(host->Applicazione()->UtenteCorrente(), nullptr);
}

TEST_F(MembriTest, TheMessagesOfACompiledClassGetReferencesToTheirDeclaredTypes) {
  const auto messaggi = Doppio("Messaggi", "");
  messaggi->PrendeRiferimenti(prova::Riferimenti::kSoloTipi);
  messaggi->Membro("MostraMsg", kChiamata, prova::Valore(1));
  const prova::ClasseCom classe(classi::kMessaggi, Da(messaggi));
  EXPECT_EQ(ambiente->CreaMessaggi()->MostraMsg("testo", 48, "titolo", nullptr), 1);
  EXPECT_THAT(*giornale,
              ElementsAre("Messaggi.MostraMsg lettura (&testo:8|&48:3|&titolo:8|&(nessun oggetto):9)"));
}

TEST_F(MembriTest, TheAddressBookManagerIsUsedInTheOrderOfTheCalls) {
  const auto rubrica =
      Doppio("Rubrica", "DittaRubrica TipoRubrica", "ApriRubrica ApriRubricaOutlook ApriRubricaTobit");
  for (const char* scelto : {"CodiceScelto", "NomeScelto", "IndirizzoScelto"}) rubrica->Proprieta(scelto);
  rubrica->Membro("Annullata", kLettura, prova::Valore(true));
  rubrica->Membro("Interfaccia", kAssegnazione, prova::Nulla());
  const auto interfaccia = Doppio("Interfaccia", "");

  const auto manager = ManagerRubricaDa(rubrica.Get());
  manager->DittaRubrica("1");
  manager->TipoRubrica(3);
  manager->CodiceScelto({});
  manager->NomeScelto("Rossi");
  manager->IndirizzoScelto("");
  manager->Interfaccia(InterfacciaHostDa(interfaccia.Get()));
  manager->ApriRubrica();
  manager->ApriRubricaOutlook();
  manager->ApriRubricaTobit();
  EXPECT_TRUE(manager->Annullata());
  EXPECT_TRUE(manager->CodiceScelto().IsEmpty());
  EXPECT_EQ(manager->NomeScelto().ToText(), "Rossi");
  EXPECT_EQ(manager->IndirizzoScelto().ToText(), "");
  manager->Interfaccia(nullptr);
  EXPECT_THAT(*giornale,
              ElementsAre("Rubrica.DittaRubrica scrittura (&1:12)", "Rubrica.TipoRubrica scrittura (3:3)",
                          "Rubrica.CodiceScelto scrittura ((vuoto):0)",
                          "Rubrica.NomeScelto scrittura (Rossi:8)", "Rubrica.IndirizzoScelto scrittura (:8)",
                          "Rubrica.Interfaccia assegnazione ((oggetto):9)", "Rubrica.ApriRubrica chiamata",
                          "Rubrica.ApriRubricaOutlook chiamata", "Rubrica.ApriRubricaTobit chiamata",
                          "Rubrica.Annullata lettura", "Rubrica.CodiceScelto lettura",
                          "Rubrica.NomeScelto lettura", "Rubrica.IndirizzoScelto lettura",
                          "Rubrica.Interfaccia assegnazione ((nessun oggetto):9)"));
}

TEST_F(MembriTest, TheRegisterTakesItsLinesAndTellsAbsentTextsFromEmptyOnes) {
  const auto registro = Doppio("Registro",
                               "IDvoce UObject TipoCanale TitoloStampa Ditta NumReg TipoDoc NumDoc SezDoc "
                               "UtenteApplicazione CanaleInvio "
                               "MittenteInvio GuidLista EsitoInvio TipoLista",
                               "RegistraInvio");
  registro->Membro("Connessione", kAssegnazione, prova::Nulla());
  const prova::ClasseCom classe(classi::kRegistroInvio, Da(registro));
  const auto connessione = Doppio("Connection", "");

  const auto fatto = ambiente->CreaRegistroInvio();
  fatto->Connessione(ConnessioneDa(connessione.Get()));
  fatto->IDvoce("VOCE");
  fatto->UObject("OGG");
  fatto->TipoCanale(host::kCanalePec);
  fatto->TitoloStampa("Fattura");
  fatto->Ditta("1");
  fatto->NumReg("R");
  fatto->TipoDoc("FT");
  fatto->NumDoc("12");
  fatto->SezDoc("A");
  fatto->UtenteApplicazione(7);
  fatto->CanaleInvio(77.0F);
  fatto->MittenteInvio("SMTP: a@b.it");
  fatto->GuidLista("{0}");
  fatto->EsitoInvio(1);
  fatto->TipoLista(2);
  fatto->RegistraInvio("Rossi", "Ditta", "r@b.it", std::nullopt, "", "Oggetto", "Corpo");
  fatto->Connessione(nullptr);
  EXPECT_THAT(
      *giornale,
      ElementsAre("Registro.Connessione assegnazione ((oggetto):9)", "Registro.IDvoce scrittura (VOCE:8)",
                  "Registro.UObject scrittura (OGG:8)", "Registro.TipoCanale scrittura (5:3)",
                  "Registro.TitoloStampa scrittura (Fattura:8)", "Registro.Ditta scrittura (1:8)",
                  "Registro.NumReg scrittura (R:8)", "Registro.TipoDoc scrittura (FT:8)",
                  "Registro.NumDoc scrittura (12:8)", "Registro.SezDoc scrittura (A:8)",
                  "Registro.UtenteApplicazione scrittura (7:3)", "Registro.CanaleInvio scrittura (77:4)",
                  "Registro.MittenteInvio scrittura (SMTP: a@b.it:8)", "Registro.GuidLista scrittura ({0}:8)",
                  "Registro.EsitoInvio scrittura (1:3)", "Registro.TipoLista scrittura (2:3)",
                  "Registro.RegistraInvio chiamata (Rossi:8|Ditta:8|r@b.it:8|(testo nullo):8|:8|Oggetto:8|"
                  "Corpo:8)",
                  "Registro.Connessione assegnazione ((nessun oggetto):9)"));
}

TEST_F(MembriTest, TheFormattersOfTheHostAreAskedWhereTheyAre) {
  const auto data = Doppio("FormatoData", "Data");
  data->Membro("Stato", kLettura, prova::Valore(std::int16_t{0}));
  data->Membro("DataDB", kLettura, prova::Valore("20261114"));
  const auto numero = Doppio("FormatoNumero", "");
  numero->Membro("NumeroDB", kChiamata, prova::Valore("12.5"));
  const prova::ClasseCom classeData(classi::kFormatoData, Da(data));
  const prova::ClasseCom classeNumero(classi::kFormatoNumero, Da(numero));

  const auto formato = ambiente->CreaFormatoData();
  formato->Data("14/11/2026");
  EXPECT_EQ(formato->Stato(), 0);
  EXPECT_EQ(formato->DataDB(), "20261114");
  EXPECT_EQ(ambiente->CreaFormatoNumero()->NumeroDB(12.5).ToText(), "12.5");
  EXPECT_THAT(*giornale,
              ElementsAre("FormatoData.Data scrittura (14/11/2026:8)", "FormatoData.Stato lettura",
                          "FormatoData.DataDB lettura", "FormatoNumero.NumeroDB lettura (12,5:5)"));
}

TEST_F(MembriTest, WithoutTheHostsFormattersTheDatabasesOwnFormsServe) {
  const auto formato = ambiente->CreaFormatoData();
  formato->Data("14/11/2026");
  EXPECT_EQ(formato->DataDB(), "20261114");
  EXPECT_EQ(ambiente->CreaFormatoNumero()->NumeroDB(12.5).ToText(), "12.5");
}

TEST_F(MembriTest, ThePathResolverIsSetReadAndClosed) {
  const auto risolutore = Doppio("Risolutore", "", "ChiudiPercorsi ImpostaTipoPercorso ImpostaPercorso");
  risolutore->Membro("Percorso", kLettura, prova::Valore("C:\\Temp"));
  const prova::ClasseCom classe(classi::kRisolutorePercorsi, Da(risolutore));
  const auto fatto = ambiente->CreaRisolutorePercorsi();
  fatto->ImpostaTipoPercorso(8, "");
  EXPECT_EQ(fatto->Percorso(), "C:\\Temp");
  fatto->ImpostaPercorso("D:\\Dati", true);
  fatto->ChiudiPercorsi();
  EXPECT_THAT(*giornale,
              ElementsAre("Risolutore.ImpostaTipoPercorso chiamata (8:3|:8)", "Risolutore.Percorso lettura",
                          "Risolutore.ImpostaPercorso chiamata (D:\\Dati:8|Vero:11)",
                          "Risolutore.ChiudiPercorsi chiamata"));
}

TEST_F(MembriTest, ThePasswordClassTakesItsTextByReference) {
  const auto cifratore = Doppio("Cifratore", "");
  cifratore->Membro("Cripta", kChiamata, prova::Valore("cifrato"));
  cifratore->Membro("Decripta", kChiamata, prova::Valore("chiaro"));
  const prova::ClasseCom classe(classi::kCifratorePassword, Da(cifratore));
  const auto fatto = ambiente->CreaCifratorePassword();
  EXPECT_EQ(fatto->Cripta("chiaro"), "cifrato");
  EXPECT_EQ(fatto->Decripta("cifrato"), "chiaro");
  EXPECT_THAT(*giornale, ElementsAre("Cifratore.Cripta lettura (&chiaro:12)",
                                     "Cifratore.Decripta lettura (&cifrato:12)"));
}

TEST_F(MembriTest, TheSpecialFieldsComeAsRows) {
  const auto parametri = Doppio("Parametri", "");
  parametri->Membro("GetParametriCorpoMail", kChiamata, [](const ArrivoCom&) {
    SAFEARRAYBOUND misure[2] = {{2, 0}, {2, 0}};
    auto* tabella = SafeArrayCreate(VT_BSTR, 2, misure);
    for (LONG riga = 0; riga < 2; ++riga) {
      for (LONG colonna = 0; colonna < 2; ++colonna) {
        LONG posto[2] = {riga, colonna};
        const Bstr testo = ToBstr((colonna == 0 ? "Campo " : "@CAMPO") + std::to_string(riga));
        SafeArrayPutElement(tabella, posto, testo.Get());
      }
    }
    VariantCom valore;
    V_VT(&valore.Get()) = VT_ARRAY | VT_BSTR;
    V_ARRAY(&valore.Get()) = tabella;
    return valore;
  });
  const prova::ClasseCom classe(L"ORVE_ClsStd.CLSFW_Parametri", Da(parametri));
  const auto righe = ambiente->CreaParametri()->GetParametriCorpoMail().ToArray();
  ASSERT_EQ(righe.size(), 2U);
  EXPECT_EQ(righe[1].ToArray().at(0).ToText(), "Campo 1");
  EXPECT_EQ(righe[1].ToArray().at(1).ToText(), "@CAMPO1");
}

TEST_F(MembriTest, TheSmtpComponentIsCreatedByItsIdentifierAndFilledMemberByMember) {
  const auto smtp =
      Doppio("smtp",
             "ServerAddr UserName Password ServerPort ConnectType From DeliveryNotification Subject "
             "BodyFormat BodyText",
             "ClearRecipient AddRecipientEx AddHeader AddAttachment");
  smtp->Proprieta("FromAddr");
  smtp->Membro("SendMail", kChiamata, prova::Valore(0));
  smtp->Membro("GetLastError", kChiamata, prova::Valore(-1));
  const prova::ClasseCom classe(Identificatore(L"{DF8A4FE2-221A-4504-987A-3FD4720DB929}"), Da(smtp));

  const auto fatto = ambiente->CreaComponenteSmtp();
  fatto->AddAttachment("C:\\a.pdf");
  fatto->ClearRecipient();
  fatto->ServerAddr("smtp.example");
  fatto->UserName("utente");
  fatto->Password("segreta");
  fatto->ServerPort(465);
  fatto->ConnectType(1);
  fatto->From("Ditta");
  fatto->FromAddr("<a@b.it>");
  fatto->DeliveryNotification(14);
  fatto->AddRecipientEx("Rossi <r@b.it>", 0);
  fatto->Subject("Oggetto");
  fatto->BodyFormat(1);
  fatto->BodyText("Corpo");
  EXPECT_EQ(fatto->FromAddr(), "<a@b.it>");
  fatto->AddHeader("Disposition-Notification-To", "<a@b.it>");
  fatto->SendMail();
  EXPECT_EQ(fatto->GetLastError().ToInt32(), -1);
  EXPECT_THAT(
      *giornale,
      ElementsAre("smtp.AddAttachment chiamata (C:\\a.pdf:8)", "smtp.ClearRecipient chiamata",
                  "smtp.ServerAddr scrittura (smtp.example:8)", "smtp.UserName scrittura (utente:8)",
                  "smtp.Password scrittura (segreta:8)", "smtp.ServerPort scrittura (465:2)",
                  "smtp.ConnectType scrittura (1:2)", "smtp.From scrittura (Ditta:8)",
                  "smtp.FromAddr scrittura (<a@b.it>:8)", "smtp.DeliveryNotification scrittura (14:2)",
                  "smtp.AddRecipientEx chiamata (&Rossi <r@b.it>:12|0:3)",
                  "smtp.Subject scrittura (Oggetto:8)", "smtp.BodyFormat scrittura (1:2)",
                  "smtp.BodyText scrittura (Corpo:8)", "smtp.FromAddr lettura",
                  "smtp.AddHeader chiamata (Disposition-Notification-To:8|<a@b.it>:8)",
                  "smtp.SendMail lettura", "smtp.GetLastError lettura"));
}

TEST_F(MembriTest, OutlookIsDrivenMemberByMemberInItsOwnCase) {
  const auto allegati = Doppio("Attachments", "", "Add");
  const auto messaggio =
      Doppio("MailItem", "ReadReceiptRequested To cc Bcc Subject body BodyFormat HTMLBody", "Send");
  messaggio->Membro("attachments", kLettura, prova::Oggetto(allegati));
  const auto utente = Doppio("CurrentUser", "");
  utente->Membro("Address", kLettura, prova::Valore("utente@b.it"));
  const auto account = Doppio("Account", "");
  account->Membro("SmtpAddress", kLettura, prova::Valore("account@b.it"));
  const auto elenco = Doppio("Accounts", "");
  elenco->Membro("Item", kChiamata, prova::Oggetto(account));
  const auto sessione = Doppio("Session", "");
  sessione->Membro("CurrentUser", kLettura, prova::Oggetto(utente));
  sessione->Membro("Accounts", kLettura, prova::Oggetto(elenco));
  const auto esploratori = Doppio("Explorers", "");
  esploratori->Membro("Session", kLettura, prova::Oggetto(sessione));
  const auto outlook = Doppio("Outlook", "");
  outlook->Membro("Version", kLettura, prova::Valore("12.0.0.4518"));
  outlook->Membro("Explorers", kLettura, prova::Oggetto(esploratori));
  outlook->Membro("createItem", kChiamata, prova::Oggetto(messaggio));
  const prova::ClasseCom classe(L"Outlook.Application", Da(outlook));

  const auto fatto = ambiente->CreaOutlook();
  EXPECT_EQ(fatto->Version(), "12.0.0.4518");
  EXPECT_EQ(fatto->Explorers()->Session()->CurrentUser()->Address(), "utente@b.it");
  EXPECT_EQ(fatto->Explorers()->Session()->Accounts()->Item(1)->SmtpAddress(), "account@b.it");
  const auto mail = fatto->createItem(0);
  mail->ReadReceiptRequested(true);
  mail->attachments()->Add("C:\\a.pdf");
  mail->To("a");
  mail->cc("b");
  mail->Bcc("c");
  mail->Subject("o");
  mail->body("t");
  mail->BodyFormat(1);
  mail->HTMLBody("h");
  mail->Send();
  EXPECT_THAT(
      *giornale,
      ElementsAre("Outlook.Version lettura", "Outlook.Explorers lettura", "Explorers.Session lettura",
                  "Session.CurrentUser lettura", "CurrentUser.Address lettura", "Outlook.Explorers lettura",
                  "Explorers.Session lettura", "Session.Accounts lettura", "Accounts.Item lettura (1:3)",
                  "Account.SmtpAddress lettura", "Outlook.createItem lettura (0:3)",
                  "MailItem.ReadReceiptRequested scrittura (Vero:11)", "MailItem.attachments lettura",
                  "Attachments.Add chiamata (C:\\a.pdf:8)", "MailItem.To scrittura (a:8)",
                  "MailItem.cc scrittura (b:8)", "MailItem.Bcc scrittura (c:8)",
                  "MailItem.Subject scrittura (o:8)", "MailItem.body scrittura (t:8)",
                  "MailItem.BodyFormat scrittura (1:2)", "MailItem.HTMLBody scrittura (h:8)",
                  "MailItem.Send chiamata"));
}

TEST_F(MembriTest, TheControlsOfSimpleMapiAreFilledSlotBySlot) {
  const auto sessione = Doppio("MAPISession", "DownLoadMail NewSession", "SignOn SignOff");
  sessione->Membro("SessionID", kLettura, prova::Valore(4711));
  const auto messaggi =
      Doppio("MAPIMessages",
             "SessionID SessioneID RecipIndex RecipAddress RecipDisplayName RecipType "
             "MsgReceiptRequested MsgSubject MsgNoteText AttachmentIndex AttachmentPosition "
             "AttachmentPathName AttachmentName",
             "Compose Send");
  const prova::ClasseCom classeSessione(L"MSMAPI.MAPISession", Da(sessione));
  const prova::ClasseCom classeMessaggi(L"MSMAPI.MAPIMessages", Da(messaggi));

  const auto aperta = ambiente->CreaMAPISession();
  aperta->DownLoadMail(false);
  aperta->NewSession(true);
  aperta->SignOn();
  const auto fatto = ambiente->CreaMAPIMessages();
  fatto->SessionID(aperta->SessionID());
  fatto->SessioneID(4711);
  fatto->Compose();
  fatto->RecipIndex(0);
  fatto->RecipAddress("SMTP:a@b.it");
  fatto->RecipDisplayName("Rossi");
  fatto->RecipType(1);
  fatto->MsgReceiptRequested(true);
  fatto->MsgNoteText("Corpo");
  fatto->AttachmentIndex(0);
  fatto->AttachmentPosition(0);
  fatto->AttachmentPathName("C:\\a.pdf");
  fatto->AttachmentName("a.pdf");
  fatto->MsgSubject("Oggetto");
  fatto->Send();
  aperta->SignOff();
  EXPECT_THAT(
      *giornale,
      ElementsAre(
          "MAPISession.DownLoadMail scrittura (Falso:11)", "MAPISession.NewSession scrittura (Vero:11)",
          "MAPISession.SignOn chiamata", "MAPISession.SessionID lettura",
          "MAPIMessages.SessionID scrittura (4711:3)", "MAPIMessages.SessioneID scrittura (4711:3)",
          "MAPIMessages.Compose chiamata", "MAPIMessages.RecipIndex scrittura (0:2)",
          "MAPIMessages.RecipAddress scrittura (SMTP:a@b.it:8)",
          "MAPIMessages.RecipDisplayName scrittura (Rossi:8)", "MAPIMessages.RecipType scrittura (1:3)",
          "MAPIMessages.MsgReceiptRequested scrittura (Vero:11)",
          "MAPIMessages.MsgNoteText scrittura (Corpo:8)", "MAPIMessages.AttachmentIndex scrittura (0:2)",
          "MAPIMessages.AttachmentPosition scrittura (0:2)",
          "MAPIMessages.AttachmentPathName scrittura (C:\\a.pdf:8)",
          "MAPIMessages.AttachmentName scrittura (a.pdf:8)", "MAPIMessages.MsgSubject scrittura (Oggetto:8)",
          "MAPIMessages.Send chiamata", "MAPISession.SignOff chiamata"));
}

TEST_F(MembriTest, AControlThatLacksTheOddNameOfTheSessionRefusesIt) {
  const auto messaggi = Doppio("MAPIMessages", "SessionID");
  const prova::ClasseCom classe(L"MSMAPI.MAPIMessages", Da(messaggi));
  EXPECT_EQ(NumeroDi([&] { ambiente->CreaMAPIMessages()->SessioneID(4711); }), 438);
}

TEST_F(MembriTest, TheHostsFileObjectsAreAskedWhereAllThreeAre) {
  const auto scelto = Doppio("Scelto", "", "Chiudi CopiaIn Crea Apri ApriPercorso");
  scelto->Membro("Nome", kLettura, prova::Valore("a.pdf"));
  scelto->Membro("Esiste", kLettura, prova::Valore(true));
  scelto->Membro("Percorso", kLettura, prova::Valore("C:\\a.pdf"));
  scelto->Membro("Posizione", kLettura, prova::Valore(std::int16_t{1}));
  const auto selettore = Doppio("Selettore", "Titolo", "Chiudi");
  selettore->Membro("Mostra", kChiamata, prova::Valore(1));
  selettore->Membro("FileScelto", kLettura, prova::Oggetto(scelto));
  const auto collezione = Doppio("Collezione", "", "Clear Add Remove");
  collezione->Membro("Count", kLettura, prova::Valore(1));
  collezione->Membro("Item", kLettura, prova::Oggetto(scelto));
  const prova::ClasseCom classeSelettore(classi::kSelettoreFile, Da(selettore));
  const prova::ClasseCom classeFile(classi::kOggettoFile, Da(scelto));
  const prova::ClasseCom classeCollezione(classi::kCollezioneFile, Da(collezione));

  const auto finestra = ambiente->CreaSelettoreFile();
  finestra->Titolo("Allega file");
  EXPECT_EQ(finestra->Mostra(0), 1);
  const auto file = finestra->FileScelto();
  EXPECT_TRUE(file->Esiste());
  EXPECT_EQ(file->Nome(), "a.pdf");
  EXPECT_EQ(file->Posizione(), 1);
  const auto copia = ambiente->CreaOggettoFile();
  copia->Crea(8, "a.pdf", "", 0);
  file->CopiaIn(copia, 0);
  copia->Apri("a.pdf", "C:", 0);
  copia->ApriPercorso("C:", "a.pdf", "", 0);
  const auto elenco = ambiente->CreaCollezioneFile();
  elenco->Add(file);
  EXPECT_EQ(elenco->Count(), 1);
  EXPECT_EQ(elenco->Item(0)->Percorso(), "C:\\a.pdf");
  elenco->Remove(0);
  elenco->Clear();
  file->Chiudi();
  finestra->Chiudi();
  EXPECT_THAT(
      *giornale,
      ElementsAre("Selettore.Titolo scrittura (Allega file:8)", "Selettore.Mostra lettura (0:3)",
                  "Selettore.FileScelto lettura", "Scelto.Esiste lettura", "Scelto.Nome lettura",
                  "Scelto.Posizione lettura", "Scelto.Crea chiamata (8:3|a.pdf:8|:8|0:3)",
                  "Scelto.CopiaIn chiamata ((oggetto):9|0:3)", "Scelto.Apri chiamata (a.pdf:8|C::8|0:3)",
                  "Scelto.ApriPercorso chiamata (C::8|a.pdf:8|:8|0:3)",
                  "Collezione.Add chiamata ((oggetto):9)", "Collezione.Count lettura",
                  "Collezione.Item lettura (0:3)", "Scelto.Percorso lettura",
                  "Collezione.Remove chiamata (0:3)", "Collezione.Clear chiamata", "Scelto.Chiudi chiamata",
                  "Selettore.Chiudi chiamata"));
}

TEST_F(MembriTest, WithoutTheHostsFileObjectsTheSystemsOwnServe) {
  const auto file = ambiente->CreaOggettoFile();
  file->Apri("manca.pdf", "C:\\manca", 0);
  EXPECT_FALSE(file->Esiste());
  const auto elenco = ambiente->CreaCollezioneFile();
  elenco->Add(file);
  EXPECT_EQ(elenco->Item(0)->Percorso(), "C:\\manca\\manca.pdf");
  EXPECT_NE(ambiente->CreaSelettoreFile(), nullptr);
  EXPECT_NE(ambiente->CreaMessaggi(), nullptr);
}

TEST_F(MembriTest, AMachineWithoutAClassSaysSo) {
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaComponenteSmtp(); }), 429);
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaOutlook(); }), 429);
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaMAPISession(); }), 429);
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaMAPIMessages(); }), 429);
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaRegistroInvio(); }), 429);
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaCifratorePassword(); }), 429);
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaParametri(); }), 429);
}

TEST_F(MembriTest, AClassThatIsThereAndRefusesIsNotMadeUpFor) {
  const prova::ClasseCom classe(classi::kFormatoData, [] { return ComPtr<IDispatch>(); });
  EXPECT_EQ(NumeroDi([&] { (void)ambiente->CreaFormatoData(); }), 429);
}

}  // namespace
}  // namespace orve::adapters::win32
