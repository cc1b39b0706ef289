// SPDX-License-Identifier: MIT
#include "linux/updates/LocalServer.h"
#include "platform/linux/updates/AppcastReader.h"
#include "platform/linux/updates/HttpGet.h"
#include "platform/linux/updates/NotesText.h"
#include "platform/linux/updates/UpdateHelper.h"
#include "platform/linux/updates/UpdateHelperProtocol.h"
#include "support/ComesTrue.h"

#include <QUrl>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto ok = "HTTP/1.1 200 OK\r\n";

struct Served {
    const char* what;
    std::string bytes;
    Afterwards afterwards;
    /// The status and the body, or the number of the failure.
    std::string expected;
};

std::string redirect(const std::string& to) {
    return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\n\r\n";
}

std::string outcome(const std::string& url, const HttpLimits& limits) {
    std::string body;
    const HttpAnswer answer =
        httpGet(QUrl(QString::fromStdString(url)), limits, [&body](int, const QByteArray& piece) {
            body += piece.toStdString();
            return std::optional<UpdateFailure>();
        });
    return answer.failure ? "failure " + std::to_string(static_cast<int>(*answer.failure))
                          : std::to_string(answer.status) + " " + body;
}

TEST(HttpGet, takesWholeAnswersOnly) {
    LocalServer server;
    const std::string unreachable = "failure " + std::to_string(static_cast<int>(UpdateFailure::unreachable));
    const std::string tooLarge = "failure " + std::to_string(static_cast<int>(UpdateFailure::tooLarge));
    const std::string large(5000, 'x');
    server.serveBody("/good", "<item>");
    // It would answer, by another name for the same device.
    std::string elsewhere = server.url("/good");
    elsewhere.replace(elsewhere.find("127.0.0.1"), 9, "[::ffff:127.0.0.1]");
    const std::vector<Served> table{
        {"plain", std::string(ok) + "Content-Length: 3\r\n\r\nabc", Afterwards::close, "200 abc"},
        {"chunked", std::string(ok) + "Transfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n",
         Afterwards::close, "200 abc"},
        {"not modified", "HTTP/1.1 304 Not Modified\r\n\r\n", Afterwards::close, "304 "},
        {"not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nno", Afterwards::close, "404 no"},
        {"broken server", "HTTP/1.1 500 Oops\r\nContent-Length: 0\r\n\r\n", Afterwards::close, "500 "},
        {"cut off", std::string(ok) + "Content-Length: 30\r\n\r\nabc", Afterwards::close, unreachable},
        {"silent", "", Afterwards::wait, unreachable},
        {"stops in the middle", std::string(ok) + "Content-Length: 30\r\n\r\nabc", Afterwards::wait, unreachable},
        {"no HTTP", "SSH-2.0\r\n", Afterwards::close, unreachable},
        {"large", std::string(ok) + "Content-Length: 5000\r\n\r\n" + large, Afterwards::close, tooLarge},
        {"endless", std::string(ok) + "\r\n" + large, Afterwards::repeat, tooLarge},
        {"on this machine", redirect("/good"), Afterwards::close, "200 <item>"},
        {"to an address that is not known to be here", redirect(elsewhere), Afterwards::close, unreachable},
        {"in a circle", redirect("/answer"), Afterwards::close, unreachable},
    };
    for (const Served& served : table) {
        server.serve("/answer", served.bytes, served.afterwards);
        EXPECT_EQ(outcome(server.url("/answer"), {4096, 300ms, 5s}), served.expected) << served.what;
    }
    server.serve("/answer", std::string(ok) + "\r\nx", Afterwards::repeat);
    EXPECT_EQ(outcome(server.url("/answer"), {std::int64_t{1} << 40u, 5s, 300ms}), unreachable) << "never ends";
    EXPECT_EQ(outcome("http://stowpocket.example/", {4096, 300ms, 5s}), unreachable) << "not in clear";
}

TEST(WebAddress, nothingLeavesThisMachineInClearAndNobodySendsIntoIt) {
    constexpr auto web = "https://stowpocket.example/feed";
    constexpr auto here = "http://127.0.0.1:8080/feed";
    const std::vector<std::tuple<const char*, const char*, bool>> table{
        {web, "https://other.example:444/", true},
        {web, "http://stowpocket.example/feed", false},
        {web, here, false},
        {web, "https://localhost/", false},
        {web, "https://[::1]/", false},
        {here, "http://localhost/", true},
        {here, web, true},
        {here, "http://stowpocket.example/", false},
        {here, "file:///etc/passwd", false},
        {here, "ftp://127.0.0.1/", false},
        {here, "https:///", false}};
    for (const auto& [from, to, may] : table)
        EXPECT_EQ(mayRedirect(QUrl(QString::fromUtf8(from)), QUrl(QString::fromUtf8(to))), may) << from << to;
}

TEST(HelperFeedSession, answersOnceWhateverComes) {
    LocalServer server;
    server.serveBody("/long", std::string(std::size_t{3} << 20u, 'x'));
    server.serveBody("/feed", std::string("<item \xff\0", 8));
    server.serve("/large", std::string(ok) + "\r\n" + std::string(4096, 'x'), Afterwards::repeat);
    std::vector<std::string> answers;
    const auto note = [&answers](std::optional<FeedResponse> response) {
        answers.push_back(!response ? "none"
                                    : std::to_string(*response->statusCode) + " " +
                                          std::string(response->body.begin(), response->body.end()));
    };
    HelperFeedSession session(UPDATER);
    HelperFeedSession missing("/nowhere/updater");
    for (const auto& [path, expected] :
         std::vector<std::pair<const char*, std::string>>{{"/feed", std::string("200 <item \xff\0", 12)},
                                                          {"/missing", "404 "},
                                                          {"/long", "200 " + std::string(std::size_t{3} << 20u, 'x')},
                                                          {"/large", "none"}}) {
        answers.clear();
        session.dataTask(server.url(path), note);
        EXPECT_TRUE(answers.empty());
        ASSERT_TRUE(comesTrue([&answers] { return !answers.empty(); }));
        EXPECT_TRUE(answers == std::vector{expected}) << path;
    }
    missing.dataTask(server.url("/feed"), note);
    ASSERT_TRUE(comesTrue([&answers] { return answers.size() == 2; }));
    EXPECT_EQ(answers.back(), "none");
    EXPECT_TRUE(session.isValid("https://stowpocket.example/appcast.xml"));
    for (const char* const url : {"http://stowpocket.example/", "ftp://127.0.0.1/", "https://", "no address", ""})
        EXPECT_FALSE(session.isValid(url)) << url;
}

/// The items of a channel with this inside; "none" when it is no list.
std::string versionsOf(const std::string& inside) {
    const auto items = readAppcast(
        QByteArray::fromStdString("<rss xmlns:s='http://www.andymatuschak.org/xml-namespaces/sparkle'><channel>" +
                                  inside + "</channel></rss>"));
    std::string versions = items ? "" : "none";
    for (const AppcastItem& item : items.value_or(std::vector<AppcastItem>()))
        versions += item.version + ";";
    return versions;
}

TEST(AppcastReader, readsElementsAndAttributesOfTheFormat) {
    const auto items = readAppcast(R"(<?xml version="1.0" encoding="utf-8"?>
        <rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>
        <link>https://e.example/all</link>
        <item a="b"><title>x</title><sparkle:shortVersionString> 2.0 é </sparkle:shortVersionString>
          <description><![CDATA[<p>Better &amp; faster</p>]]></description>
          <sparkle:deltas><enclosure url="https://e.example/delta" length="1" sparkle:version="9"/></sparkle:deltas>
          <sparkle:releaseNotesLink>https://e.example/notes</sparkle:releaseNotesLink>
          <enclosure url="https://e.example/a?b=1&amp;c" length="77" type="application/octet-stream" sparkle:os="linux"
             sparkle:version="200" sparkle:edSignature="c2ln"/><enclosure url="https://e.example/other"/></item>
        <item><link>file:///etc</link><sparkle:version>3</sparkle:version><enclosure url="http://e.example/a"/></item>
        </channel></rss>)");
    AppcastItem first;
    first.version = "200";
    first.displayVersion = "2.0 \u00e9";
    first.operatingSystem = "linux";
    first.pageURL = "https://e.example/all";
    first.notes = "Better & faster";
    first.notesURL = "https://e.example/notes";
    first.downloadURL = "https://e.example/a?b=1&c";
    first.signature = "c2ln";
    first.length = 77;
    AppcastItem second;
    second.version = "3";
    second.pageURL = first.pageURL;
    EXPECT_EQ(items, (std::vector{first, second}));
}

TEST(AppcastReader, refusesWhatIsNoWholeList) {
    EXPECT_EQ(versionsOf("<item><s:version>1</s:version></item>"), "1;");
    EXPECT_EQ(versionsOf("<item><version>1</version></item>"), ";") << "another namespace";
    EXPECT_EQ(versionsOf("<item><s:version>" + std::string(300, '1') + "</s:version></item>"), ";");
    EXPECT_EQ(versionsOf("<item><s:version>1</s:version></item><item>"), "none") << "cut off";
    EXPECT_EQ(versionsOf("<item>&bogus;</item>"), "none");
    EXPECT_EQ(versionsOf("\xff"), "none");
    std::string deep;
    for (int depth = 0; depth < 100'000; ++depth)
        deep += "<a>";
    EXPECT_EQ(versionsOf("<item><description>" + deep), "none");
    EXPECT_FALSE(readAppcast("<!DOCTYPE rss [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><rss>&e;</rss>"));
    EXPECT_FALSE(readAppcast("<html/>"));
    EXPECT_FALSE(readAppcast(""));
}

TEST(NotesText, keepsTheWordsOfHtmlAndNothingElse) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [html, text] :
         {Case{"Faster.\nSmaller.\n\n\n\nBetter & < more", "Faster.\nSmaller.\n\nBetter & < more"},
          {"<h2>New</h2>\n <ul>\n<li>One  &amp; <b>two</b>,<li>three</ul>", "New\n\n\u2022 One & two,\n\u2022 three"},
          {"<p>a<br/>b</p><p>c</p>", "a\nb\n\nc"},
          {"a<script>alert('</p>')</SCRIPT>b<style>x{}</style>c<!-- <p> -->d<img src=http://e/>", "abcd"},
          {"<i>&#8217;&#x1F600;&nbsp;&#0;&bogus;&lt;b&gt;</i>", "\u2019\U0001F600 &#0;&bogus;<b>"},
          {"<script>never ends", ""},
          {"<unclosed", ""}})
        EXPECT_EQ(plainNotes(html), text);
    EXPECT_EQ(plainNotes(std::string(19'999, 'a') + "\u00e9\u00e9").size(), 19'999u) << "cut between characters";
}

}  // namespace
}  // namespace stowpocket
