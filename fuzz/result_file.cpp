// The result file of a list: any bytes are read or refused. What is refused stays as it was, and what is read
// says the same the next time, with a further row and when it is put in order.
#include "orve-mail/lists/esiti_lista.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mail/terminal/uscita.h"
#include "support.h"

namespace orve::fuzz {
namespace {

using app::EsitiLista;
using app::EsitoRiga;

constexpr const char* kNewList = "0123456789abcdef";
constexpr const char* kFingerprint = "00112233445566778899aabbccddeeff";

/// A folder for one file, in memory where the machine has such a place; gone at the end.
class Folder {
 public:
  Folder() {
    std::string path = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    path += "/orve-fuzz-XXXXXX";
    Require(::mkdtemp(path.data()) != nullptr, "a folder for the file");
    path_ = path;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  Folder(Folder&&) = delete;
  Folder& operator=(Folder&&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  [[nodiscard]] std::string File() const { return path_ + "/esiti.csv"; }

 private:
  std::string path_;
};

void Write(const std::string& file, std::string_view bytes) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string Content(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// What the file says of the rows that it may speak of.
struct Said {
  std::string list;
  std::size_t rows = 0;
  std::vector<std::size_t> final;
  std::map<std::size_t, std::pair<EsitoRiga, std::string>> outcomes;
  bool operator==(const Said&) const = default;
};

Said Ask(const EsitiLista& file) {
  Said said{file.Lista(), file.Quante(), file.Definitive(), {}};
  std::vector<std::size_t> asked = said.final;
  for (std::size_t row = 0; row < 40; ++row) asked.push_back(row);
  for (const std::size_t row : asked) {
    if (const auto outcome = file.Cerca(row)) said.outcomes[row] = {outcome->esito, outcome->impronta};
  }
  return said;
}

Said AskAnew(const std::string& file) {
  const EsitiLista anew(file, kNewList);
  return Ask(anew);
}

void CheckReadable(const std::string& file, std::string_view given) {
  Said said;
  {
    EsitiLista opened(file, kNewList);
    said = Ask(opened);
    Require(said.list == kNewList || given.find(said.list) != std::string_view::npos,
            "the list is the file's own");
    Require(std::is_sorted(said.final.begin(), said.final.end()), "the final rows ascend");
    for (const std::size_t row : said.final) {
      Require(said.outcomes.contains(row) && Definitivo(said.outcomes[row].first),
              "a final row has its outcome");
    }
    for (const auto& [row, outcome] : said.outcomes) {
      Require(outcome.second.empty() ? outcome.first == EsitoRiga::kMalformata : outcome.second.size() == 32,
              "a row has its fingerprint");
    }
  }
  const std::string mended = Content(file);
  Require(!mended.empty() && mended.back() == '\n', "the last line is whole");
  Require(AskAnew(file) == said, "the file says the same the next time");
  Require(Content(file) == mended, "reading changes nothing more");
}

void CheckWriting(const std::string& file) {
  Said wanted;
  {
    EsitiLista opened(file, kNewList);
    opened.Inizia(7, kFingerprint, "a@x.example; \"Anna\"\r\n");
    opened.Concludi(EsitoRiga::kInviato, "riga\n;\"motivo\"");
    opened.Annota(8, "", "b@x.example", EsitoRiga::kMalformata, "ha virgolette");
    wanted = Ask(opened);
    Require(wanted.outcomes.contains(7) && wanted.outcomes[7].first == EsitoRiga::kInviato,
            "the row written");
    opened.Riordina();
    Require(Ask(opened) == wanted, "order changes no outcome");
  }
  Require(AskAnew(file) == wanted, "what was written is read");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  static const Folder folder;
  const std::string_view given(reinterpret_cast<const char*>(data), size);
  Write(folder.File(), given);
  try {
    CheckReadable(folder.File(), given);
  } catch (const orve::app::ErroreProgramma& error) {
    Require(error.Stato() == orve::app::Uscita::kFileMancante, "a file that is none is refused as such");
    RequireSame(Content(folder.File()), given, "a file that is refused stays as it was");
    return 0;
  }
  CheckWriting(folder.File());
  return 0;
}
