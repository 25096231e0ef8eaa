#include "adapters/mapi/posta.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace orve::adapters::mapi {

std::string Posta::Program(const std::string& script, const std::string& name) const {
  std::string path = folder.Write(name, "#!/bin/sh\nD='" + folder.Path().string() + "'\n" + script + "\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

std::shared_ptr<MailSystem> Posta::System(const std::string& sendmail) const {
  MapiOptions options;
  options.sendmail = sendmail;
  options.timeout = std::chrono::seconds(60);
  return std::make_shared<MailSystem>(options);
}

bool Posta::Exists(const std::string& name) const {
  return std::filesystem::exists(File(name));
}

std::vector<std::string> Posta::Arguments() const {
  std::ifstream file(File("argv"));
  std::vector<std::string> arguments;
  for (std::string line; std::getline(file, line);) arguments.push_back(line);
  return arguments;
}

std::vector<std::string> Posta::Recipients() const {
  const std::vector<std::string> arguments = Arguments();
  return {std::find(arguments.begin(), arguments.end(), "--"), arguments.end()};
}

support::ReceivedMessage Posta::Message() const {
  return support::ReadMessage(File("stdin"), folder.Path());
}

Records::Records() {
  message.Subject = "Fattura 12";
  message.NoteText = "Buongiorno,\r\nin allegato la fattura.\r\n";
  Add(kTo, "Mario Bianchi<mario@bianchi.example>");
}

void Records::Add(std::int32_t kind, const std::string& name, const std::string& address) {
  host::MapiRecip& record = recipients.emplace_back();
  record.RecipClass = kind;
  record.Name = name;
  record.Address = address;
  message.RecipCount = static_cast<std::int32_t>(recipients.size());
}

void Records::Attach(const std::string& path, const std::string& name) {
  host::MapiFile& record = files.emplace_back();
  record.PathName = path;
  record.FileName = name;
  record.Position = -1;
  message.FileCount = static_cast<std::int32_t>(files.size());
}

std::int32_t Records::Send(Mapi32& mapi, host::MapiHandle session) {
  return mapi.BMAPISendMail(session, 0, message, recipients, files, 0, 0);
}

Composed::Composed(const std::shared_ptr<MailSystem>& system) : session(system), control(system) {
  session.SignOn();
  control.SessionID(session.SessionID());
  control.Compose();
  Add("SMTP:mario@bianchi.example", "Mario Bianchi", kTo);
  control.MsgNoteText("Buongiorno,\r\nin allegato la fattura.\r\n");
  control.MsgSubject("Fattura 12");
}

void Composed::Add(const std::string& address, const std::string& name, std::int32_t kind) {
  control.RecipIndex(next++);
  control.RecipAddress(address);
  control.RecipDisplayName(name);
  control.RecipType(kind);
}

}  // namespace orve::adapters::mapi
