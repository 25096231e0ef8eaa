// The application's statements are written for SQL Server; SQLite understands them after the few rewrites
// below.
//
// The translator works on the text alone: it knows words, quotes, brackets and comments, not the grammar, and
// leaves to the engine whatever it does not know. A statement that needs none of the rewrites comes back byte
// for byte. What is in quotes, brackets or comments is never changed, so a value reads on SQLite as it was
// written.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::sqlite {

/// The statement in SQLite's dialect. Never fails: text that is not a statement is left for the engine to
/// refuse. Time and memory grow linearly with the text.
///
/// | SQL Server                        | SQLite                                                    |
/// |-----------------------------------|-----------------------------------------------------------|
/// | `T WITH (NOLOCK)`                 | `T`                                                       |
/// | `SELECT [DISTINCT] TOP n ...`     | `SELECT ... LIMIT n`, at the end of that select           |
/// | `ISNULL(a, b)`                    | `IFNULL(a, b)`                                            |
/// | `dbo.X`, `[dbo].X`                | `X`                                                       |
/// | `INFORMATION_SCHEMA.TABLES`       | `INFORMATION_SCHEMA_TABLES`, a view of each connection    |
/// | `exec P a, b` (also `execute`)    | `SELECT NULL WHERE P(a, b) IS NOT NULL`: P runs, no rows  |
///
/// `TOP` in a member of a `UNION`, `EXCEPT` or `INTERSECT`, which SQLite cannot limit by itself, with
/// `PERCENT`, or with anything but a whole number stays as it is, so the engine refuses it rather than limit
/// the wrong rows. Carriage returns are white space to SQLite, and column aliases are the same in both
/// dialects.
[[nodiscard]] std::string TraduciDialetto(std::string_view istruzione);

}  // namespace orve::adapters::sqlite
