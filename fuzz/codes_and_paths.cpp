// Codes and paths on their way into statements: what is let through is one literal or one number to any SQL
// reader, and nothing more.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mail/host/allegati.h"
#include "orve-mail/host/codici.h"
#include "orve-mailserver/posix/percorsi.h"
#include "support.h"

namespace orve::fuzz {
namespace {

bool Digits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether the text between two apostrophes is one literal from the first to the last character.
bool OneLiteral(std::string_view text) {
  const std::string statement = "'" + std::string(text) + "'";
  return statement.find('\'', 1) == statement.size() - 1 && text.find('\0') == std::string_view::npos;
}

void CheckCode(const std::string& code) {
  const Exact exact(code);
  for (const auto kind : {kvDestinatarioFaxAnagrafica, kvDestinatarioFaxCliente, kvDestinatarioFaxFornitore,
                          kvDestinatarioFaxContatto, kvDestinatarioFaxVettore}) {
    Require(app::DifettoDelCodice(kind, exact.View()).empty() == (Digits(code) && code.size() <= 10),
            "a number is let through, and nothing else");
  }
  if (app::DifettoDelCodice(kvDestinatarioFaxAgente, exact.View()).empty()) {
    Require(!code.empty() && OneLiteral(code), "a code between apostrophes stays between them");
  }
  if (app::DifettoDelCodice(kvDestinatarioFaxDestinatario, exact.View()).empty()) {
    const std::vector<std::string> parts = Parts(code, '/');
    Require(parts.size() >= 4, "a destination has four parts");
    Require(Digits(parts[0]) && Digits(parts[1]) && Digits(parts[2]), "three of them numbers");
    const std::size_t numbers = parts[0].size() + parts[1].size() + parts[2].size() + 3;
    Require(OneLiteral(std::string_view(code).substr(numbers)), "and the fourth a literal");
  }
  if (app::DifettoDelCodiceUtente(exact.View()).empty()) Require(OneLiteral(code), "a user's code too");
  Require(app::DifettoDellaDitta(exact.View()).empty() == (Digits(code) && code.size() <= 9),
          "a company is a number");
}

void CheckPath(const std::string& name) {
  if (name.find('\0') != std::string::npos || name.find_first_of("/\\") != std::string::npos) return;
  app::Allegati attachments({});
  const std::string path = "\\manca\\" + name;
  const std::string handed = attachments.PerLaLibreria(path);
  Require(OneLiteral(handed), "a path that the library gets ends no literal");
  if (OneLiteral(path)) RequireSame(handed, path, "a harmless path is left alone");
  RequireSame(attachments.NomeVero(handed), name, "the recipients see the file's own name");
  RequireSame(attachments.ConPercorsiVeri(handed), path, "the register names the file itself");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckCode(text);
  CheckPath(text);
  return 0;
}
