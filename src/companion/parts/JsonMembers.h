#pragma once

#include <QString>

#include <simdjson.h>

#include <optional>
#include <string_view>
#include <utility>

namespace lumora::companion {

/// Takes the members of one JSON object. The first thing that is wrong is kept in `fault`, and
/// whatever is taken after that is empty. Of members with the same name the last one counts.
class JsonMembers {
public:
    /// `fault` must outlive this. `path` is how people find the object, such as "items[3]".
    JsonMembers(simdjson::dom::element value, QString path, QString& fault);

    QString text(std::string_view key);
    bool flag(std::string_view key);
    qint64 integer(std::string_view key);
    double number(std::string_view key);

    /// Absent when it is missing or null.
    std::optional<qint64> optionalInteger(std::string_view key);
    std::optional<double> optionalNumber(std::string_view key);

    /// Calls `take(members)` with the members of each object in a list.
    template <typename Take>
    void each(std::string_view key, Take take) {
        simdjson::dom::array array;
        const auto value = member(key);
        if (!value || value->get(array) != simdjson::SUCCESS)
            return complain(key, "must be a list");
        size_t index = 0;
        for (const simdjson::dom::element item : array) {
            if (!m_fault.isEmpty())
                return;
            take(JsonMembers(item, pathOf(key) + QStringLiteral("[%1]").arg(index), m_fault));
            ++index;
        }
    }

private:
    std::optional<simdjson::dom::element> member(std::string_view key) const;
    std::optional<simdjson::dom::element> presentMember(std::string_view key) const;
    QString pathOf(std::string_view key) const;
    void complain(std::string_view key, const char* what);

    simdjson::dom::object m_object;
    QString m_path;
    bool m_isObject = false;
    QString& m_fault;
};

} // namespace lumora::companion
