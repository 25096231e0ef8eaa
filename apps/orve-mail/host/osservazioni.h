// What the program notes while the library runs: it must know whether this one message was sent.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orve-mailserver/host/osservatore_invio.h"

namespace orve::app {

/// A line that the register accepted.
struct RigaRegistro {
  std::int32_t esito = 0;
  std::string nome;
  std::string indirizzo;
  std::string risultato;
};

/// Not an error number of any channel.
inline constexpr std::int32_t kConsegnaRiuscita = -1;

struct Osservazioni : host::OsservatoreInvio {
  int messaggi = 0;  // shown to the person, not counting the one that reports success
  std::vector<RigaRegistro> registro;
  std::vector<std::string> erroriRegistro;
  std::vector<std::string> erroriDatabase;
  std::vector<std::string>
      erroriDirectory;  // why the look-up of the sender ended; not a problem for the send
  std::vector<std::string> oggettiMancanti;  // that the library asked for and this machine cannot create
  int finestreMostrate = 0;
  std::string finestraNegata;  // why a window that the library asked for could not be opened
  int consegneIniziate = 0;    // deliveries that a channel has begun, by an SMTP component or by MAPI
  /// How many times a channel was asked to deliver, and what it returned the last time: kConsegnaRiuscita, or
  /// the error number of the SMTP component or of MAPI.
  int consegne = 0;
  std::optional<std::int32_t> esitoConsegna;
  /// What ended the last delivery, in the words of whatever refused it; empty after a success.
  std::string motivo;
  kvEnum_ServizioMail canale = kvSMTPSSLMail;        // of the last delivery begun
  kvEnum_ServizioMail canaleMotivo = kvSMTPSSLMail;  // of the one that gave the reason
  std::vector<std::string> allegatiRifiutati;        // given to a channel that does not send them, and why
  int accettate = 0;  // successful deliveries; in a window there may be several
  /// One of them ended without an answer from the server, which may have the message.
  bool incerta = false;
  /// Records that reached the send log, and why others did not.
  std::vector<std::string> righeLog;
  std::vector<std::string> erroriLog;
  /// There is no folder for the send log that is private to the person; not a problem for the send.
  bool senzaTemporanea = false;

  /// MAPI opened no session, and said why.
  [[nodiscard]] bool MapiNonDisponibile() const {
    return consegneIniziate > 0 && consegne == 0 && !motivo.empty();
  }

  /// The channel took the message, and whoever it was handed to accepted it.
  [[nodiscard]] bool Consegnato() const { return consegne > 0 && esitoConsegna == kConsegnaRiuscita; }
  /// It is not known whether the server has the message.
  [[nodiscard]] bool Incerto() const { return accettate == 0 && incerta; }

  void ErroreDatabase(const host::Errore& errore) { erroriDatabase.push_back(Riga(errore)); }

  void MessaggioMostrato(const std::string& testo, std::int32_t stile) override;
  void FinestraNonAperta(const host::Errore& errore) override { finestraNegata = errore.Descrizione(); }
  void OggettoNonCreato(const std::string& oggetto, const host::Errore& errore) override;
  void ConsegnaIniziata(kvEnum_ServizioMail conCanale) override;
  void SessioneNegata(std::int32_t /*numero*/, const host::FineConsegna& fine) override {
    canaleMotivo = canale;
    motivo = fine.motivo;
  }
  void ConsegnaFinita(const host::EsitoConsegna& esito) override;
  void AllegatoRifiutato(const std::string& percorso, const host::Errore& errore) override;
  void RigaRegistrata(std::int32_t esito, const std::string& nome, const std::string& indirizzo,
                      const std::string& risultato) override {
    registro.push_back({esito, nome, indirizzo, risultato});
  }
  void RigaNonRegistrata(const host::Errore& errore) override { erroriRegistro.push_back(Riga(errore)); }
  void RigaDiLogScritta(const std::string& riga) override { righeLog.push_back(riga); }
  void LogNonScritto(const host::Errore& errore) override { erroriLog.push_back(Riga(errore)); }
  void CartellaDelLogMancante(const std::string& cartella) override {
    erroriLog.push_back("la cartella temporanea non esiste: " + cartella);
  }
  void RicercaInDirectoryFallita(const host::Errore& errore) override;

 private:
  static std::string Riga(const host::Errore& errore);
};

using OsservazioniPtr = std::shared_ptr<Osservazioni>;

}  // namespace orve::app
