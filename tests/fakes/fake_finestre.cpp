// What FakeAmbiente hands out for the windows: the toolkit without a screen, file objects over a disk of
// names, and the record set and collection of the real toolkits, wrapped to write the journal.
#include <utility>

#include "fakes/fake_ambiente.h"
#include "fakes/headless.h"
#include "text/text.h"
#include "values/collezione_file.h"
#include "values/record_set_in_memoria.h"

namespace orve::fakes {

namespace {

class FakeOggettoFile : public host::OggettoFile {
 public:
  FakeOggettoFile(FakeAmbiente& ambiente, std::string percorso = {})
      : ambiente_(ambiente), journal_(ambiente.journal), percorso_(std::move(percorso)) {}
  std::string Nome() override {
    journal_->Add("File.Nome " + percorso_);
    return percorso_.substr(percorso_.rfind('\\') + 1);
  }
  bool Esiste() override {
    journal_->Add("File.Esiste " + percorso_);
    return ambiente_.file.contains(percorso_);
  }
  void Chiudi() override { journal_->Add("File.Chiudi " + percorso_); }
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override {
    auto& copia = dynamic_cast<FakeOggettoFile&>(host::Richiesto(altro));
    journal_->Add("File.CopiaIn " + percorso_ + "|" + copia.percorso_ + "|" + std::to_string(opzioni));
    ambiente_.file[copia.percorso_] = ambiente_.file.at(percorso_);
  }
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
            std::int32_t opzioni) override {
    journal_->Add("File.Crea " + std::to_string(tipo) + "|" + nome + "|" + testo + "|" +
                  std::to_string(opzioni));
    percorso_ = R"(C:\Temp\Copie\)" + nome;
  }
  std::string Percorso() override {
    journal_->Add("File.Percorso " + percorso_);
    return percorso_;
  }
  std::int32_t Posizione() override {
    journal_->Add("File.Posizione " + percorso_);
    const auto trovata = ambiente_.posizioni.find(percorso_);
    return trovata == ambiente_.posizioni.end() ? 0 : trovata->second;
  }
  void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) override {
    journal_->Add("File.Apri " + nome + "|" + cartella + "|" + std::to_string(opzioni));
    percorso_ = cartella.empty() ? nome : cartella + "\\" + nome;
  }
  void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) override {
    journal_->Add("File.ApriPercorso " + cartella + "|" + nome + "|" + testo + "|" + std::to_string(opzioni));
    percorso_ = cartella + "\\" + nome;
  }

 private:
  FakeAmbiente& ambiente_;
  JournalPtr journal_;
  std::string percorso_;
};

class FakeSelettore : public host::SelettoreFile {
 public:
  explicit FakeSelettore(FakeAmbiente& ambiente) : ambiente_(ambiente), journal_(ambiente.journal) {}
  void Titolo(const std::string& titolo) override { journal_->Add("SelettoreFile.Titolo " + titolo); }
  std::int32_t Mostra(std::int32_t opzioni) override {
    journal_->Add("SelettoreFile.Mostra " + std::to_string(opzioni));
    return ambiente_.fileScelto ? kConfermato : 0;
  }
  std::shared_ptr<host::OggettoFile> FileScelto() override {
    journal_->Add("SelettoreFile.FileScelto");
    return std::make_shared<FakeOggettoFile>(ambiente_, ambiente_.fileScelto.value());
  }
  void Chiudi() override { journal_->Add("SelettoreFile.Chiudi"); }

 private:
  FakeAmbiente& ambiente_;
  JournalPtr journal_;
};

class FakeCollezione : public adapters::values::CollezioneInMemoria {
 public:
  explicit FakeCollezione(JournalPtr journal) : journal_(std::move(journal)) {}
  void Clear() override {
    journal_->Add("FileAllegati.Clear");
    CollezioneInMemoria::Clear();
  }
  void Add(const std::shared_ptr<host::OggettoFile>& file) override {
    journal_->Add("FileAllegati.Add");
    CollezioneInMemoria::Add(file);
  }
  void Remove(std::int32_t posizione) override {
    journal_->Add("FileAllegati.Remove " + std::to_string(posizione));
    CollezioneInMemoria::Remove(posizione);
  }

 private:
  JournalPtr journal_;
};

class FakeRecordSetScollegato : public adapters::values::RecordSetInMemoria {
 public:
  explicit FakeRecordSetScollegato(JournalPtr journal) : journal_(std::move(journal)) {}
  void FieldsAppend(const std::string& nome, std::int32_t tipo, std::int32_t dimensione,
                    std::int32_t attributo) override {
    journal_->Add("RstAllegati.FieldsAppend " + nome + "|" + std::to_string(tipo) + "|" +
                  std::to_string(dimensione) + "|" + std::to_string(attributo));
    RecordSetInMemoria::FieldsAppend(nome, tipo, dimensione, attributo);
  }
  void Open(std::int32_t cursore, std::int32_t blocco, std::int32_t opzioni) override {
    journal_->Add("RstAllegati.Open " + std::to_string(cursore) + "|" + std::to_string(blocco) + "|" +
                  std::to_string(opzioni));
    RecordSetInMemoria::Open(cursore, blocco, opzioni);
  }
  void Close() override {
    journal_->Add("RstAllegati.Close");
    RecordSetInMemoria::Close();
  }
  void AddNew(const std::vector<std::string>& campi, const host::Variant::Array& valori) override {
    std::string riga;
    for (std::size_t i = 0; i < campi.size(); ++i) {
      riga += (i > 0 ? "|" : "") + campi[i] + "=" + fakes::Mostra(valori.at(i));
    }
    journal_->Add("RstAllegati.AddNew " + riga);
    RecordSetInMemoria::AddNew(campi, valori);
  }
  std::int32_t RecordCount() override {
    journal_->Add("legge RstAllegati.RecordCount");
    return RecordSetInMemoria::RecordCount();
  }
  void Find(const std::string& criterio, std::int32_t salta, std::int32_t direzione,
            std::int32_t inizio) override {
    journal_->Add("RstAllegati.Find " + criterio + "|" + std::to_string(salta) + "|" +
                  std::to_string(direzione) + "|" + std::to_string(inizio));
    RecordSetInMemoria::Find(criterio, salta, direzione, inizio);
  }

 private:
  JournalPtr journal_;
};

class FakeParametri : public host::CLSFW_Parametri {
 public:
  explicit FakeParametri(FakeAmbiente& ambiente) : ambiente_(ambiente) {}
  host::Variant GetParametriCorpoMail() override {
    ambiente_.journal->Add("CLSFW_Parametri.GetParametriCorpoMail");
    return ambiente_.parametriCorpo;
  }

 private:
  FakeAmbiente& ambiente_;
};

}  // namespace

std::shared_ptr<host::Form> FakeAmbiente::CreaForm(const host::LayoutForm& layout) {
  journal->Add("Ambiente.CreaForm " + std::string(layout.nome));
  return std::make_shared<HeadlessForm>(journal, layout, persona);
}

std::shared_ptr<host::ConfigurazioneGriglia> FakeAmbiente::CreaConfigurazioneGriglia() {
  journal->Add("Ambiente.CreaConfigurazioneGriglia");
  return CreaFakeConfigurazioneGriglia(journal);
}

std::shared_ptr<host::RecordSetScollegato> FakeAmbiente::CreaRecordSetScollegato() {
  journal->Add("Ambiente.CreaRecordSetScollegato");
  return std::make_shared<FakeRecordSetScollegato>(journal);
}

std::shared_ptr<host::SelettoreFile> FakeAmbiente::CreaSelettoreFile() {
  journal->Add("Ambiente.CreaSelettoreFile");
  return std::make_shared<FakeSelettore>(*this);
}

std::shared_ptr<host::OggettoFile> FakeAmbiente::CreaOggettoFile() {
  journal->Add("Ambiente.CreaOggettoFile");
  return std::make_shared<FakeOggettoFile>(*this);
}

std::shared_ptr<host::CollezioneFile> FakeAmbiente::CreaCollezioneFile() {
  journal->Add("Ambiente.CreaCollezioneFile");
  return std::make_shared<FakeCollezione>(journal);
}

std::shared_ptr<host::CLSFW_Parametri> FakeAmbiente::CreaParametri() {
  journal->Add("Ambiente.CreaParametri");
  return std::make_shared<FakeParametri>(*this);
}

// One combo box is all that loading accounts needs of a form.
std::shared_ptr<host::Form> CreaFakeForm(JournalPtr journal) {
  static constexpr host::LayoutControllo kControlli[] = {
      {.nome = "CMB_ACCOUNT", .tipo = host::TipoControllo::kCombo}};
  return std::make_shared<HeadlessForm>(std::move(journal),
                                        host::LayoutForm{.nome = "Form", .controlli = kControlli}, nullptr);
}

}  // namespace orve::fakes
