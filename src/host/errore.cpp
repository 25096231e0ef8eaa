#include "orve-mailserver/host/errore.h"

#include <new>
#include <utility>

namespace orve::host {

namespace {

const char* DescrizioneStandard(NumeroErrore numero) {
  switch (numero) {
    case kArgomentoNonValido:
      return "Chiamata di routine o argomento non validi";
    case kOverflow:
      return "Overflow";
    case kMemoriaInsufficiente:
      return "Memoria esaurita";
    case kIndiceFuoriIntervallo:
      return "Indice non compreso nell'intervallo";
    case kTipoNonCorrispondente:
      return "Tipo non corrispondente";
    case kOggettoNonImpostato:
      return "Variabile oggetto non impostata";
    case kUsoNonValidoDiNull:
      return "Utilizzo non valido di Null";
    case kOggettoNonCreabile:
      return "Impossibile creare l'oggetto";
    case kMembroNonSupportato:
      return "Proprietà o metodo non supportati dall'oggetto";
    case kErroreAutomazione:
      return "Errore di automazione";
    case kChiaveGiaPresente:
      return "La chiave è già associata a un elemento dell'insieme";
  }
  return "Errore";
}

}  // namespace

Errore::Errore(std::int32_t numero, std::string sorgente, std::string descrizione)
    : numero_(numero), sorgente_(std::move(sorgente)), descrizione_(std::move(descrizione)) {}

Errore::Errore(NumeroErrore numero) : Errore(numero, "ORVE_MAILSERVER", DescrizioneStandard(numero)) {}

Errore Errore::ConSuffisso(std::string_view suffisso) const {
  return {numero_, sorgente_, descrizione_ + std::string(suffisso)};
}

Errore ErroreCorrente() {
  try {
    throw;
  } catch (const Errore& errore) {
    return errore;
  } catch (const std::bad_alloc&) {
    return Errore(kMemoriaInsufficiente);
  } catch (const std::exception& estranea) {
    return {kErroreAutomazione, "ORVE_MAILSERVER", estranea.what()};
  } catch (...) {
    return Errore(kErroreAutomazione);
  }
}

}  // namespace orve::host
