// lumora-bench-processes [--quick]: what the whole program costs beside the floor, in one run.
//
// Everything that they meet is real and private: X servers, buses, a keyring with the token, and a
// service that they reach over TLS. The figures go to standard output, see ResultTable.h.

#include "MeasuredProgram.h"
#include "Measuring.h"
#include "PanelOnScreen.h"
#include "PrivateDesktop.h"
#include "ResultTable.h"
#include "Service.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <chrono>
#include <stdexcept>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora {

namespace {

/// How much is measured.
struct Effort {
    int starts = 15;
    int firstOpens = 7;
    std::chrono::milliseconds idle = 120s;
};

// The toolkit's pool threads end after 30 idle seconds, and take their figures along.
constexpr auto settling = 40s;

// Two minutes and some after a request the toolkit wakes to forget the connection.
constexpr auto lingering = 110s;

constexpr int openings = 20;
constexpr double mebi = 1024; // KiB

/// The programs to compare and the service they use.
class Bench {
public:
    explicit Bench(Effort effort)
        : m_effort(effort) {}

    void run() {
        compareStarts();
        compareFirstOpens();
        compareIdling();
        compareThemes();
    }

private:
    static QString binary(const QString& name) {
        return QCoreApplication::applicationDirPath() + u'/' + name;
    }

    QStringList lumora() const { return {binary(u"lumora"_s)}; }

    QStringList floor() const {
        return {binary(u"lumora-bench-floor"_s), u"--get"_s, m_service.address()};
    }

    QProcessEnvironment environment(const PrivateDesktop& desktop) const {
        QProcessEnvironment environment = desktop.environment();
        environment.insert(u"SSL_CERT_FILE"_s, m_service.authority());
        return environment;
    }

    /// Milliseconds from the start of a program until its status item is registered.
    double timeStart(const QStringList& command, const PrivateDesktop& desktop) const {
        const qsizetype before = desktop.items().size();
        QElapsedTimer timer;
        timer.start();
        const MeasuredProgram program(command, environment(desktop));
        await([&] { return desktop.items().size() > before; });
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

    void compareStarts() const {
        say(u"Starting each %1 times"_s.arg(m_effort.starts));
        const PrivateDesktop desktop(m_service.address());
        std::vector<double> ours;
        std::vector<double> floors;
        std::vector<double> ratios;
        for (int i = -2; i < m_effort.starts; ++i) {
            const double floorTime = timeStart(floor(), desktop);
            pass(200ms);
            const double ourTime = timeStart(lumora(), desktop);
            pass(200ms);
            if (i < 0) // from a cold disk cache
                continue;
            floors.push_back(floorTime);
            ours.push_back(ourTime);
            ratios.push_back(ourTime / floorTime);
        }
        ResultTable::addRatio(
            u"Start to item registered"_s, u"ms"_s, median(ours), median(floors), median(ratios),
            1.5);
    }

    void compareIdling() const {
        PrivateDesktop ourDesktop(m_service.address());
        PrivateDesktop floorDesktop(m_service.address());
        const qsizetype before = m_service.answers();
        const MeasuredProgram ours(lumora(), environment(ourDesktop));
        const MeasuredProgram floors(floor(), environment(floorDesktop));
        await([&] { return m_service.answers() >= before + 2; });
        say(u"Letting both come to rest"_s);
        pass(settling);
        compareMemory(ours.memory(), floors.memory());
        pass(lingering);
        compareActivity(ours, floors);
        compareOpenPanel(ourDesktop, floorDesktop, ours, floors);
    }

    /// What a panel's first opening takes, from the press on.
    struct Opening {
        std::vector<double> wall;      ///< until it is on the screen, ms
        std::vector<double> processor; ///< until the program rests again, ms
    };

    /// Opens the panel of a program that has never shown one, `idle` after its first briefing.
    void timeFirstOpen(
        const QStringList& command, std::chrono::milliseconds idle, Opening& opening) const {
        PrivateDesktop desktop(m_service.address());
        const qsizetype before = m_service.answers();
        const MeasuredProgram program(command, environment(desktop));
        await([&] { return m_service.answers() > before; });
        pass(idle);
        PanelOnScreen panel(desktop);
        const double start = program.activity().cpuMilliseconds;
        opening.wall.push_back(panel.open());
        pass(500ms);
        opening.processor.push_back(program.activity().cpuMilliseconds - start);
    }

    /// Once the program has rested, and at once.
    void compareFirstOpens() const {
        say(u"Opening the panel for the first time, %1 times"_s.arg(m_effort.firstOpens));
        constexpr auto rested = 5s; // the panel is got ready two seconds after the briefing
        Opening ours;
        Opening floors;
        Opening early;
        std::vector<double> ratios;
        for (int i = 0; i < m_effort.firstOpens; ++i) {
            timeFirstOpen(floor(), rested, floors);
            timeFirstOpen(lumora(), rested, ours);
            timeFirstOpen(lumora(), 1s, early);
            ratios.push_back(ours.wall.back() / floors.wall.back());
        }
        ResultTable::addRatio(
            u"First open, press to pixels"_s, u"ms"_s, median(ours.wall), median(floors.wall),
            median(ratios), 1.5);
        ResultTable::addFigure(
            u"First open, processor time"_s, u"ms"_s, median(ours.processor),
            median(floors.processor), 25);
        ResultTable::addFigure(
            u"The same one second after the start, processor time"_s, u"ms"_s,
            median(early.processor), std::nullopt);
    }

    /// What opening it again and again takes, and leaves behind.
    static void compareOpenPanel(
        PrivateDesktop& desktop, PrivateDesktop& floorDesktop, const MeasuredProgram& ours,
        const MeasuredProgram& floorProgram) {
        const MeasuredProgram::Memory floors = floorProgram.memory(); // before it shows anything
        say(u"Opening the panel %1 times"_s.arg(openings));
        PanelOnScreen panel(desktop);
        PanelOnScreen window(floorDesktop);
        std::vector<double> times;
        std::vector<double> floorTimes;
        double early = 0;
        for (int opening = 1; opening <= openings; ++opening) {
            times.push_back(panel.open());
            floorTimes.push_back(window.open());
            pass(500ms);
            panel.close();
            window.close();
            pass(500ms);
            if (opening == 2)
                early = ours.memory().privateDirty;
        }
        times.erase(times.begin()); // those were no opening again
        floorTimes.erase(floorTimes.begin());
        const double late = ours.memory().privateDirty;
        ResultTable::addRatio(
            u"Opening again, press to pixels, median"_s, u"ms"_s, median(times), median(floorTimes),
            median(times) / median(floorTimes), 1.5);
        ResultTable::addFigure(
            u"Opening again, press to pixels, 95th percentile"_s, u"ms"_s, percentile(times, 95),
            percentile(floorTimes, 95), 8);
        ResultTable::addRatio(
            u"Memory of its own after 20 openings"_s, u"MiB"_s, late / mebi,
            floors.privateDirty / mebi, late / floors.privateDirty, 1.5);
        const double bare = floorProgram.memory().privateDirty;
        ResultTable::addRatio(
            u"The same beside the bare window after as many"_s, u"MiB"_s, late / mebi, bare / mebi,
            late / bare);
        ResultTable::addFigure(
            u"Its growth between openings 2 and 20"_s, u"MiB"_s, (late - early) / mebi,
            std::nullopt, 0.3);
    }

    static void
    compareMemory(const MeasuredProgram::Memory& ours, const MeasuredProgram::Memory& floors) {
        ResultTable::addRatio(
            u"Memory of its own (private dirty)"_s, u"MiB"_s, ours.privateDirty / mebi,
            floors.privateDirty / mebi, ours.privateDirty / floors.privateDirty, 1.6);
        ResultTable::addRatio(
            u"Memory with its share of what is shared (PSS)"_s, u"MiB"_s, ours.proportional / mebi,
            floors.proportional / mebi, ours.proportional / floors.proportional);
    }

    void compareActivity(const MeasuredProgram& ours, const MeasuredProgram& floors) const {
        say(u"Watching both idle for %1 seconds"_s.arg(
            std::chrono::duration_cast<std::chrono::seconds>(m_effort.idle).count()));
        using Activity = MeasuredProgram::Activity;
        const Activity ourStart = ours.activity();
        const Activity floorStart = floors.activity();
        pass(m_effort.idle);
        const Activity ourEnd = ours.activity();
        const Activity floorEnd = floors.activity();
        const double minutes = std::chrono::duration<double, std::ratio<60>>(m_effort.idle).count();
        ResultTable::addFigure(
            u"Wake-ups when idle"_s, u"a minute"_s, (ourEnd.wakeups - ourStart.wakeups) / minutes,
            (floorEnd.wakeups - floorStart.wakeups) / minutes, 2);
        ResultTable::addFigure(
            u"Processor time when idle"_s, u"ms a minute"_s,
            (ourEnd.cpuMilliseconds - ourStart.cpuMilliseconds) / minutes,
            (floorEnd.cpuMilliseconds - floorStart.cpuMilliseconds) / minutes);
    }

    /// The floor shows whether there is a GTK theme to be loaded at all.
    void compareThemes() const {
        say(u"Starting both on a desktop that asks for the GTK theme"_s);
        bool ours = false;
        bool floors = false;
        for (const QString& theme : {QString(), u"gtk3"_s}) {
            ours |= loadsGtk(lumora(), theme);
            floors |= loadsGtk(floor(), theme);
        }
        const auto word = [](bool loaded) { return loaded ? u"yes"_s : u"no"_s; };
        ResultTable::addFact(
            u"GTK theme loaded where the desktop asks for it"_s, word(ours), word(floors), !ours);
    }

    bool loadsGtk(const QStringList& command, const QString& theme) const {
        const PrivateDesktop desktop(m_service.address());
        QProcessEnvironment gnome = environment(desktop);
        gnome.insert(u"XDG_CURRENT_DESKTOP"_s, u"GNOME"_s);
        if (!theme.isEmpty())
            gnome.insert(u"QT_QPA_PLATFORMTHEME"_s, theme);
        const qsizetype before = m_service.answers();
        const MeasuredProgram program(command, gnome);
        await([&] { return m_service.answers() > before; });
        return program.hasMapped("libqgtk3") || program.hasMapped("libgtk-3");
    }

    Effort m_effort;
    Service m_service;
};

} // namespace

} // namespace lumora

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    lumora::Effort effort;
    if (QCoreApplication::arguments().contains(u"--quick"_s))
        effort = {5, 3, 60s};
    try {
        lumora::Bench(effort).run();
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
}
