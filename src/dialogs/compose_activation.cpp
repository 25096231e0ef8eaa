// The compose window's life: construction, start, body, account list, end.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

#include "channels/channel_traits.h"
#include "content/body_templates.h"
#include "dialogs/FRMRW_OPZMAIL.h"
#include "dialogs/layouts.h"
#include "dialogs/listener.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/failures.h"
#include "service/guards.h"
#include "text/text.h"

namespace orve {

using host::Richiesto;

FRMRW_OPZMAIL::FRMRW_OPZMAIL(std::shared_ptr<host::Ambiente> ambiente)
    : FinestraDelServizio(std::move(ambiente), "FRMRW_OPZMAIL", finestra_, ObjMessaggiForm) {
  Costruisci(LayoutOpzMail(), [this] {
    PrendiControlli();
    CollegaEventi();
  });
}

FRMRW_OPZMAIL::~FRMRW_OPZMAIL() {
  traccia_.Termine();
  vita_.reset();
}

void FRMRW_OPZMAIL::PrendiControlli() {
  Prendi(KVL_RESIZEFORM1, "KVL_RESIZEFORM1");
  Prendi(CMB_ACCOUNT, "CMB_ACCOUNT");
  Prendi(BTN_DEST_A, "BTN_DEST_A");
  Prendi(BTN_DEST_CC, "BTN_DEST_CC");
  Prendi(BTN_DEST_CCN, "BTN_DEST_CCN");
  Prendi(TXT_EMAIL, "TXT_EMAIL");
  Prendi(TXT_EMAIL_CC, "TXT_EMAIL_CC");
  Prendi(TXT_EMAIL_CCN, "TXT_EMAIL_CCN");
  Prendi(TXT_DITTA, "TXT_DITTA");
  Prendi(TXT_OGGETTO, "TXT_OGGETTO");
  Prendi(KVL_ALLEGA, "KVL_ALLEGA");
  Prendi(BTN_ELIMINA, "BTN_ELIMINA");
  Prendi(GRID_ALLEGATI, "GRID_ALLEGATI");
  Prendi(TXT_CORPO, "TXT_CORPO");
  Prendi(CMD_LEGENDA, "CMD_LEGENDA");
  Prendi(CHK_CORPO, "CHK_CORPO");
  Prendi(CHK_RICEVUTA, "CHK_RICEVUTA");
  Prendi(CHK_CONSEGNA, "CHK_CONSEGNA");
  Prendi(cmd_Invia, "cmd_Invia");
  Prendi(cmd_Annulla, "cmd_Annulla");
}

void FRMRW_OPZMAIL::CollegaEventi() {
  using Io = FRMRW_OPZMAIL;
  finestra_->Activate = Ascolta(vita_, &Io::Activate);
  finestra_->Unload = Ascolta(vita_, &Io::Unload);
  CHK_CORPO->Change = Ascolta(vita_, &Io::CHK_CORPO_Change);
  CMB_ACCOUNT->Change = Ascolta(vita_, &Io::CMB_ACCOUNT_Change);
  CMD_LEGENDA->MenuItemClick = AscoltaMenu(vita_, &Io::CMD_LEGENDA_MenuItemClick);
  BTN_DEST_A->MenuItemClick = AscoltaMenu(vita_, &Io::BTN_DEST_A_MenuItemClick);
  BTN_DEST_CC->MenuItemClick = AscoltaMenu(vita_, &Io::BTN_DEST_CC_MenuItemClick);
  BTN_DEST_CCN->MenuItemClick = AscoltaMenu(vita_, &Io::BTN_DEST_CCN_MenuItemClick);
  KVL_ALLEGA->ButtonClick = Ascolta(vita_, &Io::KVL_ALLEGA_ButtonClick);
  BTN_ELIMINA->BeforeShowMenuPopup = Ascolta(vita_, &Io::BTN_ELIMINA_BeforeShowMenuPopup);
  BTN_ELIMINA->MenuItemClick = AscoltaMenu(vita_, &Io::BTN_ELIMINA_MenuItemClick);
  cmd_Invia->ButtonClick = Ascolta(vita_, &Io::cmd_Invia_Click);
  cmd_Annulla->ButtonClick = [finestra = std::weak_ptr<host::Form>(finestra_)] {
    if (const auto aperta = finestra.lock()) aperta->Chiudi();
  };
}

void FRMRW_OPZMAIL::SegnalaErrore(std::string_view chiusura) {
  MostraMessaggio(TestoErrore(host::ErroreCorrente(), " ", chiusura), host::kSemplice, "", nullptr);
}

host::Variant FRMRW_OPZMAIL::NVL(const host::Variant& valore, const host::Variant& sostituto) {
  bool manca = valore.IsNull() || valore.IsEmpty();
  if (!manca) IgnoraErrori([&] { manca = text::Trim(valore.ToText()).empty(); });
  return manca ? sostituto : valore;
}

void FRMRW_OPZMAIL::Activate() try {
  ObjMessaggiForm = ambiente_->CreaMessaggi();
  if (Attivato) return;
  Attivato = true;
  PrimaAttivazione();
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: Activate");
}

void FRMRW_OPZMAIL::PrimaAttivazione() {
  auto& servizio = Servizio();
  CorpoStandard = servizio.FlgMsgPers ? servizio.MsgPers : std::string(orve::CorpoStandard());
  CostruisciMenuRubrica();
  Configura_GRID_ALLEGATI();
  LoadMailBodyParams();
  if (RstAllegati) GRID_ALLEGATI->DataSource(RstAllegati);
  BTN_ELIMINA->AddMenuItem("Elimina allegato", "Del");
  BTN_ELIMINA->AddMenuItem("Elimina tutti gli allegati", "DelAll");
  // Changing to "0" loads the standard body, changing to "1" leaves it open for editing.
  if (servizio.vFlagCorpo == 0) CHK_CORPO->Text("0");
  CHK_CORPO->Text("1");
  if (!HaAccount(servizio.SrvMailInstallato)) {
    CHK_RICEVUTA->Text(servizio.ReadReceipt ? "1" : "0");
    CHK_RICEVUTA->Enabled(!servizio.vDisableNotifyRead);
  }
  CollDestinatariForm = std::make_shared<CollDestinatari>(ambiente_);
  KVL_RESIZEFORM1->Avvia();
  CompletaTitolo(servizio.ActiveInterface);
}

void FRMRW_OPZMAIL::LoadMailBodyParams() try {
  const auto parametri = ambiente_->CreaParametri();
  const host::Variant righe = Richiesto(parametri).GetParametriCorpoMail();
  for (const auto& riga : righe.ToArray()) {
    const auto& celle = riga.ToArray();
    if (celle.size() < 2) throw host::Errore(host::kIndiceFuoriIntervallo);
    const std::string chiave = NVL(celle[1], "").ToText();
    if (!chiave.empty()) CMD_LEGENDA->AddMenuItem(celle[0].ToText(), chiave);
  }
} catch (...) {
  MostraMessaggio("Errore: " + host::ErroreCorrente().Descrizione() + " in LoadMailBodyParams",
                  host::kSemplice, "", nullptr);
}

void FRMRW_OPZMAIL::CHK_CORPO_Change() {
  const bool libero = CHK_CORPO->Text() == "1";
  TXT_CORPO->Enabled(libero);
  if (!libero) TXT_CORPO->Text(CorpoStandard);
  CMD_LEGENDA->Enabled(libero);
}

// The first character of a key is a mark of the key table, not of the placeholder.
void FRMRW_OPZMAIL::CMD_LEGENDA_MenuItemClick(const std::string& chiave) {
  std::string testo = TXT_CORPO->Text();
  TXT_CORPO->Text(testo.append(" ***(").append(text::Mid(chiave, 2)).append(")***"));
}

void FRMRW_OPZMAIL::CMB_ACCOUNT_Change(std::int16_t posizione) {
  if (posizione < 0) return;
  auto& servizio = Servizio();
  servizio.vMittente = Richiesto(servizio.vCollMittenti).Item(CMB_ACCOUNT->ItemKey(posizione));
  const auto& mittente = Richiesto(servizio.vMittente);
  CHK_RICEVUTA->Text(std::abs(mittente.ReadRcpt()) == 1 ? "1" : "0");
  CHK_RICEVUTA->Visible(mittente.ReadRcpt() >= 0);
  CHK_CONSEGNA->Text(std::abs(mittente.DeliveryStatus()) == 1 ? "1" : "0");
}

void FRMRW_OPZMAIL::Unload() {
  IgnoraErrori([&] { GRID_ALLEGATI->DataSource(nullptr); });
  if (FileAllegati) IgnoraErrori([&] { FileAllegati->Clear(); });
  FileAllegati.reset();
  IgnoraErrori([&] {
    if (RstAllegati && RstAllegati->State() == 1) RstAllegati->Close();
  });
  RstAllegati.reset();
  ActiveInterface.reset();
  Parent = nullptr;
  CollDestinatariForm.reset();
  ManagerRubrica.reset();
  ObjMessaggiForm.reset();
}

}  // namespace orve
