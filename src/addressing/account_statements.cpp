#include "addressing/account_statements.h"

#include <string_view>

#include "service/nvl.h"

namespace orve {

namespace {

std::string FiltroServer(bool pec) {
  return pec ? " FW23_INDTIPO = 2 " : " FW23_INDTIPO = 1 ";
}

constexpr std::string_view kColonneServer =
    "SELECT FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL, \r";

constexpr std::string_view kColonneAccount =
    " FW98_MAILADDRESS , FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS AS ALIAS, FW98_INDREADRCPT AS LETTURA, "
    "FW98_INDDELIVERYSTATUS AS CONSEGNA \r";

constexpr std::string_view kColonneElenco =
    " SELECT FW23_SERVERNAME, \r"
    " FW23_PORT, \r"
    " FW23_TIMEOUT, \r"
    " FW23_INDAUTH, \r"
    " FW23_SSL, \r"
    " FW98_IDACCOUNT, \r"
    " FW98_MAILADDRESS, \r"
    " FW98_USERNAME, \r"
    " FW98_PASSWORD, \r";

}  // namespace

std::string OrigineAccountDellUtente(std::int32_t idUtente, bool pec) {
  return " FROM FW99_MAILUSERACCOUNT \r"
         " LEFT OUTER JOIN FW98_MAILACCOUNT ON FW99_IDACCOUNT_FW98 = FW98_IDACCOUNT \r"
         " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
         " WHERE" +
         FiltroServer(pec) + "\r AND FW99_ID_FW07 = " + std::to_string(idUtente) +
         "\r AND FW99_ISDEFAULT = 1";
}

std::string OrigineAccountDellAzienda(const host::Variant& ditta, bool pec) {
  const std::string codice = NVL(ditta, "0").ToText();
  return " FROM FW98_MAILACCOUNT \r"
         " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
         " LEFT OUTER JOIN FW9A_MAILAZIENDAACCOUNT ON FW98_IDACCOUNT = FW9A_IDACCOUNT_FW98 \r"
         " LEFT OUTER JOIN CG18_ANADITTABASE ON FW9A_DITTA_CG18 = CG18_DITTA \r"
         " INNER JOIN CG16_ANAGGEN ON CG18_CODICE_CG16 = CG16_CODICE \r"
         " WHERE " +
         (codice == "0" ? std::string() : " FW9A_DITTA_CG18 = " + codice + " AND ") + FiltroServer(pec) +
         "\r";
}

std::string StatementDellUtente(std::int32_t idUtente, bool pec) {
  return std::string(kColonneServer).append(kColonneAccount) + OrigineAccountDellUtente(idUtente, pec);
}

std::string StatementDellAzienda(const host::Variant& ditta, bool pec) {
  return std::string(" ").append(kColonneServer) +
         " FW98_MAILADDRESS, FW98_USERNAME, FW98_PASSWORD, CG16_RAGSOANAG AS ALIAS, "
         "FW98_INDREADRCPT AS LETTURA, FW98_INDDELIVERYSTATUS AS CONSEGNA \r" +
         OrigineAccountDellAzienda(ditta, pec);
}

std::string StatementDaId(std::int32_t idAccount) {
  return std::string(kColonneServer)
      .append(kColonneAccount)
      .append(
          " FROM FW98_MAILACCOUNT \r"
          " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
          " WHERE FW98_IDACCOUNT = " +
          std::to_string(idAccount));
}

std::string StatementElencoUtente(std::int32_t idUtente, bool pec) {
  return std::string(kColonneElenco) +
         " FW98_ALIAS AS ALIAS, \r"
         " FW98_INDREADRCPT AS LETTURA, \r"
         " FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
         " FROM FW98_MAILACCOUNT\r"
         " INNER JOIN FW99_MAILUSERACCOUNT ON FW98_IDACCOUNT = FW99_IDACCOUNT_FW98 \r"
         " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
         " WHERE FW99_ID_FW07 = " +
         std::to_string(idUtente) + "\r AND" + FiltroServer(pec) + " ORDER BY FW99_ISDEFAULT Desc";
}

std::string StatementElencoAzienda(const std::string& ditta, bool pec) {
  return std::string(kColonneElenco) +
         " CG16_RAGSOANAG AS ALIAS, \r"
         " FW98_INDREADRCPT AS LETTURA, \r"
         " FW98_INDDELIVERYSTATUS AS CONSEGNA \r"
         " FROM FW98_MAILACCOUNT \r"
         " LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER \r"
         " LEFT OUTER JOIN FW9A_MAILAZIENDAACCOUNT ON FW98_IDACCOUNT = FW9A_IDACCOUNT_FW98 \r"
         " LEFT OUTER JOIN CG18_ANADITTABASE ON FW9A_DITTA_CG18 = CG18_DITTA \r"
         " LEFT OUTER JOIN CG16_ANAGGEN ON CG18_CODICE_CG16 = CG16_CODICE \r"
         " WHERE FW9A_DITTA_CG18 = " +
         ditta + "\r AND" + FiltroServer(pec);
}

}  // namespace orve
