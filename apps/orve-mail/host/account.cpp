#include "orve-mail/host/account.h"

#include <limits>
#include <memory>

#include "addressing/account_statements.h"
#include "orve-mail/terminal/numeri.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::app {

namespace {

constexpr std::int32_t kServerCertificato = 2;

std::shared_ptr<host::RecordSet> Cerca(host::Connection& archivio, const std::string& istruzione) {
  try {
    return archivio.Execute(istruzione, host::kComandoTesto);
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
}

// The first of the accounts found that has this address, else the first one.
std::optional<std::int32_t> Preferito(host::Connection& archivio, const std::string& origine,
                                      const std::string& indirizzo) {
  const auto trovati =
      Cerca(archivio, "SELECT FW98_IDACCOUNT, FW98_MAILADDRESS" + origine + " ORDER BY FW98_IDACCOUNT");
  std::optional<std::int32_t> primo;
  for (; !trovati->Eof(); trovati->MoveNext()) {
    const std::int32_t id = host::Leggi(*trovati, "FW98_IDACCOUNT").ToInt32();
    if (text::TrimRight(host::Leggi(*trovati, "FW98_MAILADDRESS").Joined()) == indirizzo) return id;
    if (!primo) primo = id;
  }
  return primo;
}

}  // namespace

std::optional<std::int32_t> AccountDellUtente(host::Connection& archivio, const TitolareAccount& titolare,
                                              const std::string& indirizzo) {
  return Preferito(archivio, OrigineAccountDellUtente(titolare.utente, titolare.pec), indirizzo);
}

std::optional<std::int32_t> AccountDellaDitta(host::Connection& archivio, const TitolareAccount& titolare,
                                              const std::string& indirizzo) {
  const auto ditta = std::to_string(Numero<std::int64_t>(titolare.ditta).value_or(0));
  return Preferito(archivio, OrigineAccountDellAzienda(ditta, titolare.pec), indirizzo);
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
  const auto trovato = Cerca(archivio, StatementDaId(id));
  if (trovato->Eof()) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Nessun account con il numero " + std::to_string(id));
  }
  const host::Variant tipo = host::Leggi(*trovato, "FW23_INDTIPO");  // null for an account without a server
  const bool certificato = !tipo.IsNull() && tipo.ToInt32() == kServerCertificato;
  if (certificato == pec) return;
  throw ErroreProgramma(
      Uscita::kComandoErrato,
      "--mittente: l'account " + std::to_string(id) +
          (certificato ? " è di posta certificata; indicare anche --pec"
                       : " non è di posta certificata; togliere --pec o scegliere un altro"));
}

}  // namespace orve::app
