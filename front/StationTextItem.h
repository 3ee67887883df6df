#pragma once

#include "TextLines.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickTextDocument>

#include <limits>
#include <memory>

/**
 * Where the letters of a StationText go: on lines as tall as its own font's, whatever fonts they are from, and cut with
 * an ellipsis where the width, the height or the number of lines that it was given ends. An item that shows a text
 * document draws them. Lengths are in points. Screen thread only; its parent item owns it.
 */
class StationTextItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged FINAL)
    /** Whether what has no room on a line goes on on the next one; else its line breaks count as spaces. */
    Q_PROPERTY(bool wraps READ wraps WRITE setWraps NOTIFY wrapsChanged FINAL)
    /** 0 for as many as have room. */
    Q_PROPERTY(
        int maximumLineCount READ maximumLineCount WRITE setMaximumLineCount NOTIFY maximumLineCountChanged FINAL)
    /** Of a text that is as tall as its lines; endless unless it is set. */
    Q_PROPERTY(double maximumHeight READ maximumHeight WRITE setMaximumHeight NOTIFY maximumHeightChanged FINAL)
    /** 0 for the side on which its own script begins. */
    Q_PROPERTY(int horizontalAlignment READ horizontalAlignment WRITE setHorizontalAlignment NOTIFY
                   horizontalAlignmentChanged FINAL)
    Q_PROPERTY(
        int verticalAlignment READ verticalAlignment WRITE setVerticalAlignment NOTIFY verticalAlignmentChanged FINAL)
    /** Between two lines. */
    Q_PROPERTY(double lineSpacing READ lineSpacing WRITE setLineSpacing NOTIFY lineSpacingChanged FINAL)
    Q_PROPERTY(double topPadding READ topPadding WRITE setTopPadding NOTIFY topPaddingChanged FINAL)

    /** Of the item that draws the letters, which is as wide as this one and wraps as this one does. */
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY documentChanged FINAL)
    /** Where the top of that item is to be. */
    Q_PROPERTY(double documentTop READ documentTop NOTIFY laidOut FINAL)

    Q_PROPERTY(int lineCount READ lineCount NOTIFY laidOut FINAL)
    Q_PROPERTY(bool truncated READ isTruncated NOTIFY laidOut FINAL)
    Q_PROPERTY(double contentWidth READ contentWidth NOTIFY laidOut FINAL)
    Q_PROPERTY(double contentHeight READ contentHeight NOTIFY laidOut FINAL)

public:
    using QQuickItem::QQuickItem;

    QString text() const { return m_text; }
    void setText(const QString& text);
    QFont font() const { return m_font; }
    void setFont(const QFont& font);
    bool wraps() const { return m_wraps; }
    void setWraps(bool wraps);
    int maximumLineCount() const { return m_maximumLineCount; }
    void setMaximumLineCount(int count);
    double maximumHeight() const { return m_maximumHeight; }
    void setMaximumHeight(double height);
    int horizontalAlignment() const { return m_horizontalAlignment; }
    void setHorizontalAlignment(int alignment);
    int verticalAlignment() const { return m_verticalAlignment; }
    void setVerticalAlignment(int alignment);
    double lineSpacing() const { return m_lineSpacing; }
    void setLineSpacing(double spacing);
    double topPadding() const { return m_topPadding; }
    void setTopPadding(double padding);

    QQuickTextDocument* document() const { return m_document; }
    void setDocument(QQuickTextDocument* document);
    double documentTop() const { return m_documentTop; }

    int lineCount() const { return m_lineCount; }
    bool isTruncated() const { return m_isTruncated; }
    double contentWidth() const { return m_contentWidth; }
    double contentHeight() const;

Q_SIGNALS:
    void textChanged();
    void fontChanged();
    void wrapsChanged();
    void maximumLineCountChanged();
    void maximumHeightChanged();
    void horizontalAlignmentChanged();
    void verticalAlignmentChanged();
    void lineSpacingChanged();
    void topPaddingChanged();
    void documentChanged();
    void laidOut();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    double lineHeight() const;
    double room() const;
    int linesThatHaveRoom() const;
    Qt::Alignment alignment() const;
    void startAnew();
    void layOut();
    bool isEndless() const;
    void letDocumentBreakLines();
    double naturalWidth();
    void breakLines();
    void showLines();
    void fillDocument();

    QString m_text;
    QFont m_font;
    bool m_wraps = false;
    int m_maximumLineCount = 0;
    double m_maximumHeight = std::numeric_limits<double>::infinity();
    int m_horizontalAlignment = 0;
    int m_verticalAlignment = Qt::AlignTop;
    double m_lineSpacing = 0;
    double m_topPadding = 0;

    std::unique_ptr<TextLines> m_lines; ///< null until text and font are laid out
    double m_naturalWidth = -1;         ///< on lines that are not wrapped; -1 until it was asked for
    int m_pass = 0;                     ///< counts the layouts
    int m_lineCount = 1;
    bool m_isTruncated = false;
    double m_contentWidth = 0;
    double m_documentTop = 0;
    QPointer<QQuickTextDocument> m_document;
    TextLines::Letters m_drawn; ///< in the document
};
