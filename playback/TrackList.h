#pragma once

#include "MediaTrack.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

/**
 * The tracks of one kind as the viewer's choices. None of them while there is nothing to choose: that takes two sound
 * tracks, or one of subtitles, as those can be switched off. Screen thread only; the player's controller owns it.
 */
class TrackList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The player's controller makes it.")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    /** `key`: int, one a choice; `title`; `isSelected`. */
    enum Role { KeyRole = Qt::UserRole, TitleRole, SelectedRole };

    explicit TrackList(MediaTrack::Kind kind, QObject* parent = nullptr) : QAbstractListModel(parent), m_kind(kind) {}

    /** Shows those of its kind. While the choices stay the same, what is selected changes in place. */
    void show(const QList<MediaTrack>& tracks);

    int count() const { return int(m_choices.size()); }

    /** The viewer chooses a row. */
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

    QList<Choice> choicesOf(const QList<MediaTrack>& tracks) const;

    MediaTrack::Kind m_kind;
    QList<Choice> m_choices;
};
