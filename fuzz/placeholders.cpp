// The placeholders of a body, against the plainest replacement there is.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "content/body_templates.h"
#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "support.h"

namespace orve::fuzz {
namespace {

// In the order in which they are replaced.
constexpr std::array<std::string_view, 13> kPlaceholders = {
    "***(Nome)***",      "***(Azienda)***",    "***(IndEmail)***",    "***(Gruppo)***",
    "***(Utente)***",    "***(DescGruppo)***", "***(DescUtente)***",  "***(AziendaCorr)***",
    "***(AzCorrInd)***", "***(AzCorrCAP)***",  "***(AzCorrCitta)***", "***(AzCorrProv)***",
    "***(AzCorrMail)***"};
using Values = std::array<std::string, kPlaceholders.size()>;

// Values that hold later placeholders multiply; that is as it should be, and of no interest to a fuzzer.
constexpr std::size_t kTooLong = std::size_t{256} * 1024;

/// The body with its placeholders filled; false when it grows too long in the process.
bool Fill(std::string& body, const Values& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    body = PlainReplace(body, kPlaceholders[i], values[i], true);
    if (body.size() > kTooLong) return false;
  }
  return true;
}

fakes::ServizioAperto Service(const std::shared_ptr<fakes::FakeAmbiente>& ambiente, const Values& values) {
  fakes::ServizioAperto open(ambiente);
  const auto& service = open.servizio;
  Interno& inside = open.interno;
  auto database = std::make_shared<fakes::FakeConnection>(ambiente->journal);
  database->Risponde("FW06_CODICE,FW06_DESCR", {{{"FW06_CODICE", values[3]}, {"FW06_DESCR", values[5]}}});
  database->Risponde("FW07_USERNAME", {{{"FW07_USERNAME", values[4]}, {"FW07_DESCR", values[6]}}});
  service->ConnectionADO = database;
  service->vNome = values[0];
  service->vDitta = values[1];
  service->vIndDestinatario = values[2];
  inside.contesto.IdUtenteCorrente = 7;
  inside.contesto.AziendaCorr = values[7];
  inside.contesto.AzCorrInd = values[8];
  inside.contesto.AzCorrCAP = values[9];
  inside.contesto.AzCorrCitta = values[10];
  inside.contesto.AzCorrProv = values[11];
  inside.contesto.AzCorrMail = values[12];
  return open;
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  static const auto ambiente = std::make_shared<orve::fakes::FakeAmbiente>();
  ambiente->journal->Svuota();
  Input input(data, size);
  Values values;
  for (std::string& value : values) value = input.Text();
  const std::string body(input.Rest());
  std::string wanted = body;
  if (!Fill(wanted, values)) return 0;
  const orve::fakes::ServizioAperto open = Service(ambiente, values);
  const auto& service = open.servizio;
  orve::Interno& inside = open.interno;
  RequireSame(CompilaTestoMail(inside.messaggio, inside.contesto, inside.oggetti, body), wanted,
              "the text filled");
  service->vFlagCorpo = 1;
  service->vCorpoMail = body;
  RequireSame(GetCorpoMail(inside.messaggio, inside.impostazioni, inside.contesto, inside.oggetti), wanted,
              "the caller's body filled");
  service->vFlagCorpo = 0;
  service->FlgMsgPers = true;
  service->MsgPers = body;
  RequireSame(GetCorpoMail(inside.messaggio, inside.impostazioni, inside.contesto, inside.oggetti), wanted,
              "the standing message filled");
  return 0;
}
