// The register object: the application's record of what was sent for a document. The service creates it and
// writes one line per recipient; the operations are in the order of its interface.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// A text that may be absent, which is not the same as empty.
using TestoOAssente = std::optional<std::string>;

/// Outcome of a register line.
enum EsitoInvio : std::int32_t { kInviato = 0, kNonInviato = 1, kAnnullatoDaUtente = 2 };

/// Kind of channel of a register line.
enum TipoCanale : std::int32_t { kCanaleMail = 3, kCanalePec = 5 };

/// What is set holds for every line that follows.
class ORVE_API RegistroInvio : public Oggetto {
 public:
  /// May be absent, to release the connection.
  virtual void Connessione(const std::shared_ptr<Connection>& connessione) = 0;
  ///@{
  /// What the application calls the thing that is sent, as the initialiser was given it.
  virtual void IDvoce(const std::string& voce) = 0;
  virtual void UObject(const std::string& oggetto) = 0;
  ///@}
  /// One of the kinds above.
  virtual void TipoCanale(std::int32_t tipo) = 0;
  /// Title of the print, as the initialiser was given it.
  virtual void TitoloStampa(const std::string& titolo) = 0;
  /// The current company.
  virtual void Ditta(const std::string& ditta) = 0;
  ///@{
  /// The document: its registration number, type, number and section.
  virtual void NumReg(const std::string& numero) = 0;
  virtual void TipoDoc(const std::string& tipo) = 0;
  virtual void NumDoc(const std::string& numero) = 0;
  virtual void SezDoc(const std::string& sezione) = 0;
  ///@}
  /// Writes one line.
  virtual void RegistraInvio(const TestoOAssente& nome, const TestoOAssente& ditta,
                             const TestoOAssente& indirizzo, const TestoOAssente& allegato,
                             const TestoOAssente& esito, const TestoOAssente& oggetto,
                             const TestoOAssente& corpo) = 0;
  /// The application user's id.
  virtual void UtenteApplicazione(std::int32_t id) = 0;
  /// The channel in `SrvMailInstallato`.
  virtual void CanaleInvio(float canale) = 0;
  /// How the message was sent, as each channel words it.
  virtual void MittenteInvio(const std::string& mittente) = 0;
  /// Identity of the distribution list; empty for a message without one.
  virtual void GuidLista(const std::string& guid) = 0;
  /// Outcome of the next line.
  virtual void EsitoInvio(std::int32_t esito) = 0;
  /// Kind of the distribution list; 0 for a message without one.
  virtual void TipoLista(std::int32_t tipo) = 0;
};

}  // namespace orve::host
