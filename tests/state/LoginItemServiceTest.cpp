#include "state/LoginItemService.h"

#include "fakes/FakeLoginItems.h"
#include "platform/memory/MemoryLoginItems.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using Status = LoginItemStatus;

/// The calls that turning the item on or off makes when it is in a state.
QStringList callsFor(Status status, bool enabled) {
    FakeLoginItems registry;
    registry.current = status;
    EXPECT_TRUE(LoginItemService(registry).setEnabled(enabled));
    return registry.calls;
}

} // namespace

TEST(LoginItemService, TurningOnRegistersUnlessItIsEnabled) {
    EXPECT_EQ(callsFor(Status::Enabled, true), QStringList());
    EXPECT_EQ(callsFor(Status::NotRegistered, true), QStringList(u"register"_s));
    EXPECT_EQ(callsFor(Status::RequiresApproval, true), QStringList(u"register"_s));
    EXPECT_EQ(callsFor(Status::NotFound, true), QStringList(u"register"_s));
}

TEST(LoginItemService, TurningOffUnregistersUnlessThereIsNothing) {
    EXPECT_EQ(callsFor(Status::NotRegistered, false), QStringList());
    EXPECT_EQ(callsFor(Status::Enabled, false), QStringList(u"unregister"_s));
    EXPECT_EQ(callsFor(Status::RequiresApproval, false), QStringList(u"unregister"_s));
    EXPECT_EQ(callsFor(Status::NotFound, false), QStringList(u"unregister"_s));
}

TEST(LoginItemService, HandsTheRegistrysErrorsOn) {
    FakeLoginItems registry;
    registry.registerError = u"no room"_s;
    registry.unregisterError = u"no right"_s;
    EXPECT_EQ(LoginItemService(registry).setEnabled(true).error(), u"no room"_s);
    registry.current = Status::Enabled;
    EXPECT_EQ(LoginItemService(registry).setEnabled(false).error(), u"no right"_s);
}

TEST(MemoryLoginItems, RemembersForAsLongAsItLives) {
    MemoryLoginItems registry;
    EXPECT_EQ(registry.status(), Status::NotRegistered);
    EXPECT_TRUE(LoginItemService(registry).setEnabled(true));
    EXPECT_EQ(registry.status(), Status::Enabled);
    EXPECT_TRUE(LoginItemService(registry).setEnabled(false));
    EXPECT_EQ(registry.status(), Status::NotRegistered);
}
