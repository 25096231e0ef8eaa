// imposta-password: the password of a mail account, read from the standard input and stored enciphered. It is
// never taken from the command line, where other users of the machine could read it.
#include <sodium.h>
#include <termios.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <utility>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/host/archivio.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/secrets/password_memorizzate.h"
#include "orve-mailserver/host/errore.h"

namespace orve::app {

namespace {

struct ArgomentiPassword {
  PosizioneArchivio posizione;
  std::int32_t id = 0;
};

// What a person types is not shown while this lives.
class SenzaEco {
 public:
  explicit SenzaEco(bool attivo) : attivo_(attivo && ::tcgetattr(STDIN_FILENO, &prima_) == 0) {
    if (!attivo_) return;
    termios muto = prima_;
    muto.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &muto);
  }
  SenzaEco(const SenzaEco&) = delete;
  SenzaEco& operator=(const SenzaEco&) = delete;
  SenzaEco(SenzaEco&&) = delete;
  SenzaEco& operator=(SenzaEco&&) = delete;
  ~SenzaEco() {
    if (attivo_) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &prima_);
  }

 private:
  termios prima_{};
  bool attivo_;
};

// Text that is wiped in place after use.
class Cancellata {
 public:
  explicit Cancellata(std::string&& testo) : testo_(std::move(testo)) { Cancella(testo); }
  Cancellata(const Cancellata&) = delete;
  Cancellata& operator=(const Cancellata&) = delete;
  Cancellata(Cancellata&&) = delete;
  Cancellata& operator=(Cancellata&&) = delete;
  ~Cancellata() { Cancella(testo_); }
  [[nodiscard]] const std::string& Testo() const { return testo_; }

 private:
  // Including what a short text leaves behind when it is moved.
  static void Cancella(std::string& testo) {
    testo.resize(testo.capacity());
    sodium_memzero(testo.data(), testo.size());
  }
  std::string testo_;
};

std::string PasswordDaIngresso(Terminale terminale) {
  std::string password;
  {
    const SenzaEco muto(terminale.interattivo);
    if (terminale.interattivo) terminale.errori << "Password: " << std::flush;
    std::setvbuf(stdin, nullptr, _IONBF, 0);  // a buffer of the stream's would keep the line
    std::getline(terminale.ingresso, password);
  }
  if (terminale.interattivo) terminale.errori << std::endl;
  if (!password.empty() && password.back() == '\r') password.pop_back();
  if (password.empty())
    throw ErroreProgramma(Uscita::kComandoErrato, "manca la password sullo standard input");
  RichiediUtf8(password, "password");
  return password;
}

PasswordMemorizzata LeggiAttuale(host::Connection& archivio, std::int32_t account) {
  auto trovate = LeggiPassword(archivio, {account, {}});
  if (trovate.empty()) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile,
                          "Nessun account con il numero " + std::to_string(account));
  }
  return std::move(trovate.front());
}

Uscita Imposta(const ArgomentiPassword& argomenti, Terminale terminale) {
  static_cast<void>(FileArchivio(argomenti.posizione));  // a server is refused before its key is looked for
  const SigilloPassword sigillo(LeggiChiave(argomenti.posizione));
  const auto archivio = ApriIncorporato(argomenti.posizione);
  const Cancellata password(PasswordDaIngresso(terminale));
  std::string dove;
  try {
    static_cast<void>(archivio->EseguiConValori("BEGIN IMMEDIATE", {}));
    const PasswordMemorizzata attuale = LeggiAttuale(*archivio, argomenti.id);
    SostituisciPassword(*archivio, argomenti.id, sigillo.Sigilla(password.Testo(), attuale.legame));
    static_cast<void>(archivio->EseguiConValori("COMMIT", {}));
    dove = attuale.legame.Dove();
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
  terminale.uscita << "Password dell'account " << argomenti.id << " memorizzata, per "
                   << TerminalSafeLine(dove) << ".\n";
  return Uscita::kInviato;
}

}  // namespace

void AggiungiImpostaPassword(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand(
      "imposta-password", "Memorizza, cifrata, la password di un account letta dallo standard input");
  auto argomenti = std::make_shared<ArgomentiPassword>();
  AggiungiArchivio(*comando, argomenti->posizione, true);
  comando->add_option("ACCOUNT", argomenti->id, "Numero dell'account")
      ->required()
      ->type_name("")
      ->check(NumeroFino(2147483647));
  comando->callback([argomenti, &contesto] { contesto.uscita = Imposta(*argomenti, contesto.terminale); });
}

}  // namespace orve::app
