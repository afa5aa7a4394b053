// What nearly every source includes, precompiled by script/mutants, which compiles them one by one.
// Only what every layer finds: nothing of windows, buses or test libraries.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QLocale>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimeZone>
#include <QUrl>
#include <QVariant>

#include <tl/expected.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>
