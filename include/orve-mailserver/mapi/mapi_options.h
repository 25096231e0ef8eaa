// What the owner of the MAPI parts may choose.
#pragma once

#include <chrono>
#include <string>

#include "orve-mailserver/api.h"

namespace orve::adapters::mapi {

/// The options.
struct ORVE_API MapiOptions {
  /// The program that takes messages on this machine; any that takes sendmail's arguments.
  std::string sendmail = "/usr/sbin/sendmail";

  /// The longest time for which the program may take not one byte of the message, or not end once it has all
  /// of it.
  std::chrono::milliseconds timeout{300'000};

  ///@{
  /// Who sends. With an empty address the machine's mail system names the sender, as it does for every
  /// program of this user.
  std::string senderAddress;
  std::string senderName;
  ///@}
};

}  // namespace orve::adapters::mapi
