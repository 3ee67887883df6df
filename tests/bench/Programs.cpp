#include "Bench.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

std::unique_ptr<ChildProcess> launchEmptyWindow()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"QT_QPA_PLATFORM"_s);
    environment.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
    return std::make_unique<ChildProcess>(QStringLiteral(QUILLMERE_EMPTY_WINDOW), QStringList(), environment);
}

std::unique_ptr<ChildProcess> startEmptyWindow(SimulatedViewer& viewer)
{
    viewer.waitForEmptyScreen();
    auto process = launchEmptyWindow();
    if (!viewer.screen().waitUntil([&](const QImage&) { return viewer.remote().focusTopWindow(); }, 10s))
        throw std::runtime_error("The empty window did not come up.");
    return process;
}

} // namespace quillmere
