#include "ResultTable.h"

#include <QStringList>
#include <QTextStream>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString number(double value, int decimals = 1) {
    return QString::number(value, 'f', decimals);
}

QString mark(bool good) {
    return good ? u"pass"_s : u"miss"_s;
}

void writeRow(const QStringList& cells) {
    QTextStream(stdout) << cells.join(u'\t') << '\n';
}

} // namespace

void ResultTable::addFigure(
    const QString& what, const QString& unit, double lumora, std::optional<double> floor,
    std::optional<double> most) {
    writeRow(
        {what + u", "_s + unit, number(lumora), floor ? number(*floor) : u"-"_s, u"-"_s,
         most ? u"<= "_s + number(*most) : u"-"_s, most ? mark(lumora <= *most) : u"-"_s});
}

void ResultTable::addRatio(
    const QString& what, const QString& unit, double lumora, double floor, double ratio,
    std::optional<double> most) {
    writeRow(
        {what + u", "_s + unit, number(lumora), number(floor), number(ratio, 2) + u'x',
         most ? u"<= "_s + number(*most) + u'x' : u"-"_s, most ? mark(ratio <= *most) : u"-"_s});
}

void ResultTable::addFact(
    const QString& what, const QString& lumora, const QString& floor, bool holds) {
    writeRow({what, lumora, floor, u"-"_s, u"no"_s, mark(holds)});
}

} // namespace lumora
