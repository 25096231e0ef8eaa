#include "orve-mail/host/observed_connection.h"

#include <string>
#include <utility>

namespace orve::app {

namespace {

class ObservedConnection : public host::Connection {
 public:
  ObservedConnection(std::shared_ptr<host::Connection> vera, OsservazioniPtr note)
      : vera_(std::move(vera)), note_(std::move(note)) {}
  std::shared_ptr<host::RecordSet> Execute(const std::string& statement, std::int32_t opzione) override {
    try {
      return vera_->Execute(statement, opzione);
    } catch (const host::Errore& errore) {
      note_->ErroreDatabase(errore);
      throw;
    }
  }
  std::shared_ptr<host::Command> CreateCommand() override { return vera_->CreateCommand(); }

 private:
  std::shared_ptr<host::Connection> vera_;
  OsservazioniPtr note_;
};

}  // namespace

std::shared_ptr<host::Connection> Osserva(std::shared_ptr<host::Connection> vera, OsservazioniPtr note) {
  return std::make_shared<ObservedConnection>(std::move(vera), std::move(note));
}

}  // namespace orve::app
