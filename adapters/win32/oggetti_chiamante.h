// The objects that a caller hands in, as the library knows them. "No object" stays "no object"; ComDi returns
// the object that came in.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/interfaccia_host.h"
#include "orve-mailserver/host/manager_rubrica.h"
#include "win32/oggetto_com.h"

namespace orve::adapters::win32 {

[[nodiscard]] std::shared_ptr<host::Connection> ConnessioneDa(IDispatch* oggetto);
[[nodiscard]] std::shared_ptr<host::InterfacciaHost> InterfacciaHostDa(IDispatch* oggetto);
[[nodiscard]] std::shared_ptr<host::ManagerRubrica> ManagerRubricaDa(IDispatch* oggetto);

}  // namespace orve::adapters::win32
