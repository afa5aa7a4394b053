#include "linux/http/ReceivedAnswer.h"

#include <gtest/gtest.h>

using namespace lumora;

TEST(ReceivedAnswer, PutsTheBodyTogether) {
    ReceivedAnswer answer(100, 100);
    EXPECT_TRUE(answer.takeBody("half a "));
    EXPECT_TRUE(answer.takeBody("body"));
    EXPECT_EQ(answer.body(), "half a body");
    EXPECT_FALSE(answer.isTooLarge());
}

TEST(ReceivedAnswer, TakesABodyUpToItsLimit) {
    ReceivedAnswer answer(100, 4);
    EXPECT_TRUE(answer.takeBody("1234"));
    EXPECT_FALSE(answer.takeBody("5"));
    EXPECT_EQ(answer.body(), "1234");
    EXPECT_TRUE(answer.isTooLarge());
}

TEST(ReceivedAnswer, CountsTheLinesOfAllHeads) {
    ReceivedAnswer answer(11, 100); // a byte less than all three
    EXPECT_TRUE(answer.takeHeadLine("103\r\n"));
    EXPECT_TRUE(answer.takeHeadLine("\r\n"));
    EXPECT_FALSE(answer.takeHeadLine("200\r\n"));
    EXPECT_TRUE(answer.isTooLarge());
}

TEST(ReceivedAnswer, TakesNoTransferCodingButChunks) {
    for (const QByteArrayView line :
         {"Transfer-Encoding: chunked\r\n", "transfer-encoding:Chunked \r\n",
          "Transfer-Encoding: identity\r\n", "Content-Encoding: gzip\r\n",
          "Transfer-Encodings: gzip\r\n", "\r\n", ""}) {
        ReceivedAnswer answer(100, 100);
        EXPECT_TRUE(answer.takeHeadLine(line)) << line.toByteArray().constData();
        EXPECT_FALSE(answer.isPacked());
    }
    for (const QByteArrayView line :
         {"Transfer-Encoding: gzip\r\n", "TRANSFER-ENCODING:deflate, chunked\r\n",
          "Transfer-Encoding: chunked, br\r\n", "Transfer-Encoding:\r\n",
          "Transfer-Encoding: strange"}) {
        ReceivedAnswer answer(100, 100);
        EXPECT_FALSE(answer.takeHeadLine(line)) << line.toByteArray().constData();
        EXPECT_TRUE(answer.isPacked());
        EXPECT_FALSE(answer.isTooLarge());
    }
}

TEST(ReceivedAnswer, LinesBehindABodyBeginNoHead) {
    ReceivedAnswer answer(100, 100);
    for (const char* const line : {"HTTP/1.1 200 OK\r\n", "\r\n", "X-Trailer: x\r\n"})
        EXPECT_TRUE(answer.takeHeadLine(line));
    EXPECT_TRUE(answer.isHeadComplete());
}

TEST(ReceivedAnswer, AnEmptyLineEndsAHead) {
    ReceivedAnswer answer(100, 100);
    EXPECT_FALSE(answer.isHeadComplete());
    EXPECT_TRUE(answer.takeHeadLine("HTTP/1.1 103\r\n"));
    EXPECT_TRUE(answer.takeHeadLine("\r\n"));
    EXPECT_TRUE(answer.isHeadComplete());
    EXPECT_TRUE(answer.takeHeadLine("HTTP/1.1 200\r\n"));
    EXPECT_FALSE(answer.isHeadComplete());
    EXPECT_TRUE(answer.takeHeadLine("\r\n"));
    EXPECT_TRUE(answer.isHeadComplete());
}
