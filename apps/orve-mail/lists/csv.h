// Reading lists of rows with fields, as spreadsheets write them (RFC 4180), strictly and as a stream.
//
// A row that is not well-formed does not end the reading: it comes with its reason, and the row behind it is
// read as if nothing had been. Where quotes are out of order nobody can tell where the row should have ended,
// so that the next row begins on the next line; one missing quote costs one row and not the rest of the file.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace orve::app {

struct RecordCsv {
  std::size_t riga = 0;  // the line of the file on which the row begins, from 1
  std::vector<std::string> campi;
  std::string errore;  // why the row is malformed ("è ...", "ha ..."), for a person; `campi` is empty then
};

/// Lines end in LF or CRLF, the last one may have no end; a mark of UTF-8 in front is skipped, and so are
/// empty lines. Fields may stand in quotes and hold separators, line ends and doubled quotes then. The
/// separator is ";" when the first row holds one outside quotes, else ",". Malformed are a row with quotes
/// out of order, with a lone carriage return outside quotes, with a NUL, that is no valid UTF-8, with more
/// than 1000 fields, or longer than kRigaMassima. Memory holds one row at a time.
class LettoreCsv {
 public:
  static constexpr std::size_t kRigaMassima = std::size_t{20} * 1024 * 1024;  // bytes

  /// `flusso` must outlive the reader and be at its beginning.
  explicit LettoreCsv(std::istream& flusso) : flusso_(flusso) {}

  /// The next row. False at the end. Raises std::ios_base::failure when the stream cannot be read.
  [[nodiscard]] bool Prossimo(RecordCsv& record);

 private:
  [[nodiscard]] int Byte(std::size_t posizione);
  [[nodiscard]] bool Riempi();
  void Inizia();
  [[nodiscard]] std::size_t FineRiga(std::size_t posizione);
  [[nodiscard]] std::size_t FinoA(std::string_view fermi, std::size_t posizione, std::string& campo);
  [[nodiscard]] std::size_t Campo(std::size_t posizione, std::string& campo);
  [[nodiscard]] std::size_t CampoConVirgolette(std::size_t posizione, std::string& campo);
  [[nodiscard]] std::size_t Campi(std::vector<std::string>& campi);
  void Consuma(std::size_t quanti);
  void SaltaRigaFisica();

  std::istream& flusso_;
  std::string dati_;        // what was read and not yet thrown away
  std::size_t inizio_ = 0;  // where the current row begins in it
  std::size_t riga_ = 1;    // the line at that place
  char separatore_ = '\0';
};

}  // namespace orve::app
