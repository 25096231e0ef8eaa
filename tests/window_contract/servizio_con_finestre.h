// The service over fakes and over windows: on the SMTP channel with one account, in manual mode.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "fakes/invio_manuale.h"
#include "fakes/servizio_di_prova.h"

namespace orve::window_contract {

/// A private folder on the real disk.
class CartellaDiProva {
 public:
  CartellaDiProva();
  CartellaDiProva(const CartellaDiProva&) = delete;
  CartellaDiProva& operator=(const CartellaDiProva&) = delete;
  CartellaDiProva(CartellaDiProva&&) = delete;
  CartellaDiProva& operator=(CartellaDiProva&&) = delete;
  ~CartellaDiProva();
  /// Writes a file and returns its path as the system has it.
  [[nodiscard]] std::string File(const std::string& nome, const std::string& contenuto = "contenuto") const;
  [[nodiscard]] std::string Radice() const;

 private:
  std::filesystem::path radice_;
};

/// A path from UTF-8, and back.
[[nodiscard]] std::filesystem::path Percorso(const std::string& testo);
[[nodiscard]] std::string Testo(const std::filesystem::path& percorso);

/// Fakes for everything but the windows.
template <class Finestre>
class AmbienteConFinestre : public fakes::FakeAmbiente {
 public:
  template <class Options>
  explicit AmbienteConFinestre(Options opzioni) : finestre(std::move(opzioni)) {}
  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override {
    return finestre.CreaForm(layout);
  }
  std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override {
    return finestre.CreaConfigurazioneGriglia();
  }
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override {
    return fakes::ConRilascio(journal, finestre.CreaRecordSetScollegato(), "RecordSetScollegato");
  }
  std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override { return finestre.CreaSelettoreFile(); }
  std::shared_ptr<host::OggettoFile> CreaOggettoFile() override { return finestre.CreaOggettoFile(); }
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override {
    return fakes::ConRilascio(journal, finestre.CreaCollezioneFile(), "CollezioneFile");
  }
  std::shared_ptr<host::Messaggi> CreaMessaggi() override {
    journal->Add("Ambiente.CreaMessaggi");
    return fakes::ConRilascio(journal, finestre.CreaMessaggi(), "Messaggi");
  }

  Finestre finestre;
};

class ServizioConFinestre : public ::testing::Test {
 protected:
  explicit ServizioConFinestre(const std::shared_ptr<fakes::FakeAmbiente>& conFinestre);

  void Accounts(fakes::Righe righe) { fakes::OffriAccount(*connessione, std::move(righe)); }
  CollDestinatari& Collezione();
  /// The service opens the compose window.
  void ApreInvio();
  /// From now on `azione` runs whenever the channel begins to work.
  void AllaConsegna(std::function<void()> azione) {
    journal->Quando("Ambiente.CreaComponenteSmtp", std::move(azione));
  }
  [[nodiscard]] bool Consegnato() const { return journal->Conta("smtp.SendMail") == 1; }
  /// The paths that were sent.
  [[nodiscard]] std::vector<std::string> Consegnati() const;

 private:
  std::shared_ptr<fakes::FakeAmbiente> ambiente_;

 protected:
  fakes::JournalPtr journal;
  std::shared_ptr<fakes::FakeConnection> connessione;
  fakes::ServizioAperto aperto;
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto.servizio;
};

}  // namespace orve::window_contract
