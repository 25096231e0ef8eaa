// What the system's directory is asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/errori.h"
#include "journals/scena.h"
#include "orve-mailserver/host/directory.h"
#include "win32/ambiente_win32.h"
#include "windows/win32/esposti.h"

namespace orve {
namespace {

TEST(DirectoryDiWindows, IsNotAskedForANameThatCouldFindOthers) {
  const prova::AppartamentoCom appartamento;
  const auto finto = journals::CreaFinto();
  const prova::ClassiFinte classi(finto, journals::CreaDatabase(finto->journal));
  const auto ambiente = adapters::win32::CreaAmbienteWin32();
  const auto connessione = ambiente->DirectoryAziendale().CreaConnessione();
  connessione->Open("Data Source=Active Directory Provider;Provider=ADsDSOObject");
  const auto cerca = [&](const std::string& nome) {
    static_cast<void>(connessione->Execute(
        "<LDAP://DC=azienda>;(&(objectCategory=person)(objectClass=user)(samaccountName=" + nome +
        "));adsPath;subTree"));
  };
  EXPECT_EQ(fakes::NumeroDi([&] { cerca("*)(|(uid=*"); }), host::kArgomentoNonValido);
  EXPECT_THAT(finto->journal->Righe(), testing::Not(testing::Contains(testing::HasSubstr("Execute"))));
  EXPECT_EQ(fakes::NumeroDi([&] { cerca("arossi"); }), 0);
  EXPECT_THAT(finto->journal->Righe(), testing::Contains(testing::HasSubstr("samaccountName=arossi")));
}

}  // namespace
}  // namespace orve
