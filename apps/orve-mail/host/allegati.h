// Which files may go with a message, and how the library names them.
//
// Who writes a row of a list or a window's box names files with the rights of whoever runs the program. A
// file is therefore judged when it is open, by what it is and not by how it is called, and what was judged
// is what leaves: the message reads it through the descriptor. The library joins paths into a statement as
// they stand, so that a name that could end the literal there is replaced by a private copy's; the recipients
// see the file's own all the same.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/errore.h"
#include "mime/message.h"
#include "posix/oggetto_file.h"

namespace orve::app {

/// The file is there and may not go with a message; the description says why.
class AllegatoVietato : public host::Errore {
 public:
  using host::Errore::Errore;
};

/// A file that may go with a message, held: whatever happens to its path, this is the file.
class FileAmmesso {
 public:
  /// `esclusi`: files that never go with a message, however they are reached; those that do not exist do not
  /// count. `cartelle`: the file must lie below one of them when all links are resolved; none: anywhere.
  /// Raises AllegatoVietato for these, and for what the kernel shows as files (/proc, /sys, /dev);
  /// host::Errore 53, 70 or 75 when there is no plain file that can be read. The description names no file.
  FileAmmesso(const std::string& nativo, const std::vector<std::string>& esclusi,
              const std::vector<std::string>& cartelle = {});
  FileAmmesso(const FileAmmesso&) = delete;
  FileAmmesso& operator=(const FileAmmesso&) = delete;
  FileAmmesso(FileAmmesso&&) = delete;
  FileAmmesso& operator=(FileAmmesso&&) = delete;
  ~FileAmmesso();

  /// A path of this process that opens this file, as long as the object lives.
  [[nodiscard]] std::string Percorso() const;

 private:
  int numero_;
};

/// An attachment as a command names it.
struct Allegato {
  // Not explicit: most attachments are just a path.
  Allegato(std::string file, std::vector<std::string> soltantoIn = {})
      : percorso(std::move(file)), cartelle(std::move(soltantoIn)) {}

  std::string percorso;               // in the library's form
  std::vector<std::string> cartelle;  // below which it has to lie; none: anywhere
};

/// The path as the library wants it: absolute, with `\` between its components. With `controlla` the file
/// must be there, plain and readable; it must never be one that may not go. Raises ErroreProgramma
/// (kFileMancante), also for a name that the library's paths cannot hold.
[[nodiscard]] Allegato PreparaAllegato(const std::string& file, bool controlla,
                                       const std::vector<std::string>& esclusi,
                                       std::vector<std::string> cartelle = {});

/// The attachments of one send. Its private copies go with it.
class Allegati {
 public:
  explicit Allegati(std::vector<std::string> esclusi);
  Allegati(const Allegati&) = delete;
  Allegati& operator=(const Allegati&) = delete;
  Allegati(Allegati&&) = delete;
  Allegati& operator=(Allegati&&) = delete;
  ~Allegati();

  /// Whether the library's statements can take the path as it stands.
  [[nodiscard]] static bool NomeInnocuo(std::string_view percorso);

  /// The path to hand to the library: the file's own, or that of a private copy. A file that cannot be copied
  /// gets the path of a copy all the same, behind which nothing stands. Raises ErroreProgramma
  /// (kFileMancante) for one that may not go.
  [[nodiscard]] std::string PerLaLibreria(const Allegato& allegato);
  /// A path for a copy under a harmless name; `nome` is the file's own. Raises 52 for a text that is no plain
  /// file name.
  [[nodiscard]] std::string PostoPer(const std::string& nome);
  /// Fills the place of a copy with the file, judged and held. Raises host::Errore as Apri does.
  void Copia(const std::string& percorso, const std::string& posto);

  /// The file behind a path that the library names, judged and held, under its own name. Raises
  /// host::Errore 53, 70 or 75 with an Italian description.
  [[nodiscard]] adapters::mime::Attachment Apri(std::string_view percorso) const;
  /// The file's own name behind a path of the library.
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
