#pragma once

#include "CurrentRowModel.h"
#include "FocusContainer.h"
#include "StackItems.h"
#include "StackRows.h"
#include "StackViewport.h"

#include <QBasicTimer>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace quillmere {

class Focusable;
class FocusScreen;

/**
 * A row or column of delegate items for a model. Items exist only for rows near the visible range of the enclosing
 * scroll area, and for the current row and its neighbours. The required properties of `delegate` are the model's roles
 * and `index`. After a model change, an item whose value of the role "key" still exists is kept and moved, with its
 * focus and state. Duplicate keys are matched in order.
 *
 * The model has the current row: the stack sets it when an item gets the focus. If it or the rows change while the
 * focus is inside, the focus moves to the current row. While the focus is outside the scroll area, the area shows the
 * current row, or the first row if there is none, so that nothing scrolls when focus enters.
 *
 * Lengths are points along `orientation`. The length of an item is `extent`, or the value of the role "extent" if the
 * model has it. If `measured` is true, that is only an estimate until the item is first created. Screen thread only;
 * owned by its parent item. If the model is destroyed first, the stack becomes empty.
 */
class LazyStack : public QQuickItem, public FocusContainer
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation NOTIFY orientationChanged FINAL)
    Q_PROPERTY(quillmere::CurrentRowModel* model READ model WRITE setModel NOTIFY modelChanged FINAL)
    Q_PROPERTY(QQmlComponent* delegate READ delegate WRITE setDelegate NOTIFY delegateChanged FINAL)
    Q_PROPERTY(qreal extent READ extent WRITE setExtent NOTIFY extentChanged FINAL)
    /** Whether the length of each item is measured. A measured length is kept until the model changes. */
    Q_PROPERTY(bool measured READ isMeasured WRITE setMeasured NOTIFY measuredChanged FINAL)
    Q_PROPERTY(qreal spacing READ spacing WRITE setSpacing NOTIFY spacingChanged FINAL)
    /** How far beyond the visible range, on both sides, items exist. */
    Q_PROPERTY(qreal cacheBuffer READ cacheBuffer WRITE setCacheBuffer NOTIFY cacheBufferChanged FINAL)
    Q_CLASSINFO("DefaultProperty", "delegate")

public:
    explicit LazyStack(QQuickItem* parent = nullptr);
    ~LazyStack() override;

    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);
    CurrentRowModel* model() const { return m_model; }
    void setModel(CurrentRowModel* model);
    QQmlComponent* delegate() const { return m_delegate; }
    void setDelegate(QQmlComponent* delegate);
    qreal extent() const { return m_extent; }
    void setExtent(qreal extent);
    bool isMeasured() const { return m_isMeasured; }
    void setMeasured(bool measured);
    qreal spacing() const { return m_spacing; }
    void setSpacing(qreal spacing);
    qreal cacheBuffer() const { return m_cacheBuffer; }
    void setCacheBuffer(qreal cacheBuffer);
    /** The model's current row; -1 if there is none. */
    int currentRow() const { return m_model ? m_model->currentRow() : -1; }

    /** The delegate item of a row; null if it does not exist. */
    QQuickItem* itemAt(int row) const { return m_items.at(row); }
    /** Number of delegate items that exist. */
    int itemCount() const { return m_items.count(); }

    /** Whether `descendant` is inside the item of the current row or of a neighbouring row. */
    bool isNearCurrentRow(const QQuickItem* descendant) const;

    /** What to focus in the item of the current row; null if there is no current row. */
    Focusable* currentFocusable() const;

    void onFocusInside(Focusable& focused, bool immediately) override;

Q_SIGNALS:
    void orientationChanged();
    void modelChanged();
    void delegateChanged();
    void extentChanged();
    void measuredChanged();
    void spacingChanged();
    void cacheBufferChanged();
    void currentRowChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void readModel();
    void populate();
    void discardFar();
    void createDelegateItem(int row);
    void measure(const QQuickItem& item);
    void layOut(QQuickItem& item, int row) const;
    void updateImplicitSize();
    void updateEnclosingItems();
    void onCurrentRowChanged();
    void showCurrentRow();
    void focusCurrentRow(FocusScreen* screen);
    void updateHasFocus();
    FocusScreen* screenFocusedInside() const;
    QList<int> missing(const QList<StackViewport::Range>& ranges) const;
    bool isNearCurrentRow(int row) const { return currentRow() >= 0 && std::abs(row - currentRow()) <= 1; }

    Qt::Orientation m_orientation = Qt::Vertical;
    QPointer<CurrentRowModel> m_model;
    QPointer<QQmlComponent> m_delegate;
    qreal m_extent = 0;
    bool m_isMeasured = false;
    qreal m_spacing = 0;
    qreal m_cacheBuffer = 0;

    StackViewport m_viewport;
    StackRows m_rows;
    StackItems m_items;
    QBasicTimer m_cacheTimer;
    bool m_isPopulating = false;
    bool m_isDirty = false;           ///< something changed during populate(); another pass is needed
    bool m_isDelegateInvalid = false; ///< creating an item from the delegate failed
    bool m_isCurrentRowShown = false; ///< since the rows or the current row last changed
};

} // namespace quillmere
