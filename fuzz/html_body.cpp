// Bodies as HTML documents, followed by the signature.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "content/corpo_html.h"
#include "fakes/fake_ambiente.h"
#include "fakes/fake_connection.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "support.h"

namespace orve::fuzz {
namespace {

std::string WithoutBlanksAtTheEnd(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

bool Blank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string Document(const std::string& body, const std::string& font, std::int32_t points) {
  if (Blank(body)) return "";
  const std::string face = Blank(font) ? "Calibri" : font;
  const std::int32_t size = points % 65536 == 0 ? 3 : points;
  std::string html = "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n";
  for (const std::string& line : Parts(PlainReplace(body, " ", "&nbsp;", false), '\r')) {
    html.append("<font face = \"").append(face).append("\" size = \"").append(std::to_string(size));
    html.append("\">").append(line).append("</font><br/>\r\n");
  }
  return html + "</body>\r\n</html>\r\n";
}

void CheckSize(const std::string& html, const std::string& body, const std::string& font) {
  const auto lines = static_cast<std::size_t>(std::count(body.begin(), body.end(), '\r')) + 1;
  Require(html.size() <= 6 * body.size() + lines * (font.size() + 80) + 80,
          "the document is linear in the body");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  static const auto ambiente = std::make_shared<orve::fakes::FakeAmbiente>();
  ambiente->journal->Svuota();
  Input input(data, size);
  std::int32_t points = 0;
  for (int i = 0; i < 4; ++i)
    points = static_cast<std::int32_t>(static_cast<std::uint32_t>(points) << 8U | input.Byte());
  const std::string font(input.Text());
  const std::string signature(input.Text());
  const std::string table(input.Text());
  const std::string body(input.Rest());

  orve::fakes::ServizioAperto open(ambiente);
  orve::CLSFW_MAILSERVER& service = *open.servizio;
  const orve::Interno& inside = open.interno;
  const std::string html = TestoInHTML(inside.oggetti, body, font, points);
  RequireSame(html, Document(body, font, points), "the body as a document");
  CheckSize(html, body, font);

  const auto stored = static_cast<std::int16_t>(points);
  auto database = std::make_shared<orve::fakes::FakeConnection>(ambiente->journal);
  database->Risponde("AIT_FIRME", {{{"FW95_VALORE", table}}});
  database->Risponde("INFORMATION_SCHEMA", {{{"", 1}}});
  database->Risponde("FIRMA_HTML, ISNULL",
                     {{{"FIRMA_HTML", signature}, {"FONT", font}, {"DIMENSIONE", stored}}});
  service.ConnectionADO = database;
  service.ActiveInterface = orve::fakes::CreaFakeInterfaccia(*ambiente, 7);
  // A statement with a NUL cannot be run, and a table that cannot be read signs nothing.
  const bool readable = table.find('\0') == std::string::npos;
  const std::string wanted =
      readable ? Document(body, WithoutBlanksAtTheEnd(font), stored) + WithoutBlanksAtTheEnd(signature)
               : Document(body, "", 0);
  RequireSame(CorpoHTMLConFirma(inside.contesto, inside.oggetti, body), wanted,
              "the document and the signature after it");
  return 0;
}
