#pragma once

#include "CassetteItem.h"

/** A tape's box front, as tall as its width asks for. */
class VHSBoxFront : public CassetteItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit VHSBoxFront(QQuickItem* parent = nullptr) : CassetteItem(CassettePrint::Form::BoxFront, parent) {}
};
