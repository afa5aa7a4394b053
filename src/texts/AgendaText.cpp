#include "texts/AgendaText.h"

#include "texts/Formatters.h"
#include "texts/PanelTexts.h"
#include "texts/PlainText.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// A row below a heading, of parts that are not empty.
QString row(QStringList parts) {
    for (QString& part : parts)
        part = singleLine(part).trimmed();
    parts.removeAll(QString());
    return u"  "_s + parts.join(u" · "_s) + u'\n';
}

QString eventRow(const AgendaEvent& event, const QTimeZone& zone, const QLocale& locale) {
    QString time;
    if (event.allDay)
        time = u"all-day"_s;
    else if (event.start)
        time = Formatters::clock(*event.start, zone, locale);
    return row(
        {time, event.title, event.location.value_or(QString()),
         event.canJoin ? u"join"_s : QString()});
}

QString habitRow(const Habit& habit) {
    return row(
        {(habit.done ? u"[x] "_s : u"[ ] "_s) + singleLine(habit.name),
         PanelTexts::countLabel(habit).value_or(QString()),
         PanelTexts::streakLabel(habit).value_or(QString())});
}

QString choreRow(const Chore& chore) {
    return row({chore.name, chore.room, PanelTexts::overdueLabel(chore)});
}

template <typename Item>
QString list(const std::vector<Item>& items) {
    QString lines;
    for (const Item& item : items) {
        if (!item.id.isEmpty() && singleLine(item.id) == item.id)
            lines += item.id + u'\t' + singleLine(item.name) + u'\n';
    }
    return lines;
}

} // namespace

QString agendaText(const Agenda& agenda, const QTimeZone& zone, const QLocale& locale) {
    QString text = u"Events: %1 left\n"_s.arg(agenda.events.size());
    for (const AgendaEvent& event : agenda.events)
        text += eventRow(event, zone, locale);
    text += u"Habits: "_s + PanelTexts::habitsSummary(agenda.habits) + u'\n';
    for (const Habit& habit : agenda.habits.byRemaining())
        text += habitRow(habit);
    text += u"Chores: "_s + PanelTexts::choresSummary(agenda.chores) + u'\n';
    for (const Chore& chore : agenda.chores.top)
        text += choreRow(chore);
    if (agenda.focus)
        text += u"Focus: "_s + Formatters::percent(*agenda.focus) + u'\n';
    return text;
}

QString habitList(const Agenda& agenda) {
    return list(agenda.habits.items);
}

QString choreList(const Agenda& agenda) {
    return list(agenda.chores.top);
}

} // namespace lumora
