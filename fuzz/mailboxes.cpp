// The lists of recipients that the channels hand to a component: whatever a name holds, no address gets a
// line end and none is lost of a list that can be read in one way only.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/errore.h"
#include "mime/address_list.h"
#include "mime/header_text.h"
#include "mime/header_writer.h"
#include "support.h"

namespace orve::fuzz {
namespace {

using adapters::mime::Address;
using adapters::mime::AsciiDomain;
using adapters::mime::BareAddress;
using adapters::mime::MailboxKey;
using adapters::mime::ParseAddressList;
using adapters::mime::ToWire;

constexpr std::string_view kNeverInAddresses("\r\n\0", 3);

bool Held(std::string_view text, std::string_view bytes) {
  return text.find_first_of(bytes) != std::string_view::npos;
}

void CheckWire(const std::string& address) {
  const auto wire = ToWire(address);
  if (!wire) return;
  Require(wire->text.size() <= 254, "an address is no longer than a path");
  for (const char c : wire->text) {
    const auto byte = static_cast<unsigned char>(c);
    Require(byte >= 0x20 && byte != 0x7f, "no control character goes into a command");
  }
  const std::size_t at = wire->text.rfind('@');
  const std::string local = wire->text.substr(0, at);
  Require(local.front() == '"' || !Held(local, " <>"), "nothing unquoted ends an address early");
  if (at != std::string::npos) {
    const std::string domain = wire->text.substr(at + 1);
    Require(adapters::mime::IsAscii(domain), "the domain is ASCII");
    Require(!Held(domain, " <>"), "nothing in a domain ends an address early");
  }
  Require(wire->needsUtf8 == !adapters::mime::IsAscii(wire->text), "what is not ASCII says so");
  const auto again = ToWire(wire->text);
  Require(again.has_value() && again->text == wire->text, "the wire form is its own wire form");
  Require(MailboxKey(wire->text) == MailboxKey(again->text), "one mailbox has one key");
}

void CheckHeader(const std::vector<Address>& addresses) {
  for (const Address& address : addresses) {
    if (!ToWire(address.address)) return;
  }
  if (addresses.empty()) return;
  const std::string header = adapters::mime::AddressHeader("To", addresses);
  Require(header.ends_with("\r\n"), "a header ends its line");
  std::size_t start = 0;
  for (std::size_t end = 0; (end = header.find("\r\n", start)) != std::string::npos; start = end + 2) {
    const std::string_view line = std::string_view(header).substr(start, end - start);
    Require(!Held(line, kNeverInAddresses), "no line end stands alone in a header");
    Require(line.size() <= 998, "a header's line is not too long");
    Require(start == 0 || line.front() == ' ', "no text makes a header of its own");
    Require(line.find_first_not_of(' ') != std::string_view::npos, "no line of a header is blank");
  }
}

void CheckList(std::string_view list) {
  const Exact exact(list);
  std::vector<Address> addresses;
  try {
    addresses = ParseAddressList(exact.View());
  } catch (const host::Errore& error) {
    Require(error.Numero() == host::kArgomentoNonValido, "an address that cannot be is refused as such");
    Require(Held(list, kNeverInAddresses), "only line ends and NUL are refused");
    return;
  }
  std::size_t bytes = 0;
  for (const Address& address : addresses) {
    Require(!address.address.empty(), "no address is empty");
    Require(!Held(address.address, kNeverInAddresses), "no address holds a line end");
    bytes += address.address.size() + address.name.size();
    CheckWire(address.address);
  }
  Require(bytes <= list.size(), "no byte is read twice");
  CheckHeader(addresses);
}

/// A text without what has a meaning in a list, and without blanks at its ends.
std::string Plain(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) > ' ' && !Held("<>;\"\\@,", {&c, 1})) plain.push_back(c);
  }
  return plain;
}

/// Entries as the channels write them, of names and addresses that can be mistaken for nothing else.
void CheckRoundTrip(std::string_view text) {
  std::vector<Address> wanted;
  std::string list;
  const auto words = Parts(text, ' ');
  for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
    const Address address{Plain(words[i]), Plain(words[i + 1]) + "@x.example"};
    if (!list.empty()) list += ';';
    list += address.name + " <" + address.address + ">";
    wanted.push_back(address);
  }
  Require(ParseAddressList(list) == wanted, "entries written are read as they were");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CheckList(text);
  CheckRoundTrip(text);
  try {
    CheckWire(BareAddress(text));
  } catch (const orve::host::Errore&) {
    Require(Held(text, kNeverInAddresses), "only line ends and NUL are refused");
  }
  const auto domain = AsciiDomain(text);
  Require(!domain || orve::adapters::mime::IsAscii(*domain), "a domain's ASCII form is ASCII");
  return 0;
}
