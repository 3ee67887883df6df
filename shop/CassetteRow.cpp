#include "CassetteRow.h"

#include "RewinderyTexts.h"
#include "ShortenedText.h"

#include <QScopedValueRollback>

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

int CassetteRow::Content::rowOf(qint64 id, int likely) const
{
    // Two tapes may share an id: the one that did not move comes first.
    if (likely >= 0 && likely < covers.size() && covers.at(likely).id == id)
        return likely;
    for (int row = 0; row < covers.size(); ++row) {
        if (covers.at(row).id == id)
            return row;
    }
    return -1;
}

void CassetteRow::show(Content content, int place)
{
    const QScopedValueRollback changing(m_isChanging, true);
    beginResetModel();
    m_content = std::move(content);
    m_place = place;
    // A stack takes the place together with the rows it counts.
    Q_EMIT placeChanged();
    endResetModel();
    Q_EMIT contentChanged();
}

int CassetteRow::placeIn(const Content& content) const
{
    if (m_place < 0)
        return -1;
    const int row = content.rowOf(m_content.covers.at(m_place).id, m_place);
    return row >= 0 ? row : content.nearest(m_place);
}

void CassetteRow::hold(int row)
{
    if (m_isChanging || row == m_place || row < 0 || row >= rowCount())
        return;
    m_place = row;
    Q_EMIT placeChanged();
}

int CassetteRow::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_content.covers.size());
}

QVariant CassetteRow::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const VHSCover& cover = m_content.covers.at(index.row());
    switch (role) {
    case KeyRole:
        return cover.id;
    case CoverRole:
        return QVariant::fromValue(cover);
    case TitleRole:
        return shortenedLine(cover.title);
    default:
        return {};
    }
}

QHash<int, QByteArray> CassetteRow::roleNames() const
{
    return {{KeyRole, "key"}, {CoverRole, "cover"}, {TitleRole, "title"}};
}
