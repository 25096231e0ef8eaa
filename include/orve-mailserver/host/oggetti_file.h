// The host library's files: the window in which a person chooses one, the file object, and the collection
// that holds the attachments of a message.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// A file, bound by one of Apri, ApriPercorso and Crea, or handed out by SelettoreFile. Name and path are
/// available for as long as the object lives, even after Chiudi.
class ORVE_API OggettoFile : public Oggetto {
 public:
  /// Where the file is.
  enum Posto : std::int32_t { kDaCopiare = 1 };
  /// The kind of file created for a copy.
  static constexpr std::int32_t kCopia = 8;

  /// The file's name as shown, without its directory.
  [[nodiscard]] virtual std::string Nome() = 0;
  /// Whether the file can be reached.
  [[nodiscard]] virtual bool Esiste() = 0;
  /// Ends the use of the file.
  virtual void Chiudi() = 0;
  /// Copies the content into another file object, set up by Crea; raises an error when it cannot.
  virtual void CopiaIn(const std::shared_ptr<OggettoFile>& altro, std::int32_t opzioni) = 0;
  /// Sets up this new object as the target of a copy under that name, in a place of the host's choosing.
  virtual void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) = 0;
  /// The full path that a channel attaches, with `\` between its components.
  [[nodiscard]] virtual std::string Percorso() = 0;
  /// kDaCopiare for a file that must be copied before it is attached, because it does not outlive the choice.
  [[nodiscard]] virtual std::int32_t Posizione() = 0;
  /// Binds this object to a file on disk, which need not exist. With an empty directory the name is the whole
  /// path.
  virtual void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) = 0;
  /// The same from the directory and the name in it; the text and the options are the host's own.
  virtual void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                            std::int32_t opzioni) = 0;
};

/// The window in which the person chooses one file.
class ORVE_API SelettoreFile : public Oggetto {
 public:
  /// The answer of Mostra when a file was chosen.
  static constexpr std::int32_t kConfermato = 1;

  /// The window's title.
  virtual void Titolo(const std::string& titolo) = 0;
  /// Shows the window modally; kConfermato when the person chose a file.
  virtual std::int32_t Mostra(std::int32_t opzioni) = 0;
  /// The file chosen, never absent after kConfermato.
  [[nodiscard]] virtual std::shared_ptr<OggettoFile> FileScelto() = 0;
  /// Ends the use of the window.
  virtual void Chiudi() = 0;
};

/// File objects by position, from 0; a position without a file raises 9.
class ORVE_API CollezioneFile : public Oggetto {
 public:
  /// The file at a position.
  [[nodiscard]] virtual std::shared_ptr<OggettoFile> Item(std::int32_t posizione) = 0;
  /// How many there are.
  [[nodiscard]] virtual std::int32_t Count() = 0;
  /// Removes all.
  virtual void Clear() = 0;
  /// Adds one at the end, which the collection then shares.
  virtual void Add(const std::shared_ptr<OggettoFile>& file) = 0;
  /// Removes the one at a position; those after it move up.
  virtual void Remove(std::int32_t posizione) = 0;
};

}  // namespace orve::host
