// What the owner of the MAPI parts may choose.
#pragma once

#include <chrono>
#include <string>

namespace orve::adapters::mapi {

struct MapiOptions {
  /// The program that takes messages on this machine; any that is called like sendmail.
  std::string sendmail = "/usr/sbin/sendmail";

  /// The longest time in which the program takes not a byte of the message, or does not end once it has it
  /// all.
  std::chrono::milliseconds timeout{300'000};

  /// Who sends. With an empty address the machine's mail system names the sender, as it does for every
  /// program of this user's.
  std::string senderAddress;
  std::string senderName;
};

}  // namespace orve::adapters::mapi
