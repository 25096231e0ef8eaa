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
#include "mime/header_writer.h"
#include "text/text.h"

namespace orve::adapters::mime {

namespace {

constexpr const char* kCharset = "utf-8";
constexpr std::size_t kLongestLine = 998;

struct FormatFree {
  void operator()(GMimeFormatOptions* options) const { g_mime_format_options_free(options); }
};
struct TextFree {
  void operator()(char* text) const { g_free(text); }
};
struct DateFree {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};

/// The text with each of CR LF, CR and LF as CR LF, valid UTF-8 and closed by a line end unless it is empty.
std::string CanonicalBody(const std::string& body) {
  const std::string text = ValidUtf8(body);
  std::string canonical;
  canonical.reserve(text.size() + text.size() / 32 + 2);
  std::size_t done = 0;  // what stands before it is copied
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') continue;
    canonical.append(text, done, i - done).append("\r\n");
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    done = i + 1;
  }
  if (done < text.size()) canonical.append(text, done).append("\r\n");
  return canonical;
}

/// Plain where lines and characters allow it, base64 where quoted-printable would grow beyond it.
GMimeContentEncoding BodyEncoding(const std::string& canonical) {
  std::size_t escaped = 0;
  std::size_t line = 0;
  std::size_t longest = 0;
  for (const char c : canonical) {
    if (c == '\n') line = 0;
    if (c != '\n' && c != '\r') ++line;
    longest = std::max(longest, line);
    const bool printable = (c >= ' ' && c < 0x7f) || c == '\t' || c == '\r' || c == '\n';
    if (!printable) ++escaped;
  }
  if (escaped == 0 && longest <= kLongestLine) return GMIME_CONTENT_ENCODING_7BIT;
  return escaped * 6 > canonical.size() ? GMIME_CONTENT_ENCODING_BASE64
                                        : GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE;
}

std::string DateHeader(std::chrono::system_clock::time_point instant) {
  const std::unique_ptr<GDateTime, DateFree> date(
      g_date_time_new_from_unix_local(std::chrono::system_clock::to_time_t(instant)));
  if (!date) throw host::Errore(host::kArgomentoNonValido);
  const std::unique_ptr<char, TextFree> text(g_mime_utils_header_format_date(date.get()));
  return TextHeader("Date", text.get());
}

/// Everything before the header lines of the content.
std::string HeaderBlock(const Message& message) {
  const bool anonymous = message.from.address.empty() && message.from.name.empty();
  const std::optional<WireAddress> from = ToWire(message.from.address);
  std::string block = anonymous ? std::string() : AddressHeader("From", {message.from});
  if (!message.to.empty()) block += AddressHeader("To", message.to);
  if (!message.cc.empty()) block += AddressHeader("Cc", message.cc);
  if (message.to.empty() && message.cc.empty()) block += "To: undisclosed-recipients:;\r\n";
  block += TextHeader("Subject", message.subject);
  block += DateHeader(message.date.value_or(std::chrono::system_clock::now()));
  std::string id = HeaderSafe(message.messageId);
  if (id.empty()) {
    const std::string sender = from ? from->text : std::string();
    const std::size_t at = sender.rfind('@');
    id = NewMessageId(at == std::string::npos ? "localhost" : sender.substr(at + 1));
  }
  block += TextHeader("Message-ID", '<' + id + '>');
  for (const Header& header : message.headers) block += OwnHeader(header, from && from->needsUtf8);
  return block + "MIME-Version: 1.0\r\n";
}

/// The content of a message as GMime's objects.
class ContentBuilder {
 public:
  ContentBuilder(const Message& message, Failure& failure) : message_(message), failure_(failure) {}

  GRef<GMimeObject> Build() {
    GRef<GMimePart> body = NewBody();
    if (message_.attachments.empty()) return GRef<GMimeObject>(GMIME_OBJECT(body.release()));
    GRef<GMimeMultipart> parts(g_mime_multipart_new_with_subtype("mixed"));
    g_mime_multipart_add(parts.get(), GMIME_OBJECT(body.get()));
    for (const Attachment& attachment : message_.attachments) {
      g_mime_multipart_add(parts.get(), GMIME_OBJECT(NewAttachment(attachment).get()));
    }
    return GRef<GMimeObject>(GMIME_OBJECT(parts.release()));
  }

 private:
  GRef<GMimePart> NewBody() {
    const std::string text = CanonicalBody(message_.body);
    GRef<GMimePart> part(g_mime_part_new_with_type("text", message_.html ? "html" : "plain"));
    g_mime_object_set_content_type_parameter(GMIME_OBJECT(part.get()), "charset", kCharset);
    g_mime_part_set_content_encoding(part.get(), BodyEncoding(text));
    const GRef<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(text.data(), text.size()));
    SetContent(part.get(), stream.get());
    return part;
  }

  GRef<GMimePart> NewAttachment(const Attachment& attachment) {
    std::string local = LocalPath(attachment.path);
    const std::string name = AttachmentName(attachment.name.empty() ? local : attachment.name);
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
  std::string headers = HeaderBlock(message);
  // A header of the caller's own may begin with a dot; the first line never does.
  if (options.dotStuffing) headers = text::Replace(headers, "\r\n.", "\r\n..");
  const GRef<GMimeObject> content = ContentBuilder(message, failure).Build();
  PieceBuffer buffer(sink, failure);
  const GRef<GMimeStream> end = NewSinkStream(buffer);
  const GRef<GMimeStream> chain(g_mime_stream_filter_new(end.get()));
  AddFilter(chain.get(), g_mime_filter_unix2dos_new(TRUE));
  if (options.dotStuffing) AddFilter(chain.get(), g_mime_filter_smtp_data_new());

  const std::unique_ptr<GMimeFormatOptions, FormatFree> format(g_mime_format_options_new());
  g_mime_format_options_set_newline_format(format.get(), GMIME_NEWLINE_FORMAT_DOS);
  buffer.Write(headers);
  const bool written = g_mime_object_write_to_stream(content.get(), format.get(), chain.get()) >= 0 &&
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
