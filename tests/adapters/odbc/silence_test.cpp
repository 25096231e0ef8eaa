// Servers that take the connection and then say nothing, or take far too long: every wait ends, whatever the
// driver does with the limits that it was given.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "adapters/odbc/motore.h"
#include "fakes/errori.h"
#include "odbc/odbc_connection.h"
#include "support/patience.h"
#include "support/scripted_server.h"
#include "support/silent_relay.h"

namespace orve::adapters::odbc {

namespace {

using std::chrono::seconds;
using support::H2Server;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace std::chrono_literals;
using namespace std::string_literals;

constexpr seconds kAccesso{60};

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
  struct Inizio {
    std::unique_ptr<support::SilentRelay> filo;
    std::shared_ptr<OdbcConnection> connessione;
    std::shared_ptr<host::RecordSet> righe;
    std::optional<host::Errore> errore;
  };
  // A statement's time must be enough for the first one.
  const auto avvio = [](seconds tempoMassimo) {
    Inizio inizio;
    inizio.filo = std::make_unique<support::SilentRelay>(Motore().Port());
    try {
      inizio.connessione = OdbcConnection::Apri(H2Server::ConnectionStringBy(inizio.filo->Port(), "silenzio"),
                                                {kAccesso, tempoMassimo});
      inizio.righe = inizio.connessione->Execute("SELECT 1 AS V", host::kComandoTesto);
    } catch (const host::Errore& errore) {
      inizio.errore = errore;
    }
    return inizio;
  };
  const Inizio inizio =
      support::WithPatience(avvio, [](const Inizio& uno) { return !uno.errore; }, {1s, 5s, 20s});
  ASSERT_FALSE(inizio.errore) << inizio.errore->Descrizione();
  const auto& connessione = inizio.connessione;
  const auto comando = connessione->CreateCommand();
  comando->CommandType(host::kProceduraMemorizzata);
  comando->CommandText("SPFW_GetUserIDFromConnection");
  inizio.filo->FallSilent();

  const host::Errore prima = fakes::ErroreDi([&] { EseguiMuto(*connessione, "SELECT 2"); });
  EXPECT_NE(prima.Numero(), 0);
  EXPECT_EQ(prima.Sorgente(), "ODBC");
  EXPECT_EQ(prima.Descrizione(), "L'istruzione ha superato il tempo massimo");
  // There is no second wait.
  for (const auto& chiamata : {std::function<void()>([&] { EseguiMuto(*connessione, "SELECT 3"); }),
                               std::function<void()>([&] { comando->Execute(); })}) {
    const host::Errore poi = fakes::ErroreDi(chiamata);
    EXPECT_NE(poi.Numero(), 0);
    EXPECT_THAT(poi.Descrizione(), HasSubstr("La connessione è perduta"));
  }
  EXPECT_EQ(host::Leggi(*inizio.righe, "V"), host::Variant(1)) << "a result from before";
  connessione->Chiudi();
  EXPECT_EQ(fakes::ErroreDi([&] { EseguiMuto(*connessione, "SELECT 4"); }).Numero(), 3704);
}

TEST(OdbcSilenzio, AStatementThatRunsTooLongIsCancelledAndTheConnectionServesOn) {
  struct Esito {
    host::Errore lunga{0, "", ""};
    host::Errore poi{0, "", ""};
    host::Variant valore;
  };
  const auto tentativo = [](seconds tempoMassimo) {
    const auto connessione =
        OdbcConnection::Apri(Motore().ConnectionString("lenta"), {kAccesso, tempoMassimo});
    Esito esito;
    esito.lunga = fakes::ErroreDi([&] {
      EseguiMuto(*connessione, "SELECT COUNT(*) FROM SYSTEM_RANGE(1, 1000000) A, SYSTEM_RANGE(1, 1000000) B");
    });
    esito.poi = fakes::ErroreDi([&] {
      esito.valore = host::Leggi(*connessione->Execute("SELECT 5 AS V", host::kComandoTesto), "V");
    });
    return esito;
  };
  // The shortest time may be too short for the second statement, and for the engine to hear of the end of the
  // first.
  const Esito esito =
      support::WithPatience(tentativo, [](const Esito& uno) { return uno.poi.Numero() == 0; }, {1s, 5s, 20s});
  EXPECT_NE(esito.lunga.Numero(), 0);
  EXPECT_EQ(esito.lunga.Descrizione(), "L'istruzione ha superato il tempo massimo");
  EXPECT_EQ(esito.poi.Numero(), 0) << esito.poi.Descrizione();
  EXPECT_EQ(esito.valore, host::Variant(5));
}

TEST(OdbcSilenzio, AServerThatFallsSilentInTheMiddleOfTheLoginIsGivenUp) {
  const support::SilentRelay filo(Motore().Port(), "extra_float_digits");
  const host::Errore fine = fakes::ErroreDi([&] {
    static_cast<void>(OdbcConnection::Apri(
        H2Server::ConnectionStringBy(filo.Port(), "accesso", "sa", "pa-ro-la"), {1s, 1s}));
  });
  EXPECT_NE(fine.Numero(), 0);
  EXPECT_THAT(fine.Descrizione(), HasSubstr("tempo massimo"));
  EXPECT_THAT(fine.Descrizione(), Not(HasSubstr("pa-ro-la")));
}

// The driver for the servers that this is about keeps to the limit itself.
TEST(OdbcSilenzio, ASqlServerThatSaysNothingAfterTheLoginIsTheDriversOwnTimeOut) {
  support::ScriptedServer server({ThenStall(support::Say(AccessoTds()))});
  const auto connessione = OdbcConnection::Apri(
      "Driver=FreeTDS;TDS_Version=7.4;Encryption=off;Server=127.0.0.1;Database=x;UID=posta;PWD=pa-ro-la;"
      "Port=" +
          std::to_string(server.Port()),
      {kAccesso, 1s});
  const host::Errore prima = fakes::ErroreDi([&] { EseguiMuto(*connessione, "SELECT 1"); });
  EXPECT_NE(prima.Numero(), 0);
  EXPECT_THAT(prima.Descrizione(), HasSubstr("(HYT00)"));
  const host::Errore poi = fakes::ErroreDi([&] { EseguiMuto(*connessione, "SELECT 1"); });
  EXPECT_NE(poi.Numero(), 0);
  EXPECT_THAT(prima.Descrizione() + poi.Descrizione(), Not(HasSubstr("pa-ro-la")));
}

}  // namespace orve::adapters::odbc
