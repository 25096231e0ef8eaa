#include "orve-mail/account.h"

#include <limits>
#include <memory>
#include <vector>

#include "host/errore.h"
#include "orve-mail/numeri.h"
#include "orve-mail/uscita.h"

namespace orve::app {

namespace {

using adapters::sqlite::SqliteConnection;
using adapters::sqlite::Valore;

constexpr std::int64_t kServerOrdinario = 1;
constexpr std::int64_t kServerCertificato = 2;

// ?1 the owner, ?2 the kind of server, ?3 the address preferred.
constexpr const char* kDellUtente =
    "SELECT FW98_IDACCOUNT FROM FW99_MAILUSERACCOUNT"
    " JOIN FW98_MAILACCOUNT ON FW98_IDACCOUNT = FW99_IDACCOUNT_FW98"
    " JOIN FW23_FAXER ON FW23_IDSERVER = FW98_IDSERVER_FW23"
    " WHERE FW99_ID_FW07 = ?1 AND FW99_ISDEFAULT = 1 AND FW23_INDTIPO = ?2"
    " ORDER BY rtrim(coalesce(FW98_MAILADDRESS, '')) = ?3 DESC, FW98_IDACCOUNT LIMIT 1";
constexpr const char* kDellaDitta =
    "SELECT FW98_IDACCOUNT FROM FW9A_MAILAZIENDAACCOUNT"
    " JOIN FW98_MAILACCOUNT ON FW98_IDACCOUNT = FW9A_IDACCOUNT_FW98"
    " JOIN FW23_FAXER ON FW23_IDSERVER = FW98_IDSERVER_FW23"
    " JOIN CG18_ANADITTABASE ON CG18_DITTA = FW9A_DITTA_CG18"
    " JOIN CG16_ANAGGEN ON CG16_CODICE = CG18_CODICE_CG16"
    " WHERE (?1 = 0 OR FW9A_DITTA_CG18 = ?1) AND FW23_INDTIPO = ?2"
    " ORDER BY rtrim(coalesce(FW98_MAILADDRESS, '')) = ?3 DESC, FW98_IDACCOUNT LIMIT 1";

std::shared_ptr<host::RecordSet> Cerca(SqliteConnection& archivio, const char* istruzione,
                                       const std::vector<Valore>& valori) {
  try {
    return archivio.EseguiConValori(istruzione, valori);
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
}

}  // namespace

std::optional<std::int16_t> AccountPredefinito(SqliteConnection& archivio, const TitolareAccount& titolare,
                                               const std::string& indirizzo) {
  const std::int64_t tipo = titolare.pec ? kServerCertificato : kServerOrdinario;
  const std::int64_t ditta = Numero<std::int64_t>(titolare.ditta).value_or(0);
  auto trovato = Cerca(archivio, kDellUtente, {std::int64_t{titolare.utente}, tipo, indirizzo});
  if (trovato->Eof()) trovato = Cerca(archivio, kDellaDitta, {ditta, tipo, indirizzo});
  if (trovato->Eof()) return std::nullopt;
  const std::int32_t id = host::Leggi(*trovato, "FW98_IDACCOUNT").ToInt32();
  if (id > std::numeric_limits<std::int16_t>::max() || id < std::numeric_limits<std::int16_t>::min()) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile,
                          "L'account predefinito ha un numero troppo grande per un "
                          "invio diretto: " +
                              std::to_string(id));
  }
  return static_cast<std::int16_t>(id);
}

void RichiediAccount(SqliteConnection& archivio, std::int16_t id, bool pec) {
  const auto trovato = Cerca(archivio,
                             "SELECT coalesce(FW23_INDTIPO, 0) AS TIPO FROM FW98_MAILACCOUNT"
                             " LEFT JOIN FW23_FAXER ON FW23_IDSERVER = FW98_IDSERVER_FW23"
                             " WHERE FW98_IDACCOUNT = ?1",
                             {std::int64_t{id}});
  if (trovato->Eof()) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Nessun account con il numero " + std::to_string(id));
  }
  const bool certificato = host::Leggi(*trovato, "TIPO").ToInt32() == kServerCertificato;
  if (certificato == pec) return;
  throw ErroreProgramma(
      Uscita::kComandoErrato,
      "--mittente: l'account " + std::to_string(id) +
          (certificato ? " è di posta certificata; indicare anche --pec"
                       : " non è di posta certificata; togliere --pec o scegliere un altro"));
}

}  // namespace orve::app
