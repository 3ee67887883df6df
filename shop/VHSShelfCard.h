#pragma once

#include "CassetteItem.h"

/** A tape's box front with its transcript badge, as it stands on a shelf; as tall as its width asks for. */
class VHSShelfCard : public CassetteItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit VHSShelfCard(QQuickItem* parent = nullptr) : CassetteItem(CassettePrint::Form::ShelfCard, parent) {}
};
