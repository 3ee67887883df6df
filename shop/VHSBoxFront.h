#pragma once

#include "CassetteItem.h"

/** A tape's box front. Its implicit height follows from its width. */
class VHSBoxFront : public CassetteItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit VHSBoxFront(QQuickItem* parent = nullptr) : CassetteItem(CassetteRenderer::Form::BoxFront, parent) {}
};
