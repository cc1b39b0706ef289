// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/DecoderReply.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Outcome = DecoderReply::Outcome;

Bytes replyOfSize(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30, 40));
    return encodedReply(image);
}

TEST(DecoderReplyTest, carriesPixelsAndTransparency) {
    const DecoderReply reply = parsedReply(replyOfSize(3, 5), 5);
    ASSERT_EQ(reply.outcome, Outcome::decoded);
    EXPECT_EQ(reply.image.size(), QSize(3, 5));
    EXPECT_EQ(reply.image.pixelColor(2, 4), QColor(10, 200, 30, 40));
    for (const Outcome outcome : {Outcome::failed, Outcome::unsupported, Outcome::unconfined})
        EXPECT_EQ(parsedReply(encodedReply(outcome), 5).outcome, outcome);
    EXPECT_EQ(parsedReply(encodedReply(Outcome::decoded), 5).outcome, Outcome::failed) << "without a picture";
}

TEST(DecoderReplyTest, refusesEveryLengthButTheRightOne) {
    const Bytes whole = replyOfSize(2, 2);
    Bytes longer = whole;
    longer.push_back(0);
    EXPECT_EQ(parsedReply(longer, 8).outcome, Outcome::failed);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(parsedReply(std::span(whole).first(length), 8).outcome, Outcome::failed) << length;
}

TEST(DecoderReplyTest, refusesSizesThatWereNotAskedFor) {
    EXPECT_EQ(parsedReply(replyOfSize(9, 1), 8).outcome, Outcome::failed);
    EXPECT_EQ(parsedReply(replyOfSize(1, 9), 8).outcome, Outcome::failed);
    Bytes lying = replyOfSize(2, 2);
    lying[7] = 0x80;  // 2^31 + 2 columns: times 4 bytes that is 8 again, modulo 2^32
    EXPECT_EQ(parsedReply(lying, 8).outcome, Outcome::failed);
    Bytes foreign = replyOfSize(2, 2);
    foreign[0] ^= 1u;
    EXPECT_EQ(parsedReply(foreign, 8).outcome, Outcome::failed);
}

}  // namespace
}  // namespace stowpocket
