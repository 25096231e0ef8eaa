// A whole send, from the creation of the service to its end, over fakes that count every operation of an
// outside object; and the same send with one of these operations failing.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "fakes/journal.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

namespace orve::faults {

/// The outside of one send, and what the calling program does. `Prepara` sets what the outside answers,
/// `Invia` fills the message and starts the send, on a service that is initialised.
struct Scena {
  std::string nome;
  std::function<void(fakes::FakeAmbiente&, fakes::FakeConnection&)> prepara;
  std::function<void(const std::shared_ptr<fakes::FakeAmbiente>&, CLSFW_MAILSERVER&)> invia;
};

struct Corsa {
  /// The operations, in their order: object, member and arguments on one line, cut to a readable length, with
  /// a number after those that repeat.
  std::vector<std::string> operazioni;
  /// All that the calling program, the records, the log and the person get to see; one fact on a line.
  std::string visto;
  /// Objects of the library that were created and not released.
  int rimasti = 0;
};

/// Runs the send. The operation with this number, from 1, fails with error 1001 and takes no effect; 0: none
/// does. With `messaggiRotti` the message object fails too, whenever it is asked. An error that reaches the
/// calling program ends what it does, and it releases the service.
[[nodiscard]] Corsa Corri(const Scena& scena, std::size_t guasto, bool messaggiRotti = false);

}  // namespace orve::faults
