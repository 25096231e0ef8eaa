// The address-book manager as a fake: it journals what it is given, and a book "shows" itself by running what
// the test has the person pick.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "fakes/fake_ambiente.h"
#include "fakes/journal.h"
#include "orve-mailserver/host/manager_rubrica.h"

namespace orve::fakes {

class FakeRubrica : public host::ManagerRubrica {
 public:
  explicit FakeRubrica(JournalPtr journal) : journal_(std::move(journal)) {}

  /// What the person does in any book; without it nothing is picked.
  std::function<void(FakeRubrica&)> persona;
  host::Variant codice;
  host::Variant nome;
  host::Variant indirizzo;
  bool annullata = false;

  void DittaRubrica(const host::Variant& ditta) override { Scrive("DittaRubrica", Mostra(ditta)); }
  void TipoRubrica(std::int32_t tipo) override { Scrive("TipoRubrica", std::to_string(tipo)); }
  void CodiceScelto(const host::Variant& valore) override {
    Scrive("CodiceScelto", Mostra(valore));
    codice = valore;
  }
  host::Variant CodiceScelto() override { return Legge("CodiceScelto", codice); }
  void NomeScelto(const host::Variant& valore) override {
    Scrive("NomeScelto", Mostra(valore));
    nome = valore;
  }
  host::Variant NomeScelto() override { return Legge("NomeScelto", nome); }
  void IndirizzoScelto(const host::Variant& valore) override {
    Scrive("IndirizzoScelto", Mostra(valore));
    indirizzo = valore;
  }
  host::Variant IndirizzoScelto() override { return Legge("IndirizzoScelto", indirizzo); }
  void ApriRubrica() override { Apre("ApriRubrica"); }
  void ApriRubricaOutlook() override { Apre("ApriRubricaOutlook"); }
  void ApriRubricaTobit() override { Apre("ApriRubricaTobit"); }
  bool Annullata() override {
    journal_->Add("legge Rubrica.Annullata");
    return annullata;
  }
  void Interfaccia(const std::shared_ptr<host::InterfacciaHost>& interfaccia) override {
    Scrive("Interfaccia", interfaccia ? "(oggetto)" : "(assente)");
  }

 private:
  void Scrive(const std::string& membro, const std::string& valore) {
    journal_->Add("Rubrica." + membro + " " + valore);
  }
  host::Variant Legge(const std::string& membro, const host::Variant& valore) {
    journal_->Add("legge Rubrica." + membro);
    return valore;
  }
  void Apre(const std::string& membro) {
    journal_->Add("Rubrica." + membro);
    if (persona) persona(*this);
  }

  JournalPtr journal_;
};

}  // namespace orve::fakes
