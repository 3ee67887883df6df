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

namespace {

std::unique_ptr<ScreenWindow> makeWindow(QQmlEngine& engine, QuillmereTVApp& app)
{
    QQmlComponent component(&engine, QUrl(u"qrc:/qt/qml/Quillmere/App/Main.qml"_s));
    QObject* const root = component.createWithInitialProperties({{u"app"_s, QVariant::fromValue(&app)}});
    if (auto* const window = qobject_cast<ScreenWindow*>(root))
        return std::unique_ptr<ScreenWindow>(window);
    delete root;
    std::fprintf(stderr, "quillmere-tv: the screens do not load: %s\n", qPrintable(component.errorString()));
    return nullptr;
}

/** How long the set waits before the display sleeps; zero is for ever. */
std::chrono::milliseconds displaySleepDelay()
{
    const QString builtIn = QStringLiteral(QUILLMERE_DISPLAY_SLEEP);
    const QString asked = qEnvironmentVariable("QUILLMERE_DISPLAY_SLEEP", builtIn);
    if (const auto delay = DisplaySleep::parseDelay(asked))
        return *delay;
    std::fprintf(stderr, "quillmere-tv: QUILLMERE_DISPLAY_SLEEP is no time such as 20min: %s\n", qPrintable(asked));
    return DisplaySleep::parseDelay(builtIn).value_or(std::chrono::milliseconds::zero());
}

/** Has the display sleep where that is asked for; the order of its members is the order of their lives. */
struct Display
{
    Display(ScreenWindow& window, Clock& clock)
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

constexpr std::chrono::seconds patience{5};

/** The toolkit's own end waits for a host name that is still being looked up, which may take half a minute. */
void endAnyway(int status)
{
    std::thread([status] {
        std::this_thread::sleep_for(patience);
        _exit(status);
    }).detach();
}

int watch(QGuiApplication& application)
{
    QuillmereTVApp app;
    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    const auto window = makeWindow(engine, app);
    if (!window)
        return EXIT_FAILURE;

    // It sees the keys that RemoteInput sends, as filters are asked in the opposite order of their installation.
    const Display display(*window, app.clock());
    new RemoteInput(window.get(), app.clock());
    QObject::connect(&engine, &QQmlEngine::quit, &application, &QCoreApplication::quit, Qt::QueuedConnection);
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, &application, &QCoreApplication::quit);
    window->present();
    const int status = QGuiApplication::exec();
    endAnyway(status);
    return status;
}

} // namespace

int main(int argc, char* argv[])
{
    logging::prepare();
    // These set the environment, so they come before the first other thread.
    QuillmereTVApp::prepareSound();
    VideoPlugins::prepare();
    QGuiApplication application(argc, argv);
    // The application object takes the user's locale; the video player reads and writes numbers in C's.
    std::setlocale(LC_NUMERIC, "C");
    QGuiApplication::setApplicationName(u"quillmere-tv"_s);
    QGuiApplication::setApplicationDisplayName(u"Quillmere Television"_s);
    QGuiApplication::setApplicationVersion(QStringLiteral(QUILLMERE_VERSION));
    QGuiApplication::setDesktopFileName(u"quillmere-tv"_s);
    chooseRenderPath();

    return watch(application);
}
