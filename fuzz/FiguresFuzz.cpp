// Numbers of any size and instants of any year, as people read them.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "texts/Formatters.h"
#include "texts/PanelTexts.h"
#include "texts/SpendingTexts.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

/// Those that JSON can say.
double someNumber(Input& input) {
    const auto number = input.number<double>();
    return std::isfinite(number) ? number : 0;
}

bool isDigits(QStringView text) {
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar character) {
        return character >= u'0' && character <= u'9';
    });
}

void expectNumber(QStringView text) {
    expect(isDigits(text.startsWith(u'-') ? text.sliced(1) : text), "a number in plain digits");
}

void expectPercent(const QString& text) {
    expect(text.endsWith(u'%'), "a percentage");
    expectNumber(QStringView(text).chopped(1));
    expect(text != u"-0%", "no sign where nothing is");
}

void expectSpan(const QString& text) {
    expect(text == u"now" || (text.size() >= 2 && text.front().isDigit()), "a span");
    expect(!text.contains(u'-'), "no span below nothing");
}

void expectAmount(double amount) {
    static const std::array locales{
        QLocale::c(), QLocale(QLocale::English, QLocale::UnitedStates),
        QLocale(QLocale::Arabic, QLocale::Egypt), QLocale(QLocale::Hindi, QLocale::India)};
    for (const QLocale& locale : locales) {
        const QString text = Formatters::currency(amount, locale);
        expect(!text.isEmpty(), "an amount");
        expect(!text.contains(u"inf"_s) && !text.contains(u"nan"_s), "an amount in digits");
        expectWhole(text);
    }
}

void expectHabit(Input& input) {
    const Habit habit{
        u"id"_s,
        u"Walk"_s,
        input.flag(),
        input.number<qint64>(),
        input.number<qint64>(),
        input.number<qint64>()};
    expect(!PanelTexts::habitToolTip(habit).isEmpty(), "a tool tip");
    expect(PanelTexts::habitAccessibleName(habit).startsWith(habit.name), "the habit's name");
    expect(PanelTexts::countLabel(habit).has_value() == (habit.target > 1), "a count where one is");
    expect(
        PanelTexts::streakLabel(habit).has_value() == (habit.streak > 0), "a streak where one is");
}

void expectChore(Input& input) {
    const Chore chore{u"id"_s, u"Oven"_s, u"Kitchen"_s, input.number<qint64>()};
    expect(!PanelTexts::overdueLabel(chore).contains(u'-'), "no negative days");
    expect(PanelTexts::choreAccessibleName(chore).startsWith(chore.name), "the chore's name");
}

} // namespace

void figures(QByteArrayView input) {
    Input values(input);
    const Instant one = values.instant();
    const Instant other = values.instant();
    expectSpan(Formatters::countdown(one, other));
    const QString relative = Formatters::relative(one, other);
    expect(relative == u"just now" || relative.endsWith(u" ago"_s), "a time ago");
    const QString clock =
        Formatters::clock(one, QTimeZone(values.number<std::int16_t>()), QLocale::c());
    expect(clock.endsWith(u" am"_s) || clock.endsWith(u" pm"_s), "a time of day");
    expectHabit(values);
    expectChore(values);
    const double number = someNumber(values);
    expectPercent(Formatters::percent(number));
    expectAmount(number);
    Spending spending;
    spending.deltaFraction = number;
    const QString pace = SpendingTexts::pace(spending);
    expect(!pace.contains(u"inf"_s) && !pace.contains(u'-'), "a pace in digits");
}

} // namespace lumora::fuzz
