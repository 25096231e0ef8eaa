#include "destinatari_com.h"

#include "enumerator.h"

namespace orve::com {

namespace {

auto PubblicoDiDestinatario(const std::shared_ptr<Destinatario>& destinatario) {
  return PubblicoDi<DestinatarioCom, IDestinatario>(destinatario);
}

}  // namespace

HRESULT CollDestinatariCom::Add(BSTR* Indirizzo, BSTR* Nome, BSTR* Azienda, BSTR* sKey,
                                IDestinatario** valore) {
  return Porgi(valore, [&] {
    return PubblicoDiDestinatario(
        N().Add(ImportaRiferimento<std::string>(Indirizzo), ImportaRiferimento<std::string>(Nome),
                ImportaRiferimento<std::string>(Azienda), ImportaRiferimento<std::string>(sKey)));
  });
}

HRESULT CollDestinatariCom::get_Item(VARIANT vntIndexKey, IDestinatario** valore) {
  return Porgi(valore, [&] { return PubblicoDiDestinatario(N().Item(Importa<host::Variant>(vntIndexKey))); });
}

HRESULT CollDestinatariCom::Remove(VARIANT vntIndexKey) {
  return Entra([&] { N().Remove(Importa<host::Variant>(vntIndexKey)); });
}

HRESULT CollDestinatariCom::get_NewEnum(IUnknown** valore) {
  return Porgi(valore, [&] { return EnumeratoreDi(NucleoCondiviso(), PubblicoDiDestinatario); });
}

HRESULT CollDestinatariCom::AddFromLista(BSTR* Indirizzo, BSTR* Nome, BSTR* Azienda, short* Casella,
                                         BSTR* sKey, IDestinatario** valore) {
  return Porgi(valore, [&] {
    return PubblicoDiDestinatario(
        N().AddFromLista(ImportaRiferimento<std::string>(Indirizzo), ImportaRiferimento<std::string>(Nome),
                         ImportaRiferimento<std::string>(Azienda), ImportaRiferimento<std::int16_t>(Casella),
                         ImportaRiferimento<std::string>(sKey)));
  });
}

}  // namespace orve::com
