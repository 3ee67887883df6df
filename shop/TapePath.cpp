#include "TapePath.h"

namespace quillmere {

void TapePath::open(CassetteRow* cassettes, int cassette)
{
    if (!cassettes || cassette < 0 || cassette >= cassettes->rowCount())
        return;
    m_tapes.append(cassettes->content().tapes.at(cassette));
    Q_EMIT depthChanged();
}

void TapePath::pop()
{
    if (m_tapes.isEmpty())
        return;
    m_tapes.removeLast();
    Q_EMIT depthChanged();
}

} // namespace quillmere
