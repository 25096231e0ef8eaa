#include "service/nvl.h"

#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve {

host::Variant NVL(const host::Variant& valore, const host::Variant& sostituto) try {
  if (valore.IsNull() || valore.IsEmpty()) return sostituto;
  return text::Trim(valore.ToText()).empty() ? sostituto : valore;
} catch (...) {
  throw host::ErroreCorrente().ConSuffisso(": ORVE_MAILSERVER: CLSFW_MAILSERVER: NVL");
}

}  // namespace orve
