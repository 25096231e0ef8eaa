#include "password/sigillo_password.h"

#include <sodium.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::password {

namespace {

using secrets::Secret;
using Byte = unsigned char;

constexpr std::string_view kSegno = "orve";
constexpr std::string_view kLegata = "orve2:";
constexpr std::string_view kSlegata = "orve1:";

constexpr std::size_t kNonce = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t kAutentica = crypto_aead_xchacha20poly1305_ietf_ABYTES;
static_assert(crypto_aead_xchacha20poly1305_ietf_KEYBYTES == Chiave::kByte);
// Both kinds of box have the same layout in their text.
static_assert(crypto_secretbox_NONCEBYTES == kNonce && crypto_secretbox_MACBYTES == kAutentica);

[[noreturn]] void NonApribile() {
  throw host::Errore(
      host::kArgomentoNonValido, "SigilloPassword",
      "La password memorizzata non si apre con questa chiave per questo account e questo server");
}

const Byte* InByte(std::string_view testo) {
  return reinterpret_cast<const Byte*>(testo.data());
}

bool CominciaCon(std::string_view testo, std::string_view inizio) {
  return text::EqualsIgnoreCase(testo.substr(0, inizio.size()), inizio);
}

// What the box authenticates in addition to its content. Each text follows its length, so that none can
// extend into the next.
std::string Autenticato(const LegamePassword& legame) {
  const auto campo = [](std::string_view testo) {
    return std::to_string(testo.size()) + ":" + std::string(testo);
  };
  return std::string(kLegata) + campo(text::Trim(legame.utente)) + campo(NomeServer(legame.server)) +
         campo(std::to_string(legame.porta)) + campo(legame.tls ? "tls" : "");
}

std::vector<Byte> Scatola(std::string_view cifre) {
  if (cifre.empty()) NonApribile();
  std::vector<Byte> scatola(cifre.size());
  std::size_t lunghezza = 0;
  const bool leggibile = sodium_base642bin(scatola.data(), scatola.size(), cifre.data(), cifre.size(),
                                           nullptr, &lunghezza, nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
  if (!leggibile || lunghezza < kNonce + kAutentica) NonApribile();
  scatola.resize(lunghezza);
  return scatola;
}

}  // namespace

std::string NomeServer(std::string_view server) {
  std::string nome(text::Trim(server));
  for (char& c : nome) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return nome;
}

std::string LegamePassword::Dove() const {
  return NomeServer(server) + ", porta " + std::to_string(porta) + (tls ? ", TLS" : ", senza TLS");
}

bool LegamePassword::operator==(const LegamePassword& altro) const {
  return Autenticato(*this) == Autenticato(altro);
}

SigilloPassword::SigilloPassword(std::shared_ptr<const Chiave> chiave) : chiave_(std::move(chiave)) {
  if (sodium_init() < 0) throw host::Errore(host::kOggettoNonCreabile);
}

std::string SigilloPassword::Sigilla(std::string_view password, const LegamePassword& legame) const {
  const auto& chiave = host::Richiesto(chiave_);
  const std::string autenticato = Autenticato(legame);
  std::vector<Byte> scatola(kNonce + kAutentica + password.size());
  randombytes_buf(scatola.data(), kNonce);
  crypto_aead_xchacha20poly1305_ietf_encrypt(scatola.data() + kNonce, nullptr, InByte(password),
                                             password.size(), InByte(autenticato), autenticato.size(),
                                             nullptr, scatola.data(), chiave.Byte().data());
  std::string cifre(sodium_base64_encoded_len(scatola.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(cifre.data(), cifre.size(), scatola.data(), scatola.size(),
                    sodium_base64_VARIANT_ORIGINAL);
  cifre.pop_back();  // the NUL
  return std::string(kLegata) + cifre;
}

Secret SigilloPassword::Apri(std::string_view testo, const LegamePassword& legame) const {
  const auto& chiave = host::Richiesto(chiave_);
  testo = text::Trim(testo);
  const bool slegata = testo.substr(0, kSlegata.size()) == kSlegata;
  if (!slegata && testo.substr(0, kLegata.size()) != kLegata) NonApribile();
  if (slegata && chiave.SoloLegate()) NonApribile();
  const std::vector<Byte> scatola = Scatola(testo.substr(kLegata.size()));
  const Byte* const cifrato = scatola.data() + kNonce;
  const std::size_t lunghezza = scatola.size() - kNonce;
  Secret chiaro(lunghezza - kAutentica);
  auto* const dove = reinterpret_cast<Byte*>(chiaro.Data());
  const std::string autenticato = Autenticato(legame);
  const int esito =
      slegata ? crypto_secretbox_open_easy(dove, cifrato, lunghezza, scatola.data(), chiave.Byte().data())
              : crypto_aead_xchacha20poly1305_ietf_decrypt(dove, nullptr, nullptr, cifrato, lunghezza,
                                                           InByte(autenticato), autenticato.size(),
                                                           scatola.data(), chiave.Byte().data());
  if (esito != 0) NonApribile();
  return chiaro;
}

bool SigilloPassword::Sigillato(std::string_view testo) {
  testo = text::Trim(testo);
  if (!CominciaCon(testo, kSegno)) return false;
  testo.remove_prefix(kSegno.size());
  const std::size_t cifre = testo.find_first_not_of("0123456789");
  return cifre != 0 && cifre != std::string_view::npos && testo[cifre] == ':';
}

bool SigilloPassword::SenzaLegame(std::string_view testo) {
  testo = text::Trim(testo);
  return testo.substr(0, kSlegata.size()) == kSlegata;
}

}  // namespace orve::adapters::password
