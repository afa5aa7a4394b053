#include "service/EndpointPolicy.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(EndpointPolicy, AnEndpointIsTakenAsItStands) {
    for (const QString& text :
         {u"https://example.com/api/briefing?user=1#x"_s, u"https://example.com/api/briefing/"_s,
          u"http://127.0.0.1:8080/a%20b"_s, u"example.com/api"_s, u"ftp://example.com"_s}) {
        const auto url = parseEndpoint(text);
        ASSERT_TRUE(url) << qPrintable(text);
        EXPECT_EQ(url->toString(QUrl::FullyEncoded), text);
    }
}

TEST(EndpointPolicy, SurroundingWhiteSpaceIsDropped) {
    EXPECT_EQ(
        parseEndpoint(u" \t\n https://example.com/a \r\n\u00a0"_s),
        QUrl(u"https://example.com/a"_s));
}

TEST(EndpointPolicy, NothingIsNoEndpoint) {
    for (const QString& text : {QString(), u""_s, u"   "_s, u"\n\t"_s})
        EXPECT_EQ(parseEndpoint(text), tl::unexpected(LumoError::invalidURL()));
}

TEST(EndpointPolicy, WhatDoesNotParseIsNoEndpoint) {
    for (const QString& text :
         {u"https://example.com:port/"_s, u"https://example.com:99999/"_s,
          u"https://exa mple.com/"_s, u"https://example.com/a b"_s, u"https://[::1/"_s,
          u"https://example.com/%zz"_s, u"://example.com"_s})
        EXPECT_EQ(parseEndpoint(text), tl::unexpected(LumoError::invalidURL())) << qPrintable(text);
}

TEST(EndpointPolicy, TheTokenMayGoOverTlsOrStayOnThisComputer) {
    for (const QString& text :
         {u"https://example.com/a"_s, u"HTTPS://example.com"_s, u"https://127.0.0.1/"_s,
          u"http://127.0.0.1:8080/"_s, u"http://127.8.9.1/"_s, u"http://localhost:8080/"_s,
          u"http://[::1]:8080/"_s})
        EXPECT_TRUE(checkTokenMayGoTo(*parseEndpoint(text))) << qPrintable(text);
}

TEST(EndpointPolicy, TheTokenMayGoNowhereElse) {
    const LumoError refusal =
        LumoError::refused(u"The endpoint must start with https:// to keep the token private; "
                           "http:// works only for this computer"_s);
    for (const QString& text :
         {u"http://example.com/"_s, u"http://192.168.1.2/"_s, u"http://[::2]/"_s,
          u"http://127.0.0.1.example.com/"_s, u"http://localhost@example.com/"_s,
          u"ftp://127.0.0.1/"_s, u"file:///etc/passwd"_s, u"example.com/api"_s, u"localhost:80/"_s,
          u"//example.com/"_s})
        EXPECT_EQ(checkTokenMayGoTo(*parseEndpoint(text)), tl::unexpected(refusal))
            << qPrintable(text);
}

TEST(EndpointPolicy, ActionsGoOneSegmentBelow) {
    const std::pair<QString, QString> rows[] = {
        {u"https://e.com/api/briefing"_s, u"https://e.com/api/briefing/action"_s},
        {u"https://e.com/api/briefing/"_s, u"https://e.com/api/briefing/action"_s},
        {u" \t\n https://e.com/api/briefing///  \n"_s, u"https://e.com/api/briefing/action"_s},
        {u"//https://e.com//api//"_s, u"https://e.com//api/action"_s},
        {u"https://e.com"_s, u"https://e.com/action"_s},
        {u"https://e.com/b?user=1"_s, u"https://e.com/b?user=1/action"_s},
        {u"https://e.com/b?user=1/#top/"_s, u"https://e.com/b?user=1/#top/action"_s},
        // White space inside the slashes stays, and makes the text no address.
        {u" / https://e.com / "_s, u" https://e.com /action"_s},
        {u"  "_s, u"/action"_s},
        {u" /// "_s, u"/action"_s},
    };
    for (const auto& [endpoint, expected] : rows)
        EXPECT_EQ(actionEndpoint(endpoint), expected) << qPrintable(endpoint);
}
