// Delivers messages through the SMTP component, a new connection for each, and prints the peak of its
// resident memory in kB. A process of its own, so that time and memory are the component's.
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "smtp/smtp_component.h"

namespace {

using orve::adapters::smtp::SmtpComponent;

/// A body of that many bytes, in lines of 72.
std::string Body(std::size_t bytes) {
  std::string body;
  while (body.size() < bytes) body.append(70, 'x').append("\r\n");
  body.resize(bytes);
  return body;
}

void Deliver(std::uint16_t port, const std::string& body, const std::string& attachment) {
  SmtpComponent component;
  component.ClearRecipient();
  component.ServerAddr("127.0.0.1");
  component.ServerPort(static_cast<std::int16_t>(port));
  component.ConnectType(0);
  component.From("Azienda S.p.A.");
  component.FromAddr("<fatture@azienda.example>");
  component.AddRecipientEx("Ferramenta Bianchi S.r.l. <ordini@bianchi.example>", 0);
  component.Subject("Fattura n. 123 del 14/11/2026");
  component.BodyText(body);
  if (!attachment.empty()) component.AddAttachment(attachment);
  component.SendMail();
  if (component.GetLastError() != orve::host::Variant(-1)) throw std::runtime_error(component.LastFailure());
}

/// VmHWM of this program alone: the peak that the kernel gives for a child counts what its parent held.
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
  if (argc != 4 && argc != 5) {
    std::cerr << "usage: orve-bench-deliver PORT MESSAGES BODY-BYTES [ATTACHMENT]\n";
    return 2;
  }
  const auto port = static_cast<std::uint16_t>(std::stoi(argv[1]));
  const std::string body = Body(std::stoul(argv[3]));
  const std::string attachment = argc == 5 ? argv[4] : "";
  for (unsigned long left = std::stoul(argv[2]); left > 0; --left) Deliver(port, body, attachment);
  std::cout << PeakMemory() << '\n';
  return 0;
} catch (const std::exception& failure) {
  std::cerr << "orve-bench-deliver: " << failure.what() << '\n';
  return 1;
}
