// The fixture of most tests: a service over fakes, with a connection, and short names for what tests check.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "fakes/journal.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

namespace orve::fakes {

/// The number of no channel, now or later.
inline constexpr auto kNessunCanale = static_cast<kvEnum_ServizioMail>(99);

class ServizioDiProva : public ::testing::Test {
 protected:
  ServizioDiProva() {
    servizio->ConnectionADO = connessione;
    journal->Svuota();
  }

  /// Recipients for the collection route.
  CollDestinatari& Collezione() {
    if (!servizio->vCollDestinatari) servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    return *servizio->vCollDestinatari;
  }
  /// A register object, as an initialiser would have made it.
  void ConRegistro() { interno.oggetti.ObjRegistroInvio = ambiente->CreaRegistroInvio(); }
  /// The lines of the service's own message object.
  [[nodiscard]] std::vector<std::string> Messaggi() const {
    return journal->Righe({"ObjMessaggi.MostraMsg"});
  }

  std::shared_ptr<FakeAmbiente> ambiente = std::make_shared<FakeAmbiente>();
  JournalPtr journal = ambiente->journal;
  std::shared_ptr<FakeConnection> connessione = std::make_shared<FakeConnection>(journal);

 private:
  ServizioAperto aperto_{ambiente};

 protected:
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto_.servizio;
  Interno& interno = aperto_.interno;
};

}  // namespace orve::fakes
