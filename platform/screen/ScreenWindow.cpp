#include "ScreenWindow.h"

#include "ChangedPoint.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr std::chrono::milliseconds secondFrame{200}; // after the display was switched on

} // namespace

ScreenWindow::ScreenWindow(QWindow* parent) : QQuickWindow(parent)
{
    setCursor(Qt::BlankCursor);
    // On a compositor that accepts client-side decorations, Qt's Wayland client draws them even in full screen.
    setFlag(Qt::FramelessWindowHint);
    if (QGuiApplication::platformName().startsWith(u"wayland"_s) && sceneGraphBackend() == u"software"_s)
        new ChangedPoint(contentItem());
}

void ScreenWindow::present()
{
    // Without a window manager, nothing else resizes a full-screen window to the screen's size.
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
    // After an output is switched on, a compositor may show only the second frame (sway 1.10). If nothing is animated,
    // no second frame would be rendered.
    if (!blank)
        QTimer::singleShot(secondFrame, this, &QQuickWindow::update);
}

} // namespace quillmere
