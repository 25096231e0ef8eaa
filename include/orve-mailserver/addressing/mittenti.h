// One sender account (the address a message goes out from, with its server, credentials and receipt requests)
// and the list of accounts offered to the user. Plain value holders without checks.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/addressing/keyed_list.h"
#include "orve-mailserver/api.h"
#include "orve-mailserver/content/traccia_istanza.h"
#include "orve-mailserver/host/variant.h"

namespace orve {

/// One account. Not to be used by two threads at once.
class ORVE_API Mittente {
 public:
  /// An empty account. Raises 91 when the ambiente, which gives each object its identifier, is absent.
  explicit Mittente(std::shared_ptr<host::Ambiente> ambiente);
  Mittente(const Mittente&) = delete;
  Mittente& operator=(const Mittente&) = delete;
  Mittente(Mittente&&) = delete;
  Mittente& operator=(Mittente&&) = delete;
  ~Mittente();

  /// The sender's mail address.
  void Indirizzo(const std::string& valore) { indirizzo_ = valore; }
  [[nodiscard]] const std::string& Indirizzo() const { return indirizzo_; }
  /// Host name of the SMTP server.
  void Server(const std::string& valore) { server_ = valore; }
  [[nodiscard]] const std::string& Server() const { return server_; }
  /// The sender's display name.
  void Descrizione(const std::string& valore) { descrizione_ = valore; }
  [[nodiscard]] const std::string& Descrizione() const { return descrizione_; }
  /// Port of the SMTP server.
  void Port(std::int16_t valore) { port_ = valore; }
  [[nodiscard]] std::int16_t Port() const { return port_; }
  /// Time-out of the server; stored, but nothing reads it.
  void Timeout(std::int16_t valore) { timeout_ = valore; }
  [[nodiscard]] std::int16_t Timeout() const { return timeout_; }
  /// Login name.
  void user(const std::string& valore) { user_ = valore; }
  [[nodiscard]] const std::string& user() const { return user_; }
  /// Login password, in clear.
  void Password(const std::string& valore) { password_ = valore; }
  [[nodiscard]] const std::string& Password() const { return password_; }
  /// Kind of SMTP authentication; 0 none.
  void Auth(std::int16_t valore) { auth_ = valore; }
  [[nodiscard]] std::int16_t Auth() const { return auth_; }
  /// Whether a read receipt is requested: 1 requests one, 0 and 2 do not; with a negative value the user
  /// cannot change it.
  void ReadRcpt(std::int16_t valore) { readRcpt_ = valore; }
  [[nodiscard]] std::int16_t ReadRcpt() const { return readRcpt_; }
  /// The same for a delivery notification.
  void DeliveryStatus(std::int16_t valore) { deliveryStatus_ = valore; }
  [[nodiscard]] std::int16_t DeliveryStatus() const { return deliveryStatus_; }
  /// A flag for outside callers; the library stores it and never reads it.
  [[nodiscard]] bool IsSsl() const { return isSsl_; }
  void IsSsl(bool valore) { isSsl_ = valore; }
  /// Security of the connection: 1 or more encrypted, 0 plain. It has nothing to do with the password.
  [[nodiscard]] std::int16_t CryptType() const { return cryptType_; }
  void CryptType(std::int16_t valore) { cryptType_ = valore; }

 private:
  std::string indirizzo_;
  std::string server_;
  std::string descrizione_;
  std::int16_t port_ = 0;
  std::int16_t timeout_ = 0;
  std::string user_;
  std::string password_;
  std::int16_t auth_ = 0;
  std::int16_t readRcpt_ = 0;
  std::int16_t deliveryStatus_ = 0;
  bool isSsl_ = false;
  std::int16_t cryptType_ = 0;
  TracciaIstanza traccia_;
};

/// An ordered list of accounts, which it creates.
class ORVE_API CollMittenti {
 public:
  /// An empty list. Raises 91 when the ambiente, which gives each object its identifier, is absent.
  explicit CollMittenti(std::shared_ptr<host::Ambiente> ambiente);
  CollMittenti(const CollMittenti&) = delete;
  CollMittenti& operator=(const CollMittenti&) = delete;
  CollMittenti(CollMittenti&&) = delete;
  CollMittenti& operator=(CollMittenti&&) = delete;
  ~CollMittenti();

  /// Appends a new account and returns it; `CryptType` stays 0, so it is used over a plain connection
  /// whatever `IsSsl` says. Raises 457 when a non-empty key is already in the list.
  std::shared_ptr<Mittente> Add(const std::string& Indirizzo, const std::string& Server, std::int16_t Port,
                                std::int16_t Timeout, const std::string& UserName,
                                const std::string& Password, std::int16_t TipoAutenticazione,
                                std::int16_t Lettura, std::int16_t Consegna,
                                const std::string& Descrizione = {}, bool IsSsl = false,
                                const std::string& sKey = {});
  /// The account at a position, from 1 (9 when there is none), or under a text key (5 when it is unknown).
  /// A value that is neither number nor text raises 13.
  [[nodiscard]] std::shared_ptr<Mittente> Item(const host::Variant& vntIndexKey) const;
  /// How many accounts there are.
  [[nodiscard]] std::int32_t Count() const { return lista_.Count(); }
  /// Raises the errors of Item.
  void Remove(const host::Variant& vntIndexKey);
  /// The accounts in the order in which they were added, for as long as the collection lives. The accounts
  /// are found by key; the collection itself takes no index and is walked through this member only.
  [[nodiscard]] KeyedList<Mittente>::Enumerator NewEnum() const {
    return KeyedList<Mittente>::Enumerator(lista_);
  }
  /// As Add, with `CryptType` in place of `IsSsl`.
  std::shared_ptr<Mittente> AddMittente(const std::string& Indirizzo, const std::string& Server,
                                        std::int16_t Port, std::int16_t Timeout, const std::string& UserName,
                                        const std::string& Password, std::int16_t TipoAutenticazione,
                                        std::int16_t Lettura, std::int16_t Consegna,
                                        const std::string& Descrizione = {}, std::int16_t CryptType = 0,
                                        const std::string& sKey = {});

 private:
  [[nodiscard]] std::shared_ptr<Mittente> Nuovo(const std::string& Indirizzo, const std::string& Server,
                                                std::int16_t Port, std::int16_t Timeout,
                                                const std::string& UserName, const std::string& Password,
                                                std::int16_t TipoAutenticazione, std::int16_t Lettura,
                                                std::int16_t Consegna, const std::string& Descrizione) const;

  std::shared_ptr<host::Ambiente> ambiente_;
  KeyedList<Mittente> lista_;
  TracciaIstanza traccia_;
};

}  // namespace orve
