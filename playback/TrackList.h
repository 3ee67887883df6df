#pragma once

#include "MediaTrack.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * The tracks of one kind as choices for the viewer. Empty while there is nothing to choose: a choice needs two sound
 * tracks, or one subtitle track, as subtitles can be turned off. Screen thread only; PlayerController owns it.
 */
class TrackList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by PlayerController.")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    /** `key`: int, unique among the choices; `title`; `isSelected`. */
    enum Role { KeyRole = Qt::UserRole, TitleRole, SelectedRole };

    explicit TrackList(MediaTrack::Kind kind, QObject* parent = nullptr) : QAbstractListModel(parent), m_kind(kind) {}

    /** Shows the tracks of its kind. If only the selection differs, the model is not reset. */
    void setTracks(const QList<MediaTrack>& tracks);

    int count() const { return int(m_choices.size()); }

    /** The viewer selected a row. */
    Q_INVOKABLE void pick(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void picked(MediaTrack::Kind kind, int id);

private:
    struct Choice
    {
        int id;
        QString title;
        bool isSelected;
    };

    QList<Choice> choicesFor(const QList<MediaTrack>& tracks) const;

    MediaTrack::Kind m_kind;
    QList<Choice> m_choices;
};

} // namespace quillmere
