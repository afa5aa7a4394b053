#pragma once

#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

#include <optional>

namespace lumora {

/// What the rows of the status item's menu do.
enum class MenuCommand { None, Open, Join, Refresh, Settings, Quit };

/// A row of the status item's menu.
struct StatusMenuRow {
    enum class Kind { Action, Text, Separator };

    Kind kind = Kind::Action;
    MenuCommand command = MenuCommand::None; ///< none unless an action
    QString label;                           ///< as shown; never holds markup or mnemonics

    bool operator==(const StatusMenuRow&) const = default;
};

/// Everything that the status area shows of the program.
struct StatusItemContent {
    QString symbol;                        ///< a symbol name, e.g. "calendar"
    std::optional<QString> text;           ///< drawn beside the symbol; absent: the symbol alone
    std::optional<QString> shortText = {}; ///< at most four characters, for places without room
    QString title;                         ///< accessible name, plain text
    QString toolTipTitle;                  ///< plain text
    QString toolTipBody;                   ///< plain text, lines separated by "\n"
    QList<StatusMenuRow> menu;

    bool operator==(const StatusItemContent&) const = default;
};

/// The program's place in the desktop's status area. It appears by itself wherever and whenever
/// there is one, and always draws something.
class StatusItem : public QObject {
    Q_OBJECT

public:
    /// Shows `content`; whatever did not change causes no traffic.
    virtual void show(const StatusItemContent& content) = 0;

    /// Why the item is shown nowhere; empty while it is shown.
    [[nodiscard]] virtual QString unavailableReason() const = 0;

Q_SIGNALS:
    /// A press on the item. `position` is the host's idea of where, in screen coordinates, and
    /// often wrong. `activationToken` is empty where the host gave none.
    void activated(QPoint position, QByteArray activationToken);

    /// A row of the menu was chosen.
    void commandChosen(MenuCommand command, QByteArray activationToken);

    /// The item came to be shown in a status area.
    void shown();
};

} // namespace lumora
