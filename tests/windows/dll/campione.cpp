// campione DLL ARGUMENT...: runs the sample in C++, unchanged, with everything behind it played here.
// Customer 502 has no address, 503 is refused by the server, 999 does not exist.
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
    orve::prova::HostRecitato host;
    host.Risposta("CG44_CLIFOR = 502", "CG16_INDEMAIL", "");
    host.Risposta("CG44_CLIFOR = 503", "CG16_INDEMAIL", "rifiutata@x.example");
    host.SenzaRighe("CG44_CLIFOR = 999");
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
