// What the tests of the real windows share: the service over fakes with windows of Qt.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/servizio_di_prova.h"
#include "mani.h"
#include "orve-mailserver/qt/finestre.h"

namespace orve::adapters::qt {

/// A private folder on the real disk.
class CartellaDiProva {
 public:
  CartellaDiProva();
  CartellaDiProva(const CartellaDiProva&) = delete;
  CartellaDiProva& operator=(const CartellaDiProva&) = delete;
  CartellaDiProva(CartellaDiProva&&) = delete;
  CartellaDiProva& operator=(CartellaDiProva&&) = delete;
  ~CartellaDiProva();
  /// Writes a file and returns its Unix path.
  [[nodiscard]] std::string File(const std::string& nome, const std::string& contenuto = "contenuto") const;
  [[nodiscard]] const std::string& Radice() const { return radice_; }

 private:
  std::string radice_;
};

/// A Unix path in the library's form.
[[nodiscard]] std::string PerLibreria(std::string percorso);

/// Fakes for everything but the windows.
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

  std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override {
    if (allaConsegna) allaConsegna();
    return FakeAmbiente::CreaComponenteSmtp();
  }

  Finestre finestre;
  std::function<void()> allaConsegna;  // called when the channel begins to work
};

[[nodiscard]] fakes::Riga RigaAccount(std::int16_t id, const std::string& indirizzo,
                                      std::int16_t lettura = 0);

/// On the SMTP channel with one account, in manual mode.
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
  fakes::ServizioAperto aperto;
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto.servizio;
  Regia regia;
};

}  // namespace orve::adapters::qt
