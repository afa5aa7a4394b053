#include "linux/http/TransferOutcome.h"

#include "linux/http/HttpFetch.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

TransferEnd broken(CURLcode result) {
    TransferEnd end;
    end.result = result;
    return end;
}

TransferEnd broken(CURLcode result, const QString& detail) {
    TransferEnd end = broken(result);
    end.detail = detail;
    return end;
}

TransferEnd answered(int status, bool headComplete = true) {
    TransferEnd end;
    end.status = status;
    end.headComplete = headComplete;
    return end;
}

} // namespace

TEST(TransferOutcome, AWholeAnswerIsOneWhateverItsStatus) {
    EXPECT_EQ(summary(outcomeOf(answered(200), "body")), "200 body");
    EXPECT_EQ(summary(outcomeOf(answered(503), "")), "503 ");
}

TEST(TransferOutcome, AnAnswerWithoutAStatusOrAWholeHeadIsNone) {
    EXPECT_EQ(summary(outcomeOf(answered(0), "")), "no HTTP: The answer is no HTTP");
    EXPECT_EQ(summary(outcomeOf(answered(200, false), "")), "failed: Connection closed");
}

TEST(TransferOutcome, AnAnswerThatBreaksOffIsAFailureDespiteItsStatus) {
    TransferEnd end = answered(200);
    end.result = CURLE_PARTIAL_FILE;
    EXPECT_EQ(summary(outcomeOf(end, "half")), "failed: Connection closed");
}

TEST(TransferOutcome, TooMuchIsTooMuchHoweverItEnded) {
    for (const CURLcode result : {CURLE_WRITE_ERROR, CURLE_OK, CURLE_RECV_ERROR}) {
        TransferEnd end = answered(200);
        end.result = result;
        end.tooLarge = true;
        EXPECT_EQ(summary(outcomeOf(end, "")), "too large: The answer is too large");
    }
}

TEST(TransferOutcome, WhatNobodyAskedForIsNoAnswerHoweverItEnded) {
    TransferEnd end = answered(200);
    end.result = CURLE_WRITE_ERROR;
    end.packed = true;
    EXPECT_EQ(summary(outcomeOf(end, "")), "no HTTP: The answer is no HTTP");
}

TEST(TransferOutcome, SaysInFewWordsWhatBrokeIt) {
    TransferEnd unknownHost = broken(CURLE_COULDNT_RESOLVE_HOST);
    unknownHost.host = u"example.org"_s;
    TransferEnd unreachable = broken(CURLE_COULDNT_CONNECT);
    unreachable.systemError = EHOSTUNREACH;
    TransferEnd reset = broken(CURLE_COULDNT_CONNECT);
    reset.systemError = ECONNRESET;
    TransferEnd refusedByProxy = broken(CURLE_RECV_ERROR);
    refusedByProxy.proxyStatus = 403;
    TransferEnd brokenBehindProxy = broken(CURLE_RECV_ERROR);
    brokenBehindProxy.proxyStatus = 200;
    const std::pair<TransferEnd, std::string> rows[] = {
        {unknownHost, "failed: Host example.org not found"},
        {unreachable, "failed: No route to host"},
        {reset, "failed: Connection closed"},
        {broken(CURLE_COULDNT_CONNECT), "failed: Connection failed"},
        {broken(CURLE_COULDNT_RESOLVE_PROXY), "failed: Proxy not found"},
        {refusedByProxy, "failed: The proxy answered 403"},
        {brokenBehindProxy, "failed: Connection closed"},
        {broken(CURLE_OPERATION_TIMEDOUT), "failed: The request timed out"},
        {broken(CURLE_GOT_NOTHING, u"Empty reply from server"_s), "failed: Connection closed"},
        {broken(CURLE_SEND_ERROR), "failed: Connection closed"},
        {broken(CURLE_RECV_ERROR, u"Recv failure: Connection reset by peer"_s),
         "failed: Connection closed"},
        {broken(CURLE_RECV_ERROR, u"Malformed encoding found in chunked-encoding"_s),
         "failed: The answer is damaged"},
        {broken(CURLE_OUT_OF_MEMORY), "too large: The answer is too large"},
        {broken(static_cast<CURLcode>(100)), "too large: The answer is too large"},
        {broken(CURLE_RECV_ERROR, u"CONNECT response too large!"_s),
         "too large: The answer is too large"},
        {broken(CURLE_RECV_ERROR, u"Out of memory in chunked-encoding"_s),
         "too large: The answer is too large"},
        {broken(CURLE_BAD_CONTENT_ENCODING), "no HTTP: The answer is no HTTP"},
        {broken(CURLE_WEIRD_SERVER_REPLY), "no HTTP: The answer is no HTTP"},
        {broken(CURLE_UNSUPPORTED_PROTOCOL), "no HTTP: The answer is no HTTP"},
        {broken(
             CURLE_PEER_FAILED_VERIFICATION, u"SSL certificate problem: certificate has expired"_s),
         "failed: SSL handshake failed: certificate has expired"},
        {broken(CURLE_PEER_FAILED_VERIFICATION, u"SSL: no name matches"_s),
         "failed: SSL handshake failed: no name matches"},
        {broken(
             CURLE_SSL_CONNECT_ERROR,
             u"OpenSSL/3.0.19: error:0A00010B:SSL routines::wrong version number"_s),
         "failed: SSL handshake failed: wrong version number"},
        {broken(
             CURLE_SSL_CONNECT_ERROR,
             u"TLS connect error: error:0A000126:SSL routines::unexpected eof while reading"_s),
         "failed: SSL handshake failed"},
        {broken(CURLE_SSL_CONNECT_ERROR, u"OpenSSL SSL_connect: SSL_ERROR_SYSCALL"_s),
         "failed: SSL handshake failed"},
        {broken(CURLE_PROXY, u"SOCKS4: connecting to HTTP proxy"_s),
         "failed: The proxy made no connection"},
        {broken(CURLE_HTTP2), "failed: Error in the HTTP2 framing layer"},
    };
    for (const auto& [end, expected] : rows)
        EXPECT_EQ(summary(outcomeOf(end, "body")), expected);
}
