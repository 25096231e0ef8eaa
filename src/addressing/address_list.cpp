#include "addressing/address_list.h"

#include <cstddef>
#include <cstdint>

#include "orve-mailserver/host/errore.h"
#include "service/sedici_bit.h"
#include "text/text.h"

namespace orve {

namespace {

// The address of an item; the name changes only where the item has a "<".
std::string_view LeggiVoce(std::string_view voce, std::string& nome) {
  const std::int16_t apre = InSediciBit(text::Find(voce, "<"));
  const std::int16_t chiude = InSediciBit(text::Find(voce, ">"));
  if (apre > 0) nome = text::Left(voce, static_cast<std::size_t>(apre - 1));
  const auto inizio = static_cast<std::size_t>(apre) + 1;
  if (chiude == 0) return text::Mid(voce, inizio);
  if (chiude <= apre) throw host::Errore(host::kArgomentoNonValido);
  return text::Mid(voce, inizio, static_cast<std::size_t>(chiude - apre - 1));
}

}  // namespace

std::string VoceElenco(std::string_view nome, std::string_view indirizzo, std::string_view apertura) {
  std::string voce;
  AccodaVoce(voce, nome, indirizzo, apertura);
  return voce;
}

void AccodaVoce(std::string& elenco, std::string_view nome, std::string_view indirizzo,
                std::string_view apertura) {
  elenco.append(nome).append(apertura).append(indirizzo).append(">");
}

void AccodaVoceSeparata(std::string& elenco, std::string_view nome, std::string_view indirizzo,
                        std::string_view apertura) {
  if (!elenco.empty()) elenco.append(";");
  AccodaVoce(elenco, nome, indirizzo, apertura);
}

void AddressListReader::Leggi(std::string_view elenco, const Aggiungi& aggiungi) {
  const auto voci = text::Split(elenco, ';');
  static_cast<void>(InSediciBit(voci.size()));
  for (const auto voce : voci) {
    const std::string indirizzo(LeggiVoce(voce, nome_));
    if (!indirizzo.empty()) aggiungi(indirizzo, nome_);
  }
}

}  // namespace orve
