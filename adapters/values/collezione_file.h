// The collection of file objects, held in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "orve-mailserver/host/oggetti_file.h"

namespace orve::adapters::values {

class CollezioneInMemoria : public host::CollezioneFile {
 public:
  [[nodiscard]] std::shared_ptr<host::OggettoFile> Item(std::int32_t posizione) override;
  [[nodiscard]] std::int32_t Count() override { return static_cast<std::int32_t>(file_.size()); }
  void Clear() override { file_.clear(); }
  void Add(const std::shared_ptr<host::OggettoFile>& file) override { file_.push_back(file); }
  void Remove(std::int32_t posizione) override;

 private:
  [[nodiscard]] std::size_t Indice(std::int32_t posizione) const;

  std::vector<std::shared_ptr<host::OggettoFile>> file_;
};

}  // namespace orve::adapters::values
