// The published error numbers of the MAPI library, and the exception that carries one through this adapter.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace orve::adapters::mapi {

enum ErrorNumber : std::int32_t {
  kSuccess = 0,
  kFailure = 2,
  kLoginFailure = 3,
  kDiskFull = 4,
  kInsufficientMemory = 5,
  kAccessDenied = 6,
  kTooManyRecipients = 10,
  kAttachmentNotFound = 11,
  kAttachmentOpenFailure = 12,
  kUnknownRecipient = 14,
  kBadRecipientType = 15,
  kInvalidMessage = 17,
  kInvalidSession = 19,
  kNetworkFailure = 23,
  kInvalidRecipients = 25,
  kNotSupported = 26,
};

// Numbers that only the controls know. A control raises each number, those above too, added to kControlBase.
enum ControlErrorNumber : std::int32_t {
  kSessionExists = 50,
  kNoSession = 53,
  kNoRecipients = 57,
};
inline constexpr std::int32_t kControlBase = 32000;

/// What ended a delivery: the number for the caller and a text for the person.
class MapiFailure : public std::runtime_error {
 public:
  /// `mayHaveArrived`: the mail system may have taken the message all the same.
  MapiFailure(std::int32_t number, const std::string& text, bool mayHaveArrived = false)
      : std::runtime_error(text), number_(number), mayHaveArrived_(mayHaveArrived) {}
  [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
  [[nodiscard]] bool MayHaveArrived() const noexcept { return mayHaveArrived_; }

 private:
  std::int32_t number_;
  bool mayHaveArrived_;
};

/// The exception in flight as a MapiFailure; call it in a catch block only. A missing file is 11, one that
/// cannot be read 12, an address that no header can carry 25, exhausted memory 5, and anything else 2.
[[nodiscard]] MapiFailure CurrentFailure();

/// The number for an exit status of the sendmail command (sysexits.h), which is not 0.
[[nodiscard]] std::int32_t NumberOfExitStatus(int status);

}  // namespace orve::adapters::mapi
