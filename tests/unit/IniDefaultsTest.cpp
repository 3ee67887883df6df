#include "IniDefaults.h"
#include "TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

} // namespace

class IniDefaultsTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

    QStringList damagedFiles() const
    {
        return QDir(m_folder->path()).entryList({u"resume.ini.damaged-*"_s}, QDir::Files, QDir::Name);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"resume.ini"_s);
    }

    void missingFileIsEmptyAndIsNotCreated()
    {
        {
            const IniDefaults defaults(m_path);
            QCOMPARE(defaults.number(u"resume.tape.42"_s), 0.0);
            QVERIFY(!defaults.contains(u"resume.tape.42"_s));
        }
        QVERIFY(!QFile::exists(m_path));
    }

    void numberIsKeptForNextRun_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("whole") << 60.0;
        QTest::newRow("fraction") << 1234.5678901234567;
        QTest::newRow("tiny") << 5e-324;
        QTest::newRow("huge") << 1e300;
        QTest::newRow("negative") << -3.25;
        QTest::newRow("zero") << 0.0;
    }
    void numberIsKeptForNextRun()
    {
        QFETCH(double, value);
        {
            IniDefaults defaults(m_path);
            defaults.setNumber(u"resume.tape.9007199254740993"_s, value);
            QCOMPARE(defaults.number(u"resume.tape.9007199254740993"_s), value);
        }
        const IniDefaults defaults(m_path);
        QVERIFY(defaults.contains(u"resume.tape.9007199254740993"_s));
        QVERIFY(defaults.number(u"resume.tape.9007199254740993"_s) == value);
    }

    void removedNumberStaysRemoved()
    {
        {
            IniDefaults defaults(m_path);
            defaults.setNumber(u"resume.tape.1"_s, 61);
            defaults.setNumber(u"resume.tape.2"_s, 62);
            defaults.remove(u"resume.tape.1"_s);
            defaults.remove(u"resume.tape.3"_s);
        }
        const IniDefaults defaults(m_path);
        QVERIFY(!defaults.contains(u"resume.tape.1"_s));
        QCOMPARE(defaults.number(u"resume.tape.2"_s), 62.0);
    }

    void valueInFileIsReturnedUnchanged_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("text") << QByteArray("an hour or so") << 0.0;
        QTest::newRow("empty") << QByteArray() << 0.0;
        QTest::newRow("a list") << QByteArray("1, 2") << 0.0;
        QTest::newRow("infinity") << QByteArray("inf") << std::numeric_limits<double>::infinity();
        QTest::newRow("negative") << QByteArray("-12.5") << -12.5;
        QTest::newRow("1e300") << QByteArray("1e300") << 1e300;
    }
    void valueInFileIsReturnedUnchanged()
    {
        QFETCH(QByteArray, text);
        writeFile(m_path, "[General]\nresume.tape.7=" + text + "\n");
        const IniDefaults defaults(m_path);
        QVERIFY(defaults.contains(u"resume.tape.7"_s));
        QTEST(defaults.number(u"resume.tape.7"_s), "number");
    }

    void nanInFileIsReturnedAsNan()
    {
        writeFile(m_path, "[General]\nresume.tape.7=nan\n");
        QVERIFY(std::isnan(IniDefaults(m_path).number(u"resume.tape.7"_s)));
    }

    void damagedFileIsRenamedBeforeWriting_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<double>("saved");
        QByteArray noise;
        for (int i = 0; i < 4096; ++i)
            noise += char((i * 167 + i / 7) & 0xff);
        QTest::newRow("binary noise") << noise << 0.0;
        QTest::newRow("zeros") << QByteArray(512, '\0') << 0.0;
        QTest::newRow("plain text") << QByteArray("this is not what it was\nat all\n") << 0.0;
        QTest::newRow("zeros at the end")
            << QByteArray("[General]\nresume.tape.7=123.5\n") + QByteArray(64, '\0') << 123.5;
        QTest::newRow("last line cut") << QByteArray("[General]\nresume.tape.7=123.5\nresume.ta") << 123.5;
    }
    void damagedFileIsRenamedBeforeWriting()
    {
        QFETCH(QByteArray, bytes);
        writeFile(m_path, bytes);
        {
            IniDefaults defaults(m_path);
            QTEST(defaults.number(u"resume.tape.7"_s), "saved");
            QCOMPARE(contents(m_path), bytes);
            defaults.setNumber(u"resume.tape.8"_s, 88);
        }
        QCOMPARE(damagedFiles().size(), 1);
        QCOMPARE(contents(m_folder->filePath(damagedFiles().first())), bytes);
        const IniDefaults defaults(m_path);
        QCOMPARE(defaults.number(u"resume.tape.8"_s), 88.0);
        QTEST(defaults.number(u"resume.tape.7"_s), "saved");
    }

    void twoDamagedFilesInSameSecondAreBothKept()
    {
        for (const QByteArray& bytes : {QByteArray("first damage"), QByteArray("second damage")}) {
            writeFile(m_path, bytes);
            IniDefaults(m_path).setNumber(u"resume.tape.8"_s, 88);
        }
        QCOMPARE(damagedFiles().size(), 2);
        QSet<QByteArray> kept;
        for (const QString& name : damagedFiles())
            kept.insert(contents(m_folder->filePath(name)));
        QCOMPARE(kept, (QSet<QByteArray>{"first damage", "second damage"}));
    }

    void fileDamagedWhileRunningLosesNoPosition()
    {
        {
            IniDefaults defaults(m_path);
            defaults.setNumber(u"resume.tape.1"_s, 61);
            QTRY_VERIFY(contents(m_path).contains("resume.tape.1=61"));
            writeFile(m_path, QByteArray(32, '\0'));
            defaults.setNumber(u"resume.tape.2"_s, 62);
        }
        QCOMPARE(damagedFiles().size(), 1);
        const IniDefaults defaults(m_path);
        QCOMPARE(defaults.number(u"resume.tape.1"_s), 61.0);
        QCOMPARE(defaults.number(u"resume.tape.2"_s), 62.0);
    }

    void emptyFileIsNotDamaged()
    {
        writeFile(m_path, {});
        IniDefaults(m_path).setNumber(u"resume.tape.8"_s, 88);
        QVERIFY(damagedFiles().isEmpty());
        QCOMPARE(IniDefaults(m_path).number(u"resume.tape.8"_s), 88.0);
    }

    void otherEntriesInFileAreKept()
    {
        writeFile(m_path, "[General]\nresume.tape.1=61\n\n[later]\nword=kept\n");
        IniDefaults(m_path).setNumber(u"resume.tape.2"_s, 62);
        QVERIFY(contents(m_path).contains("word=kept"));
        QCOMPARE(IniDefaults(m_path).number(u"resume.tape.1"_s), 61.0);
    }

    void missingFolderIsCreated()
    {
        const QString path = m_folder->filePath(u"a/b/c/resume.ini"_s);
        IniDefaults(path).setNumber(u"resume.tape.8"_s, 88);
        QCOMPARE(IniDefaults(path).number(u"resume.tape.8"_s), 88.0);
    }

    void unwritablePathDoesNotCrash_data()
    {
        QTest::addColumn<QString>("relativePath");
        QTest::newRow("a file instead of the folder") << u"blocked/resume.ini"_s;
        QTest::newRow("a folder instead of the file") << u"folder"_s;
        QTest::newRow("no such device") << u"/proc/nowhere/resume.ini"_s;
    }
    void unwritablePathDoesNotCrash()
    {
        QFETCH(QString, relativePath);
        writeFile(m_folder->filePath(u"blocked"_s), "here");
        QVERIFY(QDir(m_folder->path()).mkpath(u"folder"_s));
        const QString path = QDir(m_folder->path()).absoluteFilePath(relativePath);
        IniDefaults defaults(path);
        defaults.setNumber(u"resume.tape.8"_s, 88);
        QCOMPARE(defaults.number(u"resume.tape.8"_s), 88.0);
        defaults.remove(u"resume.tape.8"_s);
        QCOMPARE(defaults.number(u"resume.tape.8"_s), 0.0);
    }

    void pathThatBecomesWritableGetsAllChanges()
    {
        const QString path = m_folder->filePath(u"later/resume.ini"_s);
        writeFile(m_folder->filePath(u"later"_s), "in the way");
        {
            IniDefaults defaults(path);
            defaults.setNumber(u"resume.tape.1"_s, 61);
            defaults.flush();
            QVERIFY(QFile::remove(m_folder->filePath(u"later"_s)));
            defaults.setNumber(u"resume.tape.2"_s, 62);
        }
        const IniDefaults defaults(path);
        QCOMPARE(defaults.number(u"resume.tape.1"_s), 61.0);
        QCOMPARE(defaults.number(u"resume.tape.2"_s), 62.0);
    }

    void manyChangesEndWithLatest()
    {
        constexpr int changes = 2000;
        {
            IniDefaults defaults(m_path);
            for (int change = 1; change <= changes; ++change)
                defaults.setNumber(u"resume.tape."_s + QString::number(change % 50), change);
        }
        const IniDefaults defaults(m_path);
        for (int tape = 0; tape < 50; ++tape)
            QCOMPARE(defaults.number(u"resume.tape."_s + QString::number(tape)), tape == 0 ? 2000.0 : 1950.0 + tape);
    }

    void fileIsReplacedAtomically()
    {
        IniDefaults(m_path).setNumber(u"resume.tape.1"_s, 61);
        IniDefaults defaults(m_path);
        for (int round = 0; round < 200; ++round) {
            defaults.setNumber(u"resume.tape.2"_s, 100 + round);
            QVERIFY(contents(m_path).contains("resume.tape.1=61\n"));
        }
    }
};

QUILLMERE_TEST(IniDefaultsTest, QCoreApplication)

} // namespace quillmere

#include "IniDefaultsTest.moc"
