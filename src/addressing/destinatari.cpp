#include "orve-mailserver/addressing/destinatari.h"

#include <utility>

namespace orve {

Destinatario::Destinatario(std::shared_ptr<host::Ambiente> ambiente)
    : traccia_(std::move(ambiente), "Destinatario") {
  traccia_.Inizio();
}

Destinatario::~Destinatario() {
  traccia_.Termine();
}

CollDestinatari::CollDestinatari(std::shared_ptr<host::Ambiente> ambiente)
    : ambiente_(std::move(ambiente)), traccia_(ambiente_, "CollDestinatari") {
  traccia_.Inizio();
}

CollDestinatari::~CollDestinatari() {
  traccia_.Termine();
}

std::shared_ptr<Destinatario> CollDestinatari::Add(const std::string& Indirizzo, const std::string& Nome,
                                                   const std::string& Azienda, const std::string& sKey) {
  return AddFromLista(Indirizzo, Nome, Azienda, kvCasellaA, sKey);
}

std::shared_ptr<Destinatario> CollDestinatari::Item(const host::Variant& vntIndexKey) const {
  return lista_[vntIndexKey];
}

void CollDestinatari::Remove(const host::Variant& vntIndexKey) {
  lista_.Remove(vntIndexKey);
}

std::shared_ptr<Destinatario> CollDestinatari::AddFromLista(const std::string& Indirizzo,
                                                            const std::string& Nome,
                                                            const std::string& Azienda, std::int16_t Casella,
                                                            const std::string& sKey) {
  // Not make_shared: only this class may call the constructor.
  std::shared_ptr<Destinatario> nuovo(new Destinatario(ambiente_));
  nuovo->Indirizzo(Indirizzo);
  nuovo->Nome(Nome);
  nuovo->Azienda(Azienda);
  nuovo->Casella(Casella);
  lista_.Add(nuovo, sKey);
  return nuovo;
}

}  // namespace orve
