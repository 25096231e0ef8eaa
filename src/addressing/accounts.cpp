// The sender accounts of the channels that have them: the default account of user or company, the account
// with a given identifier, and the list that a dialog offers.
//
// A non-empty SmtpServer means that an account is loaded. Only the kind of the server tells certified
// accounts from ordinary ones. Passwords are stored enciphered by the host application's own class; in clear
// they exist in the account fields and nowhere else, and reach no message and no trace.
#include "addressing/accounts.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <string_view>

#include "addressing/account_statements.h"
#include "addressing/active_directory.h"
#include "addressing/columns.h"
#include "addressing/contesto_utente.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/report.h"
#include "text/text.h"

namespace orve {

namespace {

using host::Richiesto;

std::string LeggiTagliato(const host::RecordSet& riga, std::string_view colonna,
                          const std::string& sostituto = {}) {
  return std::string(text::TrimRight(LeggiTesto(riga, colonna, sostituto)));
}

std::int16_t LeggiNumero(const host::RecordSet& riga, std::string_view colonna, std::int16_t sostituto) {
  return NVL(host::Leggi(riga, colonna), sostituto).ToInt16();
}

// Whether a notification is requested: 1 or -1 requests it, and a negative number takes the choice from the
// user. An empty column leaves the choice of the settings as it is.
struct Desiderio {
  bool espresso = false;
  bool voluto = false;
  bool fisso = false;
};

Desiderio LeggiDesiderio(const host::RecordSet& riga, std::string_view colonna) {
  const host::Variant valore = NVL(host::Leggi(riga, colonna), "");
  if (valore == host::Variant("")) return {};
  const double numero = valore.ToDouble();
  return {true, std::fabs(numero) == 1, numero < 0};
}

std::shared_ptr<host::KVL_COMBO> ComboAccount(host::Form& form) {
  auto combo = std::dynamic_pointer_cast<host::KVL_COMBO>(form.Controlli("CMB_ACCOUNT"));
  if (!combo) throw host::Errore(host::kMembroNonSupportato);
  return combo;
}

// Field by field, so that what was read before a value that does not fit is kept. The caller supplies the
// defaults for address and display name.
void LeggiAccount(Account& account, const Oggetti& oggetti, host::RecordSet& risultato,
                  const std::string& indirizzo, const std::string& nome) {
  risultato.MoveFirst();
  account.SmtpServer = LeggiTagliato(risultato, "FW23_SERVERNAME", "localhost");
  account.SmtpPorta = LeggiNumero(risultato, "FW23_PORT", 25);
  account.SmtpTimeout = LeggiNumero(risultato, "FW23_TIMEOUT", 0);
  account.SmtpAuth = LeggiNumero(risultato, "FW23_INDAUTH", 0);
  account.vSenderAddress = LeggiTagliato(risultato, "FW98_MAILADDRESS", indirizzo);
  account.SmtpUtente = LeggiTagliato(risultato, "FW98_USERNAME");
  account.SmtpPassword = DecriptaPassword(oggetti, LeggiTagliato(risultato, "FW98_PASSWORD"));
  account.SmtpCrypt = LeggiNumero(risultato, "FW23_SSL", 0);
  account.vSenderName = LeggiTagliato(risultato, "ALIAS", nome);
  if (const auto lettura = LeggiDesiderio(risultato, "LETTURA"); lettura.espresso) {
    account.vNotifyRead = lettura.voluto;
    account.ReadReceipt = account.vNotifyRead;
    account.vDisableNotifyRead = lettura.fisso;
  }
  if (const auto consegna = LeggiDesiderio(risultato, "CONSEGNA"); consegna.espresso) {
    account.vNotifyDelivery = consegna.voluto;
    account.vDisableNotifyDelivery = consegna.fisso;
  }
}

// No defaults and no trimming here, except where a column may be empty in a valid account: a null elsewhere
// fails the load. Returns the account's identifier.
std::int16_t AggiungiAccount(const Messaggio& messaggio, Account& account, const Oggetti& oggetti,
                             const host::RecordSet& riga, host::KVL_COMBO& combo) {
  const std::string indirizzo = Leggi(riga, "FW98_MAILADDRESS").ToText();
  const host::Variant id = Leggi(riga, "FW98_IDACCOUNT");
  const std::string server = Leggi(riga, "FW23_SERVERNAME").ToText();
  const std::int16_t porta = Leggi(riga, "FW23_PORT").ToInt16();
  const std::int16_t timeout = Leggi(riga, "FW23_TIMEOUT").ToInt16();
  const std::string utente = LeggiTesto(riga, "FW98_USERNAME");
  const std::string password = DecriptaPassword(oggetti, LeggiTesto(riga, "FW98_PASSWORD"));
  const std::int16_t autenticazione = Leggi(riga, "FW23_INDAUTH").ToInt16();
  const std::int16_t lettura = Leggi(riga, "LETTURA").ToInt16();
  const std::int16_t consegna = Leggi(riga, "CONSEGNA").ToInt16();
  const std::string nome = LeggiTesto(riga, "ALIAS");
  const std::int16_t sicurezza = LeggiNumero(riga, "FW23_SSL", 0);
  Richiesto(account.vCollMittenti)
      .AddMittente(indirizzo, server, porta, timeout, utente, password, autenticazione, lettura, consegna,
                   nome, sicurezza, id.ToText());
  const std::int16_t dati = id.ToInt16();
  combo.AddItemData(indirizzo + (messaggio.IsPec ? " - Pec" : " - Mail"), dati);
  return dati;
}

// The first row is the user's default and ends up selected.
void ElencaAccount(const Messaggio& messaggio, Account& account, const Oggetti& oggetti,
                   host::RecordSet& risultato, host::KVL_COMBO& combo) {
  const std::int16_t primo = AggiungiAccount(messaggio, account, oggetti, risultato, combo);
  for (risultato.MoveNext(); !risultato.Eof(); risultato.MoveNext()) {
    AggiungiAccount(messaggio, account, oggetti, risultato, combo);
  }
  combo.Text(primo);
}

void CercaAccountPerUtente(const Messaggio& messaggio, Account& account, Contesto& contesto,
                           const Oggetti& oggetti, host::Form& form) {
  if (!account.vCollMittenti) account.vCollMittenti = std::make_shared<CollMittenti>(oggetti.ambiente);
  const std::int32_t idUtente = GetIdUtente(contesto, oggetti);
  auto& connessione = Richiesto(contesto.ConnectionADO);
  auto risultato =
      connessione.Execute(StatementElencoUtente(idUtente, messaggio.IsPec), host::kComandoNonIndicato);
  const auto combo = ComboAccount(form);
  combo->EraseCombo();
  combo->AutoOpen(false);
  if (Richiesto(risultato).Eof()) {
    risultato->Close();
    risultato = connessione.Execute(StatementElencoAzienda(contesto.DittaCorrente.Joined(), messaggio.IsPec),
                                    host::kComandoNonIndicato);
  }
  if (Richiesto(risultato).Eof()) {
    MostraMessaggio(oggetti,
                    std::string("Non è disponibile alcun account ") + (messaggio.IsPec ? "pec" : "mail"),
                    host::kSemplice, "");
  } else {
    ElencaAccount(messaggio, account, oggetti, *risultato, *combo);
  }
  risultato->Close();
}

}  // namespace

void CaricaAccountPredefinito(const Messaggio& messaggio, Account& account, Contesto& contesto,
                              const Oggetti& oggetti) {
  IgnoraErrori([&] {
    if (account.Caricato()) return;
    // The directory is asked before anything is known about the account, so that its answer can serve as the
    // default.
    MDL_ACTIVEDIRECTORY::DatiUtenteDirectory persona;
    const std::string utenteRete = MDL_ACTIVEDIRECTORY::GetNomeUtenteRete(oggetti.ambiente->ReteDiSistema());
    MDL_ACTIVEDIRECTORY::GetDatiUtenteDirectory(
        oggetti.ambiente->DirectoryAziendale(), utenteRete, persona, [&](const host::Errore& errore) {
          Riferisci(*oggetti.ambiente, &Osservatore::RicercaInDirectoryFallita, errore);
        });
    const std::int32_t idUtente = GetIdUtente(contesto, oggetti);

    auto& connessione = Richiesto(contesto.ConnectionADO);
    auto risultato =
        connessione.Execute(StatementDellUtente(idUtente, messaggio.IsPec), host::kComandoNonIndicato);
    const bool dellUtente = !Richiesto(risultato).Eof();
    if (!dellUtente) {
      risultato->Close();
      risultato = connessione.Execute(StatementDellAzienda(contesto.DittaCorrente, messaggio.IsPec),
                                      host::kComandoNonIndicato);
    }
    if (!Richiesto(risultato).Eof()) {
      LeggiAccount(account, oggetti, *risultato, persona.EmailAddress,
                   dellUtente ? persona.FirstName + " " + persona.LastName : contesto.AziendaCorr);
    }
    risultato->Close();
  });
}

void CaricaAccountDaId(Account& account, const Contesto& contesto, Esito& esito, const Oggetti& oggetti) {
  IgnoraErrori([&] {
    const auto risultato = Richiesto(contesto.ConnectionADO)
                               .Execute(StatementDaId(account.IdMittenteDiretto), host::kComandoNonIndicato);
    if (Richiesto(risultato).Eof()) {
      esito.StatoInvio = kvParametriNonValidi;
    } else {
      LeggiAccount(account, oggetti, *risultato, "", contesto.AziendaCorr);
    }
    risultato->Close();
  });
}

bool LoadAccountsPerUser(const Messaggio& messaggio, Account& account, Contesto& contesto,
                         const Oggetti& oggetti, host::Form& form) {
  bool almenoUno = false;
  SegnalaErrori(PerMessaggio(oggetti, "-", " in CLSFW_MAILSERVER: LoadAccountsPerUser"), [&] {
    CercaAccountPerUtente(messaggio, account, contesto, oggetti, form);
    almenoUno = Richiesto(account.vCollMittenti).Count() >= 1;
  });
  return almenoUno;
}

std::string DecriptaPassword(const Oggetti& oggetti, const std::string& testo) {
  std::string chiaro = testo;
  IgnoraErrori([&] { chiaro = Richiesto(oggetti.ambiente->CreaCifratorePassword()).Decripta(testo); });
  return chiaro;
}

std::string CriptaPassword(const Oggetti& oggetti, const std::string& testo) {
  std::string cifrato = testo;
  IgnoraErrori([&] { cifrato = Richiesto(oggetti.ambiente->CreaCifratorePassword()).Cripta(testo); });
  return cifrato;
}

}  // namespace orve
