#include "posix/system.h"

#include <pwd.h>
#include <sys/random.h>
#include <sys/types.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <vector>

#include "text/text.h"

namespace orve::adapters::posix {

std::string RigaDiDebug(const std::string& riga) {
  std::string byte = text::ToWindows1252(riga);
  std::replace_if(
      byte.begin(), byte.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; },
      ' ');
  return byte;
}

void DebugOutput::Scrivi(const std::string& riga) noexcept {
  try {
    ::syslog(LOG_USER | LOG_DEBUG, "%s", RigaDiDebug(riga).c_str());
  } catch (...) {  // NOLINT(bugprone-empty-catch): out of memory, and nobody to tell
  }
}

std::optional<host::Guid> GuidGenerator::CreaGuid() {
  std::array<std::uint8_t, 16> caso{};
  std::size_t letti = 0;
  while (letti < caso.size()) {
    const ssize_t presi = ::getrandom(caso.data() + letti, caso.size() - letti, 0);
    if (presi < 0 && errno == EINTR) continue;
    if (presi <= 0) return std::nullopt;
    letti += static_cast<std::size_t>(presi);
  }
  caso[6] = static_cast<std::uint8_t>((caso[6] & 0x0FU) | 0x40U);  // version 4
  caso[8] = static_cast<std::uint8_t>((caso[8] & 0x3FU) | 0x80U);  // the RFC's variant
  const auto parola = [&caso](std::size_t da) {
    return static_cast<std::uint16_t>(caso[da] << 8U | caso[da + 1]);
  };
  host::Guid guid;
  guid.primo = static_cast<std::uint32_t>(parola(0)) << 16U | parola(2);
  guid.secondo = parola(4);
  guid.terzo = parola(6);
  std::copy(caso.begin() + 8, caso.end(), guid.byte.begin());
  return guid;
}

std::string Environment::Leggi(const std::string& nome) {
  if (nome.find('\0') != std::string::npos) return {};
  const char* const valore = std::getenv(nome.c_str());
  return valore == nullptr ? std::string() : std::string(valore);
}

std::string NomeSenzaDominio(const std::string& nome) {
  const std::size_t barra = nome.rfind('\\');
  if (barra != std::string::npos) return nome.substr(barra + 1);
  const std::size_t chiocciola = nome.find('@');
  return chiocciola == 0 ? nome : nome.substr(0, chiocciola);
}

std::int32_t NomeNelBuffer(const std::string& nome, std::string& buffer) {
  const std::string testo = NomeSenzaDominio(nome);
  if (text::Length(testo) >= buffer.size()) return Network::kBufferTroppoCorto;
  if (testo.size() >= buffer.size()) buffer.resize(testo.size() + 1);
  buffer.replace(0, testo.size() + 1, testo + '\0');
  return 0;
}

std::int32_t Network::WNetGetUserA(std::string& buffer) {
  constexpr std::size_t kPrimaMisura = 1024;
  constexpr std::size_t kUltimaMisura = 1024UL * 1024UL;
  passwd voce{};
  passwd* trovata = nullptr;
  std::vector<char> spazio(kPrimaMisura);
  int esito = 0;
  while ((esito = ::getpwuid_r(::geteuid(), &voce, spazio.data(), spazio.size(), &trovata)) == ERANGE &&
         spazio.size() < kUltimaMisura) {
    spazio.resize(spazio.size() * 2);
  }
  if (esito != 0 || trovata == nullptr) return kNessunUtente;
  return NomeNelBuffer(trovata->pw_name, buffer);
}

}  // namespace orve::adapters::posix
