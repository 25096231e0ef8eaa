// The service object: one sending context. A caller creates it, gives it a database connection and as many of
// the host application's objects as it has, fills subject, body, attachments and recipients, and starts a
// send.
//
// All state of a send lives in the fields of this one class. The public members stand in the order of its
// interface; private fields and procedures follow by subject, and each procedure is defined in the folder of
// its subject. A property is a pair of overloads: without an argument it reads, with one it writes. Nothing
// of a send reaches the caller as an error: it reads Stato and Descrizione.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addressing/recipients.h"
#include "addressing/senders.h"
#include "content/instance_trace.h"
#include "host/ambiente.h"
#include "host/connection.h"
#include "host/controlli.h"
#include "host/errore.h"
#include "host/interfaccia_host.h"
#include "host/manager_rubrica.h"
#include "host/variant.h"
#include "service/enumerations.h"

namespace orve {

struct ElenchiDestinatari;
struct RigheInvio;
class FRMFW_MAILPARAMS;
class FRMRW_OPZMAIL;

class CLSFW_MAILSERVER {
 public:
  /// The ambiente gives the service every object that it makes by itself. Raises 91 when it is absent, and
  /// what the making of its objects raises.
  explicit CLSFW_MAILSERVER(std::shared_ptr<host::Ambiente> ambiente);
  CLSFW_MAILSERVER(const CLSFW_MAILSERVER&) = delete;
  CLSFW_MAILSERVER& operator=(const CLSFW_MAILSERVER&) = delete;
  CLSFW_MAILSERVER(CLSFW_MAILSERVER&&) = delete;
  CLSFW_MAILSERVER& operator=(CLSFW_MAILSERVER&&) = delete;
  ~CLSFW_MAILSERVER();

  /// Recipient when no collection is used; the channels store the current recipient here.
  std::string vIndDestinatario;
  std::string vNome;
  std::string vDitta;
  std::string vOggetto;
  /// Held for the caller; nothing in the library reads it.
  std::string vTestoMail;
  /// Path of the main attachment, the document that the send is about.
  std::string vMailAttachment;
  /// The application's database; may be absent.
  std::shared_ptr<host::Connection> ConnectionADO;
  /// Last result. It keeps its value when a send ends without a channel having run.
  [[nodiscard]] kvEnum_ErroreMail Stato() const { return StatoInvio; }
  /// Text that goes with Stato: "Invio mail disabilitato!" after a disabled send, else empty.
  [[nodiscard]] host::Variant Descrizione() const { return DescrizioneInvio; }
  /// The entry of every normal send: to the recipients of vCollDestinatari, or to the business partner with
  /// this code and type.
  void AvviaProceduraInvio(const std::optional<host::Variant>& codice = std::nullopt,
                           std::optional<kvTipologiaDestinatarioFAX> Tipo = std::nullopt);
  /// Not 0: vCorpoMail is the body; 0: the body is built from the settings.
  std::int16_t vFlagCorpo = 0;
  std::string vCorpoMail;
  /// The last step of every send: hands the prepared message to the channel of SrvMailInstallato.
  void InviaMail();
  std::shared_ptr<CollDestinatari> vCollDestinatari;
  kvEnum_ServizioMail SrvMailInstallato = kvSimpleMAPI;
  /// The address-book object; may be absent.
  std::shared_ptr<host::ManagerRubrica> ManagerRubrica;
  /// Code of the current company of the application.
  host::Variant DittaCorrente;
  /// Reads the mail settings and fixes channel, modes and temporary directory. The result is always empty.
  /// Raises what the database or the MAPI sign-on raises, with the procedure's name behind the description.
  host::Variant GetImpostazioni();
  /// Held for the caller; nothing in the library reads it.
  kvTipologiaAllegati vIndTipologiaAllegati = kvSingoloAllegato;
  /// Empty, or an array of attachment paths.
  host::Variant vElencoAllegati;
  bool ReadReceipt = false;
  /// A standing personal message replaces the standard body.
  bool FlgMsgPers = false;
  std::string MsgPers;
  /// Document data for the register object.
  std::string INFO_TipoDoc;
  std::string INFO_NumReg;
  std::string INFO_NumDoc;
  std::string INFO_SezDoc;
  /// Prepares register, user and company data, and on the SMTP channels the default account. Raises what the
  /// database or the register object raises.
  void InizializzaRegistroInvioMail(const std::string& IDvoce, const std::string& UObject,
                                    const std::string& Utente, const std::string& Gruppo,
                                    const std::string& TitoloStampa);
  std::string vSenderName;
  std::string vSenderAddress;
  /// Wishes of the account, and whether the person may change them.
  bool vNotifyDelivery = false;
  bool vNotifyRead = false;
  bool vDisableNotifyDelivery = false;
  bool vDisableNotifyRead = false;
  /// Mails subject and body through the SMTP component and the user's default account, whatever the channel
  /// of the settings is; an empty body is built from the settings. The two flags have no effect. True when
  /// the procedure ran to its end, also if the server refused the message: only the register tells of that.
  bool InviaMailSMTP(std::string vOggetto, std::string vCorpo, const bool* prioritaAlta = nullptr,
                     const bool* mailNotifica = nullptr);
  /// Adds an A recipient for InviaMailSMTP. The answer is false in every case.
  bool AddDestinatario(const std::string& indMail, const std::string& descrDest);
  /// Appends one path to vElencoAllegati. The file is not looked at.
  void AddAllegato(const std::string& FileName);
  /// The mode of this send: the one forced by the last write, or after a write of -1 the one that the
  /// settings give for deferred or direct print.
  [[nodiscard]] kvEnumModalitaInvio ModalitaInvio() const;
  void ModalitaInvio(std::int32_t valore) { IndModalitaInvio = valore; }
  /// Temporary directory.
  [[nodiscard]] const std::string& tempPath() const { return PathTemp; }
  /// As InizializzaRegistroInvioMail, for a user known by id.
  void InizializzaRegistroInvioMailMultiprofilo(const std::string& IDvoce, const std::string& UObject,
                                                std::int32_t IdUtente, const std::string& TitoloStampa);
  /// True: InviaMailSMTP reports its errors in the two fields below instead of by message.
  bool silentMode = false;
  std::string errDescription;
  std::string errNumber;
  /// Accounts offered in the dialog, and the one chosen there.
  std::shared_ptr<CollMittenti> vCollMittenti;
  std::shared_ptr<Mittente> vMittente;
  /// Answers of the parameters dialog.
  [[nodiscard]] float MailParamTipo() const { return mailParamTipo_; }
  void MailParamTipo(float valore) { mailParamTipo_ = valore; }
  /// Never absent: a read while no object is held creates an empty account, stores and returns it.
  [[nodiscard]] std::shared_ptr<Mittente> MailParamAccount();
  void MailParamAccount(std::shared_ptr<Mittente> valore) { mailParamAccount_ = std::move(valore); }
  [[nodiscard]] bool MailParamReadRcpt() const { return mailParamReadRcpt_; }
  void MailParamReadRcpt(bool valore) { mailParamReadRcpt_ = valore; }
  [[nodiscard]] bool MailParamDeliveryStatus() const { return mailParamDeliveryStatus_; }
  void MailParamDeliveryStatus(bool valore) { mailParamDeliveryStatus_ = valore; }
  [[nodiscard]] const std::string& MailParamAllegatoUnico() const { return mailParamAllegatoUnico_; }
  void MailParamAllegatoUnico(const std::string& valore) { mailParamAllegatoUnico_ = valore; }
  [[nodiscard]] const std::string& MailParamCorpoUnico() const { return mailParamCorpoUnico_; }
  void MailParamCorpoUnico(const std::string& valore) { mailParamCorpoUnico_ = valore; }
  /// Certified mail: look-up, account choice and register work on the PEC data.
  [[nodiscard]] bool IsPec() const { return isPec_; }
  void IsPec(bool valore) { isPec_ = valore; }
  /// The parameters were fixed beforehand: the account choice in the dialog is shown but disabled.
  [[nodiscard]] bool IsInvioMailConParams() const { return isInvioMailConParams_; }
  void IsInvioMailConParams(bool valore) { isInvioMailConParams_ = valore; }
  /// Opens the parameters dialog and copies its answers into the MailParam properties, whether the person
  /// confirmed or not. Ends silently on any error.
  void ReturnMailParameters();
  /// Deferred print: selects the mode that the settings keep for it.
  [[nodiscard]] bool IsStampaDifferita() const { return isStampaDifferita_; }
  void IsStampaDifferita(bool valore) { isStampaDifferita_ = valore; }
  /// Installation directory, resolved anew at each read; raises what the path resolver raises.
  [[nodiscard]] std::string PercorsoInstallazione();
  [[nodiscard]] bool MailParamIsValoriValidi() const { return mailParamIsValoriValidi_; }
  void MailParamIsValoriValidi(bool valore) { mailParamIsValoriValidi_ = valore; }
  /// Identity of a distribution list, and its kind; they travel to the register object and have no other
  /// effect.
  [[nodiscard]] const std::string& ListaGuid() const { return listaGuid_; }
  void ListaGuid(const std::string& valore) { listaGuid_ = valore; }
  [[nodiscard]] std::int32_t IsLista() const { return isLista_; }
  void IsLista(std::int32_t valore) { isLista_ = valore; }
  /// Date at which a recipient code is resolved in the master data; the look-up replaces 0 by today.
  [[nodiscard]] host::DataOra DataValiditaCodiceDestinatario() const {
    return dataValiditaCodiceDestinatario_;
  }
  void DataValiditaCodiceDestinatario(host::DataOra valore) { dataValiditaCodiceDestinatario_ = valore; }
  /// The recipients and attachments as lists separated by ";", built before the event. The recipient lists
  /// are added to, never emptied, by a send.
  [[nodiscard]] const std::string& DestinatariA() const { return destinatariA_; }
  void DestinatariA(const std::string& valore) { destinatariA_ = valore; }
  [[nodiscard]] const std::string& DestinatariCC() const { return destinatariCC_; }
  void DestinatariCC(const std::string& valore) { destinatariCC_ = valore; }
  [[nodiscard]] const std::string& DestinatariCCn() const { return destinatariCCn_; }
  void DestinatariCCn(const std::string& valore) { destinatariCCn_ = valore; }
  [[nodiscard]] const std::string& Allegati() const { return allegati_; }
  void Allegati(const std::string& valore) { allegati_ = valore; }
  /// Held for the caller; nothing in the library reads them.
  [[nodiscard]] const std::string& MailCorpo() const { return mailCorpo_; }
  void MailCorpo(const std::string& valore) { mailCorpo_ = valore; }
  [[nodiscard]] const std::string& MailOggetto() const { return mailOggetto_; }
  void MailOggetto(const std::string& valore) { mailOggetto_ = valore; }
  /// Name of the customer or supplier of the document.
  [[nodiscard]] const std::string& INFO_RagSocCliFor() const { return infoRagSocCliFor_; }
  void INFO_RagSocCliFor(const std::string& valore) { infoRagSocCliFor_ = valore; }
  /// Whether the text holds a well-formed address anywhere.
  bool CheckRegularMailAddress(const std::string& MailAdd);
  /// Sends at once, in every mode and without a dialog, what stands in plain texts: recipients as address
  /// lists, attachments as paths separated by ";". The account counts on the SMTP channels only. The result
  /// stands in Stato. An address list that cannot be read ends it in silence, and the object goes on taking
  /// its sends for direct ones: it should not be used again.
  void InviaMailDiretta(std::int16_t pIdMittente = 0, std::string pDestA = {}, std::string pDestCC = {},
                        std::string pDestCCn = {}, std::string pOggetto = {}, std::string pCorpo = {},
                        std::string pAllegati = {});
  /// The host application's interface object; may be absent.
  std::shared_ptr<host::InterfacciaHost> ActiveInterface;
  /// True: GetImpostazioni creates no Outlook or MAPI object.
  [[nodiscard]] bool InvioSMTP() const { return invioSMTP_; }
  void InvioSMTP(bool valore) { invioSMTP_ = valore; }

  /// The event: the caller's last word on subject, body, A, CC and CCn recipients and attachments, all of
  /// which it may change. An exception in the handler ends the event stage and is reported as the stage's
  /// failure.
  std::function<void(std::string& Oggetto, std::string& Corpo, std::string& DestinatariA,
                     std::string& DestinatariCC, std::string& DestinatariCCn, std::string& Allegati)>
      BeforeSendMail;

 private:
  friend struct AccessoInterno;   // tests of single procedures
  friend class FRMFW_MAILPARAMS;  // loads the accounts of the kind chosen

  // --- service: messages and failures
  std::int32_t MostraMessaggio(const std::string& testo, std::int32_t stile, const std::string& titolo,
                               const std::shared_ptr<host::Oggetto>& proprietario);
  /// Number, separator, description and closing text as one message, style 0, without title and owner.
  void MostraErrore(const host::Errore& errore, std::string_view separatore, std::string_view chiusura);
  /// The way in which most procedures of a send end on an error: unattended a line in the send log with
  /// status 2 and the procedure's name, with kvManuale the message above.
  void SegnalaPerModalita(const host::Errore& errore, const std::string& procedura,
                          std::string_view separatore, std::string_view chiusura);

  // --- service: settings
  void LeggiImpostazioni();
  void ImpostazioniPredefinite();
  void LeggiRigaImpostazioni(const host::RecordSet& riga);
  void CreaOggettoDelCanale();
  [[nodiscard]] std::string GetPathTemp();
  [[nodiscard]] std::string GetPercorsoInstallazione();

  // --- service: send procedure
  /// InviaMail, which reports by mode and raises only what the report raises.
  void ConsegnaAlCanale();
  void PreparaMessaggioSimpleMAPI();
  void InviaACollezione();
  void InviaARicerca(const std::optional<host::Variant>& codice,
                     std::optional<kvTipologiaDestinatarioFAX> tipo);
  bool UnisciNomiEIndirizzi();
  bool IndirizziRegolari();
  void RegistraRifiuto(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                       const host::TestoOAssente& indirizzo, const host::TestoOAssente& allegato,
                       const std::string& testo);

  // --- service: before-send event
  void GestioneEventoBeforeSendMail();
  void BeforeDestinatari();
  void BeforeAllegati();
  void AfterDestinatari();
  void AfterAllegati();
  /// Makes vElencoAllegati of a list of paths; vMailAttachment is emptied when it is not among them.
  void RiprendiAllegati(const std::string& elenco);

  // --- service: direct send
  /// The lists A, CC and CCn, in this order.
  void LeggiDestinatariDiretti(const std::array<std::string, 3>& elenchi);
  /// Ready for a dialog that records its cancellation; nothing calls it at present.
  void RegistraAnnullamentoDaUtente();

  // --- service: dialog bridge
  /// Shows the compose dialog and returns when the person has left it, or at once without an account.
  void ApriForm_OpzInvio();
  void PreparaRubrica(FRMRW_OPZMAIL& form);
  bool PreparaCanale(FRMRW_OPZMAIL& form);
  bool OffriMittente(host::Form& finestra);
  void RiempiForm(FRMRW_OPZMAIL& form);

  // --- addressing: look-up
  /// 0 found, 1 no record or failure, 2 no address in the record, empty: no value.
  host::Variant GetDatiDestinatario(const host::Variant& codice, std::optional<std::int32_t> Tipo);
  host::Variant CercaDestinatario(const host::Variant& codice, std::int32_t tipo);
  host::Variant CercaInAnagrafica(const std::string& statement);
  host::Variant CercaContatto(const std::string& codice);
  host::Variant CercaDestinazione(const std::string& testo);
  host::Variant CercaNelTesto(const std::string& testo);
  [[nodiscard]] std::string DataValiditaDB();

  // --- addressing: accounts
  void CaricaAccountPredefinito();
  void CercaAccountPredefinito();
  void CaricaAccountDaId();
  void CercaAccountDaId();
  void LeggiAccount(host::RecordSet& risultato, const std::string& indirizzo, const std::string& nome);
  bool LoadAccountsPerUser(host::Form& form);
  void CercaAccountPerUtente(host::Form& form);
  void ElencaAccount(host::RecordSet& risultato, host::KVL_COMBO& combo);
  std::int16_t AggiungiAccount(const host::RecordSet& riga, host::KVL_COMBO& combo);
  [[nodiscard]] std::string DecriptaPassword(const std::string& testo);
  [[nodiscard]] std::string CriptaPassword(const std::string& testo);

  // --- addressing: user, group and company
  [[nodiscard]] std::int32_t GetIdUtente();
  void ImpostaIdUtente(std::int32_t id);
  [[nodiscard]] std::string GetUtenteApplicazione();
  [[nodiscard]] std::string GetGruppoPreferito();
  [[nodiscard]] std::string GetCodiceUtente(std::int32_t id);
  [[nodiscard]] std::string GetCodiceGruppo(std::int32_t id);
  [[nodiscard]] std::string LeggiCodiceUtente(std::string_view colonna, std::int32_t id) const;
  void CercaIdUtente();
  void CaricaDatiAziendaCorrente();
  void CreaRegistroInvio();

  // --- channels
  void SendWithSmtp();
  void ConsegnaConSmtp();
  void ApplicaMittenteScelto();
  /// `mittente` is what the register is told of the way of sending.
  void RegistraEsitoSmtp(const host::Variant& risultato, const std::string& mittente,
                         const RigheInvio& righe);
  /// One register line and one event 89 for each recipient; an absent `esito` is empty in the event.
  void RegistraDestinatari(host::RegistroInvio& registro, const RigheInvio& righe,
                           const host::TestoOAssente& esito);
  /// The component's GetLastError, or empty after an error caught inside.
  [[nodiscard]] host::Variant InviaMailConSSL(
      const std::shared_ptr<host::ComponenteSmtp>& componente, const std::string& server, std::int16_t porta,
      bool autenticazione, std::int16_t crypt, const std::string& utente, const std::string& password,
      const std::string& mittente, const std::string& elencoA, const std::string& elencoCC,
      const std::string& oggetto, const std::string& corpo, bool ricevuta, const std::string& elencoCCn);
  void ImpostaServerSmtp(host::ComponenteSmtp& componente, const std::string& server, std::int16_t porta,
                         bool autenticazione, std::int16_t crypt);
  void ImpostaCorpoSmtp(host::ComponenteSmtp& componente, const std::string& corpo);
  /// The paths attached, joined by "|".
  [[nodiscard]] std::string AddAdditionalAttachmentSMTP(
      const std::shared_ptr<host::ComponenteSmtp>& componente);
  [[nodiscard]] std::string GetSMTPErrorDescription(std::int16_t codice);
  void SendWithOutlook();
  void ConsegnaConOutlook();
  void ComponiMessaggioOutlook(const std::string& mittente);
  void RegistraInvioOutlook(const std::string& mittente, const std::string& allegati);
  /// The paths attached, joined by "|": those up to the first that is refused.
  [[nodiscard]] std::string AddAllegatiOutlook(const std::shared_ptr<host::OutlookAttachments>& allegati);
  void SendWithSimpleMAPI();
  /// `allegati` is what could be attached, also when an error ends the delivery.
  void ConsegnaConSimpleMAPI(std::string& allegati);
  void ComponiDestinatariSimpleMAPI();
  void RegistraEsitoSimpleMAPI(host::EsitoInvio esito, const std::string& allegati);
  [[nodiscard]] std::string AddAllegatiSimpleMAPI(const std::shared_ptr<host::MAPIMessages>& messaggio);
  void SendMailMAPI();
  void ConsegnaConMAPI();
  void InviaConMAPI(host::Mapi32& mapi);
  [[nodiscard]] std::vector<host::MapiRecip> ComponiDestinatariMAPI();
  [[nodiscard]] std::vector<host::MapiFile> PreparaAllegatiMAPI();
  void RegistraEsitoMAPI(bool inviato, const std::string& allegati);
  void ConsegnaDaSola(const std::string& oggetto, const std::string& corpo);
  void ComponiElenchiDaSola(ElenchiDestinatari& elenchi);

  // --- content: body
  [[nodiscard]] std::string GetCorpoMail();
  [[nodiscard]] std::string GetCorpoStandard();
  [[nodiscard]] std::string CompilaTestoMail(const std::string& testo);
  [[nodiscard]] bool EsisteParamHTMLFW95();
  [[nodiscard]] std::string TabellaFirmeFW95();
  [[nodiscard]] std::string GetFirmaUtente(const std::string& tabella, std::string& font,
                                           std::int16_t& dimensione) const;
  [[nodiscard]] std::string TestoInHTML(const std::string& testo, const std::string& font,
                                        std::int32_t dimensione);
  /// The body as an HTML document, with the user's signature behind it.
  [[nodiscard]] std::string CorpoHTMLConFirma(const std::string& corpo);

  // --- content: records
  void ScriviLogInvio(std::int32_t stato, const std::string& metodo);
  void AccodaAlLog(std::int32_t stato, const std::string& metodo);
  [[nodiscard]] std::string ComponiRigaLog(std::int32_t stato, const std::string& metodo);
  void AttivaEventoGestionale(std::int32_t codice, const std::string& destinatario,
                              const std::string& azienda, const std::string& indirizzo,
                              const std::string& allegato, const std::string& esito,
                              const std::string& oggetto);
  [[nodiscard]] host::Variant GetUserIDFromConnection() const;
  [[nodiscard]] std::string ComponiParametriEvento(std::int32_t idUtente, std::int32_t codice,
                                                   const std::string& destinatario,
                                                   const std::string& azienda, const std::string& indirizzo,
                                                   const std::string& allegato, const std::string& esito,
                                                   const std::string& oggetto);
  /// The value in the form of a statement; empty when it has none. tipo 0 text, 1 decimal, 2 number through
  /// the formatter, 3 date.
  [[nodiscard]] host::Variant FormatoDB(const host::Variant& valore, std::int32_t tipo, bool ammetteNull);
  [[nodiscard]] host::Variant FormatoDBAssente(std::int32_t tipo, bool ammetteNull);
  [[nodiscard]] host::Variant FormatoDBPresente(const host::Variant& valore, std::int32_t tipo);

  // --- fields: host objects
  std::shared_ptr<host::Ambiente> ambiente_;
  TracciaIstanza traccia_;
  std::shared_ptr<host::Messaggi> ObjMessaggi;
  std::shared_ptr<host::RegistroInvio> ObjRegistroInvio;
  std::shared_ptr<host::FormatoData> ObjFormatoData;
  std::shared_ptr<host::FormatoNumero> ObjFormatoNumero;
  std::shared_ptr<host::OutlookApplication> objOutlookApp;
  std::shared_ptr<host::OutlookMailItem> objOutlookItem;
  std::shared_ptr<host::OutlookAttachments> objOutlookAllegati;
  std::shared_ptr<host::MAPISession> objMapiSession;
  std::shared_ptr<host::MAPIMessages> objMapiMessages;
  host::Variant MapiSessionID;

  // --- fields: results
  kvEnum_ErroreMail StatoInvio = kvOK;
  host::Variant DescrizioneInvio;

  // --- fields: modes, settings and flags of a send
  std::int32_t IndModalitaInvio = -1;  // -1: no forced mode
  std::int32_t ModalitaStampaDifferita = 0;
  std::int32_t ModalitaStandard = 0;
  std::string PathTemp;
  bool FlagBcc = false;            // the sender gets a copy
  bool UsaMittenteScelto = false;  // the SMTP channel takes its account from vMittente; never cleared
  bool FlagInvioDiretto = false;   // a direct send is running
  std::int16_t IdMittenteDiretto = 0;
  std::shared_ptr<CollDestinatari> CollDestinatariCopia;  // the recipients before the event

  // --- fields: account of the SMTP channels
  std::string SmtpServer;  // not empty: an account is loaded
  std::int16_t SmtpPorta = 0;
  std::int16_t SmtpTimeout = 0;
  std::string SmtpUtente;
  std::string SmtpPassword;
  std::int16_t SmtpAuth = 0;
  std::int16_t SmtpCrypt = 0;

  // --- fields: user, group and company
  std::string CodiceUtente;
  std::string CodiceGruppo;
  std::int32_t IdUtenteCorrente = 0;  // 0: not known
  std::string DescUtenteCorrente;
  std::string DescGruppoCorrente;
  std::string AziendaCorr;
  std::string AzCorrInd;
  std::string AzCorrCAP;
  std::string AzCorrCitta;
  std::string AzCorrProv;
  std::string AzCorrMail;

  // --- fields: send log
  std::shared_ptr<host::FileSystem> objFileSystem;
  std::shared_ptr<host::TextStream> objTextStream;
  std::string PercorsoLog;
  std::string CartellaLog;

  // --- fields: behind the properties
  float mailParamTipo_ = 0;
  std::shared_ptr<Mittente> mailParamAccount_;
  bool mailParamReadRcpt_ = false;
  bool mailParamDeliveryStatus_ = false;
  std::string mailParamAllegatoUnico_;
  std::string mailParamCorpoUnico_;
  bool isPec_ = false;
  bool isInvioMailConParams_ = false;
  bool isStampaDifferita_ = false;
  bool mailParamIsValoriValidi_ = false;
  std::string listaGuid_;
  std::int32_t isLista_ = 0;
  host::DataOra dataValiditaCodiceDestinatario_;
  std::string destinatariA_;
  std::string destinatariCC_;
  std::string destinatariCCn_;
  std::string allegati_;
  std::string mailCorpo_;
  std::string mailOggetto_;
  std::string infoRagSocCliFor_;
  bool invioSMTP_ = false;
};

}  // namespace orve
