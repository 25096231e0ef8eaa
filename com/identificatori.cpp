// The values of the identifiers that the type library's header declares.
#include <windows.h>

#include <initguid.h>

#include "orve_mailserver.h"
