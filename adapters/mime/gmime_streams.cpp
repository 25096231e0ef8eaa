#include "mime/gmime_streams.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "host/errore.h"
#include "mime/attachment.h"
#include "mime/header_text.h"

namespace orve::adapters::mime {

namespace {

/// Runs `action`; keeps what it throws and answers false.
template <class Action>
bool Guarded(Failure& failure, Action action) noexcept {
  if (failure.error) return false;
  try {
    action();
    return true;
  } catch (...) {
    failure.error = std::current_exception();
    return false;
  }
}

/// One pass over a file. What the file held when it was opened must come out of it: a file that shrinks
/// meanwhile would leave as a torso.
class FileReader {
 public:
  FileReader(std::string path, Failure& failure) : path_(std::move(path)), failure_(failure) {}
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;
  FileReader(FileReader&&) = delete;
  FileReader& operator=(FileReader&&) = delete;
  ~FileReader() { Close(); }

  /// Bytes read, 0 at the end, -1 after a failure.
  ssize_t Read(char* into, std::size_t size) noexcept {
    ssize_t count = 0;
    const bool read = Guarded(failure_, [&] { count = ReadSome(into, size); });
    return read ? count : -1;
  }

  [[nodiscard]] bool AtEnd() const { return atEnd_ || failure_.error; }

  void Rewind() {
    Close();
    atEnd_ = false;
  }

 private:
  ssize_t ReadSome(char* into, std::size_t size) {
    if (atEnd_) return 0;
    if (file_ < 0) {
      file_ = OpenAttachment(path_, path_, expected_);
      seen_ = 0;
    }
    ssize_t count = 0;
    do {
      count = ::read(file_, into, size);
    } while (count < 0 && errno == EINTR);
    if (count < 0) RaiseAttachmentError(path_, errno);
    seen_ += count;
    if (count == 0) {
      atEnd_ = true;
      Close();
      if (seen_ < expected_) {
        throw host::Errore(kErroreAccessoFile, "orve-mime",
                           "Il file \"" + ForDisplay(path_) + "\" si è accorciato durante la lettura");
      }
    }
    return count;
  }

  void Close() {
    if (file_ >= 0) ::close(file_);
    file_ = -1;
  }

  std::string path_;
  Failure& failure_;
  int file_ = -1;
  long long expected_ = 0;
  long long seen_ = 0;
  bool atEnd_ = false;
};

// What GLib's type system wants to know about the two stream types. A stream serves one direction; the
// operations of the other, and seeking, fail.
struct StreamType {
  GMimeStream parent;
  PieceBuffer* sink;
  FileReader* file;
};

StreamType* Own(GMimeStream* stream) {
  return reinterpret_cast<StreamType*>(stream);
}

ssize_t StreamRead(GMimeStream* stream, char* buffer, size_t size) {
  FileReader* const file = Own(stream)->file;
  const ssize_t count = file != nullptr ? file->Read(buffer, size) : -1;
  if (count > 0) stream->position += count;
  return count;
}

ssize_t StreamWrite(GMimeStream* stream, const char* buffer, size_t size) {
  PieceBuffer* const sink = Own(stream)->sink;
  if (sink == nullptr || !sink->Write({buffer, size})) return -1;
  stream->position += static_cast<gint64>(size);
  return static_cast<ssize_t>(size);
}

int StreamNothingToDo(GMimeStream* /*stream*/) {
  return 0;
}

gboolean StreamAtEnd(GMimeStream* stream) {
  const FileReader* const file = Own(stream)->file;
  return file == nullptr || file->AtEnd() ? TRUE : FALSE;
}

int StreamReset(GMimeStream* stream) {
  if (FileReader* const file = Own(stream)->file) file->Rewind();
  stream->position = 0;
  return 0;
}

gint64 StreamSeek(GMimeStream* /*stream*/, gint64 /*offset*/, GMimeSeekWhence /*whence*/) {
  return -1;
}
gint64 StreamTell(GMimeStream* stream) {
  return stream->position;
}
gint64 StreamLength(GMimeStream* /*stream*/) {
  return -1;
}
GMimeStream* StreamSubstream(GMimeStream* /*stream*/, gint64 /*start*/, gint64 /*end*/) {
  return nullptr;
}

void StreamFinalize(GObject* object) {
  delete reinterpret_cast<StreamType*>(object)->file;
  G_OBJECT_CLASS(g_type_class_peek(g_mime_stream_get_type()))->finalize(object);
}

void StreamClassInit(gpointer type, gpointer /*data*/) {
  auto* const stream = static_cast<GMimeStreamClass*>(type);
  stream->read = StreamRead;
  stream->write = StreamWrite;
  stream->flush = StreamNothingToDo;
  stream->close = StreamNothingToDo;
  stream->eos = StreamAtEnd;
  stream->reset = StreamReset;
  stream->seek = StreamSeek;
  stream->tell = StreamTell;
  stream->length = StreamLength;
  stream->substream = StreamSubstream;
  static_cast<GObjectClass*>(type)->finalize = StreamFinalize;
}

GRef<GMimeStream> NewStream(PieceBuffer* sink, std::unique_ptr<FileReader> file) {
  static const GType kType =
      g_type_register_static_simple(g_mime_stream_get_type(), "OrveMimeStream", sizeof(GMimeStreamClass),
                                    StreamClassInit, sizeof(StreamType), nullptr, G_TYPE_FLAG_NONE);
  auto* const stream = static_cast<StreamType*>(g_object_new(kType, nullptr));
  g_mime_stream_construct(&stream->parent, 0, -1);
  stream->sink = sink;
  stream->file = file.release();
  return GRef<GMimeStream>(&stream->parent);
}

}  // namespace

bool PieceBuffer::Write(std::string_view bytes) noexcept {
  return Guarded(failure_, [&] {
    if (pending_.capacity() < kPieceBytes) pending_.reserve(kPieceBytes);
    while (!bytes.empty()) {
      const std::size_t room = std::min(kPieceBytes - pending_.size(), bytes.size());
      pending_.append(bytes.substr(0, room));
      bytes.remove_prefix(room);
      if (pending_.size() < kPieceBytes) return;
      sink_(pending_);
      pending_.clear();
    }
  });
}

void PieceBuffer::Finish() {
  Guarded(failure_, [&] {
    if (!pending_.empty()) sink_(pending_);
    pending_.clear();
  });
  if (failure_.error) std::rethrow_exception(failure_.error);
}

GRef<GMimeStream> NewSinkStream(PieceBuffer& buffer) {
  return NewStream(&buffer, nullptr);
}

GRef<GMimeStream> NewFileStream(std::string localPath, Failure& failure) {
  return NewStream(nullptr, std::make_unique<FileReader>(std::move(localPath), failure));
}

}  // namespace orve::adapters::mime
