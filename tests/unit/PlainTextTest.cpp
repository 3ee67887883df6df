#include "TestMain.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the QML sources: the hub's strings are data, so that no text item interprets markup, and every text item
 * handles letters of all scripts. */
class PlainTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textItemsUsePlainText_data() { addScreens(); }
    void textItemsUsePlainText();
    void textItemsAreStationTexts_data() { addScreens(); }
    void textItemsAreStationTexts();

private:
    static void addScreens();
    static QString objectAt(const QString& source, const QRegularExpressionMatch& match);
};

/** The source of the QML object that starts at `match`, up to its closing brace. */
QString PlainTextTest::objectAt(const QString& source, const QRegularExpressionMatch& match)
{
    qsizetype end = match.capturedEnd();
    for (int depth = 1; depth > 0 && end < source.size(); ++end)
        depth += source.at(end) == u'{' ? 1 : source.at(end) == u'}' ? -1 : 0;
    return source.sliced(match.capturedStart(), end - match.capturedStart());
}

void PlainTextTest::addScreens()
{
    QTest::addColumn<QString>("path");
    const QDir root(QStringLiteral(QUILLMERE_SOURCES));
    for (const auto& folder : {u"platform"_s, u"front"_s, u"news"_s, u"shop"_s, u"playback"_s}) {
        QDirIterator files(root.filePath(folder), {u"*.qml"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(root.relativeFilePath(path))) << path;
        }
    }
}

void PlainTextTest::textItemsUsePlainText()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString source = QString::fromUtf8(file.readAll());
    static const QRegularExpression text(u"\\bText(Edit|Input)?\\s*\\{"_s);
    for (auto matches = text.globalMatch(source); matches.hasNext();) {
        const auto match = matches.next();
        const auto line = source.left(match.capturedStart()).count(u'\n') + 1;
        const bool input = match.captured(1) == u"Input"_s;
        QVERIFY2(input || objectAt(source, match).contains(u"textFormat: Text"_s + match.captured(1) + u".PlainText"_s),
                 qPrintable(u"line %1"_s.arg(line)));
    }
}

void PlainTextTest::textItemsAreStationTexts()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString source = QString::fromUtf8(file.readAll());
    // A line of Text is as tall as the tallest font in it. Text is allowed only for the program's own words, which need
    // an outline.
    static const QRegularExpression text(u"\\bText\\s*\\{"_s);
    for (auto matches = text.globalMatch(source); matches.hasNext();) {
        const auto match = matches.next();
        const auto line = source.left(match.capturedStart()).count(u'\n') + 1;
        QVERIFY2(objectAt(source, match).contains(u"style: Text.Outline"_s), qPrintable(u"line %1"_s.arg(line)));
    }
}

QUILLMERE_TEST(PlainTextTest, QCoreApplication)

} // namespace quillmere

#include "PlainTextTest.moc"
