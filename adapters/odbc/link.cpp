#include "odbc/link.h"

#include <sqlucode.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "odbc/connection_string.h"
#include "odbc/on_thread.h"
#include "odbc/result.h"
#include "odbc/wide_text.h"
#include "text/text.h"

namespace orve::adapters::odbc {

namespace {

using std::chrono::seconds;

constexpr seconds kAttesaMinima{1};
constexpr seconds kAttesaMassima{86400};
constexpr seconds kMargine{1};
// How long a driver may take to cancel what it was told to cancel.
constexpr seconds kAttesaAnnullo{5};

seconds Limitata(seconds attesa) {
  return std::clamp(attesa, kAttesaMinima, kAttesaMassima);
}

// A driver that keeps to its limit may need as long again to disconnect from the server.
seconds Pazienza(seconds attesa) {
  return 2 * attesa + kMargine;
}

SQLPOINTER Secondi(seconds attesa) {
  const auto secondi = static_cast<SQLULEN>(attesa.count());
  // ODBC takes a number in place of a pointer.
  return reinterpret_cast<SQLPOINTER>(secondi);  // NOLINT(performance-no-int-to-ptr)
}

SQLWCHAR* Unita(std::u16string& testo) {
  return reinterpret_cast<SQLWCHAR*>(testo.data());
}

// The length in the type that the call expects; a negative one would mean something else.
template <class T>
T Lunghezza(const std::u16string& testo, const char* che) {
  if (testo.size() > static_cast<std::size_t>(std::numeric_limits<T>::max())) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, std::string(che) + " è troppo lunga");
  }
  return static_cast<T>(testo.size());
}

// A driver may repeat the connection string in its error text.
host::Errore SenzaPassword(const host::Errore& errore, const std::string& stringa) {
  std::string descrizione = errore.Descrizione();
  for (const std::string& segreto : Segreti(stringa))
    descrizione = text::Replace(descrizione, segreto, "***");
  return {errore.Numero(), errore.Sorgente(), descrizione};
}

bool NomeDiProcedura(std::string_view nome) {
  return !nome.empty() &&
         nome.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.[]$#@") ==
             std::string_view::npos;
}

template <class Esito>
bool Finito(const std::future<Esito>& esito, seconds attesa) {
  return esito.wait_for(attesa) == std::future_status::ready;
}

}  // namespace

// The login, which ends with the last of those that use it.
class Link::Access {
 public:
  explicit Access(seconds attesa) : ambiente_(SQL_HANDLE_ENV, nullptr) {
    ambiente_.Verifica(SQLSetEnvAttr(ambiente_.Grezzo(), SQL_ATTR_ODBC_VERSION,
                                     reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), SQL_IS_UINTEGER));
    connessione_ = Handle(SQL_HANDLE_DBC, ambiente_.Grezzo());
    SQLSetConnectAttrW(connessione_.Grezzo(), SQL_ATTR_LOGIN_TIMEOUT, Secondi(attesa), SQL_IS_UINTEGER);
  }
  Access(const Access&) = delete;
  Access& operator=(const Access&) = delete;
  Access(Access&&) = delete;
  Access& operator=(Access&&) = delete;
  ~Access() {
    if (entrato_) SQLDisconnect(connessione_.Grezzo());
  }

  void Entra(const std::string& stringaConnessione) {
    std::u16string stringa = Largo(stringaConnessione);
    const auto lunghezza = Lunghezza<SQLSMALLINT>(stringa, "La stringa di connessione");
    try {
      connessione_.Verifica(SQLDriverConnectW(connessione_.Grezzo(), nullptr, Unita(stringa), lunghezza,
                                              nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    } catch (const host::Errore& errore) {
      throw SenzaPassword(errore, stringaConnessione);
    }
    entrato_ = true;
  }

  [[nodiscard]] Handle NuovaIstruzione(seconds tempoMassimo) const {
    Handle istruzione(SQL_HANDLE_STMT, connessione_.Grezzo());
    SQLSetStmtAttrW(istruzione.Grezzo(), SQL_ATTR_QUERY_TIMEOUT, Secondi(tempoMassimo), SQL_IS_UINTEGER);
    return istruzione;
  }

  /// A statement never came back: nothing else can be asked of this connection. The caller's alone.
  bool perduto = false;

 private:
  Handle ambiente_;
  Handle connessione_;
  bool entrato_ = false;
};

struct Link::Execution {
  std::shared_ptr<Access> accesso;
  Handle istruzione;  // released before the login
};

Link::Link(const std::string& stringaConnessione, const OdbcOptions& opzioni)
    : tempoMassimo_(Limitata(opzioni.tempoMassimo)) {
  if (stringaConnessione.find('\0') != std::string::npos) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente,
                       "La stringa di connessione contiene un carattere NUL");
  }
  const seconds attesa = Limitata(opzioni.attesaAccesso);
  auto accesso = std::make_shared<Access>(attesa);
  auto esito = Avviato([accesso, stringaConnessione] {
    accesso->Entra(stringaConnessione);
    return true;
  });
  if (!Finito(esito, Pazienza(attesa))) {
    throw host::Errore(kErroreSenzaNumero, kSorgente, "L'accesso al database ha superato il tempo massimo");
  }
  static_cast<void>(esito.get());
  accesso_ = std::move(accesso);
}

std::shared_ptr<Link::Execution> Link::NuovaEsecuzione() const {
  if (!Aperto()) {
    throw host::Errore(rows::kOggettoChiuso, kSorgente, "Operazione non consentita: la connessione è chiusa");
  }
  if (accesso_->perduto) {
    throw host::Errore(kErroreSenzaNumero, kSorgente,
                       "La connessione è perduta: un'istruzione di prima non ha mai avuto risposta");
  }
  return std::make_shared<Execution>(Execution{accesso_, accesso_->NuovaIstruzione(tempoMassimo_)});
}

// The result of the work on a new statement.
template <class Work>
auto Link::InTempo(Work lavoro) const {
  const auto esecuzione = NuovaEsecuzione();
  auto esito =
      Avviato([esecuzione, lavoro = std::move(lavoro)]() mutable { return lavoro(esecuzione->istruzione); });
  if (Finito(esito, Pazienza(tempoMassimo_))) return esito.get();
  const auto annullo =
      Avviato([esecuzione] { return SQL_SUCCEEDED(SQLCancel(esecuzione->istruzione.Grezzo())); });
  constexpr const char* kScaduta = "L'istruzione ha superato il tempo massimo";
  if (!Finito(esito, kAttesaAnnullo) || !Finito(annullo, kMargine)) {
    accesso_->perduto = true;
    throw host::Errore(kErroreSenzaNumero, kSorgente, kScaduta);
  }
  try {
    return esito.get();
  } catch (const host::Errore& errore) {
    throw host::Errore(errore.Numero(), errore.Sorgente(), kScaduta);
  }
}

rows::Rows Link::Esegui(const std::string& testo) const {
  if (testo.find('\0') != std::string::npos) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, "L'istruzione contiene un carattere NUL");
  }
  if (testo.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, "L'istruzione è vuota");
  }
  std::u16string largo = Largo(testo);
  const auto lunghezza = Lunghezza<SQLINTEGER>(largo, "L'istruzione");
  return InTempo([largo = std::move(largo), lunghezza](const Handle& istruzione) mutable {
    istruzione.Verifica(SQLExecDirectW(istruzione.Grezzo(), Unita(largo), lunghezza));
    return LeggiRisultati(istruzione);
  });
}

std::vector<host::Variant> Link::Chiama(std::string_view procedura, std::size_t parametri) const {
  struct Output {
    SQLINTEGER valore = 0;
    SQLLEN presente = SQL_NULL_DATA;
  };
  if (!NomeDiProcedura(procedura)) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente,
                       "Non è il nome di una procedura: " + std::string(procedura));
  }
  std::string segnaposti;
  for (std::size_t i = 0; i < parametri; ++i) segnaposti += i == 0 ? "?" : ",?";
  const std::string argomenti = parametri == 0 ? std::string() : "(" + segnaposti + ")";
  std::u16string chiamata = Largo("{call " + std::string(procedura) + argomenti + "}");
  return InTempo([chiamata, parametri](const Handle& istruzione) mutable {
    std::vector<Output> uscite(parametri);
    for (std::size_t i = 0; i < parametri; ++i) {
      istruzione.Verifica(SQLBindParameter(istruzione.Grezzo(), static_cast<SQLUSMALLINT>(i + 1),
                                           SQL_PARAM_OUTPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0,
                                           &uscite[i].valore, 0, &uscite[i].presente));
    }
    istruzione.Verifica(
        SQLExecDirectW(istruzione.Grezzo(), Unita(chiamata), static_cast<SQLINTEGER>(chiamata.size())));
    (void)LeggiRisultati(istruzione);  // the parameters are filled in after the last result
    std::vector<host::Variant> valori(parametri, host::Null{});
    for (std::size_t i = 0; i < parametri; ++i) {
      if (uscite[i].presente != SQL_NULL_DATA) valori[i] = std::int32_t{uscite[i].valore};
    }
    return valori;
  });
}

}  // namespace orve::adapters::odbc
