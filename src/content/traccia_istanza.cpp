#include "orve-mailserver/content/traccia_istanza.h"

#include <array>
#include <cstdint>
#include <utility>

#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/errore.h"
#include "service/guards.h"

namespace orve {

namespace {

constexpr std::string_view kProgetto = "ORVE_MAILSERVER";

void AppendHex(std::string& testo, std::uint32_t valore, unsigned cifre) {
  constexpr std::string_view kCifre = "0123456789ABCDEF";
  for (unsigned i = cifre; i > 0; --i) testo.push_back(kCifre[(valore >> (4 * (i - 1))) & 0xFU]);
}

}  // namespace

std::string GeneraIdIstanza(host::GeneratoreGuid& generatore) {
  const auto guid = generatore.CreaGuid();
  if (!guid) return {};
  std::string testo;
  AppendHex(testo, guid->primo, 8);
  AppendHex(testo, guid->secondo, 4);
  AppendHex(testo, guid->terzo, 4);
  for (const std::uint8_t byte : guid->byte) AppendHex(testo, byte, 2);
  return testo;
}

TracciaIstanza::TracciaIstanza(std::shared_ptr<host::Ambiente> ambiente, std::string_view classe)
    : ambiente_(std::move(ambiente)), classe_(classe) {
  // Every object of the library has a trace, so each refuses to be created without an Ambiente.
  if (ambiente_) return;
  throw host::Errore(host::kOggettoNonImpostato, "ORVE_MAILSERVER",
                     "Impossibile creare " + std::string(classe_) + " senza un Ambiente");
}

void TracciaIstanza::Inizio() noexcept {
  Scrivi("INI");
}

void TracciaIstanza::Termine() noexcept {
  Scrivi("TER");
}

const std::string& TracciaIstanza::GetIdIstanza() {
  if (IdIstanza.empty()) {
    IgnoraErrori([this] { IdIstanza = GeneraIdIstanza(ambiente_->Identificatori()); });
  }
  return IdIstanza;
}

// A trace must never cost the object its life: if something fails here, only the trace is lost.
void TracciaIstanza::Scrivi(std::string_view evento) noexcept {
  try {
    std::string riga = "QLNA:|";
    riga.append(GetIdIstanza()).append("|").append(evento).append("|");
    riga.append(kProgetto).append("|").append(classe_);
    ambiente_->UscitaDiDebug().Scrivi(riga);
  } catch (...) {  // NOLINT(bugprone-empty-catch): out of memory, and nobody to tell
  }
}

}  // namespace orve
