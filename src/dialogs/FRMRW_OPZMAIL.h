// The compose window: a person sees and changes a message before it goes out. The service creates it, gives
// it its objects, fills its controls and shows it modally; the send is started from inside the window, so
// nothing is read back when it closes.
//
// This class is the window's logic over the controls of whatever toolkit the host brings. Its procedures are
// grouped by subject: activation and body, recipients and send, attachments, address book. Before changing
// one of them, know what it does on an error: most report by message, some ignore errors statement by
// statement, and the handlers of CHK_CORPO, CMB_ACCOUNT and CMD_LEGENDA let theirs through.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dialogs/finestra_del_servizio.h"
#include "orve-mailserver/addressing/destinatari.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/griglia.h"
#include "orve-mailserver/host/manager_rubrica.h"
#include "orve-mailserver/host/oggetti_file.h"
#include "orve-mailserver/host/record_set_scollegato.h"
#include "orve-mailserver/host/variant.h"

namespace orve {

class FRMRW_OPZMAIL : public FinestraDelServizio {
 public:
  /// Builds the window without showing it. Raises 429 on a host without windows.
  explicit FRMRW_OPZMAIL(std::shared_ptr<host::Ambiente> ambiente);
  FRMRW_OPZMAIL(const FRMRW_OPZMAIL&) = delete;
  FRMRW_OPZMAIL& operator=(const FRMRW_OPZMAIL&) = delete;
  FRMRW_OPZMAIL(FRMRW_OPZMAIL&&) = delete;
  FRMRW_OPZMAIL& operator=(FRMRW_OPZMAIL&&) = delete;
  ~FRMRW_OPZMAIL();

  /// The objects of the Simple MAPI and of the Outlook channel; the window keeps them and does nothing else
  /// with them.
  std::shared_ptr<host::Oggetto> objOutlook;
  std::shared_ptr<host::Oggetto> objOutlook_00;
  std::shared_ptr<host::ManagerRubrica> ManagerRubrica;

  /// Attaches a file and shows it under `FileName`. A file that does not exist is dropped silently, and no
  /// error gets out.
  void AggiungiAllegato(const std::string& FilePath, const std::string& FileName);

  // What follows is the window's own: its steps and its state.

  void PrendiControlli();
  void CollegaEventi();

  // --- messages
  /// The exception in flight as a message without title: number, blank, description and closing text.
  void SegnalaErrore(std::string_view chiusura);
  /// The replacement for null, empty and blank values; never fails.
  [[nodiscard]] static host::Variant NVL(const host::Variant& valore, const host::Variant& sostituto);

  // --- activation and body
  void Activate();
  void PrimaAttivazione();
  void LoadMailBodyParams();
  void CHK_CORPO_Change();
  void CMB_ACCOUNT_Change(std::int16_t posizione);
  void CMD_LEGENDA_MenuItemClick(const std::string& chiave);
  void Unload();

  // --- recipients and send
  void PrepareCollDestinatari();
  void AggiornaCaselleDestinatari(const std::string& nome, const std::string& indirizzi,
                                  std::int16_t casella);
  void cmd_Invia_Click();
  [[nodiscard]] bool MancaLAccount() const;
  [[nodiscard]] bool IndirizziRegolari();
  void ConsegnaAlServizio();
  void ConsegnaRicevute();

  // --- attachments
  void Configura_GRID_ALLEGATI();
  void ImpostaRstAllegati();
  void RicaricaRstAllegati();
  void AggiungiRiga(std::int32_t indice, const std::string& testo) const;
  void KVL_ALLEGA_ButtonClick();
  void AllegaScelto(host::SelettoreFile& selettore);
  void AllegaFile(const std::shared_ptr<host::OggettoFile>& scelto);
  [[nodiscard]] bool EsisteAllegato(const std::string& nome);
  void BTN_ELIMINA_BeforeShowMenuPopup();
  void BTN_ELIMINA_MenuItemClick(const std::string& chiave);
  void EliminaAllegato_Click();
  void EliminaTuttiAllegati_Click();
  /// An array of the paths, or nothing when there are none. Raises what a file object raises, with the
  /// procedure's name after the description.
  [[nodiscard]] host::Variant GetAllegatiMultipli();

  // --- address book
  void CostruisciMenuRubrica();
  [[nodiscard]] bool CheckTobitConfig();
  void BTN_DEST_A_MenuItemClick(const std::string& chiave);
  void BTN_DEST_CC_MenuItemClick(const std::string& chiave);
  void BTN_DEST_CCN_MenuItemClick(const std::string& chiave);
  void GestisciRubrica(const std::string& chiave, std::int32_t casella);
  [[nodiscard]] bool ScegliDaRubrica(const std::string& chiave);

  std::string CorpoStandard;  // the text shown when the body returns to the default
  std::shared_ptr<CollDestinatari> CollDestinatariForm;
  bool Attivato = false;
  std::shared_ptr<host::Messaggi> ObjMessaggiForm;
  std::shared_ptr<host::CollezioneFile> FileAllegati;      // the source of truth; absent until the first file
  std::shared_ptr<host::RecordSetScollegato> RstAllegati;  // what the grid shows of it

  std::shared_ptr<host::Form> finestra_;
  std::shared_ptr<host::KVL_RESIZEFORM> KVL_RESIZEFORM1;
  std::shared_ptr<host::KVL_COMBO> CMB_ACCOUNT;
  std::shared_ptr<host::KVL_TBARMENU> BTN_DEST_A;
  std::shared_ptr<host::KVL_TBARMENU> BTN_DEST_CC;
  std::shared_ptr<host::KVL_TBARMENU> BTN_DEST_CCN;
  std::shared_ptr<host::TxtEdit> TXT_EMAIL;
  std::shared_ptr<host::TxtEdit> TXT_EMAIL_CC;
  std::shared_ptr<host::TxtEdit> TXT_EMAIL_CCN;
  std::shared_ptr<host::TxtEdit> TXT_DITTA;
  std::shared_ptr<host::TxtEdit> TXT_OGGETTO;
  std::shared_ptr<host::KVL_TBARMENU> KVL_ALLEGA;
  std::shared_ptr<host::KVL_TBARMENU> BTN_ELIMINA;
  std::shared_ptr<host::KVL_QGRIDWRAPPER> GRID_ALLEGATI;
  std::shared_ptr<host::KvlRichTextBox> TXT_CORPO;
  std::shared_ptr<host::KVL_TBARMENU> CMD_LEGENDA;
  std::shared_ptr<host::KVL_CHECKBOX> CHK_CORPO;
  std::shared_ptr<host::KVL_CHECKBOX> CHK_RICEVUTA;
  std::shared_ptr<host::KVL_CHECKBOX> CHK_CONSEGNA;
  std::shared_ptr<host::KVL_TBARMENU> cmd_Invia;
  std::shared_ptr<host::KVL_TBARMENU> cmd_Annulla;

  // The events check it, so that a window that outlives this object does not call into it.
  std::shared_ptr<FRMRW_OPZMAIL*> vita_ = std::make_shared<FRMRW_OPZMAIL*>(this);
};

}  // namespace orve
