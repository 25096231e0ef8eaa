// What the MAPI library and the two controls share within a program: where mail goes, and the open sessions.
#pragma once

#include <cstdint>
#include <mutex>
#include <set>
#include <utility>

#include "orve-mailserver/mapi/mapi_options.h"

namespace orve::adapters::mapi {

class MailSystem {
 public:
  explicit MailSystem(MapiOptions options) : options_(std::move(options)) {}

  [[nodiscard]] const MapiOptions& Options() const { return options_; }

  /// Opens a session and returns its number, never used before. Raises MapiFailure (kLoginFailure) when this
  /// machine has no mail system to open one with.
  [[nodiscard]] std::int32_t Open();
  /// False when no session of that number is open.
  bool Close(std::int32_t session);
  [[nodiscard]] bool IsOpen(std::int32_t session) const;

 private:
  const MapiOptions options_;
  mutable std::mutex guard_;
  std::int32_t last_ = 0;
  std::set<std::int32_t> open_;
};

}  // namespace orve::adapters::mapi
