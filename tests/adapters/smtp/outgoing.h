// What the tests of the SMTP component share: a message ready to send.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "smtp/smtp_component.h"

namespace orve::adapters::smtp {

/// Options with time-outs that no server of a test needs, and that end before the test's own time is up.
inline SmtpOptions Quick() {
  SmtpOptions options;
  options.connectTimeout = std::chrono::seconds(60);
  options.replyTimeout = std::chrono::seconds(60);
  options.finalReplyTimeout = std::chrono::seconds(60);
  options.stallTimeout = std::chrono::seconds(60);
  options.ehloName = "prova.example.test";
  return options;
}

/// A component with sender, one recipient, subject and body, bound for loopback.
inline std::unique_ptr<SmtpComponent> Outgoing(std::int16_t port, SmtpOptions options = Quick(),
                                               std::shared_ptr<ConnectionPool> pool = nullptr) {
  auto component = std::make_unique<SmtpComponent>(std::move(options), std::move(pool));
  component->ClearRecipient();
  component->ServerAddr("127.0.0.1");
  component->ServerPort(port);
  component->ConnectType(0);
  component->From("Ditta Rossi");
  component->FromAddr("<ditta@rossi.it>");
  component->AddRecipientEx("Mario Bianchi <mario@bianchi.it>", 0);
  component->Subject("Fattura");
  component->BodyText("Buongiorno,\r\nin allegato la fattura.\r\n");
  return component;
}

/// Sends and returns the number.
inline std::int32_t Sent(SmtpComponent& component) {
  component.SendMail();
  return component.GetLastError().ToInt32();
}

}  // namespace orve::adapters::smtp
