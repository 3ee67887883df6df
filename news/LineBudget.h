#pragma once

#include <QFont>
#include <QObject>
#include <QQmlListProperty>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** A text wrapped at some width, which shares a height with other texts. A value. */
struct WrappedText
{
    QString text;
    QFont font;
    double width = 0;     ///< points
    double gap = 0;       ///< points above it, unless the text is empty
    int minimumLines = 1; ///< lines reserved before any text gets more than its own minimum
};

/**
 * Number of lines of each text if all texts share `height`, in points. If not all lines fit, each text first gets its
 * minimum, then the rest goes to the texts in their order. If even the minimums do not fit, later texts lose lines
 * first. A text that is not empty gets at least one line. Any thread that may use fonts.
 */
QList<int> linesThatFit(const QList<WrappedText>& texts, double height);

/** A text of a LineBudget. Screen thread only; the budget owns it. */
class BudgetedText : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY inputChanged FINAL)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY inputChanged FINAL)
    Q_PROPERTY(double width MEMBER m_width NOTIFY inputChanged FINAL) ///< of a line, in points
    Q_PROPERTY(double gap MEMBER m_gap NOTIFY inputChanged FINAL)     ///< as in WrappedText
    Q_PROPERTY(int minimumLines MEMBER m_minimumLines NOTIFY inputChanged FINAL)
    /** The number of lines to show, at least 1. */
    Q_PROPERTY(int lines READ lines NOTIFY linesChanged FINAL)

public:
    using QObject::QObject;

    WrappedText wrappedText() const { return {m_text, m_font, m_width, m_gap, m_minimumLines}; }
    int lines() const { return m_lines; }
    void setLines(int lines);

Q_SIGNALS:
    void inputChanged();
    void linesChanged();

private:
    QString m_text;
    QFont m_font;
    double m_width = 0;
    double m_gap = 0;
    int m_minimumLines = 1;
    int m_lines = 1;
};

/**
 * Divides a height between texts, of which earlier ones have priority. Screen thread only; the item that shows the
 * texts creates and owns it.
 */
class LineBudget : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_CLASSINFO("DefaultProperty", "texts")
    Q_PROPERTY(QQmlListProperty<quillmere::BudgetedText> texts READ texts CONSTANT FINAL)
    /** Height for the texts and the gaps above them, in points. */
    Q_PROPERTY(double height MEMBER m_height NOTIFY heightChanged FINAL)

public:
    using QObject::QObject;

    QQmlListProperty<BudgetedText> texts() { return {this, &m_texts}; }

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void heightChanged();

private:
    void updateLines();

    QList<BudgetedText*> m_texts;
    double m_height = 0;
};

} // namespace quillmere
