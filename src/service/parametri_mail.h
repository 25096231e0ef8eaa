// The answers of the parameters dialog.
#pragma once

#include <memory>
#include <string>

#include "orve-mailserver/addressing/mittenti.h"

namespace orve {

struct ParametriMail {
  float Tipo = 0;
  std::shared_ptr<Mittente> Account;
  bool ReadRcpt = false;
  bool DeliveryStatus = false;
  std::string AllegatoUnico;
  std::string CorpoUnico;
  bool IsValoriValidi = false;
};

}  // namespace orve
