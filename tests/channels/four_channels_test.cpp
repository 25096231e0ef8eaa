// The four channels side by side: the same message, the same incident, and for each channel all that can be
// seen of it: what it hands over, vNome and vIndDestinatario, Stato, register lines, events, the log line of
// an unattended send, and the messages in both kinds of mode.
//
// What should be seen is in four_channels/*.txt, one file for each incident, one section for each channel. It
// is compared as a whole, so that a difference that disappears is noticed just like one that appears.
#include <functional>
#include <string>

#include "channels/prova_del_canale.h"
#include "golden.h"
#include "text/text.h"

namespace orve {
namespace {

/// A blank at the end of a line is shown as "·", so that it can be seen, and a line end inside a text as "¶".
std::string ConBianchiVisibili(const std::string& testo) {
  return text::Replace(text::Replace(testo, "\r\n", "¶"), " \n", "·\n");
}

using Passo = std::function<void(ProvaDelCanale&)>;

/// All that is seen of a message sent unattended and attended through a channel, with what happens in
/// between.
std::string Visto(const fakes::OggettiDelCanale& canale, const Passo& accade) {
  ProvaDelCanale automatica(canale, kvAutomatico);
  accade(automatica);
  automatica.Invia();
  ProvaDelCanale manuale(canale, kvManuale);
  accade(manuale);
  manuale.Invia();
  EXPECT_EQ(manuale.Consegna(), automatica.Consegna()) << canale.titolo;
  EXPECT_EQ(manuale.Campi(), automatica.Campi()) << canale.titolo;
  EXPECT_EQ(manuale.Log(), "") << canale.titolo;
  EXPECT_EQ(manuale.Registrazioni(), automatica.Registrazioni()) << canale.titolo;
  return automatica.Consegna() + automatica.Campi() + automatica.Registrazioni() + automatica.Log() +
         automatica.Messaggi("automatico") + manuale.Messaggi("manuale");
}

/// Compares what is seen of it through each channel with the file of this name.
void Confronta(const std::string& nome, const Passo& accade) {
  std::string visto;
  for (const fakes::OggettiDelCanale& canale : fakes::OggettiDeiCanali())
    visto += "== " + std::string(canale.titolo) + "\n" + Visto(canale, accade);
  EXPECT_EQ(golden::Difference("tests/channels/four_channels/" + nome + ".txt", ConBianchiVisibili(visto)),
            "");
}

/// The same of a message that something happens to: each channel shows that it did.
void ConfrontaIncidente(const std::string& nome, const Passo& messaggio, const Passo& incidente) {
  const Passo entrambi = [&](ProvaDelCanale& prova) {
    messaggio(prova);
    incidente(prova);
  };
  Confronta(nome, entrambi);
  for (const fakes::OggettiDelCanale& canale : fakes::OggettiDeiCanali())
    EXPECT_NE(Visto(canale, entrambi), Visto(canale, messaggio))
        << nome << " leaves no trace: " << canale.titolo;
}

/// The same where the message is not delivered: no channel says that it was.
void ConfrontaMancato(const std::string& nome, const Passo& messaggio, const Passo& incidente) {
  ConfrontaIncidente(nome, messaggio, incidente);
  for (const fakes::OggettiDelCanale& canale : fakes::OggettiDeiCanali()) {
    ProvaDelCanale prova(canale, kvAutomatico);
    messaggio(prova);
    incidente(prova);
    prova.Invia();
    EXPECT_NE(prova.servizio->Stato(), kvOK) << canale.titolo;
    EXPECT_EQ(prova.Registrazioni().find("EsitoInvio 0"), std::string::npos) << canale.titolo;
  }
}

void UnoSenzaRegistro(ProvaDelCanale& prova) {
  UnoConAllegato(prova);
  prova.interno.oggetti.ObjRegistroInvio.reset();
}

TEST(QuattroCanali, AMessageThatIsDelivered) {
  Confronta("delivered", [](ProvaDelCanale& prova) {
    prova.Destinatario("Rossi, Anna", "anna@x.example");
    prova.Destinatario("", " bruno@x.example ");
    prova.Destinatario("Carla", "carla@x.example", 1);
    prova.Destinatario("Dario", "dario@x.example", 2);
    prova.Destinatario("Elio", "elio@x.example", 3);
    prova.Allegati({"C:\\f.pdf", "l.pdf"});
  });
}

TEST(QuattroCanali, AMessageWithoutAMainRecipientCutsTheNameOfBeforeAndEmptiesTheAddress) {
  Confronta("no_main_recipient", [](ProvaDelCanale& prova) {
    prova.servizio->vNome = "Primo";
    prova.servizio->vIndDestinatario = "primo@x.example";
    prova.Destinatario("Carla", "carla@x.example", 1);
  });
}

TEST(QuattroCanali, AMessageThatIsDeliveredWithoutARegister) {
  Confronta("delivered_without_register", UnoSenzaRegistro);
}

TEST(QuattroCanali, AMessageThatTheCompanyWantsAsHTML) {
  Confronta("html", [](ProvaDelCanale& prova) {
    UnoConAllegato(prova);
    prova.servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*prova.ambiente, 7, true, false);
    prova.connessione->Risponde("'AIT_MAIL_HTML'", {{{"", 1}}});
    prova.connessione->Risponde("'AIT_FIRME'", {{{"FW95_VALORE", "FIRME"}}});
    prova.connessione->Risponde("INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'FIRME'", {{{"", 1}}});
    prova.connessione->Risponde(" FROM FIRME",
                                {{{"FIRMA_HTML", "<b>Orve</b>"}, {"FONT", "Arial"}, {"DIMENSIONE", 2}}});
  });
}

void Rifiuta(ProvaDelCanale& prova) {
  prova.canale.rifiuta(*prova.ambiente);
}

TEST(QuattroCanali, AMessageThatIsRefused) {
  ConfrontaMancato("refused", UnoConAllegato, Rifiuta);
}

TEST(QuattroCanali, AMessageThatIsRefusedWithoutARegister) {
  ConfrontaMancato("refused_without_register", UnoSenzaRegistro, Rifiuta);
}

TEST(QuattroCanali, AChannelThatDoesNotOpen) {
  ConfrontaMancato("not_opened", UnoConAllegato, [](ProvaDelCanale& prova) {
    prova.interno.account.SmtpServer.clear();
    if (prova.canale.nonSiApre != nullptr) prova.canale.nonSiApre(*prova.ambiente);
  });
}

TEST(QuattroCanali, AMemberThatRaisesInTheMiddle) {
  ConfrontaMancato("member_raises", UnoConAllegato, [](ProvaDelCanale& prova) {
    prova.journal->Fallisce(std::string(prova.canale.soggetto), {1001, "Oggetto", "membro guasto"});
  });
}

// Neither among those that the settings have made nor on the machine.
TEST(QuattroCanali, AChannelWhoseObjectIsNotThere) {
  ConfrontaMancato("object_not_there", UnoConAllegato, [](ProvaDelCanale& prova) {
    prova.interno.oggetti.objOutlookApp.reset();
    prova.journal->Fallisce(fakes::RigaDiCreazione(prova.canale), host::Errore(host::kOggettoNonCreabile));
  });
}

TEST(QuattroCanali, AnAttachmentThatIsRefused) {
  ConfrontaIncidente(
      "attachment_refused",
      [](ProvaDelCanale& prova) {
        prova.Destinatario("Anna", "anna@x.example");
        prova.Allegati({"C:\\f.pdf", "C:\\manca.pdf", "C:\\altro.pdf"});
      },
      [](ProvaDelCanale& prova) {
        prova.canale.rifiutaFile(*prova.ambiente, "C:\\manca.pdf", {1001, "File", "file non trovato"});
      });
}

TEST(QuattroCanali, AnEmptyPathInFrontOfTheAttachments) {
  Confronta("empty_path", [](ProvaDelCanale& prova) {
    prova.Destinatario("Anna", "anna@x.example");
    prova.Allegati({"", "C:\\f.pdf"});
  });
}

TEST(QuattroCanali, ABodyThatCannotBeFilled) {
  ConfrontaIncidente("body_not_filled", UnoConAllegato, [](ProvaDelCanale& prova) {
    prova.journal->Fallisce("ConnectionADO.Execute -1           SELECT  FW07_USERNAME",
                            {1001, "Database", "connessione interrotta"});
  });
}

TEST(QuattroCanali, AnEmptyBody) {
  ConfrontaIncidente("empty_body", UnoConAllegato,
                     [](ProvaDelCanale& prova) { prova.servizio->vCorpoMail.clear(); });
}

TEST(QuattroCanali, AnEmptyCollection) {
  Confronta("empty_collection", [](ProvaDelCanale& prova) { prova.Allegati({"C:\\f.pdf"}); });
}

TEST(QuattroCanali, NoCollectionAtAll) {
  Confronta("no_collection", [](ProvaDelCanale& prova) { prova.servizio->vCollDestinatari.reset(); });
}

TEST(QuattroCanali, ARegisterThatFailsAfterTheDelivery) {
  ConfrontaIncidente("register_fails", UnoConAllegato, [](ProvaDelCanale& prova) {
    prova.journal->Fallisce("ObjRegistroInvio.RegistraInvio", {1001, "Registro", "pieno"});
  });
}

}  // namespace
}  // namespace orve
