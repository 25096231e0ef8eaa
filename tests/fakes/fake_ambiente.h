// An Ambiente of fakes. Every fake writes into the one journal; what the fakes answer is set in the fields of
// FakeAmbiente.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fakes/fake_connection.h"
#include "fakes/journal.h"
#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/interfaccia_host.h"

namespace orve::fakes {

class HeadlessForm;

/// The records of one call of BMAPISendMail.
struct InvioMapi {
  host::MapiMessage messaggio;
  std::vector<host::MapiRecip> destinatari;
  std::vector<host::MapiFile> file;
};

class FakeAmbiente : public host::Ambiente {
 public:
  explicit FakeAmbiente(JournalPtr journalComune = std::make_shared<Journal>());
  ~FakeAmbiente() override;

  JournalPtr journal;

  // What the fakes answer.
  host::DataOra adesso = host::DataOra::Da(2026, 11, 14, 10, 22, 5);
  std::optional<std::string> testoData;  // a short date form other than the Italian one
  std::optional<std::string> testoOra;
  host::Variant risultatoSmtp = -1;    // GetLastError of the SMTP component
  std::int32_t rispostaMessaggio = 1;  // the person's answer to a message
  std::string titoloHost;              // what TitoloFinestra appends to a title
  std::int32_t statoFormatoData = 0;
  std::string cartellaTemporanea = "C:\\Temp";
  std::string cartellaInstallazione = "C:\\Programmi\\Orve";
  std::set<std::string> cartelle = {"C:\\Temp"};
  std::map<std::string, std::string> file;  // path and content
  std::map<std::string, std::string> variabili;
  std::optional<std::string> utenteRete;  // none: WNetGetUserA fails
  bool guidDisponibile = true;
  std::vector<host::Guid> guid;  // handed out first, then numbered ones

  // Outlook, the Simple MAPI controls and MAPI32.DLL.
  std::string versioneOutlook = "16.0.0.4266";
  std::string indirizzoUtenteOutlook = "utente@outlook.example";    // of the current user
  std::string indirizzoAccountOutlook = "account@outlook.example";  // of the first account
  host::Variant sessioneMapi = 4711;
  host::MapiHandle sessioneMapi32 = 815;
  std::int32_t esitoLogonMapi = 0;
  std::int32_t esitoInvioMapi = 0;
  std::int32_t esitoLogoffMapi = 0;
  std::vector<InvioMapi> inviiMapi;  // what BMAPISendMail was given, call by call

  // What the objects that deliver tell of their last delivery, and who is told of the send: nobody.
  host::FineConsegna fineConsegna;
  host::OsservatoreInvio* osservatore = nullptr;

  // The directory: none unless a test says so. Persons by "LDAP://..." path, with their members.
  bool directoryPresente = false;
  std::string contestoPredefinito = "DC=azienda,DC=example";
  Righe trovatiInDirectory;                                             // rows with "adsPath"
  std::map<std::string, std::map<std::string, host::Variant>> persone;  // by path

  // The windows: what the person does while one is shown, the file that the person chooses (none: the choice
  // is cancelled), files in a special place, and the special fields offered for a body.
  std::function<void(HeadlessForm&)> persona;
  std::optional<std::string> fileScelto;
  std::map<std::string, std::int32_t> posizioni;  // by path; 0 for any other file
  host::Variant parametriCorpo = host::Variant::Array{};

  std::shared_ptr<host::Messaggi> CreaMessaggi() override;
  std::shared_ptr<host::FormatoData> CreaFormatoData() override;
  std::shared_ptr<host::FormatoNumero> CreaFormatoNumero() override;
  std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override;
  std::shared_ptr<host::RisolutorePercorsi> CreaRisolutorePercorsi() override;
  std::shared_ptr<host::CifratorePassword> CreaCifratorePassword() override;
  std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override;
  std::shared_ptr<host::OutlookApplication> CreaOutlook() override;
  std::shared_ptr<host::MAPISession> CreaMAPISession() override;
  std::shared_ptr<host::MAPIMessages> CreaMAPIMessages() override;
  std::shared_ptr<host::Mapi32> CreaMapi32() override;
  std::shared_ptr<host::FileSystem> CreaFileSystem() override;
  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override;
  std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override;
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override;
  std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override;
  std::shared_ptr<host::OggettoFile> CreaOggettoFile() override;
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override;
  std::shared_ptr<host::CLSFW_Parametri> CreaParametri() override;
  host::Orologio& OrologioDiSistema() override;
  host::DebugOutput& UscitaDiDebug() override;
  host::GeneratoreGuid& Identificatori() override;
  host::Environment& VariabiliDiAmbiente() override;
  host::Rete& ReteDiSistema() override;
  host::Directory& DirectoryAziendale() override;
  host::OsservatoreInvio& Osservatore() override {
    return osservatore != nullptr ? *osservatore : host::Ambiente::Osservatore();
  }

 private:
  struct Piattaforma;
  std::unique_ptr<Piattaforma> piattaforma_;
};

/// A message object that journals "NOME.MostraMsg testo|stile|titolo|proprietario".
std::shared_ptr<host::Messaggi> CreaFakeMessaggi(FakeAmbiente& ambiente, const std::string& nome);

/// The host application's interface; `conApplicazione` and `conMessaggi` say how far its chain reaches. Its
/// message object appears in the journal as "Host.Messaggi".
std::shared_ptr<host::InterfacciaHost> CreaFakeInterfaccia(FakeAmbiente& ambiente, std::int32_t idUtente = 7,
                                                           bool conApplicazione = true,
                                                           bool conMessaggi = true);

/// A form with the one control CMB_ACCOUNT, journaled as "CMB_ACCOUNT.AddItemData testo|dati" and so on.
std::shared_ptr<host::Form> CreaFakeForm(JournalPtr journal);

/// A text or "(assente)".
std::string Mostra(const host::TestoOAssente& testo);
/// Any value, in the form that tests use.
std::string Mostra(const host::Variant& valore);
std::string SiNo(bool valore);

}  // namespace orve::fakes
