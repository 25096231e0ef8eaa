#include "mittenti_com.h"

#include "enumerator.h"

namespace orve::com {

namespace {

auto PubblicoDiMittente(const std::shared_ptr<Mittente>& mittente) {
  return PubblicoDi<MittenteCom, IMittente>(mittente);
}

}  // namespace

HRESULT CollMittentiCom::Add(BSTR* Indirizzo, BSTR* Server, short* Port, short* Timeout, BSTR* UserName,
                             BSTR* Password, short* TipoAutenticazione, short* Lettura, short* Consegna,
                             BSTR* Descrizione, VARIANT_BOOL* IsSsl, BSTR* sKey, IMittente** valore) {
  return Porgi(valore, [&] {
    return PubblicoDiMittente(N().Add(
        ImportaRiferimento<std::string>(Indirizzo), ImportaRiferimento<std::string>(Server),
        ImportaRiferimento<std::int16_t>(Port), ImportaRiferimento<std::int16_t>(Timeout),
        ImportaRiferimento<std::string>(UserName), ImportaRiferimento<std::string>(Password),
        ImportaRiferimento<std::int16_t>(TipoAutenticazione), ImportaRiferimento<std::int16_t>(Lettura),
        ImportaRiferimento<std::int16_t>(Consegna), ImportaRiferimento<std::string>(Descrizione),
        ImportaRiferimento<bool>(IsSsl), ImportaRiferimento<std::string>(sKey)));
  });
}

HRESULT CollMittentiCom::get_Item(VARIANT vntIndexKey, IMittente** valore) {
  return Porgi(valore, [&] { return PubblicoDiMittente(N().Item(Importa<host::Variant>(vntIndexKey))); });
}

HRESULT CollMittentiCom::Remove(VARIANT vntIndexKey) {
  return Entra([&] { N().Remove(Importa<host::Variant>(vntIndexKey)); });
}

HRESULT CollMittentiCom::get_NewEnum(IUnknown** valore) {
  return Porgi(valore, [&] { return EnumeratoreDi(NucleoCondiviso(), PubblicoDiMittente); });
}

HRESULT CollMittentiCom::AddMittente(BSTR* Indirizzo, BSTR* Server, short* Port, short* Timeout,
                                     BSTR* UserName, BSTR* Password, short* TipoAutenticazione,
                                     short* Lettura, short* Consegna, BSTR* Descrizione, short* CryptType,
                                     BSTR* sKey, IMittente** valore) {
  return Porgi(valore, [&] {
    return PubblicoDiMittente(N().AddMittente(
        ImportaRiferimento<std::string>(Indirizzo), ImportaRiferimento<std::string>(Server),
        ImportaRiferimento<std::int16_t>(Port), ImportaRiferimento<std::int16_t>(Timeout),
        ImportaRiferimento<std::string>(UserName), ImportaRiferimento<std::string>(Password),
        ImportaRiferimento<std::int16_t>(TipoAutenticazione), ImportaRiferimento<std::int16_t>(Lettura),
        ImportaRiferimento<std::int16_t>(Consegna), ImportaRiferimento<std::string>(Descrizione),
        ImportaRiferimento<std::int16_t>(CryptType), ImportaRiferimento<std::string>(sKey)));
  });
}

}  // namespace orve::com
