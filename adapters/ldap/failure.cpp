#include "ldap/failure.h"

#include <ldap.h>

#include <algorithm>
#include <array>
#include <utility>

#include "text/text.h"

namespace orve::adapters::ldap {

namespace {

constexpr std::size_t kLongestWords = 300;

struct Meaning {
  int code;
  const char* text;
};

constexpr std::array<Meaning, 17> kMeanings = {{
    {LDAP_SERVER_DOWN, "la directory non è raggiungibile, oppure ha interrotto la connessione"},
    {LDAP_CONNECT_ERROR, "la connessione protetta con la directory non è riuscita"},
    {LDAP_TIMEOUT, "la directory non ha risposto in tempo"},
    {LDAP_TIMELIMIT_EXCEEDED, "la directory non ha concluso la ricerca in tempo"},
    {LDAP_INVALID_CREDENTIALS, "la directory rifiuta nome utente o password"},
    {LDAP_INAPPROPRIATE_AUTH, "la directory non ammette questo modo di accedere"},
    {LDAP_STRONG_AUTH_REQUIRED, "la directory chiede un accesso più protetto"},
    {LDAP_CONFIDENTIALITY_REQUIRED, "la directory chiede una connessione cifrata"},
    {LDAP_INSUFFICIENT_ACCESS, "la directory non concede la lettura a questo utente"},
    {LDAP_OPERATIONS_ERROR, "la directory rifiuta la richiesta, forse perché l'accesso è anonimo"},
    {LDAP_NO_SUCH_OBJECT, "nella directory non c'è l'oggetto cercato"},
    {LDAP_INVALID_DN_SYNTAX, "il nome dell'oggetto non è valido"},
    {LDAP_FILTER_ERROR, "il filtro della ricerca non è valido"},
    {LDAP_LOCAL_ERROR, "l'accesso con Kerberos non è riuscito"},
    {LDAP_AUTH_UNKNOWN, "l'accesso con Kerberos non è disponibile"},
    {LDAP_MORE_RESULTS_TO_RETURN, "la directory risponde più di quanto le è stato chiesto"},
    {LDAP_REFERRAL, "la directory rinvia a un altro server"},
}};

std::string MeaningOf(int code) {
  const auto* const found = std::find_if(kMeanings.begin(), kMeanings.end(),
                                         [code](const Meaning& meaning) { return meaning.code == code; });
  return found != kMeanings.end() ? found->text : "la directory ha dato un errore";
}

std::string OneLine(const std::string& words) {
  std::string line(text::Left(words, kLongestWords));
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; },
      ' ');
  return std::string(text::Trim(line));
}

std::string Description(int code, const std::string& words) {
  std::string description = "Directory: " + MeaningOf(code) + " (LDAP " + std::to_string(code);
  if (!words.empty()) description += ": " + words;
  return description + ")";
}

}  // namespace

LdapFailure::LdapFailure(int code, const std::string& words)
    : Errore(host::kErroreAutomazione, "Directory", Description(code, OneLine(words))),
      code_(code),
      words_(OneLine(words)) {}

}  // namespace orve::adapters::ldap
