// A file that is read is kept to the byte, and what is written to it reads back, alone.
//
// The input is the file, byte 255, and the text that is written.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "linux/preferences/IniDocument.h"
#include "platform/AppStorageBacked.h"

#include <QStringList>

#include <array>

namespace lumora::fuzz {

namespace {

using Texts = std::array<std::optional<QString>, 5>;

const std::array<QString, 5>& preferenceKeys() {
    using namespace PreferenceKeys;
    static const std::array keys{
        endpointURL.name, refreshMinutes.name, menuBarAmbient.name, linkSchemes.name,
        eventsCollapsed.name};
    return keys;
}

Texts textsIn(const IniDocument& document) {
    Texts texts;
    for (size_t i = 0; i < texts.size(); ++i)
        texts[i] = document.value(preferenceKeys()[i]);
    return texts;
}

void expectOneValue(const QString& text) {
    if (const auto number = parsePreference(text, std::type_identity<qint64>{}))
        expect(
            parsePreference(preferenceText(*number), std::type_identity<qint64>{}) == number,
            "the same number when it is written anew");
    if (const auto answer = parsePreference(text, std::type_identity<bool>{}))
        expect(
            parsePreference(preferenceText(*answer), std::type_identity<bool>{}) == answer,
            "the same answer when it is written anew");
}

void expectWritten(const IniDocument& document, size_t index, const QString& text) {
    Texts wanted = textsIn(document);
    wanted[index] = text;
    IniDocument changed = document;
    changed.setValue(preferenceKeys()[index], text);
    expect(textsIn(changed) == wanted, "what was written, and the others as they were");

    const auto reread = IniDocument::parse(changed.bytes());
    expect(reread.has_value(), "a file that can be read");
    expect(textsIn(*reread) == wanted, "the same after reading the file");

    // A last line that ends within a line break is given an end by the first.
    changed.setValue(preferenceKeys()[index], text);
    const QByteArray before = changed.bytes();
    changed.setValue(preferenceKeys()[index], text);
    expect(changed.bytes() == before, "the same file when the same is written again");
}

} // namespace

void preferences(QByteArrayView input) {
    Input values(input);
    const QByteArray file = values.field();
    const QString text = values.text();
    const auto document = IniDocument::parse(file);
    if (document) {
        expect(document->bytes() == file, "the file as it was");
        for (const auto& value : textsIn(*document))
            expectOneValue(value.value_or(QString()));
    }
    for (size_t index = 0; index < preferenceKeys().size(); index += 2)
        expectWritten(document.value_or(IniDocument()), index, text);
}

} // namespace lumora::fuzz
