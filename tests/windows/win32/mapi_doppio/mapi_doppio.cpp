#include "windows/win32/mapi_doppio/mapi_doppio.h"

namespace {

constexpr ULONG kNonRiuscito = 2;
orve::prova::FunzioniMapi funzioni{};

}  // namespace

extern "C" {

ULONG WINAPI MAPILogon(ULONG_PTR finestra, LPSTR profilo, LPSTR password, ULONG flags, ULONG riservato,
                       ULONG_PTR* sessione) {
  if (funzioni.logon == nullptr) return kNonRiuscito;
  return funzioni.logon(finestra, profilo, password, flags, riservato, sessione);
}

ULONG WINAPI BMAPISendMail(ULONG_PTR sessione, ULONG_PTR finestra, void* messaggio, SAFEARRAY** destinatari,
                           SAFEARRAY** file, ULONG flags, ULONG riservato) {
  if (funzioni.sendMail == nullptr) return kNonRiuscito;
  return funzioni.sendMail(sessione, finestra, messaggio, destinatari, file, flags, riservato);
}

ULONG WINAPI MAPILogoff(ULONG_PTR sessione, ULONG_PTR finestra, ULONG flags, ULONG riservato) {
  if (funzioni.logoff == nullptr) return kNonRiuscito;
  return funzioni.logoff(sessione, finestra, flags, riservato);
}

void WINAPI ImpostaFunzioni(const orve::prova::FunzioniMapi* nuove) {
  funzioni = nuove == nullptr ? orve::prova::FunzioniMapi{} : *nuove;
}
}
