#include "doctor/Links.h"
#include "linux/preferences/IniDocument.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding preferencesLink(const Evidence& evidence) {
    const QString link = u"preferences"_s;
    const auto& file = evidence.preferences;
    if (!file)
        return Finding::failed(
            link, evidence.preferencesPath + u" is not read in time"_s,
            u"Look whether the disk or the network that your home is on hangs"_s);
    if (!*file && file->error().isAbsent)
        return Finding::warning(
            link, u"There is no "_s + evidence.preferencesPath,
            u"Open Lumora's settings, with \"lumora settings\", and set it up"_s);
    if (!*file)
        return Finding::failed(
            link, file->error().message,
            u"Let %1 be a file that you may read"_s.arg(evidence.preferencesPath));
    if (!IniDocument::parse(**file))
        return Finding::failed(
            link, evidence.preferencesPath + u" is no INI file, and counts as empty"_s,
            u"Mend it in an editor, or remove it and set Lumora up again"_s);
    return Finding::ok(link, evidence.preferencesPath);
}

} // namespace lumora
