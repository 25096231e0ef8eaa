// campione DLL ARGUMENT...: runs the sample in C++, unchanged, with what stands behind it played here.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>

#include "host_recitato.h"

// The sample's own beginning, under another name.
int InviaFatturaCampione(int quanti, wchar_t** argomenti);

int wmain(int quanti, wchar_t** argomenti) {
  if (quanti < 2 || !orve::prova::RegistraDll(argomenti[1])) {
    std::cerr << "DLL non registrata\n";
    return 3;
  }
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 3;
  int esito = 3;
  std::string giornale;
  {
    const orve::prova::HostRecitato host;
    esito = InviaFatturaCampione(quanti - 1, argomenti + 1);
    giornale = host.Giornale();
  }
  CoUninitialize();
  // The sample writes wide text; the lines here are UTF-8 already.
  std::fflush(stdout);
  _setmode(_fileno(stdout), _O_BINARY);
  std::cout << giornale << "esito " << esito << "\n";
  return esito;
}
