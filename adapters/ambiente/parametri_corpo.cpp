#include "ambiente/parametri_corpo.h"

#include <array>
#include <string>

namespace orve::adapters::ambiente {

namespace {

struct Campo {
  const char* didascalia;
  const char* chiave;  // the table's marker and the word of the placeholder
};

constexpr std::array<Campo, 13> kCampi = {{
    {"Destinatario: nome", "#Nome"},
    {"Destinatario: azienda", "#Azienda"},
    {"Destinatario: indirizzo e-mail", "#IndEmail"},
    {"Utente: nome utente", "#Utente"},
    {"Utente: descrizione", "#DescUtente"},
    {"Utente: codice del gruppo", "#Gruppo"},
    {"Utente: descrizione del gruppo", "#DescGruppo"},
    {"Azienda corrente: ragione sociale", "#AziendaCorr"},
    {"Azienda corrente: indirizzo", "#AzCorrInd"},
    {"Azienda corrente: CAP", "#AzCorrCAP"},
    {"Azienda corrente: città", "#AzCorrCitta"},
    {"Azienda corrente: provincia", "#AzCorrProv"},
    {"Azienda corrente: indirizzo e-mail", "#AzCorrMail"},
}};

class ParametriCorpo : public host::CLSFW_Parametri {
 public:
  host::Variant GetParametriCorpoMail() override {
    host::Variant::Array righe;
    righe.reserve(kCampi.size());
    for (const auto& [didascalia, chiave] : kCampi) {
      righe.emplace_back(host::Variant::Array{didascalia, chiave});
    }
    return righe;
  }
};

}  // namespace

std::shared_ptr<host::CLSFW_Parametri> CreaParametriCorpo() {
  return std::make_shared<ParametriCorpo>();
}

}  // namespace orve::adapters::ambiente
