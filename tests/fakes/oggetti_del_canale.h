// What the fakes of the objects that deliver leave in the journal and how each of them fails, one row for
// each channel: with it the tests tell what a message was made of and whether it was sent, and send it into
// every incident, without knowing the channels one by one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve::fakes {

/// A row says everything: no member has a value of its own, so GCC refuses a row that leaves one out.
struct OggettiDelCanale {
  kvEnum_ServizioMail canale;  // one of its numbers, where it has several
  std::string_view nome;       // in the names of tests and tables
  std::string_view titolo;
  std::string_view invio;  // how the line begins with which the message is sent
  // How the lines begin that say what is in the message and for whom:
  std::vector<std::string_view> contenuto;  // where one message is to be told from another, session included
  std::vector<std::string_view> confronto;  // where the channels are held against each other
  std::string_view soggetto;                // how the line begins with which the subject is handed over

  void (*crea)(host::Ambiente& ambiente);  // makes the object that the message is handed to
  /// The object does not accept a message from now on.
  void (*rifiuta)(FakeAmbiente& ambiente);
  /// It does not accept this file: with the error, where it raises one for a file.
  void (*rifiutaFile)(FakeAmbiente& ambiente, const std::string& percorso, const host::Errore& errore);
  /// It is there and cannot be used; null where nothing comes before the message but the account's server.
  void (*nonSiApre)(FakeAmbiente& ambiente);
};

/// In the order in which tests go through the channels.
[[nodiscard]] const std::vector<OggettiDelCanale>& OggettiDeiCanali();

/// The line that `crea` leaves in the journal, for a failure at that place.
[[nodiscard]] std::string RigaDiCreazione(const OggettiDelCanale& canale);

}  // namespace orve::fakes
