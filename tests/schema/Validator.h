#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <set>

namespace lumora::tests {

/// The names of those `documents` that are valid by `schema`, a file's name, as an independent
/// validator has it; throws when that does not run.
std::set<QString>
validBySchema(const QString& schema, const std::map<QString, QByteArray>& documents);

} // namespace lumora::tests
