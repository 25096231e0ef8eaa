// The file-system object and its text stream, as the send log uses them. Paths have `\` between their
// components.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

class ORVE_API TextStream : public Oggetto {
 public:
  /// Writes the text, converted to the single-byte code page, and a line end of carriage return and line
  /// feed.
  virtual void WriteLine(const std::string& testo) = 0;
  virtual void Close() = 0;
};

class ORVE_API FileSystem : public Oggetto {
 public:
  enum Modo : std::int32_t { kAccoda = 8 };
  enum Formato : std::int32_t { kSingoloByte = 0 };

  [[nodiscard]] virtual bool FolderExists(const std::string& cartella) = 0;
  [[nodiscard]] virtual bool FileExists(const std::string& file) = 0;
  /// Opens the file and never returns an absent stream; raises an error when it cannot (53 not found, 70 no
  /// permission, 76 path not found).
  [[nodiscard]] virtual std::shared_ptr<TextStream> OpenTextFile(const std::string& file, std::int32_t modo,
                                                                 bool crea, std::int32_t formato) = 0;
};

}  // namespace orve::host
