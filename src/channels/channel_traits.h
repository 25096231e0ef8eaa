// The channels of delivery, one row each: the one place that lists them. What a channel owes a send is told
// in docs/channels.md.
#pragma once

#include <array>
#include <string_view>

#include "service/enumerations.h"

namespace orve {

struct TrattiCanale {
  kvEnum_ServizioMail numero;
  std::string_view nome;
  bool haAccount;            // the sender is an account of the application's own
  std::string_view oggetto;  // which outside object delivers; empty: nothing is delivered
  std::string_view firma;    // how the register's way of sending begins
};

inline constexpr std::array<TrattiCanale, 6> kCanali = {{
    {kvSimpleMAPI, "Simple MAPI", false, "MAPIMessages", "Simple Mapi:"},
    {kvOutlook, "Outlook", false, "OutlookApplication", "Outlook: "},
    {kvMAPI, "MAPI", false, "Mapi32", "MAPI: "},
    {kvNoMail, "nessuno", false, "", ""},
    {kvSMTPMail, "SMTP", true, "ComponenteSmtp", "SMTP: "},
    {kvSMTPSSLMail, "SMTP SSL", true, "ComponenteSmtp", "SMTP: "},
}};

/// The row of a channel; null for a number that is none.
[[nodiscard]] constexpr const TrattiCanale* TrattiDi(kvEnum_ServizioMail canale) {
  for (const TrattiCanale& tratti : kCanali) {
    if (tratti.numero == canale) return &tratti;
  }
  return nullptr;
}

[[nodiscard]] constexpr bool HaAccount(kvEnum_ServizioMail canale) {
  const TrattiCanale* const tratti = TrattiDi(canale);
  return tratti != nullptr && tratti->haAccount;
}

/// How the register's way of sending begins for one of the channels above.
[[nodiscard]] constexpr std::string_view FirmaDi(kvEnum_ServizioMail canale) {
  return TrattiDi(canale)->firma;
}

}  // namespace orve
