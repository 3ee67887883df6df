#pragma once

#include "TextLines.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickTextDocument>

#include <limits>
#include <memory>

namespace quillmere {

/**
 * Layout of a StationText. All lines have the height of the item's own font, also those with glyphs of fallback fonts.
 * Text that exceeds the given width, height or number of lines is elided. A TextEdit, by its `document`, draws the
 * text. Lengths are in points. Screen thread only; its parent item owns it.
 */
class StationTextItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged FINAL)
    /** Whether long lines are wrapped. If not, the text is one line, and line breaks are shown as spaces. */
    Q_PROPERTY(bool wraps READ wraps WRITE setWraps NOTIFY wrapsChanged FINAL)
    /** 0 for as many as the height allows. */
    Q_PROPERTY(
        int maximumLineCount READ maximumLineCount WRITE setMaximumLineCount NOTIFY maximumLineCountChanged FINAL)
    /** Limits the number of lines where no height is set; infinite by default. */
    Q_PROPERTY(double maximumHeight READ maximumHeight WRITE setMaximumHeight NOTIFY maximumHeightChanged FINAL)
    /** A Qt::AlignmentFlag; 0 for the side at which the direction of the text begins. */
    Q_PROPERTY(int horizontalAlignment READ horizontalAlignment WRITE setHorizontalAlignment NOTIFY
                   horizontalAlignmentChanged FINAL)
    Q_PROPERTY(
        int verticalAlignment READ verticalAlignment WRITE setVerticalAlignment NOTIFY verticalAlignmentChanged FINAL)
    /** Extra space between two lines. */
    Q_PROPERTY(double lineSpacing READ lineSpacing WRITE setLineSpacing NOTIFY lineSpacingChanged FINAL)
    Q_PROPERTY(double topPadding READ topPadding WRITE setTopPadding NOTIFY topPaddingChanged FINAL)

    /** Document of the TextEdit that draws the text. That item has the same width and wrap mode as this one. */
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY documentChanged FINAL)
    /** Required y position of that TextEdit. */
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
    double availableHeight() const;
    int maximumVisibleLines() const;
    Qt::Alignment alignment() const;
    void resetLayout();
    void layOut();
    bool isUnbounded() const;
    void layOutInDocument();
    double naturalWidth();
    void breakLines();
    void positionLines();
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

    std::unique_ptr<TextLines> m_lines; ///< null until the current text and font are laid out
    double m_naturalWidth = -1;         ///< width without wrapping; -1 if not computed yet
    int m_layoutPass = 0;               ///< number of layouts so far, which detects a nested layout
    int m_lineCount = 1;
    bool m_isTruncated = false;
    double m_contentWidth = 0;
    double m_documentTop = 0;
    QPointer<QQuickTextDocument> m_document;
    TextLines::FormattedText m_documentText; ///< current content of the document
};

} // namespace quillmere
