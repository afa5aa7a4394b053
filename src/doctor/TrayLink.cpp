#include "doctor/Links.h"
#include "linux/tray/LabelForm.h"
#include "platform/PreferenceKeys.h"
#include "texts/NoStatusArea.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString formName(const LabelForm& form) {
    if (form.hasTextBeside)
        return u"the symbol with the text beside it"_s;
    switch (form.picture) {
    case LabelForm::Picture::SymbolAndText:
        return u"symbol and text as one picture"_s;
    case LabelForm::Picture::ShortText:
        return u"four characters in the symbol's place"_s;
    case LabelForm::Picture::Symbol:
        break;
    }
    return u"the symbol alone"_s;
}

} // namespace

Finding trayLink(const Evidence& evidence) {
    const QString link = u"tray"_s;
    const QString desktop = evidence.environment.value(u"XDG_CURRENT_DESKTOP"_s);
    if (!evidence.session || !evidence.session->hasTray)
        return Finding::warning(
            link, u"No program keeps status items, or it does not answer"_s,
            noStatusArea(desktop).body);
    const LabelForm form = labelFormFor(
        {.process = evidence.session->trayProcess,
         .desktop = desktop,
         .wish = evidence.settings.value(PreferenceKeys::label.name)});
    const QString who = evidence.session->trayProcess;
    return Finding::ok(link, (who.isEmpty() ? u"Somebody"_s : who) + u" shows "_s + formName(form));
}

} // namespace lumora
