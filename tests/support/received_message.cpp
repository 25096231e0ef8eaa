#include "support/received_message.h"

#include <strings.h>

#include <ostream>
#include <sstream>
#include <stdexcept>

#include "places.h"
#include "support/process.h"

namespace orve::support {

namespace {

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields(1);
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\t') {
      fields.emplace_back();
    } else if (line[i] == '\\' && i + 1 < line.size()) {
      const char code = line[++i];
      fields.back() += code == 't' ? '\t' : code == 'n' ? '\n' : code == 'r' ? '\r' : code;
    } else {
      fields.back() += line[i];
    }
  }
  fields.resize(4);
  return fields;
}

void Take(ReceivedMessage& message, const std::vector<std::string>& fields) {
  const std::string& key = fields[0];
  if (key == "header") message.headers.emplace_back(fields[1], fields[2]);
  if (key == "from") message.from.push_back({fields[1], fields[2]});
  if (key == "to") message.to.push_back({fields[1], fields[2]});
  if (key == "cc") message.cc.push_back({fields[1], fields[2]});
  if (key == "subject") message.subject = fields[1];
  if (key == "date") {
    message.date = std::stoll(fields[1]);
    message.zone = fields[2];
  }
  if (key == "type") {
    message.bodyType = fields[1];
    message.bodyCharset = fields[2];
  }
  if (key == "body") message.body = fields[1];
  if (key == "attachment") message.attachments.push_back({fields[1], fields[2], fields[3]});
  if (key == "defect") message.defects.push_back(fields[1]);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Mailbox& mailbox) {
  return out << mailbox.name << " <" << mailbox.address << '>';
}

std::string ReceivedMessage::Header(const std::string& name) const {
  for (const auto& [own, value] : headers) {
    if (::strcasecmp(own.c_str(), name.c_str()) == 0) return value;
  }
  return {};
}

ReceivedMessage ReadMessage(const std::filesystem::path& file, const std::filesystem::path& directory) {
  const ProcessResult result =
      RunProgram({"/usr/bin/python3", "-Xutf8", places::Source("tests/support/parse_mail.py"), file.string(),
                  directory.string()});
  if (result.status != 0) throw std::runtime_error("parse_mail.py: " + result.output);
  ReceivedMessage message;
  message.file = file;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) Take(message, Fields(line));
  return message;
}

}  // namespace orve::support
