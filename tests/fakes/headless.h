// A toolkit without a screen. A window is built from its layout table like any other; in place of the person
// there is a script, which runs while the window is shown modally. The script can do what a person can do and
// no more: a control that is hidden, disabled or not that kind of control fails the test.
//
// The program's calls appear in the journal as "CONTROL.Member values", its reads preceded by "legge ".
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/journal.h"
#include "forms/voci_menu.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/griglia.h"
#include "orve-mailserver/host/layout.h"

namespace orve::fakes {

class HeadlessForm;
using Persona = std::function<void(HeadlessForm&)>;

class HeadlessForm : public host::Form {
 public:
  /// With an empty `persona` the window is just closed.
  HeadlessForm(JournalPtr journal, const host::LayoutForm& layout, Persona persona);

  // What the program asks.

  [[nodiscard]] std::shared_ptr<host::Controllo> Controlli(std::string_view nome) override;
  [[nodiscard]] std::string Caption() override;
  void Caption(const std::string& didascalia) override;
  [[nodiscard]] float Width() override;
  void Width(float twip) override;
  [[nodiscard]] float Height() override;
  void Height(float twip) override;
  /// Raises Load and Activate, runs the script, and closes the window if the script has not.
  void Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) override;
  void Chiudi() override;

  // What the person does.

  void Preme(std::string_view pulsante);
  /// Opens the menu and returns its entries.
  std::vector<adapters::forms::VoceMenu> ApreMenu(std::string_view pulsante);
  void Sceglie(std::string_view pulsante, const std::string& chiave);
  /// Types or pastes at the end of the box.
  void Digita(std::string_view casella, std::string_view testo);
  /// The same, replacing what is there.
  void Riscrive(std::string_view casella, std::string_view testo);
  void Spunta(std::string_view casella, bool valore);
  void SceglieVoce(std::string_view combo, std::int16_t posizione);
  void SelezionaRiga(std::string_view griglia, std::int32_t riga);
  void ChiudeFinestra();
  /// The window becomes the active one again, as after a message box.
  void Riattiva();

  // What the person sees.

  [[nodiscard]] bool Aperta() const { return aperta_; }
  [[nodiscard]] std::string Testo(std::string_view controllo);
  [[nodiscard]] bool Vede(std::string_view controllo) const;
  [[nodiscard]] bool Attivo(std::string_view controllo) const;
  [[nodiscard]] std::vector<std::string> Voci(std::string_view combo) const;
  /// The position selected, -1 for none.
  [[nodiscard]] std::int16_t VoceScelta(std::string_view combo) const;
  /// The cells of the first column, and the row selected, from 1 (-3 for none).
  [[nodiscard]] std::vector<std::string> Righe(std::string_view griglia) const;
  [[nodiscard]] std::int32_t RigaSelezionata(std::string_view griglia) const;
  [[nodiscard]] host::Rettangolo Posizione(std::string_view controllo) const;
  [[nodiscard]] std::string Titolo() const { return didascalia_; }
  [[nodiscard]] float Altezza() const { return height_; }
  [[nodiscard]] const std::string& Nome() const { return nome_; }

 private:
  template <class Tipo>
  Tipo* Mio(std::string_view nome) const;
  template <class Tipo>
  Tipo* Raggiunge(std::string_view nome) const;

  JournalPtr journal_;
  std::string nome_;
  std::string didascalia_;
  float width_;
  float height_;
  Persona persona_;
  bool aperta_ = true;
  bool caricata_ = false;
  std::map<std::string, std::shared_ptr<host::Controllo>> controlli_;  // by folded name
};

/// A grid's settings, journaled as "ConfigurazioneGriglia.ColonnaChiave Index" and so on.
std::shared_ptr<host::ConfigurazioneGriglia> CreaFakeConfigurazioneGriglia(JournalPtr journal);

}  // namespace orve::fakes
