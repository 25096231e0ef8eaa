// Name look-ups under the control of the tests: the program's own getaddrinfo precedes the system's.
//
// "*.example.test" leads to loopback. "ignoto.test" does not exist, the name server of "guasto.test" fails,
// that of "silenzio.test" says nothing for some seconds. Everything else goes to the system.
#pragma once

#include <string>
#include <vector>

namespace orve::adapters::smtp {

/// The names looked up so far.
std::vector<std::string> NamesLookedUp();

}  // namespace orve::adapters::smtp
