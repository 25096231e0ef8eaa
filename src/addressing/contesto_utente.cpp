// Who sends, and for which company: the initialisers that prepare the register object, and the answers about
// user, group and company that the other subjects ask for. It reads the application's tables and writes none.
//
// The user's id is looked up until it is known and then kept; 0 means not known and is asked for again.
#include "addressing/contesto_utente.h"

#include <string_view>

#include "addressing/accounts.h"
#include "addressing/columns.h"
#include "channels/channel_traits.h"
#include "service/failures.h"
#include "service/guards.h"

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

// What is set here is fixed for the life of the register object: later changes do not reach it.
void CreaRegistroInvio(const Messaggio& messaggio, const Contesto& contesto, Oggetti& oggetti) {
  oggetti.ObjRegistroInvio = oggetti.ambiente->CreaRegistroInvio();
  auto& registro = Richiesto(oggetti.ObjRegistroInvio);
  registro.TipoCanale(TipoCanaleDi(messaggio));
  registro.Connessione(contesto.ConnectionADO);
  registro.TipoLista(messaggio.IsLista);
  if (messaggio.IsLista != 0) registro.GuidLista(messaggio.ListaGuid);
}

void CercaIdUtente(Contesto& contesto, const Oggetti& oggetti) {
  if (contesto.IdUtenteCorrente != 0) return;
  if (NVL(contesto.CodiceUtente, "").ToText().empty() || NVL(contesto.CodiceGruppo, "").ToText().empty())
    return;
  if (!contesto.ConnectionADO) {
    MostraMessaggio(oggetti, "CONNESSIONE NON ESISTENTE!!!!!!!! - ORVE_MONITOR", host::kSemplice, "");
    return;
  }
  const auto risultato = contesto.ConnectionADO->Execute(
      StatementIdUtente(contesto.CodiceGruppo, contesto.CodiceUtente), host::kComandoTesto);
  if (Richiesto(risultato).Eof()) return;
  contesto.IdUtenteCorrente = Leggi(*risultato, "FW07_ID").ToInt32();
}

// The column of the first row, and the description beside it. Without a row the value is empty and the
// description stays as it was.
std::string LeggiConDescrizione(const Contesto& contesto, const std::string& statement,
                                std::string_view colonna, std::string_view colonnaDescrizione,
                                std::string& descrizione) {
  const auto risultato = Richiesto(contesto.ConnectionADO).Execute(statement, host::kComandoNonIndicato);
  if (Richiesto(risultato).Eof()) return {};
  std::string valore = Leggi(*risultato, colonna).Joined();
  descrizione = Leggi(*risultato, colonnaDescrizione).Joined();
  return valore;
}

// Whatever fails, the send goes on with an empty code.
std::string LeggiCodiceUtente(const Contesto& contesto, std::string_view colonna, std::int32_t id) {
  std::string codice;
  IgnoraErrori([&] {
    const auto risultato =
        Richiesto(contesto.ConnectionADO).Execute(StatementCodice(colonna, id), host::kComandoTesto);
    if (!Richiesto(risultato).Eof()) codice = Leggi(*risultato, colonna).ToText();
  });
  return codice;
}

}  // namespace

std::string StatementAzienda(const std::string& ditta) {
  return " SELECT CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, CG16_INDEMAIL  "
         " FROM CG16_ANAGGEN "
         " INNER JOIN CG18_ANADITTABASE ON CG16_CODICE = CG18_CODICE_CG16 "
         " WHERE CG18_DITTA = " +
         ditta;
}

void InizializzaRegistroInvioMail(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                  Account& account, Contesto& contesto, Oggetti& oggetti,
                                  const DocumentoRegistro& documento, const std::string& Utente,
                                  const std::string& Gruppo) {
  contesto.CodiceUtente = Utente;
  contesto.CodiceGruppo = Gruppo;
  const std::int32_t idUtente = GetIdUtente(contesto, oggetti);
  InizializzaRegistroInvioMailMultiprofilo(messaggio, impostazioni, account, contesto, oggetti, documento,
                                           idUtente);
}

void InizializzaRegistroInvioMailMultiprofilo(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                              Account& account, Contesto& contesto, Oggetti& oggetti,
                                              const DocumentoRegistro& documento, std::int32_t IdUtente) {
  if (!oggetti.ObjRegistroInvio) CreaRegistroInvio(messaggio, contesto, oggetti);
  auto& registro = Richiesto(oggetti.ObjRegistroInvio);
  registro.IDvoce(documento.IDvoce);
  registro.UObject(documento.UObject);
  contesto.IdUtenteCorrente = IdUtente;
  registro.UtenteApplicazione(GetIdUtente(contesto, oggetti));
  registro.TitoloStampa(documento.TitoloStampa);
  registro.Ditta(contesto.DittaCorrente.ToText());
  registro.TipoDoc(messaggio.INFO_TipoDoc);
  registro.NumReg(messaggio.INFO_NumReg);
  registro.NumDoc(messaggio.INFO_NumDoc);
  registro.SezDoc(messaggio.INFO_SezDoc);
  CaricaDatiAziendaCorrente(contesto);
  if (HaAccount(impostazioni.SrvMailInstallato)) {
    CaricaAccountPredefinito(messaggio, account, contesto, oggetti);
  }
}

std::int32_t GetIdUtente(Contesto& contesto, const Oggetti& oggetti) {
  IgnoraErrori([&] { CercaIdUtente(contesto, oggetti); });
  return contesto.IdUtenteCorrente;
}

std::string GetUtenteApplicazione(Contesto& contesto, const Oggetti& oggetti) {
  return LeggiConDescrizione(contesto, StatementUtente(GetIdUtente(contesto, oggetti)), "FW07_USERNAME",
                             "FW07_DESCR", contesto.DescUtenteCorrente);
}

std::string GetGruppoPreferito(Contesto& contesto, const Oggetti& oggetti) {
  return LeggiConDescrizione(contesto, StatementGruppo(GetIdUtente(contesto, oggetti)), "FW06_CODICE",
                             "FW06_DESCR", contesto.DescGruppoCorrente);
}

std::string GetCodiceUtente(const Contesto& contesto, std::int32_t id) {
  return LeggiCodiceUtente(contesto, "FW07_CODICE", id);
}

std::string GetCodiceGruppo(const Contesto& contesto, std::int32_t id) {
  return LeggiCodiceUtente(contesto, "FW07_CODICE_FW06", id);
}

void CaricaDatiAziendaCorrente(Contesto& contesto) {
  const auto svuota = [&contesto] {
    for (auto* campo : {&contesto.AziendaCorr, &contesto.AzCorrInd, &contesto.AzCorrCAP,
                        &contesto.AzCorrCitta, &contesto.AzCorrProv}) {
      campo->clear();
    }
  };
  if (NVL(contesto.DittaCorrente, "").ToText().empty()) {
    svuota();  // AzCorrMail keeps its value here, unlike below
    return;
  }
  const auto risultato =
      Richiesto(contesto.ConnectionADO)
          .Execute(StatementAzienda(contesto.DittaCorrente.Joined()), host::kComandoNonIndicato);
  if (Richiesto(risultato).Eof()) {
    svuota();
    contesto.AzCorrMail.clear();
    return;
  }
  contesto.AziendaCorr = Leggi(*risultato, "CG16_RAGSOANAG").ToText();
  contesto.AzCorrInd = LeggiTesto(*risultato, "CG16_INDIRIZZO");
  contesto.AzCorrCAP = LeggiTesto(*risultato, "CG16_CAP");
  contesto.AzCorrCitta = LeggiTesto(*risultato, "CG16_CITTA");
  contesto.AzCorrProv = LeggiTesto(*risultato, "CG16_PROV");
  contesto.AzCorrMail = LeggiTesto(*risultato, "CG16_INDEMAIL");
}

}  // namespace orve
