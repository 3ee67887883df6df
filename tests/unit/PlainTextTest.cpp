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
    void textItemsArePlainStationTexts_data()
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

    void textItemsArePlainStationTexts()
    {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString source = QString::fromUtf8(file.readAll());
        static const QRegularExpression text(u"\\bText(Edit|Input)?\\s*\\{"_s);
        for (auto matches = text.globalMatch(source); matches.hasNext();) {
            const auto match = matches.next();
            const QString kind = match.captured(1);
            const QString item = objectAt(source, match);
            const QString line = u"line %1"_s.arg(source.left(match.capturedStart()).count(u'\n') + 1);
            QVERIFY2(kind == u"Input"_s || item.contains(u"textFormat: Text"_s + kind + u".PlainText"_s),
                     qPrintable(line));
            // A line of Text is as tall as the tallest font in it. Text is allowed only for the program's own words,
            // which need an outline.
            QVERIFY2(!kind.isEmpty() || item.contains(u"style: Text.Outline"_s), qPrintable(line));
        }
    }

private:
    /** The source of the QML object that starts at `match`, up to its closing brace. */
    static QString objectAt(const QString& source, const QRegularExpressionMatch& match)
    {
        qsizetype end = match.capturedEnd();
        for (int depth = 1; depth > 0 && end < source.size(); ++end)
            depth += source.at(end) == u'{' ? 1 : source.at(end) == u'}' ? -1 : 0;
        return source.sliced(match.capturedStart(), end - match.capturedStart());
    }
};

QUILLMERE_TEST(PlainTextTest, QCoreApplication)

} // namespace quillmere

#include "PlainTextTest.moc"
