// Windows' own parts.
#include "win32/system.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>

#include "orve-mailserver/host/errore.h"
#include "win32/ambiente_win32.h"
#include "windows/uscita_debug.h"
#include "windows/win32/doppio.h"

namespace orve::adapters::win32 {
namespace {

// The person's short form of dates, for as long as it lives.
class FormaDiData {
 public:
  explicit FormaDiData(const wchar_t* forma) {
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, prima_.data(), static_cast<int>(prima_.size()));
    EXPECT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, forma));
  }
  FormaDiData(const FormaDiData&) = delete;
  FormaDiData& operator=(const FormaDiData&) = delete;
  ~FormaDiData() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, prima_.data()); }

 private:
  std::array<wchar_t, 80> prima_{};
};

class SistemaTest : public testing::Test {
 protected:
  prova::AppartamentoCom appartamento;
  std::shared_ptr<host::Ambiente> ambiente = CreaAmbienteWin32();
};

TEST_F(SistemaTest, TheClockStandsAtTheSystemsTime) {
  SYSTEMTIME prima;
  GetLocalTime(&prima);
  const double adesso = ambiente->OrologioDiSistema().Adesso().giorni;
  SYSTEMTIME dopo;
  GetLocalTime(&dopo);
  const auto giorni = [](const SYSTEMTIME& tempo) {
    return host::DataOra::Da(tempo.wYear, tempo.wMonth, tempo.wDay, tempo.wHour, tempo.wMinute, tempo.wSecond)
        .giorni;
  };
  EXPECT_GE(adesso, giorni(prima));
  EXPECT_LE(adesso, giorni(dopo));
}

TEST_F(SistemaTest, DateAndTimeHaveTheFormsOfTheRegionalSettings) {
  const auto istante = host::DataOra::Da(2026, 11, 4, 9, 5, 7);
  const SYSTEMTIME tempo{2026, 11, 0, 4, 9, 5, 7, 0};
  std::array<char, 64> data{};
  std::array<char, 64> ora{};
  ASSERT_GT(GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &tempo, nullptr, data.data(), 64), 0);
  ASSERT_GT(GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &tempo, nullptr, ora.data(), 64), 0);
  EXPECT_EQ(ambiente->OrologioDiSistema().TestoData(istante), data.data());
  EXPECT_EQ(ambiente->OrologioDiSistema().TestoOra(istante), ora.data());
}

TEST_F(SistemaTest, ADateThatTheSystemCannotWriteReadsAsInItaly) {
  EXPECT_EQ(ambiente->OrologioDiSistema().TestoData(host::DataOra::Da(1500, 2, 3)), "03/02/1500");
}

TEST_F(SistemaTest, ADateOfTheClockIsTheSameDateForTheDatabaseWhateverTheRegionalSettings) {
  struct Caso {
    const wchar_t* forma;
    const char* wantTesto;
  };
  for (const Caso& caso : {Caso{L"dd/MM/yyyy", "04/11/2026"}, Caso{L"M/d/yyyy", "11/4/2026"},
                           Caso{L"yyyy-MM-dd", "2026-11-04"}, Caso{L"dd.MM.yyyy", "04.11.2026"}}) {
    const FormaDiData regionale(caso.forma);
    auto& orologio = ambiente->OrologioDiSistema();
    const auto istante = host::DataOra::Da(2026, 11, 4, 9, 5, 7);
    ASSERT_EQ(orologio.TestoData(istante), caso.wantTesto);
    FormatoDataWin32 formato;
    for (const auto& testo :
         {orologio.TestoData(istante), orologio.TestoData(istante) + " " + orologio.TestoOra(istante)}) {
      formato.Data(testo);
      EXPECT_EQ(formato.Stato(), 0) << testo;
      EXPECT_EQ(formato.DataDB(), "20261104") << testo;
    }
  }
}

TEST_F(SistemaTest, WhatIsNoDateHasAStateAndNoDatabaseForm) {
  FormatoDataWin32 formato;
  formato.Data("11/12/2026");
  for (const char* testo : {"31/02/2026", "oggi", "", "01/01/1752"}) {
    formato.Data(testo);
    EXPECT_EQ(formato.Stato(), 1) << testo;
    EXPECT_EQ(formato.DataDB(), "") << testo;
  }
}

TEST_F(SistemaTest, IdentifiersAreNewEachTime) {
  const auto uno = ambiente->Identificatori().CreaGuid();
  const auto altro = ambiente->Identificatori().CreaGuid();
  ASSERT_TRUE(uno && altro);
  EXPECT_TRUE(uno->primo != altro->primo || uno->byte != altro->byte);
}

TEST_F(SistemaTest, EnvironmentVariablesAreReadWhateverTheirLength) {
  const std::wstring lungo(5000, L'x');
  SetEnvironmentVariableW(L"ORVE_PROVA", (lungo + L"é").c_str());
  EXPECT_EQ(ambiente->VariabiliDiAmbiente().Leggi("ORVE_PROVA"), std::string(5000, 'x') + "é");
  SetEnvironmentVariableW(L"ORVE_PROVA", nullptr);
  EXPECT_EQ(ambiente->VariabiliDiAmbiente().Leggi("ORVE_PROVA"), "");
}

TEST_F(SistemaTest, TheNetworkUserIsTheOneOfTheSystem) {
  std::array<char, 100> nome{};
  DWORD misura = 100;
  const DWORD atteso = ::WNetGetUserA(nullptr, nome.data(), &misura);
  std::string buffer(100, ' ');
  EXPECT_EQ(ambiente->ReteDiSistema().WNetGetUserA(buffer), static_cast<std::int32_t>(atteso));
  if (atteso == NO_ERROR) {
    EXPECT_EQ(buffer.substr(0, buffer.find('\0')), nome.data());
  } else {
    EXPECT_EQ(buffer, std::string(100, ' '));
  }
}

TEST_F(SistemaTest, ABufferThatIsTooShortForTheUserStaysAsItWas) {
  std::string buffer(1, ' ');
  EXPECT_NE(ambiente->ReteDiSistema().WNetGetUserA(buffer), 0);
  EXPECT_EQ(buffer, " ");
}

TEST_F(SistemaTest, ALineGoesToTheSystemsDebugOutputInItsCodePage) {
  prova::UscitaDebug uscita;
  ambiente->UscitaDiDebug().Scrivi("QLNA:|perché|INI|ORVE_MAILSERVER|Mittente Ł");
  EXPECT_THAT(uscita.Righe(), testing::ElementsAre("QLNA:|perch\xE9|INI|ORVE_MAILSERVER|Mittente ?"));
}

class Percorsi : public testing::Test {
 protected:
  RisolutorePercorsiWin32 risolutore;
};

TEST_F(Percorsi, TheTemporaryDirectoryIsThePersons) {
  std::array<wchar_t, 300> temporanea{};
  GetTempPathW(300, temporanea.data());
  risolutore.ImpostaTipoPercorso(8, "");
  EXPECT_TRUE(CreateDirectoryA(risolutore.Percorso().c_str(), nullptr) != 0 ||
              GetLastError() == ERROR_ALREADY_EXISTS);
  EXPECT_NE(risolutore.Percorso().back(), '\\');
}

TEST_F(Percorsi, TheInstallationIsWhereTheProgramLies) {
  risolutore.ImpostaTipoPercorso(6, "");
  EXPECT_NE(GetFileAttributesA((risolutore.Percorso() + "\\test-win32.exe").c_str()),
            INVALID_FILE_ATTRIBUTES);
}

TEST_F(Percorsi, AnUnknownKindIsRefused) {
  EXPECT_THROW(risolutore.ImpostaTipoPercorso(7, ""), host::Errore);
}

TEST_F(Percorsi, AConfiguredPathIsMadeWhole) {
  SetEnvironmentVariableW(L"ORVE_PROVA", L"C:\\dati");
  risolutore.ImpostaPercorso("%ORVE_PROVA%\\posta\\", true);
  EXPECT_EQ(risolutore.Percorso(), "C:\\dati\\posta");
  SetEnvironmentVariableW(L"ORVE_PROVA", nullptr);
  risolutore.ImpostaPercorso("C:/dati/../log", true);
  EXPECT_EQ(risolutore.Percorso(), "C:\\log");
  risolutore.ImpostaPercorso("C:\\", true);
  EXPECT_EQ(risolutore.Percorso(), "C:\\");
}

TEST_F(Percorsi, ARelativePathCountsFromTheProgram) {
  risolutore.ImpostaTipoPercorso(6, "");
  const std::string programma = risolutore.Percorso();
  risolutore.ImpostaPercorso("posta", true);
  EXPECT_EQ(risolutore.Percorso(), programma + "\\posta");
}

TEST_F(Percorsi, AnEmptyPathIsTheTemporaryDirectory) {
  risolutore.ImpostaTipoPercorso(8, "");
  const std::string temporanea = risolutore.Percorso();
  risolutore.ImpostaPercorso("  ", true);
  EXPECT_EQ(risolutore.Percorso(), temporanea);
}

}  // namespace
}  // namespace orve::adapters::win32
