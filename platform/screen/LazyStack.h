#pragma once

#include "StackItems.h"
#include "StackRows.h"
#include "StackSight.h"

#include <QAbstractItemModel>
#include <QBasicTimer>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QtQml/qqml.h>

class Focusable;
class FocusScreen;

/**
 * A row or column of items made from a model, of which only those exist that are near what the scroll area around it
 * shows, and the one at its place. An item is made from `delegate`, whose required properties are the model's roles and
 * `index`. After any change of the model an item whose role "key" is still there is kept, with its focus and looks, and
 * moves; two equal keys are told apart by their order. While the focus is elsewhere, the area shows the row at the
 * place, or the beginning where there is no place, so that nothing moves when the focus comes.
 *
 * Lengths are points along `orientation`; an item is `extent` long, or as long as the role "extent" says where the model
 * has one; where items are `measured`, that is a guess which holds until the item is first made. Screen thread only; its parent item owns it; a model that goes before it leaves it empty.
 */
class LazyStack : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation NOTIFY orientationChanged FINAL)
    Q_PROPERTY(QAbstractItemModel* model READ model WRITE setModel NOTIFY modelChanged FINAL)
    Q_PROPERTY(QQmlComponent* delegate READ delegate WRITE setDelegate NOTIFY delegateChanged FINAL)
    Q_PROPERTY(qreal extent READ extent WRITE setExtent NOTIFY extentChanged FINAL)
    /** Whether items have lengths of their own. A row keeps the one it was found to have until the model changes. */
    Q_PROPERTY(bool measured READ isMeasured WRITE setMeasured NOTIFY measuredChanged FINAL)
    Q_PROPERTY(qreal spacing READ spacing WRITE setSpacing NOTIFY spacingChanged FINAL)
    /** How far beyond what is shown items exist, on either side. */
    Q_PROPERTY(qreal ahead READ ahead WRITE setAhead NOTIFY aheadChanged FINAL)
    /**
     * The row that holds, or last held, the focus; -1 before any did. The model's owner decides it when the model
     * changes, before or right after; if the focus was in this stack, it then goes to that row.
     */
    Q_PROPERTY(int place READ place WRITE setPlace NOTIFY placeChanged FINAL)
    /** Whether the focus of the screen is on one of the items; also while another screen has the keys. */
    Q_PROPERTY(bool containsFocus READ containsFocus NOTIFY containsFocusChanged FINAL)
    Q_CLASSINFO("DefaultProperty", "delegate")

public:
    explicit LazyStack(QQuickItem* parent = nullptr);
    ~LazyStack() override;

    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);
    QAbstractItemModel* model() const { return m_model; }
    void setModel(QAbstractItemModel* model);
    QQmlComponent* delegate() const { return m_delegate; }
    void setDelegate(QQmlComponent* delegate);
    qreal extent() const { return m_extent; }
    void setExtent(qreal extent);
    bool isMeasured() const { return m_isMeasured; }
    void setMeasured(bool measured);
    qreal spacing() const { return m_spacing; }
    void setSpacing(qreal spacing);
    qreal ahead() const { return m_ahead; }
    void setAhead(qreal ahead);
    int place() const { return m_place; }
    void setPlace(int place);
    bool containsFocus() const { return m_containsFocus; }

    /** The item of a row, nothing while it does not exist. */
    QQuickItem* itemAt(int row) const { return m_items.at(row); }
    /** How many items exist. */
    int existing() const { return m_items.count(); }

    /** Whether `descendant` stands in the item at the place or in one beside it. */
    bool isBesidePlace(const QQuickItem* descendant) const;

    /** To be called when something in the item `descendant` of this stack got the focus. */
    void hold(const QQuickItem* descendant);

Q_SIGNALS:
    void orientationChanged();
    void modelChanged();
    void delegateChanged();
    void extentChanged();
    void measuredChanged();
    void spacingChanged();
    void aheadChanged();
    void placeChanged();
    void containsFocusChanged();

    /** The focus came to another row by the viewer's doing; the model's owner keeps it as the place. */
    void held(int row);

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void readModel();
    void populate();
    void discardFar();
    void make(int row);
    void measure(const QQuickItem& item);
    void layOut(QQuickItem& item, int row) const;
    void showLength();
    void showPlaceAtOnce();
    void rememberPlace() const;
    void updateContainsFocus();
    void focusPlace(FocusScreen* screen);
    void moveFocus(FocusScreen* screen, Focusable* focusable);
    FocusScreen* screenFocusedHere() const;
    QList<int> missing(const QList<StackSight::Stretch>& stretches) const;
    bool isNearPlace(int row) const { return m_place >= 0 && std::abs(row - m_place) <= 1; }

    Qt::Orientation m_orientation = Qt::Vertical;
    QPointer<QAbstractItemModel> m_model;
    QPointer<QQmlComponent> m_delegate;
    qreal m_extent = 0;
    bool m_isMeasured = false;
    qreal m_spacing = 0;
    qreal m_ahead = 0;
    int m_place = -1;

    StackSight m_sight;
    StackRows m_rows;
    StackItems m_items;
    QBasicTimer m_makingAhead;
    bool m_isModelChanging = false; ///< a reset was announced and is not through
    bool m_isPopulating = false;
    bool m_isOutdated = false;   ///< something changed while it was populated
    bool m_isRefused = false;    ///< the delegate cannot be made
    bool m_isPlaceShown = false; ///< since the rows or the place last changed
    bool m_isMovingFocus = false;
    bool m_containsFocus = false;
};

/** Qt 6.4 does not describe its own model class to the QML tools. */
struct ItemModelForQmlTools
{
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};
