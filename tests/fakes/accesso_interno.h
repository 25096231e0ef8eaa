// The service's private state, for tests of single procedures: `AccessoInterno{servizio}.SmtpServer() =
// "..."`, `AccessoInterno{servizio}.GetCorpoMail()`.
#pragma once

#include <utility>

#include "service/CLSFW_MAILSERVER.h"

namespace orve {

struct AccessoInterno {
  CLSFW_MAILSERVER& servizio;

  auto& StatoInvio() { return servizio.StatoInvio; }
  auto& DescrizioneInvio() { return servizio.DescrizioneInvio; }
  auto& ObjMessaggi() { return servizio.ObjMessaggi; }
  auto& ObjRegistroInvio() { return servizio.ObjRegistroInvio; }
  auto& ObjFormatoData() { return servizio.ObjFormatoData; }
  auto& ObjFormatoNumero() { return servizio.ObjFormatoNumero; }
  auto& objOutlookApp() { return servizio.objOutlookApp; }
  auto& objOutlookItem() { return servizio.objOutlookItem; }
  auto& objOutlookAllegati() { return servizio.objOutlookAllegati; }
  auto& objMapiSession() { return servizio.objMapiSession; }
  auto& objMapiMessages() { return servizio.objMapiMessages; }
  auto& MapiSessionID() { return servizio.MapiSessionID; }
  auto& IndModalitaInvio() { return servizio.IndModalitaInvio; }
  auto& ModalitaStampaDifferita() { return servizio.ModalitaStampaDifferita; }
  auto& ModalitaStandard() { return servizio.ModalitaStandard; }
  auto& PathTemp() { return servizio.PathTemp; }
  auto& FlagBcc() { return servizio.FlagBcc; }
  auto& UsaMittenteScelto() { return servizio.UsaMittenteScelto; }
  auto& FlagInvioDiretto() { return servizio.FlagInvioDiretto; }
  auto& IdMittenteDiretto() { return servizio.IdMittenteDiretto; }
  auto& CollDestinatariCopia() { return servizio.CollDestinatariCopia; }
  auto& SmtpServer() { return servizio.SmtpServer; }
  auto& SmtpPorta() { return servizio.SmtpPorta; }
  auto& SmtpTimeout() { return servizio.SmtpTimeout; }
  auto& SmtpUtente() { return servizio.SmtpUtente; }
  auto& SmtpPassword() { return servizio.SmtpPassword; }
  auto& SmtpAuth() { return servizio.SmtpAuth; }
  auto& SmtpCrypt() { return servizio.SmtpCrypt; }
  auto& CodiceUtente() { return servizio.CodiceUtente; }
  auto& CodiceGruppo() { return servizio.CodiceGruppo; }
  auto& IdUtenteCorrente() { return servizio.IdUtenteCorrente; }
  auto& DescUtenteCorrente() { return servizio.DescUtenteCorrente; }
  auto& DescGruppoCorrente() { return servizio.DescGruppoCorrente; }
  auto& AziendaCorr() { return servizio.AziendaCorr; }
  auto& AzCorrInd() { return servizio.AzCorrInd; }
  auto& AzCorrCAP() { return servizio.AzCorrCAP; }
  auto& AzCorrCitta() { return servizio.AzCorrCitta; }
  auto& AzCorrProv() { return servizio.AzCorrProv; }
  auto& AzCorrMail() { return servizio.AzCorrMail; }
  auto& objFileSystem() { return servizio.objFileSystem; }
  auto& objTextStream() { return servizio.objTextStream; }
  auto& PercorsoLog() { return servizio.PercorsoLog; }
  auto& CartellaLog() { return servizio.CartellaLog; }

  template <class... A>
  auto MostraMessaggio(A&&... argomenti) {
    return servizio.MostraMessaggio(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetPathTemp(A&&... argomenti) {
    return servizio.GetPathTemp(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetPercorsoInstallazione(A&&... argomenti) {
    return servizio.GetPercorsoInstallazione(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GestioneEventoBeforeSendMail(A&&... argomenti) {
    return servizio.GestioneEventoBeforeSendMail(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto BeforeDestinatari(A&&... argomenti) {
    return servizio.BeforeDestinatari(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto BeforeAllegati(A&&... argomenti) {
    return servizio.BeforeAllegati(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto AfterDestinatari(A&&... argomenti) {
    return servizio.AfterDestinatari(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto AfterAllegati(A&&... argomenti) {
    return servizio.AfterAllegati(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto ApriForm_OpzInvio(A&&... argomenti) {
    return servizio.ApriForm_OpzInvio(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetDatiDestinatario(A&&... argomenti) {
    return servizio.GetDatiDestinatario(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto CaricaAccountPredefinito(A&&... argomenti) {
    return servizio.CaricaAccountPredefinito(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto CaricaAccountDaId(A&&... argomenti) {
    return servizio.CaricaAccountDaId(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto LoadAccountsPerUser(A&&... argomenti) {
    return servizio.LoadAccountsPerUser(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto DecriptaPassword(A&&... argomenti) {
    return servizio.DecriptaPassword(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto CriptaPassword(A&&... argomenti) {
    return servizio.CriptaPassword(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetIdUtente(A&&... argomenti) {
    return servizio.GetIdUtente(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto ImpostaIdUtente(A&&... argomenti) {
    return servizio.ImpostaIdUtente(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetUtenteApplicazione(A&&... argomenti) {
    return servizio.GetUtenteApplicazione(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetGruppoPreferito(A&&... argomenti) {
    return servizio.GetGruppoPreferito(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetCodiceUtente(A&&... argomenti) {
    return servizio.GetCodiceUtente(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetCodiceGruppo(A&&... argomenti) {
    return servizio.GetCodiceGruppo(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto CaricaDatiAziendaCorrente(A&&... argomenti) {
    return servizio.CaricaDatiAziendaCorrente(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto SendWithSmtp(A&&... argomenti) {
    return servizio.SendWithSmtp(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto InviaMailConSSL(A&&... argomenti) {
    return servizio.InviaMailConSSL(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto AddAdditionalAttachmentSMTP(A&&... argomenti) {
    return servizio.AddAdditionalAttachmentSMTP(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetSMTPErrorDescription(A&&... argomenti) {
    return servizio.GetSMTPErrorDescription(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto SendWithOutlook(A&&... argomenti) {
    return servizio.SendWithOutlook(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto SendWithSimpleMAPI(A&&... argomenti) {
    return servizio.SendWithSimpleMAPI(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto SendMailMAPI(A&&... argomenti) {
    return servizio.SendMailMAPI(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto RegistraAnnullamentoDaUtente(A&&... argomenti) {
    return servizio.RegistraAnnullamentoDaUtente(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetCorpoMail(A&&... argomenti) {
    return servizio.GetCorpoMail(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetCorpoStandard(A&&... argomenti) {
    return servizio.GetCorpoStandard(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto CompilaTestoMail(A&&... argomenti) {
    return servizio.CompilaTestoMail(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto EsisteParamHTMLFW95(A&&... argomenti) {
    return servizio.EsisteParamHTMLFW95(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto TabellaFirmeFW95(A&&... argomenti) {
    return servizio.TabellaFirmeFW95(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetFirmaUtente(A&&... argomenti) {
    return servizio.GetFirmaUtente(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto TestoInHTML(A&&... argomenti) {
    return servizio.TestoInHTML(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto CorpoHTMLConFirma(A&&... argomenti) {
    return servizio.CorpoHTMLConFirma(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto ScriviLogInvio(A&&... argomenti) {
    return servizio.ScriviLogInvio(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto AttivaEventoGestionale(A&&... argomenti) {
    return servizio.AttivaEventoGestionale(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto GetUserIDFromConnection(A&&... argomenti) {
    return servizio.GetUserIDFromConnection(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto ComponiParametriEvento(A&&... argomenti) {
    return servizio.ComponiParametriEvento(std::forward<A>(argomenti)...);
  }
  template <class... A>
  auto FormatoDB(A&&... argomenti) {
    return servizio.FormatoDB(std::forward<A>(argomenti)...);
  }
};

}  // namespace orve
