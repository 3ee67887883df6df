#include "TapeList.h"

#include "ShortenedText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// A row is one line high: what follows a line break would not be seen.
QString onOneLine(const QString& text)
{
    static const QRegularExpression lineBreaks(u"\\R+"_s);
    return shortenedText(text).replace(lineBreaks, u" "_s);
}

} // namespace

void TapeList::setStore(Store* store)
{
    if (m_store)
        m_store->disconnect(this);
    m_store = store;
    if (m_store) {
        connect(m_store, &Store::shelvesChanged, this, &TapeList::rebuild);
        connect(m_store, &Store::lastErrorChanged, this, &TapeList::emptyTextChanged);
    }
    rebuild();
    Q_EMIT storeChanged();
}

QString TapeList::emptyText() const
{
    if (m_currentRow >= 0)
        return {};
    const QString error = m_store ? m_store->lastErrorText() : QString();
    return error.isEmpty() ? u"Checking what's on the shelf…"_s : shortenedText(error);
}

void TapeList::setPlaying(bool playing)
{
    if (playing == m_playing || (playing && m_currentRow < 0))
        return;
    if (playing) {
        m_chosen = currentTape();
        Q_EMIT chosenChanged();
    }
    m_playing = playing;
    Q_EMIT playingChanged();
}

void TapeList::move(int step)
{
    const int row = nextTape(m_currentRow, step);
    if (row >= 0)
        setCurrentRow(row);
}

Tape TapeList::currentTape() const
{
    return m_currentRow < 0 ? Tape{} : m_rows.at(m_currentRow).tape.value_or(Tape{});
}

int TapeList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant TapeList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case TextRole:
        return row.text;
    case IsTapeRole:
        return row.tape.has_value();
    default:
        return {};
    }
}

QHash<int, QByteArray> TapeList::roleNames() const
{
    return {{TextRole, "text"}, {IsTapeRole, "isTape"}};
}

void TapeList::rebuild()
{
    const qint64 id = currentTape().id;
    const int formerRow = m_currentRow;
    beginResetModel();
    m_rows.clear();
    if (m_store) {
        for (const Shelf& shelf : m_store->shelves()) {
            m_rows.append({onOneLine(shelf.name), {}});
            for (const VHSCover& cover : shelf.covers)
                m_rows.append({onOneLine(cover.title), shelf.tapesByID.value(cover.id)});
        }
    }
    m_currentRow = -1;
    endResetModel();
    setCurrentRow(rowToKeep(id, formerRow));
}

// The same tape where it still stands, else the nearest one to its old place.
int TapeList::rowToKeep(qint64 id, int formerRow) const
{
    if (m_rows.isEmpty())
        return -1;
    if (formerRow >= 0) {
        // Two tapes may share an id: the one that did not move comes first.
        if (formerRow < m_rows.size() && m_rows.at(formerRow).tape && m_rows.at(formerRow).tape->id == id)
            return formerRow;
        for (int row = 0; row < m_rows.size(); ++row) {
            if (m_rows.at(row).tape && m_rows.at(row).tape->id == id)
                return row;
        }
    }
    const int near = qBound(0, formerRow, int(m_rows.size()) - 1);
    const int after = nextTape(near - 1, +1);
    return after >= 0 ? after : nextTape(near + 1, -1);
}

int TapeList::nextTape(int row, int step) const
{
    for (row += step; row >= 0 && row < m_rows.size(); row += step) {
        if (m_rows.at(row).tape)
            return row;
    }
    return -1;
}

void TapeList::setCurrentRow(int row)
{
    m_currentRow = row;
    Q_EMIT currentRowChanged();
    Q_EMIT emptyTextChanged();
}
