#include "companion/parts/JsonMembers.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// A number without a fraction, or with one that is zero.
std::optional<qint64> wholeNumber(simdjson::dom::element value) {
    int64_t integer = 0;
    if (value.get(integer) == simdjson::SUCCESS)
        return integer;
    double number = 0;
    constexpr double limit = 9.0e15; // up to where every whole number is one of these
    if (value.get(number) != simdjson::SUCCESS || std::abs(number) > limit ||
        number != std::trunc(number))
        return std::nullopt;
    return qint64(number);
}

} // namespace

JsonMembers::JsonMembers(simdjson::dom::element value, QString path, QString& fault)
    : m_path(std::move(path))
    , m_isObject(value.get(m_object) == simdjson::SUCCESS)
    , m_fault(fault) {
    if (!m_isObject && m_fault.isEmpty())
        m_fault = (m_path.isEmpty() ? u"The document"_s : m_path) + u" must be an object"_s;
}

QString JsonMembers::text(std::string_view key) {
    const auto value = member(key);
    std::string_view text;
    if (!value || value->get(text) != simdjson::SUCCESS)
        complain(key, "must be a text");
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

bool JsonMembers::flag(std::string_view key) {
    const auto value = member(key);
    bool flag = false;
    if (!value || value->get(flag) != simdjson::SUCCESS)
        complain(key, "must be true or false");
    return flag;
}

qint64 JsonMembers::integer(std::string_view key) {
    const auto value = member(key);
    const auto integer = value ? wholeNumber(*value) : std::nullopt;
    if (!integer)
        complain(key, "must be a whole number");
    return integer.value_or(0);
}

double JsonMembers::number(std::string_view key) {
    const auto value = member(key);
    double number = 0;
    if (!value || value->get(number) != simdjson::SUCCESS)
        complain(key, "must be a number");
    return number;
}

std::optional<qint64> JsonMembers::optionalInteger(std::string_view key) {
    return presentMember(key) ? std::optional(integer(key)) : std::nullopt;
}

std::optional<double> JsonMembers::optionalNumber(std::string_view key) {
    return presentMember(key) ? std::optional(number(key)) : std::nullopt;
}

std::optional<simdjson::dom::element> JsonMembers::member(std::string_view key) const {
    std::optional<simdjson::dom::element> last;
    if (m_isObject) {
        for (const auto field : m_object) {
            if (field.key == key)
                last = field.value;
        }
    }
    return last;
}

std::optional<simdjson::dom::element> JsonMembers::presentMember(std::string_view key) const {
    const auto value = member(key);
    return value && !value->is_null() ? value : std::nullopt;
}

QString JsonMembers::pathOf(std::string_view key) const {
    const QString name = QString::fromUtf8(key.data(), qsizetype(key.size()));
    return m_path.isEmpty() ? name : m_path + u'.' + name;
}

void JsonMembers::complain(std::string_view key, const char* what) {
    if (m_fault.isEmpty())
        m_fault = pathOf(key) + u' ' + QString::fromLatin1(what);
}

} // namespace lumora::companion
