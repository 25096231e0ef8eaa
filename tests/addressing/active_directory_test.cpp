// The directory look-up: the name of the network user, the query, the eight attributes, and that every
// failure stays silent and leaves nothing open.
#include "addressing/active_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_ambiente.h"
#include "fakes/journal.h"

namespace orve {
namespace {

using MDL_ACTIVEDIRECTORY::DatiUtenteDirectory;
using MDL_ACTIVEDIRECTORY::GetDatiUtenteDirectory;
using MDL_ACTIVEDIRECTORY::GetNomeUtenteRete;
using MDL_ACTIVEDIRECTORY::TagliaAlNul;
using ::testing::ElementsAre;

constexpr const char* kAnna = "LDAP://CN=Anna Rossi,OU=Vendite,DC=azienda,DC=example";

const std::vector<std::string> kAttributi = {"FirstName", "LastName",        "EmployeeID", "Title",
                                             "Division",  "TelephoneNumber", "FaxNumber",  "EmailAddress"};

class DirectoryTest : public ::testing::Test {
 protected:
  void ConPersona() {
    ambiente.directoryPresente = true;
    ambiente.trovatiInDirectory = {{{"adsPath", kAnna}}, {{"adsPath", "LDAP://CN=Altra"}}};
    ambiente.persone[kAnna] = {
        {"FirstName", "Anna"},           {"LastName", "Rossi"},
        {"EmployeeID", "0042"},          {"Title", "Responsabile"},
        {"Division", "Vendite"},         {"TelephoneNumber", "+39 02 1234567"},
        {"FaxNumber", "+39 02 7654321"}, {"EmailAddress", "anna.rossi@azienda.example"}};
  }
  bool Cerca(const std::string& nome = "arossi") {
    return GetDatiUtenteDirectory(ambiente.DirectoryAziendale(), nome, dati);
  }
  std::vector<std::string> Campi() const {
    return {dati.FirstName, dati.LastName,        dati.EmployeeID, dati.Title,
            dati.Division,  dati.TelephoneNumber, dati.FaxNumber,  dati.EmailAddress};
  }

  fakes::FakeAmbiente ambiente;
  fakes::JournalPtr journal = ambiente.journal;
  DatiUtenteDirectory dati;
};

const std::vector<std::string> kNessunDato(8);

TEST(TagliaAlNul, CutsAtTheFirstNulAndOnlyThere) {
  using namespace std::string_literals;
  EXPECT_EQ(TagliaAlNul("arossi\0   altro\0"s), "arossi");
  EXPECT_EQ(TagliaAlNul("\0arossi"s), "");
  EXPECT_EQ(TagliaAlNul("arossi  "), "arossi  ");
  EXPECT_EQ(TagliaAlNul("nicolò\0"s), "nicolò");
  EXPECT_EQ(TagliaAlNul(""), "");
}

TEST_F(DirectoryTest, TheNetworkUserNameIsWhatStandsBeforeTheNulOfABufferOfAHundred) {
  ambiente.utenteRete = "arossi";
  EXPECT_EQ(GetNomeUtenteRete(ambiente.ReteDiSistema()), "arossi");
  EXPECT_THAT(journal->Righe(), ElementsAre("Rete.WNetGetUserA 100"));
}

TEST_F(DirectoryTest, AnErrorOfTheNetworkLayerGivesAnEmptyUserName) {
  EXPECT_EQ(GetNomeUtenteRete(ambiente.ReteDiSistema()), "");
  ambiente.utenteRete = std::string(100, 'x');  // no room for its NUL
  EXPECT_EQ(GetNomeUtenteRete(ambiente.ReteDiSistema()), "");
  ambiente.utenteRete = std::string(99, 'x');
  EXPECT_EQ(GetNomeUtenteRete(ambiente.ReteDiSistema()), std::string(99, 'x'));
}

TEST_F(DirectoryTest, TheLookUpAsksInItsOrderAndClosesBehindItself) {
  ConPersona();
  EXPECT_TRUE(Cerca());
  EXPECT_THAT(
      journal->Righe(),
      ElementsAre("Directory.CreaConnessione", "Directory.CreaRecordSet",
                  "Directory.ApriOggetto LDAP://rootDSE", "Directory.Get defaultNamingContext",
                  "Directory.ApriOggetto LDAP://DC=azienda,DC=example", "Directory.ADsPath",
                  "DirectoryConnection.Open Data Source=Active Directory Provider;Provider=ADsDSOObject",
                  "DirectoryConnection.Execute <LDAP://DC=azienda,DC=example>;"
                  "(&(objectCategory=person)(objectClass=user)(samaccountName=arossi));adsPath;subTree",
                  "DirectoryRecordSet.Fields adsPath",
                  "Directory.ApriOggetto LDAP://CN=Anna Rossi,OU=Vendite,DC=azienda,DC=example",
                  "Directory.Membro FirstName", "Directory.Membro LastName", "Directory.Membro EmployeeID",
                  "Directory.Membro Title", "Directory.Membro Division", "Directory.Membro TelephoneNumber",
                  "Directory.Membro FaxNumber", "Directory.Membro EmailAddress", "DirectoryRecordSet.Close",
                  "DirectoryConnection.Close"));
  EXPECT_THAT(Campi(), ElementsAre("Anna", "Rossi", "0042", "Responsabile", "Vendite", "+39 02 1234567",
                                   "+39 02 7654321", "anna.rossi@azienda.example"));
}

TEST_F(DirectoryTest, AnAttributeThatThePersonDoesNotHaveStaysAsItWasAndTheOthersAreFilled) {
  for (std::size_t i = 0; i < kAttributi.size(); ++i) {
    ConPersona();
    dati = {};
    ASSERT_TRUE(Cerca());
    auto want = Campi();
    want[i] = "";
    ambiente.persone[kAnna].erase(kAttributi[i]);
    dati = {};
    EXPECT_TRUE(Cerca()) << kAttributi[i];
    EXPECT_EQ(Campi(), want) << kAttributi[i];
  }
}

TEST_F(DirectoryTest, AnAttributeThatIsNoTextIsLeftOut) {
  ConPersona();
  ambiente.persone[kAnna]["FirstName"] = host::Null{};
  ambiente.persone[kAnna]["LastName"] = host::Variant::Array{"Rossi", "Bianchi"};
  ambiente.persone[kAnna]["EmployeeID"] = 42;
  EXPECT_TRUE(Cerca());
  EXPECT_EQ(dati.FirstName, "");
  EXPECT_EQ(dati.LastName, "");
  EXPECT_EQ(dati.EmployeeID, "42");
  EXPECT_EQ(dati.EmailAddress, "anna.rossi@azienda.example");
}

TEST_F(DirectoryTest, AUserWhoIsNotFoundLeavesTheRecordEmptyAndTheLookUpTrue) {
  ambiente.directoryPresente = true;
  EXPECT_TRUE(Cerca("nessuno"));
  EXPECT_EQ(Campi(), kNessunDato);
  EXPECT_THAT(journal->Righe({"DirectoryRecordSet", "DirectoryConnection.Close"}),
              ElementsAre("DirectoryRecordSet.Close", "DirectoryConnection.Close"));
}

TEST_F(DirectoryTest, AMachineWithoutADomainGetsFalseAndAnEmptyRecord) {
  EXPECT_FALSE(Cerca());
  EXPECT_EQ(Campi(), kNessunDato);
  EXPECT_THAT(journal->Righe(), ElementsAre("Directory.CreaConnessione"));
}

TEST_F(DirectoryTest, TheUserNameGoesIntoTheFilterUnescaped) {
  ambiente.directoryPresente = true;
  EXPECT_TRUE(Cerca("a*)(|(cn=\\"));
  EXPECT_TRUE(Cerca(""));
  EXPECT_THAT(journal->Righe({"DirectoryConnection.Execute"}),
              ElementsAre("DirectoryConnection.Execute <LDAP://DC=azienda,DC=example>;"
                          "(&(objectCategory=person)(objectClass=user)(samaccountName=a*)(|(cn=\\));"
                          "adsPath;subTree",
                          "DirectoryConnection.Execute <LDAP://DC=azienda,DC=example>;"
                          "(&(objectCategory=person)(objectClass=user)(samaccountName=));adsPath;subTree"));
}

struct CasoDirectoryGuasta {
  const char* etichetta;
  const char* guasto;
  std::vector<std::string> want_chiusure;
};

class DirectoryGuasta : public DirectoryTest, public ::testing::WithParamInterface<CasoDirectoryGuasta> {};

TEST_P(DirectoryGuasta, TheLookUpIsFalseTheRecordEmptyAndWhatWasOpenIsClosed) {
  ConPersona();
  journal->Fallisce(GetParam().guasto);
  EXPECT_FALSE(Cerca());
  EXPECT_EQ(Campi(), kNessunDato);
  EXPECT_EQ(journal->Righe({"DirectoryRecordSet.Close", "DirectoryConnection.Close"}),
            GetParam().want_chiusure);
}

INSTANTIATE_TEST_SUITE_P(
    Passi, DirectoryGuasta,
    ::testing::Values(CasoDirectoryGuasta{"NoConnectionClass", "Directory.CreaConnessione", {}},
                      CasoDirectoryGuasta{"NoRecordSetClass", "Directory.CreaRecordSet", {}},
                      CasoDirectoryGuasta{"NoRoot", "Directory.ApriOggetto LDAP://rootDSE", {}},
                      CasoDirectoryGuasta{"NoNamingContext", "Directory.Get defaultNamingContext", {}},
                      CasoDirectoryGuasta{"NoDomainObject", "Directory.ApriOggetto LDAP://DC=azienda", {}},
                      CasoDirectoryGuasta{"NoPath", "Directory.ADsPath", {}},
                      CasoDirectoryGuasta{"ConnectionRefused", "DirectoryConnection.Open", {}},
                      CasoDirectoryGuasta{
                          "QueryRefused", "DirectoryConnection.Execute", {"DirectoryConnection.Close"}},
                      CasoDirectoryGuasta{"NoPathInTheResult",
                                          "DirectoryRecordSet.Fields adsPath",
                                          {"DirectoryRecordSet.Close", "DirectoryConnection.Close"}},
                      CasoDirectoryGuasta{"PersonCannotBeOpened",
                                          "Directory.ApriOggetto LDAP://CN=Anna",
                                          {"DirectoryRecordSet.Close", "DirectoryConnection.Close"}}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(DirectoryTest, ErrorsOfTheCleanUpAreIgnoredAndEachStepIsTried) {
  ConPersona();
  journal->Fallisce("DirectoryRecordSet.Close");
  journal->Fallisce("DirectoryConnection.Close");
  EXPECT_TRUE(Cerca());
  EXPECT_EQ(dati.LastName, "Rossi");
  EXPECT_THAT(journal->Righe({"DirectoryRecordSet.Close", "DirectoryConnection.Close"}),
              ElementsAre("DirectoryRecordSet.Close", "DirectoryConnection.Close"));
}

TEST_F(DirectoryTest, WhatTheCallerPutIntoTheRecordStaysWhenNobodyIsFound) {
  ambiente.directoryPresente = true;
  dati.EmailAddress = "gia@presente.example";
  EXPECT_TRUE(Cerca());
  EXPECT_EQ(dati.EmailAddress, "gia@presente.example");
}

}  // namespace
}  // namespace orve
