// How far a long run has got: a bar on a screen, a line for each step anywhere else.
#pragma once

#include <cstddef>
#include <string>

#include "orve-mail/terminal/terminale.h"

namespace orve::app {

class Avanzamento {
 public:
  /// The terminal's streams must outlive the object. A screen (`colonne` not 0) gets the bar.
  Avanzamento(Terminale terminale, std::size_t totale);
  Avanzamento(const Avanzamento&) = delete;
  Avanzamento& operator=(const Avanzamento&) = delete;
  Avanzamento(Avanzamento&&) = delete;
  Avanzamento& operator=(Avanzamento&&) = delete;
  /// Takes the bar off the screen.
  ~Avanzamento();

  /// Another step is done. `testo` becomes a line on the output stream; with the bar it is not shown.
  void Passo(const std::string& testo);
  /// The same with something that the person must read: a line on the error stream, above the bar.
  void PassoConAvviso(const std::string& testo);
  /// Another step is done that needs no mention. The bar shows it with the next one.
  void PassoMuto() { ++fatti_; }

 private:
  void Disegna();
  void Cancella();

  Terminale terminale_;
  std::size_t totale_;
  std::size_t fatti_ = 0;
  bool disegnata_ = false;
};

}  // namespace orve::app
