// One send, from the request on the command line to the account of what became of it: the program acts as the
// host application, in the order in which an application works with the library.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orve-mail/host/allegati.h"
#include "orve-mail/host/archivio.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/host/password_in_chiaro.h"
#include "orve-mail/host/resoconto.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/host/data_ora.h"
#include "orve-mailserver/host/directory.h"
#include "orve-mailserver/ldap/ldap_options.h"
#include "orve-mailserver/mapi/mapi_options.h"
#include "orve-mailserver/service/enumerazioni.h"
#include "orve-mailserver/smtp/smtp_options.h"
#include "password/chiave.h"
#include "smtp/connection_pool.h"

namespace orve::app {

struct DestinatarioInCasella {
  VoceDestinatario voce;
  std::int16_t casella = 0;  // 0 A, 1 CC, 2 CCn
};

/// A business partner of the master data, or a contact, or text with an address after a marker.
struct CodiceDestinatario {
  std::string codice;
  kvTipologiaDestinatarioFAX tipo = kvDestinatarioFaxAnagrafica;
};

/// Either a code or recipients. Texts are valid UTF-8; the main attachment comes first.
struct RichiestaInvio {
  PosizioneArchivio archivio;
  UtenteIndicato utente;
  std::string ditta;
  std::optional<CodiceDestinatario> codice;
  std::vector<DestinatarioInCasella> destinatari;
  std::optional<std::int16_t> mittente;  // account of a send to addresses; none: the default one
  std::string oggetto;
  std::optional<std::string> corpo;  // none: the body of the settings, or with addresses an empty one
  std::vector<Allegato> allegati;
  std::vector<std::string> esclusi;  // files that never go with a message
  bool pec = false;
  std::optional<kvEnumModalitaInvio> modo;  // none: that of the settings
  std::optional<host::DataOra> data;
  std::string titolo;
  std::string azienda;  // of the recipient
  std::string tipoDocumento;
  std::string numeroRegistrazione;
  std::string numeroDocumento;
  std::string sezioneDocumento;
  std::string lista;  // identifier of the list that the message belongs to; empty: none
  adapters::smtp::SmtpOptions smtp;
  bool passwordInChiaro = false;  // every server may get one without encryption
  adapters::mapi::MapiOptions mapi;
  std::optional<adapters::ldap::LdapOptions> directory;  // none: nobody is looked up
};

/// What all sends of one run share: the open database, its key, the register, the user, and the connections
/// to servers and to the directory. Raises ErroreProgramma (kNonUtilizzabile, kComandoErrato), and 5 for a
/// directory whose options make no sense.
struct SedeInvio {
  /// Created for the sends of this request and others like it.
  explicit SedeInvio(const RichiestaInvio& richiesta);

  std::shared_ptr<const Chiave> chiave;
  Archivio archivio;
  std::shared_ptr<adapters::sqlite::SqliteConnection> registro;
  std::int32_t utente;
  PermessiInChiaro permessi;
  std::shared_ptr<adapters::smtp::ConnectionPool> connessioni;
  std::shared_ptr<host::Directory> directory;  // empty: nobody is looked up
};

/// Sends with a service object of its own and returns what was observed. `primaDiInviare` runs when
/// everything is ready and nothing has been sent; what it raises ends the send. Raises ErroreProgramma
/// (kNonUtilizzabile) when the settings cannot be read.
[[nodiscard]] Resoconto Consegna(const RichiestaInvio& richiesta, const SedeInvio& sede, Terminale terminale,
                                 const std::function<void()>& primaDiInviare = {});

/// Sends, reports the outcome on the terminal, and returns the exit status. Raises ErroreProgramma when
/// nothing could be tried.
[[nodiscard]] Uscita Spedisci(const RichiestaInvio& richiesta, Terminale terminale);

/// The same for a request with addresses, bypassing the send procedure: always through SMTP, from the default
/// account, whatever channel and mode are configured. `silenzioso`: the library keeps its error for its
/// caller instead of showing it.
[[nodiscard]] Uscita SpedisciDaSola(const RichiestaInvio& richiesta, bool silenzioso, Terminale terminale);

}  // namespace orve::app
