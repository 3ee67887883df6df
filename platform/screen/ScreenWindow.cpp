#include "ScreenWindow.h"

#include "ChangedPoint.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds secondFrame{200}; // after the display has come on

} // namespace

ScreenWindow::ScreenWindow(QWindow* parent) : QQuickWindow(parent)
{
    setCursor(Qt::BlankCursor);
    // Qt's Wayland client draws decorations of its own on a compositor that does not refuse them, in full screen too.
    setFlag(Qt::FramelessWindowHint);
    if (QGuiApplication::platformName().startsWith(u"wayland"_s) && sceneGraphBackend() == u"software"_s)
        new ChangedPoint(contentItem());
}

void ScreenWindow::present()
{
    // Without a window manager nobody else makes a full-screen window as large as the screen.
    setGeometry(screen()->geometry());
    showFullScreen();
    requestActivate();
}

void ScreenWindow::setBlank(bool blank)
{
    if (m_isBlank == blank)
        return;
    m_isBlank = blank;
    Q_EMIT isBlankChanged();
    // A compositor may show the second frame only of an output that has come on (sway 1.10), and nothing may move then.
    if (!blank)
        QTimer::singleShot(secondFrame, this, &QQuickWindow::update);
}
