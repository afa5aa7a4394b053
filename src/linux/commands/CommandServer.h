#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>

#include <tl/expected.hpp>

#include <functional>
#include <optional>

namespace lumora {

/// Where the running program answers its own commands on the session bus. The methods there are
/// private to the program: others use the commands.
inline const QString commandService = QStringLiteral("com.lumora.app");
inline const QString commandPath = QStringLiteral("/com/lumora/app");
inline const QString commandInterface = QStringLiteral("com.lumora.app");

/// What the running program does at a command.
struct CommandHandlers {
    std::function<QString()> status; ///< the status as one JSON object

    /// Called once, when what was asked for has ended, with the failure's message, absent on
    /// success.
    using Done = std::function<void(std::optional<QString> failure)>;

    std::function<void(Done)> refresh;

    /// Opens the link of the meeting that is on or comes next. The token is empty where the caller
    /// had none, here and below.
    std::function<void(QByteArray activationToken, Done)> join;

    std::function<void(QString text, Done)> capture;         ///< puts the text into the inbox
    std::function<void(QString idOrName, Done)> toggleHabit; ///< of today's
    std::function<void(QString idOrName, Done)> finishChore; ///< of those that are due

    /// What is left of the day, as one JSON object, or why there is nothing to tell.
    std::function<tl::expected<QString, QString>()> agenda;

    std::function<void(QByteArray activationToken)> open;   ///< opens the panel
    std::function<void()> hide;                             ///< closes the panel, if it is open
    std::function<void(QByteArray activationToken)> toggle; ///< opens or closes the panel
    std::function<void(QByteArray activationToken)> openSettings; ///< opens the settings

    std::function<void()> quit; ///< ends the program
};

/// Answers commands on the session bus, and desktops that start the program over it. Owning the
/// program's name there is what makes a process the running one.
class CommandServer : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    explicit CommandServer(
        CommandHandlers handlers, QDBusConnection bus = QDBusConnection::sessionBus());
    ~CommandServer() override;

    /// Takes the program's name and answers from then on; false when another process has it.
    /// Without a bus nobody can ask and nobody can be in the way, so that counts as taken.
    [[nodiscard]] bool claim();

    /// Says on the bus that the label has changed, once until somebody asks for the status again:
    /// where nobody follows it, nobody is woken.
    void announceLabel();

    /// The same of the details.
    void announceDetails();

    // The methods of the D-Bus interface.
    QString Status();
    bool Refresh(QString& message);
    bool Join(const QString& activationToken, QString& message);
    bool Capture(const QString& text, QString& message);
    bool ToggleHabit(const QString& idOrName, QString& message);
    bool FinishChore(const QString& idOrName, QString& message);
    bool Agenda(QString& jsonOrMessage);
    void Open(const QString& activationToken);
    void Hide();
    void Toggle(const QString& activationToken);
    void OpenSettings(const QString& activationToken);
    void Quit();

Q_SIGNALS:
    // The signals of the D-Bus interface.
    void LabelChanged();
    void DetailsChanged();

private:
    CommandHandlers::Done answerLater();

    QDBusConnection m_bus;
    CommandHandlers m_handlers;
    bool m_labelIsFollowed = false; ///< the status was asked for since the label was announced
    bool m_detailsAreFollowed = false;
};

} // namespace lumora
