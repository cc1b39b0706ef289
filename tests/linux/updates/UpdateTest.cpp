// SPDX-License-Identifier: MIT
#include "linux/updates/LocalServer.h"
#include "linux/updates/Makers.h"
#include "platform/linux/updates/DownloadFile.h"
#include "platform/linux/updates/UpdateHelper.h"
#include "support/ComesTrue.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <elf.h>
#include <gtest/gtest.h>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;
using Outcome = std::optional<UpdateFailure>;
using Names = std::vector<std::string>;

/// What the head of a file says that runs on this machine, and then its version.
std::string programOfVersion(char version) {
    std::ifstream file("/proc/self/exe", std::ios::binary);
    std::string head(sizeof(Elf64_Ehdr), '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    return head + version;
}

/// A program of version 1 whose version 2 is on a server.
class UpdateTest : public testing::Test {
protected:
    UpdateTest() {
        folder.write("app/program", programOfVersion('1'));
        fs::permissions(program, fs::perms::owner_all);
        server.serveBody("/program", next);
    }
    [[nodiscard]] AppcastItem listed(std::size_t length, const std::string& signature) const {
        AppcastItem item;
        item.downloadURL = server.url("/program");
        item.length = static_cast<std::int64_t>(length);
        item.signature = signature;
        return item;
    }
    Outcome download(const AppcastItem& item) {
        return end([&](const auto& done) {
            helper.download(
                item, makers.publicKey(), [](std::int64_t) {}, done);
        });
    }
    Outcome install(const AppcastItem& item) {
        return end([&](const auto& done) { helper.install(item, makers.publicKey(), done); });
    }
    [[nodiscard]] Names files() const { return folder.names("app"); }

    const Makers makers{1};
    const std::string next = programOfVersion('2');
    TemporaryFolder folder;
    const std::string program = folder.path("app/program");
    LocalServer server;
    HelperUpdateTransport helper{UPDATER, program};
    const AppcastItem release = listed(next.size(), makers.signatureOf(next));

private:
    /// How a job of the helper ends.
    template <class Job>
    static Outcome end(const Job& job) {
        std::optional<Outcome> outcome;
        job([&outcome](Outcome failure) { outcome = failure; });
        EXPECT_TRUE(comesTrue([&outcome] { return outcome.has_value(); }));
        return outcome.value_or(UpdateFailure::other);
    }
};

TEST_F(UpdateTest, whatIsFetchedIsInstalledWithoutFetchingItAgainAndTheOldVersionStaysUntilToldToGo) {
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(download(release), std::nullopt);
    EXPECT_EQ(server.asked.size(), 1u);
    EXPECT_EQ(folder.read("app/program").back(), '1');
    EXPECT_EQ(files(), (Names{".program.download", "program"}));
    EXPECT_EQ(install(release), std::nullopt);
    EXPECT_EQ(folder.read("app/program"), next);
    EXPECT_EQ(fs::status(program).permissions(), fs::perms::owner_all);
    EXPECT_EQ(folder.read("app/program.old").back(), '1');
    helper.removeReplaced();
    EXPECT_TRUE(comesTrue([this] { return files() == Names{"program"}; }));
}

TEST_F(UpdateTest, refusesWhatIsNotWhatTheMakersSigned) {
    using Row = std::tuple<std::string, AppcastItem, UpdateFailure>;
    const std::string script = "#!/bin/sh\n" + std::string(100, '#');
    for (const auto& [served, item, failure] :
         {Row{programOfVersion('3'), release, UpdateFailure::badSignature},
          {next, listed(next.size(), ""), UpdateFailure::badSignature},
          {next, listed(next.size(), "rubbish"), UpdateFailure::badSignature},
          {next, listed(next.size(), std::string(86, 'A') + "=="), UpdateFailure::badSignature},
          {next + '3', release, UpdateFailure::wrongLength},
          {next.substr(1), release, UpdateFailure::wrongLength},
          {next, listed(0, release.signature), UpdateFailure::wrongLength},
          {next, listed(std::size_t{2} << 30u, ""), UpdateFailure::tooLarge},
          {script, listed(script.size(), makers.signatureOf(script)), UpdateFailure::notForThisMachine}}) {
        server.serveBody("/program", served);
        EXPECT_EQ(download(item), failure) << served << item.signature;
        folder.write("app/.program.download", served);
        EXPECT_TRUE(install(item)) << "nor is it installed, whoever put it there";
    }
    server.serve("/program", "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(download(release), UpdateFailure::unreachable);
    EXPECT_EQ(files(), Names{"program"});
    EXPECT_EQ(folder.read("app/program").back(), '1');
}

TEST(SignedList, isBelievedOnlyFromTheMakers) {
    const Makers makers(1);
    const std::string list = "<rss>\n";
    const std::string signature = makers.lineSigning(list);
    EXPECT_EQ(signedPart(list + signature, makers.publicKey()), list);
    for (const auto& [what, served] : std::vector<std::pair<const char*, std::string>>{
             {"no signature", list},
             {"of another list", "<RSS>\n" + signature},
             {"signed with another key", list + Makers(2).lineSigning(list)},
             {"an item behind the signature", list + signature + list},
             {"two signatures", list + signature + signature},
             {"half a signature", list + signature.substr(0, 60) + " -->"},
             {"nothing", ""}})
        EXPECT_FALSE(signedPart(served, makers.publicKey())) << what;
}

TEST_F(UpdateTest, whatIsInstalledIsWhatWasChecked) {
    folder.write("app/.program.download", next);
    const auto checked = CheckedDownload::open(program, {release.length, release.signature, makers.publicKey()});
    folder.write("other", programOfVersion('3'));
    folder.rename("other", "app/.program.download");
    EXPECT_EQ(std::get<CheckedDownload>(checked).install(), UpdateFailure::badSignature);
    EXPECT_EQ(folder.read("app/program").back(), '1');
    EXPECT_EQ(files(), Names{"program"});
}

TEST_F(UpdateTest, whatStopsADownloadIsToldOf) {
    {
        const FullDisk full;
        EXPECT_EQ(download(release), UpdateFailure::diskFull);
    }
    EXPECT_EQ(files(), Names{"program"});
    folder.write("crashing", "#!/bin/sh\nkill -9 $$\n");
    fs::permissions(folder.path("crashing"), fs::perms::owner_all);
    helper = HelperUpdateTransport(folder.path("crashing"), program);
    EXPECT_EQ(download(release), UpdateFailure::other);
    helper = HelperUpdateTransport(UPDATER, "/dev/pts/program");  // where nobody, root neither, makes files
    EXPECT_EQ(download(release), UpdateFailure::notWritable);
}

TEST_F(UpdateTest, cancellingEndsTheTransferAndLeavesNothing) {
    server.serve("/program", "HTTP/1.1 200 OK\r\nContent-Length: 65\r\n\r\n" + next.substr(0, 30), Afterwards::wait);
    std::int64_t received = 0;
    helper.download(
        release, makers.publicKey(), [&](std::int64_t bytes) { received = bytes; },
        [](Outcome) { FAIL() << "after it was cancelled"; });
    ASSERT_TRUE(comesTrue([&] { return received == 30; }));
    EXPECT_EQ(files().size(), 2u);
    helper.cancel();
    helper.discardDownload();
    EXPECT_TRUE(comesTrue([this] { return files() == Names{"program"}; }));
}

}  // namespace
}  // namespace stowpocket

// Transfers that are broken off leave something of Qt's network thread behind, now and then. The names are those that
// the sanitizers look for; without them nobody calls these.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
extern "C" {
const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}
const char* __lsan_default_suppressions() {
    return "leak:libQt6Network.so\n";
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
