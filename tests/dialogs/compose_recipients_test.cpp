// The address boxes of the compose window and its send button.
#include <string>
#include <tuple>
#include <vector>

#include "dialogs/finestra_di_prova.h"
#include "dialogs/voci_indirizzo.h"
#include "fakes/errori.h"

namespace orve {
namespace {

using fakes::HeadlessForm;
using fakes::RigaAccount;
using host::Variant;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using InvioDallaFinestra = fakes::FinestraDiProva;
using CaselleDelForm = fakes::FormDiProva;

constexpr const char* kIndirizzoNonValido =
    "ObjMessaggi.MostraMsg L'elenco dei destinatari contiene un indirizzo non valido.|0|Invio "
    "email...|(assente)";

// name|address|company|box, each.
std::vector<std::string> Elenco(const CollDestinatari& destinatari) {
  std::vector<std::string> righe;
  for (const auto& destinatario : destinatari) {
    righe.push_back(destinatario->Nome() + "|" + destinatario->Indirizzo() + "|" + destinatario->Azienda() +
                    "|" + std::to_string(destinatario->Casella()));
  }
  return righe;
}

struct CasoVoce {
  const char* voce;
  const char* wantNome;
  const char* wantIndirizzo;
  bool wantConNome;
};

TEST(VoceIndirizzo, TheReadingIsPurelyPositional) {
  const CasoVoce casi[] = {
      {"Anna<a@x.example>", "Anna", "a@x.example", true},
      {"Anna <a@x.example>", "Anna ", "a@x.example", true},
      {" Anna<a@x.example>", " Anna", "a@x.example", true},
      {"Anna<a@x.example> (ufficio)", "Anna", "a@x.example", true},
      {"Anna<a@x.example>>", "Anna", "a@x.example", true},
      {"Anna<<a@x.example>", "Anna", "<a@x.example", true},
      {"Anna<>", "Anna", "", true},
      {"<a@x.example>", "", "a@x.example", true},
      {"a@x.example", "", "a@x.example", false},
      {" a@x.example ", "", " a@x.example ", false},
      {"a@x.example>", "", "", false},
      {"Anna<a@x.example", "Anna", "", true},
      {"Anna>a@x.example<", "Anna>a@x.example", "", true},
      {"Anna>vecchia<a@x.example>", "Anna>vecchia", "", true},
      {"", "", "", false},
      {"Città😀<é@x.example>", "Città😀", "é@x.example", true},
      {"שלום<a@x.example>", "שלום", "a@x.example", true},
  };
  for (const auto& caso : casi) {
    const auto voce = LeggiVoceIndirizzo(caso.voce);
    EXPECT_EQ(voce.nome, caso.wantNome) << caso.voce;
    EXPECT_EQ(voce.indirizzo, caso.wantIndirizzo) << caso.voce;
    EXPECT_EQ(voce.conNome, caso.wantConNome) << caso.voce;
  }
}

TEST_F(InvioDallaFinestra, AllBoxesEmptyTheClickDoesNothingAtAll) {
  const auto prima = servizio->vCollDestinatari;
  Apri([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Preme("cmd_Invia");
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_TRUE(finestra.Attivo("cmd_Invia"));
    EXPECT_THAT(Mostrati(), IsEmpty());
    EXPECT_EQ(servizio->vCollDestinatari, prima);
    EXPECT_FALSE(Consegnato());
  });
}

TEST_F(InvioDallaFinestra, OnASmtpChannelWithoutAnAccountTheClickDoesNothing) {
  for (const auto canale : {kvSMTPMail, kvSMTPSSLMail}) {
    servizio->SrvMailInstallato = canale;
    servizio->vCollMittenti.reset();
    Apri([&](HeadlessForm& finestra) {
      finestra.Digita("TXT_EMAIL", "a@x.example");
      servizio->vMittente.reset();
      finestra.Preme("cmd_Invia");
      EXPECT_TRUE(finestra.Aperta());
      EXPECT_THAT(Mostrati(), IsEmpty());
      EXPECT_FALSE(Consegnato());
    });
  }
}

TEST_F(InvioDallaFinestra, TheRecipientsOfAllBoxesArriveInOrder) {
  Invia([](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL_CCN", "Nino<n@x.example>");
    finestra.Digita("TXT_EMAIL", "Anna<a@x.example>;b@x.example");
    finestra.Digita("TXT_EMAIL_CC", "Carlo<c@x.example>");
  });
  EXPECT_THAT(Elenco(*servizio->vCollDestinatari),
              ElementsAre("Anna|a@x.example||0", "|b@x.example||0", "Carlo|c@x.example||1",
                          "Nino|n@x.example|Nino|2"));
  EXPECT_TRUE(Consegnato());
  EXPECT_THAT(
      journal->Righe({"smtp.AddRecipientEx"}),
      ElementsAre("smtp.AddRecipientEx Anna <a@x.example>; <b@x.example> 0",
                  "smtp.AddRecipientEx Carlo <c@x.example> 1", "smtp.AddRecipientEx Nino <n@x.example> 2"));
}

// The company is all that survives of the old list.

TEST_F(InvioDallaFinestra, AnUnchangedEntryKeepsItsCompanyButInTheBlindCopies) {
  Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  Collezione().AddFromLista("c@x.example", "Carlo", "Beta", 1);
  Collezione().AddFromLista("n@x.example", "Nino", "Gamma", 2);
  Invia([](HeadlessForm& /*finestra*/) {});
  EXPECT_THAT(Elenco(*servizio->vCollDestinatari),
              ElementsAre("Anna|a@x.example|Acme|0", "Carlo|c@x.example|Beta|1", "Nino|n@x.example|Nino|2"));
}

TEST_F(InvioDallaFinestra, AnEntryThatWasChangedLosesItsCompany) {
  Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  for (const char* testo : {"Anna <a@x.example>", "anna<a@x.example>", "Anna<A@x.example>", "a@x.example"}) {
    const auto vecchia = servizio->vCollDestinatari;
    servizio->vCollMittenti.reset();
    Invia([&](HeadlessForm& finestra) { finestra.Riscrive("TXT_EMAIL", testo); });
    EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Azienda(), "") << testo;
    servizio->vCollDestinatari = vecchia;
  }
}

TEST_F(InvioDallaFinestra, OfTwoCompaniesOfOnePairTheLastGoesToEveryEntry) {
  Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  Collezione().AddFromLista("a@x.example", "Anna", "Beta", 1);
  Invia([](HeadlessForm& finestra) {
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "Anna<a@x.example>");
    finestra.Digita("TXT_EMAIL", ";Anna<a@x.example>");
  });
  EXPECT_THAT(Elenco(*servizio->vCollDestinatari),
              ElementsAre("Anna|a@x.example|Beta|0", "Anna|a@x.example|Beta|0", "Anna|a@x.example|Beta|1"));
}

TEST_F(InvioDallaFinestra, ANamelessEntryFindsItsCompanyWhenItStandsInBrackets) {
  Collezione().AddFromLista("a@x.example", "", "Acme", 0);
  Invia([](HeadlessForm& /*finestra*/) {});
  EXPECT_THAT(Elenco(*servizio->vCollDestinatari), ElementsAre("|a@x.example|Acme|0"));
}

TEST_F(InvioDallaFinestra, TheNameKeepsItsBlanks) {
  Invia([](HeadlessForm& finestra) { finestra.Digita("TXT_EMAIL", "Anna <a@x.example>; Bea<b@x.example>"); });
  EXPECT_THAT(Elenco(*servizio->vCollDestinatari),
              ElementsAre("Anna |a@x.example||0", " Bea|b@x.example||0"));
}

// The check of the addresses.

struct CasoControllo {
  const char* label;
  const char* a;
  const char* cc;
  const char* ccn;
  bool wantBuono;
};

TEST_F(InvioDallaFinestra, OneBadAddressInAnyBoxKeepsTheWindowOpen) {
  const CasoControllo casi[] = {
      {"all good", "a@x.example", "c@x.example", "n@x.example", true},
      {"bad A", "rotto", "c@x.example", "n@x.example", false},
      {"bad CC", "a@x.example", "rotto", "", false},
      {"bad CCn", "a@x.example", "", "rotto", false},
      {"a separator at the end", "a@x.example;", "", "", false},
      {"two separators in a row", "a@x.example;;b@x.example", "", "", false},
      {"a lone separator", ";", "", "", false},
      {"a bracket that only closes", "a@x.example>", "", "", false},
      {"a bracket that only opens", "Anna<a@x.example", "", "", false},
      {"empty brackets", "Anna<>", "", "", false},
      {"a blank after the separator", "Anna<a@x.example>; Bea<b@x.example>", "", "", true},
      {"a good address among other words", "scrivere a a@x.example grazie", "", "", true},
      {"blind copies only", "", "", "n@x.example", true},
  };
  for (const auto& caso : casi) {
    servizio->vCollMittenti.reset();
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    Apri([&](HeadlessForm& finestra) {
      finestra.Digita("TXT_EMAIL", caso.a);
      finestra.Digita("TXT_EMAIL_CC", caso.cc);
      finestra.Digita("TXT_EMAIL_CCN", caso.ccn);
      finestra.Preme("cmd_Invia");
      EXPECT_EQ(finestra.Aperta(), !caso.wantBuono) << caso.label;
      EXPECT_EQ(finestra.Testo("TXT_EMAIL"), caso.a) << caso.label;
    });
    EXPECT_EQ(Consegnato(), caso.wantBuono) << caso.label;
    if (caso.wantBuono) {
      EXPECT_THAT(Mostrati(), IsEmpty()) << caso.label;
    } else {
      EXPECT_THAT(Mostrati(), ElementsAre(kIndirizzoNonValido)) << caso.label;
      EXPECT_EQ(servizio->vCollDestinatari->Count(), 0) << caso.label;
    }
  }
}

TEST_F(CaselleDelForm, AfterTheMessageTheListStaysAsBuiltAndTheNextClickReplacesIt) {
  servizio->SrvMailInstallato = kvMAPI;
  Mostra([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "rotto");
    finestra.Preme("cmd_Invia");
    const auto prima = Dentro().CollDestinatariForm;
    ASSERT_TRUE(prima);
    EXPECT_THAT(Elenco(*prima), ElementsAre("|rotto||0"));
    finestra.Preme("cmd_Invia");
    EXPECT_NE(Dentro().CollDestinatariForm, prima);
  });
}

// The reader used after the event drops such entries; this one adds them, so that the check finds them.
TEST_F(CaselleDelForm, ASeparatorAtTheEndOfABoxAddsOneRecipientWithAnEmptyAddress) {
  servizio->SrvMailInstallato = kvMAPI;
  Mostra([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "Anna<a@x.example>;");
    finestra.Preme("cmd_Invia");
    const auto elenco = Dentro().CollDestinatariForm;
    ASSERT_TRUE(elenco);
    EXPECT_THAT(Elenco(*elenco), ElementsAre("Anna|a@x.example||0", "|||0"));
  });
}

TEST_F(CaselleDelForm, TheOldListIsLetGoBeforeTheNewOneIsMade) {
  servizio->SrvMailInstallato = kvMAPI;
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Preme("cmd_Invia");
    EXPECT_THAT(journal->Righe({"debug "}), ElementsAre(HasSubstr("|TER|ORVE_MAILSERVER|CollDestinatari"),
                                                        HasSubstr("|INI|ORVE_MAILSERVER|CollDestinatari")));
  });
}

TEST_F(CaselleDelForm, TheMessageBearsTheCaptionThatTheWindowHasByThen) {
  servizio->SrvMailInstallato = kvMAPI;
  ambiente->titoloHost = " - Azienda";
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  form->ActiveInterface = servizio->ActiveInterface;
  Mostra([](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "rotto");
    finestra.Preme("cmd_Invia");
  });
  EXPECT_THAT(Mostrati(),
              ElementsAre("Host.Messaggi.MostraMsg L'elenco dei destinatari contiene un indirizzo non "
                          "valido.|0|Invio email... - Azienda|(assente)"));
}

// The hand-over.

TEST_F(InvioDallaFinestra, EverythingIsHandedOverInOrderWhileTheWindowIsOpen) {
  servizio->vNome = "vecchio";
  File("C:\\f.pdf");
  servizio->vElencoAllegati = Variant::Array{"C:\\f.pdf"};
  std::string visto;
  journal->Quando("Ambiente.CreaComponenteSmtp", [&] {
    visto = servizio->vNome + "|" + servizio->vOggetto + "|" + std::to_string(servizio->vFlagCorpo) + "|" +
            servizio->vCorpoMail;
  });
  Apri([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    finestra.Riscrive("TXT_OGGETTO", "Fattura");
    finestra.Riscrive("TXT_CORPO", "Gentile ***(IndEmail)***");
    journal->Svuota();
    finestra.Preme("cmd_Invia");
  });
  EXPECT_EQ(visto, "|Fattura|1|Gentile ***(IndEmail)***");
  EXPECT_THAT(journal->Righe({"cmd_Invia.Enabled", "legge TXT_OGGETTO.Text", "legge CHK_CORPO.Text",
                              "legge TXT_CORPO.Text", "File.Percorso", "legge CHK_RICEVUTA",
                              "legge CHK_CONSEGNA", "smtp.SendMail", "FRMRW_OPZMAIL.Chiudi"}),
              ElementsAre("cmd_Invia.Enabled false", "legge TXT_OGGETTO.Text", "legge CHK_CORPO.Text",
                          "legge TXT_CORPO.Text", "File.Percorso C:\\f.pdf", "legge CHK_RICEVUTA.Visible",
                          "legge CHK_RICEVUTA.Text", "legge CHK_CONSEGNA.Visible", "smtp.SendMail",
                          "FRMRW_OPZMAIL.Chiudi"));
  EXPECT_EQ(servizio->vElencoAllegati, Variant(Variant::Array{"C:\\f.pdf"}));
}

TEST_F(InvioDallaFinestra, WithoutAttachmentsTheServicesListGoesEmpty) {
  servizio->vElencoAllegati = Variant::Array{"C:\\manca.pdf"};
  Invia([](HeadlessForm& finestra) { finestra.Digita("TXT_EMAIL", "a@x.example"); });
  EXPECT_TRUE(servizio->vElencoAllegati.IsEmpty());
}

TEST_F(InvioDallaFinestra, TheReceiptBoxGoesToTheServiceAndIntoTheAccountOfThisSend) {
  for (const bool voluta : {true, false}) {
    servizio->vCollMittenti.reset();
    servizio->ReadReceipt = !voluta;
    Invia([&](HeadlessForm& finestra) {
      finestra.Riscrive("TXT_EMAIL", "a@x.example");
      finestra.Spunta("CHK_RICEVUTA", voluta);
    });
    EXPECT_EQ(servizio->ReadReceipt, voluta);
    EXPECT_EQ(servizio->vMittente->ReadRcpt(), voluta ? 1 : 2);
  }
}

TEST_F(InvioDallaFinestra, AHiddenReceiptBoxLeavesServiceAndAccountAlone) {
  Accounts({RigaAccount(12, "noi@azienda.example", -1, 1)});
  servizio->ReadReceipt = true;
  servizio->vNotifyDelivery = true;
  servizio->SrvMailInstallato = kvSMTPMail;
  bool ricevuta = false;
  journal->Quando("Ambiente.CreaComponenteSmtp", [&] { ricevuta = servizio->ReadReceipt; });
  Invia([](HeadlessForm& finestra) { finestra.Digita("TXT_EMAIL", "a@x.example"); });
  EXPECT_TRUE(ricevuta);
  EXPECT_EQ(servizio->vMittente->ReadRcpt(), -1);
  EXPECT_TRUE(servizio->vNotifyDelivery);
  EXPECT_EQ(servizio->vMittente->DeliveryStatus(), 1);
}

TEST_F(CaselleDelForm, AVisibleDeliveryBoxWouldGoTheSameWay) {
  servizio->SrvMailInstallato = kvMAPI;
  servizio->vMittente = std::make_shared<Mittente>(ambiente);
  for (const bool voluta : {true, false}) {
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    host::Richiesto(form->Finestra().Controlli("CHK_CONSEGNA")).Visible(true);
    Mostra([&](HeadlessForm& finestra) {
      finestra.Digita("TXT_EMAIL", "a@x.example");
      finestra.Spunta("CHK_CONSEGNA", voluta);
      finestra.Preme("cmd_Invia");
    });
    EXPECT_EQ(servizio->vNotifyDelivery, voluta);
    EXPECT_EQ(servizio->vMittente->DeliveryStatus(), voluta ? 1 : 2);
  }
}

TEST_F(CaselleDelForm, WithoutAnAccountOnAnotherChannelTheReceiptStillGoesToTheService) {
  servizio->SrvMailInstallato = kvMAPI;
  Mostra([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    finestra.Spunta("CHK_RICEVUTA", true);
    finestra.Preme("cmd_Invia");
    EXPECT_FALSE(finestra.Aperta());
  });
  EXPECT_TRUE(servizio->ReadReceipt);
}

// Failures.

TEST_F(InvioDallaFinestra, EachStatementOfTheHandOverStandsAlone) {
  servizio->vOggetto = "vecchio oggetto";
  servizio->vCorpoMail = "vecchio corpo";
  servizio->vFlagCorpo = 1;
  Invia([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    for (const char* riga :
         {"cmd_Invia.Enabled", "legge TXT_OGGETTO.Text", "legge CHK_CORPO.Text", "legge TXT_CORPO.Text",
          "legge CHK_RICEVUTA.Visible", "legge CHK_CONSEGNA.Visible"}) {
      journal->Fallisce(riga);
    }
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_THAT(journal->Righe({"smtp.Subject"}), ElementsAre("smtp.Subject vecchio oggetto"));
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText vecchio corpo"));
  EXPECT_THAT(Mostrati(), IsEmpty());
}

TEST_F(InvioDallaFinestra, AFailingListOfAttachmentsKeepsTheOldOne) {
  File("C:\\f.pdf");
  servizio->vElencoAllegati = Variant::Array{"C:\\f.pdf", "C:\\altro.pdf"};
  Invia([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    journal->Fallisce("File.Percorso");
  });
  EXPECT_EQ(servizio->vElencoAllegati, Variant(Variant::Array{"C:\\f.pdf", "C:\\altro.pdf"}));
}

TEST_F(InvioDallaFinestra, AFailedDeliveryIsReportedByItsChannelAndClosesTheWindow) {
  journal->Fallisce("Ambiente.CreaComponenteSmtp", {429, "Sistema", "manca il componente"});
  Invia([](HeadlessForm& finestra) { finestra.Digita("TXT_EMAIL", "a@x.example"); });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 429-manca il componente in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
}

TEST_F(InvioDallaFinestra, AListThatCannotBeBuiltWholeIsReportedAndTheClickGoesOnWithIt) {
  Apri([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example;Bea<b@x.example>");
    servizio->vCollDestinatari.reset();  // the companies cannot be looked up
    finestra.Preme("cmd_Invia");
    EXPECT_FALSE(finestra.Aperta());
  });
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg 91 Variabile oggetto non impostata ORVE_MAILSERVER: "
                          "FRMFW_OPZMAIL: PrepareCollDestinatari|0||(assente)"));
  EXPECT_THAT(Elenco(*servizio->vCollDestinatari), ElementsAre("|a@x.example||0"));
  EXPECT_TRUE(Consegnato());
}

TEST_F(InvioDallaFinestra, BareAddressesNeedNoOldList) {
  Apri([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    servizio->vCollDestinatari.reset();
    finestra.Preme("cmd_Invia");
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_THAT(Mostrati(), IsEmpty());
}

TEST_F(InvioDallaFinestra, BoxesThatCannotBeReadLeaveTheListOfBeforeTheClick) {
  Apri([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    journal->Fallisce("legge TXT_EMAIL.Text", {1001, "Controllo", "guasto"});
    finestra.Preme("cmd_Invia");
    EXPECT_TRUE(finestra.Aperta());  // the empty list of the activation
  });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 1001 guasto ORVE_MAILSERVER: FRMFW_OPZMAIL: "
                                      "PrepareCollDestinatari|0||(assente)"));
}

// The reverse step, for what comes from an address book.

struct CasoAggiorna {
  const char* label;
  const char* presente;
  const char* nome;
  const char* indirizzi;
  const char* want;
};

TEST_F(CaselleDelForm, ChosenAddressesAreWrittenInTheSameSyntax) {
  const CasoAggiorna casi[] = {
      {"into an empty box", "", "Anna", "a@x.example", "Anna<a@x.example>"},
      {"after what stands there", "b@x.example", "Anna", "a@x.example", "b@x.example;Anna<a@x.example>"},
      {"several, each with the name", "", "Acme", "a@x.example;b@x.example",
       "Acme<a@x.example>;Acme<b@x.example>"},
      {"empty parts are left out", "", "Acme", ";a@x.example;;b@x.example;",
       "Acme<a@x.example>;Acme<b@x.example>"},
      {"nothing but separators", "", "Acme", ";;", ""},
      {"nothing but separators, after something", "b@x.example", "Acme", ";", "b@x.example;"},
      {"no address", "", "Acme", "", "Acme<>"},
      {"no name", "", "", "a@x.example", "<a@x.example>"},
      {"there already", "Anna<a@x.example>", "Anna", "a@x.example", "Anna<a@x.example>;Anna<a@x.example>"},
  };
  const char* caselle[] = {"TXT_EMAIL", "TXT_EMAIL_CC", "TXT_EMAIL_CCN"};
  Mostra([&](HeadlessForm& finestra) {
    std::int16_t numero = -1;
    for (const char* casella : caselle) {
      ++numero;
      for (const auto& caso : casi) {
        finestra.Riscrive(casella, caso.presente);
        Dentro().AggiornaCaselleDestinatari(caso.nome, caso.indirizzi, numero);
        EXPECT_EQ(finestra.Testo(casella), caso.want) << casella << ": " << caso.label;
      }
    }
  });
}

TEST_F(CaselleDelForm, AnyOtherBoxEndsWithoutAChange) {
  Mostra([&](HeadlessForm& /*finestra*/) {
    journal->Svuota();
    for (const std::int16_t casella : std::initializer_list<std::int16_t>{3, -1, 32767})
      Dentro().AggiornaCaselleDestinatari("Anna", "a@x.example", casella);
    EXPECT_THAT(journal->Righe(), IsEmpty());
  });
}

TEST_F(CaselleDelForm, AFailureWhileWritingIsReported) {
  Mostra([&](HeadlessForm& /*finestra*/) {
    journal->Fallisce("TXT_EMAIL_CC.Text", {1001, "Controllo", "guasto"});
    Dentro().AggiornaCaselleDestinatari("Anna", "a@x.example", 1);
  });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 1001 guasto ORVE_MAILSERVER: FRMFW_OPZMAIL: "
                                      "AggiornaCaselleDestinatari|0||(assente)"));
}

}  // namespace
}  // namespace orve
