#include "values/collezione_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fakes/errori.h"

namespace orve::adapters::values {
namespace {

using fakes::NumeroDi;

class FileVuoto : public host::OggettoFile {
 public:
  std::string Nome() override { return {}; }
  bool Esiste() override { return true; }
  void Chiudi() override {}
  void CopiaIn(const std::shared_ptr<OggettoFile>& /*altro*/, std::int32_t /*opzioni*/) override {}
  void Crea(std::int32_t /*tipo*/, const std::string& /*nome*/, const std::string& /*testo*/,
            std::int32_t /*opzioni*/) override {}
  std::string Percorso() override { return {}; }
  std::int32_t Posizione() override { return 0; }
  void Apri(const std::string& /*nome*/, const std::string& /*cartella*/, std::int32_t /*opzioni*/) override {
  }
  void ApriPercorso(const std::string& /*cartella*/, const std::string& /*nome*/,
                    const std::string& /*testo*/, std::int32_t /*opzioni*/) override {}
};

TEST(CollezioneInMemoria, PositionsCountFromZeroAndCloseUpAfterARemoval) {
  CollezioneInMemoria collezione;
  const auto primo = std::make_shared<FileVuoto>();
  const auto secondo = std::make_shared<FileVuoto>();
  collezione.Add(primo);
  collezione.Add(secondo);
  EXPECT_EQ(collezione.Item(0), primo);
  collezione.Remove(0);
  EXPECT_EQ(collezione.Count(), 1);
  EXPECT_EQ(collezione.Item(0), secondo);
  collezione.Clear();
  EXPECT_EQ(collezione.Count(), 0);
}

TEST(CollezioneInMemoria, APositionWithoutAFileRaisesNine) {
  CollezioneInMemoria collezione;
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(collezione.Item(0)); }), 9);
  EXPECT_EQ(NumeroDi([&] { collezione.Remove(-1); }), 9);
}

}  // namespace
}  // namespace orve::adapters::values
