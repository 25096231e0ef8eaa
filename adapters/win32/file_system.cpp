#include "win32/file_system.h"

#include <string>

namespace orve::adapters::win32 {

namespace {

class TextStreamCom final : public Involucro<host::TextStream> {
 public:
  using Involucro::Involucro;
  void WriteLine(const std::string& testo) override {
    // A single-byte stream refuses the whole line for one character that its code page lacks.
    Oggetto().Run("WriteLine", FromSingleByte(ToSingleByte(testo)));
  }
  void Close() override { Oggetto().Run("Close"); }
};

class FileSystemCom final : public Involucro<host::FileSystem> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] bool FolderExists(const std::string& cartella) override {
    return Oggetto().Call("FolderExists", cartella).ToBoolean();
  }
  [[nodiscard]] bool FileExists(const std::string& file) override {
    return Oggetto().Call("FileExists", file).ToBoolean();
  }
  [[nodiscard]] std::shared_ptr<host::TextStream> OpenTextFile(const std::string& file, std::int32_t modo,
                                                               bool crea, std::int32_t formato) override {
    return Avvolgi<TextStreamCom>(Oggetto().ChiamaOggetto("OpenTextFile", file, modo, crea, formato));
  }
};

}  // namespace

std::shared_ptr<host::FileSystem> AvvolgiFileSystem(Dispatch fileSystem) {
  return Avvolgi<FileSystemCom>(std::move(fileSystem));
}

}  // namespace orve::adapters::win32
