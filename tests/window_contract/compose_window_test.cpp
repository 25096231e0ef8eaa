// The compose window, on every toolkit.
#include <string>

#include "window_contract/contratto.h"

namespace orve::window_contract {
namespace {

using fakes::RigaAccount;
using host::Variant;
using ::testing::ElementsAre;

class ContrattoInvio : public Contratto {};

TEST_F(ContrattoInvio, WhatThePersonWroteIsSent) {
  servizio->vOggetto = "Vecchio";
  servizio->vCorpoMail = "Corpo";
  servizio->vFlagCorpo = 1;
  Collezione().AddFromLista("anna@x.example", "Anna", "ACME", 0);
  Apri([&](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("TXT_EMAIL"), "Anna<anna@x.example>");
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Vecchio");
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Corpo");
    finestra.Digita("TXT_EMAIL", ";bruno@x.example");
    finestra.Digita("TXT_EMAIL_CC", "capo@x.example");
    finestra.Riscrive("TXT_OGGETTO", "Nuovo: perché no? Αθήνα");
    finestra.Digita("TXT_CORPO", " cambiato");
    Invia(finestra);
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vOggetto, "Nuovo: perché no? Αθήνα");
  EXPECT_EQ(servizio->vCorpoMail, "Corpo cambiato");
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 3);
}

TEST_F(ContrattoInvio, WithoutRecipientsTheButtonDoesNothing) {
  Apri([&](const Vista& finestra) {
    finestra.Clicca("cmd_Invia");
    toolkit->NelProgramma([] {});
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(ContrattoInvio, ABadAddressIsToldAndTheBoxesStay) {
  Apri([&](const Vista& finestra) {
    finestra.Digita("TXT_EMAIL", "anna@x.example;;");
    EXPECT_EQ(toolkit->Risponde([&] { finestra.Clicca("cmd_Invia"); },
                                "L'elenco dei destinatari contiene un indirizzo non valido.", Risposta::kOk),
              "Invio email...");
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_EQ(finestra.Contenuto("TXT_EMAIL"), "anna@x.example;;");
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(ContrattoInvio, WithoutAnAccountThePersonIsToldAndNoWindowComes) {
  Accounts({});
  toolkit->MostraMessaggio("Non è disponibile alcun account mail", Risposta::kOk, [&] { ApreInvio(); });
  EXPECT_FALSE(Consegnato());
}

TEST_F(ContrattoInvio, AnotherAccountShowsOrHidesTheReceipt) {
  Accounts({RigaAccount(12, "noi@azienda.example", 1), RigaAccount(13, "muto@azienda.example", -1)});
  Apri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Mail");
    EXPECT_TRUE(finestra.Vede("CHK_RICEVUTA"));
    EXPECT_TRUE(finestra.Spuntata("CHK_RICEVUTA"));
    finestra.VoceDopo("CMB_ACCOUNT");
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "muto@azienda.example - Mail");
    EXPECT_FALSE(finestra.Vede("CHK_RICEVUTA"));
    finestra.VocePrima("CMB_ACCOUNT");
    EXPECT_TRUE(finestra.Vede("CHK_RICEVUTA"));
  });
}

TEST_F(ContrattoInvio, AnAccountFixedByTheParametersCannotBeChanged) {
  servizio->IsInvioMailConParams(true);
  Apri([](const Vista& finestra) {
    EXPECT_TRUE(finestra.Vede("CMB_ACCOUNT"));
    EXPECT_FALSE(finestra.Attivo("CMB_ACCOUNT"));
  });
}

TEST_F(ContrattoInvio, TheReceiptBoxGoesWithTheMessage) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const Vista& finestra) {
    EXPECT_FALSE(finestra.Spuntata("CHK_RICEVUTA"));
    finestra.Clicca("CHK_RICEVUTA");
    EXPECT_TRUE(toolkit->Attende([&] { return finestra.Spuntata("CHK_RICEVUTA"); }));
    Invia(finestra);
  });
  EXPECT_TRUE(servizio->ReadReceipt);
}

// Nothing of the toolkit holds on to an object that the window has let go: whoever made it would see it live
// on.
TEST_F(ContrattoInvio, ItsObjectsAreReleasedOneAfterTheOtherWhenItCloses) {
  servizio->vElencoAllegati = Variant::Array{toolkit->File("a.txt")};
  Apri([&](const Vista& finestra) {
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt"));
    toolkit->NelProgramma([&] { journal->Add("chiusura"); });
    finestra.Chiude();
  });
  EXPECT_THAT(journal->Righe({"chiusura", "rilascio "}),
              ElementsAre("chiusura", "rilascio CollezioneFile", "rilascio RecordSetScollegato",
                          "rilascio Messaggi"));
}

struct Uscita {
  const char* nome;
  void (*azione)(const Vista&);
};

class ContrattoUscita : public Contratto, public ::testing::WithParamInterface<Uscita> {};

TEST_P(ContrattoUscita, LeavesNoTrace) {
  servizio->vOggetto = "Prima";
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const Vista& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Dopo");
    GetParam().azione(finestra);
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

INSTANTIATE_TEST_SUITE_P(Modi, ContrattoUscita,
                         ::testing::Values(Uscita{"Annulla", [](const Vista& f) { f.Clicca("cmd_Annulla"); }},
                                           Uscita{"Chiudi", [](const Vista& f) { f.Chiude(); }}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

class ContrattoCanale : public Contratto, public ::testing::WithParamInterface<ChannelTraits> {};

TEST_P(ContrattoCanale, TheSenderIsSeenWhereItCanBeChosen) {
  servizio->SrvMailInstallato = GetParam().numero;
  Apri([conMittente = GetParam().haAccount](const Vista& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Invio email...");
    EXPECT_EQ(finestra.Vede("FMR_MITTENTE"), conMittente);
    EXPECT_EQ(finestra.Vede("CMB_ACCOUNT"), conMittente);
    EXPECT_EQ(finestra.Vede("CHK_RICEVUTA"), conMittente);
    EXPECT_FALSE(finestra.Vede("CHK_CORPO"));
    EXPECT_FALSE(finestra.Vede("CHK_CONSEGNA"));
  });
}

INSTANTIATE_TEST_SUITE_P(Canali, ContrattoCanale, ::testing::ValuesIn(CanaliConFinestra()), NomeDelCanale);

TEST_F(ContrattoInvio, TheBookOfTheApplicationIsSwitchedOffWithoutItsManager) {
  Apri([](const Vista& finestra) {
    EXPECT_THAT(finestra.VociDiMenu("BTN_DEST_A"), ElementsAre("(Arvio)", "Outlook"));
    EXPECT_THAT(finestra.VociDiMenu("BTN_DEST_CCN"), ElementsAre("(Arvio)", "Outlook"));
  });
}

// The check box for the body starts switched off, and is then set to off: that alone loads the text.
TEST_F(ContrattoInvio, WithoutABodyOfTheCallersTheStandingMessageIsOpenForEditing) {
  servizio->vFlagCorpo = 0;
  servizio->vCorpoMail = "messo dal chiamante";
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***";
  Apri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Gentile ***(Nome)***");
    EXPECT_TRUE(finestra.Attivo("TXT_CORPO"));
    finestra.Digita("TXT_CORPO", "!");
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Gentile ***(Nome)***!");
  });
}

TEST_F(ContrattoInvio, ASpecialFieldGoesToTheEndOfTheBody) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Gentile";
  ambiente->parametriCorpo =
      Variant::Array{Variant::Array{"Nome cliente", "#NOME"}, Variant::Array{"Niente", ""}};
  Apri([&](const Vista& finestra) {
    EXPECT_THAT(finestra.VociDiMenu("CMD_LEGENDA"), ElementsAre("Nome cliente"));
    finestra.Sceglie("CMD_LEGENDA", "Nome cliente");
    EXPECT_TRUE(toolkit->Attende([&] { return finestra.Contenuto("TXT_CORPO") == "Gentile ***(NOME)***"; }));
  });
}

}  // namespace
}  // namespace orve::window_contract
