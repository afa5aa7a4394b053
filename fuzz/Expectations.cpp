#include "Expectations.h"

#include <QString>
#include <QStringTokenizer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

// Written anew, by number, so that no mistake of the program is made here as well.
bool endsALineOrSteers(QChar character) {
    const char16_t code = character.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029;
}

constexpr char16_t endOfEmbedding = 0x202c;
constexpr char16_t endOfIsolate = 0x2069;

/// What ends the change of direction that `code` begins; 0 when it begins none.
char16_t endOf(char16_t code) {
    if (code == 0x202a || code == 0x202b || code == 0x202d || code == 0x202e)
        return endOfEmbedding;
    return code >= 0x2066 && code <= 0x2068 ? endOfIsolate : u'\0';
}

bool keepsItsDirection(QStringView line) {
    std::vector<char16_t> ends; // of what is open
    for (const QChar character : line) {
        const char16_t code = character.unicode();
        if (const char16_t end = endOf(code)) {
            ends.push_back(end);
        } else if (code == endOfEmbedding || code == endOfIsolate) {
            // An isolate's end is that of everything in it.
            while (code == endOfIsolate && !ends.empty() && ends.back() != code)
                ends.pop_back();
            if (ends.empty() || ends.back() != code)
                return false;
            ends.pop_back();
        }
    }
    return ends.empty();
}

} // namespace

void expect(bool holds, const char* expected) {
    if (holds)
        return;
    std::fprintf(stderr, "Expected %s\n", expected);
    std::abort();
}

void expectWhole(QStringView text) {
    expect(text.isValidUtf16(), "whole characters");
}

void expectLine(QStringView line) {
    expect(
        std::none_of(line.begin(), line.end(), endsALineOrSteers), "a line without controls in it");
    expect(keepsItsDirection(line), "a line that keeps its direction to itself");
}

void expectLines(QStringView text) {
    for (const QStringView line : text.tokenize(u'\n'))
        expectLine(line);
}

void expectNoMarkup(QStringView markup) {
    expect(!markup.contains(u'<') && !markup.contains(u'>'), "no tags");
    for (qsizetype at = markup.indexOf(u'&'); at >= 0; at = markup.indexOf(u'&', at + 1)) {
        const QStringView entity = markup.sliced(at);
        expect(
            entity.startsWith("&amp;"_L1) || entity.startsWith("&lt;"_L1) ||
                entity.startsWith("&gt;"_L1),
            "an entity behind every ampersand");
    }
}

void expectGraphic(QByteArrayView bytes) {
    expect(
        std::all_of(
            bytes.begin(), bytes.end(), [](char byte) { return byte > 0x20 && byte < 0x7f; }),
        "printable ASCII without blanks");
}

} // namespace lumora::fuzz
