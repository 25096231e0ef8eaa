// The person in tests of real windows: somebody who waits for the windows and answers them, and the hands
// that type and click in them.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orve::adapters::qt {

/// In milliseconds, until a watchdog bites whose only purpose is to say what never came.
constexpr int kPazienza = 90'000;

/// Waits for the windows that a test expects, in their order, and acts in each. Checks every few
/// milliseconds, even while a window waits inside another; a watchdog closes everything when nothing expected
/// comes.
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
  /// A message with this text, answered with the named button.
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
/// The button of a message.
void PremeNellaCasella(QWidget& casella, const std::string& testo);
/// Types at the end of the box.
void Digita(QWidget& finestra, const std::string& nome, const std::string& testo);
/// The same, replacing what is there.
void Riscrive(QWidget& finestra, const std::string& nome, const std::string& testo);
/// Pastes at the end of the box.
void Incolla(QWidget& finestra, const std::string& nome, const std::string& testo);
/// Opens the menu of a button and returns "Caption" or "(Caption)" for each entry, in brackets if disabled;
/// then leaves the menu.
[[nodiscard]] std::vector<std::string> VociDiMenu(QWidget& finestra, const std::string& pulsante);
/// The same for the menu that is open.
[[nodiscard]] std::vector<std::string> VociDelMenuAperto();
/// Chooses an entry by its key or its caption.
void Sceglie(QWidget& finestra, const std::string& pulsante, const std::string& chiave);
/// What is in a box.
[[nodiscard]] std::string Contenuto(QWidget& finestra, const std::string& nome);
/// The grid's first column, and its selected row from 1 (0 for none).
[[nodiscard]] std::vector<std::string> Righe(QWidget& finestra);
[[nodiscard]] int RigaSelezionata(QWidget& finestra);
/// Drops files, given by their paths, as a file manager does it: the paths come along as text too.
void Lascia(QWidget& su, const std::vector<std::string>& file);
/// Lets Qt do what is pending.
void Respira();

}  // namespace orve::adapters::qt
