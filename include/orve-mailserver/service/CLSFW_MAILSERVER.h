// The service object: one sending context. A caller creates it, gives it a database connection and as many of
// the host application's objects as it has, fills subject, body, attachments and recipients, and starts a
// send.
//
// The members are in the order of the interface. A property is a pair of overloads: without an argument it
// reads, with one it writes. A field is a reference to a member inside. No failure of a send reaches the
// caller as an error: it reads Stato and Descrizione.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "orve-mailserver/addressing/destinatari.h"
#include "orve-mailserver/addressing/mittenti.h"
#include "orve-mailserver/api.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/interfaccia_host.h"
#include "orve-mailserver/host/manager_rubrica.h"
#include "orve-mailserver/host/variant.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve {

namespace host {
class Ambiente;
}

struct Interno;

/// One sending context, for one thread at a time. The objects that it is given are shared with it for as long
/// as it lives.
class ORVE_API CLSFW_MAILSERVER {
  std::unique_ptr<Interno> interno_;  // first, since the fields refer to what it holds

 public:
  /// The ambiente supplies every object that the service creates. Raises 91 when it is absent, and whatever
  /// the creation of its objects raises.
  explicit CLSFW_MAILSERVER(const std::shared_ptr<host::Ambiente>& ambiente);
  /// The same over an inside built by the library's own programs (service/interno.h).
  explicit CLSFW_MAILSERVER(std::unique_ptr<Interno> interno);
  CLSFW_MAILSERVER(const CLSFW_MAILSERVER&) = delete;
  CLSFW_MAILSERVER& operator=(const CLSFW_MAILSERVER&) = delete;
  CLSFW_MAILSERVER(CLSFW_MAILSERVER&&) = delete;
  CLSFW_MAILSERVER& operator=(CLSFW_MAILSERVER&&) = delete;
  ~CLSFW_MAILSERVER();

  /// Recipient when no collection is used; the channels store the current recipient here.
  std::string& vIndDestinatario;
  /// Display name of that recipient.
  std::string& vNome;
  /// Company of that recipient.
  std::string& vDitta;
  /// Subject of the message, on one line.
  std::string& vOggetto;
  /// Kept for the caller; nothing in the library reads it.
  std::string& vTestoMail;
  /// Path of the main attachment, the document that the send is about.
  std::string& vMailAttachment;
  /// The application's database; may be absent.
  std::shared_ptr<host::Connection>& ConnectionADO;
  /// Last result. Keeps its value when a send ends before any channel has run.
  [[nodiscard]] kvEnum_ErroreMail Stato() const;
  /// Text that goes with Stato: "Invio mail disabilitato!" after a disabled send, else empty.
  [[nodiscard]] host::Variant Descrizione() const;
  /// The entry point of every normal send: to the recipients of vCollDestinatari, or to the business partner
  /// with this code and type.
  void AvviaProceduraInvio(const std::optional<host::Variant>& codice = std::nullopt,
                           std::optional<kvTipologiaDestinatarioFAX> Tipo = std::nullopt);
  /// Non-zero: vCorpoMail is the body; 0: the body is built from the settings.
  std::int16_t& vFlagCorpo;
  /// The body, when vFlagCorpo says so: plain text, of which the channel makes HTML where the settings want
  /// it.
  std::string& vCorpoMail;
  /// The last step of every send: hands the prepared message to the channel of SrvMailInstallato.
  void InviaMail();
  /// The recipients; absent: a code and a type are given to the send instead.
  std::shared_ptr<CollDestinatari>& vCollDestinatari;
  /// The channel, as the settings name it.
  kvEnum_ServizioMail& SrvMailInstallato;
  /// The address-book object; may be absent.
  std::shared_ptr<host::ManagerRubrica>& ManagerRubrica;
  /// Code of the current company of the application.
  host::Variant& DittaCorrente;
  /// Reads the mail settings and sets channel, modes and temporary directory. The result is always empty.
  /// Raises what the database or the MAPI sign-on raises, with the procedure's name after the description.
  host::Variant GetImpostazioni();
  /// Kept for the caller; nothing in the library reads it.
  kvTipologiaAllegati& vIndTipologiaAllegati;
  /// Empty, or an array of attachment paths.
  host::Variant& vElencoAllegati;
  /// Asks for a read receipt.
  bool& ReadReceipt;
  /// A standing personal message replaces the standard body.
  bool& FlgMsgPers;
  /// The text of that message.
  std::string& MsgPers;
  ///@{
  /// Document data for the register object.
  std::string& INFO_TipoDoc;
  std::string& INFO_NumReg;
  std::string& INFO_NumDoc;
  std::string& INFO_SezDoc;
  ///@}
  /// Prepares register, user and company data, and on a channel with an account the default one. Raises what
  /// the database or the register object raises.
  void InizializzaRegistroInvioMail(const std::string& IDvoce, const std::string& UObject,
                                    const std::string& Utente, const std::string& Gruppo,
                                    const std::string& TitoloStampa);
  ///@{
  /// Who sends: name and mail address of the account.
  std::string& vSenderName;
  std::string& vSenderAddress;
  ///@}
  ///@{
  /// What the account requests, and whether the person may change it.
  bool& vNotifyDelivery;
  bool& vNotifyRead;
  bool& vDisableNotifyDelivery;
  bool& vDisableNotifyRead;
  ///@}
  /// Mails subject and body through the SMTP component and the user's default account, whatever channel is
  /// configured; an empty body is built from the settings. The two flags have no effect. True when the
  /// procedure ran to completion, even if the server refused the message: only the register records that.
  bool InviaMailSMTP(std::string vOggetto, std::string vCorpo, const bool* prioritaAlta = nullptr,
                     const bool* mailNotifica = nullptr);
  /// Adds an A recipient for InviaMailSMTP. The result is always false.
  bool AddDestinatario(const std::string& indMail, const std::string& descrDest);
  /// Appends one path to vElencoAllegati. The file is not checked.
  void AddAllegato(const std::string& FileName);
  /// The mode of this send: the one forced by the last write or, after a write of -1, the one that the
  /// settings give for deferred or direct printing.
  [[nodiscard]] kvEnumModalitaInvio ModalitaInvio() const;
  void ModalitaInvio(std::int32_t valore);
  /// Temporary directory.
  [[nodiscard]] const std::string& tempPath() const;
  /// As InizializzaRegistroInvioMail, for a user known by id.
  void InizializzaRegistroInvioMailMultiprofilo(const std::string& IDvoce, const std::string& UObject,
                                                std::int32_t IdUtente, const std::string& TitoloStampa);
  /// True: InviaMailSMTP reports its errors in the two fields below instead of by message.
  bool& silentMode;
  ///@{
  /// Text and number of the last error of a silent InviaMailSMTP; a call without an error leaves them as they
  /// are.
  std::string& errDescription;
  std::string& errNumber;
  ///@}
  ///@{
  /// Accounts offered in the dialog, and the one chosen there.
  std::shared_ptr<CollMittenti>& vCollMittenti;
  std::shared_ptr<Mittente>& vMittente;
  ///@}
  /// Answers of the parameters dialog.
  [[nodiscard]] float MailParamTipo() const;
  void MailParamTipo(float valore);
  /// Never absent: reading it while no object is held creates an empty account, which is stored and returned.
  [[nodiscard]] std::shared_ptr<Mittente> MailParamAccount();
  void MailParamAccount(std::shared_ptr<Mittente> valore);
  /// Whether a read receipt is wanted.
  [[nodiscard]] bool MailParamReadRcpt() const;
  void MailParamReadRcpt(bool valore);
  /// Whether a delivery notification is wanted.
  [[nodiscard]] bool MailParamDeliveryStatus() const;
  void MailParamDeliveryStatus(bool valore);
  /// Path of the one attachment for all messages; empty: each has its own.
  [[nodiscard]] const std::string& MailParamAllegatoUnico() const;
  void MailParamAllegatoUnico(const std::string& valore);
  /// The one body for all messages; empty: each has its own.
  [[nodiscard]] const std::string& MailParamCorpoUnico() const;
  void MailParamCorpoUnico(const std::string& valore);
  /// Certified mail: look-up, account choice and register work on the PEC data.
  [[nodiscard]] bool IsPec() const;
  void IsPec(bool valore);
  /// The parameters were set beforehand: the account choice in the dialog is shown but disabled.
  [[nodiscard]] bool IsInvioMailConParams() const;
  void IsInvioMailConParams(bool valore);
  /// Opens the parameters dialog and copies its answers into the MailParam properties, whether the person
  /// confirmed or not. Any error ends it silently.
  void ReturnMailParameters();
  /// Deferred printing: selects the mode that the settings hold for it.
  [[nodiscard]] bool IsStampaDifferita() const;
  void IsStampaDifferita(bool valore);
  /// Installation directory, resolved again at each read; raises what the path resolver raises.
  [[nodiscard]] std::string PercorsoInstallazione();
  /// Whether the person confirmed the answers.
  [[nodiscard]] bool MailParamIsValoriValidi() const;
  void MailParamIsValoriValidi(bool valore);
  ///@{
  /// Identity of a distribution list, and its kind; they are passed to the register object and have no other
  /// effect.
  [[nodiscard]] const std::string& ListaGuid() const;
  void ListaGuid(const std::string& valore);
  [[nodiscard]] std::int32_t IsLista() const;
  void IsLista(std::int32_t valore);
  ///@}
  /// Date at which a recipient code is resolved in the master data; the look-up replaces 0 with today.
  [[nodiscard]] host::DataOra DataValiditaCodiceDestinatario() const;
  void DataValiditaCodiceDestinatario(host::DataOra valore);
  ///@{
  /// The recipients and attachments as lists separated by ";", built before the event. A send appends to the
  /// recipient lists and never empties them.
  [[nodiscard]] const std::string& DestinatariA() const;
  void DestinatariA(const std::string& valore);
  [[nodiscard]] const std::string& DestinatariCC() const;
  void DestinatariCC(const std::string& valore);
  [[nodiscard]] const std::string& DestinatariCCn() const;
  void DestinatariCCn(const std::string& valore);
  [[nodiscard]] const std::string& Allegati() const;
  void Allegati(const std::string& valore);
  ///@}
  ///@{
  /// Kept for the caller; nothing in the library reads them.
  [[nodiscard]] const std::string& MailCorpo() const;
  void MailCorpo(const std::string& valore);
  [[nodiscard]] const std::string& MailOggetto() const;
  void MailOggetto(const std::string& valore);
  ///@}
  /// Name of the customer or supplier of the document.
  [[nodiscard]] const std::string& INFO_RagSocCliFor() const;
  void INFO_RagSocCliFor(const std::string& valore);
  /// Whether the text contains a well-formed address anywhere.
  bool CheckRegularMailAddress(const std::string& MailAdd);
  /// Sends at once, in every mode and without a dialog, what is given as plain text: recipients as address
  /// lists, attachments as paths separated by ";". The account matters on channels that have one. The result
  /// is in Stato. An address list that cannot be read ends it silently, and the object keeps treating its
  /// sends as direct ones: do not use it again.
  void InviaMailDiretta(std::int16_t pIdMittente = 0, std::string pDestA = {}, std::string pDestCC = {},
                        std::string pDestCCn = {}, std::string pOggetto = {}, std::string pCorpo = {},
                        std::string pAllegati = {});
  /// The host application's interface object; may be absent.
  std::shared_ptr<host::InterfacciaHost>& ActiveInterface;
  /// True: GetImpostazioni creates no Outlook or MAPI object.
  [[nodiscard]] bool InvioSMTP() const;
  void InvioSMTP(bool valore);

  /// The event: the caller's last word on subject, body, A, CC and CCn recipients and attachments, all of
  /// which it may change. An exception in the handler ends the event stage and is reported as a failure of
  /// that stage.
  std::function<void(std::string& Oggetto, std::string& Corpo, std::string& DestinatariA,
                     std::string& DestinatariCC, std::string& DestinatariCCn, std::string& Allegati)>&
      BeforeSendMail;
};

}  // namespace orve
