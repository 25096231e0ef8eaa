// How the library reports to the host's observer what becomes of a send.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/osservatore_invio.h"
#include "orve-mailserver/service/enumerazioni.h"
#include "service/guards.h"

namespace orve {

using Osservatore = host::OsservatoreInvio;

/// The one place where the observer is called: what it raises ends here, so it cannot change a send. `fatto`
/// is one of its operations, or takes the observer itself; it also makes the texts that only the observer
/// needs.
template <class Fatto, class... Valori>
void Riferisci(host::Ambiente& ambiente, Fatto&& fatto, const Valori&... valori) noexcept {
  IgnoraErrori([&] { std::invoke(std::forward<Fatto>(fatto), ambiente.Osservatore(), valori...); });
}

/// Runs the steps; an error is reported and passed on as it is.
template <class Fatto, class Passi>
auto RiferisciErrori(host::Ambiente& ambiente, Fatto&& fatto, Passi&& passi) {
  try {
    return std::forward<Passi>(passi)();
  } catch (const host::Errore& errore) {  // not a copy, which would lose its type
    Riferisci(ambiente, std::forward<Fatto>(fatto), errore);
    throw;
  } catch (...) {
    Riferisci(ambiente, std::forward<Fatto>(fatto), host::ErroreCorrente());
    throw;
  }
}

/// For RiferisciErrori: the channel's object raised an error when it was asked to deliver, either as its
/// answer or instead of one.
inline void ConsegnaRifiutata(Osservatore& osservatore, const host::Errore& errore) {
  osservatore.ConsegnaFinita({false, errore.Numero(), {errore.Descrizione(), false}});
}
inline void ConsegnaSenzaRisposta(Osservatore& osservatore, const host::Errore& errore) {
  osservatore.ConsegnaFinita({false, errore.Numero(), {errore.Descrizione(), true}});
}

/// Runs the steps that attach this file.
template <class Passi>
void Allega(host::Ambiente& ambiente, const std::string& percorso, Passi&& passi) {
  const auto rifiutato = [&](Osservatore& o, const host::Errore& e) { o.AllegatoRifiutato(percorso, e); };
  RiferisciErrori(ambiente, rifiutato, std::forward<Passi>(passi));
}

/// An object that a channel needs: `crea` is the operation that creates it, `nome` what it is called outside.
template <class Tipo>
std::shared_ptr<Tipo> CreaPerIlCanale(host::Ambiente& ambiente,
                                      std::shared_ptr<Tipo> (host::Ambiente::*crea)(), const char* nome) {
  const auto manca = [&](Osservatore& o, const host::Errore& e) { o.OggettoNonCreato(nome, e); };
  return RiferisciErrori(ambiente, manca, [&] { return (ambiente.*crea)(); });
}

/// The object of one message, as CreaPerIlCanale makes it, and the observer is told that this channel begins
/// to fill it.
template <class Tipo>
std::shared_ptr<Tipo> IniziaConsegna(host::Ambiente& ambiente, kvEnum_ServizioMail canale,
                                     std::shared_ptr<Tipo> (host::Ambiente::*crea)(), const char* nome) {
  auto oggetto = CreaPerIlCanale(ambiente, crea, nome);
  Riferisci(ambiente, &Osservatore::ConsegnaIniziata, canale);
  return oggetto;
}

}  // namespace orve
