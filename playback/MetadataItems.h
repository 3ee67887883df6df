#pragma once

#include "MetadataItem.h"
#include "VHSCover.h"

#include <QList>

/** The now-playing texts of a cassette, in the order in which they are shown; what is empty has no item. */
QList<MetadataItem> metadataItems(const VHSCover& cover);
