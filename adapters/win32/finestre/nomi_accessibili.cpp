#include "win32/finestre/nomi_accessibili.h"

#include <initguid.h>

// The ids come before the interface: the header only declares them.
#include <oleacc.h>

namespace orve::adapters::win32::finestre {

NomiAccessibili::NomiAccessibili() {
  void* servizi = nullptr;
  if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                                 &servizi))) {
    servizi_ = static_cast<IAccPropServices*>(servizi);
  }
}

NomiAccessibili::~NomiAccessibili() {
  if (servizi_ != nullptr) servizi_->Release();
}

void NomiAccessibili::Da(HWND controllo, const std::wstring& nome) const {
  if (servizi_ == nullptr || nome.empty()) return;
  servizi_->SetHwndPropStr(controllo, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                           nome.c_str());
}

}  // namespace orve::adapters::win32::finestre
