#pragma once

#include "MetadataItem.h"
#include "VHSCover.h"

#include <QList>

/** The now-playing metadata of a cassette, in the order in which it is shown. Empty values are left out. */
QList<MetadataItem> metadataItems(const VHSCover& cover);
