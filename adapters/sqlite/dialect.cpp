#include "sqlite/dialect.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orve::adapters::sqlite {

namespace {

enum class Tipo : std::uint8_t {
  kVuoto,    // white space and comments, the longest possible run
  kParola,   // a keyword, a name or a variable
  kNumero,   // digits and what is attached to them
  kQuotato,  // a text or a name between quotes or brackets
  kSegno     // any other single character
};

struct Symbol {
  std::string_view testo;
  Tipo tipo = Tipo::kSegno;
  bool chiuso = true;       // false: a quoted text that the statement's end cut off
  std::size_t livello = 0;  // which select it is in: every "(" and every ";" begins another
};

char MinuscolaAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Keywords are ASCII; the general comparison without case costs too much for every word of a statement.
bool UgualiSenzaCaso(std::string_view testo, std::string_view parola) {
  return std::equal(testo.begin(), testo.end(), parola.begin(), parola.end(),
                    [](char a, char b) { return MinuscolaAscii(a) == MinuscolaAscii(b); });
}

bool Cifra(char c) {
  return c >= '0' && c <= '9';
}

bool Bianco(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

// The signs of SQL Server's variables and temporary names count as letters, so "@TOP" is not TOP.
bool DiParola(char c) {
  const char minuscola = MinuscolaAscii(c);
  return (minuscola >= 'a' && minuscola <= 'z') || Cifra(c) || c == '_' || c == '@' || c == '#' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80;
}

class Reader {
 public:
  explicit Reader(std::string_view testo) : testo_(testo) {}

  std::vector<Symbol> Leggi() {
    while (posizione_ < testo_.size()) Aggiungi(Prossimo());
    return std::move(simboli_);
  }

  // Whether the select of that level has parts joined by UNION, EXCEPT or INTERSECT.
  [[nodiscard]] const std::vector<bool>& Composti() const { return composti_; }

 private:
  Symbol Prossimo() {
    const char c = testo_[posizione_];
    if (InizioVuoto(posizione_)) return Taglia(FineVuoto(), Tipo::kVuoto);
    if (c == '\'' || c == '"' || c == '`') return Quotato(c);
    if (c == '[') return Quotato(']');
    if (Cifra(c)) return Taglia(FineParola(true), Tipo::kNumero);
    if (DiParola(c)) return Taglia(FineParola(false), Tipo::kParola);
    return Taglia(posizione_ + 1, Tipo::kSegno);
  }

  Symbol Taglia(std::size_t fine, Tipo tipo, bool chiuso = true) {
    const auto inizio = posizione_;
    posizione_ = fine;
    return {testo_.substr(inizio, fine - inizio), tipo, chiuso, 0};
  }

  [[nodiscard]] bool Coppia(std::size_t dove, char primo, char secondo) const {
    return dove + 1 < testo_.size() && testo_[dove] == primo && testo_[dove + 1] == secondo;
  }

  [[nodiscard]] bool InizioVuoto(std::size_t dove) const {
    return Bianco(testo_[dove]) || Coppia(dove, '-', '-') || Coppia(dove, '/', '*');
  }

  // Comments end where SQLite ends them: "--" at the line feed, "/*" at the first "*/", both at the end of
  // the text.
  [[nodiscard]] std::size_t FineVuoto() const {
    auto fine = posizione_;
    while (fine < testo_.size() && InizioVuoto(fine)) {
      if (Bianco(testo_[fine])) {
        ++fine;
        continue;
      }
      const bool riga = testo_[fine] == '-';
      const auto trovato = testo_.find(riga ? "\n" : "*/", fine + 2);
      fine = trovato == std::string_view::npos ? testo_.size() : trovato + (riga ? 1 : 2);
    }
    return fine;
  }

  [[nodiscard]] std::size_t FineParola(bool numero) const {
    auto fine = posizione_;
    while (fine < testo_.size() && (DiParola(testo_[fine]) || (numero && testo_[fine] == '.'))) ++fine;
    return fine;
  }

  // Doubled quotes stand for one; a bracketed name ends at the first "]", as SQLite reads it.
  Symbol Quotato(char chiusura) {
    auto fine = posizione_ + 1;
    for (;;) {
      fine = testo_.find(chiusura, fine);
      if (fine == std::string_view::npos) return Taglia(testo_.size(), Tipo::kQuotato, false);
      ++fine;
      const bool doppia = chiusura != ']' && fine < testo_.size() && testo_[fine] == chiusura;
      if (!doppia) return Taglia(fine, Tipo::kQuotato);
      ++fine;
    }
  }

  void Aggiungi(Symbol simbolo) {
    if (simbolo.testo == ")" && aperti_.size() > 1) aperti_.pop_back();
    if (simbolo.testo == ";") aperti_.assign(1, NuovoLivello());
    simbolo.livello = aperti_.back();
    if (simbolo.testo == "(") aperti_.push_back(NuovoLivello());
    if (simbolo.tipo == Tipo::kParola &&
        (UgualiSenzaCaso(simbolo.testo, "UNION") || UgualiSenzaCaso(simbolo.testo, "EXCEPT") ||
         UgualiSenzaCaso(simbolo.testo, "INTERSECT"))) {
      composti_[simbolo.livello] = true;
    }
    simboli_.push_back(simbolo);
  }

  std::size_t NuovoLivello() {
    composti_.push_back(false);
    return composti_.size() - 1;
  }

  std::string_view testo_;
  std::size_t posizione_ = 0;
  std::vector<Symbol> simboli_;
  std::vector<bool> composti_{false};
  std::vector<std::size_t> aperti_{0};
};

class Translator {
 public:
  explicit Translator(std::string_view istruzione) {
    Reader lettore(istruzione);
    simboli_ = lettore.Leggi();
    composti_ = lettore.Composti();
    uscita_.reserve(istruzione.size() + 64);
  }

  std::string Traduci() {
    Exec();
    while (posto_ < simboli_.size()) {
      const bool conta = simboli_[posto_].tipo != Tipo::kVuoto;
      if (!conta || !(Suggerimento() || PrefissoDbo() || CatalogoTabelle() || FunzioneIsNull())) Uno();
    }
    Chiudi(0);
    return std::move(uscita_);
  }

 private:
  // The n-th significant symbol from the current one on (0 is the current one itself), or none.
  [[nodiscard]] const Symbol* Vista(std::size_t n) const {
    for (auto dove = posto_; dove < simboli_.size(); ++dove) {
      if (simboli_[dove].tipo == Tipo::kVuoto) continue;
      if (n-- == 0) return &simboli_[dove];
    }
    return nullptr;
  }

  [[nodiscard]] bool Parola(std::size_t n, std::string_view parola) const {
    const auto* simbolo = Vista(n);
    return simbolo != nullptr && simbolo->tipo == Tipo::kParola && UgualiSenzaCaso(simbolo->testo, parola);
  }

  [[nodiscard]] bool Segno(std::size_t n, char segno) const {
    const auto* simbolo = Vista(n);
    return simbolo != nullptr && simbolo->tipo == Tipo::kSegno && simbolo->testo.front() == segno;
  }

  [[nodiscard]] bool Nome(std::size_t n) const {
    const auto* simbolo = Vista(n);
    return simbolo != nullptr && (simbolo->tipo == Tipo::kParola || simbolo->tipo == Tipo::kQuotato);
  }

  void Scrivi(const Symbol& simbolo) {
    uscita_ += simbolo.testo;
    if (simbolo.tipo == Tipo::kVuoto) return;
    fineUtile_ = uscita_.size();
    ultimo_ = &simbolo;
  }

  // Drops the next n significant symbols and keeps the white space and comments among them. Where that would
  // join what precedes with what follows, a blank separates them.
  void Togli(std::size_t n) {
    while (n > 0) {
      const auto& simbolo = simboli_[posto_++];
      if (simbolo.tipo == Tipo::kVuoto) {
        uscita_ += simbolo.testo;
      } else {
        --n;
      }
    }
    const bool separati = uscita_.empty() || Bianco(uscita_.back()) || uscita_.back() == '(' ||
                          uscita_.back() == ',' || posto_ == simboli_.size() ||
                          Bianco(simboli_[posto_].testo.front());
    if (!separati) uscita_ += ' ';
  }

  void Sostituisci(std::size_t n, std::string_view testo) {
    const auto& primo = simboli_[posto_];
    Togli(n);
    uscita_ += testo;
    fineUtile_ = uscita_.size();
    ultimo_ = &primo;
  }

  // exec only ever begins a statement; elsewhere the word is left alone.
  void Exec() {
    if (!Parola(0, "EXEC") && !Parola(0, "EXECUTE")) return;
    const std::size_t nome = (Parola(1, "DBO") || Quotato(1, "[DBO]")) && Segno(2, '.') ? 3 : 1;
    if (!Nome(nome) || !Vista(nome)->chiuso || Vista(nome)->testo.front() == '@' || Segno(nome + 1, '.'))
      return;
    while (simboli_[posto_].tipo == Tipo::kVuoto) Scrivi(simboli_[posto_++]);
    uscita_ += "SELECT NULL WHERE";
    Togli(nome);
    while (simboli_[posto_].tipo == Tipo::kVuoto) Scrivi(simboli_[posto_++]);
    Scrivi(simboli_[posto_++]);
    uscita_ += '(';
    fineUtile_ = uscita_.size();
    exec_ = true;
  }

  [[nodiscard]] bool Quotato(std::size_t n, std::string_view parola) const {
    const auto* simbolo = Vista(n);
    return simbolo != nullptr && simbolo->tipo == Tipo::kQuotato && UgualiSenzaCaso(simbolo->testo, parola);
  }

  bool Suggerimento() {
    if (!Parola(0, "WITH") || !Segno(1, '(') || !Parola(2, "NOLOCK") || !Segno(3, ')')) return false;
    Togli(4);
    return true;
  }

  bool PrefissoDbo() {
    if (!(Parola(0, "DBO") || Quotato(0, "[DBO]")) || !Segno(1, '.') || !Nome(2)) return false;
    if (ultimo_ != nullptr && ultimo_->testo == ".") return false;
    Togli(2);
    return true;
  }

  bool CatalogoTabelle() {
    if (!Parola(0, "INFORMATION_SCHEMA") || !Segno(1, '.') || !Parola(2, "TABLES")) return false;
    Sostituisci(3, "INFORMATION_SCHEMA_TABLES");
    return true;
  }

  bool FunzioneIsNull() {
    if (!Parola(0, "ISNULL") || !Segno(1, '(')) return false;
    Sostituisci(1, "IFNULL");
    return true;
  }

  void Uno() {
    const auto& simbolo = simboli_[posto_];
    if (simbolo.testo == ")") Chiudi(simbolo.livello + 1);
    if (simbolo.testo == ";") Chiudi(0);
    Scrivi(simbolo);
    ++posto_;
    if (simbolo.tipo == Tipo::kParola && UgualiSenzaCaso(simbolo.testo, "SELECT")) Top(simbolo.livello);
  }

  // TOP n or TOP (n), directly after SELECT, ALL or DISTINCT.
  void Top(std::size_t livello) {
    const std::size_t prima = Parola(0, "DISTINCT") || Parola(0, "ALL") ? 1 : 0;
    if (!Parola(prima, "TOP") || composti_[livello]) return;
    const bool parentesi = Segno(prima + 1, '(');
    const auto* numero = Vista(prima + (parentesi ? 2 : 1));
    if (numero == nullptr || !std::all_of(numero->testo.begin(), numero->testo.end(), Cifra)) return;
    if (parentesi && !Segno(prima + 3, ')')) return;
    const std::size_t quanti = parentesi ? 4 : 2;
    if (Parola(prima + quanti, "PERCENT") || Parola(prima + quanti, "WITH")) return;
    while (simboli_[posto_].tipo == Tipo::kVuoto) Scrivi(simboli_[posto_++]);
    if (prima == 1) {
      Scrivi(simboli_[posto_++]);
      while (simboli_[posto_].tipo == Tipo::kVuoto) Scrivi(simboli_[posto_++]);
    }
    limiti_.push_back({livello, numero->testo});
    Togli(quanti);
  }

  // Ends the selects from that level on with their limits, and at level 0 the call of a procedure.
  void Chiudi(std::size_t livello) {
    std::string coda;
    while (!limiti_.empty() && limiti_.back().livello >= livello) {
      coda.append(" LIMIT ").append(limiti_.back().numero);
      limiti_.pop_back();
    }
    if (exec_ && livello == 0) {
      coda += ") IS NOT NULL";
      exec_ = false;
    }
    Inserisci(coda);
  }

  // After the last significant symbol, before trailing white space and comments. Nothing is added to a quoted
  // text that the end cut off: the engine refuses it anyway.
  void Inserisci(std::string_view testo) {
    if (ultimo_ != nullptr && !ultimo_->chiuso) return;
    uscita_.insert(fineUtile_, testo);
    fineUtile_ += testo.size();
  }

  struct Limit {
    std::size_t livello;
    std::string_view numero;
  };

  std::vector<Symbol> simboli_;
  std::vector<bool> composti_;
  std::size_t posto_ = 0;
  std::string uscita_;
  std::size_t fineUtile_ = 0;       // after the last significant symbol of the output
  const Symbol* ultimo_ = nullptr;  // that symbol
  std::vector<Limit> limiti_;
  bool exec_ = false;
};

}  // namespace

std::string TraduciDialetto(std::string_view istruzione) {
  return Translator(istruzione).Traduci();
}

}  // namespace orve::adapters::sqlite
