// Who sends, and for which company: the initialisers that prepare the register object, and the answers about
// user, group and company that the other subjects ask for. It reads the application's tables and writes none.
//
// The user's id is looked up until it is known and then kept; 0 means not known and is asked for again.
#include <string>

#include "addressing/columns.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"

namespace orve {

namespace {

using host::Richiesto;

std::string StatementIdUtente(const std::string& gruppo, const std::string& utente) {
  return " SELECT FW07_ID "
         " FROM FW07_APPUSER "
         " WHERE FW07_CODICE_FW06 = '" +
         gruppo + "'      AND FW07_CODICE = '" + utente + "' ";
}

std::string StatementUtente(std::int32_t id) {
  return "          SELECT  FW07_USERNAME,FW07_DESCR "
         " FROM    FW07_APPUSER "
         " WHERE   FW07_ID = " +
         std::to_string(id);
}

std::string StatementGruppo(std::int32_t id) {
  return "          SELECT  FW06_CODICE,FW06_DESCR \r\n"
         " FROM    FW07_APPUSER \r\n"
         "         INNER JOIN FW00_GRPUSRASSOC ON FW00_ID_FW07= FW07_APPUSER.FW07_ID AND FW00_FLGPREF = 1  "
         "\r\n"
         "         INNER JOIN FW06_GROUPUSR ON FW06_ID = FW00_GRPUSRASSOC.FW00_ID_FW06  \r\n"
         " WHERE   FW07_ID = " +
         std::to_string(id);
}

std::string StatementCodice(std::string_view colonna, std::int32_t id) {
  return " SELECT " + std::string(colonna) +
         "  FROM FW07_APPUSER WITH (NOLOCK) "
         " WHERE FW07_ID=" +
         std::to_string(id);
}

std::string StatementAzienda(const std::string& ditta) {
  return " SELECT CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, CG16_INDEMAIL  "
         " FROM CG16_ANAGGEN "
         " INNER JOIN CG18_ANADITTABASE ON CG16_CODICE = CG18_CODICE_CG16 "
         " WHERE CG18_DITTA = " +
         ditta;
}

}  // namespace

void CLSFW_MAILSERVER::InizializzaRegistroInvioMail(const std::string& IDvoce, const std::string& UObject,
                                                    const std::string& Utente, const std::string& Gruppo,
                                                    const std::string& TitoloStampa) {
  CodiceUtente = Utente;
  CodiceGruppo = Gruppo;
  const std::int32_t idUtente = GetIdUtente();
  InizializzaRegistroInvioMailMultiprofilo(IDvoce, UObject, idUtente, TitoloStampa);
}

void CLSFW_MAILSERVER::InizializzaRegistroInvioMailMultiprofilo(const std::string& IDvoce,
                                                                const std::string& UObject,
                                                                std::int32_t IdUtente,
                                                                const std::string& TitoloStampa) {
  if (!ObjRegistroInvio) CreaRegistroInvio();
  auto& registro = Richiesto(ObjRegistroInvio);
  registro.IDvoce(IDvoce);
  registro.UObject(UObject);
  ImpostaIdUtente(IdUtente);
  registro.UtenteApplicazione(GetIdUtente());
  registro.TitoloStampa(TitoloStampa);
  registro.Ditta(DittaCorrente.ToText());
  registro.TipoDoc(INFO_TipoDoc);
  registro.NumReg(INFO_NumReg);
  registro.NumDoc(INFO_NumDoc);
  registro.SezDoc(INFO_SezDoc);
  CaricaDatiAziendaCorrente();
  if (SrvMailInstallato == kvSMTPMail || SrvMailInstallato == kvSMTPSSLMail) CaricaAccountPredefinito();
}

// What is set here is fixed for the life of the register object: later changes do not reach it.
void CLSFW_MAILSERVER::CreaRegistroInvio() {
  ObjRegistroInvio = ambiente_->CreaRegistroInvio();
  auto& registro = Richiesto(ObjRegistroInvio);
  registro.TipoCanale(IsPec() ? host::kCanalePec : host::kCanaleMail);
  registro.Connessione(ConnectionADO);
  registro.TipoLista(IsLista());
  if (IsLista() != 0) registro.GuidLista(ListaGuid());
}

std::int32_t CLSFW_MAILSERVER::GetIdUtente() {
  IgnoraErrori([&] { CercaIdUtente(); });
  return IdUtenteCorrente;
}

void CLSFW_MAILSERVER::CercaIdUtente() {
  if (IdUtenteCorrente != 0) return;
  if (NVL(CodiceUtente, "").ToText().empty() || NVL(CodiceGruppo, "").ToText().empty()) return;
  if (!ConnectionADO) {
    MostraMessaggio("CONNESSIONE NON ESISTENTE!!!!!!!! - ORVE_MONITOR", host::kSemplice, "", nullptr);
    return;
  }
  const auto risultato =
      ConnectionADO->Execute(StatementIdUtente(CodiceGruppo, CodiceUtente), host::kComandoTesto);
  if (Richiesto(risultato).Eof()) return;
  IdUtenteCorrente = Leggi(*risultato, "FW07_ID").ToInt32();
}

void CLSFW_MAILSERVER::ImpostaIdUtente(std::int32_t id) {
  IdUtenteCorrente = id;
}

std::string CLSFW_MAILSERVER::GetUtenteApplicazione() {
  const auto statement = StatementUtente(GetIdUtente());
  const auto risultato = Richiesto(ConnectionADO).Execute(statement, host::kComandoNonIndicato);
  if (Richiesto(risultato).Eof()) return {};
  std::string nome = Leggi(*risultato, "FW07_USERNAME").Joined();
  DescUtenteCorrente = Leggi(*risultato, "FW07_DESCR").Joined();
  return nome;
}

std::string CLSFW_MAILSERVER::GetGruppoPreferito() {
  const auto statement = StatementGruppo(GetIdUtente());
  const auto risultato = Richiesto(ConnectionADO).Execute(statement, host::kComandoNonIndicato);
  if (Richiesto(risultato).Eof()) return {};
  std::string codice = Leggi(*risultato, "FW06_CODICE").Joined();
  DescGruppoCorrente = Leggi(*risultato, "FW06_DESCR").Joined();
  return codice;
}

std::string CLSFW_MAILSERVER::GetCodiceUtente(std::int32_t id) {
  return LeggiCodiceUtente("FW07_CODICE", id);
}

std::string CLSFW_MAILSERVER::GetCodiceGruppo(std::int32_t id) {
  return LeggiCodiceUtente("FW07_CODICE_FW06", id);
}

// Whatever fails, the send goes on with an empty code.
std::string CLSFW_MAILSERVER::LeggiCodiceUtente(std::string_view colonna, std::int32_t id) const {
  std::string codice;
  IgnoraErrori([&] {
    const auto risultato =
        Richiesto(ConnectionADO).Execute(StatementCodice(colonna, id), host::kComandoTesto);
    if (!Richiesto(risultato).Eof()) codice = Leggi(*risultato, colonna).ToText();
  });
  return codice;
}

void CLSFW_MAILSERVER::CaricaDatiAziendaCorrente() {
  if (NVL(DittaCorrente, "").ToText().empty()) {
    // AzCorrMail keeps its value here, unlike below.
    for (auto* campo : {&AziendaCorr, &AzCorrInd, &AzCorrCAP, &AzCorrCitta, &AzCorrProv}) campo->clear();
    return;
  }
  const auto risultato =
      Richiesto(ConnectionADO).Execute(StatementAzienda(DittaCorrente.Joined()), host::kComandoNonIndicato);
  if (Richiesto(risultato).Eof()) {
    for (auto* campo : {&AziendaCorr, &AzCorrInd, &AzCorrCAP, &AzCorrCitta, &AzCorrProv, &AzCorrMail}) {
      campo->clear();
    }
    return;
  }
  AziendaCorr = Leggi(*risultato, "CG16_RAGSOANAG").ToText();
  AzCorrInd = LeggiTesto(*risultato, "CG16_INDIRIZZO");
  AzCorrCAP = LeggiTesto(*risultato, "CG16_CAP");
  AzCorrCitta = LeggiTesto(*risultato, "CG16_CITTA");
  AzCorrProv = LeggiTesto(*risultato, "CG16_PROV");
  AzCorrMail = LeggiTesto(*risultato, "CG16_INDEMAIL");
}

}  // namespace orve
