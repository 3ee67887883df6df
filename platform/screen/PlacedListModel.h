#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <functional>

/**
 * A list in which the viewer has a place: the model of a `LazyStack` that takes `place` and writes to it what the stack
 * tells by `held`. All the rows change at once, and the place with them, so that the stack takes the place together with
 * the rows it counts; what the viewer's focus does meanwhile is no move of the viewer's. Screen thread only.
 */
class PlacedListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Only lists that are derived from it have rows.")
    /** The row that holds or last held the focus; -1 before any did. Rows that are not there are not taken. */
    Q_PROPERTY(int place READ place WRITE setPlace NOTIFY placeChanged FINAL)
    /** Whether the screen's focus is in the list; written by a screen whose list decides by it. */
    Q_PROPERTY(bool hasFocus READ hasFocus WRITE setHasFocus NOTIFY hasFocusChanged FINAL)

public:
    using QAbstractListModel::QAbstractListModel;

    int place() const { return m_place; }
    void setPlace(int row);
    bool hasFocus() const { return m_hasFocus; }
    void setHasFocus(bool hasFocus);

Q_SIGNALS:
    void placeChanged();
    void hasFocusChanged();

protected:
    /** Runs `change`, which changes the rows, as one reset; afterwards the viewer is at `place`. */
    void reset(int place, const std::function<void()>& change);

private:
    int m_place = -1;
    bool m_hasFocus = false;
    bool m_isChanging = false;
};
