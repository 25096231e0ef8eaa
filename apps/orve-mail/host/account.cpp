#include "orve-mail/host/account.h"

#include <limits>
#include <memory>

#include "orve-mail/terminal/numeri.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::app {

namespace {

constexpr std::int32_t kServerOrdinario = 1;
constexpr std::int32_t kServerCertificato = 2;

std::shared_ptr<host::RecordSet> Cerca(host::Connection& archivio, const std::string& istruzione) {
  try {
    return archivio.Execute(istruzione, host::kComandoTesto);
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
}

// The first of the accounts found that has this address, else the first one.
std::optional<std::int32_t> Preferito(host::RecordSet& trovati, const std::string& indirizzo) {
  std::optional<std::int32_t> primo;
  for (; !trovati.Eof(); trovati.MoveNext()) {
    const std::int32_t id = host::Leggi(trovati, "FW98_IDACCOUNT").ToInt32();
    if (text::TrimRight(host::Leggi(trovati, "FW98_MAILADDRESS").Joined()) == indirizzo) return id;
    if (!primo) primo = id;
  }
  return primo;
}

}  // namespace

std::optional<std::int32_t> AccountDellUtente(host::Connection& archivio, const TitolareAccount& titolare,
                                              const std::string& indirizzo) {
  const auto trovati = Cerca(
      archivio,
      "SELECT FW98_IDACCOUNT, FW98_MAILADDRESS FROM FW99_MAILUSERACCOUNT"
      " INNER JOIN FW98_MAILACCOUNT ON FW98_IDACCOUNT = FW99_IDACCOUNT_FW98"
      " INNER JOIN FW23_FAXER ON FW23_IDSERVER = FW98_IDSERVER_FW23"
      " WHERE FW99_ID_FW07 = " +
          std::to_string(titolare.utente) + " AND FW99_ISDEFAULT = 1 AND FW23_INDTIPO = " +
          std::to_string(titolare.pec ? kServerCertificato : kServerOrdinario) + " ORDER BY FW98_IDACCOUNT");
  return Preferito(*trovati, indirizzo);
}

std::optional<std::int32_t> AccountDellaDitta(host::Connection& archivio, const TitolareAccount& titolare,
                                              const std::string& indirizzo) {
  const std::int64_t ditta = Numero<std::int64_t>(titolare.ditta).value_or(0);
  const auto trovati =
      Cerca(archivio,
            "SELECT FW98_IDACCOUNT, FW98_MAILADDRESS FROM FW9A_MAILAZIENDAACCOUNT"
            " INNER JOIN FW98_MAILACCOUNT ON FW98_IDACCOUNT = FW9A_IDACCOUNT_FW98"
            " INNER JOIN FW23_FAXER ON FW23_IDSERVER = FW98_IDSERVER_FW23"
            " INNER JOIN CG18_ANADITTABASE ON CG18_DITTA = FW9A_DITTA_CG18"
            " INNER JOIN CG16_ANAGGEN ON CG16_CODICE = CG18_CODICE_CG16"
            " WHERE FW23_INDTIPO = " +
                std::to_string(titolare.pec ? kServerCertificato : kServerOrdinario) +
                (ditta == 0 ? std::string() : " AND FW9A_DITTA_CG18 = " + std::to_string(ditta)) +
                " ORDER BY FW98_IDACCOUNT");
  return Preferito(*trovati, indirizzo);
}

std::optional<std::int16_t> AccountPredefinito(host::Connection& archivio, const TitolareAccount& titolare,
                                               const std::string& indirizzo) {
  auto trovato = AccountDellUtente(archivio, titolare, indirizzo);
  if (!trovato) trovato = AccountDellaDitta(archivio, titolare, indirizzo);
  if (!trovato) return std::nullopt;
  const std::int32_t id = *trovato;
  if (id > std::numeric_limits<std::int16_t>::max() || id < std::numeric_limits<std::int16_t>::min()) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile,
                          "L'account predefinito ha un numero troppo grande per un "
                          "invio diretto: " +
                              std::to_string(id));
  }
  return static_cast<std::int16_t>(id);
}

void RichiediAccount(host::Connection& archivio, std::int16_t id, bool pec) {
  const auto trovato = Cerca(archivio,
                             "SELECT FW23_INDTIPO AS TIPO FROM FW98_MAILACCOUNT"
                             " LEFT OUTER JOIN FW23_FAXER ON FW23_IDSERVER = FW98_IDSERVER_FW23"
                             " WHERE FW98_IDACCOUNT = " +
                                 std::to_string(id));
  if (trovato->Eof()) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Nessun account con il numero " + std::to_string(id));
  }
  const host::Variant tipo = host::Leggi(*trovato, "TIPO");  // null for an account without a server
  const bool certificato = !tipo.IsNull() && tipo.ToInt32() == kServerCertificato;
  if (certificato == pec) return;
  throw ErroreProgramma(
      Uscita::kComandoErrato,
      "--mittente: l'account " + std::to_string(id) +
          (certificato ? " è di posta certificata; indicare anche --pec"
                       : " non è di posta certificata; togliere --pec o scegliere un altro"));
}

}  // namespace orve::app
