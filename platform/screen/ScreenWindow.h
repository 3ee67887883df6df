#pragma once

#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

/**
 * The set's one window: the whole display, without a pointer. Its `color` fills what the canvas leaves free.
 * Screen thread only; whoever made it owns it.
 */
class ScreenWindow : public QQuickWindow
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit ScreenWindow(QWindow* parent = nullptr);

    /** Covers the display and takes the keys, with or without a window manager. */
    void present();
};
