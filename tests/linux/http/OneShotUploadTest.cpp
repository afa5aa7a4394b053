#include "linux/http/OneShotUpload.h"

#include <gtest/gtest.h>

using namespace lumora;

TEST(OneShotUpload, GivesItsBodyOnce) {
    OneShotUpload upload("body");
    EXPECT_EQ(upload.size(), 4);
    EXPECT_FALSE(upload.isSequential());
    EXPECT_EQ(upload.read(3), "bod");
    EXPECT_EQ(upload.read(3), "y");
    EXPECT_TRUE(upload.atEnd());
    EXPECT_FALSE(upload.reset());
}

TEST(OneShotUpload, AnEmptyBodyCannotBeSentAgainEither) {
    OneShotUpload upload({});
    EXPECT_TRUE(upload.atEnd());
    EXPECT_TRUE(upload.readAll().isEmpty());
    EXPECT_FALSE(upload.reset());
}

TEST(OneShotUpload, OnceAnsweredItCanBeRewound) {
    OneShotUpload upload("body");
    upload.readAll();
    upload.setAnswered();
    EXPECT_TRUE(upload.reset());
    EXPECT_EQ(upload.readAll(), "body");
}
