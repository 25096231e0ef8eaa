// Certificates for servers under test, made by the openssl program.
#pragma once

#include <filesystem>
#include <string>

namespace orve::support {

struct Certificate {
  std::filesystem::path certificate;  // PEM
  std::filesystem::path key;          // PEM
};

/// An authority of a test's own.
class TestAuthority {
 public:
  /// Makes the authority's key and certificate below `directory`, which must outlive it.
  explicit TestAuthority(std::filesystem::path directory);

  [[nodiscard]] const std::filesystem::path& CaFile() const { return ca_.certificate; }

  /// A certificate for `names`, in openssl's form ("DNS:mail.example.test,IP:127.0.0.1"). `expired`: no
  /// longer valid.
  [[nodiscard]] Certificate Issue(const std::string& label, const std::string& names,
                                  bool expired = false) const;

 private:
  std::filesystem::path directory_;
  Certificate ca_;
};

}  // namespace orve::support
