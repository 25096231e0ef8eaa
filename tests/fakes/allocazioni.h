// Running out of memory at a chosen moment: the only way to make some procedures fail, and the failure that
// every procedure must survive. Also how much memory some work uses, which is the same on a slow machine.
//
// A test program that uses this has the global operator new replaced by one that counts.
#pragma once

#include <cstddef>
#include <functional>

namespace orve::fakes {

/// Runs the statement; its allocation with this number, from 1, fails with std::bad_alloc, and no other one.
/// The test fails when the statement makes fewer.
void ConAllocazioneCheFallisce(int numero, const std::function<void()>& statement);

/// The bytes that this thread allocates in the statement, including those that it frees again.
[[nodiscard]] std::size_t ByteAllocati(const std::function<void()>& statement);

}  // namespace orve::fakes
