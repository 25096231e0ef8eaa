#include "support/smtp_server.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "places.h"

namespace orve::support {

namespace {

std::vector<std::string> Command(const SmtpServerOptions& options, const std::filesystem::path& directory) {
  std::vector<std::string> command = {"/usr/bin/python3", "-Xutf8",
                                      places::Source("tests/support/smtp_server.py"),
                                      "--directory=" + directory.string(), "--tls=" + options.tls};
  const auto add = [&](const std::string& name, const std::string& value) {
    if (!value.empty()) command.push_back(name + '=' + value);
  };
  const auto flag = [&](const std::string& name, bool set) {
    if (set) command.push_back(name);
  };
  add("--certificate", options.certificate.string());
  add("--key", options.key.string());
  flag("--require-tls", options.requireTls);
  std::string mechanisms;
  for (const std::string& mechanism : options.auth) mechanisms += (mechanisms.empty() ? "" : ",") + mechanism;
  add("--auth", mechanisms);
  add("--user", options.user);
  add("--password", options.password);
  flag("--require-auth", options.requireAuth);
  for (const std::string& address : options.refused) add("--refuse", address);
  for (const std::string& word : options.extensions) add("--extension", word);
  flag("--smtputf8", options.smtpUtf8);
  flag("--low-port", options.lowPort);
  add("--size-limit", std::to_string(options.sizeLimit));
  add("--abort-after", std::to_string(options.abortAfter));
  add("--hold-before", std::to_string(options.holdBefore));
  add("--hold-after", std::to_string(options.holdAfter));
  flag("--close-at-data", options.closeAtData);
  return command;
}

void ReadEnvelope(const std::filesystem::path& file, ReceivedMessage& message) {
  std::istringstream lines(ReadFile(file));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blank = line.find(' ');
    const std::string key = line.substr(0, blank);
    const std::string value = line.substr(blank + 1);
    if (key == "from") message.sender = value;
    if (key == "to") message.recipients.push_back(value);
    if (key == "mail-options") message.mailOptions = value;
    if (key == "rcpt-options") message.recipientOptions.push_back(value);
    if (key == "helo") message.hello = value;
    if (key == "user") message.user = value;
    if (key == "port") message.clientPort = std::stoi(value);
    if (key == "tls") message.encrypted = value == "yes";
  }
}

std::vector<std::filesystem::path> Envelopes(const std::filesystem::path& directory) {
  std::vector<std::filesystem::path> found;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    if (entry.path().extension() == ".env") found.push_back(entry.path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace

SmtpServer::SmtpServer(const SmtpServerOptions& options)
    : process_(std::make_unique<Process>(Command(options, directory_.Path()))) {
  port_ = std::stoi(process_->WaitForLine("READY ").substr(6));
}

std::size_t SmtpServer::Count() const {
  return Envelopes(Directory()).size();
}

std::vector<std::string> SmtpServer::Recipients() const {
  std::vector<std::string> recipients;
  for (const std::filesystem::path& envelope : Envelopes(Directory())) {
    ReceivedMessage message;
    ReadEnvelope(envelope, message);
    recipients.insert(recipients.end(), message.recipients.begin(), message.recipients.end());
  }
  return recipients;
}

bool SmtpServer::Holds() const {
  return std::filesystem::exists(Directory() / "held");
}

void SmtpServer::Release() const {
  std::ofstream(Directory() / "release").flush();
}

void SmtpServer::DropConnections() const {
  const std::filesystem::path done = Directory() / "dropped";
  ::kill(process_->Pid(), SIGUSR1);
  const auto deadline = std::chrono::steady_clock::now() + kLongestRun;
  while (!std::filesystem::remove(done)) {
    if (std::chrono::steady_clock::now() >= deadline) {
      throw std::runtime_error("the connections were not closed");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

std::vector<ReceivedMessage> SmtpServer::Messages() const {
  std::vector<ReceivedMessage> messages;
  for (const std::filesystem::path& envelope : Envelopes(Directory())) {
    const std::filesystem::path parts = Directory() / envelope.stem();
    std::filesystem::create_directory(parts);
    std::filesystem::path file = envelope;
    messages.push_back(ReadMessage(file.replace_extension(".eml"), parts));
    ReadEnvelope(envelope, messages.back());
  }
  return messages;
}

ReceivedMessage SmtpServer::OnlyMessage() const {
  std::vector<ReceivedMessage> messages = Messages();
  if (messages.size() != 1) throw std::runtime_error("messages received: " + std::to_string(messages.size()));
  return std::move(messages.front());
}

}  // namespace orve::support
