#include "LowerThirdController.h"

void LowerThirdController::setClock(Clock* clock)
{
    if (m_clock == clock)
        return;
    m_clock = clock;
    m_hideTimer = clock && m_isShown ? clock->after(showTime, [this] { hide(); }) : nullptr;
    Q_EMIT clockChanged();
}

void LowerThirdController::hide()
{
    m_isShown = false;
    Q_EMIT isShownChanged();
}
