// Servers that take the connection and then say nothing, or take far too long: every wait ends, whatever the
// driver does with the limits that it was given.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>

#include "adapters/odbc/motore.h"
#include "odbc/odbc_connection.h"
#include "support/scripted_server.h"
#include "support/silent_relay.h"

namespace orve::adapters::odbc {

namespace {

using std::chrono::seconds;
using support::H2Server;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace std::string_literals;

constexpr OpzioniOdbc kImpazienti{seconds(1), seconds(1)};
// No wait may come near it; a loaded machine may.
constexpr seconds kTroppo{60};

struct Fine {
  host::Errore errore{0, "", "no error"};
  bool inTempo = false;
};

Fine FineDi(const std::function<void()>& chiamata) {
  const auto inizio = std::chrono::steady_clock::now();
  Fine fine;
  try {
    chiamata();
  } catch (const host::Errore& errore) {
    fine.errore = errore;
  }
  fine.inTempo = std::chrono::steady_clock::now() - inizio < kTroppo;
  return fine;
}

void EseguiMuto(OdbcConnection& connessione, const std::string& testo) {
  static_cast<void>(connessione.Execute(testo, host::kComandoTesto));
}

// What a SQL Server says up to the end of a login over TDS 7.4 without encryption: its version and that it
// does not encrypt, then the acknowledgement and "done".
std::string AccessoTds() {
  const auto pacchetto = [](const std::string& contenuto) {
    return "\x04\x01"s + static_cast<char>((contenuto.size() + 8) >> 8U) +
           static_cast<char>((contenuto.size() + 8) & 0xFFU) + "\0\x33\x01\0"s + contenuto;
  };
  const std::string versione = "\x0F\0\0\0\0\0"s;
  const std::string cifratura = "\x02"s;
  const std::string inizio = "\0\0\x0B\0\x06\x01\0\x11\0\x01\xFF"s + versione + cifratura;
  const std::string riconosciuto = "\x01\x74\0\0\x04\x01X\0\x0F\0\0\0"s;
  const std::string fatto = "\xFD\0\0\0\0\0\0\0\0\0\0\0\0"s;
  return pacchetto(inizio) +
         pacchetto("\xAD"s + static_cast<char>(riconosciuto.size()) + "\0"s + riconosciuto + fatto);
}

}  // namespace

TEST(OdbcSilenzio, AServerThatFallsSilentIsGivenUpThoughTheDriverWaitsForEver) {
  support::SilentRelay filo(Motore().Port());
  const auto connessione =
      OdbcConnection::Apri(H2Server::ConnectionStringBy(filo.Port(), "silenzio"), kImpazienti);
  const auto righe = connessione->Execute("SELECT 1 AS V", host::kComandoTesto);
  const auto comando = connessione->CreateCommand();
  comando->CommandType(host::kProceduraMemorizzata);
  comando->CommandText("SPFW_GetUserIDFromConnection");
  filo.FallSilent();

  const Fine prima = FineDi([&] { EseguiMuto(*connessione, "SELECT 2"); });
  EXPECT_TRUE(prima.inTempo);
  EXPECT_NE(prima.errore.Numero(), 0);
  EXPECT_EQ(prima.errore.Sorgente(), "ODBC");
  EXPECT_EQ(prima.errore.Descrizione(), "L'istruzione ha superato il tempo massimo");
  // Nobody waits a second time.
  for (const auto& chiamata : {std::function<void()>([&] { EseguiMuto(*connessione, "SELECT 3"); }),
                               std::function<void()>([&] { comando->Execute(); })}) {
    const Fine poi = FineDi(chiamata);
    EXPECT_NE(poi.errore.Numero(), 0);
    EXPECT_THAT(poi.errore.Descrizione(), HasSubstr("La connessione è perduta"));
  }
  EXPECT_EQ(host::Leggi(*righe, "V"), host::Variant(1)) << "a result from before";
  connessione->Chiudi();
  EXPECT_EQ(FineDi([&] { EseguiMuto(*connessione, "SELECT 4"); }).errore.Numero(), 3704);
}

TEST(OdbcSilenzio, AStatementThatRunsTooLongIsCancelledAndTheConnectionServesOn) {
  const auto connessione = OdbcConnection::Apri(Motore().ConnectionString("lenta"), kImpazienti);
  const Fine fine = FineDi([&] {
    EseguiMuto(*connessione, "SELECT COUNT(*) FROM SYSTEM_RANGE(1, 1000000) A, SYSTEM_RANGE(1, 1000000) B");
  });
  EXPECT_TRUE(fine.inTempo);
  EXPECT_NE(fine.errore.Numero(), 0);
  EXPECT_EQ(fine.errore.Descrizione(), "L'istruzione ha superato il tempo massimo");
  EXPECT_EQ(host::Leggi(*connessione->Execute("SELECT 5 AS V", host::kComandoTesto), "V"), host::Variant(5));
}

TEST(OdbcSilenzio, AServerThatFallsSilentInTheMiddleOfTheLoginIsGivenUp) {
  const support::SilentRelay filo(Motore().Port(), "extra_float_digits");
  const Fine fine = FineDi([&] {
    static_cast<void>(OdbcConnection::Apri(
        H2Server::ConnectionStringBy(filo.Port(), "accesso", "sa", "pa-ro-la"), kImpazienti));
  });
  EXPECT_TRUE(fine.inTempo);
  EXPECT_NE(fine.errore.Numero(), 0);
  EXPECT_THAT(fine.errore.Descrizione(), HasSubstr("tempo massimo"));
  EXPECT_THAT(fine.errore.Descrizione(), Not(HasSubstr("pa-ro-la")));
}

// The driver of the servers that this is for keeps to the limit by itself.
TEST(OdbcSilenzio, ASqlServerThatSaysNothingBehindTheLoginIsTheDriversOwnTimeOut) {
  support::ScriptedServer server({ThenStall(support::Say(AccessoTds()))});
  const auto connessione = OdbcConnection::Apri(
      "Driver=FreeTDS;TDS_Version=7.4;Encryption=off;Server=127.0.0.1;Database=x;UID=posta;PWD=pa-ro-la;"
      "Port=" +
          std::to_string(server.Port()),
      {seconds(30), seconds(1)});
  const Fine prima = FineDi([&] { EseguiMuto(*connessione, "SELECT 1"); });
  EXPECT_TRUE(prima.inTempo);
  EXPECT_NE(prima.errore.Numero(), 0);
  EXPECT_THAT(prima.errore.Descrizione(), HasSubstr("(HYT00)"));
  const Fine poi = FineDi([&] { EseguiMuto(*connessione, "SELECT 1"); });
  EXPECT_NE(poi.errore.Numero(), 0);
  EXPECT_THAT(prima.errore.Descrizione() + poi.errore.Descrizione(), Not(HasSubstr("pa-ro-la")));
}

}  // namespace orve::adapters::odbc
