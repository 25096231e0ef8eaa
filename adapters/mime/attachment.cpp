#include "mime/attachment.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::mime {

namespace {

[[noreturn]] void Raise(int number, std::string_view path, const std::string& reason) {
  throw host::Errore(number, "orve-mime",
                     "Impossibile allegare il file \"" + ForDisplay(path) + "\": " + reason);
}

struct Extension {
  std::string_view name;
  std::string_view type;
};

// What a business application attaches. Types that would let a mail reader reinterpret the bytes
// (message/rfc822) are left out on purpose: such files are sent as plain bytes.
constexpr std::array<Extension, 29> kExtensions = {{
    {"7z", "application/x-7z-compressed"},
    {"bmp", "image/bmp"},
    {"csv", "text/csv"},
    {"doc", "application/msword"},
    {"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {"gif", "image/gif"},
    {"htm", "text/html"},
    {"html", "text/html"},
    {"ics", "text/calendar"},
    {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},
    {"json", "application/json"},
    {"odp", "application/vnd.oasis.opendocument.presentation"},
    {"ods", "application/vnd.oasis.opendocument.spreadsheet"},
    {"odt", "application/vnd.oasis.opendocument.text"},
    {"p7m", "application/pkcs7-mime"},
    {"p7s", "application/pkcs7-signature"},
    {"pdf", "application/pdf"},
    {"png", "image/png"},
    {"ppt", "application/vnd.ms-powerpoint"},
    {"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    {"rtf", "application/rtf"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"txt", "text/plain"},
    {"xls", "application/vnd.ms-excel"},
    {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {"xml", "application/xml"},
    {"zip", "application/zip"},
}};

char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string LocalPath(std::string_view path) {
  std::string local(path);
  struct stat status {};
  // A NUL would truncate the path: such a path names nothing.
  if (local.find('\0') != std::string::npos || ::lstat(local.c_str(), &status) == 0) return local;
  std::replace(local.begin(), local.end(), '\\', '/');
  return local;
}

std::string RequireAttachable(std::string_view path, std::string_view shown) {
  if (shown.empty()) shown = path;
  if (path.empty()) Raise(kFileNonTrovato, path, "il percorso è vuoto");
  std::string local = LocalPath(path);
  long long size = 0;
  const int file = OpenAttachment(local, shown, size);
  // Some files open and fail only when read, and some file systems do not report how long a file is.
  char first = 0;
  const ssize_t count = ::read(file, &first, 1);
  const int error = errno;
  ::close(file);
  if (count < 0) RaiseAttachmentError(shown, error);
  if (count > size) Raise(kErroreAccessoFile, shown, "non si sa quanto è lungo; allegarne una copia");
  // The application may change its working directory before the message is sent.
  std::error_code unresolved;
  const std::filesystem::path absolute = std::filesystem::absolute(local, unresolved);
  return unresolved ? local : absolute.string();
}

Attachment Attach(const AttachmentResolver& resolver, std::string_view path) {
  if (!resolver) return RequireAttachable(path);
  Attachment attachment = resolver(path);
  attachment.path = RequireAttachable(attachment.path, attachment.name);
  return attachment;
}

std::string AttachmentName(std::string_view localPath) {
  std::string name = NameSafe(localPath.substr(localPath.find_last_of('/') + 1));
  std::replace(name.begin(), name.end(), '\\', '_');
  // Mail readers decode what looks like an encoded word, quoted or not.
  return text::Replace(name, "=?", "=_");
}

std::string_view MediaType(std::string_view name) {
  constexpr std::string_view kBytes = "application/octet-stream";
  const std::size_t dot = name.find_last_of('.');
  if (dot == std::string_view::npos) return kBytes;
  std::string extension(name.substr(dot + 1));
  std::transform(extension.begin(), extension.end(), extension.begin(), LowerAscii);
  const auto* const found =
      std::lower_bound(kExtensions.begin(), kExtensions.end(), extension,
                       [](const Extension& e, const std::string& x) { return e.name < x; });
  return found != kExtensions.end() && found->name == extension ? found->type : kBytes;
}

int OpenAttachment(const std::string& localPath, std::string_view shown, long long& size) {
  if (localPath.find('\0') != std::string::npos) RaiseAttachmentError(shown, ENOENT);
  // Without O_NONBLOCK opening a pipe would wait for a writer.
  const int file = ::open(localPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) RaiseAttachmentError(shown, errno);
  struct stat status {};
  const bool known = ::fstat(file, &status) == 0;
  const int error = errno;
  if (!known || !S_ISREG(status.st_mode)) {
    ::close(file);
    if (!known) RaiseAttachmentError(shown, error);
    Raise(kErroreAccessoFile, shown, S_ISDIR(status.st_mode) ? "è una cartella" : "non è un file normale");
  }
  size = status.st_size;
  return file;
}

void RaiseAttachmentError(std::string_view path, int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      Raise(kFileNonTrovato, path, "il file non esiste");
    case ENAMETOOLONG:
      Raise(kFileNonTrovato, path, "il percorso è troppo lungo");
    case EACCES:
    case EPERM:
      Raise(kAutorizzazioneNegata, path, "manca il permesso di lettura");
    case ENXIO:
      Raise(kErroreAccessoFile, path, "non è un file normale");
    default:
      Raise(kErroreAccessoFile, path,
            "lettura non riuscita (" + std::generic_category().message(error) + ")");
  }
}

}  // namespace orve::adapters::mime
