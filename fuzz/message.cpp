// The message on the wire, whatever was put into it: sound lines, the headers that it should have and no
// others, and another reader finds in it what the writer was given.
#include <gmime/gmime.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mime/address_list.h"
#include "mime/attachment.h"
#include "mime/header_text.h"
#include "mime/message_writer.h"
#include "orve-mailserver/host/errore.h"
#include "support.h"
#include "text/text.h"

namespace orve::fuzz {
namespace {

using adapters::mime::Address;
using adapters::mime::Message;

constexpr std::string_view kFile("riga\r\n.\r\n--confine\r\n\0\xff", 22);

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using Ref = std::unique_ptr<T, Unref>;

/// The one file that is attached to messages.
const std::string& AttachedFile() {
  static const std::string kPath = [] {
    std::string folder = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    folder += "/orve-fuzz-XXXXXX";
    Require(::mkdtemp(folder.data()) != nullptr, "a folder for the file");
    static const struct Remover {
      std::string folder;
      ~Remover() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
      }
    } kRemover{folder};
    std::ofstream(kRemover.folder + "/allegato.bin", std::ios::binary).write(kFile.data(), kFile.size());
    return kRemover.folder + "/allegato.bin";
  }();
  return kPath;
}

std::string Wire(const Message& message) {
  std::string bytes;
  adapters::mime::WriteMessage(message,
                               [&bytes](std::string_view piece) {
                                 Require(!piece.empty() && piece.size() <= adapters::mime::kPieceBytes,
                                         "pieces are of their size");
                                 bytes.append(piece);
                               },
                               {.dotStuffing = true, .trailer = ".\r\n"});
  return bytes;
}

/// The message as the server keeps it: without the doubled dots and the lone one.
std::string Unstuffed(std::string_view wire, bool ascii) {
  std::string message;
  bool ended = false;
  while (!wire.empty()) {
    Require(!ended, "nothing follows the lone dot");
    const std::size_t end = wire.find("\r\n");
    Require(end != std::string_view::npos, "the last line is ended");
    std::string_view line = wire.substr(0, end);
    wire.remove_prefix(end + 2);
    Require(line.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos,
            "no line end stands alone");
    Require(line.size() <= 998 + 1, "no line is too long");
    Require(!ascii || adapters::mime::IsAscii(line), "every byte is ASCII");
    ended = line == ".";
    if (ended) continue;
    if (line.starts_with('.')) {
      Require(line.starts_with(".."), "a dot in front is doubled");
      line.remove_prefix(1);
    }
    message.append(line).append("\r\n");
  }
  Require(ended, "the lone dot ends the message");
  return message;
}

std::vector<std::string> HeaderNames(const std::string& message) {
  std::vector<std::string> names;
  std::size_t at = 0;
  for (std::size_t end = 0; (end = message.find("\r\n", at)) != std::string::npos && end > at; at = end + 2) {
    if (message[at] == ' ' || message[at] == '\t') continue;
    names.push_back(message.substr(at, std::min(message.find(':', at), end) - at));
  }
  return names;
}

void CheckHeaders(const Message& message, const std::string& received) {
  std::vector<std::string> wanted = {"From"};
  if (!message.to.empty() || message.cc.empty()) wanted.emplace_back("To");
  if (!message.cc.empty()) wanted.emplace_back("Cc");
  for (const char* name : {"Subject", "Date", "Message-ID"}) wanted.emplace_back(name);
  for (const auto& header : message.headers) wanted.push_back(header.name);
  wanted.emplace_back("MIME-Version");
  auto names = HeaderNames(received);
  Require(names.size() > wanted.size(), "the content has its headers");
  for (std::size_t i = wanted.size(); i < names.size(); ++i) {
    Require(names[i].starts_with("Content-"), "after them stand only the content's headers");
  }
  names.resize(wanted.size());
  Require(names == wanted, "the headers are those that the message should have");
}

/// The value of a header with free text, by the rules alone: readers differ in how they join encoded words.
std::string RunningText(const std::string& message, const std::string& name) {
  constexpr std::string_view kWord = "=?utf-8?B?";
  const std::size_t header = ("\r\n" + message).find("\r\n" + name + ": ");
  Require(header != std::string::npos, "the header is there");
  std::string value;
  std::size_t at = header + name.size() + 2;
  for (std::size_t end = 0; (end = message.find("\r\n", at)) != std::string::npos; at = end + 2) {
    value += message.substr(at, end - at);
    if (message.compare(end + 2, 1, " ") != 0) break;
  }
  if (value.find(kWord) == std::string::npos) return value;
  std::string text;
  for (const std::string& word : Parts(value, ' ')) {
    Require(word.starts_with(kWord) && word.ends_with("?=") && word.size() <= 75, "an encoded word is one");
    gsize size = 0;
    guchar* const bytes =
        g_base64_decode(word.substr(kWord.size(), word.size() - kWord.size() - 2).c_str(), &size);
    const std::string decoded(reinterpret_cast<const char*>(bytes), size);
    g_free(bytes);
    Require(adapters::mime::ValidUtf8(decoded) == decoded, "no character is cut by an encoded word");
    text += decoded;
  }
  return text;
}

std::string Shown(const std::string& text) {
  return std::string(text::Trim(adapters::mime::HeaderSafe(text)));
}

std::string ShownName(const std::string& text) {
  return std::string(text::Trim(adapters::mime::NameSafe(text)));
}

std::vector<Address> Mailboxes(InternetAddressList* list) {
  std::vector<Address> all;
  for (int i = 0; list != nullptr && i < internet_address_list_length(list); ++i) {
    InternetAddress* const one = internet_address_list_get_address(list, i);
    if (INTERNET_ADDRESS_IS_MAILBOX(one) == 0) continue;
    const char* const name = internet_address_get_name(one);
    const char* const address = internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(one));
    all.push_back({name == nullptr ? "" : name, address == nullptr ? "" : address});
  }
  return all;
}

/// Addresses that every reader parses alike.
bool Ordinary(const std::string& address) {
  const std::size_t at = address.find('@');
  if (at == 0 || at == std::string::npos || at + 1 == address.size()) return false;
  const auto plain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
  };
  for (std::size_t i = 0; i < address.size(); ++i) {
    const bool dot = address[i] == '.' && i > 0 && i + 1 < address.size() && plain(address[i - 1]) &&
                     plain(address[i + 1]);
    if (i != at && !plain(address[i]) && !dot) return false;
  }
  // The reader turns an encoded domain back into its letters, and one that encodes none into nothing.
  return text::ReplaceIgnoreCase(address, "xn--", "") == address;
}

void CheckRecipients(const std::vector<Address>& given, InternetAddressList* read) {
  const auto found = Mailboxes(read);
  std::vector<Address> wanted;
  bool ordinary = true;
  for (const Address& one : given) {
    wanted.push_back({ShownName(one.name), adapters::mime::ToWire(one.address)->text});
    ordinary = ordinary && Ordinary(wanted.back().address);
  }
  if (!ordinary) return;
  Require(found.size() == wanted.size(), "as many recipients arrive as were named");
  for (std::size_t i = 0; i < found.size(); ++i) {
    RequireSame(found[i].address, wanted[i].address, "a recipient's address arrives");
    // This reader stops at the padding of a word that another one follows.
    const bool severalWords = wanted[i].name.size() > 36 && found[i].name.size() < wanted[i].name.size();
    Require(!severalWords || wanted[i].name.starts_with(found[i].name),
            "a recipient's name begins as it should");
    if (!severalWords) RequireSame(found[i].name, wanted[i].name, "a recipient's name arrives");
  }
}

std::string Content(GMimeObject* object) {
  GMimeDataWrapper* const content = g_mime_part_get_content(GMIME_PART(object));
  const Ref<GMimeStream> stream(g_mime_stream_mem_new());
  if (content != nullptr) g_mime_data_wrapper_write_to_stream(content, stream.get());
  const GByteArray* const bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
  return {reinterpret_cast<const char*>(bytes->data), bytes->len};
}

/// Line ends of any kind as line feeds, and one at the end of what is not empty.
std::string Lines(const std::string& text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    lines.push_back(text[i] == '\r' ? '\n' : text[i]);
  }
  if (!lines.empty() && lines.back() != '\n') lines.push_back('\n');
  return lines;
}

void CheckContent(const Message& message, GMimeMessage* read) {
  GMimeObject* part = g_mime_message_get_mime_part(read);
  Require(part != nullptr, "the message has a content");
  if (!message.attachments.empty()) {
    Require(GMIME_IS_MULTIPART(part) != 0, "a message with a file has parts");
    auto* const parts = GMIME_MULTIPART(part);
    Require(g_mime_multipart_get_count(parts) == 2, "the body and the file");
    GMimeObject* const file = g_mime_multipart_get_part(parts, 1);
    RequireSame(Content(file), kFile, "the file arrives byte by byte");
    const char* const name = g_mime_part_get_filename(GMIME_PART(file));
    const auto& attachment = message.attachments.front();
    RequireSame(name == nullptr ? "" : name,
                adapters::mime::AttachmentName(attachment.name.empty() ? attachment.path : attachment.name),
                "the file's name arrives");
    part = g_mime_multipart_get_part(parts, 0);
  }
  Require(GMIME_IS_PART(part) != 0, "the body is a part");
  RequireSame(Lines(Content(part)), Lines(adapters::mime::ValidUtf8(message.body)), "the body arrives");
  GMimeContentType* const type = g_mime_object_get_content_type(part);
  Require(g_mime_content_type_is_type(type, "text", message.html ? "html" : "plain") != 0, "the body's type");
}

void CheckMessage(const Message& message) {
  bool ascii = true;
  for (const auto* list : {&message.to, &message.cc}) {
    for (const Address& one : *list) ascii = ascii && !adapters::mime::ToWire(one.address)->needsUtf8;
  }
  const std::string received = Unstuffed(Wire(message), ascii);
  CheckHeaders(message, received);
  const Ref<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(received.data(), received.size()));
  const Ref<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
  const Ref<GMimeMessage> read(g_mime_parser_construct_message(parser.get(), nullptr));
  Require(read != nullptr, "another reader takes the message");
  RequireSame(RunningText(received, "Subject"), Shown(message.subject), "the subject arrives");
  CheckRecipients(message.to, g_mime_message_get_addresses(read.get(), GMIME_ADDRESS_TYPE_TO));
  CheckRecipients(message.cc, g_mime_message_get_addresses(read.get(), GMIME_ADDRESS_TYPE_CC));
  CheckRecipients({message.from}, g_mime_message_get_addresses(read.get(), GMIME_ADDRESS_TYPE_FROM));
  CheckContent(message, read.get());
}

/// The mailboxes of a list that a header can carry.
std::vector<Address> Fit(std::string_view list) {
  std::vector<Address> all;
  try {
    all = adapters::mime::ParseAddressList(list);
  } catch (const host::Errore&) {
    return {};
  }
  all.erase(std::remove_if(all.begin(), all.end(),
                           [](const Address& one) { return !adapters::mime::ToWire(one.address); }),
            all.end());
  return all;
}

bool OwnName(const std::string& name) {
  try {
    adapters::mime::RequireOwnHeaderName(name);
    return true;
  } catch (const host::Errore&) {
    return false;
  }
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  static const bool kReady = (g_mime_init(), true);
  Require(kReady, "the reader is there");
  Input input(data, size);
  const unsigned flags = input.Byte();
  Message message;
  message.html = (flags & 1U) != 0;
  message.messageId = "prova@x.example";
  message.date = std::chrono::system_clock::from_time_t(1'700'000'000);
  message.from = {std::string(input.Text()), "ditta@rossi.example"};
  message.to = Fit(input.Text());
  message.cc = Fit(input.Text());
  message.subject = input.Text();
  const std::string name(input.Text());
  const std::string value(input.Text());
  if (OwnName(name)) message.headers.push_back({name, value});
  const std::string shown(input.Text());
  if ((flags & 2U) != 0) message.attachments.emplace_back(AttachedFile(), shown);
  message.body = input.Rest();
  CheckMessage(message);
  return 0;
}
