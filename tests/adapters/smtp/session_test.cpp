// What is done while the server considers the envelope.
#include "smtp/session.h"
#include "adapters/smtp/dialogue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/smtp/outgoing.h"
#include "support/scripted_server.h"

namespace orve::adapters::smtp {
namespace {

using support::Body;
using support::On;
using support::ScriptedServer;
using support::ThenDrop;

const Script kAnnaAndMario = {On("RCPT TO:<anna@verdi.it>", "250 Ok"),
                              On("RCPT TO:<mario@bianchi.it>", "250 Ok")};
const Script kTaken = {On("DATA", "354 avanti"), Body("250 preso")};

/// A delivery to two recipients, and what of it took place.
struct Delivery {
  int meanwhile = 0;
  int written = 0;
  std::optional<ErrorNumber> failure;

  void To(const ScriptedServer& server, const Session::Meanwhile& work = {}) {
    Session session(std::make_shared<const SmtpOptions>(Quick()),
                    {"127.0.0.1", static_cast<std::uint16_t>(server.Port()), false, "", ""});
    try {
      session.Open();
      session.Deliver(
          {"ditta@rossi.it", {"anna@verdi.it", "mario@bianchi.it"}},
          [&](const Session::Sink& sink) {
            ++written;
            sink("Subject: prova\r\n\r\ntesto\r\n.\r\n");
          },
          [&] {
            ++meanwhile;
            if (work) work();
          });
    } catch (const DeliveryFailure& failed) {
      failure = failed.Number();
    }
    session.Close();
  }
};

TEST(Meanwhile, IsBeforeTheServerHasAnswered) {
  std::promise<void> passed;
  // The server withholds its answer until that work is done.
  const auto hold = [&] {
    EXPECT_EQ(passed.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready);
  };
  ScriptedServer server(kHello + Script{On("MAIL FROM:<ditta@rossi.it>", hold, "250 Ok")} + kAnnaAndMario +
                        kTaken);
  Delivery delivery;
  delivery.To(server, [&] { passed.set_value(); });
  EXPECT_EQ(delivery.failure, std::nullopt);
  EXPECT_EQ(delivery.written, 1);
  EXPECT_EQ(server.Complaint(), "");
}

TEST(Meanwhile, ComesOnceHoweverManyCommandsWaitForTheirReplies) {
  ScriptedServer server(kHello + Script{On("MAIL FROM:<ditta@rossi.it>", "250 Ok")} + kAnnaAndMario + kTaken);
  Delivery delivery;
  delivery.To(server);
  EXPECT_EQ(delivery.failure, std::nullopt);
  EXPECT_EQ(delivery.meanwhile, 1);
  EXPECT_EQ(server.Complaint(), "");
}

TEST(Meanwhile, WritesNothingWhereTheSenderIsRefused) {
  ScriptedServer server(kHello + Script{On("MAIL FROM:<ditta@rossi.it>", "550 no")});
  Delivery delivery;
  delivery.To(server);
  EXPECT_EQ(delivery.failure, ErrorNumber::kSender);
  EXPECT_EQ(delivery.meanwhile, 1);
  EXPECT_EQ(delivery.written, 0);
  EXPECT_EQ(server.Complaint(), "");
}

TEST(Meanwhile, DoesNotHideThatTheServerHasGone) {
  ScriptedServer server(kHello + Script{ThenDrop(On("MAIL FROM:<ditta@rossi.it>", ""))});
  Delivery delivery;
  delivery.To(server, [&] { server.AwaitClosed(0); });
  EXPECT_EQ(delivery.failure, ErrorNumber::kSender);
  EXPECT_EQ(delivery.written, 0);
  EXPECT_EQ(server.Complaint(), "");
}

}  // namespace
}  // namespace orve::adapters::smtp
