// The two codes that name a recipient, and the look-up that takes them apart.
#include "addressing/codice_destinazione.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "addressing/recipient_lookup.h"
#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "support.h"

namespace orve::fuzz {
namespace {

constexpr std::int32_t kNumber = 9;
constexpr std::int32_t kDestination = 11;

struct Bench {
  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  std::shared_ptr<fakes::FakeConnection> database =
      std::make_shared<fakes::FakeConnection>(ambiente->journal);
  fakes::ServizioAperto open{ambiente};
  std::unique_ptr<CLSFW_MAILSERVER>& service = open.servizio;
  Interno& inside = open.interno;

  Bench() { service->ConnectionADO = database; }
};

/// Everything after the first marker, searched byte by byte.
bool After(const std::string& text, const std::string& marker, std::string& found) {
  for (std::size_t i = 0; i + marker.size() <= text.size(); ++i) {
    if (text.compare(i, marker.size(), marker) != 0) continue;
    found = text.substr(i + marker.size());
    return true;
  }
  return false;
}

std::string Certified(const std::string& text) {
  std::string rest;
  After(text, "<*pec*>", rest);
  return rest;
}

std::string Ordinary(const std::string& text) {
  std::string mail;
  std::string certified;
  const bool thrownAway = After(text, "<***>", mail) && After(mail, "<*pec*>", certified);
  return thrownAway ? std::string() : mail;
}

void CheckNumber(Bench& bench, const std::string& text) {
  const Exact exact(text);
  RequireSame(EstraiIndirizzoPec(exact.View()), Certified(text), "the certified address");
  RequireSame(EstraiIndirizzoMail(exact.View()), Ordinary(text), "the ordinary address");
  for (const bool certified : {false, true}) {
    bench.service->IsPec(certified);
    bench.service->vIndDestinatario = "before";
    bench.service->vNome = "name";
    const std::string wanted = certified ? Certified(text) : Ordinary(text);
    const host::Variant result = GetDatiDestinatario(bench.inside.messaggio, bench.inside.contesto,
                                                     bench.inside.oggetti, text, kNumber);
    RequireSame(bench.service->vIndDestinatario, wanted, "the look-up's address");
    RequireSame(bench.service->vNome, "name", "the look-up leaves the name");
    Require(result.ToInt16() == (wanted.empty() ? 1 : 0), "the look-up's result");
  }
  Require(bench.database->Statements().empty(), "an address in the code asks no database");
}

void CheckDestination(Bench& bench, const std::string& text) {
  const bool whole = std::count(text.begin(), text.end(), '/') >= 3;
  const Exact exact(text);
  try {
    const CodiceDestinazione parts = ScomponiCodiceDestinazione(exact.View());
    Require(whole, "a short code is refused");
    RequireSame(parts.ditta + "/" + parts.cliFor + "/" + parts.tipoCf + "/" + parts.destinazione, text,
                "the parts make the code");
    const auto has = [](const std::string& part) { return part.find('/') != std::string::npos; };
    Require(!has(parts.ditta) && !has(parts.cliFor) && !has(parts.tipoCf),
            "only the last part holds a slash");
  } catch (const host::Errore& error) {
    Require(!whole && error.Numero() == host::kArgomentoNonValido, "a whole code is taken");
  }
  const host::Variant result = GetDatiDestinatario(bench.inside.messaggio, bench.inside.contesto,
                                                   bench.inside.oggetti, text, kDestination);
  const auto statements = bench.database->Statements();
  Require(statements.empty() != whole, "a short code runs no statement");
  if (!whole || text.find('\0') != std::string::npos) {
    Require(result.ToInt16() == 1, "a short code is a failure, and so is a statement that cannot be run");
    return;
  }
  // No destination: the state is kept and there is no address.
  Require(statements.size() == 2, "both the destination and the partner are asked for");
  Require(result.ToInt16() == 2, "the look-up's result for a destination");
  const std::string last = Parts(text, '/').size() > 3 ? text.substr([&] {
    std::size_t at = 0;
    for (int i = 0; i < 3; ++i) at = text.find('/', at) + 1;
    return at;
  }())
                                                       : std::string();
  Require(statements[0].find("'" + last + "'") != std::string::npos,
          "the tail goes into the statement as it stands");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  static Bench bench;
  const std::string text(reinterpret_cast<const char*>(data), size);
  bench.ambiente->journal->Svuota();
  CheckNumber(bench, text);
  CheckDestination(bench, text);
  return 0;
}
