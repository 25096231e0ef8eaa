#include "orve-mail/lists/avanzamento.h"

#include <algorithm>

namespace orve::app {

namespace {

constexpr std::size_t kBarraMassima = 40;

// "[####......]  40%  4/10", or as much of it as fits; never the full width of the screen, where some
// terminals would wrap to the next line.
std::string Barra(std::size_t fatti, std::size_t totale, std::size_t colonne) {
  const std::size_t percento = totale == 0 ? 100 : fatti * 100 / totale;
  std::string numeri = std::to_string(percento) + "%";
  numeri.insert(0, 4 - std::min<std::size_t>(4, numeri.size()), ' ');
  const std::string conto = "  " + std::to_string(fatti) + "/" + std::to_string(totale);
  if (numeri.size() + conto.size() < colonne) numeri += conto;
  if (numeri.size() >= colonne) return {};
  const std::size_t resto = colonne - 1 - numeri.size();
  constexpr std::size_t kCornice = 3;  // "[", "]", blank
  if (resto < kCornice + 4) return numeri;
  const std::size_t larga = std::min(resto - kCornice, kBarraMassima);
  const std::size_t piena = totale == 0 ? larga : fatti * larga / totale;
  return "[" + std::string(piena, '#') + std::string(larga - piena, '.') + "] " + numeri;
}

}  // namespace

Avanzamento::Avanzamento(Terminale terminale, std::size_t totale) : terminale_(terminale), totale_(totale) {
  Disegna();
}

Avanzamento::~Avanzamento() {
  Cancella();
  terminale_.uscita.flush();
}

void Avanzamento::Passo(const std::string& testo) {
  ++fatti_;
  if (terminale_.colonne == 0) terminale_.uscita << TerminalSafeLine(testo) << std::endl;
  Disegna();
}

void Avanzamento::PassoConAvviso(const std::string& testo) {
  ++fatti_;
  Cancella();
  terminale_.uscita.flush();
  terminale_.errori << TerminalSafeLine(testo) << std::endl;
  Disegna();
}

void Avanzamento::Disegna() {
  if (terminale_.colonne <= 0) return;
  terminale_.uscita << '\r' << Barra(fatti_, totale_, static_cast<std::size_t>(terminale_.colonne))
                    << "\x1B[K" << std::flush;
  disegnata_ = true;
}

void Avanzamento::Cancella() {
  if (disegnata_) terminale_.uscita << "\r\x1B[K";
  disegnata_ = false;
}

}  // namespace orve::app
