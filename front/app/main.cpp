#include "QuillmereTVApp.h"
#include "RemoteInput.h"
#include "RenderPath.h"
#include "ScreenWindow.h"
#include "StopSignals.h"
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

int watch(QGuiApplication& application)
{
    QuillmereTVApp app;
    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    const auto window = makeWindow(engine, app);
    if (!window)
        return EXIT_FAILURE;

    new RemoteInput(window.get(), app.clock());
    QObject::connect(&engine, &QQmlEngine::quit, &application, &QCoreApplication::quit, Qt::QueuedConnection);
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, &application, &QCoreApplication::quit);
    window->present();
    return QGuiApplication::exec();
}

constexpr std::chrono::seconds patience{5};

/** The toolkit's own end waits for a host name that is still being looked up, which may take half a minute. */
void endAnyway(int status)
{
    std::thread([status] {
        std::this_thread::sleep_for(patience);
        _exit(status);
    }).detach();
}

} // namespace

int main(int argc, char* argv[])
{
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

    const int status = watch(application);
    endAnyway(status);
    return status;
}
