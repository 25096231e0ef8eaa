#include "forms/messaggi.h"

#include <utility>

#include "forms/lettura_tavola.h"

namespace orve::adapters::forms {

Messaggi::Messaggi(std::string programma, Mostra mostra)
    : programma_(std::move(programma)), mostra_(std::move(mostra)) {}

std::string Messaggi::TitoloFinestra(const std::string& testo) {
  return TitoloConProgramma(testo, programma_);
}

std::int32_t Messaggi::MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                                 const std::shared_ptr<host::Oggetto>& proprietario) {
  return mostra_(testo, stile, titolo.empty() ? programma_ : titolo, proprietario.get());
}

}  // namespace orve::adapters::forms
