// The test's process under another locale, whichever the machine has.
#pragma once

#include <string>

#include "support/temp_dir.h"

namespace orve::support {

/// While the object lives, the process has the locale, which is created for it ("tr_TR" and "UTF-8").
class ProcessLocale {
 public:
  ProcessLocale(const std::string& name, const std::string& characters);
  ProcessLocale(const ProcessLocale&) = delete;
  ProcessLocale& operator=(const ProcessLocale&) = delete;
  ProcessLocale(ProcessLocale&&) = delete;
  ProcessLocale& operator=(ProcessLocale&&) = delete;
  ~ProcessLocale();

 private:
  TempDir directory_;
  std::string before_;
};

}  // namespace orve::support
