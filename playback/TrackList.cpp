#include "TrackList.h"

#include "PlaybackTexts.h"

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype minChoices = 2;

} // namespace

void TrackList::setTracks(const QList<MediaTrack>& tracks)
{
    QList<Choice> choices = choicesFor(tracks);
    const auto isSame = [](const Choice& a, const Choice& b) { return a.id == b.id && a.title == b.title; };
    if (std::equal(choices.cbegin(), choices.cend(), m_choices.cbegin(), m_choices.cend(), isSame)) {
        m_choices = std::move(choices);
        if (count() > 0)
            Q_EMIT dataChanged(index(0), index(count() - 1), {SelectedRole});
        return;
    }
    beginResetModel();
    m_choices = std::move(choices);
    endResetModel();
    Q_EMIT countChanged();
}

QList<TrackList::Choice> TrackList::choicesFor(const QList<MediaTrack>& tracks) const
{
    QList<Choice> choices;
    bool isOff = true;
    for (const MediaTrack& track : tracks) {
        if (track.kind != m_kind)
            continue;
        choices.append({track.id, trackText(track), track.selected});
        isOff = isOff && !track.selected;
    }
    if (m_kind == MediaTrack::Kind::Subtitle && !choices.isEmpty())
        choices.prepend({MediaTrack::none, noTrackText, isOff});
    return choices.size() < minChoices ? QList<Choice>() : choices;
}

void TrackList::pick(int row)
{
    if (row >= 0 && row < count())
        Q_EMIT picked(m_kind, m_choices.at(row).id);
}

int TrackList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant TrackList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Choice& choice = m_choices.at(index.row());
    switch (role) {
    case KeyRole:
        return choice.id;
    case TitleRole:
        return choice.title;
    case SelectedRole:
        return choice.isSelected;
    default:
        return {};
    }
}

QHash<int, QByteArray> TrackList::roleNames() const
{
    return {{KeyRole, "key"}, {TitleRole, "title"}, {SelectedRole, "isSelected"}};
}

} // namespace quillmere
