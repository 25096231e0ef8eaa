// What the tests of the platform share: a folder of their own, and a way to see things as an ordinary user.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace orve::adapters::posix {

class CartellaDiProva {
 public:
  CartellaDiProva() {
    std::string modello = (std::filesystem::temp_directory_path() / "orve-prova-XXXXXX").string();
    if (::mkdtemp(modello.data()) == nullptr) throw std::runtime_error("mkdtemp");
    radice_ = modello;
  }
  CartellaDiProva(const CartellaDiProva&) = delete;
  CartellaDiProva& operator=(const CartellaDiProva&) = delete;
  CartellaDiProva(CartellaDiProva&&) = delete;
  CartellaDiProva& operator=(CartellaDiProva&&) = delete;
  ~CartellaDiProva() {
    std::error_code ignorato;
    std::filesystem::remove_all(radice_, ignorato);
  }

  [[nodiscard]] std::string operator/(const std::string& nome) const { return radice_ + "/" + nome; }
  [[nodiscard]] const std::string& Radice() const { return radice_; }

 private:
  std::string radice_;
};

inline std::string Contenuto(const std::string& file) {
  std::ifstream flusso(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(flusso), {}};
}

/// Runs the lambda, which returns a small number, in a child process and returns that number. When the tests
/// run as root, which no permission stops, the child first becomes an ordinary user.
template <class Prova>
int ComeUtenteOrdinario(Prova prova, uid_t utente = 65534) {
  const pid_t figlio = ::fork();
  if (figlio == 0) {
    if (::geteuid() == 0 && ::setresuid(utente, utente, utente) != 0) ::_exit(250);
    int esito = 251;
    try {
      esito = prova();
    } catch (...) {
    }
    ::_exit(esito);
  }
  int stato = 0;
  if (figlio < 0 || ::waitpid(figlio, &stato, 0) != figlio || !WIFEXITED(stato)) return 252;
  return WEXITSTATUS(stato);
}

}  // namespace orve::adapters::posix
