#include "companion/agenda/ComponentReader.h"

#include <memory>
#include <optional>

namespace lumora::companion {

namespace {

// Events have alarms. What lies deeper the library would follow until the stack is full.
constexpr int deepestComponent = 8;

struct ParserDeleter {
    void operator()(icalparser* parser) const { icalparser_free(parser); }
};

bool beginsWith(QByteArrayView line, QByteArrayView word) {
    return line.size() >= word.size() &&
           line.first(word.size()).compare(word, Qt::CaseInsensitive) == 0;
}

bool isLine(QByteArrayView line, QByteArrayView text) {
    return line.trimmed().compare(text, Qt::CaseInsensitive) == 0;
}

/// The lines of a text, each in one piece: what begins with a blank belongs to the one before.
class UnfoldedLines {
public:
    explicit UnfoldedLines(const QByteArray& text)
        : m_text(text) {}

    /// Puts the next line into `line`; false at the end.
    bool next(QByteArray& line) {
        if (m_at >= m_text.size())
            return false;
        line = takeOne().toByteArray();
        while (m_at < m_text.size() && (m_text[m_at] == ' ' || m_text[m_at] == '\t')) {
            ++m_at;
            line += takeOne();
        }
        return true;
    }

private:
    QByteArrayView takeOne() {
        const qsizetype feed = m_text.indexOf('\n', m_at);
        const qsizetype end = feed < 0 ? m_text.size() : feed;
        QByteArrayView line = QByteArrayView(m_text).sliced(m_at, end - m_at);
        m_at = end + 1;
        if (line.endsWith('\r'))
            line.chop(1);
        return line;
    }

    const QByteArray& m_text;
    qsizetype m_at = 0;
};

/// Makes a component of its lines.
class ComponentBuilder {
public:
    bool isOpen() const { return m_depth > 0; }

    bool isTooDeep() const { return m_depth > deepestComponent; }

    /// The component that this line closed; null: none.
    IcalTree add(QByteArray line) {
        if (beginsWith(line, "BEGIN:"))
            ++m_depth;
        else if (beginsWith(line, "END:"))
            --m_depth;
        else if (beginsWith(line, "CONFERENCE")) // which the library does not know
            line.prepend("X-");
        return IcalTree(icalparser_add_line(m_parser.get(), line.data()));
    }

    /// What is open, as if its ends were there.
    IcalTree close() {
        IcalTree component;
        while (isOpen())
            component = add("END:X");
        return component;
    }

private:
    std::unique_ptr<icalparser, ParserDeleter> m_parser{icalparser_new()};
    int m_depth = 0;
};

// However it goes on: some programs misspell it.
bool endsCalendar(QByteArrayView line) {
    return beginsWith(line, "END:VCALENDAR");
}

// Between components, or where one should have ended.
bool isBoundary(QByteArrayView line) {
    return isLine(line, "BEGIN:VCALENDAR") || endsCalendar(line) || isLine(line, "BEGIN:VEVENT") ||
           isLine(line, "BEGIN:VTIMEZONE");
}

} // namespace

bool ComponentReader::forEach(
    QByteArrayView name, const std::function<bool(icalcomponent&)>& visit) const {
    const QByteArray begin = "BEGIN:" + name.toByteArray();
    UnfoldedLines lines(m_text);
    ComponentBuilder builder;
    bool isCalendar = false;
    int openCalendars = 0;
    bool goesOn = true;
    for (QByteArray line; goesOn && lines.next(line);) {
        IcalTree complete;
        if (isBoundary(line)) {
            complete = builder.close();
            isCalendar = isCalendar || isLine(line, "BEGIN:VCALENDAR");
            openCalendars += isLine(line, "BEGIN:VCALENDAR") ? 1 : 0;
            openCalendars -= endsCalendar(line) ? 1 : 0;
        }
        if (complete)
            goesOn = visit(*complete);
        if (goesOn && (builder.isOpen() || isLine(line, begin)))
            complete = builder.add(std::move(line));
        else
            complete.reset();
        if (builder.isTooDeep())
            return false;
        if (complete) {
            isCalendar = true; // even if nothing says so
            goesOn = visit(*complete);
        }
    }
    return isCalendar && (!goesOn || (openCalendars <= 0 && !builder.isOpen()));
}

} // namespace lumora::companion
