#include "orve-mail/host/interfaccia_programma.h"

#include <utility>

namespace orve::app {

namespace {

class Utente : public host::UtenteApplicazione {
 public:
  explicit Utente(std::int32_t id) : id_(id) {}
  std::int32_t IdUtente() override { return id_; }

 private:
  std::int32_t id_;
};

class Applicazione : public host::Applicazione {
 public:
  Applicazione(std::int32_t idUtente, std::shared_ptr<host::Messaggi> messaggi)
      : utente_(std::make_shared<Utente>(idUtente)), messaggi_(std::move(messaggi)) {}
  std::shared_ptr<host::UtenteApplicazione> UtenteCorrente() override { return utente_; }
  std::shared_ptr<host::Messaggi> Messaggi() override { return messaggi_; }

 private:
  std::shared_ptr<Utente> utente_;
  std::shared_ptr<host::Messaggi> messaggi_;
};

class Interfaccia : public host::InterfacciaHost {
 public:
  explicit Interfaccia(std::shared_ptr<host::Applicazione> applicazione)
      : applicazione_(std::move(applicazione)) {}
  std::shared_ptr<host::Applicazione> Applicazione() override { return applicazione_; }

 private:
  std::shared_ptr<host::Applicazione> applicazione_;
};

}  // namespace

std::shared_ptr<host::InterfacciaHost> CreaInterfaccia(std::int32_t idUtente,
                                                       std::shared_ptr<host::Messaggi> messaggi) {
  return std::make_shared<Interfaccia>(std::make_shared<Applicazione>(idUtente, std::move(messaggi)));
}

}  // namespace orve::app
