// The controls of the toolkit without a screen: their state, and what the program may ask of them. Used by
// headless.cpp alone.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "fakes/headless.h"
#include "forms/testo_digitato.h"
#include "forms/voci_combo.h"
#include "forms/voci_menu.h"

namespace orve::fakes::headless {

/// What every control has, whatever its kind.
struct Stato {
  Stato(JournalPtr journalComune, const host::LayoutControllo& layout)
      : journal(std::move(journalComune)),
        disegno(layout),
        nome(layout.nome),
        rettangolo(layout.posizione),
        visible(layout.disegno.visible) {}
  Stato(const Stato&) = delete;
  Stato& operator=(const Stato&) = delete;
  Stato(Stato&&) = delete;
  Stato& operator=(Stato&&) = delete;
  virtual ~Stato() = default;

  void Scrive(const std::string& membro, const std::string& valore) const {
    journal->Add(nome + "." + membro + (valore.empty() ? "" : " " + valore));
  }
  void Legge(const std::string& membro) const { journal->Add("legge " + nome + "." + membro); }

  JournalPtr journal;
  host::LayoutControllo disegno;
  std::string nome;
  host::Rettangolo rettangolo;
  bool visible;
  bool enabled = true;
};

template <class Base>
class Controllo : public Base, public Stato {
 public:
  using Stato::Stato;
  float Left() override { return Leggi("Left", rettangolo.left); }
  void Left(float twip) override { Scrivi("Left", rettangolo.left, twip); }
  float Top() override { return Leggi("Top", rettangolo.top); }
  void Top(float twip) override { Scrivi("Top", rettangolo.top, twip); }
  float Width() override { return Leggi("Width", rettangolo.width); }
  void Width(float twip) override { Scrivi("Width", rettangolo.width, twip); }
  float Height() override { return Leggi("Height", rettangolo.height); }
  void Height(float twip) override { Scrivi("Height", rettangolo.height, twip); }
  bool Visible() override { return Leggi("Visible", visible); }
  void Visible(bool valore) override { Scrivi("Visible", visible, valore); }
  bool Enabled() override { return Leggi("Enabled", enabled); }
  void Enabled(bool valore) override { Scrivi("Enabled", enabled, valore); }

 private:
  template <class T>
  T Leggi(const char* membro, const T& campo) {
    Legge(membro);
    return campo;
  }
  void Scrivi(const char* membro, float& campo, float twip) {
    Scrive(membro, Mostra(twip));
    campo = twip;
  }
  void Scrivi(const char* membro, bool& campo, bool valore) {
    Scrive(membro, SiNo(valore));
    campo = valore;
  }
};

class Pulsante : public Controllo<host::KVL_TBARMENU> {
 public:
  using Controllo::Controllo;
  void AddMenuItem(const std::string& didascalia, const std::string& chiave) override {
    Scrive("AddMenuItem", didascalia + "|" + chiave);
    voci.Aggiungi(didascalia, chiave);
  }
  void EnableMenuItem(const host::Variant& chiaveOPosizione, bool attiva) override {
    Scrive("EnableMenuItem", Mostra(chiaveOPosizione) + "|" + SiNo(attiva));
    voci.Abilita(chiaveOPosizione, attiva);
  }
  adapters::forms::VociMenu voci;
};

/// Both kinds of text box.
struct ConTesto {
  ConTesto() = default;
  ConTesto(const ConTesto&) = delete;
  ConTesto& operator=(const ConTesto&) = delete;
  ConTesto(ConTesto&&) = delete;
  ConTesto& operator=(ConTesto&&) = delete;
  virtual ~ConTesto() = default;
  std::string testo;
};

template <class Base>
class Casella : public Controllo<Base>, public ConTesto {
 public:
  using Controllo<Base>::Controllo;
  std::string Text() override {
    this->Legge("Text");
    return testo;
  }
  void Text(const std::string& valore) override {
    this->Scrive("Text", valore);
    testo = valore;
  }
};

class Spunta : public Controllo<host::KVL_CHECKBOX> {
 public:
  using Controllo::Controllo;
  std::string Text() override {
    Legge("Text");
    return valore;
  }
  void Text(const std::string& nuovo) override {
    Scrive("Text", nuovo);
    valore = nuovo;
    host::Solleva(Change);
  }
  std::string valore = "0";
};

class Combo : public Controllo<host::KVL_COMBO> {
 public:
  using Controllo::Controllo;
  void EraseCombo() override {
    Scrive("EraseCombo", "");
    voci.Svuota();
  }
  void AutoOpen(bool apre) override { Scrive("AutoOpen", SiNo(apre)); }
  void AddItemData(const std::string& testo, std::int16_t dati) override {
    Scrive("AddItemData", testo + "|" + std::to_string(dati));
    voci.Aggiungi(testo, dati);
  }
  std::string Text() override {
    Legge("Text");
    return voci.Valore();
  }
  void Text(const host::Variant& valore) override {
    Scrive("Text", Mostra(valore));
    voci.SelezionaValore(valore);
    host::Solleva(Change, voci.Selezionata());
  }
  std::string ItemKey(std::int16_t posizione) override {
    Legge("ItemKey " + std::to_string(posizione));
    return voci.Chiave(posizione);
  }
  void SelezionaPosizione(std::int16_t posizione) override {
    Scrive("SelezionaPosizione", std::to_string(posizione));
    Sceglie(posizione);
  }
  void Sceglie(std::int16_t posizione) {
    voci.SelezionaPosizione(posizione);
    host::Solleva(Change, posizione);
  }
  adapters::forms::VociCombo voci;
};

class Proporzioni : public Controllo<host::KVL_RESIZEFORM> {
 public:
  using Controllo::Controllo;
  void Avvia() override {
    Scrive("Avvia", "");
    host::Solleva(RichiestaControlli);
  }
  void RegistraControllo(const std::string& controllo, std::int16_t modo) override {
    Scrive("RegistraControllo", controllo + "|" + std::to_string(modo));
  }
};

class Griglia : public Controllo<host::KVL_QGRIDWRAPPER> {
 public:
  using Controllo::Controllo;
  ~Griglia() override { Lascia(); }
  void Configurazione(const std::shared_ptr<host::ConfigurazioneGriglia>& configurazione) override {
    Scrive("Configurazione", configurazione ? "(oggetto)" : "(assente)");
  }
  void ColonneFisse(std::int32_t numero) override { Scrive("ColonneFisse", std::to_string(numero)); }
  void AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                       float larghezza, bool visibile) override {
    Scrive("AggiungiColonna", campo + "|" + didascalia + "|" + std::to_string(numero) + "|" +
                                  Mostra(larghezza) + "|" + SiNo(visibile));
    colonne_.push_back(campo);
  }
  void FineColonne() override { Scrive("FineColonne", ""); }
  void FineConfigurazione() override {
    Scrive("FineConfigurazione", "");
    configurata_ = true;
  }
  void DataSource(const std::shared_ptr<host::RecordSetScollegato>& sorgente) override {
    Scrive("DataSource", sorgente ? "(oggetto)" : "(assente)");
    Lascia();
    righe = sorgente;
    celle.clear();
    if (!righe || !configurata_ || colonne_.empty()) return;
    Copia();
    righe->MoveComplete = [this] { selezionata = righe->AbsolutePosition(); };
  }

  std::shared_ptr<host::RecordSetScollegato> righe;
  std::vector<std::string> celle;  // as they were when the grid was bound
  std::int32_t selezionata = host::RecordSetScollegato::kNessunaRiga;

 private:
  void Copia() {
    const std::int32_t corrente = righe->AbsolutePosition();
    if (righe->RecordCount() > 0) righe->MoveFirst();
    for (; !righe->Eof(); righe->MoveNext()) celle.push_back(host::Leggi(*righe, colonne_.front()).Joined());
    if (corrente != host::RecordSetScollegato::kNessunaRiga) righe->AbsolutePosition(corrente);
    selezionata = corrente;
  }
  void Lascia() {
    if (righe) righe->MoveComplete = nullptr;
    selezionata = host::RecordSetScollegato::kNessunaRiga;
  }

  std::vector<std::string> colonne_;
  bool configurata_ = false;
};

/// The control of a layout row.
std::shared_ptr<host::Controllo> Crea(const JournalPtr& journal, const host::LayoutControllo& layout);

}  // namespace orve::fakes::headless
