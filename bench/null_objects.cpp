#include "null_objects.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orve::bench {

namespace {

class NullField : public host::Field {
 public:
  explicit NullField(host::Variant value) : value_(std::move(value)) {}
  [[nodiscard]] host::Variant Value() const override { return value_; }

 private:
  host::Variant value_;
};

using Columns = std::unordered_map<std::string_view, std::shared_ptr<host::Field>>;

Columns SampleColumns() {
  const std::vector<std::pair<std::string_view, host::Variant>> values = {
      // Settings: the secure SMTP channel, automatic mode.
      {"FW24_INDFAXATTIVO", 77},
      {"FW24_MAILMODSTDIFF", 1},
      {"FW24_INDMODALITA", 1},
      {"FW24_PATHTMP", "C:\\Temp"},
      {"FW24_BCC", 0},
      {"FW24_READRECEIPT", 0},
      {"FW24_FLGMSGPERS", 0},
      {"FW24_MSGPERS", host::Null{}},
      // User and group.
      {"FW07_ID", 7},
      {"FW07_CODICE", "mario"},
      {"FW07_CODICE_FW06", "vendite"},
      {"FW07_USERNAME", "mario"},
      {"FW07_DESCR", "Mario Rossi"},
      {"FW06_CODICE", "vendite"},
      {"FW06_DESCR", "Ufficio vendite"},
      // Company and customer share the master data.
      {"CG16_RAGSOANAG", "Ferramenta Bianchi S.r.l."},
      {"CG16_INDIRIZZO", "Via Roma 1"},
      {"CG16_CAP", "20121"},
      {"CG16_CITTA", "Milano"},
      {"CG16_PROV", "MI"},
      {"CG16_INDEMAIL", "ordini@bianchi.example"},
      {"CG16_EMAIL_PEC", "bianchi@pec.example"},
      // Account.
      {"FW23_SERVERNAME", "127.0.0.1"},
      {"FW23_PORT", 25},
      {"FW23_TIMEOUT", 0},
      {"FW23_INDAUTH", 0},
      {"FW23_SSL", 0},
      {"FW98_MAILADDRESS", "fatture@azienda.example"},
      {"FW98_USERNAME", ""},
      {"FW98_PASSWORD", ""},
      {"ALIAS", "Azienda S.p.A."},
      {"LETTURA", 0},
      {"CONSEGNA", 0},
  };
  Columns columns;
  for (const auto& [name, value] : values) columns.emplace(name, std::make_shared<NullField>(value));
  return columns;
}

class NullFields : public host::Fields {
 public:
  [[nodiscard]] std::shared_ptr<host::Field> Item(std::string_view nome) const override {
    return columns_.at(nome);
  }

 private:
  Columns columns_ = SampleColumns();
};

class NullRecordSet : public host::RecordSet {
 public:
  [[nodiscard]] bool Eof() const override { return false; }
  [[nodiscard]] std::shared_ptr<host::Fields> Fields() const override { return fields_; }
  void MoveFirst() override {}
  void MoveNext() override {}
  [[nodiscard]] std::int32_t State() const override { return 1; }
  void Close() override {}

 private:
  std::shared_ptr<host::Fields> fields_ = std::make_shared<NullFields>();
};

class NullParameter : public host::Parameter {
 public:
  [[nodiscard]] host::Variant Value() const override { return 7; }
};

class NullCommand : public host::Command {
 public:
  void CommandType(std::int32_t /*tipo*/) override {}
  void CommandText(const std::string& /*testo*/) override {}
  [[nodiscard]] std::shared_ptr<host::Parameter> CreateParameter(const std::string& /*nome*/,
                                                                 std::int32_t /*tipo*/,
                                                                 std::int32_t /*direzione*/,
                                                                 std::int32_t /*lunghezza*/) override {
    return parameter_;
  }
  void ParametersAppend(const std::shared_ptr<host::Parameter>& /*parametro*/) override {}
  void Execute() override {}
  [[nodiscard]] std::shared_ptr<host::Parameter> ParametersItem(std::string_view /*nome*/) const override {
    return parameter_;
  }

 private:
  std::shared_ptr<host::Parameter> parameter_ = std::make_shared<NullParameter>();
};

class NullConnection : public host::Connection {
 public:
  explicit NullConnection(std::shared_ptr<Counts> counts) : counts_(std::move(counts)) {}
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& statement,
                                                         std::int32_t /*opzione*/) override {
    if (statement.compare(0, 5, "exec ") == 0) ++counts_->events;
    return rows_;
  }
  [[nodiscard]] std::shared_ptr<host::Command> CreateCommand() override { return command_; }

 private:
  std::shared_ptr<Counts> counts_;
  std::shared_ptr<host::RecordSet> rows_ = std::make_shared<NullRecordSet>();
  std::shared_ptr<host::Command> command_ = std::make_shared<NullCommand>();
};

class NullMessages : public host::Messaggi {
 public:
  [[nodiscard]] std::string TitoloFinestra(const std::string& testo) override { return testo; }
  std::int32_t MostraMsg(const std::string& /*testo*/, std::int32_t /*stile*/, const std::string& /*titolo*/,
                         const std::shared_ptr<Oggetto>& /*proprietario*/) override {
    return 1;
  }
};

class NullDateFormat : public host::FormatoData {
 public:
  void Data(const std::string& /*testo*/) override {}
  [[nodiscard]] std::int32_t Stato() const override { return 0; }
  [[nodiscard]] std::string DataDB() const override { return "20261114"; }
};

class NullNumberFormat : public host::FormatoNumero {
 public:
  [[nodiscard]] host::Variant NumeroDB(const host::Variant& valore) override { return valore; }
};

class NullRegister : public host::RegistroInvio {
 public:
  explicit NullRegister(std::shared_ptr<Counts> counts) : counts_(std::move(counts)) {}
  void Connessione(const std::shared_ptr<host::Connection>& /*connessione*/) override {}
  void IDvoce(const std::string& /*voce*/) override {}
  void UObject(const std::string& /*oggetto*/) override {}
  void TipoCanale(std::int32_t /*tipo*/) override {}
  void TitoloStampa(const std::string& /*titolo*/) override {}
  void Ditta(const std::string& /*ditta*/) override {}
  void NumReg(const std::string& /*numero*/) override {}
  void TipoDoc(const std::string& /*tipo*/) override {}
  void NumDoc(const std::string& /*numero*/) override {}
  void SezDoc(const std::string& /*sezione*/) override {}
  void RegistraInvio(const host::TestoOAssente& /*nome*/, const host::TestoOAssente& /*ditta*/,
                     const host::TestoOAssente& /*indirizzo*/, const host::TestoOAssente& /*allegato*/,
                     const host::TestoOAssente& /*esito*/, const host::TestoOAssente& /*oggetto*/,
                     const host::TestoOAssente& /*corpo*/) override {
    ++counts_->lines;
  }
  void UtenteApplicazione(std::int32_t /*id*/) override {}
  void CanaleInvio(float /*canale*/) override {}
  void MittenteInvio(const std::string& /*mittente*/) override {}
  void GuidLista(const std::string& /*guid*/) override {}
  void EsitoInvio(std::int32_t /*esito*/) override {}
  void TipoLista(std::int32_t /*tipo*/) override {}

 private:
  std::shared_ptr<Counts> counts_;
};

class NullPaths : public host::RisolutorePercorsi {
 public:
  void ChiudiPercorsi() override {}
  void ImpostaTipoPercorso(std::int32_t /*tipo*/, const std::string& /*testo*/) override {}
  [[nodiscard]] std::string Percorso() const override { return "C:\\Temp"; }
  void ImpostaPercorso(const std::string& /*percorso*/, bool /*indicatore*/) override {}
};

class NullCipher : public host::CifratorePassword {
 public:
  [[nodiscard]] std::string Cripta(const std::string& testo) override { return testo; }
  [[nodiscard]] std::string Decripta(const std::string& testo) override { return testo; }
};

class NullSmtp : public host::ComponenteSmtp {
 public:
  explicit NullSmtp(std::shared_ptr<Counts> counts) : counts_(std::move(counts)) {}
  void ClearRecipient() override {}
  void ServerAddr(const std::string& /*server*/) override {}
  void UserName(const std::string& /*utente*/) override {}
  void Password(const std::string& /*password*/) override {}
  void ServerPort(std::int16_t /*porta*/) override {}
  void ConnectType(std::int16_t /*tipo*/) override {}
  void From(const std::string& /*nome*/) override {}
  void FromAddr(const std::string& /*indirizzo*/) override {}
  [[nodiscard]] std::string FromAddr() const override { return {}; }
  void DeliveryNotification(std::int16_t /*valore*/) override {}
  void AddRecipientEx(const std::string& /*elenco*/, std::int32_t /*tipo*/) override {}
  void Subject(const std::string& /*oggetto*/) override {}
  void BodyFormat(std::int16_t /*formato*/) override {}
  void BodyText(const std::string& /*corpo*/) override {}
  void AddHeader(const std::string& /*nome*/, const std::string& /*valore*/) override {}
  void AddAttachment(const std::string& /*percorso*/) override {}
  host::Variant SendMail() override {
    ++counts_->messages;
    return true;
  }
  [[nodiscard]] host::Variant GetLastError() const override { return -1; }

 private:
  std::shared_ptr<Counts> counts_;
};

class NullTextStream : public host::TextStream {
 public:
  void WriteLine(const std::string& /*testo*/) override {}
  void Close() override {}
};

class NullFileSystem : public host::FileSystem {
 public:
  [[nodiscard]] bool FolderExists(const std::string& /*cartella*/) override { return true; }
  [[nodiscard]] bool FileExists(const std::string& /*file*/) override { return true; }
  [[nodiscard]] std::shared_ptr<host::TextStream> OpenTextFile(const std::string& /*file*/,
                                                               std::int32_t /*modo*/, bool /*crea*/,
                                                               std::int32_t /*formato*/) override {
    return std::make_shared<NullTextStream>();
  }
};

class NullClock : public host::Orologio {
 public:
  [[nodiscard]] host::DataOra Adesso() override { return host::DataOra::Da(2026, 11, 14, 10, 22, 5); }
  [[nodiscard]] std::string TestoData(host::DataOra /*istante*/) override { return "14/11/2026"; }
  [[nodiscard]] std::string TestoOra(host::DataOra /*istante*/) override { return "10:22:05"; }
};

class NullDebugOutput : public host::DebugOutput {
 public:
  void Scrivi(const std::string& /*riga*/) noexcept override {}
};

class NullGuids : public host::GeneratoreGuid {
 public:
  [[nodiscard]] std::optional<host::Guid> CreaGuid() override { return host::Guid{++last_, 0, 0, {}}; }

 private:
  std::uint32_t last_ = 0;
};

class NullEnvironment : public host::Environment {
 public:
  [[nodiscard]] std::string Leggi(const std::string& /*nome*/) override { return {}; }
};

class NullNetwork : public host::Rete {
 public:
  std::int32_t WNetGetUserA(std::string& /*buffer*/) override { return 2250; }
};

[[noreturn]] void NotOnThisMachine() {
  throw host::Errore(host::kOggettoNonCreabile);
}

class NoRows : public NullRecordSet {
 public:
  [[nodiscard]] bool Eof() const override { return true; }
};

class NullDirectoryConnection : public host::DirectoryConnection {
 public:
  void Open(const std::string& /*origine*/) override {}
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& /*interrogazione*/) override {
    return noRows_;
  }
  [[nodiscard]] std::int32_t State() override { return 1; }
  void Close() override {}

 private:
  std::shared_ptr<host::RecordSet> noRows_ = std::make_shared<NoRows>();
};

class NullDirectoryObject : public host::DirectoryObject {
 public:
  [[nodiscard]] host::Variant Get(const std::string& /*attributo*/) override { return "DC=azienda"; }
  [[nodiscard]] std::string ADsPath() override { return "LDAP://DC=azienda"; }
  [[nodiscard]] host::Variant Membro(const std::string& /*nome*/) override { return {}; }
};

class NullDirectory : public host::Directory {
 public:
  [[nodiscard]] std::shared_ptr<host::DirectoryConnection> CreaConnessione() override { return connection_; }
  [[nodiscard]] std::shared_ptr<host::RecordSet> CreaRecordSet() override { return noRows_; }
  [[nodiscard]] std::shared_ptr<host::DirectoryObject> ApriOggetto(const std::string& /*percorso*/) override {
    return object_;
  }

 private:
  std::shared_ptr<host::DirectoryConnection> connection_ = std::make_shared<NullDirectoryConnection>();
  std::shared_ptr<host::RecordSet> noRows_ = std::make_shared<NoRows>();
  std::shared_ptr<host::DirectoryObject> object_ = std::make_shared<NullDirectoryObject>();
};

}  // namespace

struct NullAmbiente::Platform {
  NullClock clock;
  NullDebugOutput debugOutput;
  NullGuids guids;
  NullEnvironment environment;
  NullNetwork network;
  NullDirectory directory;
};

NullAmbiente::NullAmbiente()
    : platform_(std::make_unique<Platform>()), database_(std::make_shared<NullConnection>(counts_)) {}

NullAmbiente::~NullAmbiente() = default;

std::shared_ptr<host::Connection> NullAmbiente::Database() const {
  return database_;
}

std::shared_ptr<host::Messaggi> NullAmbiente::CreaMessaggi() {
  return std::make_shared<NullMessages>();
}
std::shared_ptr<host::FormatoData> NullAmbiente::CreaFormatoData() {
  return std::make_shared<NullDateFormat>();
}
std::shared_ptr<host::FormatoNumero> NullAmbiente::CreaFormatoNumero() {
  return std::make_shared<NullNumberFormat>();
}
std::shared_ptr<host::RegistroInvio> NullAmbiente::CreaRegistroInvio() {
  return std::make_shared<NullRegister>(counts_);
}
std::shared_ptr<host::RisolutorePercorsi> NullAmbiente::CreaRisolutorePercorsi() {
  return std::make_shared<NullPaths>();
}
std::shared_ptr<host::CifratorePassword> NullAmbiente::CreaCifratorePassword() {
  return std::make_shared<NullCipher>();
}
std::shared_ptr<host::ComponenteSmtp> NullAmbiente::CreaComponenteSmtp() {
  if (smtpFactory_) return smtpFactory_();
  return std::make_shared<NullSmtp>(counts_);
}
std::shared_ptr<host::OutlookApplication> NullAmbiente::CreaOutlook() {
  NotOnThisMachine();
}
std::shared_ptr<host::MAPISession> NullAmbiente::CreaMAPISession() {
  NotOnThisMachine();
}
std::shared_ptr<host::MAPIMessages> NullAmbiente::CreaMAPIMessages() {
  NotOnThisMachine();
}
std::shared_ptr<host::Mapi32> NullAmbiente::CreaMapi32() {
  NotOnThisMachine();
}
std::shared_ptr<host::FileSystem> NullAmbiente::CreaFileSystem() {
  return std::make_shared<NullFileSystem>();
}
host::Orologio& NullAmbiente::OrologioDiSistema() {
  return platform_->clock;
}
host::DebugOutput& NullAmbiente::UscitaDiDebug() {
  return platform_->debugOutput;
}
host::GeneratoreGuid& NullAmbiente::Identificatori() {
  return platform_->guids;
}
host::Environment& NullAmbiente::VariabiliDiAmbiente() {
  return platform_->environment;
}
host::Rete& NullAmbiente::ReteDiSistema() {
  return platform_->network;
}
host::Directory& NullAmbiente::DirectoryAziendale() {
  return platform_->directory;
}

}  // namespace orve::bench
