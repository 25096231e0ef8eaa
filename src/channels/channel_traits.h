// The channels of delivery, one row each: the one place that lists them. docs/channels.md tells what a
// channel must do for a send.
#pragma once

#include <array>
#include <string_view>

#include "orve-mailserver/host/osservatore_invio.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve {

using host::MezzoConsegna;

struct ChannelTraits {
  kvEnum_ServizioMail numero;
  std::string_view nome;
  bool haAccount;  // the sender is an account of the application's own
  MezzoConsegna consegna;
  std::string_view firma;  // how the register's way of sending begins
};

inline constexpr std::array<ChannelTraits, 6> kCanali = {{
    {kvSimpleMAPI, "Simple MAPI", false, MezzoConsegna::kControlliMapi, "Simple Mapi:"},
    {kvOutlook, "Outlook", false, MezzoConsegna::kOutlook, "Outlook: "},
    {kvMAPI, "MAPI", false, MezzoConsegna::kMapi32, "MAPI: "},
    {kvNoMail, "nessuno", false, MezzoConsegna::kNessuno, ""},
    {kvSMTPMail, "SMTP", true, MezzoConsegna::kComponenteSmtp, "SMTP: "},
    {kvSMTPSSLMail, "SMTP", true, MezzoConsegna::kComponenteSmtp, "SMTP: "},
}};

/// The row of a channel; null for a number that is not a channel's.
[[nodiscard]] constexpr const ChannelTraits* TrattiDi(kvEnum_ServizioMail canale) {
  for (const ChannelTraits& tratti : kCanali) {
    if (tratti.numero == canale) return &tratti;
  }
  return nullptr;
}

[[nodiscard]] constexpr bool HaAccount(kvEnum_ServizioMail canale) {
  const ChannelTraits* const tratti = TrattiDi(canale);
  return tratti != nullptr && tratti->haAccount;
}

/// How the register's way of sending begins for one of the channels above.
[[nodiscard]] constexpr std::string_view FirmaDi(kvEnum_ServizioMail canale) {
  return TrattiDi(canale)->firma;
}

}  // namespace orve
