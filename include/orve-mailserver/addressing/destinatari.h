// One recipient of a message, and the ordered list of recipients that a caller, the compose dialog or the
// service itself hands to the channels. Plain value holders: nothing here checks an address.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/addressing/keyed_list.h"
#include "orve-mailserver/api.h"
#include "orve-mailserver/content/traccia_istanza.h"
#include "orve-mailserver/host/variant.h"

namespace orve {

/// The box a recipient belongs to. Other values are stored as given.
enum kvCasella : std::int16_t { kvCasellaA = 0, kvCasellaCC = 1, kvCasellaCCn = 2 };

/// Created by CollDestinatari only.
class ORVE_API Destinatario {
 public:
  Destinatario(const Destinatario&) = delete;
  Destinatario& operator=(const Destinatario&) = delete;
  Destinatario(Destinatario&&) = delete;
  Destinatario& operator=(Destinatario&&) = delete;
  ~Destinatario();

  /// The mail address, without angle brackets.
  void Indirizzo(const std::string& valore) { indirizzo_ = valore; }
  [[nodiscard]] const std::string& Indirizzo() const { return indirizzo_; }
  /// The recipient's company; carried along, plays no part in the delivery.
  void Azienda(const std::string& valore) { azienda_ = valore; }
  [[nodiscard]] const std::string& Azienda() const { return azienda_; }
  /// The display name.
  void Nome(const std::string& valore) { nome_ = valore; }
  [[nodiscard]] const std::string& Nome() const { return nome_; }
  /// 0 A, 1 CC, 2 CCn.
  void Casella(std::int16_t valore) { casella_ = valore; }
  [[nodiscard]] std::int16_t Casella() const { return casella_; }

 private:
  friend class CollDestinatari;
  explicit Destinatario(std::shared_ptr<host::Ambiente> ambiente);

  std::string indirizzo_;
  std::string azienda_;
  std::string nome_;
  std::int16_t casella_ = 0;
  TracciaIstanza traccia_;
};

/// An ordered list of recipients, which it creates. Not to be used by two threads at once.
class ORVE_API CollDestinatari {
 public:
  /// An empty list. Raises 91 when the ambiente, which gives each object its identifier, is absent.
  explicit CollDestinatari(std::shared_ptr<host::Ambiente> ambiente);
  CollDestinatari(const CollDestinatari&) = delete;
  CollDestinatari& operator=(const CollDestinatari&) = delete;
  CollDestinatari(CollDestinatari&&) = delete;
  CollDestinatari& operator=(CollDestinatari&&) = delete;
  ~CollDestinatari();

  /// Appends a new recipient with `Casella` 0 and returns it. Raises 457 when a non-empty key is already in
  /// the list.
  std::shared_ptr<Destinatario> Add(const std::string& Indirizzo, const std::string& Nome = {},
                                    const std::string& Azienda = {}, const std::string& sKey = {});
  /// The recipient at a position, from 1 (9 when there is none), or under a text key (5 when it is unknown).
  /// A value that is neither number nor text raises 13.
  [[nodiscard]] std::shared_ptr<Destinatario> Item(const host::Variant& vntIndexKey) const;
  /// Item is the default member: the collection itself takes the index.
  [[nodiscard]] std::shared_ptr<Destinatario> operator[](const host::Variant& vntIndexKey) const {
    return Item(vntIndexKey);
  }
  /// How many recipients there are.
  [[nodiscard]] std::int32_t Count() const { return lista_.Count(); }
  /// Raises the errors of Item.
  void Remove(const host::Variant& vntIndexKey);
  /// The recipients in the order in which they were added, for as long as the collection lives.
  [[nodiscard]] KeyedList<Destinatario>::Enumerator NewEnum() const {
    return KeyedList<Destinatario>::Enumerator(lista_);
  }
  /// NewEnum is the standard enumerator: a for-each loop walks the collection itself.
  [[nodiscard]] auto begin() const { return lista_.begin(); }
  /// Past the last one.
  [[nodiscard]] auto end() const { return lista_.end(); }
  /// As Add, and sets `Casella`.
  std::shared_ptr<Destinatario> AddFromLista(const std::string& Indirizzo, const std::string& Nome = {},
                                             const std::string& Azienda = {}, std::int16_t Casella = 0,
                                             const std::string& sKey = {});

 private:
  std::shared_ptr<host::Ambiente> ambiente_;
  KeyedList<Destinatario> lista_;
  TracciaIstanza traccia_;
};

}  // namespace orve
