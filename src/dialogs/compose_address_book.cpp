// The address books behind the three address buttons of the compose window. What the person picks goes into
// the box of the button.
#include "dialogs/FRMRW_OPZMAIL.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/guards.h"

namespace orve {

namespace {

using host::Richiesto;

constexpr std::int32_t kRubricaMail = 1;
constexpr std::int32_t kRubricaPec = 3;

}  // namespace

void FRMRW_OPZMAIL::CostruisciMenuRubrica() {
  const auto aggiungi = [this](const char* didascalia, const char* chiave) {
    for (const auto& pulsante : {BTN_DEST_A, BTN_DEST_CC, BTN_DEST_CCN}) {
      IgnoraErrori([&] { pulsante->AddMenuItem(didascalia, chiave); });
    }
  };
  aggiungi("Arvio", "Key_Arvio");
  std::string webRender;
  IgnoraErrori([&] { webRender = ambiente_->VariabiliDiAmbiente().Leggi("WEBRender"); });
  if (webRender != "1") aggiungi("Outlook", "Key_Outl");
  bool tobit = false;
  IgnoraErrori([&] { tobit = CheckTobitConfig(); });
  if (tobit) aggiungi("Tobit", "Key_Tobit");
}

bool FRMRW_OPZMAIL::CheckTobitConfig() try {
  const auto risultato = Richiesto(Servizio().ConnectionADO)
                             .Execute(
                                 " SELECT FW24_INDFAXATTIVO "
                                 " FROM FW24_FAXCONFIG "
                                 " WHERE FW24_CODICE = 'FAX' ",
                                 host::kComandoNonIndicato);
  if (Richiesto(risultato).Eof()) return false;
  const double attivo = NVL(host::Leggi(*risultato, "FW24_INDFAXATTIVO"), 0).ToDouble();
  return attivo == 3 || attivo == 5;
} catch (...) {
  SegnalaErroreConTitolo(" CheckTobitConfig");
  return false;
}

void FRMRW_OPZMAIL::BTN_DEST_A_MenuItemClick(const std::string& chiave) try {
  GestisciRubrica(chiave, kvCasellaA);
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: BTN_DEST_A_MenuItemClick");
}

void FRMRW_OPZMAIL::BTN_DEST_CC_MenuItemClick(const std::string& chiave) try {
  GestisciRubrica(chiave, kvCasellaCC);
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: BTN_DEST_CC_MenuItemClick");
}

// The text names the handler of the CC button; that is kept as it is.
void FRMRW_OPZMAIL::BTN_DEST_CCN_MenuItemClick(const std::string& chiave) try {
  GestisciRubrica(chiave, kvCasellaCCn);
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: BTN_DEST_CC_MenuItemClick");
}

void FRMRW_OPZMAIL::GestisciRubrica(const std::string& chiave, std::int32_t casella) try {
  if (!ScegliDaRubrica(chiave)) return;
  auto& rubrica = Richiesto(ManagerRubrica);
  const std::string nome = rubrica.NomeScelto().ToText();
  const std::string indirizzi = rubrica.IndirizzoScelto().ToText();
  AggiornaCaselleDestinatari(nome, indirizzi, host::Variant(casella).ToInt16());
  TXT_DITTA->Text(rubrica.NomeScelto().ToText());
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: GestisciRubrica");
}

// Shows the address book that belongs to the key; true when the person picked something. The application's
// book says so itself, whatever the address holds; with the other two the address tells.
bool FRMRW_OPZMAIL::ScegliDaRubrica(const std::string& chiave) {
  const auto azzera = [this] {
    Richiesto(ManagerRubrica).CodiceScelto("");
    ManagerRubrica->NomeScelto("");
    ManagerRubrica->IndirizzoScelto("");
  };
  auto& servizio = Servizio();
  if (chiave == "Key_Tobit") {
    azzera();
    ManagerRubrica->ApriRubricaTobit();
    return !ManagerRubrica->IndirizzoScelto().ToText().empty();
  }
  if (chiave == "Key_Arvio") {
    Richiesto(ManagerRubrica).NomeScelto(servizio.vDitta);
    ManagerRubrica->Interfaccia(servizio.ActiveInterface);
    ManagerRubrica->DittaRubrica(servizio.DittaCorrente);
    ManagerRubrica->TipoRubrica(servizio.IsPec() ? kRubricaPec : kRubricaMail);
    ManagerRubrica->ApriRubrica();
    return !ManagerRubrica->Annullata();
  }
  if (chiave == "Key_Outl") {
    azzera();
    ManagerRubrica->Interfaccia(servizio.ActiveInterface);
    ManagerRubrica->TipoRubrica(kRubricaMail);
    ManagerRubrica->ApriRubricaOutlook();
    return !ManagerRubrica->IndirizzoScelto().ToText().empty();
  }
  return false;
}

}  // namespace orve
