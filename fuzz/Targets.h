#pragma once

#include <QByteArrayView>

/// What reads bytes or texts that others chose, each as a function of any input whatsoever. A
/// target makes its values from the input, calls the program's own functions with them, and
/// expects of every outcome what holds for all of them; see Expectations.h. Equal inputs are equal
/// runs.
namespace lumora::fuzz {

void agenda(QByteArrayView input);        ///< a calendar's iCalendar text
void autostart(QByteArrayView input);     ///< another program's desktop entry
void calls(QByteArrayView input);         ///< messages over D-Bus
void colors(QByteArrayView input);        ///< colour codes
void configuration(QByteArrayView input); ///< the service's configuration
void dates(QByteArrayView input);         ///< internet date-times
void decoder(QByteArrayView input);       ///< a briefing's JSON text
void figures(QByteArrayView input);       ///< numbers, instants and spans as texts
void label(QByteArrayView input);         ///< a meeting as label, tooltip and menu
void links(QByteArrayView input);         ///< links of meetings, and endpoints
void logbook(QByteArrayView input);       ///< the service's log of habits and chores
void preferences(QByteArrayView input);   ///< the preferences' file
void redirects(QByteArrayView input);     ///< Location and other header lines
void replies(QByteArrayView input);       ///< the service's answers to actions, and its errors
void reports(QByteArrayView input);       ///< the running program's answer to "lumora status"
void requests(QByteArrayView input);      ///< requests to the service
void styles(QByteArrayView input);        ///< backgrounds of bars, in the words of style sheets
void texts(QByteArrayView input);         ///< titles: on one line, as markup, shortened
void xsettings(QByteArrayView input);     ///< the settings manager's property of an X server

} // namespace lumora::fuzz
