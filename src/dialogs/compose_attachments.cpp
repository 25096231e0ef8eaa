// The attachments of the compose window. They are held twice: the collection FileAllegati is the source of
// truth, the record set RstAllegati is what the grid shows of it, one row per file with the file's position.
// Only the send hands the list to the service.
#include <algorithm>

#include "dialogs/FRMRW_OPZMAIL.h"
#include "dialogs/percorsi_allegati.h"
#include "service/guards.h"
#include "text/text.h"

namespace orve {

namespace {

using host::Richiesto;

constexpr std::int32_t kLunghezzaNome = 255;
constexpr float kLarghezzaColonna = 9150;

}  // namespace

void FRMRW_OPZMAIL::Configura_GRID_ALLEGATI() try {
  const auto configurazione = ambiente_->CreaConfigurazioneGriglia();
  Richiesto(configurazione).ColonnaChiave("Index");
  configurazione->SelezioneRiga(true);
  GRID_ALLEGATI->Configurazione(configurazione);
  GRID_ALLEGATI->ColonneFisse(0);
  GRID_ALLEGATI->AggiungiColonna("FileName", "Allegato", 1, kLarghezzaColonna, true);
  GRID_ALLEGATI->FineColonne();
  GRID_ALLEGATI->FineConfigurazione();
} catch (...) {
  SegnalaErroreConTitolo(" Configura_GRID_ALLEGATI");
}

void FRMRW_OPZMAIL::ImpostaRstAllegati() try {
  using RecordSet = host::RecordSetScollegato;
  if (RstAllegati && RstAllegati->State() == 1) RstAllegati->Close();
  RstAllegati.reset();
  RstAllegati = ambiente_->CreaRecordSetScollegato();
  Richiesto(RstAllegati).FieldsAppend("Index", RecordSet::kIntero, 0, RecordSet::kNonIndicato);
  RstAllegati->FieldsAppend("FileName", RecordSet::kTesto, kLunghezzaNome, RecordSet::kNonIndicato);
  RstAllegati->Open(RecordSet::kNonIndicato, RecordSet::kNonIndicato, RecordSet::kNonIndicato);
} catch (...) {
  SegnalaErroreConTitolo(" ImpostaRstAllegati");
}

void FRMRW_OPZMAIL::RicaricaRstAllegati() try {
  ImpostaRstAllegati();
  if (!FileAllegati) return;
  for (std::int32_t i = 0; i < FileAllegati->Count(); ++i) {
    AggiungiRiga(i, Richiesto(FileAllegati->Item(i)).Nome());
  }
} catch (...) {
  SegnalaErroreConTitolo(" RicaricaRstAllegati");
}

// Text longer than its column is cut for display: no file may be in the list without its row.
void FRMRW_OPZMAIL::AggiungiRiga(std::int32_t indice, const std::string& testo) const {
  Richiesto(RstAllegati)
      .AddNew({"Index", "FileName"}, {indice, text::Left(testo, static_cast<std::size_t>(kLunghezzaNome))});
}

void FRMRW_OPZMAIL::AggiungiAllegato(const std::string& FilePath, const std::string& FileName) {
  std::shared_ptr<host::OggettoFile> file;
  IgnoraErrori([&] { file = ambiente_->CreaOggettoFile(); });
  IgnoraErrori([&] {
    const auto percorso = DividiPercorso(FilePath);
    Richiesto(file).Apri(percorso.nome, percorso.cartella, 0);
  });
  bool esiste = false;
  IgnoraErrori([&] { esiste = Richiesto(file).Esiste(); });
  if (esiste) {
    IgnoraErrori([&] {
      if (!FileAllegati) FileAllegati = ambiente_->CreaCollezioneFile();
    });
    IgnoraErrori([&] { Richiesto(FileAllegati).Add(file); });
    IgnoraErrori([&] {
      if (!RstAllegati) ImpostaRstAllegati();
    });
    IgnoraErrori([&] { AggiungiRiga(Richiesto(FileAllegati).Count() - 1, FileName); });
  }
  IgnoraErrori([&] { Richiesto(file).Chiudi(); });
}

void FRMRW_OPZMAIL::KVL_ALLEGA_ButtonClick() try {
  const auto selettore = ambiente_->CreaSelettoreFile();
  if (!FileAllegati) FileAllegati = ambiente_->CreaCollezioneFile();
  Richiesto(selettore).Titolo("Allega file");
  if (selettore->Mostra(0) == host::SelettoreFile::kConfermato) AllegaScelto(*selettore);
  selettore->Chiudi();
} catch (...) {
  SegnalaErroreConTitolo(" KVL_ALLEGA_ButtonClick");
}

void FRMRW_OPZMAIL::AllegaScelto(host::SelettoreFile& selettore) {
  const auto scelto = selettore.FileScelto();
  if (!Richiesto(scelto).Esiste()) {
    MostraMessaggio("Il file selezionato è inesistente o non raggiungibile.", host::kAvviso,
                    finestra_->Caption(), nullptr);
  } else if (!EsisteAllegato(scelto->Nome())) {
    AllegaFile(scelto);
  }
  scelto->Chiudi();
}

void FRMRW_OPZMAIL::AllegaFile(const std::shared_ptr<host::OggettoFile>& scelto) {
  std::shared_ptr<host::OggettoFile> copia;
  if (scelto->Posizione() == host::OggettoFile::kDaCopiare) {
    copia = ambiente_->CreaOggettoFile();
    Richiesto(copia).Crea(host::OggettoFile::kCopia, scelto->Nome(), "", 0);
    scelto->CopiaIn(copia, 0);
  }
  FileAllegati->Add(copia ? copia : scelto);
  if (!RstAllegati) ImpostaRstAllegati();
  AggiungiRiga(FileAllegati->Count() - 1, scelto->Nome());
  GRID_ALLEGATI->DataSource(RstAllegati);
  if (copia) copia->Chiudi();
}

bool FRMRW_OPZMAIL::EsisteAllegato(const std::string& nome) try {
  using RecordSet = host::RecordSetScollegato;
  if (!RstAllegati || RstAllegati->RecordCount() < 1) return false;
  // A name with an apostrophe breaks the criterion; such a file counts as not yet attached.
  RstAllegati->Find("FileName='" + nome + "'", 0, RecordSet::kAvanti, RecordSet::kDalPrimo);
  return !RstAllegati->Eof();
} catch (...) {
  return false;
}

void FRMRW_OPZMAIL::BTN_ELIMINA_BeforeShowMenuPopup() try {
  const bool qualcosa = RstAllegati && RstAllegati->RecordCount() >= 1;
  BTN_ELIMINA->EnableMenuItem("Del", qualcosa);
  BTN_ELIMINA->EnableMenuItem("DelAll", qualcosa);
} catch (...) {
  SegnalaErroreConTitolo(" BTN_ELIMINA_BeforeShowMenuPopup");
}

void FRMRW_OPZMAIL::BTN_ELIMINA_MenuItemClick(const std::string& chiave) try {
  if (chiave == "Del") EliminaAllegato_Click();
  if (chiave == "DelAll") EliminaTuttiAllegati_Click();
} catch (...) {
  SegnalaErroreConTitolo(" BTN_ELIMINA_MenuItemClick");
}

void FRMRW_OPZMAIL::EliminaAllegato_Click() try {
  const host::Variant indice = NVL(host::Leggi(Richiesto(RstAllegati), "Index"), "");
  if (indice.ToText().empty()) return;
  if (FileAllegati && FileAllegati->Count() > 0) FileAllegati->Remove(indice.ToInt32());
  RicaricaRstAllegati();
  // The row now in the place of the removed one, or the last row: the one the person would remove next.
  IgnoraErrori([&] {
    auto& righe = Richiesto(RstAllegati);
    if (righe.RecordCount() > 0) {
      righe.AbsolutePosition(std::min(indice.ToInt32() + 1, righe.RecordCount()));
    }
  });
  GRID_ALLEGATI->DataSource(RstAllegati);
} catch (...) {
  SegnalaErroreConTitolo(" EliminaAllegato_Click");
}

void FRMRW_OPZMAIL::EliminaTuttiAllegati_Click() try {
  const std::int32_t risposta = MostraMessaggio("Rimuovere tutti gli allegati dalla mail?", host::kDomanda,
                                                finestra_->Caption(), nullptr);
  if (risposta == host::kRispostaNo) return;
  if (FileAllegati) {
    for (std::int32_t i = FileAllegati->Count() - 1; i >= 0; --i) FileAllegati->Remove(i);
  }
  ImpostaRstAllegati();
  GRID_ALLEGATI->DataSource(RstAllegati);
} catch (...) {
  SegnalaErroreConTitolo(" EliminaTuttiAllegati_Click");
}

host::Variant FRMRW_OPZMAIL::GetAllegatiMultipli() try {
  if (!FileAllegati || FileAllegati->Count() <= 0) return {};
  host::Variant::Array percorsi;
  for (std::int32_t i = 0; i < FileAllegati->Count(); ++i) {
    percorsi.emplace_back(Richiesto(FileAllegati->Item(i)).Percorso());
  }
  return percorsi;
} catch (...) {
  throw host::ErroreCorrente().ConSuffisso("GetAllegatiMultipli");
}

}  // namespace orve
