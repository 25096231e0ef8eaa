// What the sending commands share apart from their recipients: message, context and network on the command
// line, and the request built from them.
//
// A command adds the groups of options that it has and, after the command line has been parsed, makes the
// request; it fills in the recipients and the mode itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orve-mail/commands/directory_options.h"
#include "orve-mail/host/spedizione.h"
#include "orve-mail/terminal/terminale.h"

namespace CLI {
class App;
}

namespace orve::app {

/// The options as given, before they are checked; what needs no check goes straight into the request. They
/// must outlive the command line.
struct SendOptions {
  RichiestaInvio richiesta;
  std::string corpo;
  std::vector<std::string> allegati;
  bool allegatiSenzaControllo = false;
  std::string data;
  std::string ca;
  std::string dialogo;
  std::string sendmail;
  std::string mittenteSendmail;
  std::string nomeEhlo;
  std::vector<std::uint16_t> porteTls;
  DirectoryOptions directory;
  double attesaConnessione = 0;
  double attesaRisposta = 0;
};

/// Subject, body, attachments, certified mail, and what else goes into the register.
void AggiungiMessaggio(CLI::App& comando, SendOptions& opzioni);
/// --data, the day for which a code is resolved.
void AggiungiData(CLI::App& comando, SendOptions& opzioni);
/// The database with its key, the company and the user.
void AggiungiContesto(CLI::App& comando, SendOptions& opzioni);
/// Certificates, the name in EHLO, ports of implicit TLS, time limits, the sendmail command with its sender,
/// where the dialogue with the server goes, and the company's directory.
void AggiungiRete(CLI::App& comando, SendOptions& opzioni);

/// The request, without recipients and mode; an option that the command does not have counts as not given.
/// Reads the body, checks the attachments and opens the dialogue file. `altriEsclusi`: the command's own
/// files that must not be sent, in addition to those that no command sends. Raises ErroreProgramma:
/// kComandoErrato for what makes no sense, kFileMancante for files that cannot be read or written.
[[nodiscard]] RichiestaInvio LeggiRichiesta(const CLI::App& comando, const SendOptions& opzioni,
                                            Terminale terminale,
                                            const std::vector<std::string>& altriEsclusi = {});

}  // namespace orve::app
