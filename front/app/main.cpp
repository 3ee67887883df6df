#include "DisplaySleep.h"
#include "Logging.h"
#include "QuillmereTVApp.h"
#include "RemoteInput.h"
#include "RenderPath.h"
#include "ScreenWindow.h"
#include "StopSignals.h"
#include "SystemDisplayPower.h"
#include "VideoPlugins.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

std::unique_ptr<ScreenWindow> createWindow(QQmlEngine& engine, QuillmereTVApp& app)
{
    QQmlComponent component(&engine, QUrl(u"qrc:/qt/qml/Quillmere/App/Main.qml"_s));
    QObject* const root = component.createWithInitialProperties({{u"app"_s, QVariant::fromValue(&app)}});
    if (auto* const window = qobject_cast<ScreenWindow*>(root))
        return std::unique_ptr<ScreenWindow>(window);
    delete root;
    std::fprintf(stderr, "quillmere-tv: the screens do not load: %s\n", qPrintable(component.errorString()));
    return nullptr;
}

/** Idle time (no key, no playback) after which the display sleeps; zero for never. */
std::chrono::milliseconds displaySleepDelay()
{
    const QString builtIn = QStringLiteral(QUILLMERE_DISPLAY_SLEEP);
    const QString value = qEnvironmentVariable("QUILLMERE_DISPLAY_SLEEP", builtIn);
    if (const auto delay = DisplaySleep::parseDelay(value))
        return *delay;
    std::fprintf(stderr, "quillmere-tv: QUILLMERE_DISPLAY_SLEEP is no time such as 20min: %s\n", qPrintable(value));
    return DisplaySleep::parseDelay(builtIn).value_or(std::chrono::milliseconds::zero());
}

/**
 * Sets up the sleep of the display if it is enabled. If only the file for the state of the display is named, `power` is
 * created without `sleep` and keeps that file at "on". `power` outlives `sleep`.
 */
struct DisplaySleepSetup
{
    DisplaySleepSetup(ScreenWindow& window, Clock& clock)
    {
        const QString stateFile = qEnvironmentVariable("QUILLMERE_DISPLAY_STATE");
        const auto delay = displaySleepDelay();
        if (delay > std::chrono::milliseconds::zero() || !stateFile.isEmpty())
            power.emplace(stateFile);
        if (delay == std::chrono::milliseconds::zero())
            return;
        sleep.emplace(window, clock, *power, delay);
        QObject::connect(&*sleep, &DisplaySleep::asleepChanged, &window, &ScreenWindow::setBlank);
    }

    std::optional<SystemDisplayPower> power;
    std::optional<DisplaySleep> sleep;
};

constexpr std::chrono::seconds exitTimeout{5};

/** Ends the process after a timeout. Qt's shutdown waits for a pending host name lookup, which can take 30 seconds. */
void exitAfterTimeout(int status)
{
    std::thread([status] {
        std::this_thread::sleep_for(exitTimeout);
        _exit(status);
    }).detach();
}

int runApplication(QGuiApplication& application)
{
    QuillmereTVApp app;
    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    const auto window = createWindow(engine, app);
    if (!window)
        return EXIT_FAILURE;

    // Created before RemoteInput, so that its event filter also receives the key events which RemoteInput sends: the
    // event filter installed last is called first.
    const DisplaySleepSetup display(*window, *app.clock());
    new RemoteInput(window.get(), *app.clock());
    QObject::connect(&engine, &QQmlEngine::quit, &application, &QCoreApplication::quit, Qt::QueuedConnection);
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stopRequested, &application, &QCoreApplication::quit);
    window->present();
    const int status = QGuiApplication::exec();
    exitAfterTimeout(status);
    return status;
}

} // namespace

} // namespace quillmere

int main(int argc, char* argv[])
{
    using namespace quillmere;
    logging::silenceLibraries();
    // These set environment variables, so they run before any other thread starts.
    QuillmereTVApp::prepareSound();
    VideoPlugins::prepare();
    QGuiApplication application(argc, argv);
    // QGuiApplication sets the locale of the user. The video player requires the number format of the C locale.
    std::setlocale(LC_NUMERIC, "C");
    QGuiApplication::setApplicationName(u"quillmere-tv"_s);
    QGuiApplication::setApplicationDisplayName(u"Quillmere Television"_s);
    QGuiApplication::setApplicationVersion(QStringLiteral(QUILLMERE_VERSION));
    QGuiApplication::setDesktopFileName(u"quillmere-tv"_s);
    chooseRenderPath();

    return runApplication(application);
}
