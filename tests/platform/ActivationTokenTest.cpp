#include "platform/ActivationToken.h"

#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

using namespace lumora;
using lumora::tests::ScopedEnvironment;

namespace {

constexpr char variable[] = "XDG_ACTIVATION_TOKEN";

} // namespace

TEST(ActivationToken, IsInheritedByEitherName) {
    const ScopedEnvironment none(variable, std::nullopt);
    const ScopedEnvironment noOlder("DESKTOP_STARTUP_ID", std::nullopt);
    EXPECT_TRUE(inheritedActivationToken().isEmpty());
    const ScopedEnvironment older("DESKTOP_STARTUP_ID", "older");
    EXPECT_EQ(inheritedActivationToken(), "older");
    const ScopedEnvironment newer(variable, "newer");
    EXPECT_EQ(inheritedActivationToken(), "newer");
}

TEST(ActivationToken, IsInTheEnvironmentForTheScopeOnly) {
    const ScopedEnvironment none(variable, std::nullopt);
    {
        const ActivationTokenScope scope("token");
        EXPECT_EQ(qgetenv(variable), "token");
    }
    EXPECT_FALSE(qEnvironmentVariableIsSet(variable));
}

TEST(ActivationToken, OfAScopeWithoutOneIsAnyThatWasLeftThere) {
    const ScopedEnvironment left(variable, "left");
    {
        const ActivationTokenScope scope({});
        EXPECT_EQ(qgetenv(variable), "left");
    }
    EXPECT_FALSE(qEnvironmentVariableIsSet(variable));
}

TEST(ActivationToken, OfAStartedProgramIsTheGivenOneOrNone) {
    QProcessEnvironment environment;
    environment.insert(QString::fromLatin1(variable), QStringLiteral("old"));
    environment.insert(QStringLiteral("HOME"), QStringLiteral("/home"));
    const QProcessEnvironment given = withActivationToken(environment, "token");
    EXPECT_EQ(given.value(QString::fromLatin1(variable)), QStringLiteral("token"));
    EXPECT_EQ(given.value(QStringLiteral("HOME")), QStringLiteral("/home"));
    EXPECT_EQ(withActivationToken(environment, {}).keys(), QStringList(QStringLiteral("HOME")));
}
