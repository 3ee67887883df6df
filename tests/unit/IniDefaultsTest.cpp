#include "IniDefaults.h"
#include "Rows.h"
#include "TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

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
        rows<double>({"value"}, {{"whole", 60},
                                 {"fraction", 1234.5678901234567},
                                 {"tiny", 5e-324},
                                 {"huge", 1e300},
                                 {"negative", -3.25},
                                 {"zero", 0}});
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
        rows<QByteArray, double>({"text", "number"}, {{"text", "an hour or so", 0},
                                                      {"empty", QByteArray(), 0},
                                                      {"a list", "1, 2", 0},
                                                      {"not a number", "nan", std::numeric_limits<double>::quiet_NaN()},
                                                      {"infinity", "inf", std::numeric_limits<double>::infinity()},
                                                      {"negative", "-12.5", -12.5},
                                                      {"1e300", "1e300", 1e300}});
    }
    void valueInFileIsReturnedUnchanged()
    {
        QFETCH(QByteArray, text);
        writeFile(m_path, "[General]\nresume.tape.7=" + text + "\n");
        const IniDefaults defaults(m_path);
        QVERIFY(defaults.contains(u"resume.tape.7"_s));
        QTEST(defaults.number(u"resume.tape.7"_s), "number");
    }

    void damagedFileIsRenamedBeforeWriting_data()
    {
        QByteArray noise;
        for (int i = 0; i < 4096; ++i)
            noise += char((i * 167 + i / 7) & 0xff);
        rows<QByteArray, double>(
            {"bytes", "saved"},
            {{"binary noise", noise, 0},
             {"zeros", QByteArray(512, '\0'), 0},
             {"plain text", "this is not what it was\nat all\n", 0},
             {"zeros at the end", QByteArray("[General]\nresume.tape.7=123.5\n") + QByteArray(64, '\0'), 123.5},
             {"last line cut", "[General]\nresume.tape.7=123.5\nresume.ta", 123.5}});
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
        rows<QString>({"relativePath"}, {{"a file instead of the folder", u"blocked/resume.ini"_s},
                                         {"a folder instead of the file", u"folder"_s},
                                         {"no such device", u"/proc/nowhere/resume.ini"_s}});
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
