// What a grid is told and shows, as every toolkit keeps it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orve-mailserver/host/griglia.h"

namespace orve::adapters::forms {

class ConfigurazioneGriglia : public host::ConfigurazioneGriglia {
 public:
  void ColonnaChiave(const std::string& campo) override { colonna_ = campo; }
  std::string ColonnaChiave() override { return colonna_; }
  void SelezioneRiga(bool attiva) override { selezione_ = attiva; }
  bool SelezioneRiga() override { return selezione_; }

 private:
  std::string colonna_;
  bool selezione_ = false;
};

struct ColonnaGriglia {
  std::string campo;
  std::string didascalia;
  std::int32_t numero = 0;
  float larghezza = 0;  // twips
  bool visibile = true;
};

using RigheMostrate = std::vector<std::vector<std::string>>;

/// By their numbers; in their given order where these are equal.
void OrdinaColonne(std::vector<ColonnaGriglia>& colonne);

/// The texts of every row, one cell per column. The record set is left on the row it was on.
[[nodiscard]] RigheMostrate RigheDi(host::RecordSetScollegato& righe,
                                    const std::vector<ColonnaGriglia>& colonne);

}  // namespace orve::adapters::forms
