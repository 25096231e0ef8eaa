#include "orve-mail/address-book/rubrica_manager.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/variant.h"

namespace orve::app {

namespace {

using host::Richiesto;

enum TipoIndirizzi : std::int32_t { kMail = 1, kPec = 3 };

// As the recipients see it, without the characters that have a meaning in a list of recipients.
std::string NomePerElenco(const std::string& scelto) {
  std::string nome = adapters::mime::NameSafe(scelto);
  for (char& c : nome) {
    if (c == ';') c = ',';
    if (c == '<') c = '(';
    if (c == '>') c = ')';
  }
  return nome;
}

std::string Uniti(const std::vector<std::string>& indirizzi) {
  std::string uniti;
  for (const auto& indirizzo : indirizzi) {
    if (!uniti.empty()) uniti.append(";");
    uniti.append(indirizzo);
  }
  return uniti;
}

class Rubrica : public host::ManagerRubrica {
 public:
  Rubrica(std::shared_ptr<host::Ambiente> ambiente, std::shared_ptr<host::Connection> connessione,
          FinestraRubrica finestra, std::optional<host::DataOra> data)
      : ambiente_(std::move(ambiente)),
        connessione_(std::move(connessione)),
        finestra_(std::move(finestra)),
        data_(data) {}

  void DittaRubrica(const host::Variant& ditta) override { ditta_ = ditta; }
  void TipoRubrica(std::int32_t tipo) override {
    if (tipo != kMail && tipo != kPec) throw host::Errore(host::kArgomentoNonValido);
    pec_ = tipo == kPec;
  }
  void CodiceScelto(const host::Variant& codice) override { codice_ = codice; }
  host::Variant CodiceScelto() override { return codice_; }
  void NomeScelto(const host::Variant& nome) override { nome_ = nome; }
  host::Variant NomeScelto() override { return nome_; }
  void IndirizzoScelto(const host::Variant& indirizzo) override { indirizzo_ = indirizzo; }
  host::Variant IndirizzoScelto() override { return indirizzo_; }
  bool Annullata() override { return annullata_; }
  void Interfaccia(const std::shared_ptr<host::InterfacciaHost>& /*interfaccia*/) override {}

  void ApriRubrica() override {
    annullata_ = true;  // also when an error keeps the window from opening
    const auto scelta = finestra_(Apertura());
    if (!scelta) return;
    codice_ = scelta->codice;
    nome_ = NomePerElenco(scelta->nome);
    indirizzo_ = Uniti(scelta->indirizzi);
    annullata_ = false;
  }

  void ApriRubricaOutlook() override { DiceCheManca("Outlook"); }
  void ApriRubricaTobit() override { DiceCheManca("Tobit"); }

 private:
  [[nodiscard]] AperturaRubrica Apertura() const {
    RichiestaParti richiesta;
    if (!ditta_.Joined().empty()) richiesta.ditta = ditta_.ToInt32();
    richiesta.pec = pec_;
    richiesta.data = data_ ? *data_ : Richiesto(ambiente_).OrologioDiSistema().Adesso();
    AperturaRubrica apertura;
    apertura.parti = LeggiParti(Richiesto(connessione_), richiesta);
    apertura.titolo =
        Richiesto(ambiente_->CreaMessaggi()).TitoloFinestra(pec_ ? "Rubrica degli indirizzi PEC" : "Rubrica");
    apertura.pec = pec_;
    apertura.nome = nome_.Joined();
    return apertura;
  }

  void DiceCheManca(const std::string& quale) const {
    const std::string testo = "La rubrica di " + quale +
                              " non esiste su questo computer.\n\nUsare la rubrica «Arvio», oppure scrivere "
                              "l'indirizzo nella casella.";
    Richiesto(ambiente_).Osservatore().MessaggioMostrato(testo, host::kAvviso);
    Richiesto(ambiente_->CreaMessaggi()).MostraMsg(testo, host::kAvviso, "Rubrica di " + quale, nullptr);
  }

  std::shared_ptr<host::Ambiente> ambiente_;
  std::shared_ptr<host::Connection> connessione_;
  FinestraRubrica finestra_;
  std::optional<host::DataOra> data_;
  host::Variant ditta_;
  bool pec_ = false;
  host::Variant codice_ = "";
  host::Variant nome_ = "";
  host::Variant indirizzo_ = "";
  bool annullata_ = false;
};

}  // namespace

std::shared_ptr<host::ManagerRubrica> CreaRubrica(std::shared_ptr<host::Ambiente> ambiente,
                                                  std::shared_ptr<host::Connection> connessione,
                                                  FinestraRubrica finestra,
                                                  std::optional<host::DataOra> data) {
  return std::make_shared<Rubrica>(std::move(ambiente), std::move(connessione), std::move(finestra), data);
}

}  // namespace orve::app
