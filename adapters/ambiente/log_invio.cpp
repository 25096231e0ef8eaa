#include "ambiente/log_invio.h"

#include <string>
#include <string_view>
#include <utility>

#include "text/unseen.h"

namespace orve::adapters::ambiente {

namespace {

std::string RecordSuUnaRiga(std::string_view testo) {
  constexpr std::string_view kFineRiga = "\r\n";
  const std::string_view fine = testo.ends_with(kFineRiga) ? kFineRiga : "";
  testo.remove_suffix(fine.size());
  return text::ReplaceUnseen(testo,
                             [](char32_t, text::Unseen genere) {
                               return genere == text::Unseen::kControl ? std::optional<std::string>(" ")
                                                                       : std::nullopt;
                             })
      .append(fine);
}

class FlussoSuUnaRiga : public host::TextStream {
 public:
  explicit FlussoSuUnaRiga(std::shared_ptr<host::TextStream> vero) : vero_(std::move(vero)) {}
  void WriteLine(const std::string& testo) override { vero_->WriteLine(RecordSuUnaRiga(testo)); }
  void Close() override { vero_->Close(); }

 private:
  std::shared_ptr<host::TextStream> vero_;
};

class FileSystemSuUnaRiga : public host::FileSystem {
 public:
  explicit FileSystemSuUnaRiga(std::shared_ptr<host::FileSystem> vero) : vero_(std::move(vero)) {}
  [[nodiscard]] bool FolderExists(const std::string& cartella) override {
    return vero_->FolderExists(cartella);
  }
  [[nodiscard]] bool FileExists(const std::string& file) override { return vero_->FileExists(file); }
  [[nodiscard]] std::shared_ptr<host::TextStream> OpenTextFile(const std::string& file, std::int32_t modo,
                                                               bool crea, std::int32_t formato) override {
    return std::make_shared<FlussoSuUnaRiga>(vero_->OpenTextFile(file, modo, crea, formato));
  }

 private:
  std::shared_ptr<host::FileSystem> vero_;
};

}  // namespace

std::shared_ptr<host::FileSystem> LogSuUnaRiga(std::shared_ptr<host::FileSystem> vero) {
  return std::make_shared<FileSystemSuUnaRiga>(std::move(vero));
}

}  // namespace orve::adapters::ambiente
