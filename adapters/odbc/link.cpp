#include "odbc/link.h"

#include <sqlucode.h>

#include <algorithm>
#include <cctype>

#include "odbc/connection_string.h"
#include "odbc/result.h"
#include "odbc/wide_text.h"
#include "text/text.h"

namespace orve::adapters::odbc {

namespace {

constexpr std::chrono::seconds kAttesaMinima{1};

SQLPOINTER Secondi(std::chrono::seconds attesa) {
  const auto secondi = std::max(attesa, kAttesaMinima).count();
  // ODBC takes a number in the place of a pointer.
  return reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(secondi));  // NOLINT(performance-no-int-to-ptr)
}

SQLWCHAR* Unita(std::u16string& testo) {
  return reinterpret_cast<SQLWCHAR*>(testo.data());
}

// A driver may repeat the connection string in its complaint.
host::Errore SenzaPassword(const host::Errore& errore, const std::string& stringa) {
  std::string descrizione = errore.Descrizione();
  for (const std::string& segreto : Segreti(stringa))
    descrizione = text::Replace(descrizione, segreto, "***");
  return {errore.Numero(), errore.Sorgente(), descrizione};
}

bool NomeDiProcedura(std::string_view nome) {
  return !nome.empty() && std::all_of(nome.begin(), nome.end(), [](unsigned char segno) {
    return std::isalnum(segno) != 0 ||
           std::string_view("_.[]$#@").find(static_cast<char>(segno)) != std::string_view::npos;
  });
}

}  // namespace

Collegamento::Collegamento(const std::string& stringaConnessione, const OpzioniOdbc& opzioni)
    : ambiente_(SQL_HANDLE_ENV, nullptr), tempoMassimo_(opzioni.tempoMassimo) {
  ambiente_.Verifica(SQLSetEnvAttr(ambiente_.Grezzo(), SQL_ATTR_ODBC_VERSION,
                                   reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), SQL_IS_UINTEGER));
  Handle connessione(SQL_HANDLE_DBC, ambiente_.Grezzo());
  // Not every driver knows these limits: one that does not is left to its own.
  SQLSetConnectAttrW(connessione.Grezzo(), SQL_ATTR_LOGIN_TIMEOUT, Secondi(opzioni.attesaAccesso),
                     SQL_IS_UINTEGER);
  std::u16string stringa = Largo(stringaConnessione);
  try {
    connessione.Verifica(SQLDriverConnectW(connessione.Grezzo(), nullptr, Unita(stringa),
                                           static_cast<SQLSMALLINT>(stringa.size()), nullptr, 0, nullptr,
                                           SQL_DRIVER_NOPROMPT));
  } catch (const host::Errore& errore) {
    throw SenzaPassword(errore, stringaConnessione);
  }
  connessione_ = std::move(connessione);
}

Handle Collegamento::NuovaIstruzione() const {
  if (!Aperto()) {
    throw host::Errore(rows::kOggettoChiuso, kSorgente, "Operazione non consentita: la connessione è chiusa");
  }
  Handle istruzione(SQL_HANDLE_STMT, connessione_.Grezzo());
  SQLSetStmtAttrW(istruzione.Grezzo(), SQL_ATTR_QUERY_TIMEOUT, Secondi(tempoMassimo_), SQL_IS_UINTEGER);
  return istruzione;
}

rows::Righe Collegamento::Esegui(const std::string& testo) const {
  const Handle istruzione = NuovaIstruzione();
  if (testo.find('\0') != std::string::npos) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, "L'istruzione contiene un carattere NUL");
  }
  if (testo.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, "L'istruzione è vuota");
  }
  std::u16string largo = Largo(testo);
  istruzione.Verifica(
      SQLExecDirectW(istruzione.Grezzo(), Unita(largo), static_cast<SQLINTEGER>(largo.size())));
  return LeggiRisultati(istruzione);
}

std::vector<host::Variant> Collegamento::Chiama(std::string_view procedura, std::size_t parametri) const {
  struct Uscita {
    SQLINTEGER valore = 0;
    SQLLEN presente = SQL_NULL_DATA;
  };
  if (!NomeDiProcedura(procedura)) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente,
                       "Non è il nome di una procedura: " + std::string(procedura));
  }
  const Handle istruzione = NuovaIstruzione();
  std::vector<Uscita> uscite(parametri);
  std::string segnaposti;
  for (std::size_t i = 0; i < parametri; ++i) {
    segnaposti += i == 0 ? "?" : ",?";
    istruzione.Verifica(SQLBindParameter(istruzione.Grezzo(), static_cast<SQLUSMALLINT>(i + 1),
                                         SQL_PARAM_OUTPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &uscite[i].valore,
                                         0, &uscite[i].presente));
  }
  const std::string argomenti = parametri == 0 ? std::string() : "(" + segnaposti + ")";
  std::u16string chiamata = Largo("{call " + std::string(procedura) + argomenti + "}");
  istruzione.Verifica(
      SQLExecDirectW(istruzione.Grezzo(), Unita(chiamata), static_cast<SQLINTEGER>(chiamata.size())));
  (void)LeggiRisultati(istruzione);  // the parameters are filled behind the last result
  std::vector<host::Variant> valori(parametri, host::Null{});
  for (std::size_t i = 0; i < parametri; ++i) {
    if (uscite[i].presente != SQL_NULL_DATA) valori[i] = std::int32_t{uscite[i].valore};
  }
  return valori;
}

void Collegamento::Chiudi() noexcept {
  if (!Aperto()) return;
  SQLDisconnect(connessione_.Grezzo());
  connessione_.Libera();
}

}  // namespace orve::adapters::odbc
