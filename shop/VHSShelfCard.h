#pragma once

#include "CassetteItem.h"

/** A tape's box front with the transcript badge, as on a shelf. Its implicit height follows from its width. */
class VHSShelfCard : public CassetteItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit VHSShelfCard(QQuickItem* parent = nullptr) : CassetteItem(CassetteRenderer::Form::ShelfCard, parent) {}
};
