#include "orve-mail/secrets/password_memorizzate.h"

#include "text/text.h"

namespace orve::app {

namespace {

constexpr const char* kServerPredefinito = "localhost";
constexpr std::int32_t kPortaPredefinita = 25;

std::string Testo(const host::RecordSet& riga, const char* colonna) {
  return std::string(text::Trim(host::Leggi(riga, colonna).Joined()));
}

std::int32_t Numero(const host::RecordSet& riga, const char* colonna, std::int32_t altrimenti) {
  return Testo(riga, colonna).empty() ? altrimenti : host::Leggi(riga, colonna).ToInt32();
}

}  // namespace

std::string ServerEffettivo(std::string_view nome) {
  const std::string_view server = text::Trim(nome);
  return server.empty() ? kServerPredefinito : std::string(server);
}

std::vector<PasswordMemorizzata> LeggiPassword(host::Connection& connessione, const QualiAccount& quali) {
  std::string istruzione =
      "SELECT FW98_IDACCOUNT, FW98_USERNAME, FW98_PASSWORD, FW23_IDSERVER, FW23_SERVERNAME, FW23_PORT, "
      "FW23_SSL"
      " FROM FW98_MAILACCOUNT LEFT OUTER JOIN FW23_FAXER ON FW98_IDSERVER_FW23 = FW23_IDSERVER";
  if (quali.account) istruzione += " WHERE FW98_IDACCOUNT = " + std::to_string(*quali.account);
  if (quali.server) istruzione += " WHERE FW98_IDSERVER_FW23 = " + std::to_string(*quali.server);
  const auto righe = connessione.Execute(istruzione + " ORDER BY FW98_IDACCOUNT", host::kComandoTesto);
  std::vector<PasswordMemorizzata> password;
  for (; !righe->Eof(); righe->MoveNext()) {
    // A port's 16 bits are stored in the column with a sign.
    password.push_back({host::Leggi(*righe, "FW98_IDACCOUNT").ToInt32(),
                        Testo(*righe, "FW98_PASSWORD"),
                        {Testo(*righe, "FW98_USERNAME"), ServerEffettivo(Testo(*righe, "FW23_SERVERNAME")),
                         static_cast<std::uint16_t>(Numero(*righe, "FW23_PORT", kPortaPredefinita)),
                         Numero(*righe, "FW23_SSL", 0) >= 1},
                        !Testo(*righe, "FW23_IDSERVER").empty()});
  }
  return password;
}

void SostituisciPassword(adapters::sqlite::SqliteConnection& connessione, std::int32_t account,
                         const std::string& sigillata) {
  static_cast<void>(
      connessione.EseguiConValori("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = ?2 WHERE FW98_IDACCOUNT = ?1",
                                  {std::int64_t{account}, sigillata}));
}

bool SostituisciSeAncora(adapters::sqlite::SqliteConnection& connessione, const PasswordMemorizzata& prima,
                         const std::string& sigillata) {
  const auto cambiate = connessione.EseguiConValori(
      "UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = ?3 WHERE FW98_IDACCOUNT = ?1 AND TRIM(FW98_PASSWORD) = ?2"
      " RETURNING FW98_IDACCOUNT",
      {std::int64_t{prima.account}, prima.testo, sigillata});
  return !cambiate->Eof();
}

}  // namespace orve::app
