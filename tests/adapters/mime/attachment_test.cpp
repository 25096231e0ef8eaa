#include "mime/attachment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "mime/file_reader.h"
#include "orve-mailserver/host/errore.h"
#include "support/temp_dir.h"

namespace orve::adapters::mime {
namespace {

using testing::HasSubstr;

/// Takes away this thread's right to read every file, which root has.
class WithoutPrivileges {
 public:
  WithoutPrivileges() : before_(static_cast<uid_t>(::setfsuid(65534))) {}
  ~WithoutPrivileges() { ::setfsuid(before_); }

 private:
  uid_t before_;
};

void ExpectRefused(const std::string& path, int number, const std::string& description) {
  try {
    static_cast<void>(RequireAttachable(path));
    ADD_FAILURE() << "taken: " << path;
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), number) << path;
    EXPECT_EQ(errore.Descrizione(), description);
  }
}

class Attachable : public testing::Test {
 protected:
  support::TempDir directory_;
  const std::string root_ = directory_.Path().string();
};

TEST_F(Attachable, ARegularFileIsTakenUnderItsPath) {
  const std::string path = directory_.Write("fattura.pdf", "%PDF");
  EXPECT_EQ(RequireAttachable(path), path);
}

TEST_F(Attachable, AnEmptyFileIsTaken) {
  EXPECT_NO_THROW(static_cast<void>(RequireAttachable(directory_.Write("x", ""))));
}

TEST_F(Attachable, BackslashesAreSeparators) {
  std::filesystem::create_directory(directory_.Path() / "doc");
  const std::string path = directory_.Write("doc/fattura.pdf", "%PDF");
  std::string given = path;
  std::replace(given.begin(), given.end(), '/', '\\');
  EXPECT_EQ(RequireAttachable(given), path);
  EXPECT_EQ(RequireAttachable(root_ + "\\doc/fattura.pdf"), path);
}

TEST_F(Attachable, AFileWhoseNameHoldsABackslashIsFoundAsItIs) {
  const std::string path = directory_.Write("a\\b.txt", "x");
  EXPECT_EQ(RequireAttachable(path), path);
  EXPECT_EQ(AttachmentName(path), "a_b.txt");
}

TEST_F(Attachable, ARelativePathIsHeldAsAnAbsoluteOne) {
  directory_.Write("relativo.txt", "x");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(directory_.Path());
  const std::string path = RequireAttachable("relativo.txt");
  std::filesystem::current_path(before);
  EXPECT_EQ(path, root_ + "/relativo.txt");
}

TEST_F(Attachable, AnEmptyPathIsRefused) {
  ExpectRefused("", 53, "Impossibile allegare il file \"\": il percorso è vuoto");
}

TEST_F(Attachable, AMissingFileIsRefusedUnderThePathAsGiven) {
  ExpectRefused(R"(C:\doc\manca.pdf)", 53,
                R"(Impossibile allegare il file "C:\doc\manca.pdf": il file non esiste)");
}

TEST_F(Attachable, ADanglingLinkIsRefused) {
  std::filesystem::create_symlink(root_ + "/nulla", root_ + "/legame");
  ExpectRefused(root_ + "/legame", 53,
                "Impossibile allegare il file \"" + root_ + "/legame\": il file non esiste");
}

TEST_F(Attachable, APathThroughAFileIsRefused) {
  const std::string path = directory_.Write("x", "") + "/y";
  ExpectRefused(path, 53, "Impossibile allegare il file \"" + path + "\": il file non esiste");
}

TEST_F(Attachable, ADirectoryIsRefused) {
  ExpectRefused(root_, 75, "Impossibile allegare il file \"" + root_ + "\": è una cartella");
}

TEST_F(Attachable, APipeIsRefusedWithoutWaitingForAWriter) {
  const std::string path = root_ + "/coda";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  ExpectRefused(path, 75, "Impossibile allegare il file \"" + path + "\": non è un file normale");
}

TEST_F(Attachable, ADeviceIsRefused) {
  ExpectRefused("/dev/zero", 75, "Impossibile allegare il file \"/dev/zero\": non è un file normale");
}

TEST_F(Attachable, AFileWithoutPermissionIsRefused) {
  const std::string path = directory_.Write("segreto.pdf", "x");
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  ASSERT_EQ(::chmod(root_.c_str(), 0755), 0);
  const WithoutPrivileges here;
  ExpectRefused(path, 70, "Impossibile allegare il file \"" + path + "\": manca il permesso di lettura");
}

TEST_F(Attachable, AFileThatOpensButCannotBeReadIsRefused) {
  // Address 0 of the process itself is never mapped: opening works, reading fails.
  ExpectRefused("/proc/self/mem", 75,
                "Impossibile allegare il file \"/proc/self/mem\": lettura non riuscita (Input/output error)");
}

TEST_F(Attachable, ANulInThePathIsRefusedAndDoesNotCutIt) {
  std::string path = directory_.Write("x", "");
  path += '\0';
  path += ".pdf";
  ExpectRefused(path, 53, "Impossibile allegare il file \"" + root_ + "/x .pdf\": il file non esiste");
}

TEST_F(Attachable, AHugePathIsRefusedWithAShortText) {
  try {
    static_cast<void>(RequireAttachable(std::string(1 << 20, 'x')));
    ADD_FAILURE();
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 53);
    EXPECT_LT(errore.Descrizione().size(), 200U);
    EXPECT_THAT(errore.Descrizione(), HasSubstr("il percorso è troppo lungo"));
  }
}

TEST(ReadingAFile, EndsWhereItEndedWhenItWasOpened) {
  const support::TempDir folder;
  const std::string path = folder.Write("registro.log", "0123456789");
  FileReader reader(path);
  std::string bytes(8, '\0');
  std::string read;
  // Somebody keeps writing: each time more than was read.
  for (int i = 0; i < 100; ++i) {
    std::ofstream(path, std::ios::app) << "abcdefghijklmnopqrstuvwxyz";
    const std::size_t count = reader.Read(bytes.data(), bytes.size());
    read += bytes.substr(0, count);
    if (count == 0) break;
  }
  EXPECT_EQ(read, "0123456789");
}

TEST(ReadingAFile, ThatShrankMeanwhileIsAnError) {
  const support::TempDir folder;
  const std::string path = folder.Write("registro.log", "0123456789");
  FileReader reader(path);
  std::string bytes(4, '\0');
  ASSERT_EQ(reader.Read(bytes.data(), bytes.size()), 4U);
  std::filesystem::resize_file(path, 5);
  ASSERT_EQ(reader.Read(bytes.data(), bytes.size()), 1U);
  try {
    static_cast<void>(reader.Read(bytes.data(), bytes.size()));
    ADD_FAILURE() << "no error";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), kErroreAccessoFile);
  }
}

TEST(AttachmentNames, AreTheLastComponentWithoutControlCharacters) {
  EXPECT_EQ(AttachmentName("/tmp/fattura n° 1.pdf"), "fattura n° 1.pdf");
  EXPECT_EQ(AttachmentName("fattura.pdf"), "fattura.pdf");
  EXPECT_EQ(AttachmentName("/tmp/a\r\nb\x1b.pdf"), "a  b .pdf");
  EXPECT_EQ(AttachmentName("/tmp/a\xff.pdf"), "a\xEF\xBF\xBD.pdf");
  EXPECT_EQ(AttachmentName("/tmp/fattura\xE2\x80\x8F"
                           "fdp.exe"),
            "fattura_fdp.exe");
}

TEST(AttachmentErrors, ShowWhatTurnsANameRoundAsAnEscape) {
  try {
    static_cast<void>(
        RequireAttachable("/manca/fattura\xE2\x80\x8F"
                          "fdp.exe"));
    FAIL();
  } catch (const host::Errore& errore) {
    EXPECT_THAT(errore.Descrizione(), HasSubstr("fattura\\u200Ffdp.exe"));
  }
}

TEST(AttachmentNames, HoldNothingThatAReaderWouldDecode) {
  EXPECT_EQ(AttachmentName("/tmp/=?utf-8?B?eA==?=.pdf"), "=_utf-8?B?eA==_=.pdf");
  EXPECT_EQ(AttachmentName("/tmp/a=?.pdf"), "a=_.pdf");
  EXPECT_EQ(AttachmentName("/tmp/perché?.pdf"), "perché?.pdf");
}

TEST(MediaTypes, FollowTheExtension) {
  EXPECT_EQ(MediaType("a.pdf"), "application/pdf");
  EXPECT_EQ(MediaType("A.PDF"), "application/pdf");
  EXPECT_EQ(MediaType("fattura.xml.p7m"), "application/pkcs7-mime");
  EXPECT_EQ(MediaType("a.7z"), "application/x-7z-compressed");
  EXPECT_EQ(MediaType("a.zip"), "application/zip");
  EXPECT_EQ(MediaType("a.eml"), "application/octet-stream");
  EXPECT_EQ(MediaType("a"), "application/octet-stream");
  EXPECT_EQ(MediaType("a."), "application/octet-stream");
  EXPECT_EQ(MediaType(""), "application/octet-stream");
}

}  // namespace
}  // namespace orve::adapters::mime
