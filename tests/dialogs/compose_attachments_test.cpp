// The attachments of the compose window: the list of files, the rows of the grid, and the buttons between
// them.
#include <string>
#include <vector>

#include "dialogs/finestra_di_prova.h"
#include "fakes/errori.h"

namespace orve {
namespace {

using fakes::HeadlessForm;
using host::Variant;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Allegati : public fakes::FormDiProva {
 protected:
  Allegati() {
    servizio->SrvMailInstallato = kvMAPI;
    for (const char* file : {"C:\\a.pdf", "C:\\b.pdf", "C:\\c.pdf", "D:\\a.pdf"}) File(file);
  }
  void Aggiungi(const std::string& percorso, const std::string& nome) {
    form->AggiungiAllegato(percorso, nome);
  }
  /// The person picks a file and confirms.
  void Allega(HeadlessForm& finestra, const std::string& percorso) {
    ambiente->fileScelto = percorso;
    finestra.Preme("KVL_ALLEGA");
  }
  /// What a send would hand over.
  std::vector<std::string> Percorsi() {
    std::vector<std::string> percorsi;
    const Variant elenco = Dentro().GetAllegatiMultipli();
    if (elenco.IsEmpty()) return percorsi;
    for (const auto& percorso : elenco.ToArray()) percorsi.push_back(percorso.ToText());
    return percorsi;
  }
  /// The titled message of a procedure's failure.
  static std::string Guasto(const std::string& chiusura) {
    return "ObjMessaggi.MostraMsg guasto" + chiusura + "|0|Invio email...|(assente)";
  }
  const host::Errore guasto{1001, "Prova", "guasto"};
};

TEST_F(Allegati, AFileOfTheRequestIsAddedStepByStep) {
  Aggiungi(R"(C:\doc\sub\a.pdf)", "non c'è");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("Ambiente.CreaOggettoFile", "File.Apri a.pdf|C:\\doc\\sub|0",
                          "File.Esiste C:\\doc\\sub\\a.pdf", "File.Chiudi C:\\doc\\sub\\a.pdf"));
  journal->Svuota();
  Aggiungi("C:\\a.pdf", "a.pdf - Standard");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("Ambiente.CreaOggettoFile", "File.Apri a.pdf|C:|0", "File.Esiste C:\\a.pdf",
                          "Ambiente.CreaCollezioneFile", "FileAllegati.Add",
                          "Ambiente.CreaRecordSetScollegato", "RstAllegati.FieldsAppend Index|3|0|-1",
                          "RstAllegati.FieldsAppend FileName|200|255|-1", "RstAllegati.Open -1|-1|-1",
                          "RstAllegati.AddNew Index=0|FileName=a.pdf - Standard", "File.Chiudi C:\\a.pdf"));
  journal->Svuota();
  Aggiungi("C:\\b.pdf", "b.pdf");
  EXPECT_THAT(journal->Righe({"Ambiente.CreaCollezione", "Ambiente.CreaRecordSet", "RstAllegati.AddNew"}),
              ElementsAre("RstAllegati.AddNew Index=1|FileName=b.pdf"));
}

TEST_F(Allegati, AFileThatDoesNotExistIsDroppedWithoutAWord) {
  Aggiungi("C:\\manca.pdf", "manca.pdf");
  EXPECT_FALSE(Dentro().FileAllegati);
  EXPECT_FALSE(Dentro().RstAllegati);
  EXPECT_THAT(Mostrati(), IsEmpty());
}

TEST_F(Allegati, APathWithoutABackslashIsAllNameAndNeedsItsFileToo) {
  Aggiungi("solo.pdf", "solo.pdf");
  EXPECT_FALSE(Dentro().FileAllegati);
  File("solo.pdf");
  Aggiungi("solo.pdf", "solo.pdf");
  EXPECT_THAT(journal->Righe({"File.Apri"}), ElementsAre("File.Apri solo.pdf||0", "File.Apri solo.pdf||0"));
  EXPECT_THAT(Percorsi(), ElementsAre("solo.pdf"));
}

TEST_F(Allegati, AnAttachmentListThatWaitsIsBoundAtTheStart) {
  Aggiungi("C:\\a.pdf", "a.pdf - Standard");
  EXPECT_EQ(journal->Conta("GRID_ALLEGATI.DataSource"), 0U);
  Mostra([](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf - Standard"));
  });
}

TEST_F(Allegati, TheSameFileOfTheRequestIsListedTwice) {
  Aggiungi("C:\\a.pdf", "a.pdf");
  Aggiungi("C:\\a.pdf", "a.pdf");
  Mostra([&](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf", "a.pdf"));
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\a.pdf", "C:\\a.pdf"));
  });
}

TEST_F(Allegati, EachStepOfAnAddedFileIsTriedWhateverTheOneBeforeDid) {
  journal->Fallisce("File.Apri", guasto);
  journal->Fallisce("File.Chiudi", guasto);
  Aggiungi("C:\\a.pdf", "a.pdf");  // not bound, and so nonexistent
  EXPECT_FALSE(Dentro().FileAllegati);
  journal->DimenticaPiani();
  journal->Fallisce("File.Esiste", guasto);
  Aggiungi("C:\\a.pdf", "a.pdf");
  EXPECT_FALSE(Dentro().FileAllegati);
  journal->DimenticaPiani();
  journal->Fallisce("Ambiente.CreaOggettoFile", guasto);
  Aggiungi("C:\\a.pdf", "a.pdf");
  EXPECT_FALSE(Dentro().FileAllegati);
  EXPECT_THAT(Mostrati(), IsEmpty());
}

TEST_F(Allegati, ATextLongerThanItsColumnIsShownAsFarAsItGoes) {
  std::string nome;
  for (int i = 0; i < 250; ++i) nome += "è";
  File("C:\\" + nome);
  Aggiungi("C:\\" + nome, nome + " - Standard");
  Mostra([&](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre(nome + " - St"));
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\" + nome));
  });
}

// The button that attaches.

TEST_F(Allegati, AChosenFileIsAttachedStepByStep) {
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    Allega(finestra, "C:\\a.pdf");
    EXPECT_THAT(
        journal->Righe({"Ambiente.", "SelettoreFile", "File", "RstAllegati", "GRID_ALLEGATI"}),
        ElementsAre("Ambiente.CreaSelettoreFile", "Ambiente.CreaCollezioneFile",
                    "SelettoreFile.Titolo Allega file", "SelettoreFile.Mostra 0", "SelettoreFile.FileScelto",
                    "File.Esiste C:\\a.pdf", "File.Nome C:\\a.pdf", "File.Posizione C:\\a.pdf",
                    "FileAllegati.Add", "Ambiente.CreaRecordSetScollegato",
                    "RstAllegati.FieldsAppend Index|3|0|-1", "RstAllegati.FieldsAppend FileName|200|255|-1",
                    "RstAllegati.Open -1|-1|-1", "File.Nome C:\\a.pdf",
                    "RstAllegati.AddNew Index=0|FileName=a.pdf", "GRID_ALLEGATI.DataSource (oggetto)",
                    "File.Chiudi C:\\a.pdf", "SelettoreFile.Chiudi"));
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf"));
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\a.pdf"));
  });
}

TEST_F(Allegati, AFileThatMustBeCopiedFirstIsAttachedAsItsCopy) {
  ambiente->posizioni["C:\\a.pdf"] = 1;
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    Allega(finestra, "C:\\a.pdf");
    EXPECT_THAT(journal->Righe({"File.Posizione", "Ambiente.CreaOggettoFile", "File.Crea", "File.CopiaIn",
                                "FileAllegati.Add", "File.Chiudi"}),
                ElementsAre("File.Posizione C:\\a.pdf", "Ambiente.CreaOggettoFile", "File.Crea 8|a.pdf||0",
                            "File.CopiaIn C:\\a.pdf|C:\\Temp\\Copie\\a.pdf|0", "FileAllegati.Add",
                            "File.Chiudi C:\\Temp\\Copie\\a.pdf", "File.Chiudi C:\\a.pdf"));
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf"));
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\Temp\\Copie\\a.pdf"));
    EXPECT_EQ(ambiente->file.at("C:\\Temp\\Copie\\a.pdf"), "contenuto");
  });
}

TEST_F(Allegati, ACancelledChoiceOnlyClosesTheSelector) {
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    ambiente->fileScelto.reset();
    finestra.Preme("KVL_ALLEGA");
    EXPECT_THAT(
        journal->Righe({"SelettoreFile", "File.", "RstAllegati", "GRID_"}),
        ElementsAre("SelettoreFile.Titolo Allega file", "SelettoreFile.Mostra 0", "SelettoreFile.Chiudi"));
  });
}

TEST_F(Allegati, AChosenFileThatCannotBeReachedIsRefusedWithAWarning) {
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    Allega(finestra, "C:\\manca.pdf");
    EXPECT_THAT(journal->Righe({"SelettoreFile.Chiudi", "File.Chiudi", "ObjMessaggi", "FileAllegati"}),
                ElementsAre("ObjMessaggi.MostraMsg Il file selezionato è inesistente o non "
                            "raggiungibile.|48|Invio email...|(assente)",
                            "File.Chiudi C:\\manca.pdf", "SelettoreFile.Chiudi"));
    EXPECT_THAT(Percorsi(), IsEmpty());
  });
}

TEST_F(Allegati, AFileChosenTwiceIsListedOnceWithoutAMessage) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    Allega(finestra, "C:\\b.pdf");
    journal->Svuota();
    Allega(finestra, "C:\\a.pdf");
    EXPECT_THAT(journal->Righe({"RstAllegati.Find"}), ElementsAre("RstAllegati.Find FileName='a.pdf'|0|1|1"));
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\a.pdf", "C:\\b.pdf"));
    EXPECT_THAT(Mostrati(), IsEmpty());
    EXPECT_THAT(journal->Righe({"File.Chiudi", "SelettoreFile.Chiudi"}), SizeIs(2));
  });
}

TEST_F(Allegati, AFileOfTheSameNameFromElsewhereCountsAsAttached) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    Allega(finestra, "D:\\a.pdf");
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\a.pdf"));
  });
}

TEST_F(Allegati, AFileShownWithALongerTextCanBeAttachedASecondTime) {
  Aggiungi("C:\\a.pdf", "a.pdf - Standard");
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf - Standard", "a.pdf"));
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\a.pdf", "C:\\a.pdf"));
  });
}

TEST_F(Allegati, AnApostropheInTheNameDefeatsTheTestForDuplicates) {
  File("C:\\l'ordine.pdf");
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\l'ordine.pdf");
    Allega(finestra, "C:\\l'ordine.pdf");
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("l'ordine.pdf", "l'ordine.pdf"));
    EXPECT_THAT(Mostrati(), IsEmpty());
  });
}

TEST_F(Allegati, TheFirstFileAddedHereMakesTheRecordSetThatTheRequestHadNot) {
  Mostra([&](HeadlessForm& finestra) {
    EXPECT_FALSE(Dentro().RstAllegati);
    Allega(finestra, "C:\\a.pdf");
    EXPECT_TRUE(Dentro().RstAllegati);
  });
}

TEST_F(Allegati, AFailureWhileAttachingIsReportedAndWhatIsDoneStays) {
  Mostra([&](HeadlessForm& finestra) {
    journal->Fallisce("RstAllegati.AddNew", guasto);
    Allega(finestra, "C:\\a.pdf");
    EXPECT_THAT(Mostrati(), ElementsAre(Guasto(" KVL_ALLEGA_ButtonClick")));
    EXPECT_EQ(Dentro().FileAllegati->Count(), 1);
  });
}

TEST_F(Allegati, AHostWithoutAFileSelectorSaysSo) {
  Mostra([&](HeadlessForm& finestra) {
    journal->Fallisce("Ambiente.CreaSelettoreFile", host::Errore(host::kOggettoNonCreabile));
    finestra.Preme("KVL_ALLEGA");
  });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg Impossibile creare l'oggetto "
                                      "KVL_ALLEGA_ButtonClick|0|Invio email...|(assente)"));
}

// The button that removes.

std::string Attive(HeadlessForm& finestra) {
  std::string stato;
  for (const auto& voce : finestra.ApreMenu("BTN_ELIMINA")) stato += voce.attiva ? "+" : "-";
  return stato;
}

TEST_F(Allegati, TheEntriesAreSwitchedByWhetherThereIsSomethingToRemove) {
  Mostra([&](HeadlessForm& finestra) {
    EXPECT_EQ(Attive(finestra), "--");
    Allega(finestra, "C:\\a.pdf");
    EXPECT_EQ(Attive(finestra), "++");
    journal->Svuota();
    EXPECT_EQ(Attive(finestra), "++");
    EXPECT_THAT(journal->Righe({"BTN_ELIMINA"}),
                ElementsAre("BTN_ELIMINA.EnableMenuItem Del|true", "BTN_ELIMINA.EnableMenuItem DelAll|true"));
  });
}

TEST_F(Allegati, DeletingTheOnlyAttachmentLeavesAnEmptyGridAndDisabledEntries) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), IsEmpty());
    EXPECT_EQ(Attive(finestra), "--");
    EXPECT_THAT(Percorsi(), IsEmpty());
  });
}

TEST_F(Allegati, TheSelectedRowIsRemovedAndTheRowsAreNumberedAnew) {
  Mostra([&](HeadlessForm& finestra) {
    for (const char* file : {"C:\\a.pdf", "C:\\b.pdf", "C:\\c.pdf"}) Allega(finestra, file);
    finestra.SelezionaRiga("GRID_ALLEGATI", 2);
    journal->Svuota();
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(
        journal->Righe({"FileAllegati.Remove", "RstAllegati", "GRID_ALLEGATI"}),
        ElementsAre("FileAllegati.Remove 1", "RstAllegati.Close", "RstAllegati.FieldsAppend Index|3|0|-1",
                    "RstAllegati.FieldsAppend FileName|200|255|-1", "RstAllegati.Open -1|-1|-1",
                    "RstAllegati.AddNew Index=0|FileName=a.pdf", "RstAllegati.AddNew Index=1|FileName=c.pdf",
                    "GRID_ALLEGATI.DataSource (oggetto)"));
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf", "c.pdf"));
    finestra.SelezionaRiga("GRID_ALLEGATI", 2);
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\a.pdf"));
  });
}

TEST_F(Allegati, AfterARemovalTheRowInItsPlaceIsSelectedAndAfterTheLastOneTheNewLast) {
  Mostra([&](HeadlessForm& finestra) {
    for (const char* file : {"C:\\a.pdf", "C:\\b.pdf", "C:\\c.pdf"}) Allega(finestra, file);
    finestra.SelezionaRiga("GRID_ALLEGATI", 1);
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("b.pdf", "c.pdf"));
    EXPECT_EQ(finestra.RigaSelezionata("GRID_ALLEGATI"), 1);
    finestra.SelezionaRiga("GRID_ALLEGATI", 2);
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_EQ(finestra.RigaSelezionata("GRID_ALLEGATI"), 1);
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\b.pdf"));
  });
}

TEST_F(Allegati, AfterARemovalTheRowsShowTheFilesNames) {
  Aggiungi("C:\\a.pdf", "a.pdf - Standard");
  Aggiungi("C:\\b.pdf", "Allegato secondo");
  Mostra([](HeadlessForm& finestra) {
    finestra.SelezionaRiga("GRID_ALLEGATI", 2);
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf"));
  });
}

// Looking for a duplicate moves the current row; the grid shows it, so that the person sees what "Elimina"
// means.
TEST_F(Allegati, TheGridFollowsTheCurrentRow) {
  Mostra([&](HeadlessForm& finestra) {
    for (const char* file : {"C:\\a.pdf", "C:\\b.pdf", "C:\\c.pdf"}) Allega(finestra, file);
    EXPECT_EQ(finestra.RigaSelezionata("GRID_ALLEGATI"), 3);
    Allega(finestra, "C:\\a.pdf");
    EXPECT_EQ(finestra.RigaSelezionata("GRID_ALLEGATI"), 1);
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(Percorsi(), ElementsAre("C:\\b.pdf", "C:\\c.pdf"));
  });
}

TEST_F(Allegati, RemovingAllAsksFirst) {
  ambiente->rispostaMessaggio = 6;
  Mostra([&](HeadlessForm& finestra) {
    for (const char* file : {"C:\\a.pdf", "C:\\b.pdf"}) Allega(finestra, file);
    journal->Svuota();
    finestra.Sceglie("BTN_ELIMINA", "DelAll");
    EXPECT_THAT(journal->Righe({"ObjMessaggi", "FileAllegati.Remove", "RstAllegati.Close", "RstAllegati.Open",
                                "GRID_ALLEGATI"}),
                ElementsAre("ObjMessaggi.MostraMsg Rimuovere tutti gli allegati dalla mail?|52|Invio "
                            "email...|(assente)",
                            "FileAllegati.Remove 1", "FileAllegati.Remove 0", "RstAllegati.Close",
                            "RstAllegati.Open -1|-1|-1", "GRID_ALLEGATI.DataSource (oggetto)"));
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), IsEmpty());
    EXPECT_EQ(Attive(finestra), "--");
    EXPECT_TRUE(Dentro().GetAllegatiMultipli().IsEmpty());
  });
}

TEST_F(Allegati, AnsweringNoLeavesEverythingAsItWas) {
  ambiente->rispostaMessaggio = 7;
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    journal->Svuota();
    finestra.Sceglie("BTN_ELIMINA", "DelAll");
    EXPECT_THAT(journal->Righe({"FileAllegati", "RstAllegati", "GRID_"}), IsEmpty());
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("a.pdf"));
  });
}

// A box of the host may have other buttons, or be closed in another way.
TEST_F(Allegati, AnyAnswerButNoRemovesAll) {
  Mostra([&](HeadlessForm& finestra) {
    for (const std::int32_t risposta : {-1, 0, 1, 2, 3, 4, 5, 6, 8}) {
      ambiente->rispostaMessaggio = risposta;
      Allega(finestra, "C:\\a.pdf");
      finestra.Sceglie("BTN_ELIMINA", "DelAll");
      EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), IsEmpty()) << risposta;
      EXPECT_THAT(Percorsi(), IsEmpty()) << risposta;
    }
  });
}

TEST_F(Allegati, AfterRemovingAllTheServicesListGoesEmptyOnSend) {
  ambiente->rispostaMessaggio = 6;
  servizio->vElencoAllegati = Variant::Array{"C:\\a.pdf"};
  Aggiungi("C:\\a.pdf", "a.pdf");
  Mostra([](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    finestra.Sceglie("BTN_ELIMINA", "DelAll");
    finestra.Preme("cmd_Invia");
  });
  EXPECT_TRUE(servizio->vElencoAllegati.IsEmpty());
}

TEST_F(Allegati, CancellingKeepsTheServicesList) {
  ambiente->rispostaMessaggio = 6;
  servizio->vElencoAllegati = Variant::Array{"C:\\a.pdf"};
  Aggiungi("C:\\a.pdf", "a.pdf");
  Mostra([&](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_ELIMINA", "DelAll");
    Allega(finestra, "C:\\b.pdf");
    finestra.Preme("cmd_Annulla");
  });
  EXPECT_EQ(servizio->vElencoAllegati, Variant(Variant::Array{"C:\\a.pdf"}));
}

TEST_F(Allegati, AnyOtherKeyOfTheMenuDoesNothing) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    journal->Svuota();
    Dentro().BTN_ELIMINA_MenuItemClick("del");
    Dentro().BTN_ELIMINA_MenuItemClick("");
    EXPECT_THAT(journal->Righe(), IsEmpty());
  });
}

TEST_F(Allegati, RemovingWithoutARecordSetOrWithoutACurrentRowIsReported) {
  Mostra([&](HeadlessForm& finestra) {
    Dentro().EliminaAllegato_Click();
    EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg Variabile oggetto non impostata "
                                        "EliminaAllegato_Click|0|Invio email...|(assente)"));
    Allega(finestra, "C:\\a.pdf");
    finestra.Sceglie("BTN_ELIMINA", "Del");
    journal->Svuota();
    Dentro().EliminaAllegato_Click();  // no row is left
    EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr(" EliminaAllegato_Click|0|Invio email...|(assente)")));
  });
}

TEST_F(Allegati, ARowWithoutAnIndexRemovesNothing) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    Dentro().RstAllegati->AddNew({"FileName"}, {"senza indice"});
    journal->Svuota();
    Dentro().EliminaAllegato_Click();
    EXPECT_THAT(journal->Righe(), IsEmpty());
  });
}

TEST_F(Allegati, RowsWhoseFilesAreGoneAreRemovedAllTheSame) {
  ambiente->rispostaMessaggio = 6;
  Mostra([&](HeadlessForm& finestra) {
    for (const char* chiave : {"Del", "DelAll"}) {
      for (const bool senzaElenco : {true, false}) {
        Allega(finestra, "C:\\a.pdf");
        Dentro().FileAllegati->Clear();
        if (senzaElenco) Dentro().FileAllegati.reset();
        journal->Svuota();
        finestra.Sceglie("BTN_ELIMINA", chiave);
        EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), IsEmpty()) << chiave;
        EXPECT_THAT(journal->Righe({"FileAllegati.Remove", "ObjMessaggi.MostraMsg Variabile"}), IsEmpty())
            << chiave;
      }
    }
  });
}

TEST_F(Allegati, ARecordSetThatIsClosedAlreadyIsOnlyReplaced) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    Dentro().RstAllegati->Close();
    journal->Svuota();
    Dentro().RicaricaRstAllegati();
    EXPECT_EQ(journal->Conta("RstAllegati.Close"), 0U);
    EXPECT_THAT(journal->Righe({"RstAllegati.AddNew"}), SizeIs(1));
    EXPECT_THAT(Mostrati(), IsEmpty());
  });
}

// Failures.

TEST_F(Allegati, EachProcedureReportsUnderItsOwnName) {
  ambiente->rispostaMessaggio = 6;
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    const auto prova = [&](const char* riga, const std::function<void()>& azione,
                           const std::string& chiusura) {
      journal->DimenticaPiani();
      journal->Fallisce(riga, guasto);
      journal->Svuota();
      azione();
      ASSERT_FALSE(Mostrati().empty()) << riga;
      EXPECT_EQ(Mostrati().back(), Guasto(chiusura)) << riga;
    };
    prova(
        "FileAllegati.Remove", [&] { finestra.Sceglie("BTN_ELIMINA", "Del"); }, " EliminaAllegato_Click");
    prova(
        "FileAllegati.Remove", [&] { finestra.Sceglie("BTN_ELIMINA", "DelAll"); },
        " EliminaTuttiAllegati_Click");
    prova(
        "legge RstAllegati.RecordCount", [&] { finestra.ApreMenu("BTN_ELIMINA"); },
        " BTN_ELIMINA_BeforeShowMenuPopup");
    prova(
        "File.Nome", [&] { Dentro().RicaricaRstAllegati(); }, " RicaricaRstAllegati");
    prova(
        "SelettoreFile.Mostra", [&] { finestra.Preme("KVL_ALLEGA"); }, " KVL_ALLEGA_ButtonClick");
  });
}

TEST_F(Allegati, ARecordSetThatCannotBeMadeIsReported) {
  Mostra([&](HeadlessForm& finestra) {
    journal->Fallisce("RstAllegati.Open", guasto);
    Allega(finestra, "C:\\a.pdf");
    const auto messaggi = Mostrati();
    ASSERT_FALSE(messaggi.empty());
    EXPECT_EQ(messaggi.front(), Guasto(" ImpostaRstAllegati"));
  });
}

TEST_F(Allegati, AGridThatCannotBeConfiguredIsReportedAndTheWindowGoesOn) {
  journal->Fallisce("Ambiente.CreaConfigurazioneGriglia", guasto);
  Mostra(nullptr);
  EXPECT_THAT(Mostrati(), ElementsAre(Guasto(" Configura_GRID_ALLEGATI")));
  EXPECT_EQ(journal->Conta("KVL_RESIZEFORM1.Avvia"), 1U);
}

// The message of the inner procedure fails; the handler of the menu then reports with its own name.
TEST_F(Allegati, AMessageThatFailsIsReportedByTheHandlerAround) {
  Mostra([&](HeadlessForm& finestra) {
    Allega(finestra, "C:\\a.pdf");
    journal->Fallisce("FileAllegati.Remove", guasto);
    bool prima = true;
    journal->Quando("ObjMessaggi.MostraMsg", [&] {
      if (!prima) return;
      prima = false;
      throw host::Errore(1002, "Messaggi", "messaggio impossibile");
    });
    journal->Svuota();
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(Mostrati(), ElementsAre(Guasto(" EliminaAllegato_Click"),
                                        "ObjMessaggi.MostraMsg messaggio impossibile "
                                        "BTN_ELIMINA_MenuItemClick|0|Invio email...|(assente)"));
  });
}

TEST_F(Allegati, TheListOfPathsPassesItsErrorOnWithItsName) {
  Aggiungi("C:\\a.pdf", "a.pdf");
  journal->Fallisce("File.Percorso", guasto);
  const auto errore = fakes::ErroreDi([&] { static_cast<void>(Dentro().GetAllegatiMultipli()); });
  EXPECT_EQ(errore.Numero(), 1001);
  EXPECT_EQ(errore.Sorgente(), "Prova");
  EXPECT_EQ(errore.Descrizione(), "guastoGetAllegatiMultipli");
}

TEST_F(Allegati, WithoutFilesTheListOfPathsHasNoValue) {
  EXPECT_TRUE(Dentro().GetAllegatiMultipli().IsEmpty());
  Aggiungi("C:\\a.pdf", "a.pdf");
  Aggiungi("C:\\b.pdf", "b.pdf");
  EXPECT_EQ(Dentro().GetAllegatiMultipli(), Variant(Variant::Array{"C:\\a.pdf", "C:\\b.pdf"}));
}

}  // namespace
}  // namespace orve
