// How the parts of the SMTP component tell each other that a delivery failed.
#pragma once

#include <stdexcept>
#include <string>

namespace orve::adapters::smtp {

/// The component's error numbers. The application knows a text for each from 0 to 7.
enum class ErrorNumber {
  kNone = -1,
  kConnection = 0,      // no connection, no encryption, no greeting
  kHello = 1,           // EHLO and HELO
  kAuthentication = 2,  // credentials refused, or no mechanism that the server accepts
  kSender = 3,
  kRecipients = 4,
  kData = 5,  // DATA, the message, its end
  kReset = 6,
  kDns = 7,
  kNothingSent = 8,  // no submission has taken place
};

/// A delivery that ended: the number for the application and a text for the trace, without secrets.
class DeliveryFailure : public std::runtime_error {
 public:
  /// `undecided`: the server may have the whole message, but its answer never came.
  DeliveryFailure(ErrorNumber number, const std::string& text, bool undecided = false)
      : std::runtime_error(text), number_(number), undecided_(undecided) {}
  [[nodiscard]] ErrorNumber Number() const noexcept { return number_; }
  [[nodiscard]] bool Undecided() const noexcept { return undecided_; }

 private:
  ErrorNumber number_;
  bool undecided_;
};

/// The connection broke, stalled or does not carry SMTP. The code that runs the dialogue knows which number
/// that means.
class BrokenConnection : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orve::adapters::smtp
