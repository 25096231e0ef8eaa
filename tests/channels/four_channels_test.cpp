// The four channels side by side: the same message, the same incident, and for each channel all that can be
// seen of it: what it hands over, vNome and vIndDestinatario, Stato, register lines, events, the log line of
// an unattended send, and the messages in both kinds of mode.
//
// What should be seen is in four_channels/*.txt, one file for each incident, one section for each channel. It
// is compared as a whole, so that a difference that disappears is noticed just like one that appears.
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/oggetti_del_canale.h"
#include "fakes/servizio_di_prova.h"
#include "golden.h"
#include "text/text.h"

namespace orve {
namespace {

/// One send of one service over fakes of its own.
class Prova {
 public:
  Prova(const fakes::OggettiDelCanale& oggetti, kvEnumModalitaInvio modo) : canale(oggetti) {
    servizio->ConnectionADO = connessione;
    servizio->SrvMailInstallato = canale.canale;
    servizio->ModalitaInvio(modo);
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "Per ***(Nome)***";
    servizio->vOggetto = "Fattura 12";
    servizio->vDitta = "Acme S.p.A.";
    servizio->vMailAttachment = "C:\\f.pdf";
    servizio->DittaCorrente = 1;
    servizio->ReadReceipt = true;
    servizio->vNotifyDelivery = true;
    servizio->IsPec(true);
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    interno.impostazioni.PathTemp = "C:\\Temp";
    interno.impostazioni.FlagBcc = true;
    interno.esito.StatoInvio = kvInvioNonImpostato;  // to see whether a channel touches it
    interno.account.SmtpServer = "smtp.azienda.example";
    servizio->vSenderAddress = "noi@azienda.example";
    ambiente->versioneOutlook = "14.0.0.7268";
    interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
    interno.oggetti.ObjRegistroInvio = ambiente->CreaRegistroInvio();
  }
  Prova(const Prova&) = delete;
  Prova& operator=(const Prova&) = delete;
  ~Prova() = default;

  void Destinatario(const std::string& nome, const std::string& indirizzo, std::int16_t casella = 0) const {
    servizio->vCollDestinatari->AddFromLista(indirizzo, nome, "", casella);
  }
  void Allegati(const std::vector<std::string>& percorsi) const {
    for (const auto& percorso : percorsi) servizio->AddAllegato(percorso);
  }
  void Invia() {
    journal->Svuota();
    servizio->InviaMail();
  }

  /// What the channel gave to its object of recipients, attachments and body, and whether it sent.
  [[nodiscard]] std::string Consegna() const {
    std::vector<std::string_view> inizi;  // of all channels: none touches the object of another
    for (const fakes::OggettiDelCanale& uno : fakes::OggettiDeiCanali()) {
      inizi.insert(inizi.end(), uno.confronto.begin(), uno.confronto.end());
      inizi.push_back(uno.invio);
    }
    std::string testo;
    for (const auto& riga : journal->Righe(inizi)) testo += riga + "\n";
    for (const auto& invio : ambiente->inviiMapi) {
      for (const auto& d : invio.destinatari)
        testo += "recip " + std::to_string(d.RecipClass) + " " + d.Name + "\n";
      for (const auto& f : invio.file) testo += "file " + f.PathName + " " + f.FileName + "\n";
      testo += "subject " + invio.messaggio.Subject + "\nnote " + invio.messaggio.NoteText + "\n";
    }
    return testo;
  }
  [[nodiscard]] std::string Campi() const {
    return "vNome " + servizio->vNome + "\nvIndDestinatario " + servizio->vIndDestinatario + "\nStato " +
           std::to_string(servizio->Stato()) + "\n";
  }
  [[nodiscard]] std::string Registrazioni() const {
    constexpr std::string_view kRegistro = "ObjRegistroInvio.";
    std::string testo;
    for (const auto& riga : journal->Righe({kRegistro, "ConnectionADO.Execute 1 exec "})) {
      if (riga.starts_with(kRegistro)) {
        testo += "registro " + riga.substr(kRegistro.size()) + "\n";
      } else {
        // The code, and the payload after the part that is the same in every event.
        constexpr std::string_view kComune = "<GRP_COD=/>";
        const std::size_t inizio = riga.find(kComune) + kComune.size();
        testo += "evento " + riga.substr(riga.find(", ") + 2, 2) + " " +
                 riga.substr(inizio, riga.find("' , 1") - inizio) + "\n";
      }
    }
    return testo;
  }
  /// The lines of the send log after its heading.
  [[nodiscard]] std::string Log() const {
    const auto righe = journal->Righe({"TextStream.WriteLine "});
    std::string testo;
    for (std::size_t i = 1; i < righe.size(); ++i) testo += "log " + righe[i].substr(21) + "\n";
    return testo;
  }
  [[nodiscard]] std::string Messaggi(const std::string& modo) const {
    std::string testo;
    for (const auto& riga : journal->Righe({"ObjMessaggi.MostraMsg "}))
      testo += modo + " " + riga.substr(22) + "\n";
    return testo;
  }

  const fakes::OggettiDelCanale& canale;
  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::JournalPtr journal = ambiente->journal;
  std::shared_ptr<fakes::FakeConnection> connessione = std::make_shared<fakes::FakeConnection>(journal);
  fakes::ServizioAperto aperto{ambiente};
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto.servizio;
  Interno& interno = aperto.interno;
};

/// A blank at the end of a line is shown as "·", so that it can be seen, and a line end inside a text as "¶".
std::string ConBianchiVisibili(const std::string& testo) {
  return text::Replace(text::Replace(testo, "\r\n", "¶"), " \n", "·\n");
}

using Passo = std::function<void(Prova&)>;

/// All that is seen of a message sent unattended and attended through a channel, with what happens in
/// between.
std::string Visto(const fakes::OggettiDelCanale& canale, const Passo& accade) {
  Prova automatica(canale, kvAutomatico);
  accade(automatica);
  automatica.Invia();
  Prova manuale(canale, kvManuale);
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
  const Passo entrambi = [&](Prova& prova) {
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
    Prova prova(canale, kvAutomatico);
    messaggio(prova);
    incidente(prova);
    prova.Invia();
    EXPECT_NE(prova.servizio->Stato(), kvOK) << canale.titolo;
    EXPECT_EQ(prova.Registrazioni().find("EsitoInvio 0"), std::string::npos) << canale.titolo;
  }
}

void UnoConAllegato(Prova& prova) {
  prova.Destinatario("Anna", "anna@x.example");
  prova.Allegati({"C:\\f.pdf"});
}

void UnoSenzaRegistro(Prova& prova) {
  UnoConAllegato(prova);
  prova.interno.oggetti.ObjRegistroInvio.reset();
}

TEST(QuattroCanali, AMessageThatIsDelivered) {
  Confronta("delivered", [](Prova& prova) {
    prova.Destinatario("Rossi, Anna", "anna@x.example");
    prova.Destinatario("", " bruno@x.example ");
    prova.Destinatario("Carla", "carla@x.example", 1);
    prova.Destinatario("Dario", "dario@x.example", 2);
    prova.Destinatario("Elio", "elio@x.example", 3);
    prova.Allegati({"C:\\f.pdf", "l.pdf"});
  });
}

TEST(QuattroCanali, AMessageWithoutAMainRecipientCutsTheNameOfBeforeAndEmptiesTheAddress) {
  Confronta("no_main_recipient", [](Prova& prova) {
    prova.servizio->vNome = "Primo";
    prova.servizio->vIndDestinatario = "primo@x.example";
    prova.Destinatario("Carla", "carla@x.example", 1);
  });
}

TEST(QuattroCanali, AMessageThatIsDeliveredWithoutARegister) {
  Confronta("delivered_without_register", UnoSenzaRegistro);
}

TEST(QuattroCanali, AMessageThatTheCompanyWantsAsHTML) {
  Confronta("html", [](Prova& prova) {
    UnoConAllegato(prova);
    prova.servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*prova.ambiente, 7, true, false);
    prova.connessione->Risponde("'AIT_MAIL_HTML'", {{{"", 1}}});
    prova.connessione->Risponde("'AIT_FIRME'", {{{"FW95_VALORE", "FIRME"}}});
    prova.connessione->Risponde("INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'FIRME'", {{{"", 1}}});
    prova.connessione->Risponde(" FROM FIRME",
                                {{{"FIRMA_HTML", "<b>Orve</b>"}, {"FONT", "Arial"}, {"DIMENSIONE", 2}}});
  });
}

void Rifiuta(Prova& prova) {
  prova.canale.rifiuta(*prova.ambiente);
}

TEST(QuattroCanali, AMessageThatIsRefused) {
  ConfrontaMancato("refused", UnoConAllegato, Rifiuta);
}

TEST(QuattroCanali, AMessageThatIsRefusedWithoutARegister) {
  ConfrontaMancato("refused_without_register", UnoSenzaRegistro, Rifiuta);
}

TEST(QuattroCanali, AChannelThatDoesNotOpen) {
  ConfrontaMancato("not_opened", UnoConAllegato, [](Prova& prova) {
    prova.interno.account.SmtpServer.clear();
    if (prova.canale.nonSiApre != nullptr) prova.canale.nonSiApre(*prova.ambiente);
  });
}

TEST(QuattroCanali, AMemberThatRaisesInTheMiddle) {
  ConfrontaMancato("member_raises", UnoConAllegato, [](Prova& prova) {
    prova.journal->Fallisce(std::string(prova.canale.soggetto), {1001, "Oggetto", "membro guasto"});
  });
}

// Neither among those that the settings have made nor on the machine.
TEST(QuattroCanali, AChannelWhoseObjectIsNotThere) {
  ConfrontaMancato("object_not_there", UnoConAllegato, [](Prova& prova) {
    prova.interno.oggetti.objOutlookApp.reset();
    prova.journal->Fallisce(fakes::RigaDiCreazione(prova.canale), host::Errore(host::kOggettoNonCreabile));
  });
}

TEST(QuattroCanali, AnAttachmentThatIsRefused) {
  ConfrontaIncidente(
      "attachment_refused",
      [](Prova& prova) {
        prova.Destinatario("Anna", "anna@x.example");
        prova.Allegati({"C:\\f.pdf", "C:\\manca.pdf", "C:\\altro.pdf"});
      },
      [](Prova& prova) {
        prova.canale.rifiutaFile(*prova.ambiente, "C:\\manca.pdf", {1001, "File", "file non trovato"});
      });
}

TEST(QuattroCanali, AnEmptyPathInFrontOfTheAttachments) {
  Confronta("empty_path", [](Prova& prova) {
    prova.Destinatario("Anna", "anna@x.example");
    prova.Allegati({"", "C:\\f.pdf"});
  });
}

TEST(QuattroCanali, ABodyThatCannotBeFilled) {
  ConfrontaIncidente("body_not_filled", UnoConAllegato, [](Prova& prova) {
    prova.journal->Fallisce("ConnectionADO.Execute -1           SELECT  FW07_USERNAME",
                            {1001, "Database", "connessione interrotta"});
  });
}

TEST(QuattroCanali, AnEmptyBody) {
  ConfrontaIncidente("empty_body", UnoConAllegato, [](Prova& prova) { prova.servizio->vCorpoMail.clear(); });
}

TEST(QuattroCanali, AnEmptyCollection) {
  Confronta("empty_collection", [](Prova& prova) { prova.Allegati({"C:\\f.pdf"}); });
}

TEST(QuattroCanali, NoCollectionAtAll) {
  Confronta("no_collection", [](Prova& prova) { prova.servizio->vCollDestinatari.reset(); });
}

TEST(QuattroCanali, ARegisterThatFailsAfterTheDelivery) {
  ConfrontaIncidente("register_fails", UnoConAllegato, [](Prova& prova) {
    prova.journal->Fallisce("ObjRegistroInvio.RegistraInvio", {1001, "Registro", "pieno"});
  });
}

}  // namespace
}  // namespace orve
