#include "LowerThirdController.h"

void LowerThirdController::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    m_leaving = timepiece && m_isShown ? timepiece->clock().after(stay, [this] { leave(); }) : nullptr;
    Q_EMIT timepieceChanged();
}

void LowerThirdController::leave()
{
    m_isShown = false;
    Q_EMIT isShownChanged();
}
