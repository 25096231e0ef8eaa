// The automation objects of the mail channels that do not speak SMTP. Member names are the objects' own, with
// their case.
#pragma once

#include "host/oggetto.h"
#include "host/variant.h"

namespace orve::host {

/// "Outlook.Application".
class OutlookApplication : public Oggetto {};

/// "MSMAPI.MAPISession".
class MAPISession : public Oggetto {
 public:
  virtual void DownLoadMail(bool scarica) = 0;
  virtual void NewSession(bool nuova) = 0;
  /// Opens the session; raises an error when it cannot.
  virtual void SignOn() = 0;
  [[nodiscard]] virtual Variant SessionID() = 0;
  virtual void SignOff() = 0;
};

/// "MSMAPI.MAPIMessages".
class MAPIMessages : public Oggetto {
 public:
  virtual void SessionID(const Variant& sessione) = 0;
  /// Starts a new message.
  virtual void Compose() = 0;
};

}  // namespace orve::host
