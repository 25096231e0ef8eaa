// Which files may be attached to a message, and how the library names them.
//
// Whoever fills in a row of a list or a box of the window names files with the rights of the person who runs
// the program. A file is therefore checked once it is open, by what it is and not by its name, and what was
// checked is what gets sent: the message reads it through the descriptor. The library joins paths into a
// statement as they are, so a name that could end the literal there is replaced by that of a private copy;
// the recipients still see the file's own.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mime/message.h"
#include "orve-mailserver/host/errore.h"
#include "posix/descriptor.h"
#include "posix/oggetto_file.h"

namespace orve::app {

/// The file exists but must not be sent; the description says why.
class AllegatoVietato : public host::Errore {
 public:
  using host::Errore::Errore;
};

/// A file that may be sent, held open: whatever happens to its path, this is the file.
class FileAmmesso {
 public:
  /// `esclusi`: files that are never sent, however they are reached; those that do not exist are ignored.
  /// `cartelle`: the file must be below one of them once all links are resolved; none: anywhere. Raises
  /// AllegatoVietato for these, and for what the kernel presents as files (/proc, /sys, /dev); host::Errore
  /// 53, 70 or 75 when there is no regular file that can be read. The description names no file.
  FileAmmesso(const std::string& nativo, const std::vector<std::string>& esclusi,
              const std::vector<std::string>& cartelle = {});

  /// A path of this process that opens this file, as long as the object lives.
  [[nodiscard]] std::string Percorso() const;

 private:
  adapters::posix::Descriptor descrittore_;
};

/// An attachment as named by a command.
struct Allegato {
  // Not explicit: most attachments are just a path.
  Allegato(std::string file, std::vector<std::string> soltantoIn = {})
      : percorso(std::move(file)), cartelle(std::move(soltantoIn)) {}

  std::string percorso;               // in the library's form
  std::vector<std::string> cartelle;  // below which it has to be; none: anywhere
};

/// The path in the form that the library takes: absolute, with `\` between its components. With `controlla`
/// the file must exist and be regular and readable; it must never be one that must not be sent. Raises
/// ErroreProgramma (kFileMancante), also for a name that the library's paths cannot hold.
[[nodiscard]] Allegato PreparaAllegato(const std::string& file, bool controlla,
                                       const std::vector<std::string>& esclusi,
                                       std::vector<std::string> cartelle = {});

/// The attachments of one send. Its private copies are removed with it.
class Allegati {
 public:
  explicit Allegati(std::vector<std::string> esclusi);
  Allegati(const Allegati&) = delete;
  Allegati& operator=(const Allegati&) = delete;
  Allegati(Allegati&&) = delete;
  Allegati& operator=(Allegati&&) = delete;
  ~Allegati();

  /// Whether the library's statements can take the path as it is.
  [[nodiscard]] static bool NomeInnocuo(std::string_view percorso);

  /// The path to hand to the library: the file's own, or that of a private copy. A file that cannot be copied
  /// still gets the path of a copy, at which there is nothing. Raises ErroreProgramma (kFileMancante) for one
  /// that must not be sent.
  [[nodiscard]] std::string PerLaLibreria(const Allegato& allegato);
  /// A path for a copy under a harmless name; `nome` is the file's own. Raises 52 for text that is not a
  /// plain file name.
  [[nodiscard]] std::string PostoPer(const std::string& nome);
  /// Fills the place of a copy with the file, checked and held open. Raises host::Errore as Apri does.
  void Copia(const std::string& percorso, const std::string& posto);

  /// The file for a path that the library names, checked and held open, under its own name. Raises
  /// host::Errore 53, 70 or 75 with an Italian description.
  [[nodiscard]] adapters::mime::Attachment Apri(std::string_view percorso) const;
  /// The file's own name for a path of the library.
  [[nodiscard]] std::string NomeVero(const std::string& percorso) const;
  /// A text of the library's with the paths of copies replaced by those of their files.
  [[nodiscard]] std::string ConPercorsiVeri(std::string testo) const;

 private:
  struct Noto {
    std::string nome;                   // that the recipients see
    std::string vero;                   // the file copied, in the library's form; empty: no copy of ours
    std::vector<std::string> cartelle;  // as in Allegato
  };

  std::vector<std::string> esclusi_;
  adapters::posix::CartellaCopie copie_;
  std::map<std::string, Noto, std::less<>> noti_;  // by the library's path
};

}  // namespace orve::app
