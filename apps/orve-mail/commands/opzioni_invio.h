// What the commands that send share beside their recipients: message, context and network on the command
// line, and the request that comes of them.
//
// A command adds the groups of options that it has and, after the command line is parsed, makes the request;
// who receives and in which mode it fills in by itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orve-mail/commands/opzioni_directory.h"
#include "orve-mail/host/spedizione.h"
#include "orve-mail/terminal/terminale.h"

namespace CLI {
class App;
}

namespace orve::app {

/// The options as they come, before they are looked at; what needs no look stands in the request at once.
/// They must outlive the command line.
struct OpzioniInvio {
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
  OpzioniDirectory directory;
  double attesaConnessione = 0;
  double attesaRisposta = 0;
};

/// Subject, body, attachments, certified mail, and what stands in the register beside them.
void AggiungiMessaggio(CLI::App& comando, OpzioniInvio& opzioni);
/// --data, the day for which a code counts.
void AggiungiData(CLI::App& comando, OpzioniInvio& opzioni);
/// The database with its key, the company and the user.
void AggiungiContesto(CLI::App& comando, OpzioniInvio& opzioni);
/// Certificates, the name in EHLO, ports of implicit TLS, time limits, the sendmail command with its sender,
/// where the dialogue with the server goes, and the company's directory.
void AggiungiRete(CLI::App& comando, OpzioniInvio& opzioni);

/// The request, without recipients and mode; an option that the command does not have counts as not given.
/// Reads the body, looks at the attachments and opens the file of the dialogue. `altriEsclusi`: files of the
/// command's own that must not go with a message, beside those that no command lets go. Raises
/// ErroreProgramma: kComandoErrato for what makes no sense, kFileMancante for files that cannot be read or
/// written.
[[nodiscard]] RichiestaInvio LeggiRichiesta(const CLI::App& comando, const OpzioniInvio& opzioni,
                                            Terminale terminale,
                                            const std::vector<std::string>& altriEsclusi = {});

}  // namespace orve::app
