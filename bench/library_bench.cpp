// The library's own work, and the delivery that it is compared with.
//
// A send or delivery that does not do all that it should ends its benchmark with an error: speed without the
// work is worth nothing.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "message_copy.h"
#include "null_objects.h"
#include "sample_send.h"
#include "smtp/smtp_component.h"

namespace orve::bench {

namespace {

// One send of the invoice with everything outside doing nothing.
void OwnWork(benchmark::State& state, const std::string& attachment) {
  const auto ambiente = std::make_shared<NullAmbiente>();
  try {
    for (auto _ : state) SendInvoice(ambiente, attachment);
  } catch (const std::exception& failure) {
    state.SkipWithError(failure.what());
  }
}

std::shared_ptr<MessageCopy> CopyOfInvoice(const std::string& attachment) {
  const auto ambiente = std::make_shared<NullAmbiente>();
  auto copy = std::make_shared<MessageCopy>();
  ambiente->UseSmtp([&copy, &ambiente] {
    ++ambiente->Counted().messages;
    return copy;
  });
  SendInvoice(ambiente, attachment);
  return copy;
}

// The message of that send, built and delivered by the SMTP component.
void Delivery(benchmark::State& state, std::uint16_t port, const std::string& attachment) {
  try {
    const auto message = CopyOfInvoice(attachment);
    for (auto _ : state) {
      adapters::smtp::SmtpComponent component;
      message->HandTo(component);
      component.ServerAddr("127.0.0.1");
      component.ServerPort(static_cast<std::int16_t>(port));
      component.SendMail();
      if (component.GetLastError() != host::Variant(-1)) throw std::runtime_error(component.Fine().motivo);
    }
  } catch (const std::exception& failure) {
    state.SkipWithError(failure.what());
  }
}

// One send to a list; the time is that of AvviaProceduraInvio alone.
void SendToList(benchmark::State& state) {
  const auto recipients = static_cast<std::size_t>(state.range(0));
  const auto ambiente = std::make_shared<NullAmbiente>();
  try {
    for (auto _ : state) {
      const auto service = ServiceForList(ambiente, recipients);
      const auto start = std::chrono::steady_clock::now();
      service->AvviaProceduraInvio();
      state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
      CheckListSent(*service, *ambiente, recipients);
    }
  } catch (const std::exception& failure) {
    state.SkipWithError(failure.what());
  }
}

}  // namespace

}  // namespace orve::bench

// Arguments, after those of the benchmark library: port of a server on loopback, file to attach.
int main(int argc, char** argv) {
  namespace bench = orve::bench;
  benchmark::Initialize(&argc, argv);
  if (argc != 3) {
    std::cerr << "usage: orve-bench [--benchmark_...] PORT ATTACHMENT\n";
    return 2;
  }
  const auto port = static_cast<std::uint16_t>(std::stoi(argv[1]));
  const std::string attachment = argv[2];
  benchmark::RegisterBenchmark("OwnWork", bench::OwnWork, attachment)->UseRealTime();
  benchmark::RegisterBenchmark("Delivery", bench::Delivery, port, attachment)->UseRealTime();
  benchmark::RegisterBenchmark("SendToList", bench::SendToList)->Arg(300)->Arg(30'000)->UseManualTime();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
