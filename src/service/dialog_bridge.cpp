// Where the service and its two windows meet. The service creates a window, gives it its objects, fills it
// and shows it modally. The compose window calls back to send; the parameters window is read after it has
// closed.
#include "service/dialog_bridge.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "dialogs/FRMFW_MAILPARAMS.h"
#include "dialogs/FRMRW_OPZMAIL.h"
#include "dialogs/attachment_paths.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"

namespace orve {

namespace {

using host::ControlloDi;
using host::Richiesto;

void RiempiCaselle(const CollDestinatari& destinatari, host::Form& finestra) {
  std::array<std::string, 3> caselle;
  for (const auto& destinatario : destinatari) {
    const std::int16_t numero = destinatario->Casella();
    if (numero < kvCasellaA || numero > kvCasellaCCn) continue;
    auto& casella = caselle.at(static_cast<std::size_t>(numero));
    if (!casella.empty()) casella.append(";");  // stays also in front of a recipient without an address
    if (destinatario->Indirizzo().empty()) continue;
    casella.append(destinatario->Nome()).append("<").append(destinatario->Indirizzo()).append(">");
  }
  ControlloDi<host::TxtEdit>(finestra, "TXT_EMAIL")->Text(caselle[kvCasellaA]);
  ControlloDi<host::TxtEdit>(finestra, "TXT_EMAIL_CC")->Text(caselle[kvCasellaCC]);
  ControlloDi<host::TxtEdit>(finestra, "TXT_EMAIL_CCN")->Text(caselle[kvCasellaCCn]);
}

}  // namespace

void NascondiMittente(host::Form& form) {
  for (const char* nome : {"FMR_MITTENTE", "LBL_MITTENTE", "CMB_ACCOUNT", "CHK_CONSEGNA", "CHK_RICEVUTA"}) {
    Richiesto(form.Controlli(nome)).Visible(false);
  }
  auto& mittente = Richiesto(form.Controlli("FMR_MITTENTE"));
  const std::int16_t scarto = host::Variant(mittente.Top() + mittente.Height()).ToInt16();
  for (const char* nome : {"FMR_DESTINATARIO", "FMR_PERS", "cmd_Invia", "CMD_ANNULLA"}) {
    auto& controllo = Richiesto(form.Controlli(nome));
    controllo.Top(controllo.Top() - static_cast<float>(scarto));
  }
  form.Height(form.Height() - static_cast<float>(scarto));
}

void CLSFW_MAILSERVER::ApriForm_OpzInvio() try {
  FRMRW_OPZMAIL form(ambiente_);
  form.Parent = this;
  form.ActiveInterface = ActiveInterface;
  PreparaRubrica(form);
  if (PreparaCanale(form)) {
    RiempiForm(form);
    form.Finestra().Show(host::Form::kModale, nullptr);
  }
  form.ActiveInterface.reset();
} catch (...) {
  SegnalaPerModalita(host::ErroreCorrente(), "ApriForm_OpzInvio", " ",
                     " ORVE_MAILSERVER: CLSFW_MAILSERVER: ApriForm_OpzInvio");
}

// Without a manager the application's own book, the first entry of the three menus, cannot be used.
void CLSFW_MAILSERVER::PreparaRubrica(FRMRW_OPZMAIL& form) {
  if (ManagerRubrica) {
    form.ManagerRubrica = ManagerRubrica;
    return;
  }
  for (const char* nome : {"BTN_DEST_A", "BTN_DEST_CC", "BTN_DEST_CCN"}) {
    ControlloDi<host::KVL_TBARMENU>(form.Finestra(), nome)->EnableMenuItem(std::int16_t{1}, false);
  }
}

// The shape of the window for the channel. False when the person has no account to send from, and has been
// told so.
bool CLSFW_MAILSERVER::PreparaCanale(FRMRW_OPZMAIL& form) {
  auto& finestra = form.Finestra();
  switch (SrvMailInstallato) {
    case kvSimpleMAPI:
      NascondiMittente(finestra);
      form.objOutlook = objMapiMessages;
      return true;
    case kvOutlook:
      NascondiMittente(finestra);
      form.objOutlook_00 = objOutlookApp;
      return true;
    case kvMAPI:
      NascondiMittente(finestra);
      return true;
    case kvSMTPMail:
    case kvSMTPSSLMail:
      return OffriMittente(finestra);
    default:
      return true;
  }
}

bool CLSFW_MAILSERVER::OffriMittente(host::Form& finestra) {
  const bool accountFisso = IsInvioMailConParams();
  Richiesto(finestra.Controlli("FMR_MITTENTE")).Visible(true);
  if (!LoadAccountsPerUser(finestra)) return false;
  Richiesto(finestra.Controlli("CMB_ACCOUNT")).Visible(true);
  if (accountFisso) Richiesto(finestra.Controlli("CMB_ACCOUNT")).Enabled(false);
  if (vDisableNotifyRead) Richiesto(finestra.Controlli("CHK_RICEVUTA")).Enabled(false);
  if (vDisableNotifyDelivery) Richiesto(finestra.Controlli("CHK_CONSEGNA")).Enabled(false);
  return true;
}

void CLSFW_MAILSERVER::RiempiForm(FRMRW_OPZMAIL& form) {
  auto& finestra = form.Finestra();
  if (Richiesto(vCollDestinatari).Count() > 0) RiempiCaselle(*vCollDestinatari, finestra);
  ControlloDi<host::KvlRichTextBox>(finestra, "TXT_CORPO")->Text(vCorpoMail);
  ControlloDi<host::TxtEdit>(finestra, "TXT_OGGETTO")->Text(vOggetto);
  if (vElencoAllegati.IsEmpty()) return;
  for (const auto& allegato : std::as_const(vElencoAllegati).ToArray()) {
    const std::string percorso = allegato.Joined();
    std::string nome = DividiPercorso(percorso).nome;
    if (percorso == vMailAttachment && !percorso.empty()) nome.append(" - Standard");
    form.AggiungiAllegato(percorso, nome);
  }
}

// The answers are copied whether the person confirmed or not. An error ends it silently where it stands.
void CLSFW_MAILSERVER::ReturnMailParameters() {
  IgnoraErrori([this] {
    FRMFW_MAILPARAMS form(ambiente_);
    form.Parent = this;
    form.ActiveInterface = ActiveInterface;
    form.CorpoUnico(MailParamCorpoUnico());
    form.Finestra().Show(host::Form::kModale, nullptr);
    MailParamTipo(form.Tipo());
    MailParamAccount(CanaleSmtp(SrvMailInstallato) ? form.IdAccount() : nullptr);
    MailParamAllegatoUnico(form.AllegatoUnico());
    MailParamCorpoUnico(form.CorpoUnico());
    MailParamReadRcpt(form.ReadRcpt());
    MailParamDeliveryStatus(form.DeliveryStatus());
    MailParamIsValoriValidi(form.IsValoriValidi);
    form.ActiveInterface.reset();
  });
}

}  // namespace orve
