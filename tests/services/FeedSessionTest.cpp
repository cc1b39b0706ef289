// SPDX-License-Identifier: MIT
#include "fakes/FakeUpdates.h"
#include "linux/updates/LocalServer.h"
#include "platform/linux/updates/UpdateHelper.h"
#include "support/ComesTrue.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

const std::string feed("<item \xff\0", 8);

struct Faked {
    FakeFeedSession session;
    [[nodiscard]] std::string url(const char* path) const { return path; }
    void answer() {
        session.asked.back() == "/gone" ? session.completion(std::nullopt)
                                        : session.answer(session.asked.back() == "/feed" ? 200 : 404, feed);
    }
};

struct ByHelper {
    ByHelper() {
        server.serveBody("/feed", feed);
        server.serve("/missing", "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
        server.serve("/gone", "HTTP/1.1 200 OK\r\n\r\n" + std::string(4096, 'x'), Afterwards::repeat);
    }
    LocalServer server;
    HelperFeedSession session{UPDATER};
    [[nodiscard]] std::string url(const char* path) const { return server.url(path); }
    void answer() {}
};

template <class Subject>
class FeedSessionContract : public testing::Test {
protected:
    /// The status and the body; none for an error.
    std::optional<std::pair<std::optional<int>, std::string>> fetched(const char* path) {
        std::optional<std::pair<std::optional<int>, std::string>> answer;
        int answers = 0;
        subject.session.dataTask(subject.url(path), [&](const std::optional<FeedResponse>& response) {
            ++answers;
            if (response)
                answer = {response->statusCode, {response->body.begin(), response->body.end()}};
        });
        EXPECT_EQ(answers, 0) << "later, not during the call";
        subject.answer();
        EXPECT_TRUE(comesTrue([&] { return answers == 1; }));
        return answer;
    }
    Subject subject;
};
using Subjects = testing::Types<Faked, ByHelper>;
TYPED_TEST_SUITE(FeedSessionContract, Subjects);

TYPED_TEST(FeedSessionContract, answersOnceWithEveryByteOrWithNothing) {
    EXPECT_EQ(this->fetched("/feed"), std::pair(std::optional(200), feed));
    EXPECT_EQ(this->fetched("/missing").value().first, 404);
    EXPECT_EQ(this->fetched("/gone"), std::nullopt);
}

TYPED_TEST(FeedSessionContract, asksSafeAddressesOnly) {
    EXPECT_TRUE(this->subject.session.isValid("https://stowpocket.example/appcast.xml"));
    for (const char* const url : {"http://stowpocket.example/", "ftp://127.0.0.1/", "no address", ""})
        EXPECT_FALSE(this->subject.session.isValid(url)) << url;
}

TEST(HelperFeedSession, answersHoweverLongItIsAndWithoutAHelper) {
    LocalServer server;
    const std::string large(std::size_t{3} << 20u, 'x');
    server.serveBody("/long", large);
    std::vector<std::size_t> sizes;
    const auto note = [&](const std::optional<FeedResponse>& response) {
        sizes.push_back(response ? response->body.size() : 0);
    };
    HelperFeedSession(UPDATER).dataTask(server.url("/long"), [](const auto&) { FAIL() << "after its end"; });
    HelperFeedSession session(UPDATER);
    session.dataTask(server.url("/long"), note);
    ASSERT_TRUE(comesTrue([&] { return sizes.size() == 1; }));
    HelperFeedSession missing("/nowhere/updater");
    missing.dataTask(server.url("/long"), note);
    ASSERT_TRUE(comesTrue([&] { return sizes.size() == 2; }));
    EXPECT_EQ(sizes, (std::vector{large.size(), std::size_t{0}}));
    EXPECT_FALSE(session.isValid("https://"));
}

}  // namespace
}  // namespace stowpocket
