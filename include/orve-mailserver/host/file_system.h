// The file-system object and its text stream, as the send log uses them. Paths have `\` between their
// components.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// An open file that lines are written into.
class ORVE_API TextStream : public Oggetto {
 public:
  /// Writes the text, converted to the single-byte code page, and a line end of carriage return and line
  /// feed.
  virtual void WriteLine(const std::string& testo) = 0;
  /// Closes the file.
  virtual void Close() = 0;
};

/// The files of the machine.
class ORVE_API FileSystem : public Oggetto {
 public:
  /// How a file is opened: 8 appends.
  enum Modo : std::int32_t { kAccoda = 8 };
  /// What is written: 0 one byte for each character.
  enum Formato : std::int32_t { kSingoloByte = 0 };

  /// Whether there is a folder at this path.
  [[nodiscard]] virtual bool FolderExists(const std::string& cartella) = 0;
  /// Whether there is a file at this path.
  [[nodiscard]] virtual bool FileExists(const std::string& file) = 0;
  /// Opens the file and never returns an absent stream; raises an error when it cannot (53 not found, 70 no
  /// permission, 76 path not found).
  [[nodiscard]] virtual std::shared_ptr<TextStream> OpenTextFile(const std::string& file, std::int32_t modo,
                                                                 bool crea, std::int32_t formato) = 0;
};

}  // namespace orve::host
