#include "ambiente/registro_tabella.h"

#include "sqlite/sqlite_connection.h"

namespace orve::adapters::ambiente {

namespace {

using sqlite::SqliteConnection;
using sqlite::Value;

constexpr const char* kInserimento =
    "INSERT INTO REGISTRO_INVII (IDVOCE, UOBJECT, TIPOCANALE, TITOLOSTAMPA, DITTA, NUMREG, TIPODOC, NUMDOC,"
    " SEZDOC, UTENTEAPPLICAZIONE, CANALEINVIO, MITTENTEINVIO, GUIDLISTA, TIPOLISTA, ESITOINVIO, NOME, "
    "AZIENDA,"
    " INDIRIZZO, ALLEGATO, RISULTATO, OGGETTO, CORPO)"
    " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, ?16, ?17, ?18, ?19, ?20, ?21,"
    " ?22)";

Value Presente(const host::TestoOAssente& testo) {
  return testo ? Value(*testo) : Value(nullptr);
}

}  // namespace

void RegistroTabella::Connessione(const std::shared_ptr<host::Connection>& connessione) {
  if (archivio_) {
    connessione_ = connessione ? archivio_ : nullptr;
    return;
  }
  connessione_ = std::dynamic_pointer_cast<SqliteConnection>(connessione);
  if (connessione && !connessione_) {
    throw host::Errore(host::kTipoNonCorrispondente, "RegistroTabella",
                       "Il registro degli invii vuole un database incorporato: indicarne uno");
  }
}

void RegistroTabella::RegistraInvio(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                                    const host::TestoOAssente& indirizzo, const host::TestoOAssente& allegato,
                                    const host::TestoOAssente& esito, const host::TestoOAssente& oggetto,
                                    const host::TestoOAssente& corpo) {
  const host::TestoOAssente registrato = allegato && comeRegistrato_ ? comeRegistrato_(*allegato) : allegato;
  static_cast<void>(host::Richiesto(connessione_)
                        .EseguiConValori(kInserimento, {voce_,
                                                        uObject_,
                                                        std::int64_t{tipoCanale_},
                                                        titoloStampa_,
                                                        ditta_,
                                                        numReg_,
                                                        tipoDoc_,
                                                        numDoc_,
                                                        sezDoc_,
                                                        std::int64_t{utente_},
                                                        static_cast<double>(canale_),
                                                        mittente_,
                                                        guidLista_,
                                                        std::int64_t{tipoLista_},
                                                        std::int64_t{esito_},
                                                        Presente(nome),
                                                        Presente(ditta),
                                                        Presente(indirizzo),
                                                        Presente(registrato),
                                                        Presente(esito),
                                                        Presente(oggetto),
                                                        Presente(corpo)}));
}

}  // namespace orve::adapters::ambiente
