#include "CassetteRow.h"

#include "Dressing.h"
#include "RewinderyTexts.h"
#include "Text.h"

namespace quillmere {

CassetteRow::Content::Content(const Shelf& shelf)
    : name(shortenedLine(shelf.name)), caption(shortenedLine(RewinderyTexts::caption(shelf.covers))),
      count(int(shelf.covers.size()))
{
    for (const VHSCover& cover : shelf.covers) {
        const auto tape = shelf.tapesByID.constFind(cover.id);
        if (tape == shelf.tapesByID.cend())
            continue;
        covers.append(cover);
        tapes.append(*tape);
    }
}

CassetteRow::Content::Content(const QList<Tape>& tapes) : count(int(tapes.size())), tapes(tapes) {}

VHSCover CassetteRow::Content::cover(int row) const
{
    return covers.isEmpty() ? dress(tapes.at(row)) : covers.at(row);
}

int CassetteRow::Content::rowOf(qint64 id, int preferredRow) const
{
    // Ids may be duplicated: prefer the tape that did not move.
    if (preferredRow >= 0 && preferredRow < size() && tapes.at(preferredRow).id == id)
        return preferredRow;
    for (int row = 0; row < size(); ++row) {
        if (tapes.at(row).id == id)
            return row;
    }
    return -1;
}

void CassetteRow::setContent(Content content, int currentRow)
{
    reset(currentRow, [&] { m_content = std::move(content); });
    Q_EMIT contentChanged();
}

int CassetteRow::currentRowIn(const Content& content) const
{
    if (currentRow() < 0)
        return -1;
    const int row = content.rowOf(m_content.tapes.at(currentRow()).id, currentRow());
    return row >= 0 ? row : content.nearestRow(currentRow());
}

int CassetteRow::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_content.size();
}

QVariant CassetteRow::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int row = index.row();
    switch (role) {
    case KeyRole:
        return m_content.tapes.at(row).id;
    case CoverRole:
        return QVariant::fromValue(m_content.cover(row));
    case TitleRole:
        return shortenedLine(m_content.cover(row).title);
    default:
        return {};
    }
}

QHash<int, QByteArray> CassetteRow::roleNames() const
{
    return {{KeyRole, "key"}, {CoverRole, "cover"}, {TitleRole, "title"}};
}

} // namespace quillmere
