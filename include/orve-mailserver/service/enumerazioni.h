// The public enumerations of the service, all 32-bit signed integers.
#pragma once

#include <cstdint>

namespace orve {

/// Last result of a send, the values of `Stato`.
enum kvEnum_ErroreMail : std::int32_t {
  kvOK = 0,                  ///< a channel delivered the message
  kvParametriNonValidi = 1,  ///< the account id found no account
  kvErroreInvioMail = 2,     ///< a channel failed to deliver
  kvInvioNonImpostato = 3,   ///< sending is disabled
  kvProgramError = 99,       ///< declared for callers
};

/// The delivery channel.
enum kvEnum_ServizioMail : std::int32_t {
  kvSimpleMAPI = 0,    ///< the Simple MAPI controls
  kvOutlook = 1,       ///< Outlook automation
  kvMAPI = 2,          ///< direct calls of MAPI32.DLL
  kvNoMail = 3,        ///< sending disabled
  kvSMTPMail = 76,     ///< the SMTP component
  kvSMTPSSLMail = 77,  ///< the SMTP component, secure
};

/// What happens to a message whose addresses come from the master data.
enum kvEnumModalitaInvio : std::int32_t {
  kvManuale = 0,             ///< the person edits it in the compose dialog
  kvAutomatico = 1,          ///< never a dialog: sent, or refused with a record
  kvSemiAuto = 2,            ///< sent if all addresses are valid, else the dialog
  kvListaDistribuzione = 3,  ///< the same
};

enum kvTipologiaAllegati : std::int32_t { kvSingoloAllegato = 0, kvAllegatiMultipli = 1 };

/// What the code handed to a send stands for.
enum kvTipologiaDestinatarioFAX : std::int32_t {
  kvDestinatarioFaxAnagrafica = 0,
  kvDestinatarioFaxCliente = 1,
  kvDestinatarioFaxFornitore = 2,
  kvDestinatarioFaxDitta = 3,
  kvDestinatarioFaxAgente = 4,
  kvDestinatarioFaxVettore = 5,
  kvDestinatarioFaxSpedizioniere = 6,
  kvDestinatarioFaxMittente = 7,
  kvDestinatarioFaxIntermediarioTel = 8,
  kvDestinatarioFaxNumero = 9,
  kvDestinatarioFaxContatto = 10,
  kvDestinatarioFaxDestinatario = 11,
};

}  // namespace orve
