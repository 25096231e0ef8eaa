// On whose behalf the application works: its database, company, user and group.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/variant.h"

namespace orve {

struct Contesto {
  std::shared_ptr<host::Connection> ConnectionADO;
  host::Variant DittaCorrente;
  std::string CodiceUtente;
  std::string CodiceGruppo;
  std::int32_t IdUtenteCorrente = 0;  // 0: not known
  std::string DescUtenteCorrente;
  std::string DescGruppoCorrente;
  std::string AziendaCorr;
  std::string AzCorrInd;
  std::string AzCorrCAP;
  std::string AzCorrCitta;
  std::string AzCorrProv;
  std::string AzCorrMail;
};

}  // namespace orve
