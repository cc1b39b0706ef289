// SPDX-License-Identifier: MIT
#include "fakes/FakeCore.h"
#include "fakes/FakeUpdates.h"
#include "linux/updates/LocalServer.h"
#include "platform/linux/updates/DownloadFile.h"
#include "platform/linux/updates/UpdateHelper.h"
#include "services/Preferences.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"
#include "updates/AppcastUpdater.h"

#include <gtest/gtest.h>
#include <QProcess>
#include <sodium.h>

#include <sys/stat.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

std::string base64(const std::vector<unsigned char>& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

/// A program of version 1 that finds version 2 on a server, signed with a key made for the occasion.
class UpdateTest : public testing::Test {
protected:
    UpdateTest() {
        EXPECT_GE(sodium_init(), 0);
        crypto_sign_keypair(publicKey.data(), secretKey.data());
        folder.write("app/program", executable + "=1");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        publish(executable + "=2");
    }
    static std::string signatureOf(const std::string& bytes, const std::vector<unsigned char>& key) {
        std::vector<unsigned char> signature(crypto_sign_BYTES);
        crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(bytes.data()),
                             bytes.size(), key.data());
        return base64(signature);
    }
    void publish(const std::string& file) {
        server.serveBody("/program", file);
        list(file.size(), signatureOf(file, secretKey));
    }
    void list(std::size_t length, const std::string& signature) {
        feed = "<rss xmlns:s='http://www.andymatuschak.org/xml-namespaces/sparkle'><channel><item><s:version>2"
               "</s:version><enclosure s:os='linux' url='" +
               server.url("/program") + "' length='" + std::to_string(length) + "' s:edSignature='" + signature +
               "'/></item></channel></rss>\n";
        server.serveBody("/feed", feed + lineSigning(feed, secretKey));
    }
    static std::string lineSigning(const std::string& list, const std::vector<unsigned char>& key) {
        return "<!-- edSignature: " + signatureOf(list, key) + " -->\n";
    }
    void start(const char* version) {
        updater.reset();
        fakes.bundle.infoDictionary = PropertyValue::Dictionary{{"CFBundleName", "program"},
                                                                {"CFBundleVersion", version},
                                                                {"SUFeedURL", server.url("/feed")},
                                                                {"SUPublicEDKey", base64(publicKey)}};
        updater = std::make_unique<AppcastUpdater>(
            AppcastUpdaterServices{fakes.core, worker, window, {"linux", "6.1", "x86_64"}, true, {}, [] {}});
    }
    [[nodiscard]] bool reaches(UpdateState state) {
        return comesTrue([&] { return updater->status().state == state; });
    }
    /// Starts version 1 and has the version that is offered installed.
    void install() {
        start("1");
        updater->checkForUpdates();
        EXPECT_TRUE(reaches(UpdateState::offered));
        window.choices.emit(UpdateChoice::install);
    }
    /// How the update ends that the user has asked for.
    std::optional<UpdateFailure> update() {
        install();
        EXPECT_TRUE(comesTrue([this] {
            return updater->status().state == UpdateState::installed ||
                   updater->status().state == UpdateState::failed;
        }));
        return updater->status().failure;
    }
    [[nodiscard]] std::string runningVersion() const {
        QProcess process;
        process.start(QString::fromStdString(program), QStringList());
        process.waitForFinished();
        return process.readAll().toStdString();
    }
    [[nodiscard]] std::vector<std::string> files() const { return folder.names("app"); }
    void expectUntouched() {
        EXPECT_EQ(runningVersion(), "1");
        EXPECT_EQ(files(), std::vector<std::string>{"program"});
    }

    const std::string executable = [] {
        std::ifstream file(SMALL_PROGRAM, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }();
    std::vector<unsigned char> publicKey = std::vector<unsigned char>(crypto_sign_PUBLICKEYBYTES);
    std::vector<unsigned char> secretKey = std::vector<unsigned char>(crypto_sign_SECRETKEYBYTES);
    TemporaryFolder folder;
    const std::string program = folder.path("app/program");
    LocalServer server;
    /// The list of releases that is served, without the line that signs it.
    std::string feed;
    FakeCore fakes;
    FakeUpdateWindow window;
    HelperUpdateTransport worker{UPDATER, program};
    std::unique_ptr<AppcastUpdater> updater;
};

TEST_F(UpdateTest, whatWasFetchedUnaskedIsInstalledWithoutFetchingItAgainAndTheOldVersionGoesOnceItRan) {
    start("1");
    fakes.dispatch.advance(1min);
    ASSERT_TRUE(reaches(UpdateState::ready));
    EXPECT_EQ(files(), (std::vector<std::string>{".program.download", "program"}));
    EXPECT_EQ(runningVersion(), "1");
    window.choices.emit(UpdateChoice::later);
    EXPECT_EQ(update(), std::nullopt);
    EXPECT_EQ(std::ranges::count(server.asked, "/program"), 1);
    EXPECT_EQ(runningVersion(), "2");
    EXPECT_EQ(files(), (std::vector<std::string>{"program", "program.old"}));
    start("2");
    fakes.dispatch.advance(1min);
    EXPECT_TRUE(comesTrue([this] { return files() == std::vector<std::string>{"program"}; }));
}

TEST_F(UpdateTest, refusesWhatIsNotWhatTheMakersSigned) {
    const std::string good = executable + "=2";
    std::string tampered = good;
    tampered.back() = '3';
    server.serveBody("/program", tampered);
    EXPECT_EQ(update(), UpdateFailure::badSignature);
    expectUntouched();
    server.serveBody("/program", good + "=3");
    EXPECT_EQ(update(), UpdateFailure::wrongLength);
    server.serveBody("/program", good.substr(1));
    EXPECT_EQ(update(), UpdateFailure::wrongLength);
    server.serve("/program", "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(update(), UpdateFailure::unreachable);
    server.serveBody("/program", good);
    for (const std::string& signature : {std::string(), std::string("rubbish"), std::string(86, 'A') + "=="}) {
        list(good.size(), signature);
        EXPECT_EQ(update(), UpdateFailure::badSignature) << signature;
    }
    publish("#!/bin/sh\n" + std::string(100, '#'));
    EXPECT_EQ(update(), UpdateFailure::notForThisMachine);
    list(std::size_t{2} << 30u, "");
    EXPECT_EQ(update(), UpdateFailure::tooLarge);
    expectUntouched();
}

TEST_F(UpdateTest, believesOnlyListsThatTheMakersSigned) {
    const std::string list = "<rss>\n";
    const std::string signature = lineSigning(list, secretKey);
    std::vector<unsigned char> otherPublicKey(crypto_sign_PUBLICKEYBYTES);
    std::vector<unsigned char> otherKey(crypto_sign_SECRETKEYBYTES);
    crypto_sign_keypair(otherPublicKey.data(), otherKey.data());
    EXPECT_EQ(signedPart(list + signature, base64(publicKey)), list);
    for (const auto& [what, served] : std::vector<std::pair<const char*, std::string>>{
             {"no signature", list},
             {"of another list", "<RSS>\n" + signature},
             {"signed with another key", list + lineSigning(list, otherKey)},
             {"an item behind the signature", list + signature + list},
             {"two signatures", list + signature + signature},
             {"half a signature", list + signature.substr(0, 60) + " -->"},
             {"nothing", ""}})
        EXPECT_FALSE(signedPart(served, base64(publicKey))) << what;
    server.serveBody("/feed", feed);
    start("1");
    updater->checkForUpdates();
    ASSERT_TRUE(reaches(UpdateState::failed));
    EXPECT_EQ(updater->status().failure, UpdateFailure::unsignedList);
}

TEST_F(UpdateTest, whatIsInstalledIsWhatWasChecked) {
    const std::string good = executable + "=2";
    folder.write("app/.program.download", good);
    const auto checked = CheckedDownload::open(
        program, {static_cast<std::int64_t>(good.size()), signatureOf(good, secretKey), base64(publicKey)});
    folder.write("app/other", executable + "=3");
    std::filesystem::rename(folder.path("app/other"), folder.path("app/.program.download"));
    EXPECT_EQ(std::get<CheckedDownload>(checked).install(), UpdateFailure::badSignature);
    expectUntouched();
}

TEST_F(UpdateTest, aFolderThatIsNotOursIsToldOf) {
    worker = HelperUpdateTransport(UPDATER, "/dev/pts/program");  // where nobody, root neither, makes files
    EXPECT_EQ(update(), UpdateFailure::notWritable);
}

TEST_F(UpdateTest, cancellingEndsTheTransferAndLeavesNothing) {
    server.serve("/program",
                 "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(executable.size() + 2) + "\r\n\r\n" +
                     executable.substr(0, executable.size() / 2),
                 Afterwards::wait);
    install();
    ASSERT_TRUE(comesTrue([this] { return updater->status().received > 0; }));
    EXPECT_EQ(files().size(), 2u);
    window.choices.emit(UpdateChoice::cancel);
    EXPECT_EQ(updater->status().state, UpdateState::idle);
    EXPECT_TRUE(comesTrue([this] { return files().size() == 1; }));
    expectUntouched();
}

}  // namespace
}  // namespace stowpocket

// Transfers that are broken off leave something of Qt's network thread behind, now and then. The names are those that
// the sanitizers look for; without them nobody calls these.
extern "C" {
const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    return "fast_unwind_on_malloc=0";
}
const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    return "leak:libQt6Network.so\n";
}
}
