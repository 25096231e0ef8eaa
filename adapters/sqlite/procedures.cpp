#include "sqlite/procedures.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>

#include "sqlite/statement.h"

namespace orve::adapters::sqlite {

namespace {

constexpr const char* kCodiceAllaData =
    "SELECT COALESCE((SELECT CG44V_CODICE_CG16 FROM CG44_CLIFORVALIDITA"
    " WHERE CG44V_DITTA_CG18 = ?1 AND CG44V_TIPOCF_CG44 = ?2 AND CG44V_CLIFOR_CG44 = ?3 AND CG44V_DAL <= ?4"
    " ORDER BY CG44V_DAL DESC LIMIT 1), CG44_CODICE_CG16)"
    " FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = ?1 AND CG44_TIPOCF = ?2 AND CG44_CLIFOR = ?3";

constexpr const char* kNuovoEvento =
    "INSERT INTO EVENTI_GESTIONALI (DITTA, CODICE, IDUTENTE, DATI, FLAG) VALUES (?1, ?2, ?3, ?4, ?5)";

[[noreturn]] void Rifiuta(const char* nome, const std::string& motivo) {
  throw host::Errore(SQLITE_MISMATCH, kSorgente, std::string(nome) + ": " + motivo);
}

std::string Testo(sqlite3_value* valore) {
  const auto* testo = sqlite3_value_text(valore);
  if (testo == nullptr) return {};
  return {reinterpret_cast<const char*>(testo), static_cast<std::size_t>(sqlite3_value_bytes(valore))};
}

// Text that reads as a whole number counts as one, as when SQL Server converts an argument.
std::int64_t Intero(sqlite3_value* valore, const char* nome, const char* argomento) {
  if (sqlite3_value_numeric_type(valore) != SQLITE_INTEGER) {
    Rifiuta(nome, std::string("l'argomento ") + argomento + " non è un numero intero");
  }
  return sqlite3_value_int64(valore);
}

std::int64_t Data(sqlite3_value* valore, const char* nome) {
  host::DataOra data;
  if (!LeggiData(Testo(valore), data)) Rifiuta(nome, "la data non è valida");
  const auto campi = host::Campi(data);
  return campi.anno * 10000LL + campi.mese * 100LL + campi.giorno;
}

void GetCodAnag(sqlite3_context* contesto, sqlite3_value** argomenti) {
  constexpr const char* kNome = "FNCG_GETCODANAG";
  const bool manca = std::any_of(argomenti, argomenti + 4, [](sqlite3_value* valore) {
    return sqlite3_value_type(valore) == SQLITE_NULL;
  });
  if (manca) return;  // the result stays null
  auto* database = sqlite3_context_db_handle(contesto);
  Statement istruzione(database, kCodiceAllaData);
  istruzione.Valori({Intero(argomenti[0], kNome, "ditta"), Intero(argomenti[1], kNome, "tipo"),
                     Intero(argomenti[2], kNome, "codice"), Data(argomenti[3], kNome)});
  if (!istruzione.Avanza()) return;
  const auto codice = istruzione.Leggi(0);
  if (!codice.IsNull()) sqlite3_result_int(contesto, codice.ToInt32());
}

void AttivaEventoGestionale(sqlite3_context* contesto, sqlite3_value** argomenti) {
  constexpr const char* kNome = "SPFW_AttivaEventoGestionale";
  Statement istruzione(sqlite3_context_db_handle(contesto), kNuovoEvento);
  istruzione.Valori({Intero(argomenti[0], kNome, "ditta"), Intero(argomenti[1], kNome, "codice"),
                     Intero(argomenti[2], kNome, "utente"), Testo(argomenti[3]),
                     Intero(argomenti[4], kNome, "flag")});
  (void)istruzione.Avanza();  // the result stays null: a procedure gives no rows
}

// Nothing may be thrown through the engine: an error becomes the running statement's own.
template <void (*kCorpo)(sqlite3_context*, sqlite3_value**)>
void Protetta(sqlite3_context* contesto, int /*numero*/, sqlite3_value** argomenti) noexcept {
  try {
    kCorpo(contesto, argomenti);
  } catch (const host::Errore& errore) {
    sqlite3_result_error(contesto, errore.Descrizione().c_str(), -1);
    if (errore.Sorgente() == kSorgente) sqlite3_result_error_code(contesto, errore.Numero());
  } catch (...) {
    sqlite3_result_error_nomem(contesto);
  }
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void Registra(sqlite3* database, const char* nome, int argomenti, Function funzione) {
  // Only statements may call them, never a view or trigger that a foreign file brings along.
  const int esito = sqlite3_create_function_v2(database, nome, argomenti, SQLITE_UTF8 | SQLITE_DIRECTONLY,
                                               nullptr, funzione, nullptr, nullptr, nullptr);
  if (esito != SQLITE_OK) throw ErroreMotore(database, esito);
}

}  // namespace

void RegistraProcedure(sqlite3* database) {
  Registra(database, "FNCG_GETCODANAG", 4, Protetta<GetCodAnag>);
  Registra(database, "SPFW_AttivaEventoGestionale", 5, Protetta<AttivaEventoGestionale>);
}

}  // namespace orve::adapters::sqlite
