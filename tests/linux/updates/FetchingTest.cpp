// SPDX-License-Identifier: MIT
#include "linux/updates/LocalServer.h"
#include "platform/linux/updates/AppcastReader.h"
#include "platform/linux/updates/HttpGet.h"
#include "platform/linux/updates/UpdateHelper.h"
#include "platform/linux/updates/UpdateHelperProtocol.h"
#include "support/ComesTrue.h"

#include <QUrl>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto ok = "HTTP/1.1 200 OK\r\n";

std::string redirect(const std::string& to) {
    return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\n\r\n";
}

/// The status and the body, or the failure.
std::string outcome(const std::string& url, const HttpLimits& limits) {
    std::string body;
    const HttpAnswer answer =
        httpGet(QUrl(QString::fromStdString(url)), limits, [&body](int, const QByteArray& piece) {
            body += piece.toStdString();
            return std::optional<UpdateFailure>();
        });
    return answer.failure == UpdateFailure::unreachable ? "unreachable"
           : answer.failure                             ? "too large"
                                                        : std::to_string(answer.status) + " " + body;
}

TEST(HttpGet, takesWholeAnswersOnly) {
    LocalServer server;
    const std::string large(5000, 'x');
    server.serveBody("/good", "<item>");
    // It would answer, by another name for the same device.
    std::string elsewhere = server.url("/good");
    elsewhere.replace(elsewhere.find("127.0.0.1"), 9, "[::ffff:127.0.0.1]");
    using Row = std::tuple<std::string, Afterwards, std::string>;
    for (const auto& [bytes, afterwards, expected] :
         {Row{std::string(ok) + "Content-Length: 3\r\n\r\nabc", Afterwards::close, "200 abc"},
          {std::string(ok) + "Transfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n", Afterwards::close,
           "200 abc"},
          {"HTTP/1.1 304 Not Modified\r\n\r\n", Afterwards::close, "304 "},
          {"HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nno", Afterwards::close, "404 no"},
          {std::string(ok) + "Content-Length: 30\r\n\r\nabc", Afterwards::close, "unreachable"},
          {"SSH-2.0\r\n", Afterwards::close, "unreachable"},
          {std::string(ok) + "Content-Length: 5000\r\n\r\n" + large, Afterwards::close, "too large"},
          {std::string(ok) + "\r\n" + large, Afterwards::repeat, "too large"},
          {redirect("/good"), Afterwards::close, "200 <item>"},
          {redirect(elsewhere), Afterwards::close, "unreachable"},
          {redirect("/answer"), Afterwards::close, "unreachable"}}) {
        server.serve("/answer", bytes, afterwards);
        EXPECT_EQ(outcome(server.url("/answer"), {4096, 20s, 20s}), expected) << bytes.substr(0, 100);
    }
    for (const std::string& beginning : {std::string(), std::string(ok) + "Content-Length: 30\r\n\r\nabc"}) {
        server.serve("/answer", beginning, Afterwards::wait);
        EXPECT_EQ(outcome(server.url("/answer"), {4096, 300ms, 20s}), "unreachable") << "silent";
    }
    server.serve("/answer", std::string(ok) + "\r\nx", Afterwards::repeat);
    EXPECT_EQ(outcome(server.url("/answer"), {std::int64_t{1} << 40u, 20s, 300ms}), "unreachable") << "never ends";
    EXPECT_EQ(outcome("http://stowpocket.example/", {4096, 20s, 20s}), "unreachable") << "not in clear";
}

/// What the session answers, once and after the call.
std::string answerOf(HelperFeedSession& session, const std::string& url) {
    std::vector<std::string> answers;
    session.dataTask(url, [&answers](const std::optional<FeedResponse>& response) {
        answers.push_back(response ? std::to_string(response->statusCode.value_or(0)) +
                                         std::string(response->body.begin(), response->body.end())
                                   : "none");
    });
    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(comesTrue([&answers] { return !answers.empty(); }));
    return answers.size() == 1 ? answers.front() : "many";
}

TEST(HelperFeedSession, answersWithEveryByteOrWithNothing) {
    LocalServer server;
    const std::string feed("<item \xff\0", 8);
    const std::string large(std::size_t{3} << 20u, 'x');
    server.serveBody("/feed", feed);
    server.serveBody("/long", large);
    server.serve("/endless", std::string(ok) + "\r\n" + std::string(4096, 'x'), Afterwards::repeat);
    HelperFeedSession(UPDATER).dataTask(server.url("/feed"), [](const auto&) { FAIL() << "after its end"; });
    HelperFeedSession session(UPDATER);
    for (const auto& [path, expected] :
         {std::pair("/feed", "200" + feed), {"/long", "200" + large}, {"/missing", "404"}, {"/endless", "none"}})
        EXPECT_TRUE(answerOf(session, server.url(path)) == expected) << path;
    HelperFeedSession missing("/nowhere/updater");
    EXPECT_EQ(answerOf(missing, server.url("/feed")), "none");
    EXPECT_TRUE(session.isValid("https://stowpocket.example/appcast.xml"));
    for (const char* const url : {"http://stowpocket.example/", "ftp://127.0.0.1/", "https://", "no address", ""})
        EXPECT_FALSE(session.isValid(url)) << url;
}

TEST(WebAddress, nothingLeavesThisMachineInClearAndNobodySendsIntoIt) {
    constexpr auto web = "https://stowpocket.example/feed";
    constexpr auto here = "http://127.0.0.1:8080/feed";
    for (const auto& [from, to, may] :
         std::vector<std::tuple<const char*, const char*, bool>>{{web, "https://other.example:444/", true},
                                                                 {web, "http://stowpocket.example/feed", false},
                                                                 {web, here, false},
                                                                 {web, "https://localhost/", false},
                                                                 {web, "https://[::1]/", false},
                                                                 {here, "http://localhost/", true},
                                                                 {here, web, true},
                                                                 {here, "http://stowpocket.example/", false},
                                                                 {here, "file:///etc/passwd", false},
                                                                 {here, "ftp://127.0.0.1/", false},
                                                                 {here, "https:///", false}})
        EXPECT_EQ(mayRedirect(QUrl(QString::fromUtf8(from)), QUrl(QString::fromUtf8(to))), may) << from << to;
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
    EXPECT_FALSE(readAppcast("<!DOCTYPE rss [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><rss>&e;</rss>"));
}

TEST(NotesText, keepsTheWordsOfHtmlAndNothingElse) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [html, text] :
         {Case{"Faster.\nSmaller.\n\n\n\nBetter & < more", "Faster.\nSmaller.\n\nBetter & < more"},
          {"<h2>New</h2>\n <ul>\n<li>One  &amp; <b>two</b>,<li>three</ul>", "New\n\n\u2022 One & two,\n\u2022 three"},
          {"<p>a<br/>b</p><p>c</p>", "a\nb\n\nc"},
          {"a<script>alert('</p>')</SCRIPT>b<style>x{}</style>c<!-- <p> -->d<img src=http://e/>", "abcd"},
          {"<i>&#8217;&#x1F600;&nbsp;&#0;&bogus;&lt;b&gt;</i>", "\u2019\U0001F600 &#0;&bogus;<b>"},
          {"<script>never ends", ""}})
        EXPECT_EQ(plainNotes(html), text);
    EXPECT_EQ(plainNotes(std::string(19'999, 'a') + "\u00e9\u00e9").size(), 19'999u) << "cut between characters";
}

}  // namespace
}  // namespace stowpocket
