// Attachments in the compose window, and the parameters window, on every toolkit.
#include <string>
#include <vector>

#include "window_contract/contratto.h"

namespace orve::window_contract {
namespace {

using host::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ContrattoAllegati : public Contratto {
 protected:
  ContrattoAllegati() { Collezione().AddFromLista("anna@x.example", "Anna", "", 0); }
};

const std::vector<std::string> kSpente = {"(Elimina allegato)", "(Elimina tutti gli allegati)"};
const std::vector<std::string> kAccese = {"Elimina allegato", "Elimina tutti gli allegati"};

TEST_F(ContrattoAllegati, AChosenFileIsListedAndSent) {
  const std::string uno = toolkit->File("uno.pdf");
  const std::string due = toolkit->File("due è.pdf");
  Apri([&](const Vista& finestra) {
    EXPECT_EQ(finestra.VociDiMenu("BTN_ELIMINA"), kSpente);
    Allega(finestra, uno);
    Allega(finestra, due);
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due è.pdf"));
    EXPECT_EQ(finestra.RigaSelezionata(), 2);
    EXPECT_EQ(finestra.VociDiMenu("BTN_ELIMINA"), kAccese);
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(uno, due));
}

TEST_F(ContrattoAllegati, AFileChosenTwiceIsListedOnce) {
  const std::string uno = toolkit->File("uno.pdf");
  Apri([&](const Vista& finestra) {
    Allega(finestra, uno);
    Allega(finestra, uno);
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf"));
  });
}

TEST_F(ContrattoAllegati, LeavingTheChoiceAddsNothing) {
  Apri([&](const Vista& finestra) {
    Allega(finestra, "");
    EXPECT_THAT(finestra.Righe(), IsEmpty());
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(ContrattoAllegati, AllOfThemGoOnlyWhenThePersonSaysYes) {
  servizio->vElencoAllegati = Variant::Array{toolkit->File("a.txt"), toolkit->File("b.txt")};
  const std::string domanda = "Rimuovere tutti gli allegati dalla mail?";
  Apri([&](const Vista& finestra) {
    const auto tutti = [&] { finestra.Sceglie("BTN_ELIMINA", "Elimina tutti gli allegati"); };
    toolkit->Risponde(tutti, domanda, Risposta::kNo);
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt", "b.txt"));
    toolkit->Risponde(tutti, domanda, Risposta::kSi);
    EXPECT_TRUE(toolkit->Attende([&] { return finestra.Righe().empty(); }));
    EXPECT_EQ(finestra.VociDiMenu("BTN_ELIMINA"), kSpente);
  });
}

TEST_F(ContrattoAllegati, AFileThatIsNotThereIsNotListed) {
  servizio->vElencoAllegati = Variant::Array{toolkit->Mancante()};
  Apri([&](const Vista& finestra) { EXPECT_THAT(finestra.Righe(), IsEmpty()); });
}

TEST_F(ContrattoAllegati, AFileFromOutsideTravelsAsACopy) {
  toolkit->VaCopiato(true);
  const std::string chiavetta = toolkit->File("chiavetta.txt", "dati");
  Apri([&](const Vista& finestra) {
    Allega(finestra, chiavetta);
    EXPECT_THAT(finestra.Righe(), ElementsAre("chiavetta.txt"));
    toolkit->Rimuove(chiavetta);
    Invia(finestra);
  });
  ASSERT_EQ(Consegnati().size(), 1U);
  const std::string copia = Consegnati().front();
  EXPECT_NE(copia, chiavetta);
  EXPECT_TRUE(copia.ends_with("\\chiavetta.txt"));
  EXPECT_EQ(toolkit->Legge(copia), "dati");
}

class ContrattoParametri : public Contratto {
 protected:
  void Conferma(const Vista& finestra) {
    finestra.Clicca("CMD_OK");
    EXPECT_TRUE(Chiusa(finestra));
  }
};

TEST_F(ContrattoParametri, WithoutASenderWhatBelongsToItIsNotSeen) {
  servizio->SrvMailInstallato = kvMAPI;
  Parametri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Personalizzazione unica invio mail");
    for (const char* nome :
         {"CMB_TIPO", "CMB_ACCOUNT", "CHK_READ", "CHK_DELIVERY", "KVL_LABEL1", "KVL_LABEL2"}) {
      EXPECT_FALSE(finestra.Vede(nome)) << nome;
    }
  });
}

TEST_F(ContrattoParametri, TheAnswersReachTheService) {
  const std::string file = toolkit->File("listino.pdf");
  servizio->MailParamCorpoUnico("Prima");
  Parametri([&](const Vista& finestra) {
    Allega(finestra, file);
    EXPECT_TRUE(
        toolkit->Attende([&] { return finestra.Contenuto("TXT_ALLEGATO") == toolkit->PerPersona(file); }));
    finestra.Clicca("CHK_READ");
    finestra.Riscrive("TXT_CORPO", "Dopo");
    Conferma(finestra);
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), file);
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Dopo");
  EXPECT_TRUE(servizio->MailParamReadRcpt());
  EXPECT_FALSE(servizio->MailParamDeliveryStatus());
}

TEST_F(ContrattoParametri, APathThatDoesNotExistIsToldAndTheWindowStays) {
  Parametri([&](const Vista& finestra) {
    finestra.Digita("TXT_ALLEGATO", toolkit->Mancante());
    EXPECT_EQ(
        toolkit->Risponde([&] { finestra.Clicca("CMD_OK"); }, "Percorso allegato non valido.", Risposta::kOk),
        "Avviso");
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
}

TEST_F(ContrattoParametri, APathThatIsChangedByHandAfterItsChoiceIsTheOneThatCounts) {
  const std::string scelto = toolkit->File("listino.pdf");
  const std::string scritto = toolkit->File("listino.pdf.p7m");
  Parametri([&](const Vista& finestra) {
    Allega(finestra, scelto);
    EXPECT_TRUE(
        toolkit->Attende([&] { return finestra.Contenuto("TXT_ALLEGATO") == toolkit->PerPersona(scelto); }));
    finestra.Digita("TXT_ALLEGATO", ".p7m");
    Conferma(finestra);
  });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), scritto);
}

TEST_F(ContrattoParametri, AFileThatVanishesBetweenTheChoiceAndTheOkIsRefused) {
  const std::string file = toolkit->File("listino.pdf");
  Parametri([&](const Vista& finestra) {
    Allega(finestra, file);
    EXPECT_TRUE(
        toolkit->Attende([&] { return finestra.Contenuto("TXT_ALLEGATO") == toolkit->PerPersona(file); }));
    toolkit->Rimuove(file);
    toolkit->Risponde([&] { finestra.Clicca("CMD_OK"); }, "Percorso allegato non valido.", Risposta::kOk);
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "");
}

TEST_F(ContrattoParametri, ChoosingPecLoadsTheAccountsOfThatKind) {
  Parametri([&](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("CMB_TIPO"), "Mail");
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Mail");
    finestra.VoceDopo("CMB_TIPO");
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Pec");
    Conferma(finestra);
  });
  EXPECT_EQ(servizio->MailParamTipo(), 1.0F);
  EXPECT_TRUE(servizio->IsPec());
}

TEST_F(ContrattoParametri, APathIsLimitedForThePersonAndNotForTheChoice) {
  const std::string lungo = toolkit->File(std::string(120, 'n') + ".pdf");
  Parametri([&](const Vista& finestra) {
    finestra.Incolla("TXT_ALLEGATO", std::string(200, 'x'));
    EXPECT_EQ(finestra.Contenuto("TXT_ALLEGATO"), std::string(100, 'x'));
    Allega(finestra, lungo);
    EXPECT_TRUE(
        toolkit->Attende([&] { return finestra.Contenuto("TXT_ALLEGATO") == toolkit->PerPersona(lungo); }));
    Conferma(finestra);
  });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), lungo);
}

}  // namespace
}  // namespace orve::window_contract
