#pragma once

namespace quillmere {

class Focusable;

/** An item that acts when an item inside it gets the focus, such as a list or a scroll area. Screen thread only. */
class FocusContainer
{
public:
    /**
     * Called by the screen for every container of the newly focused item, from the innermost one outwards. With
     * `immediately`, scrolls are not animated.
     */
    virtual void onFocusInside(Focusable& focused, bool immediately) = 0;

protected:
    FocusContainer() = default;
    ~FocusContainer() = default;
};

} // namespace quillmere
