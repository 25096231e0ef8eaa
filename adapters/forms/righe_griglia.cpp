#include "forms/righe_griglia.h"

#include <algorithm>
#include <utility>

#include "orve-mailserver/host/connection.h"

namespace orve::adapters::forms {

void OrdinaColonne(std::vector<ColonnaGriglia>& colonne) {
  std::stable_sort(colonne.begin(), colonne.end(),
                   [](const ColonnaGriglia& a, const ColonnaGriglia& b) { return a.numero < b.numero; });
}

RigheMostrate RigheDi(host::RecordSetScollegato& righe, const std::vector<ColonnaGriglia>& colonne) {
  RigheMostrate testi;
  const std::int32_t corrente = righe.AbsolutePosition();
  if (righe.RecordCount() > 0) righe.MoveFirst();
  for (; !righe.Eof(); righe.MoveNext()) {
    std::vector<std::string> celle;
    celle.reserve(colonne.size());
    for (const auto& colonna : colonne) celle.push_back(host::Leggi(righe, colonna.campo).Joined());
    testi.push_back(std::move(celle));
  }
  if (corrente != host::RecordSetScollegato::kNessunaRiga) righe.AbsolutePosition(corrente);
  return testi;
}

}  // namespace orve::adapters::forms
