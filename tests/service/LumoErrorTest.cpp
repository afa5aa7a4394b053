#include "service/LumoError.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(LumoError, TellsTheUserInFixedWords) {
    EXPECT_EQ(
        LumoError::networkError(u"Host unreachable"_s).errorDescription(), u"Host unreachable"_s);
    EXPECT_EQ(LumoError::refused(u"Not in the clear"_s).errorDescription(), u"Not in the clear"_s);
    EXPECT_EQ(LumoError::serverError(503).errorDescription(), u"Server error (503)"_s);
    EXPECT_EQ(
        LumoError::actionRejected(u"No <b>such</b> %1 habit"_s).errorDescription(),
        u"No <b>such</b> %1 habit"_s);
    EXPECT_EQ(LumoError::actionRejected({}).errorDescription(), QString());
    EXPECT_EQ(LumoError::notConfigured().errorDescription(), u"Endpoint URL or token not set"_s);
    EXPECT_EQ(LumoError::invalidURL().errorDescription(), u"Invalid endpoint URL"_s);
    EXPECT_EQ(LumoError::unauthorized().errorDescription(), u"Token rejected (401)"_s);
    EXPECT_EQ(LumoError::invalidResponse().errorDescription(), u"Invalid response from server"_s);
}

TEST(LumoError, OnlyWhatMayPassIsRetryable) {
    EXPECT_TRUE(LumoError::networkError({}).isRetryable());
    EXPECT_FALSE(LumoError::refused({}).isRetryable());
    for (const int status : {429, 500, 502, 503, 599, 600, 999})
        EXPECT_TRUE(LumoError::serverError(status).isRetryable()) << status;
    for (const int status : {100, 199, 300, 302, 304, 400, 404, 428, 430, 499})
        EXPECT_FALSE(LumoError::serverError(status).isRetryable()) << status;
    EXPECT_FALSE(LumoError::actionRejected({}).isRetryable());
    EXPECT_FALSE(LumoError::notConfigured().isRetryable());
    EXPECT_FALSE(LumoError::invalidURL().isRetryable());
    EXPECT_FALSE(LumoError::unauthorized().isRetryable());
    EXPECT_FALSE(LumoError::invalidResponse().isRetryable());
}

TEST(LumoError, EqualByKindAndPayload) {
    EXPECT_EQ(LumoError::serverError(500), LumoError::serverError(500));
    EXPECT_NE(LumoError::serverError(500), LumoError::serverError(501));
    EXPECT_NE(LumoError::networkError(u"A"_s), LumoError::networkError(u"B"_s));
    EXPECT_NE(LumoError::networkError(u"A"_s), LumoError::actionRejected(u"A"_s));
}
