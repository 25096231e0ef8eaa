// What the tests of the window contract ask of a toolkit. Every toolkit has one implementation, in its own
// test program, over which the same tests run.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/layout.h"

namespace orve::fakes {
class FakeAmbiente;
}  // namespace orve::fakes

namespace orve::window_contract {

enum class Tasto { kInvio, kEsc, kSu, kGiu, kInizio, kTab, kIndietro };

/// In pixels, relative to the frame or window that holds the control.
struct Posto {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const Posto&, const Posto&) = default;
};

/// A window as the person has it. A control that a person could not see or use fails the test.
class Vista {
 public:
  Vista() = default;
  Vista(const Vista&) = delete;
  Vista& operator=(const Vista&) = delete;
  Vista(Vista&&) = delete;
  Vista& operator=(Vista&&) = delete;
  virtual ~Vista() = default;

  [[nodiscard]] virtual bool Aperta() const = 0;
  [[nodiscard]] virtual bool Vede(const std::string& nome) const = 0;
  [[nodiscard]] virtual bool Attivo(const std::string& nome) const = 0;
  [[nodiscard]] virtual std::string Titolo() const = 0;
  /// What is in a box, or the entry of a list that is selected.
  [[nodiscard]] virtual std::string Contenuto(const std::string& nome) const = 0;
  [[nodiscard]] virtual bool Spuntata(const std::string& nome) const = 0;
  /// The grid's first column, and its selected row from 1 (0 for none).
  [[nodiscard]] virtual std::vector<std::string> Righe() const = 0;
  [[nodiscard]] virtual int RigaSelezionata() const = 0;

  virtual void Clicca(const std::string& nome) const = 0;
  /// Types at the end of the box.
  virtual void Digita(const std::string& nome, const std::string& testo) const = 0;
  /// The same, replacing what is there.
  virtual void Riscrive(const std::string& nome, const std::string& testo) const = 0;
  virtual void Incolla(const std::string& nome, const std::string& testo) const = 0;
  /// The entry after or before the selected one.
  virtual void VoceDopo(const std::string& combo) const = 0;
  virtual void VocePrima(const std::string& combo) const = 0;
  /// Opens the menu of a button and returns "Caption" or "(Caption)" for each entry, in brackets if disabled;
  /// then leaves the menu.
  [[nodiscard]] virtual std::vector<std::string> VociDiMenu(const std::string& pulsante) const = 0;
  virtual void Sceglie(const std::string& pulsante, const std::string& didascalia) const = 0;
  virtual void Chiude() const = 0;
};

/// The same on a screen, with a keyboard.
class VistaSuSchermo : public Vista {
 public:
  [[nodiscard]] virtual Posto Dove(const std::string& nome) const = 0;
  /// Size of the area inside the border.
  [[nodiscard]] virtual Posto Area() const = 0;
  /// The focused control, by name.
  [[nodiscard]] virtual std::string ColFuoco() const = 0;

  virtual void DaiFuoco(const std::string& nome) const = 0;
  /// Sends a key to the focused control.
  virtual void Preme(Tasto tasto) const = 0;
  /// Types into the box in place of what is selected.
  virtual void Scrive(const std::string& nome, const std::string& testo) const = 0;
  /// From and up to these positions in the box, where a line break counts as one; the same twice sets the
  /// caret.
  virtual void Seleziona(const std::string& nome, int inizio, int fine) const = 0;
  /// Where the caret stands in the box; -1 while something is selected.
  [[nodiscard]] virtual int Cursore(const std::string& nome) const = 0;
  /// Whether the part of the box with the caret is seen.
  [[nodiscard]] virtual bool CursoreInVista(const std::string& nome) const = 0;
  /// As VociDiMenu, of the menu that is open.
  [[nodiscard]] virtual std::vector<std::string> VociDelMenuAperto() const = 0;
  /// Opens the list and confirms the entry that stands.
  virtual void ConfermaVoce(const std::string& combo) const = 0;
  /// Turns the wheel towards the person over the closed list.
  virtual void Rotella(const std::string& combo) const = 0;
  virtual void PremeMnemonico(char lettera) const = 0;
  virtual void Annulla(const std::string& nome) const = 0;
  virtual void Porta(int width, int height) const = 0;
  /// Drops these files on the window.
  virtual void LasciaFile(const std::vector<std::string>& percorsi) const = 0;
};

enum class Risposta { kOk, kSi, kNo };
using Gesto = std::function<void()>;
using Persona = std::function<void(const Vista&)>;
using PersonaAlloSchermo = std::function<void(const VistaSuSchermo&)>;

class Toolkit {
 public:
  Toolkit() = default;
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;
  Toolkit(Toolkit&&) = delete;
  Toolkit& operator=(Toolkit&&) = delete;
  virtual ~Toolkit() = default;

  /// Fakes for everything but what the toolkit makes.
  [[nodiscard]] virtual std::shared_ptr<fakes::FakeAmbiente> Ambiente() = 0;
  /// What the file objects say of every file from now on.
  virtual void VaCopiato(bool copiato) = 0;
  /// Writes a file and returns its path in the library's form; those of the person's eyes and of a file that
  /// there is not.
  [[nodiscard]] virtual std::string File(const std::string& nome, const std::string& contenuto = "dati") = 0;
  [[nodiscard]] virtual std::string PerPersona(const std::string& percorso) const = 0;
  [[nodiscard]] virtual std::string Mancante() const = 0;
  virtual void Rimuove(const std::string& percorso) = 0;
  [[nodiscard]] virtual std::string Legge(const std::string& percorso) = 0;

  /// How high a caption stands whose table gives it this height, in pixels.
  [[nodiscard]] virtual int AltezzaDidascalia(int nellaTavola) const { return nellaTavola; }

  /// Runs `programma`, which shows the window of this layout; the person acts in it, and what is still open
  /// then is closed.
  virtual void Mostra(const host::LayoutForm& layout, const Persona& persona, const Gesto& programma) = 0;
  /// Runs `programma`, which shows this message and no window.
  virtual void MostraMessaggio(const std::string& testo, Risposta risposta, const Gesto& programma) = 0;

  // For the person, inside a window.

  /// What the program does meanwhile.
  virtual void NelProgramma(const Gesto& azione) = 0;
  /// Waits until it is so; false when it never is.
  [[nodiscard]] virtual bool Attende(const std::function<bool()>& condizione) = 0;
  /// `gesto` brings up a message with this text, which is answered. Returns its title.
  virtual std::string Risponde(const Gesto& gesto, const std::string& testo, Risposta risposta) = 0;
  /// `gesto` brings up the choice of a file: takes this one, or none for an empty path.
  virtual void ScegliFile(const Gesto& gesto, const std::string& percorso) = 0;
};

/// A message as the person has it.
struct MessaggioVisto {
  std::string titolo;
  std::vector<Risposta> pulsanti;
  std::string padrone;  // the title of the window that it belongs to; empty for none
};

/// The same on a screen.
class ToolkitSuSchermo : public Toolkit {
 public:
  /// As Risponde, for a message that need not come up inside a window. `prima`: what the person does while
  /// the message is there.
  virtual MessaggioVisto Vede(const Gesto& programma, const std::string& testo, Risposta risposta,
                              const Gesto& prima) = 0;
  /// Whether the pointer says to wait. For the program.
  [[nodiscard]] virtual bool PuntatoreAttende() const = 0;
};

[[nodiscard]] std::unique_ptr<Toolkit> CreaToolkit();

}  // namespace orve::window_contract
