// The inside of a service: all state of a send, in records by subject. A procedure takes the records that it
// reads by reference to const and those that it writes by reference, so that its signature says what it may
// touch.
#pragma once

#include <memory>
#include <utility>

#include "orve-mailserver/content/traccia_istanza.h"
#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"
#include "service/parametri_mail.h"

namespace orve {

struct Interno {
  /// Raises 91 when the ambiente is absent.
  explicit Interno(const std::shared_ptr<host::Ambiente>& ambiente) : traccia(ambiente, "CLSFW_MAILSERVER") {
    oggetti.ambiente = ambiente;
  }

  TracciaIstanza traccia;
  Oggetti oggetti;
  Esito esito;
  Impostazioni impostazioni;
  Messaggio messaggio;
  Account account;
  Contesto contesto;
  ParametriMail parametri;
};

}  // namespace orve
