// The steps of the parameters window.
#include <utility>

#include "channels/channel_traits.h"
#include "dialogs/FRMFW_MAILPARAMS.h"
#include "dialogs/layouts.h"
#include "dialogs/listener.h"
#include "dialogs/percorsi_allegati.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/failures.h"
#include "service/guards.h"
#include "text/text.h"

namespace orve {

using host::Richiesto;

FRMFW_MAILPARAMS::FRMFW_MAILPARAMS(std::shared_ptr<host::Ambiente> ambiente)
    : FinestraDelServizio(std::move(ambiente), "FRMFW_MAILPARAMS", finestra_, ObjMessaggiForm) {
  Costruisci(LayoutMailParams(), [this] {
    PrendiControlli();
    CollegaEventi();
  });
}

FRMFW_MAILPARAMS::~FRMFW_MAILPARAMS() {
  traccia_.Termine();
  vita_.reset();
}

void FRMFW_MAILPARAMS::PrendiControlli() {
  Prendi(KVL_RESIZEFORM1, "KVL_RESIZEFORM1");
  Prendi(FRM_PARAM, "FRM_PARAM");
  Prendi(TXT_CORPO, "TXT_CORPO");
  Prendi(KVL_ALLEGA, "KVL_ALLEGA");
  Prendi(CHK_DELIVERY, "CHK_DELIVERY");
  Prendi(CHK_READ, "CHK_READ");
  Prendi(KVL_LABEL3, "KVL_LABEL3");
  Prendi(TXT_ALLEGATO, "TXT_ALLEGATO");
  Prendi(CMB_ACCOUNT, "CMB_ACCOUNT");
  Prendi(CMB_TIPO, "CMB_TIPO");
  Prendi(KVL_LABEL2, "KVL_LABEL2");
  Prendi(KVL_LABEL1, "KVL_LABEL1");
  Prendi(CMD_OK, "CMD_OK");
  Prendi(CMD_ANNULLA, "CMD_ANNULLA");
}

void FRMFW_MAILPARAMS::CollegaEventi() {
  using Io = FRMFW_MAILPARAMS;
  finestra_->Load = Ascolta(vita_, &Io::Load);
  finestra_->Activate = Ascolta(vita_, &Io::Activate);
  finestra_->Unload = Ascolta(vita_, &Io::Unload);
  KVL_RESIZEFORM1->RichiestaControlli = Ascolta(vita_, &Io::RegistraControlli);
  CMB_TIPO->Change = Ascolta(vita_, &Io::CMB_TIPO_Change);
  CMB_ACCOUNT->Change = Ascolta(vita_, &Io::CMB_ACCOUNT_Change);
  KVL_ALLEGA->ButtonClick = Ascolta(vita_, &Io::KVL_ALLEGA_ButtonClick);
  CMD_OK->ButtonClick = Ascolta(vita_, &Io::CMD_OK_ButtonClick);
  CMD_ANNULLA->ButtonClick = Ascolta(vita_, &Io::CMD_ANNULLA_ButtonClick);
}

std::shared_ptr<Mittente> FRMFW_MAILPARAMS::IdAccount() {
  if (!idAccount_) idAccount_ = std::make_shared<Mittente>(ambiente_);
  return idAccount_;
}

void FRMFW_MAILPARAMS::Load() {
  ObjMessaggiForm = ambiente_->CreaMessaggi();
  if (HaAccount(Servizio().SrvMailInstallato)) {
    OffriAccount();
  } else {
    NascondiAccount();
  }
  TXT_CORPO->Text(corpoUnico_);
}

// Without a choice of account, the controls below it move up into its place.
void FRMFW_MAILPARAMS::NascondiAccount() {
  KVL_LABEL1->Visible(false);
  KVL_LABEL2->Visible(false);
  CMB_TIPO->Visible(false);
  CMB_ACCOUNT->Visible(false);
  CHK_READ->Visible(false);
  CHK_DELIVERY->Visible(false);
  TXT_CORPO->Top(KVL_ALLEGA->Top());
  KVL_ALLEGA->Top(KVL_LABEL1->Top());
  TXT_ALLEGATO->Top(CMB_TIPO->Top());
  KVL_LABEL3->Top(KVL_LABEL2->Top());
  const auto altezza = static_cast<float>(host::Variant(CMB_TIPO->Height()).ToInt16());
  FRM_PARAM->Height(FRM_PARAM->Height() - altezza);
  CMD_OK->Top(CMD_OK->Top() - altezza);
  CMD_ANNULLA->Top(CMD_ANNULLA->Top() - altezza);
  finestra_->Height(finestra_->Height() - altezza);
}

void FRMFW_MAILPARAMS::OffriAccount() {
  KVL_LABEL1->Visible(true);
  KVL_LABEL2->Visible(true);
  CMB_TIPO->Visible(true);
  CMB_ACCOUNT->Visible(true);
  CHK_READ->Visible(true);
  CHK_DELIVERY->Visible(HaTratto(Servizio().SrvMailInstallato, &ChannelTraits::ricevutaDiConsegna));
  CMB_TIPO->AddItemData("Mail", 0);
  CMB_TIPO->AddItemData("Pec", 1);
  CMB_TIPO->SelezionaPosizione(0);  // loads the accounts of this kind
}

void FRMFW_MAILPARAMS::Activate() try {
  KVL_RESIZEFORM1->Avvia();
  CompletaTitolo(ActiveInterface);
} catch (...) {
  SegnalaErroreConTitolo(" Form_Activate");
}

void FRMFW_MAILPARAMS::Unload() {
  ObjMessaggiForm.reset();
  ActiveInterface.reset();
}

void FRMFW_MAILPARAMS::RegistraControlli() {
  using Proporzioni = host::KVL_RESIZEFORM;
  constexpr std::int16_t kTutto =
      Proporzioni::kLarghezza + Proporzioni::kAltezza + Proporzioni::kSinistra + Proporzioni::kAlto;
  constexpr std::int16_t kPosto = Proporzioni::kSinistra + Proporzioni::kAlto;
  KVL_RESIZEFORM1->RegistraControllo("FRM_PARAM", kTutto);
  KVL_RESIZEFORM1->RegistraControllo("CMD_OK", kPosto);
  KVL_RESIZEFORM1->RegistraControllo("CMD_ANNULLA", kPosto);
}

// The kind takes effect at once, for the service too, even if the person cancels afterwards.
void FRMFW_MAILPARAMS::CMB_TIPO_Change(std::int16_t posizione) {
  if (posizione < 0) return;
  auto& servizio = Servizio();
  servizio.vCollMittenti.reset();
  CMB_ACCOUNT->EraseCombo();
  const std::string tipo = CMB_TIPO->Text();
  if (tipo == "0") servizio.IsPec(false);
  if (tipo == "1") servizio.IsPec(true);
  if (CaricaAccount) CaricaAccount(*finestra_);
}

void FRMFW_MAILPARAMS::CMB_ACCOUNT_Change(std::int16_t posizione) {
  if (posizione < 0) return;
  auto& servizio = Servizio();
  servizio.vMittente = Richiesto(servizio.vCollMittenti).Item(CMB_ACCOUNT->ItemKey(posizione));
}

void FRMFW_MAILPARAMS::KVL_ALLEGA_ButtonClick() try {
  const auto selettore = ambiente_->CreaSelettoreFile();
  Richiesto(selettore).Titolo("Allega file");
  if (selettore->Mostra(0) == host::SelettoreFile::kConfermato) {
    const auto scelto = selettore->FileScelto();
    if (Richiesto(scelto).Esiste()) {
      TXT_ALLEGATO->Text(scelto->Percorso());
    } else {
      MostraMessaggio("Il file selezionato è inesistente o non raggiungibile.", host::kAvviso,
                      finestra_->Caption(), nullptr);
    }
    scelto->Chiudi();
  }
  selettore->Chiudi();
} catch (...) {
  SegnalaErroreConTitolo(" KVL_ALLEGA_ButtonClick");
}

void FRMFW_MAILPARAMS::CMD_OK_ButtonClick() {
  auto& servizio = Servizio();
  if (HaAccount(servizio.SrvMailInstallato)) tipo_ = host::Variant(CMB_TIPO->Text()).ToFloat();
  PrendiRicevute();
  if (!PrendiAllegato()) return;
  // An unchanged body comes back empty: the caller only gets back a body that the person wrote.
  const std::string corpo = TXT_CORPO->Text();
  corpoUnico_ = corpo != corpoUnico_ ? corpo : std::string();
  IsValoriValidi = true;
  finestra_->Chiudi();
}

// The choice goes into the account object itself.
void FRMFW_MAILPARAMS::PrendiRicevute() {
  const auto mittente = Servizio().vMittente;
  if (!mittente) return;
  readRcpt_ = host::Variant(CHK_READ->Text()).ToBoolean();
  deliveryStatus_ = host::Variant(CHK_DELIVERY->Text()).ToBoolean();
  mittente->DeliveryStatus(host::Variant(CHK_DELIVERY->Text()).ToInt16());
  mittente->ReadRcpt(host::Variant(CHK_READ->Text()).ToInt16());
  idAccount_ = mittente;
}

bool FRMFW_MAILPARAMS::PrendiAllegato() {
  const std::string testo = TXT_ALLEGATO->Text();
  const auto percorso = text::Trim(testo);
  if (percorso.empty()) {
    allegatoUnico_.clear();
    return true;
  }
  if (percorso.find('\\') == std::string_view::npos) throw host::Errore(host::kArgomentoNonValido);
  const auto [cartella, nome] = DividiPercorso(percorso);
  const auto file = ambiente_->CreaOggettoFile();
  Richiesto(file).ApriPercorso(cartella, nome, "", 0);
  const bool daCopiare = file->Posizione() == host::OggettoFile::kDaCopiare;
  const bool esiste = file->Esiste();
  if (esiste && !daCopiare) allegatoUnico_ = file->Percorso();
  if (esiste && daCopiare) {
    const auto copia = ambiente_->CreaOggettoFile();
    Richiesto(copia).Crea(host::OggettoFile::kCopia, file->Nome(), "", 0);
    file->CopiaIn(copia, 0);
    allegatoUnico_ = copia->Percorso();
    copia->Chiudi();
  }
  file->Chiudi();
  if (!esiste) MostraMessaggio("Percorso allegato non valido.", host::kAvviso, "Avviso", nullptr);
  return esiste;
}

void FRMFW_MAILPARAMS::CMD_ANNULLA_ButtonClick() {
  const auto mittente = Servizio().vMittente;
  if (mittente) idAccount_ = mittente;
  IsValoriValidi = false;
  finestra_->Chiudi();
}

}  // namespace orve
