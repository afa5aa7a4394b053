#include "schema/Validator.h"

#include "support/Patience.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <stdexcept>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

std::set<QString>
validBySchema(const QString& schema, const std::map<QString, QByteArray>& documents) {
    // Files are numbered: a document's name may have any characters.
    const QTemporaryDir folder;
    std::vector<QString> names;
    for (const auto& [name, bytes] : documents) {
        QFile file(folder.filePath(QString::number(names.size())));
        if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("a document could not be written");
        names.push_back(name);
    }

    QProcess validator;
    validator.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    validator.start(
        QStringLiteral(LUMORA_VALIDATE),
        {QStringLiteral(LUMORA_SCHEMAS) + u'/' + schema, folder.path()});
    if (!validator.waitForFinished(patience) || validator.exitCode() != 0)
        throw std::runtime_error("the validator did not run");

    std::set<QString> valid;
    for (const QString& line :
         QString::fromLatin1(validator.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.endsWith(u" valid"_s))
            valid.insert(names.at(line.section(u' ', 0, 0).toUInt()));
    }
    return valid;
}

} // namespace lumora::tests
