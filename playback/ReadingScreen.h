#pragma once

#include "FocusScreen.h"

namespace quillmere {

class ScrollArea;

/**
 * A screen with items to read one after the other in a scroll area. Play/pause and the page keys turn a page: the next
 * page starts with the first item that was not fully visible. Screen thread only; its parent item owns it.
 */
class ReadingScreen : public quillmere::FocusScreen
{
    Q_OBJECT
    QML_ELEMENT

public:
    using FocusScreen::FocusScreen;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void turnPage(int arrow);
    void focusTopmostVisible(const ScrollArea& area);
};

} // namespace quillmere
