// A MAPI32.DLL that a test plays: its three functions pass what they got, as it is, to functions of the test.
#pragma once

#include <windows.h>

#include <oleauto.h>

namespace orve::prova {

using LogonMapi = ULONG(WINAPI*)(ULONG_PTR, LPSTR, LPSTR, ULONG, ULONG, ULONG_PTR*);
using SendMailMapi = ULONG(WINAPI*)(ULONG_PTR, ULONG_PTR, void*, SAFEARRAY**, SAFEARRAY**, ULONG, ULONG);
using LogoffMapi = ULONG(WINAPI*)(ULONG_PTR, ULONG_PTR, ULONG, ULONG);

struct FunzioniMapi {
  LogonMapi logon;
  SendMailMapi sendMail;
  LogoffMapi logoff;
};

/// The export by which the test tells its functions.
using ImpostaFunzioniMapi = void(WINAPI*)(const FunzioniMapi*);

}  // namespace orve::prova
