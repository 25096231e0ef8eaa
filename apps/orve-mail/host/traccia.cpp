#include "orve-mail/host/traccia.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "orve-mail/secrets/file_proprio.h"
#include "posix/system.h"

namespace orve::app {

namespace {

class TracciaSuFlusso : public Traccia {
 public:
  explicit TracciaSuFlusso(std::ostream& flusso) : flusso_(flusso) {}
  void Scrivi(const std::string& riga) noexcept override {
    try {
      flusso_ << adapters::posix::RigaDiDebug(riga) + "\n" << std::flush;
      incompleta_ = incompleta_ || !flusso_;
    } catch (...) {
      incompleta_ = true;
    }
  }
  [[nodiscard]] bool Incompleta() const noexcept override { return incompleta_; }

 private:
  std::ostream& flusso_;
  bool incompleta_ = false;
};

class TracciaSuFile : public Traccia {
 public:
  explicit TracciaSuFile(adapters::posix::Descriptor descrittore) : descrittore_(std::move(descrittore)) {}

  // One write for one line: the lines of other programs come before or after it.
  void Scrivi(const std::string& riga) noexcept override {
    try {
      const std::string byte = adapters::posix::RigaDiDebug(riga) + "\n";
      ssize_t scritti = 0;
      do {
        scritti = ::write(descrittore_.Number(), byte.data(), byte.size());
      } while (scritti < 0 && errno == EINTR);
      if (scritti != static_cast<ssize_t>(byte.size())) incompleta_ = true;
    } catch (...) {
      incompleta_ = true;
    }
  }
  [[nodiscard]] bool Incompleta() const noexcept override { return incompleta_; }

 private:
  adapters::posix::Descriptor descrittore_;
  bool incompleta_ = false;
};

}  // namespace

std::shared_ptr<Traccia> ApriTraccia(const std::string& file, std::ostream& errori) {
  if (file == "-") return std::make_shared<TracciaSuFlusso>(errori);
  return std::make_shared<TracciaSuFile>(ApriFilePerRighe("--traccia: impossibile scrivere", file));
}

}  // namespace orve::app
