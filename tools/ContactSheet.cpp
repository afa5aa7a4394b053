// lumora-contact-sheet FILE.png: every symbol at the sizes it is drawn at, on light and on dark.

#include "symbols/SymbolRenderer.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>
#include <string_view>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int sizes[] = {16, 24, 32};
constexpr int rowHeight = 40;
constexpr int nameWidth = 230;
constexpr int halfWidth = 150;

struct Theme {
    QColor background;
    QColor primary;
};

const Theme themes[] = {{QColor(0xfbfbfc), QColor(0x1d1d1f)}, {QColor(0x26272b), QColor(0xf2f2f4)}};

QStringList symbolNames() {
    QStringList names;
    for (const QString& file : QDir(u":/symbols"_s).entryList(QDir::Files, QDir::Name))
        names += file.chopped(4);
    return names;
}

/// One symbol on one background: each size once, at `scale` device pixels to the point.
void drawHalf(QPainter& painter, const QString& name, const Theme& theme, QPoint at, int scale) {
    painter.fillRect(QRect(at * scale, QSize(halfWidth, rowHeight) * scale), theme.background);
    int x = at.x() + 12;
    for (const int size : sizes) {
        const QPoint corner(x, at.y() + (rowHeight - size) / 2);
        painter.drawImage(corner * scale, lumora::renderSymbol(name, size * scale, theme.primary));
        x += size + 20;
    }
}

/// All symbols at one scale, one a row, with their names.
QImage sheet(const QStringList& names, int scale) {
    QImage image(
        QSize(nameWidth + 2 * halfWidth, static_cast<int>(names.size()) * rowHeight) * scale,
        QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QFont font = painter.font();
    font.setPixelSize(12 * scale);
    painter.setFont(font);
    int y = 0;
    for (const QString& name : names) {
        painter.drawText(
            QRect(QPoint(8, y) * scale, QSize(nameWidth, rowHeight) * scale),
            Qt::AlignVCenter | Qt::AlignLeft, name);
        drawHalf(painter, name, themes[0], {nameWidth, y}, scale);
        drawHalf(painter, name, themes[1], {nameWidth + halfWidth, y}, scale);
        y += rowHeight;
    }
    return image;
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: lumora-contact-sheet FILE.png\n", stderr);
        return 2;
    }
    const QStringList names = symbolNames();
    const QImage once = sheet(names, 1);
    const QImage twice = sheet(names, 2);
    QImage both(once.width() + twice.width(), twice.height(), QImage::Format_RGB32);
    both.fill(Qt::white);
    QPainter painter(&both);
    painter.drawImage(0, 0, once);
    painter.drawImage(once.width(), 0, twice);
    painter.end();
    return both.save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
