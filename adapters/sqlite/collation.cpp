#include "sqlite/collation.h"

#include <sqlite3.h>

#include <cstddef>

#include "sqlite/statement.h"
#include "text/text.h"

namespace orve::adapters::sqlite {

namespace {

// Nothing may be thrown through the engine.
int Confronta(void* /*contesto*/, int lunghezza1, const void* testo1, int lunghezza2,
              const void* testo2) noexcept {
  return ConfrontaItaliano({static_cast<const char*>(testo1), static_cast<std::size_t>(lunghezza1)},
                           {static_cast<const char*>(testo2), static_cast<std::size_t>(lunghezza2)});
}

}  // namespace

int ConfrontaItaliano(std::string_view primo, std::string_view secondo) {
  return text::FoldCase(text::TrimRight(primo)).compare(text::FoldCase(text::TrimRight(secondo)));
}

void RegistraConfronto(sqlite3* database) {
  const int esito =
      sqlite3_create_collation_v2(database, kConfrontoItaliano, SQLITE_UTF8, nullptr, Confronta, nullptr);
  if (esito != SQLITE_OK) throw ErroreMotore(database, esito);
}

}  // namespace orve::adapters::sqlite
