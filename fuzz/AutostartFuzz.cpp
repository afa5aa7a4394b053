// A desktop entry is kept, what is written to it reads back, and a program's path arrives.
//
// The input is the file, byte 255, and the path.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "linux/autostart/DesktopEntry.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

const QString exec = u"Exec"_s;

void expectWrittenEntry(DesktopEntry entry, const QString& program) {
    const auto name = entry.value(u"Name"_s);
    entry.setValue(exec, execLineFor(program));
    const auto reread = DesktopEntry::parse(entry.bytes());
    expect(reread.has_value(), "an entry that can be read");
    expect(reread->value(u"Name"_s) == name, "other keys as they were");
    expect(programOf(reread->value(exec).value_or(QString())) == program, "the program's path");

    entry.remove(exec);
    expect(!entry.value(exec), "no key that was removed");
    expect(entry.value(u"Name"_s) == name, "other keys as they were");
    const auto without = DesktopEntry::parse(entry.bytes());
    expect(without && !without->value(exec), "no key that was removed from the file");
}

} // namespace

void autostart(QByteArrayView input) {
    Input values(input);
    const QByteArray file = values.field();
    const QString program = u'/' + values.text().remove(u'\0'); // no path has a zero
    const auto entry = DesktopEntry::parse(file);
    if (entry)
        expect(entry->bytes().trimmed() == file.trimmed(), "the file as it was");
    expectWrittenEntry(entry.value_or(DesktopEntry()), program);
}

} // namespace lumora::fuzz
