// The ready set of outside objects: what the options choose, and what a host can replace.
#include "orve-mailserver/ambiente/ambiente.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <memory>
#include <sstream>
#include <string>

#include "ambiente/registro_tabella.h"
#include "fakes/errori.h"
#include "orve-mailserver/ambiente/database.h"
#include "orve-mailserver/smtp/target.h"
#include "password/chiave.h"
#include "password/sigillo_password.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_connection.h"
#include "support/temp_dir.h"

namespace orve::adapters::ambiente {

namespace {

using fakes::NumeroDi;

class DebugAnnotato : public host::DebugOutput {
 public:
  void Scrivi(const std::string& riga) noexcept override { righe += riga + "\n"; }
  std::string righe;
};

std::string RigaSulRegistroDiSistema(host::DebugOutput* traccia) {
  AmbientePronto pronto({.traccia = traccia});
  ::openlog("prova", LOG_PERROR, LOG_USER);  // a copy of each line on the standard error
  ::testing::internal::CaptureStderr();
  pronto.UscitaDiDebug().Scrivi("QLNA:|riga");
  std::string uscita = ::testing::internal::GetCapturedStderr();
  ::closelog();
  return uscita;
}

std::string Creato(const support::TempDir& cartella, const std::string& nome) {
  std::string file = (cartella.Path() / nome).string();
  sqlite::CreaDatabase(file, [](const sqlite::PasswordToEncipher& /*password*/) { return "sigillata"; });
  return file;
}

// One line of the register, by the object that the set makes.
void Registra(AmbientePronto& pronto, const std::shared_ptr<host::Connection>& connessione) {
  const auto registro = pronto.CreaRegistroInvio();
  registro->Connessione(connessione);
  registro->EsitoInvio(host::kInviato);
  registro->RegistraInvio("Bellariva", {}, "a@b.example", "copia.pdf", "", "Fattura", "");
}

std::string AllegatoRegistrato(host::Connection& connessione) {
  const auto righe = connessione.Execute("SELECT ALLEGATO FROM REGISTRO_INVII", host::kComandoTesto);
  return righe->Eof() ? "nessuna riga" : host::Leggi(*righe, "ALLEGATO").ToText();
}

// A toolkit that makes one window and boxes for messages, and nothing else.
class FinestreFinte : public host::Finestre {
 public:
  class Scatole : public host::Messaggi {
   public:
    explicit Scatole(std::string& mostrati) : mostrati_(mostrati) {}
    std::string TitoloFinestra(const std::string& testo) override { return testo; }
    std::int32_t MostraMsg(const std::string& testo, std::int32_t /*stile*/, const std::string& /*titolo*/,
                           const std::shared_ptr<host::Oggetto>& /*proprietario*/) override {
      mostrati_ += testo + "\n";
      return 1;
    }

   private:
    std::string& mostrati_;
  };

  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& /*layout*/) override { return finestra; }
  std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override { return nullptr; }
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override { return nullptr; }
  std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override { return nullptr; }
  std::shared_ptr<host::OggettoFile> CreaOggettoFile() override { return nullptr; }
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override { return nullptr; }
  std::shared_ptr<host::Messaggi> CreaMessaggi() override { return std::make_shared<Scatole>(mostrati); }

  std::shared_ptr<host::Form> finestra;
  std::string mostrati;
};

// The number of the SMTP component after a delivery with a login to a port where nobody listens.
std::int32_t ConLogin(const Options& opzioni, const std::string& password) {
  AmbientePronto pronto(opzioni);
  const auto componente = pronto.CreaComponenteSmtp();
  componente->ServerAddr("127.0.0.1");
  componente->ServerPort(1);
  componente->UserName("fatture");
  componente->Password(password);
  componente->FromAddr("fatture@azienda.example");
  componente->AddRecipientEx("a@b.example", 0);
  static_cast<void>(componente->SendMail());
  return componente->GetLastError().ToInt32();
}

constexpr std::int32_t kLoginFallito = 2;

}  // namespace

TEST(AmbientePronto, WithoutATraceNothingGoesToTheSystemLog) {
  EXPECT_EQ(RigaSulRegistroDiSistema(nullptr), "");
}

TEST(AmbientePronto, ATraceTakesTheLinesAndTheSystemLogNone) {
  DebugAnnotato traccia;
  EXPECT_EQ(RigaSulRegistroDiSistema(&traccia), "");
  EXPECT_EQ(traccia.righe, "QLNA:|riga\n");
}

TEST(AmbientePronto, TheRegisterGoesWhereTheServiceWorks) {
  const support::TempDir cartella;
  const auto connessione = ApriDatabase("sqlite:" + Creato(cartella, "dati.db"));
  AmbientePronto pronto;
  Registra(pronto, connessione);
  EXPECT_EQ(AllegatoRegistrato(*connessione), "copia.pdf");
}

TEST(AmbientePronto, ARegisterOfItsOwnTakesTheLinesAsTheHostWantsThem) {
  const support::TempDir cartella;
  const auto connessione = ApriDatabase(Creato(cartella, "dati.db"));
  const auto registro = ApriRegistro((cartella.Path() / "registro.db").string());
  AmbientePronto pronto({.registro = registro,
                         .allegatiNelRegistro = [](const std::string& testo) { return "vero di " + testo; }});
  Registra(pronto, connessione);
  EXPECT_EQ(AllegatoRegistrato(*registro), "vero di copia.pdf");
  EXPECT_EQ(AllegatoRegistrato(*connessione), "nessuna riga");
}

TEST(AmbientePronto, ARegisterOnAServerIsRefused) {
  class AltroDatabase : public host::Connection {
   public:
    std::shared_ptr<host::RecordSet> Execute(const std::string& /*statement*/,
                                             std::int32_t /*opzione*/) override {
      return nullptr;
    }
    std::shared_ptr<host::Command> CreateCommand() override { return nullptr; }
  };
  const auto altro = std::make_shared<AltroDatabase>();
  EXPECT_EQ(NumeroDi([&] { AmbientePronto({.registro = altro}); }), host::kTipoNonCorrispondente);
  AmbientePronto pronto;
  EXPECT_EQ(NumeroDi([&] { pronto.CreaRegistroInvio()->Connessione(altro); }), host::kTipoNonCorrispondente);
}

TEST(AmbientePronto, MessagesGoToTheStreamAndOverAWindowWhileOneIsOpen) {
  std::ostringstream uscita;
  const auto finestre = std::make_shared<FinestreFinte>();
  AmbientePronto pronto({.messaggi = &uscita, .finestre = finestre});
  const auto messaggi = pronto.CreaMessaggi();
  EXPECT_EQ(messaggi->MostraMsg("prima", 0, "", nullptr), 1);
  // Nothing of the window is used: what counts is how long it lives.
  finestre->finestra = std::shared_ptr<host::Form>(std::make_shared<int>(), nullptr);
  auto finestra = pronto.CreaForm({});
  messaggi->MostraMsg("durante", 0, "", nullptr);
  finestre->finestra.reset();
  finestra.reset();
  messaggi->MostraMsg("dopo", 0, "", nullptr);
  EXPECT_EQ(uscita.str(), "prima\ndopo\n");
  EXPECT_EQ(finestre->mostrati, "durante\n");
}

TEST(AmbientePronto, WithoutAToolkitNoWindowCanBeMade) {
  AmbientePronto pronto;
  EXPECT_EQ(NumeroDi([&] { (void)pronto.CreaForm({}); }), host::kOggettoNonCreabile);
  EXPECT_EQ(NumeroDi([&] { (void)pronto.CreaSelettoreFile(); }), host::kOggettoNonCreabile);
  EXPECT_EQ(NumeroDi([&] { (void)pronto.CreaParametri(); }), host::kOggettoNonCreabile);
  EXPECT_EQ(NumeroDi([&] { (void)pronto.CreaOutlook(); }), host::kOggettoNonCreabile);
}

TEST(AmbientePronto, ALoginWithoutEncryptionNeedsAPermissionForThatServer) {
  EXPECT_EQ(ConLogin({}, "segreta"), kLoginFallito);
  std::string chiesto;
  const Options permesso{.passwordInChiaro = [&](const std::string& server, std::uint16_t porta) {
    chiesto = server + ":" + std::to_string(porta);
    return true;
  }};
  EXPECT_NE(ConLogin(permesso, "segreta"), kLoginFallito) << "it gets as far as the server";
  EXPECT_EQ(chiesto, "127.0.0.1:1");
}

TEST(AmbientePronto, ASealedPasswordNeedsItsKey) {
  const support::TempDir cartella;
  const std::string file = (cartella.Path() / "chiave").string();
  password::Chiave::Nuova().Scrivi(file);
  Options opzioni{.chiave = LeggiChiave(file), .passwordInChiaro = [](const auto&, auto) { return true; }};
  const std::string sigillata =
      password::SigilloPassword(opzioni.chiave).Sigilla("segreta", {"fatture", "127.0.0.1", 1, false});
  EXPECT_NE(ConLogin(opzioni, sigillata), kLoginFallito);
  opzioni.chiave = nullptr;
  EXPECT_EQ(ConLogin(opzioni, sigillata), kLoginFallito);
  EXPECT_EQ(NumeroDi([&] { (void)LeggiChiave(file + ".manca"); }), 70);
}

TEST(AmbientePronto, ThePasswordThatTheHostOpensItselfIsHeldBackToo) {
  int aperta = 0;
  Options opzioni;
  opzioni.smtp.openPassword = [&](const smtp::Target& meta) {
    ++aperta;
    EXPECT_EQ(meta.host, "127.0.0.1");
    return meta.password;
  };
  EXPECT_EQ(ConLogin(opzioni, "segreta"), kLoginFallito);
  EXPECT_EQ(aperta, 0) << "no server may have it in clear";
  opzioni.passwordInChiaro = [](const auto& /*server*/, auto /*porta*/) { return true; };
  EXPECT_NE(ConLogin(opzioni, "segreta"), kLoginFallito);
  EXPECT_EQ(aperta, 1);
}

TEST(AmbientePronto, ANameThatIsNoFoldersIsRefused) {
  for (const char* nome : {"", ".", "..", "Rossi/Bianchi", "Rossi\\Bianchi"}) {
    EXPECT_EQ(NumeroDi([&] { AmbientePronto({.programma = nome}); }), host::kArgomentoNonValido) << nome;
  }
}

TEST(AmbientePronto, AHostReplacesSingleObjects) {
  class Mio : public AmbientePronto {
   public:
    std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override { return registro; }
    std::shared_ptr<host::RegistroInvio> registro = std::make_shared<RegistroTabella>();
  };
  Mio mio;
  host::Ambiente& ambiente = mio;
  EXPECT_EQ(ambiente.CreaRegistroInvio(), mio.registro);
}

TEST(Database, TheUserOfTheConnectionIsTheOneNamed) {
  const support::TempDir cartella;
  const auto connessione = std::dynamic_pointer_cast<sqlite::SqliteConnection>(
      ApriDatabase(Creato(cartella, "dati.db"), {.utente = 1}));
  EXPECT_EQ(host::Richiesto(connessione).UtenteConnessione(), 1);
}

TEST(Database, AConnectionStringInTheWrongPlaceIsNotRepeated) {
  try {
    static_cast<void>(ApriDatabase("Driver=x;PWD=segreto"));
    ADD_FAILURE();
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), host::kArgomentoNonValido);
    EXPECT_EQ(errore.Descrizione().find("segreto"), std::string::npos);
  }
}

TEST(Database, ARegisterThatAnybodyCouldHavePlantedIsRefused) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  const support::TempDir cartella;
  const std::string file = (cartella.Path() / "registro.db").string();
  static_cast<void>(ApriRegistro(file));
  constexpr uid_t kAltro = 12345;
  ASSERT_EQ(::chown(file.c_str(), kAltro, kAltro), 0);
  ASSERT_EQ(::chmod(cartella.Path().c_str(), 01777), 0);
  EXPECT_EQ(NumeroDi([&] { (void)ApriRegistro(file); }), 70);
}

TEST(Database, AFileThatIsNotThereIsAnError) {
  EXPECT_NE(NumeroDi([] { (void)ApriDatabase("/nessuna/dati.db"); }), 0);
}

}  // namespace orve::adapters::ambiente
