// The end of the service object.
#pragma once

namespace orve {

struct Interno;

/// Releases all outside objects but the ambiente, in an order of their own that they can see. What has been
/// released before stays so.
void RilasciaIlResto(Interno& interno);

}  // namespace orve
