#include "forms/contenuto.h"

#include "forms/controlli.h"

namespace orve::adapters::forms {

namespace {

template <class Tipo>
bool AggiungiTesto(host::Controllo* controllo, Contenuto& contenuto) {
  auto* conTesto = dynamic_cast<Tipo*>(controllo);
  if (conTesto != nullptr) contenuto.push_back(conTesto->Text());
  return conTesto != nullptr;
}

}  // namespace

Contenuto ContenutoDi(const std::map<std::string, std::shared_ptr<host::Controllo>>& controlli) {
  Contenuto contenuto;
  for (const auto& [nome, controllo] : controlli) {
    auto* uno = controllo.get();
    const bool conTesto =
        AggiungiTesto<host::TxtEdit>(uno, contenuto) || AggiungiTesto<host::KvlRichTextBox>(uno, contenuto) ||
        AggiungiTesto<host::KVL_CHECKBOX>(uno, contenuto) || AggiungiTesto<host::KVL_COMBO>(uno, contenuto);
    const auto* griglia = conTesto ? nullptr : dynamic_cast<Griglia*>(uno);
    if (griglia == nullptr) continue;
    for (const auto& riga : griglia->Righe()) contenuto.insert(contenuto.end(), riga.begin(), riga.end());
  }
  return contenuto;
}

}  // namespace orve::adapters::forms
