#include "odbc/handles.h"

#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "odbc/wide_text.h"

namespace orve::adapters::odbc {

namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager speaks UTF-16");

struct Entry {
  std::string stato;
  std::int32_t numero = 0;
  std::string testo;
};

// One record of the diagnosis, counted from 1; false past the last.
bool LeggiVoce(SQLSMALLINT tipo, SQLHANDLE grezzo, SQLSMALLINT posto, Entry& voce) {
  std::array<SQLWCHAR, 6> stato{};
  std::array<SQLWCHAR, 2048> testo{};
  SQLINTEGER numero = 0;
  SQLSMALLINT lunghezza = 0;
  const SQLRETURN esito = SQLGetDiagRecW(tipo, grezzo, posto, stato.data(), &numero, testo.data(),
                                         static_cast<SQLSMALLINT>(testo.size()), &lunghezza);
  if (!SQL_SUCCEEDED(esito)) return false;
  const auto unita = [](const auto& buffer, std::size_t quante) {
    return Stretto({reinterpret_cast<const char16_t*>(buffer.data()), quante});
  };
  const auto piena = static_cast<std::size_t>(std::max<SQLSMALLINT>(lunghezza, 0));
  voce = {unita(stato, 5), numero, unita(testo, std::min(piena, testo.size() - 1))};
  return true;
}

}  // namespace

Handle::Handle(SQLSMALLINT tipo, SQLHANDLE padre) : tipo_(tipo) {
  if (SQL_SUCCEEDED(SQLAllocHandle(tipo, padre, &grezzo_))) return;
  grezzo_ = nullptr;
  if (padre == nullptr) throw host::Errore(host::kMemoriaInsufficiente);
  throw Diagnosi(tipo == SQL_HANDLE_DBC ? SQL_HANDLE_ENV : SQL_HANDLE_DBC, padre);
}

Handle::Handle(Handle&& altro) noexcept
    : tipo_(altro.tipo_), grezzo_(std::exchange(altro.grezzo_, nullptr)) {}

Handle& Handle::operator=(Handle&& altro) noexcept {
  if (this != &altro) {
    Libera();
    tipo_ = altro.tipo_;
    grezzo_ = std::exchange(altro.grezzo_, nullptr);
  }
  return *this;
}

void Handle::Libera() noexcept {
  if (grezzo_ == nullptr) return;
  SQLFreeHandle(tipo_, grezzo_);
  grezzo_ = nullptr;
}

void Handle::Verifica(SQLRETURN esito) const {
  if (SQL_SUCCEEDED(esito) || esito == SQL_NO_DATA) return;
  throw Diagnosi(tipo_, grezzo_);
}

host::Errore Diagnosi(SQLSMALLINT tipo, SQLHANDLE grezzo) {
  Entry prima;
  if (!LeggiVoce(tipo, grezzo, 1, prima)) {
    return {kErroreSenzaNumero, kSorgente, "Il driver ODBC non ha dato spiegazioni"};
  }
  std::string testo = prima.testo + " (" + prima.stato + ")";
  Entry voce;
  for (SQLSMALLINT posto = 2; LeggiVoce(tipo, grezzo, posto, voce); ++posto) {
    if (!voce.testo.empty()) testo += "; " + voce.testo;
  }
  return {prima.numero != 0 ? prima.numero : kErroreSenzaNumero, kSorgente, testo};
}

}  // namespace orve::adapters::odbc
