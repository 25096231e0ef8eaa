// An observer that keeps what it is told, a line for each fact, and raises after each when a test wants it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "orve-mailserver/host/osservatore_invio.h"

namespace orve::fakes {

class OsservatoreAnnotato : public host::OsservatoreInvio {
 public:
  std::vector<std::string> righe;
  bool solleva = false;

  void MessaggioMostrato(const std::string& testo, std::int32_t stile) override {
    Nota("messaggio " + testo + "|" + std::to_string(stile));
  }
  void FinestraNonAperta(const host::Errore& errore) override {
    Nota("finestra non aperta " + Mostra(errore));
  }
  void OggettoNonCreato(const std::string& oggetto, const host::Errore& errore) override {
    Nota("oggetto non creato " + oggetto + "|" + Mostra(errore));
  }
  void ConsegnaIniziata(kvEnum_ServizioMail canale) override { Nota("iniziata " + std::to_string(canale)); }
  void SessioneNegata(std::int32_t numero, const host::FineConsegna& fine) override {
    Nota("sessione negata " + std::to_string(numero) + Mostra(fine));
  }
  void ConsegnaFinita(const host::EsitoConsegna& esito) override {
    Nota(esito.riuscita ? "riuscita" + Mostra(esito.fine)
                        : "fallita " + std::to_string(esito.numero) + Mostra(esito.fine));
  }
  void AllegatoRifiutato(const std::string& percorso, const host::Errore& errore) override {
    Nota("allegato " + percorso + "|" + Mostra(errore));
  }
  void RigaRegistrata(std::int32_t esito, const std::string& nome, const std::string& indirizzo,
                      const std::string& risultato) override {
    Nota("registrata " + std::to_string(esito) + "|" + nome + "|" + indirizzo + "|" + risultato);
  }
  void RigaNonRegistrata(const host::Errore& errore) override { Nota("non registrata " + Mostra(errore)); }
  void RigaDiLogScritta(const std::string& riga) override { Nota("log " + riga); }
  void LogNonScritto(const host::Errore& errore) override { Nota("log non scritto " + Mostra(errore)); }
  void CartellaDelLogMancante(const std::string& cartella) override { Nota("senza cartella " + cartella); }
  void RicercaInDirectoryFallita(const host::Errore& errore) override { Nota("directory " + Mostra(errore)); }

 private:
  void Nota(std::string riga) {
    righe.push_back(std::move(riga));
    if (solleva) throw 42;  // nothing that anybody could expect
  }
  static std::string Mostra(const host::Errore& errore) {
    return std::to_string(errore.Numero()) + " " + errore.Descrizione();
  }
  static std::string Mostra(const host::FineConsegna& fine) {
    return "|" + fine.motivo + (fine.incerta ? "|incerta" : "");
  }
};

}  // namespace orve::fakes
