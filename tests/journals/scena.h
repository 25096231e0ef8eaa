// Whole sends of one application, from the settings to the release of the service, over whatever outside
// objects there are. What the outside objects are asked for is the same on every platform, line by line.
#pragma once

#include <memory>
#include <string>

#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "orve-mailserver/host/ambiente.h"

namespace orve::journals {

/// The outside of the service: both the objects that it gets and the fakes that ultimately answer for them.
struct Scena {
  std::shared_ptr<fakes::FakeAmbiente> finto;
  std::shared_ptr<fakes::FakeConnection> database;
  std::shared_ptr<host::Ambiente> ambiente;
  std::shared_ptr<host::Connection> connessione;
  std::shared_ptr<host::InterfacciaHost> interfaccia;
};

/// The fakes, with the data of a company.
[[nodiscard]] std::shared_ptr<fakes::FakeAmbiente> CreaFinto();
[[nodiscard]] std::shared_ptr<fakes::FakeConnection> CreaDatabase(const fakes::JournalPtr& journal);

/// Plays every send, and returns the journal: what came in under a heading for each send.
[[nodiscard]] std::string Recita(const Scena& scena);

/// Where a journal first differs from the one that every platform is held to, giving both lines; empty when
/// it does not (golden.h).
[[nodiscard]] std::string Differenza(const std::string& visto);

}  // namespace orve::journals
