// The address book without its window: who is in it, the search, and the manager's promises.
#include "orve-mail/address-book/rubrica.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "adapters/sqlite/prova.h"
#include "orve-mail/address-book/rubrica_manager.h"
#include "orve-mail/host/ambiente.h"

namespace orve::app {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string RigaDiRubrica(const Parte& parte) {
  std::string riga = std::string(NomeGenere(parte.genere)) + " " + parte.codice + " " + parte.nome + " [" +
                     parte.dettaglio + "]";
  for (const auto& [indirizzo, destinazione] : parte.indirizzi) {
    riga += " " + indirizzo + (destinazione.empty() ? "" : " (" + destinazione + ")");
  }
  return riga;
}

class DatiRubrica : public adapters::sqlite::ConDatiDiProva {
 protected:
  [[nodiscard]] std::vector<Parte> Leggi(std::optional<std::int32_t> ditta = 1, bool pec = false,
                                         host::DataOra data = host::DataOra::Da(2026, 11, 21)) const {
    return LeggiParti(*connessione, {ditta, pec, data});
  }
  [[nodiscard]] static std::vector<std::string> Righe(const std::vector<Parte>& parti,
                                                      const Filtro& filtro = {}) {
    std::vector<std::string> righe;
    for (const auto posizione : Filtra(parti, filtro)) righe.push_back(RigaDiRubrica(parti[posizione]));
    return righe;
  }
  [[nodiscard]] static std::vector<std::string> Nomi(const std::vector<Parte>& parti, const Filtro& filtro) {
    std::vector<std::string> nomi;
    for (const auto posizione : Filtra(parti, filtro)) nomi.push_back(parti[posizione].nome);
    return nomi;
  }
};

TEST_F(DatiRubrica, CustomersSuppliersAgentsAndContactsStandInItByName) {
  EXPECT_THAT(
      Righe(Leggi(), {.soloConIndirizzo = true}),
      ElementsAre("Agente A01 Agenzia Nord Est [Trieste (TS)] nordest@agenzie.example",
                  "Cliente 1007 Caffè «Perù» – Torrefazione Αθήνα [Venezia (VE)] caffe@torrefazione.example",
                  "Contatto 503 Contatto senza legami [] nessuno@contatti.example",
                  "Cliente 1006 Molino Nuovo S.p.A. [Mantova (MN)] info@molinonuovo.example",
                  "Cliente 1001 Officine Bellariva S.r.l. [Verona (VR)] acquisti@bellariva.example "
                  "corsia@bellariva.example (Bellariva, Corsia A/B/3) "
                  "stabilimento@bellariva.example (Bellariva, Stabilimento Sud)",
                  "Cliente 1002 Pasticceria Città d'Oro S.n.c. [Padova (PD)] ordini@cittadoro.example",
                  "Cliente 1008 Rottami e Recuperi S.r.l. [Bologna (BO)] amministrazione(at)rottami.example",
                  "Fornitore 2001 Trasporti Rapidi Adriatici S.p.A. [Ravenna (RA)] "
                  "spedizioni@rapidiadriatici.example piattaforma@rapidiadriatici.example "
                  "(Rapidi Adriatici, Piattaforma)",
                  "Contatto 501 Ufficio Acquisti [Enoteca del Ponte S.n.c., Officine Bellariva S.r.l.] "
                  "ufficio.acquisti@bellariva.example",
                  "Fornitore 1001 Vetreria Laguna S.r.l. [Venezia (VE)] vendite@vetrerialaguna.example"));
}

TEST_F(DatiRubrica, CertifiedAddressesAreTheOnlyOnesOfACertifiedBook) {
  const auto parti = Leggi(1, true);
  EXPECT_THAT(
      Righe(parti, {.testo = "bellariva", .genere = Genere::kCliente}),
      ElementsAre("Cliente 1001 Officine Bellariva S.r.l. [Verona (VR)] bellariva@pec.bellariva.example "
                  "protocollo@pec.bellariva.example (Bellariva, Ufficio Protocollo) "
                  "stabilimento@pec.bellariva.example (Bellariva, Stabilimento Sud)"));
  EXPECT_THAT(Righe(parti, {.testo = "cittadoro"}),
              ElementsAre("Contatto 502 Responsabile Qualità [Pasticceria Città d'Oro S.n.c.] "
                          "qualita@pec.cittadoro.example"));
  EXPECT_THAT(Righe(parti, {.testo = "arvenia"}), IsEmpty());
}

TEST_F(DatiRubrica, WhoHasNoAddressOrBlanksForOneStandsInItWithoutOne) {
  EXPECT_THAT(Righe(Leggi(), {.testo = "ferramenta borgo"}),
              ElementsAre("Cliente 1004 Ferramenta del Borgo S.a.s. [Treviso (TV)]",
                          "Contatto 504 Portineria [Ferramenta del Borgo S.a.s.]"));
  EXPECT_THAT(Righe(Leggi(), {.testo = "cartotecnica"}),
              ElementsAre("Cliente 1005 Cartotecnica Tre Spazi S.r.l. [Brescia (BS)]"));
}

TEST_F(DatiRubrica, MasterDataCountOnTheDayAskedFor) {
  EXPECT_THAT(Nomi(Leggi(1, false, host::DataOra::Da(2024, 12, 31)), {.testo = "molino"}),
              ElementsAre("Molino Vecchio S.r.l."));
  EXPECT_THAT(Nomi(Leggi(1, false, host::DataOra::Da(2025, 1, 1)), {.testo = "molino"}),
              ElementsAre("Molino Nuovo S.p.A."));
}

TEST_F(DatiRubrica, TheOtherCompanyHasItsOwnPartnersAndWithoutACompanyAllAreThere) {
  EXPECT_THAT(Nomi(Leggi(2), {.genere = Genere::kCliente}),
              ElementsAre("Enoteca del Ponte S.n.c.", "Officine Bellariva S.r.l."));
  EXPECT_THAT(Nomi(Leggi(2), {.genere = Genere::kFornitore}), IsEmpty());
  EXPECT_EQ(Nomi(Leggi(std::nullopt), {.genere = Genere::kCliente}).size(), 10U);
  EXPECT_EQ(Nomi(Leggi(std::nullopt), {.genere = Genere::kAgente}).size(), 3U);
}

TEST_F(DatiRubrica, ACompanyThatDoesNotExistHasContactsOnly) {
  EXPECT_THAT(Nomi(Leggi(99), {.testo = "ufficio"}), ElementsAre("Ufficio Acquisti"));
  EXPECT_EQ(Filtra(Leggi(99), {}).size(), 4U);
}

TEST_F(DatiRubrica, APartyWithoutACompanyNameIsKnownBySurnameAndName) {
  static_cast<void>(Esegui("UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = ' ' WHERE CG16_CODICE = 401"));
  EXPECT_THAT(Righe(Leggi(), {.testo = "A01"}),
              ElementsAre("Agente A01 Est Nord [Trieste (TS)] nordest@agenzie.example"));
}

TEST_F(DatiRubrica, AnAddressOfADestinationThatThePartnerHasItselfStandsOnce) {
  static_cast<void>(Esegui(
      "UPDATE MG22_CLIFORDEST SET MG22_DESTEMAIL = 'ACQUISTI@bellariva.example' WHERE MG22_CODDESTIN = "
      "'SEDE'"));
  EXPECT_THAT(Righe(Leggi(), {.testo = "officine", .genere = Genere::kCliente}),
              ElementsAre(HasSubstr("acquisti@bellariva.example corsia@bellariva.example (Bellariva, Corsia "
                                    "A/B/3)")));
}

TEST_F(DatiRubrica, TheSearchKnowsNeitherCaseNorAccentsNorTheKindOfApostrophe) {
  const auto parti = Leggi();
  for (const char* testo : {"citta d'oro", "CITTÀ D’ORO", "CITTA` D'ORO", "cittA\xCC\x80", "oro padova",
                            "  padova\tordini@ ", "1002 pasticceria"}) {
    const auto nomi = Nomi(parti, {.testo = testo, .genere = Genere::kCliente});
    if (std::string(testo) == "CITTA` D'ORO") {
      EXPECT_THAT(nomi, IsEmpty()) << "an apostrophe in the place of an accent is another word";
      continue;
    }
    EXPECT_THAT(nomi, ElementsAre("Pasticceria Città d'Oro S.n.c.")) << testo;
  }
  EXPECT_THAT(Nomi(parti, {.testo = "peru"}), ElementsAre("Caffè «Perù» – Torrefazione Αθήνα"));
  EXPECT_THAT(Nomi(parti, {.testo = "ΑΘΉΝΑ"}), ElementsAre("Caffè «Perù» – Torrefazione Αθήνα"));
}

TEST_F(DatiRubrica, EveryWordOfTheSearchMustBeThereAndHostileOnesFindNothing) {
  const auto parti = Leggi();
  for (const std::string testo : {"bellariva padova", "%", "' OR 1=1 --", "\xFF\xFE", "😀", "\n;\n"}) {
    EXPECT_THAT(Nomi(parti, {.testo = testo}), IsEmpty()) << testo;
  }
  EXPECT_THAT(Nomi(parti, {.testo = std::string(100000, 'x')}), IsEmpty());
  EXPECT_EQ(Filtra(parti, {.testo = " \t\r\n "}).size(), parti.size());
}

TEST_F(DatiRubrica, AnEmptyDatabaseGivesAnEmptyBook) {
  for (const char* tabella : {"MG22_CLIFORDEST", "CO03_LEGCONTATTO", "CO02_ANAGCONTATTO", "MG17_AGENTI",
                              "CG44_CLIFORVALIDITA", "CG44_CLIFOR"}) {
    static_cast<void>(Esegui(std::string("DELETE FROM ") + tabella));
  }
  EXPECT_THAT(Leggi(), IsEmpty());
}

TEST_F(DatiRubrica, AHundredThousandPartiesAreReadAndSearchedInLinearTime) {
  // At quadratic cost they would take longer than a test may.
  static_cast<void>(
      Esegui("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 99999) "
             "INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_INDEMAIL) "
             "SELECT 100000 + i, 'Società numero ' || i, 'n' || i || '@molti.example' FROM n"));
  static_cast<void>(
      Esegui("INSERT INTO CG44_CLIFOR SELECT 1, 0, CG16_CODICE, CG16_CODICE FROM CG16_ANAGGEN "
             "WHERE CG16_CODICE >= 100000"));
  const auto parti = Leggi();
  for (const char* testo : {"s", "so", "soc", "soci", "societa", "societa 77", "n7777@"}) {
    static_cast<void>(Filtra(parti, {.testo = testo}));
  }
  EXPECT_THAT(Nomi(parti, {.testo = "n7777@"}), ElementsAre("Società numero 7777"));
  EXPECT_GT(parti.size(), 100000U);
}

struct Colonna {
  const char* nome;
  const char* colonna;
  std::vector<std::string> want;
};

class ColonnaIndirizzi : public ::testing::TestWithParam<Colonna> {};

TEST_P(ColonnaIndirizzi, HoldsTheseAddresses) {
  EXPECT_EQ(SeparaIndirizzi(GetParam().colonna), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Casi, ColonnaIndirizzi,
    ::testing::Values(Colonna{"Empty", "", {}}, Colonna{"Blanks", " \t ;, \r\n", {}},
                      Colonna{"One", "a@x.example", {"a@x.example"}},
                      Colonna{"Semicolons", "a@x.example; b@x.example;", {"a@x.example", "b@x.example"}},
                      Colonna{"Commas", "a@x.example,b@x.example", {"a@x.example", "b@x.example"}},
                      Colonna{"Lines", "a@x.example\r\nb@x.example\n", {"a@x.example", "b@x.example"}},
                      Colonna{"Names", "Anna <a@x.example>;<b@x.example>", {"a@x.example", "b@x.example"}},
                      Colonna{"OpenBracket", "Anna <a@x.example", {"Anna <a@x.example"}},
                      Colonna{"BracketsTheWrongWayRound", ">a<", {">a<"}},
                      Colonna{"NoAddress", "nessuno", {"nessuno"}}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST(IndirizziDiUnaParte, ItsOwnAreTakenAndThoseOfDestinationsAreOffered) {
  Parte parte;
  EXPECT_THAT(IndirizziConsueti(parte), IsEmpty());
  parte.indirizzi = {{"a@x.example", ""}, {"b@x.example", ""}, {"c@x.example", "Magazzino"}};
  EXPECT_THAT(IndirizziConsueti(parte), ElementsAre(true, true, false));
  parte.indirizzi = {{"c@x.example", "Magazzino"}, {"d@x.example", "Deposito"}};
  EXPECT_THAT(IndirizziConsueti(parte), ElementsAre(true, false));
}

// --- the manager

class Manager : public DatiRubrica {
 protected:
  void SetUp() override {
    DatiRubrica::SetUp();
    rubrica = CreaRubrica(ambiente, connessione, [this](AperturaRubrica apertura) {
      apertura_ = std::move(apertura);
      return scelta;
    });
  }

  std::istringstream ingresso;
  std::ostringstream uscita;
  std::ostringstream errori;
  std::shared_ptr<host::Ambiente> ambiente = std::make_shared<adapters::ambiente::AmbientePronto>(
      OpzioniDelProgramma({ingresso, uscita, errori}, std::make_shared<Osservazioni>()));
  std::optional<SceltaRubrica> scelta;
  AperturaRubrica apertura_;
  std::shared_ptr<host::ManagerRubrica> rubrica;
};

TEST_F(Manager, TheWindowIsGivenWhatTheCallerAskedFor) {
  rubrica->NomeScelto("Molino Nuovo S.p.A.");
  rubrica->DittaRubrica(2);
  rubrica->TipoRubrica(3);
  rubrica->ApriRubrica();
  EXPECT_TRUE(apertura_.pec);
  EXPECT_EQ(apertura_.nome, "Molino Nuovo S.p.A.");
  EXPECT_EQ(apertura_.titolo, "orve-mail - Rubrica degli indirizzi PEC");
  EXPECT_THAT(Righe(apertura_.parti, {.genere = Genere::kAgente}),
              ElementsAre("Agente A01 Agenzia Marche [Ancona (AN)]"));
  rubrica->TipoRubrica(1);
  rubrica->ApriRubrica();
  EXPECT_EQ(apertura_.titolo, "orve-mail - Rubrica");
  EXPECT_THAT(Righe(apertura_.parti, {.genere = Genere::kAgente}),
              ElementsAre("Agente A01 Agenzia Marche [Ancona (AN)] marche@agenzie.example"));
}

TEST_F(Manager, APickComesBackWithItsAddressesJoined) {
  scelta = {"1001", "Officine Bellariva", {"a@x.example", "b@x.example"}};
  rubrica->ApriRubrica();
  EXPECT_FALSE(rubrica->Annullata());
  EXPECT_EQ(rubrica->CodiceScelto(), host::Variant("1001"));
  EXPECT_EQ(rubrica->NomeScelto(), host::Variant("Officine Bellariva"));
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant("a@x.example;b@x.example"));
}

TEST_F(Manager, APickWithoutAnAddressComesBackWithItsNameAndAnEmptyAddress) {
  rubrica->IndirizzoScelto("vecchio@x.example");
  scelta = {"1004", "Ferramenta", {}};
  rubrica->ApriRubrica();
  EXPECT_FALSE(rubrica->Annullata());
  EXPECT_EQ(rubrica->NomeScelto(), host::Variant("Ferramenta"));
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant(""));
}

TEST_F(Manager, LeavingTheBookChangesNothingAndSaysSo) {
  scelta = {"1001", "Anna", {"a@x.example"}};
  rubrica->ApriRubrica();
  scelta.reset();
  rubrica->ApriRubrica();
  EXPECT_TRUE(rubrica->Annullata());
  EXPECT_EQ(rubrica->NomeScelto(), host::Variant("Anna"));
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant("a@x.example"));
}

TEST_F(Manager, ANameComesBackAsItCanStandInAList) {
  scelta = {"1", "Rossi, Bianchi; <Sede>\r\nVerdi", {"a@x.example"}};
  rubrica->ApriRubrica();
  EXPECT_EQ(rubrica->NomeScelto(), host::Variant("Rossi, Bianchi, (Sede)  Verdi"));
}

TEST_F(Manager, WhatCannotBeOpenedIsAnErrorAndNoChoice) {
  scelta = {"1001", "Anna", {"a@x.example"}};
  rubrica->ApriRubrica();
  EXPECT_THROW(rubrica->TipoRubrica(2), host::Errore);
  rubrica->DittaRubrica("1; DROP TABLE CG44_CLIFOR");
  EXPECT_EQ(adapters::sqlite::ErroreDi([&] { rubrica->ApriRubrica(); }).Numero(), 13);
  EXPECT_TRUE(rubrica->Annullata());
  rubrica->DittaRubrica("1");
  connessione->Chiudi();
  EXPECT_EQ(adapters::sqlite::ErroreDi([&] { rubrica->ApriRubrica(); }).Numero(), 3704);
  EXPECT_EQ(adapters::sqlite::ErroreDi([&] {
              CreaRubrica(ambiente, nullptr, [](auto) { return std::nullopt; })->ApriRubrica();
            }).Numero(),
            91);
}

TEST_F(Manager, TheOtherBooksSayThatTheyDoNotExistHere) {
  rubrica->IndirizzoScelto("");
  rubrica->ApriRubricaOutlook();
  EXPECT_THAT(errori.str(), HasSubstr("Avviso: La rubrica di Outlook non esiste su questo computer."));
  rubrica->ApriRubricaTobit();
  EXPECT_THAT(errori.str(), HasSubstr("Avviso: La rubrica di Tobit non esiste su questo computer."));
  EXPECT_EQ(rubrica->IndirizzoScelto(), host::Variant(""));
}

}  // namespace
}  // namespace orve::app
