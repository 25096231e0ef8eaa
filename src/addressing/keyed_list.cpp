#include "orve-mailserver/addressing/keyed_list.h"

#include "text/text.h"

namespace orve {

std::string PiegaChiave(const std::string& chiave) {
  return text::FoldCase(chiave);
}

}  // namespace orve
