// The lists of recipients that the channels hand to a component: whatever a name holds, no address gets a
// line end and none is lost from a list that can only be read one way.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addressing/address_list.h"
#include "channels/account_channel.h"
#include "mime/address_list.h"
#include "mime/header_text.h"
#include "mime/header_writer.h"
#include "orve-mailserver/host/errore.h"
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

/// The text without control characters and the given ones.
std::string Without(std::string_view text, std::string_view characters) {
  std::string rest;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= ' ' && !Held({&c, 1}, characters)) rest.push_back(c);
  }
  return rest;
}

/// A name as people type them: with commas, quotes and brackets, but nothing that could as well be the end of
/// its entry or a quoted address.
std::string Name(std::string_view text) {
  const std::string name = Without(text, Held(text, "<>") ? ";\\@" : ";\\");
  if (name.find("<\"") != std::string::npos) return {};
  const std::size_t first = name.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return name.substr(first, name.find_last_not_of(' ') - first + 1);
}

/// The entries that the SMTP channel writes come back, the last one even with an unknown box: then there is
/// no ";" between it and the previous one.
void CheckRoundTrip(std::string_view text) {
  std::vector<Address> wanted;
  std::string list;
  const auto pieces = Parts(text, '\n');
  for (std::size_t i = 0; i + 1 < pieces.size(); i += 2) {
    Address entry{Name(pieces[i]), Without(pieces[i + 1], " <>;\"\\@,") + "@x.example"};
    const bool opensPlainly = QuotaNome(entry.name).find_first_of("\",") != 0;
    const bool unknownBox = i + 3 >= pieces.size() && opensPlainly;
    if (unknownBox) {
      AccodaVoce(list, QuotaNome(entry.name), entry.address, kAperturaConBianco);
      list += ';';
    } else {
      AccodaVoceSeparata(list, QuotaNome(entry.name), entry.address, kAperturaConBianco);
    }
    wanted.push_back(std::move(entry));
  }
  const std::vector<Address> read = ParseAddressList(list);
  Require(read.size() == wanted.size(), "every entry is read, and nothing else");
  for (std::size_t i = 0; i < read.size(); ++i) {
    RequireSame(read[i].address, wanted[i].address, "the address is what was written");
    // Quotes round a name may be the channel's or the name's own.
    const std::string& name = wanted[i].name;
    if (!name.starts_with('"')) RequireSame(read[i].name, name, "the name is what was written");
  }
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
