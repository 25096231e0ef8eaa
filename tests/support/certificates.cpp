#include "support/certificates.h"

#include <fstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "support/process.h"

namespace orve::support {

namespace {

void Openssl(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "openssl");
  const ProcessResult result = RunProgram(arguments);
  if (result.status != 0) throw std::runtime_error("openssl: " + result.output);
}

}  // namespace

TestAuthority::TestAuthority(std::filesystem::path directory) : directory_(std::move(directory)) {
  ca_ = {directory_ / "ca.pem", directory_ / "ca.key"};
  Openssl({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2",
           "-subj", "/CN=Orve test authority", "-keyout", ca_.key, "-out", ca_.certificate});
}

Certificate TestAuthority::Issue(const std::string& label, const std::string& names, bool expired) const {
  Certificate issued{directory_ / (label + ".pem"), directory_ / (label + ".key")};
  const std::filesystem::path request = directory_ / (label + ".csr");
  const std::filesystem::path config = directory_ / (label + ".cnf");
  const std::filesystem::path index = directory_ / (label + ".index");
  std::ofstream(index).flush();
  std::ofstream(config) << "[ca]\ndefault_ca=own\n[own]\ndatabase=" << index.string()
                        << "\nnew_certs_dir=" << directory_.string()
                        << "\nrand_serial=yes\ndefault_md=sha256\npolicy=any\n"
                        << "x509_extensions=leaf\nunique_subject=no\n[any]\ncommonName=supplied\n"
                        << "[leaf]\nbasicConstraints=CA:false\nsubjectAltName=" << names << "\n";
  Openssl({"req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-subj",
           "/CN=" + label, "-keyout", issued.key, "-out", request});
  std::vector<std::string> sign = {"ca",    "-batch",        "-notext",         "-config", config,
                                   "-cert", ca_.certificate, "-keyfile",        ca_.key,   "-in",
                                   request, "-out",          issued.certificate};
  if (expired) {
    sign.insert(sign.end(), {"-startdate", "20200101000000Z", "-enddate", "20200201000000Z"});
  } else {
    sign.insert(sign.end(), {"-days", "2"});
  }
  Openssl(sign);
  return issued;
}

}  // namespace orve::support
