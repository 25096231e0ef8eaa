// The mail settings of the application, and what else the caller wants of this send.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/service/enumerazioni.h"

namespace orve {

struct Impostazioni {
  kvEnum_ServizioMail SrvMailInstallato = kvSimpleMAPI;
  std::int32_t IndModalitaInvio = -1;  // -1: no forced mode
  std::int32_t ModalitaStampaDifferita = 0;
  std::int32_t ModalitaStandard = 0;
  bool IsStampaDifferita = false;
  std::string PathTemp;
  bool FlagBcc = false;  // the sender gets a copy
  bool FlgMsgPers = false;
  std::string MsgPers;
  bool InvioSMTP = false;
  bool silentMode = false;
  bool IsInvioMailConParams = false;

  /// The mode forced by the caller, or else the one that the settings give for deferred or direct printing.
  [[nodiscard]] kvEnumModalitaInvio ModalitaInvio() const {
    if (IndModalitaInvio != -1) return static_cast<kvEnumModalitaInvio>(IndModalitaInvio);
    return static_cast<kvEnumModalitaInvio>(IsStampaDifferita ? ModalitaStampaDifferita : ModalitaStandard);
  }
};

}  // namespace orve
