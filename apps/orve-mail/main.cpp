// orve-mail: plays the host application of the mail library from the command line.
#include <unistd.h>

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "orve-mail/riga_di_comando.h"

int main(int argc, char** argv) {
  // A reader of our output that goes away must not end a send half-way.
  std::signal(SIGPIPE, SIG_IGN);
  const std::vector<std::string> argomenti(argv + (argc > 0 ? 1 : 0), argv + argc);
  return static_cast<int>(
      orve::app::Esegui(argomenti, {std::cin, std::cout, std::cerr, ::isatty(STDIN_FILENO) == 1}));
}
