#include "mime/file_reader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "mime/attachment.h"
#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"

namespace orve::adapters::mime {

FileReader::FileReader(const std::string& localPath, const std::string& shown)
    : shown_(shown.empty() ? localPath : shown), file_(OpenAttachment(localPath, shown_, expected_)) {}

FileReader::~FileReader() {
  ::close(file_);
}

std::size_t FileReader::Read(char* into, std::size_t size) {
  size = std::min(size, static_cast<std::size_t>(expected_ - seen_));
  ssize_t count = 0;
  do {
    count = ::read(file_, into, size);
  } while (count < 0 && errno == EINTR);
  if (count < 0) RaiseAttachmentError(shown_, errno);
  seen_ += count;
  if (count == 0 && seen_ < expected_) {
    throw host::Errore(kErroreAccessoFile, "orve-mime",
                       "Il file \"" + ForDisplay(shown_) + "\" si è accorciato durante la lettura");
  }
  return static_cast<std::size_t>(count);
}

}  // namespace orve::adapters::mime
