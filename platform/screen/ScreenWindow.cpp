#include "ScreenWindow.h"

#include <QScreen>

ScreenWindow::ScreenWindow(QWindow* parent) : QQuickWindow(parent)
{
    setCursor(Qt::BlankCursor);
}

void ScreenWindow::present()
{
    // Without a window manager nobody else makes a full-screen window as large as the screen.
    setGeometry(screen()->geometry());
    showFullScreen();
    requestActivate();
}
