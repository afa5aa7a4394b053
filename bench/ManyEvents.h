#pragma once

#include <QByteArray>
#include <QDate>

namespace lumora {

/// A calendar of `count` events as an office keeps it: most take place once in the two years around
/// `day`, a fifth repeats, some since nine years. Each is described at length, as meetings are.
QByteArray manyEvents(int count, QDate day);

} // namespace lumora
