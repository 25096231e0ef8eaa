// Sends many messages through the whole library, one after the other, and prints what the library said about
// each: a service object for each message, the register and the events in the embedded database, connections
// kept.
//
// scripts/soak compares that with what the server says about the same messages.
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "orve-mail/host/spedizione.h"
#include "orve-mailserver/posix/percorsi.h"

namespace {

namespace fs = std::filesystem;

// Each of these waits is one of the faults.
constexpr std::chrono::milliseconds kPatience{1500};

orve::app::RichiestaInvio Message(const std::string& database, std::size_t number,
                                  const std::string& attachment) {
  orve::app::RichiestaInvio message;
  message.archivio.db = database;
  message.utente.utente = "1";
  message.ditta = "1";
  const std::string text = std::to_string(number);
  message.destinatari = {{{"Cliente " + text, "m" + text + "@soak.example"}, 0}};
  message.oggetto = "Fattura n. " + text;
  message.corpo = "Buongiorno,\r\nin allegato la fattura n. " + text + ".\r\n";
  message.modo = orve::kvAutomatico;
  if (number % 5 == 0) message.allegati = {orve::adapters::posix::PercorsoLibreriaAssoluto(attachment)};
  message.smtp.connectTimeout = 2 * kPatience;
  message.smtp.replyTimeout = kPatience;
  message.smtp.finalReplyTimeout = kPatience;
  message.smtp.stallTimeout = kPatience;
  message.smtp.ehloName = "soak.example";
  return message;
}

const char* Outcome(const orve::app::Resoconto& account) {
  if (account.note.Consegnato()) return "sent";
  return account.note.Incerto() ? "uncertain" : "failed";
}

/// Resident pages of this process in kB.
long Resident() {
  std::ifstream file("/proc/self/statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

long Descriptors() {
  const fs::directory_iterator open("/proc/self/fd");
  return std::distance(begin(open), end(open));
}

void Report(const char* when) {
  std::cout << when << ' ' << Resident() << " kB " << Descriptors() << " descriptors" << std::endl;
}

void Send(const std::string& database, std::size_t messages, const std::string& attachment,
          std::ostream& outcomes) {
  const orve::app::RichiestaInvio first = Message(database, 0, attachment);
  const orve::app::SedeInvio place(first);
  for (std::size_t number = 1; number <= messages; ++number) {
    std::istringstream nobody;
    std::ostringstream shown;
    const auto account = Consegna(Message(database, number, attachment), place, {nobody, shown, shown});
    outcomes << number << ' ' << Outcome(account) << '\n';
    if (number == messages / 4) Report("quarter");
    if (number == messages) Report("whole");
  }
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 5) {
    std::cerr << "usage: orve-soak DATABASE MESSAGES ATTACHMENT OUTCOMES\n";
    return 2;
  }
  std::ofstream outcomes(argv[4]);
  // The first send opens what stays open for good: libraries, locale, certificates.
  Send(argv[1], 0, argv[3], outcomes);
  Report("start");
  Send(argv[1], std::stoul(argv[2]), argv[3], outcomes);
  Report("end");
  outcomes.close();
  return outcomes ? 0 : 1;
} catch (const std::exception& failure) {
  std::cerr << "orve-soak: " << failure.what() << '\n';
  return 1;
}
