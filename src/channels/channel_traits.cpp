#include "channels/channel_traits.h"

#include <array>

#include "channels/mapi32_channel.h"
#include "channels/outlook_channel.h"
#include "channels/simple_mapi_channel.h"
#include "channels/smtp_channel.h"
#include "dialogs/FRMRW_OPZMAIL.h"
#include "service/dialog_bridge.h"
#include "service/interno.h"
#include "service/lifecycle.h"

namespace orve {

namespace {

constexpr std::string_view kServer = "server";
constexpr std::string_view kPostaDellaMacchina = "posta della macchina";

// The SMTP component has two numbers.
constexpr ChannelTraits Smtp(kvEnum_ServizioMail numero) {
  return {
      .numero = numero,
      .nome = "SMTP",
      .firma = "SMTP: ",
      .haAccount = true,
      .serverDellAccount = true,
      .ricevutaDiConsegna = true,
      .rifiutaSenzaCorpo = false,
      .avvisaDegliAllegati = true,
      .usaSendmail = false,
      .soloWindows = false,
      .risponde = kServer,
      .crea = nullptr,  // made for each message
      .prepara = nullptr,
      .adattaFinestra =
          [](Interno& i, FRMRW_OPZMAIL& form) {
            return OffriMittente(i.messaggio, i.impostazioni, i.account, i.contesto, i.oggetti,
                                 form.Finestra());
          },
      .consegna =
          [](Interno& i) {
            SendWithSmtp(i.messaggio, i.impostazioni, i.account, i.contesto, i.esito, i.oggetti);
          },
      .rilascia = nullptr,
  };
}

constexpr std::array<ChannelTraits, 6> kCanali = {{
    {
        .numero = kvSimpleMAPI,
        .nome = "Simple MAPI",
        .firma = "Simple Mapi:",
        .haAccount = false,
        .serverDellAccount = false,
        .ricevutaDiConsegna = false,
        .rifiutaSenzaCorpo = true,
        .avvisaDegliAllegati = false,
        .usaSendmail = true,
        .soloWindows = false,
        .risponde = kPostaDellaMacchina,
        .crea = ApriSessioneMapi,
        .prepara = PreparaMessaggioSimpleMAPI,
        .adattaFinestra =
            [](Interno& i, FRMRW_OPZMAIL& form) {
              NascondiMittente(form.Finestra());
              form.objOutlook = i.oggetti.objMapiMessages;
              return true;
            },
        .consegna =
            [](Interno& i) {
              SendWithSimpleMAPI(i.messaggio, i.impostazioni, i.account, i.contesto, i.esito, i.oggetti);
            },
        .rilascia = [](Interno& i) { ChiudiSessioneMapi(i.oggetti); },
    },
    {
        .numero = kvOutlook,
        .nome = "Outlook",
        .firma = "Outlook: ",
        .haAccount = false,
        .serverDellAccount = false,
        .ricevutaDiConsegna = false,
        .rifiutaSenzaCorpo = false,
        .avvisaDegliAllegati = false,
        .usaSendmail = false,
        .soloWindows = true,
        .risponde = kPostaDellaMacchina,
        .crea = AvviaOutlook,
        .prepara = nullptr,
        .adattaFinestra =
            [](Interno& i, FRMRW_OPZMAIL& form) {
              NascondiMittente(form.Finestra());
              form.objOutlook_00 = i.oggetti.objOutlookApp;
              return true;
            },
        .consegna =
            [](Interno& i) {
              SendWithOutlook(i.messaggio, i.impostazioni, i.account, i.contesto, i.esito, i.oggetti);
            },
        // The connection goes next, and what the caller handed in with the rest.
        .rilascia =
            [](Interno& i) {
              i.oggetti.objOutlookApp.reset();
              i.contesto.ConnectionADO.reset();
              RilasciaIlResto(i);
            },
    },
    {
        .numero = kvMAPI,
        .nome = "MAPI",
        .firma = "MAPI: ",
        .haAccount = false,
        .serverDellAccount = false,
        .ricevutaDiConsegna = false,
        .rifiutaSenzaCorpo = false,
        .avvisaDegliAllegati = false,
        .usaSendmail = true,
        .soloWindows = false,
        .risponde = kPostaDellaMacchina,
        .crea = nullptr,
        .prepara = nullptr,
        .adattaFinestra =
            [](Interno&, FRMRW_OPZMAIL& form) {
              NascondiMittente(form.Finestra());
              return true;
            },
        .consegna =
            [](Interno& i) { SendMailMAPI(i.messaggio, i.impostazioni, i.contesto, i.esito, i.oggetti); },
        .rilascia = nullptr,
    },
    {
        .numero = kvNoMail,
        .nome = "nessuno",
        .firma = "",
        .haAccount = false,
        .serverDellAccount = false,
        .ricevutaDiConsegna = false,
        .rifiutaSenzaCorpo = false,
        .avvisaDegliAllegati = false,
        .usaSendmail = false,
        .soloWindows = false,
        .risponde = "",
        .crea = nullptr,
        .prepara = nullptr,
        .adattaFinestra = nullptr,
        .consegna = nullptr,
        .rilascia = nullptr,
    },
    Smtp(kvSMTPMail),
    Smtp(kvSMTPSSLMail),
}};

}  // namespace

std::span<const ChannelTraits> Canali() {
  return kCanali;
}

const ChannelTraits* TrattiDi(kvEnum_ServizioMail canale) {
  for (const ChannelTraits& tratti : kCanali) {
    if (tratti.numero == canale) return &tratti;
  }
  return nullptr;
}

bool HaTratto(kvEnum_ServizioMail canale, bool ChannelTraits::*tratto) {
  const ChannelTraits* const tratti = TrattiDi(canale);
  return tratti != nullptr && tratti->*tratto;
}

bool HaAccount(kvEnum_ServizioMail canale) {
  return HaTratto(canale, &ChannelTraits::haAccount);
}

bool InvioDisabilitato(kvEnum_ServizioMail canale) {
  const ChannelTraits* const tratti = TrattiDi(canale);
  return tratti != nullptr && tratti->consegna == nullptr;
}

std::string_view FirmaDi(kvEnum_ServizioMail canale) {
  return TrattiDi(canale)->firma;
}

}  // namespace orve
