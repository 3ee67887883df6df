#include "QuillmereTVApp.h"
#include "RemoteInput.h"
#include "RenderPath.h"
#include "ScreenWindow.h"
#include "StopSignals.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <clocale>
#include <cstdio>

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

} // namespace

int main(int argc, char* argv[])
{
    QuillmereTVApp::prepareSound();
    QGuiApplication application(argc, argv);
    // The application object takes the user's locale; the video player reads and writes numbers in C's.
    std::setlocale(LC_NUMERIC, "C");
    QGuiApplication::setApplicationName(u"quillmere-tv"_s);
    QGuiApplication::setApplicationDisplayName(u"Quillmere Television"_s);
    QGuiApplication::setApplicationVersion(QStringLiteral(QUILLMERE_VERSION));
    QGuiApplication::setDesktopFileName(u"quillmere-tv"_s);
    chooseRenderPath();

    QuillmereTVApp app;
    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    const auto window = makeWindow(engine, app);
    if (!window)
        return EXIT_FAILURE;

    new RemoteInput(window.get());
    QObject::connect(&engine, &QQmlEngine::quit, &application, &QCoreApplication::quit, Qt::QueuedConnection);
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, &application, &QCoreApplication::quit);
    window->present();
    return QGuiApplication::exec();
}
