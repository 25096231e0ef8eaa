// One value in the form in which it is joined into an SQL statement.
//
// Values are joined unescaped: a text with a quote breaks its statement, and the failure is handled as the
// procedure that runs it handles failures. Changing that changes what every look-up sends to the database.
#include "content/sql_values.h"

#include <string>
#include <type_traits>

#include "service/failures.h"
#include "service/guards.h"

namespace orve {

namespace {

std::string TraApici(const std::string& testo) {
  return "'" + testo + "'";
}

// The date formatter expects the form of the regional settings, which only the system's clock knows.
std::string TestoPerFormatoData(const host::Variant& valore, host::Orologio& orologio) {
  return valore.Visita([&](const auto& contenuto) {
    if constexpr (std::is_same_v<std::decay_t<decltype(contenuto)>, host::DataOra>) {
      if (!contenuto.HaData()) return orologio.TestoOra(contenuto);
      const host::CampiDataOra campi = host::Campi(contenuto);
      const bool mezzanotte = campi.ora == 0 && campi.minuto == 0 && campi.secondo == 0;
      const std::string data = orologio.TestoData(contenuto);
      return mezzanotte ? data : data + " " + orologio.TestoOra(contenuto);
    } else {
      return valore.ToText();
    }
  });
}

host::Variant FormatoDBAssente(const Oggetti& oggetti, std::int32_t tipo, bool ammetteNull) {
  if (ammetteNull) return "null";
  switch (tipo) {
    case kValoreTesto:
      return "''";
    case kValoreDecimale:
    case kValoreNumero:
      MostraMessaggio(
          oggetti, "Si sta tentando di assegnare il valore (numerico) null a un campo che non ammette null.",
          host::kSemplice, "");
      return {};
    case kValoreData:
      MostraMessaggio(oggetti,
                      "Si sta tentando di assegnare il valore (data) null a un campo che non ammette null.",
                      host::kSemplice, "");
      return {};
    default:
      return {};
  }
}

host::Variant FormatoDBPresente(const Oggetti& oggetti, const host::Variant& valore, std::int32_t tipo) {
  switch (tipo) {
    case kValoreTesto:
      return TraApici(valore.ToText());
    case kValoreDecimale:
      return valore.ToDecimale();
    case kValoreNumero:
      return host::Richiesto(oggetti.ObjFormatoNumero).NumeroDB(valore);
    case kValoreData: {
      auto& formato = host::Richiesto(oggetti.ObjFormatoData);
      formato.Data(TestoPerFormatoData(valore, oggetti.ambiente->OrologioDiSistema()));
      if (formato.Stato() != 0) return {};
      return TraApici(formato.DataDB());
    }
    default:
      return {};
  }
}

}  // namespace

host::Variant FormatoDB(const Oggetti& oggetti, const host::Variant& valore, std::int32_t tipo,
                        bool ammetteNull) {
  host::Variant forma;
  SegnalaErrori(PerMessaggio(oggetti, "-", " in CLSFW_MAILSERVER: FormatoDB"), [&] {
    forma = valore.Joined().empty() ? FormatoDBAssente(oggetti, tipo, ammetteNull)
                                    : FormatoDBPresente(oggetti, valore, tipo);
  });
  return forma;
}

}  // namespace orve
