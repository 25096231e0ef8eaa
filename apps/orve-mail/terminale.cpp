#include "orve-mail/terminale.h"

#include <algorithm>

#include "mime/header_text.h"

namespace orve::app {

namespace {

bool Controllo(unsigned char byte) {
  return (byte < 0x20 && byte != '\n') || byte == 0x7F;
}

}  // namespace

std::string TestoSicuro(std::string_view testo) {
  const std::string valido = adapters::mime::ValidUtf8(testo);
  std::string sicuro;
  sicuro.reserve(valido.size());
  for (std::size_t i = 0; i < valido.size(); ++i) {
    const auto byte = static_cast<unsigned char>(valido[i]);
    if (byte == '\r') continue;
    // The second row of control characters, U+0080 to U+009F, which some terminals obey too.
    const bool secondaRiga =
        byte == 0xC2 && i + 1 < valido.size() && static_cast<unsigned char>(valido[i + 1]) < 0xA0;
    if (secondaRiga) ++i;
    sicuro.push_back(Controllo(byte) || secondaRiga ? ' ' : valido[i]);
  }
  return sicuro;
}

std::string RigaSicura(std::string_view testo) {
  std::string riga = TestoSicuro(testo);
  std::replace(riga.begin(), riga.end(), '\n', ' ');
  return riga;
}

}  // namespace orve::app
