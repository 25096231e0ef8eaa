#include "recipients_com.h"

#include "enumeratore.h"

namespace orve::com {

namespace {

auto PubblicoDiDestinatario(const std::shared_ptr<Destinatario>& destinatario) {
  return PubblicoDi<DestinatarioCom, IDestinatario>(destinatario);
}

}  // namespace

HRESULT CollDestinatariCom::Add(BSTR* Indirizzo, BSTR* Nome, BSTR* Azienda, BSTR* sKey,
                                IDestinatario** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = nullptr;
  return Entra([&] {
    const auto nuovo =
        N().Add(ImportaRiferimento<std::string>(Indirizzo), ImportaRiferimento<std::string>(Nome),
                ImportaRiferimento<std::string>(Azienda), ImportaRiferimento<std::string>(sKey));
    *valore = PubblicoDiDestinatario(nuovo).Cedi();
  });
}

HRESULT CollDestinatariCom::get_Item(VARIANT vntIndexKey, IDestinatario** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = nullptr;
  return Entra(
      [&] { *valore = PubblicoDiDestinatario(N().Item(Importa<host::Variant>(vntIndexKey))).Cedi(); });
}

HRESULT CollDestinatariCom::Remove(VARIANT vntIndexKey) {
  return Entra([&] { N().Remove(Importa<host::Variant>(vntIndexKey)); });
}

HRESULT CollDestinatariCom::get_NewEnum(IUnknown** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = nullptr;
  return Entra([&] { EsportaEnumeratore(NucleoCondiviso(), PubblicoDiDestinatario, valore); });
}

HRESULT CollDestinatariCom::AddFromLista(BSTR* Indirizzo, BSTR* Nome, BSTR* Azienda, short* Casella,
                                         BSTR* sKey, IDestinatario** valore) {
  if (valore == nullptr) return E_POINTER;
  *valore = nullptr;
  return Entra([&] {
    const auto nuovo =
        N().AddFromLista(ImportaRiferimento<std::string>(Indirizzo), ImportaRiferimento<std::string>(Nome),
                         ImportaRiferimento<std::string>(Azienda), ImportaRiferimento<std::int16_t>(Casella),
                         ImportaRiferimento<std::string>(sKey));
    *valore = PubblicoDiDestinatario(nuovo).Cedi();
  });
}

}  // namespace orve::com
