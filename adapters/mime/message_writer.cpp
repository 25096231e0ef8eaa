#include "mime/message_writer.h"

#include <gmime/gmime.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "mime/address_list.h"
#include "mime/attachment.h"
#include "mime/base64_lines.h"
#include "mime/file_reader.h"
#include "mime/header_text.h"
#include "mime/header_writer.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::mime {

namespace {

constexpr const char* kCharset = "utf-8";
constexpr std::size_t kLongestLine = 998;

constexpr std::string_view kLineEnd = "\r\n";

struct FormatFree {
  void operator()(GMimeFormatOptions* options) const { g_mime_format_options_free(options); }
};
struct TextFree {
  void operator()(char* text) const { g_free(text); }
};
struct ZoneFree {
  void operator()(GTimeZone* zone) const { g_time_zone_unref(zone); }
};
struct DateFree {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};
struct GObjectUnref {
  void operator()(void* object) const { g_object_unref(object); }
};
/// Owns one reference to a GObject.
template <class T>
using GRef = std::unique_ptr<T, GObjectUnref>;

/// The text with each of CR LF, CR and LF as CR LF, valid UTF-8 and closed by a line end unless it is empty.
std::string CanonicalBody(const std::string& body) {
  const std::string text = ValidUtf8(body);
  std::string canonical;
  canonical.reserve(text.size() + text.size() / 32 + 2);
  std::size_t done = 0;  // everything before it has been copied
  std::size_t cr = text.find('\r');
  std::size_t lf = text.find('\n');
  while (std::min(cr, lf) != std::string::npos) {
    const std::size_t end = std::min(cr, lf);
    canonical.append(text, done, end - done).append(kLineEnd);
    done = end + (end + 1 == lf ? 2 : 1);
    if (cr < done) cr = text.find('\r', done);
    if (lf < done) lf = text.find('\n', done);
  }
  if (done < text.size()) canonical.append(text, done).append(kLineEnd);
  return canonical;
}

enum class BodyEncoding { kPlain, kQuotedPrintable, kBase64 };

bool IsEscaped(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < ' ' && c != '\t' && c != '\r' && c != '\n') || byte >= 0x7f;
}

/// Plain where lines and characters allow it, base64 where quoted-printable would be longer.
BodyEncoding EncodingOf(std::string_view canonical) {
  // Finding that there are none, as in most bodies, is quicker than counting them.
  bool any = false;
  for (const char c : canonical) any |= IsEscaped(c);
  const std::size_t escaped =
      any ? static_cast<std::size_t>(std::count_if(canonical.begin(), canonical.end(), IsEscaped)) : 0;
  std::size_t longest = 0;
  for (std::size_t at = 0, end = 0; (end = canonical.find(kLineEnd, at)) != std::string_view::npos;
       at = end + kLineEnd.size()) {
    longest = std::max(longest, end - at);
  }
  if (escaped == 0 && longest <= kLongestLine) return BodyEncoding::kPlain;
  return escaped * 6 > canonical.size() ? BodyEncoding::kBase64 : BodyEncoding::kQuotedPrintable;
}

/// Each line ended by CR LF.
std::string QuotedPrintable(const std::string& canonical) {
  GMimeEncoding state;
  g_mime_encoding_init_encode(&state, GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
  std::string encoded(g_mime_encoding_outlen(&state, canonical.size()), '\0');
  encoded.resize(g_mime_encoding_flush(&state, canonical.data(), canonical.size(), encoded.data()));
  return text::Replace(encoded, "\n", kLineEnd);
}

std::string Base64(std::string_view bytes) {
  std::string lines;
  Base64Lines encoder;
  encoder.Add(bytes, lines);
  encoder.Finish(lines);
  return lines;
}

/// The body as a part: its header lines, an empty one and the encoded text.
std::string BodyPart(const Message& message) {
  std::string part = message.html ? "Content-Type: text/html" : "Content-Type: text/plain";
  part += "; charset=utf-8\r\nContent-Transfer-Encoding: ";
  const std::string text = CanonicalBody(message.body);
  switch (EncodingOf(text)) {
    case BodyEncoding::kPlain:
      return part.append("7bit\r\n\r\n").append(text);
    case BodyEncoding::kQuotedPrintable:
      return part.append("quoted-printable\r\n\r\n").append(QuotedPrintable(text));
    case BodyEncoding::kBase64:
      return part.append("base64\r\n\r\n").append(Base64(text));
  }
  return part;
}

/// In the program's local time, whose zone may change meanwhile.
std::string DateHeader(std::chrono::system_clock::time_point instant) {
  const std::time_t time = std::chrono::system_clock::to_time_t(instant);
  ::tzset();
  std::tm local{};
  if (::localtime_r(&time, &local) == nullptr) throw host::Errore(host::kArgomentoNonValido);
  const std::unique_ptr<GTimeZone, ZoneFree> zone(
      g_time_zone_new_offset(static_cast<gint32>(local.tm_gmtoff)));
  const std::unique_ptr<GDateTime, DateFree> utc(g_date_time_new_from_unix_utc(time));
  if (!utc) throw host::Errore(host::kArgomentoNonValido);
  const std::unique_ptr<GDateTime, DateFree> date(g_date_time_to_timezone(utc.get(), zone.get()));
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

/// The header lines of one part or several, and the empty line after them.
std::string HeaderLines(GMimeObject* object) {
  const std::unique_ptr<GMimeFormatOptions, FormatFree> format(g_mime_format_options_new());
  g_mime_format_options_set_newline_format(format.get(), GMIME_NEWLINE_FORMAT_DOS);
  const std::unique_ptr<char, TextFree> lines(g_mime_object_get_headers(object, format.get()));
  return lines.get() + std::string(kLineEnd);
}

void SetParameterCharset(GMimeParamList* parameters, const char* name) {
  GMimeParam* const parameter = g_mime_param_list_get_parameter(parameters, name);
  if (parameter != nullptr) g_mime_param_set_charset(parameter, kCharset);
}

std::string AttachmentHeaders(const Attachment& attachment, const std::string& local) {
  const std::string name = AttachmentName(attachment.name.empty() ? local : attachment.name);
  const std::string_view type = MediaType(name);
  const std::size_t slash = type.find('/');
  const GRef<GMimePart> part(g_mime_part_new_with_type(std::string(type.substr(0, slash)).c_str(),
                                                       std::string(type.substr(slash + 1)).c_str()));
  GMimeObject* const object = GMIME_OBJECT(part.get());
  g_mime_object_set_disposition(object, GMIME_DISPOSITION_ATTACHMENT);
  g_mime_part_set_filename(part.get(), name.c_str());
  SetParameterCharset(
      g_mime_content_disposition_get_parameters(g_mime_object_get_content_disposition(object)), "filename");
  SetParameterCharset(g_mime_content_type_get_parameters(g_mime_object_get_content_type(object)), "name");
  g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
  return HeaderLines(object);
}

/// Collects bytes into pieces of kPieceBytes.
class PieceBuffer {
 public:
  explicit PieceBuffer(const ByteSink& sink) : sink_(sink) { pending_.reserve(kPieceBytes); }

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const std::size_t room = std::min(kPieceBytes - pending_.size(), bytes.size());
      pending_.append(bytes.substr(0, room));
      bytes.remove_prefix(room);
      if (pending_.size() == kPieceBytes) Flush();
    }
  }

  /// Hands over what is left.
  void Flush() {
    if (!pending_.empty()) sink_(pending_);
    pending_.clear();
  }

 private:
  const ByteSink& sink_;
  std::string pending_;
};

/// Writes the file as base64, which has no dots.
void WriteFile(const std::string& localPath, const std::string& shown, PieceBuffer& buffer) {
  std::string bytes(std::size_t{48} * 1024, '\0');
  std::string lines;
  Base64Lines encoder;
  FileReader file(localPath, shown);
  while (const std::size_t count = file.Read(bytes.data(), bytes.size())) {
    lines.clear();
    encoder.Add({bytes.data(), count}, lines);
    buffer.Write(lines);
  }
  lines.clear();
  encoder.Finish(lines);
  buffer.Write(lines);
}

}  // namespace

void OutgoingMessage::Prepare() noexcept {
  if (prepared_) return;
  prepared_ = true;
  try {
    Build();
  } catch (...) {
    failure_ = std::current_exception();
  }
}

void OutgoingMessage::Build() {
  static std::once_flag initialised;
  std::call_once(initialised, g_mime_init);

  std::string beginning = HeaderBlock(message_);
  if (!message_.attachments.empty()) {
    const GRef<GMimeMultipart> parts(g_mime_multipart_new_with_subtype("mixed"));
    boundary_ = g_mime_multipart_get_boundary(parts.get());
    beginning += HeaderLines(GMIME_OBJECT(parts.get()));
    beginning.append("--").append(boundary_).append(kLineEnd);
  }
  beginning += BodyPart(message_);
  // The first line never begins with a dot.
  if (options_.dotStuffing) beginning = text::Replace(beginning, "\r\n.", "\r\n..");
  if (message_.attachments.empty()) beginning += options_.trailer;
  beginning_ = std::move(beginning);
}

void OutgoingMessage::WriteTo(const ByteSink& sink) {
  Prepare();
  if (failure_) std::rethrow_exception(failure_);
  if (message_.attachments.empty()) {
    for (std::string_view left = beginning_; !left.empty();) {
      sink(left.substr(0, kPieceBytes));
      left.remove_prefix(std::min(kPieceBytes, left.size()));
    }
    return;
  }
  PieceBuffer buffer(sink);
  buffer.Write(beginning_);
  for (const Attachment& attachment : message_.attachments) {
    const std::string local = LocalPath(attachment.path);
    buffer.Write("\r\n--" + boundary_ + "\r\n" + AttachmentHeaders(attachment, local));
    WriteFile(local, attachment.held ? attachment.name : std::string(), buffer);
  }
  buffer.Write("\r\n--" + boundary_ + "--\r\n");
  buffer.Write(options_.trailer);
  buffer.Flush();
}

void WriteMessage(const Message& message, const ByteSink& sink, const WriteOptions& options) {
  OutgoingMessage(message, options).WriteTo(sink);
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
