// What came of a send, for the caller.
#pragma once

#include <string>

#include "orve-mailserver/host/variant.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve {

struct Esito {
  kvEnum_ErroreMail StatoInvio = kvOK;
  host::Variant DescrizioneInvio;
  std::string errDescription;
  std::string errNumber;
};

}  // namespace orve
