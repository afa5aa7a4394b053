#include "support/Fixtures.h"
#include "support/ProgramHarness.h"
#include "support/RealKeyring.h"
#include "support/ScriptedServer.h"

#include <QXmlStreamReader>

#include <gmock/gmock.h>

#include <optional>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using testing::Contains;

namespace {

const QByteArray ownToken = "tell-this-to-nobody-either";

/// The fixture's amounts, however they may be written.
const QByteArrayList amounts{"1234", "1,234", "1.234", "410.5", "410,5", "1100", "1,100"};

const QString commandPath = u"/com/lumora/app"_s;
const QString commandInterface = u"com.lumora.app"_s;

/// What the neighbour gives for every text, as a thought.
const QByteArray aThought = R"({"text":"org.kde.StatusNotifierItem","type":"capture"})";

/// A method of an object on the bus, with the types of what it is given.
struct Method {
    QString path;
    QString interfaceName;
    QString name;
    QString signature;
};

/// Some value of the D-Bus type `type`; absent for those that nobody needs to guess.
std::optional<QVariant> someValue(QChar type) {
    switch (type.unicode()) {
    case u's':
        return u"org.kde.StatusNotifierItem"_s;
    case u'i':
        return -1;
    case u'u':
        return 4711U;
    case u'b':
        return true;
    default:
        return std::nullopt;
    }
}

/// A program of somebody else's on the session bus, which tries all that can be tried.
class BusNeighbour : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, ownToken));
        lumora.writePreferences(
            {{u"endpointURL"_s, server.url(u"/api/briefing"_s).toString()},
             {u"menuBarAmbient"_s, u"habits"_s}});
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
        ASSERT_EQ(header(server.requests().first(), "X-Api-Key"), ownToken);
        probe = std::make_unique<BusProbe>(lumora.sessionBus().connect(), u"com.lumora.app"_s);
    }

    /// Keeps what was heard.
    QDBusMessage call(const Method& method, const QVariantList& arguments) {
        const QDBusMessage answer =
            probe->call(method.path, method.interfaceName, method.name, arguments);
        heard += written(answer);
        return answer;
    }

    /// All methods of all objects from `path` down, as they describe themselves.
    QList<Method> methodsBelow(const QString& path) {
        const QString about = u"org.freedesktop.DBus.Introspectable"_s;
        const QDBusMessage answer = call({path, about, u"Introspect"_s, {}}, {});
        QXmlStreamReader xml(answer.arguments().value(0).toString());
        QList<Method> methods;
        QString interfaceName;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            const QString name = xml.attributes().value("name"_L1).toString();
            if (xml.name() == u"node" && !name.isEmpty())
                methods += methodsBelow(path == u"/" ? path + name : path + u'/' + name);
            else if (xml.name() == u"interface")
                interfaceName = name;
            else if (xml.name() == u"method")
                methods += {path, interfaceName, name, {}};
            else if (xml.name() == u"arg" && xml.attributes().value("direction"_L1) == u"in")
                methods.last().signature += xml.attributes().value("type"_L1);
        }
        EXPECT_FALSE(xml.hasError()) << path.toStdString();
        return methods;
    }

    void tryEverything(const QList<Method>& methods) {
        for (const Method& method : methods) {
            if (method.name == u"Quit")
                continue;
            QVariantList arguments;
            for (const QChar type : method.signature) {
                if (const auto value = someValue(type))
                    arguments += *value;
            }
            call(method, arguments);
            // What nobody asked for, and what nobody could have meant.
            call(method, {});
            call(method, {QByteArray(4096, 'x'), -1, QStringList(u"y"_s), QVariantMap()});
        }
    }

    ScriptedServer server{
        ScriptedServer::always(ScriptedServer::answer("200 OK", fixture(u"briefing-full.json"_s)))};
    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    std::unique_ptr<BusProbe> probe;
    QByteArray heard;
};

} // namespace

TEST_F(BusNeighbour, LearnsNeitherTheTokenNorAnAmount) {
    const QList<Method> methods = methodsBelow(u"/"_s);
    QStringList names;
    for (const Method& method : methods)
        names += method.name;
    ASSERT_THAT(names, Contains(u"Status"_s)); // it found the program's own objects
    ASSERT_THAT(names, Contains(u"Agenda"_s));
    ASSERT_THAT(names, Contains(u"GetLayout"_s));
    ASSERT_THAT(names, Contains(u"Activate"_s));
    ASSERT_THAT(names, Contains(u"GetAll"_s));

    tryEverything(methods);
    EXPECT_TRUE(heard.contains("canJoin"));   // the agenda
    EXPECT_FALSE(heard.contains("https://")); // and no link
    EXPECT_TRUE(heard.contains("Refresh"));   // the menu and the label were among it
    EXPECT_FALSE(heard.contains(ownToken));
    for (const QByteArray& amount : amounts)
        EXPECT_FALSE(heard.contains(amount)) << amount.toStdString();
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
}

TEST_F(BusNeighbour, CanHaveItDoNoMoreThanAUserCould) {
    EXPECT_FALSE(lumora.sessionBus().connect().registerService(u"com.lumora.app"_s));
    tryEverything(methodsBelow(u"/"_s));
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    // A thought into the inbox, as the panel has a field for it; nothing of what only it was asked
    // for.
    for (const QByteArray& request : server.requests()) {
        if (request.startsWith("POST /api/briefing/action "))
            EXPECT_TRUE(request.endsWith(aThought)) << request.toStdString();
        else
            EXPECT_TRUE(request.startsWith("GET /api/briefing ")) << request.toStdString();
    }
}

TEST_F(BusNeighbour, ActsOnlyOnWhatThePanelShows) {
    const auto refused = [this](const QString& method, const QString& argument) {
        const QDBusMessage answer = call({commandPath, commandInterface, method, {}}, {argument});
        return answer.arguments().value(0) == QVariant(false);
    };
    for (const QString& id :
         {u"nobody's"_s, u"habit.toggle"_s, u"\",\"type\":\"spending.refresh"_s, QString()}) {
        EXPECT_TRUE(refused(u"ToggleHabit"_s, id)) << id.toStdString();
        EXPECT_TRUE(refused(u"FinishChore"_s, id)) << id.toStdString();
    }
    EXPECT_TRUE(refused(u"Capture"_s, u" \n"_s));
    EXPECT_TRUE(refused(u"Capture"_s, QString(1'000'000, u'x')));
    for (const QByteArray& request : server.requests())
        EXPECT_TRUE(request.startsWith("GET /api/briefing ")) << request.toStdString();
}
