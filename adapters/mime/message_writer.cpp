#include "mime/message_writer.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <mutex>
#include <string>

#include "host/errore.h"
#include "mime/address_list.h"
#include "mime/attachment.h"
#include "mime/gmime_streams.h"
#include "mime/header_text.h"

namespace orve::adapters::mime {

namespace {

constexpr const char* kCharset = "utf-8";
constexpr std::size_t kLongestLine = 998;

struct FormatFree {
  void operator()(GMimeFormatOptions* options) const { g_mime_format_options_free(options); }
};
struct DateFree {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};

/// The text with each of CR LF, CR and LF as CR LF, valid UTF-8 and closed by a line end unless it is empty.
std::string CanonicalBody(const std::string& body) {
  const std::string text = ValidUtf8(body);
  std::string canonical;
  canonical.reserve(text.size() + text.size() / 32 + 2);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      canonical += text[i];
      continue;
    }
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    canonical += "\r\n";
  }
  if (!canonical.empty() && canonical.back() != '\n') canonical += "\r\n";
  return canonical;
}

/// Plain where lines and characters allow it, base64 where quoted-printable would grow beyond it.
GMimeContentEncoding BodyEncoding(const std::string& canonical) {
  std::size_t escaped = 0;
  std::size_t line = 0;
  std::size_t longest = 0;
  for (const char c : canonical) {
    line = c == '\n' ? 0 : line + 1;
    longest = std::max(longest, line);
    const bool printable = (c >= ' ' && c < 0x7f) || c == '\t' || c == '\r' || c == '\n';
    if (!printable) ++escaped;
  }
  if (escaped == 0 && longest <= kLongestLine) return GMIME_CONTENT_ENCODING_7BIT;
  return escaped * 6 > canonical.size() ? GMIME_CONTENT_ENCODING_BASE64
                                        : GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE;
}

GRef<InternetAddress> NewMailbox(const Address& address) {
  const std::optional<WireAddress> wire = ToWire(address.address);
  if (!wire) {
    throw host::Errore(host::kArgomentoNonValido, "orve-mime",
                       "Indirizzo non valido: \"" + ForDisplay(address.address) + "\"");
  }
  const std::string name = HeaderSafe(address.name);
  GRef<InternetAddress> mailbox(
      internet_address_mailbox_new(name.empty() ? nullptr : name.c_str(), wire->text.c_str()));
  internet_address_set_charset(mailbox.get(), kCharset);
  return mailbox;
}

/// One message on its way from values to GMime's objects.
class Builder {
 public:
  Builder(const Message& message, Failure& failure) : message_(message), failure_(failure) {}

  GRef<GMimeMessage> Build() {
    target_.reset(g_mime_message_new(FALSE));
    AddAddresses(GMIME_ADDRESS_TYPE_FROM, {message_.from});
    AddAddresses(GMIME_ADDRESS_TYPE_TO, message_.to);
    AddAddresses(GMIME_ADDRESS_TYPE_CC, message_.cc);
    if (message_.to.empty() && message_.cc.empty()) SetRaw("To", "undisclosed-recipients:;");
    SetText("Subject", message_.subject);
    AddDateAndId();
    for (const Header& header : message_.headers) AddOwnHeader(header);
    AddContent();
    return std::move(target_);
  }

 private:
  void AddAddresses(GMimeAddressType type, const std::vector<Address>& addresses) {
    if (addresses.empty()) return;
    const GRef<InternetAddressList> list(internet_address_list_new());
    for (const Address& address : addresses) internet_address_list_add(list.get(), NewMailbox(address).get());
    // In one go: GMime writes the header anew after each change of the message's own list.
    internet_address_list_append(g_mime_message_get_addresses(target_.get(), type), list.get());
  }

  void AddDateAndId() {
    const auto instant = message_.date.value_or(std::chrono::system_clock::now());
    const std::unique_ptr<GDateTime, DateFree> date(
        g_date_time_new_from_unix_local(std::chrono::system_clock::to_time_t(instant)));
    if (date) g_mime_message_set_date(target_.get(), date.get());
    std::string id = HeaderSafe(message_.messageId);
    if (id.empty()) {
      const std::string from = ToWire(message_.from.address).value_or(WireAddress{}).text;
      const std::size_t at = from.rfind('@');
      id = NewMessageId(at == std::string::npos ? std::string_view("localhost")
                                                : std::string_view(from).substr(at + 1));
    }
    g_mime_message_set_message_id(target_.get(), id.c_str());
  }

  void AddOwnHeader(const Header& header) {
    RequireOwnHeaderName(header.name);
    const std::string value = HeaderSafe(header.value);
    // A value of addresses keeps the form it was given, brackets and all; its domains become ASCII.
    const std::vector<Address> addresses = IsAscii(value) ? std::vector<Address>{} : ParseAddressList(value);
    const bool bracketed = addresses.size() == 1 && addresses[0].name.empty() && value.front() == '<';
    const std::optional<WireAddress> wire = bracketed ? ToWire(addresses[0].address) : std::nullopt;
    if (wire) {
      SetRaw(header.name, '<' + wire->text + '>');
    } else if (value.size() > 2 && value.front() == '<' && IsAscii(value) &&
               value.find(' ') == std::string::npos && value.size() < kLongestLine - header.name.size() - 2) {
      SetRaw(header.name, value);
    } else {
      SetText(header.name, value);
    }
  }

  /// A header of running text, as encoded words where it is not ASCII.
  void SetText(const std::string& name, const std::string& text) {
    const std::string value = HeaderSafe(text);
    // GMime would take "=?...?=" for an encoded word and leave it, and the reader would see something else.
    if (value.find("=?") != std::string::npos) return SetRaw(name, AsEncodedWords(value));
    g_mime_header_list_append(Headers(), name.c_str(), value.c_str(), kCharset);
  }

  void SetRaw(const std::string& name, const std::string& value) {
    GMimeHeaderList* const headers = Headers();
    g_mime_header_list_append(headers, name.c_str(), "", kCharset);
    GMimeHeader* const header =
        g_mime_header_list_get_header_at(headers, g_mime_header_list_get_count(headers) - 1);
    g_mime_header_set_raw_value(header, (' ' + value + '\n').c_str());
  }

  GMimeHeaderList* Headers() { return g_mime_object_get_header_list(GMIME_OBJECT(target_.get())); }

  void AddContent() {
    const GRef<GMimePart> body = NewBody();
    if (message_.attachments.empty()) {
      g_mime_message_set_mime_part(target_.get(), GMIME_OBJECT(body.get()));
      return;
    }
    const GRef<GMimeMultipart> parts(g_mime_multipart_new_with_subtype("mixed"));
    g_mime_multipart_add(parts.get(), GMIME_OBJECT(body.get()));
    for (const std::string& path : message_.attachments) {
      g_mime_multipart_add(parts.get(), GMIME_OBJECT(NewAttachment(path).get()));
    }
    g_mime_message_set_mime_part(target_.get(), GMIME_OBJECT(parts.get()));
  }

  GRef<GMimePart> NewBody() {
    const std::string text = CanonicalBody(message_.body);
    GRef<GMimePart> part(g_mime_part_new_with_type("text", message_.html ? "html" : "plain"));
    g_mime_object_set_content_type_parameter(GMIME_OBJECT(part.get()), "charset", kCharset);
    g_mime_part_set_content_encoding(part.get(), BodyEncoding(text));
    const GRef<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(text.data(), text.size()));
    SetContent(part.get(), stream.get());
    return part;
  }

  GRef<GMimePart> NewAttachment(const std::string& path) {
    std::string local = LocalPath(path);
    const std::string name = AttachmentName(local);
    const std::string_view type = MediaType(name);
    const std::size_t slash = type.find('/');
    GRef<GMimePart> part(g_mime_part_new_with_type(std::string(type.substr(0, slash)).c_str(),
                                                   std::string(type.substr(slash + 1)).c_str()));
    GMimeObject* const object = GMIME_OBJECT(part.get());
    g_mime_object_set_disposition(object, GMIME_DISPOSITION_ATTACHMENT);
    g_mime_part_set_filename(part.get(), name.c_str());
    SetParameterCharset(
        g_mime_content_disposition_get_parameters(g_mime_object_get_content_disposition(object)), "filename");
    SetParameterCharset(g_mime_content_type_get_parameters(g_mime_object_get_content_type(object)), "name");
    g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
    const GRef<GMimeStream> stream = NewFileStream(std::move(local), failure_);
    SetContent(part.get(), stream.get());
    return part;
  }

  static void SetParameterCharset(GMimeParamList* parameters, const char* name) {
    GMimeParam* const parameter = g_mime_param_list_get_parameter(parameters, name);
    if (parameter != nullptr) g_mime_param_set_charset(parameter, kCharset);
  }

  static void SetContent(GMimePart* part, GMimeStream* stream) {
    const GRef<GMimeDataWrapper> content(
        g_mime_data_wrapper_new_with_stream(stream, GMIME_CONTENT_ENCODING_DEFAULT));
    g_mime_part_set_content(part, content.get());
  }

  const Message& message_;
  Failure& failure_;
  GRef<GMimeMessage> target_;
};

void AddFilter(GMimeStream* chain, GMimeFilter* filter) {
  const GRef<GMimeFilter> owned(filter);
  g_mime_stream_filter_add(GMIME_STREAM_FILTER(chain), filter);
}

}  // namespace

void WriteMessage(const Message& message, const ByteSink& sink, const WriteOptions& options) {
  static std::once_flag initialised;
  std::call_once(initialised, g_mime_init);

  Failure failure;
  const GRef<GMimeMessage> built = Builder(message, failure).Build();
  PieceBuffer buffer(sink, failure);
  const GRef<GMimeStream> end = NewSinkStream(buffer);
  const GRef<GMimeStream> chain(g_mime_stream_filter_new(end.get()));
  AddFilter(chain.get(), g_mime_filter_unix2dos_new(TRUE));
  if (options.dotStuffing) AddFilter(chain.get(), g_mime_filter_smtp_data_new());

  const std::unique_ptr<GMimeFormatOptions, FormatFree> format(g_mime_format_options_new());
  g_mime_format_options_set_newline_format(format.get(), GMIME_NEWLINE_FORMAT_DOS);
  const bool written =
      g_mime_object_write_to_stream(GMIME_OBJECT(built.get()), format.get(), chain.get()) >= 0 &&
      g_mime_stream_flush(chain.get()) == 0;
  if (!written && !failure.error) {
    throw host::Errore(host::kErroreAutomazione, "orve-mime", "Composizione del messaggio non riuscita");
  }
  buffer.Write(options.trailer);
  buffer.Finish();
}

std::string NewMessageId(std::string_view domain) {
  static constexpr std::array<char, 17> kDigits{"0123456789abcdef"};
  std::array<unsigned char, 16> random{};
  if (::getentropy(random.data(), random.size()) != 0) {
    throw host::Errore(host::kErroreAutomazione, "orve-mime", "Il sistema non dà numeri casuali");
  }
  std::string id;
  for (const unsigned char byte : random) {
    id += kDigits[byte >> 4U];
    id += kDigits[byte & 0xfU];
  }
  return id + '@' + std::string(domain);
}

}  // namespace orve::adapters::mime
