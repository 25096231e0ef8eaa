// The look-up by code and type: every statement, where address and name come from, how each route ends, and
// that a failure ends in silence.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "addressing/recipient_lookup.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using fakes::Con;
using fakes::Riga;
using fakes::Righe;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int16_t kTrovato = 0;
constexpr std::int16_t kNonTrovato = 1;
constexpr std::int16_t kSenzaIndirizzo = 2;

class RicercaDestinatario : public fakes::ServizioDiProva {
 protected:
  RicercaDestinatario() {
    servizio->DittaCorrente = 3;
    servizio->vIndDestinatario = "prima@azienda.example";
    servizio->vNome = "Prima";
  }

  host::Variant Cerca(const host::Variant& codice, std::optional<std::int32_t> tipo = std::nullopt) {
    return GetDatiDestinatario(interno.messaggio, interno.contesto, interno.oggetti, codice, tipo);
  }
  std::vector<std::string> IndirizzoENome() const { return {servizio->vIndDestinatario, servizio->vNome}; }
  std::vector<std::string> Esecuzioni() const { return journal->Righe({"ConnectionADO.Execute"}); }
};

Riga Anagrafica(const host::Variant& mail, const host::Variant& pec) {
  return {{"CG16_INDEMAIL", mail},
          {"CG16_EMAIL_PEC", pec},
          {"CG16_NOME", "Anna"},
          {"CG16_COGNOME", "Rossi"},
          {"CG16_RAGSOANAG", "Rossi S.p.A."}};
}

Riga Contatto(const host::Variant& mail, const host::Variant& pec) {
  return {{"CO02_EMAIL1", mail},
          {"CO02_PEC", pec},
          {"CO02_COGNOMENOME", "Bianchi Carlo"},
          {"CG16_RAGSOANAG", "Rossi S.p.A."}};
}

Riga Destinazione(const host::Variant& mail, const host::Variant& pec) {
  return {{"MG22_DESTEMAIL", mail},
          {"MG22_DESTPEC", pec},
          {"MG22_DESTFAX", "02 1"},
          {"MG22_DESTRAGSOC", "Magazzino Rossi"}};
}

// --- statements

TEST_F(RicercaDestinatario, AMasterDataCodeIsLookedUpAsText) {
  Cerca(1042, kvDestinatarioFaxAnagrafica);
  EXPECT_THAT(Esecuzioni(),
              ElementsAre("ConnectionADO.Execute 1 SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, CG16_NOME , "
                          "CG16_COGNOME, CG16_RAGSOANAG FROM CG16_ANAGGEN WHERE CG16_CODICE= 1042"));
}

TEST_F(RicercaDestinatario, AnOmittedTypeAndTypeZeroGiveTheSameStatement) {
  Cerca("77");
  Cerca("77", 0);
  const auto esecuzioni = Esecuzioni();
  ASSERT_EQ(esecuzioni.size(), 2U);
  EXPECT_EQ(esecuzioni[0], esecuzioni[1]);
  EXPECT_EQ(esecuzioni[0],
            "ConnectionADO.Execute 1 SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, CG16_NOME , CG16_COGNOME, "
            "CG16_RAGSOANAG FROM CG16_ANAGGEN WHERE CG16_CODICE= 77");
}

TEST_F(RicercaDestinatario, AnAgentIsLookedUpInTheCurrentCompany) {
  Cerca("A1", kvDestinatarioFaxAgente);
  EXPECT_THAT(Esecuzioni(), ElementsAre("ConnectionADO.Execute 1  SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r"
                                        " CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r"
                                        " FROM CG16_ANAGGEN \r"
                                        " INNER JOIN MG17_AGENTI  ON MG17_ANAGEN_CG16  = CG16_CODICE \r"
                                        " WHERE MG17_DITTA_CG18 = 3\r"
                                        " AND MG17_AGENTE =  'A1'"));
}

TEST_F(RicercaDestinatario, ACustomerAndASupplierAreResolvedAtTheDate) {
  servizio->DataValiditaCodiceDestinatario(host::DataOra::Da(2025, 2, 28));
  Cerca(55, kvDestinatarioFaxCliente);
  Cerca(66, kvDestinatarioFaxFornitore);
  const std::string testa =
      "ConnectionADO.Execute 1  SELECT CG16_INDEMAIL , CG16_EMAIL_PEC, \r"
      " CG16_NOME , CG16_COGNOME, CG16_RAGSOANAG \r"
      " FROM CG16_ANAGGEN \r"
      " WHERE CG16_CODICE = \r"
      " (SELECT dbo.FNCG_GETCODANAG(CG44_CLIFOR.CG44_DITTA_CG18, CG44_CLIFOR.CG44_TIPOCF, "
      "CG44_CLIFOR.CG44_CLIFOR, '20250228') AS CODANAG \r"
      " FROM CG44_CLIFOR \r"
      " WHERE \r"
      " CG44_DITTA_CG18 = 3\r";
  EXPECT_THAT(Esecuzioni(), ElementsAre(testa + " AND CG44_TIPOCF = 0\r AND CG44_CLIFOR = 55)",
                                        testa + " AND CG44_TIPOCF = 1\r AND CG44_CLIFOR = 66)"));
}

TEST_F(RicercaDestinatario, AContactIsLookedUpWithItsPartner) {
  Cerca(9, kvDestinatarioFaxContatto);
  EXPECT_THAT(Esecuzioni(),
              ElementsAre("ConnectionADO.Execute 1  SELECT CG16_RAGSOANAG, CO02_COGNOMENOME, CO02_EMAIL1, "
                          "CO02_PEC  FROM CO02_ANAGCONTATTO  INNER JOIN CO03_LEGCONTATTO ON CO03_ID_CO02 = "
                          "CO02_ID  INNER JOIN CG16_ANAGGEN ON CG16_CODICE = CO03_CODICE_CG16  WHERE CO02_ID "
                          "= 9"));
}

TEST_F(RicercaDestinatario, ADestinationRunsBothStatementsAndTheFunctionTakesTheFlagBeforeThePartner) {
  servizio->DataValiditaCodiceDestinatario(host::DataOra::Da(2025, 2, 28));
  EXPECT_EQ(Cerca("4/1042/1/D/2", kvDestinatarioFaxDestinatario), kSenzaIndirizzo);
  EXPECT_THAT(
      Esecuzioni(),
      ElementsAre("ConnectionADO.Execute 1  SELECT       MG22_DESTEMAIL, MG22_DESTFAX, MG22_DESTPEC, "
                  "MG22_DESTRAGSOC  From MG22_CLIFORDEST   Where MG22_CODDESTIN = 'D/2'   AND "
                  "MG22_DITTA_CG18 = 4 AND MG22_TIPOCF_CG44 = 1 AND MG22_CLIFOR_CG44 = 1042",
                  "ConnectionADO.Execute 1  select       CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC, "
                  "CG16_RAGSOANAG, CG16_COGNOME, CG16_NOME   from CG16_ANAGGEN   where CG16_CODICE= (  "
                  "    select dbo.FNCG_GETCODANAG(4,1,1042,'20250228')  ) "));
}

TEST_F(RicercaDestinatario, TheKindOfMailChangesNoStatement) {
  const auto tutti = [&] {
    journal->Svuota();
    for (const std::int32_t tipo : {0, 1, 2, 4, 10}) Cerca(5, tipo);
    Cerca("1/2/0/D", kvDestinatarioFaxDestinatario);
    return Esecuzioni();
  };
  const auto ordinari = tutti();
  servizio->IsPec(true);
  EXPECT_EQ(tutti(), ordinari);
  EXPECT_EQ(ordinari.size(), 7U);
}

TEST_F(RicercaDestinatario, ValuesGoIntoStatementsUnescapedAndNullJoinsAsNothing) {
  servizio->DittaCorrente = host::Null{};
  Cerca("O'Neill", kvDestinatarioFaxAgente);
  Cerca(host::Null{});
  EXPECT_THAT(Esecuzioni(),
              ElementsAre(::testing::EndsWith(" WHERE MG17_DITTA_CG18 = \r AND MG17_AGENTE =  'O'Neill'"),
                          ::testing::EndsWith("WHERE CG16_CODICE= ")));
}

// --- date

TEST_F(RicercaDestinatario, AnUnsetDateBecomesTodayAndStays) {
  Cerca(55, kvDestinatarioFaxCliente);
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra::Da(2026, 11, 14));
  EXPECT_THAT(Esecuzioni()[0], ::testing::HasSubstr("'20261114'"));
  ambiente->adesso = host::DataOra::Da(2026, 11, 15, 8, 0, 0);
  Cerca(55, kvDestinatarioFaxFornitore);
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra::Da(2026, 11, 14));
}

TEST_F(RicercaDestinatario, ATimeOfDayAloneIsNoDate) {
  servizio->DataValiditaCodiceDestinatario(host::DataOra{0.75});
  Cerca(55, kvDestinatarioFaxCliente);
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra::Da(2026, 11, 14));
}

TEST_F(RicercaDestinatario, ADestinationSetsTheDateBetweenItsTwoStatements) {
  bool conDataAlPrimo = true;
  journal->Quando("ConnectionADO.Execute 1  SELECT       MG22",
                  [&] { conDataAlPrimo = servizio->DataValiditaCodiceDestinatario().HaData(); });
  Cerca("1/2/0/D", kvDestinatarioFaxDestinatario);
  EXPECT_FALSE(conDataAlPrimo);
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra::Da(2026, 11, 14));
  EXPECT_THAT(journal->Righe({"ConnectionADO", "ObjFormatoData"}),
              ElementsAre(::testing::HasSubstr("MG22_CLIFORDEST"), "ObjFormatoData.Data 14/11/2026",
                          ::testing::HasSubstr("(1,0,2,'20261114')")));
}

TEST_F(RicercaDestinatario, TypesWithoutAPartnerLeaveTheDateAlone) {
  for (const std::int32_t tipo : {0, 3, 4, 9, 10}) Cerca("5", tipo);
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra());
}

TEST_F(RicercaDestinatario, ADateThatTheFormatterRefusesLeavesAGapInTheStatement) {
  ambiente->statoFormatoData = 1;
  Cerca(55, kvDestinatarioFaxCliente);
  EXPECT_THAT(Esecuzioni()[0], ::testing::HasSubstr("CG44_CLIFOR.CG44_CLIFOR, ) AS CODANAG"));
  EXPECT_THAT(Messaggi(), IsEmpty());
}

// --- how each route ends

enum Valore { kAssente, kPieno, kVuoto, kNullo, kBianchi };

host::Variant ValoreDi(Valore valore, const char* pieno) {
  switch (valore) {
    case kPieno:
      return pieno;
    case kVuoto:
      return "";
    case kBianchi:
      return "   ";
    default:
      return host::Null{};
  }
}

struct CasoEsito {
  std::string etichetta;
  std::int32_t tipo;
  bool pec;
  Valore mail;  // kAssente: no row
  Valore certificata;
  host::Variant want_esito;
  std::string want_indirizzo;
  std::string want_nome;
};

class EsitoDellaRicerca : public RicercaDestinatario, public ::testing::WithParamInterface<CasoEsito> {};

TEST_P(EsitoDellaRicerca, IsAsTheTableSays) {
  const CasoEsito& caso = GetParam();
  if (caso.mail != kAssente) {
    const auto mail = ValoreDi(caso.mail, "mail@rossi.example");
    const auto pec = ValoreDi(caso.certificata, "pec@rossi.example");
    connessione->Risponde("CG16_ANAGGEN", {Anagrafica(mail, pec), Anagrafica("seconda", "seconda")});
    connessione->Risponde("CO02_ANAGCONTATTO", {Contatto(mail, pec), Contatto("seconda", "seconda")});
  }
  servizio->IsPec(caso.pec);
  EXPECT_EQ(Cerca(5, caso.tipo), caso.want_esito);
  EXPECT_THAT(IndirizzoENome(), ElementsAre(caso.want_indirizzo, caso.want_nome));
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

std::vector<CasoEsito> CasiEsito() {
  struct Tipo {
    const char* nome;
    std::int32_t tipo;
    const char* want_nome;
  };
  std::vector<CasoEsito> casi;
  for (const auto& tipo : {Tipo{"Anagrafica", 0, "Rossi S.p.A."}, Tipo{"Cliente", 1, "Rossi S.p.A."},
                           Tipo{"Fornitore", 2, "Rossi S.p.A."}, Tipo{"Agente", 4, "Rossi S.p.A."},
                           Tipo{"Contatto", 10, "Bianchi Carlo"}}) {
    const std::string nome = tipo.nome;
    const auto aggiungi = [&](const std::string& caso, bool pec, Valore mail, Valore certificata,
                              std::int16_t esito, const std::string& indirizzo, const std::string& wantNome) {
      casi.push_back({nome + caso, tipo.tipo, pec, mail, certificata, esito, indirizzo, wantNome});
    };
    aggiungi("MailFound", false, kPieno, kPieno, kTrovato, "mail@rossi.example", tipo.want_nome);
    aggiungi("PecFound", true, kPieno, kPieno, kTrovato, "pec@rossi.example", tipo.want_nome);
    aggiungi("PecDoesNotFallBackToMail", true, kPieno, kNullo, kSenzaIndirizzo, "", tipo.want_nome);
    aggiungi("MailDoesNotFallBackToPec", false, kVuoto, kPieno, kSenzaIndirizzo, "", tipo.want_nome);
    aggiungi("BlanksCountAsEmpty", false, kBianchi, kPieno, kSenzaIndirizzo, "", tipo.want_nome);
    aggiungi("NoRecordKeepsTheState", false, kAssente, kAssente, kNonTrovato, "prima@azienda.example",
             "Prima");
    aggiungi("NoRecordKeepsTheStateForPec", true, kAssente, kAssente, kNonTrovato, "prima@azienda.example",
             "Prima");
  }
  return casi;
}

INSTANTIATE_TEST_SUITE_P(Tabella, EsitoDellaRicerca, ::testing::ValuesIn(CasiEsito()),
                         [](const auto& caso) { return caso.param.etichetta; });

// The record has an address; its name holds nothing.
struct CasoSenzaNome {
  const char* etichetta;
  const char* codice;
  std::int32_t tipo;
  const char* tabella;
  Riga riga;
  const char* colonna_nome;
};

class NomeSenzaValore : public RicercaDestinatario, public ::testing::WithParamInterface<CasoSenzaNome> {};

TEST_P(NomeSenzaValore, CountsAsEmptyAndTheAddressIsFoundAllTheSame) {
  const CasoSenzaNome& caso = GetParam();
  connessione->Risponde("MG22_CLIFORDEST", {Destinazione("", "")});
  for (const auto& nome : {host::Variant(host::Null{}), host::Variant(""), host::Variant("   ")}) {
    connessione->Risponde(caso.tabella, {Con(caso.riga, caso.colonna_nome, nome)});
    servizio->vNome = "Prima";
    EXPECT_NE(Cerca(caso.codice, caso.tipo), kNonTrovato) << fakes::Mostra(nome);
    EXPECT_THAT(IndirizzoENome(), ElementsAre("mail@rossi.example", "")) << fakes::Mostra(nome);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, NomeSenzaValore,
    ::testing::Values(CasoSenzaNome{"Anagrafica", "5", kvDestinatarioFaxAnagrafica, "CG16_ANAGGEN",
                                    Anagrafica("mail@rossi.example", ""), "CG16_RAGSOANAG"},
                      CasoSenzaNome{"Cliente", "5", kvDestinatarioFaxCliente, "CG16_ANAGGEN",
                                    Anagrafica("mail@rossi.example", ""), "CG16_RAGSOANAG"},
                      CasoSenzaNome{"Fornitore", "5", kvDestinatarioFaxFornitore, "CG16_ANAGGEN",
                                    Anagrafica("mail@rossi.example", ""), "CG16_RAGSOANAG"},
                      CasoSenzaNome{"Agente", "5", kvDestinatarioFaxAgente, "CG16_ANAGGEN",
                                    Anagrafica("mail@rossi.example", ""), "CG16_RAGSOANAG"},
                      CasoSenzaNome{"Contatto", "5", kvDestinatarioFaxContatto, "CO02_ANAGCONTATTO",
                                    Contatto("mail@rossi.example", ""), "CO02_COGNOMENOME"},
                      CasoSenzaNome{"Destinazione", "1/2/0/D", kvDestinatarioFaxDestinatario,
                                    "MG22_CLIFORDEST", Destinazione("mail@rossi.example", ""),
                                    "MG22_DESTRAGSOC"},
                      CasoSenzaNome{"PartnerDellaDestinazione", "1/2/0/D", kvDestinatarioFaxDestinatario,
                                    "CG16_ANAGGEN", Anagrafica("mail@rossi.example", ""), "CG16_RAGSOANAG"}),
    [](const auto& caso) { return caso.param.etichetta; });

TEST_F(RicercaDestinatario, OnlyTheColumnsThatCountAreReadAndTheAddressFirst) {
  connessione->Risponde("CG16_ANAGGEN", {Anagrafica("mail@rossi.example", "pec@rossi.example")});
  Cerca(5);
  servizio->IsPec(true);
  Cerca(5);
  EXPECT_THAT(journal->Righe({"RecordSet"}),
              ElementsAre("RecordSet.Fields CG16_INDEMAIL", "RecordSet.Fields CG16_RAGSOANAG",
                          "RecordSet.Fields CG16_EMAIL_PEC", "RecordSet.Fields CG16_RAGSOANAG"));
}

// --- goods destination

struct CasoDestinazione {
  std::string etichetta;
  bool pec;
  Righe destinazione;
  Righe partner;
  host::Variant want_esito;
  std::string want_indirizzo;
  std::string want_nome;
};

class EsitoDestinazione : public RicercaDestinatario,
                          public ::testing::WithParamInterface<CasoDestinazione> {};

TEST_P(EsitoDestinazione, IsAsTheTableSays) {
  connessione->Risponde("CG16_ANAGGEN", GetParam().partner);
  connessione->Risponde("MG22_CLIFORDEST", GetParam().destinazione);
  servizio->IsPec(GetParam().pec);
  EXPECT_EQ(Cerca("1/1042/0/D1", kvDestinatarioFaxDestinatario), GetParam().want_esito);
  EXPECT_THAT(IndirizzoENome(), ElementsAre(GetParam().want_indirizzo, GetParam().want_nome));
  EXPECT_EQ(Esecuzioni().size(), 2U);
  EXPECT_EQ(journal->Conta("RecordSet.Close"), 0U);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

const host::Variant kNessunValore;
const char* const kPrima = "prima@azienda.example";

INSTANTIATE_TEST_SUITE_P(
    Tabella, EsitoDestinazione,
    ::testing::Values(
        CasoDestinazione{"OwnMail", false, Righe{Destinazione("dest@rossi.example", "destpec@rossi.example")},
                         Righe{Anagrafica("mail@rossi.example", "pec@rossi.example")}, kNessunValore,
                         "dest@rossi.example", "Magazzino Rossi"},
        CasoDestinazione{"OwnPec", true, Righe{Destinazione("dest@rossi.example", "destpec@rossi.example")},
                         Righe{Anagrafica("mail@rossi.example", "pec@rossi.example")}, kNessunValore,
                         "destpec@rossi.example", "Magazzino Rossi"},
        CasoDestinazione{"OwnMailWithoutPartner", false, Righe{Destinazione("dest@rossi.example", "")},
                         Righe{}, kNessunValore, "dest@rossi.example", "Magazzino Rossi"},
        CasoDestinazione{"MailOfThePartner", false, Righe{Destinazione("", "destpec@rossi.example")},
                         Righe{Anagrafica("mail@rossi.example", "pec@rossi.example")}, kTrovato,
                         "mail@rossi.example", "Rossi S.p.A."},
        CasoDestinazione{"PecOfThePartner", true, Righe{Destinazione("dest@rossi.example", host::Null{})},
                         Righe{Anagrafica("mail@rossi.example", "pec@rossi.example")}, kTrovato,
                         "pec@rossi.example", "Rossi S.p.A."},
        CasoDestinazione{"BlankColumnFallsBackToThePartner", false, Righe{Destinazione("  ", "")},
                         Righe{Anagrafica("mail@rossi.example", "")}, kTrovato, "mail@rossi.example",
                         "Rossi S.p.A."},
        CasoDestinazione{"PecNeverFallsBackToMail", true, Righe{Destinazione("dest@rossi.example", "")},
                         Righe{Anagrafica("mail@rossi.example", "")}, kSenzaIndirizzo, kPrima, "Prima"},
        CasoDestinazione{"MailNeverFallsBackToPec", false, Righe{Destinazione("", "destpec@rossi.example")},
                         Righe{Anagrafica(host::Null{}, "pec@rossi.example")}, kSenzaIndirizzo, kPrima,
                         "Prima"},
        CasoDestinazione{"BlankColumnOfThePartner", false, Righe{Destinazione(host::Null{}, "")},
                         Righe{Anagrafica("   ", "pec@rossi.example")}, kSenzaIndirizzo, kPrima, "Prima"},
        CasoDestinazione{"NoDestinationRowAlthoughThePartnerHasAnAddress", false, Righe{},
                         Righe{Anagrafica("mail@rossi.example", "pec@rossi.example")}, kSenzaIndirizzo,
                         kPrima, "Prima"},
        CasoDestinazione{"EmptyColumnAndNoPartnerFails", false, Righe{Destinazione("", "")}, Righe{},
                         kNonTrovato, kPrima, "Prima"}),
    [](const auto& caso) { return caso.param.etichetta; });

TEST_F(RicercaDestinatario, ADestinationCodeWithTwoSlashesFailsBeforeAnyStatement) {
  EXPECT_EQ(Cerca("1/1042/0", kvDestinatarioFaxDestinatario), kNonTrovato);
  EXPECT_THAT(Esecuzioni(), IsEmpty());
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra());
  EXPECT_EQ(Cerca(host::Null{}, kvDestinatarioFaxDestinatario), kNonTrovato);
  EXPECT_EQ(Cerca(host::Variant(), kvDestinatarioFaxDestinatario), kNonTrovato);
  EXPECT_THAT(Esecuzioni(), IsEmpty());
}

TEST_F(RicercaDestinatario, TheTailOfTheCodeIsTheDestination) {
  Cerca("1/1042/0/D1/A/B", kvDestinatarioFaxDestinatario);
  EXPECT_THAT(Esecuzioni()[0], ::testing::HasSubstr("MG22_CODDESTIN = 'D1/A/B'"));
}

// --- free text

struct CasoNumero {
  const char* etichetta;
  host::Variant codice;
  bool pec;
  std::int16_t want_esito;
  const char* want_indirizzo;
};

class EsitoNumero : public RicercaDestinatario, public ::testing::WithParamInterface<CasoNumero> {};

TEST_P(EsitoNumero, IsAsTheTableSaysWithoutAnyStatement) {
  servizio->IsPec(GetParam().pec);
  EXPECT_EQ(Cerca(GetParam().codice, kvDestinatarioFaxNumero), GetParam().want_esito);
  EXPECT_THAT(IndirizzoENome(), ElementsAre(GetParam().want_indirizzo, "Prima"));
  EXPECT_THAT(Esecuzioni(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, EsitoNumero,
    ::testing::Values(
        CasoNumero{"Mail", "x<***>a@b.example", false, kTrovato, "a@b.example"},
        CasoNumero{"MailForPec", "x<***>a@b.example", true, kNonTrovato, ""},
        CasoNumero{"Pec", "x<*pec*>p@b.example", true, kTrovato, "p@b.example"},
        CasoNumero{"PecForMail", "x<*pec*>p@b.example", false, kNonTrovato, ""},
        CasoNumero{"MailBeforePecIsThrownAway", "x<***>a@b.example<*pec*>p@b.example", false, kNonTrovato,
                   ""},
        CasoNumero{"PecAfterMail", "x<***>a@b.example<*pec*>p@b.example", true, kTrovato, "p@b.example"},
        CasoNumero{"MailAfterPec", "x<*pec*>p@b.example<***>a@b.example", false, kTrovato, "a@b.example"},
        CasoNumero{"PecBeforeMailTakesTheRest", "x<*pec*>p@b.example<***>a@b.example", true, kTrovato,
                   "p@b.example<***>a@b.example"},
        CasoNumero{"NothingAfterTheMarker", "x<***>", false, kNonTrovato, ""},
        CasoNumero{"NoMarker", "a@b.example", false, kNonTrovato, ""},
        CasoNumero{"Null", host::Null{}, false, kNonTrovato, ""},
        CasoNumero{"Empty", host::Variant(), true, kNonTrovato, ""},
        CasoNumero{"Blanks", "   ", false, kNonTrovato, ""}, CasoNumero{"Number", 12, false, kNonTrovato, ""},
        CasoNumero{"ArrayFailsAndKeepsTheAddress", host::Variant::Array{"x<***>a@b.example"}, false,
                   kNonTrovato, "prima@azienda.example"}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

// --- types without treatment

class TipoSenzaTrattamento : public RicercaDestinatario,
                             public ::testing::WithParamInterface<std::int32_t> {};

TEST_P(TipoSenzaTrattamento, RunsNothingAndGivesNoValueButTheCompanyIsOverwritten) {
  servizio->vDitta = "prima";
  servizio->INFO_RagSocCliFor("Verdi S.r.l.");
  EXPECT_TRUE(Cerca(5, GetParam()).IsEmpty());
  EXPECT_THAT(IndirizzoENome(), ElementsAre("prima@azienda.example", "Prima"));
  EXPECT_EQ(servizio->vDitta, "Verdi S.r.l.");
  EXPECT_THAT(Esecuzioni(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Tutti, TipoSenzaTrattamento, ::testing::Values(3, 5, 6, 7, 8, 12, -1, 99),
                         [](const auto& caso) {
                           return caso.param < 0 ? std::string("Negative")
                                                 : "Type" + std::to_string(caso.param);
                         });

TEST_F(RicercaDestinatario, ABlankNameOfThePartnerEmptiesTheCompany) {
  servizio->vDitta = "prima";
  servizio->INFO_RagSocCliFor("   ");
  Cerca(5, kvDestinatarioFaxVettore);
  EXPECT_EQ(servizio->vDitta, "");
}

// --- failures

TEST_F(RicercaDestinatario, AnyFailureGivesOneAndNothingIsShownOrRecorded) {
  journal->Fallisce("ConnectionADO.Execute");
  servizio->INFO_RagSocCliFor("Verdi S.r.l.");
  for (const std::int32_t tipo : {0, 1, 2, 4, 10}) EXPECT_EQ(Cerca(5, tipo), kNonTrovato) << tipo;
  EXPECT_EQ(Cerca("1/2/0/D", kvDestinatarioFaxDestinatario), kNonTrovato);
  EXPECT_THAT(IndirizzoENome(), ElementsAre("prima@azienda.example", "Prima"));
  EXPECT_EQ(servizio->vDitta, "Verdi S.r.l.");
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_TRUE(servizio->Descrizione().IsEmpty());
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_THAT(journal->Righe({"FileSystem", "TextStream", "ObjRegistroInvio"}), IsEmpty());
}

TEST_F(RicercaDestinatario, AnAbsentConnectionIsAFailureToo) {
  servizio->ConnectionADO.reset();
  EXPECT_EQ(Cerca(5), kNonTrovato);
  EXPECT_EQ(Cerca("1/2/0/D", kvDestinatarioFaxDestinatario), kNonTrovato);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(RicercaDestinatario, WhatWasWrittenBeforeAFailureStays) {
  connessione->Risponde("CG16_ANAGGEN", {Anagrafica("mail@rossi.example", "pec@rossi.example")});
  journal->Fallisce("RecordSet.Fields CG16_RAGSOANAG");
  EXPECT_EQ(Cerca(5, kvDestinatarioFaxCliente), kNonTrovato);
  EXPECT_THAT(IndirizzoENome(), ElementsAre("mail@rossi.example", "Prima"));
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario(), host::DataOra::Da(2026, 11, 14));
}

TEST_F(RicercaDestinatario, AFailureOfTheSecondStatementOfADestinationGivesOne) {
  connessione->Risponde("MG22_CLIFORDEST", {Destinazione("dest@rossi.example", "")});
  journal->Fallisce("ConnectionADO.Execute 1  select ");
  EXPECT_EQ(Cerca("1/2/0/D", kvDestinatarioFaxDestinatario), kNonTrovato);
  EXPECT_THAT(IndirizzoENome(), ElementsAre("prima@azienda.example", "Prima"));
}

TEST_F(RicercaDestinatario, ACodeThatIsNoValueGivesOne) {
  EXPECT_EQ(Cerca(host::Variant::Array{1, 2}), kNonTrovato);
  EXPECT_THAT(Esecuzioni(), IsEmpty());
}

}  // namespace
}  // namespace orve
