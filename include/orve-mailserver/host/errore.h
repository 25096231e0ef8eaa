// The one exception type of the system: it carries what an automation error does, number, source and
// description.
//
// Outside objects raise it with numbers of their own; the library raises it with automation's numbers.
// Nothing in it may hold a password or a token.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/api.h"

namespace orve::host {

/// The automation error numbers that the library itself raises.
enum NumeroErrore : std::int32_t {
  kArgomentoNonValido = 5,      ///< invalid procedure call or argument; also an unknown key of a list
  kOverflow = 6,                ///< a number does not fit its type
  kMemoriaInsufficiente = 7,    ///< out of memory
  kIndiceFuoriIntervallo = 9,   ///< a position beyond the end of a list or array
  kTipoNonCorrispondente = 13,  ///< a value cannot be converted to the type needed
  kOggettoNonImpostato = 91,    ///< an absent object is used
  kUsoNonValidoDiNull = 94,     ///< null where a value is needed
  kOggettoNonCreabile = 429,    ///< an outside object cannot be created on this machine
  kMembroNonSupportato = 438,   ///< the object has no such property or method
  kErroreAutomazione = 440,     ///< a foreign failure without a number of its own
  kChiaveGiaPresente = 457,     ///< the key is already in the list
};

/// An error: its parts do not change once it is made.
class ORVE_API Errore : public std::exception {
 public:
  /// An error with all three parts.
  Errore(std::int32_t numero, std::string sorgente, std::string descrizione);
  /// An error of the library itself, with the standard Italian description of its number.
  explicit Errore(NumeroErrore numero);

  /// The error's number: the library's own are those of NumeroErrore.
  [[nodiscard]] std::int32_t Numero() const noexcept { return numero_; }
  /// Who raised it: a program, a library or an object.
  [[nodiscard]] const std::string& Sorgente() const noexcept { return sorgente_; }
  /// What happened, in Italian where the library wrote it.
  [[nodiscard]] const std::string& Descrizione() const noexcept { return descrizione_; }
  /// The description.
  [[nodiscard]] const char* what() const noexcept override { return descrizione_.c_str(); }

  /// The same number and source with the description extended by `suffisso`, without a separator.
  [[nodiscard]] Errore ConSuffisso(std::string_view suffisso) const;

 private:
  std::int32_t numero_;
  std::string sorgente_;
  std::string descrizione_;
};

/// The exception in flight as an Errore: itself if it is one, else number 7 for exhausted memory and 440 with
/// the foreign text for anything else. Call it in a catch block only.
[[nodiscard]] ORVE_API Errore ErroreCorrente();

/// The object behind the pointer; raises 91 when it is absent.
template <class T>
[[nodiscard]] T& Richiesto(const std::shared_ptr<T>& oggetto) {
  if (!oggetto) throw Errore(kOggettoNonImpostato);
  return *oggetto;
}

}  // namespace orve::host
