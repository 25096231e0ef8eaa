#include "channels/elenchi_destinatari.h"

#include "addressing/address_list.h"
#include "text/text.h"

namespace orve {

void AccodaConVirgola(std::string& campo, std::string_view valore) {
  if (!valore.empty()) campo.append(valore).append(", ");
}

void TogliUltimaVirgola(std::string& campo) {
  campo.resize(text::WithoutLast(campo, 2).size());
}

void AccodaPercorso(std::string& elenco, std::string_view percorso) {
  if (!elenco.empty()) elenco.append("|");
  elenco.append(percorso);
}

void AccodaDestinatarioA(const Destinatario& destinatario, std::string& elencoA, std::string& nomi) {
  AccodaVoceSeparata(elencoA, destinatario.Nome(), destinatario.Indirizzo(), kAperturaConBianco);
  AccodaConVirgola(nomi, destinatario.Nome());
}

void RipartisciDestinatari(const CollDestinatari& destinatari, TestiVoce (*testi)(const Destinatario&),
                           ElenchiDestinatari& elenchi, std::string& nomi) {
  for (const auto& destinatario : destinatari) {
    const TestiVoce voce = testi(*destinatario);
    switch (destinatario->Casella()) {
      case kvCasellaCC:
        AccodaVoceSeparata(elenchi.cc, voce.nome, voce.indirizzo, kAperturaConBianco);
        break;
      case kvCasellaCCn:
        AccodaVoceSeparata(elenchi.ccn, voce.nome, voce.indirizzo, kAperturaConBianco);
        break;
      case kvCasellaA:
        AccodaConVirgola(nomi, destinatario->Nome());
        AccodaVoceSeparata(elenchi.a, voce.nome, voce.indirizzo, kAperturaConBianco);
        break;
      default:
        AccodaConVirgola(nomi, destinatario->Nome());
        AccodaVoce(elenchi.a, voce.nome, voce.indirizzo, kAperturaConBianco);
        elenchi.a.append(";");
        break;
    }
  }
  TogliUltimaVirgola(nomi);
}

}  // namespace orve
