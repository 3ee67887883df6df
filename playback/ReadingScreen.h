#pragma once

#include "FocusScreen.h"

class ScrollArea;

/**
 * A screen of things to be read one after the other in a scroll area: play/pause and the page keys turn a page, so that
 * what was not wholly in sight begins the next one. Screen thread only; its parent item owns it.
 */
class ReadingScreen : public FocusScreen
{
    Q_OBJECT
    QML_ELEMENT

public:
    using FocusScreen::FocusScreen;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void turnPage(int arrow);
    void focusTopmost(const ScrollArea& area);
};
