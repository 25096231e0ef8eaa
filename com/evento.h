// The place where clients attach the handlers of BeforeSendMail.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <map>
#include <string>
#include <vector>

#include "win32/com_ptr.h"

namespace orve::com {

/// The connection point of the service; it lives as long as the object that it belongs to.
class PuntoEvento final : public IConnectionPoint {
 public:
  /// `proprietario` is the object whose references are counted and that holds this one.
  explicit PuntoEvento(IConnectionPointContainer& proprietario) : proprietario_(proprietario) {}
  PuntoEvento(const PuntoEvento&) = delete;
  PuntoEvento& operator=(const PuntoEvento&) = delete;
  PuntoEvento(PuntoEvento&&) = delete;
  PuntoEvento& operator=(PuntoEvento&&) = delete;
  ~PuntoEvento() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return proprietario_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return proprietario_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** contenitore) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* ascoltatore, DWORD* numero) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD numero) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** elenco) override;

  /// Raises the event: each handler, in the order in which they were attached, sees the texts as the previous
  /// one left them and may change them. One that is detached meanwhile is no longer called, one that is
  /// attached not yet. Raises the error of a handler that fails.
  void Solleva(const std::vector<std::string*>& testi);

 private:
  IConnectionPointContainer& proprietario_;
  std::map<DWORD, adapters::win32::ComPtr<IDispatch>> ascoltatori_;
  DWORD ultimo_ = 0;
};

}  // namespace orve::com
