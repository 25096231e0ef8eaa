#include "support/process_locale.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>

#include "support/process.h"

namespace orve::support {

ProcessLocale::ProcessLocale(const std::string& name, const std::string& characters)
    : before_(std::setlocale(LC_ALL, nullptr)) {
  const std::string full = name + "." + characters;
  const ProcessResult made = RunProgram(
      {"localedef", "--no-archive", "-i", name, "-f", characters, (directory_.Path() / full).string()});
  ::setenv("LOCPATH", directory_.Path().c_str(), 1);
  const bool set = std::setlocale(LC_ALL, full.c_str()) != nullptr;
  ::unsetenv("LOCPATH");
  if (!set) throw std::runtime_error("no locale " + full + ": " + made.output);
}

ProcessLocale::~ProcessLocale() {
  std::setlocale(LC_ALL, before_.c_str());
}

}  // namespace orve::support
