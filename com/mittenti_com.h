// The public objects of sender accounts and of their collection.
#pragma once

#include "membri.h"
#include "orve-mailserver/addressing/mittenti.h"
#include "orve_mailserver.h"

namespace orve::com {

class MittenteCom final : public Pubblico<IMittente, Mittente> {
 public:
  explicit MittenteCom(std::shared_ptr<Mittente> mittente) : Pubblico(std::move(mittente), CLSID_Mittente) {}

  ORVE_PROPRIETA(Indirizzo, BSTR)
  ORVE_PROPRIETA(Server, BSTR)
  ORVE_PROPRIETA(Descrizione, BSTR)
  ORVE_PROPRIETA(Port, short)
  ORVE_PROPRIETA(Timeout, short)
  ORVE_PROPRIETA(user, BSTR)
  ORVE_PROPRIETA(Password, BSTR)
  ORVE_PROPRIETA(Auth, short)
  ORVE_PROPRIETA(ReadRcpt, short)
  ORVE_PROPRIETA(DeliveryStatus, short)
  ORVE_PROPRIETA(IsSsl, VARIANT_BOOL)
  ORVE_PROPRIETA(CryptType, short)
};

class CollMittentiCom final : public Pubblico<ICollMittenti, CollMittenti> {
 public:
  explicit CollMittentiCom(std::shared_ptr<CollMittenti> collezione)
      : Pubblico(std::move(collezione), CLSID_CollMittenti) {}

  HRESULT STDMETHODCALLTYPE Add(BSTR* Indirizzo, BSTR* Server, short* Port, short* Timeout, BSTR* UserName,
                                BSTR* Password, short* TipoAutenticazione, short* Lettura, short* Consegna,
                                BSTR* Descrizione, VARIANT_BOOL* IsSsl, BSTR* sKey,
                                IMittente** valore) override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT vntIndexKey, IMittente** valore) override;
  ORVE_LETTURA(Count, LONG, N().Count())
  HRESULT STDMETHODCALLTYPE Remove(VARIANT vntIndexKey) override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** valore) override;
  HRESULT STDMETHODCALLTYPE AddMittente(BSTR* Indirizzo, BSTR* Server, short* Port, short* Timeout,
                                        BSTR* UserName, BSTR* Password, short* TipoAutenticazione,
                                        short* Lettura, short* Consegna, BSTR* Descrizione, short* CryptType,
                                        BSTR* sKey, IMittente** valore) override;
};

}  // namespace orve::com
