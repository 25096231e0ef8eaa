// The service creates a window, gives it its objects, fills it and shows it modally. The compose window calls
// back to send; the parameters window is read after it has closed.
#include "service/dialog_bridge.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "addressing/accounts.h"
#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "dialogs/FRMFW_MAILPARAMS.h"
#include "dialogs/FRMRW_OPZMAIL.h"
#include "dialogs/percorsi_allegati.h"
#include "service/failures.h"
#include "service/guards.h"

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
    if (!casella.empty()) casella.append(";");  // kept even before a recipient without an address
    if (destinatario->Indirizzo().empty()) continue;
    AccodaVoce(casella, destinatario->Nome(), destinatario->Indirizzo());
  }
  ControlloDi<host::TxtEdit>(finestra, "TXT_EMAIL")->Text(caselle[kvCasellaA]);
  ControlloDi<host::TxtEdit>(finestra, "TXT_EMAIL_CC")->Text(caselle[kvCasellaCC]);
  ControlloDi<host::TxtEdit>(finestra, "TXT_EMAIL_CCN")->Text(caselle[kvCasellaCCn]);
}

// Without a manager the application's own address book, the first entry of the three menus, cannot be used.
void PreparaRubrica(const Oggetti& oggetti, FRMRW_OPZMAIL& form) {
  if (oggetti.ManagerRubrica) {
    form.ManagerRubrica = oggetti.ManagerRubrica;
    return;
  }
  for (const char* nome : {"BTN_DEST_A", "BTN_DEST_CC", "BTN_DEST_CCN"}) {
    ControlloDi<host::KVL_TBARMENU>(form.Finestra(), nome)->EnableMenuItem(std::int16_t{1}, false);
  }
}

bool AdattaAlCanale(Interno& interno, FRMRW_OPZMAIL& form) {
  const ChannelTraits* const canale = TrattiDi(interno.impostazioni.SrvMailInstallato);
  return canale == nullptr || canale->adattaFinestra == nullptr || canale->adattaFinestra(interno, form);
}

void RiempiForm(const Messaggio& messaggio, FRMRW_OPZMAIL& form) {
  auto& finestra = form.Finestra();
  if (Richiesto(messaggio.vCollDestinatari).Count() > 0) RiempiCaselle(*messaggio.vCollDestinatari, finestra);
  ControlloDi<host::KvlRichTextBox>(finestra, "TXT_CORPO")->Text(messaggio.vCorpoMail);
  ControlloDi<host::TxtEdit>(finestra, "TXT_OGGETTO")->Text(messaggio.vOggetto);
  if (messaggio.vElencoAllegati.IsEmpty()) return;
  for (const auto& allegato : messaggio.vElencoAllegati.ToArray()) {
    const std::string percorso = allegato.Joined();
    std::string nome = DividiPercorso(percorso).nome;
    if (percorso == messaggio.vMailAttachment && !percorso.empty()) nome.append(" - Standard");
    form.AggiungiAllegato(percorso, nome);
  }
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

bool OffriMittente(const Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                   Contesto& contesto, const Oggetti& oggetti, host::Form& form) {
  const bool accountFisso = impostazioni.IsInvioMailConParams;
  Richiesto(form.Controlli("FMR_MITTENTE")).Visible(true);
  if (!LoadAccountsPerUser(messaggio, account, contesto, oggetti, form)) return false;
  Richiesto(form.Controlli("CMB_ACCOUNT")).Visible(true);
  if (accountFisso) Richiesto(form.Controlli("CMB_ACCOUNT")).Enabled(false);
  if (account.vDisableNotifyRead) Richiesto(form.Controlli("CHK_RICEVUTA")).Enabled(false);
  if (account.vDisableNotifyDelivery) Richiesto(form.Controlli("CHK_CONSEGNA")).Enabled(false);
  return true;
}

void ApriForm_OpzInvio(Interno& interno, CLSFW_MAILSERVER& servizio) {
  SegnalaErrori(PerModalita(interno.messaggio, interno.impostazioni, interno.oggetti, "ApriForm_OpzInvio",
                            " ", " ORVE_MAILSERVER: CLSFW_MAILSERVER: ApriForm_OpzInvio"),
                [&] {
                  FRMRW_OPZMAIL form(interno.oggetti.ambiente);
                  form.Parent = &servizio;
                  form.ActiveInterface = interno.oggetti.ActiveInterface;
                  PreparaRubrica(interno.oggetti, form);
                  if (AdattaAlCanale(interno, form)) {
                    RiempiForm(interno.messaggio, form);
                    form.Finestra().Show(host::Form::kModale, nullptr);
                  }
                  form.ActiveInterface.reset();
                });
}

void ReturnMailParameters(Interno& interno, CLSFW_MAILSERVER& servizio) {
  IgnoraErrori([&] {
    ParametriMail& parametri = interno.parametri;
    FRMFW_MAILPARAMS form(interno.oggetti.ambiente);
    form.Parent = &servizio;
    form.CaricaAccount = [&](host::Form& finestra) {
      LoadAccountsPerUser(interno.messaggio, interno.account, interno.contesto, interno.oggetti, finestra);
    };
    form.ActiveInterface = interno.oggetti.ActiveInterface;
    form.CorpoUnico(parametri.CorpoUnico);
    form.Finestra().Show(host::Form::kModale, nullptr);
    parametri.Tipo = form.Tipo();
    parametri.Account = HaAccount(interno.impostazioni.SrvMailInstallato) ? form.IdAccount() : nullptr;
    parametri.AllegatoUnico = form.AllegatoUnico();
    parametri.CorpoUnico = form.CorpoUnico();
    parametri.ReadRcpt = form.ReadRcpt();
    parametri.DeliveryStatus = form.DeliveryStatus();
    parametri.IsValoriValidi = form.IsValoriValidi;
    form.ActiveInterface.reset();
  });
}

}  // namespace orve
