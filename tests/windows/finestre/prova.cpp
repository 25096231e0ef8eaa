#include "prova.h"

namespace orve::adapters::win32::finestre {

void FinestraVera::Apri(Azione persona) {
  const Compagno qualcuno(InFinestra(programma, LayoutOpzMail(), std::move(persona)));
  ApreInvio();
}

void FinestraVera::Parametri(Azione persona) {
  const Compagno qualcuno(InFinestra(programma, LayoutMailParams(), std::move(persona)));
  servizio->ReturnMailParameters();
}

}  // namespace orve::adapters::win32::finestre
