#include "companion/agenda/MeetingHosts.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace lumora::companion {

namespace {

constexpr QStringView anyPath[] = {u"/"};
constexpr QStringView zoomPaths[] = {u"/j/", u"/my/", u"/w/", u"/s/"};
constexpr QStringView teamsPaths[] = {u"/l/meetup-join/", u"/meet/"};
constexpr QStringView personalTeamsPaths[] = {u"/meet/"};

/// A domain, and how the paths begin that lead into its meetings and not into its shop.
struct MeetingService {
    QStringView domain;
    std::span<const QStringView> paths = anyPath;
};

constexpr MeetingService meetingServices[] = {
    {.domain = u"meet.google.com"},
    {.domain = u"hangouts.google.com"},
    {.domain = u"zoom.us", .paths = zoomPaths},
    {.domain = u"zoomgov.com", .paths = zoomPaths},
    {.domain = u"zoom.com.cn", .paths = zoomPaths},
    {.domain = u"teams.microsoft.com", .paths = teamsPaths},
    {.domain = u"teams.microsoft.us", .paths = teamsPaths},
    {.domain = u"teams.live.com", .paths = personalTeamsPaths},
    {.domain = u"webex.com"},
    {.domain = u"meet.jit.si"},
    {.domain = u"8x8.vc"},
    {.domain = u"whereby.com"},
    {.domain = u"gotomeeting.com"},
    {.domain = u"meet.goto.com"},
    {.domain = u"bluejeans.com"},
    {.domain = u"chime.aws"},
    {.domain = u"v.ringcentral.com"},
    {.domain = u"meetings.dialpad.com"},
    {.domain = u"facetime.apple.com"},
    {.domain = u"meet.gnome.com"},
};

} // namespace

bool isWithin(const QString& host, QStringView domain) {
    return host.endsWith(domain) &&
           (host.size() == domain.size() || host[host.size() - domain.size() - 1] == u'.');
}

bool leadsTo(const QUrl& url, const QStringList& hosts) {
    const QString host = url.host().toLower();
    return std::ranges::any_of(hosts, [&host](const QString& known) {
        return !known.isEmpty() && isWithin(host, known.toLower());
    });
}

bool isMeetingService(const QUrl& url) {
    const QString host = url.host().toLower();
    const QString path = url.path();
    return std::ranges::any_of(meetingServices, [&](const MeetingService& service) {
        return isWithin(host, service.domain) &&
               std::ranges::any_of(
                   service.paths, [&path](QStringView begin) { return path.startsWith(begin); });
    });
}

} // namespace lumora::companion
