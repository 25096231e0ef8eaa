// What the library and its program know of a channel: a row for each, the only place that lists them.
// docs/channels.md tells what a channel must do for a send.
#pragma once

#include <span>
#include <string_view>

#include "orve-mailserver/service/enumerazioni.h"

namespace orve {

class FRMRW_OPZMAIL;
struct Interno;
struct Oggetti;

/// A row says everything: no member has a value of its own, so GCC refuses a row that leaves one out.
struct ChannelTraits {
  kvEnum_ServizioMail numero;
  std::string_view nome;
  std::string_view firma;  // how the register's way of sending begins

  bool haAccount;             // the sender is an account of the application's own
  bool serverDellAccount;     // delivers through the SMTP server of that account
  bool ricevutaDiConsegna;    // can ask for a delivery receipt
  bool rifiutaSenzaCorpo;     // accepts no message without a body
  bool avvisaDegliAllegati;   // tells the person itself of a file that was refused
  bool usaSendmail;           // on Linux it hands its messages to the machine's sendmail command
  bool soloWindows;           // what it delivers with exists there only
  std::string_view risponde;  // in whose words a failure's reason is, for the person

  // The steps of the service that depend on the channel; null where there is nothing to do.
  void (*crea)(Oggetti& oggetti);     // what is made when the settings have been read
  void (*prepara)(Oggetti& oggetti);  // what is made before each send
  /// Adapts the compose window. False when the person has no account to send from, and has been told so.
  bool (*adattaFinestra)(Interno& interno, FRMRW_OPZMAIL& form);
  void (*consegna)(Interno& interno);  // null: sending is switched off
  /// What goes first when the service ends, before all else, which it may also release in an order of its
  /// own. Never raises.
  void (*rilascia)(Interno& interno);
};

[[nodiscard]] std::span<const ChannelTraits> Canali();

/// The row of a channel; null for a number that is not a channel's.
[[nodiscard]] const ChannelTraits* TrattiDi(kvEnum_ServizioMail canale);

/// Whether this is a channel, and one for which this holds.
[[nodiscard]] bool HaTratto(kvEnum_ServizioMail canale, bool ChannelTraits::*tratto);
[[nodiscard]] bool HaAccount(kvEnum_ServizioMail canale);

/// Whether the number says that sending is switched off. A number that is not a channel's does not.
[[nodiscard]] bool InvioDisabilitato(kvEnum_ServizioMail canale);

/// How the register's way of sending begins for one of the channels.
[[nodiscard]] std::string_view FirmaDi(kvEnum_ServizioMail canale);

}  // namespace orve
