#include "sqlite/schema.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>

#include "adapters/sqlite/prova.h"

namespace orve::adapters::sqlite {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using Schema = ConDatiDiProva;

TEST_F(Schema, EveryTableHasItsColumns) {
  const std::vector<std::pair<std::string, std::string>> kTabelle = {
      {"FW24_FAXCONFIG",
       "FW24_CODICE, FW24_INDCANALE, FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_MAILMODSTDIFF, FW24_PATHTMP, "
       "FW24_READRECEIPT, FW24_FLGMSGPERS, FW24_MSGPERS, FW24_BCC"},
      {"FW95_SETTINGS", "FW95_CODICE, FW95_VALORE"},
      {"AZ_FIRMEUTENTI", "IDUTENTE_FW07, FIRMA_HTML, FONT, DIMENSIONE"},
      {"CG16_ANAGGEN",
       "CG16_CODICE, CG16_RAGSOANAG, CG16_NOME, CG16_COGNOME, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, "
       "CG16_PROV, "
       "CG16_FAXNUM, CG16_INDEMAIL, CG16_EMAIL_PEC"},
      {"CG18_ANADITTABASE", "CG18_DITTA, CG18_CODICE_CG16"},
      {"CG44_CLIFOR", "CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR"},
      {"MG17_AGENTI", "MG17_DITTA_CG18, MG17_AGENTE, MG17_ANAGEN_CG16"},
      {"MG22_CLIFORDEST",
       "MG22_DITTA_CG18, MG22_TIPOCF_CG44, MG22_CLIFOR_CG44, MG22_CODDESTIN, MG22_DESTRAGSOC, "
       "MG22_DESTEMAIL, "
       "MG22_DESTFAX, MG22_DESTPEC"},
      {"CO02_ANAGCONTATTO", "CO02_ID, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC"},
      {"CO03_LEGCONTATTO", "CO03_ID_CO02, CO03_CODICE_CG16"},
      {"FW23_FAXER",
       "FW23_IDSERVER, FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL"},
      {"FW98_MAILACCOUNT",
       "FW98_IDACCOUNT, FW98_MAILADDRESS, FW98_USERNAME, FW98_PASSWORD, FW98_ALIAS, FW98_INDREADRCPT, "
       "FW98_INDDELIVERYSTATUS, FW98_IDSERVER_FW23"},
      {"FW99_MAILUSERACCOUNT", "FW99_IDACCOUNT_FW98, FW99_ID_FW07, FW99_ISDEFAULT"},
      {"FW9A_MAILAZIENDAACCOUNT", "FW9A_IDACCOUNT_FW98, FW9A_DITTA_CG18"},
      {"FW07_APPUSER", "FW07_ID, FW07_CODICE, FW07_CODICE_FW06, FW07_USERNAME, FW07_DESCR"},
      {"FW06_GROUPUSR", "FW06_ID, FW06_CODICE, FW06_DESCR"},
      {"FW00_GRPUSRASSOC", "FW00_ID_FW07, FW00_ID_FW06, FW00_FLGPREF"},
  };
  for (const auto& [tabella, colonne] : kTabelle) {
    const auto statement = std::string("SELECT ").append(colonne).append(" FROM ").append(tabella);
    EXPECT_FALSE(Esegui(statement)->Eof()) << tabella << " should hold sample rows";
  }
  EXPECT_TRUE(
      Esegui(
          "SELECT ID, ISTANTE, IDVOCE, UOBJECT, TIPOCANALE, TITOLOSTAMPA, DITTA, NUMREG, TIPODOC, NUMDOC, "
          "SEZDOC, UTENTEAPPLICAZIONE, CANALEINVIO, MITTENTEINVIO, GUIDLISTA, TIPOLISTA, ESITOINVIO, NOME, "
          "AZIENDA, INDIRIZZO, ALLEGATO, RISULTATO, OGGETTO, CORPO FROM REGISTRO_INVII")
          ->Eof());
  EXPECT_TRUE(
      Esegui("SELECT ID, ISTANTE, DITTA, CODICE, IDUTENTE, DATI, FLAG FROM EVENTI_GESTIONALI")->Eof());
}

TEST_F(Schema, TheSampleDataKeepTheirKeys) {
  EXPECT_THAT(Righe("PRAGMA foreign_key_check", {"table"}), IsEmpty());
  EXPECT_THAT(Righe("PRAGMA integrity_check", {"integrity_check"}), ElementsAre("ok"));
}

TEST_F(Schema, EverySampleAddressLiesInADomainThatNobodyCanOwn) {
  for (const char* statement : {
           "SELECT CG16_INDEMAIL A FROM CG16_ANAGGEN UNION SELECT CG16_EMAIL_PEC FROM CG16_ANAGGEN",
           "SELECT CO02_EMAIL1 A FROM CO02_ANAGCONTATTO UNION SELECT CO02_PEC FROM CO02_ANAGCONTATTO",
           "SELECT MG22_DESTEMAIL A FROM MG22_CLIFORDEST UNION SELECT MG22_DESTPEC FROM MG22_CLIFORDEST",
           "SELECT FW98_MAILADDRESS A FROM FW98_MAILACCOUNT UNION SELECT FW98_USERNAME FROM FW98_MAILACCOUNT",
           "SELECT RTRIM(FW23_SERVERNAME) A FROM FW23_FAXER",
       }) {
    for (const auto& indirizzo : Righe(statement, {"A"})) {
      const bool assente = indirizzo == "<null>" || indirizzo.find_first_not_of(' ') == std::string::npos;
      const std::string fine = ".example";
      EXPECT_TRUE(assente || (indirizzo.size() > fine.size() &&
                              indirizzo.compare(indirizzo.size() - fine.size(), fine.size(), fine) == 0))
          << indirizzo;
    }
  }
}

TEST_F(Schema, PasswordsLieInTheFileEncipheredOnly) {
  EXPECT_THAT(Righe("SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT WHERE FW98_IDACCOUNT = 1", {"FW98_PASSWORD"}),
              ElementsAre(CifraDiProva({PasswordDiProva(1), "", ""})));
  EXPECT_THAT(
      Righe("SELECT FW98_IDACCOUNT FROM FW98_MAILACCOUNT WHERE FW98_PASSWORD IS NULL", {"FW98_IDACCOUNT"}),
      ElementsAre("7", "10"))
      << "an account without a login has no password";
  const auto file = posix::Contenuto(percorso);
  for (int account = 1; account <= 10; ++account)
    EXPECT_THAT(file, Not(HasSubstr(PasswordDiProva(account)))) << account;
}

TEST_F(Schema, ThePasswordsDifferFromAccountToAccount) {
  std::set<std::string> viste;
  for (int account = 1; account <= 10; ++account) viste.insert(PasswordDiProva(account));
  EXPECT_EQ(viste.size(), 10U);
}

TEST_F(Schema, OnlyTheOwnerMayReadTheFile) {
  EXPECT_EQ(std::filesystem::status(percorso).permissions(), std::filesystem::perms(0600));
}

TEST_F(Schema, AServerIsPointedElsewhere) {
  ImpostaServer(*connessione, 1, "127.0.0.1", 10025, 0, 1);
  EXPECT_THAT(Righe("SELECT * FROM FW23_FAXER WHERE FW23_IDSERVER = 1",
                    {"FW23_SERVERNAME", "FW23_PORT", "FW23_SSL", "FW23_INDAUTH", "FW23_INDTIPO"}),
              ElementsAre("127.0.0.1|10025|0|1|1"));
  EXPECT_THAT(Righe("SELECT FW23_SERVERNAME FROM FW23_FAXER WHERE FW23_IDSERVER = 2", {"FW23_SERVERNAME"}),
              ElementsAre("pec.arvenia.example"));
  EXPECT_EQ(ErroreDi([&] { ImpostaServer(*connessione, 99, "127.0.0.1", 25, 0, 0); }).Numero(), 3021);
}

TEST_F(Schema, WhatLiesAtThePathIsNeverOverwritten) {
  const auto prima = posix::Contenuto(percorso);
  const auto errore = ErroreDi([&] { CreaDatabase(percorso, CifraDiProva); });
  EXPECT_EQ(errore.Numero(), 14);
  EXPECT_EQ(errore.Descrizione(), "Impossibile creare il database " + percorso + ": esiste già");
  EXPECT_EQ(posix::Contenuto(percorso), prima);
  const auto lettera = cartella / "lettera.txt";
  std::ofstream(lettera) << "cara lettera";
  EXPECT_EQ(ErroreDi([&] { CreaDatabase(lettera, CifraDiProva); }).Numero(), 14);
  EXPECT_EQ(posix::Contenuto(lettera), "cara lettera");
  std::filesystem::create_symlink(lettera, cartella / "legame");
  EXPECT_EQ(ErroreDi([&] { CreaDatabase(cartella / "legame", CifraDiProva); }).Numero(), 14);
  EXPECT_EQ(posix::Contenuto(lettera), "cara lettera");
}

TEST_F(Schema, WhatCannotBeFinishedIsTakenAway) {
  const auto file = cartella / "altro.db";
  EXPECT_EQ(ErroreDi([&] { CreaDatabase(file, nullptr); }).Numero(), 5) << "no cipher";
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(
      ErroreDi([&] { CreaDatabase(file, [](const auto& password) { return password.chiara; }); }).Numero(), 5)
      << "a cipher that does not encipher";
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(ErroreDi([&] {
              CreaDatabase(file,
                           [](const auto&) -> std::string { throw host::Errore(429, "Cifra", "manca"); });
            }).Numero(),
            429);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
  CreaDatabase(file, CifraDiProva);
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Schema, APlaceThatCannotHoldAFileIsAnError) {
  struct Caso {
    const char* label;
    std::string percorso;
  };
  const std::vector<Caso> casi = {
      {"a folder that does not exist", cartella / "manca/x.db"},
      {"a folder", cartella.Radice()},
      {"no path", ""},
      {"a path with a NUL", cartella.Radice() + std::string("/a\0b", 4)},
      {"a name that is too long", cartella / std::string(5000, 'x')},
  };
  for (const auto& caso : casi) {
    const auto errore = ErroreDi([&] { CreaDatabase(caso.percorso, CifraDiProva); });
    EXPECT_EQ(errore.Numero(), 14) << caso.label;
    EXPECT_THAT(errore.Descrizione(), HasSubstr("Impossibile creare il database")) << caso.label;
  }
}

TEST_F(Schema, AFullDiskLeavesNoFileBehind) {
  const auto file = cartella / "pieno.db";
  std::filesystem::permissions(cartella.Radice(), std::filesystem::perms(0777));
  const int esito = posix::ComeUtenteOrdinario([&] {
    rlimit limite{};
    limite.rlim_cur = limite.rlim_max = 20000;
    ::setrlimit(RLIMIT_FSIZE, &limite);
    ::signal(SIGXFSZ, SIG_IGN);
    const auto errore = ErroreDi([&] { CreaDatabase(file, CifraDiProva); });
    if (std::filesystem::exists(file)) return 100;
    return errore.Numero() & 0xFF;
  });
  EXPECT_THAT(esito, ::testing::AnyOf(13, 10)) << "full, or an error of the disk";
}

}  // namespace

}  // namespace orve::adapters::sqlite
