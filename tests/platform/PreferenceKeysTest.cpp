#include "platform/AppStorageBacked.h"
#include "platform/memory/MemoryPreferences.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

template <typename Value>
Value read(const PreferenceKey<Value>& key, const Preferences& store = MemoryPreferences()) {
    return AppStorageBacked(store, key).wrappedValue();
}

/// What stands in the store after `value` was stored there, and what it reads as.
template <typename Value>
std::pair<QString, Value> stored(const PreferenceKey<Value>& key, const Value& value) {
    MemoryPreferences store;
    EXPECT_TRUE(storePreference(store, key, value));
    return {store.value(key.name).value_or(QString()), read(key, store)};
}

} // namespace

TEST(PreferenceKeys, AreThoseOfTheDocumentation) {
    EXPECT_EQ(PreferenceKeys::endpointURL.name, u"endpointURL"_s);
    EXPECT_EQ(read(PreferenceKeys::endpointURL), QString());
    EXPECT_EQ(PreferenceKeys::refreshMinutes.name, u"refreshMinutes"_s);
    EXPECT_EQ(read(PreferenceKeys::refreshMinutes), 10);
    EXPECT_EQ(PreferenceKeys::menuBarAmbient.name, u"menuBarAmbient"_s);
    EXPECT_EQ(read(PreferenceKeys::menuBarAmbient), u"habits"_s);
    EXPECT_EQ(PreferenceKeys::linkSchemes.name, u"linkSchemes"_s);
    EXPECT_EQ(read(PreferenceKeys::linkSchemes), QString());
    EXPECT_EQ(PreferenceKeys::notifyBeforeMeetings.name, u"notifyBeforeMeetings"_s);
    EXPECT_TRUE(read(PreferenceKeys::notifyBeforeMeetings));
    EXPECT_EQ(PreferenceKeys::eventsCollapsed.name, u"section.collapsed.events"_s);
    EXPECT_FALSE(read(PreferenceKeys::eventsCollapsed));
    EXPECT_EQ(PreferenceKeys::habitsCollapsed.name, u"section.collapsed.habits"_s);
    EXPECT_FALSE(read(PreferenceKeys::habitsCollapsed));
    EXPECT_EQ(PreferenceKeys::choresCollapsed.name, u"section.collapsed.chores"_s);
    EXPECT_FALSE(read(PreferenceKeys::choresCollapsed));
    EXPECT_EQ(PreferenceKeys::spendingCollapsed.name, u"section.collapsed.spending"_s);
    EXPECT_FALSE(read(PreferenceKeys::spendingCollapsed));
}

TEST(PreferenceKeys, AValueIsStoredAsTextThatReadsAsTheValue) {
    EXPECT_EQ(stored(PreferenceKeys::notifyBeforeMeetings, false), std::pair(u"false"_s, false));
    EXPECT_EQ(stored(PreferenceKeys::eventsCollapsed, true), std::pair(u"true"_s, true));
    EXPECT_EQ(stored<qint64>(PreferenceKeys::refreshMinutes, -5), std::pair(u"-5"_s, qint64(-5)));
    EXPECT_EQ(stored(PreferenceKeys::endpointURL, u" a "_s), std::pair(u" a "_s, u" a "_s));
}

TEST(PreferenceKeys, TextThatIsNoValueReadsAsTheDefault) {
    MemoryPreferences store;
    for (const QString& text : {u""_s, u"yes"_s, u"True"_s, u"2"_s}) {
        ASSERT_TRUE(store.setValue(u"notifyBeforeMeetings"_s, text));
        EXPECT_TRUE(read(PreferenceKeys::notifyBeforeMeetings, store)) << text.toStdString();
    }
    ASSERT_TRUE(store.setValue(u"notifyBeforeMeetings"_s, u"0"_s));
    EXPECT_FALSE(read(PreferenceKeys::notifyBeforeMeetings, store));
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"soon"_s));
    EXPECT_EQ(read(PreferenceKeys::refreshMinutes, store), 10);
}

TEST(PreferenceKeys, ASwitchMayBeANumberToo) {
    MemoryPreferences store;
    ASSERT_TRUE(store.setValue(PreferenceKeys::eventsCollapsed.name, u"1"_s));
    ASSERT_TRUE(store.setValue(PreferenceKeys::notifyBeforeMeetings.name, u"0"_s));
    EXPECT_TRUE(read(PreferenceKeys::eventsCollapsed, store));
    EXPECT_FALSE(read(PreferenceKeys::notifyBeforeMeetings, store));
}
