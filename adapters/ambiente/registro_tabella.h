// The host's register object: each line becomes a row of REGISTRO_INVII, in the embedded database or in the
// file that stands in for it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "orve-mailserver/host/registro_invio.h"

namespace orve::adapters::sqlite {
class SqliteConnection;
}

namespace orve::adapters::ambiente {

class RegistroTabella : public host::RegistroInvio {
 public:
  /// Writes to that database, whatever connection it is given; absent: to that connection. `comeRegistrato`
  /// turns what the library says of the attachments into what the register keeps; empty: the same.
  explicit RegistroTabella(std::shared_ptr<sqlite::SqliteConnection> archivio = nullptr,
                           std::function<std::string(const std::string&)> comeRegistrato = {})
      : archivio_(std::move(archivio)), comeRegistrato_(std::move(comeRegistrato)) {}

  /// Raises 13 for a connection that is not the embedded database, when it has nothing else to write to.
  void Connessione(const std::shared_ptr<host::Connection>& connessione) override;
  void IDvoce(const std::string& voce) override { voce_ = voce; }
  void UObject(const std::string& oggetto) override { uObject_ = oggetto; }
  void TipoCanale(std::int32_t tipo) override { tipoCanale_ = tipo; }
  void TitoloStampa(const std::string& titolo) override { titoloStampa_ = titolo; }
  void Ditta(const std::string& ditta) override { ditta_ = ditta; }
  void NumReg(const std::string& numero) override { numReg_ = numero; }
  void TipoDoc(const std::string& tipo) override { tipoDoc_ = tipo; }
  void NumDoc(const std::string& numero) override { numDoc_ = numero; }
  void SezDoc(const std::string& sezione) override { sezDoc_ = sezione; }
  /// Raises 91 without a connection, else what the database raises.
  void RegistraInvio(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                     const host::TestoOAssente& indirizzo, const host::TestoOAssente& allegato,
                     const host::TestoOAssente& esito, const host::TestoOAssente& oggetto,
                     const host::TestoOAssente& corpo) override;
  void UtenteApplicazione(std::int32_t id) override { utente_ = id; }
  void CanaleInvio(float canale) override { canale_ = canale; }
  void MittenteInvio(const std::string& mittente) override { mittente_ = mittente; }
  void GuidLista(const std::string& guid) override { guidLista_ = guid; }
  void EsitoInvio(std::int32_t esito) override { esito_ = esito; }
  void TipoLista(std::int32_t tipo) override { tipoLista_ = tipo; }

 private:
  std::shared_ptr<sqlite::SqliteConnection> archivio_;
  std::function<std::string(const std::string&)> comeRegistrato_;
  std::shared_ptr<sqlite::SqliteConnection> connessione_;
  std::string voce_;
  std::string uObject_;
  std::int32_t tipoCanale_ = 0;
  std::string titoloStampa_;
  std::string ditta_;
  std::string numReg_;
  std::string tipoDoc_;
  std::string numDoc_;
  std::string sezDoc_;
  std::int32_t utente_ = 0;
  float canale_ = 0;
  std::string mittente_;
  std::string guidLista_;
  std::int32_t esito_ = 0;
  std::int32_t tipoLista_ = 0;
};

}  // namespace orve::adapters::ambiente
