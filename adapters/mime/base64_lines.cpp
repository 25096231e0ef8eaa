#include "mime/base64_lines.h"

#include <gmime/gmime.h>

namespace orve::adapters::mime {

namespace {

/// Appends lines that end with LF alone.
void AppendLines(std::string_view lines, std::string& out) {
  for (std::size_t end = 0; (end = lines.find('\n')) != std::string_view::npos;
       lines.remove_prefix(end + 1)) {
    out.append(lines.substr(0, end)).append("\r\n");
  }
  out.append(lines);
}

}  // namespace

struct Base64Lines::Encoder {
  GMimeEncoding state{};
  std::string encoded;
};

Base64Lines::Base64Lines() : encoder_(std::make_unique<Encoder>()) {
  g_mime_encoding_init_encode(&encoder_->state, GMIME_CONTENT_ENCODING_BASE64);
}

Base64Lines::~Base64Lines() = default;

void Base64Lines::Add(std::string_view bytes, std::string& out) {
  auto& [state, encoded] = *encoder_;
  encoded.resize(g_mime_encoding_outlen(&state, bytes.size()));
  encoded.resize(g_mime_encoding_step(&state, bytes.data(), bytes.size(), encoded.data()));
  AppendLines(encoded, out);
}

void Base64Lines::Finish(std::string& out) {
  auto& [state, encoded] = *encoder_;
  encoded.resize(g_mime_encoding_outlen(&state, 0));
  encoded.resize(g_mime_encoding_flush(&state, nullptr, 0, encoded.data()));
  AppendLines(encoded, out);
}

}  // namespace orve::adapters::mime
