#include "ambiente/connection_string.h"

#include <algorithm>
#include <array>
#include <string>

#include "text/text.h"

namespace orve::adapters::ambiente {

DatabaseName ReadDatabaseName(std::string_view testo) {
  constexpr std::string_view kOdbc = "odbc:";
  constexpr std::string_view kSqlite = "sqlite:";
  if (testo.starts_with(kOdbc)) return {true, std::string(testo.substr(kOdbc.size()))};
  return {false, std::string(testo.starts_with(kSqlite) ? testo.substr(kSqlite.size()) : testo)};
}

bool SembraStringaDiConnessione(std::string_view testo) {
  constexpr std::array<std::string_view, 5> kSegni = {"odbc:", "driver=", "dsn=", "pwd=", "password="};
  const std::string piegato = text::FoldCase(testo);
  return std::any_of(kSegni.begin(), kSegni.end(), [&piegato](std::string_view segno) {
    return piegato.find(text::FoldCase(segno)) != std::string::npos;
  });
}

}  // namespace orve::adapters::ambiente
