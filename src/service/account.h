// Who the mail comes from: the account that is loaded, the accounts on offer, and the receipts they request.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/addressing/mittenti.h"

namespace orve {

struct Account {
  std::string vSenderName;
  std::string vSenderAddress;
  bool ReadReceipt = false;
  bool vNotifyDelivery = false;
  bool vNotifyRead = false;
  bool vDisableNotifyDelivery = false;
  bool vDisableNotifyRead = false;

  std::string SmtpServer;  // not empty: an account is loaded; a sender that was chosen may be without one
  std::int16_t SmtpPorta = 0;
  std::int16_t SmtpTimeout = 0;
  std::string SmtpUtente;
  std::string SmtpPassword;
  std::int16_t SmtpAuth = 0;
  std::int16_t SmtpCrypt = 0;

  std::shared_ptr<CollMittenti> vCollMittenti;
  std::shared_ptr<Mittente> vMittente;
  bool UsaMittenteScelto = false;  // a channel with an account takes it from vMittente; never cleared
  std::int16_t IdMittenteDiretto = 0;

  /// Whether there is an account with a server, which need not be loaded again. Only a channel that delivers
  /// through that server ends without one.
  [[nodiscard]] bool Caricato() const { return !SmtpServer.empty(); }
};

}  // namespace orve
