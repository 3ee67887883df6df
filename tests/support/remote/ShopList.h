#pragma once

#include <QImage>
#include <QRectF>
#include <QString>

#include <optional>

class LivingRoom;
class SampleHub;

/** The shop as one plain list, as a test sees it and walks along it. */
namespace shoplist {

/** The row with the focus, in points of the canvas; nothing while the list is not shown. */
std::optional<QRectF> focusedRow(const QImage& picture);

/** What the row with the focus reads; empty while there is none. */
QString focusedText(LivingRoom& room);

/** How many tapes stand before the one whose title contains `title`; -1 when the hub's page does not have it. */
int placeOf(SampleHub& hub, const QString& title);

/** Opens the shop from the front screen's news door and waits for the list; false when it does not come. */
bool open(LivingRoom& room);

} // namespace shoplist
