#include "linux/appearance/FontDescription.h"

#include <QHash>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

std::optional<int> weightNamed(QString word) {
    static const QHash<QString, int> weights = {
        {u"thin"_s, 100},      {u"ultralight"_s, 200}, {u"extralight"_s, 200}, {u"light"_s, 300},
        {u"semilight"_s, 350}, {u"demilight"_s, 350},  {u"book"_s, 380},       {u"regular"_s, 400},
        {u"normal"_s, 400},    {u"medium"_s, 500},     {u"semibold"_s, 600},   {u"demibold"_s, 600},
        {u"bold"_s, 700},      {u"ultrabold"_s, 800},  {u"extrabold"_s, 800},  {u"heavy"_s, 900},
        {u"black"_s, 900},
    };
    const auto found = weights.constFind(word.remove(u'-').toLower());
    return found == weights.cend() ? std::nullopt : std::optional(*found);
}

/// Takes a word of the style into `font`; false when it belongs to the family's name.
bool takeStyle(const QString& word, DesktopFont& font) {
    if (const auto weight = weightNamed(word)) {
        font.weight = *weight;
        return true;
    }
    const bool slanted = word.compare("Italic"_L1, Qt::CaseInsensitive) == 0 ||
                         word.compare("Oblique"_L1, Qt::CaseInsensitive) == 0;
    font.italic = font.italic || slanted;
    return slanted;
}

} // namespace

std::optional<DesktopFont> parseFontDescription(const QString& description) {
    auto words = description.simplified().split(u' ', Qt::SkipEmptyParts);
    if (words.size() < 2)
        return std::nullopt;
    DesktopFont font;
    bool isNumber = false;
    font.pointSize = words.takeLast().toDouble(&isNumber);
    if (!isNumber || !(font.pointSize > 0) || font.pointSize > 200)
        return std::nullopt;
    // A family may be named like a weight ("Black"), so its first word is always its own.
    while (words.size() > 1 && takeStyle(words.last(), font))
        words.removeLast();
    // Where several families are named, the others stand in for the first.
    font.family = words.join(u' ').section(u',', 0, 0).trimmed();
    return font.family.isEmpty() ? std::nullopt : std::optional(font);
}

} // namespace lumora
