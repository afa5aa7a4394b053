#pragma once

#include <QByteArrayView>
#include <QStringView>

namespace lumora::fuzz {

/// Says what was expected and ends the program unless `holds`: the input is a finding.
void expect(bool holds, const char* expected);

/// Expects `text` to be whole: no half of a surrogate pair, so that it is the same text in UTF-8.
void expectWhole(QStringView text);

/// Expects `line` to be one line that keeps to itself: nothing in it ends a line or steers a
/// terminal, and it closes every change of direction that it opens, and no other.
void expectLine(QStringView line);

/// The same of every line of `text`; line feeds are between them.
void expectLines(QStringView text);

/// Expects of `markup` that whoever parses it finds no tag in it and no entity but "&amp;", "&lt;"
/// and "&gt;".
void expectNoMarkup(QStringView markup);

/// Expects every byte to be printable ASCII, and no blank.
void expectGraphic(QByteArrayView bytes);

} // namespace lumora::fuzz
