// The public objects of recipients and of their collection.
#pragma once

#include "membri.h"
#include "orve-mailserver/addressing/destinatari.h"
#include "orve_mailserver.h"

namespace orve::com {

class DestinatarioCom final : public Pubblico<IDestinatario, Destinatario> {
 public:
  explicit DestinatarioCom(std::shared_ptr<Destinatario> destinatario)
      : Pubblico(std::move(destinatario), CLSID_Destinatario) {}

  ORVE_PROPRIETA(Indirizzo, BSTR)
  ORVE_PROPRIETA(Azienda, BSTR)
  ORVE_PROPRIETA(Nome, BSTR)
  ORVE_PROPRIETA(Casella, short)
};

class CollDestinatariCom final : public Pubblico<ICollDestinatari, CollDestinatari> {
 public:
  explicit CollDestinatariCom(std::shared_ptr<CollDestinatari> collezione)
      : Pubblico(std::move(collezione), CLSID_CollDestinatari) {}

  HRESULT STDMETHODCALLTYPE Add(BSTR* Indirizzo, BSTR* Nome, BSTR* Azienda, BSTR* sKey,
                                IDestinatario** valore) override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT vntIndexKey, IDestinatario** valore) override;
  ORVE_LETTURA(Count, LONG, N().Count())
  HRESULT STDMETHODCALLTYPE Remove(VARIANT vntIndexKey) override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** valore) override;
  HRESULT STDMETHODCALLTYPE AddFromLista(BSTR* Indirizzo, BSTR* Nome, BSTR* Azienda, short* Casella,
                                         BSTR* sKey, IDestinatario** valore) override;
};

}  // namespace orve::com
