// The channels of delivery, one row each: the one place that lists them. docs/channels.md tells what a
// channel must do for a send.
#pragma once

#include <array>
#include <string_view>

#include "orve-mailserver/service/enumerations.h"

namespace orve {

/// The outside object that delivers.
enum class Consegna { kNessuna, kControlliMapi, kOutlook, kMapi32, kComponenteSmtp };

struct TrattiCanale {
  kvEnum_ServizioMail numero;
  std::string_view nome;
  bool haAccount;  // the sender is an account of the application's own
  Consegna consegna;
  std::string_view firma;  // how the register's way of sending begins
};

inline constexpr std::array<TrattiCanale, 6> kCanali = {{
    {kvSimpleMAPI, "Simple MAPI", false, Consegna::kControlliMapi, "Simple Mapi:"},
    {kvOutlook, "Outlook", false, Consegna::kOutlook, "Outlook: "},
    {kvMAPI, "MAPI", false, Consegna::kMapi32, "MAPI: "},
    {kvNoMail, "nessuno", false, Consegna::kNessuna, ""},
    {kvSMTPMail, "SMTP", true, Consegna::kComponenteSmtp, "SMTP: "},
    {kvSMTPSSLMail, "SMTP", true, Consegna::kComponenteSmtp, "SMTP: "},
}};

/// The row of a channel; null for a number that is not a channel's.
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
