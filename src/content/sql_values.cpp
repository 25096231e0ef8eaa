// One value in the form in which it is joined into an SQL statement.
//
// Values are joined unescaped: a text with a quote breaks its statement, and the failure takes the way of the
// procedure that runs it. Whoever changes that changes what every look-up sends to the database.
#include <string>
#include <type_traits>

#include "service/CLSFW_MAILSERVER.h"

namespace orve {

namespace {

enum TipoValore : std::int32_t { kTesto = 0, kDecimale = 1, kNumero = 2, kData = 3 };

std::string TraApici(const std::string& testo) {
  return "'" + testo + "'";
}

// The date formatter reads the form of the regional settings, which only the system's clock knows.
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

}  // namespace

host::Variant CLSFW_MAILSERVER::FormatoDB(const host::Variant& valore, std::int32_t tipo, bool ammetteNull) {
  try {
    const std::string testo = valore.Joined();
    return testo.empty() ? FormatoDBAssente(tipo, ammetteNull) : FormatoDBPresente(valore, tipo);
  } catch (...) {
    MostraErrore(host::ErroreCorrente(), "-", " in CLSFW_MAILSERVER: FormatoDB");
    return {};
  }
}

host::Variant CLSFW_MAILSERVER::FormatoDBAssente(std::int32_t tipo, bool ammetteNull) {
  if (ammetteNull) return "null";
  switch (tipo) {
    case kTesto:
      return "''";
    case kDecimale:
    case kNumero:
      MostraMessaggio(
          "Si sta tentando di assegnare il valore (numerico) null a un campo che non ammette null.",
          host::kSemplice, "", nullptr);
      return {};
    case kData:
      MostraMessaggio("Si sta tentando di assegnare il valore (data) null a un campo che non ammette null.",
                      host::kSemplice, "", nullptr);
      return {};
    default:
      return {};
  }
}

host::Variant CLSFW_MAILSERVER::FormatoDBPresente(const host::Variant& valore, std::int32_t tipo) {
  switch (tipo) {
    case kTesto:
      return TraApici(valore.ToText());
    case kDecimale:
      return valore.ToDecimale();
    case kNumero:
      return host::Richiesto(ObjFormatoNumero).NumeroDB(valore);
    case kData: {
      auto& formato = host::Richiesto(ObjFormatoData);
      formato.Data(TestoPerFormatoData(valore, ambiente_->OrologioDiSistema()));
      if (formato.Stato() != 0) return {};
      return TraApici(formato.DataDB());
    }
    default:
      return {};
  }
}

}  // namespace orve
