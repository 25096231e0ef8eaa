// The model of a channel's object: the least that an object which delivers does with a message. It keeps the
// message while the channel fills it, hands it over once and answers; here, to a folder of files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mime/address_list.h"
#include "mime/attachment.h"
#include "mime/message_writer.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/osservatore_invio.h"
#include "support/received_message.h"
#include "support/temp_dir.h"

namespace orve::adapters::mime {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A file for each recipient of one message.
class FolderDelivery {
 public:
  explicit FolderDelivery(std::filesystem::path folder) : folder_(std::move(folder)) {}

  void Sender(const std::string& name, const std::string& address) { message_.from = {name, address}; }
  void Text(const std::string& subject, const std::string& body) {
    message_.subject = subject;
    message_.body = body;
  }
  void To(std::string_view list) { Add(list, &message_.to); }
  void Cc(std::string_view list) { Add(list, &message_.cc); }
  void Bcc(std::string_view list) { Add(list, nullptr); }
  /// Raises what the channel reports of a file that cannot be attached.
  void Attach(std::string_view path) { message_.attachments.push_back(mime::Attach({}, path)); }

  /// Answers for all recipients together, and raises nothing for what is wrong with the message.
  host::EsitoConsegna Deliver() const {
    try {
      const std::set<std::string> receivers = Receivers();
      const std::filesystem::path whole = folder_ / "arriving";
      std::ofstream file(whole, std::ios::binary);
      WriteMessage(message_, [&](std::string_view piece) { file << piece; });
      file.close();
      if (!file) throw host::Errore(kErroreAccessoFile, "FolderDelivery", "Cartella non scrivibile");
      for (const std::string& receiver : receivers) std::filesystem::copy_file(whole, folder_ / receiver);
      return {.riuscita = true};
    } catch (...) {
      const host::Errore error = host::ErroreCorrente();
      return {.riuscita = false, .numero = error.Numero(), .fine = {error.Descrizione(), false}};
    }
  }

 private:
  // The message names whoever is in a header; who gets it is another matter, and the only trace of a blind
  // copy.
  void Add(std::string_view list, std::vector<Address>* named) {
    for (Address& person : ParseAddressList(list)) {
      envelope_.push_back(person.address);
      if (named != nullptr) named->push_back(std::move(person));
    }
  }

  // Each mailbox once, however often it is named.
  std::set<std::string> Receivers() const {
    if (message_.from.address.empty()) throw host::Errore(5, "FolderDelivery", "Manca il mittente");
    if (envelope_.empty()) throw host::Errore(5, "FolderDelivery", "Mancano i destinatari");
    std::set<std::string> receivers;
    for (const std::string& address : envelope_) {
      const auto wire = ToWire(address);
      if (!wire) throw host::Errore(5, "FolderDelivery", "Indirizzo non valido");
      receivers.insert(MailboxKey(wire->text));
    }
    return receivers;
  }

  std::filesystem::path folder_;
  Message message_;
  std::vector<std::string> envelope_;
};

class DeliveryModel : public testing::Test {
 protected:
  DeliveryModel() {
    delivery_.Sender("Ditta Rossi", "ditta@rossi.it");
    delivery_.Text("Fattura 12", "Buongiorno");
    delivery_.To("\"Bianchi, Anna\" <anna@x.example>;Bruno <bruno@x.example>");
  }

  support::ReceivedMessage Received(const std::string& address) {
    return support::ReadMessage(folder_.Path() / address, read_.Path());
  }
  bool Arrived(const std::string& address) { return std::filesystem::exists(folder_.Path() / address); }

  support::TempDir folder_, files_, read_;
  FolderDelivery delivery_{folder_.Path()};
};

TEST_F(DeliveryModel, EveryReceiverGetsTheMessageAndNoneReadsOfABlindCopy) {
  delivery_.Cc("Carla <carla@x.example>");
  delivery_.Bcc("Dario <dario@x.example>;Anna <anna@X.example>");
  delivery_.Attach(files_.Write("fattura.pdf", "dodici"));
  ASSERT_TRUE(delivery_.Deliver().riuscita);
  for (const char* address : {"anna@x.example", "bruno@x.example", "carla@x.example", "dario@x.example"}) {
    const support::ReceivedMessage received = Received(address);
    EXPECT_THAT(received.from, ElementsAre(support::Mailbox{"Ditta Rossi", "ditta@rossi.it"}));
    EXPECT_THAT(received.to, ElementsAre(support::Mailbox{"Bianchi, Anna", "anna@x.example"},
                                         support::Mailbox{"Bruno", "bruno@x.example"}));
    EXPECT_THAT(received.cc, ElementsAre(support::Mailbox{"Carla", "carla@x.example"}));
    EXPECT_EQ(received.subject, "Fattura 12");
    ASSERT_EQ(received.attachments.size(), 1U);
    EXPECT_EQ(support::ReadFile(received.attachments[0].content), "dodici");
    EXPECT_THAT(received.defects, IsEmpty());
    EXPECT_EQ(support::ReadFile(folder_.Path() / address).find("dario"), std::string::npos);
  }
}

TEST_F(DeliveryModel, AReceiverThatNoCommandCouldCarryKeepsTheMessageFromAll) {
  delivery_.Bcc("Dario <dario @x.example>");
  const host::EsitoConsegna esito = delivery_.Deliver();
  EXPECT_FALSE(esito.riuscita);
  EXPECT_EQ(esito.numero, 5);
  EXPECT_EQ(esito.fine.motivo, "Indirizzo non valido");
  EXPECT_FALSE(Arrived("anna@x.example"));
}

TEST_F(DeliveryModel, AFileThatIsGoneByThenKeepsTheMessageFromAll) {
  const std::string path = files_.Write("fattura.pdf", "dodici");
  delivery_.Attach(path);
  std::filesystem::remove(path);
  const host::EsitoConsegna esito = delivery_.Deliver();
  EXPECT_FALSE(esito.riuscita);
  EXPECT_EQ(esito.numero, kFileNonTrovato);
  EXPECT_FALSE(Arrived("anna@x.example"));
}

TEST_F(DeliveryModel, AFolderThatIsNotThereIsAnAnswer) {
  FolderDelivery elsewhere(folder_.Path() / "none");
  elsewhere.Sender("Ditta Rossi", "ditta@rossi.it");
  elsewhere.To("anna@x.example");
  EXPECT_EQ(elsewhere.Deliver().fine.motivo, "Cartella non scrivibile");
}

TEST_F(DeliveryModel, WithoutASenderNothingIsHandedOver) {
  delivery_.Sender("Ditta Rossi", "");
  EXPECT_EQ(delivery_.Deliver().fine.motivo, "Manca il mittente");
  EXPECT_FALSE(Arrived("anna@x.example"));
}

}  // namespace
}  // namespace orve::adapters::mime
