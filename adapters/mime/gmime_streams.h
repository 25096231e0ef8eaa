// The two ends of GMime's stream chain: a file that opens when it is first read, and a sink of our own.
//
// GMime is C: no exception may pass through it. Both streams keep what went wrong in a shared Failure, after
// which neither moves a byte; the writer raises it when GMime has returned.
#pragma once

#include <gmime/gmime.h>

#include <exception>
#include <memory>
#include <string>

#include "mime/message_writer.h"

namespace orve::adapters::mime {

struct Failure {
  std::exception_ptr error;
};

struct GObjectUnref {
  void operator()(void* object) const { g_object_unref(object); }
};
/// Owns one reference to a GObject.
template <class T>
using GRef = std::unique_ptr<T, GObjectUnref>;

/// Collects what GMime writes into pieces of kPieceBytes for a ByteSink.
class PieceBuffer {
 public:
  PieceBuffer(const ByteSink& sink, Failure& failure) : sink_(sink), failure_(failure) {}

  /// False once anything has failed.
  bool Write(std::string_view bytes) noexcept;
  /// Hands over what is left and raises what failed, if anything did.
  void Finish();

 private:
  const ByteSink& sink_;
  Failure& failure_;
  std::string pending_;
};

/// A stream that writes into `buffer`, which must outlive it.
[[nodiscard]] GRef<GMimeStream> NewSinkStream(PieceBuffer& buffer);

/// A stream that reads the file at `localPath`, opened at the first read and closed at the end. `failure`
/// must outlive it.
[[nodiscard]] GRef<GMimeStream> NewFileStream(std::string localPath, Failure& failure);

}  // namespace orve::adapters::mime
