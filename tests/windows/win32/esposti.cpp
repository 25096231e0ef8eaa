#include "windows/win32/esposti.h"

#include <array>
#include <cstring>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "win32/classi.h"
#include "win32/contato.h"
#include "win32/conversions.h"
#include "win32/mapi32.h"
#include "windows/win32/mapi_doppio/mapi_doppio.h"

namespace orve::prova {

namespace {

using adapters::win32::ComPtr;
using adapters::win32::ToCom;
using adapters::win32::VariantCom;
using DoppioPtr = ComPtr<DoppioCom>;

constexpr WORD kLettura = DISPATCH_PROPERTYGET;
constexpr WORD kScrittura = DISPATCH_PROPERTYPUT;
constexpr WORD kAssegnazione = DISPATCH_PROPERTYPUTREF;
constexpr WORD kChiamata = DISPATCH_METHOD;

DoppioPtr Nuovo(const char* nome) {
  return CreaDoppio(nome, std::make_shared<std::vector<std::string>>());
}

// A member that only acts, one that returns a value, and one that returns an object.
template <class F>
void Fa(const DoppioPtr& doppio, const char* nome, WORD tipi, F azione) {
  doppio->Membro(nome, tipi, [azione](const ArrivoCom& arrivo) {
    azione(arrivo);
    return VariantCom();
  });
}
template <class F>
void Da(const DoppioPtr& doppio, const char* nome, WORD tipi, F azione) {
  doppio->Membro(nome, tipi,
                 [azione](const ArrivoCom& arrivo) { return ToCom(host::Variant(azione(arrivo))); });
}
template <class F>
void DaOggetto(const DoppioPtr& doppio, const char* nome, WORD tipi, F azione) {
  doppio->Membro(nome, tipi,
                 [azione](const ArrivoCom& arrivo) { return VariantCom::DiOggetto(azione(arrivo).Get()); });
}
// A property written with a text or with a number of either width, which has to arrive in that width.
template <class T, class Ritorno>
void Scrive(const DoppioPtr& doppio, const char* nome, std::shared_ptr<T> oggetto,
            Ritorno (T::*membro)(const std::string&)) {
  Fa(doppio, nome, kScrittura, [=](const ArrivoCom& a) { ((*oggetto).*membro)(a.Valore(0).ToText()); });
}
void Esige(const ArrivoCom& arrivo, VARTYPE tipo) {
  if (V_VT(&arrivo.argomenti.at(0)) != tipo) throw RifiutoCom{DISP_E_TYPEMISMATCH, 0, {}, {}};
}
template <class T, class Ritorno>
void Scrive(const DoppioPtr& doppio, const char* nome, std::shared_ptr<T> oggetto,
            Ritorno (T::*membro)(std::int16_t)) {
  Fa(doppio, nome, kScrittura, [=](const ArrivoCom& a) {
    Esige(a, VT_I2);
    ((*oggetto).*membro)(a.Valore(0).ToInt16());
  });
}
template <class T, class Ritorno>
void Scrive(const DoppioPtr& doppio, const char* nome, std::shared_ptr<T> oggetto,
            Ritorno (T::*membro)(std::int32_t)) {
  Fa(doppio, nome, kScrittura, [=](const ArrivoCom& a) {
    Esige(a, VT_I4);
    ((*oggetto).*membro)(a.Valore(0).ToInt32());
  });
}
template <class T, class Ritorno>
void Scrive(const DoppioPtr& doppio, const char* nome, std::shared_ptr<T> oggetto,
            Ritorno (T::*membro)(bool)) {
  Fa(doppio, nome, kScrittura, [=](const ArrivoCom& a) {
    Esige(a, VT_BOOL);
    ((*oggetto).*membro)(a.Valore(0).ToBoolean());
  });
}
template <class T>
void Esegue(const DoppioPtr& doppio, const char* nome, std::shared_ptr<T> oggetto, void (T::*membro)()) {
  Fa(doppio, nome, kChiamata, [=](const ArrivoCom&) { ((*oggetto).*membro)(); });
}

DoppioPtr Esponi(std::shared_ptr<host::Messaggi> messaggi) {
  if (!messaggi) return {};
  auto doppio = Nuovo("Messaggi");
  Da(doppio, "TitoloFinestra", kChiamata,
     [=](const ArrivoCom& a) { return messaggi->TitoloFinestra(a.Valore(0).ToText()); });
  Da(doppio, "MostraMsg", kChiamata, [=](const ArrivoCom& a) {
    return messaggi->MostraMsg(a.Valore(0).ToText(), a.Valore(1).ToInt32(), a.Valore(2).ToText(),
                               a.Valore(3).ToObject());
  });
  return doppio;
}

host::TestoOAssente TestoOAssente(const VARIANT& valore) {
  if (V_VT(&valore) == VT_BSTR && V_BSTR(&valore) == nullptr) return std::nullopt;
  return adapters::win32::FromCom(valore).ToText();
}

DoppioPtr Esponi(std::shared_ptr<host::RegistroInvio> registro,
                 const std::shared_ptr<host::Connection>& database) {
  using R = host::RegistroInvio;
  auto doppio = Nuovo("Registro");
  Fa(doppio, "Connessione", kAssegnazione,
     [=](const ArrivoCom& a) { registro->Connessione(a.Valore(0).ToObject() ? database : nullptr); });
  const std::pair<const char*, void (R::*)(const std::string&)> testi[] = {
      {"IDvoce", &R::IDvoce},      {"UObject", &R::UObject}, {"TitoloStampa", &R::TitoloStampa},
      {"Ditta", &R::Ditta},        {"NumReg", &R::NumReg},   {"TipoDoc", &R::TipoDoc},
      {"NumDoc", &R::NumDoc},      {"SezDoc", &R::SezDoc},   {"MittenteInvio", &R::MittenteInvio},
      {"GuidLista", &R::GuidLista}};
  for (const auto& [nome, membro] : testi) Scrive(doppio, nome, registro, membro);
  const std::pair<const char*, void (R::*)(std::int32_t)> numeri[] = {
      {"TipoCanale", &R::TipoCanale},
      {"UtenteApplicazione", &R::UtenteApplicazione},
      {"EsitoInvio", &R::EsitoInvio},
      {"TipoLista", &R::TipoLista}};
  for (const auto& [nome, membro] : numeri) Scrive(doppio, nome, registro, membro);
  Fa(doppio, "CanaleInvio", kScrittura, [=](const ArrivoCom& a) {
    Esige(a, VT_R4);
    registro->CanaleInvio(a.Valore(0).ToFloat());
  });
  Fa(doppio, "RegistraInvio", kChiamata, [=](const ArrivoCom& a) {
    const auto testo = [&](std::size_t posto) { return TestoOAssente(a.argomenti.at(posto)); };
    registro->RegistraInvio(testo(0), testo(1), testo(2), testo(3), testo(4), testo(5), testo(6));
  });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::FormatoData> formato) {
  auto doppio = Nuovo("FormatoData");
  Scrive(doppio, "Data", formato, &host::FormatoData::Data);
  Da(doppio, "Stato", kLettura, [=](const ArrivoCom&) { return formato->Stato(); });
  Da(doppio, "DataDB", kLettura, [=](const ArrivoCom&) { return formato->DataDB(); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::FormatoNumero> formato) {
  auto doppio = Nuovo("FormatoNumero");
  Da(doppio, "NumeroDB", kChiamata, [=](const ArrivoCom& a) { return formato->NumeroDB(a.Valore(0)); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::RisolutorePercorsi> risolutore) {
  auto doppio = Nuovo("Risolutore");
  Esegue(doppio, "ChiudiPercorsi", risolutore, &host::RisolutorePercorsi::ChiudiPercorsi);
  Fa(doppio, "ImpostaTipoPercorso", kChiamata, [=](const ArrivoCom& a) {
    risolutore->ImpostaTipoPercorso(a.Valore(0).ToInt32(), a.Valore(1).ToText());
  });
  Da(doppio, "Percorso", kLettura, [=](const ArrivoCom&) { return risolutore->Percorso(); });
  Fa(doppio, "ImpostaPercorso", kChiamata,
     [=](const ArrivoCom& a) { risolutore->ImpostaPercorso(a.Valore(0).ToText(), a.Valore(1).ToBoolean()); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::CifratorePassword> cifratore) {
  auto doppio = Nuovo("Cifratore");
  Da(doppio, "Cripta", kChiamata,
     [=](const ArrivoCom& a) { return cifratore->Cripta(a.Valore(0).ToText()); });
  Da(doppio, "Decripta", kChiamata,
     [=](const ArrivoCom& a) { return cifratore->Decripta(a.Valore(0).ToText()); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::ComponenteSmtp> smtp) {
  using S = host::ComponenteSmtp;
  auto doppio = Nuovo("smtp");
  const std::pair<const char*, void (S::*)(const std::string&)> testi[] = {
      {"ServerAddr", &S::ServerAddr}, {"UserName", &S::UserName},
      {"Password", &S::Password},     {"From", &S::From},
      {"Subject", &S::Subject},       {"BodyText", &S::BodyText}};
  for (const auto& [nome, membro] : testi) Scrive(doppio, nome, smtp, membro);
  const std::pair<const char*, void (S::*)(std::int16_t)> numeri[] = {
      {"ServerPort", &S::ServerPort},
      {"ConnectType", &S::ConnectType},
      {"DeliveryNotification", &S::DeliveryNotification},
      {"BodyFormat", &S::BodyFormat}};
  for (const auto& [nome, membro] : numeri) Scrive(doppio, nome, smtp, membro);
  Esegue(doppio, "ClearRecipient", smtp, &S::ClearRecipient);
  doppio->Membro("FromAddr", kScrittura | kLettura, [=](const ArrivoCom& a) {
    if (a.argomenti.empty()) return ToCom(smtp->FromAddr());
    smtp->FromAddr(a.Valore(0).ToText());
    return VariantCom();
  });
  Fa(doppio, "AddRecipientEx", kChiamata,
     [=](const ArrivoCom& a) { smtp->AddRecipientEx(a.Valore(0).ToText(), a.Valore(1).ToInt32()); });
  Fa(doppio, "AddHeader", kChiamata,
     [=](const ArrivoCom& a) { smtp->AddHeader(a.Valore(0).ToText(), a.Valore(1).ToText()); });
  Fa(doppio, "AddAttachment", kChiamata,
     [=](const ArrivoCom& a) { smtp->AddAttachment(a.Valore(0).ToText()); });
  Da(doppio, "SendMail", kChiamata, [=](const ArrivoCom&) { return smtp->SendMail(); });
  Da(doppio, "GetLastError", kChiamata, [=](const ArrivoCom&) { return smtp->GetLastError(); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::OutlookAttachments> allegati) {
  auto doppio = Nuovo("Attachments");
  Fa(doppio, "Add", kChiamata, [=](const ArrivoCom& a) { allegati->Add(a.Valore(0).ToText()); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::OutlookMailItem> messaggio) {
  using M = host::OutlookMailItem;
  auto doppio = Nuovo("MailItem");
  Scrive(doppio, "ReadReceiptRequested", messaggio, &M::ReadReceiptRequested);
  DaOggetto(doppio, "attachments", kLettura,
            [=](const ArrivoCom&) { return Esponi(messaggio->attachments()); });
  const std::pair<const char*, void (M::*)(const std::string&)> testi[] = {
      {"To", &M::To},           {"cc", &M::cc},     {"Bcc", &M::Bcc},
      {"Subject", &M::Subject}, {"body", &M::body}, {"HTMLBody", &M::HTMLBody}};
  for (const auto& [nome, membro] : testi) Scrive(doppio, nome, messaggio, membro);
  Scrive(doppio, "BodyFormat", messaggio, &M::BodyFormat);
  Esegue(doppio, "Send", messaggio, &M::Send);
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::OutlookSession> sessione) {
  auto doppio = Nuovo("Session");
  DaOggetto(doppio, "CurrentUser", kLettura, [=](const ArrivoCom&) {
    auto utente = Nuovo("CurrentUser");
    Da(utente, "Address", kLettura,
       [dietro = sessione->CurrentUser()](const ArrivoCom&) { return dietro->Address(); });
    return utente;
  });
  DaOggetto(doppio, "Accounts", kLettura, [=](const ArrivoCom&) {
    auto elenco = Nuovo("Accounts");
    DaOggetto(elenco, "Item", kChiamata, [dietro = sessione->Accounts()](const ArrivoCom& a) {
      auto account = Nuovo("Account");
      Da(account, "SmtpAddress", kLettura,
         [uno = dietro->Item(a.Valore(0).ToInt32())](const ArrivoCom&) { return uno->SmtpAddress(); });
      return account;
    });
    return elenco;
  });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::OutlookApplication> outlook) {
  auto doppio = Nuovo("Outlook");
  Da(doppio, "Version", kLettura, [=](const ArrivoCom&) { return outlook->Version(); });
  DaOggetto(doppio, "Explorers", kLettura, [=](const ArrivoCom&) {
    auto esploratori = Nuovo("Explorers");
    DaOggetto(esploratori, "Session", kLettura,
              [dietro = outlook->Explorers()](const ArrivoCom&) { return Esponi(dietro->Session()); });
    return esploratori;
  });
  DaOggetto(doppio, "createItem", kChiamata,
            [=](const ArrivoCom& a) { return Esponi(outlook->createItem(a.Valore(0).ToInt32())); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::MAPISession> sessione) {
  using S = host::MAPISession;
  auto doppio = Nuovo("MAPISession");
  Scrive(doppio, "DownLoadMail", sessione, &S::DownLoadMail);
  Scrive(doppio, "NewSession", sessione, &S::NewSession);
  Esegue(doppio, "SignOn", sessione, &S::SignOn);
  Esegue(doppio, "SignOff", sessione, &S::SignOff);
  Da(doppio, "SessionID", kLettura, [=](const ArrivoCom&) { return sessione->SessionID(); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::MAPIMessages> messaggi) {
  using M = host::MAPIMessages;
  auto doppio = Nuovo("MAPIMessages");
  Fa(doppio, "SessionID", kScrittura, [=](const ArrivoCom& a) { messaggi->SessionID(a.Valore(0)); });
  Fa(doppio, "SessioneID", kScrittura, [=](const ArrivoCom& a) { messaggi->SessioneID(a.Valore(0)); });
  Esegue(doppio, "Compose", messaggi, &M::Compose);
  Esegue(doppio, "Send", messaggi, &M::Send);
  const std::pair<const char*, void (M::*)(const std::string&)> testi[] = {
      {"RecipAddress", &M::RecipAddress},
      {"RecipDisplayName", &M::RecipDisplayName},
      {"MsgSubject", &M::MsgSubject},
      {"MsgNoteText", &M::MsgNoteText},
      {"AttachmentPathName", &M::AttachmentPathName},
      {"AttachmentName", &M::AttachmentName}};
  for (const auto& [nome, membro] : testi) Scrive(doppio, nome, messaggi, membro);
  const std::pair<const char*, void (M::*)(std::int16_t)> indici[] = {
      {"RecipIndex", &M::RecipIndex},
      {"AttachmentIndex", &M::AttachmentIndex},
      {"AttachmentPosition", &M::AttachmentPosition}};
  for (const auto& [nome, membro] : indici) Scrive(doppio, nome, messaggi, membro);
  Scrive(doppio, "RecipType", messaggi, &M::RecipType);
  Scrive(doppio, "MsgReceiptRequested", messaggi, &M::MsgReceiptRequested);
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::FileSystem> fileSystem) {
  auto doppio = Nuovo("FileSystem");
  Da(doppio, "FolderExists", kChiamata,
     [=](const ArrivoCom& a) { return fileSystem->FolderExists(a.Valore(0).ToText()); });
  Da(doppio, "FileExists", kChiamata,
     [=](const ArrivoCom& a) { return fileSystem->FileExists(a.Valore(0).ToText()); });
  DaOggetto(doppio, "OpenTextFile", kChiamata, [=](const ArrivoCom& a) {
    auto flusso = Nuovo("TextStream");
    const auto dietro = fileSystem->OpenTextFile(a.Valore(0).ToText(), a.Valore(1).ToInt32(),
                                                 a.Valore(2).ToBoolean(), a.Valore(3).ToInt32());
    Fa(flusso, "WriteLine", kChiamata,
       [=](const ArrivoCom& riga) { dietro->WriteLine(riga.Valore(0).ToText()); });
    Esegue(flusso, "Close", dietro, &host::TextStream::Close);
    return flusso;
  });
  return doppio;
}

DoppioPtr EsponiCampo(std::shared_ptr<host::Field> campo) {
  auto doppio = Nuovo("Field");
  Da(doppio, "Value", kLettura, [=](const ArrivoCom&) { return campo->Value(); });
  doppio->Predefinito(kLettura, [=](const ArrivoCom&) { return ToCom(campo->Value()); });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::RecordSet> righe) {
  auto doppio = Nuovo("Recordset");
  Da(doppio, "EOF", kLettura, [=](const ArrivoCom&) { return righe->Eof(); });
  Da(doppio, "State", kLettura, [=](const ArrivoCom&) { return righe->State(); });
  Esegue(doppio, "MoveFirst", righe, &host::RecordSet::MoveFirst);
  Esegue(doppio, "MoveNext", righe, &host::RecordSet::MoveNext);
  Esegue(doppio, "Close", righe, &host::RecordSet::Close);
  DaOggetto(doppio, "Fields", kLettura, [=](const ArrivoCom&) {
    auto campi = Nuovo("Fields");
    DaOggetto(campi, "Item", kLettura, [dietro = righe->Fields()](const ArrivoCom& a) {
      return EsponiCampo(dietro->Item(a.Valore(0).ToText()));
    });
    return campi;
  });
  doppio->Predefinito(kLettura, [=](const ArrivoCom& a) {
    return VariantCom::DiOggetto(EsponiCampo(righe->Fields()->Item(a.Valore(0).ToText())).Get());
  });
  return doppio;
}

// The command comes from the database once it is told whose it is.
DoppioPtr EsponiComando(const std::shared_ptr<fakes::FakeConnection>& database) {
  struct Stato {
    std::shared_ptr<host::Command> comando;
    std::shared_ptr<host::Parameter> creato;
  };
  const auto stato = std::make_shared<Stato>();
  auto doppio = Nuovo("Command");
  Fa(doppio, "ActiveConnection", kAssegnazione,
     [=](const ArrivoCom&) { stato->comando = database->CreateCommand(); });
  Fa(doppio, "CommandType", kScrittura,
     [=](const ArrivoCom& a) { stato->comando->CommandType(a.Valore(0).ToInt32()); });
  Fa(doppio, "CommandText", kScrittura,
     [=](const ArrivoCom& a) { stato->comando->CommandText(a.Valore(0).ToText()); });
  Fa(doppio, "Execute", kChiamata, [=](const ArrivoCom&) { stato->comando->Execute(); });
  DaOggetto(doppio, "CreateParameter", kChiamata, [=](const ArrivoCom& a) {
    stato->creato = stato->comando->CreateParameter(a.Valore(0).ToText(), a.Valore(1).ToInt32(),
                                                    a.Valore(2).ToInt32(), a.Valore(3).ToInt32());
    return Nuovo("Parameter");
  });
  DaOggetto(doppio, "Parameters", kLettura, [=](const ArrivoCom&) {
    auto parametri = Nuovo("Parameters");
    Fa(parametri, "Append", kChiamata,
       [=](const ArrivoCom&) { stato->comando->ParametersAppend(stato->creato); });
    DaOggetto(parametri, "Item", kLettura, [=](const ArrivoCom& a) {
      auto parametro = Nuovo("Parameter");
      Da(parametro, "Value", kLettura,
         [dietro = stato->comando->ParametersItem(a.Valore(0).ToText())](const ArrivoCom&) {
           return dietro->Value();
         });
      return parametro;
    });
    return parametri;
  });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::DirectoryConnection> connessione) {
  auto doppio = Nuovo("DirectoryConnection");
  Fa(doppio, "Open", kChiamata, [=](const ArrivoCom& a) { connessione->Open(a.Valore(0).ToText()); });
  DaOggetto(doppio, "Execute", kChiamata,
            [=](const ArrivoCom& a) { return Esponi(connessione->Execute(a.Valore(0).ToText())); });
  Da(doppio, "State", kLettura, [=](const ArrivoCom&) { return connessione->State(); });
  Esegue(doppio, "Close", connessione, &host::DirectoryConnection::Close);
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::DirectoryObject> oggetto) {
  auto doppio = Nuovo("DirectoryObject");
  Da(doppio, "Get", kChiamata, [=](const ArrivoCom& a) { return oggetto->Get(a.Valore(0).ToText()); });
  Da(doppio, "ADsPath", kLettura, [=](const ArrivoCom&) { return oggetto->ADsPath(); });
  for (const char* nome : {"FirstName", "LastName", "EmployeeID", "Title", "Division", "TelephoneNumber",
                           "FaxNumber", "EmailAddress"}) {
    Da(doppio, nome, kLettura, [=](const ArrivoCom&) { return oggetto->Membro(nome); });
  }
  return doppio;
}

// What is behind the name "LDAP" in a path: it turns the path into a moniker that gives the object.
class Percorsi final : public adapters::win32::Contato<IParseDisplayName, IDispatch> {
 public:
  explicit Percorsi(std::shared_ptr<fakes::FakeAmbiente> finto) : finto_(std::move(finto)) {}

  HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR nome, ULONG* mangiati,
                                             IMoniker** moniker) override {
    *mangiati = static_cast<ULONG>(wcslen(nome));
    try {
      const auto oggetto = Esponi(finto_->DirectoryAziendale().ApriOggetto(adapters::win32::ToUtf8(nome)));
      return CreatePointerMoniker(oggetto.Get(), moniker);
    } catch (...) {
      return MK_E_NOOBJECT;
    }
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* numero) override {
    *numero = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }

 private:
  std::shared_ptr<fakes::FakeAmbiente> finto_;
};

// MAPI32.DLL passes its calls to the fake, with the texts as they arrived; without a fake it fails.
std::weak_ptr<host::Mapi32> mapi;
constexpr ULONG kNonRiuscito = 2;

std::string DaByte(BSTR testo) {
  return adapters::win32::FromSingleByte({reinterpret_cast<const char*>(testo), SysStringByteLen(testo)});
}

ULONG WINAPI Logon(ULONG_PTR finestra, LPSTR profilo, LPSTR password, ULONG flags, ULONG riservato,
                   ULONG_PTR* sessione) {
  const auto mapiFinta = mapi.lock();
  if (!mapiFinta) return kNonRiuscito;
  host::MapiHandle maniglia = *sessione;
  const auto esito = mapiFinta->MAPILogon(finestra, profilo, password, static_cast<std::int32_t>(flags),
                                          static_cast<std::int32_t>(riservato), maniglia);
  *sessione = maniglia;
  return static_cast<ULONG>(esito);
}

ULONG WINAPI SendMail(ULONG_PTR sessione, ULONG_PTR finestra, void* messaggio, SAFEARRAY** destinatari,
                      SAFEARRAY** file, ULONG flags, ULONG riservato) {
  const auto mapiFinta = mapi.lock();
  if (!mapiFinta) return kNonRiuscito;
  const auto& record = *static_cast<const adapters::win32::MapiMessageRecord*>(messaggio);
  host::MapiMessage letto{0,
                          DaByte(record.Subject),
                          DaByte(record.NoteText),
                          "",
                          "",
                          "",
                          0,
                          static_cast<std::int32_t>(record.RecipCount),
                          static_cast<std::int32_t>(record.FileCount)};
  std::vector<host::MapiRecip> persone;
  for (ULONG posto = 0; posto < record.RecipCount; ++posto) {
    const auto& persona = static_cast<const adapters::win32::MapiRecipRecord*>((*destinatari)->pvData)[posto];
    persone.push_back({0, static_cast<std::int32_t>(persona.RecipClass),
                       adapters::win32::FromBstr(persona.Name), "", 0, ""});
  }
  std::vector<host::MapiFile> allegati;
  for (ULONG posto = 0; posto < record.FileCount; ++posto) {
    const auto& allegato = static_cast<const adapters::win32::MapiFileRecord*>((*file)->pvData)[posto];
    allegati.push_back({0, 0, static_cast<std::int32_t>(allegato.Position),
                        adapters::win32::FromBstr(allegato.PathName),
                        adapters::win32::FromBstr(allegato.FileName), ""});
  }
  return static_cast<ULONG>(mapiFinta->BMAPISendMail(sessione, finestra, letto, persone, allegati,
                                                     static_cast<std::int32_t>(flags),
                                                     static_cast<std::int32_t>(riservato)));
}

ULONG WINAPI Logoff(ULONG_PTR sessione, ULONG_PTR finestra, ULONG flags, ULONG riservato) {
  const auto mapiFinta = mapi.lock();
  if (!mapiFinta) return kNonRiuscito;
  return static_cast<ULONG>(mapiFinta->MAPILogoff(sessione, finestra, static_cast<std::int32_t>(flags),
                                                  static_cast<std::int32_t>(riservato)));
}

void ImpostaMapi(const FunzioniMapi* funzioni) {
  const auto imposta = reinterpret_cast<ImpostaFunzioniMapi>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"mapi32.dll"), "ImpostaFunzioni")));
  if (imposta != nullptr) imposta(funzioni);
}

}  // namespace

DoppioPtr Esponi(std::shared_ptr<host::Connection> connessione) {
  auto doppio = Nuovo("Connection");
  DaOggetto(doppio, "Execute", kChiamata, [=](const ArrivoCom& a) {
    return Esponi(connessione->Execute(a.Valore(0).ToText(), a.Valore(2).ToInt32()));
  });
  return doppio;
}

DoppioPtr Esponi(std::shared_ptr<host::InterfacciaHost> interfaccia) {
  auto doppio = Nuovo("Interfaccia");
  DaOggetto(doppio, "Applicazione", kLettura, [=](const ArrivoCom&) -> DoppioPtr {
    const auto dietro = interfaccia->Applicazione();
    if (!dietro) return {};
    auto applicazione = Nuovo("Applicazione");
    DaOggetto(applicazione, "Messaggi", kLettura,
              [=](const ArrivoCom&) { return Esponi(dietro->Messaggi()); });
    DaOggetto(applicazione, "UtenteCorrente", kLettura, [=](const ArrivoCom&) {
      auto utente = Nuovo("Utente");
      Da(utente, "IdUtente", kLettura,
         [uno = dietro->UtenteCorrente()](const ArrivoCom&) { return uno->IdUtente(); });
      return utente;
    });
    return applicazione;
  });
  return doppio;
}

void RispondePerMapi32(const std::shared_ptr<host::Mapi32>& funzioni) {
  mapi = funzioni;
}

ClassiFinte::ClassiFinte(std::shared_ptr<fakes::FakeAmbiente> finto,
                         std::shared_ptr<fakes::FakeConnection> database) {
  namespace classi = adapters::win32::classi;
  const auto nome = [&](const wchar_t* classe, auto crea) {
    classi_.push_back(std::make_unique<ClasseCom>(
        std::wstring(classe), [crea]() -> ComPtr<IDispatch> { return ComPtr<IDispatch>(crea().Get()); }));
  };
  nome(classi::kMessaggi, [=] { return Esponi(finto->CreaMessaggi()); });
  nome(classi::kFormatoData, [=] { return Esponi(finto->CreaFormatoData()); });
  nome(classi::kFormatoNumero, [=] { return Esponi(finto->CreaFormatoNumero()); });
  nome(classi::kRegistroInvio, [=] { return Esponi(finto->CreaRegistroInvio(), database); });
  nome(classi::kRisolutorePercorsi, [=] { return Esponi(finto->CreaRisolutorePercorsi()); });
  nome(classi::kCifratorePassword, [=] { return Esponi(finto->CreaCifratorePassword()); });
  nome(classi::kOutlook, [=] { return Esponi(finto->CreaOutlook()); });
  nome(classi::kMAPISession, [=] { return Esponi(finto->CreaMAPISession()); });
  nome(classi::kMAPIMessages, [=] { return Esponi(finto->CreaMAPIMessages()); });
  nome(classi::kFileSystem, [=] { return Esponi(finto->CreaFileSystem()); });
  nome(classi::kComando, [=] { return EsponiComando(database); });
  nome(classi::kConnessione, [=] { return Esponi(finto->DirectoryAziendale().CreaConnessione()); });
  nome(classi::kRecordSet, [=] { return Esponi(finto->DirectoryAziendale().CreaRecordSet()); });
  nome(L"LDAP", [=] { return ComPtr<IDispatch>(new Percorsi(finto)); });
  CLSID componente;
  CLSIDFromString(classi::kComponenteSmtp, &componente);
  classi_.push_back(std::make_unique<ClasseCom>(componente, [=]() -> ComPtr<IDispatch> {
    return ComPtr<IDispatch>(Esponi(finto->CreaComponenteSmtp()).Get());
  }));
  const FunzioniMapi funzioni{Logon, SendMail, Logoff};
  ImpostaMapi(&funzioni);
}

ClassiFinte::~ClassiFinte() {
  ImpostaMapi(nullptr);
}

}  // namespace orve::prova
