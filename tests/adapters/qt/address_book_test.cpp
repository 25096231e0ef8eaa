// The address book of the reference host, over the embedded database, on its own and from the menus of the
// compose window.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTest>
#include <QTreeView>
#include <string>
#include <vector>

#include "ambiente/parametri_corpo.h"
#include "orve-mail/address-book/rubrica_finestra.h"
#include "orve-mail/address-book/rubrica_manager.h"
#include "prova.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_connection.h"

namespace orve::adapters::qt {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// The names in the list, as the person sees them.
std::vector<std::string> Nominativi(QWidget& finestra, int colonna = 0) {
  const auto* modello = Trova<QTreeView>(finestra, "LST_NOMINATIVI").model();
  std::vector<std::string> nomi;
  for (int i = 0; i < modello->rowCount(); ++i) {
    nomi.push_back(modello->index(i, colonna).data().toString().toStdString());
  }
  return nomi;
}

std::string Corrente(QWidget& finestra) {
  const QModelIndex indice = Trova<QTreeView>(finestra, "LST_NOMINATIVI").currentIndex();
  return indice.siblingAtColumn(0).data().toString().toStdString();
}

// "x" before what is checked.
std::vector<std::string> Indirizzi(QWidget& finestra) {
  const auto& lista = Trova<QListWidget>(finestra, "LST_INDIRIZZI");
  std::vector<std::string> voci;
  for (int i = 0; i < lista.count(); ++i) {
    const bool preso = lista.item(i)->checkState() == Qt::Checked;
    voci.push_back((preso ? "x " : "- ") + lista.item(i)->text().toStdString());
  }
  return voci;
}

std::string Quanti(QWidget& finestra) {
  return Trova<QLabel>(finestra, "LBL_QUANTI").text().toStdString();
}

void Cerca(QWidget& finestra, const std::string& testo) {
  Riscrive(finestra, "TXT_CERCA", testo);
}

void CliccaRiga(QWidget& finestra, int riga, bool due = false) {
  auto& elenco = Trova<QTreeView>(finestra, "LST_NOMINATIVI");
  const QPoint dove = elenco.visualRect(elenco.model()->index(riga, 0)).center();
  QTest::mouseClick(elenco.viewport(), Qt::LeftButton, Qt::NoModifier, dove);
  if (due) QTest::mouseDClick(elenco.viewport(), Qt::LeftButton, Qt::NoModifier, dove);
}

class RubricaVera : public FinestraVera {
 protected:
  RubricaVera() {
    const std::string file = cartella.Radice() + "/prova.db";
    sqlite::CreaDatabase(file, [](const auto& password) {
      return std::string(password.chiara.rbegin(), password.chiara.rend());
    });
    archivio = sqlite::SqliteConnection::Apri(file);
    rubrica = app::CreaRubrica(ambiente, archivio, app::MostraFinestraRubrica);
    servizio->ManagerRubrica = rubrica;
    servizio->DittaCorrente = 1;
    connessione->Risponde("FW24_CODICE = 'FAX'", {{{"FW24_INDFAXATTIVO", 3}}});
  }

  void Sql(const std::string& statement) { static_cast<void>(archivio->Execute(statement, 1)); }
  /// The person opens the book from the menu of a button and acts in it.
  void Rubrica(QWidget& finestra, const std::string& pulsante, Regia::Passo persona) {
    regia.Poi("Rubrica", [persona = std::move(persona)](QWidget& libro) {
      persona(libro);
      if (libro.isVisible()) QTest::keyClick(&libro, Qt::Key_Escape);
    });
    Sceglie(finestra, pulsante, "Key_Arvio");
  }
  /// The book alone.
  void Libro(Regia::Passo persona) {
    Apri([&](QWidget& finestra) { Rubrica(finestra, "BTN_DEST_A", std::move(persona)); });
  }

  std::shared_ptr<sqlite::SqliteConnection> archivio;
  std::shared_ptr<host::ManagerRubrica> rubrica;
};

TEST_F(RubricaVera, WhoSearchesTypesAndConfirmsWithoutLeavingTheBox) {
  Apri([&](QWidget& finestra) {
    EXPECT_THAT(VociDiMenu(finestra, "BTN_DEST_A"), ElementsAre("Arvio", "Outlook", "Tobit"));
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "TXT_CERCA");
      EXPECT_EQ(Quanti(libro), "10 di 17 nominativi");
      EXPECT_EQ(Corrente(libro), "");
      EXPECT_FALSE(Trova(libro, "CMD_SCEGLI").isEnabled());
      QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("pas"));
      EXPECT_THAT(Nominativi(libro), ElementsAre("Pasticceria Città d'Oro S.n.c."));
      EXPECT_EQ(Corrente(libro), "Pasticceria Città d'Oro S.n.c.");
      EXPECT_THAT(Indirizzi(libro), ElementsAre("x ordini@cittadoro.example"));
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
      EXPECT_FALSE(libro.isVisible());
    });
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "Pasticceria Città d'Oro S.n.c.<ordini@cittadoro.example>");
    EXPECT_EQ(Trova<QLineEdit>(finestra, "TXT_DITTA").text().toStdString(), "Pasticceria Città d'Oro S.n.c.");
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Indirizzo(), "ordini@cittadoro.example");
}

TEST_F(RubricaVera, EachButtonFillsItsOwnBoxAndASecondPickIsJoined) {
  Apri([&](QWidget& finestra) {
    const auto prende = [&](const char* pulsante, const char* chi) {
      Rubrica(finestra, pulsante, [chi](QWidget& libro) {
        Cerca(libro, chi);
        Clicca(libro, "CMD_SCEGLI");
      });
    };
    prende("BTN_DEST_A", "vetreria");
    prende("BTN_DEST_A", "agenzia nord");
    prende("BTN_DEST_CC", "ufficio acquisti");
    prende("BTN_DEST_CCN", "molino");
    EXPECT_EQ(
        Contenuto(finestra, "TXT_EMAIL"),
        "Vetreria Laguna S.r.l.<vendite@vetrerialaguna.example>;Agenzia Nord Est<nordest@agenzie.example>");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL_CC"), "Ufficio Acquisti<ufficio.acquisti@bellariva.example>");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL_CCN"), "Molino Nuovo S.p.A.<info@molinonuovo.example>");
    Clicca(finestra, "cmd_Invia");
  });
  ASSERT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 4);
}

TEST_F(RubricaVera, AMouseMarksOneOfThePartyAndTakesIt) {
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      CliccaRiga(libro, 1);
      EXPECT_EQ(Corrente(libro), "Caffè «Perù» – Torrefazione Αθήνα");
      EXPECT_THAT(Indirizzi(libro), ElementsAre("x caffe@torrefazione.example"));
      CliccaRiga(libro, 0, true);
      EXPECT_FALSE(libro.isVisible());
    });
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "Agenzia Nord Est<nordest@agenzie.example>");
  });
}

TEST_F(RubricaVera, TheArrowsMoveInTheListFromTheSearch) {
  Libro([](QWidget& libro) {
    auto& cerca = Trova(libro, "TXT_CERCA");
    QTest::keyClick(&cerca, Qt::Key_Down);
    EXPECT_EQ(Corrente(libro), "Agenzia Nord Est");
    QTest::keyClick(&cerca, Qt::Key_Down);
    EXPECT_EQ(Corrente(libro), "Caffè «Perù» – Torrefazione Αθήνα");
    QTest::keyClick(&cerca, Qt::Key_PageDown);
    EXPECT_EQ(Corrente(libro), "Vetreria Laguna S.r.l.");
    QTest::keyClick(&cerca, Qt::Key_Up);
    EXPECT_EQ(Corrente(libro), "Ufficio Acquisti");
    QTest::keyClick(&cerca, Qt::Key_Return);
  });
  EXPECT_FALSE(rubrica->Annullata());
  EXPECT_EQ(rubrica->NomeScelto(), host::Variant("Ufficio Acquisti"));
}

TEST_F(RubricaVera, SeveralAddressesOfOnePartyBecomeSeveralEntriesWithItsName) {
  Sql("UPDATE CG16_ANAGGEN SET CG16_INDEMAIL = 'uno@x.example; due@x.example' WHERE CG16_CODICE = 203");
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_CC", [](QWidget& libro) {
      Cerca(libro, "vetreria");
      EXPECT_THAT(Indirizzi(libro), ElementsAre("x uno@x.example", "x due@x.example"));
      Clicca(libro, "CMD_SCEGLI");
    });
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL_CC"),
              "Vetreria Laguna S.r.l.<uno@x.example>;Vetreria Laguna S.r.l.<due@x.example>");
  });
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant("uno@x.example;due@x.example"));
}

TEST_F(RubricaVera, TheAddressesOfDestinationsAreOfferedAndTakenWhenMarked) {
  Libro([](QWidget& libro) {
    Cerca(libro, "officine verona");
    EXPECT_THAT(
        Indirizzi(libro),
        ElementsAre("x acquisti@bellariva.example", "- corsia@bellariva.example  (Bellariva, Corsia A/B/3)",
                    "- stabilimento@bellariva.example  (Bellariva, Stabilimento Sud)"));
    auto& lista = Trova<QListWidget>(libro, "LST_INDIRIZZI");
    QTest::keyClick(&Trova(libro, "TXT_CERCA"), Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), &lista);
    QTest::keyClick(&lista, Qt::Key_Space);
    EXPECT_FALSE(Trova(libro, "CMD_SCEGLI").isEnabled()) << "nothing is marked";
    QTest::keyClick(&lista, Qt::Key_Return);
    EXPECT_TRUE(libro.isVisible());
    QTest::keyClick(&lista, Qt::Key_Down);
    QTest::keyClick(&lista, Qt::Key_Space);
    QTest::keyClick(&lista, Qt::Key_Down);
    QTest::keyClick(&lista, Qt::Key_Space);
    QTest::keyClick(&lista, Qt::Key_Return);
    EXPECT_FALSE(libro.isVisible());
  });
  EXPECT_EQ(rubrica->IndirizzoScelto(),
            host::Variant("corsia@bellariva.example;stabilimento@bellariva.example"));
}

TEST_F(RubricaVera, ANewSearchKeepsTheMarksOfThePartyThatStays) {
  Libro([](QWidget& libro) {
    Cerca(libro, "officine");
    auto& lista = Trova<QListWidget>(libro, "LST_INDIRIZZI");
    lista.item(1)->setCheckState(Qt::Checked);
    Cerca(libro, "officine verona");
    EXPECT_EQ(Indirizzi(libro)[1], "x corsia@bellariva.example  (Bellariva, Corsia A/B/3)");
  });
}

TEST_F(RubricaVera, ACertifiedMessageGetsTheBookOfCertifiedAddresses) {
  servizio->IsPec(true);
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      EXPECT_EQ(libro.windowTitle().toStdString(), "Rubrica degli indirizzi PEC");
      EXPECT_EQ(Trova<QCheckBox>(libro, "CHK_SOLOCONINDIRIZZO").text().toStdString(),
                "Solo con indirizzo &PEC");
      EXPECT_EQ(Nominativi(libro, 4).front(), "nordest@pec.agenzie.example");
      Cerca(libro, "pasticceria");
      EXPECT_THAT(Nominativi(libro), ElementsAre("Responsabile Qualità")) << "the company is not there";
      Cerca(libro, "legnami");
      QTest::keyClick(&Trova(libro, "TXT_CERCA"), Qt::Key_Return);
    });
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"),
              "Legnami, Travi e Coperture S.r.l.<legnami@pec.legnami.example>");
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(RubricaVera, TheKindNarrowsTheList) {
  Libro([](QWidget& libro) {
    auto& genere = Trova<QComboBox>(libro, "CMB_GENERE");
    QTest::keyClick(&Trova(libro, "TXT_CERCA"), Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), &genere);
    const std::vector<std::vector<std::string>> want = {
        {"Caffè «Perù» – Torrefazione Αθήνα", "Molino Nuovo S.p.A.", "Officine Bellariva S.r.l.",
         "Pasticceria Città d'Oro S.n.c.", "Rottami e Recuperi S.r.l."},
        {"Trasporti Rapidi Adriatici S.p.A.", "Vetreria Laguna S.r.l."},
        {"Agenzia Nord Est"},
        {"Contatto senza legami", "Ufficio Acquisti"}};
    for (const auto& nomi : want) {
      QTest::keyClick(&genere, Qt::Key_Down);
      EXPECT_EQ(Nominativi(libro), nomi) << genere.currentText().toStdString();
    }
    Clicca(libro, "CHK_SOLOCONINDIRIZZO");
    EXPECT_THAT(Nominativi(libro), ElementsAre("Contatto senza legami", "Portineria", "Responsabile Qualità",
                                               "Ufficio Acquisti"));
    EXPECT_EQ(Quanti(libro), "4 di 17 nominativi");
  });
}

TEST_F(RubricaVera, WhoIsNotFoundLeavesAnEmptyListAndNothingToConfirm) {
  Libro([](QWidget& libro) {
    Cerca(libro, "nessuno si chiama così");
    EXPECT_THAT(Nominativi(libro), IsEmpty());
    EXPECT_EQ(Trova(libro, "LST_NOMINATIVI").accessibleDescription().toStdString(),
              "Nessun nominativo corrisponde alla ricerca.");
    EXPECT_THAT(Indirizzi(libro), IsEmpty());
    EXPECT_EQ(Quanti(libro), "0 di 17 nominativi");
    EXPECT_FALSE(Trova(libro, "CMD_SCEGLI").isEnabled());
    QTest::keyClick(&Trova(libro, "TXT_CERCA"), Qt::Key_Return);
    EXPECT_TRUE(libro.isVisible());
    Cerca(libro, "");
    EXPECT_THAT(Nominativi(libro), SizeIs(10));
  });
}

TEST_F(RubricaVera, APartyWithoutAnAddressGivesItsNameWithEmptyBracketsThatTheSendRefuses) {
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      Cerca(libro, "ferramenta s.a.s");
      EXPECT_THAT(Nominativi(libro), IsEmpty());
      Clicca(libro, "CHK_SOLOCONINDIRIZZO");
      CliccaRiga(libro, 0);
      EXPECT_EQ(Corrente(libro), "Ferramenta del Borgo S.a.s.");
      EXPECT_THAT(Indirizzi(libro), IsEmpty());
      Clicca(libro, "CMD_SCEGLI");
    });
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "Ferramenta del Borgo S.a.s.<>");
    regia.Risponde("L'elenco dei destinatari contiene un indirizzo non valido.");
    Clicca(finestra, "cmd_Invia");
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_FALSE(Consegnato());
}

struct Uscita {
  const char* nome;
  void (*azione)(QWidget&);
};

class RubricaLasciata : public RubricaVera, public ::testing::WithParamInterface<Uscita> {};

TEST_P(RubricaLasciata, LeavesTheBoxesAsTheyWere) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      Cerca(libro, "vetreria");
      GetParam().azione(libro);
      static_cast<void>(QTest::qWaitFor([&] { return !libro.isVisible(); }, kPazienza));
    });
    EXPECT_TRUE(finestra.isVisible());
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "Anna<anna@x.example>");
    EXPECT_EQ(Trova<QLineEdit>(finestra, "TXT_DITTA").text(), QString());
  });
  EXPECT_TRUE(rubrica->Annullata());
}

INSTANTIATE_TEST_SUITE_P(
    Modi, RubricaLasciata,
    ::testing::Values(
        Uscita{"Annulla", [](QWidget& l) { Clicca(l, "CMD_ANNULLA"); }},
        Uscita{"Mnemonico",
               [](QWidget& l) { QTest::keyClick(&Trova(l, "TXT_CERCA"), Qt::Key_A, Qt::AltModifier); }},
        Uscita{"Esc", [](QWidget& l) { QTest::keyClick(&Trova(l, "TXT_CERCA"), Qt::Key_Escape); }},
        Uscita{"Chiudi", [](QWidget& l) { l.close(); }}),
    [](const auto& caso) { return std::string(caso.param.nome); });

struct NomeDifficile {
  const char* nome;
  const char* inAnagrafica;
  const char* nellaCasella;
};

class NomiDifficili : public RubricaVera, public ::testing::WithParamInterface<NomeDifficile> {};

TEST_P(NomiDifficili, StandInTheBoxSoThatTheirAddressIsRead) {
  const std::string inAnagrafica = GetParam().inAnagrafica;
  const std::string nellaCasella = GetParam().nellaCasella;
  static_cast<void>(archivio->EseguiConValori(
      "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = ?1 WHERE CG16_CODICE = 203", {inAnagrafica}));
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      Cerca(libro, "vendite@vetrerialaguna");
      Clicca(libro, "CMD_SCEGLI");
    });
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), nellaCasella + "<vendite@vetrerialaguna.example>");
    Clicca(finestra, "cmd_Invia");
  });
  ASSERT_TRUE(Consegnato());
  ASSERT_EQ(servizio->vCollDestinatari->Count(), 1);
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Nome(), nellaCasella);
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Indirizzo(), "vendite@vetrerialaguna.example");
}

INSTANTIATE_TEST_SUITE_P(
    Casi, NomiDifficili,
    ::testing::Values(NomeDifficile{"Accents", "Città d’Oro & Perù", "Città d’Oro & Perù"},
                      NomeDifficile{"Comma", "Legnami, Travi", "Legnami, Travi"},
                      NomeDifficile{"Semicolon", "Rossi; Bianchi", "Rossi, Bianchi"},
                      NomeDifficile{"Brackets", "Rossi <sede di Padova>", "Rossi (sede di Padova)"},
                      NomeDifficile{"LineBreak", "Rossi\r\nBcc: x", "Rossi  Bcc: x"},
                      NomeDifficile{"RightToLeftMark", "Rossi\u200Fgro.live", "Rossi_gro.live"},
                      NomeDifficile{"Emoji", "😀 Gelateria", "😀 Gelateria"},
                      NomeDifficile{"RightToLeft", "שלום", "שלום"},
                      NomeDifficile{"Markup", "&lt;b&gt;Rossi&lt;/b&gt;", "&lt,b&gt,Rossi&lt,/b&gt,"}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(RubricaVera, WhatTurnsATextRoundIsShownAsAnEscape) {
  static_cast<void>(archivio->EseguiConValori(
      "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = ?1 WHERE CG16_CODICE = 203", {"Rossi\u200Fgro.live"}));
  Apri([&](QWidget& finestra) {
    Rubrica(finestra, "BTN_DEST_A", [](QWidget& libro) {
      Cerca(libro, "vendite@vetrerialaguna");
      EXPECT_THAT(Nominativi(libro), ElementsAre("Rossi\\u200Fgro.live"));
      libro.close();
    });
  });
}

TEST_F(RubricaVera, ThePartyOfTheMessageIsTheOneToBeginWith) {
  servizio->vDitta = "VETRERIA laguna s.r.l.";
  Libro([](QWidget& libro) {
    EXPECT_EQ(Corrente(libro), "Vetreria Laguna S.r.l.");
    EXPECT_THAT(Nominativi(libro), SizeIs(10));
    QTest::keyClick(&Trova(libro, "TXT_CERCA"), Qt::Key_Return);
  });
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant("vendite@vetrerialaguna.example"));
}

TEST_F(RubricaVera, AColumnSortsByItsHeader) {
  Libro([](QWidget& libro) {
    auto& elenco = Trova<QTreeView>(libro, "LST_NOMINATIVI");
    elenco.sortByColumn(2, Qt::AscendingOrder);
    EXPECT_THAT(Nominativi(libro, 2),
                ElementsAre("501", "503", "A01", "1001", "1001", "1002", "1006", "1007", "1008", "2001"));
    elenco.sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(Nominativi(libro).front(), "Vetreria Laguna S.r.l.");
  });
}

TEST_F(RubricaVera, TheKeyboardGoesThroughEverythingAndAllHasAName) {
  Libro([](QWidget& libro) {
    Cerca(libro, "v");
    std::vector<std::string> giro;
    for (int i = 0; i < 7; ++i) {
      auto* fuoco = QApplication::focusWidget();
      giro.push_back(fuoco->objectName().toStdString());
      const bool chiamato =
          !fuoco->accessibleName().isEmpty() || fuoco->property("text").toString() != QString();
      EXPECT_TRUE(chiamato) << giro.back();
      QTest::keyClick(fuoco, Qt::Key_Tab);
    }
    EXPECT_THAT(giro, ElementsAre("TXT_CERCA", "CMB_GENERE", "CHK_SOLOCONINDIRIZZO", "LST_NOMINATIVI",
                                  "LST_INDIRIZZI", "CMD_SCEGLI", "CMD_ANNULLA"));
  });
}

TEST_F(RubricaVera, ThousandsOfPartiesAreSearchedWhileOneTypes) {
  // Twenty keys: at quadratic cost they would take longer than a test may.
  Sql("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 49999) "
      "INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_INDEMAIL) "
      "SELECT 100000 + i, 'Società numero ' || i, 'n' || i || '@molti.example' FROM n");
  Sql("INSERT INTO CG44_CLIFOR SELECT 1, 0, CG16_CODICE, CG16_CODICE FROM CG16_ANAGGEN "
      "WHERE CG16_CODICE >= 100000");
  Libro([](QWidget& libro) {
    Cerca(libro, "societa numero 49999");
    EXPECT_THAT(Nominativi(libro), ElementsAre("Società numero 49999"));
    QTest::keyClick(&Trova(libro, "TXT_CERCA"), Qt::Key_Return);
  });
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant("n49999@molti.example"));
}

TEST_F(RubricaVera, AnEmptyBookSaysSo) {
  for (const char* tabella : {"MG22_CLIFORDEST", "CO03_LEGCONTATTO", "CO02_ANAGCONTATTO", "MG17_AGENTI",
                              "CG44_CLIFORVALIDITA", "CG44_CLIFOR"}) {
    Sql(std::string("DELETE FROM ") + tabella);
  }
  Libro([](QWidget& libro) {
    EXPECT_EQ(Trova(libro, "LST_NOMINATIVI").accessibleDescription().toStdString(), "La rubrica è vuota.");
    EXPECT_FALSE(Trova(libro, "CMD_SCEGLI").isEnabled());
  });
}

TEST_F(RubricaVera, ADatabaseThatFailsIsToldAndTheBoxesStay) {
  Apri([&](QWidget& finestra) {
    archivio->Chiudi();
    regia.Poi("MostraMsg", [](QWidget& casella) {
      EXPECT_THAT(dynamic_cast<QMessageBox&>(casella).text().toStdString(),
                  HasSubstr("ORVE_MAILSERVER: FRMFW_OPZMAIL: GestisciRubrica"));
      casella.close();
    });
    Sceglie(finestra, "BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "");
    EXPECT_TRUE(finestra.isVisible());
  });
}

TEST_F(RubricaVera, TheOtherBooksSayThatTheyDoNotExistAndChangeNothing) {
  Apri([&](QWidget& finestra) {
    Digita(finestra, "TXT_EMAIL", "anna@x.example");
    const std::string coda =
        " non esiste su questo computer.\n\nUsare la rubrica «Arvio», oppure scrivere l'indirizzo nella "
        "casella.";
    regia.Risponde("La rubrica di Outlook" + coda);
    Sceglie(finestra, "BTN_DEST_A", "Key_Outl");
    regia.Risponde("La rubrica di Tobit" + coda);
    Sceglie(finestra, "BTN_DEST_A", "Key_Tobit");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "anna@x.example");
  });
}

// --- the special fields of the body

class AmbienteConCampi : public AmbienteConFinestre {
 public:
  using AmbienteConFinestre::AmbienteConFinestre;
  std::shared_ptr<host::CLSFW_Parametri> CreaParametri() override { return ambiente::CreaParametriCorpo(); }
};

class CampiSpeciali : public FinestraVera {
 protected:
  CampiSpeciali()
      : FinestraVera(
            [](WindowOptions opzioni) { return std::make_shared<AmbienteConCampi>(std::move(opzioni)); }) {}
};

TEST_F(CampiSpeciali, EachOfThemIsAPlaceholderThatTheLibraryFills) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Testo";
  const host::Variant campi = ambiente::CreaParametriCorpo()->GetParametriCorpoMail();
  Collezione().AddFromLista("anna@x.example", "Anna", "Acme", 0);
  Apri([&](QWidget& finestra) {
    std::vector<std::string> didascalie;
    for (const auto& campo : campi.ToArray()) didascalie.push_back(campo.ToArray()[0].ToText());
    EXPECT_THAT(didascalie, SizeIs(13));
    EXPECT_EQ(VociDiMenu(finestra, "CMD_LEGENDA"), didascalie);
    for (const auto& campo : campi.ToArray()) {
      Sceglie(finestra, "CMD_LEGENDA", campo.ToArray()[1].ToText());
    }
    EXPECT_THAT(Contenuto(finestra, "TXT_CORPO"), HasSubstr("Testo ***(Nome)*** ***(Azienda)***"));
    Clicca(finestra, "cmd_Invia");
  });
  const auto corpo = journal->Righe({"smtp.BodyText"});
  ASSERT_THAT(corpo, SizeIs(1));
  EXPECT_THAT(corpo.front(), ::testing::Not(HasSubstr("***")));
  EXPECT_THAT(corpo.front(), HasSubstr("Testo Anna "));
}

}  // namespace
}  // namespace orve::adapters::qt
