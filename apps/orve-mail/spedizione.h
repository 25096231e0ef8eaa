// One send, from the request on the command line to the account of what became of it: the program playing the
// host application, in the order in which an application works with the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/data_ora.h"
#include "orve-mail/archivio.h"
#include "orve-mail/messaggio.h"
#include "orve-mail/terminale.h"
#include "orve-mail/uscita.h"
#include "service/enumerations.h"
#include "smtp/smtp_options.h"

namespace orve::app {

struct DestinatarioInCasella {
  VoceDestinatario voce;
  std::int16_t casella = 0;  // 0 A, 1 CC, 2 CCn
};

/// A business partner of the master data, or a contact, or a text with an address behind a marker.
struct CodiceDestinatario {
  std::string codice;
  kvTipologiaDestinatarioFAX tipo = kvDestinatarioFaxAnagrafica;
};

/// Either a code or recipients. Texts are valid UTF-8; attachments are paths of the library, the main one
/// first.
struct RichiestaInvio {
  PosizioneArchivio archivio;
  UtenteIndicato utente;
  std::string ditta;
  std::optional<CodiceDestinatario> codice;
  std::vector<DestinatarioInCasella> destinatari;
  std::optional<std::int16_t> mittente;  // account of a send to addresses; none: the default one
  std::string oggetto;
  std::optional<std::string> corpo;  // none: the body of the settings, or with addresses an empty one
  std::vector<std::string> allegati;
  bool pec = false;
  std::optional<kvEnumModalitaInvio> modo;  // none: that of the settings
  std::optional<host::DataOra> data;
  std::string titolo;
  std::string azienda;  // of the recipient
  std::string tipoDocumento;
  std::string numeroRegistrazione;
  std::string numeroDocumento;
  std::string sezioneDocumento;
  adapters::smtp::SmtpOptions smtp;
};

/// Sends, tells on the terminal what became of it, and gives the exit status. Raises ErroreProgramma when
/// nothing could be tried.
[[nodiscard]] Uscita Spedisci(const RichiestaInvio& richiesta, Terminale terminale);

}  // namespace orve::app
