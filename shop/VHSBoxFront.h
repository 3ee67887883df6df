#pragma once

#include "CassetteItem.h"

namespace quillmere {

/** A tape's box front. Its implicit height follows from its width. */
class VHSBoxFront : public quillmere::CassetteItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit VHSBoxFront(QQuickItem* parent = nullptr) : CassetteItem(CassetteRenderer::Form::BoxFront, parent) {}
};

/** A tape's box front with the transcript badge, as on a shelf. Its implicit height follows from its width. */
class VHSShelfCard : public quillmere::CassetteItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit VHSShelfCard(QQuickItem* parent = nullptr) : CassetteItem(CassetteRenderer::Form::ShelfCard, parent) {}
};

} // namespace quillmere
