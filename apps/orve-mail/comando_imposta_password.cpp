// imposta-password: the password of a mail account, read from the standard input and stored enciphered. It is
// never taken from the command line, where other users of the machine could read it.
#include <termios.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "host/errore.h"
#include "orve-mail/archivio.h"
#include "orve-mail/cifratore_sodium.h"
#include "orve-mail/comandi.h"
#include "orve-mail/messaggio.h"
#include "orve-mail/riga_di_comando.h"

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

std::string LeggiPassword(Terminale terminale) {
  std::string password;
  {
    const SenzaEco muto(terminale.interattivo);
    if (terminale.interattivo) terminale.errori << "Password: " << std::flush;
    std::getline(terminale.ingresso, password);
  }
  if (terminale.interattivo) terminale.errori << std::endl;
  if (!password.empty() && password.back() == '\r') password.pop_back();
  if (password.empty())
    throw ErroreProgramma(Uscita::kComandoErrato, "manca la password sullo standard input");
  RichiediUtf8(password, "password");
  return password;
}

Uscita Imposta(const ArgomentiPassword& argomenti, Terminale terminale) {
  static_cast<void>(FileArchivio(argomenti.posizione));  // a server is refused before its key is looked for
  CifratoreSodium cifratore(std::make_shared<const Chiave>(Chiave::Leggi(FileChiave(argomenti.posizione))));
  const auto archivio = ApriIncorporato(argomenti.posizione);
  const std::string cifrata = cifratore.Cripta(LeggiPassword(terminale));
  try {
    const auto cambiate = archivio->EseguiConValori(
        "UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = ?2 WHERE FW98_IDACCOUNT = ?1 RETURNING FW98_IDACCOUNT",
        {std::int64_t{argomenti.id}, cifrata});
    if (cambiate->Eof()) {
      throw ErroreProgramma(Uscita::kNonUtilizzabile,
                            "Nessun account con il numero " + std::to_string(argomenti.id));
    }
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
  terminale.uscita << "Password dell'account " << argomenti.id << " memorizzata.\n";
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
