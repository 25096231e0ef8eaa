// The three functions of MAPI32.DLL, as received by a library that a test plays.
#include "win32/mapi32.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "fakes/errori.h"
#include "orve-mailserver/host/errore.h"
#include "win32/conversions.h"
#include "windows/win32/mapi_doppio/mapi_doppio.h"

namespace orve::adapters::win32 {
namespace {

// What arrived, read where the library's published records have it: numbers of 32 bits, texts behind
// pointers.
struct Arrivo {
  std::string logon;
  std::string messaggio;
  std::vector<std::string> destinatari;
  std::vector<std::string> file;
  bool arrayFile = false;
  std::string argomenti;
  ULONG esito = 0;
};

Arrivo* arrivo = nullptr;

constexpr std::size_t kPuntatore = sizeof(void*);

std::string Numero(const void* record, std::size_t posto) {
  std::int32_t numero = 0;
  std::memcpy(&numero, static_cast<const char*>(record) + posto, sizeof numero);
  return std::to_string(numero);
}

BSTR TestoA(const void* record, std::size_t posto) {
  BSTR testo = nullptr;
  std::memcpy(&testo, static_cast<const char*>(record) + posto, sizeof testo);
  return testo;
}

std::string Byte(const void* record, std::size_t posto) {
  BSTR testo = TestoA(record, posto);
  return {reinterpret_cast<const char*>(testo), SysStringByteLen(testo)};
}

ULONG WINAPI Logon(ULONG_PTR finestra, LPSTR profilo, LPSTR password, ULONG flags, ULONG riservato,
                   ULONG_PTR* sessione) {
  arrivo->logon = std::to_string(finestra) + "|" + profilo + "|" + password + "|" + std::to_string(flags) +
                  "|" + std::to_string(riservato);
  if (arrivo->esito == 0) *sessione = static_cast<ULONG_PTR>(0x1234567890LL);
  return arrivo->esito;
}

ULONG WINAPI SendMail(ULONG_PTR sessione, ULONG_PTR finestra, void* messaggio, SAFEARRAY** destinatari,
                      SAFEARRAY** file, ULONG flags, ULONG riservato) {
  arrivo->argomenti = std::to_string(sessione) + "|" + std::to_string(finestra) + "|" +
                      std::to_string(flags) + "|" + std::to_string(riservato);
  arrivo->messaggio = Numero(messaggio, 0);
  for (std::size_t testo = 1; testo <= 5; ++testo)
    arrivo->messaggio += "|" + Byte(messaggio, testo * kPuntatore);
  for (std::size_t posto = 0; posto < 3; ++posto) {
    arrivo->messaggio += "|" + Numero(messaggio, 6 * kPuntatore + posto * 4);
  }
  if (*destinatari != nullptr) {
    EXPECT_EQ((*destinatari)->cbElements, 8 + 4 * kPuntatore);
    const auto* dati = static_cast<const char*>((*destinatari)->pvData);
    for (ULONG posto = 0; posto < (*destinatari)->rgsabound[0].cElements; ++posto) {
      const char* record = dati + posto * (*destinatari)->cbElements;
      arrivo->destinatari.push_back(
          Numero(record, 0) + "|" + Numero(record, 4) + "|" + FromBstr(TestoA(record, 8)) + "|" +
          FromBstr(TestoA(record, 8 + kPuntatore)) + "|" + Numero(record, 8 + 2 * kPuntatore) + "|" +
          FromBstr(TestoA(record, 8 + 3 * kPuntatore)));
    }
  }
  arrivo->arrayFile = *file != nullptr;
  if (*file != nullptr) {
    EXPECT_EQ((*file)->cbElements, 8 + 4 * kPuntatore);
    const auto* dati = static_cast<const char*>((*file)->pvData);
    for (ULONG posto = 0; posto < (*file)->rgsabound[0].cElements; ++posto) {
      const char* record = dati + posto * (*file)->cbElements;
      arrivo->file.push_back(Numero(record, 0) + "|" + Numero(record, 4) + "|" + Numero(record, 8) + "|" +
                             FromBstr(TestoA(record, 8 + kPuntatore)) + "|" +
                             FromBstr(TestoA(record, 8 + 2 * kPuntatore)) + "|" +
                             FromBstr(TestoA(record, 8 + 3 * kPuntatore)));
    }
  }
  // The library replaces the subject with another text.
  SysFreeString(TestoA(messaggio, kPuntatore));
  BSTR cambiato = SysAllocStringByteLen("Spedito \xE0", 9);
  std::memcpy(static_cast<char*>(messaggio) + kPuntatore, &cambiato, sizeof cambiato);
  return arrivo->esito;
}

ULONG WINAPI Logoff(ULONG_PTR sessione, ULONG_PTR finestra, ULONG flags, ULONG riservato) {
  arrivo->argomenti = std::to_string(sessione) + "|" + std::to_string(finestra) + "|" +
                      std::to_string(flags) + "|" + std::to_string(riservato);
  return arrivo->esito;
}

class Mapi32Test : public testing::Test {
 protected:
  void SetUp() override {
    arrivo = &arrivato;
    // Loaded already, it is what the name means from here on.
    const HMODULE libreria = LoadLibraryW(L"mapi32.dll");
    const auto imposta = reinterpret_cast<prova::ImpostaFunzioniMapi>(
        reinterpret_cast<void*>(GetProcAddress(libreria, "ImpostaFunzioni")));
    ASSERT_NE(imposta, nullptr) << "the library of the test is not in front of the system's";
    const prova::FunzioniMapi funzioni{Logon, SendMail, Logoff};
    imposta(&funzioni);
  }
  static std::int32_t NumeroDellErrore(Mapi32Win32& libreria) {
    return fakes::NumeroDi([&] { libreria.MAPILogoff(1, 0, 0, 0); });
  }

  Arrivo arrivato;
  Mapi32Win32 mapi;
};

TEST_F(Mapi32Test, TheLogonGivesTheSessionsHandleInItsFullWidth) {
  host::MapiHandle sessione = 0;
  EXPECT_EQ(mapi.MAPILogon(0, "Società", "chiave", 3, 0, sessione), 0);
  EXPECT_EQ(arrivato.logon, "0|Societ\xE0|chiave|3|0");
  EXPECT_EQ(sessione, static_cast<host::MapiHandle>(0x1234567890LL));
}

TEST_F(Mapi32Test, ARefusedLogonGivesTheLibrarysNumberAndNoSession) {
  arrivato.esito = 3;
  host::MapiHandle sessione = 0;
  EXPECT_EQ(mapi.MAPILogon(0, "", "", 3, 0, sessione), 3);
  EXPECT_EQ(sessione, 0U);
}

TEST_F(Mapi32Test, TheMessageGoesInTheCodePageAndTheArraysAsTheyAre) {
  host::MapiMessage messaggio{0, "Fattura è Ł", "Corpo\r\n", "", "", "", 0, 2, 1};
  const std::vector<host::MapiRecip> destinatari = {{0, 1, "Łucja<l@x.example>", "", 0, ""},
                                                    {0, 3, "Anna<a@x.example>", "", 0, ""}};
  const std::vector<host::MapiFile> file = {{0, 0, -1, "C:\\Łódź.pdf", "Łódź.pdf", ""}};
  EXPECT_EQ(mapi.BMAPISendMail(0, 0, messaggio, destinatari, file, 0, 0), 0);
  EXPECT_EQ(arrivato.argomenti, "0|0|0|0");
  EXPECT_EQ(arrivato.messaggio, "0|Fattura \xE8 ?|Corpo\r\n||||0|2|1");
  EXPECT_EQ(arrivato.destinatari,
            (std::vector<std::string>{"0|1|Łucja<l@x.example>||0|", "0|3|Anna<a@x.example>||0|"}));
  EXPECT_EQ(arrivato.file, std::vector<std::string>{"0|0|-1|C:\\Łódź.pdf|Łódź.pdf|"});
}

TEST_F(Mapi32Test, TheTextsOfTheMessageComeBackConverted) {
  host::MapiMessage messaggio{0, "Oggetto", "perché Ł", "", "", "", 0, 1, 0};
  mapi.BMAPISendMail(0, 0, messaggio, {{0, 1, "a<b@c.it>", "", 0, ""}}, {}, 0, 0);
  EXPECT_EQ(messaggio.Subject, "Spedito à");
  EXPECT_EQ(messaggio.NoteText, "perché ?");
}

TEST_F(Mapi32Test, WithoutAttachmentsThereIsNoArrayOfFiles) {
  host::MapiMessage messaggio{0, "", "", "", "", "", 0, 1, 0};
  mapi.BMAPISendMail(0, 0, messaggio, {{0, 0, "", "", 0, ""}}, {}, 0, 0);
  EXPECT_FALSE(arrivato.arrayFile);
}

TEST_F(Mapi32Test, ARefusedMessageGivesTheLibrarysNumber) {
  arrivato.esito = 11;
  host::MapiMessage messaggio{0, "", "", "", "", "", 0, 0, 0};
  EXPECT_EQ(mapi.BMAPISendMail(0, 0, messaggio, {}, {}, 0, 0), 11);
}

TEST_F(Mapi32Test, ACountBeyondItsArrayIsRefusedBeforeTheLibraryReadsIt) {
  host::MapiMessage messaggio{0, "", "", "", "", "", 0, 2, 0};
  EXPECT_THROW(mapi.BMAPISendMail(0, 0, messaggio, {{0, 1, "a", "", 0, ""}}, {}, 0, 0), host::Errore);
  EXPECT_EQ(arrivato.argomenti, "");
}

TEST_F(Mapi32Test, TheLogoffHasTheSessionAndThreeZeros) {
  EXPECT_EQ(mapi.MAPILogoff(815, 0, 0, 0), 0);
  EXPECT_EQ(arrivato.argomenti, "815|0|0|0");
}

TEST_F(Mapi32Test, AMachineWithoutTheLibraryIsError53AndALibraryWithoutTheFunction453) {
  Mapi32Win32 manca(L"orve-manca.dll");
  EXPECT_EQ(NumeroDellErrore(manca), 53);
  Mapi32Win32 altra(L"kernel32.dll");
  EXPECT_EQ(NumeroDellErrore(altra), 453);
}

std::filesystem::path CartellaDelProgramma() {
  std::wstring programma(MAX_PATH, L'\0');
  programma.resize(GetModuleFileNameW(nullptr, programma.data(), MAX_PATH));
  return std::filesystem::path(programma).parent_path();
}

// A library left there by somebody who may write the folder.
class LibreriaLasciata {
 public:
  explicit LibreriaLasciata(const std::filesystem::path& cartella) : file_(cartella / L"orve-lasciata.dll") {
    copy_file(CartellaDelProgramma() / L"mapi32.dll", file_,
              std::filesystem::copy_options::overwrite_existing);
  }
  LibreriaLasciata(const LibreriaLasciata&) = delete;
  LibreriaLasciata& operator=(const LibreriaLasciata&) = delete;
  LibreriaLasciata(LibreriaLasciata&&) = delete;
  LibreriaLasciata& operator=(LibreriaLasciata&&) = delete;
  ~LibreriaLasciata() {
    std::error_code lasciata;
    remove(file_, lasciata);
  }

 private:
  std::filesystem::path file_;
};

TEST_F(Mapi32Test, ALibraryBesideTheProgramOrInTheCurrentFolderIsNotLoaded) {
  for (const auto& cartella : {CartellaDelProgramma(), std::filesystem::current_path()}) {
    const LibreriaLasciata lasciata(cartella);
    Mapi32Win32 libreria(L"orve-lasciata.dll");
    EXPECT_EQ(NumeroDellErrore(libreria), 53) << cartella;
  }
}

}  // namespace
}  // namespace orve::adapters::win32
