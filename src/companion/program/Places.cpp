#include "companion/program/Places.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// A folder of the user's, by its variable, or where it is below the home without that.
QString userFolder(const char* variable, const QString& belowHome) {
    const QString folder = qEnvironmentVariable(variable);
    return QDir::cleanPath(
        QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + u'/' + belowHome);
}

} // namespace

Places placesOfUser() {
    const QString configuration = userFolder("XDG_CONFIG_HOME", u".config"_s) + u"/lumora/"_s;
    return {
        configuration + u"service.toml"_s,
        configuration + u"lumora.conf"_s,
        {QDir::homePath(), userFolder("XDG_DATA_HOME", u".local/share"_s) + u"/lumora"_s,
         userFolder("XDG_CACHE_HOME", u".cache"_s) + u"/lumora/calendars"_s}};
}

} // namespace lumora::companion
