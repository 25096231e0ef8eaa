// The host's file object as far as no file system is asked: what it is bound to, and what becomes of a copy.
//
// A file that may not outlive the choice is copied before it is attached: one on a medium that the person can
// remove, or one on another machine, which may be gone when the message is sent. The path of the copy is
// passed on as text to whatever sends in the end: another service object, another program. So the copies
// stay, in a private folder, and are removed when they are old.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::values {

/// How long copies are kept, since the last one of their folder was made.
inline constexpr std::chrono::hours kVitaDelleCopie{7 * 24};

/// A private folder for copies, which outlives the object.
class CartellaCopie {
 public:
  CartellaCopie() = default;
  CartellaCopie(const CartellaCopie&) = delete;
  CartellaCopie& operator=(const CartellaCopie&) = delete;
  CartellaCopie(CartellaCopie&&) = delete;
  CartellaCopie& operator=(CartellaCopie&&) = delete;
  virtual ~CartellaCopie() = default;

  /// A path for a file of this name, alone in a folder, in the library's form. Raises 52 for text that is not
  /// a plain file name, and the error of the file system when the folder cannot be created.
  [[nodiscard]] virtual std::string PostoPer(const std::string& nome) = 0;
};

/// The members raise 91 while the object is bound to no file.
class OggettoFile : public host::OggettoFile {
 public:
  /// Says, for a path in the system's form, whether its file is to be copied first.
  using VaCopiato = std::function<bool(const std::string& nativo)>;

  /// `copie`: where a copy goes; absent, making one raises 91. `vaCopiato`: empty for never.
  OggettoFile(std::shared_ptr<CartellaCopie> copie, VaCopiato vaCopiato)
      : copie_(std::move(copie)), vaCopiato_(std::move(vaCopiato)) {}

  [[nodiscard]] std::string Nome() override;
  void Chiudi() override {}
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
            std::int32_t opzioni) override;
  [[nodiscard]] std::string Percorso() override;
  [[nodiscard]] std::int32_t Posizione() override;
  void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) override;
  void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) override;

 protected:
  /// Its path in the system's form.
  [[nodiscard]] virtual std::string Nativo() { return Percorso(); }

 private:
  std::shared_ptr<CartellaCopie> copie_;
  VaCopiato vaCopiato_;
  std::string percorso_;  // in the library's form; empty: bound to nothing
};

}  // namespace orve::adapters::values
