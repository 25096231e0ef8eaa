#include "orve-mailserver/addressing/mittenti.h"

#include <utility>

namespace orve {

Mittente::Mittente(std::shared_ptr<host::Ambiente> ambiente) : traccia_(std::move(ambiente), "Mittente") {
  traccia_.Inizio();
}

Mittente::~Mittente() {
  traccia_.Termine();
}

CollMittenti::CollMittenti(std::shared_ptr<host::Ambiente> ambiente)
    : ambiente_(std::move(ambiente)), traccia_(ambiente_, "CollMittenti") {
  traccia_.Inizio();
}

CollMittenti::~CollMittenti() {
  traccia_.Termine();
}

std::shared_ptr<Mittente> CollMittenti::Nuovo(const std::string& Indirizzo, const std::string& Server,
                                              std::int16_t Port, std::int16_t Timeout,
                                              const std::string& UserName, const std::string& Password,
                                              std::int16_t TipoAutenticazione, std::int16_t Lettura,
                                              std::int16_t Consegna, const std::string& Descrizione) const {
  auto nuovo = std::make_shared<Mittente>(ambiente_);
  nuovo->Indirizzo(Indirizzo);
  nuovo->Server(Server);
  nuovo->Port(Port);
  nuovo->Timeout(Timeout);
  nuovo->user(UserName);
  nuovo->Password(Password);
  nuovo->Auth(TipoAutenticazione);
  nuovo->Descrizione(Descrizione);
  nuovo->ReadRcpt(Lettura);
  nuovo->DeliveryStatus(Consegna);
  return nuovo;
}

std::shared_ptr<Mittente> CollMittenti::Add(const std::string& Indirizzo, const std::string& Server,
                                            std::int16_t Port, std::int16_t Timeout,
                                            const std::string& UserName, const std::string& Password,
                                            std::int16_t TipoAutenticazione, std::int16_t Lettura,
                                            std::int16_t Consegna, const std::string& Descrizione, bool IsSsl,
                                            const std::string& sKey) {
  auto nuovo = Nuovo(Indirizzo, Server, Port, Timeout, UserName, Password, TipoAutenticazione, Lettura,
                     Consegna, Descrizione);
  nuovo->IsSsl(IsSsl);
  lista_.Add(nuovo, sKey);
  return nuovo;
}

std::shared_ptr<Mittente> CollMittenti::Item(const host::Variant& vntIndexKey) const {
  return lista_[vntIndexKey];
}

void CollMittenti::Remove(const host::Variant& vntIndexKey) {
  lista_.Remove(vntIndexKey);
}

std::shared_ptr<Mittente> CollMittenti::AddMittente(const std::string& Indirizzo, const std::string& Server,
                                                    std::int16_t Port, std::int16_t Timeout,
                                                    const std::string& UserName, const std::string& Password,
                                                    std::int16_t TipoAutenticazione, std::int16_t Lettura,
                                                    std::int16_t Consegna, const std::string& Descrizione,
                                                    std::int16_t CryptType, const std::string& sKey) {
  auto nuovo = Nuovo(Indirizzo, Server, Port, Timeout, UserName, Password, TipoAutenticazione, Lettura,
                     Consegna, Descrizione);
  nuovo->CryptType(CryptType);
  lista_.Add(nuovo, sKey);
  return nuovo;
}

}  // namespace orve
