// The fakes of the tests as objects of automation: members under the outside objects' own names and case, and
// behind each the fake that journals it.
#pragma once

#include <memory>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "windows/win32/doppio.h"

namespace orve::prova {

[[nodiscard]] adapters::win32::ComPtr<DoppioCom> Esponi(std::shared_ptr<host::Connection> connessione);
[[nodiscard]] adapters::win32::ComPtr<DoppioCom> Esponi(std::shared_ptr<host::InterfacciaHost> interfaccia);

/// From now on MAPI32.DLL passes its calls to these functions, as long as somebody holds them.
void RispondePerMapi32(const std::shared_ptr<host::Mapi32>& funzioni);

/// All classes that the library creates, each giving the object of the fakes; and a MAPI32.DLL that takes
/// precedence over the system's.
class ClassiFinte {
 public:
  ClassiFinte(std::shared_ptr<fakes::FakeAmbiente> finto, std::shared_ptr<fakes::FakeConnection> database);
  ClassiFinte(const ClassiFinte&) = delete;
  ClassiFinte& operator=(const ClassiFinte&) = delete;
  ~ClassiFinte();

 private:
  std::vector<std::unique_ptr<ClasseCom>> classi_;
};

}  // namespace orve::prova
