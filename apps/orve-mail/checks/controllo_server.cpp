#include "orve-mail/checks/controllo_server.h"

#include <cstdint>
#include <string>
#include <utility>

#include "smtp/probe.h"

namespace orve::app {

namespace {

using adapters::smtp::ProbeReport;
using adapters::smtp::ProbeStep;

constexpr std::uint64_t kMega = 1'000'000;
constexpr std::uint64_t kPiccolo = 5 * kMega;

class Racconto {
 public:
  Racconto(const AccountLetto& account, std::string senzaAccesso, const ProbeReport& esito,
           const Rimedi& rimedi, Referto& referto)
      : account_(account),
        senzaAccesso_(std::move(senzaAccesso)),
        esito_(esito),
        rimedi_(rimedi),
        referto_(referto) {}

  void Tutto() {
    Passo(ProbeStep::kName, "nome del server", account_.server,
          "correggere il nome del server di posta, o il DNS di questa macchina");
    Passo(ProbeStep::kConnection, "connessione",
          account_.server + ", porta " + std::to_string(account_.porta),
          "verificare porta, firewall e che il server sia attivo");
    Cifratura();
    if (esito_.reached == ProbeStep::kHello) {
      referto_.Errore(Nome("saluto"), esito_.failure, "sentire il gestore del server");
    }
    Accesso();
    Limite();
    if (!senzaAccesso_.empty()) return Saltato("mittente");
    Passo(ProbeStep::kSender, "mittente", "il server lo accetta",
          "chiedere al gestore che questo accesso possa inviare con questo indirizzo, o correggere "
          "l'indirizzo");
  }

 private:
  [[nodiscard]] std::string Nome(const std::string& controllo) const {
    return account_.titolo + ", " + controllo;
  }
  [[nodiscard]] bool Arrivato(ProbeStep passo) const { return esito_.reached > passo; }

  void Saltato(const std::string& controllo) {
    referto_.Saltato(Nome(controllo), "il controllo non ci è arrivato");
  }

  void Passo(ProbeStep passo, const char* controllo, const std::string& dettaglio,
             const std::string& rimedio) {
    if (Arrivato(passo)) return referto_.Ok(Nome(controllo), dettaglio);
    if (esito_.reached == passo) return referto_.Errore(Nome(controllo), esito_.failure, rimedio);
    Saltato(controllo);
  }

  void Cifratura() {
    if (!account_.cifrata) {
      if (!Arrivato(ProbeStep::kConnection)) return Saltato("TLS");
      return referto_.Avviso(Nome("TLS"), "la connessione non è cifrata",
                             account_.autenticazione ? "attivare TLS: utente e password viaggiano in chiaro"
                                                     : "attivare TLS, se il server lo offre");
    }
    std::string dettaglio = esito_.tlsVersion.empty() ? "cifrata" : esito_.tlsVersion;
    dettaglio += ", certificato valido";
    if (!esito_.certificateEnd.empty()) dettaglio += " fino al " + esito_.certificateEnd;
    Passo(ProbeStep::kEncryption, "TLS", dettaglio,
          esito_.certificateRefused
              ? "usare il nome che sta nel certificato, o indicare con --ca l'autorità che lo ha firmato"
              : "verificare che su questa porta il server offra TLS (465: da subito; altre: STARTTLS)");
  }

  void Accesso() {
    if (!account_.autenticazione) {
      return referto_.Saltato(Nome("AUTH"), "l'account invia senza autenticazione");
    }
    if (!senzaAccesso_.empty()) return referto_.Saltato(Nome("AUTH"), senzaAccesso_);
    if (Arrivato(ProbeStep::kAuthentication) && account_.utente.empty()) {
      return referto_.Avviso(Nome("AUTH"), "l'account non ha un nome utente", "indicarlo in FW98_USERNAME");
    }
    Passo(ProbeStep::kAuthentication, "AUTH", "utente " + account_.utente,
          "correggere l'utente dell'account (FW98_USERNAME), o la password: " + rimedi_.password);
  }

  void Limite() {
    if (!Arrivato(ProbeStep::kHello)) return Saltato("dimensione massima");
    if (!esito_.sizeLimit) return referto_.Ok(Nome("dimensione massima"), "il server non ne dichiara");
    const std::string dettaglio = std::to_string(*esito_.sizeLimit) + " byte";
    if (*esito_.sizeLimit >= kPiccolo) return referto_.Ok(Nome("dimensione massima"), dettaglio);
    referto_.Avviso(
        Nome("dimensione massima"), dettaglio,
        "gli allegati crescono di un terzo nel messaggio: chiedere al gestore un limite più alto");
  }

  const AccountLetto& account_;
  const std::string senzaAccesso_;  // why there is no login; empty: there is one, or none is needed
  const ProbeReport& esito_;
  const Rimedi& rimedi_;
  Referto& referto_;
};

}  // namespace

void ControllaServer(const AccountLetto& account, const std::optional<adapters::secrets::Secret>& password,
                     const PermessiInChiaro& permessi, const adapters::smtp::SmtpOptions& smtp,
                     const Rimedi& rimedi, Referto& referto) {
  if (account.server.empty()) {
    return referto.Errore(account.titolo + ", nome del server", "l'account non ha un server",
                          "assegnare all'account un server di posta (FW98_IDSERVER_FW23)");
  }
  const bool senzaPassword = account.autenticazione && !password;
  if (senzaPassword) {
    referto.Errore(account.titolo + ", password",
                   "non si apre con questa chiave per " + account.utente + " e questo server",
                   rimedi.password + ", o indicare con --chiave la chiave giusta");
  }
  const bool negata =
      account.autenticazione && !account.cifrata && !permessi.Per(account.server, account.porta);
  if (negata) {
    referto.Errore(account.titolo + ", password in chiaro", "non è permessa, e gli invii falliscono",
                   rimedi.cifratura + ", o permetterla con --password-in-chiaro");
  }
  const std::string senzaAccesso = senzaPassword ? "senza password non si accede"
                                   : negata      ? "la password in chiaro non è permessa"
                                                 : "";
  adapters::smtp::Target meta;
  meta.host = account.server;
  meta.port = account.porta;
  meta.encrypted = account.cifrata;
  if (account.autenticazione && senzaAccesso.empty()) {
    meta.user = account.utente;
    meta.password = *password;
  }
  const ProbeReport esito = adapters::smtp::Probe(smtp, meta, account.indirizzo);
  Racconto(account, senzaAccesso, esito, rimedi, referto).Tutto();
}

}  // namespace orve::app
