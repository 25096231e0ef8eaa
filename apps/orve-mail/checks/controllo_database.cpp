#include "orve-mail/checks/controllo_database.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string_view>
#include <utility>

#include "addressing/account_statements.h"
#include "addressing/contesto_utente.h"
#include "channels/channel_traits.h"
#include "content/corpo_html.h"
#include "orve-mail/host/account.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/host/errore.h"
#include "service/settings.h"
#include "text/text.h"

namespace orve::app {

namespace {

struct Tabella {
  const char* nome;
  const char* colonne;
};

constexpr std::array<Tabella, 17> kTabelle = {{
    {"FW24_FAXCONFIG",
     "FW24_CODICE, FW24_INDCANALE, FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_PATHTMP, FW24_READRECEIPT,"
     " FW24_FLGMSGPERS, FW24_MSGPERS, FW24_BCC, FW24_MAILMODSTDIFF"},
    {"FW95_SETTINGS", "FW95_CODICE, FW95_VALORE"},
    {"CG16_ANAGGEN",
     "CG16_CODICE, CG16_RAGSOANAG, CG16_NOME, CG16_COGNOME, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV,"
     " CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC"},
    {"CG18_ANADITTABASE", "CG18_DITTA, CG18_CODICE_CG16"},
    {"CG44_CLIFOR", "CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR"},
    {"MG17_AGENTI", "MG17_DITTA_CG18, MG17_AGENTE, MG17_ANAGEN_CG16"},
    {"MG22_CLIFORDEST",
     "MG22_DITTA_CG18, MG22_TIPOCF_CG44, MG22_CLIFOR_CG44, MG22_CODDESTIN, MG22_DESTRAGSOC, MG22_DESTEMAIL,"
     " MG22_DESTFAX, MG22_DESTPEC"},
    {"CO02_ANAGCONTATTO", "CO02_ID, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC"},
    {"CO03_LEGCONTATTO", "CO03_ID_CO02, CO03_CODICE_CG16"},
    {"FW23_FAXER",
     "FW23_IDSERVER, FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL"},
    {"FW98_MAILACCOUNT",
     "FW98_IDACCOUNT, FW98_MAILADDRESS, FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS, FW98_INDREADRCPT,"
     " FW98_INDDELIVERYSTATUS, FW98_IDSERVER_FW23"},
    {"FW99_MAILUSERACCOUNT", "FW99_IDACCOUNT_FW98, FW99_ID_FW07, FW99_ISDEFAULT"},
    {"FW9A_MAILAZIENDAACCOUNT", "FW9A_IDACCOUNT_FW98, FW9A_DITTA_CG18"},
    {"FW07_APPUSER", "FW07_ID, FW07_CODICE, FW07_CODICE_FW06, FW07_USERNAME, FW07_DESCR"},
    {"FW06_GROUPUSR", "FW06_ID, FW06_CODICE, FW06_DESCR"},
    {"FW00_GRPUSRASSOC", "FW00_ID_FW07, FW00_ID_FW06, FW00_FLGPREF"},
    {"INFORMATION_SCHEMA.TABLES", "TABLE_NAME"},
}};

std::shared_ptr<host::RecordSet> Esegui(host::Connection& connessione, const std::string& istruzione) {
  return connessione.Execute(istruzione, host::kComandoTesto);
}

std::string Testo(const host::RecordSet& riga, const char* colonna) {
  return std::string(text::Trim(host::Leggi(riga, colonna).Joined()));
}

std::int32_t Numero(const host::RecordSet& riga, const char* colonna, std::int32_t altrimenti) {
  const host::Variant valore = host::Leggi(riga, colonna);
  return text::Trim(valore.Joined()).empty() ? altrimenti : valore.ToInt32();
}

// What the library holds in 16 bits, such as ports and the numbers next to them.
std::int16_t NumeroBreve(const host::RecordSet& riga, const char* colonna, std::int16_t altrimenti) {
  const std::int32_t numero = Numero(riga, colonna, altrimenti);
  if (numero < std::numeric_limits<std::int16_t>::min() ||
      numero > std::numeric_limits<std::int16_t>::max()) {
    throw host::Errore(
        host::kOverflow, "",
        std::string(colonna) + " è " + std::to_string(numero) +
            ", oltre i 16 bit che l'invio ne legge (una porta sopra 32767 vi sta come la porta "
            "meno 65536)");
  }
  return static_cast<std::int16_t>(numero);
}

std::string Modo(std::int32_t modo) {
  constexpr std::array<const char*, 4> kModi = {"manuale", "automatico", "semiautomatico", "lista"};
  return modo >= 0 && modo < static_cast<std::int32_t>(kModi.size()) ? kModi[static_cast<std::size_t>(modo)]
                                                                     : "sconosciuto, " + std::to_string(modo);
}

std::string Descrizione(const ChannelTraits& canale) {
  return std::string(canale.nome) +
         (canale.usaSendmail ? ", con il sistema di posta di questa macchina" : "");
}

// The table of the signatures, which the settings name and which need not exist.
void ControllaFirme(host::Connection& connessione, Referto& referto) {
  try {
    const auto nome = Esegui(connessione, kStatementTabellaFirme);
    const std::string tabella = nome->Eof() ? std::string() : Testo(*nome, "FW95_VALORE");
    if (tabella.empty()) return referto.Saltato("firme", "nessuna tabella delle firme nelle impostazioni");
    static_cast<void>(Esegui(
        connessione, "SELECT IDUTENTE_FW07, FIRMA_HTML, FONT, DIMENSIONE FROM " + tabella + " WHERE 1 = 0"));
    referto.Ok("firme", tabella);
  } catch (const host::Errore& errore) {
    referto.Avviso(
        "firme", errore.Descrizione(),
        "correggere AIT_FIRME in FW95_SETTINGS o dare la lettura della tabella; senza, i messaggi in "
        "HTML partono senza firma");
  }
}

AccountLetto LeggiAccount(host::Connection& connessione, std::int32_t id) {
  const auto riga = Esegui(connessione, StatementDaId(id));
  AccountLetto account;
  account.id = id;
  account.indirizzo = Testo(*riga, "FW98_MAILADDRESS");
  account.titolo = "account " + std::to_string(id) + " (" + account.indirizzo + ")";
  account.server = Testo(*riga, "FW23_SERVERNAME");
  account.porta = static_cast<std::uint16_t>(NumeroBreve(*riga, "FW23_PORT", 25));
  static_cast<void>(NumeroBreve(*riga, "FW23_TIMEOUT", 0));  // only read, but everything else depends on it
  account.cifrata = NumeroBreve(*riga, "FW23_SSL", 0) >= 1;
  account.autenticazione = NumeroBreve(*riga, "FW23_INDAUTH", 0) != 0;
  account.utente = Testo(*riga, "FW98_USERNAME");
  account.password = Testo(*riga, "FW98_PASSWORD");
  return account;
}

// What the windows cannot read of the account; empty when they can read everything.
std::string IllegibileDallaFinestra(const host::RecordSet& riga) {
  std::string difetti;
  const auto difetto = [&difetti](const char* colonna, const std::string& quale) {
    difetti += (difetti.empty() ? "" : ", ") + (colonna + (" " + quale));
  };
  for (const char* colonna : {"FW98_MAILADDRESS", "FW23_SERVERNAME"}) {
    if (host::Leggi(riga, colonna).IsNull()) difetto(colonna, "è vuoto");
  }
  struct Numero {
    const char* colonna;
    const char* nome;  // that the statement gives it
  };
  for (const auto& [colonna, nome] : {Numero{"FW98_IDACCOUNT", "FW98_IDACCOUNT"},
                                      {"FW23_PORT", "FW23_PORT"},
                                      {"FW23_TIMEOUT", "FW23_TIMEOUT"},
                                      {"FW23_INDAUTH", "FW23_INDAUTH"},
                                      {"FW98_INDREADRCPT", "LETTURA"},
                                      {"FW98_INDDELIVERYSTATUS", "CONSEGNA"},
                                      {"FW23_SSL", "FW23_SSL"}}) {
    const host::Variant valore = host::Leggi(riga, nome);
    const bool conAltrimenti = colonna == std::string_view("FW23_SSL");
    if (conAltrimenti && text::Trim(valore.Joined()).empty()) continue;
    try {
      static_cast<void>(valore.ToInt16());
    } catch (const host::Errore& errore) {
      difetto(colonna, valore.IsNull()                      ? "è vuoto"
                       : errore.Numero() == host::kOverflow ? "è " + valore.Joined() + ", oltre i 16 bit"
                                                            : "non è un numero");
    }
  }
  return difetti;
}

}  // namespace

void ControllaTabelle(const Archivio& archivio, Referto& referto) {
  std::string mancanti;
  std::string motivo;
  for (const Tabella& tabella : kTabelle) {
    try {
      static_cast<void>(Esegui(*archivio.connessione, std::string("SELECT ") + tabella.colonne + " FROM " +
                                                          tabella.nome + " WHERE 1 = 0"));
    } catch (const host::Errore& errore) {
      mancanti += (mancanti.empty() ? "" : ", ") + std::string(tabella.nome);
      if (motivo.empty()) motivo = errore.Descrizione();
    }
  }
  if (mancanti.empty()) {
    referto.Ok("tabelle", std::to_string(kTabelle.size()) + " leggibili");
  } else {
    referto.Errore("tabelle", "non leggibili: " + mancanti + " (" + motivo + ")",
                   "dare all'accesso la lettura di queste tabelle, o indicare il database dell'applicazione");
  }
  ControllaFirme(*archivio.connessione, referto);
}

void ControllaProcedure(const Archivio& archivio, Referto& referto) {
  auto& connessione = *archivio.connessione;
  try {
    static_cast<void>(Esegui(connessione, "SELECT dbo.FNCG_GETCODANAG(0, 0, 0, '20260101') AS CODICE"));
    referto.Ok("funzione FNCG_GETCODANAG", "eseguibile");
  } catch (const host::Errore& errore) {
    referto.Errore("funzione FNCG_GETCODANAG", errore.Descrizione(),
                   "dare all'accesso l'esecuzione della funzione; senza, clienti e fornitori non si trovano");
  }
  try {
    const auto comando = connessione.CreateCommand();
    comando->CommandType(host::kProceduraMemorizzata);
    comando->CommandText("SPFW_GetUserIDFromConnection");
    comando->ParametersAppend(comando->CreateParameter("IDUtenteApp", 3, 2, 0));
    comando->Execute();
    const host::Variant utente = comando->ParametersItem("IDUtenteApp")->Value();
    if (!utente.IsNull() && utente.ToInt32() > 0) {
      referto.Ok("procedura SPFW_GetUserIDFromConnection", "utente " + utente.Joined());
    } else {
      referto.Avviso(
          "procedura SPFW_GetUserIDFromConnection", "questo accesso non è di nessun utente",
          "associare l'accesso a un utente dell'applicazione; senza, gli eventi non vengono registrati");
    }
  } catch (const host::Errore& errore) {
    referto.Avviso("procedura SPFW_GetUserIDFromConnection", errore.Descrizione(),
                   "dare all'accesso l'esecuzione della procedura; senza, gli eventi non vengono registrati");
  }
  if (archivio.incorporato) return referto.Ok("procedura SPFW_AttivaEventoGestionale", "incorporata");
  try {
    const auto trovata = Esegui(connessione,
                                "SELECT TOP 1 1 AS C FROM INFORMATION_SCHEMA.ROUTINES WHERE ROUTINE_NAME = "
                                "'SPFW_AttivaEventoGestionale'");
    if (!trovata->Eof()) return referto.Ok("procedura SPFW_AttivaEventoGestionale", "presente");
    referto.Avviso("procedura SPFW_AttivaEventoGestionale", "non c'è, o questo accesso non la vede",
                   "dare all'accesso l'esecuzione della procedura; senza, gli eventi non vengono registrati");
  } catch (const host::Errore& errore) {
    referto.Avviso("procedura SPFW_AttivaEventoGestionale", errore.Descrizione(),
                   "verificare a mano che l'accesso la possa eseguire");
  }
}

bool ControllaDitta(host::Connection& connessione, const std::string& ditta, Referto& referto) {
  try {
    const auto riga = Esegui(connessione, StatementAzienda(ditta));
    if (!riga->Eof()) {
      referto.Ok("ditta", ditta + ", " + Testo(*riga, "CG16_RAGSOANAG"));
      return true;
    }
    referto.Errore("ditta", "nessuna ditta con il numero " + ditta, "indicare con --ditta una ditta che c'è");
  } catch (const host::Errore& errore) {
    referto.Errore("ditta", errore.Descrizione(),
                   "dare all'accesso la lettura di CG18_ANADITTABASE e CG16_ANAGGEN");
  }
  return false;
}

ImpostazioniLette ControllaImpostazioni(host::Connection& connessione, Referto& referto) {
  ImpostazioniLette lette;
  const std::string rimedio = "correggere la riga della posta (FW24_INDCANALE 1) di FW24_FAXCONFIG";
  try {
    const auto riga = Esegui(connessione, kStatementImpostazioni);
    if (riga->Eof()) {
      referto.Errore("impostazioni", "manca la riga della posta", rimedio);
      return lette;
    }
    for (const char* colonna : {"FW24_INDFAXATTIVO", "FW24_INDMODALITA", "FW24_PATHTMP"}) {
      if (!host::Leggi(*riga, colonna).IsNull()) continue;
      referto.Errore("impostazioni", std::string(colonna) + " non è compilato", rimedio);
      return lette;
    }
    const std::int32_t canale = host::Leggi(*riga, "FW24_INDFAXATTIVO").ToInt32();
    const std::int32_t modo = host::Leggi(*riga, "FW24_INDMODALITA").ToInt32();
    lette.canale = static_cast<kvEnum_ServizioMail>(canale);
    lette.cartella = Testo(*riga, "FW24_PATHTMP");
    lette.conFinestra = modo != kvAutomatico;
    const ChannelTraits* const tratti = TrattiDi(*lette.canale);
    if (tratti == nullptr) {
      referto.Errore("impostazioni", "canale sconosciuto: " + std::to_string(canale), rimedio);
      return lette;
    }
    const std::string dettaglio = Descrizione(*tratti) + ", modo " + Modo(modo);
    if (tratti->consegna == nullptr) {
      referto.Avviso("impostazioni", "l'invio è disabilitato", "scegliere un canale in FW24_INDFAXATTIVO");
    } else if (tratti->soloWindows) {
      referto.Errore("impostazioni",
                     "il canale è " + std::string(tratti->nome) + ", che su questa macchina non c'è",
                     "scegliere un altro canale in FW24_INDFAXATTIVO");
    } else if (modo < 0 || modo > kvListaDistribuzione) {
      referto.Errore("impostazioni", dettaglio, rimedio);
    } else {
      referto.Ok("impostazioni", dettaglio);
    }
  } catch (const host::Errore& errore) {
    referto.Errore("impostazioni", errore.Descrizione(), rimedio);
  }
  return lette;
}

std::vector<AccountLetto> ControllaAccount(host::Connection& connessione, std::int32_t utente,
                                           const std::string& ditta, bool serveOrdinario, Referto& referto) {
  std::vector<AccountLetto> account;
  for (const bool pec : {false, true}) {
    const std::string posta = pec ? "account PEC" : "account";
    bool trovato = false;
    for (const bool dellUtente : {true, false}) {
      const std::string nome = posta + (dellUtente ? " dell'utente" : " della ditta");
      try {
        const TitolareAccount titolare{utente, ditta, pec};
        const auto id = dellUtente ? AccountDellUtente(connessione, titolare, "")
                                   : AccountDellaDitta(connessione, titolare, "");
        if (!id) {
          referto.Saltato(nome, dellUtente ? "nessuno predefinito, vale quello della ditta" : "nessuno");
          continue;
        }
        trovato = true;
        const AccountLetto letto = LeggiAccount(connessione, *id);
        const auto gia = std::find_if(account.begin(), account.end(),
                                      [&](const AccountLetto& altro) { return altro.id == letto.id; });
        referto.Ok(nome, letto.titolo);
        if (gia == account.end()) account.push_back(letto);
      } catch (const ErroreProgramma& errore) {
        referto.Errore(nome, errore.what(), "dare all'accesso la lettura delle tabelle degli account");
      } catch (const host::Errore& errore) {
        referto.Errore(nome, errore.Descrizione(), "correggere l'account e il suo server");
      }
    }
    if (trovato) continue;
    const std::string dettaglio = "né l'utente né la ditta ne hanno uno";
    const std::string rimedio = "assegnare un account predefinito all'utente o uno alla ditta";
    if (!pec && serveOrdinario) {
      referto.Errore(posta, dettaglio, rimedio);
    } else {
      referto.Avviso(posta, dettaglio, rimedio);
    }
  }
  return account;
}

void ControllaAccountDelleFinestre(host::Connection& connessione, std::int32_t utente,
                                   const std::string& ditta, bool conFinestra, Referto& referto) {
  for (const bool pec : {false, true}) {
    const std::string nome = pec ? "account PEC nelle finestre" : "account nelle finestre";
    std::string difetti;
    int quanti = 0;
    try {
      std::map<std::int32_t, std::string> perAccount;
      auto riga = Esegui(connessione, StatementElencoUtente(utente, pec));
      if (riga->Eof()) riga = Esegui(connessione, StatementElencoAzienda(ditta, pec));
      for (; !riga->Eof(); riga->MoveNext(), ++quanti) {
        const std::string suoi = IllegibileDallaFinestra(*riga);
        if (!suoi.empty()) perAccount[host::Leggi(*riga, "FW98_IDACCOUNT").ToInt32()] = suoi;
      }
      for (const auto& [account, suoi] : perAccount) {
        difetti += (difetti.empty() ? "" : "; ") + ("account " + std::to_string(account)) + ": " + suoi;
      }
    } catch (const host::Errore& errore) {
      difetti = errore.Descrizione();
    }
    const std::string rimedio =
        "compilare queste colonne; finché una sola manca, la finestra di invio e "
        "quella dei parametri non si aprono";
    if (!difetti.empty() && conFinestra) {
      referto.Errore(nome, difetti, rimedio);
    } else if (!difetti.empty()) {
      referto.Avviso(nome, difetti, rimedio);
    } else if (quanti == 0) {
      referto.Saltato(nome, "nessuno da elencare");
    } else {
      referto.Ok(nome, std::to_string(quanti) + (quanti == 1 ? " leggibile" : " leggibili"));
    }
  }
}

}  // namespace orve::app
