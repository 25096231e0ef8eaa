#include "orve-mail/cifratore_sodium.h"

#include <sodium.h>

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "host/errore.h"

namespace orve::app {

namespace {

constexpr std::string_view kVersione = "orve1:";
constexpr std::size_t kNonce = crypto_secretbox_NONCEBYTES;
constexpr std::size_t kAutentica = crypto_secretbox_MACBYTES;

[[noreturn]] void NonDecifrabile() {
  throw host::Errore(host::kArgomentoNonValido, "CifratorePassword",
                     "La password memorizzata non è stata cifrata con questa chiave");
}

const std::uint8_t* Byte(std::string_view testo) {
  return reinterpret_cast<const std::uint8_t*>(testo.data());
}

}  // namespace

CifratoreSodium::CifratoreSodium(std::shared_ptr<const Chiave> chiave) : chiave_(std::move(chiave)) {
  if (sodium_init() < 0) throw host::Errore(host::kOggettoNonCreabile);
}

std::string CifratoreSodium::Cripta(const std::string& testo) {
  std::vector<std::uint8_t> scatola(kNonce + kAutentica + testo.size());
  randombytes_buf(scatola.data(), kNonce);
  crypto_secretbox_easy(scatola.data() + kNonce, Byte(testo), testo.size(), scatola.data(),
                        host::Richiesto(chiave_).Byte().data());
  std::string cifre(sodium_base64_encoded_len(scatola.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(cifre.data(), cifre.size(), scatola.data(), scatola.size(),
                    sodium_base64_VARIANT_ORIGINAL);
  cifre.pop_back();  // the NUL
  return std::string(kVersione) + cifre;
}

std::string CifratoreSodium::Decripta(const std::string& testo) {
  const std::string_view intero(testo);
  if (intero.substr(0, kVersione.size()) != kVersione || intero.size() == kVersione.size()) NonDecifrabile();
  const std::string_view cifre = intero.substr(kVersione.size());
  std::vector<std::uint8_t> scatola(cifre.size());
  std::size_t lunghezza = 0;
  const bool leggibile = sodium_base642bin(scatola.data(), scatola.size(), cifre.data(), cifre.size(),
                                           nullptr, &lunghezza, nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
  if (!leggibile || lunghezza < kNonce + kAutentica) NonDecifrabile();
  std::string chiaro(lunghezza - kNonce - kAutentica, '\0');
  if (crypto_secretbox_open_easy(reinterpret_cast<std::uint8_t*>(chiaro.data()), scatola.data() + kNonce,
                                 lunghezza - kNonce, scatola.data(),
                                 host::Richiesto(chiave_).Byte().data()) != 0) {
    NonDecifrabile();
  }
  return chiaro;
}

}  // namespace orve::app
