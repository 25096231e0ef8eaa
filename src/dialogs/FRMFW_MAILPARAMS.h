// The parameters window: a person sets, once, the parameters of a send to a whole list. It sends nothing. On
// a channel with an account it offers all that the channel can ask for, on the others the attachment and the
// body alone. The answers are read after it has closed, however it was closed; IsValoriValidi says whether
// the person confirmed.
//
// Load, the two selections and both closing buttons have no error trap: their errors reach the toolkit, or
// the program's own call that raised the event.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "dialogs/finestra_del_servizio.h"
#include "orve-mailserver/addressing/mittenti.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/oggetti_file.h"

namespace orve {

class FRMFW_MAILPARAMS : public FinestraDelServizio {
 public:
  /// Builds the window without showing it. Raises 429 on a host without windows.
  explicit FRMFW_MAILPARAMS(std::shared_ptr<host::Ambiente> ambiente);
  FRMFW_MAILPARAMS(const FRMFW_MAILPARAMS&) = delete;
  FRMFW_MAILPARAMS& operator=(const FRMFW_MAILPARAMS&) = delete;
  FRMFW_MAILPARAMS(FRMFW_MAILPARAMS&&) = delete;
  FRMFW_MAILPARAMS& operator=(FRMFW_MAILPARAMS&&) = delete;
  ~FRMFW_MAILPARAMS();

  /// Lists the service's accounts of the kind chosen in a window; absent: none is listed.
  std::function<void(host::Form&)> CaricaAccount;
  bool IsValoriValidi = false;

  /// Path of the one attachment.
  [[nodiscard]] const std::string& AllegatoUnico() const { return allegatoUnico_; }
  void AllegatoUnico(const std::string& valore) { allegatoUnico_ = valore; }
  /// The one body: the text offered, before the window is shown; empty afterwards unless the person changed
  /// it.
  [[nodiscard]] const std::string& CorpoUnico() const { return corpoUnico_; }
  void CorpoUnico(const std::string& valore) { corpoUnico_ = valore; }
  /// 0 mail, 1 certified mail.
  [[nodiscard]] float Tipo() const { return tipo_; }
  void Tipo(float valore) { tipo_ = valore; }
  /// Never absent: reading it while no object is held creates an empty account, which is stored and returned.
  [[nodiscard]] std::shared_ptr<Mittente> IdAccount();
  void IdAccount(std::shared_ptr<Mittente> valore) { idAccount_ = std::move(valore); }
  [[nodiscard]] bool ReadRcpt() const { return readRcpt_; }
  void ReadRcpt(bool valore) { readRcpt_ = valore; }
  [[nodiscard]] bool DeliveryStatus() const { return deliveryStatus_; }
  void DeliveryStatus(bool valore) { deliveryStatus_ = valore; }

 private:
  void PrendiControlli();
  void CollegaEventi();

  void Load();
  void NascondiAccount();
  void OffriAccount();
  void Activate();
  void Unload();
  void RegistraControlli();
  void CMB_TIPO_Change(std::int16_t posizione);
  void CMB_ACCOUNT_Change(std::int16_t posizione);
  void KVL_ALLEGA_ButtonClick();
  void CMD_OK_ButtonClick();
  void PrendiRicevute();
  /// False when the path does not name a file; the person has then been told.
  [[nodiscard]] bool PrendiAllegato();
  void CMD_ANNULLA_ButtonClick();

  std::string allegatoUnico_;
  std::string corpoUnico_;
  float tipo_ = 0;
  std::shared_ptr<Mittente> idAccount_;
  bool readRcpt_ = false;
  bool deliveryStatus_ = false;

  std::shared_ptr<host::Messaggi> ObjMessaggiForm;

  std::shared_ptr<host::Form> finestra_;
  std::shared_ptr<host::KVL_RESIZEFORM> KVL_RESIZEFORM1;
  std::shared_ptr<host::Frame> FRM_PARAM;
  std::shared_ptr<host::KvlRichTextBox> TXT_CORPO;
  std::shared_ptr<host::KVL_TBARMENU> KVL_ALLEGA;
  std::shared_ptr<host::KVL_CHECKBOX> CHK_DELIVERY;
  std::shared_ptr<host::KVL_CHECKBOX> CHK_READ;
  std::shared_ptr<host::KVL_LABEL> KVL_LABEL3;
  std::shared_ptr<host::TxtEdit> TXT_ALLEGATO;
  std::shared_ptr<host::KVL_COMBO> CMB_ACCOUNT;
  std::shared_ptr<host::KVL_COMBO> CMB_TIPO;
  std::shared_ptr<host::KVL_LABEL> KVL_LABEL2;
  std::shared_ptr<host::KVL_LABEL> KVL_LABEL1;
  std::shared_ptr<host::KVL_TBARMENU> CMD_OK;
  std::shared_ptr<host::KVL_TBARMENU> CMD_ANNULLA;

  std::shared_ptr<FRMFW_MAILPARAMS*> vita_ = std::make_shared<FRMFW_MAILPARAMS*>(this);
};

}  // namespace orve
