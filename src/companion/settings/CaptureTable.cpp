#include "companion/settings/CaptureTable.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

std::optional<CaptureFormat> readFormat(SettingsTable& table) {
    static const std::array<std::pair<QString, CaptureFormat>, 4> formats{{
        {u"markdown"_s, CaptureFormat::Markdown},
        {u"todo.txt"_s, CaptureFormat::TodoTxt},
        {u"org"_s, CaptureFormat::Org},
        {u"plain"_s, CaptureFormat::Plain},
    }};
    const auto text = table.text("format");
    if (!text)
        return std::nullopt;
    for (const auto& [name, format] : formats) {
        if (*text == name)
            return format;
    }
    table.complain("format", u"must be \"markdown\", \"todo.txt\", \"org\" or \"plain\""_s);
    return std::nullopt;
}

CaptureFormat formatFor(const QString& path) {
    if (path.endsWith(u".org"_s))
        return CaptureFormat::Org;
    if (path.endsWith(u"todo.txt"_s))
        return CaptureFormat::TodoTxt;
    return path.endsWith(u".md"_s) ? CaptureFormat::Markdown : CaptureFormat::Plain;
}

} // namespace

CaptureSettings readCapture(SettingsTable& file, SettingsReading& reading) {
    const toml::table* const source = file.table("capture");
    if (!source)
        return {};
    SettingsTable table(*source, u"[capture]"_s, reading.faults);
    table.hasOneOf({"file", "command"});
    const auto path = reading.path(table, "file");
    const CommandLine command = reading.command(table, "command");
    const auto format = readFormat(table);
    if (!path)
        return command.isEmpty() ? CaptureSettings() : CaptureSettings(command);
    return CaptureFile{*path, format.value_or(formatFor(*path))};
}

} // namespace lumora::companion
