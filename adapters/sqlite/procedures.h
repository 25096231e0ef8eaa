// The function and the stored procedures of the application's database, built into this adapter.
//
// FNCG_GETCODANAG(ditta, tipocf, clifor, data) gives the master-data code that a partner holds at a date: the
// last code of CG44_CLIFORVALIDITA that begins at or before it, else the partner's own code in CG44_CLIFOR;
// null when there is no such partner or an argument is null. The date is 'yyyymmdd' or 'yyyy-mm-dd'; anything
// else is an error.
//
// SPFW_AttivaEventoGestionale ditta, codice, idutente, 'dati', flag writes one row of EVENTI_GESTIONALI, with
// its time of arrival. Company, code, user and flag are whole numbers; the data are kept as they are.
//
// SPFW_GetUserIDFromConnection runs as a command with the one output parameter, which gets the connection's
// user.
#pragma once

struct sqlite3;

namespace orve::adapters::sqlite {

/// Makes the function, and the procedure that a statement runs, known to the connection; raises the engine's
/// error.
void RegistraProcedure(sqlite3* database);

}  // namespace orve::adapters::sqlite
