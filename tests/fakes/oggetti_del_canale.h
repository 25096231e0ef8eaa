// What the fakes of the objects that deliver leave in the journal, one row for each channel: with these lines
// the tests tell what a message was made of and whether it was sent.
#pragma once

#include <string_view>
#include <vector>

#include "orve-mailserver/service/enumerazioni.h"

namespace orve::fakes {

struct OggettiDelCanale {
  kvEnum_ServizioMail canale;  // one of its numbers, where it has several
  std::string_view titolo;
  std::string_view invio;  // how the line begins with which the message is sent
  // How the lines begin that say what is in the message and for whom:
  std::vector<std::string_view> contenuto;  // where one message is to be told from another, session included
  std::vector<std::string_view> confronto;  // where the channels are held against each other
};

/// In the order in which tests go through the channels.
[[nodiscard]] const std::vector<OggettiDelCanale>& OggettiDeiCanali();

}  // namespace orve::fakes
