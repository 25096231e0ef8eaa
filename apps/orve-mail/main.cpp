// orve-mail: plays the host application of the mail library from the command line.
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/secrets/memoria.h"

namespace {

// The width of the screen that standard output goes to, 0 when there is none to draw a bar on.
int Colonne() {
  const char* const tipo = std::getenv("TERM");
  if (::isatty(STDOUT_FILENO) != 1 || tipo == nullptr || std::string_view(tipo) == "dumb") return 0;
  constexpr int kSolite = 80;
  winsize misure{};
  const bool note = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &misure) == 0 && misure.ws_col > 0;
  return note ? misure.ws_col : kSolite;
}

}  // namespace

int main(int argc, char** argv) {
  orve::app::ChiudiMemoria();
  // If the reader of our output goes away, that must not end a send halfway.
  std::signal(SIGPIPE, SIG_IGN);
  // Nor must a file that may grow no further: writing it fails, and that is handled.
  std::signal(SIGXFSZ, SIG_IGN);
  const std::vector<std::string> argomenti(argv + (argc > 0 ? 1 : 0), argv + argc);
  return static_cast<int>(
      orve::app::Esegui(argomenti, {std::cin, std::cout, std::cerr, ::isatty(STDIN_FILENO) == 1, Colonne()}));
}
