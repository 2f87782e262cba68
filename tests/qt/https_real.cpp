// Downloads over real encrypted connections, from servers on this machine.

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "qt/certificates.h"
#include "qt/qt_http_client.h"
#include "qt/qt_main_loop.h"
#include "qt/raw_http_server.h"
#include "qt/spin.h"
#include "qt/thread_workers.h"

namespace veloran {
namespace {

using test::httpAnswer;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using ::testing::SizeIs;

class Https : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { made = std::make_unique<test::Certificates>(); }
    static void TearDownTestSuite() { made.reset(); }
    void SetUp() override { ASSERT_EQ(made->error(), ""); }

    std::optional<std::string> fetch(const std::string& url) {
        std::optional<HttpResult> result;
        client->get(url, [&](HttpResult got) { result = std::move(got); });
        EXPECT_TRUE(test::spinUntil([&] { return result.has_value(); })) << url;
        return result ? result->body : std::nullopt;
    }
    std::unique_ptr<QtHttpClient> clientThatTrusts(const std::string& authorities) {
        return std::make_unique<QtHttpClient>(loop, workers,
                                              QtHttpOptions{.authorities = authorities});
    }
    static std::string redirectTo(const std::string& address) {
        return httpAnswer("302 Found", "not this", "Location: " + address + "\r\n");
    }
    static std::string demand() {
        return httpAnswer("401 Unauthorized", "who?",
                          "WWW-Authenticate: Basic realm=\"lists\"\r\n");
    }

    static std::unique_ptr<test::Certificates> made;
    QtMainLoop loop;
    ThreadWorkers workers{1};
    test::RawHttpServer server{made->ofServer()};
    test::RawHttpServer other{made->ofServer()};
    std::unique_ptr<QtHttpClient> client = clientThatTrusts(made->authority());
};

std::unique_ptr<test::Certificates> Https::made;

TEST_F(Https, AServerWithAGoodCertificateIsRead) {
    server.answers["/it"] = httpAnswer("200 OK", "list");
    EXPECT_THAT(fetch(server.url("/it")), Optional(std::string("list")));
    EXPECT_THAT(fetch(server.url("/it", "localhost")), Optional(std::string("list")));
}

TEST_F(Https, AnUnknownAuthorityFailsBeforeAnythingIsAskedFor) {
    client = clientThatTrusts("");
    server.answers["/it"] = httpAnswer("200 OK", "list");
    EXPECT_EQ(fetch(server.url("/it")), std::nullopt);
    const test::Certificates stranger;
    ASSERT_EQ(stranger.error(), "");
    client = clientThatTrusts(stranger.authority());
    EXPECT_EQ(fetch(server.url("/it")), std::nullopt);
    EXPECT_THAT(server.requests, IsEmpty());
}

TEST_F(Https, ACertificateForAnotherNameFails) {
    const test::Certificates elsewhere("DNS:elsewhere.test");
    ASSERT_EQ(elsewhere.error(), "");
    test::RawHttpServer stranger(elsewhere.ofServer());
    stranger.answers["/it"] = httpAnswer("200 OK", "list");
    client = clientThatTrusts(elsewhere.authority());
    EXPECT_EQ(fetch(stranger.url("/it")), std::nullopt);
    EXPECT_THAT(stranger.requests, IsEmpty());
}

TEST_F(Https, ARedirectToAnotherEncryptedServerIsFollowed) {
    other.answers["/last"] = httpAnswer("200 OK", "list");
    server.answers["/it"] = redirectTo(other.url("/last"));
    EXPECT_THAT(fetch(server.url("/it")), Optional(std::string("list")));
}

TEST_F(Https, ARedirectToHttpIsRefused) {
    test::RawHttpServer plain;
    plain.answers["/last"] = httpAnswer("200 OK", "list");
    server.answers["/it"] = redirectTo(plain.url("/last"));
    EXPECT_EQ(fetch(server.url("/it")), std::nullopt);
    EXPECT_THAT(server.requests, SizeIs(1));
    EXPECT_THAT(plain.requests, IsEmpty());
}

TEST_F(Https, CredentialsOfAnAddressGoToNoOtherHost) {
    // Qt 6.8 writes the names of fields in small letters.
    const std::string known = lowerCased("Authorization: Basic dXNlcjp3b3Jk");  // user:word
    server.demands["/it"] = demand();
    server.answers["/it"] = redirectTo(other.url("/last", "localhost"));
    other.demands["/last"] = demand();
    other.answers["/last"] = httpAnswer("200 OK", "list");
    EXPECT_THAT(fetch(server.url("/it", "user:word@127.0.0.1")), Optional(std::string("who?")));
    ASSERT_THAT(server.requests, SizeIs(2));
    EXPECT_THAT(lowerCased(server.requests[1]), HasSubstr(known))
        << "its own host gets them, when it asks";
    EXPECT_THAT(other.requests, SizeIs(1));
    for (const std::string& request : other.requests) {
        EXPECT_THAT(lowerCased(request), Not(HasSubstr("authorization")));
        EXPECT_THAT(request, Not(HasSubstr("word")));
    }
}

}  // namespace
}  // namespace veloran
