#include "fakes/allocazioni.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local int mancano = 0;  // allocations up to the one that fails; 0 when none is to fail
thread_local std::size_t allocati = 0;

bool Fallisce(std::size_t misura) noexcept {
  allocati += misura;
  return mancano > 0 && --mancano == 0;
}

}  // namespace

// The array forms and those for aligned objects keep their own pairs.

void* operator new(std::size_t misura) {
  void* const memoria = Fallisce(misura) ? nullptr : std::malloc(misura > 0 ? misura : 1);
  if (memoria == nullptr) throw std::bad_alloc();
  return memoria;
}
void* operator new(std::size_t misura, const std::nothrow_t& /*senza*/) noexcept {
  return Fallisce(misura) ? nullptr : std::malloc(misura > 0 ? misura : 1);
}
void operator delete(void* memoria) noexcept {
  std::free(memoria);
}
void operator delete(void* memoria, std::size_t /*misura*/) noexcept {
  std::free(memoria);
}
void operator delete(void* memoria, const std::nothrow_t& /*senza*/) noexcept {
  std::free(memoria);
}

namespace orve::fakes {

void ConAllocazioneCheFallisce(int numero, const std::function<void()>& statement) {
  mancano = numero;
  try {
    statement();
  } catch (...) {
    mancano = 0;
    throw;
  }
  EXPECT_EQ(mancano, 0) << "the statement made fewer allocations";
  mancano = 0;
}

std::size_t ByteAllocati(const std::function<void()>& statement) {
  const std::size_t prima = allocati;
  statement();
  return allocati - prima;
}

}  // namespace orve::fakes
