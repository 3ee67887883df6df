#include "IdleInhibitor.h"

namespace {

int inhibitors = 0;

} // namespace

IdleInhibitor::IdleInhibitor()
{
    if (++inhibitors == 1)
        Q_EMIT IdleInhibitors::all().anyChanged(true);
}

IdleInhibitor::~IdleInhibitor()
{
    if (--inhibitors == 0)
        Q_EMIT IdleInhibitors::all().anyChanged(false);
}

bool IdleInhibitor::isAny()
{
    return inhibitors > 0;
}

IdleInhibitors& IdleInhibitors::all()
{
    static IdleInhibitors all;
    return all;
}
