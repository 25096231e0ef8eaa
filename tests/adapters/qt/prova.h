// What the tests of the real windows share: the service over fakes with windows of Qt, somebody who answers
// the windows in the person's place, and the person's hands.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/servizio_di_prova.h"
#include "qt/finestre.h"

namespace orve::adapters::qt {

/// A folder of one's own on the real disk.
class CartellaDiProva {
 public:
  CartellaDiProva();
  CartellaDiProva(const CartellaDiProva&) = delete;
  CartellaDiProva& operator=(const CartellaDiProva&) = delete;
  CartellaDiProva(CartellaDiProva&&) = delete;
  CartellaDiProva& operator=(CartellaDiProva&&) = delete;
  ~CartellaDiProva();
  /// Writes a file and gives its path of Unix.
  [[nodiscard]] std::string File(const std::string& nome, const std::string& contenuto = "contenuto") const;
  [[nodiscard]] const std::string& Radice() const { return radice_; }

 private:
  std::string radice_;
};

/// A path of Unix as the library has it.
[[nodiscard]] std::string PerLibreria(std::string percorso);

/// Fakes of everything but the windows.
class AmbienteConFinestre : public fakes::FakeAmbiente {
 public:
  explicit AmbienteConFinestre(OpzioniFinestre opzioni) : finestre(std::move(opzioni)) {}
  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override {
    return finestre.CreaForm(layout);
  }
  std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override {
    return finestre.CreaConfigurazioneGriglia();
  }
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override {
    return finestre.CreaRecordSetScollegato();
  }
  std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override { return finestre.CreaSelettoreFile(); }
  std::shared_ptr<host::OggettoFile> CreaOggettoFile() override { return finestre.CreaOggettoFile(); }
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override {
    return finestre.CreaCollezioneFile();
  }
  std::shared_ptr<host::Messaggi> CreaMessaggi() override {
    journal->Add("Ambiente.CreaMessaggi");
    return finestre.CreaMessaggi();
  }

  Finestre finestre;
};

/// Waits for the windows that a test expects, in their order, and acts in each. Looks every few milliseconds,
/// also while a window waits inside another; a watchdog closes everything when nothing expected comes.
class Regia {
 public:
  using Passo = std::function<void(QWidget&)>;

  Regia();
  Regia(const Regia&) = delete;
  Regia& operator=(const Regia&) = delete;
  Regia(Regia&&) = delete;
  Regia& operator=(Regia&&) = delete;
  ~Regia();

  /// In the next modal window of this name.
  void Poi(const std::string& finestra, Passo passo);
  /// A message with this text, title and picture (QMessageBox::Icon), answered by the button named.
  void Risponde(const std::string& testo, const std::string& pulsante = "OK");
  /// The choice of a file: this one, or none for an empty path.
  void ScegliFile(const std::string& percorso);

 private:
  void Guarda();

  struct Attesa {
    std::string finestra;
    Passo passo;
  };
  std::deque<Attesa> attese_;
  QElapsedTimer fermo_;
  std::shared_ptr<int> vita_ = std::make_shared<int>(0);
};

// --- the person's hands. A control that a person could not see or use fails the test.

/// The widget of a control.
[[nodiscard]] QWidget& Trova(QWidget& finestra, const std::string& nome);
template <class Tipo>
[[nodiscard]] Tipo& Trova(QWidget& finestra, const std::string& nome) {
  return dynamic_cast<Tipo&>(Trova(finestra, nome));
}
void Clicca(QWidget& finestra, const std::string& nome);
/// Types at the end of the box.
void Digita(QWidget& finestra, const std::string& nome, const std::string& testo);
/// The same in the place of what stands there.
void Riscrive(QWidget& finestra, const std::string& nome, const std::string& testo);
/// Pastes at the end of the box.
void Incolla(QWidget& finestra, const std::string& nome, const std::string& testo);
/// Brings the menu of a button up and gives "Caption" or "(Caption)" for each entry, switched off in
/// brackets; leaves the menu again.
[[nodiscard]] std::vector<std::string> VociDiMenu(QWidget& finestra, const std::string& pulsante);
/// Chooses an entry by its key.
void Sceglie(QWidget& finestra, const std::string& pulsante, const std::string& chiave);
/// What stands in a box.
[[nodiscard]] std::string Contenuto(QWidget& finestra, const std::string& nome);
/// The grid's first column, and its selected row from 1 (0 for none).
[[nodiscard]] std::vector<std::string> Righe(QWidget& finestra);
[[nodiscard]] int RigaSelezionata(QWidget& finestra);
/// Lets Qt do what waits.
void Respira();

[[nodiscard]] fakes::Riga RigaAccount(std::int16_t id, const std::string& indirizzo,
                                      std::int16_t lettura = 0);

/// On the SMTP channel with one account, in the manual mode.
class FinestraVera : public ::testing::Test {
 protected:
  using CreaAmbiente = std::function<std::shared_ptr<AmbienteConFinestre>(OpzioniFinestre)>;

  FinestraVera();
  explicit FinestraVera(const CreaAmbiente& crea);

  void Accounts(fakes::Righe righe) {
    connessione->Risponde("INNER JOIN FW99_MAILUSERACCOUNT", std::move(righe));
  }
  CollDestinatari& Collezione();
  /// The service opens the compose window and the person acts in it; what is still open then is closed.
  void Apri(Regia::Passo persona);
  [[nodiscard]] bool Consegnato() const { return journal->Conta("smtp.SendMail") == 1; }

  CartellaDiProva cartella;
  bool vaCopiato = false;  // what Posizione says of every file
  std::shared_ptr<AmbienteConFinestre> ambiente;
  fakes::JournalPtr journal;
  std::shared_ptr<fakes::FakeConnection> connessione;
  std::unique_ptr<CLSFW_MAILSERVER> servizio;
  Regia regia;
};

}  // namespace orve::adapters::qt
