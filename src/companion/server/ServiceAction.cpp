#include "companion/server/ServiceAction.h"

#include <simdjson.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

tl::unexpected<QString> badAction(const QString& what) {
    return tl::unexpected(what);
}

/// The text member `key`, the last of that name; an error when it is missing or no text.
tl::expected<QString, QString> memberText(simdjson::dom::object action, std::string_view key) {
    std::string_view text;
    bool isText = false;
    for (const auto field : action) {
        if (field.key == key)
            isText = field.value.get(text) == simdjson::SUCCESS;
    }
    if (isText)
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    const QString name = QString::fromUtf8(key.data(), qsizetype(key.size()));
    return badAction(u"The action needs a text \"%1\""_s.arg(name));
}

} // namespace

tl::expected<ServiceAction, QString> parseAction(QByteArrayView json) {
    simdjson::dom::parser parser;
    simdjson::dom::object action;
    if (json.isEmpty() ||
        parser.parse(json.data(), size_t(json.size())).get(action) != simdjson::SUCCESS)
        return badAction(u"The body is not a JSON object"_s);
    const auto type = memberText(action, "type");
    if (!type)
        return badAction(type.error());
    if (*type == u"habit.toggle")
        return memberText(action, "id").map([](const QString& id) -> ServiceAction {
            return ToggleHabit{id};
        });
    if (*type == u"chore.done")
        return memberText(action, "id").map([](const QString& id) -> ServiceAction {
            return FinishChore{id};
        });
    if (*type == u"capture")
        return memberText(action, "text").map([](const QString& text) -> ServiceAction {
            return Capture{text};
        });
    if (*type == u"spending.refresh")
        return ServiceAction(RefreshSpending{});
    return badAction(u"There is no action \"%1\""_s.arg(*type));
}

} // namespace lumora::companion
