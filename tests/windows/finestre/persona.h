// The person in tests of real windows: a thread of its own that finds the windows of the program, types,
// clicks and chooses by messages, and waits for the result. The program stays on the test's thread, as in an
// application.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "orve-mailserver/host/layout.h"
#include "window_contract/toolkit.h"

namespace orve::adapters::win32::finestre {

/// Waits until it is so; false when it never is.
[[nodiscard]] bool Attendi(const std::function<bool()>& condizione);

/// The program's thread; to be created on it: it runs what the person's thread hands over.
class Programma {
 public:
  Programma();
  Programma(const Programma&) = delete;
  Programma& operator=(const Programma&) = delete;
  Programma(Programma&&) = delete;
  Programma& operator=(Programma&&) = delete;
  ~Programma();

  /// At once, inside whatever the program waits for.
  void Esegui(const std::function<void()>& azione) const;
  /// Returns once everything that was posted before is done.
  void Respira() const;
  [[nodiscard]] DWORD Filo() const { return filo_; }

 private:
  HWND finestra_;
  DWORD filo_;
};

/// A window as the person has it. A control that a person could not see or use fails the test.
class Vista final : public window_contract::VistaSuSchermo {
 public:
  Vista(const Programma& programma, HWND finestra, const host::LayoutForm& layout)
      : programma_(programma), finestra_(finestra), layout_(layout) {}

  [[nodiscard]] HWND Finestra() const { return finestra_; }
  [[nodiscard]] HWND Trova(const std::string& nome) const;
  [[nodiscard]] bool Aperta() const override { return IsWindowVisible(finestra_) != FALSE; }
  [[nodiscard]] bool Vede(const std::string& nome) const override {
    return IsWindowVisible(Trova(nome)) != FALSE;
  }
  [[nodiscard]] bool Attivo(const std::string& nome) const override {
    return IsWindowEnabled(Trova(nome)) != FALSE;
  }
  [[nodiscard]] std::string Titolo() const override;
  [[nodiscard]] std::string Contenuto(const std::string& nome) const override;
  [[nodiscard]] bool Spuntata(const std::string& nome) const override;
  /// The focused control, by name.
  [[nodiscard]] std::string Fuoco() const;
  /// In pixels, relative to the frame or window that holds it.
  [[nodiscard]] RECT Posto(const std::string& nome) const;
  [[nodiscard]] SIZE Interno() const;
  [[nodiscard]] std::vector<std::string> Righe() const override;
  /// From 1; 0 for none.
  [[nodiscard]] int RigaSelezionata() const override;

  void Clicca(const std::string& nome) const override;
  void Fuoco(const std::string& nome) const;
  /// Sends a key to the focused control.
  void Tasto(WPARAM tasto) const;
  void Mnemonico(char lettera) const;
  /// Types at the end of the box.
  void Digita(const std::string& nome, const std::string& testo) const override;
  void Riscrive(const std::string& nome, const std::string& testo) const override;
  /// Pastes in place of the selection.
  void Incolla(const std::string& nome, const std::string& testo) const override;
  void Seleziona(const std::string& nome, int inizio, int fine) const override;
  /// Drops these files on the window, as the system's explorer does.
  void Lascia(const std::vector<std::string>& percorsi) const;
  /// Opens the menu of a button and returns "Caption" or "(Caption)" for each entry, in brackets if disabled;
  /// then leaves the menu.
  [[nodiscard]] std::vector<std::string> VociDiMenu(const std::string& pulsante) const override;
  void Sceglie(const std::string& pulsante, const std::string& didascalia) const override;
  /// The same for the menu of a box, asked for with the mouse and, where one is chosen, with the keyboard. An
  /// empty text is a line between entries.
  [[nodiscard]] std::vector<std::string> VociDelTesto(const std::string& nome) const;
  void ScegliePerTesto(const std::string& nome, const std::string& didascalia) const;
  /// What is on the clipboard.
  void Appunti(const std::string& testo) const;
  [[nodiscard]] std::string Appunti() const;
  void Ridimensiona(int width, int height) const;
  void Chiude() const override;
  [[nodiscard]] const Programma& IlProgramma() const { return programma_; }

  void VoceDopo(const std::string& combo) const override;
  void VocePrima(const std::string& combo) const override;
  [[nodiscard]] window_contract::Posto Dove(const std::string& nome) const override;
  [[nodiscard]] window_contract::Posto Area() const override;
  [[nodiscard]] std::string ColFuoco() const override { return Fuoco(); }
  void DaiFuoco(const std::string& nome) const override { Fuoco(nome); }
  void Preme(window_contract::Tasto tasto) const override;
  void PremeMnemonico(char lettera) const override { Mnemonico(lettera); }
  void Annulla(const std::string& nome) const override;
  void Scrive(const std::string& nome, const std::string& testo) const override;
  [[nodiscard]] int Cursore(const std::string& nome) const override;
  [[nodiscard]] bool CursoreInVista(const std::string& nome) const override;
  [[nodiscard]] std::vector<std::string> VociDelMenuAperto() const override { return Lette(); }
  void ConfermaVoce(const std::string& combo) const override;
  void Rotella(const std::string& combo) const override;
  void Porta(int width, int height) const override { Ridimensiona(width, height); }
  void LasciaFile(const std::vector<std::string>& percorsi) const override { Lascia(percorsi); }

 private:
  [[nodiscard]] HWND Raggiunge(const std::string& nome) const;
  // Of the menu that is coming up.
  [[nodiscard]] std::vector<std::string> Lette() const;
  void Scelta(const std::string& didascalia) const;

  const Programma& programma_;
  HWND finestra_;
  const host::LayoutForm& layout_;
};

/// The visible windows of the program that are not children of another.
[[nodiscard]] std::vector<HWND> FinestreDi(const Programma& programma);
[[nodiscard]] std::wstring TestoDi(HWND finestra);
[[nodiscard]] std::wstring ClasseDi(HWND finestra);
/// The control with that identifier, however deep.
[[nodiscard]] HWND Discendente(HWND finestra, int identificatore);

/// Waits for a message box with this text, runs `prima`, and presses the button with this identifier; returns
/// its title and buttons as "title|ids". Of the box before: `padrone`, the title of the window that it
/// belongs to.
std::string Risponde(const Programma& programma, const std::string& testo, int pulsante = IDOK,
                     const std::function<void()>& prima = nullptr, std::string* padrone = nullptr);
/// Waits for the choice of a file: takes this one, or cancels for an empty path. Returns the title.
std::string ScegliFile(const Programma& programma, const std::string& percorso);

/// A thread next to the program's. At its end the program's thread handles messages until it is done.
class Compagno {
 public:
  explicit Compagno(std::function<void()> azione);
  Compagno(const Compagno&) = delete;
  Compagno& operator=(const Compagno&) = delete;
  Compagno(Compagno&&) = delete;
  Compagno& operator=(Compagno&&) = delete;
  ~Compagno();

 private:
  HANDLE finito_;
  std::thread filo_;
};

/// What a person does in the window of that layout once it is open; what is still open at the end is closed.
[[nodiscard]] std::function<void()> InFinestra(const Programma& programma, const host::LayoutForm& layout,
                                               std::function<void(const Vista&)> azione);

}  // namespace orve::adapters::win32::finestre
