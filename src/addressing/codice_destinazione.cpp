#include "addressing/codice_destinazione.h"

#include "orve-mailserver/host/errore.h"

namespace orve {

namespace {

constexpr std::string_view kMarcaMail = "<***>";
constexpr std::string_view kMarcaPec = "<*pec*>";

// The part before the next "/"; it is removed from the text together with the "/".
std::string TogliParte(std::string_view& testo) {
  const auto barra = testo.find('/');
  if (barra == std::string_view::npos) throw host::Errore(host::kArgomentoNonValido);
  std::string parte(testo.substr(0, barra));
  testo.remove_prefix(barra + 1);
  return parte;
}

std::string_view DietroLaMarca(std::string_view testo, std::string_view marca) {
  const auto posizione = testo.find(marca);
  return posizione == std::string_view::npos ? std::string_view() : testo.substr(posizione + marca.size());
}

}  // namespace

std::string EstraiIndirizzoPec(std::string_view testo) {
  return std::string(DietroLaMarca(testo, kMarcaPec));
}

std::string EstraiIndirizzoMail(std::string_view testo) {
  const std::string_view resto = DietroLaMarca(testo, kMarcaMail);
  const bool seguePec = resto.find(kMarcaPec) != std::string_view::npos;
  return seguePec ? std::string() : std::string(resto);
}

CodiceDestinazione ScomponiCodiceDestinazione(std::string_view codice) {
  CodiceDestinazione parti;
  parti.ditta = TogliParte(codice);
  parti.cliFor = TogliParte(codice);
  parti.tipoCf = TogliParte(codice);
  parti.destinazione = codice;
  return parti;
}

}  // namespace orve
