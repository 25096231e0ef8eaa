#include "orve-mail/host/file_dialogo.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "orve-mail/secrets/file_proprio.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"

namespace orve::app {

namespace {

constexpr const char* kNonScrivibile = "--dialogo: impossibile scrivere";

}  // namespace

std::function<void(std::string_view)> ScriviDialogo(const std::string& file) {
  adapters::posix::Descriptor descrittore = ApriFilePerRighe(kNonScrivibile, file);
  std::FILE* const aperto = ::fdopen(descrittore.Number(), "a");
  if (aperto == nullptr) {
    throw ErroreProgramma(Uscita::kFileMancante, std::string(kNonScrivibile) + " " + file + ": " +
                                                     std::generic_category().message(errno));
  }
  static_cast<void>(descrittore.Release());  // closed with the stream
  const std::shared_ptr<std::FILE> flusso(aperto, [](std::FILE* chiuso) { std::fclose(chiuso); });
  return [flusso](std::string_view riga) {
    std::fputs((TerminalSafeLine(riga) + "\n").c_str(), flusso.get());
    std::fflush(flusso.get());
  };
}

}  // namespace orve::app
