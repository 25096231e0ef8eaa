// Handing one message to the machine's mail system through the sendmail command.
//
// Recipients travel as arguments, never in the message: nobody else may read who gets a blind copy, and
// headers must not decide who receives the message. The command line ends its options before the first
// recipient, so that an address beginning with "-" is an address.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/mapi/mapi_options.h"

namespace orve::adapters::mapi {

/// Who sends and who receives, in wire form. If the sender is empty, the mail system supplies it.
struct Envelope {
  std::string sender;
  std::vector<std::string> recipients;
};

using Sink = std::function<void(std::string_view)>;
/// Writes a message into the sink it is given, lines ended by CR LF.
using Writer = std::function<void(const Sink&)>;

/// Raises MapiFailure (kLoginFailure) when there is no sendmail that this user may run.
void RequireSendmail(const MapiOptions& options);

/// Returns when the mail system has taken the message. Raises MapiFailure when it did not, with what sendmail
/// said about it; what `write` throws comes out as it is. In either case no part of the message was sent,
/// except that a sendmail that ran out of time, or crashed, may already have passed the message on.
void Submit(const MapiOptions& options, const Envelope& envelope, const Writer& write);

}  // namespace orve::adapters::mapi
