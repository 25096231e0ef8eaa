#include "faults/prova.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "fakes/oggetti_del_canale.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::faults {

namespace {

using fakes::JournalPtr;

constexpr std::size_t kLunghezzaOperazione = 100;

// The operations that the fakes answer without journaling them.

class RecordSetContato : public host::RecordSet {
 public:
  RecordSetContato(std::shared_ptr<host::RecordSet> vero, JournalPtr journal)
      : vero_(std::move(vero)), journal_(std::move(journal)) {}
  bool Eof() const override {
    journal_->Add("RecordSet.EOF");
    return vero_->Eof();
  }
  std::shared_ptr<host::Fields> Fields() const override { return vero_->Fields(); }
  void MoveFirst() override { vero_->MoveFirst(); }
  void MoveNext() override { vero_->MoveNext(); }
  std::int32_t State() const override {
    journal_->Add("RecordSet.State");
    return vero_->State();
  }
  void Close() override { vero_->Close(); }

 private:
  std::shared_ptr<host::RecordSet> vero_;
  JournalPtr journal_;
};

class ConnessioneContata : public host::Connection {
 public:
  ConnessioneContata(std::shared_ptr<host::Connection> vera, JournalPtr journal)
      : vera_(std::move(vera)), journal_(std::move(journal)) {}
  std::shared_ptr<host::RecordSet> Execute(const std::string& statement, std::int32_t opzione) override {
    return std::make_shared<RecordSetContato>(vera_->Execute(statement, opzione), journal_);
  }
  std::shared_ptr<host::Command> CreateCommand() override { return vera_->CreateCommand(); }

 private:
  std::shared_ptr<host::Connection> vera_;
  JournalPtr journal_;
};

class FormatoDataContato : public host::FormatoData {
 public:
  FormatoDataContato(std::shared_ptr<host::FormatoData> vero, JournalPtr journal)
      : vero_(std::move(vero)), journal_(std::move(journal)) {}
  void Data(const std::string& testo) override { vero_->Data(testo); }
  std::int32_t Stato() const override {
    journal_->Add("ObjFormatoData.Stato");
    return vero_->Stato();
  }
  std::string DataDB() const override {
    journal_->Add("ObjFormatoData.DataDB");
    return vero_->DataDB();
  }

 private:
  std::shared_ptr<host::FormatoData> vero_;
  JournalPtr journal_;
};

class AmbienteContato : public fakes::FakeAmbiente {
 public:
  std::shared_ptr<host::FormatoData> CreaFormatoData() override {
    return std::make_shared<FormatoDataContato>(FakeAmbiente::CreaFormatoData(), journal);
  }
};

// The host application: a user, and a message object of its own.
class Ospite : public host::InterfacciaHost,
               public host::Applicazione,
               public host::UtenteApplicazione,
               public std::enable_shared_from_this<Ospite> {
 public:
  Ospite(JournalPtr journal, std::shared_ptr<host::Messaggi> messaggi)
      : journal_(std::move(journal)), messaggi_(std::move(messaggi)) {}
  std::shared_ptr<host::Applicazione> Applicazione() override {
    journal_->Add("ActiveInterface.Applicazione");
    return shared_from_this();
  }
  std::shared_ptr<host::UtenteApplicazione> UtenteCorrente() override {
    journal_->Add("Applicazione.UtenteCorrente");
    return shared_from_this();
  }
  std::shared_ptr<host::Messaggi> Messaggi() override {
    journal_->Add("Applicazione.Messaggi");
    return messaggi_;
  }
  std::int32_t IdUtente() override {
    journal_->Add("UtenteCorrente.IdUtente");
    return 7;
  }

 private:
  JournalPtr journal_;
  std::shared_ptr<host::Messaggi> messaggi_;
};

// Debug output cannot fail; a release, and what a window reports about itself, is not an operation.
bool Operazione(const std::string& riga) {
  const std::string primo = riga.substr(0, riga.find(' '));
  return primo == "legge" || primo == "BeforeSendMail" || primo.find('.') != std::string::npos;
}

std::string SuUnaRiga(const std::string& testo) {
  std::string riga;
  for (const char c : testo) {
    const bool bianco = c == ' ' || c == '\r' || c == '\n';
    if (!bianco) {
      riga.push_back(c);
    } else if (!riga.empty() && riga.back() != ' ') {
      riga.push_back(' ');
    }
  }
  return std::string(text::TrimRight(riga));
}

// Numbers the operations and makes one of them fail, and if requested the message object too.
class Guasto {
 public:
  Guasto(JournalPtr journal, std::size_t numero, bool messaggiRotti)
      : journal_(std::move(journal)), numero_(numero), messaggiRotti_(messaggiRotti) {
    journal_->Svuota();
    journal_->Quando("", [this] { Conta(); });
  }
  Guasto(const Guasto&) = delete;
  Guasto& operator=(const Guasto&) = delete;
  ~Guasto() { journal_->DimenticaPiani(); }

  [[nodiscard]] const std::vector<std::string>& Operazioni() const { return operazioni_; }

  /// What took effect.
  [[nodiscard]] std::vector<std::string> Righe() const {
    std::vector<std::string> righe = journal_->Righe();
    for (auto fallita = fallite_.rbegin(); fallita != fallite_.rend(); ++fallita) {
      righe.erase(righe.begin() + static_cast<std::ptrdiff_t>(*fallita));
    }
    return righe;
  }

 private:
  void Conta() {
    const std::string& riga = journal_->Righe().back();
    if (!Operazione(riga)) return;
    const std::string nome(text::TrimRight(text::Left(SuUnaRiga(riga), kLunghezzaOperazione)));
    const int volta = ++volte_[nome];
    operazioni_.push_back(volta == 1 ? nome : nome + " (" + std::to_string(volta) + ")");
    const bool messaggioRotto = messaggiRotti_ && riga.starts_with("ObjMessaggi.MostraMsg");
    if (operazioni_.size() != numero_ && !messaggioRotto) return;
    fallite_.push_back(journal_->Righe().size() - 1);
    throw host::Errore(1001, "Prova", "guasto di prova");
  }

  JournalPtr journal_;
  std::size_t numero_;
  bool messaggiRotti_;
  std::vector<std::string> operazioni_;
  std::map<std::string, int> volte_;
  std::vector<std::size_t> fallite_;  // their lines in the journal
};

std::string Sezione(const std::string& riga) {
  const std::string una =
      text::Replace(text::Replace(text::Replace(riga, "\r\n", "¶"), "\r", "¶"), "\n", "¶");
  return std::string(text::TrimRight(una)) + "\n";
}

// What was sent with the message, if it was sent.
std::string Partito(const std::vector<std::string>& righe, const fakes::FakeAmbiente& ambiente) {
  std::string contenuto;
  std::string partito;
  for (const std::string& riga : righe) {
    for (const fakes::OggettiDelCanale& canale : fakes::OggettiDeiCanali()) {
      const auto inizia = [&riga](std::string_view inizio) { return riga.starts_with(inizio); };
      if (std::ranges::any_of(canale.contenuto, inizia)) {
        contenuto += Sezione("  " + riga.substr(riga.find('.') + 1));
      }
      if (inizia(canale.invio)) partito += "partito\n" + contenuto;
    }
  }
  if (partito.empty()) return "non partito\n";
  for (const auto& invio : ambiente.inviiMapi) {
    for (const auto& d : invio.destinatari)
      partito += "  recip " + std::to_string(d.RecipClass) + " " + d.Name + "\n";
    for (const auto& f : invio.file) partito += "  file " + f.PathName + " " + f.FileName + "\n";
    partito +=
        Sezione("  Subject " + invio.messaggio.Subject) + Sezione("  NoteText " + invio.messaggio.NoteText);
  }
  return partito;
}

// The register's line with what was set for it, in the order in which its readers know it.
std::string Registro(const std::vector<std::string>& righe) {
  constexpr std::string_view kRegistro = "ObjRegistroInvio.";
  std::map<std::string, std::string> valori;
  std::string registro;
  for (const std::string& riga : righe) {
    if (!riga.starts_with(kRegistro)) continue;
    const std::string resto = riga.substr(kRegistro.size());
    const std::size_t bianco = resto.find(' ');
    const std::string membro = resto.substr(0, bianco);
    valori[membro] = resto.substr(bianco + 1);
    if (membro != "RegistraInvio") continue;
    registro += Sezione("registro esito " + valori["EsitoInvio"] + ", tipo " + valori["TipoCanale"] +
                        ", canale " + valori["CanaleInvio"] + ", mittente (" + valori["MittenteInvio"] +
                        "): " + valori["RegistraInvio"]);
  }
  return registro;
}

std::string Eventi(const std::vector<std::string>& righe) {
  constexpr std::string_view kEvento = "ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale ";
  std::string eventi;
  for (const std::string& riga : righe) {
    if (riga.starts_with(kEvento)) eventi += Sezione("evento " + riga.substr(kEvento.size()));
  }
  return eventi;
}

std::string LogEMessaggi(const std::vector<std::string>& righe) {
  constexpr std::string_view kLog = "TextStream.WriteLine ";
  constexpr std::string_view kMessaggio = ".MostraMsg ";
  std::string testo;
  for (const std::string& riga : righe) {
    const bool intestazione = riga.find("Destinatario --- ") != std::string::npos;
    if (riga.starts_with(kLog) && !intestazione) testo += Sezione("log " + riga.substr(kLog.size()));
    const std::size_t messaggio = riga.find(kMessaggio);
    if (messaggio != std::string::npos && messaggio < riga.find(' ')) {
      testo += Sezione("messaggio " + riga.substr(messaggio + kMessaggio.size()));
    }
  }
  return testo;
}

// The calling program: it goes on until an error reaches it.
class Chiamante {
 public:
  template <class Passo>
  void Fa(const std::string& nome, Passo&& passo) {
    if (!errore_.empty()) return;
    try {
      std::forward<Passo>(passo)();
    } catch (const host::Errore& errore) {
      errore_ =
          "errore da " + nome + ": " + std::to_string(errore.Numero()) + " " + errore.Descrizione() + "\n";
    }
  }
  [[nodiscard]] const std::string& Errore() const { return errore_; }

 private:
  std::string errore_;
};

int Rimasti(const std::vector<std::string>& righe) {
  int rimasti = 0;
  for (const std::string& riga : righe) {
    if (!riga.starts_with("debug ")) continue;
    if (riga.find("|INI|") != std::string::npos) ++rimasti;
    if (riga.find("|TER|") != std::string::npos) --rimasti;
  }
  return rimasti;
}

}  // namespace

Corsa Corri(const Scena& scena, std::size_t guasto, bool messaggiRotti) {
  const auto ambiente = std::make_shared<AmbienteContato>();
  const auto database = std::make_shared<fakes::FakeConnection>(ambiente->journal);
  scena.prepara(*ambiente, *database);
  const auto connessione = std::make_shared<ConnessioneContata>(database, ambiente->journal);
  const auto ospite = std::make_shared<Ospite>(ambiente->journal, ambiente->CreaMessaggi());
  Guasto contatore(ambiente->journal, guasto, messaggiRotti);
  Chiamante chiamante;
  std::unique_ptr<CLSFW_MAILSERVER> servizio;
  std::string stato = "senza servizio";
  chiamante.Fa("creazione", [&] { servizio = std::make_unique<CLSFW_MAILSERVER>(ambiente); });
  chiamante.Fa("GetImpostazioni", [&] {
    servizio->ConnectionADO = connessione;
    servizio->ActiveInterface = ospite;
    servizio->DittaCorrente = 1;
    servizio->GetImpostazioni();
  });
  chiamante.Fa("InizializzaRegistroInvioMailMultiprofilo",
               [&] { servizio->InizializzaRegistroInvioMailMultiprofilo("voce", "stampa", 7, "Fattura"); });
  chiamante.Fa("invio", [&] { scena.invia(ambiente, *servizio); });
  if (servizio) stato = std::to_string(servizio->Stato());
  servizio.reset();

  const auto righe = contatore.Righe();
  Corsa corsa;
  corsa.operazioni = contatore.Operazioni();
  corsa.visto = chiamante.Errore() + Partito(righe, *ambiente) + "stato " + stato + "\n" + Registro(righe) +
                Eventi(righe) + LogEMessaggi(righe);
  corsa.rimasti = Rimasti(righe);
  return corsa;
}

}  // namespace orve::faults
