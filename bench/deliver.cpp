// Delivers messages through the SMTP component and prints the peak of its resident memory in kB. A process of
// its own, so that time and memory are the component's.
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "smtp/connection_pool.h"
#include "smtp/smtp_component.h"

namespace {

namespace smtp = orve::adapters::smtp;

constexpr const char* kUsage =
    "usage: orve-bench-deliver [--keep] [--starttls CA] [--tls CA] PORT MESSAGES BODY-BYTES [ATTACHMENT]\n";

struct Job {
  std::uint16_t port = 0;
  unsigned long messages = 0;
  std::string body;
  std::string attachment;  // empty: none
  bool encrypted = false;
  smtp::SmtpOptions options;
  std::shared_ptr<smtp::ConnectionPool> pool;  // empty: a new connection for each message
};

/// A body of that many bytes, in lines of 72.
std::string Body(std::size_t bytes) {
  std::string body;
  while (body.size() < bytes) body.append(70, 'x').append("\r\n");
  body.resize(bytes);
  return body;
}

Job JobOf(int argc, char** argv) {
  Job job;
  int next = 1;
  for (; next < argc && std::string_view(argv[next]).substr(0, 2) == "--"; ++next) {
    const std::string_view option = argv[next];
    if (option == "--keep") {
      job.pool = std::make_shared<smtp::ConnectionPool>();
    } else if ((option == "--tls" || option == "--starttls") && next + 1 < argc) {
      job.encrypted = true;
      job.options.caFile = argv[++next];
      if (option == "--tls") job.options.implicitTlsPorts.clear();
    } else {
      throw std::invalid_argument(kUsage);
    }
  }
  if (argc - next != 3 && argc - next != 4) throw std::invalid_argument(kUsage);
  job.port = static_cast<std::uint16_t>(std::stoi(argv[next]));
  job.messages = std::stoul(argv[next + 1]);
  job.body = Body(std::stoul(argv[next + 2]));
  if (argc - next == 4) job.attachment = argv[next + 3];
  if (job.encrypted && job.options.implicitTlsPorts.empty()) job.options.implicitTlsPorts = {job.port};
  return job;
}

void Deliver(const Job& job) {
  smtp::SmtpComponent component(job.options, job.pool);
  component.ClearRecipient();
  component.ServerAddr("127.0.0.1");
  component.ServerPort(static_cast<std::int16_t>(job.port));
  component.ConnectType(job.encrypted ? 1 : 0);
  component.From("Azienda S.p.A.");
  component.FromAddr("<fatture@azienda.example>");
  component.AddRecipientEx("Ferramenta Bianchi S.r.l. <ordini@bianchi.example>", 0);
  component.Subject("Fattura n. 123 del 14/11/2026");
  component.BodyText(job.body);
  if (!job.attachment.empty()) component.AddAttachment(job.attachment);
  component.SendMail();
  if (component.GetLastError() != orve::host::Variant(-1)) throw std::runtime_error(component.Fine().motivo);
}

/// VmHWM of this program alone: the peak that the kernel reports for a child includes what its parent held.
std::string PeakMemory() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.compare(0, 6, "VmHWM:") == 0) return line.substr(6);
  }
  throw std::runtime_error("no VmHWM in /proc/self/status");
}

}  // namespace

int main(int argc, char** argv) try {
  const Job job = JobOf(argc, argv);
  for (unsigned long left = job.messages; left > 0; --left) Deliver(job);
  std::cout << PeakMemory() << '\n';
  return 0;
} catch (const std::invalid_argument&) {
  std::cerr << kUsage;
  return 2;
} catch (const std::exception& failure) {
  std::cerr << "orve-bench-deliver: " << failure.what() << '\n';
  return 1;
}
