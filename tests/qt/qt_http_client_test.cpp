#include "qt/qt_http_client.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

#include "base/text.h"
#include "qt/gzip.h"
#include "qt/qt_main_loop.h"
#include "qt/raw_http_server.h"
#include "qt/spin.h"
#include "qt/thread_workers.h"

namespace veloran {
namespace {

using test::gzip;
using test::httpAnswer;
using test::spinUntil;
using ::testing::IsEmpty;
using ::testing::Optional;
using Body = std::optional<std::string>;

class QtHttpClientTest : public ::testing::Test {
  protected:
    /// The body, or nothing; fails the test when there is no completion or a hasty one.
    Body fetch(const std::string& url) {
        std::vector<Body> completions;
        client->get(url, [&](HttpResult result) {
            EXPECT_TRUE(result.status || !result.body);
            status = result.status;
            completions.push_back(std::move(result.body));
        });
        EXPECT_THAT(completions, IsEmpty()) << "called back from inside the call";
        EXPECT_TRUE(spinUntil([&] { return !completions.empty(); })) << url;
        test::spinFor(5);
        EXPECT_EQ(completions.size(), 1U) << url;
        return completions.empty() ? std::nullopt : completions.front();
    }
    Body answered(const std::string& bytes) {
        server.answers["/it"] = bytes;
        return fetch(server.url("/it"));
    }

    test::RawHttpServer server;
    QtMainLoop loop;
    ThreadWorkers workers;
    std::unique_ptr<QtHttpClient> client = std::make_unique<QtHttpClient>(loop, workers);
    std::optional<int> status;  ///< of the latest fetch
};

TEST_F(QtHttpClientTest, TheBodyComesWhateverTheStatus) {
    const std::string body("{\"a\": 1}\r\n\0\xff", 12);
    for (const auto* line :
         {"200 OK", "299 Odd", "400 Bad Request", "401 Unauthorized", "403 Forbidden",
          "404 Not Found", "405 Not Allowed", "409 Conflict", "410 Gone", "418 Teapot",
          "429 Too Many Requests", "500 Error", "501 Not Implemented", "503 Busy", "599 Odd"}) {
        EXPECT_THAT(answered(httpAnswer(line, body)), Optional(body)) << line;
        EXPECT_THAT(status, Optional(std::stoi(line))) << line;
    }
}

TEST_F(QtHttpClientTest, NotModifiedHasAStatusAndNoBody) {
    EXPECT_EQ(answered("HTTP/1.1 304 Not Modified\r\n\r\n"), std::nullopt);
    EXPECT_THAT(status, Optional(304));
}

TEST_F(QtHttpClientTest, AnEmptyBodyIsABody) {
    EXPECT_THAT(answered(httpAnswer("200 OK", "")), Optional(std::string()));
    EXPECT_THAT(answered("HTTP/1.1 204 No Content\r\n\r\n"), Optional(std::string()));
}

TEST_F(QtHttpClientTest, ABodyWithoutLengthEndsWithTheConnection) {
    EXPECT_THAT(answered("HTTP/1.0 200 OK\r\n\r\nall of it"), Optional(std::string("all of it")));
}

TEST_F(QtHttpClientTest, ABodyInChunksIsPutTogether) {
    EXPECT_THAT(answered("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                         "3\r\nall\r\n6\r\n of it\r\n0\r\n\r\n"),
                Optional(std::string("all of it")));
}

TEST_F(QtHttpClientTest, AnAnswerThatIsCutShortIsAFailure) {
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"), std::nullopt);
    EXPECT_EQ(answered("HTTP/1.1 404 Not Found\r\nContent-Length: 100\r\n\r\nhalf"), std::nullopt);
    EXPECT_EQ(status, std::nullopt);
    EXPECT_EQ(answered("HTTP/1.1 500 Error\r\nContent-Length: 100\r\n\r\n"), std::nullopt);
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\nContent-Le"), std::nullopt);
    EXPECT_EQ(answered(""), std::nullopt);
    EXPECT_EQ(answered("RPRT 0\n"), std::nullopt);
}

TEST_F(QtHttpClientTest, RedirectsAreFollowedToTheLastBody) {
    server.answers["/last"] = httpAnswer("200 OK", "last");
    server.answers["/next"] = httpAnswer("301 Moved", "not this", "Location: /last\r\n");
    EXPECT_THAT(
        answered(httpAnswer("302 Found", "nor this", "Location: " + server.url("/next") + "\r\n")),
        Optional(std::string("last")));
    EXPECT_THAT(status, Optional(200));
}

TEST_F(QtHttpClientTest, ARedirectInACircleOrOutOfTheWebIsAFailure) {
    EXPECT_EQ(answered(httpAnswer("302 Found", "x", "Location: /it\r\n")), std::nullopt);
    for (const auto* target : {"file:///etc/hostname", "ftp://127.0.0.1/", "data:,x"}) {
        const auto location = "Location: " + std::string(target) + "\r\n";
        EXPECT_EQ(answered(httpAnswer("302 Found", "x", location)), std::nullopt) << target;
    }
}

TEST_F(QtHttpClientTest, WhatIsNoWebAddressFailsLater) {
    for (const auto* url :
         {"", "no address", "http://", "http:///path", "file:///etc/hostname", "ftp://127.0.0.1/",
          "data:,x", "127.0.0.1/path", "http://[::1", "http://127.0.0.1:99999/", "http://a b/",
          "\xff\xfe", "http://127.0.0.1:0/"}) {
        EXPECT_EQ(fetch(url), std::nullopt) << url;
    }
}

TEST_F(QtHttpClientTest, ARefusedConnectionFails) {
    auto gone = std::make_unique<test::RawHttpServer>();
    const auto url = gone->url("/it");
    gone.reset();
    EXPECT_EQ(fetch(url), std::nullopt);
}

TEST_F(QtHttpClientTest, ABodyOfExactlyTheLimitLands) {
    const auto body = answered(httpAnswer("200 OK", std::string(HttpClient::kLargestBody, 'x')));
    EXPECT_EQ(body.value_or("").size(), HttpClient::kLargestBody);
}

TEST_F(QtHttpClientTest, AnEndlessBodyFails) {
    server.endless["/it"] = std::string(1'000'000, 'x');
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\n\r\n"), std::nullopt);
}

TEST_F(QtHttpClientTest, APackedBodyIsUnpackedIfItIsWhole) {
    const auto packed = gzip("all of it");
    const auto head =
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nContent-Encoding: gzip\r\n\r\n";
    const auto chunked = [](const std::string& bytes) {
        std::ostringstream size;
        size << std::hex << bytes.size();
        return size.str() + "\r\n" + bytes + "\r\n";
    };
    EXPECT_THAT(answered(head + chunked(packed) + "0\r\n\r\n"), Optional(std::string("all of it")));
    EXPECT_EQ(answered(head + chunked(packed.substr(0, packed.size() - 1))), std::nullopt);
    EXPECT_EQ(answered(head + chunked(packed).substr(0, packed.size() - 9)), std::nullopt);
}

TEST_F(QtHttpClientTest, AnUnknownPackingFails) {
    EXPECT_EQ(answered(httpAnswer("200 OK", "x", "Content-Encoding: br\r\n")), std::nullopt);
    EXPECT_EQ(answered(httpAnswer("200 OK", "x", "Content-Encoding: gzip\r\n")), std::nullopt);
}

TEST_F(QtHttpClientTest, ASmallPackageOfAHugeBodyFails) {
    const auto packed = gzip(std::string(HttpClient::kLargestBody + 1, ' '));
    EXPECT_EQ(answered(httpAnswer("200 OK", packed, "Content-Encoding: gzip\r\n")), std::nullopt);
}

/// Keeps tasks until they are run, on a thread of their own.
class HeldWorkers final : public WorkerPool {
  public:
    using WorkerPool::run;
    void run(MainLoop::Task task, Priority /*priority*/) override {
        tasks.push_back(std::move(task));
    }
    void release() {
        std::thread([taken = std::exchange(tasks, {})]() mutable {
            for (auto& task : taken) task();
        }).join();
    }
    std::vector<MainLoop::Task> tasks;
};

TEST_F(QtHttpClientTest, APackedBodyIsUnpackedByAWorkerAndAPlainOneIsNot) {
    HeldWorkers held;
    client = std::make_unique<QtHttpClient>(loop, held);
    EXPECT_THAT(answered(httpAnswer("200 OK", "plain")), Optional(std::string("plain")));
    server.answers["/packed"] =
        httpAnswer("404 Not Found", gzip("packed"), "Content-Encoding: gzip\r\n");
    std::vector<HttpResult> results;
    client->get(server.url("/packed"), [&, thread = std::this_thread::get_id()](HttpResult r) {
        EXPECT_EQ(std::this_thread::get_id(), thread);
        results.push_back(std::move(r));
    });
    ASSERT_TRUE(spinUntil([&] { return !held.tasks.empty(); }));
    test::spinFor(20);
    EXPECT_THAT(results, IsEmpty());
    held.release();
    ASSERT_TRUE(spinUntil([&] { return !results.empty(); }));
    EXPECT_THAT(results[0].body, Optional(std::string("packed")));
    EXPECT_THAT(results[0].status, Optional(404));
}

TEST_F(QtHttpClientTest, AClientThatGoesWhileAWorkerUnpacksCompletesNothing) {
    HeldWorkers held;
    client = std::make_unique<QtHttpClient>(loop, held);
    server.answers["/it"] = httpAnswer("200 OK", gzip("x"), "Content-Encoding: gzip\r\n");
    int completed = 0;
    client->get(server.url("/it"), [&](const HttpResult&) { ++completed; });
    ASSERT_TRUE(spinUntil([&] { return !held.tasks.empty(); }));
    client.reset();
    held.release();
    test::spinFor(20);
    EXPECT_EQ(completed, 0);
}

TEST_F(QtHttpClientTest, ABodyThatPacksWellLands) {
    const std::string wide(20'000'000, ' ');
    EXPECT_EQ(answered(httpAnswer("200 OK", gzip(wide), "Content-Encoding: gzip\r\n")), wide);
}

TEST_F(QtHttpClientTest, TheRequestCarriesNoHeadersOfOurOwn) {
    answered(httpAnswer("200 OK", ""));
    ASSERT_EQ(server.requests.size(), 1U);
    std::istringstream head(server.requests.front());
    std::string line;
    std::getline(head, line);
    EXPECT_EQ(line, "GET /it HTTP/1.1\r");
    std::set<std::string> names;
    while (std::getline(head, line) && line != "\r") {
        names.insert(lowerCased(line.substr(0, line.find(':'))));  // as Qt 6.8 sends them
    }
    EXPECT_EQ(names, (std::set<std::string>{"accept-encoding", "accept-language", "connection",
                                            "host", "user-agent"}));
}

TEST_F(QtHttpClientTest, ManyRequestsAtOnceAllComplete) {
    int completed = 0;
    for (int i = 0; i < 50; ++i) {
        const auto path = "/" + std::to_string(i);
        server.answers[path] = httpAnswer("200 OK", path);
        client->get(server.url(path), [&, path](const HttpResult& result) {
            EXPECT_THAT(result.body, Optional(path));
            ++completed;
        });
    }
    EXPECT_TRUE(spinUntil([&] { return completed == 50; }));
}

TEST_F(QtHttpClientTest, AServerThatSaysNothingForTooLongCountsAsFailed) {
    client = std::make_unique<QtHttpClient>(loop, workers, QtHttpOptions{.idleSeconds = 0.05});
    EXPECT_EQ(fetch(server.url("/never")), std::nullopt);
}

TEST_F(QtHttpClientTest, AServerThatDripsForTooLongCountsAsFailed) {
    client = std::make_unique<QtHttpClient>(loop, workers,
                                            QtHttpOptions{.idleSeconds = 600, .wholeSeconds = 0.3});
    server.dripping["/it"] = "x";
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\n\r\n"), std::nullopt);
    EXPECT_EQ(status, std::nullopt);
    EXPECT_GT(server.dripped, 0U);
}

TEST_F(QtHttpClientTest, AServerThatNeverAnswersHoldsUpNothing) {
    client = std::make_unique<QtHttpClient>(
        loop, workers,
        QtHttpOptions{.idleSeconds = 1e6,
                      .wholeSeconds = 1e6});  // who waits for that server, waits for days
    int completed = 0;
    const auto count = [&](const HttpResult&) { ++completed; };
    client->get(server.url("/never"), count);
    ASSERT_TRUE(spinUntil([&] { return !server.requests.empty(); }));
    EXPECT_THAT(answered(httpAnswer("200 OK", "x")), Optional(std::string("x")));
    client->get("no address", count);
    client.reset();
    test::spinFor(20);
    EXPECT_EQ(completed, 0);
}

TEST_F(QtHttpClientTest, ACompletionMayDestroyTheClient) {
    server.answers["/it"] = httpAnswer("200 OK", "x");
    int completed = 0;
    for (int i = 0; i < 3; ++i) {
        client->get(server.url("/it"), [&](const HttpResult&) {
            ++completed;
            client.reset();
        });
    }
    ASSERT_TRUE(spinUntil([&] { return completed > 0; }));
    test::spinFor(20);
    EXPECT_EQ(completed, 1);
}

}  // namespace
}  // namespace veloran
