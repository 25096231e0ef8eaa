// The reader of lists of rows: any bytes give rows or reasons, what a writer wrote comes back, and a simple
// reader that holds the whole text agrees.
#include "orve-mail/lists/csv.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "mime/header_text.h"
#include "support.h"

namespace orve::fuzz {
namespace {

using app::CsvReader;
using app::CsvRecord;

std::vector<CsvRecord> Read(const std::string& text) {
  std::istringstream stream(text);
  CsvReader reader(stream);
  std::vector<CsvRecord> records;
  for (CsvRecord record; reader.Prossimo(record);) records.push_back(record);
  return records;
}

/// The same rules, applied to the text as a whole.
class PlainReader {
 public:
  explicit PlainReader(std::string_view text) : text_(text) {
    if (text_.starts_with("\xEF\xBB\xBF")) text_.remove_prefix(3);
  }

  std::vector<CsvRecord> Read() {
    SkipEmptyLines();
    ChooseSeparator();
    while (at_ < text_.size()) {
      CsvRecord record;
      record.riga = line_;
      const std::size_t begin = at_;
      if (!ReadRow(record.campi)) {
        at_ = std::min(text_.find('\n', begin), text_.size() - 1) + 1;
        record.errore = "malformed";
      } else if (!Clean(record.campi)) {
        record.errore = "malformed";
      }
      if (!record.errore.empty()) record.campi.clear();
      line_ += static_cast<std::size_t>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(begin),
                                                   text_.begin() + static_cast<std::ptrdiff_t>(at_), '\n'));
      records_.push_back(record);
      SkipEmptyLines();
    }
    return std::move(records_);
  }

 private:
  [[nodiscard]] bool Ahead(std::string_view what) const { return text_.substr(at_).starts_with(what); }
  [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }

  bool LineEnd() {
    const std::size_t length = Ahead("\r\n") ? 2 : Ahead("\n") ? 1 : 0;
    at_ += length;
    return length > 0;
  }

  void SkipEmptyLines() {
    while (LineEnd()) ++line_;
  }

  void ChooseSeparator() {
    bool quoted = false;
    for (const char c : text_.substr(at_, std::size_t{64} * 1024)) {
      if (c == '\n' && !quoted) return;
      if (c == '"') quoted = !quoted;
      if (c != ';' || quoted) continue;
      separator_ = ';';
      return;
    }
  }

  bool ReadQuoted(std::string& field) {
    ++at_;
    for (;; ++at_) {
      if (AtEnd()) return false;
      if (text_[at_] == '"') {
        ++at_;
        if (AtEnd() || text_[at_] != '"') return true;
      }
      field.push_back(text_[at_]);
    }
  }

  bool ReadRow(std::vector<std::string>& fields) {
    constexpr std::size_t kMostFields = 1000;
    for (;; ++at_) {
      if (fields.size() == kMostFields) return false;
      std::string& field = fields.emplace_back();
      if (Ahead("\"")) {
        if (!ReadQuoted(field)) return false;
      } else {
        while (!AtEnd() && text_[at_] != separator_ && text_[at_] != '\n' && text_[at_] != '\r') {
          if (text_[at_] == '"') return false;
          field.push_back(text_[at_++]);
        }
      }
      if (AtEnd() || LineEnd()) return true;
      if (text_[at_] != separator_) return false;
    }
  }

  static bool Clean(const std::vector<std::string>& fields) {
    return std::all_of(fields.begin(), fields.end(), [](const std::string& field) {
      return field.find('\0') == std::string::npos && adapters::mime::ValidUtf8(field) == field;
    });
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  char separator_ = ',';
  std::vector<CsvRecord> records_;
};

void CheckAgainstPlainReader(const std::string& text) {
  const auto found = Read(text);
  const auto wanted = PlainReader(text).Read();
  Require(found.size() == wanted.size(), "as many rows");
  for (std::size_t i = 0; i < found.size(); ++i) {
    Require(found[i].riga == wanted[i].riga, "the row's line");
    Require(found[i].errore.empty() == wanted[i].errore.empty(), "the row is malformed or not");
    Require(found[i].campi == wanted[i].campi, "the row's fields");
    Require(!found[i].errore.empty() || !found[i].campi.empty(), "a row has fields or a reason");
  }
}

std::string Written(const std::vector<std::string>& fields, char separator) {
  std::string row;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) row.push_back(separator);
    row.append("\"").append(PlainReplace(fields[i], "\"", "\"\"", false)).append("\"");
  }
  return row + "\r\n";
}

/// The text's lines as rows and their words as fields.
void CheckRoundTrip(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  std::string file;
  // The first row settles the separator.
  const std::vector<std::string> titles = {"uno", "due"};
  const char separator = text.size() % 2 == 0 ? ';' : ',';
  file = Written(titles, separator);
  for (const std::string& line : Parts(text, '\x02')) {
    std::vector<std::string> fields = Parts(line, '\x03');
    if (fields.size() > 1000) continue;
    for (std::string& field : fields) {
      field = adapters::mime::ValidUtf8(field);
      field.erase(std::remove(field.begin(), field.end(), '\0'), field.end());
    }
    file += Written(fields, separator);
    rows.push_back(std::move(fields));
  }
  const auto records = Read(file);
  Require(records.size() == rows.size() + 1, "every row written is read");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Require(records[i + 1].errore.empty(), "a row written is well-formed");
    Require(records[i + 1].campi == rows[i], "a row written comes back");
  }
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckAgainstPlainReader(text);
  CheckRoundTrip(text);
  return 0;
}
