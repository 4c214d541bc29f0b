// SPDX-License-Identifier: GPL-3.0-or-later
// Reads of URLs from a real web server, secured and not.
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>

#include "download_fixture.h"
#include "platform/scratch_folder.h"
#include "support/nginx.h"

namespace veltrin {
namespace {

// Redirections in a circle, by each status, and to bad places; and answers without a body.
constexpr const char* kDirectives = R"(
    location /circle { return 302 /circle; }
    location /from/ { rewrite ^/from/(.*)$ /to/$1 permanent; }
    location /to/ { rewrite ^/to/(.*)$ /$1 redirect; }
    location /status/303 { return 303 /small.bin; }
    location /status/307 { return 307 small.bin; }
    location /status/small.bin { return 308 http://127.0.0.1:$server_port/small.bin#part; }
    location /less-safe { return 302 http://127.0.0.1:$arg_port/small.bin; }
    location /safer { return 302 https://127.0.0.1:$arg_port/small.bin; }
    location /elsewhere { return 302 ftp://127.0.0.1/small.bin; }
    location /nowhere { return 302 http://; }
    location /choice { return 300 "a list"; }
    location /empty { return 200; }
    location /refused { return 403; }
    location /broken { return 500; }
)";

// A folder with files that a server serves, and with a certificate for this machine that
// nobody signed.
struct Served {
  Served() {
    std::string body(3'000'001, '\0');
    for (std::size_t i = 0; i < body.size(); ++i) body[i] = static_cast<char>(i * i / 255);
    scratch.fill("large.bin", body);
    scratch.fill("small.bin", "hello");
    const std::string folder = scratch.folder().string();
    const std::string make =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
        "-subj /CN=localhost -addext subjectAltName=IP:127.0.0.1 -keyout " +
        folder + "/key.pem -out " + folder + "/cert.pem 2>/dev/null";
    EXPECT_EQ(std::system(make.c_str()), 0) << "openssl made no certificate";
    server = std::make_unique<Nginx>(scratch.folder(), kDirectives, scratch.folder());
    large = std::move(body);
  }

  std::string large;
  ScratchFolder scratch;
  std::unique_ptr<Nginx> server;
};

class NginxDownloadTest : public DownloadTest {
 protected:
  static void SetUpTestSuite() {
    if (Nginx::isThere()) served_ = std::make_unique<Served>();
  }
  static void TearDownTestSuite() { served_.reset(); }

  void SetUp() override {
    if (!Nginx::isThere()) GTEST_SKIP() << "there is no nginx";
    ASSERT_TRUE(server().isRunning()) << served_->scratch.content("error.log");
  }

  static const Nginx& server() { return *served_->server; }
  static const std::string& large() { return served_->large; }
  static std::string certificate() { return served_->scratch.path("cert.pem"); }

  // What a read brings; "failed" for one that fails.
  std::string bodyAt(const std::string& url) {
    Told told;
    const auto asked = read(url, told);
    EXPECT_TRUE(ends(told)) << url;
    return told.end && told.end->BytesMax > 0 ? bodyOf(*told.end) : "failed";
  }

 private:
  static std::unique_ptr<Served> served_;
};

std::unique_ptr<Served> NginxDownloadTest::served_;

// Trusts the server's certificate as long as it lives.
class TrustInServer {
 public:
  explicit TrustInServer(const std::string& certificate) {
    QFile file(QString::fromStdString(certificate));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QSslConfiguration trusting = before_;
    trusting.setCaCertificates({QSslCertificate(&file)});
    QSslConfiguration::setDefaultConfiguration(trusting);
  }
  ~TrustInServer() { QSslConfiguration::setDefaultConfiguration(before_); }
  TrustInServer(const TrustInServer&) = delete;
  TrustInServer& operator=(const TrustInServer&) = delete;

 private:
  const QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();
};

TEST_F(NginxDownloadTest, GivesAFileToTheBit) {
  Told told;
  const auto asked = read(server().url("/large.bin"), told);

  ASSERT_TRUE(ends(told));
  EXPECT_TRUE(bodyOf(*told.end) == large());
  EXPECT_EQ(told.end->BytesMax, 3000001);
  ASSERT_FALSE(told.progress.empty());
  EXPECT_EQ(told.progress.back().BytesRead, 3000001);
  EXPECT_EQ(told.progress.back().BytesMax, 3000001);
}

TEST_F(NginxDownloadTest, GivesManyFilesAtOnceUnderOneName) {
  std::vector<Told> told(8);
  std::vector<std::unique_ptr<Downloads::Read>> asked;
  asked.reserve(told.size());
  for (Told& each : told) asked.push_back(read(server().url("/large.bin"), each));

  for (const Told& each : told) {
    ASSERT_TRUE(ends(each));
    EXPECT_TRUE(bodyOf(*each.end) == large());
  }
}

TEST_F(NginxDownloadTest, FollowsRedirections) {
  EXPECT_EQ(bodyAt(server().url("/from/small.bin")), "hello");
  EXPECT_EQ(bodyAt(server().url("/status/303")), "hello");
  EXPECT_EQ(bodyAt(server().url("/status/307")), "hello");
}

TEST_F(NginxDownloadTest, FailsForRedirectionsInACircle) {
  EXPECT_EQ(bodyAt(server().url("/circle")), "failed");
}

TEST_F(NginxDownloadTest, FailsForRedirectionsToWhatIsNoPlaceOfTheWeb) {
  EXPECT_EQ(bodyAt(server().url("/elsewhere")), "failed");
  EXPECT_EQ(bodyAt(server().url("/nowhere")), "failed");
  EXPECT_EQ(bodyAt(server().url("/choice")), "failed");
}

TEST_F(NginxDownloadTest, FailsForAnswersThatTellOfErrors) {
  for (const char* path : {"/missing", "/refused", "/broken"}) {
    Told told;
    const auto asked = read(server().url(path), told);
    EXPECT_TRUE(fails(told)) << path;
  }
}

TEST_F(NginxDownloadTest, GivesNothingForAnEmptyBody) {
  Told told;
  const auto asked = read(server().url("/empty"), told);
  EXPECT_TRUE(fails(told));
}

TEST_F(NginxDownloadTest, FailsForACertificateThatNobodySigned) {
  Told told;
  const auto asked = read(server().secureUrl("/small.bin"), told);
  EXPECT_TRUE(fails(told));
}

TEST_F(NginxDownloadTest, GivesAFileOfAServerWithATrustedCertificate) {
  const TrustInServer trust(certificate());
  Told told;
  const auto asked = read(server().secureUrl("/large.bin"), told);

  ASSERT_TRUE(ends(told));
  EXPECT_TRUE(bodyOf(*told.end) == large());
}

TEST_F(NginxDownloadTest, FailsForACertificateOfAnotherHost) {
  const TrustInServer trust(certificate());
  downloads = QtDownloads([](const std::string&) { return std::vector<std::string>{"127.0.0.1"}; });

  EXPECT_EQ(bodyAt("https://other.example:" + std::to_string(server().securePort()) + "/small.bin"),
            "failed");
}

TEST_F(NginxDownloadTest, FollowsNoRedirectionFromASecuredPlaceToAnother) {
  const TrustInServer trust(certificate());
  const std::string port = std::to_string(server().port());

  EXPECT_EQ(bodyAt(server().url("/less-safe?port=" + port)), "hello") << "the place itself is good";
  EXPECT_EQ(bodyAt(server().secureUrl("/less-safe?port=" + port)), "failed");
}

TEST_F(NginxDownloadTest, FollowsARedirectionToASecuredPlace) {
  const TrustInServer trust(certificate());
  EXPECT_EQ(bodyAt(server().url("/safer?port=" + std::to_string(server().securePort()))), "hello");
}

TEST_F(NginxDownloadTest, FailsWhenASecuredPortIsAskedPlainly) {
  Told told;
  const auto asked =
      read("http://127.0.0.1:" + std::to_string(server().securePort()) + "/small.bin", told);
  EXPECT_TRUE(fails(told));
}

TEST_F(NginxDownloadTest, FailsWhenAPlainPortIsAskedForSecurity) {
  Told told;
  const auto asked =
      read("https://127.0.0.1:" + std::to_string(server().port()) + "/small.bin", told);
  EXPECT_TRUE(fails(told));
}

}  // namespace
}  // namespace veltrin
