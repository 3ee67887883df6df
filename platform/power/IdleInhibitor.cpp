#include "IdleInhibitor.h"

namespace quillmere {

namespace {

int inhibitorCount = 0;

} // namespace

IdleInhibitor::IdleInhibitor()
{
    if (++inhibitorCount == 1)
        Q_EMIT IdleInhibitors::instance().activeChanged(true);
}

IdleInhibitor::~IdleInhibitor()
{
    if (--inhibitorCount == 0)
        Q_EMIT IdleInhibitors::instance().activeChanged(false);
}

bool IdleInhibitor::isAnyActive()
{
    return inhibitorCount > 0;
}

IdleInhibitors& IdleInhibitors::instance()
{
    static IdleInhibitors inhibitors;
    return inhibitors;
}

} // namespace quillmere
