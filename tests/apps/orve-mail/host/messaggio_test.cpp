#include "orve-mail/host/messaggio.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <sstream>
#include <string>

#include "orve-mail/terminal/uscita.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using namespace std::string_literals;

struct Rifiuto {
  Uscita uscita = Uscita::kInviato;
  std::string testo;
};

Rifiuto RifiutoDi(const std::function<void()>& azione) {
  try {
    azione();
  } catch (const ErroreProgramma& errore) {
    return {errore.Stato(), errore.what()};
  }
  return {};
}

std::string Corpo(const std::string& testo, const std::string& ingresso = "") {
  std::istringstream flusso(ingresso);
  return LeggiCorpo(testo, flusso, {});
}

}  // namespace

TEST(Destinatario, TheFormsThatAPersonWrites) {
  struct Caso {
    std::string testo, nome, indirizzo;
  };
  for (const Caso& caso :
       {Caso{"Rossi <r@x.example>", "Rossi", "r@x.example"},
        Caso{"\"Rossi, Mario\" <r@x.example>", "Rossi, Mario", "r@x.example"},
        Caso{"Rossi, Mario <r@x.example>", "Rossi, Mario", "r@x.example"},
        Caso{"  Caffè «Perù»   < r@x.example > ", "Caffè «Perù»", "r@x.example"},
        Caso{"r@x.example", "", "r@x.example"}, Caso{"<r@x.example>", "", "r@x.example"},
        Caso{"non un indirizzo", "", "non un indirizzo"}, Caso{"\" <r@x.example>", "\"", "r@x.example"}}) {
    const VoceDestinatario voce = LeggiDestinatario(caso.testo);
    EXPECT_EQ(voce.nome, caso.nome) << caso.testo;
    EXPECT_EQ(voce.indirizzo, caso.indirizzo) << caso.testo;
  }
}

TEST(Destinatario, WhatTheListsOfTheLibraryCannotHoldIsRefused) {
  for (const std::string testo : {"Rossi; Bianchi <r@x.example>", "Rossi <Mario> <r@x.example>",
                                  "Rossi <r@x.example;b@x.example>", "Rossi > <r@x.example>"}) {
    const Rifiuto rifiuto = RifiutoDi([&] { (void)LeggiDestinatario(testo); });
    EXPECT_EQ(rifiuto.uscita, Uscita::kComandoErrato) << testo;
    EXPECT_EQ(rifiuto.testo,
              "Destinatario «" + testo + "»: nome e indirizzo non possono contenere «;», «<» o «>»");
  }
}

TEST(Destinatario, AnAddressMustBeThere) {
  for (const std::string testo : {"", "   ", "<>", "Rossi <>", "Rossi < >"}) {
    EXPECT_EQ(RifiutoDi([&] { (void)LeggiDestinatario(testo); }).testo,
              "Destinatario «" + testo + "»: manca l'indirizzo");
  }
  EXPECT_EQ(RifiutoDi([] { (void)LeggiDestinatario("Rossi <r@x.example"); }).testo,
            "Destinatario «Rossi <r@x.example»: manca «>» in fondo");
}

TEST(CorpoDelMessaggio, ATextStandsForItselfWithTheApplicationsLineEnds) {
  EXPECT_EQ(Corpo("uno\ndue\r\ntre\n"), "uno\r\ndue\r\ntre\r\n");
  EXPECT_EQ(Corpo(""), "");
  EXPECT_EQ(Corpo("@@mario"), "@mario");
}

TEST(CorpoDelMessaggio, AFileAndTheStandardInputAreRead) {
  const support::TempDir cartella;
  const std::string file = cartella.Write("corpo.txt", "\xEF\xBB\xBFPerché\nno");
  EXPECT_EQ(Corpo("@" + file), "Perché\r\nno");
  EXPECT_EQ(Corpo("@-", "da ingresso\n"), "da ingresso\r\n");
  const std::string lungo(1U << 20U, 'x');
  EXPECT_EQ(Corpo("@" + cartella.Write("lungo.txt", lungo)), lungo);
}

TEST(CorpoDelMessaggio, AFileThatIsNoTextIsRefused) {
  const support::TempDir cartella;
  const std::string latin = cartella.Write("latin.txt", "perch\xE9");
  EXPECT_EQ(RifiutoDi([&] { (void)Corpo("@" + latin); }).testo, latin + ": non è un testo UTF-8");
  const std::string nul = cartella.Write("nul.txt", "a\0b"s);
  EXPECT_EQ(RifiutoDi([&] { (void)Corpo("@" + nul); }).testo, nul + ": non è un testo UTF-8");
  const std::string enorme = cartella.Write("enorme.txt", "");
  std::filesystem::resize_file(enorme, 1ULL << 40U);
  EXPECT_EQ(RifiutoDi([&] { (void)Corpo("@" + enorme); }).testo, enorme + ": il testo supera 16 MiB");
  EXPECT_EQ(RifiutoDi([&] { (void)Corpo("@" + cartella.Path().string()); }).testo,
            cartella.Path().string() + ": è una cartella");
  EXPECT_EQ(RifiutoDi([&] { (void)Corpo("@/dev/zero"); }).testo, "/dev/zero: non è un file");
  EXPECT_EQ(RifiutoDi([&] { (void)Corpo("@" + cartella.Path().string() + "/manca"); }).uscita,
            Uscita::kFileMancante);
}

TEST(DataDiValidita, BothFormsAreRead) {
  EXPECT_EQ(LeggiData("31/12/2024"), host::DataOra::Da(2024, 12, 31));
  EXPECT_EQ(LeggiData("2024-12-31"), host::DataOra::Da(2024, 12, 31));
  for (const std::string testo : {"", "31/02/2024", "2024-13-01", "domani", "30/12/1899"}) {
    EXPECT_EQ(RifiutoDi([&] { (void)LeggiData(testo); }).testo,
              "--data: «" + testo + "» non è una data (gg/mm/aaaa oppure aaaa-mm-gg)");
  }
}

TEST(TestoUtf8, AnythingElseIsRefused) {
  RichiediUtf8("perché 日本", "--oggetto");
  for (const std::string& testo : {"\xFF"s, "perch\xE9"s, "\xC0\xAF"s, "\xED\xA0\x80"s, "a\0b"s}) {
    EXPECT_EQ(RifiutoDi([&] { RichiediUtf8(testo, "--oggetto"); }).testo,
              "--oggetto: il testo non è UTF-8 valido");
  }
}

}  // namespace orve::app
