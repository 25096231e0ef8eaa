#include "fakes/fake_ambiente.h"

#include <utility>

#include "fakes/fake_automation.h"
#include "fakes/fake_smtp.h"
#include "text/text.h"

namespace orve::fakes {

std::string Mostra(const host::TestoOAssente& testo) {
  return testo.value_or("(assente)");
}

std::string Mostra(const host::Variant& valore) {
  if (valore.IsEmpty()) return "(vuoto)";
  if (valore.IsNull()) return "(null)";
  if (valore.IsObject()) return valore.ToObject() ? "(oggetto)" : "(nessun oggetto)";
  if (valore.IsArray()) return "(elenco)";
  return valore.ToText();
}

std::string SiNo(bool valore) {
  return valore ? "true" : "false";
}

namespace {

class FakeMessaggi : public host::Messaggi {
 public:
  FakeMessaggi(FakeAmbiente& ambiente, std::string nome)
      : journal_(ambiente.journal),
        ambiente_(ambiente),
        nome_(std::move(nome)),
        titolo_(ambiente.titoloHost) {}
  std::string TitoloFinestra(const std::string& testo) override {
    journal_->Add(nome_ + ".TitoloFinestra " + testo);
    return testo + titolo_;
  }
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override {
    journal_->Add(nome_ + ".MostraMsg " + testo + "|" + std::to_string(stile) + "|" + titolo + "|" +
                  (proprietario ? "(oggetto)" : "(assente)"));
    return ambiente_.rispostaMessaggio;
  }

 private:
  JournalPtr journal_;
  FakeAmbiente& ambiente_;
  std::string nome_;
  std::string titolo_;
};

class FakeRegistro : public host::RegistroInvio {
 public:
  explicit FakeRegistro(JournalPtr journal) : journal_(std::move(journal)) {}
  void Connessione(const std::shared_ptr<host::Connection>& connessione) override {
    Scrivi("Connessione", connessione ? "(oggetto)" : "(assente)");
  }
  void IDvoce(const std::string& voce) override { Scrivi("IDvoce", voce); }
  void UObject(const std::string& oggetto) override { Scrivi("UObject", oggetto); }
  void TipoCanale(std::int32_t tipo) override { Scrivi("TipoCanale", std::to_string(tipo)); }
  void TitoloStampa(const std::string& titolo) override { Scrivi("TitoloStampa", titolo); }
  void Ditta(const std::string& ditta) override { Scrivi("Ditta", ditta); }
  void NumReg(const std::string& numero) override { Scrivi("NumReg", numero); }
  void TipoDoc(const std::string& tipo) override { Scrivi("TipoDoc", tipo); }
  void NumDoc(const std::string& numero) override { Scrivi("NumDoc", numero); }
  void SezDoc(const std::string& sezione) override { Scrivi("SezDoc", sezione); }
  void RegistraInvio(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                     const host::TestoOAssente& indirizzo, const host::TestoOAssente& allegato,
                     const host::TestoOAssente& esito, const host::TestoOAssente& oggetto,
                     const host::TestoOAssente& corpo) override {
    Scrivi("RegistraInvio", fakes::Mostra(nome) + "|" + fakes::Mostra(ditta) + "|" +
                                fakes::Mostra(indirizzo) + "|" + fakes::Mostra(allegato) + "|" +
                                fakes::Mostra(esito) + "|" + fakes::Mostra(oggetto) + "|" +
                                fakes::Mostra(corpo));
  }
  void UtenteApplicazione(std::int32_t id) override { Scrivi("UtenteApplicazione", std::to_string(id)); }
  void CanaleInvio(float canale) override { Scrivi("CanaleInvio", fakes::Mostra(host::Variant(canale))); }
  void MittenteInvio(const std::string& mittente) override { Scrivi("MittenteInvio", mittente); }
  void GuidLista(const std::string& guid) override { Scrivi("GuidLista", guid); }
  void EsitoInvio(std::int32_t esito) override { Scrivi("EsitoInvio", std::to_string(esito)); }
  void TipoLista(std::int32_t tipo) override { Scrivi("TipoLista", std::to_string(tipo)); }

 private:
  void Scrivi(const std::string& operazione, const std::string& valore) {
    journal_->Add("ObjRegistroInvio." + operazione + " " + valore);
  }
  JournalPtr journal_;
};

class FakeFormatoData : public host::FormatoData {
 public:
  explicit FakeFormatoData(FakeAmbiente& ambiente) : ambiente_(ambiente), journal_(ambiente.journal) {}
  void Data(const std::string& testo) override {
    journal_->Add("ObjFormatoData.Data " + testo);
    data_ = testo;
  }
  std::int32_t Stato() const override { return ambiente_.statoFormatoData; }
  // dd/mm/yyyy to yyyymmdd
  std::string DataDB() const override {
    if (data_.size() < 10) return data_;
    return data_.substr(6, 4) + data_.substr(3, 2) + data_.substr(0, 2);
  }

 private:
  FakeAmbiente& ambiente_;
  JournalPtr journal_;
  std::string data_;
};

class FakeFormatoNumero : public host::FormatoNumero {
 public:
  explicit FakeFormatoNumero(JournalPtr journal) : journal_(std::move(journal)) {}
  host::Variant NumeroDB(const host::Variant& valore) override {
    journal_->Add("ObjFormatoNumero.NumeroDB " + fakes::Mostra(valore));
    return "N" + valore.ToText();
  }

 private:
  JournalPtr journal_;
};

class FakeRisolutore : public host::RisolutorePercorsi {
 public:
  explicit FakeRisolutore(FakeAmbiente& ambiente) : ambiente_(ambiente), journal_(ambiente.journal) {}
  void ChiudiPercorsi() override { journal_->Add("RisolutorePercorsi.ChiudiPercorsi"); }
  void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) override {
    journal_->Add("RisolutorePercorsi.ImpostaTipoPercorso " + std::to_string(tipo) + "|" + testo);
    percorso_ =
        tipo == host::kPercorsoTemporaneo ? ambiente_.cartellaTemporanea : ambiente_.cartellaInstallazione;
  }
  std::string Percorso() const override {
    journal_->Add("RisolutorePercorsi.Percorso");
    return percorso_;
  }
  void ImpostaPercorso(const std::string& percorso, bool indicatore) override {
    journal_->Add("RisolutorePercorsi.ImpostaPercorso " + percorso + "|" + SiNo(indicatore));
    percorso_ = percorso;
  }

 private:
  FakeAmbiente& ambiente_;
  JournalPtr journal_;
  std::string percorso_;
};

class FakeCifratore : public host::CifratorePassword {
 public:
  explicit FakeCifratore(JournalPtr journal) : journal_(std::move(journal)) {}
  std::string Cripta(const std::string& testo) override {
    journal_->Add("CifratorePassword.Cripta");
    return "{" + testo + "}";
  }
  std::string Decripta(const std::string& testo) override {
    journal_->Add("CifratorePassword.Decripta");
    if (testo.size() < 2 || testo.front() != '{') throw host::Errore(5, "Cifratore", "testo non cifrato");
    return testo.substr(1, testo.size() - 2);
  }

 private:
  JournalPtr journal_;
};

class FakeTextStream : public host::TextStream {
 public:
  FakeTextStream(FakeAmbiente& ambiente, std::string file)
      : ambiente_(ambiente), journal_(ambiente.journal), file_(std::move(file)) {}
  void WriteLine(const std::string& testo) override {
    journal_->Add("TextStream.WriteLine " + testo);
    ambiente_.file[file_] += text::ToWindows1252(testo) + "\r\n";
  }
  void Close() override { journal_->Add("TextStream.Close"); }

 private:
  FakeAmbiente& ambiente_;
  JournalPtr journal_;
  std::string file_;
};

class FakeFileSystem : public host::FileSystem {
 public:
  explicit FakeFileSystem(FakeAmbiente& ambiente) : ambiente_(ambiente), journal_(ambiente.journal) {}
  bool FolderExists(const std::string& cartella) override {
    journal_->Add("FileSystem.FolderExists " + cartella);
    return ambiente_.cartelle.contains(cartella);
  }
  bool FileExists(const std::string& file) override {
    journal_->Add("FileSystem.FileExists " + file);
    return ambiente_.file.contains(file);
  }
  std::shared_ptr<host::TextStream> OpenTextFile(const std::string& file, std::int32_t modo, bool crea,
                                                 std::int32_t formato) override {
    journal_->Add("FileSystem.OpenTextFile " + file + "|" + std::to_string(modo) + "|" + SiNo(crea) + "|" +
                  std::to_string(formato));
    ambiente_.file[file];
    return std::make_shared<FakeTextStream>(ambiente_, file);
  }

 private:
  FakeAmbiente& ambiente_;
  JournalPtr journal_;
};

class FakeUtente : public host::UtenteApplicazione {
 public:
  FakeUtente(JournalPtr journal, std::int32_t id) : journal_(std::move(journal)), id_(id) {}
  std::int32_t IdUtente() override {
    journal_->Add("Host.UtenteCorrente.IdUtente");
    return id_;
  }

 private:
  JournalPtr journal_;
  std::int32_t id_;
};

class FakeApplicazione : public host::Applicazione {
 public:
  FakeApplicazione(JournalPtr journal, std::int32_t idUtente, std::shared_ptr<host::Messaggi> messaggi)
      : utente_(std::make_shared<FakeUtente>(std::move(journal), idUtente)), messaggi_(std::move(messaggi)) {}
  std::shared_ptr<host::UtenteApplicazione> UtenteCorrente() override { return utente_; }
  std::shared_ptr<host::Messaggi> Messaggi() override { return messaggi_; }

 private:
  std::shared_ptr<host::UtenteApplicazione> utente_;
  std::shared_ptr<host::Messaggi> messaggi_;
};

class FakeInterfaccia : public host::InterfacciaHost {
 public:
  FakeInterfaccia(JournalPtr journal, std::shared_ptr<host::Applicazione> applicazione)
      : journal_(std::move(journal)), applicazione_(std::move(applicazione)) {}
  std::shared_ptr<host::Applicazione> Applicazione() override {
    journal_->Add("ActiveInterface.Applicazione");
    return applicazione_;
  }

 private:
  JournalPtr journal_;
  std::shared_ptr<host::Applicazione> applicazione_;
};

class FakeOrologio : public host::Orologio {
 public:
  explicit FakeOrologio(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  host::DataOra Adesso() override { return ambiente_.adesso; }
  std::string TestoData(host::DataOra istante) override {
    return ambiente_.testoData.value_or(host::TestoGiornoMeseAnno(istante));
  }
  std::string TestoOra(host::DataOra istante) override {
    return ambiente_.testoOra.value_or(host::TestoOraMinutiSecondi(istante));
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeDebugOutput : public host::DebugOutput {
 public:
  explicit FakeDebugOutput(JournalPtr journal) : journal_(std::move(journal)) {}
  void Scrivi(const std::string& riga) noexcept override { journal_->Add("debug " + riga); }

 private:
  JournalPtr journal_;
};

class FakeGuid : public host::GeneratoreGuid {
 public:
  explicit FakeGuid(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::optional<host::Guid> CreaGuid() override {
    if (!ambiente_.guidDisponibile) return std::nullopt;
    ++conto_;
    if (conto_ <= ambiente_.guid.size()) return ambiente_.guid[conto_ - 1];
    return host::Guid{static_cast<std::uint32_t>(conto_), 0, 0, {}};
  }

 private:
  FakeAmbiente& ambiente_;
  std::size_t conto_ = 0;
};

class FakeEnvironment : public host::Environment {
 public:
  explicit FakeEnvironment(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::string Leggi(const std::string& nome) override {
    const auto trovata = ambiente_.variabili.find(nome);
    return trovata == ambiente_.variabili.end() ? std::string() : trovata->second;
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeRete : public host::Rete {
 public:
  explicit FakeRete(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::int32_t WNetGetUserA(std::string& buffer) override {
    ambiente_.journal->Add("Rete.WNetGetUserA " + std::to_string(buffer.size()));
    constexpr std::int32_t kNessunaRete = 1222;
    if (!ambiente_.utenteRete || ambiente_.utenteRete->size() >= buffer.size()) return kNessunaRete;
    buffer.replace(0, ambiente_.utenteRete->size() + 1, *ambiente_.utenteRete + '\0');
    return 0;
  }

 private:
  FakeAmbiente& ambiente_;
};

class FakeDirectoryObject : public host::DirectoryObject {
 public:
  FakeDirectoryObject(FakeAmbiente& ambiente, std::string percorso)
      : ambiente_(ambiente), percorso_(std::move(percorso)) {}
  host::Variant Get(const std::string& attributo) override {
    ambiente_.journal->Add("Directory.Get " + attributo);
    if (attributo != "defaultNamingContext") return Membro(attributo);
    return ambiente_.contestoPredefinito;
  }
  std::string ADsPath() override {
    ambiente_.journal->Add("Directory.ADsPath");
    return percorso_;
  }
  host::Variant Membro(const std::string& nome) override {
    ambiente_.journal->Add("Directory.Membro " + nome);
    const auto persona = ambiente_.persone.find(percorso_);
    if (persona == ambiente_.persone.end() || !persona->second.contains(nome)) {
      throw host::Errore(-2147463155, "Directory", "Proprietà assente: " + nome);
    }
    return persona->second.at(nome);
  }

 private:
  FakeAmbiente& ambiente_;
  std::string percorso_;
};

class FakeDirectoryConnection : public host::DirectoryConnection {
 public:
  explicit FakeDirectoryConnection(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  void Open(const std::string& origine) override {
    ambiente_.journal->Add("DirectoryConnection.Open " + origine);
    stato_ = 1;
  }
  std::shared_ptr<host::RecordSet> Execute(const std::string& interrogazione) override {
    ambiente_.journal->Add("DirectoryConnection.Execute " + interrogazione);
    return CreaRecordSet(ambiente_.journal, ambiente_.trovatiInDirectory, "DirectoryRecordSet");
  }
  std::int32_t State() override { return stato_; }
  void Close() override {
    ambiente_.journal->Add("DirectoryConnection.Close");
    stato_ = 0;
  }

 private:
  FakeAmbiente& ambiente_;
  std::int32_t stato_ = 0;
};

class FakeDirectory : public host::Directory {
 public:
  explicit FakeDirectory(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  std::shared_ptr<host::DirectoryConnection> CreaConnessione() override {
    ambiente_.journal->Add("Directory.CreaConnessione");
    if (!ambiente_.directoryPresente) throw host::Errore(host::kOggettoNonCreabile);
    return std::make_shared<FakeDirectoryConnection>(ambiente_);
  }
  std::shared_ptr<host::RecordSet> CreaRecordSet() override {
    ambiente_.journal->Add("Directory.CreaRecordSet");
    return CreaRecordSetChiuso(ambiente_.journal, "DirectoryRecordSet");
  }
  std::shared_ptr<host::DirectoryObject> ApriOggetto(const std::string& percorso) override {
    ambiente_.journal->Add("Directory.ApriOggetto " + percorso);
    return std::make_shared<FakeDirectoryObject>(ambiente_, percorso);
  }

 private:
  FakeAmbiente& ambiente_;
};

}  // namespace

struct FakeAmbiente::Piattaforma {
  explicit Piattaforma(FakeAmbiente& ambiente)
      : orologio(ambiente),
        debug(ambiente.journal),
        identificatori(ambiente),
        environment(ambiente),
        rete(ambiente),
        directory(ambiente) {}
  FakeOrologio orologio;
  FakeDebugOutput debug;
  FakeGuid identificatori;
  FakeEnvironment environment;
  FakeRete rete;
  FakeDirectory directory;
};

FakeAmbiente::FakeAmbiente(JournalPtr journalComune)
    : journal(std::move(journalComune)), piattaforma_(std::make_unique<Piattaforma>(*this)) {}

FakeAmbiente::~FakeAmbiente() = default;

std::shared_ptr<host::Messaggi> FakeAmbiente::CreaMessaggi() {
  journal->Add("Ambiente.CreaMessaggi");
  return CreaFakeMessaggi(*this, "ObjMessaggi");
}
std::shared_ptr<host::FormatoData> FakeAmbiente::CreaFormatoData() {
  journal->Add("Ambiente.CreaFormatoData");
  return std::make_shared<FakeFormatoData>(*this);
}
std::shared_ptr<host::FormatoNumero> FakeAmbiente::CreaFormatoNumero() {
  journal->Add("Ambiente.CreaFormatoNumero");
  return std::make_shared<FakeFormatoNumero>(journal);
}
std::shared_ptr<host::RegistroInvio> FakeAmbiente::CreaRegistroInvio() {
  journal->Add("Ambiente.CreaRegistroInvio");
  return std::make_shared<FakeRegistro>(journal);
}
std::shared_ptr<host::RisolutorePercorsi> FakeAmbiente::CreaRisolutorePercorsi() {
  journal->Add("Ambiente.CreaRisolutorePercorsi");
  return std::make_shared<FakeRisolutore>(*this);
}
std::shared_ptr<host::CifratorePassword> FakeAmbiente::CreaCifratorePassword() {
  journal->Add("Ambiente.CreaCifratorePassword");
  return std::make_shared<FakeCifratore>(journal);
}
std::shared_ptr<host::ComponenteSmtp> FakeAmbiente::CreaComponenteSmtp() {
  journal->Add("Ambiente.CreaComponenteSmtp");
  return std::make_shared<FakeSmtp>(journal, risultatoSmtp, fineConsegna);
}
std::shared_ptr<host::OutlookApplication> FakeAmbiente::CreaOutlook() {
  journal->Add("Ambiente.CreaOutlook");
  return CreaFakeOutlook(*this);
}
std::shared_ptr<host::MAPISession> FakeAmbiente::CreaMAPISession() {
  journal->Add("Ambiente.CreaMAPISession");
  return CreaFakeMAPISession(*this);
}
std::shared_ptr<host::MAPIMessages> FakeAmbiente::CreaMAPIMessages() {
  journal->Add("Ambiente.CreaMAPIMessages");
  return CreaFakeMAPIMessages(*this);
}
std::shared_ptr<host::Mapi32> FakeAmbiente::CreaMapi32() {
  journal->Add("Ambiente.CreaMapi32");
  return CreaFakeMapi32(*this);
}
std::shared_ptr<host::FileSystem> FakeAmbiente::CreaFileSystem() {
  journal->Add("Ambiente.CreaFileSystem");
  return std::make_shared<FakeFileSystem>(*this);
}
host::Orologio& FakeAmbiente::OrologioDiSistema() {
  return piattaforma_->orologio;
}
host::DebugOutput& FakeAmbiente::UscitaDiDebug() {
  return piattaforma_->debug;
}
host::GeneratoreGuid& FakeAmbiente::Identificatori() {
  return piattaforma_->identificatori;
}
host::Environment& FakeAmbiente::VariabiliDiAmbiente() {
  return piattaforma_->environment;
}
host::Rete& FakeAmbiente::ReteDiSistema() {
  return piattaforma_->rete;
}
host::Directory& FakeAmbiente::DirectoryAziendale() {
  return piattaforma_->directory;
}

std::shared_ptr<host::Messaggi> CreaFakeMessaggi(FakeAmbiente& ambiente, const std::string& nome) {
  return std::make_shared<FakeMessaggi>(ambiente, nome);
}

std::shared_ptr<host::InterfacciaHost> CreaFakeInterfaccia(FakeAmbiente& ambiente, std::int32_t idUtente,
                                                           bool conApplicazione, bool conMessaggi) {
  std::shared_ptr<host::Messaggi> messaggi;
  if (conMessaggi) messaggi = CreaFakeMessaggi(ambiente, "Host.Messaggi");
  std::shared_ptr<host::Applicazione> applicazione;
  if (conApplicazione)
    applicazione = std::make_shared<FakeApplicazione>(ambiente.journal, idUtente, messaggi);
  return std::make_shared<FakeInterfaccia>(ambiente.journal, applicazione);
}

}  // namespace orve::fakes
