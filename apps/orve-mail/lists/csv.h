// Reading lists of rows with fields, as spreadsheets write them (RFC 4180), strictly and as a stream.
//
// A row that is not well-formed does not end the reading: it is returned with the reason, and the next row is
// read as if nothing had happened. Where quotes are wrong there is no telling where the row should have
// ended, so the next row begins on the next line; one missing quote costs one row and not the rest of the
// file.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace orve::app {

struct CsvRecord {
  std::size_t riga = 0;  // the line of the file on which the row begins, from 1
  std::vector<std::string> campi;
  std::string errore;  // why the row is malformed ("è ...", "ha ..."), for a person; `campi` is then empty
};

/// Lines end in LF or CRLF, and the last one may lack its end; a leading UTF-8 byte-order mark is skipped,
/// and so are empty lines. Fields may be quoted and then contain separators, line ends and doubled quotes.
/// The separator is ";" when the first row has one outside quotes, else ",". A row is malformed if its quotes
/// are wrong, it has a lone carriage return outside quotes, a NUL, invalid UTF-8 or more than 1000 fields, or
/// it is longer than kRigaMassima. Memory holds one row at a time.
class CsvReader {
 public:
  static constexpr std::size_t kRigaMassima = std::size_t{20} * 1024 * 1024;  // bytes

  /// `flusso` must outlive the reader and be positioned at its beginning.
  explicit CsvReader(std::istream& flusso) : flusso_(flusso) {}

  /// The next row. False at the end. Raises std::ios_base::failure when the stream cannot be read.
  [[nodiscard]] bool Prossimo(CsvRecord& record);

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
  std::string dati_;        // what has been read and not yet dropped
  std::size_t inizio_ = 0;  // where the current row begins in it
  std::size_t riga_ = 1;    // the line at that position
  char separatore_ = '\0';
};

}  // namespace orve::app
